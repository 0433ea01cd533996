#include "CliRunner_helper.h"

#include <QProcess>
#include <QTest>
#include <QTextStream>

#include "CliApp.h"
#include "log/LogArchive.h"

using namespace Qt::StringLiterals;

CliResult CliRunner::run(const QStringList &arguments)
{
    CliResult result;
    QTextStream out(&result.out);
    QTextStream err(&result.err);
    CliApp app(out, err);
    app.setStores(&options, &preferences);
    result.exitCode = app.run(QStringList { u"tarvane-cli"_s, u"--root"_s, m_root } + arguments);
    out.flush();
    err.flush();
    return result;
}

CliResult CliRunner::runLine(const QString &line)
{
    return run(QProcess::splitCommand(line));
}

void CliRunner::prepare(const EntryList &log, bool makeCurrent)
{
    QCOMPARE(run({ u"vehicles"_s }).exitCode, 0);
    if (makeCurrent)
        options.setValue(u"Options"_s, u"Name"_s, u"My Car"_s);
    QVERIFY(LogArchive().write(dataFolder() + u"MYCAR0001.vcb"_s, log));
}

QString CliRunner::dataFolder() const
{
    return m_root + u"/My Documents/Tarvane Files/"_s;
}
