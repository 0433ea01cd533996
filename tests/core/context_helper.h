#pragma once

#include <QTemporaryDir>

#include "platform/AppContext.h"

// What one run of the program is handed, on a temporary root: memory settings stores, a fixed
// clock, en_US formats and a reporter that records.
struct TestContext
{
    explicit TestContext(quint32 now)
        : clock(now)
    { }

    QTemporaryDir dir;
    RecordingReporter reporter;
    FixedClock clock;
    TestLocaleFormats locale;
    MemorySettingsStore options;
    MemorySettingsStore preferences;
    AppContext context { DevicePaths(dir.path()), reporter, clock, locale, options, preferences };
};
