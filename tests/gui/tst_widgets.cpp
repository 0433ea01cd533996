#include "widgets/IconArt.h"
#include "widgets/TileArt.h"
#include "widgets/TileCounter.h"

#include <QCryptographicHash>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSet>
#include <QVBoxLayout>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QList<int> allTileIds()
{
    QList<int> ids;
    for (int id = 0; id < 400; ++id)
        if (TileArt::isTile(id))
            ids.append(id);
    return ids;
}

QByteArray imageHash(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(QByteArrayView(reinterpret_cast<const char *>(argb.constBits()), argb.sizeInBytes()));
    return hash.result();
}

// Mean of red minus the mean of green and blue over the visible pixels: how "red" a picture is.
double redness(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    double sum = 0;
    int count = 0;
    for (int y = 0; y < argb.height(); ++y)
        for (int x = 0; x < argb.width(); ++x) {
            const QRgb c = argb.pixel(x, y);
            if (qAlpha(c) < 128)
                continue;
            sum += qRed(c) - (qGreen(c) + qBlue(c)) / 2.0;
            ++count;
        }
    return count ? sum / count : 0.0;
}

QString screenshotFolder()
{
    QString folder = qEnvironmentVariable("TARVANE_SCREENSHOTS");
    if (folder.isEmpty())
        folder = QStringLiteral(TARVANE_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    return folder;
}

QList<int> range(int first, int last)
{
    QList<int> ids;
    for (int id = first; id <= last; ++id)
        ids.append(id);
    return ids;
}

} // namespace

class TestWidgets : public QObject
{
    Q_OBJECT

private slots:
    void tileNumbers_data();
    void tileNumbers();
    void tilePixmapSize_data();
    void tilePixmapSize();
    void tilesAreDistinct();
    void alertSet_data();
    void alertSet();
    void blankTiles();

    void iconNumbers_data();
    void iconNumbers();
    void iconPixmapSize_data();
    void iconPixmapSize();
    void iconsAreDistinct();
    void disabledIconIsGrey();

    void counterText_data();
    void counterText();
    void counterNoData();
    void counterLayout_data();
    void counterLayout();

    void contactSheet();
    void counterScreenshot();
};

void TestWidgets::tileNumbers_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("alert");

    QTest::newRow("whole 0") << 198 << QSize(15, 20) << u"0"_s << false;
    QTest::newRow("whole 9") << 207 << QSize(15, 20) << u"9"_s << false;
    QTest::newRow("whole alert 0") << 211 << QSize(15, 20) << u"0"_s << true;
    QTest::newRow("whole alert 9") << 220 << QSize(15, 20) << u"9"_s << true;
    QTest::newRow("decimal 0") << 235 << QSize(13, 31) << u"0"_s << false;
    QTest::newRow("decimal 9") << 244 << QSize(13, 31) << u"9"_s << false;
    QTest::newRow("point") << 245 << QSize(9, 31) << u"."_s << false;
    QTest::newRow("decimal alert 0") << 300 << QSize(13, 31) << u"0"_s << true;
    QTest::newRow("decimal alert 9") << 309 << QSize(13, 31) << u"9"_s << true;
    QTest::newRow("point alert") << 310 << QSize(9, 31) << u"."_s << true;
    QTest::newRow("month no date") << 248 << QSize(30, 36) << QString() << false;
    QTest::newRow("january") << 249 << QSize(30, 36) << u"JAN"_s << false;
    QTest::newRow("june") << 254 << QSize(30, 36) << u"JUN"_s << false;
    QTest::newRow("december") << 260 << QSize(30, 36) << u"DEC"_s << false;
    QTest::newRow("day 1") << 261 << QSize(22, 16) << u"1"_s << false;
    QTest::newRow("day 31") << 291 << QSize(22, 16) << u"31"_s << false;
    QTest::newRow("day no date") << 292 << QSize(22, 16) << QString() << false;

    // The gaps between the sets are not tiles.
    for (int id : { -1, 0, 197, 208, 210, 221, 234, 246, 247, 293, 299, 311 })
        QTest::addRow("not a tile %d", id) << id << QSize() << QString() << false;
}

