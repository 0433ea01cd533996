#pragma once

#include <QDate>

#include <functional>
#include <utility>

class QAction;
class QMenu;
class QWidget;
class VehicleSession;

// "Export HTML" / "&Between 2 dates": the summary report of the data view's date range, written
// to "My Documents\<vehicle>-Report.htm" and offered for opening in the browser.
namespace SummaryReportExport {

// The data view's current start and end dates.
using DateRange = std::function<std::pair<QDate, QDate>()>;

// Adds the item to the "Export HTML" sub-menu; returns it.
QAction *addMenuItem(QMenu *exportHtml, QWidget *parent, VehicleSession &session, DateRange range);

// Asks, writes and offers to open the report. The path written, empty when cancelled or failed.
QString run(VehicleSession &session, const QDate &from, const QDate &to);

} // namespace SummaryReportExport
