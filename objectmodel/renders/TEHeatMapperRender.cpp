#include "renders/TEHeatMapperRender.h"

#include "data/TEFeatureCursor.h"
#include "renders/TEDrawContext.h"
#include "renders/TEFileFunc.h"

#include <QImage>
#include <QPainter>

#include <ogr_api.h>

#include <algorithm>
#include <cmath>

namespace TZObjects {

TEHeatMapperRender::TEHeatMapperRender(const TEHeatMapperRender& other)
    : TEFeatureRender(other)
    , mRadius(other.mRadius)
    , mRadiusUnitType(other.mRadiusUnitType)
    , mMaximumValue(other.mMaximumValue)
    , mColorRamp(other.mColorRamp ? other.mColorRamp->clone() : TERefPtr<TEColorRamp>())
{
}

TERefPtr<TEFeatureRender> TEHeatMapperRender::Clone() const
{
    return MakeRef<TEHeatMapperRender>(*this);
}

TERefPtr<TEStyle> TEHeatMapperRender::GetStyleByFeature(TEFeature*, const double&, bool) const
{
    return {};
}

namespace {

// Points read between two looks at the cancel flag.
constexpr int CancelCheckInterval = 1 << 14;
// Box passes each way; three make a smooth bell with a finite reach.
constexpr int BoxPasses = 3;
// Densities below this share of the maximum fade in from transparent.
constexpr double FadeInShare = 0.25;
// Share of the covered cells whose densities lie at or below an automatic
// maximum.
constexpr double AutomaticPercentile = 0.99;

// One box pass along a line of n values (stride apart): each value becomes
// the sum of the values within half cells of it. Values are whole counts
// in doubles, so the running sum stays exact and zero stays zero.
void boxLine(double* line, int n, std::ptrdiff_t stride, int half, std::vector<double>& scratch)
{
    scratch.resize(std::size_t(n));
    for (int i = 0; i < n; ++i)
        scratch[std::size_t(i)] = line[i * stride];
    double sum = 0.0;
    for (int i = 0; i <= half && i < n; ++i)
        sum += scratch[std::size_t(i)];
    for (int i = 0; i < n; ++i) {
        line[i * stride] = sum;
        const int enter = i + half + 1;
        const int leave = i - half;
        if (enter < n)
            sum += scratch[std::size_t(enter)];
        if (leave >= 0)
            sum -= scratch[std::size_t(leave)];
    }
}

// The vertical passes run over whole rows at once (a running sum of rows),
// which keeps the memory access sequential.
void boxColumns(std::vector<double>& grid, int cols, int rows, int half)
{
    std::vector<double> source(grid);
    std::vector<double> sum(std::size_t(cols), 0.0);
    auto addRow = [&](int row, double sign) {
        const double* values = source.data() + std::ptrdiff_t(row) * cols;
        for (int x = 0; x < cols; ++x)
            sum[std::size_t(x)] += sign * values[x];
    };
    for (int y = 0; y <= half && y < rows; ++y)
        addRow(y, 1.0);
    for (int y = 0; y < rows; ++y) {
        std::copy(sum.begin(), sum.end(), grid.begin() + std::ptrdiff_t(y) * cols);
        if (y + half + 1 < rows)
            addRow(y + half + 1, 1.0);
        if (y - half >= 0)
            addRow(y - half, -1.0);
    }
}

// The peak of one point after the passes along one axis.
double impulsePeak(int half)
{
    const int n = 2 * BoxPasses * half + 1;
    std::vector<double> line(std::size_t(n), 0.0), scratch;
    line[std::size_t(n / 2)] = 1.0;
    for (int pass = 0; pass < BoxPasses; ++pass)
        boxLine(line.data(), n, 1, half, scratch);
    return line[std::size_t(n / 2)];
}

} // namespace

double TEHeatMapperRender::RadiusInPixels(const TEDrawContext& context) const
{
    if (mRadiusUnitType >= 0 && mRadiusUnitType <= 4)
        return context.ToPixels(mRadius, mRadiusUnitType);
    // Map units: scaled by the size of a map unit on the device.
    return mRadius * std::sqrt(std::abs(context.mapToDevice.determinant()));
}

double TEHeatMapperRender::DrawLayerMargin(const TEDrawContext& context) const
{
    const double radius = RadiusInPixels(context);
    return std::isfinite(radius) && radius > 0.0 ? radius : 0.0;
}

QColor TEHeatMapperRender::DensityColor(double t) const
{
    if (!(t > 0.0))
        return QColor(0, 0, 0, 0);
    t = std::min(t, 1.0);
    QColor color;
    if (mColorRamp && mColorRamp->isValid()) {
        color = mColorRamp->colorAt(t).toQColor();
    } else {
        // Blue through cyan, green and yellow to red.
        static const QColor stops[] = {QColor(43, 131, 186), QColor(171, 221, 164), QColor(255, 255, 191),
                                       QColor(253, 174, 97), QColor(215, 25, 28)};
        const double position = t * 4.0;
        const int i = std::min(3, int(position));
        const double f = position - i;
        color = QColor::fromRgbF(stops[i].redF() + (stops[i + 1].redF() - stops[i].redF()) * f,
                                 stops[i].greenF() + (stops[i + 1].greenF() - stops[i].greenF()) * f,
                                 stops[i].blueF() + (stops[i + 1].blueF() - stops[i].blueF()) * f);
    }
    color.setAlphaF(std::min(1.0, t / FadeInShare));
    return color;
}

bool TEHeatMapperRender::ReadDevicePoints(TEFeatureCursor* cursor, const TEDrawContext& context,
                                          std::vector<QPointF>& devicePoints)
{
    if (!cursor)
        return !context.IsCancelled();
    const QTransform& toDevice = context.mapToDevice;
    int sinceCheck = 0;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        if (++sinceCheck == CancelCheckInterval) {
            sinceCheck = 0;
            if (context.IsCancelled()) {
                OGR_F_Destroy(feature);
                return false;
            }
        }
        OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
        if (geometry) {
            const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
            if (type == wkbPoint) {
                if (!OGR_G_IsEmpty(geometry))
                    devicePoints.push_back(toDevice.map(QPointF(OGR_G_GetX(geometry, 0), OGR_G_GetY(geometry, 0))));
            } else if (type == wkbMultiPoint) {
                for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i) {
                    OGRGeometryH part = OGR_G_GetGeometryRef(geometry, i);
                    if (part && !OGR_G_IsEmpty(part))
                        devicePoints.push_back(toDevice.map(QPointF(OGR_G_GetX(part, 0), OGR_G_GetY(part, 0))));
                }
            }
        }
        OGR_F_Destroy(feature);
    }
    return !context.IsCancelled();
}

