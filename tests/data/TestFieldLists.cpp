#include "DataFixtures.h"
#include "TestRegistry.h"

#include "data/TEFeatureLayer.h"
#include "data/TEFeatureTable.h"
#include "data/TEMemoryFeatureLayer.h"
#include "symbology/TEStyle.h"

#include <QTemporaryDir>

using namespace TZObjects;
using DataFixtures::Field;

namespace {

// "name:type" for every field of the list, in order.
QStringList describe(const TEFields& fields)
{
    QStringList out;
    for (int i = 0; i < fields.GetFieldCount(); ++i) {
        const TERefPtr<TEField> field = fields.GetField(i);
        out << QStringLiteral("%1:%2").arg(field->GetName().toQString()).arg(field->GetFieldType());
    }
    return out;
}

const std::vector<Field> kAllKinds = {
    {QStringLiteral("small"), OFTInteger, OFSTInt16},  {QStringLiteral("count"), OFTInteger},
    {QStringLiteral("big"), OFTInteger64},             {QStringLiteral("ratio"), OFTReal, OFSTFloat32},
    {QStringLiteral("value"), OFTReal},                {QStringLiteral("name"), OFTString},
    {QStringLiteral("day"), OFTDate},                  {QStringLiteral("stamp"), OFTDateTime},
    {QStringLiteral("blob"), OFTBinary},
};

} // namespace

