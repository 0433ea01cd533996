#include "settings/IniFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <climits>
#include <memory>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The bytes of a settings file: the mark, then the text as UTF-16LE.
QByteArray utf16(const QString &text, bool mark = true)
{
    QByteArray out;
    if (mark)
        out.append("\xff\xfe", 2);
    for (const QChar c : text) {
        out.append(char(c.unicode() & 0xff));
        out.append(char(c.unicode() >> 8));
    }
    return out;
}

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

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("<unreadable>");
    return file.readAll();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// One entry of a template: a section and its keys with their values, in file order.
using TemplateSection = std::pair<QString, QList<std::pair<QString, QString>>>;

QList<TemplateSection> velcoraTemplate()
{
    // A new vehicle's profile as the profile writer leaves it: "%-7.0f" distances padded to 7,
    // "%-4.0d" days padded to 4 (a zero prints nothing and reads back empty), "%-3.3f" cost,
    // "%-10.10d" dates.
    QList<std::pair<QString, QString>> car = {
        { u"Directory"_s, u"\\My Documents\\Tarvane Files\\"_s },
        { u"VIN"_s, u"MYCAR0001"_s },
        { u"Make"_s, u"Generic"_s },
        { u"Model"_s, u"Sedan"_s },
        { u"Year"_s, u"2004"_s },
        { u"Plate"_s, u"ABC123"_s },
        { u"Start Odometer"_s, u"0      "_s },
        { u"CoolDays"_s, u"730 "_s },
        { u"CoolDistance"_s, u"30000  "_s },
        { u"OilDays"_s, u"180 "_s },
        { u"TuneDistance"_s, u"30000  "_s },
        { u"TuneDays"_s, u"730 "_s },
        { u"OilDistance"_s, u"5000   "_s },
        { u"TransDays"_s, u"730 "_s },
        { u"TransDistance"_s, u"30000  "_s },
        { u"TireDays"_s, u"180 "_s },
        { u"TireDistance"_s, u"7500   "_s },
    };
    for (int i = 1; i <= 5; ++i)
        car.append({ u"Custom%1"_s.arg(i), QString() });
    for (int i = 1; i <= 5; ++i)
        car.append({ u"C%1Days"_s.arg(i), QString() });
    for (int i = 1; i <= 5; ++i)
        car.append({ u"C%1Miles"_s.arg(i), u"0      "_s });
    car.append({ u"CostPerMile"_s, u"0.500"_s });
    car.append({ u"Distance"_s, u"Mile"_s });
    car.append({ u"Econo"_s, u"MPG"_s });
    car.append({ u"Liquid"_s, u"US"_s });
    car.append({ u"SetupDate"_s, u"0000000000"_s });
    for (int i = 0; i <= 9; ++i) {
        car.append({ u"LastR%1Mileage"_s.arg(i), u"0      "_s });
        car.append({ u"LastR%1Date"_s.arg(i), u"0000000000"_s });
    }
    return {
        { u"VehicleList"_s, { { u"Vehicle0"_s, u"My Car"_s } } },
        { u"My Car"_s, car },
        { u"TripSettings"_s,
          { { u"SortListBy"_s, u"Date"_s },
            { u"UseContacts"_s, u"No"_s },
            { u"HomeAddress"_s, u"No"_s },
            { u"CompanyName"_s, u"No"_s },
            { u"Detailed"_s, u"No"_s } } },
        { u"Versions"_s, { { u"PPC"_s, u"Version 2.2.2 Build 76"_s } } },
    };
}

TemplateSection pickList(const QString &section, const QStringList &items)
{
    TemplateSection result { section, {} };
    for (int i = 0; i < items.size(); ++i)
        result.second.append({ u"Line%1"_s.arg(i), items[i] });
    return result;
}

