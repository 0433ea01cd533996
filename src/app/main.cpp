#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>

#include "GuiReporter.h"
#include "app/FileChooser.h"
#include "app/HelpLauncher.h"
#include "app/MainWindow.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QElapsedTimer sinceStart;
    sinceStart.start();

    QApplication app(argc, argv);
    QApplication::setOrganizationName(u"Quellar"_s);
    QApplication::setApplicationName(u"Tarvane"_s);
    QApplication::setApplicationVersion(u"2.2.2"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Tarvane vehicle log"_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption rootOption(u"root"_s, u"Use DIR as the device root (sandbox)."_s, u"DIR"_s);
    parser.addOption(rootOption);
    parser.process(app);

    const DevicePaths paths = DevicePaths::fromEnvironment(parser.value(rootOption));
    QSettingsStore options(paths, u"Quellar"_s, u"Velcora"_s);
    QSettingsStore preferences(paths, u"Quellar"_s, u"Tarvane"_s);
    SystemClock clock;
    QLocaleFormats locale;
    GuiReporter reporter;
    AppContext context { paths, reporter, clock, locale, options, preferences };

    VehicleSession session(context);
    session.start();
    session.saveAfterStartup();

    DialogFileChooser chooser;
    HelpViewerLauncher help;
    HelpKeyFilter helpKey(help);
    app.installEventFilter(&helpKey);
    MainWindow window(session, chooser, help);
    reporter.setParent(&window);
    window.restoreWindowGeometry();
    window.show();

    // TARVANE_STARTUP_TIMING=1 prints the time to the first painted frame; "exit" also quits then,
    // which is how the start-up benchmark measures a cold start.
    const QByteArray timing = qgetenv("TARVANE_STARTUP_TIMING");
    if (!timing.isEmpty()) {
        QTimer::singleShot(0, &window, [&] {
            window.repaint();
            std::fprintf(stderr, "first paint after %lld ms\n", static_cast<long long>(sinceStart.elapsed()));
            if (timing == "exit")
                QApplication::quit();
        });
    }
    return app.exec();
}
