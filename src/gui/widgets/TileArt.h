#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

// The counter tiles, looked up by their resource numbers: whole-number digits, decimal digits and
// points (each in a normal and an alert set), month tiles and day tiles. Drawn in code at the
// numbered size times the device pixel ratio, and cached.
class TileArt
{
public:
    static constexpr int WholeDigit = 198; // + digit
    static constexpr int WholeDigitAlert = 211; // + digit
    static constexpr int DecimalDigit = 235; // + digit
    static constexpr int DecimalPoint = 245;
    static constexpr int DecimalDigitAlert = 300; // + digit
    static constexpr int DecimalPointAlert = 310;
    static constexpr int MonthNoDate = 248;
    static constexpr int Month = 249; // + month index 0..11
    static constexpr int Day = 260; // + day of month 1..31
    static constexpr int DayNoDate = 292;

    enum class Kind { None, WholeDigit, DecimalDigit, DecimalPoint, Month, Day };

    static bool isTile(int id) { return kind(id) != Kind::None; }
    static Kind kind(int id);
    static bool isAlert(int id);
    // Logical size in pixels; an empty QSize for numbers that are not tiles.
    static QSize tileSize(int id);
    // What the tile reads as: "7", ".", "JAN", "14"; empty for the no-date tiles and non-tiles.
    static QString tileText(int id);

    // The tile at the given device pixel ratio (cached); a null pixmap for numbers that are not tiles.
    static QPixmap pixmap(int id, qreal dpr = 1.0);
    // The same tile with nothing written on it, for a counter that has no reading to show.
    static QPixmap blankPixmap(int id, qreal dpr = 1.0);
    // Uncached rendering into an image of tileSize(id) * dpr pixels.
    static QImage render(int id, qreal dpr = 1.0, bool blank = false);
    static void clearCache();
};
