#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

#include "platform/AppContext.h"

// What a command gets to work with: the program's services and its two output streams.
struct CliEnvironment
{
    AppContext &app;
    QTextStream &out;
    QTextStream &err;
    bool assumeYes = false;
};

// One "tarvane-cli COMMAND ..." verb. run() returns the exit code: 0 done, 1 failed, 2 usage.
class Command
{
public:
    virtual ~Command() = default;
    virtual QString name() const = 0;
    // One line for the help text, without the command's name ("FILE [--json]").
    virtual QString synopsis() const = 0;
    virtual QString description() const = 0;
    // Reading commands never change an existing file; the program's start-up does not run for them
    // beyond creating what is missing.
    virtual int run(const QStringList &arguments, CliEnvironment &env) = 0;
};
