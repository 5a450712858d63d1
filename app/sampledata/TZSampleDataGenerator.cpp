#include "TZSampleDataGenerator.h"

#include <cpl_conv.h>
#include <cpl_error.h>
#include <cpl_string.h>
#include <cpl_vsi.h>
#include <ogr_api.h>

#include <algorithm>
#include <filesystem>
#include <cmath>
#include <limits>
#include <memory>

namespace {

// The area: 60 x 45 km in EPSG:3857, rasters at 75 m.
constexpr double OriginX = 1180000.0;
constexpr double OriginY = 6040000.0;
constexpr double Width = 60000.0;
constexpr double Height = 45000.0;
constexpr double PixelSize = 75.0;
constexpr int RasterWidth = static_cast<int>(Width / PixelSize);
constexpr int RasterHeight = static_cast<int>(Height / PixelSize);
constexpr int GridColumns = 20;
constexpr int GridRows = 15;
constexpr double WaterLevel = 290.0;
constexpr int TileColumns = 3;
constexpr int TileRows = 2;

const char* const NamePrefixes[] = {
    "Ash", "Bram", "Cal", "Dun", "El", "Fern", "Glen", "Hal", "Ives", "Kel",
    "Lang", "Mar", "Nor", "Oak", "Pen", "Ros", "Stan", "Thorn", "Ul", "Wick",
    "Bar", "Cor", "Dal", "Hart", "Lin", "Mill", "Red", "Sel", "Wes", "Brook",
    "Ald", "Bel", "Cran", "Eves", "Gold", "Hay", "Kings", "Lox", "Quen", "Tarn"};
const char* const NameSuffixes[] = {
    "by", "ton", "field", "ham", "wick", "ford", "stead", "bury", "worth", "mere",
    "dale", "holm", "ley", "well", "gate", "cross", "moor", "bridge", "thorpe", "combe"};
const char* const HamletForms[] = {"Upper %s", "Lower %s", "%s Green", "%s End", "Little %s", "%s Farm"};

// Owns one GDAL/OGR handle for the length of a scope.
template <typename Handle, void (*Close)(Handle)>
class Owned
{
public:
    explicit Owned(Handle handle) : mHandle(handle) {}
    ~Owned()
    {
        if (mHandle)
            Close(mHandle);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    Handle get() const { return mHandle; }
    explicit operator bool() const { return mHandle != nullptr; }

private:
    Handle mHandle;
};

void closeDataset(GDALDatasetH ds) { GDALClose(ds); }
void destroySrs(OGRSpatialReferenceH srs) { OSRDestroySpatialReference(srs); }
using DatasetPtr = Owned<GDALDatasetH, closeDataset>;
using SrsPtr = Owned<OGRSpatialReferenceH, destroySrs>;

bool fail(std::string* error, const std::string& what)
{
    if (error) {
        *error = what;
        const char* gdal = CPLGetLastErrorMsg();
        if (gdal && *gdal)
            *error += std::string(": ") + gdal;
    }
    return false;
}

std::string joinPath(const std::string& folder, const std::string& name)
{
    return folder.empty() ? name : folder + "/" + name;
}

bool addField(OGRLayerH layer, const char* name, OGRFieldType type, std::string* error)
{
    OGRFieldDefnH field = OGR_Fld_Create(name, type);
    const OGRErr err = OGR_L_CreateField(layer, field, TRUE);
    OGR_Fld_Destroy(field);
    return err == OGRERR_NONE || fail(error, std::string("cannot create field ") + name);
}

double distance(double x0, double y0, double x1, double y1)
{
    return std::hypot(x1 - x0, y1 - y0);
}

// A geo-referenced raster file in EPSG:3857 with the given size and origin.
GDALDatasetH createRaster(const std::string& path, int width, int height, int bands, GDALDataType type,
                          double originX, double originY, const char* wkt, const char* photometric)
{
    GDALDriverH driver = GDALGetDriverByName("GTiff");
    if (!driver)
        return nullptr;
    char** options = nullptr;
    options = CSLSetNameValue(options, "COMPRESS", "DEFLATE");
    options = CSLSetNameValue(options, "TILED", "YES");
    if (photometric)
        options = CSLSetNameValue(options, "PHOTOMETRIC", photometric);
    GDALDatasetH ds = GDALCreate(driver, path.c_str(), width, height, bands, type, options);
    CSLDestroy(options);
    if (!ds)
        return nullptr;
    double transform[6] = {originX, PixelSize, 0.0, originY, 0.0, -PixelSize};
    GDALSetGeoTransform(ds, transform);
    GDALSetProjection(ds, wkt);
    return ds;
}

} // namespace

const std::vector<short>& TZSampleDataGenerator::LandUseCodes()
{
    // Two-level codes (group, then kind), as class rasters from mapping
    // agencies carry them.
    static const std::vector<short> codes = {111, 311, 511, 211, 121, 122, 141, 411};
    return codes;
}

const std::vector<std::string>& TZSampleDataGenerator::LandUseClasses()
{
    static const std::vector<std::string> classes = {"Residential", "Forest", "Water", "Farmland",
                                                     "Industrial", "Commercial", "Park", "Wetland"};
    return classes;
}

const std::vector<std::string>& TZSampleDataGenerator::PlaceTypes()
{
    static const std::vector<std::string> types = {"City", "Town", "Village", "Hamlet"};
    return types;
}

const std::vector<std::string>& TZSampleDataGenerator::RoadClasses()
{
    static const std::vector<std::string> classes = {"Motorway", "Primary", "Secondary",
                                                     "Tertiary", "Residential road", "Track"};
    return classes;
}

TZSampleDataGenerator::TZSampleDataGenerator(std::string outDir, std::uint64_t seed)
    : mOutDir(std::move(outDir))
    , mSeed(seed)
    , mRandom(seed)
{
}

bool TZSampleDataGenerator::generate(std::string* error)
{
    GDALAllRegister();
    std::error_code ec;
    std::filesystem::create_directories(mOutDir, ec);
    if (!std::filesystem::is_directory(mOutDir, ec))
        return fail(error, "cannot create the folder " + mOutDir);

    mRandom = TZSampleRandom(mSeed);
    mPlaces.clear();
    mRoads.clear();
    mUsedNames.clear();
    makePlaces();
    makeRoads();
    return writeVectors(error) && writeRasters(error);
}

// Rolling hills rising to the north-east, with a few basins below the water
// level that become lakes and wetlands.
double TZSampleDataGenerator::elevationAt(double x, double y) const
{
    const double u = (x - OriginX) / Width;
    const double v = (y - OriginY) / Height;
    const double n = TZSampleRandom::fbm(mSeed, u * 5.0, v * 4.0, 6);
    const double e = std::clamp((n - 0.2) / 0.6, 0.0, 1.0);
    return 120.0 + 1150.0 * e * e + 220.0 * (0.6 * u + 0.4 * v);
}

// 1 in a city centre, falling off with distance; towns count less.
double TZSampleDataGenerator::urbanAt(double x, double y) const
{
    double urban = 0.0;
    for (const Place& p : mPlaces) {
        if (p.type > 1)
            break;  // places are sorted: cities, towns, then the rest
        const double radius = p.type == 0 ? 3200.0 : 1300.0;
        const double d = distance(x, y, p.x, p.y) / radius;
        urban = std::max(urban, std::exp(-0.5 * d * d));
    }
    // Ragged town edges instead of circles.
    const double ragged = TZSampleRandom::fbm(mSeed + 29u, (x - OriginX) / 1800.0, (y - OriginY) / 1800.0, 3);
    return urban * (0.55 + 0.9 * ragged);
}

// Land use from height, closeness to towns and a little noise; pick in [0, 1)
// chooses among the classes that fit.
int TZSampleDataGenerator::landUseAt(double x, double y, double pick) const
{
    enum { Residential, Forest, Water, Farmland, Industrial, Commercial, Park, Wetland };
    const double elevation = elevationAt(x, y);
    if (elevation < WaterLevel)
        return Water;
    if (elevation < WaterLevel + 25.0)
        return Wetland;
    const double urban = urbanAt(x, y);
    if (urban > 0.75)
        return pick < 0.45 ? Commercial : pick < 0.8 ? Residential : pick < 0.92 ? Industrial : Park;
    if (urban > 0.35)
        return pick < 0.65 ? Residential : pick < 0.85 ? Industrial : Park;
    const double woods = TZSampleRandom::fbm(mSeed + 17u, (x - OriginX) / 7000.0, (y - OriginY) / 7000.0, 4);
    if (elevation > 950.0 || woods > 0.58)
        return Forest;
    return pick < 0.04 ? Park : Farmland;
}

std::string TZSampleDataGenerator::makeName()
{
    const int prefixes = static_cast<int>(std::size(NamePrefixes));
    const int suffixes = static_cast<int>(std::size(NameSuffixes));
    for (;;) {
        std::string name = std::string(NamePrefixes[mRandom.index(prefixes)]) + NameSuffixes[mRandom.index(suffixes)];
        if (std::find(mUsedNames.begin(), mUsedNames.end(), name) == mUsedNames.end()
            || mUsedNames.size() >= std::size(NamePrefixes) * std::size(NameSuffixes)) {
            mUsedNames.push_back(name);
            return name;
        }
    }
}

void TZSampleDataGenerator::makePlaces()
{
    // Cities and towns first (urbanAt relies on that order), then villages,
    // then hamlets clustered around the villages.
    const int counts[] = {6, 38, 620, 0};
    const double medians[] = {140000.0, 14000.0, 900.0, 90.0};
    const double sigmas[] = {0.6, 0.6, 0.8, 0.7};
    const double margins[] = {8000.0, 3000.0, 1000.0};
    for (int type = 0; type < 3; ++type) {
        for (int i = 0; i < counts[type];) {
            Place p;
            p.x = OriginX + mRandom.uniform(margins[type], Width - margins[type]);
            p.y = OriginY + mRandom.uniform(margins[type], Height - margins[type]);
            if (elevationAt(p.x, p.y) < WaterLevel + 30.0)
                continue;
            // Keep cities apart from one another.
            bool crowded = false;
            for (const Place& other : mPlaces)
                crowded = crowded || (type == 0 && other.type == 0 && distance(p.x, p.y, other.x, other.y) < 14000.0);
            if (crowded)
                continue;
            p.type = type;
            p.name = makeName();
            p.population = static_cast<long long>(mRandom.logNormal(medians[type], sigmas[type]));
            mPlaces.push_back(p);
            ++i;
        }
    }
    const std::size_t villages = mPlaces.size();
    const int formCount = static_cast<int>(std::size(HamletForms));
    for (std::size_t v = 0; v < villages; ++v) {
        if (mPlaces[v].type != 2)
            continue;
        const int hamlets = mRandom.index(9);
        for (int h = 0; h < hamlets; ++h) {
            Place p;
            p.x = mPlaces[v].x + mRandom.normal() * 1200.0;
            p.y = mPlaces[v].y + mRandom.normal() * 1200.0;
            if (p.x < OriginX || p.x > OriginX + Width || p.y < OriginY || p.y > OriginY + Height
                || elevationAt(p.x, p.y) < WaterLevel + 10.0)
                continue;
            p.type = 3;
            char name[128];
            std::snprintf(name, sizeof name, HamletForms[mRandom.index(formCount)], mPlaces[v].name.c_str());
            p.name = name;
            p.population = static_cast<long long>(std::max(3.0, mRandom.logNormal(medians[3], sigmas[3])));
            mPlaces.push_back(p);
        }
    }
    // A few places have no census figure.
    for (Place& p : mPlaces) {
        if (p.type >= 2 && mRandom.chance(0.02))
            p.population = -1;
    }
}

void TZSampleDataGenerator::addRoad(const Place& from, const Place& to, int roadClass, int lanes)
{
    // A gently winding line: points along the straight segment pushed
    // sideways by a sine whose phase and amplitude vary per road.
    const double length = distance(from.x, from.y, to.x, to.y);
    if (length < 1.0)
        return;
    const int steps = std::max(2, static_cast<int>(length / 400.0));
    const double nx = -(to.y - from.y) / length;
    const double ny = (to.x - from.x) / length;
    const double amplitude = std::min(600.0, length * 0.06) * mRandom.uniform(0.3, 1.0);
    const double waves = mRandom.uniform(0.5, 2.0);
    const double phase = mRandom.uniform(0.0, 2.0 * M_PI);
    Road road;
    road.roadClass = roadClass;
    road.lanes = lanes;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        const double bend = amplitude * std::sin(M_PI * t) * std::sin(2.0 * M_PI * waves * t + phase);
        road.coords.push_back(from.x + (to.x - from.x) * t + nx * bend);
        road.coords.push_back(from.y + (to.y - from.y) * t + ny * bend);
    }
    mRoads.push_back(std::move(road));
}

