#include "ModalAnswer.h"
#include "TestRegistry.h"

#include "TZControlRender.h"
#include "TZRenderPanelClusterDiagram.h"
#include "TZRenderPanelDotDensityDiagram.h"

#include "data/TEFeatureTable.h"
#include "data/TEFields.h"
#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TESingleSymbolRender.h"
#include "widgets/TZColorBtn.h"
#include "widgets/TZColorSchemeComboBox.h"

#include <QComboBox>
#include <QDateTime>
#include <QSpinBox>

using namespace TZObjects;

namespace {

// A layer with one field of each type, named after the type.
TERefPtr<TEMemoryFeatureLayer> typedLayer(TELayer::LayerType type)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("regions"), type,
        {{QStringLiteral("int16"), TEField::FT_Int16},
         {QStringLiteral("integer"), TEField::FT_Integer},
         {QStringLiteral("float"), TEField::FT_Float},
         {QStringLiteral("double"), TEField::FT_Double},
         {QStringLiteral("name"), TEField::FT_String}},
        QStringLiteral("EPSG:3857"));
    if (layer)
        layer->AppendFeature(type == TELayer::LT_Polygon ? QStringLiteral("POLYGON((0 0,10 0,10 10,0 10,0 0))")
                                                         : QStringLiteral("POINT(1 2)"),
                             {TEVariant(1), TEVariant(2), TEVariant(3.0), TEVariant(4.0), TEVariant(TEString(L"a"))});
    return layer;
}

} // namespace

// The dot density and cluster pages through the dock.
class TestDotDensityClusterPanels : public QObject
{
    Q_OBJECT

    TZControlRender* mDock = nullptr;

    template <class Panel>
    Panel* openPanel(TELayer* layer)
    {
        mDock = TZControlRender::instance(nullptr);
        mDock->show();
        mDock->setLayer(layer);
        mDock->showLayerStyle();
        auto* panel = mDock->findChild<Panel*>();
        auto* styles = mDock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
        if (!panel || !styles || styles->findText(panel->title()) < 0)
            return nullptr;
        if (styles->currentText() == panel->title())
            panel->onReset();
        else
            styles->setCurrentText(panel->title());
        return panel;
    }

private Q_SLOTS:
    void cleanup()
    {
        if (mDock) {
            mDock->setLayer(nullptr);
            mDock->hide();
        }
    }