void TestWidgets::tileNumbers()
{
    QFETCH(int, id);
    QFETCH(QSize, size);
    QFETCH(QString, text);
    QFETCH(bool, alert);

    QCOMPARE(TileArt::tileSize(id), size);
    QCOMPARE(TileArt::isTile(id), size.isValid());
    QCOMPARE(TileArt::tileText(id), text);
    QCOMPARE(TileArt::isAlert(id), alert);
    QCOMPARE(TileArt::pixmap(id).isNull(), !size.isValid());
}

void TestWidgets::tilePixmapSize_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<qreal>("dpr");
    QTest::addColumn<QSize>("pixels");

    QTest::newRow("whole, 1x") << 203 << 1.0 << QSize(15, 20);
    QTest::newRow("whole, 2x") << 203 << 2.0 << QSize(30, 40);
    QTest::newRow("whole alert, 2x") << 219 << 2.0 << QSize(30, 40);
    QTest::newRow("decimal, 2x") << 240 << 2.0 << QSize(26, 62);
    QTest::newRow("point, 2x") << 245 << 2.0 << QSize(18, 62);
    QTest::newRow("point alert, 1.5x") << 310 << 1.5 << QSize(14, 47);
    QTest::newRow("month, 2x") << 255 << 2.0 << QSize(60, 72);
    QTest::newRow("day, 3x") << 275 << 3.0 << QSize(66, 48);
}

void TestWidgets::tilePixmapSize()
{
    QFETCH(int, id);
    QFETCH(qreal, dpr);
    QFETCH(QSize, pixels);

    const QPixmap pixmap = TileArt::pixmap(id, dpr);
    QCOMPARE(pixmap.size(), pixels);
    QCOMPARE(pixmap.devicePixelRatio(), dpr);
    // Drawn at the logical size, whatever the pixel density.
    QCOMPARE((pixmap.deviceIndependentSize() * dpr).toSize(), pixels);
    // The same pixmap comes back from the cache.
    QCOMPARE(TileArt::pixmap(id, dpr).cacheKey(), pixmap.cacheKey());
}

void TestWidgets::tilesAreDistinct()
{
    // Every number draws a picture of its own, at both densities.
    for (qreal dpr : { 1.0, 2.0 }) {
        QHash<QByteArray, int> seen;
        for (int id : allTileIds()) {
            const QByteArray hash = imageHash(TileArt::render(id, dpr));
            QVERIFY2(
                !seen.contains(hash),
                qPrintable(u"tiles %1 and %2 look the same at %3x"_s.arg(seen.value(hash)).arg(id).arg(dpr)));
            seen.insert(hash, id);
        }
        QCOMPARE(seen.size(), 10 * 4 + 2 + 13 + 32);
    }
}

void TestWidgets::alertSet_data()
{
    QTest::addColumn<int>("normal");
    QTest::addColumn<int>("alert");
    for (int d = 0; d <= 9; ++d) {
        QTest::addRow("whole %d", d) << 198 + d << 211 + d;
        QTest::addRow("decimal %d", d) << 235 + d << 300 + d;
    }
    QTest::newRow("point") << 245 << 310;
}

void TestWidgets::alertSet()
{
    QFETCH(int, normal);
    QFETCH(int, alert);

    const QImage plain = TileArt::render(normal);
    const QImage red = TileArt::render(alert);
    QCOMPARE(red.size(), plain.size());
    QVERIFY(imageHash(plain) != imageHash(red));
    QCOMPARE(TileArt::tileText(alert), TileArt::tileText(normal));
    // The alert set has to read as red next to the normal set, not merely differ from it.
    QVERIFY2(redness(red) > redness(plain) + 30.0,
             qPrintable(u"redness %1 against %2"_s.arg(redness(red)).arg(redness(plain))));
    // Drums are opaque: a counter never shows what lies behind it.
    if (TileArt::kind(normal) != TileArt::Kind::DecimalPoint) {
        QCOMPARE(qAlpha(plain.pixel(0, 0)), 255);
        QCOMPARE(qAlpha(red.pixel(red.width() - 1, red.height() - 1)), 255);
    }
}

