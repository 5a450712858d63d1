// Times distinct values and value counts of a string field over a PostGIS
// table of 1,000,000 points, as a ratio to the same SQL run straight through
// libpq in this process against the same server. The server is a throwaway
// cluster (socket only, no TCP port) started for the run and removed after.
//
// Usage: bench_postgis

#include "PostgisServer.h"

#include "data/TEFeatureTable.h"
#include "data/TEGdalSupport.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <libpq-fe.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace TZObjects;

namespace {

constexpr int kFeatureCount = 1000000;
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

// Runs the query and reads every row's columns as text, as a client would.
size_t libpqRows(PGconn* connection, const char* sql)
{
    PGresult* result = PQexec(connection, sql);
    size_t rows = 0;
    if (PQresultStatus(result) == PGRES_TUPLES_OK) {
        rows = size_t(PQntuples(result));
        size_t bytes = 0;
        for (int r = 0; r < int(rows); ++r)
            for (int c = 0; c < PQnfields(result); ++c)
                bytes += std::char_traits<char>::length(PQgetvalue(result, r, c));
        if (bytes == 0)
            rows = 0;
    } else {
        std::fprintf(stderr, "libpq: %s\n", PQerrorMessage(connection));
    }
    PQclear(result);
    return rows;
}

void printRatio(const char* what, double ours, double reference, const char* referenceName, double target)
{
    const double ratio = ours / reference;
    std::printf("  %-30s %9.1f ms  vs %-34s %9.1f ms  ratio %5.2fx  (target <= %.1fx: %s)\n", what, ours,
                referenceName, reference, ratio, target, ratio <= target ? "met" : "MISSED");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    PostgisServer server;
    if (!server.Start()) {
        std::fprintf(stderr, "bench_postgis: %s\n", qPrintable(server.Error()));
        return 1;
    }
    std::printf("Loading %d points into a throwaway PostGIS server...\n", kFeatureCount);
    // About 250 kinds in a pseudo-random order, so first-met order is not
    // the sorted order.
    if (!server.Exec(QStringLiteral(
            "CREATE TABLE points (fid serial PRIMARY KEY, kind varchar, geom geometry(Point, 3857));"
            "INSERT INTO points (kind, geom) SELECT 'kind ' || ((i::bigint * 7919) % 251), "
            "ST_SetSRID(ST_MakePoint(i % 1000, i / 1000), 3857) FROM generate_series(1, %1) AS i;"
            "CREATE INDEX points_geom_idx ON points USING gist (geom); ANALYZE points;")
                         .arg(kFeatureCount))) {
        std::fprintf(stderr, "bench_postgis: %s\n", qPrintable(server.Error()));
        return 1;
    }
    // A freshly loaded table makes its first readers set every row's hint
    // bits; vacuumed, every query below reads the table as a settled one.
    if (!server.Exec(QStringLiteral("VACUUM ANALYZE points"))) {
        std::fprintf(stderr, "bench_postgis: %s\n", qPrintable(server.Error()));
        return 1;
    }

    PGconn* connection = PQconnectdb(server.ConnInfo().toUtf8().constData());
    if (PQstatus(connection) != CONNECTION_OK) {
        std::fprintf(stderr, "bench_postgis: %s\n", PQerrorMessage(connection));
        PQfinish(connection);
        return 1;
    }
    QString error;
    TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(server.GdalSource(), QStringLiteral("points"), &error);
    if (!layer) {
        std::fprintf(stderr, "bench_postgis: %s\n", qPrintable(error));
        PQfinish(connection);
        return 1;
    }
    TERefPtr<TEFeatureTable> table = layer->GetDatasource();
    const char* grouped = "SELECT kind, COUNT(*), MIN(fid) FROM points GROUP BY kind";

    size_t oursSize = 0, referenceSize = 0;
    const double counts = timeMs(
        [&] {
            std::vector<TEFeatureTable::ValueCount> values;
            table->GetValueCounts(TEString(L"kind"), TEQueryFilter(), values);
            return values.size();
        },
        oursSize);
    const double reference = timeMs([&] { return libpqRows(connection, grouped); }, referenceSize);
    std::printf("%d points, %zu kinds (libpq: %zu rows)\n", kFeatureCount, oursSize, referenceSize);
    printRatio("values with counts", counts, reference, "libpq GROUP BY, COUNT, MIN(fid)", 1.3);

    const double distinct = timeMs(
        [&] {
            std::vector<TEString> values;
            table->GetDistinctValues(TEString(L"kind"), TEQueryFilter(), values);
            return values.size();
        },
        oursSize);
    printRatio("distinct values", distinct, reference, "libpq GROUP BY, COUNT, MIN(fid)", 1.3);
    const double plainDistinct =
        timeMs([&] { return libpqRows(connection, "SELECT DISTINCT kind FROM points"); }, referenceSize);
    printRatio("distinct values", distinct, plainDistinct, "libpq SELECT DISTINCT (unordered)", 1.3);

    PQfinish(connection);
    layer = {};
    table = {};
    server.Stop();
    return 0;
}