    void dotDensityAcceptsOnlyIntegerAndDoubleFields_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("integer") << "integer" << true;
        QTest::newRow("double") << "double" << true;
        QTest::newRow("int16") << "int16" << false;
        QTest::newRow("float") << "float" << false;
        QTest::newRow("text") << "name" << false;
    }

    void dotDensityAcceptsOnlyIntegerAndDoubleFields()
    {
        QFETCH(QString, field);
        QFETCH(bool, accepted);
        auto layer = typedLayer(TELayer::LT_Polygon);
        const TERefPtr<TEFeatureRender> before = layer->GetSymbolRender();
        auto* panel = openPanel<TZRenderPanelDotDensityDiagram>(layer.get());
        QVERIFY(panel);
        auto* fields = panel->findChild<QComboBox*>(QStringLiteral("mComboBoxField"));
        // Every field of the layer, system fields included.
        QCOMPARE(fields->count(), layer->GetDatasource()->GetFields()->GetFieldCount());
        QVERIFY(fields->findText(QStringLiteral("int16")) >= 0);
        fields->setCurrentText(field);

        if (!accepted) {
            ModalAnswer answer("QMessageBox", ModalAnswer::click(QMessageBox::Ok));
            QVERIFY(!panel->onApply());
            QVERIFY(answer.answered());
            QCOMPARE(answer.dialogTitle(), QStringLiteral("Information"));
            QCOMPARE(answer.dialogText(), QStringLiteral("Please select value type field"));
            QVERIFY(layer->GetSymbolRender().get() == before.get());
            return;
        }
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TEDotDensityDiagramRender>();
        QVERIFY(render);
        QCOMPARE(render->getFieldName().toQString(), field);
        QCOMPARE(render->getNumberPerDot(), 10);
        QVERIFY(render->GetBackgroundRender().get() == before.get());
    }

    void dotDensityApplyEditsInPlaceWithANewTimestamp()
    {
        auto layer = typedLayer(TELayer::LT_Polygon);
        const TERefPtr<TEFeatureRender> background = layer->GetSymbolRender();
        auto* panel = openPanel<TZRenderPanelDotDensityDiagram>(layer.get());
        QVERIFY(panel);
        panel->findChild<QComboBox*>(QStringLiteral("mComboBoxField"))->setCurrentText(QStringLiteral("double"));
        panel->findChild<TZColorBtn*>(QStringLiteral("mColorBtnDot"))->setColor(qRgb(10, 20, 30));
        panel->findChild<QSpinBox*>(QStringLiteral("mSpinBoxNumberPerDot"))->setValue(250);
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TEDotDensityDiagramRender>();
        QVERIFY(render);
        QCOMPARE(render->getDotColor(), TEColor(10, 20, 30, 255));
        QCOMPARE(render->getNumberPerDot(), 250);
        const unsigned int now = static_cast<unsigned int>(QDateTime::currentSecsSinceEpoch());
        QVERIFY(render->getTimestamp() + 5 >= now && render->getTimestamp() <= now);

        // Reset over its own render keeps the old background, and the
        // second apply renews the timestamp of the same object.
        render->setTimestamp(1);
        panel->onReset();
        panel->findChild<QComboBox*>(QStringLiteral("mComboBoxField"))->setCurrentText(QStringLiteral("integer"));
        QVERIFY(panel->onApply());
        QVERIFY(layer->GetSymbolRender().get() == render.get());
        QVERIFY(render->getTimestamp() + 5 >= now);
        QCOMPARE(render->getFieldName().toQString(), QStringLiteral("integer"));
        QVERIFY(render->GetBackgroundRender().get() == background.get());
    }

    void clusterApplyKeepsTheEarlierRenderAsBackground()
    {
        auto layer = typedLayer(TELayer::LT_Point);
        const TERefPtr<TEFeatureRender> background = layer->GetSymbolRender();
        QVERIFY(background.cast<TESingleSymbolRender>());
        auto* panel = openPanel<TZRenderPanelClusterDiagram>(layer.get());
        QVERIFY(panel);
        auto* size = panel->findChild<QSpinBox*>(QStringLiteral("mSpinBoxMarkerSize"));
        QCOMPARE(size->value(), 80);
        QCOMPARE(size->maximum(), 999999999);
        auto* ramps = panel->findChild<TZColorSchemeComboBox*>(QStringLiteral("mColorRamp"));
        QVERIFY(ramps->currentColorRamp());
        QCOMPARE(ramps->currentColorRamp()->getName().toQString(), QStringLiteral("Unique"));
        size->setValue(64);
        QVERIFY(panel->onApply());
        const auto render = layer->GetSymbolRender().cast<TEClusterDiagramRender>();
        QVERIFY(render);
        QCOMPARE(render->getMakerSize(), 64.0);
        QVERIFY(render->getColorRamp());
        QVERIFY(render->GetBackgroundRender().get() == background.get());

        // Shown again, the cluster render is not taken as its own background.
        panel->onReset();
        size->setValue(30);
        QVERIFY(panel->onApply());
        QVERIFY(layer->GetSymbolRender().get() == render.get());
        QCOMPARE(render->getMakerSize(), 30.0);
        QVERIFY(render->GetBackgroundRender().get() == background.get());
    }
};

TZ_REGISTER_TEST(TestDotDensityClusterPanels)

#include "TestDotDensityClusterPanels.moc"
