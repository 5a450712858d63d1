#include "data/TERasterDirLayer.h"

#include "data/TEGdalSupport.h"
#include "data/TERasterLayer.h"

#include <QDir>
#include <QFileInfo>

#include <gdal_utils.h>

#include <vector>

namespace TZObjects {

TERefPtr<TERasterDirLayer> TERasterDirLayer::Open(const QString& folder, QString* error)
{
    TEGdalSupport::EnsureRegistered();
    const QDir dir(folder);
    if (!dir.exists()) {
        if (error)
            *error = QStringLiteral("The folder \"%1\" does not exist.").arg(folder);
        return {};
    }
    // Keep only the files GDAL reads as rasters, so stray files (world
    // files, notes, auxiliary XML) do not break the mosaic.
    QStringList files;
    std::vector<GDALDatasetH> datasets;
    for (const QFileInfo& info : dir.entryInfoList(QDir::Files, QDir::Name)) {
        if (info.suffix().compare(QLatin1String("xml"), Qt::CaseInsensitive) == 0)
            continue;
        CPLPushErrorHandler(CPLQuietErrorHandler);
        GDALDatasetH dataset = GDALOpenEx(info.absoluteFilePath().toUtf8().constData(),
                                          GDAL_OF_RASTER | GDAL_OF_READONLY, nullptr, nullptr, nullptr);
        CPLPopErrorHandler();
        if (!dataset)
            continue;
        if (GDALGetRasterCount(dataset) > 0) {
            files << info.absoluteFilePath();
            datasets.push_back(dataset);
        } else {
            GDALClose(dataset);
        }
    }
    if (datasets.empty()) {
        if (error)
            *error = QStringLiteral("The folder \"%1\" holds no raster.").arg(folder);
        return {};
    }
    CPLErrorReset();
    int usageError = FALSE;
    GDALDatasetH vrt = GDALBuildVRT("", int(datasets.size()), datasets.data(), nullptr, nullptr, &usageError);
    // The VRT keeps its own references to the sources.
    for (GDALDatasetH dataset : datasets)
        GDALClose(dataset);
    if (!vrt) {
        if (error)
            *error = QStringLiteral("Cannot build a mosaic of \"%1\": %2")
                         .arg(folder, TEGdalSupport::LastError(QStringLiteral("incompatible rasters")));
        return {};
    }
    return TERefPtr<TERasterDirLayer>(new TERasterDirLayer(folder, files, MakeRef<TERasterProps>(vrt)));
}

TERasterDirLayer::TERasterDirLayer(const QString& folder, QStringList files, TERefPtr<TERasterProps> raster)
    : TELayer(LT_RasterDir, folder, TEString(QDir(folder).dirName()))
    , mFiles(std::move(files))
    , mRaster(std::move(raster))
    , mRender(TERasterLayer::MakeStretchRender(mRaster.get(), 1))
{
}

TERefPtr<TERender> TERasterDirLayer::GetRender() const
{
    return GetImageRender();
}

TERefPtr<TEImageRender> TERasterDirLayer::GetImageRender() const
{
    QMutexLocker lock(&mMutex);
    return mRender;
}

void TERasterDirLayer::SetRender(TERefPtr<TEImageRender> render)
{
    {
        QMutexLocker lock(&mMutex);
        mRender = std::move(render);
    }
    RaiseRenderChanged();
}

bool TERasterDirLayer::GetExtent(QRectF& extent) const
{
    if (!mRaster)
        return false;
    extent = TERasterLayer::ExtentOf(*mRaster);
    return true;
}

QString TERasterDirLayer::GetSpatialReferenceWkt() const
{
    return mRaster ? mRaster->GetSpatialReferenceWkt() : QString();
}

} // namespace TZObjects
