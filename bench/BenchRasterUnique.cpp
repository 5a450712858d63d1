// Times the unique-value scan of a raster band, as the raster unique values
// page runs it (TEImageUniqueRenderInfo::AddFromRaster), on a 5000 x 5000
// Int16 GeoTIFF with about 1,000 distinct values, against GDAL's own
// GDALGetRasterHistogramEx over the same band with one bucket per integer
// value, in the same process. Each run opens both datasets afresh; the pair
// order alternates so that neither side always meets a warmer cache.
//
// Usage: bench_raster_unique [folder]   (default: <temp>/tzrender-bench-raster;
// the raster is made once and reused by later runs)

#include "BenchSupport.h"

#include "data/TEGdalSupport.h"
#include "data/TERasterProps.h"
#include "renders/TEImageUniqueRenderInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <cpl_conv.h>
#include <gdal.h>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace TZObjects;

namespace {

using BenchSupport::median;

constexpr int kSide = 5000;
constexpr int kRepeats = 5;
constexpr short kNoData = -32768;

// Values in patches (as class rasters have them): about 1,000 distinct codes
// from -300 to 699, with a no-data stripe down the left edge.
short valueAt(int x, int y)
{
    if (x < 40)
        return kNoData;
    const unsigned patch = unsigned(x / 23) * 2654435761u ^ unsigned(y / 19) * 40503u;
    return short(int((patch >> 7) % 1000u) - 300);
}

QString ensureRaster(const QString& folder)
{
    const QString path = QDir(folder).filePath(QStringLiteral("int16_25M.tif"));
    if (QFileInfo::exists(path))
        return path;
    QDir().mkpath(folder);
    const QString partial = path + QStringLiteral(".part.tif");
    const char* options[] = {"TILED=YES", "BLOCKXSIZE=256", "BLOCKYSIZE=256", nullptr};
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), partial.toUtf8().constData(), kSide, kSide, 1,
                                      GDT_Int16, const_cast<char**>(options));
    if (!dataset)
        return QString();
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    GDALSetRasterNoDataValue(band, kNoData);
    std::vector<short> row(kSide);
    bool ok = true;
    for (int y = 0; y < kSide && ok; ++y) {
        for (int x = 0; x < kSide; ++x)
            row[size_t(x)] = valueAt(x, y);
        ok = GDALRasterIO(band, GF_Write, 0, y, kSide, 1, row.data(), kSide, 1, GDT_Int16, 0, 0) == CE_None;
    }
    GDALClose(dataset);
    if (!ok || !QFile::rename(partial, path)) {
        QFile::remove(partial);
        return QString();
    }
    return path;
}

struct Run
{
    double ms = 0.0;
    int values = 0;
};

Run timeOurs(const QString& path)
{
    Run run;
    QElapsedTimer timer;
    timer.start();
    TERefPtr<TERasterProps> raster = TERasterProps::Open(path);
    TEImageUniqueRenderInfo info;
    if (raster && info.AddFromRaster(raster.get(), 1))
        run.values = info.GetItemCount();
    run.ms = timer.nsecsElapsed() / 1e6;
    return run;
}

Run timeHistogram(const QString& path, int minimum, int maximum)
{
    Run run;
    QElapsedTimer timer;
    timer.start();
    GDALDatasetH dataset = GDALOpen(path.toUtf8().constData(), GA_ReadOnly);
    if (dataset) {
        const int buckets = maximum - minimum + 1;
        std::vector<GUIntBig> counts(size_t(buckets), 0);
        // One bucket per integer value; no-data is skipped by GDAL itself.
        if (GDALGetRasterHistogramEx(GDALGetRasterBand(dataset, 1), minimum - 0.5, maximum + 0.5, buckets,
                                     counts.data(), FALSE, FALSE, nullptr, nullptr) == CE_None)
            run.values = int(std::count_if(counts.begin(), counts.end(), [](GUIntBig c) { return c > 0; }));
        GDALClose(dataset);
    }
    run.ms = timer.nsecsElapsed() / 1e6;
    return run;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    // GDAL keeps a histogram it computed beside the file and hands it back
    // on the next call with the same buckets; every run must read the band.
    CPLSetConfigOption("GDAL_PAM_ENABLED", "NO");
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-raster"));
    const QString path = ensureRaster(folder);
    if (path.isEmpty()) {
        std::fprintf(stderr, "bench_raster_unique: cannot write the raster in %s\n", qPrintable(folder));
        return 1;
    }

    // The histogram needs the value range; it is read once, outside the
    // timed runs.
    int minimum = 0;
    int maximum = 0;
    {
        TERefPtr<TERasterProps> raster = TERasterProps::Open(path);
        TERasterProps::BandStatistics statistics;
        if (!raster || !raster->GetStatistics(1, statistics)) {
            std::fprintf(stderr, "bench_raster_unique: no statistics for %s\n", qPrintable(path));
            return 1;
        }
        minimum = int(statistics.minimum);
        maximum = int(statistics.maximum);
    }

    // A first pass of each reads the file into the caches.
    timeOurs(path);
    timeHistogram(path, minimum, maximum);

    std::vector<double> ours, reference, ratios;
    int ourValues = 0;
    int referenceValues = 0;
    for (int i = 0; i < kRepeats; ++i) {
        Run a, b;
        if (i % 2 == 0) {
            a = timeOurs(path);
            b = timeHistogram(path, minimum, maximum);
        } else {
            b = timeHistogram(path, minimum, maximum);
            a = timeOurs(path);
        }
        ours.push_back(a.ms);
        reference.push_back(b.ms);
        ratios.push_back(a.ms / b.ms);
        ourValues = a.values;
        referenceValues = b.values;
    }

    std::printf("\nbench_raster_unique: distinct values of a %d x %d Int16 band (median of %d paired runs)\n", kSide,
                kSide, kRepeats);
    std::printf("| measure | ours | GDAL | ratio | target |\n|---|---|---|---|---|\n");
    std::printf("| unique scan, %d values (histogram finds %d) | %.0f ms | `GDALGetRasterHistogramEx` %.0f ms | %.2fx "
                "| <= 1.5x |\n",
                ourValues, referenceValues, median(ours), median(reference), median(ratios));
    return ourValues == referenceValues ? 0 : 2;
}
