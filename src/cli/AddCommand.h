#pragma once

#include "Command.h"

struct EntryFormContext;
class CVCItem;
class QCommandLineParser;
class Reporter;

// "add fuel|repair|trip [VEHICLE] ...": a new log entry made the way the entry forms make one,
// as if the user opened the form from the main screen, typed the options in screen order and
// saved.
class AddCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("add"); }
    QString synopsis() const override;
    QString description() const override;
    int run(const QStringList &arguments, CliEnvironment &env) override;

    // Shared with the commands that insert and edit entries.
    // "fuel", "repair", "trip" as an entry type; -1 for anything else.
    static int entryType(const QString &kind);
    // The usage of the entry options, under the given command's name.
    static QString usage(const QString &command);
    // The names of the options that take a value, by kind ("not-full" is the fuel form's flag).
    static QStringList optionNames(int entryType);
    // Declares the options of one kind of entry.
    static void addOptions(QCommandLineParser &parser, int entryType);
    // The options a new entry must have; false after naming the missing one.
    static bool checkRequired(QCommandLineParser &parser, int entryType, QTextStream &err);
    // Runs the record's form on it, typing the options given in screen order, and saves the
    // form into the record. 0, or 2 after a message on err.
    static int applyOptions(QCommandLineParser &parser, const EntryFormContext &context, CVCItem &record,
                            Reporter &reporter, QTextStream &err);
};
