#pragma once

#include "TZRenderExport.h"

#include "data/TELayer.h"

#include <QList>
#include <QWidget>

namespace TZObjects {
class TEFeatureLayer;
class TEImageRender;
class TERasterDirLayer;
class TERasterLayer;
template <class T> class TERefPtr;
}

// A page of the "Symbol rendering" dock: one render style. The dock knows a
// panel only through this contract: the render type key (name(), equal to
// the GetType() of the render the panel builds), a translated title, the
// layer types it serves, and the two actions. onApply() builds a render from
// the page and sets it on the dock's current layer (false, after telling the
// user why, when nothing may be applied); onReset() reloads the page from the
// layer and must tolerate being called repeatedly and for a render of another
// kind.
class TZRENDER_EXPORT TZRenderPanel : public QWidget
{
    Q_OBJECT
public:
    explicit TZRenderPanel(QWidget* parent = nullptr);
    ~TZRenderPanel() override;

    virtual QString name() const;
    virtual QString title() const;
    virtual QString description() const;
    virtual QList<TZObjects::TELayer::LayerType> supportLayerType() const;
    virtual bool onApply();
    virtual void onReset();

protected:
    // The dock's current layer as a feature layer; null when there is none
    // or it is a raster layer. Panels ask for it on each call and keep none.
    static TZObjects::TEFeatureLayer* currentFeatureLayer();
    // The dock's current layer as a raster layer, or as a raster directory
    // layer; null when it is of another kind.
    static TZObjects::TERasterLayer* currentRasterLayer();
    static TZObjects::TERasterDirLayer* currentRasterDirLayer();
    // The image render of the current raster or raster directory layer;
    // empty for any other layer.
    static TZObjects::TERefPtr<TZObjects::TEImageRender> currentImageRender();

    // Stops the drawing in progress on the active map view, so that a new
    // render is not set on a layer while a worker thread draws it.
    static void cancelActiveDrawing();

    // Filled by each panel's constructor; read once when the dock registers
    // the panel.
    QList<TZObjects::TELayer::LayerType> mSupportLayerType;
};
