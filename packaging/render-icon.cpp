// Renders the application icon's SVG into the PNG sizes of the hicolor icon theme at build time,
// with the same SVG renderer the program itself uses: FOLDER/<size>x<size>/apps/NAME.png.
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = QGuiApplication::arguments();
    if (args.size() < 5) {
        std::fprintf(stderr, "usage: tarvane-render-icon ICON.svg OUTPUT-FOLDER NAME SIZE...\n");
        return 2;
    }
    QSvgRenderer renderer(args.at(1));
    if (!renderer.isValid()) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(args.at(1)));
        return 1;
    }
    const QString name = args.at(3);
    for (const QString &sizeText : args.mid(4)) {
        const int size = sizeText.toInt();
        if (size <= 0) {
            std::fprintf(stderr, "not a size: %s\n", qPrintable(sizeText));
            return 2;
        }
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(0, 0, size, size));
        painter.end();
        const QString folder = args.at(2) + u'/' + sizeText + u'x' + sizeText + u"/apps"_s;
        const QString file = folder + u'/' + name + u".png"_s;
        if (!QDir().mkpath(folder) || !image.save(file, "PNG")) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
