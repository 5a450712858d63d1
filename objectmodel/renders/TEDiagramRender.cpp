#include "renders/TEDiagramRender.h"

#include "data/TEFeature.h"
#include "renders/TEDrawContext.h"
#include "renders/TEFileFunc.h"

#include <QFont>
#include <QFontMetricsF>
#include <QJsonArray>
#include <QPainter>
#include <QPainterPath>

#include <ogr_api.h>

#include <algorithm>
#include <cmath>

namespace TZObjects {

TEDiagramRender::TEDiagramRender(const TEDiagramRender& other)
    : TEFeatureRender(other)
    , mBackground(other.mBackground ? other.mBackground->Clone() : TERefPtr<TEFeatureRender>())
    , mShowLabel(other.mShowLabel)
{
    for (const TERefPtr<TEDiagramRenderItem>& item : other.mItems)
        mItems.push_back(MakeRef<TEDiagramRenderItem>(item->GetField(), item->GetCaption(),
                                                      CloneStyle(item->GetStyle())));
}

TERefPtr<TEStyle> TEDiagramRender::GetStyleByFeature(TEFeature* feature, const double& scale,
                                                     bool ignoreScaleRange) const
{
    return mBackground ? mBackground->GetStyleByFeature(feature, scale, ignoreScaleRange) : TERefPtr<TEStyle>();
}

std::vector<TEString> TEDiagramRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = TEFeatureRender::GetUsedAttributes();
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems)
        AddUsedAttribute(fields, item->GetField());
    if (mBackground) {
        for (const TEString& field : mBackground->GetUsedAttributes())
            AddUsedAttribute(fields, field);
    }
    return fields;
}

bool TEDiagramRender::FilterNeedsGeometry() const
{
    return mBackground && mBackground->FilterNeedsGeometry();
}

bool TEDiagramRender::DrawDiagram(QPainter*, TEFeature*, const QPointF&, const TEDrawContext&) const
{
    return false;
}

void TEDiagramRender::PrepareDiagrams(const std::vector<TEFeature*>&)
{
}

namespace {

// The point halfway along a simple line string, by its length.
bool lineMiddle(OGRGeometryH line, QPointF& middle)
{
    const int count = OGR_G_GetPointCount(line);
    if (count <= 0)
        return false;
    double remaining = OGR_G_Length(line) / 2.0;
    for (int i = 1; i < count; ++i) {
        const QPointF from(OGR_G_GetX(line, i - 1), OGR_G_GetY(line, i - 1));
        const QPointF to(OGR_G_GetX(line, i), OGR_G_GetY(line, i));
        const double step = std::hypot(to.x() - from.x(), to.y() - from.y());
        if (step > 0.0 && remaining <= step) {
            middle = from + (to - from) * (remaining / step);
            return true;
        }
        remaining -= step;
    }
    // No length at all, or rounding left a remainder: the last vertex.
    middle = QPointF(OGR_G_GetX(line, count - 1), OGR_G_GetY(line, count - 1));
    return true;
}

// The part of a multi geometry that is largest by measure (length or area).
OGRGeometryH largestPart(OGRGeometryH multi, double (*measure)(OGRGeometryH))
{
    OGRGeometryH largest = nullptr;
    double largestSize = -1.0;
    for (int i = 0; i < OGR_G_GetGeometryCount(multi); ++i) {
        OGRGeometryH part = OGR_G_GetGeometryRef(multi, i);
        if (!part || OGR_G_IsEmpty(part))
            continue;
        const double size = measure(part);
        if (size > largestSize) {
            largest = part;
            largestSize = size;
        }
    }
    return largest;
}

bool polygonInterior(OGRGeometryH polygon, QPointF& inside)
{
    OGRGeometryH point = OGR_G_PointOnSurface(polygon);
    if (!point) {
        // Without GEOS there is no point on surface; the centroid is the
        // nearest stand-in (inside every convex polygon).
        point = OGR_G_CreateGeometry(wkbPoint);
        if (OGR_G_Centroid(polygon, point) != OGRERR_NONE) {
            OGR_G_DestroyGeometry(point);
            return false;
        }
    }
    const bool ok = !OGR_G_IsEmpty(point);
    if (ok)
        inside = QPointF(OGR_G_GetX(point, 0), OGR_G_GetY(point, 0));
    OGR_G_DestroyGeometry(point);
    return ok;
}

} // namespace

