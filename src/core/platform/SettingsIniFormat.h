#pragma once

#include <QSettings>

// The INI format of the option and preference stores, read and written by our own code so that
// every write is checked: QSettings' built-in writer lets a failed buffered write pass and then
// renames the short file over the good one. The text is the one QSettings writes for strings and
// numbers ("[Options]", "%XX" in names, "\\n" and quotes in values), so files written before
// read back unchanged.
namespace SettingsIniFormat {

// Registered with QSettings on first use; files get the ".conf" suffix of the native store.
QSettings::Format format();

// The codec behind the format, without a device.
QByteArray serialize(const QSettings::SettingsMap &map);
QSettings::SettingsMap parse(const QByteArray &bytes);

} // namespace SettingsIniFormat
