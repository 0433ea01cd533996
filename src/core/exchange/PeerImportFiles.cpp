#include "PeerImportFiles.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace PeerImportFiles {

PeerImportRun read(const std::vector<std::unique_ptr<PeerImporter>> &importers, const QStringList &paths,
                   const QString &from, const PeerImportOptions &options)
{
    PeerImportRun run;
    std::vector<PeerFile> files;
    for (const QString &path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            run.result.error = u"Cannot read %1: %2"_s.arg(path, file.errorString());
            return run;
        }
        files.push_back({ QFileInfo(path).fileName(), file.readAll() });
    }
    if (files.empty()) {
        run.result.error = u"No file to import."_s;
        return run;
    }
    if (from.isEmpty() || from == u"auto"_s) {
        run.importer = detectPeerImporter(importers, files.front());
        if (!run.importer) {
            run.unrecognised = true;
            run.result.error
                = u"%1: not an export of a known app; name it with --from."_s.arg(files.front().name);
            return run;
        }
    } else {
        for (const auto &importer : importers) {
            if (importer->id() == from)
                run.importer = importer.get();
        }
        if (!run.importer) {
            run.result.error = u"Unknown app \"%1\"."_s.arg(from);
            return run;
        }
    }
    run.result = run.importer->read(files, options);
    return run;
}

} // namespace PeerImportFiles
