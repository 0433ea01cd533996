#pragma once

#include <QString>

class SettingsStore;

// The application's preference store: named sections (ListAttributes, MainFont, Today,
// one per saved CSV map) of strings and integers. Read with a default, written at once.
class Preferences
{
public:
    explicit Preferences(SettingsStore &store)
        : m_store(store)
    { }

    QString getString(const QString &section, const QString &key, const QString &defaultValue) const;
    int getInt(const QString &section, const QString &key, int defaultValue) const;
    bool writeString(const QString &section, const QString &key, const QString &value);
    bool writeInt(const QString &section, const QString &key, int value);

    SettingsStore &store() { return m_store; }

private:
    SettingsStore &m_store;
};
