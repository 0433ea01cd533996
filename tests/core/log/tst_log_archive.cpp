#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include "log/LogArchive.h"
#include "log_helper.h"
#include "platform/FileFingerprint.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(EntryList)

class TestLogArchive : public QObject
{
    Q_OBJECT

private slots:
    void encodeAndDecode_data();
    void encodeAndDecode();
    void escapedCount();
    void stringLengthForms_data();
    void stringLengthForms();
    void eightBitStrings_data();
    void eightBitStrings();
    void damaged_data();
    void damaged();
    void writeFailure_data();
    void writeFailure();
    void fileWriteIsExactlyTheArchive();
    void repeatedTextsAreShared();
    void largeFileReadsWhole();

private:
    QTemporaryDir m_dir;
};

static QByteArray patched(QByteArray bytes, qsizetype at, qsizetype length, const QByteArray &with)
{
    return bytes.replace(at, length, with);
}

void TestLogArchive::encodeAndDecode_data()
{
    QTest::addColumn<EntryList>("entries");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << EntryList() << hex("0000 0000");
    QTest::newRow("one record") << EntryList { sampleMaintenance() } << archiveOf({ MaintenanceHex });
    QTest::newRow("three kinds") << EntryList { sampleFuel(), sampleMaintenance(), sampleTrip() }
                                 << archiveOf({ FuelHex, MaintenanceHex, TripHex });
}

void TestLogArchive::encodeAndDecode()
{
    QFETCH(EntryList, entries);
    QFETCH(QByteArray, bytes);
    QCOMPARE(LogArchive::encode(entries).toHex(' '), bytes.toHex(' '));
    LogArchive archive;
    EntryList loaded { CVCItem() }; // replaced, not appended to
    QVERIFY2(archive.decode(bytes, loaded, u"x.vcb"_s), qPrintable(archive.errorString()));
    QCOMPARE(loaded.size(), entries.size());
    QVERIFY(loaded == entries);
}

void TestLogArchive::escapedCount()
{
    // An empty record: 32 bytes of fixed fields, eight empty strings of 4, 84 bytes more.
    const qsizetype recordSize = 32 + 8 * 4 + 12 + 24 + 48;
    for (const auto &[n, count] : { std::pair { 0xFFFEu, "FEFF" }, std::pair { 0xFFFFu, "FFFF FFFF0000" } }) {
        const QByteArray bytes = LogArchive::encode(EntryList(n));
        const QByteArray head = hex(count) + hex("FFFF 0100 0700");
        QCOMPARE(bytes.left(head.size()).toHex(' '), head.toHex(' '));
        QCOMPARE(bytes.size(), hex(count).size() + 13 + n * recordSize + (n - 1) * 2 + 2);
        EntryList loaded;
        QVERIFY(LogArchive().decode(bytes, loaded, u"big.vcb"_s));
        QCOMPARE(loaded.size(), size_t(n));
    }
}

void TestLogArchive::stringLengthForms_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("prefix");
    QTest::newRow("0") << 0 << hex("FFFEFF 00");
    QTest::newRow("254") << 254 << hex("FFFEFF FE");
    QTest::newRow("255") << 255 << hex("FFFEFF FF FF00");
    QTest::newRow("65533") << 65533 << hex("FFFEFF FF FDFF");
    QTest::newRow("65534") << 65534 << hex("FFFEFF FF FFFF FEFF0000");
    QTest::newRow("70000") << 70000 << hex("FFFEFF FF FFFF 70110100");
}

void TestLogArchive::stringLengthForms()
{
    QFETCH(int, length);
    QFETCH(QByteArray, prefix);
    CVCItem item;
    item.notes = QString(length, u'\x263A'); // code unit 0x263A: both bytes matter
    const QByteArray bytes = LogArchive::encode({ item });
    const qsizetype notesAt = 2 + 13 + 32;
    QCOMPARE(bytes.mid(notesAt, prefix.size()).toHex(' '), prefix.toHex(' '));
    if (length > 0)
        QCOMPARE(bytes.mid(notesAt + prefix.size(), 4).toHex(' '),
                 hex("3A26 3A26").left(qMin(4, length * 2)).toHex(' '));
    QCOMPARE(bytes.mid(notesAt + prefix.size() + 2 * length, 4).toHex(' '), hex("FFFEFF00").toHex(' '));
    EntryList loaded;
    QVERIFY(LogArchive().decode(bytes, loaded, u"s.vcb"_s));
    QCOMPARE(loaded.at(0).notes, item.notes);
}

