#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"
#include "data/TEEventSignal.h"
#include "renders/TERender.h"

#include <QRectF>
#include <QString>

namespace TZObjects {

// Base of every map layer: a name, a unique GUID, a layer type, the source
// it was opened from (so a host can save and reopen it) and its render.
class TZOBJECTS_EXPORT TELayer : public TERefBase
{
public:
    enum LayerType {
        LT_Unknown = 0,   // no geometry (a table) or a mix of kinds
        LT_Point = 1,
        LT_MultiPoint = 2,
        LT_Line = 3,      // lines and multi-lines
        LT_Polygon = 4,   // polygons and multi-polygons
        LT_SingleBandRaster = 6,
        LT_MultiBandRaster = 7,
        LT_RasterDir = 8  // a folder of rasters shown as one mosaic
    };

    ~TELayer() override = default;

    TEString GetLayerName() const { return mName; }
    void SetLayerName(const TEString& name) { mName = name; }
    TEString GetGuidStr() const { return mGuid; }
    LayerType GetLayerType() const { return mLayerType; }

    // The file, folder or connection string the layer reads.
    QString GetSource() const { return mSource; }

    virtual bool IsValid() const = 0;
    virtual bool IsFeatureLayer() const { return false; }
    virtual bool IsRasterLayer() const { return false; }

    // The current render, empty when the layer has none.
    virtual TERefPtr<TERender> GetRender() const = 0;

    // The layer's extent in its own CRS; false when it has none.
    virtual bool GetExtent(QRectF& extent) const = 0;
    // The layer's CRS as WKT; empty when unknown.
    virtual QString GetSpatialReferenceWkt() const = 0;

    // Raised (sender: this layer, event: a plain TEEvent) when the render is
    // set or removed.
    TEEventSignal& render_changed() const { return mRenderChanged; }

protected:
    TELayer(LayerType type, const QString& source, const TEString& name);
    void SetLayerType(LayerType type) { mLayerType = type; }
    void RaiseRenderChanged();

private:
    TEString mName;
    TEString mGuid;
    QString mSource;
    LayerType mLayerType = LT_Unknown;
    mutable TEEventSignal mRenderChanged;
};

} // namespace TZObjects
