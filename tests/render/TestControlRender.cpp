#include "TestRegistry.h"
#include "FakeRenderPanel.h"

#include "TZControlRender.h"

#include "data/TEFeatureLayer.h"
#include "data/TEMemoryFeatureLayer.h"
#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TESingleBandImageRender.h"
#include "view/TEMapView.h"
#include "view/TEMapViewManager.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>

#include <gdal.h>

using namespace TZObjects;
using LayerTypes = QList<TELayer::LayerType>;

namespace {

constexpr TELayer::LayerType T1 = TELayer::LT_Point;
constexpr TELayer::LayerType T2 = TELayer::LT_MultiPoint;
constexpr TELayer::LayerType T3 = TELayer::LT_Line;
constexpr TELayer::LayerType T4 = TELayer::LT_Polygon;
constexpr TELayer::LayerType T6 = TELayer::LT_SingleBandRaster;
constexpr TELayer::LayerType T7 = TELayer::LT_MultiBandRaster;
constexpr TELayer::LayerType T8 = TELayer::LT_RasterDir;

struct CatalogEntry
{
    const char* key;
    const char* title;
    LayerTypes types;
};

// The dock's catalog, in its order, as fake panels until the real ones exist.
const QList<CatalogEntry>& catalog()
{
    static const QList<CatalogEntry> entries = {
        {"SingleSymbol", "Single symbol", {T1, T2, T3, T4}},
        {"UniqueValues", "Unique Values", {T1, T2, T3, T4}},
        {"UniqueValuesManyFields", "Unique Values,Many Fields", {T1, T2, T3, T4}},
        {"GradingSymbol", "Grading symbol", {T1, T2, T3, T4}},
        {"GradingSymbolDiagram", "Graduated symbols", {T1, T2, T3, T4}},
        {"MatchToSymbols", "Match to symbols in a style", {T1, T2, T3, T4}},
        {"Rule-based", "Rule-based", {T1, T2, T3, T4}},
        {"FourColorTheorem", "Four color themorem", {T4}},
        {"Heatmap", "Heatmap", {T1}},
        {"PieDiagram", "Pie Diagram", {T1, T2, T3, T4}},
        {"HistogramDiagram", "Histogram Diagram", {T1, T2, T3, T4}},
        {"StackDiagram", "Stack Diagram", {T1, T2, T3, T4}},
        {"DotDensityDiagram", "Dot density diagram", {T4}},
        {"ClusterDiagram", "Cluster diagram", {T1}},
        {"ImageClass", "Image Class", {T6}},
        {"ImageStretch", "Image Stretch", {T6, T8}},
        {"ImageUnique", "Image Unique", {T6}},
        {"ImageColormap", "Image Colormap", {T6}},
        {"ImageMultiStretch", "Image Stretch", {T7}},
        {"ImageRGBComposite", "Image RGBComposite", {T7}},
    };
    return entries;
}

// The dock with its protected catalog operations opened for the tests.
class TestDock : public TZControlRender
{
public:
    explicit TestDock(QWidget* parent = nullptr) : TZControlRender(parent) {}
    using TZControlRender::addRender;

    FakeRenderPanel* add(const QString& key, const QString& title, const LayerTypes& types)
    {
        auto* panel = new FakeRenderPanel(this, key, title, types, &journal);
        addRender(panel);
        return panel;
    }
    // Completes the catalog with fakes for the panels not built yet, so
    // that every key has a page (a real one where it exists).
    void addCatalog()
    {
        for (const CatalogEntry& entry : catalog()) {
            const QString key = QString::fromLatin1(entry.key);
            TZRenderPanel* panel = registered(key);
            if (panel)
                realKeys << key;
            panels[key] = panel ? panel : add(key, QString::fromLatin1(entry.title), entry.types);
        }
    }
    // The titles offered for a layer type: the real panels in catalog order,
    // then the fakes added after them, also in catalog order.
    QStringList offeredTitles(TELayer::LayerType type, bool withNoRender) const
    {
        QStringList titles;
        if (withNoRender)
            titles << QStringLiteral("Not to render");
        for (bool real : {true, false}) {
            for (const CatalogEntry& entry : catalog()) {
                if (entry.types.contains(type) && realKeys.contains(QString::fromLatin1(entry.key)) == real)
                    titles << QString::fromLatin1(entry.title);
            }
        }
        return titles;
    }
    TZRenderPanel* registered(const QString& key) const
    {
        for (int i = 0; i < tabs()->count(); ++i) {
            auto* panel = qobject_cast<TZRenderPanel*>(tabs()->widget(i));
            if (panel && panel->name() == key)
                return panel;
        }
        return nullptr;
    }