void TestLogArchive::eightBitStrings_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << hex("00") << QString();
    QTest::newRow("short") << hex("03 414263") << u"ABc"_s;
    QTest::newRow("latin1") << hex("02 E9FF") << u"\u00E9\u00FF"_s;
    QTest::newRow("16-bit length") << (hex("FF 0001") + QByteArray(256, 'z')) << QString(256, u'z');
    QTest::newRow("32-bit length") << (hex("FF FFFF 03000000") + "abc") << u"abc"_s;
}

void TestLogArchive::eightBitStrings()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, text);
    // The maintenance record with its station written as 8-bit text.
    QByteArray record = hex(MaintenanceHex);
    const QByteArray station = hex("FFFEFF04 53006800 6F007000");
    const qsizetype at = record.indexOf(station);
    QVERIFY(at > 0);
    record.replace(at, station.size(), field);
    const QByteArray bytes = hex("0100") + hex(ClassHeaderHex) + record + hex("0000");
    CVCItem expected = sampleMaintenance();
    expected.station = text;
    EntryList loaded;
    LogArchive archive;
    QVERIFY2(archive.decode(bytes, loaded, u"m.vcb"_s), qPrintable(archive.errorString()));
    QVERIFY(loaded == EntryList { expected });
}

void TestLogArchive::damaged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    const QByteArray fuel = LogArchive::encode({ sampleFuel() });
    const qsizetype end = fuel.size();
    const QString early = u"the file ends too early (at byte %1, %2 more bytes needed)"_s;
    QTest::newRow("empty file") << QByteArray() << early.arg(0).arg(2);
    QTest::newRow("escaped count cut") << hex("FFFF 0100") << early.arg(2).arg(2);
    QTest::newRow("no trailing collection") << hex("0000") << early.arg(2).arg(2);
    QTest::newRow("count past the end")
        << fuel.left(100) << u"it claims 1 entries but only 98 bytes follow"_s;
    QTest::newRow("huge count") << hex("FFFF FFFFFFFF 0000")
                                << u"it claims 4294967295 entries but only 2 bytes follow"_s;
    // Cut inside the last double: the count check passes, the field read does not.
    QTest::newRow("cut in last field") << fuel.left(end - 5) << early.arg(end - 10).arg(3);
    QTest::newRow("cut in trailing word") << fuel.left(end - 1) << early.arg(end - 2).arg(1);
    QTest::newRow("trailing collection not empty")
        << patched(fuel, end - 2, 2, hex("0100"))
        << u"unexpected data at byte %1 after the last entry"_s.arg(end - 2);
    QTest::newRow("first tag is a reference")
        << patched(fuel, 2, 2, hex("0180")) << u"unknown class tag 0x8001 at byte 2"_s;
    QTest::newRow("second tag to class 2")
        << patched(LogArchive::encode({ sampleFuel(), sampleTrip() }), end - 2, 1, hex("02"))
        << u"unknown class tag 0x8002 at byte %1"_s.arg(end - 2);
    QTest::newRow("schema 2") << patched(fuel, 4, 1, hex("02"))
                              << u"unsupported schema 2 of the entry class (expected 1)"_s;
    QTest::newRow("class name") << patched(fuel, 14, 1, "x")
                                << u"unknown class name at byte 8 (expected CVCItem)"_s;
    QTest::newRow("class name length")
        << patched(fuel, 6, 1, hex("06")) << u"unknown class name at byte 8 (expected CVCItem)"_s;
    // The notes of the fuel record claim far more characters than follow: the bytes left are
    // counted after the marker and the length.
    const QString longText = u"a text at byte 47 claims %1 characters, more than the %2 bytes left"_s;
    QTest::newRow("text past the end")
        << patched(fuel, 47, 5, hex("FFFEFF FF 0010")) << longText.arg(4096).arg(end + 1 - 53);
    QTest::newRow("text of 4G characters") << patched(fuel, 47, 5, hex("FFFEFF FF FFFF FFFFFFFF"))
                                           << longText.arg(4294967295u).arg(end + 5 - 57);
    QTest::newRow("marker twice") << patched(fuel, 47, 0, hex("FFFEFF"))
                                  << u"a text at byte 47 has a repeated marker"_s;
}

