#include "PickLists.h"

#include "IniFile.h"
#include "platform/CFormat.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

QString PickLists::listsPath(const DevicePaths &paths)
{
    return paths.dataFolder() + fileName();
}

QStringList PickLists::standardRepairs()
{
    return { u"Oil Change"_s, u"Coolant Flush"_s, u"Transmission Service"_s, u"Tune-Up"_s,
             u"Rotate Tires"_s };
}

QString PickLists::lineKey(int index)
{
    return cformat("Line%d", index);
}

QStringList PickLists::items(const IniFile &ini, const QString &section)
{
    QStringList result;
    for (int i = 0;; ++i) {
        QString text;
        if (!ini.GetString(section, lineKey(i), text))
            break;
        if (!text.isEmpty())
            result.append(text);
    }
    return result;
}

QStringList PickLists::loadItems(const QString &hostPath, const QString &section)
{
    // A list file that is missing comes back empty (the byte-order mark alone) when the object
    // goes away, so the next start does not need to fetch the templates again.
    IniFile ini;
    if (!ini.Load(hostPath))
        return {};
    return items(ini, section);
}

bool PickLists::seedRepairList(const QString &hostPath, const std::array<QString, 5> &customNames)
{
    IniFile ini;
    if (!ini.Load(hostPath))
        return false;
    QStringList list = items(ini, repairList());
    for (const QString &name : customNames) {
        if (!name.isEmpty() && !list.contains(name))
            list.append(name);
    }
    for (const QString &name : standardRepairs()) {
        if (!list.contains(name))
            list.append(name);
    }
    for (int i = 0; i < list.size(); ++i)
        ini.SetString(repairList(), lineKey(i), list.at(i));
    return ini.Save();
}

bool PickLists::loadForTrip(IniFile &ini, const DevicePaths &paths, const QString &installFolder,
                            Reporter &reporter)
{
    const QString userCopy = listsPath(paths);
    if (ini.Load(userCopy))
        return true;
    // The install folder is expected to end in a backslash; none is inserted.
    if (ini.Load(paths.hostPath(installFolder + fileName()))) {
        ini.Save(userCopy);
        return true;
    }
    // The object would otherwise write an empty list into the install folder when it goes away.
    ini.Load(QString());
    reporter.error(tripLoadErrorMessage());
    return false;
}
