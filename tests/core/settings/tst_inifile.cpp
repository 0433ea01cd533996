#include "core/files_helper.h"
#include "settings/IniFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <climits>
#include <unistd.h>

using namespace Qt::StringLiterals;
using TestFiles::lines;
using TestFiles::read;
using TestFiles::utf16;
using TestFiles::write;
using TestFiles::written;

namespace {

// Every section and key in order, "[name]" then "key=value" per line, for whole-content checks.
QStringList dump(const IniFile &ini)
{
    QStringList lines;
    for (const QString &section : ini.sections()) {
        lines << u'[' + section + u']';
        for (const QString &key : ini.keys(section)) {
            QString value;
            ini.GetString(section, key, value);
            lines << key + u'=' + value;
        }
    }
    return lines;
}

// The shipped templates, line by line. The vehicle's numbers are as the profile writer leaves them:
// distances "%-7.0f" padded to 7, days "%-4.0d" padded to 4 (a zero prints nothing and reads back
// empty), cost "%-3.3f", dates "%-10.10d".
QStringList velcoraTemplate()
{
    QStringList car = lines(
        u"[VehicleList]|Vehicle0=My Car|[My Car]|Directory=\\My Documents\\Tarvane Files\\|VIN=MYCAR0001|"
        u"Make=Generic|Model=Sedan|Year=2004|Plate=ABC123|Start Odometer=0      |CoolDays=730 |"
        u"CoolDistance=30000  |OilDays=180 |TuneDistance=30000  |TuneDays=730 |OilDistance=5000   |"
        u"TransDays=730 |TransDistance=30000  |TireDays=180 |TireDistance=7500   "_s);
    for (const QString &key : { u"Custom%1="_s, u"C%1Days="_s, u"C%1Miles=0      "_s })
        for (int i = 1; i <= 5; ++i)
            car << key.arg(i);
    car << lines(u"CostPerMile=0.500|Distance=Mile|Econo=MPG|Liquid=US|SetupDate=0000000000"_s);
    for (int i = 0; i <= 9; ++i)
        car << u"LastR%1Mileage=0      "_s.arg(i) << u"LastR%1Date=0000000000"_s.arg(i);
    return car
        + lines(u"[TripSettings]|SortListBy=Date|UseContacts=No|HomeAddress=No|CompanyName=No|Detailed=No|"
                u"[Versions]|PPC=Version 2.2.2 Build 76"_s);
}

QStringList listsTemplate()
{
    const QStringList lists = {
        u"FuelStationList|Corner Station|Highway Station|Supermarket|Truck Stop"_s,
        u"RepairList|Oil Change|Coolant Flush|Transmission Service|Tune-Up|Rotate Tires|Air Filter|Alignment|"
        u"Battery|Brakes|Car Wash|Inspection|New Tires|Wiper Blades"_s,
        u"RepairLocation|Dealer|Local Garage|Quick Lube|Tire Shop|Do It Yourself"_s,
        u"PurposeList|Business|Personal|Commute|Medical|Charity|Moving"_s,
        u"ContactList|Office|Client|Supplier"_s,
        u"DestinationList|Office|Home|Airport|Client Site|Bank|Post Office"_s,
    };
    QStringList result;
    for (const QString &list : lists) {
        const QStringList parts = list.split(u'|');
        result << u'[' + parts[0] + u']';
        for (int i = 1; i < parts.size(); ++i)
            result << u"Line%1="_s.arg(i - 1) + parts[i];
    }
    return result;
}

} // namespace

class TestIniFile : public QObject
{
    Q_OBJECT

private slots:
    void parseAndWrite_data();
    void parseAndWrite();
    void writesExactBytes();
    void setInt();
    void getInt();
    void colors();
    void missingAndDeletedKeys();
    void loadAndSaveFiles();
    void savesOnDestruction();
    void failedSaveKeepsOldFile_data();
    void failedSaveKeepsOldFile();
    void readOnlyFolder();
    void largeFileLoadsQuickly();
    void templates_data();
    void templates();
};

