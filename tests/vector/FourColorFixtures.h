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

// Polygons from WKT texts (empty pointers for texts that do not parse).
std::vector<TZObjects::TERefPtr<TZObjects::TEGeometry>> fromWkt(const QStringList& wkts);

// A polygon memory layer holding the geometries in order (no attributes
// beyond "name").
TZObjects::TERefPtr<TZObjects::TEMemoryFeatureLayer>
polygonLayer(const std::vector<TZObjects::TERefPtr<TZObjects::TEGeometry>>& polygons);

QString box(double x0, double y0, double x1, double y1);

} // namespace FourColorFixtures
