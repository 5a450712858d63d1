#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZRenderPanelThermodynamicDiagram.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEColorRamp.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>

using namespace TZObjects;

namespace {

TERefPtr<TEMemoryFeatureLayer> pointLayer(TELayer::LayerType type = TELayer::LT_Point)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("wells"), type, {{QStringLiteral("depth"), TEField::FT_Double}}, QStringLiteral("EPSG:3857"));
    if (layer)
        layer->AppendFeature(type == TELayer::LT_Polygon ? QStringLiteral("POLYGON((0 0,1 0,1 1,0 0))")
                                                         : QStringLiteral("POINT(1 2)"),
                             {TEVariant(3.0)});
    return layer;
}

QStringList comboTexts(const QComboBox* box)
{
    QStringList texts;
    for (int i = 0; i < box->count(); ++i)
        texts << box->itemText(i);
    return texts;
}

} // namespace

// The heat map page through the dock: what it shows, what Apply writes and
// what Reset reads back.
class TestHeatMapPanel : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    // Shows the layer in the dock and selects the heat map page.
    TZRenderPanelThermodynamicDiagram* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<TZRenderPanelThermodynamicDiagram*>();
        auto* styles = mDock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
        if (!panel || !styles)
            return nullptr;
        if (styles->currentText() == panel->title())
            panel->onReset();
        else
            styles->setCurrentText(panel->title());
        return panel;
    }

    template <class T>
    static T* child(QWidget* panel, const char* name)
    {
        return panel->findChild<T*>(QString::fromLatin1(name));
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void catalogOffersTheDiagramPagesByLayerType()
    {
        auto points = pointLayer();
        QVERIFY(openPanel(points.get()));
        auto* styles = mDock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
        QStringList offered = comboTexts(styles);
        QVERIFY(offered.contains(QStringLiteral("Heatmap")));
        QVERIFY(offered.indexOf(QStringLiteral("Single symbol")) < offered.indexOf(QStringLiteral("Heatmap")));
        QVERIFY(offered.indexOf(QStringLiteral("Heatmap")) < offered.indexOf(QStringLiteral("Cluster diagram")));
        QVERIFY(!offered.contains(QStringLiteral("Dot density diagram")));

        auto polygons = pointLayer(TELayer::LT_Polygon);
        mDock->setLayer(polygons.get());
        mDock->showLayerStyle();
        offered = comboTexts(styles);
        QVERIFY(offered.contains(QStringLiteral("Dot density diagram")));
        QVERIFY(!offered.contains(QStringLiteral("Heatmap")));
        QVERIFY(!offered.contains(QStringLiteral("Cluster diagram")));
    }

    void formShowsItsDefaults()
    {
        auto layer = pointLayer();
        TZRenderPanelThermodynamicDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(panel->name(), QStringLiteral("Heatmap"));
        QCOMPARE(panel->supportLayerType(), QList<TELayer::LayerType>{TELayer::LT_Point});
        auto* units = child<QComboBox>(panel, "mComboBoxUnit");
        QCOMPARE(comboTexts(units), QStringList({"Point", "MM", "CM", "Inch"}));
        for (int i = 0; i < units->count(); ++i)
            QCOMPARE(units->itemData(i).toInt(), i);
        QCOMPARE(units->currentText(), QStringLiteral("MM"));
        auto* radius = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius");
        QCOMPARE(radius->value(), 10.0);
        radius->setValue(250.0);
        QCOMPARE(radius->value(), 99.99);
        auto* maximum = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMaxValue");
        QCOMPARE(maximum->value(), 0.0);
        maximum->setValue(5e8);
        QCOMPARE(maximum->value(), 1e8);
        QCOMPARE(maximum->toolTip(), QStringLiteral("Zero  mean to automatically"));
        QCOMPARE(child<QLabel>(panel, "mLabelMaxValue")->text(), QStringLiteral("Blur:"));
        QVERIFY(child<TZColorSchemeComboBox>(panel, "mColorRamp"));
    }

    void applyWritesTheRenderAndEditsItInPlace()
    {
        auto layer = pointLayer();
        TZRenderPanelThermodynamicDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius")->setValue(12.5);
        child<QComboBox>(panel, "mComboBoxUnit")->setCurrentIndex(2);
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMaxValue")->setValue(40.0);
        QVERIFY(panel->onApply());
        const TERefPtr<TEHeatMapperRender> first = layer->GetSymbolRender().cast<TEHeatMapperRender>();
        QVERIFY(first);
        QCOMPARE(first->GetRadius(), 12.5);
        QCOMPARE(first->GetRadiusUnitType(), 2);
        QCOMPARE(first->GetMaximumValue(), 40.0);
        QVERIFY(first->GetColorRamp());
        QCOMPARE(first->GetColorRamp()->getName().toQString(),
                 QString(child<TZColorSchemeComboBox>(panel, "mColorRamp")->currentColorRamp()->getName().toQString()));

        // A second apply changes the same object; the layer still hears of it.
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMaxValue")->setValue(0.0);
        QVERIFY(panel->onApply());
        QVERIFY(layer->GetSymbolRender().get() == first.get());
        QCOMPARE(first->GetMaximumValue(), 0.0);

        // Reset reads it back after the form was changed.
        child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius")->setValue(1.0);
        child<QComboBox>(panel, "mComboBoxUnit")->setCurrentIndex(0);
        panel->onReset();
        QCOMPARE(child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius")->value(), 12.5);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxUnit")->currentText(), QStringLiteral("CM"));
    }

    void unknownUnitSelectsNothingAndIsStoredAsPoints()
    {
        auto layer = pointLayer();
        auto render = MakeRef<TEHeatMapperRender>();
        render->SetRadiusUnitType(7);
        render->SetRadius(4.0);
        layer->SetSymbolRender(render);
        TZRenderPanelThermodynamicDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        QCOMPARE(child<QComboBox>(panel, "mComboBoxUnit")->currentIndex(), -1);
        QCOMPARE(child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius")->value(), 4.0);
        QVERIFY(panel->onApply());
        QCOMPARE(render->GetRadiusUnitType(), 0);
    }

    void resetShowsDefaultsForAnotherRenderAndNothingWhileHidden()
    {
        auto layer = pointLayer();
        TZRenderPanelThermodynamicDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        auto* radius = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxRadius");
        auto* units = child<QComboBox>(panel, "mComboBoxUnit");
        auto* maximum = child<QDoubleSpinBox>(panel, "mDoubleSpinBoxMaxValue");
        QVERIFY(layer->GetSymbolRender().cast<TESingleSymbolRender>());
        radius->setValue(2.0);
        units->setCurrentIndex(3);
        maximum->setValue(9.0);
        panel->onReset();
        QCOMPARE(radius->value(), 10.0);
        QCOMPARE(units->currentText(), QStringLiteral("MM"));
        QCOMPARE(maximum->value(), 0.0);

        auto heat = MakeRef<TEHeatMapperRender>();
        heat->SetRadius(33.0);
        layer->SetSymbolRender(heat);
        panel->hide();
        panel->onReset();
        QCOMPARE(radius->value(), 10.0);
        panel->show();
        panel->onReset();
        QCOMPARE(radius->value(), 33.0);
    }

    void applyRefusesLayersThatAreNotPoints()
    {
        auto layer = pointLayer(TELayer::LT_Polygon);
        auto before = layer->GetSymbolRender();
        TZRenderPanelThermodynamicDiagram* panel = openPanel(layer.get());
        QVERIFY(panel);
        QVERIFY(!panel->onApply());
        QVERIFY(layer->GetSymbolRender().get() == before.get());
        mDock->setLayer(nullptr);
        QVERIFY(!panel->onApply());
    }
};

TZ_REGISTER_TEST(TestHeatMapPanel)

#include "TestHeatMapPanel.moc"