void TestWidgets::blankTiles()
{
    // A blank drum keeps the tile's size but drops its figure, and all blank digits look alike.
    const QImage blank0 = TileArt::blankPixmap(198).toImage();
    const QImage blank7 = TileArt::blankPixmap(205).toImage();
    QCOMPARE(blank0.size(), QSize(15, 20));
    QCOMPARE(imageHash(blank0), imageHash(blank7));
    QVERIFY(imageHash(blank0) != imageHash(TileArt::pixmap(198).toImage()));
    QVERIFY(imageHash(TileArt::blankPixmap(211).toImage()) != imageHash(blank0));
    QCOMPARE(TileArt::blankPixmap(245, 2.0).size(), QSize(18, 62));
    QVERIFY(TileArt::blankPixmap(500).isNull());
}

void TestWidgets::iconNumbers_data()
{
    using P = IconArt::Picture;
    QTest::addColumn<QString>("table");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("picture");

    const QList<P> reminders = { P::Welcome,         P::Info,        P::NothingDue, P::OpenTrips,
                                 P::DistanceOverdue, P::DaysOverdue, P::Backup,     P::Restore };
    for (int i = 0; i < reminders.size(); ++i)
        QTest::addRow("reminder %d", i) << u"reminder"_s << i << int(reminders.at(i));
    QTest::newRow("reminder -1") << u"reminder"_s << -1 << int(P::Info);
    QTest::newRow("reminder 8") << u"reminder"_s << 8 << int(P::Info);

    // Record icon indexes: the maintenance kinds are the form's resources in their order.
    QTest::newRow("entry 0 fuel") << u"entry"_s << 0 << int(P::Fuel);
    QTest::newRow("entry 1 default") << u"entry"_s << 1 << int(P::Repair);
    QTest::newRow("entry 2 unused") << u"entry"_s << 2 << int(P::Repair);
    QTest::newRow("entry 3 unused") << u"entry"_s << 3 << int(P::Repair);
    QTest::newRow("entry 4 oil") << u"entry"_s << 4 << int(P::OilChange);
    QTest::newRow("entry 5 tune-up") << u"entry"_s << 5 << int(P::TuneUp);
    QTest::newRow("entry 6 transmission") << u"entry"_s << 6 << int(P::Transmission);
    QTest::newRow("entry 7 coolant") << u"entry"_s << 7 << int(P::Coolant);
    QTest::newRow("entry 8 I1") << u"entry"_s << 8 << int(P::Battery);
    QTest::newRow("entry 12 I5") << u"entry"_s << 12 << int(P::Lights);
    QTest::newRow("entry 17 I10") << u"entry"_s << 17 << int(P::Tire);
    QTest::newRow("entry 18 open trip") << u"entry"_s << 18 << int(P::OpenTrip);
    QTest::newRow("entry 19 closed trip") << u"entry"_s << 19 << int(P::ClosedTrip);
    QTest::newRow("entry -5") << u"entry"_s << -5 << int(P::Repair);
    QTest::newRow("entry 20") << u"entry"_s << 20 << int(P::Repair);

    QTest::newRow("resource 356 I0") << u"resource"_s << 356 << int(P::Repair);
    QTest::newRow("resource 357 I1") << u"resource"_s << 357 << int(P::Battery);
    QTest::newRow("resource 366 I10") << u"resource"_s << 366 << int(P::Tire);
    QTest::newRow("resource 408 oil") << u"resource"_s << 408 << int(P::OilChange);
    QTest::newRow("resource 411 coolant") << u"resource"_s << 411 << int(P::Coolant);
    // Rotate Tires shares index 17 with I10 but has a picture of its own.
    QTest::newRow("resource 412 rotate") << u"resource"_s << 412 << int(P::RotateTires);
    QTest::newRow("resource 367") << u"resource"_s << 367 << int(P::Info);
    QTest::newRow("resource 407") << u"resource"_s << 407 << int(P::Info);
    QTest::newRow("resource 413") << u"resource"_s << 413 << int(P::Info);
}

