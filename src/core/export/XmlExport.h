#pragma once

#include "Exporter.h"

// The fuel entries of a date range as one worksheet of an XML spreadsheet workbook. The
// caller hands it the entries of the range; other entry types are skipped here. Texts are
// written unescaped and the row count is declared as 21 whatever the rows, as readers know it.
class XmlExport : public Exporter
{
public:
    using Exporter::Exporter;
    using Exporter::write;

    QString name() const override { return QStringLiteral("XML"); }
    QString suffix() const override { return QStringLiteral(".xml"); }
    bool write(QIODevice *device) override;
    // Refuses unless the view lists by date.
    bool confirm(Reporter &reporter) const override;
    QString createErrorMessage() const override
    {
        return QStringLiteral("ERROR 701: Unable to create Excel file");
    }
    QString successMessage(const QString &filePath) const override;

    static QString needsDateRangeMessage()
    {
        return QStringLiteral("You must select List By Date to export in XML format");
    }
};
