#include "core/files_helper.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"
#include "settings/IniFile.h"
#include "settings/SettingsLocator.h"
#include "settings/SettingsMessages.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using TestFiles::read;
using TestFiles::utf16;
using TestFiles::write;

namespace {

const QByteArray userSettings = utf16(u"\r\n[VehicleList]\r\nVehicle0=Truck\r\n"_s);
const QByteArray userLists = utf16(u"\r\n[PurposeList]\r\nLine0=Mine\r\n"_s);

// The messages expected: each text with the given kind and no title.
QList<RecordingReporter::Message> shown(Reporter::Kind kind, const QStringList &texts)
{
    QList<RecordingReporter::Message> messages;
    for (const QString &text : texts)
        messages.append({ kind, text, QString() });
    return messages;
}

const QString error100
    = u"ERROR 100:Cannot load ini file.\nPlease check your documentation\nfor possible causes."_s;
const QString error106
    = u"ERROR 106:Cannot reload ini file.\nPlease check your documentation\nfor possible causes."_s;

} // namespace

class TestSettingsLocator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void normaliseInstallFolder_data();
    void normaliseInstallFolder();
    void startUp_data();
    void startUp();
    void installFolderWithBothFilesWins_data();
    void installFolderWithBothFilesWins();
    void copiesAreWritable();
    void loadFailure_data();
    void loadFailure();
    void reload();
    void messages();

private:
    QString dataFile(const QString &name) const { return m_paths->dataFile(name); }

    QByteArray m_velcoraTemplate;
    QByteArray m_listsTemplate;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<DevicePaths> m_paths;
};

void TestSettingsLocator::initTestCase()
{
    m_velcoraTemplate = read(u":/install/Velcora.ini"_s);
    m_listsTemplate = read(u":/install/Lists.ini"_s);
}

void TestSettingsLocator::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    m_paths = std::make_unique<DevicePaths>(m_dir->path());
}

void TestSettingsLocator::normaliseInstallFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("normalised");
    QTest::newRow("empty") << QString() << u"\\Program Files\\Tarvane\\"_s;
    QTest::newRow("registry default") << u"\\Program Files\\Tarvane"_s << u"\\Program Files\\Tarvane\\"_s;
    QTest::newRow("already ends in backslash")
        << u"\\Storage Card\\Setup\\"_s << u"\\Storage Card\\Setup\\"_s;
    QTest::newRow("short-path default") << u"\\My Documents"_s << u"\\My Documents\\"_s;
    QTest::newRow("slash is not a backslash") << u"\\Setup/"_s << u"\\Setup/\\"_s;
}

void TestSettingsLocator::normaliseInstallFolder()
{
    QFETCH(QString, folder);
    QFETCH(QString, normalised);
    QCOMPARE(SettingsLocator::normaliseInstallFolder(folder), normalised);
}

void TestSettingsLocator::startUp_data()
{
    QTest::addColumn<bool>("haveSettings");
    QTest::addColumn<bool>("haveLists");
    QTest::addColumn<QString>("installFolder");
    QTest::addColumn<QString>("installFolderAfter");
    QTest::addColumn<bool>("settingsFromTemplate");
    QTest::addColumn<bool>("listsFromTemplate");
    QTest::addColumn<QStringList>("infos");

    const QString data = u"\\My Documents\\Tarvane Files\\"_s;
    QTest::newRow("first start, empty Path")
        << false << false << QString() << data << true << true << QStringList();
    QTest::newRow("first start, short-path default")
        << false << false << u"\\My Documents"_s << data << true << true << QStringList();
    // A missing Lists.ini is restored alone; the user's vehicles stay.
    QTest::newRow("Lists.ini missing")
        << true << false << u"\\Program Files\\Tarvane"_s << data << false << true << QStringList();
    QTest::newRow("Lists.ini missing, Path names the data folder")
        << true << false << data << data << false << true << QStringList();
    QTest::newRow("Velcora.ini missing") << false << true << u"\\Program Files\\Tarvane"_s << data << true
                                         << false << QStringList { u"Looking for Config"_s };
    QTest::newRow("both present: Path untouched")
        << true << true << u"\\Program Files\\Tarvane"_s << u"\\Program Files\\Tarvane"_s << false << false
        << QStringList();
}