QList<TemplateSection> listsTemplate()
{
    return {
        pickList(u"FuelStationList"_s,
                 { u"Corner Station"_s, u"Highway Station"_s, u"Supermarket"_s, u"Truck Stop"_s }),
        pickList(u"RepairList"_s,
                 { u"Oil Change"_s, u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s,
                   u"Rotate Tires"_s, u"Air Filter"_s, u"Alignment"_s, u"Battery"_s, u"Brakes"_s,
                   u"Car Wash"_s, u"Inspection"_s, u"New Tires"_s, u"Wiper Blades"_s }),
        pickList(u"RepairLocation"_s,
                 { u"Dealer"_s, u"Local Garage"_s, u"Quick Lube"_s, u"Tire Shop"_s, u"Do It Yourself"_s }),
        pickList(u"PurposeList"_s,
                 { u"Business"_s, u"Personal"_s, u"Commute"_s, u"Medical"_s, u"Charity"_s, u"Moving"_s }),
        pickList(u"ContactList"_s, { u"Office"_s, u"Client"_s, u"Supplier"_s }),
        pickList(u"DestinationList"_s,
                 { u"Office"_s, u"Home"_s, u"Airport"_s, u"Client Site"_s, u"Bank"_s, u"Post Office"_s }),
    };
}

// The expected template bytes, written out by hand: mark, then per section an empty line, the
// header and one line per key.
QByteArray templateBytes(const QList<TemplateSection> &sections)
{
    QString text;
    for (const auto &[name, keys] : sections) {
        text += u"\r\n["_s + name + u"]\r\n"_s;
        for (const auto &[key, value] : keys)
            text += key + u'=' + value + u"\r\n"_s;
    }
    return utf16(text);
}

} // namespace

class TestIniFile : public QObject
{
    Q_OBJECT

private slots:
    void parseAndWrite_data();
    void parseAndWrite();
    void unreadableText_data();
    void unreadableText();
    void writesExactBytes();
    void setInt_data();
    void setInt();
    void getInt_data();
    void getInt();
    void colors_data();
    void colors();
    void missingKeysLeaveOutUnchanged();
    void deleting();
    void loadAndSaveFiles();
    void loadMissingFile();
    void saveWithoutPath();
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
    QTest::addColumn<QString>("input");
    QTest::addColumn<QStringList>("content");
    QTest::addColumn<QString>("written");

