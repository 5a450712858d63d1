#include "TZMapRenderJob.h"

#include "view/TETrackCancel.h"

#include <QPainter>

#include <algorithm>

using namespace TZObjects;

TZMapRenderJob::TZMapRenderJob(const TZMapViewport& viewport, std::vector<std::unique_ptr<TZLayerDrawer>> drawers,
                               const TETrackCancel* cancel, const QColor& background)
    : mViewport(viewport)
    , mDrawers(std::move(drawers))
    , mCancel(cancel)
    , mBackground(background)
{
}

void TZMapRenderJob::setPartialImageIntervals(int firstMs, int everyMs)
{
    mFirstPartialMs = firstMs;
    mPartialEveryMs = std::max(0, everyMs);
}

void TZMapRenderJob::checkpoint()
{
    if (mFirstPartialMs < 0 || mClock.elapsed() < mNextPartialMs || (mCancel && mCancel->IsCancelled()))
        return;
    // A deep copy: the painter goes on drawing into mImage meanwhile.
    Q_EMIT partialImage(mImage.copy());
    mNextPartialMs = mClock.elapsed() + mPartialEveryMs;
}

void TZMapRenderJob::run()
{
    mClock.start();
    mNextPartialMs = mFirstPartialMs;
    mImage = QImage(mViewport.deviceSize(), QImage::Format_ARGB32_Premultiplied);
    mImage.fill(mBackground);
    mImage.setDotsPerMeterX(qRound(mViewport.dpi() / 0.0254));
    mImage.setDotsPerMeterY(qRound(mViewport.dpi() / 0.0254));
    QPainter painter(&mImage);
    const int count = static_cast<int>(mDrawers.size());
    for (const std::unique_ptr<TZLayerDrawer>& drawer : mDrawers)
        drawer->setCheckpoint([this] { checkpoint(); });
    for (int i = 0; i < count; ++i) {
        if (mCancel && mCancel->IsCancelled()) {
            mCancelled = true;
            break;
        }
        try {
            if (!mDrawers[i]->draw(&painter, mViewport, mCancel)) {
                if (mCancel && mCancel->IsCancelled()) {
                    mCancelled = true;
                    break;
                }
                mErrors << tr("%1: %2").arg(mDrawers[i]->layerName(), mDrawers[i]->errorText());
            }
        } catch (const std::exception& e) {
            // A layer that throws must not take the drawing thread with it.
            mErrors << tr("%1: %2").arg(mDrawers[i]->layerName(), QString::fromUtf8(e.what()));
        }
        Q_EMIT progress(i + 1, count);
        if (i + 1 < count)
            checkpoint();
    }
}
