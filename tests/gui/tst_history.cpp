#include "gui_helper.h"
#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QtTest>

#include "dataview/EntryTableModel.h"
#include "dataview/HistoryDialog.h"
#include "forms/EntryDialog.h"
#include "log/LogArchive.h"
#include "settings/Options.h"

using namespace Qt::StringLiterals;

namespace {

using TestFiles::utc;

CVCItem entry(qint32 type, int icon, const QString &text, double odometer, const char *date)
{
    CVCItem item;
    item.entryType = type;
    item.iconIndex = icon;
    item.typeText = text;
    item.odometer = odometer;
    item.entryDate = utc(date);
    if (type == CVCItem::Fuel) {
        item.fuelMeasure = u"Gallons"_s;
        item.fuelQuantity = 11.5;
        item.unitPrice = 3.199;
        item.amount = 36.79;
        item.economy = 27.4;
        item.station = u"Corner Station"_s;
    } else if (type == CVCItem::Maintenance) {
        item.amount = 49.95;
        item.station = u"Joe's Garage"_s;
        item.invoice = u"A-1001"_s;
    } else {
        item.endOdometer = odometer + 84;
        item.departTime = item.entryDate;
        item.arriveTime = item.entryDate + 5400;
        item.purpose = u"Client visit"_s;
        item.destination = u"Springfield"_s;
        item.unitPrice = 42;
    }
    return item;
}

// Eight entries of November 2026 in odometer order; "now" is Wednesday the 25th.
EntryList sampleLog()
{
    return { entry(CVCItem::Fuel, 0, u"Fuel"_s, 12000, "2026-11-02T08:00:00"),
             entry(CVCItem::Maintenance, 4, u"Oil Change"_s, 12050, "2026-11-03T10:00:00"),
             entry(CVCItem::Trip, 19, u"Trip"_s, 12100, "2026-11-09T07:30:00"),
             entry(CVCItem::Fuel, 0, u"Fuel"_s, 12350, "2026-11-16T18:00:00"),
             entry(CVCItem::Maintenance, 17, u"Rotate Tires"_s, 12400, "2026-11-20T09:00:00"),
             entry(CVCItem::Trip, 19, u"Trip"_s, 12450, "2026-11-23T07:45:00"),
             entry(CVCItem::Fuel, 0, u"Fuel"_s, 12700, "2026-11-24T17:10:00"),
             entry(CVCItem::Trip, 19, u"Trip"_s, 12800, "2026-11-25T08:00:00") };
}

} // namespace

class TestHistory : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void screenshots();
    void walk();
    void deleteAllThenMainScreen();
    void summaryReport();

private:
    QString vcb() const { return m_box->data() + u"MYCAR0001.vcb"_s; }

    std::unique_ptr<Sandbox> m_box;
};

void TestHistory::init()
{
    m_box = std::make_unique<Sandbox>(utc("2026-11-25T12:00:00"));
    m_box->options.createKey(u"Options"_s);
    m_box->options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    m_box->startSession();
    QVERIFY(LogArchive().write(vcb(), sampleLog()));
    m_box->session->reopen();
    m_box->reporter.clear();
}

void TestHistory::cleanup()
{
    m_box.reset();
}

