#include "ImportMapStore.h"

#include "platform/SettingsStore.h"
#include "settings/PreferenceSections.h"

using namespace Qt::StringLiterals;

namespace {

QString slotKey(int slot)
{
    return u"F"_s + QString::number(slot);
}

} // namespace

QString ImportMapStore::mapKey(int number)
{
    return u"Map"_s + QString::number(number);
}

QString ImportMapStore::fieldColumnWidthKey(int column)
{
    return u"C2Number"_s + QString::number(column);
}

ImportMapStore::ImportMapStore(SettingsStore &store)
    : m_store(store)
    , m_preferences(store)
{ }

QString ImportMapStore::defaultMapName() const
{
    return m_preferences.getString(PreferenceSections::listAttributes(), defaultMapKey(), u"DefaultMap"_s);
}

QString ImportMapStore::lastMapName() const
{
    return m_preferences.getString(PreferenceSections::listAttributes(), lastMapKey(), defaultMapName());
}

QStringList ImportMapStore::savedNames() const
{
    QStringList names;
    for (int n = 1;; ++n) {
        QString name;
        if (!m_store.queryString(PreferenceSections::listAttributes(), mapKey(n), &name))
            break;
        names.append(name);
    }
    return names;
}

QStringList ImportMapStore::selectorNames() const
{
    QStringList names { defaultMapName() };
    for (const QString &name : savedNames() + QStringList { ImportMap::builtInName() })
        if (!name.isEmpty() && !names.contains(name))
            names.append(name);
    return names;
}

ImportMap ImportMapStore::load(const QString &name) const
{
    if (name == ImportMap::builtInName() && !m_store.keyExists(name))
        return ImportMap::builtIn();
    ImportMap map(name);
    if (!nameError(name).isEmpty())
        return map;
    for (int slot = 0; slot < ImportMap::SlotCount; ++slot)
        map.assign(slot, m_preferences.getInt(name, slotKey(slot), 0) - 1);
    return map;
}

bool ImportMapStore::store(const ImportMap &map)
{
    if (!nameError(map.name).isEmpty())
        return false;
    bool ok = m_preferences.writeString(PreferenceSections::listAttributes(), lastMapKey(), map.name);
    for (int slot = 0; slot < ImportMap::SlotCount; ++slot)
        ok = m_preferences.writeInt(map.name, slotKey(slot), map.column(slot) + 1) && ok;
    return ok;
}

bool ImportMapStore::save(const ImportMap &map)
{
    if (!nameError(map.name).isEmpty())
        return false;
    bool ok = true;
    if (!selectorNames().contains(map.name)) {
        const int number = int(savedNames().size()) + 1;
        ok = m_preferences.writeString(PreferenceSections::listAttributes(), mapKey(number), map.name);
    }
    return store(map) && ok;
}

QString ImportMapStore::nameError(const QString &name)
{
    const QString trimmed = name.trimmed();
    const bool reserved = trimmed.compare(PreferenceSections::listAttributes(), Qt::CaseInsensitive) == 0
        || trimmed.compare(PreferenceSections::mainFont(), Qt::CaseInsensitive) == 0
        || trimmed.compare(PreferenceSections::today(), Qt::CaseInsensitive) == 0;
    if (trimmed.isEmpty() || trimmed != name || name.contains(u'/') || name.contains(u'\\') || reserved)
        return u"\"%1\" can't name a map: a map name is not empty, has no \"/\" or \"\\\" and no blanks "
               "around it, and is not ListAttributes, MainFont or Today."_s.arg(name);
    return QString();
}

QString ImportMapStore::csvName() const
{
    return m_preferences.getString(PreferenceSections::listAttributes(), csvNameKey(), QString());
}

bool ImportMapStore::setCsvName(const QString &path)
{
    return m_preferences.writeString(PreferenceSections::listAttributes(), csvNameKey(), path);
}

int ImportMapStore::columnWidth(const QString &key, int defaultWidth) const
{
    return m_preferences.getInt(PreferenceSections::listAttributes(), key, defaultWidth);
}

bool ImportMapStore::setColumnWidth(const QString &key, int width)
{
    return m_preferences.writeInt(PreferenceSections::listAttributes(), key, width);
}
