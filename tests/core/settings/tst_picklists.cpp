#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "platform/DevicePaths.h"
#include "platform/Reporter.h"
#include "settings/EditListModel.h"
#include "settings/IniFile.h"
#include "settings/PickLists.h"
#include "settingsfiles_helper.h"

using namespace Qt::StringLiterals;

namespace {
const QString header = u"\r\n[PurposeList]\r\n"_s;
// A neighbour section that no edit of PurposeList may touch.
const QString neighbour = u"\r\n[ContactList]\r\nLine0=Bob\r\n"_s;
} // namespace

class TestPickLists : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void items_data();
    void items();
    void loadItemsMissingFile();
    void reload_data();
    void reload();
    void addDeleteSequence();
    void addLimitAndEmpty();
    void deleteWithoutSelection();
    void folderGoneWhileOpen();
    void loadFailure();
    void saveFailureOnReload();
    void seedRepairList_data();
    void seedRepairList();
    void seedMissingFile();
    void tripLoader_data();
    void tripLoader();
    void tripLoaderBuiltinTemplate_data();
    void tripLoaderBuiltinTemplate();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
};

void TestPickLists::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_path = m_dir->filePath(u"Lists.ini"_s);
}

void TestPickLists::items_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("plain") << u"Line0=A\r\nLine1=B\r\n"_s << QStringList { u"A"_s, u"B"_s };
    QTest::newRow("empty value skipped")
        << u"Line0=A\r\nLine1=\r\nLine2=C\r\n"_s << QStringList { u"A"_s, u"C"_s };
    QTest::newRow("gap ends the list") << u"Line0=A\r\nLine2=C\r\n"_s << QStringList { u"A"_s };
    QTest::newRow("key order does not matter")
        << u"Line1=B\r\nLine0=A\r\n"_s << QStringList { u"A"_s, u"B"_s };
}

void TestPickLists::items()
{
    QFETCH(QString, body);
    QFETCH(QStringList, expected);
    IniFile ini;
    ini.parse(SettingsFiles::utf16(header + body + neighbour));
    QCOMPARE(PickLists::items(ini, PickLists::purposeList()), expected);
}

void TestPickLists::loadItemsMissingFile()
{
    QCOMPARE(PickLists::loadItems(m_path, PickLists::purposeList()), QStringList());
    // Reading never leaves a file behind.
    QVERIFY(!QFile::exists(m_path));
}

void TestPickLists::reload_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<int>("nextLine");
    QTest::addColumn<QString>("after");

    QTest::newRow("compact already") << u"Line0=A\r\nLine1=B\r\n"_s << QStringList { u"A"_s, u"B"_s } << 3
                                     << header + u"Line0=A\r\nLine1=B\r\n"_s;
    QTest::newRow("empty value closes up")
        << u"Line0=A\r\nLine1=\r\nLine2=C\r\n"_s << QStringList { u"A"_s, u"C"_s } << 3
        << header + u"Line0=A\r\nLine1=C\r\n"_s;
    QTest::newRow("key behind a gap is lost")
        << u"Line0=A\r\nLine2=C\r\n"_s << QStringList { u"A"_s } << 2 << header + u"Line0=A\r\n"_s;
    QTest::newRow("keys two behind a gap survive")
        << u"Line0=A\r\nLine2=C\r\nLine3=D\r\nLine4=E\r\n"_s << QStringList { u"A"_s } << 2
        << header + u"Line0=A\r\nLine3=D\r\nLine4=E\r\n"_s;
    QTest::newRow("all empty") << u"Line0=\r\nLine1=\r\n"_s << QStringList() << 1 << header;
    QTest::newRow("keys keep their places")
        << u"Line1=B\r\nLine0=A\r\nNote=x\r\n"_s << QStringList { u"A"_s, u"B"_s } << 3
        << header + u"Line1=B\r\nLine0=A\r\nNote=x\r\n"_s;
    QTest::newRow("two empties then an item")
        << u"Line0=\r\nLine1=\r\nLine2=C\r\n"_s << QStringList { u"C"_s } << 2 << header + u"Line0=C\r\n"_s;
}

void TestPickLists::reload()
{
    QFETCH(QString, body);
    QFETCH(QStringList, rows);
    QFETCH(int, nextLine);
    QFETCH(QString, after);

    QVERIFY(SettingsFiles::write(m_path, SettingsFiles::utf16(header + body + neighbour)));
    RecordingReporter reporter;
    {
        EditListModel model(PickLists::purposeList(), m_path, reporter);
        model.open();
        QCOMPARE(model.rows(), rows);
        QCOMPARE(model.nextLine(), nextLine);
        QCOMPARE(SettingsFiles::read(m_path), SettingsFiles::utf16(after + neighbour));
    }
    QCOMPARE(reporter.texts(), QStringList());
    // Closing the dialog writes the same again.
    QCOMPARE(SettingsFiles::read(m_path), SettingsFiles::utf16(after + neighbour));
}

