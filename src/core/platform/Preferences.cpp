#include "Preferences.h"

#include "SettingsStore.h"

QString Preferences::getString(const QString &section, const QString &key, const QString &defaultValue) const
{
    QString value;
    return m_store.queryString(section, key, &value) ? value : defaultValue;
}

int Preferences::getInt(const QString &section, const QString &key, int defaultValue) const
{
    quint32 value = 0;
    return m_store.queryDword(section, key, &value) ? static_cast<int>(value) : defaultValue;
}

bool Preferences::writeString(const QString &section, const QString &key, const QString &value)
{
    return m_store.setValue(section, key, value) && m_store.sync();
}

bool Preferences::writeInt(const QString &section, const QString &key, int value)
{
    return m_store.setValue(section, key, value) && m_store.sync();
}
