#include "renders/TEClusterDiagramRender.h"

#include "data/TEFeatureCursor.h"
#include "renders/TEDrawContext.h"
#include "renders/TEFileFunc.h"

#include <QFontMetricsF>
#include <QPainter>

#include <ogr_api.h>

#include <algorithm>
#include <cmath>

namespace TZObjects {

TEClusterDiagramRender::TEClusterDiagramRender(const TEClusterDiagramRender& other)
    : TEDiagramRender(other)
    , mColorRamp(other.mColorRamp ? other.mColorRamp->clone() : TERefPtr<TEColorRamp>())
    , mMakerSize(other.mMakerSize)
{
}

TERefPtr<TEFeatureRender> TEClusterDiagramRender::Clone() const
{
    return MakeRef<TEClusterDiagramRender>(*this);
}

void TEClusterDiagramRender::setColorRamp(TEColorRamp* ramp)
{
    mColorRamp = ramp ? ramp->clone() : TERefPtr<TEColorRamp>();
}

namespace {

constexpr int CancelCheckInterval = 1 << 14;
// Cells are never smaller than this many pixels.
constexpr double MinimumCell = 8.0;

// The cells of a screen grid over a view, numbered row by row.
class ScreenGrid
{
public:
    ScreenGrid(const QRectF& view, double cell, const QPointF& origin)
        : mInverseCell(1.0 / cell), mOrigin(origin), mView(view)
    {
        mFirstCol = std::floor((view.left() - origin.x()) * mInverseCell);
        mFirstRow = std::floor((view.top() - origin.y()) * mInverseCell);
        const double cols = std::floor((view.right() - origin.x()) / cell) - mFirstCol + 1.0;
        const double rows = std::floor((view.bottom() - origin.y()) / cell) - mFirstRow + 1.0;
        if (cols > 0 && rows > 0 && cols * rows < 4.0e7) {
            mCols = int(cols);
            mRows = int(rows);
        }
    }
    int size() const { return mCols * mRows; }
    // The cell of a point, -1 outside the view.
    int index(const QPointF& point) const
    {
        if (!(point.x() >= mView.left() && point.x() < mView.right() && point.y() >= mView.top()
              && point.y() < mView.bottom()))
            return -1;
        const double col = std::floor((point.x() - mOrigin.x()) * mInverseCell) - mFirstCol;
        const double row = std::floor((point.y() - mOrigin.y()) * mInverseCell) - mFirstRow;
        if (!(col >= 0.0 && row >= 0.0 && col < mCols && row < mRows))
            return -1;
        return int(row) * mCols + int(col);
    }

private:
    double mInverseCell;
    QPointF mOrigin;
    QRectF mView;
    double mFirstCol = 0.0;
    double mFirstRow = 0.0;
    int mCols = 0;
    int mRows = 0;
};

bool pointOf(OGRGeometryH geometry, QPointF& point)
{
    if (!geometry || OGR_G_IsEmpty(geometry))
        return false;
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
    if (type == wkbMultiPoint)
        geometry = OGR_G_GetGeometryCount(geometry) > 0 ? OGR_G_GetGeometryRef(geometry, 0) : nullptr;
    else if (type != wkbPoint)
        return false;
    if (!geometry || OGR_G_IsEmpty(geometry))
        return false;
    point = QPointF(OGR_G_GetX(geometry, 0), OGR_G_GetY(geometry, 0));
    return true;
}

} // namespace

double TEClusterDiagramRender::CellSize(const TEDrawContext& context) const
{
    const double size = std::isfinite(mMakerSize) ? mMakerSize * context.dpi / 96.0 : 0.0;
    return std::max(MinimumCell, size);
}

int TEClusterDiagramRender::SizeClass(int count)
{
    if (count <= 1)
        return 0;
    int sizeClass = 1;
    for (long long bound = 10; count >= bound && sizeClass < SizeClassCount - 1; bound *= 10)
        ++sizeClass;
    return sizeClass;
}

int TEClusterDiagramRender::SizeClassLower(int sizeClass)
{
    if (sizeClass <= 0)
        return 1;
    if (sizeClass == 1)
        return 2;
    int lower = 1;
    for (int i = 1; i < sizeClass; ++i)
        lower *= 10;
    return lower;
}

QColor TEClusterDiagramRender::SizeClassColor(int sizeClass) const
{
    const double t = double(std::max(0, std::min(sizeClass, SizeClassCount - 1))) / (SizeClassCount - 1);
    if (mColorRamp && mColorRamp->isValid())
        return mColorRamp->colorAt(t).toQColor();
    // Light orange to deep red.
    return QColor::fromRgbF(0.99 - 0.3 * t, 0.75 - 0.65 * t, 0.35 - 0.25 * t);
}

void TEClusterDiagramRender::DrawMarker(QPainter* painter, const QPointF& centre, int count, double cellSize,
                                        bool label, const TEDrawContext& context) const
{
    const int sizeClass = SizeClass(count);
    double diameter = cellSize * std::min(0.85, 0.3 + 0.1 * sizeClass);
    const QString text = QString::number(count);
    QFont font = painter->font();
    if (label) {
        font.setPixelSize(std::max(1, int(std::lround(context.ToPixels(7.5, TEStyle::Point)))));
        font.setBold(true);
        diameter = std::max(diameter, QFontMetricsF(font).horizontalAdvance(text) + 8.0);
    }
    const QColor fill = SizeClassColor(sizeClass);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, true);
    QColor halo = fill;
    halo.setAlpha(90);
    painter->setPen(Qt::NoPen);
    painter->setBrush(halo);
    painter->drawEllipse(centre, diameter / 2.0 + 3.0, diameter / 2.0 + 3.0);
    painter->setBrush(fill);
    painter->setPen(QPen(fill.darker(140), 1.0));
    painter->drawEllipse(centre, diameter / 2.0, diameter / 2.0);
    if (label) {
        // Plain text in black or white, whichever stands out on the fill
        // (a glyph-cached call; outlined text costs far more per marker).
        painter->setFont(font);
        painter->setPen(qGray(fill.rgb()) > 140 ? QColor(20, 20, 20) : QColor(Qt::white));
        painter->drawText(QRectF(centre.x() - diameter, centre.y() - diameter, 2 * diameter, 2 * diameter),
                          Qt::AlignCenter, text);
    }
    painter->restore();
}

