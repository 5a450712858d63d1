#include "TZMapIcons.h"

#include "data/TERasterDirLayer.h"
#include "symbology/TEStyle.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QStyle>

#include <algorithm>

namespace {

void drawMagnifier(QPainter& p, const QString& sign)
{
    p.setPen(QPen(QColor(50, 60, 70), 2.4, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(QColor(225, 238, 250));
    p.drawEllipse(QRectF(3, 3, 15, 15));
    p.setPen(QPen(QColor(50, 60, 70), 4.0, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(16.5, 16.5), QPointF(22, 22));
    p.setPen(QPen(QColor(30, 90, 160), 2.2, Qt::SolidLine, Qt::RoundCap));
    if (sign == QLatin1String("+") || sign == QLatin1String("-"))
        p.drawLine(QPointF(7, 10.5), QPointF(14, 10.5));
    if (sign == QLatin1String("+"))
        p.drawLine(QPointF(10.5, 7), QPointF(10.5, 14));
}

} // namespace

QIcon TZMapIcons::icon(Glyph glyph)
{
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing, true);
    switch (glyph) {
    case ZoomIn:
        drawMagnifier(p, QStringLiteral("+"));
        break;
    case ZoomOut:
        drawMagnifier(p, QStringLiteral("-"));
        break;
    case ZoomAll: {
        // Four corner arrows pointing outwards around a map sheet.
        p.setPen(QPen(QColor(50, 60, 70), 1.5));
        p.setBrush(QColor(200, 225, 190));
        p.drawRect(QRectF(6.5, 6.5, 11, 11));
        p.setPen(QPen(QColor(30, 90, 160), 2.2, Qt::SolidLine, Qt::RoundCap));
        const QPointF corners[] = {{2, 2}, {22, 2}, {2, 22}, {22, 22}};
        for (const QPointF& c : corners) {
            const double dx = c.x() < 12 ? 4 : -4;
            const double dy = c.y() < 12 ? 4 : -4;
            p.drawLine(c, c + QPointF(dx, 0));
            p.drawLine(c, c + QPointF(0, dy));
        }
        break;
    }
    case ZoomLayer:
        p.setPen(QPen(QColor(50, 60, 70), 1.5));
        p.setBrush(QColor(250, 215, 140));
        p.drawPolygon(QPolygonF({QPointF(3, 15), QPointF(12, 11), QPointF(21, 15), QPointF(12, 19)}));
        p.setBrush(QColor(150, 200, 240));
        p.drawPolygon(QPolygonF({QPointF(3, 9), QPointF(12, 5), QPointF(21, 9), QPointF(12, 13)}));
        break;
    case Symbology: {
        p.setPen(QPen(QColor(60, 60, 60), 1.2));
        p.setBrush(QColor(235, 215, 180));
        QPainterPath palette;
        palette.addEllipse(QRectF(2, 3, 20, 17));
        p.drawPath(palette);
        const QColor dabs[] = {QColor(210, 50, 50), QColor(40, 140, 60), QColor(40, 90, 200), QColor(240, 190, 30)};
        const QPointF places[] = {{7, 8}, {12, 6.5}, {17, 8.5}, {16.5, 14}};
        for (int i = 0; i < 4; ++i) {
            p.setBrush(dabs[i]);
            p.setPen(Qt::NoPen);
            p.drawEllipse(places[i], 2.4, 2.4);
        }
        p.setBrush(Qt::white);
        p.setPen(QPen(QColor(60, 60, 60), 1.0));
        p.drawEllipse(QPointF(8, 15), 2.2, 2.2);
        break;
    }
    case Refresh: {
        p.setPen(QPen(QColor(30, 110, 60), 2.6, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawArc(QRectF(4, 4, 16, 16), 40 * 16, 280 * 16);
        p.setBrush(QColor(30, 110, 60));
        p.setPen(Qt::NoPen);
        p.drawPolygon(QPolygonF({QPointF(15, 2), QPointF(22, 6), QPointF(15, 10)}));
        break;
    }
    }
    p.end();
    return QIcon(pixmap);
}

const QSize TZMapIcons::LegendSize(20, 16);

namespace {

QPixmap blankLegendPixmap()
{
    QPixmap pixmap(TZMapIcons::LegendSize);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

QIcon TZMapIcons::symbol(const TZObjects::TEStyle* style)
{
    if (!style)
        return QIcon();
    QPixmap pixmap = blankLegendPixmap();
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing, true);
    style->DrawPreview(&painter, QRectF(QPointF(1, 1), QSizeF(LegendSize) - QSizeF(2, 2)));
    painter.end();
    return QIcon(pixmap);
}

QIcon TZMapIcons::swatch(const QColor& color, int diameter)
{
    QPixmap pixmap = blankLegendPixmap();
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setBrush(color);
    painter.setPen(QPen(color.darker(140), 1.0));
    const double d = std::min<double>(diameter, std::min(LegendSize.width(), LegendSize.height()) - 2);
    painter.drawEllipse(QRectF(QPointF(LegendSize.width() - d, LegendSize.height() - d) / 2.0, QSizeF(d, d)));
    painter.end();
    return QIcon(pixmap);
}

QIcon TZMapIcons::ramp(const std::function<QColor(double)>& colourAt)
{
    QPixmap pixmap = blankLegendPixmap();
    QPainter painter(&pixmap);
    for (int x = 0; x < pixmap.width(); ++x)
        painter.fillRect(QRect(x, 2, 1, pixmap.height() - 4), colourAt(double(x + 1) / pixmap.width()));
    painter.end();
    return QIcon(pixmap);
}

QIcon TZMapIcons::rasterLayer(const TZObjects::TELayer* layer)
{
    if (dynamic_cast<const TZObjects::TERasterDirLayer*>(layer))
        return QApplication::style()->standardIcon(QStyle::SP_DirIcon);
    // A small tiled square standing for a grid of pixels.
    QPixmap pixmap = blankLegendPixmap();
    QPainter painter(&pixmap);
    const QColor shades[] = {QColor(70, 130, 90), QColor(200, 190, 120), QColor(120, 160, 200), QColor(150, 110, 80)};
    for (int i = 0; i < 4; ++i)
        painter.fillRect(QRect(3 + (i % 2) * 7, 1 + (i / 2) * 7, 7, 7), shades[i]);
    painter.setPen(QColor(60, 60, 60));
    painter.drawRect(QRect(3, 1, 13, 13));
    painter.end();
    return QIcon(pixmap);
}
