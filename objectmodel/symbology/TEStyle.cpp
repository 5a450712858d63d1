#include "symbology/TEStyle.h"

#include "data/TEGeometry.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"

#include <ogr_api.h>

#include <QJsonObject>
#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace TZObjects {

namespace {

const char* const kStyleClassNames[TEStyle::StyleClassCount] = {
    "InvalidStyle",     "MulLayerPoint",    "MulLayerLine",       "MulLayerPolygon",
    "SimplePoint",      "CharacterPoint",   "BitmapPoint",        "ScriptPoint",
    "SimpleLine",       "BrinkLine",        "PatternLine",        "PointDecorateLine",
    "LineDecorateLine", "ScriptLine",       "SimpleFill",         "PointFill",
    "LineFill",         "ScriptFill",       "Label",              "VectorMetaPoint",
    "3DSimplePoint",    "3DRegularShapePoint", "3DModelPoint",    "3DBillboardPoint",
    "3DLabelPoint",     "3DSimpleLine",     "3DRegularShapeLine", "SVGPoint",
    "ParallelLine",
};

// The line's vertices in device pixels, simplified to the pixel grid: a
// vertex in the same device pixel as the last one kept changes nothing that
// shows and is dropped. The last vertex is always kept, so a ring stays
// closed; a ring left with fewer than four vertices (it lies within a pixel
// or two) keeps them all, so the fill still has its area.
QPolygonF lineToDevice(OGRGeometryH line, const QTransform& mapToDevice, bool ring)
{
    const int count = OGR_G_GetPointCount(line);
    QPolygonF polygon;
    polygon.reserve(count);
    double keptX = 0.0;
    double keptY = 0.0;
    for (int i = 0; i < count; ++i) {
        const QPointF device = mapToDevice.map(QPointF(OGR_G_GetX(line, i), OGR_G_GetY(line, i)));
        const double pixelX = std::floor(device.x());
        const double pixelY = std::floor(device.y());
        if (i > 0 && i < count - 1 && pixelX == keptX && pixelY == keptY)
            continue;
        polygon.append(device);
        keptX = pixelX;
        keptY = pixelY;
    }
    if (ring && polygon.size() < 4 && count >= 4) {
        polygon.clear();
        for (int i = 0; i < count; ++i)
            polygon.append(mapToDevice.map(QPointF(OGR_G_GetX(line, i), OGR_G_GetY(line, i))));
    }
    return polygon;
}

} // namespace

TEString TEStyle::GetTypeName() const
{
    return TEString(StyleClassName(GetStyleClass()));
}

const char* TEStyle::StyleClassName(int styleClass)
{
    if (styleClass < 0 || styleClass >= StyleClassCount)
        return kStyleClassNames[InvalidStyle];
    return kStyleClassNames[styleClass];
}

TEStyle::StyleClass TEStyle::StyleClassFromName(const QString& name)
{
    for (int i = 0; i < StyleClassCount; ++i) {
        if (name == QLatin1String(kStyleClassNames[i]))
            return StyleClass(i);
    }
    return InvalidStyle;
}

double TEStyle::SizeToPixels(double size, int units, double dpi)
{
    switch (units) {
    case Millimeter: return size * dpi / 25.4;
    case Centimeter: return size * dpi / 2.54;
    case Inch: return size * dpi;
    case Point:
    case TypographicPoint: return size * dpi / 72.0;
    default: return size;
    }
}

double TEStyle::DeviceDpi(const QPainter* painter)
{
    if (painter && painter->device())
        return painter->device()->logicalDpiX();
    return 96.0;
}

void TEStyle::SetTransparency(int percent)
{
    mTransparency = std::clamp(percent, 0, 100);
}

void TEStyle::applyTransparency(QPainter* painter) const
{
    if (mTransparency > 0)
        painter->setOpacity(painter->opacity() * (100 - mTransparency) / 100.0);
}

QColor TEStyle::toQColor(const TEColor& color)
{
    return QColor(color.getR(), color.getG(), color.getB(), color.getA());
}

QString TEStyle::colorToText(const TEColor& color)
{
    return toQColor(color).name(QColor::HexArgb);
}

bool TEStyle::colorFromText(const QString& text, TEColor& color)
{
    const QColor c(text);
    if (!c.isValid())
        return false;
    color = TEColor(c.red(), c.green(), c.blue(), c.alpha());
    return true;
}

bool TEStyle::Draw(QPainter* painter, OGRGeometryH geometry, const QTransform& mapToDevice,
                   double angle) const
{
    if (!painter || !geometry || OGR_G_IsEmpty(geometry))
        return false;
    return drawGeometry(painter, geometry, mapToDevice, angle);
}

bool TEStyle::Draw(QPainter* painter, const TEGeometry* geometry, const QTransform& mapToDevice,
                   double angle) const
{
    return geometry && Draw(painter, geometry->GetHandle(), mapToDevice, angle);
}

