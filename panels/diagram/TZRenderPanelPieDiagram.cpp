#include "TZRenderPanelPieDiagram.h"

#include "TZModelPanelPieDiagram.h"
#include "TZWidgetFieldItem.h"

#include "ui_TZRenderPanelPieDiagram.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEPieDiagramRender.h"

using namespace TZObjects;

TZRenderPanelPieDiagram::TZRenderPanelPieDiagram(QWidget* parent)
    : TZRenderPanelDiagramBase(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelPieDiagram>())
{
    mUi->setupUi(this);
    setDiagramWidgets(mUi->mComboBoxValueFields, mUi->mComboBoxRamp, mUi->mTableViewValues,
                      mUi->mCheckBoxShowLabel);
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelPieDiagram::~TZRenderPanelPieDiagram() = default;

QString TZRenderPanelPieDiagram::name() const
{
    return QStringLiteral("PieDiagram");
}

QString TZRenderPanelPieDiagram::title() const
{
    return tr("Pie Diagram");
}

TZModelPanelPieDiagram* TZRenderPanelPieDiagram::createModel()
{
    return new TZModelPanelPieDiagram(this);
}

TZWidgetFieldItem* TZRenderPanelPieDiagram::createFieldItem(const QString& fieldName)
{
    return new TZWidgetFieldItem(fieldName);
}

void TZRenderPanelPieDiagram::onReset()
{
    if (!isVisible())
        return;
    TEFeatureLayer* layer = resetFields();
    if (!layer)
        return;
    const TERefPtr<TEFeatureRender> current = layer->GetRender().cast<TEFeatureRender>();
    if (auto* pie = dynamic_cast<TEPieDiagramRender*>(current.get())) {
        mUi->mCheckBoxShowShadow->setChecked(pie->IsShowShadow());
        mUi->mSliderShadowThickness->setValue(int(pie->GetShadowThickness() * 100.0));
        mUi->mDoubleSpinBoxRadius->setValue(pie->GetRadius());
        // "Show Data" has no query on the render; it keeps its state.
        readItems(pie);
    } else {
        takeBackground(current);
    }
}

bool TZRenderPanelPieDiagram::onApply()
{
    TEFeatureLayer* layer = beginApply();
    if (!layer)
        return false;
    TERefPtr<TEPieDiagramRender> render = layer->GetRender().cast<TEPieDiagramRender>();
    if (!render)
        render = MakeRef<TEPieDiagramRender>();
    writeItems(render.get());
    render->SetRadius(int(mUi->mDoubleSpinBoxRadius->value()));
    render->SetShowLabel(mUi->mCheckBoxShowLabel->isChecked());
    writeBackground(render.get());
    render->SetShowShadow(mUi->mCheckBoxShowShadow->isChecked());
    render->SetShadowThickness(mUi->mSliderShadowThickness->value() / 100.0);
    layer->SetSymbolRender(render);
    return true;
}
