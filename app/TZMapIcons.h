#pragma once

#include <QIcon>

// The toolbar icons of tzmap, drawn with QPainter so that the window looks
// the same with or without an icon theme installed.
class TZMapIcons
{
public:
    enum Glyph { ZoomIn, ZoomOut, ZoomAll, ZoomLayer, Symbology, Refresh };

    static QIcon icon(Glyph glyph);
};
