#include "SettingsStore.h"

#include "DevicePaths.h"
#include "SettingsIniFormat.h"

#include <QDir>
#include <QSet>
#include <QSettings>

#include <memory>

using namespace Qt::StringLiterals;

bool SettingsStore::queryDword(const QString &key, const QString &name, quint32 *out) const
{
    const QVariant v = value(key, name);
    if (!v.isValid())
        return false;
    bool ok = false;
    quint32 n = 0;
    if (v.typeId() == QMetaType::QString || v.typeId() == QMetaType::QByteArray) {
        // INI-backed stores keep every value as text: only plain decimal digits are a DWORD.
        n = v.toString().toUInt(&ok, 10);
    } else {
        const qlonglong wide = v.toLongLong(&ok);
        n = static_cast<quint32>(wide);
    }
    if (!ok)
        return false;
    *out = n;
    return true;
}

bool SettingsStore::queryString(const QString &key, const QString &name, QString *out) const
{
    const QVariant v = value(key, name);
    if (!v.isValid() || !v.canConvert<QString>())
        return false;
    *out = v.toString();
    return true;
}

struct QSettingsStore::Private
{
    std::unique_ptr<QSettings> settings;
    QSet<QString> created;
};

QSettingsStore::QSettingsStore(const DevicePaths &paths, const QString &organization,
                               const QString &application)
    : d(new Private)
{
    if (paths.isSandboxed()) {
        QDir().mkpath(paths.registryFolder());
        d->settings = std::make_unique<QSettings>(paths.registryFolder() + organization + u'-' + application
                                                      + u".ini"_s,
                                                  SettingsIniFormat::format());
    } else {
#ifdef Q_OS_WIN
        d->settings = std::make_unique<QSettings>(organization, application);
#else
        // The same ~/.config/<organization>/<application>.conf the native store uses.
        d->settings = std::make_unique<QSettings>(SettingsIniFormat::format(), QSettings::UserScope,
                                                  organization, application);
#endif
    }
}

QSettingsStore::~QSettingsStore()
{
    d->settings->sync();
    delete d;
}

bool QSettingsStore::keyExists(const QString &key) const
{
    d->settings->beginGroup(key);
    const bool exists = !d->settings->childKeys().isEmpty() || !d->settings->childGroups().isEmpty();
    d->settings->endGroup();
    return exists || d->created.contains(key);
}

bool QSettingsStore::createKey(const QString &key)
{
    // QSettings has no empty groups: a key exists once it holds a value. Remember the
    // creation for this run so that a created key counts as existing.
    d->created.insert(key);
    return d->settings->isWritable();
}

QVariant QSettingsStore::value(const QString &key, const QString &name) const
{
    return d->settings->value(key + u'/' + name);
}

bool QSettingsStore::setValue(const QString &key, const QString &name, const QVariant &value)
{
    if (!d->settings->isWritable())
        return false;
    d->settings->setValue(key + u'/' + name, value);
    return true;
}

bool QSettingsStore::removeValue(const QString &key, const QString &name)
{
    if (!d->settings->contains(key + u'/' + name))
        return false;
    d->settings->remove(key + u'/' + name);
    return true;
}

bool QSettingsStore::removeKey(const QString &key)
{
    d->settings->remove(key);
    d->created.remove(key);
    return true;
}

QStringList QSettingsStore::valueNames(const QString &key) const
{
    d->settings->beginGroup(key);
    const QStringList names = d->settings->childKeys();
    d->settings->endGroup();
    return names;
}

bool QSettingsStore::sync()
{
    d->settings->sync();
    return d->settings->status() == QSettings::NoError;
}

QString QSettingsStore::fileName() const
{
    return d->settings->fileName();
}

bool MemorySettingsStore::createKey(const QString &key)
{
    if (m_failWrites)
        return false;
    m_keys[key];
    return true;
}

QVariant MemorySettingsStore::value(const QString &key, const QString &name) const
{
    return m_keys.value(key).value(name);
}

bool MemorySettingsStore::setValue(const QString &key, const QString &name, const QVariant &value)
{
    if (m_failWrites)
        return false;
    auto &values = m_keys[key];
    if (!values.contains(name))
        m_order[key].append(name);
    values.insert(name, value);
    return true;
}

bool MemorySettingsStore::removeValue(const QString &key, const QString &name)
{
    if (m_failWrites || !m_keys.contains(key) || !m_keys[key].contains(name))
        return false;
    m_keys[key].remove(name);
    m_order[key].removeAll(name);
    return true;
}

bool MemorySettingsStore::removeKey(const QString &key)
{
    if (m_failWrites)
        return false;
    m_keys.remove(key);
    m_order.remove(key);
    return true;
}

QStringList MemorySettingsStore::valueNames(const QString &key) const
{
    return m_order.value(key);
}
