#include "GuiReporter.h"
#include "gui_helper.h"
#include "widgets/IconArt.h"
#include "widgets/TileArt.h"
#include "widgets/TileCounter.h"

#include <QCryptographicHash>
#include <QDir>
#include <QMessageBox>
#include <QPainter>
#include <QtTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QByteArray imageHash(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    return QCryptographicHash::hash(QByteArrayView(argb.constBits(), argb.sizeInBytes()),
                                    QCryptographicHash::Sha1);
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
            if (qAlpha(c) >= 128) {
                sum += qRed(c) - (qGreen(c) + qBlue(c)) / 2.0;
                ++count;
            }
        }
    return count ? sum / count : 0.0;
}

// "a and b" for the first two numbers that draw the same picture, empty when all differ.
QString firstTwins(const QList<int> &ids, const std::function<QImage(int)> &render)
{
    QHash<QByteArray, int> seen;
    for (int id : ids) {
        const QByteArray hash = imageHash(render(id));
        if (seen.contains(hash))
            return u"%1 and %2"_s.arg(seen.value(hash)).arg(id);
        seen.insert(hash, id);
    }
    return QString();
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
    void tiles_data();
    void tiles();
    void alertAndBlankTiles();
    void artIsDistinct();
    void iconNumbers_data();
    void iconNumbers();
    void iconPixmaps();
    void counters_data();
    void counters();
    void screenshots();
    void reporterBoxes();
};

void TestWidgets::tiles_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("alert");
    QTest::addColumn<qreal>("dpr");

    for (int d : { 0, 9 }) {
        const QString digit = QString::number(d);
        QTest::addRow("whole %d", d) << 198 + d << QSize(15, 20) << digit << false << 1.0;
        QTest::addRow("whole alert %d", d) << 211 + d << QSize(15, 20) << digit << true << 2.0;
        QTest::addRow("decimal %d", d) << 235 + d << QSize(13, 31) << digit << false << 2.0;
        QTest::addRow("decimal alert %d", d) << 300 + d << QSize(13, 31) << digit << true << 1.0;
    }
    // 13.5 x 46.5 pixels round up.
    QTest::newRow("point") << 245 << QSize(9, 31) << u"."_s << false << 1.5;
    QTest::newRow("point alert") << 310 << QSize(9, 31) << u"."_s << true << 1.5;
    QTest::newRow("month no date") << 248 << QSize(30, 36) << QString() << false << 1.0;
    QTest::newRow("january") << 249 << QSize(30, 36) << u"JAN"_s << false << 2.0;
    QTest::newRow("december") << 260 << QSize(30, 36) << u"DEC"_s << false << 1.0;
    QTest::newRow("day 1") << 261 << QSize(22, 16) << u"1"_s << false << 3.0;
    QTest::newRow("day 31") << 291 << QSize(22, 16) << u"31"_s << false << 1.0;
    QTest::newRow("day no date") << 292 << QSize(22, 16) << QString() << false << 2.0;
    // The gaps between the sets are not tiles.
    for (int id : { -1, 0, 197, 208, 210, 221, 234, 246, 247, 293, 299, 311 })
        QTest::addRow("not a tile %d", id) << id << QSize() << QString() << false << 1.0;
}

void TestWidgets::tiles()
{
    QFETCH(int, id);
    QFETCH(QSize, size);
    QFETCH(QString, text);
    QFETCH(bool, alert);
    QFETCH(qreal, dpr);

    QCOMPARE(TileArt::tileSize(id), size);
    QCOMPARE(TileArt::isTile(id), size.isValid());
    QCOMPARE(TileArt::tileText(id), text);
    QCOMPARE(TileArt::isAlert(id), alert);
    const QPixmap pixmap = TileArt::pixmap(id, dpr);
    QCOMPARE(pixmap.isNull(), !size.isValid());
    if (size.isValid()) {
        const QSize pixels(qCeil(size.width() * dpr), qCeil(size.height() * dpr));
        QCOMPARE(pixmap.size(), pixels);
        QCOMPARE(pixmap.devicePixelRatio(), dpr);
        QCOMPARE((pixmap.deviceIndependentSize() * dpr).toSize(), pixels);
        QCOMPARE(TileArt::pixmap(id, dpr).cacheKey(), pixmap.cacheKey());
    }
}