void TestWidgets::iconNumbers()
{
    QFETCH(QString, table);
    QFETCH(int, number);
    QFETCH(int, picture);

    IconArt::Picture got;
    QPixmap pixmap;
    if (table == u"reminder"_s) {
        got = IconArt::reminderPicture(number);
        pixmap = IconArt::reminderPixmap(number);
    } else if (table == u"entry"_s) {
        got = IconArt::entryPicture(number);
        pixmap = IconArt::entryPixmap(number);
    } else {
        got = IconArt::resourcePicture(number);
        pixmap = IconArt::resourcePixmap(number, 16);
        QCOMPARE(IconArt::isResource(number), picture != int(IconArt::Picture::Info));
    }
    QCOMPARE(int(got), picture);
    QCOMPARE(imageHash(pixmap.toImage()),
             imageHash(IconArt::pixmap(IconArt::Picture(picture), 16).toImage()));
}

void TestWidgets::iconPixmapSize_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<qreal>("dpr");
    QTest::newRow("16 at 1x") << 16 << 1.0;
    QTest::newRow("16 at 2x") << 16 << 2.0;
    QTest::newRow("32 at 1x") << 32 << 1.0;
    QTest::newRow("32 at 2x") << 32 << 2.0;
    QTest::newRow("24 at 1.5x") << 24 << 1.5;
    QTest::newRow("96 at 1x") << 96 << 1.0;
}

void TestWidgets::iconPixmapSize()
{
    QFETCH(int, size);
    QFETCH(qreal, dpr);
    const int pixels = qCeil(size * dpr);
    for (int p = 0; p < IconArt::PictureCount; ++p) {
        const QPixmap pixmap = IconArt::pixmap(IconArt::Picture(p), size, dpr);
        QCOMPARE(pixmap.size(), QSize(pixels, pixels));
        QCOMPARE(pixmap.devicePixelRatio(), dpr);
        // A badge: see-through corners, a solid middle.
        const QImage image = pixmap.toImage();
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
        QCOMPARE(qAlpha(image.pixel(pixels - 1, pixels - 1)), 0);
        QCOMPARE(qAlpha(image.pixel(pixels / 2, pixels / 2)), 255);
    }
    // The scalable icon hands out the same size.
    const QPixmap fromIcon = IconArt::entryIcon(0).pixmap(QSize(size, size), dpr);
    QCOMPARE(fromIcon.size(), QSize(pixels, pixels));
}

void TestWidgets::iconsAreDistinct()
{
    // Even at 16 pixels no two pictures come out the same.
    for (int size : { 16, 32 }) {
        QHash<QByteArray, int> seen;
        for (int p = 0; p < IconArt::PictureCount; ++p) {
            const QByteArray hash = imageHash(IconArt::render(IconArt::Picture(p), size));
            QVERIFY2(!seen.contains(hash),
                     qPrintable(u"pictures %1 and %2 at %3 px"_s.arg(seen.value(hash)).arg(p).arg(size)));
            seen.insert(hash, p);
        }
    }
}

void TestWidgets::disabledIconIsGrey()
{
    const QIcon icon = IconArt::resourceIcon(408);
    const QImage normal
        = icon.pixmap(QSize(32, 32), 1.0, QIcon::Normal).toImage().convertToFormat(QImage::Format_ARGB32);
    const QImage disabled
        = icon.pixmap(QSize(32, 32), 1.0, QIcon::Disabled).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(disabled.size(), normal.size());
    QVERIFY(imageHash(normal) != imageHash(disabled));
    for (int y = 0; y < disabled.height(); ++y)
        for (int x = 0; x < disabled.width(); ++x) {
            const QRgb c = disabled.pixel(x, y);
            QVERIFY(qRed(c) == qGreen(c) && qGreen(c) == qBlue(c));
            QVERIFY(qAlpha(c) <= qAlpha(normal.pixel(x, y)));
        }
}

