// "Import from another app": a multi-vehicle aCar file through the vehicle picker, Fuelly's two
// files from the History screen (twice), and a file no importer knows.
#include "gui_helper.h"
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include "app/FileChooser.h"
#include "dataview/EntryTableModel.h"
#include "dataview/HistoryDialog.h"
#include "exchange/PeerImportDialog.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Now = 1733054400; // 2024-12-01 12:00:00 UTC: the imported oil change is overdue

QString sample(const QString &name)
{
    return QStringLiteral(TARVANE_TEST_DATA "/import/") + name;
}

QStringList tableRows(const QTableWidget *table)
{
    QStringList rows;
    for (int r = 0; r < table->rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < table->columnCount(); ++c)
            cells.append(table->item(r, c) ? table->item(r, c)->text().trimmed() : QString());
        rows.append(cells.join(u'|'));
    }
    return rows;
}

// The template's one vehicle, "My Car", with an empty log.
struct CarSandbox : Sandbox
{
    CarSandbox()
        : Sandbox(Now)
    {
        options.createKey(u"Options"_s);
        options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
        startSession();
    }
};

} // namespace

class TestPeerImportDialog : public QObject
{
    Q_OBJECT

private slots:
    void acarVehiclePicker()
    {
        CarSandbox s;
        PeerImportDialog dialog(*s.session, s.chooser, s.reporter);
        QCOMPARE(dialog.windowTitle(), u"Import from another app"_s);
        QCOMPARE(dialog.recognisedLabel()->text(), u"Add the file(s) your other app exported."_s);
        QVERIFY(!dialog.importButton()->isEnabled());
        dialog.resize(480, 640);

        // Two vehicles in the file: nothing to import until one is chosen.
        s.chooser.enqueue(sample(u"acar/acar.csv"_s));
        dialog.addFile();
        QCOMPARE(dialog.recognisedLabel()->text(),
                 u"acar.csv holds 2 vehicles (Civic, Miata); choose one."_s);
        QVERIFY(dialog.vehicleBox()->isVisibleTo(&dialog));
        QCOMPARE(dialog.vehicleBox()->count(), 3);
        QVERIFY(!dialog.importButton()->isEnabled());
        QCOMPARE(dialog.previewTable()->rowCount(), 0);
        QCOMPARE(dialog.dateOrderNote()->text(), QString());
        QVERIFY(saveScreenshot(&dialog, u"peer-import-choose-vehicle"_s));

        // The keyboard picks Civic.
        dialog.vehicleBox()->setFocus();
        QTest::keyClick(dialog.vehicleBox(), Qt::Key_Down);
        QCOMPARE(dialog.vehicleBox()->currentText(), u"Civic"_s);
        QCOMPARE(dialog.recognisedLabel()->text(),
                 u"aCar export (Civic): 3 fill-ups, 3 services, 1 cost, 1 trip, units mi / gal"_s);
        QCOMPARE(dialog.summaryLabel()->text(),
                 u"8 entries to add to My Car; 0 already in the log; 1 row skipped."_s);
        // Auto took the file's own "d/M/yyyy" and says so.
        QCOMPARE(dialog.dateOrderNote()->text(), u"dates read as day/month/year"_s);
        // Date, Odometer, Entry, Quantity, Total, Cost, Economy, End, Purpose, Note.
        QCOMPARE(tableRows(dialog.previewTable()),
                 QStringList({
                     u"2/1/2024|1000|Fuel|10.000|$30.00||0.00 MPG|||"_s,
                     u"2/2/2024|1020|Trip|||||1145|Delivery|boxes"_s,
                     u"2/5/2024|1300|Fuel|10.000|$31.00||30.00 MPG|||half tank, \"quick\" stop"_s,
                     u"2/6/2024|1350|Oil Change, Oil Filter|||$59.95||||synthetic"_s,
                     u"2/7/2024|1400|Parking|||$8.00||||airport"_s,
                     u"2/8/2024|1450|Rotate Tires|||$20.00||||"_s,
                     u"2/8/2024|1450|Coolant Flush|||$0.00||||"_s,
                     u"2/10/2024|1600|Fuel|12.000|$36.00||50.00 MPG|||"_s,
                 }));
        QCOMPARE(dialog.warningsView()->toPlainText(), u"acar.csv line 15: no odometer reading"_s);
        QVERIFY(dialog.importButton()->isEnabled());
        QVERIFY(saveScreenshot(&dialog, u"peer-import-acar"_s));
        // The first column is in view, and the scroll bar shows it: a dark handle at the left end,
        // the light groove to its right.
        const QImage bar = dialog.previewTable()->horizontalScrollBar()->grab().toImage();
        QVERIFY(qGray(bar.pixel(bar.width() / 10, bar.height() / 2))
                < qGray(bar.pixel(bar.width() * 9 / 10, bar.height() / 2)));

        // The date order overridden: 10/2/2024 read as October 2 is past every other date.
        dialog.dateOrderBox()->setFocus();
        QTest::keyClick(dialog.dateOrderBox(), Qt::Key_Down);
        QCOMPARE(dialog.dateOrderBox()->currentText(), u"M/d/yyyy"_s);
        QCOMPARE(tableRows(dialog.previewTable()).constLast().left(9), u"10/2/2024"_s);
        QCOMPARE(dialog.dateOrderNote()->text(), QString());
        QCOMPARE(dialog.vehicleBox()->currentText(), u"Civic"_s);
        QTest::keyClick(dialog.dateOrderBox(), Qt::Key_Up);

        QStringList steps;
        connect(dialog.progressBar(), &QProgressBar::valueChanged, this,
                [&](int value) { steps.append(u"%1/%2"_s.arg(value).arg(dialog.progressBar()->maximum())); });
        dialog.importButton()->click();
        QCOMPARE(steps, QStringList({ u"0/3"_s, u"1/3"_s, u"2/3"_s, u"3/3"_s }));
        QVERIFY(dialog.imported());
        QCOMPARE(s.reporter.texts(),
                 QStringList { u"Added 8 entries to My Car; skipped 0 as duplicates, 1 as unusable."_s });
        QCOMPARE(s.session->entries().size(), size_t(8));
        QCOMPARE(s.session->entries()[1].contact, u"Acme Ltd"_s);
        QCOMPARE(s.session->scan().lastOdometer, 1600.0);
        // The main screen's reminders now count from the imported oil change.
        QStringList reminders;
        for (const ReminderListLine &line : s.session->reminders())
            reminders.append(line.text);
        // 299 days since February 6 and 297 since February 8, against 180-day intervals.
        QCOMPARE(reminders,
                 QStringList({ u"Tire rotate OVERDUE by: 117  days"_s, u"Oil change OVERDUE by: 119  days"_s,
                               u"Last Backup: Unknown"_s }));
    }

