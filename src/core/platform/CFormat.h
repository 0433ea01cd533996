#pragma once

#include <QByteArray>
#include <QString>

// printf-style formatting through the C library, so that the system's formats ("%-7.0f",
// "%-4.0d", "%-10.10d" ...) behave exactly like C. "%s" arguments are UTF-8 C strings.
QString cformat(const char *format, ...) __attribute__((format(printf, 1, 2)));

// The export encoding: one byte per UTF-16 code unit, its low eight bits. Nothing is replaced.
QByteArray to8bit(const QString &text);

// Reads 8-bit text back (each byte becomes the code unit of the same value).
QString from8bit(const QByteArray &bytes);
