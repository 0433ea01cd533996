#include <QDir>
#include <QImage>
#include <QtTest>

#include "widgets/GraphControl.h"
#include "widgets/GraphGeometry.h"
#include "widgets/GraphRenderer.h"

using namespace Qt::StringLiterals;

namespace {

const QRgb Background = qRgb(0, 0, 75);
const QRgb Grid = qRgb(192, 192, 255);
const QRgb Plot = qRgb(0, 255, 0);

QString colour(QRgb rgb)
{
    return u"%1,%2,%3"_s.arg(qRed(rgb)).arg(qGreen(rgb)).arg(qBlue(rgb));
}

QString pixel(const QImage &image, int x, int y)
{
    return colour(image.pixel(x, y));
}

// A 300 x 200 graph with the fuel economy colours: the plot spans x 48..290, y 10..175.
void setUp(GraphRenderer &graph, double lower, double upper, qreal ratio = 1.0)
{
    graph.resize(QSize(300, 200), ratio);
    graph.setXRange(0, 12, 0);
    graph.setRange(lower, upper, 2);
    graph.setXTitle(u"TIMES FUELED"_s);
    graph.setYTitle(u"FUEL MPG"_s);
    graph.setBackgroundColour(Background);
    graph.setGridColour(Grid);
    graph.setPlotColour(Plot);
}

} // namespace

class TestGraphControl : public QObject
{
    Q_OBJECT

private slots:
    void margins_data();
    void margins();
    void placesAndFactors();
    void pixels();
    void highDpiAndResize();
};

void TestGraphControl::margins_data()
{
    QTest::addColumn<double>("lower");
    QTest::addColumn<double>("upper");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<int>("plotLeft");
    QTest::addColumn<QString>("upperLabel"); // "text@x,y" or "-" when not drawn
    QTest::addColumn<QString>("lowerLabel");

    // log10(120) = 2.08: d = 2, (2 + 2 + 4) x 6 = 48; "120.00" is 36 pixels wide.
    QTest::newRow("9.5 to 120") << 9.5 << 120.0 << 2 << 48 << u"120.00@12,10"_s << u"9.50@24,165"_s;
    // Other decimals: the margin still widens, but no numbers are drawn.
    QTest::newRow("one decimal") << 9.5 << 120.0 << 1 << 42 << u"-"_s << u"-"_s;
    QTest::newRow("no decimals") << 9.5 << 120.0 << 0 << 36 << u"-"_s << u"-"_s;
    // A limit of 0 counts as one digit; 0.001 has log10 -3, made positive: 3.
    QTest::newRow("zero") << 0.0 << 0.5 << 2 << 36 << u"0.50@12,10"_s << u"0.00@12,165"_s;
    QTest::newRow("thousandth") << 0.001 << 5.0 << 2 << 54 << u"5.00@30,10"_s << u"0.00@30,165"_s;
    // The digit count stops at 15, so 1e20's label outgrows the margin: it starts at plot left - 36.
    QTest::newRow("label longer than the margin")
        << 0.0 << 1e20 << 2 << 126 << u"100000000000000000000.00@90,10"_s << u"0.00@102,165"_s;
}

void TestGraphControl::margins()
{
    QFETCH(double, lower);
    QFETCH(double, upper);
    QFETCH(int, decimals);
    QFETCH(int, plotLeft);
    QFETCH(QString, upperLabel);
    QFETCH(QString, lowerLabel);

    GraphGeometry g;
    g.setClientSize(300, 200);
    g.setRange(lower, upper, decimals);
    QCOMPARE(g.plotLeft(), plotLeft);
    auto text = [](const GraphGeometry::Label &label) {
        return label.visible ? u"%1@%2,%3"_s.arg(label.text).arg(label.position.x()).arg(label.position.y())
                             : u"-"_s;
    };
    QCOMPARE(text(g.upperLabel()), upperLabel);
    QCOMPARE(text(g.lowerLabel()), lowerLabel);
}

void TestGraphControl::placesAndFactors()
{
    GraphGeometry g;
    g.setClientSize(300, 200);
    g.setXRange(0, 12, 0);
    g.setRange(10, 175, 2);
    // Right 300 - 10, bottom 200 - 25; the middle line at 10 + 175 / 2, not at the frame's middle.
    QCOMPARE(g.plotRect(), QRect(QPoint(48, 10), QPoint(290, 175)));
    QCOMPARE(g.middleLineY(), 97);
    QCOMPARE(g.xLowerLabel().position, QPoint(48, 179));
    QCOMPARE(g.xUpperLabel().text, u"12"_s);
    QCOMPARE(g.xUpperLabel().position, QPoint(278, 179));
    QCOMPARE(g.xTitlePosition(), QPoint(139, 181));
    QCOMPARE(g.yTitlePosition(), QPoint(9, 130));
    // 165 pixels for 165 units; 242 pixels for 12.
    QCOMPARE(g.verticalFactor(), 1.0);
    QCOMPARE(g.horizontalFactor(), 242.0 / 12);
    QCOMPARE(g.mapToPixel(6, 60), QPoint(169, 125));
    // A range of 0 puts every value in the middle of the plot.
    g.setRange(5, 5, 2);
    QCOMPARE(g.verticalFactor(), 0.0);
    QCOMPARE(g.map(3, 5).y(), 92.5);
}

