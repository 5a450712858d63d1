#pragma once

#include "TZMapViewport.h"

#include <QString>

#include <functional>
#include <memory>

class QPainter;

namespace TZObjects {
class TELayer;
class TETrackCancel;
}

// Draws one layer into a painter for a viewport. A drawer is made on the GUI
// thread and takes a copy of the layer's render there, so that the drawing
// itself can run on a worker thread while the user edits the layer. create()
// picks the drawer that fits a layer and its render: the one place where the
// drawing of a new kind of render is added.
class TZLayerDrawer
{
public:
    virtual ~TZLayerDrawer() = default;

    // The drawer for the layer as it is now; null for a layer nothing can
    // draw or that has no render.
    static std::unique_ptr<TZLayerDrawer> create(TZObjects::TELayer* layer);

    // Draws; returns false when the drawing stopped because cancel was set,
    // or failed (errorText() then tells why).
    virtual bool draw(QPainter* painter, const TZMapViewport& viewport, const TZObjects::TETrackCancel* cancel) = 0;

    // Called on the drawing thread every few hundred features, between two
    // features, so that the host can show what is drawn so far.
    void setCheckpoint(std::function<void()> checkpoint) { mCheckpoint = std::move(checkpoint); }

    QString errorText() const { return mErrorText; }
    // The name of the layer drawn, for messages.
    QString layerName() const { return mLayerName; }

protected:
    void checkpoint() const
    {
        if (mCheckpoint)
            mCheckpoint();
    }

    QString mErrorText;

private:
    static std::unique_ptr<TZLayerDrawer> makeDrawer(TZObjects::TELayer* layer);

    QString mLayerName;
    std::function<void()> mCheckpoint;
};