void TestIniFile::parseAndWrite_data()
{
    // The content read, which is also what is written back in the written form.
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("content");

    QTest::newRow("space around =, leading blanks of a value dropped, trailing kept")
        << utf16(u"[S]\r\nkey = value\r\na=  \t x y  \r\n"_s) << lines(u"[S]|key =value|a=x y  "_s);
    QTest::newRow("semicolon line runs into the next key")
        << utf16(u"[S]\r\n;comment line\r\nName=Bob\r\n"_s) << lines(u"[S]|comment line\r\nName=Bob"_s);
    QTest::newRow("hash and indentation skipped to first letter or digit")
        << utf16(u"[S]\r\n   # 5 x=1\r\n\t\tkey=2\r\n"_s) << lines(u"[S]|5 x=1|key=2"_s);
    QTest::newRow("empty values") << utf16(u"[S]\r\na=\r\nb=   \r\nc=\t\n"_s) << lines(u"[S]|a=|b=|c="_s);
    QTest::newRow("keys and sections are case-sensitive")
        << utf16(u"[a]\r\nKey=1\r\nkey=2\r\n[A]\r\nKEY=3\r\n"_s) << lines(u"[a]|Key=1|key=2|[A]|KEY=3"_s);
    QTest::newRow("duplicates: last value at the first place, sections merged")
        << utf16(u"[A]\r\nx=1\r\n[B]\r\ny=2\r\n[A]\r\nz=3\r\nx=4\r\n"_s) << lines(u"[A]|x=4|z=3|[B]|y=2"_s);
    QTest::newRow("value holding =, no line end at the end")
        << utf16(u"[S]\r\nk=a=b==c\r\nl=end of file"_s) << lines(u"[S]|k=a=b==c|l=end of file"_s);
    QTest::newRow("header taken unchanged, empty section kept")
        << utf16(u"[ My Car ]\r\n[x=y]\r\n"_s) << lines(u"[ My Car ]|[x=y]"_s);
    QTest::newRow("LF and lone CR line ends") << utf16(u"[S]\na=1\rb=2\n"_s) << lines(u"[S]|a=1|b=2"_s);
    QTest::newRow("keys before the first header dropped, header without ] ends the file")
        << utf16(u"orphan=1\r\n[S]\r\na=1\r\n[Broken\r\nb=2\r\n"_s) << lines(u"[S]|a=1"_s);
    QTest::newRow("key without = at the end dropped")
        << utf16(u"[S]\r\na=1\r\ndangling\r\n"_s) << lines(u"[S]|a=1"_s);
    QTest::newRow("text beyond ASCII")
        << utf16(u"[Über]\r\nNäme=Café ☕ 🚗\r\n"_s) << lines(u"[Über]|Näme=Café ☕ 🚗"_s);
    QTest::newRow("key starts at the first ASCII letter")
        << utf16(u"[S]\r\nÉtat=1\r\n"_s) << lines(u"[S]|tat=1"_s);
    QTest::newRow("only the mark") << utf16(QString()) << QStringList();
    QTest::newRow("empty file") << QByteArray() << QStringList();
    // Files an editor re-saved are read as what they plainly are.
    QTest::newRow("UTF-16 without the mark") << utf16(u"[S]\r\nk=v\r\n"_s).mid(2) << lines(u"[S]|k=v"_s);
    QTest::newRow("big-endian mark") << QByteArray("\xfe\xff\0[\0S\0]\0\r\0\n\0k\0=\0v", 18)
                                     << lines(u"[S]|k=v"_s);
    QTest::newRow("big-endian without the mark")
        << QByteArray("\0[\0S\0]\0\r\0\n\0k\0=\0\xe9", 16) << lines(u"[S]|k=é"_s);
    QTest::newRow("UTF-8 with its mark") << QByteArray("\xef\xbb\xbf[S]\r\nk=v\r\n") << lines(u"[S]|k=v"_s);
    QTest::newRow("UTF-8 without a mark") << QByteArray("[S]\r\nk=Caf\xc3\xa9\r\n") << lines(u"[S]|k=Café"_s);
    QTest::newRow("odd byte count drops the last byte")
        << utf16(u"[S]\r\nk=vw"_s).chopped(1) << lines(u"[S]|k=v"_s);
    const QString odd = u"k=a"_s + QChar(0xd800) + QChar(0) + u"b"_s;
    QTest::newRow("lone surrogates and NUL kept")
        << utf16(u"[S]\r\n"_s + odd) << QStringList { u"[S]"_s, odd };
}

