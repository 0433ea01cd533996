#include "CliRunner_helper.h"

#include <QTextStream>

#include "CliApp.h"

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
