#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

class DevicePaths;

// A tree of keys holding named values, as the registry: the options live under one key of it
// and every preference section under another. Values are typed: ints for DWORDs, strings for SZ.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    virtual bool keyExists(const QString &key) const = 0;
    // Creates the key when missing; false when the store can't be written.
    virtual bool createKey(const QString &key) = 0;
    // An invalid QVariant when the value is missing.
    virtual QVariant value(const QString &key, const QString &name) const = 0;
    virtual bool setValue(const QString &key, const QString &name, const QVariant &value) = 0;
    virtual bool removeValue(const QString &key, const QString &name) = 0;
    virtual bool removeKey(const QString &key) = 0;
    virtual QStringList valueNames(const QString &key) const = 0;
    // Writes pending changes; false on failure.
    virtual bool sync() = 0;

    // Typed queries fail (false, out unchanged) for a missing value or one of the wrong type.
    bool queryDword(const QString &key, const QString &name, quint32 *out) const;
    bool queryString(const QString &key, const QString &name, QString *out) const;
};

// Over QSettings: the native store normally, an INI file under <root>/Registry/ in a sandbox.
class QSettingsStore : public SettingsStore
{
public:
    // organization/application as QSettings takes them ("Quellar", "Velcora").
    QSettingsStore(const DevicePaths &paths, const QString &organization, const QString &application);
    ~QSettingsStore() override;

    bool keyExists(const QString &key) const override;
    bool createKey(const QString &key) override;
    QVariant value(const QString &key, const QString &name) const override;
    bool setValue(const QString &key, const QString &name, const QVariant &value) override;
    bool removeValue(const QString &key, const QString &name) override;
    bool removeKey(const QString &key) override;
    QStringList valueNames(const QString &key) const override;
    bool sync() override;

    QString fileName() const;

private:
    struct Private;
    Private *d;
};

// In memory, for tests. setFailWrites() makes every write fail, as a read-only registry would.
class MemorySettingsStore : public SettingsStore
{
public:
    bool keyExists(const QString &key) const override { return m_keys.contains(key); }
    bool createKey(const QString &key) override;
    QVariant value(const QString &key, const QString &name) const override;
    bool setValue(const QString &key, const QString &name, const QVariant &value) override;
    bool removeValue(const QString &key, const QString &name) override;
    bool removeKey(const QString &key) override;
    QStringList valueNames(const QString &key) const override;
    bool sync() override { return !m_failWrites; }

    void setFailWrites(bool fail) { m_failWrites = fail; }
    // The names of a key's values in the order they were first written.
    QStringList writeOrder(const QString &key) const { return m_order.value(key); }

private:
    QMap<QString, QMap<QString, QVariant>> m_keys;
    QMap<QString, QStringList> m_order;
    bool m_failWrites = false;
};
