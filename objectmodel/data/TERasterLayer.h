#pragma once

#include "data/TELayer.h"
#include "data/TERasterProps.h"
#include "renders/TEImageRender.h"

namespace TZObjects {

// A raster layer over one GDAL raster: single-band (type 6) or multi-band
// (type 7), with the image render it is drawn with. It opens with the render
// that fits the raster (see MakeDefaultRender).
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

    // The render a raster opens with: a single band with a colour table its
    // colour map; any other single band a min-max grey stretch (see
    // MakeStretchRender); several bands the RGB composite of bands 1, 2 and
    // 3, bytes taken as they are and other types clipped by percent.
    static TERefPtr<TEImageRender> MakeDefaultRender(TERasterProps* raster);
    // A min-max grey stretch of one band with no-data transparent, from
    // statistics that are approximate on a large raster.
    static TERefPtr<TEImageRender> MakeStretchRender(TERasterProps* raster, int band = 1);

    // The extent of a raster from its size and geo-transform.
    static QRectF ExtentOf(const TERasterProps& raster);

private:
    TERasterLayer(const QString& path, TERefPtr<TERasterProps> raster);

    TERefPtr<TERasterProps> mRaster;
    mutable QMutex mMutex;
    TERefPtr<TEImageRender> mRender;
};

} // namespace TZObjects
