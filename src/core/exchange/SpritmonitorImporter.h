#pragma once

#include "PeerImporter.h"

// Spritmonitor's two files, "<id>_fuelings.csv" and "<id>_costs.csv": ';' separated, decimal
// comma, day-first dates, headers in the site's language (German or English read here).
class SpritmonitorImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("spritmonitor"); }
    QString title() const override { return QStringLiteral("Spritmonitor export"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
