#include "gui_helper.h"
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QtTest>

#include <cmath>

#include "log/LogArchive.h"
#include "platform/Clock.h"
#include "platform/Reporter.h"
#include "stats/StatisticsChartDialog.h"
#include "stats/StatisticsCharts.h"
#include "stats/StatisticsMenuDialog.h"
#include "widgets/GraphControl.h"

using namespace Qt::StringLiterals;

namespace {

using TestFiles::at;

CVCItem entry(CVCItem::EntryType type, quint32 date, double odometer, double amount, double price = 0,
              double economy = 0)
{
    return { .entryType = type,
             .odometer = odometer,
             .entryDate = date,
             .typeText = type == CVCItem::Fuel ? u"Fuel"_s : u"Repair"_s,
             .amount = amount,
             .unitPrice = price,
             .economy = economy };
}

// A year and a half of a van: a fill-up every three weeks, a repair every few months.
EntryList vanLog()
{
    EntryList log;
    double odometer = 20000;
    for (int week = 0; week < 64; week += 3) {
        const quint32 date = at(2025, 1, 6) + quint32(week) * 7 * 86400;
        odometer += 380 + (week * 37) % 90;
        const double price = 3.0 + 0.3 * std::sin(week / 9.0) + (week % 5) * 0.02;
        const double economy = 27 + 2.5 * std::sin(week / 6.0) + (week % 4) * 0.3;
        log.push_back(entry(CVCItem::Fuel, date, odometer, price * 12, price, week ? economy : 0));
        if (week % 12 == 9)
            log.push_back(entry(CVCItem::Maintenance, date + 86400, odometer + 20, 60 + week * 4));
    }
    return log;
}

const quint32 Today = at(2026, 3, 27);

} // namespace

class TestStatistics : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void charts_data();
    void charts();
    void shortDataCloses();
    void unreadableLog();
    void menu();
    void saveChart_data();
    void saveChart();
    void openedForTheSessionsVehicle();

private:
    StatisticsContext context();

    std::unique_ptr<QTemporaryDir> m_dir;
    RecordingReporter m_reporter;
    FixedClock m_clock { Today };
};

void TestStatistics::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_reporter.clear();
    QVERIFY(LogArchive().write(m_dir->path() + u"/VAN1.vcb"_s, vanLog()));
}

StatisticsContext TestStatistics::context()
{
    StatisticsContext c;
    c.vehicleName = u"Van"_s;
    c.dataFolder = m_dir->path() + u'/';
    c.vin = u"VAN1"_s;
    c.clock = &m_clock;
    c.reporter = &m_reporter;
    return c;
}

void TestStatistics::charts_data()
{
    QTest::addColumn<int>("mode");
    for (int mode = 0; mode < StatisticsCharts::ModeCount; ++mode)
        QTest::newRow(qPrintable(QString::number(mode))) << mode;
}

void TestStatistics::charts()
{
    QFETCH(int, mode);
    StatisticsChartDialog dialog(context(), ChartMode(mode));
    dialog.resize(480, 640);
    shoot(&dialog, u"statistics-chart%1-480x640"_s.arg(mode));
    QCOMPARE(m_reporter.texts(), QStringList());
    QVERIFY(dialog.isVisible());

    // The dialog shows what the series holds: the chart's own figures are tested in the core.
    const ChartSeries expected = StatisticsCharts::build(ChartMode(mode), vanLog(), { 0, 0, Today });
    QVERIFY(expected.enoughData);
    QCOMPARE(dialog.windowTitle(), u"Statistics"_s);
    QCOMPARE(dialog.titleLabel()->text(), expected.title);
    QCOMPARE(dialog.vehicleLabel()->text(), u"Van"_s);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(dialog.figureLabel(i)->text(), expected.labels[i]);
        QCOMPARE(dialog.figureValue(i)->text(), expected.values[i]);
    }
    QCOMPARE(dialog.graph()->graph().points().size(), expected.pointCount());
    QCOMPARE(dialog.graph()->graph().yTitle(), expected.yTitle);
    // Everything on a 480 x 640 screen, touch-sized buttons.
    QVERIFY(dialog.graph()->height() >= 250);
    QVERIFY(dialog.closeButton()->height() >= 32);
    QVERIFY(dialog.frameGeometry().height() <= 640 + 40);
    QTest::mouseClick(dialog.closeButton(), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
}

void TestStatistics::shortDataCloses()
{
    // Two fill-ups with an economy: the message once the dialog is up, then it is gone.
    const EntryList two { entry(CVCItem::Fuel, at(2026, 1, 1), 100, 30, 3, 25),
                          entry(CVCItem::Fuel, at(2026, 1, 8), 400, 30, 3, 28) };
    QVERIFY(LogArchive().write(m_dir->path() + u"/VAN1.vcb"_s, two));
    StatisticsChartDialog dialog(context(), ChartMode::FuelEconomy);
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCOMPARE(m_reporter.texts(),
             QStringList { u"Sorry, Could not find enough fuel to calculate...\nPlease check "
                           "your data.\n3 or more entries required to chart."_s });
    QVERIFY(dialog.graph()->graph().points().isEmpty());
}

