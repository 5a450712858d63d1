#include "TZRenderPanel.h"

#include "TZControlRender.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"
#include "view/TEMapView.h"
#include "view/TEMapViewManager.h"

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

TERasterLayer* TZRenderPanel::currentRasterLayer()
{
    return dynamic_cast<TERasterLayer*>(TZControlRender::instance(nullptr)->layer());
}

TERasterDirLayer* TZRenderPanel::currentRasterDirLayer()
{
    return dynamic_cast<TERasterDirLayer*>(TZControlRender::instance(nullptr)->layer());
}

TERefPtr<TEImageRender> TZRenderPanel::currentImageRender()
{
    if (TERasterLayer* raster = currentRasterLayer())
        return raster->GetImageRender();
    if (TERasterDirLayer* directory = currentRasterDirLayer())
        return directory->GetImageRender();
    return TERefPtr<TEImageRender>();
}

void TZRenderPanel::cancelActiveDrawing()
{
    if (TEMapView* view = TEMapViewManager::GetInstance()->GetActivedMapView())
        view->GetTrackCancel()->Cancel();
}
