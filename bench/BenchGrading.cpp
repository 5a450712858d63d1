// Times the grading model on a GeoPackage of 1,000,000 points with a real
// field: "Update" (read every value, make 12 equal-interval classes, count
// them) and the reset's scan (read the values, make the classes, count the
// render's classes), each as a ratio to SQLite computing the same thing on
// the same file in this process: SELECT min(v), max(v), then the per-class
// counts in one grouped query. A second reset of the unchanged layer reuses
// the values read by the first.
//
// Usage: bench_grading [folder]   (default: <temp>/tzrender-bench-grading;
// the GeoPackage is made once and reused by later runs)

#include "BenchSupport.h"
#include "TZModelGradingSymbol.h"

#include "data/TEGdalSupport.h"
#include "symbology/TEEvenColorRamp.h"

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
constexpr int kLevel = 12;
constexpr int kRepeats = 5;

using BenchSupport::Comparison;

Comparison compare(const std::function<double()>& ours, const std::function<double()>& reference)
{
    return BenchSupport::compare(ours, reference, kRepeats);
}

// The wait dialog's platform notices would bury the figures.
void quiet(QtMsgType, const QMessageLogContext&, const QString&)
{
}

double elapsedMs(const QElapsedTimer& timer)
{
    return timer.nsecsElapsed() / 1e6;
}

// SQLite's minimum and maximum, then the count of each equal-interval class.
double sqliteClasses(sqlite3* db, std::vector<long long>& counts)
{
    QElapsedTimer timer;
    timer.start();
    double minimum = 0.0;
    double maximum = 0.0;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, "SELECT min(v), max(v) FROM points", -1, &statement, nullptr) == SQLITE_OK
        && sqlite3_step(statement) == SQLITE_ROW) {
        minimum = sqlite3_column_double(statement, 0);
        maximum = sqlite3_column_double(statement, 1);
    }
    sqlite3_finalize(statement);

    const double interval = (maximum - minimum) / kLevel;
    const QByteArray sql = QStringLiteral("SELECT min(CAST((v - %1) / %2 AS INTEGER), %3) AS c, COUNT(*) FROM points "
                                          "GROUP BY c")
                               .arg(minimum, 0, 'g', 17)
                               .arg(interval, 0, 'g', 17)
                               .arg(kLevel - 1)
                               .toUtf8();
    counts.assign(kLevel, 0);
    if (sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr) == SQLITE_OK) {
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const int c = sqlite3_column_int(statement, 0);
            if (c >= 0 && c < kLevel)
                counts[size_t(c)] = sqlite3_column_int64(statement, 1);
        }
    }
    sqlite3_finalize(statement);
    return elapsedMs(timer);
}

double update(TEFeatureLayer* layer, const TEColorRamp* ramp, int* classes = nullptr)
{
    TZModelGradingSymbol model;
    model.setup(layer, QStringLiteral("v"), ramp, kLevel);
    QElapsedTimer timer;
    timer.start();
    model.classifyAll(nullptr);
    const double ms = elapsedMs(timer);
    if (classes)
        *classes = model.rowCount() - 1;
    return ms;
}

// The reset: read the values and count them into the classes the render
// holds (here the same classes Update makes).
double reset(TZModelGradingSymbol& model, const QStringList& classes)
{
    QElapsedTimer timer;
    timer.start();
    model.prepareRanges(nullptr);
    long long total = 0;
    for (const QString& range : classes)
        total += model.countInRange(range);
    const double ms = elapsedMs(timer);
    return total > 0 ? ms : -1.0;
}

void report(const char* what, const Comparison& c)
{
    std::printf("  %-34s %8.1f ms  vs SQLite min/max + GROUP BY %8.1f ms  ratio %5.2fx  (target <= 1.2x: %s)\n", what,
                c.ours, c.reference, c.ratio, c.ratio <= 1.2 ? "met" : "MISSED");
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    qInstallMessageHandler(quiet);
    TEGdalSupport::EnsureRegistered();

    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-grading"));
    const QString path = BenchSupport::ensurePointGeoPackage(
        folder, QStringLiteral("points-1m-real.gpkg"), kFeatureCount, {{"v", OFTReal}}, 2024,
        [](OGRFeatureH feature, int, unsigned state) { OGR_F_SetFieldDouble(feature, 0, (state >> 4) / 268435.456); });
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

    std::vector<long long> counts;
    const auto reference = [&] { return sqliteClasses(db, counts); };

    std::printf("\nbench_grading: %d classes of a real field on %d points (median of %d paired runs)\n", kLevel,
                kFeatureCount, kRepeats);
    int classes = 0;
    update(layer.get(), ramp.get(), &classes);
    const Comparison updated = compare([&] { return update(layer.get(), ramp.get()); }, reference);
    report("Update (classify all, counted)", updated);

    TZModelGradingSymbol classified;
    classified.setup(layer.get(), QStringLiteral("v"), ramp.get(), kLevel);
    classified.classifyAll(nullptr);
    const QStringList ranges = classified.ranges();
    const Comparison firstReset = compare(
        [&] {
            TZModelGradingSymbol model;
            model.setup(layer.get(), QStringLiteral("v"), ramp.get(), kLevel);
            return reset(model, ranges);
        },
        reference);
    report("reset (prepare ranges, counted)", firstReset);

    TZModelGradingSymbol reused;
    reused.setup(layer.get(), QStringLiteral("v"), ramp.get(), kLevel);
    reset(reused, ranges);
    const Comparison secondReset = compare([&] { return reset(reused, ranges); }, reference);
    std::printf("  %-34s %8.1f ms  (values reused, %.3fx of SQLite)\n", "second reset, layer unchanged",
                secondReset.ours, secondReset.ratio);
    std::printf("  classes made: %d; SQLite's first class holds %lld values\n", classes, counts.empty() ? 0 : counts[0]);
    sqlite3_close(db);
    return 0;
}
