#include "StatisticsChartDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "log/VehicleLog.h"
#include "platform/CFormat.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"
#include "stats/ChartLog.h"
#include "stats/StatisticsCharts.h"
#include "widgets/GraphChart.h"
#include "widgets/GraphControl.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int TouchHeight = 32;
// Pictures are written at twice the size on screen, fine enough to print.
constexpr qreal SaveScale = 2.0;
} // namespace

StatisticsChartDialog::StatisticsChartDialog(const StatisticsContext &context, ChartMode mode,
                                             QWidget *parent)
    : QDialog(parent)
    , m_context(context)
{
    m_series.mode = mode;
    m_series.title = StatisticsCharts::title(mode);
    EntryList entries;
    m_logRead = ChartLog::read(context.dataFolder, context.vin, entries, *context.reporter);
    if (m_logRead) {
        const ChartInput input { context.distanceUnit, context.economyUnit,
                                 context.clock ? context.clock->now() : 0 };
        m_series = StatisticsCharts::build(mode, entries, input);
    }
    buildControls();
    showValues();
}

void StatisticsChartDialog::buildControls()
{
    setWindowTitle(u"Statistics"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(6);

    m_title = new QLabel(u"Title"_s, this);
    m_title->setObjectName(u"title"_s);
    m_title->setAlignment(Qt::AlignHCenter);
    QFont bold = m_title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.2);
    m_title->setFont(bold);
    layout->addWidget(m_title);

    m_graph = new GraphControl(this);
    layout->addWidget(m_graph, 1);

    auto *figures = new QGridLayout;
    figures->setHorizontalSpacing(12);
    figures->setVerticalSpacing(2);
    figures->addWidget(new QLabel(u"Vehicle Analyzed:"_s, this), 0, 0);
    m_vehicle = new QLabel(this);
    m_vehicle->setObjectName(u"vehicle"_s);
    figures->addWidget(m_vehicle, 0, 1);
    for (int i = 0; i < 4; ++i) {
        m_labels[i] = new QLabel(this);
        m_labels[i]->setObjectName(u"label%1"_s.arg(i));
        m_values[i] = new QLabel(this);
        m_values[i]->setObjectName(u"value%1"_s.arg(i));
        m_values[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        // The figures are printf columns ("%9.1f"): a fixed-pitch face keeps them lined up.
        m_values[i]->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        figures->addWidget(m_labels[i], i + 1, 0);
        figures->addWidget(m_values[i], i + 1, 1);
    }
    figures->setColumnStretch(1, 1);
    layout->addLayout(figures);

    auto *buttons = new QHBoxLayout;
    m_save = new QPushButton(u"Save Chart\u2026"_s, this);
    m_save->setObjectName(u"saveChart"_s);
    m_close = new QPushButton(u"Close"_s, this);
    m_close->setObjectName(u"close"_s);
    m_close->setDefault(true);
    for (QPushButton *button : { m_save, m_close }) {
        button->setMinimumHeight(TouchHeight);
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);
    connect(m_save, &QPushButton::clicked, this, &StatisticsChartDialog::saveChart);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);

    resize(460, 600);
}

void StatisticsChartDialog::showValues()
{
    m_title->setText(m_series.title);
    m_title->setVisible(!m_series.title.isEmpty());
    m_vehicle->setText(m_context.vehicleName);
    for (int i = 0; i < 4; ++i) {
        m_labels[i]->setText(m_series.labels[i]);
        m_values[i]->setText(m_series.values[i]);
    }
    m_save->setEnabled(m_series.enoughData);
    if (m_series.enoughData)
        GraphChart::show(m_graph->graph(), m_series);
    m_graph->update();
}

void StatisticsChartDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Too little data: the message comes once the dialog is up, and then it closes.
    if (m_logRead && !m_series.enoughData && !m_shortShown) {
        m_shortShown = true;
        QTimer::singleShot(0, this, [this] {
            m_context.reporter->info(m_series.shortDataMessage);
            reject();
        });
    }
}

bool StatisticsChartDialog::saveChart()
{
    if (!m_series.enoughData)
        return false;
    const QString proposed
        = QDir(m_context.dataFolder)
              .filePath(cformat("%s-chart%d.png",
                                VehicleLog::effectiveVin(m_context.vin).toUtf8().constData(),
                                int(m_series.mode)));
    const QString path = m_context.chooseSavePath
        ? m_context.chooseSavePath(this, proposed)
        : QFileDialog::getSaveFileName(this, u"Save Chart"_s, proposed,
                                       u"PNG picture (*.png);;SVG drawing (*.svg)"_s);
    if (path.isEmpty())
        return false;
    QString error;
    if (!GraphChart::save(m_series, m_graph->size(), SaveScale, path, &error)) {
        m_context.reporter->error(
            u"Unable to save the chart to %1\n%2"_s.arg(QDir::toNativeSeparators(path), error));
        return false;
    }
    return true;
}
