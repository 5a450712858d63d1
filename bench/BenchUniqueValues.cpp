// Times "add all values" of the unique-values model, as the panel triggers
// it, on a GeoPackage of 1,000,000 points: with counts and without, each as a
// ratio to SQLite running the matching GROUP BY / DISTINCT on the same file
// in this process, plus the time the model spends building rows and symbols
// after the values are in. A field with 100,000 distinct values shows that
// neither collection nor row building grows faster than the value count.
// A small GeoPackage (3,231 points, 56 values) shows the fixed cost of one
// collection against SQLite on a file it holds open.
//
// Usage: bench_unique_values [folder]   (default: <temp>/tzrender-bench-unique;
// the GeoPackage is made once and reused by later runs)

#include "BenchSupport.h"
#include "TZModelUniqueValues.h"

#include "data/TEFeatureTable.h"
#include "data/TEGdalSupport.h"
#include "symbology/TEEvenColorRamp.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLoggingCategory>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace TZObjects;

namespace {

constexpr int kFeatureCount = 1000000;
constexpr int kKinds = 250;
constexpr int kCodes = 100000;
constexpr int kRepeats = 5;
constexpr int kSmallCount = 3231;
constexpr int kSmallValues = 56;

// The model writes " coast time 2:" (row building, seconds) to the debug
// output; the handler keeps the last value.
double gRowBuildingSeconds = 0.0;

void captureTimings(QtMsgType, const QMessageLogContext&, const QString& message)
{
    const QString marker = QStringLiteral("coast time 2:");
    const int at = message.indexOf(marker);
    if (at >= 0)
        gRowBuildingSeconds = message.mid(at + marker.size()).trimmed().toDouble();
}

struct Timing
{
    double ms = 0.0;
    double rowBuildingMs = 0.0;
    int rows = 0;
};

struct Comparison
{
    Timing ours;       // the median run
    Timing reference;  // the median run
    double ratio = 0.0;  // median of the paired ratios
};

// Runs ours and the reference alternately, kRepeats pairs after one warm-up
// pair, so that a load on the machine weighs on both sides of each ratio.
Comparison compare(const std::function<Timing()>& ours, const std::function<Timing()>& reference)
{
    ours();
    reference();
    std::vector<Timing> oursRuns;
    std::vector<Timing> referenceRuns;
    std::vector<double> ratios;
    for (int i = 0; i < kRepeats; ++i) {
        referenceRuns.push_back(reference());
        oursRuns.push_back(ours());
        ratios.push_back(oursRuns.back().ms / referenceRuns.back().ms);
    }
    const auto byTime = [](const Timing& a, const Timing& b) { return a.ms < b.ms; };
    std::sort(oursRuns.begin(), oursRuns.end(), byTime);
    std::sort(referenceRuns.begin(), referenceRuns.end(), byTime);
    std::sort(ratios.begin(), ratios.end());
    return {oursRuns[kRepeats / 2], referenceRuns[kRepeats / 2], ratios[kRepeats / 2]};
}

Timing sqliteQuery(sqlite3* db, const QByteArray& sql)
{
    QElapsedTimer timer;
    timer.start();
    Timing t;
    t.rows = int(BenchSupport::sqliteRows(db, sql.constData()));
    t.ms = timer.nsecsElapsed() / 1e6;
    return t;
}

Timing addAllValues(TEFeatureLayer* layer, const QString& field, bool count, const TEColorRamp* ramp)
{
    TZModelUniqueValues model;
    model.setLayer(layer, field);
    model.setCountWhileCollecting(count);
    QElapsedTimer timer;
    timer.start();
    model.addAllValues(ramp, nullptr);
    Timing t;
    t.ms = timer.nsecsElapsed() / 1e6;
    t.rowBuildingMs = gRowBuildingSeconds * 1000.0;
    t.rows = model.rowCount() - 1;
    return t;
}

// The data source's own query, without the model around it.
Timing tableQuery(TEFeatureLayer* layer, const QString& field, bool count)
{
    QElapsedTimer timer;
    timer.start();
    Timing t;
    if (count) {
        std::vector<TEFeatureTable::ValueCount> counts;
        layer->GetDatasource()->GetValueCounts(TEString(field), layer->query_filter(), counts);
        t.rows = int(counts.size());
    } else {
        std::vector<TEString> values;
        layer->GetDatasource()->GetDistinctValues(TEString(field), layer->query_filter(), values);
        t.rows = int(values.size());
    }
    t.ms = timer.nsecsElapsed() / 1e6;
    return t;
}

void report(const char* what, const Comparison& c, const char* referenceName, double target)
{
    std::printf("  %-24s %8.2f ms (%6d values, rows %6.2f ms)  vs %-15s %8.2f ms  ratio %5.2fx  (target < %.1fx: %s)\n",
                what, c.ours.ms, c.ours.rows, c.ours.rowBuildingMs, referenceName, c.reference.ms, c.ratio, target,
                c.ratio < target ? "met" : "MISSED");
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    // The model's timing lines are off by default; this program reads them.
    QLoggingCategory::setFilterRules(QStringLiteral("tzrender.panels.vector.debug=true"));
    qInstallMessageHandler(captureTimings);
    TEGdalSupport::EnsureRegistered();

    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-unique"));
    // "kind" has about 250 distinct values, "code" about 100,000.
    const QString path = BenchSupport::ensurePointGeoPackage(
        folder, QStringLiteral("points-1m-kinds.gpkg"), kFeatureCount, {{"kind", OFTString}, {"code", OFTString}},
        4242, [](OGRFeatureH feature, int, unsigned state) {
            OGR_F_SetFieldString(feature, 0, QByteArray("kind ").append(QByteArray::number((state >> 8) % kKinds)));
            OGR_F_SetFieldString(feature, 1, QByteArray("code ").append(QByteArray::number((state >> 4) % kCodes)));
        });
    if (path.isEmpty())
        return 1;
    QString error;
    const TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
    sqlite3* db = nullptr;
    if (!layer || sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "Cannot open %s: %s\n", qPrintable(path), qPrintable(error));
        return 1;
    }
    const auto ramp = MakeRef<TEEvenColorRamp>(rgb_color<float>(255, 255, 0), rgb_color<float>(0, 0, 160));

