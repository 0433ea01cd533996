#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "CliRunner_helper.h"

using namespace Qt::StringLiterals;

// What the installed program ships beside its binaries: the manual pages must describe every
// command the program has, the completion must offer them, and both programs must answer
// --version and --help the usual way.

namespace {

const QString packaging = QStringLiteral(TARVANE_SOURCE_DIR "/packaging/");
const QString gui = QStringLiteral(TARVANE_BINARY_DIR "/src/app/tarvane");
const QString cli = QStringLiteral(TARVANE_BINARY_DIR "/src/cli/tarvane-cli");

QString readText(const QString &path)
{
    return QString::fromUtf8(CliFiles::readAll(path));
}

// "name synopsis" of each command, as tarvane-cli --help lists them (its descriptions are indented
// further).
QStringList helpCommands()
{
    QTemporaryDir root;
    CliRunner runner(root.path());
    const CliResult r = runner.run({ u"--help"_s });
    QStringList commands;
    static const QRegularExpression line(u"^  (\\S.*)$"_s, QRegularExpression::MultilineOption);
    for (auto it = line.globalMatch(r.out); it.hasNext();)
        commands << it.next().captured(1).trimmed();
    return commands;
}

// Tools like bash and groff complain about a locale the machine has not generated.
QProcessEnvironment plainLocale()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return env;
}

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run runProgram(const QString &program, const QStringList &arguments, const QProcessEnvironment &env)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(program, arguments);
    Run run;
    if (!process.waitForFinished(30000))
        return run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace

class TestPackaging : public QObject
{
    Q_OBJECT

private slots:
    void manPageDescribesEveryCommand();
    void manPagesAreCleanRoff();
    void versionAndHelp_data();
    void versionAndHelp();
    void completion_data();
    void completion();
};

void TestPackaging::manPageDescribesEveryCommand()
{
    // Each command is one ".SS" heading under COMMANDS with the name and synopsis of --help.
    const QString page = readText(packaging + u"man/tarvane-cli.1"_s);
    const qsizetype start = page.indexOf(u"\n.SH COMMANDS\n"_s);
    QVERIFY(start >= 0);
    const qsizetype end = page.indexOf(u"\n.SH "_s, start + 1);
    QStringList headings;
    for (QString line : page.mid(start, end - start).split(u'\n')) {
        if (!line.startsWith(u".SS "_s))
            continue;
        line = line.mid(4).replace(u"\\-"_s, u"-"_s);
        if (line.startsWith(u'"') && line.endsWith(u'"'))
            line = line.mid(1, line.size() - 2);
        headings << line;
    }
    QStringList commands = helpCommands();
    QVERIFY(commands.size() >= 13);
    headings.sort();
    commands.sort();
    QCOMPARE(headings, commands);
}

void TestPackaging::manPagesAreCleanRoff()
{
    const QString groff = QStandardPaths::findExecutable(u"groff"_s);
    if (groff.isEmpty())
        QSKIP("groff is not installed");
    for (const QString &page : { u"tarvane.1"_s, u"tarvane-cli.1"_s }) {
        const Run run = runProgram(groff, { u"-man"_s, u"-ww"_s, u"-z"_s, packaging + u"man/"_s + page },
                                   plainLocale());
        QCOMPARE(run.err, QString());
        QCOMPARE(run.exitCode, 0);
    }
}

void TestPackaging::versionAndHelp_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("outStart"); // "%v" stands for the version
    QTest::addColumn<QString>("errStart");

    QTest::newRow("cli version") << cli << QStringList { u"--version"_s } << 0 << u"tarvane-cli %v\n"_s
                                 << QString();
    QTest::newRow("cli -v") << cli << QStringList { u"-v"_s } << 0 << u"tarvane-cli %v\n"_s << QString();
    QTest::newRow("cli help") << cli << QStringList { u"--help"_s } << 0
                              << u"Usage: tarvane-cli [--root DIR]"_s << QString();
    QTest::newRow("cli wrong option") << cli << QStringList { u"--bogus"_s } << 2 << QString()
                                      << u"Unknown option 'bogus'.\nUsage: tarvane-cli"_s;
    QTest::newRow("gui version") << gui << QStringList { u"--version"_s } << 0 << u"Tarvane %v\n"_s
                                 << QString();
    QTest::newRow("gui help") << gui << QStringList { u"--help"_s } << 0 << u"Usage: "_s << QString();
    QTest::newRow("gui wrong option")
        << gui << QStringList { u"--bogus"_s } << 2 << QString() << u"Unknown option 'bogus'.\nUsage: "_s;
    QTest::newRow("gui stray argument") << gui << QStringList { u"file.vcb"_s } << 2 << QString()
                                        << u"Unexpected argument: file.vcb\nUsage: "_s;
}

