#pragma once

#include "Exporter.h"

// Every entry of the log as one wide table that spreadsheet programs open as a sheet, in
// alternately plain and shaded rows. It ignores the view's filters; the caller hands it the
// whole log. Its row markup is kept exactly as readers have always received it.
class HtmlExport : public Exporter
{
public:
    using Exporter::Exporter;
    using Exporter::write;

    QString name() const override { return QStringLiteral("HTML"); }
    QString suffix() const override { return QStringLiteral(".htm"); }
    bool write(QIODevice *device) override;
    // The OK/Cancel "WARNING" about older browsers.
    bool confirm(Reporter &reporter) const override;
    QString createErrorMessage() const override
    {
        return QStringLiteral("ERROR 701: Unable to create HTML file");
    }
    QString successMessage(const QString &filePath) const override;

    static QString warningText();
};
