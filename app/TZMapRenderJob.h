#pragma once

#include "TZLayerDrawer.h"
#include "TZMapViewport.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QStringList>

#include <atomic>
#include <memory>
#include <vector>

namespace TZObjects {
class TETrackCancel;
}

// One drawing of the map: the layer drawers (bottom layer first) painted in
// turn into an image of the viewport's size. Made on the GUI thread, run()
// on a worker; it stops between features when the cancel flag is set.
class TZMapRenderJob : public QObject
{
    Q_OBJECT

public:
    TZMapRenderJob(const TZMapViewport& viewport, std::vector<std::unique_ptr<TZLayerDrawer>> drawers,
                   const TZObjects::TETrackCancel* cancel, const QColor& background = Qt::white);

    // Draws every layer. Safe to call on any one thread.
    void run();

    const TZMapViewport& viewport() const { return mViewport; }
    // The drawn image; complete only when wasCancelled() is false.
    QImage image() const { return mImage; }
    bool wasCancelled() const { return mCancelled; }
    // One line per layer that failed to draw.
    QStringList errors() const { return mErrors; }

Q_SIGNALS:
    // Emitted from the drawing thread after each layer.
    void progress(int layersDone, int layerCount);

private:
    TZMapViewport mViewport;
    std::vector<std::unique_ptr<TZLayerDrawer>> mDrawers;
    const TZObjects::TETrackCancel* mCancel = nullptr;
    QColor mBackground;
    QImage mImage;
    std::atomic<bool> mCancelled{false};
    QStringList mErrors;
};
