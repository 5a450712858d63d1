#include "BenchSupport.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gdal.h>
#include <ogr_srs_api.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>

namespace BenchSupport {

namespace {

bool makePointGeoPackage(const QString& path, int count, const std::vector<Field>& fields, unsigned seed,
                         const FillFeature& fill, const PlacePoint& place)
{
    // Written under another name and renamed when complete, so an
    // interrupted run never leaves a partial file to be reused.
    const QString partial = QString(path).replace(QStringLiteral(".gpkg"), QStringLiteral(".part.gpkg"));
    QFile::remove(partial);
    GDALDatasetH dataset =
        GDALCreate(GDALGetDriverByName("GPKG"), partial.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset)
        return false;
    OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(srs, 4326);
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "points", srs, wkbPoint, nullptr);
    OSRRelease(srs);
    for (const Field& field : fields) {
        OGRFieldDefnH definition = OGR_Fld_Create(field.name, field.type);
        OGR_L_CreateField(layer, definition, TRUE);
        OGR_Fld_Destroy(definition);
    }

    GDALDatasetStartTransaction(dataset, FALSE);
    OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
    OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint);
    unsigned state = seed;
    bool ok = true;
    for (int i = 0; i < count && ok; ++i) {
        state = state * 1103515245u + 12345u;
        OGR_F_SetFID(feature, OGRNullFID);
        fill(feature, i, state);
        const QPointF at = place ? place(i, state) : QPointF((i % 1000) * 0.01, (i / 1000) * 0.01);
        OGR_G_SetPoint_2D(point, 0, at.x(), at.y());
        OGR_F_SetGeometry(feature, point);
        ok = OGR_L_CreateFeature(layer, feature) == OGRERR_NONE;
    }
    OGR_G_DestroyGeometry(point);
    OGR_F_Destroy(feature);
    ok = ok && GDALDatasetCommitTransaction(dataset) == OGRERR_NONE;
    GDALClose(dataset);
    return ok && QFile::rename(partial, path);
}

} // namespace

QString ensurePointGeoPackage(const QString& folder, const QString& fileName, int count,
                              const std::vector<Field>& fields, unsigned seed, const FillFeature& fill,
                              const PlacePoint& place)
{
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(fileName);
    if (QFile::exists(path))
        return path;
    std::printf("Making %s (%d points, done once)...\n", qPrintable(path), count);
    std::fflush(stdout);
    if (!makePointGeoPackage(path, count, fields, seed, fill, place)) {
        std::fprintf(stderr, "Cannot make %s: %s\n", qPrintable(path), CPLGetLastErrorMsg());
        return QString();
    }
    return path;
}

size_t sqliteRows(sqlite3* db, const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "sqlite: %s\n", sqlite3_errmsg(db));
        return 0;
    }
    size_t rows = 0;
    std::vector<std::string> texts;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const unsigned char* text = sqlite3_column_text(statement, 0);
        texts.emplace_back(text ? reinterpret_cast<const char*>(text) : "");
        ++rows;
    }
    sqlite3_finalize(statement);
    return rows;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

double threadMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

double timedMs(const std::function<void()>& run)
{
    QElapsedTimer timer;
    timer.start();
    run();
    return timer.nsecsElapsed() / 1e6;
}

Comparison compare(const std::function<double()>& ours, const std::function<double()>& reference, int repeats)
{
    ours();
    reference();
    std::vector<double> oursRuns;
    std::vector<double> referenceRuns;
    std::vector<double> ratios;
    for (int i = 0; i < repeats; ++i) {
        referenceRuns.push_back(reference());
        oursRuns.push_back(ours());
        ratios.push_back(oursRuns.back() / referenceRuns.back());
    }
    return {median(oursRuns), median(referenceRuns), median(ratios)};
}

long residentKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return 0;
}

} // namespace BenchSupport
