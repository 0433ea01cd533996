#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include "platform/CFormat.h"
#include "platform/ContentHash.h"
#include "platform/DevicePaths.h"
#include "platform/FileFingerprint.h"
#include "platform/LocaleFormats.h"
#include "platform/Preferences.h"
#include "platform/SettingsStore.h"

using namespace Qt::StringLiterals;

class TestPlatform : public QObject
{
    Q_OBJECT

private slots:
    void cformatBehavesLikeC_data();
    void cformatBehavesLikeC();
    void to8bitKeepsLowByte();
    void hostPathMapping_data();
    void hostPathMapping();
    void settingsStoreTypedQueries();
    void sandboxStoreLivesUnderRoot();
    void preferencesDefaultsAndImmediateWrites();
    void localeFormats();
    void contentHashIgnoresPieces();
    void fingerprintSeesChanges_data();
    void fingerprintSeesChanges();
};

void TestPlatform::cformatBehavesLikeC_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    // The formats the log and the settings use, with what C prints for them.
    QTest::newRow("%-4.0d of 0 is four blanks") << cformat("%-4.0d", 0) << u"    "_s;
    QTest::newRow("%-4.0d of 180") << cformat("%-4.0d", 180) << u"180 "_s;
    QTest::newRow("%-7.0f rounds and pads") << cformat("%-7.0f", 5000.5) << u"5000   "_s;
    QTest::newRow("%-7.0f of 12345.6") << cformat("%-7.0f", 12345.6) << u"12346  "_s;
    QTest::newRow("%-7.0f wider than 7") << cformat("%-7.0f", 123456789.0) << u"123456789"_s;
    QTest::newRow("%-10.10d zero fills") << cformat("%-10.10d", 86400) << u"0000086400"_s;
    QTest::newRow("%-3.3f") << cformat("%-3.3f", 0.345) << u"0.345"_s;
    QTest::newRow("%3.1d") << cformat("%3.1d", 7) << u"  7"_s;
    QTest::newRow("%3.2f") << cformat("%3.2f", 30.0) << u"30.00"_s;
    QTest::newRow("%s with UTF-8") << cformat("%s%s.vcb", "Tarvane Files/", "Z\xc3\xa9")
                                   << u"Tarvane Files/Zé.vcb"_s;
    QTest::newRow("output longer than a buffer")
        << cformat("[%s]", QByteArray(1000, 'x').constData()) << u'[' + QString(1000, u'x') + u']';
}

void TestPlatform::cformatBehavesLikeC()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void TestPlatform::to8bitKeepsLowByte()
{
    // é is 0xE9; the euro sign U+20AC keeps its low byte 0xAC instead of becoming "?".
    const QString text = u"a\u00e9\u20ac"_s;
    QCOMPARE(to8bit(text), QByteArray("a\xe9\xac"));
    QCOMPARE(from8bit(QByteArray("a\xe9")), u"a\u00e9"_s);
}

void TestPlatform::hostPathMapping_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("host");
    QTest::newRow("data folder file") << u"\\My Documents\\Tarvane Files\\Velcora.ini"_s
                                      << u"/sandbox/My Documents/Tarvane Files/Velcora.ini"_s;
    QTest::newRow("without leading backslash")
        << u"My Documents\\Tarvane Files\\Lists.ini"_s << u"/sandbox/My Documents/Tarvane Files/Lists.ini"_s;
    QTest::newRow("my documents itself") << u"\\My Documents"_s << u"/sandbox/My Documents/"_s;
    QTest::newRow("install folder") << u"\\Program Files\\Tarvane\\Lists.ini"_s << u":/install/Lists.ini"_s;
    QTest::newRow("install folder without slash") << u"\\Program Files\\Tarvane"_s << u":/install/"_s;
    QTest::newRow("backup folder") << u"\\Tarvane Backup\\x.bak"_s << u"/sandbox/Tarvane Backup/x.bak"_s;
    QTest::newRow("root") << u"\\"_s << u"/sandbox/"_s;
    QTest::newRow("host path unchanged") << u"/tmp/a.vcb"_s << u"/tmp/a.vcb"_s;
}

