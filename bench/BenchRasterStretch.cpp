// Times what the raster stretch panels read from a band, on generated
// 10,000 x 10,000 GeoTIFFs (tiled 256 x 256, no overviews): a Float32 band
// with no-data and a Byte band.
//  - exact statistics plus the pixel histogram, as the panels compute them
//    (TzRasterBandReader on a freshly opened raster), as a ratio to GDAL's
//    GDALComputeRasterStatistics plus GDALGetRasterHistogramEx (same bins)
//    on the same band in this process; both results are compared;
//  - the peak memory of that step above the process's size before it;
//  - tzmap's first draw of the whole raster into a 1920 x 1080 view, with
//    the render the layer opens with.
//
// Usage: bench_raster_stretch [folder]   (default: <temp>/tzrender-bench-raster;
// the rasters are made once and reused by later runs)

#include "BenchSupport.h"

#include "TZLayerDrawer.h"
#include "TZMapViewport.h"
#include "TzRasterBandReader.h"

#include "data/TEGdalSupport.h"
#include "data/TERasterLayer.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>

#include <cpl_conv.h>
#include <gdal.h>

#include <algorithm>
#include <functional>
#include <cmath>
#include <cstdio>
#include <vector>

using namespace TZObjects;

namespace {

using BenchSupport::median;

constexpr int kSide = 10000;
constexpr int kRepeats = 3;

double pixelValue(GDALDataType type, int x, int y)
{
    if (type == GDT_Byte)
        return double((x / 7 + y / 5 + (x * y) % 13) % 256);
    // A smooth surface with a no-data corner.
    if (x + y < 600)
        return -9999.0;
    return 100.0 * std::sin(x * 0.001) * std::cos(y * 0.0013) + (x % 97) * 0.01;
}

QString ensureRaster(const QString& folder, const char* name, GDALDataType type)
{
    const QString path = QDir(folder).filePath(QString::fromLatin1(name));
    if (QFile::exists(path))
        return path;
    std::fprintf(stderr, "making %s...\n", qPrintable(path));
    const char* options[] = {"TILED=YES", "BLOCKXSIZE=256", "BLOCKYSIZE=256", nullptr};
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), path.toUtf8().constData(), kSide, kSide, 1, type,
                                      const_cast<char**>(options));
    if (!dataset)
        return QString();
    double transform[6] = {500000.0, 10.0, 0.0, 5100000.0, 0.0, -10.0};
    GDALSetGeoTransform(dataset, transform);
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    if (type != GDT_Byte)
        GDALSetRasterNoDataValue(band, -9999.0);
    std::vector<double> rows(size_t(kSide) * 256);
    for (int y0 = 0; y0 < kSide; y0 += 256) {
        const int n = std::min(256, kSide - y0);
        for (int y = 0; y < n; ++y)
            for (int x = 0; x < kSide; ++x)
                rows[size_t(y) * kSide + x] = pixelValue(type, x, y0 + y);
        if (GDALRasterIO(band, GF_Write, 0, y0, kSide, n, rows.data(), kSide, n, GDT_Float64, 0, 0) != CE_None) {
            GDALClose(dataset);
            QFile::remove(path);
            return QString();
        }
    }
    GDALClose(dataset);
    return path;
}

long statusKb(const char* field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field))).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

// Runs step with the process's peak reset first; gives the milliseconds it
// took and how far (kB) the peak rose above the size before it.
double measure(const std::function<void()>& step, long& peakKb)
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    if (clear.open(QIODevice::WriteOnly))
        clear.write("5");
    clear.close();
    const long before = statusKb("VmRSS:");
    QElapsedTimer timer;
    timer.start();
    step();
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    peakKb = statusKb("VmHWM:") - before;
    return ms;
}

// What a step found: the statistics and a digest of the histogram, so that
// the steps run in separate processes can be compared.
struct Result
{
    double minimum = 0, maximum = 0, mean = 0, stdDev = 0;
    std::vector<double> counts;

    QString digest() const
    {
        quint64 hash = 1469598103934665603ULL;
        double total = 0.0;
        for (double c : counts) {
            hash = (hash ^ quint64(c)) * 1099511628211ULL;
            total += c;
        }
        return QStringLiteral("%1 %2 %3 %4 bins=%5 pixels=%6 hash=%7")
            .arg(minimum, 0, 'g', 10).arg(maximum, 0, 'g', 10).arg(mean, 0, 'g', 8).arg(stdDev, 0, 'g', 8)
            .arg(counts.size()).arg(total, 0, 'f', 0).arg(hash, 0, 16);
    }
};

Result ourStatisticsAndHistogram(const QString& path)
{
    Result result;
    TERefPtr<TERasterProps> raster = TERasterProps::Open(path);
    TERasterProps::BandStatistics s;
    TzBandHistogram histogram;
    if (!raster || !TzRasterBandReader::histogramOf(raster.get(), 1, histogram) || !raster->GetStatistics(1, s))
        std::fprintf(stderr, "our read failed\n");
    result = {s.minimum, s.maximum, s.mean, s.stdDev, {}};
    for (const auto& p : histogram)
        result.counts.push_back(p.count);
    return result;
}