    QComboBox* combo() const { return findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle")); }
    QTabWidget* tabs() const { return findChild<QTabWidget*>(QStringLiteral("mTabWidgetStyle")); }
    QWidget* noRenderPage() const { return findChild<QWidget*>(QStringLiteral("mTabNoRender")); }
    QStringList comboTexts() const
    {
        QStringList texts;
        for (int i = 0; i < combo()->count(); ++i)
            texts << combo()->itemText(i);
        return texts;
    }

    QStringList journal;
    QMap<QString, QPointer<TZRenderPanel>> panels;
    QSet<QString> realKeys;
};

// A layer of any type code, for types no real layer class has.
class CodeLayer : public TELayer
{
public:
    explicit CodeLayer(int type)
        : TELayer(LayerType(type), QString(), TEString(L"coded")) {}
    bool IsValid() const override { return true; }
    TERefPtr<TERender> GetRender() const override { return nullptr; }
    bool GetExtent(QRectF&) const override { return false; }
    QString GetSpatialReferenceWkt() const override { return QString(); }
};

// A feature render whose type key is the test's, so that the dock's
// behaviour is tested on fake panels whatever real panels exist.
class KeyedRender : public TEFeatureRender
{
public:
    explicit KeyedRender(const QString& key) : mKey(key) {}
    TEString GetType() const override { return TEString(mKey); }
    TERefPtr<TEFeatureRender> Clone() const override { return MakeRef<KeyedRender>(mKey); }
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature*, const double&, bool) const override { return nullptr; }

private:
    QString mKey;
};

// A map view showing a fixed set of layers.
class ViewOf : public TEMapView
{
public:
    explicit ViewOf(const TELayer* layer) : mLayer(layer) {}
    bool ContainsLayer(const TELayer* layer) const override { return layer == mLayer; }

private:
    const TELayer* mLayer;
};

TERefPtr<TEFeatureLayer> memoryLayer(TELayer::LayerType type)
{
    QString error;
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("roads"), type, {{QStringLiteral("name"), TEField::FT_String}}, {}, &error);
    if (!layer)
        qWarning() << error;
    return layer;
}

// Writes a small GeoTIFF of the given number of bands.
QString writeRaster(const QString& path, int bands)
{
    GDALAllRegister();
    GDALDriverH driver = GDALGetDriverByName("GTiff");
    GDALDatasetH dataset = GDALCreate(driver, path.toUtf8().constData(), 4, 4, bands, GDT_Byte, nullptr);
    double transform[6] = {0, 1, 0, 4, 0, -1};
    GDALSetGeoTransform(dataset, transform);
    for (int b = 1; b <= bands; ++b)
        GDALFillRaster(GDALGetRasterBand(dataset, b), 10.0 * b, 0);
    GDALClose(dataset);
    return path;
}

// Shows in the dock a new layer of type whose render has the type key key.
TERefPtr<TEFeatureLayer> showKeyedLayer(TZControlRender& dock, TELayer::LayerType type, const QString& key)
{
    TERefPtr<TEFeatureLayer> layer = memoryLayer(type);
    layer->SetSymbolRender(MakeRef<KeyedRender>(key));
    dock.setLayer(layer.get());
    dock.showLayerStyle();
    return layer;
}

// Writes a one-band GeoTIFF with a colour table.
bool writePaletted(const QString& path)
{
    GDALAllRegister();
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), path.toUtf8().constData(), 4, 4, 1, GDT_Byte,
                                      nullptr);
    if (!dataset)
        return false;
    GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
    const GDALColorEntry red{255, 0, 0, 255};
    GDALSetColorEntry(table, 0, &red);
    const bool set = GDALSetRasterColorTable(GDALGetRasterBand(dataset, 1), table) == CE_None;
    GDALDestroyColorTable(table);
    GDALClose(dataset);
    return set;
}