void TestIniFile::parseAndWrite()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, content);

    QTemporaryDir dir;
    QVERIFY(write(dir.filePath(u"Velcora.ini"_s), bytes));
    IniFile ini;
    QVERIFY(ini.Load(dir.filePath(u"Velcora.ini"_s)));
    ini.setSaveOnDestroy(false);
    QCOMPARE(dump(ini), content);
    QCOMPARE(ini.isModified(), false);
    QCOMPARE(ini.serialize(), written(content));

    IniFile again;
    again.parse(ini.serialize());
    QCOMPARE(dump(again), content);
}

void TestIniFile::writesExactBytes()
{
    IniFile ini;
    ini.SetString(u"VehicleList"_s, u"Vehicle0"_s, u"My Car"_s);
    ini.SetString(u"My Car"_s, u"VIN"_s, u"ABC"_s);
    ini.SetString(u"VehicleList"_s, u"Vehicle1"_s, u"Van"_s);
    ini.SetString(u"My Car"_s, u"VIN"_s, u"XYZ"_s);
    QVERIFY(ini.isModified());
    static const char bytes[] = "\xff\xfe\r\0\n\0[\0V\0e\0h\0i\0c\0l\0e\0L\0i\0s\0t\0]\0\r\0\n\0"
                                "V\0e\0h\0i\0c\0l\0e\0"
                                "0\0=\0M\0y\0 \0C\0a\0r\0\r\0\n\0V\0e\0h\0i\0c\0l\0e\0"
                                "1\0=\0V\0a\0n\0\r\0\n\0\r\0\n\0[\0M\0y\0 \0C\0a\0r\0]\0\r\0\n\0"
                                "V\0I\0N\0=\0X\0Y\0Z\0\r\0\n\0";
    QCOMPARE(ini.serialize(), QByteArray(bytes, 2 + 2 * 69));
    QCOMPARE(sizeof(bytes), size_t(2 + 2 * 69 + 1));
}

void TestIniFile::setInt()
{
    IniFile ini;
    const QList<int> values = { 0, INT_MAX, -1, -5, -10, INT_MIN };
    for (int i = 0; i < values.size(); ++i)
        ini.SetInt(u"S"_s, u"k%1"_s.arg(i), values[i]);
    // '0' + value % 10 per digit with C's truncating remainder: -5 % 10 == -5 gives '0' - 5 == '+'.
    QCOMPARE(ini.serialize(), written(lines(u"[S]|k0=0|k1=2147483647|k2=/|k3=+|k4=/0|k5=./,),(-*,("_s)));
}

void TestIniFile::getInt()
{
    const QStringList texts
        = { u"5000   "_s, u""_s,    u"Mile"_s,        u"12abc"_s,        u" \t007"_s,      u"-5"_s,
            u"-"_s,       u"3.9"_s, u"99999999999"_s, u"-99999999999"_s, u"-2147483648"_s, u"+"_s };
    QList<int> values;
    IniFile ini;
    for (const QString &text : texts) {
        ini.SetString(u"S"_s, u"k"_s, text);
        int out = -12345;
        QVERIFY(ini.GetInt(u"S"_s, u"k"_s, out));
        values << out;
    }
    // Leading blanks and one sign, then digits up to the first other character; clamped to int.
    QCOMPARE(values, (QList<int> { 5000, 0, 0, 12, 7, -5, 0, 3, INT_MAX, INT_MIN, INT_MIN, 0 }));
}

void TestIniFile::colors()
{
    const QStringList texts = { u"255,128,0"_s, u"77"_s,       QString(), u"RGB( 10 ; 2x0 , 3 0)"_s,
                                u"1,2,3,4"_s,   u"-5,-6,-7"_s, u",,9"_s,  u"99999999999,1,2"_s };
    IniFile ini;
    for (int i = 0; i < texts.size(); ++i) {
        const QString key = u"k%1"_s.arg(i);
        ini.SetString(u"Colors"_s, key, texts[i]);
        IniColor color { -1, -1, -1 };
        QVERIFY(ini.GetColor(u"Colors"_s, key, color));
        ini.SetColor(u"Colors"_s, key, color);
    }
    // Only digits count, a comma ends a number, a fourth number is ignored; written back with "%d,%d,%d".
    QCOMPARE(
        ini.serialize(),
        written(lines(u"[Colors]|k0=255,128,0|k1=77,0,0|k2=0,0,0|k3=1020,30,0|k4=1,2,3|k5=5,6,7|k6=0,0,9|"
                      u"k7=2147483647,1,2"_s)));
}

