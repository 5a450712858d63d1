#include "TZLayerDrawer.h"

#include "TZFeatureLayerDrawer.h"
#include "TZRasterLayerDrawer.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterDirLayer.h"
#include "data/TERasterLayer.h"

using namespace TZObjects;

std::unique_ptr<TZLayerDrawer> TZLayerDrawer::create(TELayer* layer)
{
    std::unique_ptr<TZLayerDrawer> drawer = makeDrawer(layer);
    if (drawer)
        drawer->mLayerName = layer->GetLayerName().toQString();
    return drawer;
}

std::unique_ptr<TZLayerDrawer> TZLayerDrawer::makeDrawer(TELayer* layer)
{
    if (!layer || !layer->IsValid())
        return nullptr;
    if (auto* features = dynamic_cast<TEFeatureLayer*>(layer)) {
        const TERefPtr<TEFeatureRender> render = features->GetSymbolRender();
        return std::make_unique<TZFeatureLayerDrawer>(TERefPtr<TEFeatureLayer>(features), render.get(),
                                                      render ? TERefPtr<TEStyle>() : features->GetDefaultStyle());
    }
    if (auto* raster = dynamic_cast<TERasterLayer*>(layer)) {
        return std::make_unique<TZRasterLayerDrawer>(raster->GetRaster(), raster->GetImageRender().get());
    }
    if (auto* mosaic = dynamic_cast<TERasterDirLayer*>(layer))
        return std::make_unique<TZRasterLayerDrawer>(mosaic->GetRaster(), mosaic->GetImageRender().get());
    return nullptr;
}