// A GeoTIFF of bands bands whose image render is in mode.
TERefPtr<TERasterLayer> rasterInMode(const QString& path, int bands, int mode)
{
    TERefPtr<TERasterLayer> layer = TERasterLayer::Open(writeRaster(path, bands));
    if (!layer)
        return layer;
    if (bands == 1) {
        auto render = MakeRef<TESingleBandImageRender>();
        render->setImageRenderMODE(mode);
        layer->SetRender(render);
    } else {
        auto render = MakeRef<TEMultiBandImageRender>();
        render->setImageRenderMODE(mode);
        layer->SetRender(render);
    }
    return layer;
}

} // namespace

class TestControlRender : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(mRasterDir.isValid());
        QDir().mkpath(mRasterDir.filePath(QStringLiteral("mosaic")));
        writeRaster(mRasterDir.filePath(QStringLiteral("mosaic/tile.tif")), 1);
        writeRaster(mRasterDir.filePath(QStringLiteral("grey.tif")), 1);
        writeRaster(mRasterDir.filePath(QStringLiteral("rgb.tif")), 3);
        writeRaster(mRasterDir.filePath(QStringLiteral("rgbn.tif")), 4);
        QVERIFY(writePaletted(mRasterDir.filePath(QStringLiteral("palette.tif"))));
        QFile polygons(mRasterDir.filePath(QStringLiteral("polygons.geojson")));
        QVERIFY(polygons.open(QIODevice::WriteOnly));
        polygons.write(R"({"type": "FeatureCollection", "features": [{"type": "Feature", "properties": {},
            "geometry": {"type": "Polygon", "coordinates": [[[0, 0], [1, 0], [1, 1], [0, 0]]]}}]})");
    }

    void newDockOffersOnlyNotToRenderOnTheNoRenderPage()
    {
        TestDock dock;
        QCOMPARE(dock.comboTexts(), QStringList{QStringLiteral("Not to render")});
        QCOMPARE(dock.combo()->itemData(0).toUInt(), uint(dock.noRenderPage()->winId()));
        QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());
        // Pages are switched from the combo box only.
        QVERIFY(dock.tabs()->tabBar()->isHidden());
    }

    void instanceIsCreatedOnceWithTheFirstParent()
    {
        QMainWindow first;
        QMainWindow second;
        TZControlRender* dock = TZControlRender::instance(&first);
        QVERIFY(dock);
        QCOMPARE(TZControlRender::instance(&second), dock);
        QCOMPARE(TZControlRender::instance(nullptr), dock);
        QCOMPARE(dock->parentWidget(), &first);
    }

    void setLayerShowsTheNameAndKeepsItForANullLayer()
    {
        TestDock dock;
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T3);
        QVERIFY(layer);
        dock.setLayer(layer.get());
        QCOMPARE(dock.layer(), layer.get());
        auto* name = dock.findChild<QLineEdit*>(QStringLiteral("mLineEditLayerNames"));
        QCOMPARE(name->text(), QStringLiteral("roads"));
        dock.setLayer(nullptr);
        QVERIFY(!dock.layer());
        QCOMPARE(name->text(), QStringLiteral("roads"));
    }

    void comboOffersThePanelsOfTheLayerType_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("feature");
        for (TELayer::LayerType type : {T1, T2, T3, T4})
            QTest::addRow("type %d", int(type)) << int(type) << true;
        for (TELayer::LayerType type : {T6, T7, T8})
            QTest::addRow("type %d", int(type)) << int(type) << false;
    }
    void comboOffersThePanelsOfTheLayerType()
    {
        QFETCH(int, type);
        QFETCH(bool, feature);
        TestDock dock;
        dock.addCatalog();
        TERefPtr<TELayer> layer;
        if (feature)
            layer = memoryLayer(TELayer::LayerType(type));
        else if (type == T8)
            layer = TERasterDirLayer::Open(mRasterDir.filePath(QStringLiteral("mosaic")));
        else
            layer = TERasterLayer::Open(writeRaster(mRasterDir.filePath(QStringLiteral("t%1.tif").arg(type)),
                                                    type == T6 ? 1 : 3));
        QVERIFY(layer);
        QCOMPARE(int(layer->GetLayerType()), type);
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        QCOMPARE(dock.comboTexts(), dock.offeredTitles(TELayer::LayerType(type), feature));
        // Every entry leads to the page of the panel with that title.
        for (int i = feature ? 1 : 0; i < dock.combo()->count(); ++i) {
            const uint id = dock.combo()->itemData(i).toUInt();
            bool matched = false;
            for (const auto& panel : qAsConst(dock.panels))
                matched = matched || (uint(panel->winId()) == id && panel->title() == dock.combo()->itemText(i));
            QVERIFY2(matched, qPrintable(dock.combo()->itemText(i)));
        }
    }

    void unlistedLayerTypesOfferOnlyNotToRender_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("table") << 0;
        QTest::newRow("type 5") << 5;
        QTest::newRow("type 9") << 9;
    }
    void unlistedLayerTypesOfferOnlyNotToRender()
    {
        QFETCH(int, type);
        TestDock dock;
        dock.addCatalog();
        FakeRenderPanel* fake = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1});
        TERefPtr<TEFeatureLayer> points = showKeyedLayer(dock, T1, QStringLiteral("Fake"));
        QWidget* shown = dock.tabs()->currentWidget();
        QCOMPARE(shown, fake);

        TERefPtr<TELayer> coded = MakeRef<CodeLayer>(type);
        dock.setLayer(coded.get());
        dock.showLayerStyle();
        QCOMPARE(dock.comboTexts(), QStringList{QStringLiteral("Not to render")});
        QCOMPARE(dock.tabs()->currentWidget(), shown);
    }

    void featureLayerSelectsThePanelOfItsRender()
    {
        TestDock dock;
        dock.addCatalog();
        FakeRenderPanel* fake = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake polygons"), {T4});
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T4);
        layer->SetSymbolRender(MakeRef<KeyedRender>(QStringLiteral("Fake")));
        dock.setLayer(layer.get());
        dock.journal.clear();
        dock.showLayerStyle();
        QCOMPARE(dock.combo()->currentText(), QStringLiteral("Fake polygons"));
        QCOMPARE(dock.tabs()->currentWidget(), fake);
        QCOMPARE(dock.journal, QStringList{QStringLiteral("reset Fake")});

        // The real catalog's key of a render finds its page too.
        layer->SetSymbolRender(MakeRef<TECategorizedSymbolRender>(TEString(L"name")));
        dock.showLayerStyle();
        QCOMPARE(dock.combo()->currentText(), QStringLiteral("Unique Values"));
        QCOMPARE(dock.tabs()->currentWidget(), dock.panels.value(QStringLiteral("UniqueValues")).data());

        layer->SetSymbolRender(TERefPtr<TEFeatureRender>());
        dock.showLayerStyle();
        QCOMPARE(dock.combo()->currentIndex(), 0);
        QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());
    }

    void renderWithoutPanelLeavesThePageAsItWas()
    {
        TestDock dock;
        FakeRenderPanel* fake = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1});
        TERefPtr<TEFeatureLayer> layer = showKeyedLayer(dock, T1, QStringLiteral("Fake"));
        QCOMPARE(dock.tabs()->currentWidget(), fake);

        layer->SetSymbolRender(MakeRef<KeyedRender>(QStringLiteral("NoSuchPanel")));
        dock.showLayerStyle();
        QVERIFY(dock.comboTexts().contains(QStringLiteral("Fake")));
        QCOMPARE(dock.tabs()->currentWidget(), fake);
    }

    void rasterLayerSelectsThePanelOfItsRenderMode_data()
    {
        QTest::addColumn<int>("bands");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("key");
        QTest::newRow("stretch") << 1 << 1 << QStringLiteral("ImageStretch");
        QTest::newRow("colour map") << 1 << 2 << QStringLiteral("ImageColormap");
        QTest::newRow("unique") << 1 << 3 << QStringLiteral("ImageUnique");
        QTest::newRow("class") << 1 << 4 << QStringLiteral("ImageClass");
        QTest::newRow("unknown mode 6") << 1 << 6 << QString();
        QTest::newRow("RGB composite") << 3 << 5 << QStringLiteral("ImageRGBComposite");
        QTest::newRow("multi-band stretch") << 3 << 8 << QStringLiteral("ImageMultiStretch");
        QTest::newRow("unknown mode 7") << 3 << 7 << QString();
    }
    void rasterLayerSelectsThePanelOfItsRenderMode()
    {
        QFETCH(int, bands);
        QFETCH(int, mode);
        QFETCH(QString, key);
        TestDock dock;
        dock.addCatalog();
        TERefPtr<TERasterLayer> layer =
            rasterInMode(mRasterDir.filePath(QStringLiteral("mode%1.tif").arg(mode)), bands, mode);
        QVERIFY(layer);
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        QVERIFY(!dock.comboTexts().contains(QStringLiteral("Not to render")));
        if (key.isEmpty()) {
            QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());
            QVERIFY(dock.journal.isEmpty());
            return;
        }
        TZRenderPanel* panel = dock.panels.value(key);
        QCOMPARE(dock.tabs()->currentWidget(), panel);
        QCOMPARE(dock.combo()->currentText(), panel->title());
        // Real panels keep no journal; the page shown is what counts for them.
        if (dock.realKeys.contains(key))
            return;
        // The entry is chosen with the combo box's signals on: when that
        // moves the selection off entry 0, the switch resets the page too.
        // Only the fakes keep a journal; a real panel's page is enough.
        if (dock.realKeys.contains(key))
            return;
        const QString reset = QStringLiteral("reset ") + key;
        QStringList expected{reset};
        if (dock.combo()->currentIndex() > 0)
            expected << reset;
        QCOMPARE(dock.journal, expected);
    }

    void rasterDirectoryPicksStretchForASingleBandRender()
    {
        TestDock dock;
        dock.addCatalog();
        TERefPtr<TERasterDirLayer> layer = TERasterDirLayer::Open(mRasterDir.filePath(QStringLiteral("mosaic")));
        QVERIFY(layer);
        dock.setLayer(layer.get());
        layer->SetRender({});
        dock.showLayerStyle();
        QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());

        auto render = MakeRef<TESingleBandImageRender>();
        render->setImageRenderMODE(4); // the mode is not read for a directory
        layer->SetRender(render);
        dock.showLayerStyle();
        QCOMPARE(dock.comboTexts(), QStringList{QStringLiteral("Image Stretch")});
        QCOMPARE(dock.tabs()->currentWidget(), dock.panels.value(QStringLiteral("ImageStretch")).data());

        layer->SetRender(MakeRef<TEMultiBandImageRender>());
        dock.showLayerStyle();
        QCOMPARE(dock.tabs()->currentWidget(), dock.panels.value(QStringLiteral("ImageRGBComposite")).data());
    }

    void freshlyOpenedLayerSelectsThePageOfItsDefaultRender_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("key");
        QTest::newRow("grey band") << QStringLiteral("grey.tif") << QStringLiteral("ImageStretch");
        QTest::newRow("colour table") << QStringLiteral("palette.tif") << QStringLiteral("ImageColormap");
        QTest::newRow("three bands") << QStringLiteral("rgb.tif") << QStringLiteral("ImageRGBComposite");
        QTest::newRow("four bands") << QStringLiteral("rgbn.tif") << QStringLiteral("ImageRGBComposite");
        QTest::newRow("raster directory") << QStringLiteral("mosaic") << QStringLiteral("ImageStretch");
        QTest::newRow("polygons") << QStringLiteral("polygons.geojson") << QStringLiteral("SingleSymbol");
    }
    void freshlyOpenedLayerSelectsThePageOfItsDefaultRender()
    {
        QFETCH(QString, source);
        QFETCH(QString, key);
        const QString path = mRasterDir.filePath(source);
        TERefPtr<TELayer> layer;
        if (source == QLatin1String("mosaic"))
            layer = TERasterDirLayer::Open(path);
        else if (source.endsWith(QLatin1String(".geojson")))
            layer = TEFeatureLayer::Open(path);
        else
            layer = TERasterLayer::Open(path);
        QVERIFY(layer);
        TestDock dock;
        dock.addCatalog();
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        TZRenderPanel* panel = dock.panels.value(key);
        QVERIFY(panel);
        QCOMPARE(dock.tabs()->currentWidget(), panel);
        QCOMPARE(dock.combo()->currentText(), panel->title());
    }

    void choosingAnEntrySwitchesThePageAndResetsIt()
    {
        TestDock dock;
        dock.addCatalog();
        FakeRenderPanel* fake = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1});
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T1);
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        dock.journal.clear();
        dock.combo()->setCurrentText(QStringLiteral("Fake"));
        QCOMPARE(dock.tabs()->currentWidget(), fake);
        QCOMPARE(dock.journal, QStringList{QStringLiteral("reset Fake")});
        dock.combo()->setCurrentText(QStringLiteral("Heatmap"));
        QCOMPARE(dock.tabs()->currentWidget(), dock.panels.value(QStringLiteral("Heatmap")).data());
        dock.combo()->setCurrentIndex(0);
        QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());
    }

    void firstEntryOfARasterLayerShowsTheNoRenderPage()
    {
        TestDock dock;
        dock.addCatalog();
        TERefPtr<TERasterLayer> layer = rasterInMode(mRasterDir.filePath(QStringLiteral("first.tif")), 1, 1);
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        QCOMPARE(dock.tabs()->currentWidget(), dock.panels.value(QStringLiteral("ImageStretch")).data());
        dock.journal.clear();

        // Entry 0 is a panel (the first offered for the type), but choosing
        // entry 0 always shows the no-render page and resets nothing.
        dock.combo()->setCurrentIndex(1);
        dock.journal.clear();
        dock.combo()->setCurrentIndex(0);
        QCOMPARE(dock.combo()->currentText(), dock.offeredTitles(TELayer::LT_SingleBandRaster, false).value(0));
        QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());
        QVERIFY(dock.journal.isEmpty());
    }

    void applyFromAPanelRepaintsThenAnnounces_data()
    {
        QTest::addColumn<bool>("activeView");
        QTest::addColumn<bool>("applied");
        QTest::addColumn<bool>("throws");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("active view") << true << true << false << QStringList{"refreshMap", "symbolChanged"};
        QTest::newRow("inactive view") << false << true << false << QStringList{"symbolChanged"};
        QTest::newRow("panel refuses") << true << false << false << QStringList{};
        QTest::newRow("panel throws") << true << true << true << QStringList{};
    }
    void applyFromAPanelRepaintsThenAnnounces()
    {
        QFETCH(bool, activeView);
        QFETCH(bool, applied);
        QFETCH(bool, throws);
        QFETCH(QStringList, expected);
        TestDock dock;
        FakeRenderPanel* panel = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1});
        panel->applyResult = applied;
        panel->applyThrows = throws;
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T1);
        layer->SetSymbolRender(MakeRef<KeyedRender>(QStringLiteral("Fake")));
        ViewOf view(layer.get());
        if (activeView)
            TEMapViewManager::GetInstance()->SetActivedMapView(&view);
        dock.setLayer(layer.get());
        dock.showLayerStyle();

        QStringList emitted;
        QString guid;
        connect(&dock, &TZControlRender::refreshMap, [&] { emitted << QStringLiteral("refreshMap"); });
        connect(&dock, &TZControlRender::symbolChanged, [&](const QString& id) {
            emitted << QStringLiteral("symbolChanged");
            guid = id;
        });
        dock.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Apply)->click();
        TEMapViewManager::GetInstance()->SetActivedMapView(nullptr);

        QCOMPARE(panel->applyCount, 1);
        QCOMPARE(emitted, expected);
        if (!expected.isEmpty())
            QCOMPARE(guid, layer->GetGuidStr().toQString());
    }

    void applyOnNotToRenderRemovesTheRenderThenRepaints()
    {
        TestDock dock;
        dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T4});
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T4);
        layer->SetSymbolRender(MakeRef<KeyedRender>(QStringLiteral("Fake")));
        ViewOf view(layer.get());
        TEMapViewManager::GetInstance()->SetActivedMapView(&view);
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        dock.combo()->setCurrentIndex(0);

        QStringList emitted;
        connect(&dock, &TZControlRender::refreshMap, [&] { emitted << QStringLiteral("refreshMap"); });
        connect(&dock, &TZControlRender::symbolChanged, [&] { emitted << QStringLiteral("symbolChanged"); });
        dock.onApply();
        TEMapViewManager::GetInstance()->SetActivedMapView(nullptr);

        QVERIFY(!layer->GetRender());
        QCOMPARE(emitted, (QStringList{QStringLiteral("symbolChanged"), QStringLiteral("refreshMap")}));
    }

    void applyOnNotToRenderForARasterStillAnnounces()
    {
        TestDock dock;
        dock.addCatalog();
        TERefPtr<TERasterLayer> layer = rasterInMode(mRasterDir.filePath(QStringLiteral("keep.tif")), 1, 6);
        const TERefPtr<TERender> render = layer->GetRender();
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        QCOMPARE(dock.tabs()->currentWidget(), dock.noRenderPage());
        QSignalSpy changed(&dock, &TZControlRender::symbolChanged);
        QSignalSpy refresh(&dock, &TZControlRender::refreshMap);
        dock.onApply();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(refresh.count(), 0);
        QCOMPARE(layer->GetRender(), render);
    }

    void applyWithoutALayerDoesNothing()
    {
        TestDock dock;
        FakeRenderPanel* panel = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1});
        dock.tabs()->setCurrentWidget(panel);
        QSignalSpy changed(&dock, &TZControlRender::symbolChanged);
        dock.onApply();
        QCOMPARE(panel->applyCount, 0);
        QCOMPARE(changed.count(), 0);
    }

    void resetWorksOnlyWhileTheDockIsVisible()
    {
        TestDock dock;
        FakeRenderPanel* panel = dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1});
        TERefPtr<TEFeatureLayer> layer = showKeyedLayer(dock, T1, QStringLiteral("Fake"));
        const int resets = panel->resetCount;
        QSignalSpy refresh(&dock, &TZControlRender::refreshMap);

        dock.onReset();
        QCOMPARE(panel->resetCount, resets);
        QCOMPARE(refresh.count(), 0);

        dock.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dock));
        dock.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Reset)->click();
        QCOMPARE(panel->resetCount, resets + 1);
        QCOMPARE(refresh.count(), 1);

        dock.combo()->setCurrentIndex(0);
        dock.onReset();
        QCOMPARE(refresh.count(), 2);
    }

    void duplicateKeysAreRejectedExceptImageStretch()
    {
        TestDock dock;
        dock.addCatalog();
        QPointer<FakeRenderPanel> again = new FakeRenderPanel(&dock, QStringLiteral("SingleSymbol"),
                                                              QStringLiteral("Again"), {T1});
        QVERIFY(dock.registered(QStringLiteral("SingleSymbol")));
        dock.addRender(again);
        QVERIFY(again.isNull());
        dock.addRender(nullptr);

        QPointer<FakeRenderPanel> stretch = new FakeRenderPanel(&dock, QStringLiteral("ImageStretch"),
                                                                QStringLiteral("Second stretch"), {T6});
        dock.addRender(stretch);
        QVERIFY(!stretch.isNull());
        QCOMPARE(dock.tabs()->count(), catalog().size() + 2);

        TERefPtr<TERasterLayer> layer = TERasterLayer::Open(writeRaster(mRasterDir.filePath(QStringLiteral("dup.tif")), 1));
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        QCOMPARE(dock.comboTexts().last(), QStringLiteral("Second stretch"));
        TERefPtr<TEFeatureLayer> points = memoryLayer(T1);
        dock.setLayer(points.get());
        dock.showLayerStyle();
        QVERIFY(!dock.comboTexts().contains(QStringLiteral("Again")));
    }

    void panelListedTwiceForATypeAppearsOnce()
    {
        TestDock dock;
        dock.add(QStringLiteral("Fake"), QStringLiteral("Fake"), {T1, T1, T2});
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T1);
        dock.setLayer(layer.get());
        dock.showLayerStyle();
        QCOMPARE(dock.comboTexts().count(QStringLiteral("Fake")), 1);
    }

    void removingTheCurrentLayerHidesTheDock()
    {
        TestDock dock;
        TERefPtr<TEFeatureLayer> layer = memoryLayer(T1);
        dock.setLayer(layer.get());
        dock.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dock));

        dock.onLayerWillBeRemove(QStringLiteral("{not-this-layer}"));
        QCOMPARE(dock.layer(), layer.get());
        dock.onLayerWillBeRemove(layer->GetGuidStr().toQString().toUpper() + QStringLiteral("x"));
        QCOMPARE(dock.layer(), layer.get());
        QVERIFY(dock.isVisible());

        dock.onLayerWillBeRemove(layer->GetGuidStr().toQString());
        QVERIFY(!dock.layer());
        QVERIFY(!dock.isVisible());
        dock.onLayerWillBeRemove(layer->GetGuidStr().toQString());
    }

private:
    QTemporaryDir mRasterDir;
};

TZ_REGISTER_TEST(TestControlRender)
#include "TestControlRender.moc"