void TZSampleDataGenerator::addStreetGrid(const Place& centre, int streets, double halfLength)
{
    const double spacing = 2.0 * halfLength / (streets + 1);
    const double angle = mRandom.uniform(0.0, M_PI / 2.0);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    for (int direction = 0; direction < 2; ++direction) {
        for (int i = 1; i <= streets; ++i) {
            const double offset = -halfLength + i * spacing;
            const double a0 = direction == 0 ? -halfLength : offset;
            const double b0 = direction == 0 ? offset : -halfLength;
            const double a1 = direction == 0 ? halfLength : offset;
            const double b1 = direction == 0 ? offset : halfLength;
            Road road;
            road.roadClass = 4;
            road.lanes = mRandom.chance(0.1) ? 0 : (mRandom.chance(0.7) ? 2 : 1);
            road.coords = {centre.x + a0 * c - b0 * s, centre.y + a0 * s + b0 * c,
                           centre.x + a1 * c - b1 * s, centre.y + a1 * s + b1 * c};
            mRoads.push_back(std::move(road));
        }
    }
}

void TZSampleDataGenerator::makeRoads()
{
    auto nearest = [this](std::size_t from, auto accept) {
        std::size_t best = from;
        double bestDistance = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i < mPlaces.size(); ++i) {
            if (i == from || !accept(i))
                continue;
            const double d = distance(mPlaces[from].x, mPlaces[from].y, mPlaces[i].x, mPlaces[i].y);
            if (d < bestDistance) {
                bestDistance = d;
                best = i;
            }
        }
        return best;
    };

    // Motorways: a minimum spanning tree over the cities.
    std::vector<std::size_t> cities;
    for (std::size_t i = 0; i < mPlaces.size(); ++i) {
        if (mPlaces[i].type == 0)
            cities.push_back(i);
    }
    std::vector<bool> joined(cities.size(), false);
    joined[0] = true;
    for (std::size_t edge = 1; edge < cities.size(); ++edge) {
        std::size_t bestFrom = 0;
        std::size_t bestTo = 0;
        double bestDistance = std::numeric_limits<double>::max();
        for (std::size_t a = 0; a < cities.size(); ++a) {
            for (std::size_t b = 0; b < cities.size(); ++b) {
                if (!joined[a] || joined[b])
                    continue;
                const Place& pa = mPlaces[cities[a]];
                const Place& pb = mPlaces[cities[b]];
                const double d = distance(pa.x, pa.y, pb.x, pb.y);
                if (d < bestDistance) {
                    bestDistance = d;
                    bestFrom = a;
                    bestTo = b;
                }
            }
        }
        joined[bestTo] = true;
        addRoad(mPlaces[cities[bestFrom]], mPlaces[cities[bestTo]], 0, mRandom.chance(0.5) ? 6 : 4);
    }

    for (std::size_t i = 0; i < mPlaces.size(); ++i) {
        const Place& p = mPlaces[i];
        switch (p.type) {
        case 0:
            addStreetGrid(p, 5, 2200.0);
            break;
        case 1: {
            const std::size_t to = nearest(i, [&](std::size_t j) { return mPlaces[j].type == 0 || (mPlaces[j].type == 1 && j < i); });
            addRoad(p, mPlaces[to], 1, mRandom.chance(0.7) ? 2 : 4);
            addStreetGrid(p, 2, 700.0);
            break;
        }
        case 2: {
            if (mRandom.chance(0.35)) {
                const std::size_t to = nearest(i, [&](std::size_t j) { return mPlaces[j].type <= 1; });
                addRoad(p, mPlaces[to], 2, 2);
            } else {
                const std::size_t to = nearest(i, [&](std::size_t j) { return mPlaces[j].type == 1 || (mPlaces[j].type == 2 && j < i); });
                if (to != i)
                    addRoad(p, mPlaces[to], 3, mRandom.chance(0.15) ? 0 : 2);
            }
            break;
        }
        default: {
            const std::size_t to = nearest(i, [&](std::size_t j) { return mPlaces[j].type == 2; });
            addRoad(p, mPlaces[to], 5, mRandom.chance(0.3) ? 0 : 1);
            break;
        }
        }
    }
}

