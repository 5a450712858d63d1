#include "FourColorFixtures.h"

#include "data/TEGeosContext.h"

#include <algorithm>
#include <random>

using namespace TZObjects;

namespace FourColorFixtures {

namespace {

// The Voronoi cells of count random points in the square (0,0)-(100,100),
// clipped to it.
QStringList voronoiCells(std::mt19937& random, int count)
{
    GEOSContextHandle_t context = TEGeosContext::Current();
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    std::vector<GEOSGeometry*> points;
    for (int i = 0; i < count; ++i)
        points.push_back(GEOSGeom_createPointFromXY_r(context, coordinate(random), coordinate(random)));
    GEOSGeometry* sites =
        GEOSGeom_createCollection_r(context, GEOS_MULTIPOINT, points.data(), unsigned(points.size()));
    GEOSGeometry* frame = GEOSGeom_createRectangle_r(context, 0, 0, 100, 100);
    GEOSGeometry* diagram = GEOSVoronoiDiagram_r(context, sites, frame, 0.0, 0);
    GEOSWKTWriter* writer = GEOSWKTWriter_create_r(context);
    QStringList cells;
    for (int i = 0; diagram && i < GEOSGetNumGeometries_r(context, diagram); ++i) {
        GEOSGeometry* clipped = GEOSIntersection_r(context, GEOSGetGeometryN_r(context, diagram, i), frame);
        if (clipped && !GEOSisEmpty_r(context, clipped)) {
            char* text = GEOSWKTWriter_write_r(context, writer, clipped);
            cells << QString::fromLatin1(text);
            GEOSFree_r(context, text);
        }
        if (clipped)
            GEOSGeom_destroy_r(context, clipped);
    }
    GEOSWKTWriter_destroy_r(context, writer);
    if (diagram)
        GEOSGeom_destroy_r(context, diagram);
    GEOSGeom_destroy_r(context, frame);
    GEOSGeom_destroy_r(context, sites);
    return cells;
}

} // namespace

QString box(double x0, double y0, double x1, double y1)
{
    return QStringLiteral("POLYGON((%1 %2,%3 %2,%3 %4,%1 %4,%1 %2))")
        .arg(x0, 0, 'g', 17)
        .arg(y0, 0, 'g', 17)
        .arg(x1, 0, 'g', 17)
        .arg(y1, 0, 'g', 17);
}

std::vector<TERefPtr<TEGeometry>> mixedScene(unsigned seed, int cells)
{
    std::mt19937 random(seed);
    QStringList wkts = voronoiCells(random, cells);
    // Squares meeting their diagonal neighbours at a corner only.
    for (int i = 0; i < 6; ++i) {
        for (int j = 0; j < 6; ++j)
            wkts << box(110 + 5 * i, 5 * j, 115 + 5 * i, 5 + 5 * j);
    }
    // Overlapping rectangles.
    std::uniform_real_distribution<double> place(0.0, 40.0);
    std::uniform_real_distribution<double> size(4.0, 9.0);
    for (int i = 0; i < 10; ++i) {
        const double x = place(random);
        const double y = 110 + place(random);
        wkts << box(x, y, x + size(random), y + size(random));
    }
    // Gaps within and beyond the tolerance.
    wkts << box(150, 0, 160, 10) << box(160.0005, 0, 170, 10);
    wkts << box(150, 20, 160, 30) << box(160.002, 20, 170, 30);
    // Islands.
    for (int i = 0; i < 8; ++i)
        wkts << box(200 + 15 * i, 200, 205 + 15 * i, 205);
    // A ring whose hole is filled by a touching polygon, and one whose hole
    // holds an island clear of it.
    wkts << QStringLiteral("POLYGON((300 0,340 0,340 40,300 40,300 0),(310 10,330 10,330 30,310 30,310 10))")
         << box(310, 10, 330, 30);
    wkts << QStringLiteral("POLYGON((300 50,340 50,340 90,300 90,300 50),(310 60,330 60,330 80,310 80,310 60))")
         << box(315, 65, 325, 75);
    // A ring of zero area along the top edge of an island.
    wkts << QStringLiteral("POLYGON((200 205,204 205,205 205,200 205))");

    std::shuffle(wkts.begin(), wkts.end(), random);
    return fromWkt(wkts);
}

QStringList repairGadget(double dx, double dy)
{
    return {box(dx, dy, dx + 1, dy + 1), box(dx + 1, dy, dx + 2, dy + 1), box(dx + 2, dy, dx + 3, dy + 1),
            box(dx + 2, dy + 1, dx + 3, dy + 2),
            QStringLiteral("POLYGON((%1 %2,%3 %2,%3 %4,%5 %4,%5 %6,%1 %6,%1 %2))")
                .arg(dx)
                .arg(dy - 10)
                .arg(dx + 5)
                .arg(dy + 2)
                .arg(dx + 3)
                .arg(dy)};
}

std::vector<TERefPtr<TEGeometry>> fromWkt(const QStringList& wkts)
{
    std::vector<TERefPtr<TEGeometry>> polygons;
    for (const QString& wkt : wkts)
        polygons.push_back(TEGeometry::FromWkt(wkt));
    return polygons;
}

TERefPtr<TEMemoryFeatureLayer> polygonLayer(const std::vector<TERefPtr<TEGeometry>>& polygons)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("polygons"), TELayer::LT_Polygon, {{QStringLiteral("name"), TEField::FT_String}});
    if (!layer)
        return layer;
    int i = 0;
    for (const TERefPtr<TEGeometry>& polygon : polygons)
        layer->AppendFeature(polygon ? polygon->ExportToWkt() : QString(), {TEVariant(TEString(QString::number(i++)))});
    return layer;
}

} // namespace FourColorFixtures
