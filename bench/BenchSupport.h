#pragma once

#include <QPointF>
#include <QString>

#include <ogr_api.h>
#include <sqlite3.h>

#include <functional>
#include <vector>

// What the benchmark programs share: the generated GeoPackage of points they
// time against, SQLite run directly on the same file as the reference, and
// the timing of paired runs.
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

// The median of values (of an even count, the upper middle one).
double median(std::vector<double> values);
// This thread's CPU time in ms: on a shared machine wall time measures the
// neighbours as much as the code.
double threadMs();
// The wall time of one run, in ms.
double timedMs(const std::function<void()>& run);

// Medians of the times of ours and of a reference, and of their ratios.
struct Comparison
{
    double ours = 0.0;
    double reference = 0.0;
    double ratio = 0.0;
};
// Runs ours and reference (each giving its time in ms) alternately,
// repeats pairs after one warm-up pair, the reference first in each, so
// that a load on the machine weighs on both sides of each ratio.
Comparison compare(const std::function<double()>& ours, const std::function<double()>& reference, int repeats);

} // namespace BenchSupport
