#pragma once

#include <QColor>

namespace marlet {

// Screens state positions and sizes in twips; the first layout of a form maps them at this rate.
constexpr int twipsPerPixel = 15;

constexpr int pixelsFromTwips(int twips)
{
    return twips / twipsPerPixel;
}

constexpr int twipsFromPixels(int pixels)
{
    return pixels * twipsPerPixel;
}

// Colours travel as integers with red in the low byte (255 is red), as the screens write them.
inline QColor colorFromBgr(int bgr)
{
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

inline int bgrFromColor(const QColor& color)
{
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

} // namespace marlet