bool TEHeatMapperRender::DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const
{
    std::vector<QPointF> points;
    if (!ReadDevicePoints(cursor, context, points))
        return false;
    return DrawPoints(painter, points, context);
}

bool TEHeatMapperRender::DrawPoints(QPainter* painter, const std::vector<QPointF>& devicePoints,
                                    const TEDrawContext& context) const
{
    if (context.IsCancelled())
        return false;
    const double radius = RadiusInPixels(context);
    const QRectF view = context.mapToDevice.mapRect(context.mapExtent);
    if (!painter || devicePoints.empty() || !std::isfinite(radius) || radius <= 0.0 || view.isEmpty())
        return true;

    // Cells of a seventh of the radius keep about seven cells under it,
    // enough for the box passes to shape a smooth kernel, and bound the
    // grid's size whatever the radius. Scaling the cells up to pixels
    // blurs by one more cell, which the passes leave room for.
    const double cell = std::max(1.0, radius / 7.0);
    const double reachInCells = radius / cell - (cell > 1.0 ? 1.0 : 0.0);
    const int half = std::max(1, int(std::lround(reachInCells / BoxPasses)));
    const int pad = BoxPasses * half + 1;
    const double maxCells = 8.0e6;
    const double wantCols = std::ceil(view.width() / cell) + 2.0 * pad;
    const double wantRows = std::ceil(view.height() / cell) + 2.0 * pad;
    if (wantCols * wantRows > maxCells)
        return true; // a radius so small against so large a view shows nothing
    const int cols = int(wantCols);
    const int rows = int(wantRows);
    std::vector<double> grid(std::size_t(cols) * std::size_t(rows), 0.0);

    const double originX = view.left() - pad * cell;
    const double originY = view.top() - pad * cell;
    std::size_t sinceCheck = 0;
    for (const QPointF& point : devicePoints) {
        if (++sinceCheck == CancelCheckInterval) {
            sinceCheck = 0;
            if (context.IsCancelled())
                return false;
        }
        const double fx = (point.x() - originX) / cell;
        const double fy = (point.y() - originY) / cell;
        if (!(fx >= 0.0 && fy >= 0.0 && fx < cols && fy < rows))
            continue;
        grid[std::size_t(int(fy)) * std::size_t(cols) + std::size_t(int(fx))] += 1.0;
    }

    std::vector<double> scratch;
    for (int pass = 0; pass < BoxPasses; ++pass) {
        for (int y = 0; y < rows; ++y)
            boxLine(grid.data() + std::ptrdiff_t(y) * cols, cols, 1, half, scratch);
        if (context.IsCancelled())
            return false;
    }
    for (int pass = 0; pass < BoxPasses; ++pass) {
        boxColumns(grid, cols, rows, half);
        if (context.IsCancelled())
            return false;
    }

    // Densities in points: one isolated point peaks at 1.
    const double peak = impulsePeak(half);
    const double unit = peak * peak;
    double maximum = mMaximumValue;
    if (!(maximum > 0.0)) {
        std::vector<double> covered;
        covered.reserve(grid.size() / 4);
        for (double value : grid) {
            if (value > 0.0)
                covered.push_back(value);
        }
        if (covered.empty())
            return true;
        const std::size_t rank = std::min(covered.size() - 1, std::size_t(AutomaticPercentile * double(covered.size())));
        std::nth_element(covered.begin(), covered.begin() + std::ptrdiff_t(rank), covered.end());
        maximum = covered[rank] / unit;
    }
    const double scaleToRamp = 1.0 / (maximum * unit);

    // A table of the ramp's colours, premultiplied.
    constexpr int Shades = 256;
    QRgb table[Shades + 1];
    table[0] = 0;
    for (int i = 1; i <= Shades; ++i)
        table[i] = DensityColor(double(i) / Shades).rgba();
    QImage image(cols, rows, QImage::Format_ARGB32);
    for (int y = 0; y < rows; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double* values = grid.data() + std::ptrdiff_t(y) * cols;
        for (int x = 0; x < cols; ++x) {
            const double t = values[x] * scaleToRamp;
            line[x] = values[x] > 0.0 ? table[std::max(1, std::min(Shades, int(std::ceil(t * Shades))))] : 0u;
        }
    }
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform, cell > 1.0);
    painter->drawImage(QRectF(originX, originY, cols * cell, rows * cell), image);
    painter->restore();
    return !context.IsCancelled();
}

void TEHeatMapperRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("radius")] = mRadius;
    json[QStringLiteral("radiusUnit")] = mRadiusUnitType;
    json[QStringLiteral("maximumValue")] = mMaximumValue;
    json[QStringLiteral("colorRamp")] = TEFileFunc::SaveColorRamp(mColorRamp.get());
}

bool TEHeatMapperRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    mRadius = json.value(QStringLiteral("radius")).toDouble(10.0);
    mRadiusUnitType = json.value(QStringLiteral("radiusUnit")).toInt(1);
    mMaximumValue = json.value(QStringLiteral("maximumValue")).toDouble(0.0);
    return TEFileFunc::OpenColorRamp(json.value(QStringLiteral("colorRamp")), mColorRamp, error);
}

} // namespace TZObjects