void TestWidgets::counterText_data()
{
    QTest::addColumn<QList<int>>("tiles");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("text");

    QTest::newRow("odometer") << QList<int> { 198, 198, 199, 200, 201, 202, 204 } << QString()
                              << u"0012346"_s;
    QTest::newRow("odometer alert") << QList<int> { 211, 212, 213, 214, 215, 216, 217 } << QString()
                                    << u"0123456"_s;
    QTest::newRow("economy") << QList<int> { 235, 237, 238, 245, 235, 240 } << QString() << u"023.05"_s;
    QTest::newRow("economy alert") << QList<int> { 300, 300, 307, 310, 305, 300 } << QString() << u"007.50"_s;
    QTest::newRow("due date") << QList<int> { 251, 274 } << QString() << u"MAR 14"_s;
    QTest::newRow("no due date") << QList<int> { 248, 292 } << QString() << QString();
    QTest::newRow("text given") << QList<int> { 198, 198, 199 } << u"1 mile"_s << u"1 mile"_s;
}

void TestWidgets::counterText()
{
    QFETCH(QList<int>, tiles);
    QFETCH(QString, given);
    QFETCH(QString, text);

    TileCounter counter;
    counter.setNoData();
    counter.setTiles(tiles, given);
    QVERIFY(!counter.isNoData());
    QCOMPARE(counter.tiles(), tiles);
    QCOMPARE(counter.text(), text);
    QCOMPARE(counter.accessibleName(), text);
    QCOMPARE(counter.toolTip(), text);
}

void TestWidgets::counterNoData()
{
    const QList<int> tiles = { 198, 198, 198, 198, 198, 198, 198 };
    TileCounter counter(tiles);
    const QSize before = counter.sizeHint();
    counter.setNoData();
    QVERIFY(counter.isNoData());
    QCOMPARE(counter.text(), u"No Data"_s);
    QCOMPARE(counter.accessibleName(), u"No Data"_s);
    QCOMPARE(counter.toolTip(), u"No Data"_s);
    QCOMPARE(counter.sizeHint(), before);
    QCOMPARE(counter.tiles(), tiles);

    // What the screen shows changes too, not only the description.
    counter.resize(counter.sizeHint());
    const QImage blankImage = counter.grab().toImage();
    counter.setTiles(tiles);
    QCOMPARE(counter.text(), u"0000000"_s);
    QVERIFY(imageHash(blankImage) != imageHash(counter.grab().toImage()));
}

void TestWidgets::counterLayout_data()
{
    QTest::addColumn<QList<int>>("tiles");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("frame");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QRect>("last");

    const QList<int> odometer = { 198, 199, 200, 201, 202, 203, 204 };
    const QList<int> economy = { 235, 236, 237, 245, 238, 239 };
    QTest::newRow("odometer bare") << odometer << int(Qt::Horizontal) << 0 << QSize(105, 20)
                                   << QRect(90, 0, 15, 20);
    QTest::newRow("odometer framed") << odometer << int(Qt::Horizontal) << 3 << QSize(111, 26)
                                     << QRect(93, 3, 15, 20);
    // Three digits, the narrow point, two digits.
    QTest::newRow("economy") << economy << int(Qt::Horizontal) << 2 << QSize(78, 35) << QRect(63, 2, 13, 31);
    // Month over day, the day centred under the wider month.
    QTest::newRow("date") << QList<int> { 249, 261 } << int(Qt::Vertical) << 0 << QSize(30, 52)
                          << QRect(4, 36, 22, 16);
    QTest::newRow("empty") << QList<int>() << int(Qt::Horizontal) << 3 << QSize(0, 0) << QRect();
}