void TestPlatform::hostPathMapping()
{
    QFETCH(QString, device);
    QFETCH(QString, host);
    const DevicePaths paths(u"/sandbox"_s);
    QCOMPARE(paths.hostPath(device), host);
    QCOMPARE(paths.dataFolder(), u"/sandbox/My Documents/Tarvane Files/"_s);
    QCOMPARE(paths.registryFolder(), u"/sandbox/Registry/"_s);
}

void TestPlatform::settingsStoreTypedQueries()
{
    MemorySettingsStore store;
    QVERIFY(!store.keyExists(u"Options"_s));
    QVERIFY(store.setValue(u"Options"_s, u"R5"_s, 7));
    QVERIFY(store.setValue(u"Options"_s, u"Name"_s, u"Van"_s));
    QVERIFY(store.setValue(u"Options"_s, u"Bad"_s, u"12x"_s));
    quint32 n = 99;
    QVERIFY(store.queryDword(u"Options"_s, u"R5"_s, &n));
    QCOMPARE(n, 7u);
    n = 99;
    QVERIFY(!store.queryDword(u"Options"_s, u"Name"_s, &n));
    QVERIFY(!store.queryDword(u"Options"_s, u"Bad"_s, &n));
    QVERIFY(!store.queryDword(u"Options"_s, u"Missing"_s, &n));
    QCOMPARE(n, 99u);
    QCOMPARE(store.writeOrder(u"Options"_s), (QStringList { u"R5"_s, u"Name"_s, u"Bad"_s }));
    store.setFailWrites(true);
    QVERIFY(!store.setValue(u"Options"_s, u"R6"_s, 1));
}

void TestPlatform::sandboxStoreLivesUnderRoot()
{
    QTemporaryDir dir;
    const DevicePaths paths(dir.path());
    {
        QSettingsStore store(paths, u"Quellar"_s, u"Velcora"_s);
        QVERIFY(!store.keyExists(u"Options"_s));
        QVERIFY(store.setValue(u"Options"_s, u"Path"_s, u"\\Program Files\\Tarvane"_s));
        QVERIFY(store.setValue(u"Options"_s, u"R5"_s, 3));
        QVERIFY(store.sync());
        QVERIFY(store.fileName().startsWith(dir.path() + u"/Registry/"_s));
    }
    QSettingsStore again(paths, u"Quellar"_s, u"Velcora"_s);
    QVERIFY(again.keyExists(u"Options"_s));
    QString path;
    QVERIFY(again.queryString(u"Options"_s, u"Path"_s, &path));
    QCOMPARE(path, u"\\Program Files\\Tarvane"_s);
    quint32 r5 = 0;
    QVERIFY(again.queryDword(u"Options"_s, u"R5"_s, &r5));
    QCOMPARE(r5, 3u);
}

void TestPlatform::preferencesDefaultsAndImmediateWrites()
{
    QTemporaryDir dir;
    const DevicePaths paths(dir.path());
    QSettingsStore store(paths, u"Quellar"_s, u"Tarvane"_s);
    Preferences prefs(store);
    QCOMPARE(prefs.getString(u"ListAttributes"_s, u"LastBackupDate"_s, u"Unknown"_s), u"Unknown"_s);
    QCOMPARE(prefs.getInt(u"ListAttributes"_s, u"Width0"_s, 60), 60);
    QVERIFY(prefs.writeString(u"ListAttributes"_s, u"LastBackupDate"_s, u"11/21/2026"_s));
    QVERIFY(prefs.writeInt(u"ListAttributes"_s, u"Width0"_s, 80));
    // Written at once: a second store over the same file sees the values.
    QSettingsStore other(paths, u"Quellar"_s, u"Tarvane"_s);
    Preferences prefs2(other);
    QCOMPARE(prefs2.getString(u"ListAttributes"_s, u"LastBackupDate"_s, u"Unknown"_s), u"11/21/2026"_s);
    QCOMPARE(prefs2.getInt(u"ListAttributes"_s, u"Width0"_s, 60), 80);
    QCOMPARE(prefs2.getString(u"Other"_s, u"LastBackupDate"_s, u"Unknown"_s), u"Unknown"_s);
}