void TestHistory::walk()
{
    auto dialog = std::make_unique<HistoryDialog>(*m_box->session, m_box->reporter);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(dialog.get()));
    EntryTableModel *model = dialog->model();
    QCOMPARE(dialog->windowTitle(), u"History"_s);
    // A fresh run opens on every entry.
    QCOMPARE(model->rowCount(), 8);
    QCOMPARE(model->columnCount(), 17);
    QVERIFY(!dialog->table()->isSortingEnabled());

    // The radio buttons: Trips, then this week (Monday 23rd on): two trips.
    const auto radio = [&](const QString &text, int index) {
        QList<QRadioButton *> found;
        for (QRadioButton *button : dialog->findChildren<QRadioButton *>())
            if (button->text() == text)
                found.append(button);
        return found.value(index);
    };
    QTest::mouseClick(radio(u"Trips"_s, 0), Qt::LeftButton);
    QCOMPARE(model->columnCount(), 14);
    QCOMPARE(model->rowCount(), 3);
    QTest::mouseClick(radio(u"Week"_s, 0), Qt::LeftButton);
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->positionAt(0), 5);
    // By date, 9th to 16th, all types.
    dialog->setTypeFilter(DataViewFilter::AllTypes);
    dialog->setDateRange(QDate(2026, 11, 9), QDate(2026, 11, 16));
    QCOMPARE(model->rowCount(), 2);
    QCOMPARE(model->positionAt(1), 3);
    dialog->setPeriodFilter(DataViewFilter::AllPeriods);

    // Edit the oil change through its form (double-click); the note lands in the file.
    dialog->selectRow(1);
    withForm([&] { QTest::keyClick(dialog->table(), Qt::Key_Return); },
             [](EntryDialog *form) {
                 form->findChild<QPlainTextEdit *>(u"note"_s)->setPlainText(u"synthetic 5W-30"_s);
                 QTest::mouseClick(form->saveButton(), Qt::LeftButton);
             });
    EntryList onDisk;
    QVERIFY(LogArchive().read(vcb(), onDisk));
    QCOMPARE(onDisk[1].notes, u"synthetic 5W-30"_s);
    QCOMPARE(onDisk.size(), 8u);
    QCOMPARE(model->index(1, 16).data().toString(), u"synthetic 5W-30"_s);

    // Insert a fill-up in the ALL view: the question, then the form; placed before 12400.
    m_box->reporter.setNextAnswer(true);
    withForm([&] { dialog->insertFuelOrRepair(); }, [](EntryDialog *form) { fillAndSave(form, u"12380"_s); });
    QCOMPARE(odometers(vcb()),
             (QList<double> { 12000, 12050, 12100, 12350, 12380, 12400, 12450, 12700, 12800 }));
    QCOMPARE(dialog->selectedPosition(), 4);

    // Delete it again: No keeps it, Yes removes it.
    const QByteArray before = readAll(vcb());
    m_box->reporter.setNextAnswer(false);
    dialog->deleteSelected();
    QCOMPARE(readAll(vcb()), before);
    m_box->reporter.setNextAnswer(true);
    QTest::keyClick(dialog->table(), Qt::Key_Delete);
    QCOMPARE(odometers(vcb()).size(), 8);
    QCOMPARE(m_box->reporter.texts(),
             (QStringList { u"Is this a Fuel Entry?\nNo=Maintenance entry."_s, u"DELETE! ARE YOU SURE?"_s,
                            u"DELETE! ARE YOU SURE?"_s }));
    QCOMPARE(model->rowCount(), 8);

    // The last row selected and deleted: the selection moves to the new last row.
    dialog->selectRow(7);
    m_box->reporter.setNextAnswer(true);
    dialog->deleteSelected();
    QCOMPARE(model->rowCount(), 7);
    QCOMPARE(dialog->selectedPosition(), 6);

    // Widths are kept when the list loses the focus; the filter when the screen closes.
    dialog->setTypeFilter(DataViewFilter::Maintenance);
    dialog->activateWindow();
    dialog->table()->setFocus();
    QTRY_VERIFY(dialog->table()->hasFocus());
    dialog->table()->horizontalHeader()->resizeSection(5, 111);
    radio(u"Month"_s, 0)->setFocus();
    quint32 width = 0;
    QTRY_VERIFY(m_box->preferences.queryDword(u"ListAttributes"_s, u"ColNumber5"_s, &width) && width == 111u);
    dialog->setPeriodFilter(DataViewFilter::Month);
    dialog->accept();
    dialog.reset();
    QCOMPARE(m_box->session->options().r5, 2.0);
    QCOMPARE(m_box->session->options().r6, 2.0);

    HistoryDialog again(*m_box->session, m_box->reporter);
    QCOMPARE(again.filter().type, DataViewFilter::Maintenance);
    QCOMPARE(again.filter().period, DataViewFilter::Month);
    QCOMPARE(again.table()->horizontalHeader()->sectionSize(5), 111);
    QCOMPARE(again.model()->rowCount(), 2);
}

