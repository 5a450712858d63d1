// Times the four-colour job on Voronoi tessellations of 3,000 and 100,000
// polygons in a GeoPackage: reading, adjacency, colouring and the total,
// with the adjacency as a ratio to a plain GEOS STRtree query with prepared
// intersects over the same polygons, run in this process. Peak memory per
// polygon shows whether it stays linear in the polygon count.
//
// Usage: bench_four_color [folder]   (default: <temp>/tzrender-bench-fourcolor;
// the GeoPackages are made once and reused by later runs)

#include "BenchSupport.h"

#include "TZFourColorJob.h"

#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "data/TEGeosContext.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gdal.h>
#include <geos_c.h>
#include <ogr_api.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

using namespace TZObjects;

namespace {

using BenchSupport::median;

constexpr int kRepeats = 3;
constexpr double kCellSize = 10.0;  // map units per average cell side

// count Voronoi cells of random points in a square sized for about
// kCellSize x kCellSize per cell, clipped to the square, in a layer "cells".
bool makeTessellation(const QString& path, int count, unsigned seed)
{
    GEOSContextHandle_t context = TEGeosContext::Current();
    const double side = std::sqrt(double(count)) * kCellSize;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> coordinate(0.0, side);
    std::vector<GEOSGeometry*> points;
    points.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i)
        points.push_back(GEOSGeom_createPointFromXY_r(context, coordinate(random), coordinate(random)));
    GEOSGeometry* sites = GEOSGeom_createCollection_r(context, GEOS_MULTIPOINT, points.data(), unsigned(count));
    GEOSGeometry* frame = GEOSGeom_createRectangle_r(context, 0, 0, side, side);
    const GEOSPreparedGeometry* inside = GEOSPrepare_r(context, frame);
    GEOSGeometry* diagram = GEOSVoronoiDiagram_r(context, sites, frame, 0.0, 0);
    GEOSGeom_destroy_r(context, sites);
    if (!diagram)
        return false;

    GDALDriverH driver = GDALGetDriverByName("GPKG");
    GDALDatasetH dataset = driver ? GDALCreate(driver, path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr) : nullptr;
    OGRLayerH layer = dataset ? GDALDatasetCreateLayer(dataset, "cells", nullptr, wkbPolygon, nullptr) : nullptr;
    bool ok = layer != nullptr;
    if (ok) {
        OGRFieldDefnH field = OGR_Fld_Create("cell", OFTInteger);
        OGR_L_CreateField(layer, field, TRUE);
        OGR_Fld_Destroy(field);
        GDALDatasetStartTransaction(dataset, FALSE);
    }
    GEOSWKBWriter* writer = GEOSWKBWriter_create_r(context);
    const int cells = GEOSGetNumGeometries_r(context, diagram);
    for (int i = 0; ok && i < cells; ++i) {
        const GEOSGeometry* cell = GEOSGetGeometryN_r(context, diagram, i);
        // Only cells reaching past the square need clipping.
        GEOSGeometry* clipped = GEOSPreparedContains_r(context, inside, cell) == 1
            ? GEOSGeom_clone_r(context, cell)
            : GEOSIntersection_r(context, cell, frame);
        if (!clipped || GEOSisEmpty_r(context, clipped)) {
            if (clipped)
                GEOSGeom_destroy_r(context, clipped);
            continue;
        }
        size_t size = 0;
        unsigned char* wkb = GEOSWKBWriter_write_r(context, writer, clipped, &size);
        OGRGeometryH geometry = nullptr;
        OGR_G_CreateFromWkb(wkb, nullptr, &geometry, int(size));
        GEOSFree_r(context, wkb);
        GEOSGeom_destroy_r(context, clipped);
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        OGR_F_SetFieldInteger(feature, 0, i);
        OGR_F_SetGeometryDirectly(feature, geometry);
        ok = OGR_L_CreateFeature(layer, feature) == OGRERR_NONE;
        OGR_F_Destroy(feature);
    }
    GEOSWKBWriter_destroy_r(context, writer);
    GEOSGeom_destroy_r(context, diagram);
    GEOSPreparedGeom_destroy_r(context, inside);
    GEOSGeom_destroy_r(context, frame);
    if (dataset) {
        if (ok)
            ok = GDALDatasetCommitTransaction(dataset) == OGRERR_NONE;
        GDALClose(dataset);
    }
    return ok;
}

