// Times the whole-layer drawings on generated data, each against a reference
// measured in the same run:
//  - reading 1,000,000 points through our cursor into device positions,
//    against OGR's own geometry-only read of the same file;
//  - the heat map surface of those points into 1920 x 1080, against stamping
//    a kernel per point at the same radius;
//  - clustering the same points and drawing the markers;
//  - dot density of 3,000 polygons holding 1,000,000 dots in total.
//
// Usage: bench_heatmap [folder]   (default: <temp>/tzrender-bench-heatmap;
// the GeoPackage is made once and reused by later runs)

#include "BenchSupport.h"

#include "data/TEFeatureCursor.h"
#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TEDrawContext.h"
#include "renders/TEHeatMapperRender.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <gdal.h>
#include <ogr_api.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

using namespace TZObjects;

namespace {

using BenchSupport::threadMs;

constexpr int kPointCount = 1000000;
constexpr int kPolygonCount = 3000;
constexpr int kRepeats = 5;
const QSize kView(1920, 1080);

// Median of kRepeats runs after a warm-up (thread CPU time).
double medianMs(const std::function<void()>& run)
{
    run();
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) {
        const double start = threadMs();
        run();
        times.push_back(threadMs() - start);
    }
    std::sort(times.begin(), times.end());
    return times[kRepeats / 2];
}

// The view showing extent in kView pixels (north up, whole extent inside).
TEDrawContext viewOf(const QRectF& extent)
{
    const double unitsPerPixel = std::max(extent.width() / kView.width(), extent.height() / kView.height());
    const QPointF centre = extent.center();
    TEDrawContext context;
    context.mapExtent = QRectF(centre.x() - unitsPerPixel * kView.width() / 2.0,
                               centre.y() - unitsPerPixel * kView.height() / 2.0, unitsPerPixel * kView.width(),
                               unitsPerPixel * kView.height());
    context.mapToDevice = QTransform::fromTranslate(-context.mapExtent.left(), -context.mapExtent.bottom())
        * QTransform::fromScale(1.0 / unitsPerPixel, -1.0 / unitsPerPixel);
    return context;
}

// Stamps a quartic kernel of the radius around every point into a grid,
// then colours it: the way a heat map is drawn without binning.
void stampKernels(const std::vector<QPointF>& points, double radius, const TEHeatMapperRender& render, QImage& image)
{
    const int r = int(std::ceil(radius));
    std::vector<float> kernel(std::size_t((2 * r + 1) * (2 * r + 1)));
    for (int dy = -r; dy <= r; ++dy) {
        for (int dx = -r; dx <= r; ++dx) {
            const double d2 = (dx * dx + dy * dy) / (radius * radius);
            kernel[std::size_t((dy + r) * (2 * r + 1) + dx + r)] = d2 < 1.0 ? float((1 - d2) * (1 - d2)) : 0.0f;
        }
    }
    const int w = image.width(), h = image.height();
    std::vector<float> grid(std::size_t(w) * std::size_t(h), 0.0f);
    for (const QPointF& p : points) {
        const int cx = int(p.x()), cy = int(p.y());
        for (int dy = -r; dy <= r; ++dy) {
            const int y = cy + dy;
            if (y < 0 || y >= h)
                continue;
            const float* k = kernel.data() + std::size_t((dy + r) * (2 * r + 1));
            float* row = grid.data() + std::size_t(y) * std::size_t(w);
            for (int dx = -r; dx <= r; ++dx) {
                const int x = cx + dx;
                if (x >= 0 && x < w)
                    row[x] += k[dx + r];
            }
        }
    }
    const float maximum = std::max(1.0f, *std::max_element(grid.begin(), grid.end()));
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < w; ++x)
            line[x] = render.DensityColor(grid[std::size_t(y) * std::size_t(w) + std::size_t(x)] / maximum).rgba();
    }
}