std::vector<TEClusterDiagramRender::Cluster> TEClusterDiagramRender::GroupPoints(
    const std::vector<QPointF>& devicePoints, double cellSize, const QRectF& view, const QPointF& gridOrigin)
{
    std::vector<Cluster> clusters;
    if (!(cellSize > 0.0))
        return clusters;
    const ScreenGrid grid(view, cellSize, gridOrigin);
    std::vector<int> counts(std::size_t(grid.size()), 0);
    std::vector<QPointF> sums(std::size_t(grid.size()));
    for (const QPointF& point : devicePoints) {
        const int cell = grid.index(point);
        if (cell < 0)
            continue;
        ++counts[std::size_t(cell)];
        sums[std::size_t(cell)] += point;
    }
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] > 0)
            clusters.push_back({sums[i] / counts[i], counts[i]});
    }
    return clusters;
}

bool TEClusterDiagramRender::DrawClusters(QPainter* painter, const std::vector<Cluster>& clusters,
                                          const TEDrawContext& context) const
{
    const double cell = CellSize(context);
    for (const Cluster& cluster : clusters) {
        if (context.IsCancelled())
            return false;
        if (cluster.count > 1)
            DrawMarker(painter, cluster.centre, cluster.count, cell, true, context);
    }
    return !context.IsCancelled();
}

bool TEClusterDiagramRender::DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const
{
    if (!painter || !cursor)
        return !context.IsCancelled();
    const double cell = CellSize(context);
    const QRectF view = context.mapToDevice.mapRect(context.mapExtent);
    const ScreenGrid grid(view, cell, context.mapToDevice.map(QPointF(0.0, 0.0)));
    std::vector<int> counts(std::size_t(grid.size()), 0);
    std::vector<QPointF> sums(std::size_t(grid.size()));
    // The first feature of each cell, kept until a second one joins it: the
    // lone points are drawn in the background symbology.
    std::vector<TERefPtr<TEFeature>> lone(std::size_t(grid.size()));
    const TERefPtr<TEFields> fields = cursor->GetFields();
    int sinceCheck = 0;
    while (OGRFeatureH handle = cursor->NextOgrFeature()) {
        if (++sinceCheck == CancelCheckInterval) {
            sinceCheck = 0;
            if (context.IsCancelled()) {
                OGR_F_Destroy(handle);
                return false;
            }
        }
        QPointF map;
        const int index = pointOf(OGR_F_GetGeometryRef(handle), map) ? grid.index(context.mapToDevice.map(map)) : -1;
        if (index < 0) {
            OGR_F_Destroy(handle);
            continue;
        }
        const std::size_t i = std::size_t(index);
        const int count = ++counts[i];
        sums[i] += context.mapToDevice.map(map);
        if (count == 1) {
            lone[i] = MakeRef<TEFeature>(handle, fields);
            continue;
        }
        if (count == 2)
            lone[i].reset();
        OGR_F_Destroy(handle);
    }
    if (context.IsCancelled())
        return false;

    const TERefPtr<TEFeatureRender> background = GetBackgroundRender();
    std::vector<Cluster> clusters;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] > 1) {
            clusters.push_back({sums[i] / counts[i], counts[i]});
            continue;
        }
        if (counts[i] == 0 || !lone[i])
            continue;
        TEFeature* feature = lone[i].get();
        if (!background) {
            DrawMarker(painter, sums[i], 1, cell, false, context);
            continue;
        }
        const TERefPtr<TEStyle> style = background->GetStyleByFeature(feature, context.scale);
        const TERefPtr<TEGeometry> geometry = feature->GetGeometry();
        if (style && geometry)
            style->Draw(painter, geometry->GetHandle(), context.mapToDevice, background->GetRotationAngle(feature));
    }
    lone.clear();
    return DrawClusters(painter, clusters, context);
}

void TEClusterDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("colorRamp")] = TEFileFunc::SaveColorRamp(mColorRamp.get());
    json[QStringLiteral("makerSize")] = mMakerSize;
}

bool TEClusterDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mMakerSize = json.value(QStringLiteral("makerSize")).toDouble(4.0);
    const bool ok = TEFileFunc::OpenColorRamp(json.value(QStringLiteral("colorRamp")), mColorRamp, error);
    return TEDiagramRender::open(json, error) && ok;
}

} // namespace TZObjects