void TestPlatform::localeFormats()
{
    const QDate date(2026, 3, 7);
    const QTime time(14, 5);
    TestLocaleFormats test;
    QCOMPARE(test.shortDate(date), u"3/7/2026"_s);
    QCOMPARE(test.shortTime(time), u"2:05 PM"_s);
    QCOMPARE(test.currencySymbol(), u"$"_s);

    const QLocaleFormats german(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(german.dateOrder(), LocaleFormats::DateOrder::DayMonthYear);
    QCOMPARE(german.dateSeparator(), u"."_s);
    // "€" is one character and fits.
    QCOMPARE(german.currencySymbol(), u"\u20ac"_s);
    const QLocaleFormats swiss(QLocale(QLocale::German, QLocale::Switzerland));
    // "CHF" does not fit in the two characters the record allows.
    QCOMPARE(swiss.currencySymbol(), u"$"_s);
    const QLocaleFormats us(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(us.dateOrder(), LocaleFormats::DateOrder::MonthDayYear);
}

void TestPlatform::contentHashIgnoresPieces()
{
    const QByteArray bytes = QByteArray("0123456789abcdefghijklmnopqrstuvwxyz").repeated(7);
    const quint64 whole = ContentHash::of(bytes);
    for (int piece : { 1, 5, 31, 32, 33, 100 }) {
        ContentHash hash;
        for (qsizetype at = 0; at < bytes.size(); at += piece)
            hash.add(bytes.constData() + at, qMin<qsizetype>(piece, bytes.size() - at));
        QCOMPARE(hash.result(), whole);
    }
    // A trailing zero byte, or one byte changed, is another content.
    QVERIFY(ContentHash::of(bytes + '\0') != whole);
    QVERIFY(ContentHash::of(QByteArray(bytes).replace(100, 1, "#")) != whole);
    QVERIFY(ContentHash::of(QByteArray()) != ContentHash::of(QByteArray(1, '\0')));
}

void TestPlatform::fingerprintSeesChanges_data()
{
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<bool>("inPlace");
    QTest::addColumn<bool>("changed");
    QTest::newRow("untouched") << QByteArray("log bytes") << false << false;
    QTest::newRow("same bytes saved again") << QByteArray("log bytes") << true << false;
    QTest::newRow("same size, other bytes, in place") << QByteArray("LOG BYTES") << true << true;
    QTest::newRow("other size") << QByteArray("log bytes!") << true << true;
}

// A rewrite in place within the same moment keeps the size and, on coarse file systems, the
// times: only the content tells. A fingerprint whose read began later than the file's last
// change (so it may trust the times) must still see that the times moved.
void TestPlatform::fingerprintSeesChanges()
{
    QFETCH(QByteArray, after);
    QFETCH(bool, inPlace);
    QFETCH(bool, changed);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Car.vcb"));
    const QByteArray before("log bytes");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(before) == before.size());
    file.close();
    const qint64 late = FileFingerprint::readStart() + qint64(60) * 1000000000;
    const FileFingerprint fingerprints[]
        = { FileFingerprint(path, before), FileFingerprint(path, before, late) };
    if (inPlace) {
        // Past the file system's clock tick, as a change after a real read would be.
        QThread::msleep(20);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.write(after) == after.size());
        QVERIFY(file.resize(after.size()));
        file.close();
    }
    for (const FileFingerprint &fingerprint : fingerprints)
        QCOMPARE(fingerprint.changedOnDisk(1024), changed);
}

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
