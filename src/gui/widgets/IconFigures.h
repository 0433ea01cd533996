#pragma once

#include "IconArt.h"

class QPainter;

// The drawing of each picture on its 32 x 32 grid: the badge in its group's colour and the
// white figure on it. IconArt scales, caches and wraps these as pixmaps and icons.
namespace IconFigures {
void draw(QPainter &p, IconArt::Picture picture);
}
