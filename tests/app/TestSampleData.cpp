#include "TestRegistry.h"

#include "TZMapProject.h"
#include "TZSampleDataGenerator.h"
#include "TZSampleProjectWriter.h"

#include "renders/TECategorizedSymbolRender.h"

#include <QDir>
#include <QSet>
#include <QTemporaryDir>

#include <cpl_conv.h>
#include <gdal.h>
#include <ogr_api.h>

namespace {

struct FieldSpec
{
    const char* name;
    OGRFieldType type;
};

QSet<QString> distinctValues(OGRLayerH layer, const char* field)
{
    QSet<QString> values;
    OGR_L_ResetReading(layer);
    const int index = OGR_FD_GetFieldIndex(OGR_L_GetLayerDefn(layer), field);
    while (OGRFeatureH feature = OGR_L_GetNextFeature(layer)) {
        if (OGR_F_IsFieldSetAndNotNull(feature, index))
            values.insert(QString::fromUtf8(OGR_F_GetFieldAsString(feature, index)));
        OGR_F_Destroy(feature);
    }
    return values;
}

QSet<QString> toSet(const std::vector<std::string>& list)
{
    QSet<QString> set;
    for (const std::string& s : list)
        set.insert(QString::fromStdString(s));
    return set;
}

std::vector<double> numbers(OGRLayerH layer, const char* field, int* nulls)
{
    std::vector<double> values;
    OGR_L_ResetReading(layer);
    const int index = OGR_FD_GetFieldIndex(OGR_L_GetLayerDefn(layer), field);
    while (OGRFeatureH feature = OGR_L_GetNextFeature(layer)) {
        if (OGR_F_IsFieldSetAndNotNull(feature, index))
            values.push_back(OGR_F_GetFieldAsDouble(feature, index));
        else
            ++*nulls;
        OGR_F_Destroy(feature);
    }
    return values;
}

// Every attribute and the geometry of a feature as one text.
QString featureText(OGRFeatureH feature)
{
    QStringList parts;
    for (int i = 0; i < OGR_F_GetFieldCount(feature); ++i)
        parts << (OGR_F_IsFieldSetAndNotNull(feature, i) ? QString::fromUtf8(OGR_F_GetFieldAsString(feature, i))
                                                          : QStringLiteral("<null>"));
    char* wkt = nullptr;
    OGR_G_ExportToWkt(OGR_F_GetGeometryRef(feature), &wkt);
    parts << QString::fromUtf8(wkt);
    CPLFree(wkt);
    return parts.join(QLatin1Char('|'));
}

} // namespace

Q_DECLARE_METATYPE(FieldSpec)

