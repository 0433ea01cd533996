#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "core/files_helper.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"
#include "settings/EditListModel.h"
#include "settings/IniFile.h"
#include "settings/PickLists.h"

using namespace Qt::StringLiterals;
using TestFiles::lines;

namespace {
const QString header = u"\r\n[PurposeList]\r\n"_s;
// A neighbour section that no edit of PurposeList may touch.
const QString neighbour = u"\r\n[ContactList]\r\nLine0=Bob\r\n"_s;

// A lists file holding only PurposeList with these keys.
QByteArray file(const QString &keys)
{
    return TestFiles::utf16(header + keys);
}
} // namespace

class TestPickLists : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void reload_data();
    void reload();
    void addDeleteSequence();
    void editsWithoutEffect();
    void folderGoneWhileOpen();
    void loadFailure();
    void saveFailureOnReload();
    void seedRepairList_data();
    void seedRepairList();
    void seedMissingFile();
    void tripLoader_data();
    void tripLoader();

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

void TestPickLists::reload_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<int>("nextLine");
    QTest::addColumn<QString>("after");

    QTest::newRow("compact already") << u"Line0=A\r\nLine1=B\r\n"_s << lines(u"A|B"_s) << 3
                                     << u"Line0=A\r\nLine1=B\r\n"_s;
    QTest::newRow("empty value closes up")
        << u"Line0=A\r\nLine1=\r\nLine2=C\r\n"_s << lines(u"A|C"_s) << 3 << u"Line0=A\r\nLine1=C\r\n"_s;
    QTest::newRow("key behind a gap is lost")
        << u"Line0=A\r\nLine2=C\r\n"_s << lines(u"A"_s) << 2 << u"Line0=A\r\n"_s;
    QTest::newRow("keys two behind a gap survive")
        << u"Line0=A\r\nLine2=C\r\nLine3=D\r\nLine4=E\r\n"_s << lines(u"A"_s) << 2
        << u"Line0=A\r\nLine3=D\r\nLine4=E\r\n"_s;
    QTest::newRow("all empty") << u"Line0=\r\nLine1=\r\n"_s << QStringList() << 1 << QString();
    QTest::newRow("keys keep their places") << u"Line1=B\r\nLine0=A\r\nNote=x\r\n"_s << lines(u"A|B"_s) << 3
                                            << u"Line1=B\r\nLine0=A\r\nNote=x\r\n"_s;
    QTest::newRow("two empties then an item")
        << u"Line0=\r\nLine1=\r\nLine2=C\r\n"_s << lines(u"C"_s) << 2 << u"Line0=C\r\n"_s;
}

void TestPickLists::reload()
{
    QFETCH(QString, keys);
    QFETCH(QStringList, rows);
    QFETCH(int, nextLine);
    QFETCH(QString, after);

    QVERIFY(TestFiles::write(m_path, file(keys + neighbour)));
    // The list as read is what the dialog shows.
    QCOMPARE(PickLists::loadItems(m_path, PickLists::purposeList()), rows);
    RecordingReporter reporter;
    {
        EditListModel model(PickLists::purposeList(), m_path, reporter);
        model.open();
        QCOMPARE(model.rows(), rows);
        QCOMPARE(model.nextLine(), nextLine);
        QCOMPARE(TestFiles::read(m_path), file(after + neighbour));
    }
    QCOMPARE(reporter.texts(), QStringList());
    // Closing the dialog writes the same again.
    QCOMPARE(TestFiles::read(m_path), file(after + neighbour));
}