void TestStatistics::unreadableLog()
{
    // A damaged log: the error, an empty chart, and the file is left alone.
    const QString path = m_dir->path() + u"/VAN1.vcb"_s;
    put(path, QByteArray("\x05\x00\xff\xff", 4));
    StatisticsChartDialog dialog(context(), ChartMode::RepairCost);
    QCOMPARE(m_reporter.texts(), QStringList { u"ERROR 100! Unable to open database "_s + path });
    dialog.resize(480, 640);
    shoot(&dialog, u"statistics-unreadable-480x640"_s);
    QCoreApplication::processEvents();
    QVERIFY(dialog.isVisible());
    QCOMPARE(m_reporter.texts().size(), 1);
    QCOMPARE(dialog.titleLabel()->text(), u"REPAIR COST"_s);
    QVERIFY(dialog.figureLabel(0)->text().isEmpty());
    QVERIFY(dialog.graph()->graph().points().isEmpty());
    QVERIFY(!dialog.saveButton()->isEnabled());
    QCOMPARE(QFileInfo(path).size(), 4);
}

void TestStatistics::menu()
{
    StatisticsMenuDialog dialog(context());
    QList<ChartMode> opened;
    dialog.setChartRunner([&](ChartMode mode) { opened.append(mode); });
    dialog.resize(480, 640);
    shoot(&dialog, u"statistics-menu-480x640"_s);
    QCOMPARE(dialog.windowTitle(), u"Statistics"_s);

    QStringList buttons;
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        buttons.append(button->text());
        QVERIFY(button->height() >= 32);
    }
    QCOMPARE(buttons,
             (QStringList { u"Fuel Economy"_s, u"Total Fuel Cost"_s, u"Total Repair Cost"_s,
                            u"Total Running Cost"_s, u"31 Day Useage"_s, u"Compare Menu"_s, u"Exit"_s }));
    for (const QString &text : buttons.mid(0, 5))
        QTest::mouseClick(dialog.button(text), Qt::LeftButton);
    for (QAction *action : dialog.compareMenu()->actions())
        action->trigger();
    QMenu *graphs = dialog.menuBar()->actions().first()->menu();
    QCOMPARE(dialog.menuBar()->actions().first()->text(), u"Graphs"_s);
    QStringList items;
    for (QAction *action : graphs->actions()) {
        items.append(action->text());
        if (!action->menu())
            action->trigger();
    }
    QCOMPARE(
        items,
        (QStringList { u"Fuel Economy"_s, u"Repair Costs"_s, u"Trips"_s, u"Running Cost"_s, u"Compare"_s }));
    QStringList compare;
    for (QAction *action : dialog.compareMenu()->actions())
        compare.append(action->text());
    QCOMPARE(compare,
             (QStringList { u"Compare Annual Fuel Cost"_s, u"Compare Annual Running Cost"_s,
                            u"Compare Annual Economy"_s }));
    using M = ChartMode;
    const QList<ChartMode> expected { M::FuelEconomy,        M::FuelCost,       M::RepairCost,
                                      M::RunningCost,        M::Usage31Days,    M::CompareFuelCost,
                                      M::CompareRunningCost, M::CompareEconomy, M::FuelEconomy,
                                      M::RepairCost,         M::Usage31Days,    M::RunningCost };
    QCOMPARE(opened, expected);

    // "Compare Menu" pops the three comparisons up under the button.
    QTimer::singleShot(50, this, [&] {
        QVERIFY(dialog.compareMenu()->isVisible());
        dialog.compareMenu()->close();
    });
    QTest::mouseClick(dialog.button(u"Compare Menu"_s), Qt::LeftButton);
    QTest::mouseClick(dialog.button(u"Exit"_s), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void TestStatistics::saveChart_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start"); // the file's first bytes; empty when nothing is written
    QTest::newRow("png") << u"chart.png"_s << QByteArray("\x89PNG");
    QTest::newRow("svg") << u"chart.svg"_s << QByteArray("<?xml");
    QTest::newRow("missing folder") << u"none/chart.png"_s << QByteArray();
}

void TestStatistics::saveChart()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, start);
    StatisticsContext c = context();
    QStringList proposals;
    const QString path = m_dir->path() + u'/' + name;
    c.chooseSavePath = [&](QWidget *, const QString &proposed) {
        proposals.append(proposed);
        return path;
    };
    StatisticsChartDialog dialog(c, ChartMode::FuelEconomy);
    dialog.resize(480, 640);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.saveChart(), !start.isEmpty());
    QCOMPARE(proposals, QStringList { m_dir->path() + u"/VAN1-chart0.png"_s });
    QFile file(path);
    if (start.isEmpty()) {
        QVERIFY(!file.exists());
        QCOMPARE(m_reporter.texts().size(), 1);
        QVERIFY(m_reporter.texts().first().startsWith(u"Unable to save the chart to "_s + path));
        return;
    }
    QCOMPARE(m_reporter.texts(), QStringList());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(start.size()), start);
    if (name.endsWith(u".png"_s)) {
        // Twice the size shown, for print.
        const QImage picture(path);
        QCOMPARE(picture.size(), dialog.graph()->size() * 2);
    } else {
        QVERIFY(file.readAll().contains("<svg"));
    }
}

void TestStatistics::openedForTheSessionsVehicle()
{
    // What the main screen's "Statistics" and History's "Fuel Statistics" run.
    Sandbox box(Today);
    box.options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    VehicleSession &session = box.startSession();
    QString seen;
    QTimer::singleShot(0, this, [&] {
        auto *menu = qobject_cast<StatisticsMenuDialog *>(QApplication::activeModalWidget());
        QVERIFY(menu);
        const StatisticsContext &c = menu->context();
        seen = QStringList { menu->windowTitle(), c.vehicleName, c.vin, c.dataFolder }.join(u'|');
        QVERIFY(c.clock == &box.clock && c.reporter == &box.reporter);
        menu->reject();
    });
    showStatisticsMenu(nullptr, session);
    QCOMPARE(seen, u"Statistics|My Car|MYCAR0001|"_s + box.data());
}

QTEST_MAIN(TestStatistics)
#include "tst_statistics.moc"
