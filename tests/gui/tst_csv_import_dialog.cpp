#include "gui_helper.h"
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

#include "dataview/EntryTableModel.h"
#include "dataview/HistoryDialog.h"
#include "exchange/CsvImportDialog.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Now = 1709640000; // 2024-03-05 12:00:00 UTC

QTreeWidgetItem *rowOf(QTreeWidget *list, const QString &text)
{
    const QList<QTreeWidgetItem *> found = list->findItems(text, Qt::MatchExactly, 0);
    return found.isEmpty() ? nullptr : found.first();
}

// The template's "My Car" with an empty log.
struct CarSandbox : Sandbox
{
    CarSandbox()
        : Sandbox(Now)
    {
        options.createKey(u"Options"_s);
        options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
        startSession();
    }
    QString file(const QString &name, const QByteArray &bytes)
    {
        put(dir.filePath(name), bytes);
        return dir.filePath(name);
    }
};

} // namespace

class TestCsvImportDialog : public QObject
{
    Q_OBJECT

private slots:
    void buildSaveAndImport()
    {
        CarSandbox s;
        const QString sheet = s.file(u"fillups.csv"_s,
                                     "Date,Odometer,,Gallons,Station\r\n"
                                     "1/5/2024,12000,x,10,Shell\r\n"
                                     "1/20/2024,12300,x,10,Shell\r\n");
        CsvImportDialog dialog(*s.session, s.chooser);
        QCOMPARE(dialog.windowTitle(), u"IMPORT"_s);
        QVERIFY(!dialog.importButton()->isEnabled());
        QCOMPARE(dialog.mapBox()->currentText(), u"DefaultMap"_s);

        s.chooser.enqueue(sheet);
        dialog.browse();
        QCOMPARE(s.chooser.requests(), QStringList { u"file "_s + s.context.paths.myDocuments() + u" "_s });
        QCOMPARE(dialog.fileField()->text(), sheet);
        QCOMPARE(column(dialog.dataList(), 0),
                 QStringList({ u"Date"_s, u"Odometer"_s, u"Gallons"_s, u"Station"_s }));
        QVERIFY(dialog.importButton()->isEnabled());

        // Column, field, button: assigned and painted; the same again clears it.
        QTreeWidget *fields = dialog.fieldList();
        dialog.dataList()->setCurrentItem(rowOf(dialog.dataList(), u"Odometer"_s));
        fields->setCurrentItem(fields->topLevelItem(ImportMap::Odometer));
        QCOMPARE(dialog.assignButton()->text(), u"Assign"_s);
        dialog.assignButton()->click();
        QCOMPARE(fields->topLevelItem(ImportMap::Odometer)->text(1), u"2: Odometer"_s);
        QCOMPARE(fields->topLevelItem(ImportMap::Odometer)->background(0).color(), QColor(200, 255, 200));
        QCOMPARE(fields->topLevelItem(ImportMap::Date)->background(0).color(), QColor(Qt::white));
        QCOMPARE(dialog.assignButton()->text(), u"Clear"_s);
        dialog.assignButton()->click();
        QCOMPARE(fields->topLevelItem(ImportMap::Odometer)->text(1), QString());
        // The keyboard: Enter on the field assigns.
        fields->setFocus();
        QTest::keyClick(fields, Qt::Key_Return);
        QCOMPARE(fields->topLevelItem(ImportMap::Odometer)->text(1), u"2: Odometer"_s);
        const std::pair<const char16_t *, int> more[] = { { u"Date", ImportMap::Date },
                                                          { u"Gallons", ImportMap::FuelQty },
                                                          { u"Station", ImportMap::Station } };
        for (const auto &[title, field] : more) {
            dialog.dataList()->setCurrentItem(rowOf(dialog.dataList(), QString::fromUtf16(title)));
            fields->setCurrentItem(fields->topLevelItem(field));
            dialog.assignButton()->click();
        }
        QCOMPARE(fields->topLevelItem(ImportMap::FuelQty)->text(1), u"4: Gallons"_s);

        QVERIFY(dialog.saveMapAs(u"Fill-ups"_s));
        QCOMPARE(dialog.mapBox()->currentText(), u"Fill-ups"_s);
        QCOMPARE(s.preferences.value(u"ListAttributes"_s, u"Map1"_s).toString(), u"Fill-ups"_s);
        QCOMPARE(s.preferences.value(u"Fill-ups"_s, u"F6"_s).toInt(), 4);
        dialog.resize(480, 640);
        shoot(&dialog, u"csv-import"_s);

        // A change saved to the file by the screen underneath, not yet in the session's list, stays.
        CVCItem earlier;
        earlier.typeText = u"Fuel"_s;
        earlier.odometer = 11000;
        QVERIFY(LogArchive().write(s.session->databasePath(), { earlier }));
        QStringList progress;
        connect(dialog.progressBar(), &QProgressBar::valueChanged, this,
                [&](int value) { progress.append(u"%1 %2"_s.arg(dialog.mapsGroup()->title()).arg(value)); });
        dialog.importButton()->click();
        QCOMPARE(progress, QStringList({ u"Importing Data 0"_s, u"Importing Data 100"_s }));
        QCOMPARE(s.reporter.texts(),
                 QStringList { u"Import Complete!\nImported 0 lines\nSkipped 0 Lines"_s });
        QCOMPARE(dialog.mapsGroup()->title(), u"CSV Maps"_s);
        QVERIFY(!dialog.progressBar()->isVisible());
        QVERIFY(dialog.imported());
        QCOMPARE(s.session->entries().size(), size_t(3));
        QCOMPARE(s.session->entries()[0].odometer, 11000.0);
        QCOMPARE(s.session->entries()[2].station, u"Shell"_s);
        QCOMPARE(s.session->scan().lastOdometer, 12300.0);

        // Opened again: the last map and the last file.
        dialog.abortButton()->click();
        CsvImportDialog again(*s.session, s.chooser);
        QCOMPARE(again.mapBox()->currentText(), u"Fill-ups"_s);
        QCOMPARE(again.fileField()->text(), sheet);
        QCOMPARE(again.fieldList()->topLevelItem(ImportMap::Station)->text(1), u"5: Station"_s);
    }

