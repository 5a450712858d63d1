#include "FourColorFixtures.h"
#include "ModalAnswer.h"
#include "TestRegistry.h"
#include "VectorFixtures.h"

#include "TZControlRender.h"
#include "TZRenderPanelFourColorTheorem.h"

#include "data/TEGeometryRelationalOperator.h"
#include "renders/TEFourColorTheoremRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gdal.h>
#include <ogr_api.h>

#include <set>

using namespace TZObjects;

namespace {

QStringList comboTexts(const QComboBox* box)
{
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
}

} // namespace

// The four-colour page in the dock: where it is offered, its form, and what
// Apply sets on the layer.
class TestRenderPanelFourColorTheorem : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    QComboBox* styles() const { return mDock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle")); }

    TZRenderPanelFourColorTheorem* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelFourColorTheorem*>();
        if (panel)
            styles()->setCurrentText(panel->title());
        return panel;
    }

    void apply()
    {
        mDock->findChild<QDialogButtonBox*>(QStringLiteral("mButtonBox"))->button(QDialogButtonBox::Apply)->click();
    }

    static std::vector<TEColor> rampColours(TZRenderPanelFourColorTheorem* panel, int count)
    {
        const TERefPtr<TEColorRamp> ramp =
            panel->findChild<TZColorSchemeComboBox*>(QStringLiteral("mComboBoxColorScheme"))->currentColorRamp()->clone();
        ramp->setLevel(count);
        std::vector<TEColor> colours;
        for (int i = 0; i < count; ++i)
            colours.push_back(ramp->getColor(i).toTEColor(255));
        return colours;
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void offeredForPolygonLayersOnly_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("offered");
        QTest::newRow("point") << int(TELayer::LT_Point) << false;
        QTest::newRow("multi-point") << int(TELayer::LT_MultiPoint) << false;
        QTest::newRow("line") << int(TELayer::LT_Line) << false;
        QTest::newRow("polygon") << int(TELayer::LT_Polygon) << true;
    }

    void offeredForPolygonLayersOnly()
    {
        QFETCH(int, type);
        QFETCH(bool, offered);
        auto layer = VectorFixtures::makeLayer(TELayer::LayerType(type), {QStringLiteral("a")});
        mDock = TZControlRender::instance(nullptr);
        mDock->setLayer(layer.get());
        mDock->showLayerStyle();
        const QStringList texts = comboTexts(styles());
        QCOMPARE(texts.contains(QStringLiteral("Four color themorem")), offered);
        if (offered) {
            // After the single symbol, unique values and rule-based pages,
            // as the catalog orders them.
            const int at = texts.indexOf(QStringLiteral("Four color themorem"));
            for (const char* before : {"Single symbol", "Unique Values", "Rule-based"}) {
                QVERIFY2(texts.indexOf(QLatin1String(before)) >= 0, before);
                QVERIFY2(texts.indexOf(QLatin1String(before)) < at, before);
            }
        }
    }

    void formStartsWithFourColoursOfTheUniqueScheme()
    {
        auto layer = VectorFixtures::makeLayer(TELayer::LT_Polygon, {QStringLiteral("a")});
        TZRenderPanelFourColorTheorem* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(panel->name(), QStringLiteral("FourColorTheorem"));
        QCOMPARE(panel->supportLayerType(), QList<TELayer::LayerType>{TELayer::LT_Polygon});
        auto* count = panel->findChild<QSpinBox*>(QStringLiteral("mSpinBoxColors"));
        QVERIFY(count);
        QCOMPARE(count->minimum(), 4);
        QCOMPARE(count->maximum(), 99);
        QCOMPARE(count->value(), 4);
        QCOMPARE(panel->findChild<QLabel*>(QStringLiteral("mLabelColors"))->text(), QStringLiteral("Colors"));
        QCOMPARE(panel->findChild<QLabel*>(QStringLiteral("mLabelColorScheme"))->text(), QStringLiteral("Color scheme"));
        const TEColorRamp* ramp =
            panel->findChild<TZColorSchemeComboBox*>(QStringLiteral("mComboBoxColorScheme"))->currentColorRamp();
        QVERIFY(ramp);
        QCOMPARE(ramp->getGroup().toQString(), QStringLiteral("Default"));
        QCOMPARE(ramp->getName().toQString(), QStringLiteral("Unique"));
        QCOMPARE(panel->windowTitle(), QStringLiteral("Form"));
    }

    // Apply on a GeoPackage: every polygon gets a palette colour different
    // from each neighbour's, on the layer's default style, and the dock
    // announces the change.
    void applyColoursEveryPolygonApartFromItsNeighbours()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const auto polygons = FourColorFixtures::mixedScene(7, 120);
        auto memory = FourColorFixtures::polygonLayer(polygons);
        QVERIFY(memory);
        // Written through OGR into a GeoPackage, read back as the user would open it.
        const QString path = dir.filePath(QStringLiteral("regions.gpkg"));
        {
            GDALDriverH driver = GDALGetDriverByName("GPKG");
            GDALDatasetH dataset = GDALCreate(driver, path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
            QVERIFY(dataset);
            OGRLayerH ogrLayer = GDALDatasetCreateLayer(dataset, "regions", nullptr, wkbPolygon, nullptr);
            for (const auto& polygon : polygons) {
                OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(ogrLayer));
                OGR_F_SetGeometry(feature, polygon->GetHandle());
                QCOMPARE(OGR_L_CreateFeature(ogrLayer, feature), OGRERR_NONE);
                OGR_F_Destroy(feature);
            }
            GDALClose(dataset);
        }
        TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path);
        QVERIFY(layer);

        TZRenderPanelFourColorTheorem* panel = openPanel(layer.get());
        QVERIFY(panel);
        panel->findChild<QSpinBox*>(QStringLiteral("mSpinBoxColors"))->setValue(5);
        QSignalSpy changed(mDock, SIGNAL(symbolChanged(QString)));
        apply();
        QCOMPARE(changed.count(), 1);

        auto render = layer->GetSymbolRender().cast<TEFourColorTheoremRender>();
        QVERIFY(render);
        QCOMPARE(render->GetType().toQString(), QStringLiteral("FourColorTheorem"));
        QVERIFY(render->getDefaultStyle());
        QCOMPARE(render->getDefaultStyle()->GetColor().GetColor(), layer->GetDefaultStyle()->GetColor().GetColor());

        std::vector<std::pair<int, TERefPtr<TEGeometry>>> features;
        TERefPtr<TEFeatureCursor> cursor = layer->Search(TEQueryFilter());
        while (TERefPtr<TEFeature> feature = cursor->NextFeature())
            features.emplace_back(feature->GetId(), feature->GetGeometry());
        QCOMPARE(features.size(), polygons.size());
        const std::map<int, TEColor>& colours = render->getColorMap();
        QCOMPARE(colours.size(), features.size());

        std::set<uint32_t> palette;
        for (const TEColor& colour : rampColours(panel, 5))
            palette.insert(colour.GetColor());
        for (const auto& entry : colours)
            QVERIFY(palette.count(entry.second.GetColor()));
        for (std::size_t a = 0; a < features.size(); ++a) {
            for (std::size_t b = a + 1; b < features.size(); ++b) {
                if (TEGeometryRelationalOperator::IsIntersect(features[a].second, features[b].second, 0.001))
                    QVERIFY2(!(colours.at(features[a].first) == colours.at(features[b].first)),
                             qPrintable(QStringLiteral("features %1 and %2").arg(features[a].first).arg(features[b].first)));
            }
        }
    }

    void tooFewColoursTellTheUserAndKeepThePartialColouring()
    {
        using FourColorFixtures::box;
        auto layer = FourColorFixtures::polygonLayer(FourColorFixtures::fromWkt(
            {box(0, 0, 10, 10), box(1, 1, 11, 11), box(2, 2, 12, 12), box(3, 3, 13, 13), box(4, 4, 14, 14)}));
        QVERIFY(layer);
        layer->SetSymbolRender(MakeRef<TESingleSymbolRender>(layer->GetDefaultStyle()));
        TZRenderPanelFourColorTheorem* panel = openPanel(layer.get());
        QVERIFY(panel);
        panel->findChild<QSpinBox*>(QStringLiteral("mSpinBoxColors"))->setValue(4);
        QSignalSpy changed(mDock, SIGNAL(symbolChanged(QString)));
        ModalAnswer answer("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
        apply();
        QVERIFY(answer.answered());
        QCOMPARE(answer.dialogTitle(), QStringLiteral("Information"));
        QCOMPARE(answer.dialogText(), QStringLiteral("Failed to configure color,please increase the number of colors"));
        QCOMPARE(changed.count(), 1);

        auto render = layer->GetSymbolRender().cast<TEFourColorTheoremRender>();
        QVERIFY(render);
        QVERIFY(!render->getColorMap().empty());
        QVERIFY(render->getColorMap().size() < 5);
    }

    // Cancel in the wait dialog stops the job; the layer keeps its render
    // and the dock announces nothing.
    void cancelledColouringSetsNothing()
    {
        auto layer = FourColorFixtures::polygonLayer(FourColorFixtures::mixedScene(5, 30000));
        QVERIFY(layer);
        const auto before = MakeRef<TESingleSymbolRender>(layer->GetDefaultStyle());
        layer->SetSymbolRender(before);
        TZRenderPanelFourColorTheorem* panel = openPanel(layer.get());
        QVERIFY(panel);
        QSignalSpy changed(mDock, SIGNAL(symbolChanged(QString)));
        ModalAnswer cancel("TZWaitDialog", ModalAnswer::click(QDialogButtonBox::Cancel));
        apply();
        QVERIFY(cancel.answered());
        QCOMPARE(cancel.dialogTitle(), QStringLiteral("Please wait"));
        QCOMPARE(changed.count(), 0);
        QVERIFY(layer->GetSymbolRender() == before);
    }

    void nothingIsAppliedWithoutALayer()
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->setLayer(nullptr);
        auto* panel = mDock->findChild<TZRenderPanelFourColorTheorem*>();
        QVERIFY(panel);
        QVERIFY(!panel->onApply());
    }
};

TZ_REGISTER_TEST(TestRenderPanelFourColorTheorem)
#include "TestRenderPanelFourColorTheorem.moc"
