#pragma once

#include <QCommandLineParser>

#include <memory>

#include "Command.h"

class VehicleSession;

// Shared by the commands: argument parsing with a usage line, and opening a vehicle the way
// the program starts.
namespace CliSupport {

// Parses the command's arguments; prints the usage on stderr and returns false on a bad call.
// At most maxPositional positional arguments are accepted.
bool parse(QCommandLineParser &parser, const QString &command, const QStringList &arguments,
           qsizetype maxPositional, const QString &usage, CliEnvironment &env);

// Commands end the process soon after their session: the entries of a large log (a million take
// a tenth of a second to free one by one) are left for the system to reclaim at exit, as
// compilers do with their syntax trees. A small log is freed as usual. Nothing is pending in a
// session by then: every change is saved by the command itself.
struct LeftToExit
{
    static constexpr size_t LargeLog = 100000;
    void operator()(VehicleSession *session) const;
};
using Session = std::unique_ptr<VehicleSession, LeftToExit>;

// Starts like the program: options, settings (templates copied when missing), profile and log
// of VEHICLE (the current vehicle when empty). Null after the message when it can't.
Session startSession(CliEnvironment &env, const QString &vehicle, bool readOnly);

QCommandLineOption jsonOption();

// The reading commands' "[VEHICLE] [--json]": parses them and opens the vehicle read-only.
// Null on failure, with *exitCode set (2 for a bad call, 1 when the vehicle can't be opened).
Session openForReading(QCommandLineParser &parser, const Command &command, const QStringList &arguments,
                       CliEnvironment &env, int *exitCode);

} // namespace CliSupport
