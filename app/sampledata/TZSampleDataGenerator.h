#pragma once

#include "TZSampleRandom.h"

#include <gdal.h>
#include <ogr_srs_api.h>

#include <cstdint>
#include <string>
#include <vector>

// Writes tzmap's sample data set into a folder through the GDAL/OGR C API:
// a GeoPackage with the vector layers "regions" (adjacent polygons),
// "places" (points) and "roads" (lines), and the rasters elevation.tif
// (Float32 with no-data), image_rgb.tif (3-band Byte), image_rgbn.tif
// (4-band Byte, red/green/blue/near infrared), landcover.tif (paletted
// Byte), landuse_codes.tif (the same classes as Int16 codes, no palette)
// and tiles/ (the elevation cut into tiles, for a raster directory
// layer). Everything lies in EPSG:3857 over the same 60 x 45 km area and is
// reproducible: the same seed writes the same values.
class TZSampleDataGenerator
{
public:
    static constexpr const char* GeoPackageName = "sample.gpkg";
    static constexpr const char* ElevationName = "elevation.tif";
    static constexpr const char* RgbImageName = "image_rgb.tif";
    static constexpr const char* RgbnImageName = "image_rgbn.tif";
    static constexpr const char* LandcoverName = "landcover.tif";
    static constexpr const char* LandUseCodesName = "landuse_codes.tif";
    static constexpr int LandUseCodesNoData = -1;
    static constexpr const char* TilesFolderName = "tiles";
    static constexpr double ElevationNoData = -9999.0;

    // The land-use classes of "regions" and of the landcover raster (whose
    // pixel value is the index + 1; 0 is no-data).
    static const std::vector<std::string>& LandUseClasses();
    // The Int16 code of each land-use class in landuse_codes.tif, in the
    // order of LandUseClasses().
    static const std::vector<short>& LandUseCodes();
    static const std::vector<std::string>& PlaceTypes();
    static const std::vector<std::string>& RoadClasses();

    explicit TZSampleDataGenerator(std::string outDir, std::uint64_t seed = 20240611u);

    // Writes every file, replacing what is there. On failure returns false
    // with a message in error.
    bool generate(std::string* error);

private:
    struct Place
    {
        double x = 0.0;
        double y = 0.0;
        int type = 0;  // index into PlaceTypes()
        std::string name;
        long long population = -1;  // -1: unknown (written as null)
    };

    struct Road
    {
        std::vector<double> coords;  // x0, y0, x1, y1, ...
        int roadClass = 0;           // index into RoadClasses()
        int lanes = 0;               // 0: unknown (written as null)
    };

    double elevationAt(double x, double y) const;
    double urbanAt(double x, double y) const;
    int landUseAt(double x, double y, double pick) const;
    std::string makeName();

    void makePlaces();
    void makeRoads();
    void addRoad(const Place& from, const Place& to, int roadClass, int lanes);
    void addStreetGrid(const Place& centre, int streets, double halfLength);

    bool writeVectors(std::string* error);
    bool writeRegions(GDALDatasetH dataset, OGRSpatialReferenceH srs, std::string* error);
    bool writePlaces(GDALDatasetH dataset, OGRSpatialReferenceH srs, std::string* error);
    bool writeRoads(GDALDatasetH dataset, OGRSpatialReferenceH srs, std::string* error);
    bool writeRasters(std::string* error);

    std::string mOutDir;
    std::uint64_t mSeed = 0;
    TZSampleRandom mRandom;
    std::vector<Place> mPlaces;
    std::vector<Road> mRoads;
    std::vector<std::string> mUsedNames;
};
