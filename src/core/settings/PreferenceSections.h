#pragma once

#include <QString>

// The names of the preference store's fixed sections; each saved CSV import map adds a section
// named after the map.
class PreferenceSections
{
public:
    // Backup and restore places and dates, list column widths, CSV import settings, map names.
    static QString listAttributes() { return QStringLiteral("ListAttributes"); }
    static QString mainFont() { return QStringLiteral("MainFont"); }
    // The reminder engine's short overdue texts and the last figures of the log scan.
    static QString today() { return QStringLiteral("Today"); }
};
