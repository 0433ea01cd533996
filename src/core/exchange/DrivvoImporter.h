#pragma once

#include "PeerImporter.h"

// Drivvo's export: one file with "##Refuelling", "##Expense" and "##Service" sections (among
// others), newest first. Sections are told apart by their headers, since their titles are in
// the app's language.
class DrivvoImporter : public PeerImporter
{
public:
    QString id() const override { return QStringLiteral("drivvo"); }
    QString title() const override { return QStringLiteral("Drivvo export"); }
    int detect(const QString &fileName, const QByteArray &head) const override;
    PeerImportResult read(const std::vector<PeerFile> &files,
                          const PeerImportOptions &options) const override;
};