bool TZSampleDataGenerator::writeVectors(std::string* error)
{
    const std::string path = joinPath(mOutDir, GeoPackageName);
    VSIUnlink(path.c_str());
    GDALDriverH driver = GDALGetDriverByName("GPKG");
    if (!driver)
        return fail(error, "GDAL has no GeoPackage driver");
    DatasetPtr dataset(GDALCreate(driver, path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    if (!dataset)
        return fail(error, "cannot create " + path);
    SrsPtr srs(OSRNewSpatialReference(nullptr));
    if (OSRImportFromEPSG(srs.get(), 3857) != OGRERR_NONE)
        return fail(error, "cannot make the EPSG:3857 reference system");
    OSRSetAxisMappingStrategy(srs.get(), OAMS_TRADITIONAL_GIS_ORDER);
    return writeRegions(dataset.get(), srs.get(), error) && writePlaces(dataset.get(), srs.get(), error)
        && writeRoads(dataset.get(), srs.get(), error);
}

bool TZSampleDataGenerator::writeRegions(GDALDatasetH dataset, OGRSpatialReferenceH srs, std::string* error)
{
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "regions", srs, wkbPolygon, nullptr);
    if (!layer)
        return fail(error, "cannot create the layer regions");
    if (!addField(layer, "name", OFTString, error) || !addField(layer, "population", OFTInteger64, error)
        || !addField(layer, "area", OFTReal, error) || !addField(layer, "landuse", OFTString, error)
        || !addField(layer, "age_0_14", OFTInteger64, error) || !addField(layer, "age_15_64", OFTInteger64, error)
        || !addField(layer, "age_65_up", OFTInteger64, error))
        return false;

    // A jittered grid whose edges are bent by points computed from the edge's
    // own key, so that both neighbours trace exactly the same boundary.
    const double cellW = Width / GridColumns;
    const double cellH = Height / GridRows;
    auto node = [&](int i, int j, double* x, double* y) {
        const bool inner = i > 0 && i < GridColumns && j > 0 && j < GridRows;
        *x = OriginX + i * cellW + (inner ? (TZSampleRandom::hash01(mSeed, 1, i, j) - 0.5) * 0.6 * cellW : 0.0);
        *y = OriginY + j * cellH + (inner ? (TZSampleRandom::hash01(mSeed, 2, i, j) - 0.5) * 0.6 * cellH : 0.0);
    };
    // Appends the edge from node (i0, j0) to (i1, j1) without its last point.
    auto appendEdge = [&](OGRGeometryH ring, int i0, int j0, int i1, int j1) {
        const bool reversed = (i1 < i0) || (j1 < j0);
        const int ai = reversed ? i1 : i0, aj = reversed ? j1 : j0;
        const int bi = reversed ? i0 : i1, bj = reversed ? j0 : j1;
        const bool border = (ai == bi && (ai == 0 || ai == GridColumns)) || (aj == bj && (aj == 0 || aj == GridRows));
        double ax, ay, bx, by;
        node(ai, aj, &ax, &ay);
        node(bi, bj, &bx, &by);
        const std::int64_t key = (static_cast<std::int64_t>(ai) * 100 + aj) * 10 + (ai == bi ? 1 : 0);
        const int inner = 3;
        double pts[inner + 2][2];
        pts[0][0] = ax;
        pts[0][1] = ay;
        pts[inner + 1][0] = bx;
        pts[inner + 1][1] = by;
        const double len = distance(ax, ay, bx, by);
        for (int k = 1; k <= inner; ++k) {
            const double t = static_cast<double>(k) / (inner + 1);
            const double push = border ? 0.0 : (TZSampleRandom::hash01(mSeed, 3, key, k) - 0.5) * 0.18 * len;
            pts[k][0] = ax + (bx - ax) * t - (by - ay) / len * push;
            pts[k][1] = ay + (by - ay) * t + (bx - ax) / len * push;
        }
        for (int k = 0; k <= inner; ++k) {
            const int idx = reversed ? inner + 1 - k : k;
            OGR_G_AddPoint_2D(ring, pts[idx][0], pts[idx][1]);
        }
    };

    GDALDatasetStartTransaction(dataset, FALSE);
    for (int j = 0; j < GridRows; ++j) {
        for (int i = 0; i < GridColumns; ++i) {
            OGRGeometryH ring = OGR_G_CreateGeometry(wkbLinearRing);
            appendEdge(ring, i, j, i + 1, j);
            appendEdge(ring, i + 1, j, i + 1, j + 1);
            appendEdge(ring, i + 1, j + 1, i, j + 1);
            appendEdge(ring, i, j + 1, i, j);
            OGR_G_AddPoint_2D(ring, OGR_G_GetX(ring, 0), OGR_G_GetY(ring, 0));
            OGRGeometryH polygon = OGR_G_CreateGeometry(wkbPolygon);
            OGR_G_AddGeometryDirectly(polygon, ring);

            OGRGeometryH centroid = OGR_G_CreateGeometry(wkbPoint);
            OGR_G_Centroid(polygon, centroid);
            const int landUse = landUseAt(OGR_G_GetX(centroid, 0), OGR_G_GetY(centroid, 0), mRandom.uniform());
            OGR_G_DestroyGeometry(centroid);

            // People per region by land use; a few regions have no figure.
            static const double medians[] = {9000, 150, 0, 900, 700, 3500, 250, 40};
            OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
            OGR_F_SetFieldString(feature, 0, makeName().c_str());
            if (mRandom.chance(0.03))
                OGR_F_SetFieldNull(feature, 1);
            else
                OGR_F_SetFieldInteger64(feature, 1, static_cast<GIntBig>(mRandom.logNormal(medians[landUse], 0.9)));
            // The population by age group (children, working age, elderly),
            // adding up to it; its shares come from stateless hashes so the
            // rest of the data stays as it was.
            if (OGR_F_IsFieldSetAndNotNull(feature, 1)) {
                const GIntBig people = OGR_F_GetFieldAsInteger64(feature, 1);
                const double young = 0.10 + 0.14 * TZSampleRandom::hash01(mSeed, 5, i, j);
                const double old = 0.10 + 0.20 * TZSampleRandom::hash01(mSeed, 6, i, j);
                const GIntBig children = std::llround(people * young);
                const GIntBig elderly = std::llround(people * old);
                OGR_F_SetFieldInteger64(feature, 4, children);
                OGR_F_SetFieldInteger64(feature, 5, people - children - elderly);
                OGR_F_SetFieldInteger64(feature, 6, elderly);
            } else {
                for (int field = 4; field <= 6; ++field)
                    OGR_F_SetFieldNull(feature, field);
            }
            OGR_F_SetFieldDouble(feature, 2, std::round(OGR_G_Area(polygon) / 1000.0) / 1000.0);  // km²
            OGR_F_SetFieldString(feature, 3, LandUseClasses()[landUse].c_str());
            OGR_F_SetGeometryDirectly(feature, polygon);
            const OGRErr err = OGR_L_CreateFeature(layer, feature);
            OGR_F_Destroy(feature);
            if (err != OGRERR_NONE) {
                GDALDatasetRollbackTransaction(dataset);
                return fail(error, "cannot write a region");
            }
        }
    }
    return GDALDatasetCommitTransaction(dataset) == OGRERR_NONE || fail(error, "cannot write the regions");
}

bool TZSampleDataGenerator::writePlaces(GDALDatasetH dataset, OGRSpatialReferenceH srs, std::string* error)
{
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "places", srs, wkbPoint, nullptr);
    if (!layer)
        return fail(error, "cannot create the layer places");
    if (!addField(layer, "name", OFTString, error) || !addField(layer, "place_type", OFTString, error)
        || !addField(layer, "population", OFTInteger64, error))
        return false;
    GDALDatasetStartTransaction(dataset, FALSE);
    for (const Place& p : mPlaces) {
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        OGR_F_SetFieldString(feature, 0, p.name.c_str());
        OGR_F_SetFieldString(feature, 1, PlaceTypes()[p.type].c_str());
        if (p.population < 0)
            OGR_F_SetFieldNull(feature, 2);
        else
            OGR_F_SetFieldInteger64(feature, 2, p.population);
        OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint);
        OGR_G_SetPoint_2D(point, 0, p.x, p.y);
        OGR_F_SetGeometryDirectly(feature, point);
        const OGRErr err = OGR_L_CreateFeature(layer, feature);
        OGR_F_Destroy(feature);
        if (err != OGRERR_NONE) {
            GDALDatasetRollbackTransaction(dataset);
            return fail(error, "cannot write a place");
        }
    }
    return GDALDatasetCommitTransaction(dataset) == OGRERR_NONE || fail(error, "cannot write the places");
}

