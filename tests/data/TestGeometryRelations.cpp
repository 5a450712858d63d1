#include "TestRegistry.h"

#include "data/TEFeatureCursor.h"
#include "data/TEGeoPolygon.h"
#include "data/TEGeometryRelationalOperator.h"
#include "data/TEMemoryFeatureLayer.h"
#include "data/TESpatialIndex.h"

#include <future>

using namespace TZObjects;

namespace {

TERefPtr<TEGeometry> wkt(const char* text)
{
    return TEGeometry::FromWkt(QString::fromLatin1(text));
}

TERefPtr<TEGeometry> square(double x, double y, double size = 1.0)
{
    return TEGeometry::FromWkt(QStringLiteral("POLYGON ((%1 %2,%3 %2,%3 %4,%1 %4,%1 %2))")
                                   .arg(x).arg(y).arg(x + size).arg(y + size));
}

} // namespace

class TestGeometryRelations : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void relations_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<double>("tolerance");
        QTest::addColumn<bool>("touches");
        QTest::addColumn<bool>("intersects");
        const QString unit = QStringLiteral("POLYGON ((0 0,1 0,1 1,0 1,0 0))");
        QTest::newRow("shared edge") << unit << QStringLiteral("POLYGON ((1 0,2 0,2 1,1 1,1 0))") << 0.0 << true << true;
        QTest::newRow("shared corner") << unit << QStringLiteral("POLYGON ((1 1,2 1,2 2,1 2,1 1))") << 0.0 << true << true;
        QTest::newRow("overlap") << unit << QStringLiteral("POLYGON ((0.5 0,2 0,2 1,0.5 1,0.5 0))") << 0.0 << false << true;
        QTest::newRow("small gap, exact") << unit << QStringLiteral("POLYGON ((1.001 0,2 0,2 1,1.001 1,1.001 0))")
                                          << 0.0 << false << false;
        QTest::newRow("small gap, tolerant") << unit << QStringLiteral("POLYGON ((1.001 0,2 0,2 1,1.001 1,1.001 0))")
                                             << 0.01 << true << true;
        QTest::newRow("small overlap, tolerant") << unit << QStringLiteral("POLYGON ((0.999 0,2 0,2 1,0.999 1,0.999 0))")
                                                 << 0.01 << true << true;
        QTest::newRow("real overlap, tolerant") << unit << QStringLiteral("POLYGON ((0.5 0,2 0,2 1,0.5 1,0.5 0))")
                                                << 0.01 << false << true;
        QTest::newRow("far apart, tolerant") << unit << QStringLiteral("POLYGON ((3 0,4 0,4 1,3 1,3 0))") << 0.5
                                             << false << false;
        QTest::newRow("point on boundary") << unit << QStringLiteral("POINT (1 0.5)") << 0.0 << true << true;
        QTest::newRow("crossing lines, tolerant") << QStringLiteral("LINESTRING (0 0,2 2)")
                                                  << QStringLiteral("LINESTRING (0 2,2 0)") << 0.1 << false << true;
        QTest::newRow("line end near line, tolerant") << QStringLiteral("LINESTRING (0 0,1 0)")
                                                      << QStringLiteral("LINESTRING (1.05 -1,1.05 1)") << 0.1 << true << true;
    }
    void relations()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(double, tolerance);
        QFETCH(bool, touches);
        QFETCH(bool, intersects);
        TERefPtr<TEGeometry> ga = TEGeometry::FromWkt(a);
        TERefPtr<TEGeometry> gb = TEGeometry::FromWkt(b);
        QVERIFY(ga && gb);
        QCOMPARE(TEGeometryRelationalOperator::IsTouches(ga, gb, tolerance), touches);
        QCOMPARE(TEGeometryRelationalOperator::IsTouches(gb, ga, tolerance), touches);
        QCOMPARE(TEGeometryRelationalOperator::IsIntersect(ga, gb, tolerance), intersects);
    }

    void missingGeometriesNeverRelate()
    {
        TERefPtr<TEGeometry> a = square(0, 0);
        QVERIFY(!TEGeometryRelationalOperator::IsTouches(a.get(), nullptr, 1.0));
        QVERIFY(!TEGeometryRelationalOperator::IsIntersect(nullptr, a.get(), 1.0));
        QString error;
        QVERIFY(!TEGeometry::FromWkt(QStringLiteral("POLYGON ((0 0, 1"), &error));
        QVERIFY(!error.isEmpty());
    }

    void relationsWorkOnSeveralThreads()
    {
        auto job = [] {
            int touching = 0;
            for (int i = 0; i < 200; ++i)
                touching += TEGeometryRelationalOperator::IsTouches(square(i, 0), square(i + 1, 0), 0.001);
            return touching;
        };
        std::future<int> other = std::async(std::launch::async, job);
        QCOMPARE(job(), 200);
        QCOMPARE(other.get(), 200);
    }

    void multiPolygonRingsAreNumberedAcrossParts()
    {
        TERefPtr<TEGeoPolygon> polygon = wkt("MULTIPOLYGON (((0 0,4 0,4 4,0 4,0 0),(1 1,2 1,2 2,1 1)),"
                                             "((10 10,11 10,11 11,10 10)))")
                                             .cast<TEGeoPolygon>();
        QVERIFY(polygon);
        QCOMPARE(polygon->GetRingCount(), 3);
        QCOMPARE(polygon->GetRing(1).GetPointCount(), 4);
        QCOMPARE(polygon->GetRing(2).GetPoint(0), TEPoint(10, 10));
        QVERIFY(!wkt("LINESTRING (0 0,1 1)").cast<TEGeoPolygon>());
    }

    // The four-colour job reads polygons through a cursor as TEGeoPolygon and
    // tests every pair at a tolerance of 0.001: neighbours along a border,
    // across a hair-line gap or at a corner touch; a real overlap only
    // intersects; polygons further apart do neither.
    void cursorPolygonsRelateAsTheFourColourJobReadsThem()
    {
        TERefPtr<TEMemoryFeatureLayer> layer =
            TEMemoryFeatureLayer::Create(QStringLiteral("parcels"), TELayer::LT_Polygon, {});
        QVERIFY(layer);
        const char* parcels[] = {"POLYGON ((0 0,1 0,1 1,0 1,0 0))",
                                 "POLYGON ((1 0,2 0,2 1,1 1,1 0))",
                                 "POLYGON ((0 1.0005,1 1.0005,1 2,0 2,0 1.0005))",
                                 "POLYGON ((0.5 -1,0.8 -1,0.8 0.5,0.5 0.5,0.5 -1))",
                                 "MULTIPOLYGON (((5 5,6 5,6 6,5 6,5 5)))"};
        for (const char* parcel : parcels)
            QVERIFY(layer->AppendFeature(QString::fromLatin1(parcel), {}) >= 0);

        std::vector<TERefPtr<TEGeoPolygon>> polygons;
        TERefPtr<TEFeatureCursor> cursor = layer->Search(TEQueryFilter());
        QVERIFY(cursor);
        while (TERefPtr<TEFeature> feature = cursor->NextFeature()) {
            polygons.push_back(feature->GetGeometry().cast<TEGeoPolygon>());
            QVERIFY(polygons.back());
            QCOMPARE(polygons.back()->GetRingCount(), 1);
        }
        QCOMPARE(int(polygons.size()), 5);
        const TEGeoRing ring = polygons[1]->GetRing(0);
        QCOMPARE(ring.GetPointCount(), 5);
        QCOMPARE(ring.GetPoint(2) - ring.GetPoint(0), TEPoint(1, 1));

        auto touches = [&](int a, int b) { return TEGeometryRelationalOperator::IsTouches(polygons[a], polygons[b], 0.001); };
        auto intersects = [&](int a, int b) { return TEGeometryRelationalOperator::IsIntersect(polygons[a], polygons[b], 0.001); };
        QVERIFY(touches(0, 1) && touches(1, 0));
        QVERIFY(touches(0, 2) && touches(1, 2));
        QVERIFY(!touches(0, 3) && intersects(0, 3));
        QVERIFY(!touches(0, 4) && !intersects(0, 4));
    }

    void spatialIndexFindsCandidateNeighbours()
    {
        TESpatialIndex index;
        for (int i = 0; i < 100; ++i)
            QVERIFY(index.Insert(i, square(i % 10, i / 10).get()));
        QVERIFY(!index.Insert(100, static_cast<const TEGeometry*>(nullptr)));
        // Cell 55 at (5, 5): its eight neighbours and itself share envelope edges.
        QCOMPARE(index.Query(square(5, 5).get()), std::vector<int>({44, 45, 46, 54, 55, 56, 64, 65, 66}));
        QCOMPARE(index.Query(QRectF(20, 20, 1, 1)), std::vector<int>());
        QCOMPARE(index.Query(square(0, 0, 0.5).get(), 0.0), std::vector<int>({0}));
        QVERIFY(!index.Insert(101, QRectF(0, 0, 1, 1)));
        QCOMPARE(index.GetCount(), 100);
    }
};

TZ_REGISTER_TEST(TestGeometryRelations)
#include "TestGeometryRelations.moc"
