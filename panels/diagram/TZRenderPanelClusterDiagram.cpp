#include "TZRenderPanelClusterDiagram.h"

#include "ui_TZRenderPanelClusterDiagram.h"

#include "data/TEFeatureLayer.h"
#include "renders/TEClusterDiagramRender.h"

using namespace TZObjects;

TZRenderPanelClusterDiagram::TZRenderPanelClusterDiagram(QWidget* parent)
    : TZRenderPanel(parent)
    , mUi(std::make_unique<Ui::TZRenderPanelClusterDiagram>())
{
    mUi->setupUi(this);
    mUi->mColorRamp->setDefaultGroup(QStringLiteral("Default"), QStringLiteral("Unique"));
    mSupportLayerType.clear();
    mSupportLayerType << TELayer::LT_Point;
}

TZRenderPanelClusterDiagram::~TZRenderPanelClusterDiagram() = default;

QString TZRenderPanelClusterDiagram::name() const
{
    return QStringLiteral("ClusterDiagram");
}

QString TZRenderPanelClusterDiagram::title() const
{
    return tr("Cluster diagram");
}

void TZRenderPanelClusterDiagram::onReset()
{
    if (!isVisible())
        return;
    const TERefPtr<TEFeatureLayer> layer(currentFeatureLayer());
    if (!layer || !layer->IsValid())
        return;
    // The symbology the lone points are drawn in. A cluster render is never
    // its own background: its background stays the one it already has.
    const TERefPtr<TEFeatureRender> render = layer->GetSymbolRender();
    if (const TERefPtr<TEClusterDiagramRender> own = render.cast<TEClusterDiagramRender>())
        mBackgroundRender = own->GetBackgroundRender();
    else
        mBackgroundRender = render;
}

bool TZRenderPanelClusterDiagram::onApply()
{
    const TERefPtr<TEFeatureLayer> layer(currentFeatureLayer());
    if (!layer || !layer->IsValid())
        return false;
    TERefPtr<TEClusterDiagramRender> render = layer->GetSymbolRender().cast<TEClusterDiagramRender>();
    if (!render)
        render = MakeRef<TEClusterDiagramRender>();
    render->setColorRamp(mUi->mColorRamp->currentColorRamp());
    render->SetBackgroundRender(mBackgroundRender.get());
    render->setMakerSize(double(mUi->mSpinBoxMarkerSize->value()));
    layer->SetSymbolRender(render);
    return true;
}