void TestIniFile::missingAndDeletedKeys()
{
    IniFile ini;
    ini.parse(utf16(u"[A]\r\na=1\r\nb=2\r\nc=3\r\n[B]\r\nx=1\r\n[C]\r\ny=2\r\n"_s));
    QString text = u"keep"_s;
    int number = 99;
    IniColor color { 1, 2, 3 };
    QVERIFY(!ini.GetString(u"A"_s, u"B"_s, text));
    QVERIFY(!ini.GetString(u"a"_s, u"a"_s, text));
    QVERIFY(!ini.GetInt(u"A"_s, u"missing"_s, number));
    QVERIFY(!ini.GetColor(u"Other"_s, u"a"_s, color));
    QCOMPARE(text, u"keep"_s);
    QCOMPARE(number, 99);
    QCOMPARE(color, (IniColor { 1, 2, 3 }));
    QVERIFY(!ini.DeleteKey(u"A"_s, u"B"_s));
    QVERIFY(!ini.DeleteKey(u"Z"_s, u"a"_s));
    QCOMPARE(ini.isModified(), false);

    QVERIFY(ini.DeleteKey(u"A"_s, u"b"_s));
    QVERIFY(ini.isModified());
    QVERIFY(!ini.DeleteKey(u"A"_s, u"b"_s));
    ini.DeleteSection(u"B"_s);
    ini.DeleteSection(u"Nothing"_s);
    // A key or section set again after deletion goes to the end; a section left empty is still written.
    ini.SetString(u"A"_s, u"b"_s, u"new"_s);
    ini.SetString(u"B"_s, u"x"_s, u"back"_s);
    QVERIFY(ini.DeleteKey(u"C"_s, u"y"_s));
    QCOMPARE(ini.serialize(), written(lines(u"[A]|a=1|c=3|b=new|[C]|[B]|x=back"_s)));
}

