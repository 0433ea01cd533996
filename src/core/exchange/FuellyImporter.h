#pragma once

#include "PeerImporter.h"

// Fuelly's web export: a fuel-ups file and a services file, either or both, newest first.
class FuellyImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("fuelly"); }
    QString title() const override { return QStringLiteral("Fuelly export"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
