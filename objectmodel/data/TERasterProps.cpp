#include "data/TERasterProps.h"

#include "data/TEGdalSupport.h"

#include <cpl_conv.h>

namespace TZObjects {

TERasterProps::TERasterProps(GDALDatasetH dataset) : mDataset(dataset)
{
    if (mDataset) {
        mWidth = GDALGetRasterXSize(mDataset);
        mHeight = GDALGetRasterYSize(mDataset);
        mBandCount = GDALGetRasterCount(mDataset);
    }
    for (int i = 0; i < 2; ++i) {
        mStatisticsState[i].assign(size_t(mBandCount), 0);
        mStatistics[i].resize(size_t(mBandCount));
    }
    mValueCounts.resize(size_t(mBandCount));
}

TERasterProps::~TERasterProps()
{
    if (mDataset)
        GDALClose(mDataset);
}

TERefPtr<TERasterProps> TERasterProps::Open(const QString& path, QString* error)
{
    TEGdalSupport::EnsureRegistered();
    CPLErrorReset();
    // Reads at a coarser resolution than the file's (a whole large raster
    // drawn into a view) let the GeoTIFF driver read just the pixels they
    // keep, straight from an uncompressed file, instead of every block
    // through GDAL's block cache. The driver takes the option when the
    // file opens; other drivers ignore it.
    const QByteArray directBefore = CPLGetThreadLocalConfigOption("GTIFF_DIRECT_IO", nullptr);
    CPLSetThreadLocalConfigOption("GTIFF_DIRECT_IO", "YES");
    GDALDatasetH dataset = GDALOpenEx(path.toUtf8().constData(), GDAL_OF_RASTER | GDAL_OF_READONLY,
                                      nullptr, nullptr, nullptr);
    CPLSetThreadLocalConfigOption("GTIFF_DIRECT_IO", directBefore.isNull() ? nullptr : directBefore.constData());
    if (!dataset) {
        if (error)
            *error = QStringLiteral("Cannot open \"%1\": %2")
                         .arg(path, TEGdalSupport::LastError(QStringLiteral("not a raster")));
        return {};
    }
    if (GDALGetRasterCount(dataset) == 0) {
        GDALClose(dataset);
        if (error)
            *error = QStringLiteral("\"%1\" has no raster band.").arg(path);
        return {};
    }
    return MakeRef<TERasterProps>(dataset);
}

GDALRasterBandH TERasterProps::Band(int band) const
{
    if (!mDataset || band < 1 || band > mBandCount)
        return nullptr;
    return GDALGetRasterBand(mDataset, band);
}

int TERasterProps::GetBandDataType(int band) const
{
    QMutexLocker lock(&mMutex);
    GDALRasterBandH handle = Band(band);
    return handle ? int(GDALGetRasterDataType(handle)) : int(GDT_Unknown);
}

bool TERasterProps::HasStatistics(int band, Accuracy accuracy) const
{
    QMutexLocker lock(&mMutex);
    if (!Band(band))
        return false;
    const size_t i = size_t(band - 1);
    const bool approximate = accuracy == Accuracy::ApproximateIfLarge && IsLarge();
    return mStatisticsState[0][i] != 0 || (approximate && mStatisticsState[1][i] != 0);
}

bool TERasterProps::GetStatistics(int band, BandStatistics& statistics, Accuracy accuracy,
                                  const std::atomic<bool>* cancel) const
{
    QMutexLocker lock(&mMutex);
    GDALRasterBandH handle = Band(band);
    if (!handle)
        return false;
    const size_t i = size_t(band - 1);
    // A small raster is always read exactly: it is quick, and both kinds of
    // request then agree.
    const bool approximate = accuracy == Accuracy::ApproximateIfLarge && IsLarge();
    if (approximate && mStatisticsState[0][i] > 0) {
        statistics = mStatistics[0][i];
        return true;
    }
    const int kind = approximate ? 1 : 0;
    int& state = mStatisticsState[kind][i];
    if (state == 0) {
        BandStatistics& s = mStatistics[kind][i];
        CPLErrorReset();
        if (approximate) {
            // GDAL reads an overview or a sample of blocks.
            const CPLErr result = GDALComputeRasterStatistics(handle, TRUE, &s.minimum, &s.maximum, &s.mean,
                                                              &s.stdDev, nullptr, nullptr);
            state = result == CE_None ? 1 : -1;
        } else {
            // Block by block, outside GDAL's block cache; 8- and 16-bit
            // bands keep their value counts for histograms.
            TEBandScan::Statistics scanned;
            const TEBandScan::Result result = TEBandScan::ComputeStatistics(
                handle, scanned, TEBandScan::CountsValues(GDALGetRasterDataType(handle)) ? &mValueCounts[i] : nullptr,
                cancel);
            if (result == TEBandScan::Result::Cancelled)
                return false;
            s = {scanned.minimum, scanned.maximum, scanned.mean, scanned.stdDev};
            state = result == TEBandScan::Result::Ok ? 1 : -1;
        }
    }
    if (state < 0)
        return false;
    statistics = mStatistics[kind][i];
    return true;
}

bool TERasterProps::GetValueHistogram(int band, double minimum, double maximum, double noData,
                                      std::vector<TEBandScan::Point>& points, const std::atomic<bool>* cancel) const
{
    QMutexLocker lock(&mMutex);
    points.clear();
    GDALRasterBandH handle = Band(band);
    if (!handle || !(maximum >= minimum))
        return false;
    const TEBandScan::ValueCounts& counts = mValueCounts[size_t(band - 1)];
    if (!counts.counts.empty()) {
        TEBandScan::HistogramOf(counts, minimum, maximum, noData, points);
        return !points.empty();
    }
    CPLErrorReset();
    return TEBandScan::ComputeHistogram(handle, minimum, maximum, noData, points, cancel) == TEBandScan::Result::Ok;
}

bool TERasterProps::GetHistogram(int band, double minimum, double maximum, int bins, std::vector<double>& counts,
                                 Accuracy accuracy) const
{
    QMutexLocker lock(&mMutex);
    counts.clear();
    GDALRasterBandH handle = Band(band);
    if (!handle || bins <= 0 || !(maximum >= minimum))
        return false;
    // GDAL wants a range of some width; a band of one value lands in the
    // first bucket.
    const double high = maximum > minimum ? maximum : minimum + 1.0;
    std::vector<GUIntBig> buckets(size_t(bins), 0);
    const bool approximate = accuracy == Accuracy::ApproximateIfLarge && IsLarge();
    CPLErrorReset();
    if (GDALGetRasterHistogramEx(handle, minimum, high, bins, buckets.data(), TRUE, approximate ? TRUE : FALSE,
                                 nullptr, nullptr) != CE_None)
        return false;
    counts.assign(buckets.begin(), buckets.end());
    return true;
}

bool TERasterProps::GetStatistics(int band, double& minimum, double& maximum, double& mean, double& stdDev) const
{
    BandStatistics s;
    if (!GetStatistics(band, s))
        return false;
    minimum = s.minimum;
    maximum = s.maximum;
    mean = s.mean;
    stdDev = s.stdDev;
    return true;
}

double TERasterProps::GetNoDataValue(int band, bool* hasNoData) const
{
    QMutexLocker lock(&mMutex);
    GDALRasterBandH handle = Band(band);
    int has = FALSE;
    const double value = handle ? GDALGetRasterNoDataValue(handle, &has) : 0.0;
    if (hasNoData)
        *hasNoData = has != FALSE;
    return has ? value : 0.0;
}

bool TERasterProps::GetColorTable(int band, std::vector<QRgb>& entries) const
{
    QMutexLocker lock(&mMutex);
    entries.clear();
    GDALRasterBandH handle = Band(band);
    GDALColorTableH table = handle ? GDALGetRasterColorTable(handle) : nullptr;
    if (!table)
        return false;
    const int count = GDALGetColorEntryCount(table);
    entries.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        GDALColorEntry rgb;
        GDALGetColorEntryAsRGB(table, i, &rgb);
        entries.push_back(qRgba(rgb.c1, rgb.c2, rgb.c3, rgb.c4));
    }
    return true;
}