    QTest::newRow("one section, one key")
        << u"[S]\r\nk=v\r\n"_s << QStringList { u"[S]"_s, u"k=v"_s } << u"\r\n[S]\r\nk=v\r\n"_s;
    QTest::newRow("space on both sides of =")
        << u"[S]\r\nkey = value\r\n"_s << QStringList { u"[S]"_s, u"key =value"_s }
        << u"\r\n[S]\r\nkey =value\r\n"_s;
    QTest::newRow("semicolon line runs into the next key")
        << u"[S]\r\n;comment line\r\nName=Bob\r\n"_s
        << QStringList { u"[S]"_s, u"comment line\r\nName=Bob"_s }
        << u"\r\n[S]\r\ncomment line\r\nName=Bob\r\n"_s;
    QTest::newRow("hash and indentation skipped to first letter or digit")
        << u"[S]\r\n   # 5 x=1\r\n\t\tkey=2\r\n"_s << QStringList { u"[S]"_s, u"5 x=1"_s, u"key=2"_s }
        << u"\r\n[S]\r\n5 x=1\r\nkey=2\r\n"_s;
    QTest::newRow("trailing spaces kept, leading spaces and tabs dropped")
        << u"[S]\r\na=  \t x y  \r\n"_s << QStringList { u"[S]"_s, u"a=x y  "_s }
        << u"\r\n[S]\r\na=x y  \r\n"_s;
    QTest::newRow("empty values") << u"[S]\r\na=\r\nb=   \r\nc=\t\n"_s
                                  << QStringList { u"[S]"_s, u"a="_s, u"b="_s, u"c="_s }
                                  << u"\r\n[S]\r\na=\r\nb=\r\nc=\r\n"_s;
    QTest::newRow("keys are case-sensitive") << u"[S]\r\nKey=1\r\nkey=2\r\nKEY=3\r\n"_s
                                             << QStringList { u"[S]"_s, u"Key=1"_s, u"key=2"_s, u"KEY=3"_s }
                                             << u"\r\n[S]\r\nKey=1\r\nkey=2\r\nKEY=3\r\n"_s;
    QTest::newRow("section names are case-sensitive")
        << u"[a]\r\nx=1\r\n[A]\r\nx=2\r\n"_s << QStringList { u"[a]"_s, u"x=1"_s, u"[A]"_s, u"x=2"_s }
        << u"\r\n[a]\r\nx=1\r\n\r\n[A]\r\nx=2\r\n"_s;
    QTest::newRow("duplicate key keeps last value at first place")
        << u"[S]\r\na=1\r\nb=2\r\na=3\r\n"_s << QStringList { u"[S]"_s, u"a=3"_s, u"b=2"_s }
        << u"\r\n[S]\r\na=3\r\nb=2\r\n"_s;
    QTest::newRow("duplicate section merged into the first")
        << u"[A]\r\nx=1\r\n[B]\r\ny=2\r\n[A]\r\nz=3\r\nx=4\r\n"_s
        << QStringList { u"[A]"_s, u"x=4"_s, u"z=3"_s, u"[B]"_s, u"y=2"_s }
        << u"\r\n[A]\r\nx=4\r\nz=3\r\n\r\n[B]\r\ny=2\r\n"_s;
    QTest::newRow("value at the end of the file without a line end")
        << u"[S]\r\nk=end of file"_s << QStringList { u"[S]"_s, u"k=end of file"_s }
        << u"\r\n[S]\r\nk=end of file\r\n"_s;
    QTest::newRow("value holding =") << u"[S]\r\nk=a=b==c\r\n"_s << QStringList { u"[S]"_s, u"k=a=b==c"_s }
                                     << u"\r\n[S]\r\nk=a=b==c\r\n"_s;
    QTest::newRow("header taken unchanged")
        << u"[ My Car ]\r\n[x=y]\r\n"_s << QStringList { u"[ My Car ]"_s, u"[x=y]"_s }
        << u"\r\n[ My Car ]\r\n\r\n[x=y]\r\n"_s;
    QTest::newRow("LF and lone CR line ends")
        << u"[S]\na=1\rb=2\n"_s << QStringList { u"[S]"_s, u"a=1"_s, u"b=2"_s }
        << u"\r\n[S]\r\na=1\r\nb=2\r\n"_s;
    QTest::newRow("keys before the first header are dropped")
        << u"orphan=1\r\n[S]\r\nk=v\r\n"_s << QStringList { u"[S]"_s, u"k=v"_s } << u"\r\n[S]\r\nk=v\r\n"_s;
    QTest::newRow("header without ] ends the file")
        << u"[S]\r\na=1\r\n[Broken\r\nb=2\r\n"_s << QStringList { u"[S]"_s, u"a=1"_s }
        << u"\r\n[S]\r\na=1\r\n"_s;
    QTest::newRow("key without = at the end is dropped")
        << u"[S]\r\na=1\r\ndangling\r\n"_s << QStringList { u"[S]"_s, u"a=1"_s } << u"\r\n[S]\r\na=1\r\n"_s;
    QTest::newRow("empty section kept")
        << u"[Empty]\r\n[S]\r\nk=v"_s << QStringList { u"[Empty]"_s, u"[S]"_s, u"k=v"_s }
        << u"\r\n[Empty]\r\n\r\n[S]\r\nk=v\r\n"_s;
    QTest::newRow("text beyond ASCII")
        << u"[Über]\r\nNäme=Café ☕ 🚗\r\n"_s << QStringList { u"[Über]"_s, u"Näme=Café ☕ 🚗"_s }
        << u"\r\n[Über]\r\nNäme=Café ☕ 🚗\r\n"_s;
    QTest::newRow("key starting with a non-ASCII letter starts at the first ASCII one")
        << u"[S]\r\nÉtat=1\r\n"_s << QStringList { u"[S]"_s, u"tat=1"_s } << u"\r\n[S]\r\ntat=1\r\n"_s;
    QTest::newRow("only the mark") << QString() << QStringList() << QString();
}

void TestIniFile::parseAndWrite()
{
    QFETCH(QString, input);
    QFETCH(QStringList, content);
    QFETCH(QString, written);

    IniFile ini;
    ini.parse(utf16(input));
    QCOMPARE(dump(ini), content);
    QCOMPARE(ini.isModified(), false);
    QCOMPARE(ini.serialize(), utf16(written));

    // What was written reads back to the same content.
    IniFile again;
    again.parse(ini.serialize());
    QCOMPARE(dump(again), content);
}

