#include "StatisticsMenuDialog.h"

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "StatisticsChartDialog.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int TouchHeight = 40;
} // namespace

StatisticsContext StatisticsContext::fromSession(VehicleSession &session)
{
    StatisticsContext context;
    context.vehicleName = session.currentVehicleName();
    context.dataFolder = session.dataFolder();
    context.vin = session.vehicle().vin;
    context.distanceUnit = session.vehicle().distanceUnit;
    context.economyUnit = session.vehicle().economyUnit;
    context.clock = &session.context().clock;
    context.reporter = &session.context().reporter;
    return context;
}

void showStatisticsMenu(QWidget *parent, VehicleSession &session)
{
    StatisticsMenuDialog dialog(StatisticsContext::fromSession(session), parent);
    dialog.exec();
}

StatisticsMenuDialog::StatisticsMenuDialog(const StatisticsContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
{
    m_runner = [this](ChartMode mode) {
        StatisticsChartDialog chart(m_context, mode, this);
        chart.exec();
    };
    buildControls();
}

void StatisticsMenuDialog::openChart(ChartMode mode)
{
    m_runner(mode);
}

void StatisticsMenuDialog::buildControls()
{
    setWindowTitle(u"Statistics"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 8, 16, 16);
    layout->setSpacing(8);

    auto chart = [this](ChartMode mode) {
        return [this, mode] {
            openChart(mode);
        };
    };

    m_compare = new QMenu(u"Compare"_s, this);
    m_compare->setObjectName(u"compareMenu"_s);
    m_compare->addAction(u"Compare Annual Fuel Cost"_s, this, chart(ChartMode::CompareFuelCost));
    m_compare->addAction(u"Compare Annual Running Cost"_s, this, chart(ChartMode::CompareRunningCost));
    m_compare->addAction(u"Compare Annual Economy"_s, this, chart(ChartMode::CompareEconomy));

    m_menuBar = new QMenuBar(this);
    QMenu *graphs = m_menuBar->addMenu(u"Graphs"_s);
    graphs->setObjectName(u"graphsMenu"_s);
    graphs->addAction(u"Fuel Economy"_s, this, chart(ChartMode::FuelEconomy));
    graphs->addAction(u"Repair Costs"_s, this, chart(ChartMode::RepairCost));
    graphs->addAction(u"Trips"_s, this, chart(ChartMode::Usage31Days));
    graphs->addAction(u"Running Cost"_s, this, chart(ChartMode::RunningCost));
    graphs->addMenu(m_compare);
    layout->setMenuBar(m_menuBar);

    const struct
    {
        const char16_t *text;
        ChartMode mode;
    } charts[] = { { u"Fuel Economy", ChartMode::FuelEconomy },
                   { u"Total Fuel Cost", ChartMode::FuelCost },
                   { u"Total Repair Cost", ChartMode::RepairCost },
                   { u"Total Running Cost", ChartMode::RunningCost },
                   { u"31 Day Useage", ChartMode::Usage31Days } };
    for (const auto &entry : charts) {
        auto *button = new QPushButton(QString::fromUtf16(entry.text), this);
        connect(button, &QPushButton::clicked, this, chart(entry.mode));
        layout->addWidget(button);
    }
    auto *compare = new QPushButton(u"Compare Menu"_s, this);
    connect(compare, &QPushButton::clicked, this,
            [this, compare] { m_compare->exec(compare->mapToGlobal(QPoint(0, compare->height()))); });
    layout->addWidget(compare);
    layout->addStretch(1);
    auto *exit = new QPushButton(u"Exit"_s, this);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(exit);

    for (QPushButton *button : findChildren<QPushButton *>())
        button->setMinimumHeight(TouchHeight);
    resize(320, 420);
}

QPushButton *StatisticsMenuDialog::button(const QString &text) const
{
    for (QPushButton *button : findChildren<QPushButton *>())
        if (button->text() == text)
            return button;
    return nullptr;
}
