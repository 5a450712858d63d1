#include "TZLayerOpener.h"

#include "TZPostgisLogin.h"

#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "data/TEPostgresSource.h"
#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"

#include <QFileInfo>

#include <gdal.h>

using namespace TZObjects;

std::vector<TERefPtr<TELayer>> TZLayerOpener::open(const QString& given, QString* error)
{
    std::vector<TERefPtr<TELayer>> layers;
    // A PostGIS connection gets the password its server asks for.
    const QString path = TEPostgresSource::IsPostgres(given) ? TZPostgisLogin::complete(given, error) : given;
    if (path.isEmpty())
        return layers;
    QString lastError;
    const QFileInfo info(path);
    if (info.isDir()) {
        QString dirError;
        if (TERefPtr<TERasterDirLayer> mosaic = TERasterDirLayer::Open(path, &dirError)) {
            layers.emplace_back(mosaic);
            return layers;
        }
        lastError = dirError;
    }

    if (!info.exists() && !path.contains(QLatin1Char(':'))) {
        if (error)
            *error = TZLayerOpener::tr("\"%1\" was not found.").arg(path);
        return layers;
    }
    TEGdalSupport::EnsureRegistered();
    CPLErrorReset();
    GDALDatasetH ds = GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_RASTER | GDAL_OF_READONLY,
                                 nullptr, nullptr, nullptr);
    // A PostGIS database without raster support fails the raster probe;
    // its vector layers still open.
    if (!ds && !info.exists())
        ds = GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr);
    if (!ds) {
        // GDAL's own reason ("database disk image is malformed") says more
        // than that it could not read the file.
        const QString reason = QString::fromUtf8(CPLGetLastErrorMsg()).trimmed();
        if (error) {
            if (!lastError.isEmpty())
                *error = lastError;
            else if (!reason.isEmpty())
                *error = TZLayerOpener::tr("GDAL cannot read \"%1\": %2").arg(TEPostgresSource::WithoutPassword(path), reason);
            else
                *error = TZLayerOpener::tr("\"%1\" is not a vector or raster source GDAL can read.").arg(TEPostgresSource::WithoutPassword(path));
        }
        return layers;
    }
    QStringList vectorNames;
    for (int i = 0; i < GDALDatasetGetLayerCount(ds); ++i)
        vectorNames << QString::fromUtf8(OGR_L_GetName(GDALDatasetGetLayer(ds, i)));
    const bool hasRaster = GDALGetRasterCount(ds) > 0;
    GDALClose(ds);

    for (const QString& name : vectorNames) {
        QString layerError;
        if (TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, name, &layerError))
            layers.emplace_back(layer);
        else
            lastError = layerError;
    }
    if (hasRaster) {
        QString rasterError;
        if (TERefPtr<TERasterLayer> layer = TERasterLayer::Open(path, &rasterError))
            layers.emplace_back(layer);
        else
            lastError = rasterError;
    }
    if (layers.empty() && error)
        *error = lastError.isEmpty() ? TZLayerOpener::tr("\"%1\" holds no layer.").arg(TEPostgresSource::WithoutPassword(path)) : lastError;
    return layers;
}

TERefPtr<TELayer> TZLayerOpener::openLayer(const QString& kind, const QString& source, const QString& layerName,
                                           QString* error)
{
    // GDAL names a missing file no better than a damaged one.
    if (!source.contains(QLatin1Char(':')) && !QFileInfo::exists(source)) {
        if (error)
            *error = TZLayerOpener::tr("\"%1\" was not found.").arg(source);
        return {};
    }
    if (kind == QLatin1String(FeatureKind) && TEPostgresSource::IsPostgres(source)) {
        const QString completed = TZPostgisLogin::complete(source, error);
        if (completed.isEmpty())
            return {};
        return TEFeatureLayer::Open(completed, layerName, error);
    }
    if (kind == QLatin1String(FeatureKind))
        return TEFeatureLayer::Open(source, layerName, error);
    if (kind == QLatin1String(RasterKind))
        return TERasterLayer::Open(source, error);
    if (kind == QLatin1String(RasterDirKind))
        return TERasterDirLayer::Open(source, error);
    if (error)
        *error = TZLayerOpener::tr("Unknown layer kind \"%1\".").arg(kind);
    return {};
}

QString TZLayerOpener::kindOf(const TELayer* layer)
{
    if (dynamic_cast<const TEFeatureLayer*>(layer))
        return QLatin1String(FeatureKind);
    if (dynamic_cast<const TERasterDirLayer*>(layer))
        return QLatin1String(RasterDirKind);
    return QLatin1String(RasterKind);
}

QString TZLayerOpener::sourceLayerNameOf(const TELayer* layer)
{
    auto* features = dynamic_cast<const TEFeatureLayer*>(layer);
    return features ? features->GetSourceLayerName() : QString();
}
