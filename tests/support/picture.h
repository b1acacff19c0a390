// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QColor>
#include <QImage>

#include <algorithm>

namespace sondrel {

/// Lightness of the lightest point of a picture, 0 to 255. What can be seen through does not count.
inline int lightestOf(const QImage &picture)
{
    constexpr int Solid = 200;
    int lightest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            lightest = std::max(lightest, colour.alpha() > Solid ? colour.lightness() : 0);
        }
    }
    return lightest;
}

} // namespace sondrel
