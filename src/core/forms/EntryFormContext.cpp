#include "EntryFormContext.h"

#include "log/CVCItem.h"
#include "platform/CFormat.h"

namespace EntryForms {

bool odometerWarningApplies(double highestOdometer, double enteredOdometer, qint32 newEntryMark)
{
    return highestOdometer > enteredOdometer && newEntryMark == CVCItem::NewEntryMark;
}

QString numberText(double value)
{
    return cformat("%.15g", value);
}

bool parseNumber(const QString &text, double *value)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return false;
    bool ok = false;
    const double parsed = trimmed.toDouble(&ok);
    if (ok)
        *value = parsed;
    return ok;
}

bool parseInteger(const QString &text, int *value)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return false;
    bool ok = false;
    const int parsed = trimmed.toInt(&ok);
    if (ok)
        *value = parsed;
    return ok;
}

} // namespace EntryForms
