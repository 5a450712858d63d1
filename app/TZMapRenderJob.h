#pragma once

#include "TZLayerDrawer.h"
#include "TZMapViewport.h"

#include <QColor>
#include <QElapsedTimer>
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
// on a worker; it stops between features when the cancel flag is set. While
// it draws, it hands out a copy of the image drawn so far now and then
// (partialImage), so that a large layer shows at once and fills in.
class TZMapRenderJob : public QObject
{
    Q_OBJECT

public:
    TZMapRenderJob(const TZMapViewport& viewport, std::vector<std::unique_ptr<TZLayerDrawer>> drawers,
                   const TZObjects::TETrackCancel* cancel, const QColor& background = Qt::white);

    // Draws every layer. Safe to call on any one thread.
    void run();

    // When partialImage is emitted: first once firstMs have passed since
    // run() started, then every everyMs; a negative firstMs never.
    void setPartialImageIntervals(int firstMs, int everyMs);
    static constexpr int DefaultFirstPartialMs = 100;
    static constexpr int DefaultPartialEveryMs = 250;

    const TZMapViewport& viewport() const { return mViewport; }
    // The drawn image; complete only when wasCancelled() is false.
    QImage image() const { return mImage; }
    bool wasCancelled() const { return mCancelled; }
    // One line per layer that failed to draw.
    QStringList errors() const { return mErrors; }

Q_SIGNALS:
    // Emitted from the drawing thread after each layer.
    void progress(int layersDone, int layerCount);
    // Emitted from the drawing thread with a copy of the image drawn so far.
    void partialImage(const QImage& image);

private:
    // Called by the drawers between features: publishes the image when its
    // time has come.
    void checkpoint();

    TZMapViewport mViewport;
    std::vector<std::unique_ptr<TZLayerDrawer>> mDrawers;
    const TZObjects::TETrackCancel* mCancel = nullptr;
    QColor mBackground;
    QImage mImage;
    std::atomic<bool> mCancelled{false};
    QStringList mErrors;
    int mFirstPartialMs = DefaultFirstPartialMs;
    int mPartialEveryMs = DefaultPartialEveryMs;
    QElapsedTimer mClock;
    qint64 mNextPartialMs = 0;
};
