#include "TZRenderPanelThermodynamicDiagram.h"

#include "ui_TZRenderPanelThermodynamicDiagram.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEHeatMapperRender.h"

using namespace TZObjects;

TZRenderPanelThermodynamicDiagram::TZRenderPanelThermodynamicDiagram(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelThermodynamicDiagram>())
{
    mUi->setupUi(this);
    mUi->mComboBoxUnit->addItem(tr("Point"), 0);
    mUi->mComboBoxUnit->addItem(tr("MM"), 1);
    mUi->mComboBoxUnit->addItem(tr("CM"), 2);
    mUi->mComboBoxUnit->addItem(tr("Inch"), 3);
    mUi->mComboBoxUnit->setCurrentText(tr("MM"));
    mUi->mDoubleSpinBoxRadius->setValue(10.0);

    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point;
}

TZRenderPanelThermodynamicDiagram::~TZRenderPanelThermodynamicDiagram() = default;

QString TZRenderPanelThermodynamicDiagram::name() const
{
    return QStringLiteral("Heatmap");
}

QString TZRenderPanelThermodynamicDiagram::title() const
{
    return tr("Heatmap");
}

void TZRenderPanelThermodynamicDiagram::showEvent(QShowEvent* event)
{
    TZRenderPanel::showEvent(event);
}

TEFeatureLayer* TZRenderPanelThermodynamicDiagram::pointLayer()
{
    TEFeatureLayer* layer = currentFeatureLayer();
    if (!layer || !layer->IsValid())
        return nullptr;
    const TELayer::LayerType type = layer->GetLayerType();
    return type == TELayer::LT_Point || type == TELayer::LT_MultiPoint ? layer : nullptr;
}

bool TZRenderPanelThermodynamicDiagram::onApply()
{
    cancelActiveDrawing();
    const TERefPtr<TEFeatureLayer> layer(pointLayer());
    if (!layer)
        return false;
    int unit = mUi->mComboBoxUnit->currentData().toInt();
    if (unit < 0 || mUi->mComboBoxUnit->currentIndex() < 0)
        unit = 0;
    const double radius = mUi->mDoubleSpinBoxRadius->value();
    const double maximum = mUi->mDoubleSpinBoxMaxValue->value();
    TEColorRamp* ramp = mUi->mColorRamp->currentColorRamp();

    TERefPtr<TEHeatMapperRender> render = layer->GetSymbolRender().cast<TEHeatMapperRender>();
    if (!render)
        render = MakeRef<TEHeatMapperRender>();
    render->SetRadius(radius);
    render->SetRadiusUnitType(unit);
    render->SetMaximumValue(maximum);
    // The combo box shares its ramps; the render keeps a copy of its own.
    render->SetColorRamp(ramp ? ramp->clone() : TERefPtr<TEColorRamp>());
    layer->SetSymbolRender(render);
    return true;
}

void TZRenderPanelThermodynamicDiagram::showDefaults()
{
    mUi->mComboBoxUnit->setCurrentText(tr("MM"));
    mUi->mDoubleSpinBoxRadius->setValue(10.0);
    mUi->mDoubleSpinBoxMaxValue->setValue(0.0);
    mUi->mColorRamp->setDefaultGroup(QStringLiteral("Graph"), QStringLiteral("Default"), 0);
}

void TZRenderPanelThermodynamicDiagram::onReset()
{
    if (!isVisible())
        return;
    const TERefPtr<TEFeatureLayer> layer(pointLayer());
    if (!layer)
        return;
    const TERefPtr<TEFeatureRender> current = layer->GetSymbolRender();
    if (!current)
        return;
    const TERefPtr<TEHeatMapperRender> render = current.cast<TEHeatMapperRender>();
    if (!render) {
        showDefaults();
        return;
    }
    mUi->mDoubleSpinBoxMaxValue->setValue(render->GetMaximumValue());
    mUi->mDoubleSpinBoxRadius->setValue(render->GetRadius());
    mUi->mComboBoxUnit->setCurrentIndex(mUi->mComboBoxUnit->findData(render->GetRadiusUnitType()));
    mUi->mColorRamp->setDefaultGroup(QStringLiteral("Graph"), QStringLiteral("Default"), 0);
    if (const TERefPtr<TEColorRamp> ramp = render->GetColorRamp())
        mUi->mColorRamp->setColorRamp(ramp.get());
}