Result gdalStatisticsAndHistogram(const QString& path)
{
    Result g;
    GDALDatasetH dataset = GDALOpen(path.toUtf8().constData(), GA_ReadOnly);
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    GDALComputeRasterStatistics(band, FALSE, &g.minimum, &g.maximum, &g.mean, &g.stdDev, nullptr, nullptr);
    // The panels' bins: one per integer for a Byte band, 1024 equal bins
    // over min..max otherwise (the maximum in the last one, which GDAL does
    // when out-of-range values are included; there are none).
    const bool integerBins = GDALGetRasterDataType(band) == GDT_Byte;
    const int bins = integerBins ? int(g.maximum - g.minimum) + 1 : TEBandScan::BoundedBins;
    const double low = integerBins ? g.minimum - 0.5 : g.minimum;
    const double high = integerBins ? g.maximum + 0.5 : g.maximum;
    std::vector<GUIntBig> buckets(size_t(bins), 0);
    GDALGetRasterHistogramEx(band, low, high, bins, buckets.data(), TRUE, FALSE, nullptr, nullptr);
    g.counts.assign(buckets.begin(), buckets.end());
    GDALClose(dataset);
    return g;
}

void drawWhole(const QString& path)
{
    QString error;
    TERefPtr<TERasterLayer> layer = TERasterLayer::Open(path, &error);
    if (!layer) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return;
    }
    QRectF extent;
    layer->GetExtent(extent);
    const TZMapViewport viewport = TZMapViewport::fitting(QSize(1920, 1080), extent);
    QImage image(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    long peak = 0;
    const double ms = measure([&] {
        std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer.get());
        QPainter painter(&image);
        drawer->draw(&painter, viewport, nullptr);
    }, peak);
    std::printf("%.1f %ld -\n", ms, peak);
}

// One step in this process: prints "milliseconds peak-kB digest"; the
// peak of a fresh process is not hidden by memory an earlier step freed.
int runStep(const QString& step, const QString& path)
{
    if (step == QLatin1String("draw")) {
        drawWhole(path);
        return 0;
    }
    Result result;
    long peak = 0;
    const double ms = measure([&] {
        result = step == QLatin1String("ours") ? ourStatisticsAndHistogram(path) : gdalStatisticsAndHistogram(path);
    }, peak);
    std::printf("%.1f %ld %s\n", ms, peak, qPrintable(result.digest()));
    return 0;
}

struct StepRun
{
    double ms = 0.0;
    double peakMb = 0.0;
    QString digest;
};

// Runs a step kRepeats times, each in a new process: the median time, the
// largest peak, the digest.
StepRun runRepeated(const QString& program, const QString& step, const QString& path)
{
    std::vector<double> times;
    StepRun run;
    for (int r = 0; r < kRepeats; ++r) {
        QProcess child;
        child.start(program, {QStringLiteral("--step"), step, path});
        child.waitForFinished(-1);
        const QString line = QString::fromUtf8(child.readAllStandardOutput()).trimmed().split('\n').last();
        const QStringList parts = line.split(' ');
        if (parts.size() < 3) {
            std::fprintf(stderr, "step %s failed: %s\n", qPrintable(step), qPrintable(line));
            return run;
        }
        times.push_back(parts[0].toDouble());
        run.peakMb = std::max(run.peakMb, parts[1].toDouble() / 1024.0);
        run.digest = parts.mid(2).join(' ');
    }
    run.ms = median(times);
    return run;
}

void benchBand(const QString& program, const QString& path, const char* label)
{
    const StepRun ours = runRepeated(program, QStringLiteral("ours"), path);
    const StepRun gdal = runRepeated(program, QStringLiteral("gdal"), path);
    std::printf("| %s: statistics + histogram | %.0f ms | %.0f ms | %.2fx | %.1f MB | %.1f MB | %s |\n", label, ours.ms,
                gdal.ms, ours.ms / gdal.ms, ours.peakMb, gdal.peakMb,
                ours.digest == gdal.digest ? "same" : "DIFFERENT");
    if (ours.digest != gdal.digest)
        std::printf("  ours: %s\n  GDAL: %s\n", qPrintable(ours.digest), qPrintable(gdal.digest));
    std::fflush(stdout);
}

void benchDraw(const QString& program, const QString& path, const char* label)
{
    const StepRun draw = runRepeated(program, QStringLiteral("draw"), path);
    std::printf("| %s: tzmap's first draw into 1920 x 1080 | %.0f ms | | | %.1f MB | | |\n", label, draw.ms,
                draw.peakMb);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    // GDAL would otherwise write the statistics next to the rasters.
    CPLSetConfigOption("GDAL_PAM_ENABLED", "NO");
    const QStringList args = app.arguments();
    if (args.size() == 4 && args[1] == QLatin1String("--step"))
        return runStep(args[2], args[3]);

    const QString folder = args.size() > 1 ? args[1] : QDir::temp().filePath(QStringLiteral("tzrender-bench-raster"));
    QDir().mkpath(folder);
    const QString floating = ensureRaster(folder, "float32.tif", GDT_Float32);
    const QString bytes = ensureRaster(folder, "byte.tif", GDT_Byte);
    if (floating.isEmpty() || bytes.isEmpty()) {
        std::fprintf(stderr, "cannot write the rasters in %s\n", qPrintable(folder));
        return 1;
    }
    const QString program = app.applicationFilePath();
    std::printf("GDAL block cache: %lld MB; each step in a process of its own, medians of %d runs, "
                "largest peak\n\n", (long long)(GDALGetCacheMax64() >> 20), kRepeats);
    std::printf("| measure | ours | GDAL | ratio | our peak | GDAL's peak | results |\n|---|---|---|---|---|---|---|\n");
    benchBand(program, floating, "Float32");
    benchBand(program, bytes, "Byte");
    benchDraw(program, bytes, "Byte");
    benchDraw(program, floating, "Float32");
    return 0;
}
