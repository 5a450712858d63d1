#include "TestRegistry.h"
#include "SymbologyTestUtils.h"

#include "symbology/QuickStyle.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QJsonArray>

using namespace TZObjects;
using namespace SymbologyTest;

Q_DECLARE_METATYPE(TERefPtr<TEStyle>)

namespace {

TERefPtr<TEStyleSimplePoint> makePoint()
{
    auto point = MakeRef<TEStyleSimplePoint>();
    point->SetName(TEString("City"));
    point->SetAliasName(TEString("Große Stadt"));
    point->SetColor(TEColor(200, 30, 30, 180));
    point->SetShapeType(TEStyleSimplePoint::Star);
    point->SetWidth(3.5);
    point->SetHeight(2.5);
    point->SetAngle(30);
    point->SetOffset(0.5, -1.0);
    point->SetOutlineColor(TEColor(1, 2, 3));
    point->SetOutlineWidth(0.3);
    point->SetUnits(TEStyle::Point);
    point->SetPriority(4);
    point->SetTransparency(25);
    point->SetTestCollision(true);
    point->SetWriteCollision(true);
    point->SetExtendShape(true);
    return point;
}

TERefPtr<TEStyleSimpleFill> makeFill()
{
    auto fill = MakeRef<TEStyleSimpleFill>();
    fill->SetName(TEString("Wetland"));
    fill->SetColor(TEColor(180, 210, 200));
    fill->SetFillKind(TEStyleSimpleFill::BDiagonal);
    auto outline = MakeRef<TEStyleSimpleLine>();
    outline->SetColor(TEColor(60, 120, 180));
    outline->SetWidth(0.5);
    outline->SetPenStyle(TEStyleSimpleLine::Dash);
    fill->SetOutline(outline);
    return fill;
}

TERefPtr<TEStyleMultiLayer> makeCasedRoad()
{
    auto road = MakeRef<TEStyleMultiLayer>(TEStyle::LineStyle);
    road->SetName(TEString("Motorway"));
    auto casing = QuickStyle::MakeLineStyle(TEColor(140, 60, 30), 1.8);
    auto centre = QuickStyle::MakeLineStyle(TEColor(230, 120, 60), 1.2);
    centre->SetPriority(1);
    road->AddLayer(casing);
    road->AddLayer(centre);
    return road;
}

} // namespace

