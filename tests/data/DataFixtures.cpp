#include "DataFixtures.h"

#include "data/TEFeature.h"
#include "data/TEGdalSupport.h"

#include <gdal.h>
#include <cstring>
#include <ogr_srs_api.h>

namespace DataFixtures {

using namespace TZObjects;

QString writeVector(const QString& path, const char* driverName, const QString& layerName,
                    OGRwkbGeometryType geometryType, const std::vector<Field>& fields, const std::vector<Row>& rows)
{
    TEGdalSupport::EnsureRegistered();
    // A database is opened and gets a new table (replacing one of the same
    // name, names kept as written); a file is created.
    const bool database = std::strcmp(driverName, "PostgreSQL") == 0;
    GDALDriverH driver = GDALGetDriverByName(driverName);
    GDALDatasetH dataset = nullptr;
    if (database)
        dataset = GDALOpenEx(path.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, nullptr, nullptr, nullptr);
    else if (driver)
        dataset = GDALCreate(driver, path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset)
        return TEGdalSupport::LastError(QStringLiteral("cannot create ") + path);
    OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(srs, 3857);
    const char* databaseOptions[] = {"OVERWRITE=YES", "LAUNDER=NO", "FID=fid", "GEOMETRY_NAME=geom", nullptr};
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, layerName.toUtf8().constData(), srs, geometryType,
                                             database ? const_cast<char**>(databaseOptions) : nullptr);
    OSRRelease(srs);
    QString error;
    if (!layer)
        error = TEGdalSupport::LastError(QStringLiteral("cannot create layer"));
    for (const Field& field : fields) {
        if (!error.isEmpty())
            break;
        OGRFieldDefnH definition = OGR_Fld_Create(field.name.toUtf8().constData(), field.type);
        OGR_Fld_SetSubType(definition, field.subType);
        if (OGR_L_CreateField(layer, definition, TRUE) != OGRERR_NONE)
            error = TEGdalSupport::LastError(QStringLiteral("cannot create field ") + field.name);
        OGR_Fld_Destroy(definition);
    }
    if (error.isEmpty())
        GDALDatasetStartTransaction(dataset, FALSE);
    for (const Row& row : rows) {
        if (!error.isEmpty())
            break;
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        for (int i = 0; i < int(row.values.size()); ++i)
            TEFeature::WriteOgrField(feature, i, row.values[size_t(i)]);
        if (!row.wkt.isEmpty()) {
            QByteArray wkt = row.wkt.toUtf8();
            char* cursor = wkt.data();
            OGRGeometryH geometry = nullptr;
            OGR_G_CreateFromWkt(&cursor, nullptr, &geometry);
            OGR_F_SetGeometryDirectly(feature, geometry);
        }
        if (OGR_L_CreateFeature(layer, feature) != OGRERR_NONE)
            error = TEGdalSupport::LastError(QStringLiteral("cannot write a feature"));
        OGR_F_Destroy(feature);
    }
    if (error.isEmpty())
        GDALDatasetCommitTransaction(dataset);
    GDALClose(dataset);
    return error;
}

QString writeGeoTiff(const QString& path, int width, int height, int bands, int gdalType,
                     double (*value)(int band, int x, int y), const double* noData, double originX,
                     double originY, double pixelSize)
{
    TEGdalSupport::EnsureRegistered();
    GDALDriverH driver = GDALGetDriverByName("GTiff");
    GDALDatasetH dataset = GDALCreate(driver, path.toUtf8().constData(), width, height, bands,
                                      GDALDataType(gdalType), nullptr);
    if (!dataset)
        return TEGdalSupport::LastError(QStringLiteral("cannot create ") + path);
    double transform[6] = {originX, pixelSize, 0.0, originY, 0.0, -pixelSize};
    GDALSetGeoTransform(dataset, transform);
    std::vector<double> pixels(size_t(width) * size_t(height));
    for (int b = 1; b <= bands; ++b) {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels[size_t(y) * size_t(width) + size_t(x)] = value(b, x, y);
        GDALRasterBandH band = GDALGetRasterBand(dataset, b);
        if (noData)
            GDALSetRasterNoDataValue(band, *noData);
        if (GDALRasterIO(band, GF_Write, 0, 0, width, height, pixels.data(), width, height, GDT_Float64, 0, 0)
            != CE_None) {
            GDALClose(dataset);
            return TEGdalSupport::LastError(QStringLiteral("cannot write pixels"));
        }
    }
    GDALClose(dataset);
    return {};
}

} // namespace DataFixtures
