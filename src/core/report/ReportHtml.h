#pragma once

#include <QString>

#include "SummaryReport.h"

class LocaleFormats;

// The summary report as one self-contained HTML page: UTF-8, a print stylesheet (A4 and
// Letter, rows kept whole, table headers repeated on each page) and two inline SVG charts, with
// no script and no outside file, so it reads offline and prints as it shows.
namespace ReportHtml {

// "%s-Report.htm" with the vehicle's name.
QString fileName(const QString &vehicleName);

// Every text escaped for HTML: & < > " and '.
QString escape(const QString &text);

QString page(const SummaryReport &report, const LocaleFormats &locale);

// Writes the page atomically; on failure the old file is left as it was, and *error tells why.
bool save(const QString &path, const SummaryReport &report, const LocaleFormats &locale, QString *error);

} // namespace ReportHtml