    void fromHistory()
    {
        CarSandbox s;
        // Ready to go: the built-in map and an exported file chosen last time.
        s.preferences.setValue(u"ListAttributes"_s, u"LastMap"_s, u"Tarvane CSV"_s);
        s.preferences.setValue(u"ListAttributes"_s, u"CSVName"_s,
                               QStringLiteral(TARVANE_TEST_DATA "/exchange/round-trip/Truck.csv"));
        HistoryDialog history(*s.session, s.reporter);
        history.setPeriodFilter(DataViewFilter::AllPeriods);
        QCOMPARE(history.model()->rowCount(), 0);
        QStringList items;
        for (const QAction *action : history.optionsMenu()->actions())
            items.append(action->text());
        QVERIFY2(items.indexOf(u"Import CSV"_s) == 2, qPrintable(items.join(u", "_s)));
        QTimer::singleShot(0, this, [] {
            auto *dialog = qobject_cast<CsvImportDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            dialog->importButton()->click();
            dialog->abortButton()->click();
        });
        history.importCsv(s.chooser);
        QCOMPARE(s.reporter.texts(),
                 QStringList { u"Import Complete!\nImported 4 lines\nSkipped 0 Lines"_s });
        QCOMPARE(history.model()->rowCount(), 6);
    }

    void unusableFiles()
    {
        CarSandbox s;
        CsvImportDialog dialog(*s.session, s.chooser);
        s.chooser.enqueue(s.file(u"one.csv"_s, "Odometer\r\n12000\r\n"));
        dialog.browse();
        QVERIFY(!dialog.importButton()->isEnabled());
        QVERIFY(s.reporter.texts().value(0).startsWith(u"ERROR 2201: "_s));
        QCOMPARE(dialog.dataList()->topLevelItemCount(), 0);
        // The odometer must be mapped before anything is read.
        s.chooser.enqueue(s.file(u"two.csv"_s, "A,B\r\n1,2\r\n"));
        dialog.browse();
        QVERIFY(dialog.importButton()->isEnabled());
        dialog.importButton()->click();
        QCOMPARE(
            s.reporter.texts().value(1),
            u"WARNING! The Odometer field must be mapped.  All imported data must have a mileage entry to be "
            "valid."_s);
        QVERIFY(!dialog.imported());
    }
};

QTEST_MAIN(TestCsvImportDialog)
#include "tst_csv_import_dialog.moc"
