#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>

#include <cstdio>
#include <cstring>
#include <memory>

#include "CliApp.h"

namespace {

// Drawing a chart (stats --png) needs fonts, so the GUI application, on no screen at all.
bool drawsPictures(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--png") == 0 || std::strncmp(argv[i], "--png=", 6) == 0)
            return true;
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    std::unique_ptr<QCoreApplication> app;
    if (drawsPictures(argc, argv)) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setOrganizationName(QStringLiteral("Quellar"));
    QCoreApplication::setApplicationName(QStringLiteral("tarvane-cli"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    CliApp cli(out, err);
    const int code = cli.run(QCoreApplication::arguments());
    out.flush();
    err.flush();
    return code;
}
