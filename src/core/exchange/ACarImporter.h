#pragma once

#include "PeerImporter.h"

// aCar's CSV export: sections under unquoted titles ("Metadata", "Vehicles", "Fill-Up Records",
// "Event Records", "Trip Records"), possibly for several vehicles. The Metadata row declares the
// date and time formats; records carry their own units.
class ACarImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("acar"); }
    QString title() const override { return QStringLiteral("aCar export"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
