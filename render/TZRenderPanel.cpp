#include "TZRenderPanel.h"

#include "TZControlRender.h"

#include "data/TEFeatureLayer.h"

using namespace TZObjects;

TZRenderPanel::TZRenderPanel(QWidget* parent)
    : QWidget(parent, Qt::WindowFlags())
{
}

TZRenderPanel::~TZRenderPanel() = default;

QString TZRenderPanel::name() const
{
    return QString();
}

QString TZRenderPanel::title() const
{
    return QString();
}

QString TZRenderPanel::description() const
{
    return QString();
}

QList<TELayer::LayerType> TZRenderPanel::supportLayerType() const
{
    return mSupportLayerType;
}

bool TZRenderPanel::onApply()
{
    return true;
}

void TZRenderPanel::onReset()
{
}

TEFeatureLayer* TZRenderPanel::currentFeatureLayer()
{
    return dynamic_cast<TEFeatureLayer*>(TZControlRender::instance(nullptr)->layer());
}