QString ensureTessellation(const QString& folder, int count)
{
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(QStringLiteral("voronoi-%1.gpkg").arg(count));
    if (QFile::exists(path))
        return path;
    std::printf("Making %s (%d cells, done once)...\n", qPrintable(path), count);
    std::fflush(stdout);
    if (!makeTessellation(path, count, 20261123u + unsigned(count))) {
        QFile::remove(path);
        std::fprintf(stderr, "Cannot make %s: %s\n", qPrintable(path), CPLGetLastErrorMsg());
        return QString();
    }
    return path;
}

// The layer's polygons as GEOS geometries, for the reference query.
std::vector<GEOSGeometry*> readGeos(GEOSContextHandle_t context, const TEFeatureLayer* layer)
{
    std::vector<GEOSGeometry*> geometries;
    TERefPtr<TEFeatureCursor> cursor = layer->Search(TEQueryFilter());
    GEOSWKBReader* reader = GEOSWKBReader_create_r(context);
    std::vector<unsigned char> wkb;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        OGRGeometryH geometry = OGR_F_GetGeometryRef(feature);
        wkb.resize(std::size_t(OGR_G_WkbSize(geometry)));
        OGR_G_ExportToIsoWkb(geometry, wkbNDR, wkb.data());
        geometries.push_back(GEOSWKBReader_read_r(context, reader, wkb.data(), wkb.size()));
        OGR_F_Destroy(feature);
    }
    GEOSWKBReader_destroy_r(context, reader);
    return geometries;
}

// The plain way to find touching polygons: an STRtree of the polygons, each
// one's envelope queried, and every candidate pair tested once with a
// prepared intersects. Gives the number of pairs found.
std::size_t referenceAdjacency(GEOSContextHandle_t context, const std::vector<GEOSGeometry*>& geometries)
{
    GEOSSTRtree* tree = GEOSSTRtree_create_r(context, 10);
    for (std::size_t i = 0; i < geometries.size(); ++i)
        GEOSSTRtree_insert_r(context, tree, geometries[i], reinterpret_cast<void*>(static_cast<intptr_t>(i)));
    struct Query
    {
        intptr_t self;
        std::vector<intptr_t> found;
    } query;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < geometries.size(); ++i) {
        query.self = intptr_t(i);
        query.found.clear();
        GEOSGeometry* box = GEOSEnvelope_r(context, geometries[i]);
        GEOSSTRtree_query_r(
            context, tree, box,
            [](void* item, void* data) {
                auto* q = static_cast<Query*>(data);
                if (reinterpret_cast<intptr_t>(item) > q->self)
                    q->found.push_back(reinterpret_cast<intptr_t>(item));
            },
            &query);
        GEOSGeom_destroy_r(context, box);
        const GEOSPreparedGeometry* prepared = GEOSPrepare_r(context, geometries[i]);
        for (intptr_t j : query.found)
            pairs += GEOSPreparedIntersects_r(context, prepared, geometries[std::size_t(j)]) == 1;
        GEOSPreparedGeom_destroy_r(context, prepared);
    }
    GEOSSTRtree_destroy_r(context, tree);
    return pairs;
}

// A line of /proc/self/status in kB ("VmRSS", "VmHWM"), 0 when unknown.
long statusKb(const char* key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray prefix = QByteArray(key) + ':';
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

// Starts a new peak: the kernel resets the high-water mark to the current
// resident size.
void resetPeak()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
}

struct Run
{
    double readMs = 0, adjacencyMs = 0, colourMs = 0, totalMs = 0, referenceMs = 0;
    std::size_t pairs = 0, referencePairs = 0;
    int uncoloured = 0;
    TZFourColorJob::Result result = TZFourColorJob::Result::Coloured;
};