std::array<double, 6> TERasterProps::GetGeoTransform() const
{
    QMutexLocker lock(&mMutex);
    std::array<double, 6> transform{0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
    if (mDataset && GDALGetGeoTransform(mDataset, transform.data()) != CE_None)
        transform = {0.0, 1.0, 0.0, 0.0, 0.0, 1.0};
    return transform;
}

QString TERasterProps::GetSpatialReferenceWkt() const
{
    QMutexLocker lock(&mMutex);
    return mDataset ? QString::fromUtf8(GDALGetProjectionRef(mDataset)) : QString();
}

bool TERasterProps::ReadPixelBlock(int band, int x, int y, int width, int height, std::vector<double>& values,
                                   QString* error) const
{
    return ReadWindow(band, QRect(x, y, width, height), QSize(width, height), values, error);
}

bool TERasterProps::ReadWindow(int band, const QRect& window, const QSize& outSize, std::vector<double>& values,
                               QString* error) const
{
    QMutexLocker lock(&mMutex);
    GDALRasterBandH handle = Band(band);
    if (!handle) {
        if (error)
            *error = QStringLiteral("The raster has no band %1.").arg(band);
        return false;
    }
    if (window.isEmpty() || outSize.isEmpty() || window.left() < 0 || window.top() < 0
        || window.right() >= mWidth || window.bottom() >= mHeight) {
        if (error)
            *error = QStringLiteral("The block %1,%2 %3x%4 is outside the %5x%6 raster.")
                         .arg(window.left()).arg(window.top()).arg(window.width()).arg(window.height())
                         .arg(mWidth).arg(mHeight);
        return false;
    }
    values.assign(size_t(outSize.width()) * size_t(outSize.height()), 0.0);
    CPLErrorReset();
    if (GDALRasterIO(handle, GF_Read, window.left(), window.top(), window.width(), window.height(), values.data(),
                     outSize.width(), outSize.height(), GDT_Float64, 0, 0) != CE_None) {
        if (error)
            *error = TEGdalSupport::LastError(QStringLiteral("Reading the raster failed."));
        values.clear();
        return false;
    }
    return true;
}

QSize TERasterProps::GetBlockSize(int band) const
{
    QMutexLocker lock(&mMutex);
    GDALRasterBandH handle = Band(band);
    if (!handle)
        return QSize();
    int width = 0;
    int height = 0;
    GDALGetBlockSize(handle, &width, &height);
    return QSize(width, height);
}

bool TERasterProps::ReadRawWindow(int band, const QRect& window, int bufferType, void* buffer, QString* error) const
{
    QMutexLocker lock(&mMutex);
    GDALRasterBandH handle = Band(band);
    if (!handle || !buffer) {
        if (error)
            *error = QStringLiteral("The raster has no band %1.").arg(band);
        return false;
    }
    if (window.isEmpty() || window.left() < 0 || window.top() < 0 || window.right() >= mWidth
        || window.bottom() >= mHeight) {
        if (error)
            *error = QStringLiteral("The block %1,%2 %3x%4 is outside the %5x%6 raster.")
                         .arg(window.left()).arg(window.top()).arg(window.width()).arg(window.height())
                         .arg(mWidth).arg(mHeight);
        return false;
    }
    CPLErrorReset();
    if (GDALRasterIO(handle, GF_Read, window.left(), window.top(), window.width(), window.height(), buffer,
                     window.width(), window.height(), GDALDataType(bufferType), 0, 0) != CE_None) {
        if (error)
            *error = TEGdalSupport::LastError(QStringLiteral("Reading the raster failed."));
        return false;
    }
    return true;
}

} // namespace TZObjects
