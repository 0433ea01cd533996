#include "gui_helper.h"
#include <QDir>
#include <QFile>
#include <QtTest>

#include "dataview/ExportMenu.h"
#include "dataview/HistoryDialog.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Now = 1773316800; // 2026-03-12 12:00:00 UTC

CVCItem entry(CVCItem::EntryType type, double odometer, quint32 date)
{
    const bool fuel = type == CVCItem::Fuel;
    return { .entryType = type,
             .odometer = odometer,
             .entryDate = date,
             .typeText = fuel ? u"Fuel"_s : u"Oil Change"_s,
             .amount = 30,
             .fuelQuantity = fuel ? 10.0 : 0.0,
             .unitPrice = fuel ? 3.0 : 0.0 };
}

// The template's vehicle "My Car" with a fill-up in February, a repair and a fill-up in March.
struct MenuSandbox : Sandbox
{
    MenuSandbox()
        : Sandbox(Now)
    {
        options.createKey(u"Options"_s);
        put(data() + u"MYCAR0001.vcb"_s,
            LogArchive::encode({ entry(CVCItem::Fuel, 1000, Now - 30 * 86400),
                                 entry(CVCItem::Maintenance, 1100, Now - 5 * 86400),
                                 entry(CVCItem::Fuel, 1200, Now - 86400) }));
        installTemplates();
    }
};

} // namespace

class TestExportMenu : public QObject
{
    Q_OBJECT

private slots:
    void menuExportsWithTheScreensFilter();
};

// The History screen's Options → Export, run with the screen's filter.
void TestExportMenu::menuExportsWithTheScreensFilter()
{
    MenuSandbox sandbox;
    VehicleSession session(sandbox.context);
    QVERIFY(session.start(false, u"My Car"_s));
    sandbox.reporter.clear();
    ScriptedFileChooser &chooser = sandbox.chooser;
    HistoryDialog history(session, sandbox.reporter);
    history.setTypeFilter(DataViewFilter::Fuel);
    history.setPeriodFilter(DataViewFilter::Month);
    ExportMenu &menu = *history.exportMenu();
    menu.setFileChooser(&chooser);
    QVERIFY(history.optionsMenu()->actions().contains(menu.menuAction()));
    sandbox.reporter.clear();

    QStringList texts;
    for (QAction *action : menu.actions()) {
        texts.append(action->text());
        if (action->menu()) {
            for (QAction *inner : action->menu()->actions())
                texts.append(u"  "_s + inner->text());
        }
    }
    QCOMPARE(texts,
             (QStringList { u"Export CSV"_s, u"xls Export by Date"_s, u"Export HTML"_s,
                            u"  &Export ALL data "_s, u"  &Between 2 dates"_s, u"  Excel Exports"_s }));

    const QString docs = sandbox.context.paths.myDocuments();
    const QString out = sandbox.dir.filePath(u"out/"_s);
    QVERIFY(QDir().mkpath(out));
    chooser.enqueueCancel();
    menu.csvAction()->trigger();
    chooser.enqueue(out);
    menu.csvAction()->trigger();
    // The month's fill-up only, in the fuel layout.
    QCOMPARE(readAll(out + u"My Car.csv"_s).count("\r\n"), 2);

    menu.xmlAction()->trigger(); // not listed by date: refused before the chooser
    history.setDateRange(QDate(2026, 3, 1), QDate(2026, 3, 31));
    chooser.enqueue(out);
    menu.xmlAction()->trigger();
    QCOMPARE(readAll(out + u"My Car.xml"_s).count("<Row>"), 2);

    sandbox.reporter.setNextAnswer(false);
    menu.htmlAllAction()->trigger();
    QVERIFY(!QFile::exists(docs + u"My Car.htm"_s));
    sandbox.reporter.setNextAnswer(true);
    menu.htmlAllAction()->trigger();
    QCOMPARE(readAll(docs + u"My Car.htm"_s).count("</td></tr>\n"), 3); // every entry, filters aside
    menu.excelExportsAction()->trigger();

    const QString warning
        = u"Displaying this HTML file may cause some older CE explorers to hang.\nthere is no "
          "problem with Desktop explorer or newer windows CE second edition.\nContinue?"_s;
    QCOMPARE(sandbox.reporter.texts(),
             (QStringList { u"Export Path not set\nExport Aborted!"_s,
                            u"Export to %1My Car.csv is complete."_s.arg(out),
                            u"You must select List By Date to export in XML format"_s,
                            u"Excel Export completed.File Name:\n%1My Car.xml"_s.arg(out), warning, warning,
                            u"Export to HTML completed.\nMy Documents\\My Car.htm"_s }));
    QCOMPARE(chooser.requests(),
             (QStringList { u"folder "_s + docs, u"folder "_s + docs, u"folder "_s + docs }));

    // How the sub-menus look on a small screen.
    menu.popup(QPoint(0, 0));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    menu.setActiveAction(menu.actions().at(2));
    QTest::keyClick(&menu, Qt::Key_Right);
    QCoreApplication::processEvents();
    const QString folder = screenshotFolder();
    QVERIFY(menu.grab().save(folder + u"/export_menu.png"_s));
    QVERIFY(menu.actions().at(2)->menu()->grab().save(folder + u"/export_menu_html.png"_s));
}

QTEST_MAIN(TestExportMenu)
#include "tst_export_menu.moc"
