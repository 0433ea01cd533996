#pragma once

#include "Clock.h"
#include "DevicePaths.h"
#include "LocaleFormats.h"
#include "Preferences.h"
#include "Reporter.h"
#include "SettingsStore.h"

// The services every part of the program is handed: where files live, where messages go,
// what time it is, how dates look, and the two settings stores.
struct AppContext
{
    DevicePaths paths;
    Reporter &reporter;
    const Clock &clock;
    const LocaleFormats &locale;
    SettingsStore &optionsStore; // Software\Quellar\Velcora (key "Options")
    SettingsStore &preferenceStore; // Software\Quellar\Tarvane (one key per section)

    Preferences preferences() const { return Preferences(preferenceStore); }
};
