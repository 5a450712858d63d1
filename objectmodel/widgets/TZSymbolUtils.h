#pragma once

#include "widgets/TZHostWidgetsExport.h"

#include <QIcon>
#include <QPixmap>
#include <QRect>
#include <QSize>

class QPainter;
namespace TZObjects {
class TEStyle;
}

// Previews of symbols for tables, buttons and lists, drawn by the style's own
// drawing code, and the checkerboard drawn under translucent colours.
class TZHOSTWIDGETS_EXPORT TZSymbolUtils
{
public:
    // A transparent pixmap of size with the style drawn into it: a point
    // centred, a line across, a fill as a rectangle. Without a style the
    // pixmap stays transparent; an empty size gives a null pixmap.
    static QPixmap symbolPreviewPixmap(TZObjects::TEStyle* style, QSize size);
    static QIcon symbolPreviewIcon(TZObjects::TEStyle* style, QSize size);
    // A grey checkerboard filling rect, so that transparency shows.
    static void drawStippledBackground(QPainter* painter, QRect rect);
};