// Style identity, copies and serialisation.
class TestStyles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void styleClassNamesFollowTheHostOrder()
    {
        QCOMPARE(int(TEStyle::StyleClassCount), 29);
        QCOMPARE(TEStyle::StyleClassName(0), "InvalidStyle");
        QCOMPARE(TEStyle::StyleClassName(TEStyle::SimplePoint), "SimplePoint");
        QCOMPARE(TEStyle::StyleClassName(TEStyle::SimpleFill), "SimpleFill");
        QCOMPARE(TEStyle::StyleClassName(20), "3DSimplePoint");
        QCOMPARE(TEStyle::StyleClassName(28), "ParallelLine");
        QCOMPARE(TEStyle::StyleClassName(29), "InvalidStyle");
        for (int i = 0; i < TEStyle::StyleClassCount; ++i)
            QCOMPARE(int(TEStyle::StyleClassFromName(TEStyle::StyleClassName(i))), i);
        QCOMPARE(MakeRef<TEStyleSimpleLine>()->GetTypeName().toQString(), QString("SimpleLine"));
        QCOMPARE(MakeRef<TEStyleMultiLayer>(TEStyle::FillStyle)->GetTypeName().toQString(),
                 QString("MulLayerPolygon"));
    }

    void unitsConvertToDevicePixels_data()
    {
        QTest::addColumn<double>("size");
        QTest::addColumn<int>("units");
        QTest::addColumn<double>("dpi");
        QTest::addColumn<double>("pixels");
        QTest::newRow("millimetre") << 25.4 << 1 << 96.0 << 96.0;
        QTest::newRow("centimetre") << 2.54 << 2 << 96.0 << 96.0;
        QTest::newRow("inch") << 2.0 << 3 << 300.0 << 600.0;
        // The panels' "Point" is code 0; code 4 means points too.
        QTest::newRow("point") << 72.0 << 0 << 96.0 << 96.0;
        QTest::newRow("point, older code") << 72.0 << 4 << 96.0 << 96.0;
        QTest::newRow("point at 300 dpi") << 1.0 << 0 << 300.0 << 300.0 / 72.0;
        QTest::newRow("pixel") << 7.0 << int(TEStyle::Pixel) << 300.0 << 7.0;
        QTest::newRow("unknown unit is pixels") << 7.0 << 9 << 300.0 << 7.0;
        QTest::newRow("negative unit is pixels") << 7.0 << -1 << 300.0 << 7.0;
        // The single symbol panel's factor: 2 mm is about 7.56 pixels.
        QTest::newRow("panel millimetre") << 2.0 << 1 << 96.0 << 2.0 / 0.2646;
    }

    void unitsConvertToDevicePixels()
    {
        QFETCH(double, size);
        QFETCH(int, units);
        QFETCH(double, dpi);
        QFETCH(double, pixels);
        QVERIFY(qAbs(TEStyle::SizeToPixels(size, units, dpi) - pixels) < 0.01);
    }

    void clonesShareNothingWithTheOriginal()
    {
        auto point = makePoint();
        TERefPtr<TEStyle> pointCopy = point->Clone();
        point->SetColor(TEColor(0, 0, 255));
        point->SetWidth(9);
        QCOMPARE(pointCopy->GetColor(), TEColor(200, 30, 30, 180));
        QCOMPARE(pointCopy.cast<TEStyleSimplePoint>()->GetWidth(), 3.5);

        auto fill = makeFill();
        auto fillCopy = fill->Clone().cast<TEStyleSimpleFill>();
        QVERIFY(fillCopy->GetOutline() != fill->GetOutline());
        fill->GetOutline()->SetColor(TEColor(255, 0, 0));
        QCOMPARE(fillCopy->GetOutline()->GetColor(), TEColor(60, 120, 180));

        auto road = makeCasedRoad();
        auto roadCopy = road->Clone().cast<TEStyleMultiLayer>();
        QCOMPARE(roadCopy->GetLayerCount(), 2);
        QVERIFY(roadCopy->GetLayer(0) != road->GetLayer(0));
        road->GetLayer(1)->SetPriority(-5);
        road->RemoveLayer(0);
        QCOMPARE(roadCopy->GetLayerCount(), 2);
        QCOMPARE(roadCopy->GetLayer(1)->GetPriority(), 1);
    }

    void multiLayerHoldsOnlyItsKind()
    {
        TEStyleMultiLayer points(TEStyle::PointStyle);
        QVERIFY(points.AddLayer(MakeRef<TEStyleSimplePoint>()));
        QVERIFY(!points.AddLayer(MakeRef<TEStyleSimpleLine>()));
        QVERIFY(!points.AddLayer(TERefPtr<TEStyle>()));
        TEStyleMultiLayer polygons(TEStyle::FillStyle);
        QVERIFY(polygons.AddLayer(MakeRef<TEStyleSimpleFill>()));
        QVERIFY(polygons.AddLayer(MakeRef<TEStyleSimpleLine>()));
        QVERIFY(!polygons.AddLayer(MakeRef<TEStyleSimplePoint>()));
        QCOMPARE(polygons.GetLayerCount(), 2);
        QVERIFY(!polygons.GetLayer(2));
        QVERIFY(!polygons.RemoveLayer(-1));
    }

    void drawingOrderFollowsPrioritiesStably()
    {
        TEStyleMultiLayer symbol(TEStyle::PointStyle);
        const int priorities[] = {2, 0, 2, 1};
        for (int p : priorities) {
            auto layer = MakeRef<TEStyleSimplePoint>();
            layer->SetPriority(p);
            symbol.AddLayer(layer);
        }
        QCOMPARE(symbol.DrawingOrder(), (std::vector<int>{1, 3, 0, 2}));
    }

    void everyStyleKindSurvivesJson_data()
    {
        QTest::addColumn<TERefPtr<TEStyle>>("style");
        QTest::newRow("simple point") << TERefPtr<TEStyle>(makePoint());
        auto line = MakeRef<TEStyleSimpleLine>();
        line->SetColor(TEColor(10, 20, 30, 40));
        line->SetWidth(0.7);
        line->SetPenStyle(TEStyleSimpleLine::DashDotDot);
        line->SetUnits(TEStyle::Inch);
        QTest::newRow("simple line") << TERefPtr<TEStyle>(line);
        QTest::newRow("simple fill") << TERefPtr<TEStyle>(makeFill());
        auto hollow = makeFill();
        hollow->SetOutline(TERefPtr<TEStyleLine>());
        QTest::newRow("fill without outline") << TERefPtr<TEStyle>(hollow);
        QTest::newRow("multi-layer line") << TERefPtr<TEStyle>(makeCasedRoad());
        auto points = MakeRef<TEStyleMultiLayer>(TEStyle::PointStyle);
        points->AddLayer(makePoint());
        points->AddLayer(QuickStyle::MakePointStyle(0, TEColor(1, 1, 1), 1, TEColor(2, 2, 2), 0));
        QTest::newRow("multi-layer point") << TERefPtr<TEStyle>(points);
        auto polygons = MakeRef<TEStyleMultiLayer>(TEStyle::FillStyle);
        polygons->AddLayer(makeFill());
        polygons->AddLayer(makeCasedRoad());
        QTest::newRow("multi-layer polygon nesting a multi-layer line") << TERefPtr<TEStyle>(polygons);
    }

    void everyStyleKindSurvivesJson()
    {
        QFETCH(TERefPtr<TEStyle>, style);
        QJsonObject json;
        style->save(json);
        QString error;
        TERefPtr<TEStyle> reopened = TEStyle::FromJson(json, &error);
        QVERIFY2(reopened, qPrintable(error));
        QCOMPARE(reopened->GetStyleClass(), style->GetStyleClass());
        QCOMPARE(reopened->GetStyleType(), style->GetStyleType());
        QCOMPARE(styleJson(reopened.get()), styleJson(style.get()));
    }

    void openReadsBackEveryCommonProperty()
    {
        auto point = makePoint();
        QJsonObject json;
        point->save(json);
        auto reopened = TEStyle::FromJson(json).cast<TEStyleSimplePoint>();
        QVERIFY(reopened);
        QCOMPARE(reopened->GetAliasName().toQString(), QString("Große Stadt"));
        QCOMPARE(reopened->GetColor(), TEColor(200, 30, 30, 180));
        QCOMPARE(reopened->GetUnits(), int(TEStyle::Point));
        QCOMPARE(reopened->GetPriority(), 4);
        QCOMPARE(reopened->GetTransparency(), 25);
        QVERIFY(reopened->IsTestCollision() && reopened->IsWriteCollision() && reopened->GetExtendShape());
        QCOMPARE(reopened->GetShapeType(), int(TEStyleSimplePoint::Star));
        QCOMPARE(reopened->GetOffsetY(), -1.0);
    }

    void unreadableJsonIsRefusedWithAReason()
    {
        QString error;
        QJsonObject unknown{{"type", "BitmapPoint"}};
        QVERIFY(!TEStyle::FromJson(unknown, &error));
        QVERIFY(error.contains("BitmapPoint"));

        QJsonObject badColour{{"type", "SimpleLine"}, {"color", "not a colour"}};
        QVERIFY(!TEStyle::FromJson(badColour, &error));

        // A point layer inside a multi-layer line cannot be drawn along a line.
        QJsonObject mixed{{"type", "MulLayerLine"},
                          {"layers", QJsonArray{QJsonObject{{"type", "SimplePoint"}}}}};
        QVERIFY(!TEStyle::FromJson(mixed, &error));

        auto line = MakeRef<TEStyleSimpleLine>();
        line->SetWidth(3);
        QVERIFY(!line->open(QJsonObject{{"type", "SimpleFill"}, {"width", 1.0}}));
        QCOMPARE(line->GetWidth(), 3.0);
    }

    void quickStyleMakesTheRequestedPoint()
    {
        TERefPtr<TEStyle> style = QuickStyle::MakePointStyle(TEStyleSimplePoint::Square, TEColor(1, 2, 3), 4.0,
                                                             TEColor(5, 6, 7), 0.5);
        auto point = style.cast<TEStyleSimplePoint>();
        QVERIFY(point);
        QCOMPARE(point->GetShapeType(), int(TEStyleSimplePoint::Square));
        QCOMPARE(point->GetColor(), TEColor(1, 2, 3));
        QCOMPARE(point->GetWidth(), 4.0);
        QCOMPARE(point->GetHeight(), 4.0);
        QCOMPARE(point->GetOutlineColor(), TEColor(5, 6, 7));
        QCOMPARE(point->GetOutlineWidth(), 0.5);
        QCOMPARE(QuickStyle::MakeDefaultStyle(TEStyle::FillStyle, TEColor())->GetStyleType(), TEStyle::FillStyle);
    }

    void multiLayerColourAndUnitsReachEveryLayer()
    {
        auto road = makeCasedRoad();
        road->SetColor(TEColor(9, 9, 9));
        road->SetUnits(TEStyle::Point);
        for (int i = 0; i < road->GetLayerCount(); ++i) {
            QCOMPARE(road->GetLayer(i)->GetColor(), TEColor(9, 9, 9));
            QCOMPARE(road->GetLayer(i)->GetUnits(), int(TEStyle::Point));
        }
    }
};

TZ_REGISTER_TEST(TestStyles)
#include "TestStyles.moc"
