#pragma once

#include "platform/CFormat.h"

#include <QString>

// The numbered "Cannot load ini file" texts. Every screen that loads its own settings object
// reports a failure with its own number in the same words.
namespace SettingsMessages {

// "ERROR <number>:Cannot load ini file..." as the start-up (100), Setup (300), Trips (400) and
// reminder screens (600 the fixed one, 601 the custom one) show it.
inline QString cannotLoadIni(int number)
{
    return cformat("ERROR %d:Cannot load ini file.\nPlease check your documentation\nfor possible causes.",
                   number);
}

// The Setup variant that names the file it tried.
inline QString cannotLoadIniWithPath(int number, const QString &path)
{
    return cformat(
        "ERROR %d:Cannot load ini file.\n%s\nPlease check your documentation\nfor possible causes.", number,
        path.toUtf8().constData());
}

inline QString startupLoadFailed()
{
    return cannotLoadIni(100);
}
inline QString reloadFailed()
{
    return QStringLiteral(
        "ERROR 106:Cannot reload ini file.\nPlease check your documentation\nfor possible causes.");
}
inline QString setupLoadFailed()
{
    return cannotLoadIni(300);
}
inline QString setupLoadFailed(const QString &path)
{
    return cannotLoadIniWithPath(300, path);
}
inline QString tripsLoadFailed()
{
    return cannotLoadIni(400);
}
inline QString reminderScreenLoadFailed()
{
    return cannotLoadIni(600);
}
inline QString customReminderScreenLoadFailed()
{
    return cannotLoadIni(601);
}

// Shown at start-up when the settings file has to be fetched from the install folder.
inline QString lookingForConfig()
{
    return QStringLiteral("Looking for Config");
}

} // namespace SettingsMessages