void TestWidgets::alertAndBlankTiles()
{
    // Each alert digit and point reads as red next to its normal twin, not merely different.
    QList<QPair<int, int>> twins { { 245, 310 } };
    for (int d = 0; d <= 9; ++d)
        twins += { { 198 + d, 211 + d }, { 235 + d, 300 + d } };
    for (const auto &[normal, alert] : twins) {
        const QImage plain = TileArt::render(normal);
        const QImage red = TileArt::render(alert);
        QCOMPARE(red.size(), plain.size());
        QCOMPARE(TileArt::tileText(alert), TileArt::tileText(normal));
        QVERIFY2(redness(red) > redness(plain) + 30.0, qPrintable(u"tile %1"_s.arg(alert)));
        // Drums are opaque: a counter never shows what lies behind it.
        if (normal != 245) {
            QCOMPARE(qAlpha(plain.pixel(0, 0)), 255);
            QCOMPARE(qAlpha(red.pixel(red.width() - 1, red.height() - 1)), 255);
        }
    }

    // A blank drum keeps the tile's size but drops its figure, and all blank digits look alike.
    const QImage blank0 = TileArt::blankPixmap(198).toImage();
    QCOMPARE(blank0.size(), QSize(15, 20));
    QCOMPARE(imageHash(blank0), imageHash(TileArt::blankPixmap(205).toImage()));
    QVERIFY(imageHash(blank0) != imageHash(TileArt::pixmap(198).toImage()));
    QVERIFY(imageHash(TileArt::blankPixmap(211).toImage()) != imageHash(blank0));
    QCOMPARE(TileArt::blankPixmap(245, 2.0).size(), QSize(18, 62));
    QVERIFY(TileArt::blankPixmap(500).isNull());
}

void TestWidgets::artIsDistinct()
{
    // Every tile number and every icon picture draws a picture of its own, at either density or size.
    QList<int> tiles;
    for (int id = 0; id < 400; ++id)
        if (TileArt::isTile(id))
            tiles.append(id);
    QCOMPARE(tiles.size(), 10 * 4 + 2 + 13 + 32);
    for (qreal dpr : { 1.0, 2.0 })
        QCOMPARE(firstTwins(tiles, [dpr](int id) { return TileArt::render(id, dpr); }), QString());
    for (int size : { 16, 32 })
        QCOMPARE(firstTwins(range(0, IconArt::PictureCount - 1),
                            [size](int p) { return IconArt::render(IconArt::Picture(p), size); }),
                 QString());
}

void TestWidgets::iconNumbers_data()
{
    using P = IconArt::Picture;
    QTest::addColumn<char>("table"); // reminder, entry or form resource
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("picture");
    const auto add = [](char table, const QList<int> &numbers, const QList<P> &pictures) {
        for (int i = 0; i < numbers.size(); ++i)
            QTest::addRow("%c %d", table, numbers.at(i)) << table << numbers.at(i) << int(pictures.at(i));
    };
    add('r', { 0, 1, 2, 3, 4, 5, 6, 7, -1, 8 },
        { P::Welcome, P::Info, P::NothingDue, P::OpenTrips, P::DistanceOverdue, P::DaysOverdue, P::Backup,
          P::Restore, P::Info, P::Info });
    // Record icon indexes: the maintenance kinds are the form's resources in their order.
    add('e', { 0, 1, 3, 4, 5, 6, 7, 8, 17, 18, 19, -5, 20 },
        { P::Fuel, P::Repair, P::Repair, P::OilChange, P::TuneUp, P::Transmission, P::Coolant, P::Battery,
          P::Tire, P::OpenTrip, P::ClosedTrip, P::Repair, P::Repair });
    // Rotate Tires (412) shares index 17 with I10 but has a picture of its own.
    add('s', { 356, 357, 366, 408, 411, 412, 367, 407, 413 },
        { P::Repair, P::Battery, P::Tire, P::OilChange, P::Coolant, P::RotateTires, P::Info, P::Info,
          P::Info });
}