void TestPackaging::versionAndHelp()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, outStart);
    QFETCH(QString, errStart);

    // The version the programs print is the newest release in the AppStream metadata.
    static const QRegularExpression release(u"<release version=\"([^\"]+)\""_s);
    const QString version
        = release.match(readText(packaging + u"org.tarvane.Tarvane.metainfo.xml"_s)).captured(1);
    QVERIFY(!version.isEmpty());

    // --help and --version work where there is no display at all.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    if (exitCode == 0) {
        for (const char *name : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM" })
            env.remove(QString::fromLatin1(name));
    }
    const Run run = runProgram(program, arguments, env);
    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(run.out.left(outStart.replace(u"%v"_s, version).size()), outStart);
    // The GUI program may put Qt's own notices in front of its message.
    QVERIFY2(run.err.contains(errStart), qPrintable(run.err));
    QCOMPARE(run.err.isEmpty(), errStart.isEmpty());
    if (exitCode == 0 && arguments.first() == u"--help"_s && program == gui) {
        QVERIFY(run.out.contains(u"--root <DIR>"_s));
        QVERIFY(run.out.contains(u"--version"_s));
    }
}

void TestPackaging::completion_data()
{
    QTest::addColumn<QStringList>("words"); // the last word is the one being completed
    QTest::addColumn<QStringList>("offered");

    QStringList names;
    for (const QString &line : helpCommands())
        names << line.section(u' ', 0, 0);
    QTest::newRow("commands") << QStringList { QString() } << names;
    QTest::newRow("after --root") << QStringList { u"--root"_s, u"/tmp"_s, u"full-"_s }
                                  << QStringList { u"full-backup"_s, u"full-restore"_s };
    QTest::newRow("global options") << QStringList { u"--ro"_s } << QStringList { u"--root"_s };
    QTest::newRow("a command's options")
        << QStringList { u"due"_s, u"--"_s } << QStringList { u"--json"_s, u"--ics"_s };
    QTest::newRow("add kinds") << QStringList { u"add"_s, QString() }
                               << QStringList { u"fuel"_s, u"repair"_s, u"trip"_s, u"--help"_s };
    QTest::newRow("add fuel options")
        << QStringList { u"add"_s, u"fuel"_s, u"--no"_s } << QStringList { u"--not-full"_s, u"--note"_s };
    QTest::newRow("add trip options") << QStringList { u"add"_s, u"trip"_s, u"--de"_s }
                                      << QStringList { u"--depart"_s, u"--destination"_s };
}

void TestPackaging::completion()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, offered);

    QString wordList = u"'"_s + cli + u"'"_s;
    for (const QString &word : words)
        wordList += u" '"_s + word + u"'"_s;
    const QString script = u"source '"_s + packaging + u"completion/tarvane-cli'\n"_s + u"COMP_WORDS=("_s
        + wordList + u")\n"_s + u"COMP_CWORD="_s + QString::number(words.size()) + u"\n"_s
        + u"_tarvane_cli\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n"_s;
    const Run run = runProgram(u"bash"_s, { u"-c"_s, script }, plainLocale());
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
    QStringList got = run.out.split(u'\n', Qt::SkipEmptyParts);
    got.sort();
    offered.sort();
    QCOMPARE(got, offered);
}

QTEST_GUILESS_MAIN(TestPackaging)
#include "tst_packaging.moc"
