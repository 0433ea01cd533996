#pragma once

#include "PeerImporter.h"

// Road Trip MPG's CSV: a first line declaring the field separator and the decimal mark, then
// sections with a title line; the fuel and maintenance sections are read, the others skipped.
class RoadTripImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("roadtrip"); }
    QString title() const override { return QStringLiteral("Road Trip MPG"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
