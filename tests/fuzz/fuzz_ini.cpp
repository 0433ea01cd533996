// Feeds arbitrary bytes to the settings-file reader (the same parse the loader runs on a file's
// bytes), then checks that what it writes reads back to the same content and is written again
// byte for byte.
#include "settings/IniFile.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    IniFile first;
    first.parse(bytes);
    const QByteArray written = first.serialize();

    IniFile second;
    second.parse(written);
    const QStringList sections = first.sections();
    if (second.sections() != sections)
        abort();
    for (const QString &section : sections) {
        const QStringList keys = first.keys(section);
        if (second.keys(section) != keys)
            abort();
        for (const QString &key : keys) {
            QString a;
            QString b;
            if (!first.GetString(section, key, a) || !second.GetString(section, key, b) || a != b)
                abort();
            // The conversions GetInt and GetColor run on a value.
            IniFile::parseInt(a);
            IniFile::parseColor(a);
        }
    }
    if (second.serialize() != written)
        abort();
    return 0;
}
