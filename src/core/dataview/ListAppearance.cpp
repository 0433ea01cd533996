#include "ListAppearance.h"

#include "platform/Preferences.h"
#include "settings/PreferenceSections.h"

using namespace Qt::StringLiterals;

ListFont ListFont::read(const Preferences &preferences)
{
    const QString section = PreferenceSections::mainFont();
    ListFont font;
    font.height = preferences.getInt(section, u"Height"_s, font.height);
    font.weight = preferences.getInt(section, u"Weight"_s, font.weight);
    font.italic = preferences.getInt(section, u"Italic"_s, font.italic);
    font.underline = preferences.getInt(section, u"Underline"_s, font.underline);
    font.quality = preferences.getInt(section, u"Quality"_s, font.quality);
    font.name = preferences.getString(section, u"Name"_s, font.name);
    return font;
}

void ListFont::write(Preferences &preferences) const
{
    const QString section = PreferenceSections::mainFont();
    preferences.writeInt(section, u"Height"_s, height);
    preferences.writeInt(section, u"Weight"_s, weight);
    preferences.writeInt(section, u"Italic"_s, italic);
    preferences.writeInt(section, u"Underline"_s, underline);
    preferences.writeInt(section, u"Quality"_s, quality);
    preferences.writeString(section, u"Name"_s, name);
}

namespace ListAppearance {

namespace {
QString shadeKey()
{
    return u"ShadeAlternateRows"_s;
}
} // namespace

bool shadeAlternateRows(const Preferences &preferences)
{
    return preferences.getInt(PreferenceSections::listAttributes(), shadeKey(), 1) != 0;
}

void setShadeAlternateRows(Preferences &preferences, bool shade)
{
    preferences.writeInt(PreferenceSections::listAttributes(), shadeKey(), shade ? 1 : 0);
}

} // namespace ListAppearance
