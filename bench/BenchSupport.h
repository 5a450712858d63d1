#pragma once

#include <QPointF>
#include <QString>

#include <ogr_api.h>
#include <sqlite3.h>

#include <functional>
#include <vector>

// What the benchmark programs share: the generated GeoPackage of points they
// time against, and SQLite run directly on the same file as the reference.
namespace BenchSupport {

struct Field
{
    const char* name;
    OGRFieldType type;
};

// Sets a feature's attributes from the i-th point's pseudo-random state.
using FillFeature = std::function<void(OGRFeatureH feature, int index, unsigned state)>;
// Gives the i-th point's coordinates from its pseudo-random state.
using PlacePoint = std::function<QPointF(int index, unsigned state)>;

// The GeoPackage folder/fileName, made first (count points in a layer
// "points" with the given fields, deterministic for a seed) when it is not
// there yet; later runs reuse it. Empty when it cannot be made. Without
// place the points lie on a grid 1000 wide, 0.01 apart.
QString ensurePointGeoPackage(const QString& folder, const QString& fileName, int count,
                              const std::vector<Field>& fields, unsigned seed, const FillFeature& fill,
                              const PlacePoint& place = {});

// The process's resident memory in kB (VmRSS of /proc/self/status), 0 when unknown.
long residentKb();

// Runs sql and reads every row's first column as text, as a client would;
// gives the number of rows (0 and a message on stderr on failure).
size_t sqliteRows(sqlite3* db, const char* sql);

} // namespace BenchSupport
