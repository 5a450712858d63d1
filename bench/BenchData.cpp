// Times distinct values, value counts and a one-field cursor scan over a
// GeoPackage of 1,000,000 points, each as a ratio to the same query run
// directly by SQLite on the same file in this process, and then each way the
// data source can read a field.
//
// Usage: bench_data [folder]   (default: <temp>/tzrender-bench; the
// GeoPackage is made once and reused by later runs)

#include "BenchSupport.h"

#include "data/TEFeatureTable.h"
#include "data/TEGdalSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>

#include <gdal.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <unordered_map>
#include <vector>

using namespace TZObjects;

namespace {

constexpr int kFeatureCount = 1000000;
constexpr int kDistinctKinds = 250;
constexpr int kRepeats = 5;

// Median of kRepeats timed runs, in milliseconds, after one warm-up run.
double timeMs(const std::function<size_t()>& run, size_t& resultSize)
{
    resultSize = run();
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) {
        QElapsedTimer timer;
        timer.start();
        const size_t size = run();
        times.push_back(timer.nsecsElapsed() / 1e6);
        if (size != resultSize)
            std::fprintf(stderr, "warning: run %d gave %zu rows, first gave %zu\n", i, size, resultSize);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void printRatio(const char* what, double ours, double reference, const char* referenceName, double target)
{
    const double ratio = ours / reference;
    std::printf("  %-34s %9.1f ms  vs %-22s %9.1f ms  ratio %5.2fx  (target <= %.1fx: %s)\n", what, ours,
                referenceName, reference, ratio, target, ratio <= target ? "met" : "MISSED");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench"));
    // A string field of evenly spread kinds and an integer field.
    const QString path = BenchSupport::ensurePointGeoPackage(
        folder, QStringLiteral("points-1m.gpkg"), kFeatureCount, {{"kind", OFTString}, {"n", OFTInteger}}, 12345,
        [](OGRFeatureH feature, int, unsigned state) {
            const int k = int((state >> 8) % kDistinctKinds);
            OGR_F_SetFieldString(feature, 0,
                                 QStringLiteral("class %1").arg(k, 3, 10, QLatin1Char('0')).toUtf8().constData());
            OGR_F_SetFieldInteger(feature, 1, int(state % 1000));
        });
    if (path.isEmpty())
        return 1;

    QString error;
    TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
    if (!layer) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "sqlite cannot open %s\n", qPrintable(path));
        return 1;
    }

    const TEString kind(L"kind");
    TERefPtr<TEFeatureTable> table = layer->GetDatasource();
    size_t rows = 0;

    const double sqliteDistinct = timeMs([&] { return BenchSupport::sqliteRows(db, "SELECT DISTINCT kind FROM points"); }, rows);
    const size_t sqliteDistinctRows = rows;
    const double sqliteCounts =
        timeMs([&] { return BenchSupport::sqliteRows(db, "SELECT kind, COUNT(*) FROM points GROUP BY kind"); }, rows);

    std::vector<TEString> values;
    const double distinct = timeMs([&] {
        table->GetDistinctValues(kind, TEQueryFilter(), values, &error);
        return values.size();
    }, rows);
    const size_t distinctRows = rows;
    std::vector<TEFeatureTable::ValueCount> counts;
    const double valueCounts = timeMs([&] {
        table->GetValueCounts(kind, TEQueryFilter(), counts, &error);
        return counts.size();
    }, rows);
    long long counted = 0;
    for (const auto& entry : counts)
        counted += entry.count;

    // What a panel's own loop does: a cursor reading one field, no geometry.
    const double cursorScan = timeMs([&] {
        TEQueryFilter filter;
        filter.SetSubFields({kind});
        filter.SetGeometryNeeded(false);
        std::unordered_map<TEString, int> seen;
        TERefPtr<TEFeatureCursor> cursor = layer->Search(filter);
        while (TERefPtr<TEFeature> feature = cursor->NextFeature())
            ++seen[feature->GetValue(kind).ToString()];
        return seen.size();
    }, rows);
    const size_t scanRows = rows;
    // Every way of reading, on the same field.
    struct MethodTime
    {
        const char* name;
        TEFeatureTable::Method method;
        double counts = 0.0;
        double distinct = 0.0;
    };
    std::vector<MethodTime> methods = {{"one column through SQLite", TEFeatureTable::Method::SqliteRead},
                                       {"OGR Arrow stream", TEFeatureTable::Method::ArrowStream},
                                       {"OGR cursor, one field", TEFeatureTable::Method::Cursor},
                                       {"pushed down (GROUP BY)", TEFeatureTable::Method::PushDown}};
    for (MethodTime& m : methods) {
        table->SetMethod(m.method);
        m.counts = timeMs([&] {
            table->GetValueCounts(kind, TEQueryFilter(), counts, &error);
            return counts.size();
        }, rows);
        m.distinct = timeMs([&] {
            table->GetDistinctValues(kind, TEQueryFilter(), values, &error);
            return values.size();
        }, rows);
    }
    table->SetMethod(TEFeatureTable::Method::Automatic);

    std::printf("\nbench_data: %d points, %zu distinct values of \"kind\" (median of %d runs)\n", kFeatureCount,
                sqliteDistinctRows, kRepeats);
    std::printf("  distinct values: %zu, counts: %zu values summing to %lld, cursor scan: %zu values\n",
                distinctRows, counts.size(), counted, scanRows);
    printRatio("distinct values", distinct, sqliteDistinct, "SQLite SELECT DISTINCT", 1.0);
    printRatio("values with counts", valueCounts, sqliteCounts, "SQLite GROUP BY", 1.0);
    printRatio("cursor scan, one field, no geometry", cursorScan, sqliteCounts, "SQLite GROUP BY", 2.0);
    std::printf("  each way of reading (counts / distinct):\n");
    for (const MethodTime& m : methods)
        std::printf("    %-30s %9.1f ms  %9.1f ms   (%.2fx / %.2fx SQLite)\n", m.name, m.counts, m.distinct,
                    m.counts / sqliteCounts, m.distinct / sqliteDistinct);
    sqlite3_close(db);
    return 0;
}