bool TZSampleDataGenerator::writeRoads(GDALDatasetH dataset, OGRSpatialReferenceH srs, std::string* error)
{
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "roads", srs, wkbLineString, nullptr);
    if (!layer)
        return fail(error, "cannot create the layer roads");
    if (!addField(layer, "road_class", OFTString, error) || !addField(layer, "lanes", OFTInteger, error))
        return false;
    GDALDatasetStartTransaction(dataset, FALSE);
    for (const Road& road : mRoads) {
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        OGR_F_SetFieldString(feature, 0, RoadClasses()[road.roadClass].c_str());
        if (road.lanes <= 0)
            OGR_F_SetFieldNull(feature, 1);
        else
            OGR_F_SetFieldInteger(feature, 1, road.lanes);
        OGRGeometryH line = OGR_G_CreateGeometry(wkbLineString);
        for (std::size_t k = 0; k + 1 < road.coords.size(); k += 2)
            OGR_G_AddPoint_2D(line, road.coords[k], road.coords[k + 1]);
        OGR_F_SetGeometryDirectly(feature, line);
        const OGRErr err = OGR_L_CreateFeature(layer, feature);
        OGR_F_Destroy(feature);
        if (err != OGRERR_NONE) {
            GDALDatasetRollbackTransaction(dataset);
            return fail(error, "cannot write a road");
        }
    }
    return GDALDatasetCommitTransaction(dataset) == OGRERR_NONE || fail(error, "cannot write the roads");
}