void TestSettingsLocator::startUp()
{
    QFETCH(bool, haveSettings);
    QFETCH(bool, haveLists);
    QFETCH(QString, installFolder);
    QFETCH(QString, installFolderAfter);
    QFETCH(bool, settingsFromTemplate);
    QFETCH(bool, listsFromTemplate);
    QFETCH(QStringList, infos);

    if (haveSettings)
        QVERIFY(write(dataFile(u"Velcora.ini"_s), userSettings));
    if (haveLists)
        QVERIFY(write(dataFile(u"Lists.ini"_s), userLists));

    RecordingReporter reporter;
    {
        IniFile settings;
        SettingsLocator locator(*m_paths, reporter);
        QVERIFY(locator.locate(installFolder, settings));
        QCOMPARE(installFolder, installFolderAfter);
        QCOMPARE(settings.path(), dataFile(u"Velcora.ini"_s));
        QCOMPARE(settings.serialize(), settingsFromTemplate ? m_velcoraTemplate : userSettings);
        QCOMPARE(settings.isModified(), false);
    }

    QCOMPARE(reporter.messages(), shown(Reporter::Kind::Info, infos));
    QCOMPARE(read(dataFile(u"Velcora.ini"_s)), settingsFromTemplate ? m_velcoraTemplate : userSettings);
    QCOMPARE(read(dataFile(u"Lists.ini"_s)), listsFromTemplate ? m_listsTemplate : userLists);
    QCOMPARE(QDir(m_paths->dataFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             (QStringList { u"Lists.ini"_s, u"Velcora.ini"_s }));
}

void TestSettingsLocator::installFolderWithBothFilesWins_data()
{
    QTest::addColumn<bool>("withLists");
    QTest::addColumn<bool>("fromInstallFolder");
    QTest::newRow("both files there") << true << true;
    QTest::newRow("only Velcora.ini there") << false << false;
}

void TestSettingsLocator::installFolderWithBothFilesWins()
{
    QFETCH(bool, withLists);
    QFETCH(bool, fromInstallFolder);

    const QByteArray shippedSettings = utf16(u"\r\n[VehicleList]\r\nVehicle0=Shipped\r\n"_s);
    const QByteArray shippedLists = utf16(u"\r\n[RepairList]\r\nLine0=Shipped\r\n"_s);
    QVERIFY(write(m_dir->filePath(u"Storage Card/Setup/Velcora.ini"_s), shippedSettings));
    if (withLists)
        QVERIFY(write(m_dir->filePath(u"Storage Card/Setup/Lists.ini"_s), shippedLists));

    RecordingReporter reporter;
    SettingsLocator locator(*m_paths, reporter);
    QString installFolder = u"\\Storage Card\\Setup"_s;
    QCOMPARE(locator.templateFolder(installFolder),
             fromInstallFolder ? m_dir->filePath(u"Storage Card/Setup/"_s) : u":/install/"_s);
    {
        IniFile settings;
        QVERIFY(locator.locate(installFolder, settings));
    }
    QCOMPARE(installFolder, u"\\My Documents\\Tarvane Files\\"_s);
    QCOMPARE(read(dataFile(u"Velcora.ini"_s)), fromInstallFolder ? shippedSettings : m_velcoraTemplate);
    QCOMPARE(read(dataFile(u"Lists.ini"_s)), fromInstallFolder ? shippedLists : m_listsTemplate);
    QCOMPARE(reporter.messages(), shown(Reporter::Kind::Info, {}));
}

void TestSettingsLocator::copiesAreWritable()
{
    // The template copies are ordinary writable files, whatever the resources' permissions are.
    RecordingReporter reporter;
    QString installFolder;
    {
        IniFile settings;
        QVERIFY(SettingsLocator(*m_paths, reporter).locate(installFolder, settings));
        settings.SetString(u"VehicleList"_s, u"Vehicle1"_s, u"Van"_s);
    }
    for (const QString &name : { u"Velcora.ini"_s, u"Lists.ini"_s }) {
        const QFileDevice::Permissions permissions = QFile::permissions(dataFile(name));
        QVERIFY2(permissions & QFileDevice::WriteOwner, qPrintable(name));
        QVERIFY2(permissions & QFileDevice::ReadOwner, qPrintable(name));
        // An ordinary file, readable by others, not the private mode of a temporary file.
        QVERIFY2(permissions & QFileDevice::ReadOther, qPrintable(name));
    }
    QVERIFY(read(dataFile(u"Velcora.ini"_s)).contains(utf16(u"Vehicle1=Van\r\n"_s).mid(2)));
}

void TestSettingsLocator::loadFailure_data()
{
    QTest::addColumn<QString>("blocker");
    QTest::addColumn<QStringList>("expectedTexts");

    // Velcora.ini is a folder: it exists, so nothing is copied, but it can't be loaded.
    QTest::newRow("settings file unreadable")
        << u"My Documents/Tarvane Files/Velcora.ini/"_s
        << QStringList { error100 + u"\n%1/My Documents/Tarvane Files/Velcora.ini: Not a regular file"_s };
    // The data folder is a file: every copy fails silently, then the load fails.
    QTest::newRow("data folder blocked")
        << u"My Documents/Tarvane Files"_s << QStringList { u"Looking for Config"_s, error100 };
}

void TestSettingsLocator::loadFailure()
{
    QFETCH(QString, blocker);
    QFETCH(QStringList, expectedTexts);

    QVERIFY(write(dataFile(u"Lists.ini"_s), userLists));
    if (blocker.endsWith(u'/')) {
        QVERIFY(QDir().mkpath(m_dir->filePath(blocker)));
    } else {
        QVERIFY(QDir(m_paths->dataFolder()).removeRecursively());
        QVERIFY(write(m_dir->filePath(blocker), "not a folder"));
    }

    RecordingReporter reporter;
    QString installFolder = u"\\Program Files\\Tarvane"_s;
    IniFile settings;
    QCOMPARE(SettingsLocator(*m_paths, reporter).locate(installFolder, settings), false);
    QCOMPARE(reporter.texts().replaceInStrings(m_dir->path(), u"%1"_s), expectedTexts);
    QCOMPARE(reporter.messages().last().kind, Reporter::Kind::Error);
    QCOMPARE(settings.sections(), QStringList());
}

void TestSettingsLocator::reload()
{
    RecordingReporter reporter;
    QString installFolder;
    SettingsLocator locator(*m_paths, reporter);
    IniFile settings;
    QVERIFY(locator.locate(installFolder, settings));

    // What Setup wrote is read back.
    const QByteArray changed = utf16(u"\r\n[VehicleList]\r\nVehicle0=Changed\r\n"_s);
    QVERIFY(write(dataFile(u"Velcora.ini"_s), changed));
    QVERIFY(locator.reload(settings));
    QCOMPARE(settings.serialize(), changed);
    QCOMPARE(reporter.messages(), shown(Reporter::Kind::Info, {}));

    // A file that can no longer be read: ERROR 106, and the object is left empty.
    QVERIFY(QFile::remove(dataFile(u"Velcora.ini"_s)));
    QVERIFY(QDir().mkpath(dataFile(u"Velcora.ini"_s)));
    QCOMPARE(locator.reload(settings), false);
    QCOMPARE(reporter.messages(), shown(Reporter::Kind::Error, { error106 }));
    QCOMPARE(settings.sections(), QStringList());
    QCOMPARE(settings.path(), dataFile(u"Velcora.ini"_s));
}

void TestSettingsLocator::messages()
{
    const QString tail = u"\nPlease check your documentation\nfor possible causes."_s;
    const QStringList texts
        = { SettingsMessages::setupLoadFailed(),
            SettingsMessages::setupLoadFailed(u"\\My Documents\\Tarvane Files\\Velcora.ini"_s),
            SettingsMessages::setupLoadFailed(u"Über%s.ini"_s),
            SettingsMessages::tripsLoadFailed(),
            SettingsMessages::reminderScreenLoadFailed(),
            SettingsMessages::customReminderScreenLoadFailed(),
            SettingsMessages::lookingForConfig() };
    QCOMPARE(texts,
             (QStringList {
                 u"ERROR 300:Cannot load ini file."_s + tail,
                 u"ERROR 300:Cannot load ini file.\n\\My Documents\\Tarvane Files\\Velcora.ini"_s + tail,
                 u"ERROR 300:Cannot load ini file.\nÜber%s.ini"_s + tail,
                 u"ERROR 400:Cannot load ini file."_s + tail, u"ERROR 600:Cannot load ini file."_s + tail,
                 u"ERROR 601:Cannot load ini file."_s + tail, u"Looking for Config"_s }));
}

QTEST_GUILESS_MAIN(TestSettingsLocator)
#include "tst_settingslocator.moc"