void TestIniFile::unreadableText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("content");

    QTest::newRow("empty file") << QByteArray() << QStringList();
    QTest::newRow("one byte") << QByteArray("\xff", 1) << QStringList();
    QTest::newRow("UTF-16 without the mark") << utf16(u"[S]\r\nk=v\r\n"_s, false) << QStringList();
    QTest::newRow("big-endian mark") << QByteArray("\xfe\xff\0[\0S\0]\0\r\0\n\0k\0=\0v\0", 20)
                                     << QStringList();
    QTest::newRow("UTF-8 with its mark") << QByteArray("\xef\xbb\xbf[S]\r\nk=v\r\n") << QStringList();
    QTest::newRow("UTF-8 without a mark") << QByteArray("[S]\r\nk=v\r\n") << QStringList();
    QTest::newRow("odd byte count drops the last byte")
        << utf16(u"[S]\r\nk=vw"_s).chopped(1) << QStringList { u"[S]"_s, u"k=v"_s };
    QTest::newRow("lone surrogates and NUL kept")
        << utf16(u"[S]\r\nk=a"_s + QChar(0xd800) + QChar(0) + u"b"_s)
        << QStringList { u"[S]"_s, u"k=a"_s + QChar(0xd800) + QChar(0) + u"b"_s };
}

void TestIniFile::unreadableText()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, content);

    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    QVERIFY(writeFile(path, bytes));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        QCOMPARE(dump(ini), content);
        IniFile again;
        again.parse(ini.serialize());
        QCOMPARE(dump(again), content);
    }
}

void TestIniFile::writesExactBytes()
{
    IniFile ini;
    ini.SetString(u"VehicleList"_s, u"Vehicle0"_s, u"My Car"_s);
    ini.SetString(u"My Car"_s, u"VIN"_s, u"ABC"_s);
    ini.SetString(u"VehicleList"_s, u"Vehicle1"_s, u"Van"_s);
    ini.SetString(u"My Car"_s, u"VIN"_s, u"XYZ"_s);
    QVERIFY(ini.isModified());
    static const char bytes[] = "\xff\xfe"
                                "\r\0\n\0[\0V\0e\0h\0i\0c\0l\0e\0L\0i\0s\0t\0]\0\r\0\n\0"
                                "V\0e\0h\0i\0c\0l\0e\0"
                                "0\0=\0M\0y\0 \0C\0a\0r\0\r\0\n\0"
                                "V\0e\0h\0i\0c\0l\0e\0"
                                "1\0=\0V\0a\0n\0\r\0\n\0"
                                "\r\0\n\0[\0M\0y\0 \0C\0a\0r\0]\0\r\0\n\0"
                                "V\0I\0N\0=\0X\0Y\0Z\0\r\0\n\0";
    const QByteArray expected(bytes, sizeof(bytes) - 1);
    QCOMPARE(expected.size(), 2 + 2 * 69);
    QCOMPARE(ini.serialize(), expected);
}

void TestIniFile::setInt_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("zero") << 0 << u"0"_s;
    QTest::newRow("one digit") << 7 << u"7"_s;
    QTest::newRow("round number") << 30000 << u"30000"_s;
    QTest::newRow("largest") << INT_MAX << u"2147483647"_s;
    // '0' + value % 10 with C's truncating remainder: -5 % 10 == -5 gives '0' - 5 == '+'.
    QTest::newRow("-1") << -1 << u"/"_s;
    QTest::newRow("-5") << -5 << u"+"_s;
    QTest::newRow("-10") << -10 << u"/0"_s;
    QTest::newRow("-15") << -15 << u"/+"_s;
    QTest::newRow("smallest") << INT_MIN << u"./,),(-*,("_s;
}

void TestIniFile::setInt()
{
    QFETCH(int, value);
    QFETCH(QString, text);

    IniFile ini;
    ini.SetInt(u"S"_s, u"k"_s, value);
    QString stored;
    QVERIFY(ini.GetString(u"S"_s, u"k"_s, stored));
    QCOMPARE(stored, text);
    QCOMPARE(ini.serialize(), utf16(u"\r\n[S]\r\nk="_s + text + u"\r\n"_s));
}

