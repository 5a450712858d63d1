#include "widgets/TZSymbolUtils.h"

#include "symbology/TEStyle.h"

#include <QPainter>

using namespace TZObjects;

QPixmap TZSymbolUtils::symbolPreviewPixmap(TEStyle* style, QSize size)
{
    if (size.width() <= 0 || size.height() <= 0)
        return QPixmap();
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    if (!style)
        return pixmap;

    // Keep a reference while drawing: the caller's pointer may be the only
    // thing holding the style.
    const TERefPtr<TEStyle> held(style);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    held->DrawPreview(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    return pixmap;
}

QIcon TZSymbolUtils::symbolPreviewIcon(TEStyle* style, QSize size)
{
    const QPixmap pixmap = symbolPreviewPixmap(style, size);
    return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}

void TZSymbolUtils::drawStippledBackground(QPainter* painter, QRect rect)
{
    if (!painter || rect.isEmpty())
        return;
    constexpr int Cell = 6;
    QPixmap tile(2 * Cell, 2 * Cell);
    tile.fill(QColor(255, 255, 255));
    {
        QPainter tilePainter(&tile);
        const QColor grey(204, 204, 204);
        tilePainter.fillRect(0, 0, Cell, Cell, grey);
        tilePainter.fillRect(Cell, Cell, Cell, Cell, grey);
    }
    painter->drawTiledPixmap(rect, tile);
}
