#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZFeatureLayerDrawer.h"
#include "TZLayerDrawer.h"

#include "data/TEFeatureLayer.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

using namespace TZObjects;

namespace {

TERefPtr<TEStyle> marker(const QColor& color, double sizeMm)
{
    auto style = MakeRef<TEStyleSimplePoint>();
    style->SetShapeType(TEStyleSimplePoint::Circle);
    style->SetSize(sizeMm);
    style->SetColor(TEColor(color.red(), color.green(), color.blue()));
    return style;
}

// Draws a layer as the canvas would, through the drawer chosen for it.
QImage drawLayer(TELayer* layer, const TZMapViewport& viewport, bool* finished = nullptr)
{
    QImage image = AppFixture::blankImage(viewport);
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    if (!drawer)
        return QImage();
    QPainter painter(&image);
    const bool done = drawer->draw(&painter, viewport, nullptr);
    if (finished)
        *finished = done;
    return image;
}

// 400 points over the squares' viewport with a kind ("a", "b", "c" or
// none) and an angle, written into a GeoPackage layer "spots" and, the same,
// into an in-memory layer: the first is read in Arrow batches, the second
// through a cursor.
struct Spot
{
    QPointF at;
    const char* kind;
    double angle;
};

std::vector<Spot> spots()
{
    std::vector<Spot> all;
    const char* kinds[] = {"a", "b", "c", nullptr};
    for (int i = 0; i < 400; ++i)
        all.push_back({QPointF(5.0 + (i % 25) * 7.9 + (i % 7) * 0.13, 4.0 + (i / 25) * 5.9 + (i % 5) * 0.21),
                       kinds[(i * 7) % 4], (i % 9) * 20.0});
    return all;
}

QString writeSpots(const QString& folder)
{
    const QString path = folder + QStringLiteral("/spots.gpkg");
    if (QFile::exists(path))
        return path;
    GDALDatasetH ds = GDALCreate(GDALGetDriverByName("GPKG"), path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(srs, 3857);
    OGRLayerH layer = GDALDatasetCreateLayer(ds, "spots", srs, wkbPoint, nullptr);
    OSRRelease(srs);
    for (const auto& [name, type] : {std::make_pair("kind", OFTString), std::make_pair("angle", OFTReal)}) {
        OGRFieldDefnH field = OGR_Fld_Create(name, type);
        OGR_L_CreateField(layer, field, TRUE);
        OGR_Fld_Destroy(field);
    }
    bool written = true;
    for (const Spot& spot : spots()) {
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        if (spot.kind)
            OGR_F_SetFieldString(feature, 0, spot.kind);
        OGR_F_SetFieldDouble(feature, 1, spot.angle);
        OGRGeometryH point = OGR_G_CreateGeometry(wkbPoint);
        OGR_G_SetPoint_2D(point, 0, spot.at.x(), spot.at.y());
        OGR_F_SetGeometryDirectly(feature, point);
        written = written && OGR_L_CreateFeature(layer, feature) == OGRERR_NONE;
        OGR_F_Destroy(feature);
    }
    GDALClose(ds);
    return written ? path : QString();
}

TERefPtr<TEMemoryFeatureLayer> memorySpots()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("spots"), TELayer::LT_Point,
        {{QStringLiteral("kind"), TEField::FT_String}, {QStringLiteral("angle"), TEField::FT_Double}},
        QStringLiteral("EPSG:3857"));
    for (const Spot& spot : spots())
        layer->AppendFeature(QStringLiteral("POINT(%1 %2)").arg(spot.at.x(), 0, 'f', 6).arg(spot.at.y(), 0, 'f', 6),
                             {spot.kind ? TEVariant(spot.kind) : TEVariant(), TEVariant(spot.angle)});
    return layer;
}

} // namespace