void report(const char* what, double ours, const char* referenceName, double reference, const char* target)
{
    std::printf("  %-34s %8.1f ms   vs %-28s %9.1f ms   ratio %6.2fx   %s\n", what, ours, referenceName, reference,
                ours / reference, target);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-heatmap"));
    const QString path = BenchSupport::ensurePointGeoPackage(folder, QStringLiteral("points-1m.gpkg"), kPointCount,
                                                             {{"n", OFTInteger}}, 4242,
                                                             [](OGRFeatureH feature, int, unsigned state) {
                                                                 OGR_F_SetFieldInteger(feature, 0, int(state % 1000));
                                                             });
    if (path.isEmpty())
        return 1;
    QString error;
    TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
    QRectF extent;
    if (!layer || !layer->GetExtent(extent)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    const TEDrawContext context = viewOf(extent);
    std::printf("bench_heatmap: %d points into %d x %d, medians of %d runs (thread CPU time)\n", kPointCount, kView.width(),
                kView.height(), kRepeats);

    // Reading: our cursor as tzmap opens it, against OGR reading geometry only.
    std::vector<QPointF> points;
    const double ourRead = medianMs([&] {
        points.clear();
        TEQueryFilter filter;
        filter.SetGeometryNeeded(true);
        filter.SetSpatialRect(context.mapExtent);
        filter.SetSubFields({TEString(L"FID")});
        TERefPtr<TEFeatureCursor> cursor = layer->Search(filter);
        TEHeatMapperRender::ReadDevicePoints(cursor.get(), context, points);
    });
    size_t ogrPoints = 0;
    bool withRect = false;
    const auto ogrReadOnce = [&] {
        GDALDatasetH dataset = GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr,
                                          nullptr, nullptr);
        OGRLayerH ogrLayer = GDALDatasetGetLayer(dataset, 0);
        const char* ignored[] = {"n", "OGR_STYLE", nullptr};
        OGR_L_SetIgnoredFields(ogrLayer, ignored);
        if (withRect) {
            const QRectF& r = context.mapExtent;
            OGR_L_SetSpatialFilterRect(ogrLayer, r.left(), r.top(), r.right(), r.bottom());
        }
        ogrPoints = 0;
        double checksum = 0.0;
        while (OGRFeatureH feature = OGR_L_GetNextFeature(ogrLayer)) {
            OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
            checksum += OGR_G_GetX(geometry, 0) + OGR_G_GetY(geometry, 0);
            ++ogrPoints;
            OGR_F_Destroy(feature);
        }
        GDALClose(dataset);
        if (checksum == 0.123)
            std::printf(" ");
    };
    const double ogrRead = medianMs(ogrReadOnce);
    withRect = true;
    const double ogrRectRead = medianMs(ogrReadOnce);
    std::printf("  read %zu points (OGR read %zu)\n", points.size(), ogrPoints);
    report("read points (cursor -> device)", ourRead, "OGR geometry-only, no filter", ogrRead, "target <= 1.5x");
    report("read points (cursor -> device)", ourRead, "OGR geometry-only, view rect", ogrRectRead, "target <= 1.5x");

    // Heat map: binned grid and box passes against a kernel per point.
    TEHeatMapperRender heat;
    heat.SetRadius(5.0); // millimetres, about 19 pixels at 96 DPI
    const double radius = heat.RadiusInPixels(context);
    QImage image(kView, QImage::Format_ARGB32_Premultiplied);
    const double heatMs = medianMs([&] {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        heat.DrawPoints(&painter, points, context);
    });
    const double stampStart = threadMs();
    QImage stamped(kView, QImage::Format_ARGB32);
    stampKernels(points, radius, heat, stamped);
    const double stampMs = threadMs() - stampStart;
    report("heat map surface (r = 5 mm)", heatMs, "kernel stamped per point", stampMs, "target < 50 ms, > 20x faster");
    std::printf("    speed-up over stamping: %.0fx\n", stampMs / heatMs);

    // Clusters: grouping on the screen grid and drawing the markers.
    TEClusterDiagramRender cluster;
    cluster.setMakerSize(80.0);
    size_t groups = 0;
    const double clusterMs = medianMs([&] {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        const auto clusters = TEClusterDiagramRender::GroupPoints(points, cluster.CellSize(context),
                                                                  QRectF(QPointF(0, 0), QSizeF(kView)),
                                                                  context.mapToDevice.map(QPointF(0, 0)));
        groups = clusters.size();
        cluster.DrawClusters(&painter, clusters, context);
    });
    std::printf("  %-34s %8.1f ms   (%zu clusters)   target < 50 ms\n", "cluster grouping and markers", clusterMs, groups);
    const double groupingMs = medianMs([&] {
        groups = TEClusterDiagramRender::GroupPoints(points, cluster.CellSize(context), QRectF(QPointF(0, 0), QSizeF(kView)),
                                                     context.mapToDevice.map(QPointF(0, 0)))
                     .size();
    });
    std::printf("  %-34s %8.1f ms\n", "  of which grouping", groupingMs);

    // Dot density: 3,000 irregular 12-sided polygons tiling the view, values
    // summing to about 1,000,000 dots.
    std::mt19937 random(99);
    std::vector<OGRGeometryH> polygons;
    std::vector<double> values;
    const int cols = 60, rows = kPolygonCount / cols;
    const double cellW = context.mapExtent.width() / cols, cellH = context.mapExtent.height() / rows;
    std::uniform_real_distribution<double> wobble(0.7, 1.0), share(0.5, 1.5);
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < cols; ++i) {
            const QPointF centre(context.mapExtent.left() + (i + 0.5) * cellW, context.mapExtent.top() + (j + 0.5) * cellH);
            OGRGeometryH ring = OGR_G_CreateGeometry(wkbLinearRing);
            for (int k = 0; k <= 12; ++k) {
                const double angle = 2 * M_PI * (k % 12) / 12.0;
                const double f = k == 12 ? 1.0 : wobble(random);
                OGR_G_AddPoint_2D(ring, centre.x() + std::cos(angle) * cellW / 2 * (k == 12 ? 1.0 : f),
                                  centre.y() + std::sin(angle) * cellH / 2 * (k == 12 ? 1.0 : f));
            }
            OGR_G_SetPoint_2D(ring, 12, OGR_G_GetX(ring, 0), OGR_G_GetY(ring, 0));
            OGRGeometryH polygon = OGR_G_CreateGeometry(wkbPolygon);
            OGR_G_AddGeometryDirectly(polygon, ring);
            polygons.push_back(polygon);
            values.push_back(std::round(share(random) * kPointCount / kPolygonCount));
        }
    }
    TEDotDensityDiagramRender dots;
    dots.setNumberPerDot(1);
    dots.setTimestamp(1);
    dots.setDotColor(TEColor(20, 20, 120));
    size_t dotCount = 0;
    const double dotsMs = medianMs([&] {
        image.fill(Qt::white);
        QPainter painter(&image);
        dotCount = 0;
        std::vector<QPointF> all;
        for (std::size_t i = 0; i < polygons.size(); ++i) {
            const std::vector<QPointF> placed = dots.PlaceDots(polygons[i], values[i], (long long)i, context);
            all.insert(all.end(), placed.begin(), placed.end());
        }
        dotCount = all.size();
        dots.DrawDots(&painter, all, context);
    });
    std::printf("  %-34s %8.1f ms   (%zu dots in %d polygons)   target < 1000 ms\n", "dot density placing and drawing",
                dotsMs, dotCount, kPolygonCount);
    for (OGRGeometryH polygon : polygons)
        OGR_G_DestroyGeometry(polygon);
    return 0;
}
