#include "CliApp.h"

#include <QCommandLineParser>
#include <QDateTime>

#include <memory>

#include "Command.h"
#include "Commands.h"
#include "StreamReporter.h"
#include "platform/AppContext.h"

using namespace Qt::StringLiterals;

namespace {

// --now takes a local date, optionally with a time: YYYY-MM-DD[THH:MM[:SS]].
bool parseNow(const QString &text, quint32 *out)
{
    static const QStringList formats = { u"yyyy-MM-dd"_s, u"yyyy-MM-ddTHH:mm"_s, u"yyyy-MM-ddTHH:mm:ss"_s };
    for (const QString &format : formats) {
        const QDateTime dt = QDateTime::fromString(text, format);
        if (dt.isValid() && dt.toSecsSinceEpoch() >= 0 && dt.toSecsSinceEpoch() <= 0xFFFFFFFFLL) {
            *out = static_cast<quint32>(dt.toSecsSinceEpoch());
            return true;
        }
    }
    return false;
}

} // namespace

CliApp::CliApp(QTextStream &out, QTextStream &err)
    : m_out(out)
    , m_err(err)
{ }

void CliApp::setStores(SettingsStore *options, SettingsStore *preferences)
{
    m_options = options;
    m_preferences = preferences;
}

void CliApp::printUsage(QTextStream &stream) const
{
    stream << u"Usage: tarvane-cli [--root DIR] [--now YYYY-MM-DD[THH:MM[:SS]]] [--yes] COMMAND ...\n"_s
           << u"       tarvane-cli --help | --version\n\n"_s << u"Commands:\n"_s;
    for (const auto &command : allCommands())
        stream << u"  "_s << command->name() << u' ' << command->synopsis() << u"\n      "_s
               << command->description() << u'\n';
    stream.flush();
}

int CliApp::run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption rootOption(u"root"_s, u"Use DIR as the device root (sandbox)."_s, u"DIR"_s);
    const QCommandLineOption nowOption(u"now"_s, u"Take this local time as the current time."_s, u"TIME"_s);
    const QCommandLineOption yesOption(u"yes"_s, u"Answer Yes to every question."_s);
    const QCommandLineOption helpOption({ u"h"_s, u"help"_s }, u"Show this help."_s);
    const QCommandLineOption versionOption({ u"v"_s, u"version"_s }, u"Show the program's version."_s);
    parser.addOption(rootOption);
    parser.addOption(nowOption);
    parser.addOption(yesOption);
    parser.addOption(helpOption);
    parser.addOption(versionOption);

    if (!parser.parse(arguments)) {
        m_err << parser.errorText() << u'\n';
        printUsage(m_err);
        return 2;
    }
    const QStringList positional = parser.positionalArguments();
    if (parser.isSet(versionOption)) {
        m_out << u"tarvane-cli "_s << QStringLiteral(TARVANE_VERSION) << u'\n';
        m_out.flush();
        return 0;
    }
    if (parser.isSet(helpOption) || positional.isEmpty()) {
        printUsage(parser.isSet(helpOption) ? m_out : m_err);
        return parser.isSet(helpOption) ? 0 : 2;
    }

    SystemClock systemClock;
    FixedClock fixedClock;
    const Clock *clock = &systemClock;
    if (parser.isSet(nowOption)) {
        quint32 now = 0;
        if (!parseNow(parser.value(nowOption), &now)) {
            m_err << u"Invalid --now value: "_s << parser.value(nowOption)
                  << u" (expected YYYY-MM-DD[THH:MM[:SS]])\n"_s;
            return 2;
        }
        fixedClock.set(now);
        clock = &fixedClock;
    }

    const DevicePaths paths = DevicePaths::fromEnvironment(parser.value(rootOption));
    std::unique_ptr<SettingsStore> ownOptions;
    std::unique_ptr<SettingsStore> ownPreferences;
    SettingsStore *options = m_options;
    SettingsStore *preferences = m_preferences;
    if (!options) {
        ownOptions = std::make_unique<QSettingsStore>(paths, u"Quellar"_s, u"Velcora"_s);
        options = ownOptions.get();
    }
    if (!preferences) {
        ownPreferences = std::make_unique<QSettingsStore>(paths, u"Quellar"_s, u"Tarvane"_s);
        preferences = ownPreferences.get();
    }

    const bool assumeYes = parser.isSet(yesOption);
    StreamReporter reporter(m_out, m_err, assumeYes);
    QLocaleFormats locale;
    AppContext app { paths, reporter, *clock, locale, *options, *preferences };
    CliEnvironment env { app, m_out, m_err, assumeYes };

    const QString name = positional.first();
    for (const auto &command : allCommands()) {
        if (command->name() == name) {
            const int code = command->run(positional.mid(1), env);
            m_out.flush();
            m_err.flush();
            return code;
        }
    }
    m_err << u"Unknown command: "_s << name << u'\n';
    printUsage(m_err);
    return 2;
}
