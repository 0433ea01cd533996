#pragma once

#include <QStringView>
#include <QtGlobal>

// Numbers as the settings files hold them ("1234   ", "0.250", "-0000000001"): the leading number
// of the text is taken, as C's strtod/atol do, and text that starts with no number reads as 0.
// The conversion never depends on the process locale.
namespace LenientNumber {
double toDouble(QStringView text);
// Saturates at the qint64 range.
qint64 toInteger(QStringView text);
// Saturates at the qint32 range, as a 32-bit strtol would.
qint32 toInt32(QStringView text);
} // namespace LenientNumber
