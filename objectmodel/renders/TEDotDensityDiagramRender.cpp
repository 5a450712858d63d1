#include "renders/TEDotDensityDiagramRender.h"

#include "data/TEFeature.h"
#include "data/TEFeatureCursor.h"
#include "renders/TEDrawContext.h"
#include "renders/TEFileFunc.h"

#include <QImage>
#include <QPainter>

#include <ogr_api.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace TZObjects {

TERefPtr<TEFeatureRender> TEDotDensityDiagramRender::Clone() const
{
    return MakeRef<TEDotDensityDiagramRender>(*this);
}

std::vector<TEString> TEDotDensityDiagramRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = TEDiagramRender::GetUsedAttributes();
    AddUsedAttribute(fields, mFieldName);
    return fields;
}

namespace {

// Attempts per dot before a polygon that fills little of its bounding box
// gives up.
constexpr int AttemptsPerDot = 40;
// Dots a polygon gets at the most whatever its size on the screen.
constexpr int FewDots = 3;

// A small, fast generator with a well-mixed output (splitmix64), the same
// on every platform so that dots stay where they were.
class DotRandom
{
public:
    explicit DotRandom(std::uint64_t seed) : mState(seed) {}
    std::uint64_t next()
    {
        std::uint64_t z = (mState += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // Uniform in [0, 1).
    double uniform() { return double(next() >> 11) * (1.0 / 9007199254740992.0); }

private:
    std::uint64_t mState;
};

// A polygon's edges sorted into horizontal bands, so that a point-in-polygon
// test looks only at the edges of its band (even-odd rule over every ring
// of every part).
class PreparedPolygon
{
public:
    explicit PreparedPolygon(OGRGeometryH geometry)
    {
        addGeometry(geometry);
        if (mEdges.empty())
            return;
        mBottom = std::numeric_limits<double>::max();
        double top = std::numeric_limits<double>::lowest();
        for (const Edge& edge : mEdges) {
            mBottom = std::min(mBottom, std::min(edge.y1, edge.y2));
            top = std::max(top, std::max(edge.y1, edge.y2));
        }
        const int bands = int(std::max<std::size_t>(1, std::min<std::size_t>(4096, mEdges.size() / 2)));
        mBandHeight = (top - mBottom) / bands;
        if (!(mBandHeight > 0.0))
            return;
        mBands.resize(std::size_t(bands));
        for (std::size_t i = 0; i < mEdges.size(); ++i) {
            const Edge& edge = mEdges[i];
            const int first = band(std::min(edge.y1, edge.y2));
            const int last = band(std::max(edge.y1, edge.y2));
            for (int b = first; b <= last; ++b)
                mBands[std::size_t(b)].push_back(int(i));
        }
    }

    bool contains(double x, double y) const
    {
        if (mBands.empty())
            return false;
        bool inside = false;
        for (int i : mBands[std::size_t(band(y))]) {
            const Edge& edge = mEdges[std::size_t(i)];
            if ((edge.y1 > y) != (edge.y2 > y)
                && x < edge.x1 + (y - edge.y1) * (edge.x2 - edge.x1) / (edge.y2 - edge.y1))
                inside = !inside;
        }
        return inside;
    }

private:
    struct Edge
    {
        double x1, y1, x2, y2;
    };

    int band(double y) const
    {
        const int b = int((y - mBottom) / mBandHeight);
        return std::max(0, std::min(int(mBands.size()) - 1, b));
    }

    void addGeometry(OGRGeometryH geometry)
    {
        if (!geometry)
            return;
        const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
        if (type == wkbLineString || type == wkbLinearRing) {
            const int count = OGR_G_GetPointCount(geometry);
            for (int i = 1; i < count; ++i)
                addEdge(OGR_G_GetX(geometry, i - 1), OGR_G_GetY(geometry, i - 1), OGR_G_GetX(geometry, i),
                        OGR_G_GetY(geometry, i));
            if (count > 2) // close a ring left open
                addEdge(OGR_G_GetX(geometry, count - 1), OGR_G_GetY(geometry, count - 1), OGR_G_GetX(geometry, 0),
                        OGR_G_GetY(geometry, 0));
            return;
        }
        if (type == wkbPolygon || type == wkbMultiPolygon || type == wkbGeometryCollection) {
            for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i)
                addGeometry(OGR_G_GetGeometryRef(geometry, i));
        }
    }

    void addEdge(double x1, double y1, double x2, double y2)
    {
        if (y1 != y2)
            mEdges.push_back({x1, y1, x2, y2});
    }

    std::vector<Edge> mEdges;
    std::vector<std::vector<int>> mBands;
    double mBottom = 0.0;
    double mBandHeight = 0.0;
};

} // namespace

int TEDotDensityDiagramRender::DotCount(double value) const
{
    if (!std::isfinite(value) || value <= 0.0 || mNumberPerDot <= 0)
        return 0;
    return int(std::min(value / mNumberPerDot, double(std::numeric_limits<int>::max())));
}

double TEDotDensityDiagramRender::DotSize(const TEDrawContext& context)
{
    return std::max(1.0, std::round(context.ToPixels(1.5, TEStyle::Point)));
}

std::vector<QPointF> TEDotDensityDiagramRender::PlaceDots(OGRGeometryH geometry, double value, long long featureId,
                                                         const TEDrawContext& context) const
{
    std::vector<QPointF> dots;
    int wanted = DotCount(value);
    if (!geometry || wanted <= 0 || OGR_G_IsEmpty(geometry))
        return dots;
    OGRGeometryH linear = nullptr;
    if (OGR_GT_IsNonLinear(wkbFlatten(OGR_G_GetGeometryType(geometry))))
        geometry = linear = OGR_G_GetLinearGeometry(geometry, 0.0, nullptr);
    OGREnvelope envelope;
    OGR_G_GetEnvelope(geometry, &envelope);
    const PreparedPolygon polygon(geometry);

    // No more dots than pixels under the bounding box, and a few at most for
    // a polygon smaller than a pixel.
    const QRectF box(QPointF(envelope.MinX, envelope.MinY), QPointF(envelope.MaxX, envelope.MaxY));
    const QRectF deviceBox = context.mapToDevice.mapRect(box);
    const double pixels = deviceBox.width() * deviceBox.height();
    wanted = int(std::min<double>(wanted, std::max<double>(FewDots, pixels)));

    const std::uint64_t seed = (std::uint64_t(mTimestamp) << 32) ^ (std::uint64_t(featureId) * 0x2545F4914F6CDD1Dull);
    DotRandom random(seed);
    dots.reserve(std::size_t(wanted));
    const double width = envelope.MaxX - envelope.MinX;
    const double height = envelope.MaxY - envelope.MinY;
    const long long attempts = (long long)wanted * AttemptsPerDot + 100;
    for (long long attempt = 0; attempt < attempts && int(dots.size()) < wanted; ++attempt) {
        const double x = envelope.MinX + random.uniform() * width;
        const double y = envelope.MinY + random.uniform() * height;
        if (polygon.contains(x, y))
            dots.emplace_back(x, y);
    }
    if (linear)
        OGR_G_DestroyGeometry(linear);
    return dots;
}

namespace {

// The dots of a whole drawing, plotted straight into an image of the view
// and composed onto the painter at once: far cheaper than a painter call
// per dot.
class DotCanvas
{
public:
    DotCanvas(const TEDrawContext& context, const TEColor& color)
        : mToDevice(context.mapToDevice)
        , mView(context.mapToDevice.mapRect(context.mapExtent).toAlignedRect())
        , mSize(int(TEDotDensityDiagramRender::DotSize(context)))
        , mColor(qPremultiply(qRgba(color.getR(), color.getG(), color.getB(), color.getA())))
    {
        if (!mView.isEmpty() && double(mView.width()) * mView.height() < 1.0e8) {
            mImage = QImage(mView.size(), QImage::Format_ARGB32_Premultiplied);
            mImage.fill(Qt::transparent);
        }
    }

