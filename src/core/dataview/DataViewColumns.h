#pragma once

#include <QList>
#include <QString>

#include "DataViewFilter.h"
#include "log/CVCItem.h"

class LocaleFormats;
class Preferences;

// The History list's four column layouts (one per type filter) and the text of a record in each
// column. Column widths are kept in ListAttributes under ColNumber0..ColNumber16; the key of
// column n is shared by every layout, so a width set in one view is used by the others.
namespace DataViewColumns {

// What a column shows. The views pick from these; a field that does not belong to a record's
// kind is blank (the ALL view mixes kinds).
enum class Field {
    Icon, // blank text: the picture beside the row
    TypeText, // "Entry Type", "Repair": the record's type text
    Purpose,
    Mileage, // odometer, "%-7.0f"
    Date, // the entry date, short date format
    Price, // fuel: price per unit; maintenance: cost; trip: mileage cost
    FuelPrice, // fuel price only
    Quantity,
    Measure,
    Economy,
    Temperature,
    Total, // fuel total cost
    Station, // the fuel station or the repair location
    Cost, // maintenance cost
    Invoice,
    Destination,
    StartTime,
    EndTime,
    EndMileage,
    Duration,
    Distance,
    Tolls,
    Parking,
    Travel, // trip mileage cost
    Note,
};

struct Column
{
    QString header;
    int defaultWidth = 0;
    Field field = Field::Icon;
};

// The columns of a type filter's view, in order.
const QList<Column> &layout(DataViewFilter::Type type);

// The text of one cell. Notes keep their line breaks; the view shows them as it can.
QString cellText(const CVCItem &item, Field field, const LocaleFormats &locale);
// All cells of a row in a layout.
QStringList rowTexts(const CVCItem &item, const QList<Column> &columns, const LocaleFormats &locale);
QStringList headers(const QList<Column> &columns);

// "ColNumber%d" in ListAttributes.
QString widthKey(int column);
// The stored width of each column of the layout (its default when none is stored).
QList<int> readWidths(const Preferences &preferences, const QList<Column> &columns);
// Writes the width of each column given, from column 0 on.
void writeWidths(Preferences &preferences, const QList<int> &widths);

} // namespace DataViewColumns
