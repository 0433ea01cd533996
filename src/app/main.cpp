#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QMainWindow>

#include "platform/DevicePaths.h"

using namespace Qt::StringLiterals;

// Until the main screen lands, the program shows which data folder it works on.
int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(u"Quellar"_s);
    QApplication::setApplicationName(u"Tarvane"_s);

    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption rootOption(u"root"_s, u"Use DIR as the device root (sandbox)."_s, u"DIR"_s);
    parser.addOption(rootOption);
    parser.process(app);

    const DevicePaths paths = DevicePaths::fromEnvironment(parser.value(rootOption));
    QMainWindow window;
    window.setWindowTitle(u"Tarvane"_s);
    auto *label = new QLabel(u"Tarvane\n\nData folder:\n"_s + paths.dataFolder(), &window);
    label->setAlignment(Qt::AlignCenter);
    label->setMargin(24);
    window.setCentralWidget(label);
    window.resize(480, 640);
    window.show();
    return app.exec();
}
