#pragma once

#include "data/TELayer.h"
#include "data/TERasterProps.h"
#include "renders/TEImageRender.h"

#include <QStringList>

namespace TZObjects {

// A folder of rasters shown as one mosaic (layer type 8). The files are
// joined into an in-memory GDAL VRT, which GetRaster reads and draws. It
// opens with a single-band min-max grey stretch of its first band.
class TZOBJECTS_EXPORT TERasterDirLayer : public TELayer
{
public:
    // Opens every raster in the folder (not its sub-folders). Fails, with an
    // error text, when the folder holds no raster GDAL can read.
    static TERefPtr<TERasterDirLayer> Open(const QString& folder, QString* error = nullptr);

    bool IsValid() const override { return bool(mRaster); }
    bool IsRasterLayer() const override { return true; }

    TERefPtr<TERasterProps> GetRaster() const { return mRaster; }
    // The raster files of the mosaic.
    QStringList GetFiles() const { return mFiles; }

    TERefPtr<TERender> GetRender() const override;
    virtual TERefPtr<TEImageRender> GetImageRender() const;
    virtual void SetRender(TERefPtr<TEImageRender> render);

    bool GetExtent(QRectF& extent) const override;
    QString GetSpatialReferenceWkt() const override;

private:
    TERasterDirLayer(const QString& folder, QStringList files, TERefPtr<TERasterProps> raster);

    QStringList mFiles;
    TERefPtr<TERasterProps> mRaster;
    mutable QMutex mMutex;
    TERefPtr<TEImageRender> mRender;
};

} // namespace TZObjects