void TestIniFile::getInt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");

    QTest::newRow("plain") << u"42"_s << 42;
    QTest::newRow("padded as written by %-7.0f") << u"5000   "_s << 5000;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("letters") << u"Mile"_s << 0;
    QTest::newRow("digits then letters") << u"12abc"_s << 12;
    QTest::newRow("leading zeros") << u"0000000042"_s << 42;
    QTest::newRow("leading blanks") << u" \t7"_s << 7;
    QTest::newRow("minus") << u"-5"_s << -5;
    QTest::newRow("plus") << u"+3"_s << 3;
    QTest::newRow("sign alone") << u"-"_s << 0;
    QTest::newRow("decimal point stops") << u"3.9"_s << 3;
    QTest::newRow("too large") << u"99999999999"_s << INT_MAX;
    QTest::newRow("too small") << u"-99999999999"_s << INT_MIN;
    QTest::newRow("largest") << u"2147483647"_s << INT_MAX;
    QTest::newRow("smallest") << u"-2147483648"_s << INT_MIN;
    QTest::newRow("SetInt output of -5 reads as 0") << u"+"_s << 0;
}

void TestIniFile::getInt()
{
    QFETCH(QString, text);
    QFETCH(int, value);

    IniFile ini;
    ini.SetString(u"S"_s, u"k"_s, text);
    int out = -12345;
    QVERIFY(ini.GetInt(u"S"_s, u"k"_s, out));
    QCOMPARE(out, value);
}

void TestIniFile::colors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::addColumn<int>("blue");

    QTest::newRow("three numbers") << u"255,128,0"_s << 255 << 128 << 0;
    QTest::newRow("two numbers") << u"1,2"_s << 1 << 2 << 0;
    QTest::newRow("one number") << u"77"_s << 77 << 0 << 0;
    QTest::newRow("empty") << QString() << 0 << 0 << 0;
    QTest::newRow("other characters ignored") << u"RGB( 10 ; 2x0 , 3 0)"_s << 1020 << 30 << 0;
    QTest::newRow("spaces around numbers") << u" 10, 20, 30 "_s << 10 << 20 << 30;
    QTest::newRow("fourth number ignored") << u"1,2,3,4"_s << 1 << 2 << 3;
    QTest::newRow("minus ignored") << u"-5,-6,-7"_s << 5 << 6 << 7;
    QTest::newRow("empty first parts") << u",,9"_s << 0 << 0 << 9;
    QTest::newRow("huge number stops at INT_MAX") << u"99999999999,1,2"_s << INT_MAX << 1 << 2;
}

void TestIniFile::colors()
{
    QFETCH(QString, text);
    QFETCH(int, red);
    QFETCH(int, green);
    QFETCH(int, blue);

    IniFile ini;
    ini.SetString(u"Colors"_s, u"Back"_s, text);
    IniColor color { -1, -1, -1 };
    QVERIFY(ini.GetColor(u"Colors"_s, u"Back"_s, color));
    QCOMPARE(color, (IniColor { red, green, blue }));

    // Written back with "%d,%d,%d".
    ini.SetColor(u"Colors"_s, u"Back"_s, color);
    QString written;
    ini.GetString(u"Colors"_s, u"Back"_s, written);
    QCOMPARE(written, u"%1,%2,%3"_s.arg(red).arg(green).arg(blue));
}

void TestIniFile::missingKeysLeaveOutUnchanged()
{
    IniFile ini;
    ini.parse(utf16(u"[S]\r\nk=5\r\n"_s));
    QString text = u"keep"_s;
    int number = 99;
    IniColor color { 1, 2, 3 };
    QVERIFY(!ini.GetString(u"S"_s, u"K"_s, text));
    QVERIFY(!ini.GetString(u"s"_s, u"k"_s, text));
    QVERIFY(!ini.GetInt(u"S"_s, u"missing"_s, number));
    QVERIFY(!ini.GetColor(u"Other"_s, u"k"_s, color));
    QCOMPARE(text, u"keep"_s);
    QCOMPARE(number, 99);
    QCOMPARE(color, (IniColor { 1, 2, 3 }));
    QCOMPARE(ini.isModified(), false);
}

