// Times the two category collections of the many-fields and match-to-symbols
// pages on a GeoPackage of 1,000,000 points:
// - the combined keys of two string fields (about 250 x 20 combinations),
//   counted, as a ratio to SQLite's GROUP BY a, b on the same file in this
//   process, and checked identical (keys, counts, order) to a cursor scan;
// - matching 100,000 distinct values against a 1,000-symbol style database:
//   the whole "add all values" of the match table against the distinct-value
//   query alone, whose difference is the matching and row building.
//
// Usage: bench_many_fields [folder]   (default: <temp>/tzrender-bench-many;
// the GeoPackage is made once and reused by later runs)

#include "BenchSupport.h"
#include "TZModelMatchToSymbols.h"

#include "data/TEFeatureTable.h"
#include "data/TEGdalSupport.h"
#include "symbology/TEStyleDB.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace TZObjects;

namespace {

constexpr int kFeatureCount = 1000000;
constexpr int kKinds = 250;
constexpr int kClasses = 20;
constexpr int kCodes = 100000;
constexpr int kSymbols = 1000;
constexpr int kRepeats = 5;

using BenchSupport::Comparison;

// Paired runs of ours and the reference, timed on the wall clock.
Comparison compare(const std::function<void()>& ours, const std::function<void()>& reference)
{
    return BenchSupport::compare([&] { return BenchSupport::timedMs(ours); },
                                 [&] { return BenchSupport::timedMs(reference); }, kRepeats);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();

    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-many"));
    const QString path = BenchSupport::ensurePointGeoPackage(
        folder, QStringLiteral("points-1m-two-fields.gpkg"), kFeatureCount,
        {{"a", OFTString}, {"b", OFTString}, {"code", OFTString}}, 5151,
        [](OGRFeatureH feature, int, unsigned state) {
            OGR_F_SetFieldString(feature, 0, QByteArray("kind ").append(QByteArray::number((state >> 8) % kKinds)));
            OGR_F_SetFieldString(feature, 1, QByteArray("class ").append(QByteArray::number((state >> 20) % kClasses)));
            OGR_F_SetFieldString(feature, 2, QByteArray("S").append(QByteArray::number((state >> 4) % kCodes)));
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
    const TERefPtr<TEFeatureTable> table = layer->GetDatasource();
    const std::vector<TEString> fields = {TEString(L"a"), TEString(L"b")};
    QStringList keys;
    std::vector<int> counts;

    std::printf("\nbench_many_fields on %d points (median of %d paired runs)\n", kFeatureCount, kRepeats);
    const Comparison combined = compare(
        [&] { table->GetKeyTexts(fields, QStringLiteral(","), layer->query_filter(), keys, counts); },
        [&] { BenchSupport::sqliteRows(db, "SELECT a, b, COUNT(*) FROM points GROUP BY a, b"); });
    const bool pushedDown = table->GetLastMethod() == TEFeatureTable::Method::PushDown;
    std::printf("  combined keys a,b  %8.2f ms (%d keys, %s)  vs SQLite GROUP BY a, b %8.2f ms  ratio %5.2fx  "
                "(target < 1.5x: %s)\n",
                combined.ours, keys.size(), pushedDown ? "pushed down" : "scanned", combined.reference,
                combined.ratio, combined.ratio < 1.5 ? "met" : "MISSED");

    // The same keys, counts and order as a scan of every feature.
    QStringList scanKeys;
    std::vector<int> scanCounts;
    table->SetMethod(TEFeatureTable::Method::Cursor);
    const double scanMs = BenchSupport::timedMs(
        [&] { table->GetKeyTexts(fields, QStringLiteral(","), layer->query_filter(), scanKeys, scanCounts); });
    table->SetMethod(TEFeatureTable::Method::Automatic);
    const bool identical = scanKeys == keys && scanCounts == counts;
    std::printf("  cursor scan        %8.2f ms, result identical to the pushed-down one: %s\n", scanMs,
                identical ? "yes" : "NO");

    // A style database of kSymbols point styles named like every 100th code.
    auto styles = MakeRef<TEStyleDB>(TEString(L"bench symbols"));
    for (int i = 0; i < kSymbols; ++i) {
        auto style = MakeRef<TEStyleSimplePoint>();
        style->SetName(TEString(QStringLiteral("S%1").arg(i * (kCodes / kSymbols))));
        styles->AddStyle(style);
    }
    TZModelMatchToSymbols model;
    model.setLayer(layer.get(), QStringLiteral("code"));
    model.setStyleDB(styles.get());
    int matched = 0;
    std::vector<TEString> distinct;
    const Comparison matching = compare([&] { matched = model.matchAllValues(nullptr); },
                                        [&] { table->GetDistinctValues(TEString(L"code"), distinct); });
    const double overhead = matching.ours - matching.reference;
    std::printf("  match to symbols   %8.2f ms (%d of %zu values matched)  vs the distinct query %8.2f ms: "
                "%.2f ms on top (target < 1000 ms: %s)\n",
                matching.ours, matched, distinct.size(), matching.reference, overhead,
                overhead < 1000.0 ? "met" : "MISSED");
    sqlite3_close(db);
    return identical ? 0 : 2;
}