void TestWidgets::counterLayout()
{
    QFETCH(QList<int>, tiles);
    QFETCH(int, orientation);
    QFETCH(int, frame);
    QFETCH(QSize, hint);
    QFETCH(QRect, last);

    TileCounter counter(tiles);
    counter.setOrientation(Qt::Orientation(orientation));
    counter.setFrameWidth(frame);
    QCOMPARE(counter.sizeHint(), hint);
    counter.resize(hint);
    const QList<QRect> rects = counter.tileRects();
    QCOMPARE(rects.size(), tiles.size());
    if (!rects.isEmpty())
        QCOMPARE(rects.last(), last);
    // Tiles never overlap.
    for (int i = 1; i < rects.size(); ++i)
        QVERIFY(!rects.at(i).intersects(rects.at(i - 1)));
}

void TestWidgets::contactSheet()
{
    // Every tile and picture on one sheet at twice the density, for looking over the art.
    const qreal dpr = 2.0;
    const int margin = 12, gap = 6, labelHeight = 12, rowGap = 10;
    struct Row
    {
        QString title;
        QList<QPair<QPixmap, QString>> cells;
    };
    QList<Row> rows;
    auto tileRow = [&](const QString &title, const QList<int> &ids) {
        Row row { title, {} };
        for (int id : ids)
            row.cells.append({ TileArt::pixmap(id, dpr), QString::number(id) });
        rows.append(row);
    };
    tileRow(u"Whole-number digits"_s, range(198, 207) + range(211, 220));
    tileRow(u"Decimal digits and points"_s, range(235, 245) + range(300, 310));
    tileRow(u"Months"_s, range(248, 260));
    tileRow(u"Days"_s, range(261, 276));
    tileRow(QString(), range(277, 292));
    for (int size : { 32, 16 }) {
        Row reminders { u"Reminder icons 0-7, %1 px"_s.arg(size), {} };
        for (int i = 0; i < IconArt::ReminderIconCount; ++i)
            reminders.cells.append({ IconArt::reminderPixmap(i, size, dpr), QString::number(i) });
        rows.append(reminders);
        Row entries { u"Entry icons 0-19, %1 px"_s.arg(size), {} };
        for (int i = 0; i < IconArt::EntryIconCount; ++i)
            entries.cells.append({ IconArt::entryPixmap(i, size, dpr), QString::number(i) });
        rows.append(entries);
    }
    Row resources { u"Maintenance form pictures, 32 px"_s, {} };
    for (int id : range(356, 366) + range(408, 412))
        resources.cells.append({ IconArt::resourcePixmap(id, 32, dpr), QString::number(id) });
    rows.append(resources);

    int width = 0, height = margin;
    for (const Row &row : rows) {
        int rowWidth = margin, rowHeight = 0;
        for (const auto &cell : row.cells) {
            const QSizeF s = cell.first.deviceIndependentSize();
            rowWidth += qMax(int(s.width()), 20) + gap;
            rowHeight = qMax(rowHeight, int(s.height()));
        }
        width = qMax(width, rowWidth + margin);
        height += (row.title.isEmpty() ? 0 : labelHeight + 2) + rowHeight + labelHeight + rowGap;
    }

    QImage sheet(QSize(width, height) * dpr, QImage::Format_ARGB32_Premultiplied);
    sheet.setDevicePixelRatio(dpr);
    sheet.fill(QColor(0xf4, 0xf5, 0xf7));
    QPainter p(&sheet);
    p.setRenderHint(QPainter::TextAntialiasing);
    QFont font(u"Arial"_s);
    font.setPixelSize(9);
    p.setFont(font);
    int y = margin;
    for (const Row &row : rows) {
        if (!row.title.isEmpty()) {
            p.setPen(QColor(0x22, 0x24, 0x28));
            QFont bold = font;
            bold.setBold(true);
            p.setFont(bold);
            p.drawText(QPoint(margin, y + labelHeight - 3), row.title);
            p.setFont(font);
            y += labelHeight + 2;
        }
        int x = margin, rowHeight = 0;
        for (const auto &cell : row.cells) {
            const QSizeF s = cell.first.deviceIndependentSize();
            const int cellWidth = qMax(int(s.width()), 20);
            p.drawPixmap(QPointF(x + (cellWidth - s.width()) / 2, y), cell.first);
            rowHeight = qMax(rowHeight, int(s.height()));
            x += cellWidth + gap;
        }
        x = margin;
        p.setPen(QColor(0x6b, 0x70, 0x78));
        for (const auto &cell : row.cells) {
            const int cellWidth = qMax(int(cell.first.deviceIndependentSize().width()), 20);
            p.drawText(QRect(x - 3, y + rowHeight + 1, cellWidth + 6, labelHeight),
                       Qt::AlignHCenter | Qt::AlignTop, cell.second);
            x += cellWidth + gap;
        }
        y += rowHeight + labelHeight + rowGap;
    }
    p.end();

    const QString path = screenshotFolder() + u"/widgets-contact-sheet.png"_s;
    QVERIFY(sheet.save(path));
    QVERIFY(QImage(path).size() == sheet.size());
}

