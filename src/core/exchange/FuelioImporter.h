#pragma once

#include "PeerImporter.h"

// Fuelio's backup of one vehicle ("vehicle-<id>-sync.csv"): sections "## Vehicle", "## Log",
// "## CostCategories", "## Costs"; the others are skipped.
class FuelioImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("fuelio"); }
    QString title() const override { return QStringLiteral("Fuelio backup"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
