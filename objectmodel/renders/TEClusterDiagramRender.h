#pragma once

#include "renders/TEDiagramRender.h"
#include "symbology/TEColorRamp.h"

#include <QColor>
#include <QPointF>
#include <QRectF>

#include <vector>

namespace TZObjects {

// Points gathered into clusters, each drawn as a marker coloured through the
// ramp by the number of points it holds.
//
// Drawing lays a grid over the screen, anchored on the map's origin so that
// cells stay put while the map pans, with cells of the marker size (in
// pixels at 96 DPI). The points of a cell form one cluster, drawn at their
// mean position as a disc whose size and colour follow the size class of
// its count (2-9, 10-99, 100-999, ...), labelled with the count. A point
// alone in its cell is drawn as itself in the background symbology. The
// grouping is one pass over the points, never a comparison of pairs.
class TZOBJECTS_EXPORT TEClusterDiagramRender : public TEDiagramRender
{
public:
    TEClusterDiagramRender() = default;
    TEClusterDiagramRender(const TEClusterDiagramRender& other);

    TEString GetType() const override { return L"ClusterDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    // Keeps a copy of the ramp (the caller's ramp stays its own).
    void setColorRamp(TEColorRamp* ramp);
    TERefPtr<TEColorRamp> getColorRamp() const { return mColorRamp; }
    double getMakerSize() const { return mMakerSize; }
    void setMakerSize(double size) { mMakerSize = size; }

    // A group of points: where its marker stands (painter pixels) and how
    // many points it holds.
    struct Cluster
    {
        QPointF centre;
        int count = 0;
    };

    bool DrawsWholeLayer() const override { return true; }
    bool DrawsOnlyWholeLayer() const override { return true; }
    bool DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const override;

    // The side of a grid cell in painter pixels.
    double CellSize(const TEDrawContext& context) const;
    // Groups points given in painter pixels by the cells of the grid over
    // view whose lines pass through gridOrigin; points outside view are left
    // out. Clusters come in row-major cell order.
    static std::vector<Cluster> GroupPoints(const std::vector<QPointF>& devicePoints, double cellSize,
                                            const QRectF& view, const QPointF& gridOrigin);
    // Draws the clusters of two or more points. False when cancelled.
    bool DrawClusters(QPainter* painter, const std::vector<Cluster>& clusters, const TEDrawContext& context) const;

    // Size classes by the number of digits of a count: class 0 holds 1 point,
    // class k (k >= 1) counts from 10^(k-1) (2 for k = 1) below 10^k.
    static constexpr int SizeClassCount = 7;
    static int SizeClass(int count);
    // The smallest count of a class.
    static int SizeClassLower(int sizeClass);
    QColor SizeClassColor(int sizeClass) const;
    // Draws one marker of the count's class centred on centre; with label
    // the count is written on it.
    void DrawMarker(QPainter* painter, const QPointF& centre, int count, double cellSize, bool label,
                    const TEDrawContext& context) const;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    TERefPtr<TEColorRamp> mColorRamp;
    double mMakerSize = 4.0;
};

} // namespace TZObjects
