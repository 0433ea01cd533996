#pragma once

#include <QString>

class QIODevice;

// Replacing copies that never leave a half file in place of a good one: the bytes go to a
// temporary file beside the target, every write is checked, the file is synced to the disk and
// only then renamed over the target. On failure the target is as it was and the temporary file
// is gone.
namespace SafeCopy {

// error (when given) receives a short reason, such as "No space left on device".
bool copy(const QString &source, const QString &target, QString *error = nullptr);
// Copies the device from its current position to its end.
bool copy(QIODevice &source, const QString &target, QString *error = nullptr);

} // namespace SafeCopy
