#pragma once

#include "Exporter.h"

// The comma-separated export of the selected entries, in the layout of the type filter (all
// columns, or fuel, maintenance or trips only). Its quirks are kept because readers rely on
// them: values are quoted but never escaped, data lines end in ",\r\n", and some blanks carry
// an extra space after their comma.
class CsvExport : public Exporter
{
public:
    using Exporter::Exporter;
    using Exporter::write;

    QString name() const override { return QStringLiteral("CSV"); }
    QString suffix() const override { return QStringLiteral(".csv"); }
    bool write(QIODevice *device) override;
    QString createErrorMessage() const override
    {
        return QStringLiteral("ERROR 101: Unable to create CSV file");
    }
    QString successMessage(const QString &filePath) const override;
};
