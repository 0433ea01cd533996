// Feeds arbitrary bytes to the settings-file reader, then checks that what it writes reads back
// to the same content and is written again byte for byte.
#include "settings/IniFile.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    IniFile first;
    first.parse(bytes);
    const QByteArray written = first.serialize();

    IniFile second;
    second.parse(written);
    if (second.sections() != first.sections())
        abort();
    for (const QString &section : first.sections()) {
        if (second.keys(section) != first.keys(section))
            abort();
        for (const QString &key : first.keys(section)) {
            QString a;
            QString b;
            if (!first.GetString(section, key, a) || !second.GetString(section, key, b) || a != b)
                abort();
            int number = 0;
            first.GetInt(section, key, number);
            IniColor color;
            first.GetColor(section, key, color);
        }
    }
    if (second.serialize() != written)
        abort();
    return 0;
}
