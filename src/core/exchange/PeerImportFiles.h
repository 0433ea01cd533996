#pragma once

#include <QStringList>

#include "PeerImporter.h"

// Reads the chosen files and runs the importer named (or the one that recognises the first
// file) over all of them. Shared by the dialog and the command line.
struct PeerImportRun
{
    const PeerImporter *importer = nullptr;
    PeerImportResult result;
    bool unrecognised = false; // no importer knows the first file
};

namespace PeerImportFiles {

// from is an importer's id or "auto". On failure result.error says why (a file that cannot be
// read, an unknown app, a file no importer recognises).
PeerImportRun read(const std::vector<std::unique_ptr<PeerImporter>> &importers, const QStringList &paths,
                   const QString &from, const PeerImportOptions &options);

} // namespace PeerImportFiles
