#pragma once

#include "core/TEVariant.h"

#include <QString>

#include <ogr_api.h>

#include <utility>
#include <vector>

// Writes small vector and raster files through GDAL for the data tests.
namespace DataFixtures {

struct Field
{
    QString name;
    OGRFieldType type = OFTString;
    OGRFieldSubType subType = OFSTNone;
};

struct Row
{
    QString wkt;  // empty: no geometry
    std::vector<TZObjects::TEVariant> values;
};

// Creates a one-layer vector file with the driver ("GPKG", "ESRI Shapefile",
// "GeoJSON", ...), or for "PostgreSQL" a table (FID column "fid", geometry
// column "geom") in the database path names ("PG:..."). Returns an empty
// string on success, else the error.
QString writeVector(const QString& path, const char* driver, const QString& layerName,
                    OGRwkbGeometryType geometryType, const std::vector<Field>& fields, const std::vector<Row>& rows);

// Creates a GeoTIFF of the given size and band count whose pixel (x, y) of
// band b is value(b, x, y); noData is set on every band when given.
QString writeGeoTiff(const QString& path, int width, int height, int bands, int gdalType,
                     double (*value)(int band, int x, int y), const double* noData = nullptr,
                     double originX = 0.0, double originY = 0.0, double pixelSize = 1.0);

} // namespace DataFixtures