void TestIniFile::deleting()
{
    IniFile ini;
    ini.parse(utf16(u"[A]\r\na=1\r\nb=2\r\nc=3\r\n[B]\r\nx=1\r\n[C]\r\ny=2\r\n"_s));

    QVERIFY(!ini.DeleteKey(u"A"_s, u"B"_s));
    QVERIFY(!ini.DeleteKey(u"Z"_s, u"a"_s));
    QCOMPARE(ini.isModified(), false);

    QVERIFY(ini.DeleteKey(u"A"_s, u"b"_s));
    QVERIFY(ini.isModified());
    QVERIFY(!ini.DeleteKey(u"A"_s, u"b"_s));
    ini.DeleteSection(u"B"_s);
    ini.DeleteSection(u"Nothing"_s);
    // A key set again after deletion goes to the end; so does a section.
    ini.SetString(u"A"_s, u"b"_s, u"new"_s);
    ini.SetString(u"B"_s, u"x"_s, u"back"_s);
    QCOMPARE(ini.serialize(),
             utf16(u"\r\n[A]\r\na=1\r\nc=3\r\nb=new\r\n\r\n[C]\r\ny=2\r\n\r\n[B]\r\nx=back\r\n"_s));

    // A section left without keys is still written.
    QVERIFY(ini.DeleteKey(u"C"_s, u"y"_s));
    QCOMPARE(ini.serialize(), utf16(u"\r\n[A]\r\na=1\r\nc=3\r\nb=new\r\n\r\n[C]\r\n\r\n[B]\r\nx=back\r\n"_s));
}

void TestIniFile::loadAndSaveFiles()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    const QString other = dir.filePath(u"Copy.ini"_s);
    QVERIFY(writeFile(path, utf16(u"[S]\nk = v \n"_s)));

    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        QCOMPARE(ini.path(), path);
        ini.SetString(u"S"_s, u"n"_s, u"1"_s);
        QVERIFY(ini.isModified());
        QVERIFY(ini.Save(other));
        QCOMPARE(ini.isModified(), false);
        QCOMPARE(ini.path(), other);
        QCOMPARE(readFile(other), utf16(u"\r\n[S]\r\nk =v \r\nn=1\r\n"_s));
        // The first file is untouched until the object saves to it.
        QCOMPARE(readFile(path), utf16(u"[S]\nk = v \n"_s));

        // Loading forgets the previous content.
        QVERIFY(ini.Load(path));
        QCOMPARE(dump(ini), (QStringList { u"[S]"_s, u"k =v "_s }));
        QVERIFY(ini.Save());
        QCOMPARE(readFile(path), utf16(u"\r\n[S]\r\nk =v \r\n"_s));
    }
}

