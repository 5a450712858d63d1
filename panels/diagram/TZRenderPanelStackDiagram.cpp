#include "TZRenderPanelStackDiagram.h"

#include "TZModelPanelStackDiagram.h"
#include "TZWidgetStackFieldItem.h"

#include "ui_TZRenderPanelStackDiagram.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEStackDiagramRender.h"

using namespace TZObjects;

TZRenderPanelStackDiagram::TZRenderPanelStackDiagram(QWidget* parent)
    : TZRenderPanelDiagramBase(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelStackDiagram>())
{
    mUi->setupUi(this);
    setDiagramWidgets(mUi->mComboBoxValueFields, mUi->mComboBoxRamp, mUi->mTableViewValues,
                      mUi->mCheckBoxShowLabel);
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point << TELayer::LT_MultiPoint << TELayer::LT_Line << TELayer::LT_Polygon;
}

TZRenderPanelStackDiagram::~TZRenderPanelStackDiagram() = default;

QString TZRenderPanelStackDiagram::name() const
{
    return QStringLiteral("StackDiagram");
}

QString TZRenderPanelStackDiagram::title() const
{
    return tr("Stack Diagram");
}

TZModelPanelPieDiagram* TZRenderPanelStackDiagram::createModel()
{
    return new TZModelPanelStackDiagram(this);
}

TZWidgetFieldItem* TZRenderPanelStackDiagram::createFieldItem(const QString& fieldName)
{
    return new TZWidgetStackFieldItem(fieldName);
}

void TZRenderPanelStackDiagram::onReset()
{
    if (!isVisible())
        return;
    TEFeatureLayer* layer = resetFields();
    if (!layer)
        return;
    mUi->mDoubleSpinBoxMaxHeight->setValue(100);
    const TERefPtr<TEFeatureRender> current = layer->GetRender().cast<TEFeatureRender>();
    if (auto* stack = dynamic_cast<TEStackDiagramRender*>(current.get())) {
        mUi->mDoubleSpinBoxWidth->setValue(stack->GetWidth());
        mUi->mDoubleSpinBoxMaxHeight->setValue(stack->GetMaxHeight());
        readItems(stack);
    } else {
        takeBackground(current);
    }
}

bool TZRenderPanelStackDiagram::onApply()
{
    TEFeatureLayer* layer = beginApply();
    if (!layer)
        return false;
    TERefPtr<TEStackDiagramRender> render = layer->GetRender().cast<TEStackDiagramRender>();
    if (!render)
        render = MakeRef<TEStackDiagramRender>();
    render->SetShowLabel(mUi->mCheckBoxShowLabel->isChecked());
    writeItems(render.get());
    render->SetWidth(int(mUi->mDoubleSpinBoxWidth->value()));
    render->SetMaxHeight(int(mUi->mDoubleSpinBoxMaxHeight->value()));
    writeBackground(render.get());
    layer->SetSymbolRender(render);
    return true;
}