Run runOnce(const TEFeatureLayer* layer, const std::vector<GEOSGeometry*>& geometries, int colours)
{
    Run run;
    std::vector<TEColor> palette;
    for (int i = 0; i < colours; ++i)
        palette.emplace_back(60 * i, 200 - 40 * i, 100);
    TZFourColorJob job(palette);
    QElapsedTimer timer;
    timer.start();
    run.result = job.readLayer(layer);
    run.readMs = timer.nsecsElapsed() / 1e6;
    timer.restart();
    if (run.result == TZFourColorJob::Result::Coloured)
        run.result = job.buildGraph();
    run.adjacencyMs = timer.nsecsElapsed() / 1e6;
    timer.restart();
    if (run.result == TZFourColorJob::Result::Coloured)
        run.result = job.colour();
    run.colourMs = timer.nsecsElapsed() / 1e6;
    run.totalMs = run.readMs + run.adjacencyMs + run.colourMs;
    run.pairs = job.pairCount();
    run.uncoloured = int(std::count(job.colors().begin(), job.colors().end(), -1));

    timer.restart();
    run.referencePairs = referenceAdjacency(TEGeosContext::Current(), geometries);
    run.referenceMs = timer.nsecsElapsed() / 1e6;
    return run;
}

const char* resultName(TZFourColorJob::Result result)
{
    switch (result) {
    case TZFourColorJob::Result::Coloured:
        return "coloured";
    case TZFourColorJob::Result::Failed:
        return "failed (too few colours)";
    case TZFourColorJob::Result::Cancelled:
        return "cancelled";
    case TZFourColorJob::Result::ReadError:
        return "read error";
    }
    return "?";
}

// Runs the job kRepeats times with the colour count and prints the medians;
// gives the result of the last run.
TZFourColorJob::Result measure(const TEFeatureLayer* layer, const std::vector<GEOSGeometry*>& geometries, int colours)
{
    resetPeak();
    const long rssBefore = statusKb("VmRSS");
    std::vector<double> read, adjacency, colour, total, reference, ratio;
    Run last;
    for (int r = 0; r < kRepeats; ++r) {
        last = runOnce(layer, geometries, colours);
        read.push_back(last.readMs);
        adjacency.push_back(last.adjacencyMs);
        colour.push_back(last.colourMs);
        total.push_back(last.totalMs);
        reference.push_back(last.referenceMs);
        ratio.push_back(last.adjacencyMs / last.referenceMs);
    }
    const long rssAfter = statusKb("VmHWM");
    const std::size_t count = geometries.size();

    std::printf(" %zu polygons, %d colours (%zu neighbour pairs; the reference found %zu touching pairs): %s, %d uncoloured\n",
                count, colours, last.pairs, last.referencePairs, resultName(last.result), last.uncoloured);
    std::printf("  reading     %9.1f ms\n", median(read));
    std::printf("  adjacency   %9.1f ms   vs STRtree + prepared intersects %9.1f ms   ratio %5.2fx (target <= 1.5x: %s)\n",
                median(adjacency), median(reference), median(ratio), median(ratio) <= 1.5 ? "met" : "MISSED");
    std::printf("  colouring   %9.1f ms\n", median(colour));
    std::printf("  total       %9.1f ms%s\n", median(total),
                count >= 100000 ? (median(total) < 3000 ? "   (target < 3 s: met)" : "   (target < 3 s: MISSED)") : "");
    std::printf("  peak memory growth %.0f bytes per polygon\n",
                double(std::max(0L, rssAfter - rssBefore)) * 1024.0 / double(std::max<std::size_t>(1, count)));
    return last.result;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-fourcolor"));

    std::printf("\nbench_four_color: the four-colour job on Voronoi tessellations (median of %d runs)\n", kRepeats);
    for (int count : {3000, 100000}) {
        const QString path = ensureTessellation(folder, count);
        if (path.isEmpty())
            return 1;
        QString error;
        const TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
        if (!layer) {
            std::fprintf(stderr, "Cannot open %s: %s\n", qPrintable(path), qPrintable(error));
            return 1;
        }
        GEOSContextHandle_t context = TEGeosContext::Current();
        const std::vector<GEOSGeometry*> geometries = readGeos(context, layer.get());
        // The page's default of four colours, then more until the greedy
        // pass colours every polygon.
        for (int colours = 4; colours <= 8; ++colours) {
            if (measure(layer.get(), geometries, colours) != TZFourColorJob::Result::Failed)
                break;
        }
        for (GEOSGeometry* geometry : geometries)
            GEOSGeom_destroy_r(context, geometry);
    }
    return 0;
}
