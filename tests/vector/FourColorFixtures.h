#pragma once

#include "core/TERefPtr.h"
#include "data/TEGeometry.h"
#include "data/TEMemoryFeatureLayer.h"

#include <QStringList>

#include <vector>

// Polygon sets for the four-colour tests, made in code.
namespace FourColorFixtures {

// A map-like mix in shuffled order: Voronoi cells of random points clipped
// to a square (shared borders), a block of squares meeting at corners,
// overlapping rectangles, pairs 0.0005 and 0.002 apart, scattered islands,
// rings with holes (one hole filled by a polygon touching it, one holding an
// island clear of it) and a ring of zero area lying on an island's edge.
std::vector<TZObjects::TERefPtr<TZObjects::TEGeometry>> mixedScene(unsigned seed, int voronoiCells);

// A chain of squares s, b, c, a square x on c touching b at a corner, and an
// L-shaped f along their bottom and right sides, offset by (dx, dy). Grown
// from s with four colours, f finds all four around it; the repair frees
// s's colour and the colouring then succeeds: s 2, b 3, c 2, x 1, f 0.
QStringList repairGadget(double dx, double dy);

// Polygons from WKT texts (empty pointers for texts that do not parse).
std::vector<TZObjects::TERefPtr<TZObjects::TEGeometry>> fromWkt(const QStringList& wkts);

// A polygon memory layer holding the geometries in order (no attributes
// beyond "name").
TZObjects::TERefPtr<TZObjects::TEMemoryFeatureLayer>
polygonLayer(const std::vector<TZObjects::TERefPtr<TZObjects::TEGeometry>>& polygons);

QString box(double x0, double y0, double x1, double y1);

} // namespace FourColorFixtures
