#pragma once

#include <QDate>
#include <QJsonObject>
#include <QString>

#include "export/Exporter.h"
#include "platform/Clock.h"
#include "platform/LocaleFormats.h"

// A golden case of tests/data/export/<case>/: case.json (the log, or the name of a shared log
// file, the profile values, the filters and "now") and the expected file.
struct ExportCase
{
    QString folder;
    QJsonObject json;
    EntryList entries;
    FixedClock clock;
    TestLocaleFormats locale;
    ExportData data;
    QDate from, to;

    // Loads the case; false with a message in *error.
    bool load(const QString &caseFolder, QString *error);
    Exporter::Format format() const;
    QString expectedFile() const;
    // Fills data.entries the way the History screen chooses them for the case's format.
    void select();
};

// The log's times as "yyyy-MM-ddTHH:mm:ss" (UTC) in the case files, seconds in the record.
quint32 caseTime(const QString &iso);
