#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QIcon>
#include <QTimer>

#include <cstdio>

#include "GuiReporter.h"
#include "app/FileChooser.h"
#include "app/HelpLauncher.h"
#include "app/MainWindow.h"
#include "platform/AppContext.h"
#include "session/VehicleSession.h"

using namespace Qt::StringLiterals;

namespace {

const QString appId = u"org.tarvane.Tarvane"_s;

void describeApplication()
{
    QCoreApplication::setOrganizationName(u"Quellar"_s);
    QCoreApplication::setApplicationName(u"Tarvane"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(TARVANE_VERSION));
}

void describeOptions(QCommandLineParser &parser, const QCommandLineOption &rootOption)
{
    parser.setApplicationDescription(u"Tarvane vehicle log: fuel, maintenance and trips of your vehicles."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(rootOption);
}

// --help and --version answer without a display: they are looked for before the GUI application
// exists, since a QApplication cannot start where there is no screen to connect to.
void answerHelpOrVersion(int argc, char *argv[], const QCommandLineOption &rootOption)
{
    bool wanted = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "--") // what follows is not an option
            break;
        wanted = wanted || arg == "-h" || arg == "--help" || arg == "-?" || arg == "--help-all" || arg == "-v"
            || arg == "--version";
    }
    if (!wanted)
        return;
    QCoreApplication app(argc, argv);
    describeApplication();
    QCommandLineParser parser;
    describeOptions(parser, rootOption);
    parser.process(app); // prints to stdout and exits 0
}

} // namespace

int main(int argc, char *argv[])
{
    QElapsedTimer sinceStart;
    sinceStart.start();

    const QCommandLineOption rootOption(u"root"_s, u"Use DIR as the device root (sandbox)."_s, u"DIR"_s);
    answerHelpOrVersion(argc, argv, rootOption);

    QApplication app(argc, argv);
    describeApplication();
    QGuiApplication::setDesktopFileName(appId);
    QIcon icon(u":/icons/"_s + appId + u".svg"_s);
    icon.addFile(u":/icons/"_s + appId + u"-16.svg"_s, QSize(16, 16)); // drawn for the small sizes
    QApplication::setWindowIcon(icon);

    QCommandLineParser parser;
    describeOptions(parser, rootOption);
    if (!parser.parse(QApplication::arguments())) {
        std::fprintf(stderr, "%s\n%s", qPrintable(parser.errorText()), qPrintable(parser.helpText()));
        return 2;
    }
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "Unexpected argument: %s\n%s", qPrintable(parser.positionalArguments().first()),
                     qPrintable(parser.helpText()));
        return 2;
    }

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