bool TZSampleDataGenerator::writeRasters(std::string* error)
{
    SrsPtr srs(OSRNewSpatialReference(nullptr));
    if (OSRImportFromEPSG(srs.get(), 3857) != OGRERR_NONE)
        return fail(error, "cannot make the EPSG:3857 reference system");
    char* wktBuffer = nullptr;
    OSRExportToWkt(srs.get(), &wktBuffer);
    const std::string wkt = wktBuffer ? wktBuffer : "";
    CPLFree(wktBuffer);

    const std::size_t pixels = static_cast<std::size_t>(RasterWidth) * RasterHeight;
    std::vector<float> elevation(pixels);
    std::vector<unsigned char> classes(pixels);
    std::vector<unsigned char> red(pixels), green(pixels), blue(pixels), nir(pixels);
    // Colours of the land-use classes as seen from above, and their NIR
    // reflectance (high for vegetation, near zero for water).
    static const unsigned char classColours[8][4] = {
        {196, 170, 160, 70},  {46, 96, 52, 190},   {40, 78, 120, 8},    {178, 170, 104, 150},
        {150, 140, 150, 60},  {176, 150, 150, 55}, {110, 160, 90, 170}, {96, 120, 96, 110}};
    for (int row = 0; row < RasterHeight; ++row) {
        const double y = OriginY + Height - (row + 0.5) * PixelSize;
        for (int col = 0; col < RasterWidth; ++col) {
            const double x = OriginX + (col + 0.5) * PixelSize;
            const std::size_t k = static_cast<std::size_t>(row) * RasterWidth + col;
            const double h = elevationAt(x, y);
            const double pick = TZSampleRandom::valueNoise(mSeed + 5u, x / 700.0, y / 700.0);
            const int cls = landUseAt(x, y, pick);
            classes[k] = static_cast<unsigned char>(cls + 1);
            // The survey did not reach the north-east corner.
            const bool surveyed = static_cast<double>(col) / RasterWidth + static_cast<double>(RasterHeight - row) / RasterHeight < 1.8;
            elevation[k] = surveyed ? static_cast<float>(h) : static_cast<float>(ElevationNoData);

            // Shade by the slope towards a light in the north-west.
            const double slope = (elevationAt(x + PixelSize, y) - elevationAt(x - PixelSize, y)
                                  - elevationAt(x, y + PixelSize) + elevationAt(x, y - PixelSize)) / (4.0 * PixelSize);
            const double shade = std::clamp(1.0 - 1.6 * slope, 0.55, 1.35);
            const double grain = 0.9 + 0.2 * TZSampleRandom::hash01(mSeed, 9, col, row);
            auto channel = [&](int c) {
                return static_cast<unsigned char>(std::clamp(classColours[cls][c] * shade * grain, 0.0, 255.0));
            };
            red[k] = channel(0);
            green[k] = channel(1);
            blue[k] = channel(2);
            nir[k] = channel(3);
        }
    }

    // Elevation.
    {
        const std::string path = joinPath(mOutDir, ElevationName);
        DatasetPtr ds(createRaster(path, RasterWidth, RasterHeight, 1, GDT_Float32, OriginX, OriginY + Height, wkt.c_str(), nullptr));
        if (!ds)
            return fail(error, "cannot create " + path);
        GDALRasterBandH band = GDALGetRasterBand(ds.get(), 1);
        GDALSetRasterNoDataValue(band, ElevationNoData);
        GDALSetDescription(band, "elevation");
        if (GDALRasterIO(band, GF_Write, 0, 0, RasterWidth, RasterHeight, elevation.data(), RasterWidth, RasterHeight,
                         GDT_Float32, 0, 0) != CE_None)
            return fail(error, "cannot write " + path);
    }

    // The 3-band and the 4-band images.
    for (int bands = 3; bands <= 4; ++bands) {
        const std::string path = joinPath(mOutDir, bands == 3 ? RgbImageName : RgbnImageName);
        DatasetPtr ds(createRaster(path, RasterWidth, RasterHeight, bands, GDT_Byte, OriginX, OriginY + Height, wkt.c_str(), "RGB"));
        if (!ds)
            return fail(error, "cannot create " + path);
        const std::vector<unsigned char>* data[] = {&red, &green, &blue, &nir};
        static const char* const names[] = {"red", "green", "blue", "near infrared"};
        for (int b = 0; b < bands; ++b) {
            GDALRasterBandH band = GDALGetRasterBand(ds.get(), b + 1);
            GDALSetDescription(band, names[b]);
            if (GDALRasterIO(band, GF_Write, 0, 0, RasterWidth, RasterHeight, const_cast<unsigned char*>(data[b]->data()),
                             RasterWidth, RasterHeight, GDT_Byte, 0, 0) != CE_None)
                return fail(error, "cannot write " + path);
        }
    }

    // Land cover with a colour table and class names.
    {
        const std::string path = joinPath(mOutDir, LandcoverName);
        DatasetPtr ds(createRaster(path, RasterWidth, RasterHeight, 1, GDT_Byte, OriginX, OriginY + Height, wkt.c_str(), nullptr));
        if (!ds)
            return fail(error, "cannot create " + path);
        GDALRasterBandH band = GDALGetRasterBand(ds.get(), 1);
        static const short palette[9][3] = {{0, 0, 0},       {230, 120, 110}, {34, 120, 50},
                                            {70, 140, 220},  {240, 220, 120}, {150, 110, 170},
                                            {220, 70, 70},   {140, 210, 110}, {120, 190, 180}};
        GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
        char** names = CSLAddString(nullptr, "No data");
        for (int i = 0; i < 9; ++i) {
            GDALColorEntry entry{palette[i][0], palette[i][1], palette[i][2], static_cast<short>(i == 0 ? 0 : 255)};
            GDALSetColorEntry(table, i, &entry);
            if (i > 0)
                names = CSLAddString(names, LandUseClasses()[i - 1].c_str());
        }
        GDALSetRasterColorTable(band, table);
        GDALDestroyColorTable(table);
        GDALSetRasterCategoryNames(band, names);
        CSLDestroy(names);
        GDALSetRasterNoDataValue(band, 0);
        if (GDALRasterIO(band, GF_Write, 0, 0, RasterWidth, RasterHeight, classes.data(), RasterWidth, RasterHeight,
                         GDT_Byte, 0, 0) != CE_None)
            return fail(error, "cannot write " + path);
    }

    // The land-use classes again as Int16 codes without a colour table, for
    // classified and unique-value rendering; no-data where the survey of the
    // elevation did not reach.
    {
        const std::string path = joinPath(mOutDir, LandUseCodesName);
        DatasetPtr ds(createRaster(path, RasterWidth, RasterHeight, 1, GDT_Int16, OriginX, OriginY + Height, wkt.c_str(), nullptr));
        if (!ds)
            return fail(error, "cannot create " + path);
        std::vector<short> codes(pixels);
        for (std::size_t k = 0; k < pixels; ++k)
            codes[k] = elevation[k] == static_cast<float>(ElevationNoData) ? static_cast<short>(LandUseCodesNoData)
                                                                            : LandUseCodes()[classes[k] - 1];
        GDALRasterBandH band = GDALGetRasterBand(ds.get(), 1);
        GDALSetRasterNoDataValue(band, LandUseCodesNoData);
        GDALSetDescription(band, "land use code");
        if (GDALRasterIO(band, GF_Write, 0, 0, RasterWidth, RasterHeight, codes.data(), RasterWidth, RasterHeight,
                         GDT_Int16, 0, 0) != CE_None)
            return fail(error, "cannot write " + path);
    }

    // Elevation tiles for a raster directory layer.
    const std::string tiles = joinPath(mOutDir, TilesFolderName);
    std::error_code ec;
    std::filesystem::create_directories(tiles, ec);
    const int tileW = RasterWidth / TileColumns;
    const int tileH = RasterHeight / TileRows;
    std::vector<float> tile(static_cast<std::size_t>(tileW) * tileH);
    for (int tr = 0; tr < TileRows; ++tr) {
        for (int tc = 0; tc < TileColumns; ++tc) {
            for (int row = 0; row < tileH; ++row) {
                std::copy_n(elevation.begin() + static_cast<std::ptrdiff_t>(tr * tileH + row) * RasterWidth + tc * tileW, tileW,
                            tile.begin() + static_cast<std::ptrdiff_t>(row) * tileW);
            }
            char name[64];
            std::snprintf(name, sizeof name, "elevation_%d_%d.tif", tr, tc);
            const std::string path = joinPath(tiles, name);
            DatasetPtr ds(createRaster(path, tileW, tileH, 1, GDT_Float32, OriginX + tc * tileW * PixelSize,
                                       OriginY + Height - tr * tileH * PixelSize, wkt.c_str(), nullptr));
            if (!ds)
                return fail(error, "cannot create " + path);
            GDALRasterBandH band = GDALGetRasterBand(ds.get(), 1);
            GDALSetRasterNoDataValue(band, ElevationNoData);
            if (GDALRasterIO(band, GF_Write, 0, 0, tileW, tileH, tile.data(), tileW, tileH, GDT_Float32, 0, 0) != CE_None)
                return fail(error, "cannot write " + path);
        }
    }
    return true;
}