void TestIniFile::loadMissingFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    const QString missing = dir.filePath(u"missing.ini"_s);
    QVERIFY(writeFile(path, utf16(u"[S]\r\nk=v\r\n"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        QVERIFY(!ini.Load(missing));
        QCOMPARE(ini.sections(), QStringList());
        QCOMPARE(ini.path(), missing);
    }
    // The path of the failed load is remembered, so the object writes an empty file there when
    // it goes away: the settings dialogs rely on this to create their file.
    QCOMPARE(readFile(missing), QByteArray("\xff\xfe"));
    QCOMPARE(readFile(path), utf16(u"[S]\r\nk=v\r\n"_s));
}

void TestIniFile::saveWithoutPath()
{
    IniFile ini;
    ini.SetString(u"S"_s, u"k"_s, u"v"_s);
    QCOMPARE(ini.Save(), false);
    QVERIFY(ini.isModified());
}

void TestIniFile::savesOnDestruction()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velcora.ini"_s);
    // Not in the written form: LF only, a comment-like line, no line end at the end.
    QVERIFY(writeFile(path, utf16(u"[S]\n;note\nk=v"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        QCOMPARE(ini.isModified(), false);
    }
    // Rewritten although nothing changed.
    QCOMPARE(readFile(path), utf16(u"\r\n[S]\r\nnote\nk=v\r\n"_s));

    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        ini.SetInt(u"S"_s, u"n"_s, 12);
    }
    QCOMPARE(readFile(path), utf16(u"\r\n[S]\r\nnote\nk=v\r\nn=12\r\n"_s));

    // A reader that opts out leaves the file exactly as it was, changes and all.
    QVERIFY(writeFile(path, utf16(u"[S]\nk=v"_s)));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        ini.SetString(u"S"_s, u"k"_s, u"changed"_s);
        ini.setSaveOnDestroy(false);
    }
    QCOMPARE(readFile(path), utf16(u"[S]\nk=v"_s));

    // Without a path nothing is written anywhere.
    {
        IniFile ini;
        ini.SetString(u"S"_s, u"k"_s, u"v"_s);
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
    QVERIFY(QDir(dir.path()).mkpath(u"Velcora.ini"_s));
    QVERIFY(writeFile(dir.filePath(u"Velcora.ini/inside.txt"_s), "kept"));
    QVERIFY(writeFile(dir.filePath(u"plain.txt"_s), "old"));

    IniFile ini;
    ini.SetString(u"S"_s, u"k"_s, u"v"_s);
    QCOMPARE(ini.Save(dir.filePath(target)), false);
    QVERIFY(ini.isModified());
    QCOMPARE(readFile(dir.filePath(u"Velcora.ini/inside.txt"_s)), QByteArray("kept"));
    QCOMPARE(readFile(dir.filePath(u"plain.txt"_s)), QByteArray("old"));
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
    const QByteArray old = utf16(u"\r\n[Old]\r\nk=v\r\n"_s);
    QVERIFY(writeFile(path, old));
    QVERIFY(QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        ini.SetString(u"New"_s, u"k"_s, u"v"_s);
        QCOMPARE(ini.Save(), false);
    }
    QFile::setPermissions(dir.path(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QCOMPARE(readFile(path), old);
}

void TestIniFile::largeFileLoadsQuickly()
{
    // Shapes that would cost quadratic time in a naive reader: many keys, one key spanning
    // lines, many headers.
    QString text;
    const int count = 200000;
    text.reserve(count * 16);
    text += u"[S]\r\n"_s;
    for (int i = 0; i < count; ++i)
        text += u"Key"_s + QString::number(i) + u"=v\r\n"_s;
    for (int i = 0; i < count; ++i)
        text += u";no equals\r\n"_s;
    text += u"=joined\r\n"_s;
    for (int i = 0; i < count; ++i)
        text += u"[S]"_s;
    text += u"last=1"_s;

    QTemporaryDir dir;
    const QString path = dir.filePath(u"big.ini"_s);
    QVERIFY(writeFile(path, utf16(text)));

    QElapsedTimer timer;
    timer.start();
    {
        IniFile ini;
        QVERIFY(ini.Load(path));
        QCOMPARE(ini.sections(), QStringList { u"S"_s });
        QCOMPARE(ini.keys(u"S"_s).size(), count + 2);
        QString value;
        QVERIFY(ini.GetString(u"S"_s, u"last"_s, value));
        QCOMPARE(value, u"1"_s);
        QVERIFY(ini.GetString(u"S"_s, u"Key199999"_s, value));
        ini.Load(QString());
    }
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
}

void TestIniFile::templates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("Velcora.ini") << u"Velcora.ini"_s << templateBytes(velcoraTemplate());
    QTest::newRow("Lists.ini") << u"Lists.ini"_s << templateBytes(listsTemplate());
}

void TestIniFile::templates()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, expected);

    // TARVANE_WRITE_TEMPLATES=<folder> writes the expected bytes there (resources/install/).
    const QString writeTo = qEnvironmentVariable("TARVANE_WRITE_TEMPLATES");
    if (!writeTo.isEmpty())
        QVERIFY(writeFile(QDir(writeTo).filePath(name), expected));

    const QByteArray bytes = readFile(u":/install/"_s + name);
    QCOMPARE(bytes, expected);

    IniFile ini;
    ini.parse(bytes);
    QCOMPARE(ini.serialize(), bytes);
    QVERIFY(!ini.sections().isEmpty());
}

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