void TestWidgets::counterScreenshot()
{
    QWidget panel;
    panel.setAutoFillBackground(true);
    QPalette palette = panel.palette();
    palette.setColor(QPalette::Window, QColor(0xf4, 0xf5, 0xf7));
    panel.setPalette(palette);
    auto *grid = new QVBoxLayout(&panel);

    auto addRow = [&](const QString &caption, QWidget *counter) {
        auto *row = new QHBoxLayout;
        auto *label = new QLabel(caption);
        label->setMinimumWidth(150);
        row->addWidget(label);
        row->addWidget(counter);
        row->addStretch();
        grid->addLayout(row);
    };

    auto *normal = new TileCounter(range(198, 204) /* 0123456 */);
    auto *alert = new TileCounter(range(211, 217));
    auto *economy = new TileCounter(QList<int> { 235, 237, 238, 245, 239, 241 });
    auto *economyAlert = new TileCounter(QList<int> { 300, 302, 303, 310, 304, 306 });
    auto *noData = new TileCounter(QList<int>(7, 198));
    noData->setNoData();
    auto *noDataEconomy = new TileCounter(QList<int> { 235, 235, 235, 245, 235, 235 });
    noDataEconomy->setNoData();
    auto *date = new TileCounter(QList<int> { 251, 274 });
    date->setOrientation(Qt::Vertical);
    date->setFrameWidth(0);
    auto *noDate = new TileCounter(QList<int> { 248, 292 });
    noDate->setOrientation(Qt::Vertical);
    noDate->setFrameWidth(0);

    addRow(u"Odometer"_s, normal);
    addRow(u"Odometer, overdue"_s, alert);
    addRow(u"Current "_s, economy);
    addRow(u"Average, alert set"_s, economyAlert);
    addRow(u"Odometer, no data"_s, noData);
    addRow(u"Economy, no data"_s, noDataEconomy);
    auto *dates = new QHBoxLayout;
    dates->addWidget(date);
    dates->addSpacing(12);
    dates->addWidget(noDate);
    dates->addStretch();
    auto *label = new QLabel(u"Due date / no date"_s);
    label->setMinimumWidth(150);
    auto *dateRow = new QHBoxLayout;
    dateRow->addWidget(label);
    dateRow->addLayout(dates);
    grid->addLayout(dateRow);

    panel.resize(panel.sizeHint());
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QCOMPARE(normal->text(), u"0123456"_s);
    QCOMPARE(alert->text(), u"0123456"_s);
    QCOMPARE(normal->size(), normal->sizeHint());

    const QString path = screenshotFolder() + u"/widgets-tile-counters.png"_s;
    QVERIFY(panel.grab().save(path));
}

QTEST_MAIN(TestWidgets)
#include "tst_widgets.moc"
