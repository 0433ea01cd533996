#include "PickLists.h"

#include "IniFile.h"
#include "platform/CFormat.h"
#include "platform/DevicePaths.h"
#include "platform/Reporter.h"

using namespace Qt::StringLiterals;

namespace {
// A settings object saves itself to its path when it goes away; after a failed load that
// would leave an empty file behind, so the path is dropped (an empty name never opens).
void forgetPath(IniFile &ini)
{
    ini.Load(QString());
}
} // namespace

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
    IniFile ini;
    if (!ini.Load(hostPath)) {
        forgetPath(ini);
        return {};
    }
    return items(ini, section);
}

bool PickLists::seedRepairList(const QString &hostPath, const std::array<QString, 5> &customNames)
{
    IniFile ini;
    if (!ini.Load(hostPath)) {
        forgetPath(ini);
        return false;
    }
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
    forgetPath(ini);
    reporter.error(tripLoadErrorMessage());
    return false;
}