void TestPickLists::addDeleteSequence()
{
    QVERIFY(TestFiles::write(m_path, file(u"Line0=A\r\nLine1=\r\nLine2=C\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), m_path, reporter);
    model.open();

    model.setNewItemText(u"D"_s);
    model.add();
    QCOMPARE(model.newItemText(), QString());
    QCOMPARE(model.rows(), lines(u"A|C|D"_s));
    QCOMPARE(model.nextLine(), 4);
    QCOMPARE(TestFiles::read(m_path), file(u"Line0=A\r\nLine1=C\r\nLine2=D\r\n"_s));

    model.setSelectedRow(1);
    model.deleteSelected();
    QCOMPARE(model.rows(), lines(u"A|D"_s));
    QCOMPARE(model.selectedRow(), -1);
    QCOMPARE(TestFiles::read(m_path), file(u"Line0=A\r\nLine1=D\r\n"_s));

    model.setSelectedRow(0);
    model.deleteSelected();
    model.setNewItemText(u"E"_s);
    model.add();
    QCOMPARE(model.rows(), lines(u"D|E"_s));
    QCOMPARE(TestFiles::read(m_path), file(u"Line0=D\r\nLine1=E\r\n"_s));

    // The deleted texts were shown, as information only; nothing was asked.
    QCOMPARE(reporter.texts(), lines(u"C|A"_s));
    for (const RecordingReporter::Message &message : reporter.messages())
        QCOMPARE(message.kind, Reporter::Kind::Info);

    // Save writes the file as it stands; cancel changes nothing of what was saved already.
    QVERIFY(model.save());
    model.cancel();
    QCOMPARE(PickLists::loadItems(m_path, PickLists::purposeList()), lines(u"D|E"_s));
}

void TestPickLists::editsWithoutEffect()
{
    QVERIFY(TestFiles::write(m_path, file(u"Line0=A\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), m_path, reporter);
    model.open();
    const QByteArray before = TestFiles::read(m_path);

    // An empty text is not added; a delete without a selection, or past the last row, does nothing.
    model.setNewItemText(QString());
    model.add();
    model.deleteSelected();
    model.setSelectedRow(1);
    model.deleteSelected();
    QCOMPARE(model.rows(), QStringList { u"A"_s });
    QCOMPARE(TestFiles::read(m_path), before);

    // A new item is cut to 40 characters.
    const QString forty = u"0123456789012345678901234567890123456789"_s;
    model.setNewItemText(forty + u"X"_s);
    QCOMPARE(model.newItemText(), forty);
    model.add();
    QCOMPARE(model.rows(), (QStringList { u"A"_s, forty }));
    QCOMPARE(TestFiles::read(m_path), file(u"Line0=A\r\nLine1="_s + forty + u"\r\n"_s));
    QCOMPARE(reporter.texts(), QStringList());
}

void TestPickLists::folderGoneWhileOpen()
{
    const QString folder = m_dir->filePath(u"Tarvane Files"_s);
    QVERIFY(QDir().mkpath(folder));
    const QString path = folder + u"/Lists.ini"_s;
    QVERIFY(TestFiles::write(path, file(u"Line0=A\r\nLine1=B\r\n"_s)));
    RecordingReporter reporter;
    EditListModel model(PickLists::purposeList(), path, reporter);
    model.open();
    QVERIFY(QDir(folder).removeRecursively());

    model.setSelectedRow(1);
    model.deleteSelected();
    QCOMPARE(reporter.texts(),
             lines(u"B|ERROR 501! Unable to save changes to List.|ERROR 500! Unable to load List."_s));
    QCOMPARE(model.rows(), QStringList());

    reporter.clear();
    model.setNewItemText(u"C"_s);
    model.add();
    QCOMPARE(reporter.texts(),
             lines(u"ERROR 502! Unable to save changes to List.|ERROR 500! Unable to load List."_s));
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
        QCOMPARE(reporter.messages(),
                 (QList<RecordingReporter::Message> {
                     { Reporter::Kind::Error, u"ERROR 500! Unable to load List."_s, QString() } }));
    }
    // The settings object keeps its path after a failed load, so a missing list comes back empty.
    QCOMPARE(TestFiles::read(m_path), QByteArray("\xff\xfe"));
    QVERIFY(QFile::remove(m_path));
    QCOMPARE(PickLists::loadItems(m_path, PickLists::purposeList()), QStringList());
    QCOMPARE(TestFiles::read(m_path), QByteArray("\xff\xfe"));
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
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("custom"); // the five names, '|' between them
    QTest::addColumn<QStringList>("after");

    QTest::newRow("empty file")
        << QStringList() << u"Brakes||Wipers||"_s
        << lines(u"[RepairList]|Line0=Brakes|Line1=Wipers|Line2=Oil Change|Line3=Coolant Flush|"
                 u"Line4=Transmission Service|Line5=Tune-Up|Line6=Rotate Tires"_s);
    QTest::newRow("customs already there")
        << lines(u"[RepairList]|Line0=Tune-Up|Line1=Brakes"_s) << u"Brakes|Tune-Up|||"_s
        << lines(u"[RepairList]|Line0=Tune-Up|Line1=Brakes|Line2=Oil Change|Line3=Coolant Flush|"
                 u"Line4=Transmission Service|Line5=Rotate Tires"_s);
    QTest::newRow("case differs") << lines(u"[RepairList]|Line0=oil change"_s) << u"||||BRAKES"_s
                                  << lines(u"[RepairList]|Line0=oil change|Line1=BRAKES|Line2=Oil Change|"
                                           u"Line3=Coolant Flush|Line4=Transmission Service|Line5=Tune-Up|"
                                           u"Line6=Rotate Tires"_s);
    QTest::newRow("empty item and stale keys")
        << lines(u"[FuelStationList]|Line0=Shell|[RepairList]|Line0=A|Line1=|Line2=B|Line9=Old"_s)
        << u"||||"_s
        << lines(u"[FuelStationList]|Line0=Shell|[RepairList]|Line0=A|Line1=B|Line2=Oil Change|Line9=Old|"
                 u"Line3=Coolant Flush|Line4=Transmission Service|Line5=Tune-Up|Line6=Rotate Tires"_s);
}

void TestPickLists::seedRepairList()
{
    QFETCH(QStringList, before);
    QFETCH(QString, custom);
    QFETCH(QStringList, after);

    QVERIFY(TestFiles::write(m_path, TestFiles::written(before)));
    std::array<QString, 5> names;
    const QStringList parts = custom.split(u'|');
    std::copy(parts.begin(), parts.end(), names.begin());
    QVERIFY(PickLists::seedRepairList(m_path, names));
    QCOMPARE(TestFiles::read(m_path), TestFiles::written(after));
    // Confirming the page again adds nothing.
    QVERIFY(PickLists::seedRepairList(m_path, names));
    QCOMPARE(TestFiles::read(m_path), TestFiles::written(after));
}

void TestPickLists::seedMissingFile()
{
    QVERIFY(!PickLists::seedRepairList(m_path, { u"Brakes"_s }));
    QCOMPARE(TestFiles::read(m_path), QByteArray("\xff\xfe"));
}

void TestPickLists::tripLoader_data()
{
    QTest::addColumn<bool>("userCopy");
    QTest::addColumn<QString>("installFolder");
    QTest::addColumn<QString>("copiedFrom"); // the file that becomes the user's copy, if any
    QTest::addColumn<QStringList>("purposes");
    QTest::addColumn<QStringList>("messages");

    const QStringList error400
        = { u"ERROR 400:Cannot load ini file.\nPlease check your documentation\nfor possible causes."_s };
    QTest::newRow("user copy wins") << true << u"\\Setup\\"_s << QString() << lines(u"Mine"_s)
                                    << QStringList();
    QTest::newRow("install folder copy")
        << false << u"\\Setup\\"_s << u"Setup/Lists.ini"_s << lines(u"Shipped|Default"_s) << QStringList();
    QTest::newRow("no backslash, no file") << false << u"\\Setup"_s << QString() << QStringList() << error400;
    QTest::newRow("missing install copy")
        << false << u"\\Elsewhere\\"_s << QString() << QStringList() << error400;
    QTest::newRow("shipped template")
        << false << u"\\Program Files\\Tarvane\\"_s << u":/install/Lists.ini"_s
        << lines(u"Business|Personal|Commute|Medical|Charity|Moving"_s) << QStringList();
    // The default install folder has no final backslash, so the name runs on into the folder's.
    QTest::newRow("default install folder")
        << false << u"\\Program Files\\Tarvane"_s << QString() << QStringList() << error400;
}

void TestPickLists::tripLoader()
{
    QFETCH(bool, userCopy);
    QFETCH(QString, installFolder);
    QFETCH(QString, copiedFrom);
    QFETCH(QStringList, purposes);
    QFETCH(QStringList, messages);

    const DevicePaths paths(m_dir->path());
    QVERIFY(QDir().mkpath(paths.dataFolder()));
    const QByteArray shipped = file(u"Line0=Shipped\r\nLine1=Default\r\n"_s);
    QVERIFY(TestFiles::write(paths.root() + u"Setup/Lists.ini"_s, shipped));
    if (userCopy)
        QVERIFY(TestFiles::write(PickLists::listsPath(paths), file(u"Line0=Mine\r\n"_s)));

    RecordingReporter reporter;
    {
        IniFile ini;
        QCOMPARE(PickLists::loadForTrip(ini, paths, installFolder, reporter), messages.isEmpty());
        QCOMPARE(PickLists::items(ini, PickLists::purposeList()), purposes);
    }
    QCOMPARE(reporter.texts(), messages);
    for (const RecordingReporter::Message &message : reporter.messages())
        QCOMPARE(message.kind, Reporter::Kind::Error);

    // The shipped copy becomes the user's; a failed load leaves no file anywhere.
    if (!copiedFrom.isEmpty())
        QCOMPARE(TestFiles::read(PickLists::listsPath(paths)),
                 TestFiles::read(copiedFrom.startsWith(u':') ? copiedFrom : paths.root() + copiedFrom));
    if (!messages.isEmpty())
        QVERIFY(!QFile::exists(PickLists::listsPath(paths)));
    QCOMPARE(TestFiles::read(paths.root() + u"Setup/Lists.ini"_s), shipped);
    QVERIFY(!QFile::exists(paths.root() + u"SetupLists.ini"_s));
    QVERIFY(!QFile::exists(paths.root() + u"Elsewhere"_s));
}

QTEST_GUILESS_MAIN(TestPickLists)
#include "tst_picklists.moc"
