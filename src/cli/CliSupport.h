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

// Starts like the program: options, settings (templates copied when missing), profile and log
// of VEHICLE (the current vehicle when empty). Null after the message when it can't.
std::unique_ptr<VehicleSession> startSession(CliEnvironment &env, const QString &vehicle, bool readOnly);

QCommandLineOption jsonOption();

// The reading commands' "[VEHICLE] [--json]": parses them and opens the vehicle read-only.
// Null on failure, with *exitCode set (2 for a bad call, 1 when the vehicle can't be opened).
std::unique_ptr<VehicleSession> openForReading(QCommandLineParser &parser, const Command &command,
                                               const QStringList &arguments, CliEnvironment &env,
                                               int *exitCode);

} // namespace CliSupport
