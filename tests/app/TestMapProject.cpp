#include "TestRegistry.h"

#include "AppFixture.h"
#include "TZMapProject.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEFileFunc.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/QuickStyle.h"
#include "symbology/TEStyleMultiLayer.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

using namespace TZObjects;

namespace {

QJsonObject renderJson(const TELayer* layer)
{
    const TERefPtr<TERender> render = layer->GetRender();
    return render ? TEFileFunc::SaveRender(render.get()) : QJsonObject();
}

// Categories whose styles are shared, equal apart from their colour, or
// different in one property each, with labels, hidden categories and scale
// ranges here and there.
TERefPtr<TECategorizedSymbolRender> mixedCategories(int count)
{
    auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
    const TERefPtr<TEStyle> shared = QuickStyle::MakePointStyle(2, TEColor(1, 2, 3), 2.0, TEColor(0, 0, 0), 0.1);
    auto multi = MakeRef<TEStyleMultiLayer>(TEStyle::PointStyle);
    multi->AddLayer(QuickStyle::MakePointStyle(1, TEColor(9, 9, 9), 4.0, TEColor(0, 0, 0), 0.2));
    multi->AddLayer(QuickStyle::MakePointStyle(0, TEColor(9, 9, 9), 1.0, TEColor(0, 0, 0), 0.0));
    for (int i = 0; i < count; ++i) {
        const TEColor colour(i % 256, (i / 256) % 256, 200);
        TERefPtr<TEStyle> style;
        switch (i % 7) {
        case 0: style = shared; break;
        case 1: style = QuickStyle::MakePointStyle(1, colour, 2.0, TEColor(0, 0, 0), 0.1); break;
        case 2: style = QuickStyle::MakePointStyle(1, colour, 2.0 + (i % 3), TEColor(0, 0, 0), 0.1); break;
        case 3: style = QuickStyle::MakeFillStyle(colour, TEColor(0, 0, i % 2 ? 0 : 255), 0.26); break;
        case 4: style = multi->Clone(); style->SetColor(colour); break;
        case 5: style = shared->Clone(); style->SetTransparency(i % 4 * 10); break;
        default: break; // no style
        }
        const TEString value(QStringLiteral("value %1").arg(i));
        const TEString label = i % 3 == 0 ? value : i % 3 == 1 ? TEString() : TEString(QStringLiteral("class %1").arg(i));
        render->AddCategory(value, label, style, i % 11 == 0, i % 11 == 0 ? 1000.0 : 0.0, 50000.0 * (i % 13 == 0));
        render->GetCategoryRenderItem(i)->SetVisible(i % 17 != 0);
    }
    return render;
}

} // namespace