void TestPickLists::addDeleteSequence()
{
    QVERIFY(
        SettingsFiles::write(m_path, SettingsFiles::utf16(header + u"Line0=A\r\nLine1=\r\nLine2=C\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), m_path, reporter);
    model.open();

    model.setNewItemText(u"D"_s);
    model.add();
    QCOMPARE(model.newItemText(), QString());
    QCOMPARE(model.rows(), (QStringList { u"A"_s, u"C"_s, u"D"_s }));
    QCOMPARE(model.nextLine(), 4);
    QCOMPARE(SettingsFiles::read(m_path),
             SettingsFiles::utf16(header + u"Line0=A\r\nLine1=C\r\nLine2=D\r\n"_s));

    model.setSelectedRow(1);
    model.deleteSelected();
    QCOMPARE(model.rows(), (QStringList { u"A"_s, u"D"_s }));
    QCOMPARE(model.selectedRow(), -1);
    QCOMPARE(SettingsFiles::read(m_path), SettingsFiles::utf16(header + u"Line0=A\r\nLine1=D\r\n"_s));

    model.setSelectedRow(0);
    model.deleteSelected();
    model.setNewItemText(u"E"_s);
    model.add();
    QCOMPARE(model.rows(), (QStringList { u"D"_s, u"E"_s }));
    QCOMPARE(SettingsFiles::read(m_path), SettingsFiles::utf16(header + u"Line0=D\r\nLine1=E\r\n"_s));

    // The deleted texts were shown, as information only; nothing was asked.
    const QList<RecordingReporter::Message> shown = reporter.messages();
    QCOMPARE(shown.size(), 2);
    QCOMPARE(shown[0].kind, Reporter::Kind::Info);
    QCOMPARE(shown[0].text, u"C"_s);
    QCOMPARE(shown[1].text, u"A"_s);

    // Save writes the file as it stands; cancel changes nothing of what was saved already.
    QVERIFY(model.save());
    model.cancel();
    QCOMPARE(PickLists::loadItems(m_path, PickLists::purposeList()), (QStringList { u"D"_s, u"E"_s }));
}

void TestPickLists::addLimitAndEmpty()
{
    QVERIFY(SettingsFiles::write(m_path, SettingsFiles::utf16(header + u"Line0=A\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), m_path, reporter);
    model.open();
    const QByteArray before = SettingsFiles::read(m_path);

    model.setNewItemText(QString());
    model.add();
    QCOMPARE(model.rows(), QStringList { u"A"_s });
    QCOMPARE(SettingsFiles::read(m_path), before);

    const QString forty = u"0123456789012345678901234567890123456789"_s;
    model.setNewItemText(forty + u"X"_s);
    QCOMPARE(model.newItemText(), forty);
    model.add();
    QCOMPARE(model.rows(), (QStringList { u"A"_s, forty }));
    QCOMPARE(SettingsFiles::read(m_path),
             SettingsFiles::utf16(header + u"Line0=A\r\nLine1="_s + forty + u"\r\n"_s));
    QCOMPARE(reporter.texts(), QStringList());
}

void TestPickLists::deleteWithoutSelection()
{
    QVERIFY(SettingsFiles::write(m_path, SettingsFiles::utf16(header + u"Line0=A\r\nLine1=B\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), m_path, reporter);
    model.open();
    const QByteArray before = SettingsFiles::read(m_path);
    model.deleteSelected();
    model.setSelectedRow(2); // past the last row
    model.deleteSelected();
    QCOMPARE(model.rows(), (QStringList { u"A"_s, u"B"_s }));
    QCOMPARE(reporter.texts(), QStringList());
    QCOMPARE(SettingsFiles::read(m_path), before);
}

void TestPickLists::folderGoneWhileOpen()
{
    const QString folder = m_dir->filePath(u"Tarvane Files"_s);
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + u"/Lists.ini"_s;
    QVERIFY(SettingsFiles::write(path, SettingsFiles::utf16(header + u"Line0=A\r\nLine1=B\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), path, reporter);
    model.open();
    QVERIFY(QDir(folder).removeRecursively());

    model.setSelectedRow(1);
    model.deleteSelected();
    QCOMPARE(reporter.texts(),
             (QStringList { u"B"_s, u"ERROR 501! Unable to save changes to List."_s,
                            u"ERROR 500! Unable to load List."_s }));
    QCOMPARE(model.rows(), QStringList());

    reporter.clear();
    model.setNewItemText(u"C"_s);
    model.add();
    QCOMPARE(reporter.texts(),
             (QStringList { u"ERROR 502! Unable to save changes to List."_s,
                            u"ERROR 500! Unable to load List."_s }));
    QVERIFY(!model.save());
    QVERIFY(!QFile::exists(folder));
}

void TestPickLists::loadFailure()
{
    RecordingReporter reporter;
    {
        EditListModel model(PickLists::purposeList(), m_path, reporter);
        model.open();
        QCOMPARE(model.rows(), QStringList());
        QCOMPARE(reporter.messages().size(), 1);
        QCOMPARE(reporter.messages()[0].kind, Reporter::Kind::Error);
        QCOMPARE(reporter.messages()[0].text, u"ERROR 500! Unable to load List."_s);
    }
    // A list that could not be read is not replaced by an empty one.
    QVERIFY(!QFile::exists(m_path));
}

void TestPickLists::saveFailureOnReload()
{
    // The shipped template loads but can never be written.
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), DevicePaths::builtinInstallFolder() + u"Lists.ini"_s,
                        reporter);
    QVERIFY(!model.reload());
    QCOMPARE(reporter.texts(), QStringList { u"ERROR 502! Unable to save changes to List."_s });
    QVERIFY(!model.rows().isEmpty());
}

void TestPickLists::seedRepairList_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QStringList>("custom");
    QTest::addColumn<QString>("after");

    const QString standard = u"Oil Change|Coolant Flush|Transmission Service|Tune-Up|Rotate Tires"_s;
    const auto lines = [](const QString &items, int first = 0) {
        QString text;
        int i = first;
        for (const QString &item : items.split(u'|'))
            text += u"Line%1=%2\r\n"_s.arg(i++).arg(item);
        return text;
    };

    QTest::newRow("empty file") << QString() << QStringList { u"Brakes"_s, u""_s, u"Wipers"_s, u""_s, u""_s }
                                << u"\r\n[RepairList]\r\n"_s + lines(u"Brakes|Wipers|"_s + standard);
    QTest::newRow("customs already there") << u"\r\n[RepairList]\r\nLine0=Tune-Up\r\nLine1=Brakes\r\n"_s
                                           << QStringList { u"Brakes"_s, u"Tune-Up"_s, u""_s, u""_s, u""_s }
                                           << u"\r\n[RepairList]\r\n"_s
            + lines(u"Tune-Up|Brakes|Oil Change|Coolant Flush|Transmission Service|Rotate Tires"_s);
    QTest::newRow("case differs") << u"\r\n[RepairList]\r\nLine0=oil change\r\n"_s
                                  << QStringList { u""_s, u""_s, u""_s, u""_s, u"BRAKES"_s }
                                  << u"\r\n[RepairList]\r\n"_s + lines(u"oil change|BRAKES|"_s + standard);
    QTest::newRow("empty item and stale keys")
        << u"\r\n[FuelStationList]\r\nLine0=Shell\r\n\r\n[RepairList]\r\nLine0=A\r\nLine1=\r\nLine2=B\r\n"
           "Line9=Old\r\n"_s
        << QStringList { u""_s, u""_s, u""_s, u""_s, u""_s }
        << u"\r\n[FuelStationList]\r\nLine0=Shell\r\n\r\n[RepairList]\r\nLine0=A\r\nLine1=B\r\nLine2=Oil "
           u"Change\r\n"
           "Line9=Old\r\n"_s
            + lines(u"Coolant Flush|Transmission Service|Tune-Up|Rotate Tires"_s, 3);
}

void TestPickLists::seedRepairList()
{
    QFETCH(QString, before);
    QFETCH(QStringList, custom);
    QFETCH(QString, after);

    QVERIFY(SettingsFiles::write(m_path, SettingsFiles::utf16(before)));
    std::array<QString, 5> names;
    std::copy(custom.begin(), custom.end(), names.begin());
    QVERIFY(PickLists::seedRepairList(m_path, names));
    QCOMPARE(SettingsFiles::read(m_path), SettingsFiles::utf16(after));
    // Confirming the page again adds nothing.
    QVERIFY(PickLists::seedRepairList(m_path, names));
    QCOMPARE(SettingsFiles::read(m_path), SettingsFiles::utf16(after));
}

void TestPickLists::seedMissingFile()
{
    QVERIFY(!PickLists::seedRepairList(m_path, { u"Brakes"_s }));
    QVERIFY(!QFile::exists(m_path));
}

void TestPickLists::tripLoader_data()
{
    QTest::addColumn<bool>("userCopy");
    QTest::addColumn<QString>("installFolder");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<QStringList>("purposes");
    QTest::addColumn<QStringList>("messages");

    const QStringList error400 = { u"ERROR 400:Cannot load ini file.\nPlease check your documentation\nfor "
                                   "possible causes."_s };
    QTest::newRow("user copy wins") << true << u"\\Setup\\"_s << true << QStringList { u"Mine"_s }
                                    << QStringList();
    QTest::newRow("install folder copy")
        << false << u"\\Setup\\"_s << true << QStringList { u"Shipped"_s, u"Default"_s } << QStringList();
    QTest::newRow("no backslash, no file") << false << u"\\Setup"_s << false << QStringList() << error400;
    QTest::newRow("missing install copy")
        << false << u"\\Elsewhere\\"_s << false << QStringList() << error400;
}

void TestPickLists::tripLoader()
{
    QFETCH(bool, userCopy);
    QFETCH(QString, installFolder);
    QFETCH(bool, loaded);
    QFETCH(QStringList, purposes);
    QFETCH(QStringList, messages);

    const DevicePaths paths(m_dir->path());
    QVERIFY(QDir().mkpath(paths.dataFolder()));
    QVERIFY(QDir().mkpath(paths.root() + u"Setup"_s));
    const QByteArray shipped = SettingsFiles::utf16(header + u"Line0=Shipped\r\nLine1=Default\r\n"_s);
    QVERIFY(SettingsFiles::write(paths.root() + u"Setup/Lists.ini"_s, shipped));
    if (userCopy)
        QVERIFY(SettingsFiles::write(PickLists::listsPath(paths),
                                     SettingsFiles::utf16(header + u"Line0=Mine\r\n"_s)));

    RecordingReporter reporter;
    {
        IniFile ini;
        QCOMPARE(PickLists::loadForTrip(ini, paths, installFolder, reporter), loaded);
        QCOMPARE(PickLists::items(ini, PickLists::purposeList()), purposes);
    }
    QCOMPARE(reporter.texts(), messages);
    if (reporter.messages().size() == 1)
        QCOMPARE(reporter.messages()[0].kind, Reporter::Kind::Error);

    // The shipped copy becomes the user's; a failed load leaves no file anywhere.
    if (!userCopy && loaded)
        QCOMPARE(SettingsFiles::read(PickLists::listsPath(paths)), shipped);
    if (!loaded)
        QVERIFY(!QFile::exists(PickLists::listsPath(paths)));
    QCOMPARE(SettingsFiles::read(paths.root() + u"Setup/Lists.ini"_s), shipped);
    QVERIFY(!QFile::exists(paths.root() + u"SetupLists.ini"_s));
    QVERIFY(!QFile::exists(paths.root() + u"Elsewhere"_s));
}

void TestPickLists::tripLoaderBuiltinTemplate_data()
{
    QTest::addColumn<QString>("installFolder");
    QTest::addColumn<bool>("loaded");

    QTest::newRow("install folder with backslash") << u"\\Program Files\\Tarvane\\"_s << true;
    // The default install folder has no final backslash, so the name runs on into the folder's.
    QTest::newRow("default install folder") << u"\\Program Files\\Tarvane"_s << false;
}

void TestPickLists::tripLoaderBuiltinTemplate()
{
    QFETCH(QString, installFolder);
    QFETCH(bool, loaded);

    const DevicePaths paths(m_dir->path());
    QVERIFY(QDir().mkpath(paths.dataFolder()));
    RecordingReporter reporter;
    IniFile ini;
    QCOMPARE(PickLists::loadForTrip(ini, paths, installFolder, reporter), loaded);
    QCOMPARE(reporter.texts().size(), loaded ? 0 : 1);
    QCOMPARE(QFile::exists(PickLists::listsPath(paths)), loaded);
    if (loaded) {
        const QString shipped = DevicePaths::builtinInstallFolder() + u"Lists.ini"_s;
        QCOMPARE(PickLists::loadItems(PickLists::listsPath(paths), PickLists::purposeList()),
                 PickLists::loadItems(shipped, PickLists::purposeList()));
        QCOMPARE(PickLists::loadItems(PickLists::listsPath(paths), PickLists::repairList()),
                 PickLists::loadItems(shipped, PickLists::repairList()));
    }
}

QTEST_GUILESS_MAIN(TestPickLists)
#include "tst_picklists.moc"