    std::printf("\nbench_unique_values: add all values on %d points (median of %d paired runs)\n", kFeatureCount, kRepeats);
    for (const char* field : {"kind", "code"}) {
        const QByteArray column(field);
        const auto groupBy = [&] {
            return sqliteQuery(db, "SELECT " + column + ", COUNT(*) FROM points GROUP BY " + column);
        };
        const auto distinct = [&] { return sqliteQuery(db, "SELECT DISTINCT " + column + " FROM points"); };
        const Comparison counted =
            compare([&] { return addAllValues(layer.get(), field, true, ramp.get()); }, groupBy);
        const Comparison uncounted =
            compare([&] { return addAllValues(layer.get(), field, false, ramp.get()); }, distinct);
        const Comparison tableCounts = compare([&] { return tableQuery(layer.get(), field, true); }, groupBy);
        const Comparison tableDistinct = compare([&] { return tableQuery(layer.get(), field, false); }, distinct);

        std::printf(" field \"%s\":\n", field);
        report("with counts", counted, "SQLite GROUP BY", 1.0);
        report("without counts", uncounted, "SQLite DISTINCT", 1.0);
        std::printf("  the data source's query alone: counts %.2fx, distinct %.2fx\n", tableCounts.ratio,
                    tableDistinct.ratio);
        std::printf("  rows and symbols: %.2f us per value\n",
                    1000.0 * counted.ours.rowBuildingMs / std::max(1, counted.ours.rows));
        if (column == "kind")
            std::printf("  row building for %d values: %.2f ms (target < 50 ms: %s)\n", counted.ours.rows,
                        counted.ours.rowBuildingMs, counted.ours.rowBuildingMs < 50.0 ? "met" : "MISSED");
    }
    sqlite3_close(db);

    // A small layer must not pay a fixed cost per query (opening the source
    // anew): 56 values over 3,231 points, against SQLite on an open file.
    const QString smallPath = BenchSupport::ensurePointGeoPackage(
        folder, QStringLiteral("points-small.gpkg"), kSmallCount, {{"place", OFTString}}, 77,
        [](OGRFeatureH feature, int, unsigned state) {
            OGR_F_SetFieldString(feature, 0, QByteArray("place ").append(QByteArray::number((state >> 8) % kSmallValues)));
        });
    const TERefPtr<TEFeatureLayer> small = smallPath.isEmpty() ? nullptr : TEFeatureLayer::Open(smallPath);
    if (!small || sqlite3_open_v2(smallPath.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "Cannot open %s\n", qPrintable(smallPath));
        return 1;
    }
    const Comparison smallCounted =
        compare([&] { return addAllValues(small.get(), "place", true, ramp.get()); },
                [&] { return sqliteQuery(db, "SELECT place, COUNT(*) FROM points GROUP BY place"); });
    const Comparison smallQuery = compare([&] { return tableQuery(small.get(), "place", true); },
                                          [&] { return sqliteQuery(db, "SELECT place, COUNT(*) FROM points GROUP BY place"); });
    std::printf(" small layer, %d points:\n", kSmallCount);
    report("with counts", smallCounted, "SQLite GROUP BY", 2.0);
    std::printf("  the data source's query alone: %.2f ms, %.2fx\n", smallQuery.ours.ms, smallQuery.ratio);
    sqlite3_close(db);
    return 0;
}