void TestWidgets::iconNumbers()
{
    QFETCH(char, table);
    QFETCH(int, number);
    QFETCH(int, picture);

    IconArt::Picture got;
    QPixmap pixmap;
    if (table == 'r') {
        got = IconArt::reminderPicture(number);
        pixmap = IconArt::reminderPixmap(number);
    } else if (table == 'e') {
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

void TestWidgets::iconPixmaps()
{
    for (const auto &[size, dpr] : { QPair<int, qreal>(16, 1.0), { 32, 2.0 }, { 24, 1.5 } }) {
        const int pixels = qCeil(size * dpr);
        for (int p = 0; p < IconArt::PictureCount; ++p) {
            const QImage image = IconArt::pixmap(IconArt::Picture(p), size, dpr).toImage();
            QCOMPARE(image.size(), QSize(pixels, pixels));
            QCOMPARE(image.devicePixelRatio(), dpr);
            // A badge: see-through corners, a solid middle.
            QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
            QCOMPARE(qAlpha(image.pixel(pixels - 1, pixels - 1)), 0);
            QCOMPARE(qAlpha(image.pixel(pixels / 2, pixels / 2)), 255);
        }
        QCOMPARE(IconArt::entryIcon(0).pixmap(QSize(size, size), dpr).size(), QSize(pixels, pixels));
    }

    // A disabled icon is grey and no more opaque than the normal one.
    const QIcon icon = IconArt::resourceIcon(408);
    const auto image = [&](QIcon::Mode mode) {
        return icon.pixmap(QSize(32, 32), 1.0, mode).toImage().convertToFormat(QImage::Format_ARGB32);
    };
    const QImage normal = image(QIcon::Normal);
    const QImage disabled = image(QIcon::Disabled);
    QCOMPARE(disabled.size(), normal.size());
    QVERIFY(imageHash(normal) != imageHash(disabled));
    for (int y = 0; y < disabled.height(); ++y)
        for (int x = 0; x < disabled.width(); ++x) {
            const QRgb c = disabled.pixel(x, y);
            QVERIFY(qRed(c) == qGreen(c) && qGreen(c) == qBlue(c));
            QVERIFY(qAlpha(c) <= qAlpha(normal.pixel(x, y)));
        }
}

void TestWidgets::counters_data()
{
    QTest::addColumn<QList<int>>("tiles");
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("frame");
    QTest::addColumn<QSize>("hint");
    QTest::addColumn<QRect>("last");

    QTest::newRow("odometer") << QList<int> { 198, 198, 199, 200, 201, 202, 204 } << QString() << u"0012346"_s
                              << int(Qt::Horizontal) << 3 << QSize(111, 26) << QRect(93, 3, 15, 20);
    QTest::newRow("zeros, bare") << QList<int>(7, 198) << QString() << u"0000000"_s << int(Qt::Horizontal)
                                 << 0 << QSize(105, 20) << QRect(90, 0, 15, 20);
    // Three digits, the narrow point, two digits.
    QTest::newRow("economy alert") << QList<int> { 300, 300, 307, 310, 305, 300 } << QString() << u"007.50"_s
                                   << int(Qt::Horizontal) << 2 << QSize(78, 35) << QRect(63, 2, 13, 31);
    // Month over day, the day centred under the wider month.
    QTest::newRow("due date") << QList<int> { 251, 274 } << QString() << u"MAR 14"_s << int(Qt::Vertical) << 0
                              << QSize(30, 52) << QRect(4, 36, 22, 16);
    QTest::newRow("no due date") << QList<int> { 248, 292 } << QString() << QString() << int(Qt::Vertical)
                                 << 0 << QSize(30, 52) << QRect(4, 36, 22, 16);
    QTest::newRow("text given") << QList<int> { 198, 198, 199 } << u"1 mile"_s << u"1 mile"_s
                                << int(Qt::Horizontal) << 3 << QSize(51, 26) << QRect(33, 3, 15, 20);
    QTest::newRow("empty") << QList<int>() << QString() << QString() << int(Qt::Horizontal) << 3
                           << QSize(0, 0) << QRect();
}

void TestWidgets::counters()
{
    QFETCH(QList<int>, tiles);
    QFETCH(QString, given);
    QFETCH(QString, text);
    QFETCH(int, orientation);
    QFETCH(int, frame);
    QFETCH(QSize, hint);
    QFETCH(QRect, last);

    TileCounter counter;
    counter.setNoData();
    counter.setOrientation(Qt::Orientation(orientation));
    counter.setFrameWidth(frame);
    counter.setTiles(tiles, given);
    QVERIFY(!counter.isNoData());
    QCOMPARE(counter.tiles(), tiles);
    QCOMPARE(counter.text(), text);
    QCOMPARE(counter.accessibleName(), text);
    QCOMPARE(counter.toolTip(), text);

    QCOMPARE(counter.sizeHint(), hint);
    counter.resize(hint);
    const QList<QRect> rects = counter.tileRects();
    QCOMPARE(rects.size(), tiles.size());
    if (!rects.isEmpty())
        QCOMPARE(rects.last(), last);
    for (int i = 1; i < rects.size(); ++i)
        QVERIFY(!rects.at(i).intersects(rects.at(i - 1)));

    // Without data the drums keep their places, blank under "No Data", and the picture changes too.
    const QImage shown = counter.grab().toImage();
    counter.setNoData();
    QVERIFY(counter.isNoData());
    for (const QString &description : { counter.text(), counter.accessibleName(), counter.toolTip() })
        QCOMPARE(description, u"No Data"_s);
    QCOMPARE(counter.sizeHint(), hint);
    QCOMPARE(counter.tiles(), tiles);
    if (!tiles.isEmpty())
        QVERIFY(imageHash(counter.grab().toImage()) != imageHash(shown));
}

void TestWidgets::screenshots()
{
    // Every tile and picture on one sheet at twice the density, each captioned with its number.
    const qreal dpr = 2.0;
    const int cell = 36, line = 14, rowHeight = 3 * line + 36;
    QImage sheet(QSize(24 + 22 * cell, 12 + 10 * rowHeight) * dpr, QImage::Format_ARGB32_Premultiplied);
    sheet.setDevicePixelRatio(dpr);
    sheet.fill(QColor(0xf4, 0xf5, 0xf7));
    QPainter p(&sheet);
    QFont font(u"Arial"_s);
    font.setPixelSize(9);
    p.setFont(font);
    int y = 12;
    const auto addRow = [&](const QString &title, const QList<int> &ids, const auto &pixmap) {
        p.drawText(QPoint(12, y + line - 3), title);
        qreal tallest = 0;
        for (int c = 0; c < ids.size(); ++c) {
            const QPixmap picture = pixmap(ids.at(c));
            const QSizeF s = picture.deviceIndependentSize();
            tallest = qMax(tallest, s.height());
            p.drawPixmap(QPointF(12 + c * cell + (cell - s.width()) / 2, y + line), picture);
            p.drawText(QRect(12 + c * cell, y + line + s.height(), cell, line), Qt::AlignCenter,
                       QString::number(ids.at(c)));
        }
        y += int(tallest) + 2 * line + 6;
    };
    const auto tile = [&](int id) {
        return TileArt::pixmap(id, dpr);
    };
    addRow(u"Whole-number digits"_s, range(198, 207) + range(211, 220), tile);
    addRow(u"Decimal digits and points"_s, range(235, 245) + range(300, 310), tile);
    addRow(u"Months"_s, range(248, 260), tile);
    addRow(u"Days"_s, range(261, 276), tile);
    addRow(QString(), range(277, 292), tile);
    for (int size : { 32, 16 }) {
        addRow(u"Reminder icons, %1 px"_s.arg(size), range(0, IconArt::ReminderIconCount - 1),
               [&](int i) { return IconArt::reminderPixmap(i, size, dpr); });
        addRow(u"Entry icons, %1 px"_s.arg(size), range(0, IconArt::EntryIconCount - 1),
               [&](int i) { return IconArt::entryPixmap(i, size, dpr); });
    }
    addRow(u"Maintenance form pictures, 32 px"_s, range(356, 366) + range(408, 412),
           [&](int id) { return IconArt::resourcePixmap(id, 32, dpr); });

    p.end();
    QVERIFY(sheet.copy(QRect(QPoint(), QSize(sheet.width(), int(y * dpr))))
                .save(screenshotFolder() + u"/widgets-contact-sheet.png"_s));
    // The counters themselves are seen on the main screen's and the reminders' pictures.
}

QTEST_MAIN(TestWidgets)
// The boxes the reporter shows: which buttons and which icon. A notice with one OK button
// always answers "go on"; the options messages are plain boxes without an icon.
void TestWidgets::reporterBoxes()
{
    GuiReporter reporter;
    QStringList seen;
    const auto watch = [&seen] {
        QTimer::singleShot(0, [&seen] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return seen.append(u"no box"_s);
            seen.append(u"%1 buttons %2 icon %3"_s.arg(box->text())
                            .arg(int(box->standardButtons()), 0, 16)
                            .arg(int(box->icon())));
            box->reject(); // Escape or the window's close button
        });
    };
    watch();
    QVERIFY(reporter.ask(u"NOTE text"_s, u"NOTE"_s, Reporter::Buttons::Ok));
    watch();
    reporter.plain(u"REGKEY_OPTIONS error detected, Attempting to correct."_s);
    watch();
    QVERIFY(!reporter.ask(u"Sure?"_s, QString(), Reporter::Buttons::YesNo));
    QCOMPARE(seen,
             (QStringList { u"NOTE text buttons 400 icon 4"_s,
                            u"REGKEY_OPTIONS error detected, Attempting to correct. buttons 400 icon 0"_s,
                            u"Sure? buttons 14000 icon 4"_s }));
}

#include "tst_widgets.moc"
