#pragma once

#include "data/TELayer.h"
#include "data/TERasterProps.h"
#include "renders/TEImageRender.h"

namespace TZObjects {

// A raster layer over one GDAL raster: single-band (type 6) or multi-band
// (type 7), with the image render it is drawn with.
class TZOBJECTS_EXPORT TERasterLayer : public TELayer
{
public:
    static TERefPtr<TERasterLayer> Open(const QString& path, QString* error = nullptr);

    bool IsValid() const override { return bool(mRaster); }
    bool IsRasterLayer() const override { return true; }

    TERefPtr<TERasterProps> GetRaster() const { return mRaster; }

    TERefPtr<TERender> GetRender() const override;
    TERefPtr<TEImageRender> GetImageRender() const;
    // An empty pointer removes the render.
    void SetRender(TERefPtr<TEImageRender> render);

    bool GetExtent(QRectF& extent) const override;
    QString GetSpatialReferenceWkt() const override;

    // The extent of a raster from its size and geo-transform.
    static QRectF ExtentOf(const TERasterProps& raster);

private:
    TERasterLayer(const QString& path, TERefPtr<TERasterProps> raster);

    TERefPtr<TERasterProps> mRaster;
    mutable QMutex mMutex;
    TERefPtr<TEImageRender> mRender;
};

} // namespace TZObjects
