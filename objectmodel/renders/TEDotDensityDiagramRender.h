#pragma once

#include "renders/TEDiagramRender.h"
#include "core/TEColor.h"

#include <QPointF>

#include <vector>

namespace TZObjects {

// Dots scattered inside each polygon, one dot per "number per dot" units of
// the field's value. The timestamp seeds the dot placement.
//
// The host draws the background symbology per feature; DrawLayer then
// places the dots of each polygon at random positions inside it, from a
// generator seeded with the timestamp and the feature id, so that every
// redraw shows the same dots and a new timestamp shuffles them. Dots are
// placed in map coordinates (they stay on the ground when zooming) and
// tested against an index of the polygon's edges prepared once per
// polygon. A polygon gets at most one dot per pixel its bounding box covers
// (at least a few), so tiny polygons are not flooded.
class TZOBJECTS_EXPORT TEDotDensityDiagramRender : public TEDiagramRender
{
public:
    TEString GetType() const override { return L"DotDensityDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    std::vector<TEString> GetUsedAttributes() const override;

    TEColor getDotColor() const { return mDotColor; }
    void setDotColor(const TEColor& color) { mDotColor = color; }
    unsigned int getTimestamp() const { return mTimestamp; }
    void setTimestamp(unsigned int timestamp) { mTimestamp = timestamp; }
    TEString getFieldName() const { return mFieldName; }
    void setFieldName(const TEString& field) { mFieldName = field; }
    int getNumberPerDot() const { return mNumberPerDot; }
    void setNumberPerDot(int number) { mNumberPerDot = number; }

    bool DrawsWholeLayer() const override { return true; }
    bool DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const override;

    // The number of dots for a value: whole multiples of the number per
    // dot; 0 for a missing, negative or non-finite value.
    int DotCount(double value) const;
    // The map positions of the dots of a polygon (or multi-polygon) with
    // the given value and feature id, all inside the polygon.
    std::vector<QPointF> PlaceDots(OGRGeometryH geometry, double value, long long featureId,
                                   const TEDrawContext& context) const;
    // Draws dots given in map coordinates as squares of DotSize pixels, in
    // the dot colour, all composed onto the painter in one image.
    void DrawDots(QPainter* painter, const std::vector<QPointF>& mapDots, const TEDrawContext& context) const;
    // The side of a dot in painter pixels (1.5 points, whole pixels).
    static double DotSize(const TEDrawContext& context);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    TEColor mDotColor = TEColor(0, 0, 0);
    unsigned int mTimestamp = 0;
    TEString mFieldName;
    int mNumberPerDot = 1;
};

} // namespace TZObjects