class TestFieldLists : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(mDir.isValid()); }

    void geoPackageListsSystemFieldsFirstWithTypeCodes()
    {
        const QString path = mDir.filePath(QStringLiteral("kinds.gpkg"));
        QCOMPARE(DataFixtures::writeVector(path, "GPKG", QStringLiteral("kinds"), wkbPolygon, kAllKinds, {}), QString());
        QString error;
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
        QVERIFY2(layer, qPrintable(error));
        QCOMPARE(describe(*layer->GetDatasource()->GetFields()),
                 QStringList({"FID:1", "GEOMETRY:7", "small:0", "count:1", "big:1", "ratio:2", "value:3", "name:4",
                              "day:5", "stamp:5", "blob:6"}));
        TEFields* fields = layer->GetDatasource()->GetFields();
        QVERIFY(fields->GetField(0)->IsSystemField());
        QVERIFY(!fields->GetField(0)->IsGeoField());
        QVERIFY(fields->GetField(1)->IsGeoField());
        QVERIFY(!fields->GetField(2)->IsSystemField() && !fields->GetField(2)->IsGeoField());
        QCOMPARE(fields->FindField(TEString(L"value")), 6);
        QCOMPARE(fields->FindField(TEString(L"VALUE")), 6);
        QCOMPARE(fields->FindField(TEString(L"missing")), -1);
        QVERIFY(!fields->GetField(99));
        QCOMPARE(layer->GetLayerType(), TELayer::LT_Polygon);
        QCOMPARE(layer->GetDatasource()->GetClassName(), TEString(L"TEFeatureLayer"));
    }

    void shapefileMapsDbfTypes()
    {
        // DBF has no 16-bit, binary or date-time kinds: OGR reads them as
        // integer, string and date.
        const QString path = mDir.filePath(QStringLiteral("roads.shp"));
        const std::vector<Field> fields = {{QStringLiteral("lanes"), OFTInteger}, {QStringLiteral("len"), OFTReal},
                                           {QStringLiteral("name"), OFTString}, {QStringLiteral("built"), OFTDate}};
        QCOMPARE(DataFixtures::writeVector(path, "ESRI Shapefile", QStringLiteral("roads"), wkbLineString, fields,
                                           {{QStringLiteral("LINESTRING (0 0,1 1)"), {2, 10.5, "Main", QDate(2001, 2, 3)}}}),
                 QString());
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path);
        QVERIFY(layer);
        QCOMPARE(describe(*layer->GetFields()), QStringList({"FID:1", "GEOMETRY:7", "lanes:1", "len:3", "name:4", "built:5"}));
        QCOMPARE(layer->GetLayerType(), TELayer::LT_Line);
        TERefPtr<TEFeature> feature = layer->Search(TEQueryFilter())->NextFeature();
        QVERIFY(feature);
        QCOMPARE(feature->GetValue(TEString(L"built")).ToString(), TEString(L"2001-02-03"));
        QCOMPARE(feature->GetValue(4).ToString(), TEString(L"Main"));
        QCOMPARE(feature->GetValue(0).ToString(), TEString(L"0"));
    }

    void memoryLayerReportsItsClassAndTypes()
    {
        QString error;
        TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
            QStringLiteral("pts"), TELayer::LT_Point,
            {{QStringLiteral("a"), TEField::FT_Int16}, {QStringLiteral("b"), TEField::FT_Integer},
             {QStringLiteral("c"), TEField::FT_Float}, {QStringLiteral("d"), TEField::FT_Double},
             {QStringLiteral("e"), TEField::FT_String}, {QStringLiteral("f"), TEField::FT_DateTime},
             {QStringLiteral("g"), TEField::FT_Binary}},
            QStringLiteral("EPSG:4326"), &error);
        QVERIFY2(layer, qPrintable(error));
        QCOMPARE(describe(*layer->GetFields()),
                 QStringList({"FID:1", "GEOMETRY:7", "a:0", "b:1", "c:2", "d:3", "e:4", "f:5", "g:6"}));
        QCOMPARE(layer->GetDatasource()->GetClassName(), TEString(L"TEMemoryFeatureLayer"));
        QCOMPARE(layer->GetLayerType(), TELayer::LT_Point);
        QVERIFY(layer->IsFeatureLayer() && !layer->IsRasterLayer() && layer->IsValid());
        QVERIFY(layer->GetSpatialReferenceWkt().contains(QLatin1String("WGS")));
        QVERIFY(!TEMemoryFeatureLayer::Create(QStringLiteral("bad"), TELayer::LT_Point,
                                              {{QStringLiteral("geom"), TEField::FT_Geometry}}, {}, &error));
        QVERIFY(!error.isEmpty());
    }

    void layersHaveDistinctGuidsAndDefaultStylesByType()
    {
        TERefPtr<TEMemoryFeatureLayer> points = TEMemoryFeatureLayer::Create(QStringLiteral("p"), TELayer::LT_Point, {});
        TERefPtr<TEMemoryFeatureLayer> lines = TEMemoryFeatureLayer::Create(QStringLiteral("l"), TELayer::LT_Line, {});
        TERefPtr<TEMemoryFeatureLayer> areas = TEMemoryFeatureLayer::Create(QStringLiteral("a"), TELayer::LT_Polygon, {});
        QVERIFY(points->GetGuidStr() != lines->GetGuidStr());
        QVERIFY(!points->GetGuidStr().IsEmpty());
        QCOMPARE(points->GetDefaultStyle()->GetStyleType(), TEStyle::PointStyle);
        QCOMPARE(lines->GetDefaultStyle()->GetStyleType(), TEStyle::LineStyle);
        QCOMPARE(areas->GetDefaultStyle()->GetStyleType(), TEStyle::FillStyle);
    }

    void geoJsonAndCsvOpen()
    {
        const QString json = mDir.filePath(QStringLiteral("pts.geojson"));
        QFile file(json);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(R"({"type":"FeatureCollection","features":[
            {"type":"Feature","properties":{"kind":"a","n":1},"geometry":{"type":"MultiPoint","coordinates":[[0,0],[1,1]]}}]})");
        file.close();
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(json);
        QVERIFY(layer);
        QCOMPARE(layer->GetLayerType(), TELayer::LT_MultiPoint);
        QCOMPARE(layer->GetFeatureCount(), 1);
        QCOMPARE(layer->GetSource(), json);

        const QString csv = mDir.filePath(QStringLiteral("table.csv"));
        QFile table(csv);
        QVERIFY(table.open(QIODevice::WriteOnly));
        table.write("id,name\n1,x\n2,y\n");
        table.close();
        TERefPtr<TEFeatureLayer> csvLayer = TEFeatureLayer::Open(csv);
        QVERIFY(csvLayer);
        QCOMPARE(csvLayer->GetLayerType(), TELayer::LT_Unknown);
        QCOMPARE(csvLayer->GetFeatureCount(), 2);
        QRectF extent;
        QVERIFY(!csvLayer->GetExtent(extent));
    }

    void badSourcesGiveErrors()
    {
        QString error;
        QVERIFY(!TEFeatureLayer::Open(mDir.filePath(QStringLiteral("none.gpkg")), {}, &error));
        QVERIFY(error.contains(QLatin1String("none.gpkg")));
        const QString path = mDir.filePath(QStringLiteral("one.gpkg"));
        QCOMPARE(DataFixtures::writeVector(path, "GPKG", QStringLiteral("one"), wkbPoint, {}, {}), QString());
        error.clear();
        QVERIFY(!TEFeatureLayer::Open(path, QStringLiteral("other"), &error));
        QVERIFY(error.contains(QLatin1String("other")));
        QVERIFY(TEFeatureLayer::Open(path, QStringLiteral("one")));
    }

private:
    QTemporaryDir mDir;
};

TZ_REGISTER_TEST(TestFieldLists)
#include "TestFieldLists.moc"