// Layers drawn with known renders into an image have the expected colours
// at known pixels.
class TestLayerDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
    }

    void singleSymbolFillsThePolygonsInside()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        squares->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        const TZMapViewport view = AppFixture::squaresViewport();
        bool finished = false;
        const QImage image = drawLayer(squares.get(), view, &finished);
        QVERIFY(finished);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::red));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::red));
    }

    void categoriesDrawEachValueInItsColour()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Forest", AppFixture::fillStyle(QColor(0, 128, 0)));
        render->AddCategory(L"Water", L"Water", AppFixture::fillStyle(QColor(0, 0, 255)));
        squares->SetSymbolRender(render);
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(0, 128, 0));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(0, 0, 255));
    }

    void featureWithoutCategoryIsLeftOut()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Forest", AppFixture::fillStyle(QColor(0, 128, 0)));
        render->SetIsShowOtherValue(false);
        squares->SetSymbolRender(render);
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(0, 128, 0));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::white));
    }

    void categoryOutsideItsScaleRangeIsNotDrawn()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        const TZMapViewport view = AppFixture::squaresViewport();
        const double scale = view.scale();
        auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        render->AddCategory(L"Forest", L"Forest", AppFixture::fillStyle(Qt::red), true, scale * 2.0, scale * 10.0);
        render->AddCategory(L"Water", L"Water", AppFixture::fillStyle(Qt::blue), true, scale / 2.0, scale * 2.0);
        squares->SetSymbolRender(render);
        const QImage image = drawLayer(squares.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::white));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::blue));
    }

    void pointSymbolIsCentredOnThePoint()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        QVERIFY(spots);
        spots->SetSymbolRender(MakeRef<TESingleSymbolRender>(marker(Qt::blue, 3.0)));
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(spots.get(), view);
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}), QColor(Qt::blue));
        QCOMPARE(AppFixture::colorAt(image, view, {150, 50}), QColor(Qt::blue));
        // 3 mm at 96 dpi is about 11 pixels across, 5.5 map units here.
        QCOMPARE(AppFixture::colorAt(image, view, {50, 65}), QColor(Qt::white));
    }

    void openedLayerIsDrawnWithItsDefaultSymbol()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage image = drawLayer(squares.get(), view);
        const TEColor color = squares->GetDefaultStyle()->GetColor();
        const QColor expected(color.getR(), color.getG(), color.getB());
        QCOMPARE(AppFixture::colorAt(image, view, {50, 50}).rgb(), expected.rgb());
    }

    void viewportOutsideTheDataDrawsNothing()
    {
        TERefPtr<TEFeatureLayer> squares = openSquares();
        squares->SetSymbolRender(MakeRef<TESingleSymbolRender>(AppFixture::fillStyle(Qt::red)));
        const TZMapViewport away(QSize(100, 100), QPointF(5000, 5000), 1.0);
        const QImage image = drawLayer(squares.get(), away);
        QCOMPARE(image, AppFixture::blankImage(away));
    }

    void batchReadDrawsWhatTheCursorDraws_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("rotated");
        QTest::addColumn<QString>("where");
        QTest::newRow("single symbol") << "single" << false << QString();
        QTest::newRow("categories with a catch-all") << "categories" << false << QString();
        QTest::newRow("categories turned by a field") << "categories" << true << QString();
        QTest::newRow("the layer's filter") << "categories" << false << QStringLiteral("angle > 50 OR kind = 'a'");
        // Read without ids, a rule on the id would give every feature the
        // style of the first.
        QTest::newRow("rules on the id and a field") << "rules" << false << QString();
    }

    void batchReadDrawsWhatTheCursorDraws()
    {
        QFETCH(QString, kind);
        QFETCH(bool, rotated);
        QFETCH(QString, where);
        // The memory layer numbers its features from 0, the GeoPackage from 1.
        const auto makeRender = [&](int firstId) -> TERefPtr<TEFeatureRender> {
            if (kind == QLatin1String("rules")) {
                auto rules = MakeRef<TERuleBasedSymbolRender>();
                rules->AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(
                    marker(Qt::red, 2.5), TEString(QStringLiteral("FID >= %1").arg(firstId + 3))));
                rules->AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(marker(Qt::blue, 1.5), TEString(L"kind = 'b'")));
                return rules;
            }
            if (kind == QLatin1String("single"))
                return MakeRef<TESingleSymbolRender>(marker(Qt::blue, 2.0));
            auto byKind = MakeRef<TECategorizedSymbolRender>(TEString(L"kind"));
            byKind->AddCategory(L"a", L"a", marker(Qt::red, 2.5));
            auto triangle = MakeRef<TEStyleSimplePoint>();
            triangle->SetShapeType(TEStyleSimplePoint::Triangle);
            triangle->SetSize(3.0);
            byKind->AddCategory(L"b", L"b", triangle);
            byKind->AddCategory(TECategorizedSymbolRender::AllOtherValues, L"other", marker(Qt::green, 1.5));
            return byKind;
        };
        const TERefPtr<TEFeatureLayer> file = TEFeatureLayer::Open(writeSpots(mDir.path()));
        QVERIFY(file);
        QVERIFY(file->SearchBatches(TEQueryFilter()));
        const TERefPtr<TEMemoryFeatureLayer> memory = memorySpots();
        QVERIFY(!memory->SearchBatches(TEQueryFilter()));
        for (const auto& [layer, firstId] : {std::make_pair(TERefPtr<TEFeatureLayer>(file), 1),
                                             std::make_pair(TERefPtr<TEFeatureLayer>(memory), 0)}) {
            TERefPtr<TEFeatureRender> render = makeRender(firstId);
            render->SetIsRotateByField(rotated);
            render->SetRotateField(L"angle");
            layer->SetSymbolRender(render);
        }
        file->SetQueryFilter(TEQueryFilter(TEString(where)));
        memory->SetQueryFilter(TEQueryFilter(TEString(where)));

        const TZMapViewport view = AppFixture::squaresViewport();
        const QImage batched = drawLayer(file.get(), view);
        QVERIFY(batched != AppFixture::blankImage(view));
        QVERIFY(batched == drawLayer(memory.get(), view));
        if (!where.isEmpty()) {
            // The filter left features out.
            file->SetQueryFilter(TEQueryFilter());
            QVERIFY(drawLayer(file.get(), view) != batched);
        }
    }

private:
    TERefPtr<TEFeatureLayer> openSquares()
    {
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        if (!layer)
            QTest::qFail("cannot open the squares", __FILE__, __LINE__);
        return layer;
    }

    QTemporaryDir mDir;
    QString mVectors;
};

TZ_REGISTER_TEST(TestLayerDrawing)
#include "TestLayerDrawing.moc"