void TestHistory::screenshots()
{
    const std::pair<DataViewFilter::Type, const char *> views[] = { { DataViewFilter::AllTypes, "all" },
                                                                    { DataViewFilter::Fuel, "fuel" },
                                                                    { DataViewFilter::Maintenance, "maint" },
                                                                    { DataViewFilter::Trips, "trips" } };
    for (const QSize size : { QSize(480, 640), QSize(1024, 768) }) {
        HistoryDialog dialog(*m_box->session, m_box->reporter);
        dialog.resize(size);
        dialog.selectRow(2);
        for (const auto &[type, name] : views) {
            dialog.setTypeFilter(type);
            shoot(&dialog,
                  u"history-%1-%2x%3"_s.arg(QString::fromLatin1(name)).arg(size.width()).arg(size.height()));
        }
        QVERIFY(dialog.width() <= size.width());
    }
    QCOMPARE(m_box->reporter.texts(), QStringList());
}

void TestHistory::deleteAllThenMainScreen()
{
    const QByteArray before = readAll(vcb());
    QCOMPARE(m_box->session->scan().lastOdometer, 12884.0);
    bool ran = false;
    QTimer::singleShot(0, [&] {
        auto *dialog = qobject_cast<HistoryDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        m_box->reporter.setNextAnswer(true);
        dialog->deleteAll();
        QCOMPARE(dialog->model()->rowCount(), 0);
        dialog->findChild<QMenuBar *>()->actions().last()->trigger(); // "Exit"
        ran = true;
    });
    HistoryDialog::run(*m_box->session, m_box->reporter, nullptr);
    QVERIFY(ran);
    QCOMPARE(m_box->reporter.texts(), QStringList { u"DELETE ALL DATA! ARE YOU SURE?"_s });
    QCOMPARE(readAll(m_box->data() + u"MYCAR0001.bak"_s), before);
    // The session has read the emptied log again.
    QCOMPARE(m_box->session->entries().size(), 0u);
    QCOMPARE(m_box->session->scan().lastOdometer, 0.0);
}

void TestHistory::summaryReport()
{
    HistoryDialog dialog(*m_box->session, m_box->reporter);
    dialog.setDateRange(QDate(2026, 11, 1), QDate(2026, 11, 30));
    QAction *item = dialog.findChild<QAction *>(u"summaryReport"_s);
    QVERIFY(item);
    QCOMPARE(item->text(), u"&Between 2 dates"_s);
    const QString path = m_box->context.paths.myDocuments() + u"My Car-Report.htm"_s;

    // Cancel writes nothing.
    item->trigger();
    QVERIFY(!QFile::exists(path));
    QCOMPARE(m_box->reporter.messages().size(), 1);
    QCOMPARE(
        m_box->reporter.messages()[0].text,
        u"Write the summary report from 11/1/2026 to 11/30/2026 into\nMy Documents\\My Car-Report.htm?"_s);

    // OK writes it; No to opening it. Three trips of 84 miles at 0.500: 3 x 42.00.
    m_box->reporter.clear();
    m_box->reporter.setNextAnswer(true);
    item->trigger();
    const QByteArray html = readAll(path);
    QVERIFY(html.contains("<td>Business</td><td class=\"n\">3</td><td class=\"n\">252</td>"));
    QVERIFY(html.contains("<td class=\"n\">$126.00</td>"));
    QCOMPARE(m_box->reporter.messages().size(), 2);
    QCOMPARE(m_box->reporter.messages()[1].text,
             u"Report written to\nMy Documents\\My Car-Report.htm\nOpen it now?"_s);
}

QTEST_MAIN(TestHistory)
#include "tst_history.moc"
