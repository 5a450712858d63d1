#pragma once

#include "core/TERefPtr.h"
#include "data/TELayer.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

// Turns what a user opens into layers: every vector layer of an OGR source
// (a file, a folder of shapefiles, a "PG:" connection string), a GDAL
// raster, or a folder of rasters as one raster directory layer.
class TZLayerOpener
{
    Q_DECLARE_TR_FUNCTIONS(TZLayerOpener)

public:
    // The kinds of layer a project records.
    static constexpr const char* FeatureKind = "feature";
    static constexpr const char* RasterKind = "raster";
    static constexpr const char* RasterDirKind = "rasterdir";

    // All layers found at path; empty with a message in error when nothing
    // could be read.
    static std::vector<TZObjects::TERefPtr<TZObjects::TELayer>> open(const QString& path, QString* error);

    // One layer of a known kind (as a project stores it); layerName names
    // the vector layer within the source.
    static TZObjects::TERefPtr<TZObjects::TELayer> openLayer(const QString& kind, const QString& source,
                                                             const QString& layerName, QString* error);

    // The kind of a layer, and the name of its vector layer within the source.
    static QString kindOf(const TZObjects::TELayer* layer);
    static QString sourceLayerNameOf(const TZObjects::TELayer* layer);
};
