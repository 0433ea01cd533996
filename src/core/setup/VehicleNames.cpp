#include "VehicleNames.h"

#include "settings/VehicleProfile.h"

using namespace Qt::StringLiterals;

namespace {

// The first character of text found in refused (or a control character), else a null QChar.
QChar firstRefused(const QString &text, const QString &refused)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7f || refused.contains(c))
            return c;
    }
    return QChar();
}

QString characterText(QChar c)
{
    if (c.unicode() < 0x20 || c.unicode() == 0x7f)
        return u"a control character"_s;
    return u"\""_s + c + u'"';
}

// The checks names and VINs share; what is the word the messages use for the text.
QString commonProblem(const QString &text, const QString &what, const QString &refused)
{
    if (text.isEmpty())
        return QString();
    if (text != text.trimmed())
        return u"A %1 can't begin or end with a blank."_s.arg(what);
    if (text == u"."_s || text == u".."_s)
        return u"\"%1\" can't be a %2."_s.arg(text, what);
    const QChar bad = firstRefused(text, refused);
    if (!bad.isNull() || text.contains(QChar(0)))
        return u"A %1 can't contain %2."_s.arg(what, characterText(bad.isNull() ? QChar(0) : bad));
    return QString();
}

} // namespace

namespace VehicleNames {

QString nameProblem(const QString &name, const QStringList &existingNames)
{
    const QString problem = commonProblem(name, u"vehicle name"_s, u"/\\[]"_s);
    if (!problem.isEmpty())
        return problem;
    const QStringList reserved { VehicleProfile::vehicleListSection(), VehicleProfile::tripSettingsSection(),
                                 VehicleProfile::versionsSection() };
    if (reserved.contains(name, Qt::CaseInsensitive))
        return u"\"%1\" is a name the settings file uses itself. Select another name."_s.arg(name);
    for (const QString &existing : existingNames) {
        if (existing.compare(name, Qt::CaseInsensitive) == 0)
            return u"There is already a vehicle named \"%1\". Select a unique name."_s.arg(existing);
    }
    return QString();
}

QString vinProblem(const QString &vin)
{
    return commonProblem(vin, u"VIN"_s, u"/\\[]:*?\"<>|"_s);
}

} // namespace VehicleNames