void TestGraphControl::pixels()
{
    GraphRenderer graph;
    setUp(graph, 10, 175);
    // A flat line at 60 (row 125) from x 1 to x 7, then a dot on the middle line at x 10.
    graph.addPoint(1, 60);
    graph.addPoint(7, 60);
    graph.reset();
    graph.addPoint(10, 88);
    const QImage image = graph.composed();
    QCOMPARE(image.size(), QSize(300, 200));

    const QString bg = colour(Background);
    const QString grid = colour(Grid);
    const QString plotOverBackground = colour(Plot | Background); // 0,255,75
    const QString plotOverGrid = colour(Plot | Grid); // 192,255,255
    // The frame's corners, one pixel past the plot on the right and below, and what is outside.
    QCOMPARE(pixel(image, 48, 10), grid);
    QCOMPARE(pixel(image, 291, 10), grid);
    QCOMPARE(pixel(image, 291, 176), grid);
    QCOMPARE(pixel(image, 48, 176), grid);
    QCOMPARE(pixel(image, 292, 177), bg);
    QCOMPARE(pixel(image, 290, 175), bg);
    // The middle line's row, and the rows beside it.
    QCOMPARE(pixel(image, 120, 97), grid);
    QCOMPARE(pixel(image, 120, 96), bg);
    QCOMPARE(pixel(image, 120, 98), bg);
    // The line, two pixels thick, ORed over the background; the dot ORed over the middle line.
    QCOMPARE(pixel(image, 120, 124), plotOverBackground);
    QCOMPARE(pixel(image, 120, 125), plotOverBackground);
    QCOMPARE(pixel(image, 120, 127), bg);
    QCOMPARE(pixel(image, 250, 97), plotOverGrid);
    QCOMPARE(pixel(image, 249, 96), plotOverBackground);
    // The dot starts a line of its own: nothing joins it to the line before.
    QCOMPARE(pixel(image, 220, 110), bg);

    const QList<GraphRenderer::Point> table { { 1, 60, Plot, true },
                                              { 7, 60, Plot, false },
                                              { 10, 88, Plot, true } };
    QCOMPARE(graph.points(), table);
    QCOMPARE(graph.currentX(), 250);
    // A new range redraws the frame, which clears the chart.
    graph.setRange(0, 100, 2);
    QVERIFY(graph.points().isEmpty());
    QCOMPARE(graph.currentX(), 0);
    QCOMPARE(pixel(graph.composed(), 120, 125), bg);
}

void TestGraphControl::highDpiAndResize()
{
    GraphRenderer graph;
    setUp(graph, 10, 175, 2.0);
    graph.addPoint(1, 60);
    graph.addPoint(7, 60);
    const QImage image = graph.composed();
    QCOMPARE(image.size(), QSize(600, 400));
    QCOMPARE(image.devicePixelRatio(), 2.0);
    QCOMPARE(pixel(image, 96, 20), colour(Grid));
    QCOMPARE(pixel(image, 240, 250), colour(Plot | Background));

    // A new size keeps the points and draws them where the new frame puts them.
    graph.resize(QSize(400, 300), 1.0);
    QCOMPARE(graph.points().size(), 2);
    QCOMPARE(graph.geometry().plotRect(), QRect(QPoint(48, 10), QPoint(390, 275)));
    const QPoint p = graph.geometry().mapToPixel(4, 60);
    QCOMPARE(pixel(graph.composed(), p.x(), p.y()), colour(Plot | Background));

    // The widget shows the same picture.
    GraphControl control;
    control.resize(300, 200);
    setUp(control.graph(), 10, 175);
    control.addPoint(1, 60);
    control.addPoint(7, 60);
    control.show();
    QVERIFY(QTest::qWaitForWindowExposed(&control));
    const QImage shown = control.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QCOMPARE(pixel(shown, 120, 125), colour(Plot | Background));
    QCOMPARE(pixel(shown, 48, 10), colour(Grid));
    QVERIFY(control.accessibleDescription().startsWith(u"FUEL MPG from 10.00 to 175.00"_s));
}

QTEST_MAIN(TestGraphControl)
#include "tst_graph_control.moc"