bool TEStyle::drawGeometry(QPainter* painter, OGRGeometryH geometry, const QTransform& mapToDevice,
                           double angle) const
{
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
    switch (type) {
    case wkbPoint:
        return DrawPoint(painter, mapToDevice.map(QPointF(OGR_G_GetX(geometry, 0), OGR_G_GetY(geometry, 0))),
                         angle);
    case wkbLineString:
    case wkbLinearRing:
        return DrawLine(painter, lineToDevice(geometry, mapToDevice, false), angle);
    case wkbPolygon: {
        QPainterPath path;
        path.setFillRule(Qt::OddEvenFill);
        for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i) {
            const QPolygonF ring = lineToDevice(OGR_G_GetGeometryRef(geometry, i), mapToDevice, true);
            if (ring.size() >= 3) {
                path.addPolygon(ring);
                path.closeSubpath();
            }
        }
        return !path.isEmpty() && DrawPolygon(painter, path, angle);
    }
    case wkbMultiPoint:
    case wkbMultiLineString:
    case wkbMultiPolygon:
    case wkbGeometryCollection: {
        // Parts are drawn one by one, so overlapping polygons do not cancel
        // each other out under the even-odd rule.
        bool drawn = false;
        for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i)
            drawn = drawGeometry(painter, OGR_G_GetGeometryRef(geometry, i), mapToDevice, angle) || drawn;
        return drawn;
    }
    default:
        break;
    }
    if (OGR_GT_IsNonLinear(type)) {
        OGRGeometryH linear = OGR_G_GetLinearGeometry(geometry, 0, nullptr);
        if (!linear)
            return false;
        const bool drawn = drawGeometry(painter, linear, mapToDevice, angle);
        OGR_G_DestroyGeometry(linear);
        return drawn;
    }
    return false;
}

void TEStyle::DrawPreview(QPainter* painter, const QRectF& rect) const
{
    if (!painter || rect.isEmpty())
        return;
    switch (GetStyleType()) {
    case PointStyle:
        DrawPoint(painter, rect.center());
        break;
    case LineStyle: {
        const double margin = std::min(rect.width(), rect.height()) * 0.15;
        const QRectF r = rect.adjusted(margin, margin, -margin, -margin);
        QPolygonF zigzag;
        zigzag << QPointF(r.left(), r.bottom()) << QPointF(r.left() + r.width() / 3.0, r.top())
               << QPointF(r.left() + 2.0 * r.width() / 3.0, r.bottom()) << QPointF(r.right(), r.top());
        DrawLine(painter, zigzag);
        break;
    }
    case FillStyle: {
        const double margin = std::min(rect.width(), rect.height()) * 0.1;
        QPainterPath path;
        path.addRect(rect.adjusted(margin, margin, -margin, -margin));
        DrawPolygon(painter, path);
        break;
    }
    }
}

bool TEStyle::Equals(const TEStyle& other) const
{
    return GetStyleClass() == other.GetStyleClass() && mName == other.mName && mAliasName == other.mAliasName
        && mColor == other.mColor && mUnits == other.mUnits && mPriority == other.mPriority
        && mTransparency == other.mTransparency && mTestCollision == other.mTestCollision
        && mWriteCollision == other.mWriteCollision && mExtendShape == other.mExtendShape;
}

void TEStyle::save(QJsonObject& json) const
{
    json.insert("type", QLatin1String(StyleClassName(GetStyleClass())));
    json.insert("name", mName.toQString());
    json.insert("alias", mAliasName.toQString());
    json.insert("color", colorToText(mColor));
    json.insert("units", mUnits);
    json.insert("priority", mPriority);
    json.insert("transparency", mTransparency);
    json.insert("testCollision", mTestCollision);
    json.insert("writeCollision", mWriteCollision);
    json.insert("extendShape", mExtendShape);
}

bool TEStyle::open(const QJsonObject& json)
{
    if (json.contains("type") && StyleClassFromName(json.value("type").toString()) != GetStyleClass())
        return false;
    TEColor color = mColor;
    if (json.contains("color") && !colorFromText(json.value("color").toString(), color))
        return false;
    mColor = color;
    mName = TEString(json.value("name").toString(mName.toQString()));
    mAliasName = TEString(json.value("alias").toString(mAliasName.toQString()));
    mUnits = json.value("units").toInt(mUnits);
    mPriority = json.value("priority").toInt(mPriority);
    SetTransparency(json.value("transparency").toInt(mTransparency));
    mTestCollision = json.value("testCollision").toBool(mTestCollision);
    mWriteCollision = json.value("writeCollision").toBool(mWriteCollision);
    mExtendShape = json.value("extendShape").toBool(mExtendShape);
    return true;
}

TERefPtr<TEStyle> TEStyle::Create(StyleClass styleClass)
{
    switch (styleClass) {
    case SimplePoint: return MakeRef<TEStyleSimplePoint>();
    case SimpleLine: return MakeRef<TEStyleSimpleLine>();
    case SimpleFill: return MakeRef<TEStyleSimpleFill>();
    case MulLayerPoint: return MakeRef<TEStyleMultiLayer>(PointStyle);
    case MulLayerLine: return MakeRef<TEStyleMultiLayer>(LineStyle);
    case MulLayerPolygon: return MakeRef<TEStyleMultiLayer>(FillStyle);
    default: return TERefPtr<TEStyle>();
    }
}

TERefPtr<TEStyle> TEStyle::FromJson(const QJsonObject& json, QString* error)
{
    const QString typeName = json.value("type").toString();
    TERefPtr<TEStyle> style = Create(StyleClassFromName(typeName));
    if (!style) {
        if (error)
            *error = QStringLiteral("Unsupported style type \"%1\"").arg(typeName);
        return TERefPtr<TEStyle>();
    }
    if (!style->open(json)) {
        if (error)
            *error = QStringLiteral("The %1 style \"%2\" could not be read")
                         .arg(typeName, json.value("name").toString());
        return TERefPtr<TEStyle>();
    }
    return style;
}

} // namespace TZObjects