void TestLogArchive::damaged()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, problem);
    const QString path = m_dir.filePath(u"Bad Car.vcb"_s);
    QVERIFY(writeBytes(path, bytes));
    EntryList loaded { sampleTrip() };
    LogArchive archive;
    QVERIFY(!archive.read(path, loaded));
    QCOMPARE(archive.errorString(), u"The log file %1 is damaged: %2."_s.arg(path, problem));
    // Nothing of a damaged file is loaded.
    QCOMPARE(loaded.size(), size_t(1));
    QVERIFY(loaded[0] == sampleTrip());
}

void TestLogArchive::writeFailure_data()
{
    QTest::addColumn<qint64>("limit");
    QTest::newRow("nothing fits") << qint64(0);
    QTest::newRow("all but the last byte") << qint64(LogArchive::encode({ sampleFuel() }).size() - 1);
}

void TestLogArchive::writeFailure()
{
    QFETCH(qint64, limit);
    FailingBuffer buffer(limit);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    LogArchive archive;
    QVERIFY(!archive.write(&buffer, { sampleFuel() }));
    QCOMPARE(archive.errorString(), u"Unable to write the log file (stream): No space left on device."_s);
}

void TestLogArchive::fileWriteIsExactlyTheArchive()
{
    const QString path = m_dir.filePath(u"Exact.vcb"_s);
    QVERIFY(writeBytes(path, QByteArray(5000, 'x')));
    LogArchive archive;
    QVERIFY(archive.write(path, { sampleMaintenance() }));
    QCOMPARE(fileBytes(path), archiveOf({ MaintenanceHex }));
    // A folder that does not exist: nothing is written and the error names the file.
    const QString missing = m_dir.filePath(u"no/such/Car.vcb"_s);
    QVERIFY(!archive.write(missing, {}));
    QVERIFY(archive.errorString().startsWith(u"Unable to write the log file %1: "_s.arg(missing)));
    QVERIFY(!QFile::exists(missing));
}

// Many records, every one with a text of its own (more than the load keeps a table of) and
// texts that repeat; a text first seen after the table is full comes back right all the same.
static EntryList manyTexts(int count)
{
    EntryList entries;
    for (int i = 0; i < count; ++i) {
        CVCItem item = sampleFuel();
        item.invoice = u"INV-%1"_s.arg(i);
        item.station = i < count - 2 ? u"Esso Main St"_s : u"Late Station"_s;
        item.notes = QString(49, QChar(u'a' + i % 26)); // longer than what is shared
        entries.push_back(item);
    }
    return entries;
}

void TestLogArchive::repeatedTextsAreShared()
{
    const EntryList written = manyTexts(10000);
    EntryList read;
    LogArchive archive;
    QVERIFY(archive.decode(LogArchive::encode(written), read, u"Car.vcb"_s));
    QVERIFY(read == written);
    // Readers see equal texts; a repeated one is a single copy in memory.
    QCOMPARE(read[9].fuelMeasure->constData(), read[0].fuelMeasure->constData());
    QCOMPARE(read[9997].station->constData(), read[0].station->constData());
    QVERIFY(read[1].invoice->constData() != read[0].invoice->constData());
}

void TestLogArchive::largeFileReadsWhole()
{
    // Over 8 MiB, so the reader hands parsed pages of the mapping back while it goes on, and the
    // writer hands the file many pieces, one of them a record larger than a piece.
    EntryList written = manyTexts(60000);
    written[30000].notes = QString(700000, u'n');
    const QString path = m_dir.filePath(u"Large.vcb"_s);
    LogArchive archive;
    FileFingerprint made;
    QVERIFY(archive.write(path, written, &made));
    QVERIFY(QFileInfo(path).size() > 12 << 20);
    QCOMPARE(fileBytes(path), LogArchive::encode(written));
    QVERIFY(made.matches(fileBytes(path)));
    EntryList read;
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    FileFingerprint seen;
    QVERIFY2(archive.read(&file, read, path, &seen), qPrintable(archive.errorString()));
    QVERIFY(read == written);
    QVERIFY(seen.matches(fileBytes(path)) && !seen.changedOnDisk(LogArchive::MaxFileSize));
}

QTEST_GUILESS_MAIN(TestLogArchive)
#include "tst_log_archive.moc"
