#pragma once

#include "PeerImporter.h"

// LubeLogger's exports, one file per record kind (fuel; service, repair and upgrade records;
// taxes), in the server's locale. Hand-made spreadsheets with its importer's column names are
// read too.
class LubeLoggerImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("lubelogger"); }
    QString title() const override { return QStringLiteral("LubeLogger export"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