bool TEDiagramRender::GetAnchor(OGRGeometryH geometry, QPointF& mapAnchor)
{
    if (!geometry || OGR_G_IsEmpty(geometry))
        return false;
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
    if (OGR_GT_IsNonLinear(type)) {
        // Curves are anchored on their straight-segment approximation.
        OGRGeometryH linear = OGR_G_GetLinearGeometry(geometry, 0.0, nullptr);
        const bool ok = linear && !OGR_GT_IsNonLinear(wkbFlatten(OGR_G_GetGeometryType(linear)))
                        && GetAnchor(linear, mapAnchor);
        if (linear)
            OGR_G_DestroyGeometry(linear);
        return ok;
    }
    switch (type) {
    case wkbPoint:
        mapAnchor = QPointF(OGR_G_GetX(geometry, 0), OGR_G_GetY(geometry, 0));
        return true;
    case wkbLineString:
        return lineMiddle(geometry, mapAnchor);
    case wkbPolygon:
        return polygonInterior(geometry, mapAnchor);
    case wkbMultiLineString: {
        OGRGeometryH longest = largestPart(geometry, OGR_G_Length);
        return longest && lineMiddle(longest, mapAnchor);
    }
    case wkbMultiPolygon: {
        OGRGeometryH largest = largestPart(geometry, OGR_G_Area);
        return largest && polygonInterior(largest, mapAnchor);
    }
    case wkbMultiPoint:
    case wkbGeometryCollection:
        for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i) {
            if (GetAnchor(OGR_G_GetGeometryRef(geometry, i), mapAnchor))
                return true;
        }
        return false;
    default:
        return false;
    }
}

QString TEDiagramRender::LabelText(double value)
{
    return QString::number(value, 'g', 12);
}

void TEDiagramRender::DrawLabel(QPainter* painter, const QString& text, const QPointF& position,
                                Qt::Alignment alignment, const TEDrawContext& context)
{
    if (!painter || text.isEmpty())
        return;
    QFont font = painter->font();
    font.setPixelSize(std::max(1, int(std::lround(context.ToPixels(7.5, TEStyle::Point)))));
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(text);
    double x = position.x();
    if (alignment & Qt::AlignHCenter)
        x -= width / 2.0;
    else if (alignment & Qt::AlignRight)
        x -= width;
    double baseline = position.y();
    if (alignment & Qt::AlignVCenter)
        baseline += (metrics.ascent() - metrics.descent()) / 2.0;
    else if (alignment & Qt::AlignTop)
        baseline += metrics.ascent();
    else if (alignment & Qt::AlignBottom)
        baseline -= metrics.descent();
    // The halo is the text drawn in white one pixel off in eight
    // directions; drawText goes through the glyph cache, where a text path
    // would be shaped and stroked anew for every label.
    painter->save();
    painter->setFont(font);
    painter->setPen(QColor(255, 255, 255, 220));
    const QPointF at(x, baseline);
    static const QPointF offsets[] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}};
    for (const QPointF& offset : offsets)
        painter->drawText(at + offset, text);
    painter->setPen(QColor(30, 30, 30));
    painter->drawText(at, text);
    painter->restore();
}

std::vector<double> TEDiagramRender::ItemValues(TEFeature* feature) const
{
    std::vector<double> values;
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems) {
        const double value = feature ? feature->GetValue(item->GetField()).GetDouble() : 0.0;
        values.push_back(std::isfinite(value) && value > 0.0 ? value : 0.0);
    }
    return values;
}

void TEDiagramRender::AddItem(const TEString& field, const TEString& caption, const TERefPtr<TEStyle>& style)
{
    mItems.push_back(MakeRef<TEDiagramRenderItem>(field, caption, style));
}

void TEDiagramRender::SetBackgroundRender(TEFeatureRender* render)
{
    for (TEFeatureRender* link = render; link;) {
        if (link == this)
            return;
        auto* diagram = dynamic_cast<TEDiagramRender*>(link);
        link = diagram ? diagram->mBackground.get() : nullptr;
    }
    mBackground = render;
}

void TEDiagramRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("showLabel")] = mShowLabel;
    QJsonArray items;
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems) {
        QJsonObject itemJson;
        itemJson[QStringLiteral("field")] = item->GetField().toQString();
        itemJson[QStringLiteral("caption")] = item->GetCaption().toQString();
        itemJson[QStringLiteral("style")] = TEFileFunc::SaveStyle(item->GetStyle().get());
        items.append(itemJson);
    }
    json[QStringLiteral("items")] = items;
    if (mBackground)
        json[QStringLiteral("background")] = TEFileFunc::SaveRender(mBackground.get());
}

bool TEDiagramRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    mShowLabel = json.value(QStringLiteral("showLabel")).toBool(false);
    mItems.clear();
    bool ok = true;
    if (!TEFileFunc::IsListOrMissing(json, "items", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("items")).toArray()) {
        const QJsonObject itemJson = value.toObject();
        TERefPtr<TEStyle> style;
        ok = TEFileFunc::OpenStyle(itemJson.value(QStringLiteral("style")), style, error) && ok;
        AddItem(TEString(itemJson.value(QStringLiteral("field")).toString()),
                TEString(itemJson.value(QStringLiteral("caption")).toString()), style);
    }
    mBackground.reset();
    const QJsonValue background = json.value(QStringLiteral("background"));
    if (background.isObject()) {
        mBackground = TEFileFunc::OpenFeatureRender(background.toObject(), error);
        ok = bool(mBackground) && ok;
    }
    return ok;
}

void TEDiagramRender::VisitStyles(const StyleVisitor& visit)
{
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems) {
        TERefPtr<TEStyle> style = item->GetStyle();
        visit(style);
        item->SetStyle(style);
    }
}

} // namespace TZObjects