    void fuellyFromHistoryTwice()
    {
        CarSandbox s;
        HistoryDialog history(*s.session, s.reporter);
        history.setPeriodFilter(DataViewFilter::AllPeriods);
        QStringList items;
        for (const QAction *action : history.optionsMenu()->actions())
            items.append(action->text());
        QCOMPARE(items.indexOf(u"Import from another app…"_s), items.indexOf(u"Import CSV"_s) + 1);

        for (int round = 0; round < 2; ++round) {
            s.chooser.enqueue(sample(u"fuelly/fuelups.csv"_s));
            s.chooser.enqueue(sample(u"fuelly/services.csv"_s));
            QString summary;
            bool canImport = false;
            QTimer::singleShot(0, this, [&] {
                auto *dialog = qobject_cast<PeerImportDialog *>(QApplication::activeModalWidget());
                QVERIFY(dialog);
                dialog->addFile();
                dialog->addFile();
                QCOMPARE(dialog->fileList()->count(), 2);
                QVERIFY(!dialog->vehicleBox()->isVisibleTo(dialog));
                summary = dialog->summaryLabel()->text();
                canImport = dialog->importButton()->isEnabled();
                if (round == 0)
                    QVERIFY(saveScreenshot(dialog, u"peer-import-fuelly"_s));
                if (canImport)
                    dialog->importButton()->click();
                else
                    dialog->reject();
            });
            history.importFromApp(s.chooser);
            // A second import of the same files has nothing to add.
            QCOMPARE(summary,
                     round == 0 ? u"5 entries to add to My Car; 0 already in the log; 2 rows skipped."_s
                                : u"0 entries to add to My Car; 5 already in the log; 2 rows skipped."_s);
            QCOMPARE(canImport, round == 0);
            QCOMPARE(history.model()->rowCount(), 5);
        }
    }

    void unknownFile()
    {
        CarSandbox s;
        PeerImportDialog dialog(*s.session, s.chooser, s.reporter);
        s.chooser.enqueue(sample(u"fuelly/expected.json"_s));
        dialog.addFile();
        QCOMPARE(
            dialog.recognisedLabel()->text(),
            u"expected.json is not an export of Fuelly, Fuelio, LubeLogger, Spritmonitor, Road Trip MPG, "
            "Drivvo or aCar."_s);
        QVERIFY(!dialog.importButton()->isEnabled());
        QVERIFY(dialog.summaryLabel()->text().isEmpty());
        // Clear starts over.
        QTest::mouseClick(dialog.findChild<QPushButton *>(u"clear"_s), Qt::LeftButton);
        QCOMPARE(dialog.fileList()->count(), 0);
        QVERIFY(s.reporter.texts().isEmpty());
    }
};

QTEST_MAIN(TestPeerImportDialog)
#include "tst_peer_import_dialog.moc"