// A project keeps its layers, their order, visibility, names and renders
// through a save and an open.
class TestMapProject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mDir.isValid());
        mVectors = AppFixture::writeVectors(mDir.path());
        QVERIFY(!mVectors.isEmpty());
        mGrey = AppFixture::writeGreyRaster(mDir.path());
        QVERIFY(!mGrey.isEmpty());
    }

    void roundTripKeepsEveryLayersRender()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        TERefPtr<TEFeatureLayer> squares = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        TERefPtr<TEFeatureLayer> plain = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        TERefPtr<TERasterLayer> grey = TERasterLayer::Open(mGrey);
        QVERIFY(spots && squares && plain && grey);

        auto point = MakeRef<TEStyleSimplePoint>();
        point->SetColor(TEColor(10, 20, 30));
        point->SetSize(4.5);
        spots->SetSymbolRender(MakeRef<TESingleSymbolRender>(point));
        auto categories = MakeRef<TECategorizedSymbolRender>(TEString(L"landuse"));
        auto forest = MakeRef<TEStyleSimpleFill>();
        forest->SetColor(TEColor(0, 128, 0));
        categories->AddCategory(L"Forest", L"Woodland", forest, true, 1000.0, 50000.0);
        categories->SetIsShowOtherValue(false);
        squares->SetSymbolRender(categories);
        squares->SetLayerName(TEString(L"Land use"));
        auto composite = MakeRef<TEMultiBandImageRender>();
        composite->setImageRenderMODE(8);
        composite->SetStretchBandIndex(1);
        grey->SetRender(composite);
        // "Not to render" leaves a layer without a render; so it stays.
        plain->SetSymbolRender({});

        const std::vector<TZMapProject::LayerState> saved = {
            {spots, true}, {squares, false}, {plain, true}, {grey, true}};
        const TZMapViewport view(QSize(800, 600), QPointF(100.0, 50.0), 0.25);
        const QString path = mDir.filePath(QStringLiteral("round.tzmap"));
        QString error;
        QVERIFY2(TZMapProject::save(path, saved, view, &error), qPrintable(error));

        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport openedView;
        QStringList warnings;
        QVERIFY2(TZMapProject::open(path, opened, openedView, &warnings, &error), qPrintable(error));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        QCOMPARE(opened.size(), saved.size());
        for (std::size_t i = 0; i < saved.size(); ++i) {
            QCOMPARE(opened[i].visible, saved[i].visible);
            QCOMPARE(opened[i].layer->GetLayerName().toQString(), saved[i].layer->GetLayerName().toQString());
            QCOMPARE(opened[i].layer->GetLayerType(), saved[i].layer->GetLayerType());
            QCOMPARE(renderJson(opened[i].layer.get()), renderJson(saved[i].layer.get()));
        }
        QVERIFY(!opened[2].layer->GetRender());
        auto reopened = opened[1].layer->GetRender().cast<TECategorizedSymbolRender>();
        QVERIFY(reopened);
        QCOMPARE(reopened->GetExpression().toQString(), QStringLiteral("landuse"));
        QCOMPARE(openedView.centre(), view.centre());
        QCOMPARE(openedView.unitsPerPixel(), view.unitsPerPixel());
    }

    // Thousands of categories coloured from a few symbols read back the same
    // from a compact file in which each symbol is written once.
    void manyCategoriesRoundTripCompactly()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        QVERIFY(spots);
        const TERefPtr<TECategorizedSymbolRender> categories = mixedCategories(3000);
        spots->SetSymbolRender(categories);
        const QString path = mDir.filePath(QStringLiteral("many.tzmap"));
        QString error;
        QVERIFY2(TZMapProject::save(path, {{spots, true}}, TZMapViewport(), &error), qPrintable(error));

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(!text.contains('\n'));
        const QJsonObject written = QJsonDocument::fromJson(text).object()[QStringLiteral("layers")].toArray()[0]
                                        .toObject()[QStringLiteral("render")].toObject();
        // The shared style, the recoloured point in three sizes, the fill
        // with two outlines, the multi-layer symbol and three transparencies.
        QCOMPARE(written[QStringLiteral("categoryTable")].toObject()[QStringLiteral("styles")].toArray().size(), 10);

        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QVERIFY2(TZMapProject::open(path, opened, view, nullptr, &error), qPrintable(error));
        QCOMPARE(opened.size(), std::size_t(1));
        QCOMPARE(renderJson(opened[0].layer.get()), TEFileFunc::SaveRender(categories.get()));
        // Categories that shared a style object get copies of their own.
        auto reopened = opened[0].layer->GetRender().cast<TECategorizedSymbolRender>();
        QVERIFY(reopened->GetCategoryRenderItem(0)->GetStyle() != reopened->GetCategoryRenderItem(7)->GetStyle());
    }

    // A project written before the category table, indented and with each
    // category's style in full, still opens with its categories.
    void projectOfTheOlderFormatOpens()
    {
        // Written as that version wrote it: QJsonDocument's indented text.
        auto woodland = MakeRef<TEStyleSimpleFill>();
        woodland->SetColor(TEColor(0, 128, 0));
        auto lake = MakeRef<TEStyleSimpleFill>();
        lake->SetColor(TEColor(0, 0, 255));
        const QJsonArray categories = {
            QJsonObject{{"value", "Forest"}, {"label", "Woodland"}, {"style", TEFileFunc::SaveStyle(woodland.get())},
                        {"visible", true}, {"scaleFilter", true}, {"minScale", 1000}, {"maxScale", 50000}},
            QJsonObject{{"value", "Water"}, {"label", ""}, {"style", TEFileFunc::SaveStyle(lake.get())},
                        {"visible", false}, {"scaleFilter", false}, {"minScale", 0}, {"maxScale", 0}}};
        const QJsonObject written{{"type", "UniqueValues"}, {"expression", "landuse"}, {"showOtherValue", false},
                                  {"categories", categories}};
        const QJsonObject layer{{"kind", "feature"}, {"source", "fixture.gpkg"}, {"layer", "squares"},
                                {"name", "Land use"}, {"visible", true}, {"render", written}};
        const QJsonObject project{{"application", "tzmap"}, {"version", 2}, {"layers", QJsonArray{layer}}};
        const QString path = mDir.filePath(QStringLiteral("version2.tzmap"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QJsonDocument(project).toJson(QJsonDocument::Indented));
        file.close();
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QStringList warnings;
        QString error;
        QVERIFY2(TZMapProject::open(path, opened, view, &warnings, &error), qPrintable(error));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        QCOMPARE(opened.size(), std::size_t(1));
        auto render = opened[0].layer->GetRender().cast<TECategorizedSymbolRender>();
        QVERIFY(render);
        QCOMPARE(render->GetItemCount(), 2);
        const TERefPtr<TECategoryRenderItem> forest = render->GetCategoryRenderItem(0);
        QCOMPARE(forest->GetLabel().toQString(), QStringLiteral("Woodland"));
        QCOMPARE(forest->GetStyle()->GetColor(), TEColor(0, 128, 0));
        QVERIFY(forest->IsScaleFilter());
        QCOMPARE(forest->GetMaxScale(), 50000.0);
        const TERefPtr<TECategoryRenderItem> water = render->GetCategoryRenderItem(1);
        QCOMPARE(water->GetValue().toQString(), QStringLiteral("Water"));
        QVERIFY(!water->IsVisible());
        QCOMPARE(water->GetStyle()->GetColor(), TEColor(0, 0, 255));
        QVERIFY(!render->IsShowOtherValue());
    }

    void sourcesInTheProjectFolderAreStoredRelative()
    {
        TERefPtr<TEFeatureLayer> spots = TEFeatureLayer::Open(mVectors, QStringLiteral("spots"));
        const QString path = mDir.filePath(QStringLiteral("relative.tzmap"));
        QString error;
        QVERIFY(TZMapProject::save(path, {{spots, true}}, TZMapViewport(), &error));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.contains("\"fixture.gpkg\""));
        QVERIFY(!text.contains(mDir.path().toUtf8()));
    }

    void missingLayerIsLeftOutWithAWarning()
    {
        QTemporaryDir other;
        const QString moved = AppFixture::writeVectors(other.path());
        TERefPtr<TEFeatureLayer> gone = TEFeatureLayer::Open(moved, QStringLiteral("spots"));
        TERefPtr<TEFeatureLayer> kept = TEFeatureLayer::Open(mVectors, QStringLiteral("squares"));
        const QString path = mDir.filePath(QStringLiteral("missing.tzmap"));
        QString error;
        QVERIFY(TZMapProject::save(path, {{gone, true}, {kept, true}}, TZMapViewport(), &error));
        gone = nullptr;
        QVERIFY(other.remove());

        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QStringList warnings;
        QVERIFY(TZMapProject::open(path, opened, view, &warnings, &error));
        QCOMPARE(opened.size(), std::size_t(1));
        QCOMPARE(opened[0].layer->GetLayerName().toQString(), QStringLiteral("squares"));
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings[0].contains(QStringLiteral("spots")));
    }

    void renderMissingFromAnEntryOpensTheDefault_data()
    {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("renderMember");
        QTest::addColumn<bool>("rendered");
        QTest::newRow("no member, version 1") << 1 << QString() << true;
        QTest::newRow("no member, version 2") << 2 << QString() << true;
        // Version 1 wrote null for a layer not given a render yet, which it
        // drew in a default style; version 2 writes it for "Not to render".
        QTest::newRow("null, version 1") << 1 << QStringLiteral(", \"render\": null") << true;
        QTest::newRow("null, version 2") << 2 << QStringLiteral(", \"render\": null") << false;
    }
    void renderMissingFromAnEntryOpensTheDefault()
    {
        QFETCH(int, version);
        QFETCH(QString, renderMember);
        QFETCH(bool, rendered);
        const QString path = mDir.filePath(QStringLiteral("older.tzmap"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QStringLiteral("{\"application\": \"tzmap\", \"version\": %1, \"layers\": ["
                                  "{\"kind\": \"feature\", \"source\": \"fixture.gpkg\", \"layer\": \"squares\"%2},"
                                  "{\"kind\": \"raster\", \"source\": \"grey.tif\"%2}]}")
                       .arg(version).arg(renderMember).toUtf8());
        file.close();
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QStringList warnings;
        QString error;
        QVERIFY2(TZMapProject::open(path, opened, view, &warnings, &error), qPrintable(error));
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
        QCOMPARE(opened.size(), std::size_t(2));
        QCOMPARE(bool(opened[0].layer->GetRender().cast<TESingleSymbolRender>()), rendered);
        QCOMPARE(bool(opened[1].layer->GetRender()), rendered);
    }

    void fileThatIsNoProjectIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("not json") << QByteArray("<xml/>");
        QTest::newRow("other json") << QByteArray("{\"layers\": []}");
        QTest::newRow("newer version") << QByteArray("{\"application\": \"tzmap\", \"version\": 99, \"layers\": []}");
    }
    void fileThatIsNoProjectIsRefused()
    {
        QFETCH(QByteArray, content);
        const QString path = mDir.filePath(QStringLiteral("bad.tzmap"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
        file.close();
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QString error;
        QVERIFY(!TZMapProject::open(path, opened, view, nullptr, &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(opened.empty());
    }

    // A damaged or hand-edited entry: the project still opens, the warning
    // names the layer and what was wrong, and the layer either keeps its
    // default render or is left out.
    void brokenEntryWarns_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QStringList>("expected"); // parts of the one warning
        QTest::addColumn<QString>("renderType");   // after opening; empty: layer left out
        const QString grey = QStringLiteral("\"kind\": \"raster\", \"source\": \"grey.tif\", \"name\": \"G\", ");
        const QString squares =
            QStringLiteral("\"kind\": \"feature\", \"source\": \"fixture.gpkg\", \"layer\": \"squares\", \"name\": \"S\", ");
        const QString single = QStringLiteral("SingleBandImage");
        QTest::newRow("band 0") << grey + "\"render\": {\"type\": \"SingleBandImage\", \"band\": 0}"
                                << QStringList{"\"G\"", "\"band\" must be a whole number from 1", "not 0"} << single;
        QTest::newRow("band -1") << grey + "\"render\": {\"type\": \"SingleBandImage\", \"band\": -1}"
                                 << QStringList{"\"G\"", "not -1"} << single;
        QTest::newRow("band above the count") << grey + "\"render\": {\"type\": \"SingleBandImage\", \"band\": 2}"
                                              << QStringList{"\"G\"", "band 2 does not exist", "has 1"} << single;
        QTest::newRow("band as text") << grey + "\"render\": {\"type\": \"SingleBandImage\", \"band\": \"1\"}"
                                      << QStringList{"\"band\" must be a whole number", "not \"1\""} << single;
        QTest::newRow("fractional band") << grey + "\"render\": {\"type\": \"SingleBandImage\", \"band\": 1.5}"
                                         << QStringList{"not 1.5"} << single;
        QTest::newRow("stretch band above the count")
            << grey + "\"render\": {\"type\": \"MultiBandImage\", \"mode\": 8, \"stretchBand\": 3}"
            << QStringList{"stretch band 3 does not exist"} << single;
        QTest::newRow("rgb bands 9 and -3")
            << grey + "\"render\": {\"type\": \"MultiBandImage\", \"redBand\": 9, \"blueBand\": -3}"
            << QStringList{"\"blueBand\"", "not -3"} << single;
        QTest::newRow("rgb band 9 of 1")
            << grey + "\"render\": {\"type\": \"MultiBandImage\", \"redBand\": 9, \"greenBand\": 1, \"blueBand\": 1}"
            << QStringList{"red band 9 does not exist"} << single;
        QTest::newRow("multi-band mode 6") << grey + "\"render\": {\"type\": \"MultiBandImage\", \"mode\": 6}"
                                           << QStringList{"\"mode\" must be 5 or 8"} << single;
        QTest::newRow("categories not a list")
            << squares + "\"render\": {\"type\": \"UniqueValues\", \"expression\": \"landuse\", \"categories\": {}}"
            << QStringList{"\"S\"", "\"categories\" must be a list"} << QStringLiteral("SingleSymbol");
        QTest::newRow("category table pointing past its styles")
            << squares + "\"render\": {\"type\": \"UniqueValues\", \"categoryTable\": {\"styles\": [], "
                         "\"values\": [\"Forest\"], \"labels\": [null], \"symbols\": [0], \"colors\": [null]}}"
            << QStringList{"\"S\"", "Category 1 refers to a style"} << QStringLiteral("SingleSymbol");
        QTest::newRow("render as text") << squares + "\"render\": \"SingleSymbol\""
                                        << QStringList{"\"S\"", "not a render object"} << QStringLiteral("SingleSymbol");
        QTest::newRow("unknown render type") << squares + "\"render\": {\"type\": \"Sketchy\"}"
                                             << QStringList{"Unknown render type \"Sketchy\""}
                                             << QStringLiteral("SingleSymbol");
        QTest::newRow("feature render on a raster") << grey + "\"render\": {\"type\": \"SingleSymbol\"}"
                                                    << QStringList{"\"G\"", "SingleSymbol"} << single;
        // The folder the project was read from is in the text, not the
        // relative path as written.
        QTest::newRow("missing file")
            << QStringLiteral("\"kind\": \"feature\", \"source\": \"gone/none.gpkg\", \"layer\": \"x\", \"name\": \"N\"")
            << QStringList{"\"N\"", mDir.filePath(QStringLiteral("gone/none.gpkg")), "not found"} << QString();
        QTest::newRow("malformed GeoPackage")
            << QStringLiteral("\"kind\": \"feature\", \"source\": \"torn.gpkg\", \"layer\": \"squares\", \"name\": \"T\"")
            << QStringList{"\"T\"", "torn.gpkg", "malformed"} << QString();
        QTest::newRow("unknown kind") << QStringLiteral("\"kind\": \"tiles\", \"source\": \"grey.tif\", \"name\": \"K\"")
                                      << QStringList{"\"K\"", "Unknown layer kind \"tiles\""} << QString();
    }
    void brokenEntryWarns()
    {
        QFETCH(QString, entry);
        QFETCH(QStringList, expected);
        QFETCH(QString, renderType);
        // A GeoPackage cut short: SQLite's header, then nothing it can use.
        QFile whole(mVectors);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QFile torn(mDir.filePath(QStringLiteral("torn.gpkg")));
        QVERIFY(torn.open(QIODevice::WriteOnly | QIODevice::Truncate));
        torn.write(whole.read(4096) + QByteArray(4096, '\xA5'));
        torn.close();

        const QString path = mDir.filePath(QStringLiteral("broken.tzmap"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QStringLiteral("{\"application\": \"tzmap\", \"version\": 2, \"layers\": [{%1},"
                                  "{\"kind\": \"raster\", \"source\": \"grey.tif\", \"name\": \"after\"}]}")
                       .arg(entry).toUtf8());
        file.close();
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport view;
        QStringList warnings;
        QString error;
        QVERIFY2(TZMapProject::open(path, opened, view, &warnings, &error), qPrintable(error));
        QCOMPARE(warnings.size(), 1);
        for (const QString& part : expected)
            QVERIFY2(warnings[0].contains(part), qPrintable(warnings[0] + " lacks " + part));
        // The layer after the broken one is always kept.
        QCOMPARE(opened.back().layer->GetLayerName().toQString(), QStringLiteral("after"));
        if (renderType.isEmpty()) {
            QCOMPARE(opened.size(), std::size_t(1));
            return;
        }
        QCOMPARE(opened.size(), std::size_t(2));
        const TERefPtr<TERender> render = opened[0].layer->GetRender();
        QVERIFY(render);
        QCOMPARE(render->GetType().toQString(), renderType);
        if (auto single = render.cast<TESingleBandImageRender>())
            QCOMPARE(single->GetBandIndex(), 1);
    }

private:
    QTemporaryDir mDir;
    QString mVectors;
    QString mGrey;
};

TZ_REGISTER_TEST(TestMapProject)
#include "TestMapProject.moc"