    void plot(const QPointF& mapDot)
    {
        if (mImage.isNull())
            return;
        const QPointF device = mToDevice.map(mapDot);
        // The dot's square centred on the point, clipped to the view.
        const int left = int(std::floor(device.x() - mSize / 2.0)) - mView.left();
        const int top = int(std::floor(device.y() - mSize / 2.0)) - mView.top();
        const int x0 = std::max(0, left), x1 = std::min(mImage.width(), left + mSize);
        const int y0 = std::max(0, top), y1 = std::min(mImage.height(), top + mSize);
        for (int y = y0; y < y1; ++y) {
            auto* line = reinterpret_cast<QRgb*>(mImage.scanLine(y));
            for (int x = x0; x < x1; ++x)
                line[x] = mColor;
        }
        mPlotted = true;
    }

    void drawOn(QPainter* painter) const
    {
        if (mPlotted)
            painter->drawImage(mView.topLeft(), mImage);
    }

private:
    QTransform mToDevice;
    QRect mView;
    int mSize;
    QRgb mColor;
    QImage mImage;
    bool mPlotted = false;
};

} // namespace

void TEDotDensityDiagramRender::DrawDots(QPainter* painter, const std::vector<QPointF>& mapDots,
                                         const TEDrawContext& context) const
{
    if (!painter || mapDots.empty())
        return;
    DotCanvas canvas(context, mDotColor);
    for (const QPointF& dot : mapDots)
        canvas.plot(dot);
    canvas.drawOn(painter);
}

bool TEDotDensityDiagramRender::DrawLayer(QPainter* painter, TEFeatureCursor* cursor, const TEDrawContext& context) const
{
    if (!painter || !cursor)
        return !context.IsCancelled();
    DotCanvas canvas(context, mDotColor);
    while (TERefPtr<TEFeature> feature = cursor->NextFeature()) {
        if (context.IsCancelled())
            return false;
        const TERefPtr<TEGeometry> geometry = feature->GetGeometry();
        if (!geometry)
            continue;
        const double value = mFieldName.IsEmpty() ? 0.0 : feature->GetValue(mFieldName).GetDouble();
        for (const QPointF& dot : PlaceDots(geometry->GetHandle(), value, feature->GetId(), context))
            canvas.plot(dot);
    }
    if (context.IsCancelled())
        return false;
    canvas.drawOn(painter);
    return true;
}

void TEDotDensityDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("dotColor")] = TEFileFunc::SaveColor(mDotColor);
    json[QStringLiteral("timestamp")] = double(mTimestamp);
    json[QStringLiteral("fieldName")] = mFieldName.toQString();
    json[QStringLiteral("numberPerDot")] = mNumberPerDot;
}

bool TEDotDensityDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mDotColor = TEFileFunc::OpenColor(json.value(QStringLiteral("dotColor")), TEColor(0, 0, 0));
    mTimestamp = static_cast<unsigned int>(json.value(QStringLiteral("timestamp")).toDouble(0.0));
    mFieldName = TEString(json.value(QStringLiteral("fieldName")).toString());
    mNumberPerDot = json.value(QStringLiteral("numberPerDot")).toInt(1);
    return TEDiagramRender::open(json, error);
}

} // namespace TZObjects
