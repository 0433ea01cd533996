#pragma once

#include <QString>

class Preferences;

// How the History list looks: its font (the MainFont keys, in the terms of a Windows logical
// font) and whether odd rows are shaded (ListAttributes, on by default).
struct ListFont
{
    int height = -11; // negative: the character height in pixels
    int weight = 400; // 100..900, 400 normal, 700 bold
    int italic = 0;
    int underline = 0;
    int quality = 0;
    QString name = QStringLiteral("Tahoma");

    static ListFont read(const Preferences &preferences);
    void write(Preferences &preferences) const;
    bool operator==(const ListFont &other) const = default;
};

namespace ListAppearance {
bool shadeAlternateRows(const Preferences &preferences);
void setShadeAlternateRows(Preferences &preferences, bool shade);
} // namespace ListAppearance
