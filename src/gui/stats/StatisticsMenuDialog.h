#pragma once

#include <QDialog>

#include <functional>

#include "StatisticsContext.h"
#include "stats/ChartSeries.h"

class QMenu;
class QMenuBar;
class QPushButton;

// "Statistics": the chart buttons, "Compare Menu" with the three two-year comparisons, "Exit",
// and the "Graphs" menu. Each choice opens the chart dialog on its chart.
class StatisticsMenuDialog : public QDialog
{
    Q_OBJECT
public:
    StatisticsMenuDialog(const StatisticsContext &context, QWidget *parent = nullptr);

    // Opens the chart; by default a modal chart dialog. Tests replace it to watch the choices.
    void setChartRunner(std::function<void(ChartMode)> runner) { m_runner = std::move(runner); }
    void openChart(ChartMode mode);

    const StatisticsContext &context() const { return m_context; }
    QPushButton *button(const QString &text) const;
    QMenu *compareMenu() const { return m_compare; }
    QMenuBar *menuBar() const { return m_menuBar; }

private:
    void buildControls();

    StatisticsContext m_context;
    std::function<void(ChartMode)> m_runner;
    QMenu *m_compare = nullptr;
    QMenuBar *m_menuBar = nullptr;
};
