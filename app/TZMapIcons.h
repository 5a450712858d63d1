#pragma once

#include <QIcon>

#include <functional>

namespace TZObjects {
class TELayer;
class TEStyle;
}

// The icons of tzmap, drawn with QPainter so that the window looks the same
// with or without an icon theme installed: the toolbar's, and the layer
// list's legend swatches (LegendSize pixels each).
class TZMapIcons
{
public:
    enum Glyph { ZoomIn, ZoomOut, ZoomAll, ZoomLayer, Symbology, Refresh };

    static QIcon icon(Glyph glyph);

    static const QSize LegendSize;
    // The symbol's preview; null without a style.
    static QIcon symbol(const TZObjects::TEStyle* style);
    // A disc of the colour, diameter pixels across.
    static QIcon swatch(const QColor& color, int diameter);
    // A colour ramp from left to right, colourAt taking 0..1.
    static QIcon ramp(const std::function<QColor(double)>& colourAt);
    // A raster layer: a folder for a raster directory, else a tiled square.
    static QIcon rasterLayer(const TZObjects::TELayer* layer);
};