void TestIniFile::loadAndSaveFiles()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    const QString other = dir.filePath(u"Copy.ini"_s);
    const QString missing = dir.filePath(u"missing.ini"_s);
    QVERIFY(write(path, utf16(u"[S]\nk = v \n"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        QCOMPARE(ini.path(), path);
        ini.SetString(u"S"_s, u"n"_s, u"1"_s);
        QVERIFY(ini.Save(other));
        QCOMPARE(ini.isModified(), false);
        QCOMPARE(ini.path(), other);
        QCOMPARE(read(other), written(lines(u"[S]|k =v |n=1"_s)));
        // The first file is untouched until the object saves to it.
        QCOMPARE(read(path), utf16(u"[S]\nk = v \n"_s));

        // Loading forgets the previous content.
        QVERIFY(ini.Load(path));
        QCOMPARE(dump(ini), lines(u"[S]|k =v "_s));
        QVERIFY(ini.Save());
        QCOMPARE(read(path), written(lines(u"[S]|k =v "_s)));

        QVERIFY(!ini.Load(missing));
        QCOMPARE(ini.sections(), QStringList());
        QCOMPARE(ini.path(), missing);
    }
    // The path of the failed load is remembered, so the object writes an empty file there when
    // it goes away: the settings dialogs rely on this to create their file.
    QCOMPARE(read(missing), QByteArray("\xff\xfe"));
    QCOMPARE(read(path), written(lines(u"[S]|k =v "_s)));
}

void TestIniFile::savesOnDestruction()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    // Not in the written form: LF only, a comment-like line, no line end at the end.
    QVERIFY(write(path, utf16(u"[S]\n;note\nk=v"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
    }
    // Rewritten although nothing changed.
    QCOMPARE(read(path), written(lines(u"[S]|note\nk=v"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        ini.SetInt(u"S"_s, u"n"_s, 12);
    }
    QCOMPARE(read(path), written(lines(u"[S]|note\nk=v|n=12"_s)));

    // A reader that opts out leaves the file exactly as it was, changes and all.
    QVERIFY(write(path, utf16(u"[S]\nk=v"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        ini.SetString(u"S"_s, u"k"_s, u"changed"_s);
        ini.setSaveOnDestroy(false);
    }
    QCOMPARE(read(path), utf16(u"[S]\nk=v"_s));

    // Without a path saving fails and nothing is written anywhere.
    {
        IniFile ini;
        ini.SetString(u"S"_s, u"k"_s, u"v"_s);
        QCOMPARE(ini.Save(), false);
        QVERIFY(ini.isModified());
    }
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList { u"Velcora.ini"_s });
}

void TestIniFile::failedSaveKeepsOldFile_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("target is a folder") << u"Velcora.ini"_s;
    QTest::newRow("parent is a file") << u"plain.txt/Velcora.ini"_s;
    QTest::newRow("parent missing") << u"nowhere/Velcora.ini"_s;
}

void TestIniFile::failedSaveKeepsOldFile()
{
    QFETCH(QString, target);

    QTemporaryDir dir;
    QVERIFY(write(dir.filePath(u"Velcora.ini/inside.txt"_s), "kept"));
    QVERIFY(write(dir.filePath(u"plain.txt"_s), "old"));

    IniFile ini;
    ini.SetString(u"S"_s, u"k"_s, u"v"_s);
    QCOMPARE(ini.Save(dir.filePath(target)), false);
    QVERIFY(ini.isModified());
    QCOMPARE(read(dir.filePath(u"Velcora.ini/inside.txt"_s)), QByteArray("kept"));
    QCOMPARE(read(dir.filePath(u"plain.txt"_s)), QByteArray("old"));
    // No temporary file is left behind.
    QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
             (QStringList { u"plain.txt"_s, u"Velcora.ini"_s }));
    QCOMPARE(QDir(dir.filePath(u"Velcora.ini"_s)).entryList(QDir::Files | QDir::Hidden),
             QStringList { u"inside.txt"_s });
    ini.Load(QString()); // forget the failing path so destruction writes nothing
}

void TestIniFile::readOnlyFolder()
{
    if (geteuid() == 0)
        QSKIP("folder permissions do not bind the superuser");
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    const QByteArray old = written(lines(u"[Old]|k=v"_s));
    QVERIFY(write(path, old));
    QVERIFY(QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        ini.SetString(u"New"_s, u"k"_s, u"v"_s);
        QCOMPARE(ini.Save(), false);
    }
    QFile::setPermissions(dir.path(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QCOMPARE(read(path), old);
}

void TestIniFile::largeFileLoadsQuickly()
{
    // Shapes that would cost quadratic time in a naive reader: many keys, one key spanning
    // lines, many headers.
    const int count = 200000;
    QString text = u"[S]\r\n"_s;
    for (int i = 0; i < count; ++i)
        text += u"Key"_s + QString::number(i) + u"=v\r\n"_s;
    text += u";no equals\r\n"_s.repeated(count) + u"=joined\r\n"_s + u"[S]"_s.repeated(count) + u"last=1"_s;

    QTemporaryDir dir;
    const QString path = dir.filePath(u"big.ini"_s);
    QVERIFY(write(path, utf16(text)));
    QElapsedTimer timer;
    timer.start();
    IniFile ini;
    QVERIFY(ini.Load(path));
    ini.setSaveOnDestroy(false);
    QCOMPARE(ini.sections(), QStringList { u"S"_s });
    QCOMPARE(ini.keys(u"S"_s).size(), count + 2);
    QCOMPARE(ini.keys(u"S"_s).last(), u"last"_s);
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
}

void TestIniFile::templates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("Velcora.ini") << u"Velcora.ini"_s << written(velcoraTemplate());
    QTest::newRow("Lists.ini") << u"Lists.ini"_s << written(listsTemplate());
}

void TestIniFile::templates()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, expected);

    // TARVANE_WRITE_TEMPLATES=<folder> writes the expected bytes there (resources/install/).
    const QString writeTo = qEnvironmentVariable("TARVANE_WRITE_TEMPLATES");
    if (!writeTo.isEmpty())
        QVERIFY(write(QDir(writeTo).filePath(name), expected));

    const QByteArray bytes = read(u":/install/"_s + name);
    QCOMPARE(bytes, expected);
    IniFile ini;
    ini.parse(bytes);
    QCOMPARE(ini.serialize(), bytes);
}

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
