#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

#include "CliApp.h"

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
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