// The sample-data generator writes the layers and rasters tzmap's run
// command opens, with the fields, types and values the style databases
// are named after.
class TestSampleData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        GDALAllRegister();
        QVERIFY(mDir.isValid());
        std::string error;
        QVERIFY2(TZSampleDataGenerator(mDir.path().toStdString()).generate(&error), error.c_str());
        mVectors = GDALOpenEx(path(TZSampleDataGenerator::GeoPackageName).toUtf8().constData(), GDAL_OF_VECTOR,
                              nullptr, nullptr, nullptr);
        QVERIFY(mVectors);
    }

    void cleanupTestCase()
    {
        if (mVectors)
            GDALClose(mVectors);
    }

    void vectorLayersHaveTheirFieldsAndGeometry_data()
    {
        QTest::addColumn<QString>("layer");
        QTest::addColumn<int>("geometry");
        QTest::addColumn<int>("minimumCount");
        QTest::addColumn<QVector<FieldSpec>>("fields");
        QTest::newRow("regions") << "regions" << int(wkbPolygon) << 200
                                 << QVector<FieldSpec>{{"name", OFTString}, {"population", OFTInteger64},
                                                       {"area", OFTReal}, {"landuse", OFTString},
                                                       {"age_0_14", OFTInteger64}, {"age_15_64", OFTInteger64},
                                                       {"age_65_up", OFTInteger64}};
        QTest::newRow("places") << "places" << int(wkbPoint) << 2000
                                << QVector<FieldSpec>{{"name", OFTString}, {"place_type", OFTString},
                                                      {"population", OFTInteger64}};
        QTest::newRow("roads") << "roads" << int(wkbLineString) << 500
                               << QVector<FieldSpec>{{"road_class", OFTString}, {"lanes", OFTInteger}};
    }
    void vectorLayersHaveTheirFieldsAndGeometry()
    {
        QFETCH(QString, layer);
        QFETCH(int, geometry);
        QFETCH(int, minimumCount);
        QFETCH(QVector<FieldSpec>, fields);
        OGRLayerH handle = GDALDatasetGetLayerByName(mVectors, layer.toUtf8().constData());
        QVERIFY(handle);
        QCOMPARE(int(wkbFlatten(OGR_L_GetGeomType(handle))), geometry);
        QVERIFY(OGR_L_GetFeatureCount(handle, TRUE) >= minimumCount);
        OGRFeatureDefnH definition = OGR_L_GetLayerDefn(handle);
        QCOMPARE(OGR_FD_GetFieldCount(definition), fields.size());
        for (const FieldSpec& expected : fields) {
            const int index = OGR_FD_GetFieldIndex(definition, expected.name);
            QVERIFY2(index >= 0, expected.name);
            QCOMPARE(OGR_Fld_GetType(OGR_FD_GetFieldDefn(definition, index)), expected.type);
        }
    }

    void classFieldsHoldOnlyTheirClassValues()
    {
        const QSet<QString> landuse = distinctValues(layer("regions"), "landuse");
        QVERIFY(toSet(TZSampleDataGenerator::LandUseClasses()).contains(landuse));
        QVERIFY2(landuse.size() >= 6, "most land-use classes should occur");
        QCOMPARE(distinctValues(layer("places"), "place_type"), toSet(TZSampleDataGenerator::PlaceTypes()));
        QCOMPARE(distinctValues(layer("roads"), "road_class"), toSet(TZSampleDataGenerator::RoadClasses()));
    }

    void populationsAreSkewedWithAFewNulls()
    {
        int nulls = 0;
        std::vector<double> populations = numbers(layer("places"), "population", &nulls);
        QVERIFY(nulls > 0);
        QVERIFY(nulls < 0.1 * OGR_L_GetFeatureCount(layer("places"), TRUE));
        std::sort(populations.begin(), populations.end());
        const double median = populations[populations.size() / 2];
        double mean = 0.0;
        for (double p : populations)
            mean += p / populations.size();
        QVERIFY2(mean > 2.0 * median, "a few large places and many small ones");
    }

    void regionsTileTheAreaWithoutGapsOrOverlaps()
    {
        // The regions' areas add up to the bounding rectangle's only when
        // neighbours share their edges exactly.
        OGRLayerH regions = layer("regions");
        OGREnvelope extent;
        QCOMPARE(OGR_L_GetExtent(regions, &extent, TRUE), OGRERR_NONE);
        double total = 0.0;
        OGR_L_ResetReading(regions);
        while (OGRFeatureH feature = OGR_L_GetNextFeature(regions)) {
            OGRGeometryH g = OGR_F_GetGeometryRef(feature);
            QVERIFY(OGR_G_IsValid(g));
            total += OGR_G_Area(g);
            OGR_F_Destroy(feature);
        }
        const double box = (extent.MaxX - extent.MinX) * (extent.MaxY - extent.MinY);
        QVERIFY2(std::abs(total - box) < 1e-6 * box, qPrintable(QString("%1 vs %2").arg(total).arg(box)));
    }

    void rastersHaveTheirBandsTypesAndPalette_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("bands");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("palette");
        QTest::newRow("elevation") << TZSampleDataGenerator::ElevationName << 1 << int(GDT_Float32) << false;
        QTest::newRow("rgb") << TZSampleDataGenerator::RgbImageName << 3 << int(GDT_Byte) << false;
        QTest::newRow("rgbn") << TZSampleDataGenerator::RgbnImageName << 4 << int(GDT_Byte) << false;
        QTest::newRow("landcover") << TZSampleDataGenerator::LandcoverName << 1 << int(GDT_Byte) << true;
        QTest::newRow("landuse codes") << TZSampleDataGenerator::LandUseCodesName << 1 << int(GDT_Int16) << false;
    }
    void rastersHaveTheirBandsTypesAndPalette()
    {
        QFETCH(QString, file);
        QFETCH(int, bands);
        QFETCH(int, type);
        QFETCH(bool, palette);
        GDALDatasetH ds = GDALOpen(path(file).toUtf8().constData(), GA_ReadOnly);
        QVERIFY(ds);
        QCOMPARE(GDALGetRasterCount(ds), bands);
        GDALRasterBandH band = GDALGetRasterBand(ds, 1);
        QCOMPARE(int(GDALGetRasterDataType(band)), type);
        QCOMPARE(GDALGetRasterColorTable(band) != nullptr, palette);
        double transform[6];
        QCOMPARE(GDALGetGeoTransform(ds, transform), CE_None);
        QVERIFY(QString::fromUtf8(GDALGetProjectionRef(ds)).contains(QStringLiteral("3857")));
        GDALClose(ds);
    }

    void elevationHasNoDataPixels()
    {
        GDALDatasetH ds = GDALOpen(path(TZSampleDataGenerator::ElevationName).toUtf8().constData(), GA_ReadOnly);
        GDALRasterBandH band = GDALGetRasterBand(ds, 1);
        int hasNoData = 0;
        QCOMPARE(GDALGetRasterNoDataValue(band, &hasNoData), TZSampleDataGenerator::ElevationNoData);
        QVERIFY(hasNoData);
        // The north-east corner lies outside the survey.
        float corner = 0.0f;
        QCOMPARE(GDALRasterIO(band, GF_Read, GDALGetRasterXSize(ds) - 1, 0, 1, 1, &corner, 1, 1, GDT_Float32, 0, 0), CE_None);
        QCOMPARE(double(corner), TZSampleDataGenerator::ElevationNoData);
        GDALClose(ds);
    }

    void tilesFolderHoldsSeveralRasters()
    {
        const QStringList tiles = QDir(path(TZSampleDataGenerator::TilesFolderName)).entryList({"*.tif"}, QDir::Files);
        QVERIFY(tiles.size() >= 4);
    }

    void sameSeedWritesTheSameData()
    {
        QTemporaryDir again;
        std::string error;
        QVERIFY(TZSampleDataGenerator(again.path().toStdString()).generate(&error));
        GDALDatasetH other = GDALOpenEx(QDir(again.path()).filePath(TZSampleDataGenerator::GeoPackageName).toUtf8().constData(),
                                        GDAL_OF_VECTOR, nullptr, nullptr, nullptr);
        QVERIFY(other);
        for (const char* name : {"regions", "places", "roads"}) {
            OGRLayerH a = GDALDatasetGetLayerByName(mVectors, name);
            OGRLayerH b = GDALDatasetGetLayerByName(other, name);
            OGR_L_ResetReading(a);
            OGR_L_ResetReading(b);
            OGRFeatureH fa = nullptr;
            while ((fa = OGR_L_GetNextFeature(a))) {
                OGRFeatureH fb = OGR_L_GetNextFeature(b);
                QVERIFY(fb);
                QCOMPARE(featureText(fb), featureText(fa));
                OGR_F_Destroy(fa);
                OGR_F_Destroy(fb);
            }
            QVERIFY(!OGR_L_GetNextFeature(b));
        }
        GDALClose(other);
    }

    void sampleProjectOpensEveryLayerWithItsCategories()
    {
        QString error;
        QVERIFY2(TZSampleProjectWriter::write(mDir.path(), &error), qPrintable(error));
        std::vector<TZMapProject::LayerState> layers;
        TZMapViewport view;
        QStringList warnings;
        QVERIFY2(TZMapProject::open(path(TZSampleProjectWriter::ProjectName), layers, view, &warnings, &error),
                 qPrintable(error));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        QCOMPARE(layers.size(), std::size_t(7));

        const std::map<QString, std::pair<QString, std::vector<std::string>>> expected = {
            {"regions", {"landuse", TZSampleDataGenerator::LandUseClasses()}},
            {"places", {"place_type", TZSampleDataGenerator::PlaceTypes()}},
            {"roads", {"road_class", TZSampleDataGenerator::RoadClasses()}}};
        int categorized = 0;
        for (const TZMapProject::LayerState& state : layers) {
            const auto found = expected.find(state.layer->GetLayerName().toQString());
            if (found == expected.end())
                continue;
            auto render = state.layer->GetRender().cast<TZObjects::TECategorizedSymbolRender>();
            QVERIFY(render);
            QCOMPARE(render->GetExpression().toQString(), found->second.first);
            QSet<QString> values;
            for (int i = 0; i < render->GetItemCount(); ++i)
                values.insert(render->GetCategoryRenderItem(i)->GetValue().toQString());
            QVERIFY(values.contains(toSet(found->second.second)));
            QVERIFY(state.visible);
            ++categorized;
        }
        QCOMPARE(categorized, 3);
    }

private:
    QString path(const QString& name) const { return QDir(mDir.path()).filePath(name); }
    OGRLayerH layer(const char* name) const { return GDALDatasetGetLayerByName(mVectors, name); }

    QTemporaryDir mDir;
    GDALDatasetH mVectors = nullptr;
};

TZ_REGISTER_TEST(TestSampleData)
#include "TestSampleData.moc"
