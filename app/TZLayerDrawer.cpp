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
    // A layer without a render ("Not to render") is not drawn at all.
    if (!layer || !layer->IsValid() || !layer->GetRender())
        return nullptr;
    if (auto* features = dynamic_cast<TEFeatureLayer*>(layer)) {
        const TERefPtr<TEFeatureRender> render = features->GetSymbolRender();
        if (!render)
            return nullptr;
        return std::make_unique<TZFeatureLayerDrawer>(TERefPtr<TEFeatureLayer>(features), render.get(),
                                                      TERefPtr<TEStyle>());
    }
    if (auto* raster = dynamic_cast<TERasterLayer*>(layer)) {
        const TERefPtr<TEImageRender> render = raster->GetImageRender();
        return render ? std::make_unique<TZRasterLayerDrawer>(raster->GetRaster(), render.get()) : nullptr;
    }
    if (auto* mosaic = dynamic_cast<TERasterDirLayer*>(layer)) {
        const TERefPtr<TEImageRender> render = mosaic->GetImageRender();
        return render ? std::make_unique<TZRasterLayerDrawer>(mosaic->GetRaster(), render.get()) : nullptr;
    }
    return nullptr;
}
