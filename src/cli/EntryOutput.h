#pragma once

#include <QTextStream>

#include "log/CVCItem.h"

class LocaleFormats;

// The records of a log in file order: a readable block per record, or a JSON array of objects
// keyed by the record's field names (times as integer seconds).
void printEntries(QTextStream &out, const EntryList &entries, const LocaleFormats &locale, bool json);
