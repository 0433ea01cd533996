#pragma once

#include <QDialog>

#include <array>

#include "StatisticsContext.h"
#include "stats/ChartSeries.h"

class GraphControl;
class QLabel;
class QPushButton;

// "Statistics": one chart of the open vehicle with its four figures. It reads the vehicle's log
// afresh when it is made; when the log holds too little for the chart it says so once shown and
// closes itself.
class StatisticsChartDialog : public QDialog
{
    Q_OBJECT
public:
    StatisticsChartDialog(const StatisticsContext &context, ChartMode mode, QWidget *parent = nullptr);

    const ChartSeries &series() const { return m_series; }
    bool logRead() const { return m_logRead; }

    QLabel *titleLabel() const { return m_title; }
    GraphControl *graph() const { return m_graph; }
    QLabel *vehicleLabel() const { return m_vehicle; }
    QLabel *figureLabel(int index) const { return m_labels.at(index); }
    QLabel *figureValue(int index) const { return m_values.at(index); }
    QPushButton *saveButton() const { return m_save; }
    QPushButton *closeButton() const { return m_close; }

    // "Save Chart...": asks for a file and writes the chart there, PNG or SVG by its suffix, at
    // twice the shown size for print. False when cancelled or failed (after the message).
    bool saveChart();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildControls();
    void showValues();

    StatisticsContext m_context;
    ChartSeries m_series;
    bool m_logRead = false;
    bool m_shortShown = false;

    QLabel *m_title = nullptr;
    GraphControl *m_graph = nullptr;
    QLabel *m_vehicle = nullptr;
    std::array<QLabel *, 4> m_labels {};
    std::array<QLabel *, 4> m_values {};
    QPushButton *m_save = nullptr;
    QPushButton *m_close = nullptr;
};
