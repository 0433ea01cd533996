#pragma once

#include <QStringList>
#include <QTextStream>

class SettingsStore;

// Parses the global options (--root, --now, --yes), sets up the services and runs one command.
// The streams and, for tests, the settings stores can be injected.
class CliApp
{
public:
    CliApp(QTextStream &out, QTextStream &err);

    // Tests hand in memory stores; otherwise the stores follow --root.
    void setStores(SettingsStore *options, SettingsStore *preferences);

    // arguments[0] is the program name. Returns the exit code.
    int run(const QStringList &arguments);

private:
    void printUsage(QTextStream &stream) const;

    QTextStream &m_out;
    QTextStream &m_err;
    SettingsStore *m_options = nullptr;
    SettingsStore *m_preferences = nullptr;
};
