#include "TZMapCanvas.h"

#include "TZLayerDrawer.h"
#include "TZMapRenderJob.h"

#include "view/TEMapViewManager.h"

#include <QMouseEvent>
#include <QPainter>
#include <QThread>
#include <QWheelEvent>

#include <ogr_srs_api.h>

#include <cmath>

using namespace TZObjects;

namespace {

constexpr int RedrawDelayMs = 60;
constexpr double ZoomStep = 1.5;
constexpr double MetersPerDegree = 111319.49;

} // namespace

TZMapCanvas::TZMapCanvas(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("mapCanvas"));
    setMouseTracking(true);
    setFocusPolicy(Qt::WheelFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(200, 150);
    setCursor(Qt::OpenHandCursor);
    mRedrawTimer.setSingleShot(true);
    mRedrawTimer.setInterval(RedrawDelayMs);
    connect(&mRedrawTimer, &QTimer::timeout, this, &TZMapCanvas::startDrawing);
    TEMapViewManager::GetInstance()->RegisterMapView(this);
    TEMapViewManager::GetInstance()->SetActivedMapView(this);
}

TZMapCanvas::~TZMapCanvas()
{
    mRedrawTimer.stop();
    if (mThread) {
        GetTrackCancel()->Cancel();
        mThread->wait();
        delete mThread;
    }
    TEMapViewManager::GetInstance()->UnregisterMapView(this);
}

void TZMapCanvas::setLayers(const std::vector<TERefPtr<TELayer>>& layers)
{
    mLayers = layers;
    updateMetersPerUnit();
    if (!mViewport.isValid() && !mLayers.empty())
        zoomToAll();
    else
        refresh();
}

bool TZMapCanvas::ContainsLayer(const TELayer* layer) const
{
    for (const TERefPtr<TELayer>& each : mLayers) {
        if (each.get() == layer)
            return true;
    }
    return false;
}

void TZMapCanvas::setViewport(const TZMapViewport& viewport)
{
    TZMapViewport next = viewport.withDeviceSize(size());
    next.setMetersPerUnit(mViewport.metersPerUnit());
    next.setDpi(logicalDpiX());
    if (next == mViewport)
        return;
    const bool scaleMoved = std::abs(next.scale() - mViewport.scale()) > 1e-9 * next.scale();
    mViewport = next;
    if (scaleMoved)
        Q_EMIT scaleChanged(mViewport.scale());
    update();
    refresh();
}

void TZMapCanvas::zoomToExtent(const QRectF& extent)
{
    if (extent.isNull())
        return;
    setViewport(TZMapViewport::fitting(size(), extent));
}

QRectF TZMapCanvas::fullExtent() const
{
    QRectF all;
    for (const TERefPtr<TELayer>& layer : mLayers) {
        QRectF extent;
        if (layer->GetExtent(extent))
            all = all.isNull() ? extent.normalized() : all.united(extent.normalized());
    }
    return all;
}

void TZMapCanvas::zoomToAll()
{
    zoomToExtent(fullExtent());
}

void TZMapCanvas::zoomIn()
{
    setViewport(mViewport.zoomedAt(rect().center(), ZoomStep));
}

void TZMapCanvas::zoomOut()
{
    setViewport(mViewport.zoomedAt(rect().center(), 1.0 / ZoomStep));
}

bool TZMapCanvas::isDrawing() const
{
    return mThread != nullptr || mRedrawTimer.isActive() || mRedrawPending;
}

void TZMapCanvas::refresh()
{
    cancelDrawing();
    mRedrawTimer.start();
}

void TZMapCanvas::cancelDrawing()
{
    if (mThread) {
        GetTrackCancel()->Cancel();
        mRedrawPending = true;
    }
}

void TZMapCanvas::startDrawing()
{
    if (mThread) {
        // The cancelled drawing still winds down; onDrawingDone starts anew.
        mRedrawPending = true;
        return;
    }
    mRedrawPending = false;
    if (!mViewport.isValid())
        return;

    std::vector<std::unique_ptr<TZLayerDrawer>> drawers;
    for (const TERefPtr<TELayer>& layer : mLayers) {
        if (std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer.get()))
            drawers.push_back(std::move(drawer));
    }
    GetTrackCancel()->Reset();
    mJob = std::make_unique<TZMapRenderJob>(mViewport, std::move(drawers), GetTrackCancel(),
                                            palette().color(QPalette::Base));
    mJob->setPartialImageIntervals(mFirstPartialMs, mPartialEveryMs);
    connect(mJob.get(), &TZMapRenderJob::progress, this, &TZMapCanvas::drawingProgress, Qt::QueuedConnection);
    const int drawing = ++mDrawing;
    connect(
        mJob.get(), &TZMapRenderJob::partialImage, this,
        [this, drawing](const QImage& image) { onPartialImage(drawing, image); }, Qt::QueuedConnection);
    TZMapRenderJob* job = mJob.get();
    mThread = QThread::create([job] { job->run(); });
    connect(mThread, &QThread::finished, this, &TZMapCanvas::onDrawingDone);
    Q_EMIT drawingStarted();
    mThread->start();
}

void TZMapCanvas::onDrawingDone()
{
    mThread->wait();
    delete mThread;
    mThread = nullptr;
    std::unique_ptr<TZMapRenderJob> job = std::move(mJob);
    const bool complete = !job->wasCancelled();
    if (complete) {
        mImage = job->image();
        mImageViewport = job->viewport();
        mPartial = QImage();
        update();
    }
    if (mRedrawPending)
        mRedrawTimer.start();
    Q_EMIT drawingFinished(complete, job->errors());
}

void TZMapCanvas::onPartialImage(int drawing, const QImage& image)
{
    // Only the drawing in progress shows its progress, and not once the
    // view has changed under it.
    if (drawing != mDrawing || !mJob || GetTrackCancel()->IsCancelled())
        return;
    mPartial = image;
    mPartialViewport = mJob->viewport();
    update();
    Q_EMIT partialImageShown();
}

void TZMapCanvas::setPartialImageIntervals(int firstMs, int everyMs)
{
    mFirstPartialMs = firstMs;
    mPartialEveryMs = everyMs;
}

void TZMapCanvas::updateMetersPerUnit()
{
    double metersPerUnit = 1.0;
    for (const TERefPtr<TELayer>& layer : mLayers) {
        const QString wkt = layer->GetSpatialReferenceWkt();
        if (wkt.isEmpty())
            continue;
        OGRSpatialReferenceH srs = OSRNewSpatialReference(wkt.toUtf8().constData());
        if (srs) {
            metersPerUnit = OSRIsGeographic(srs) ? MetersPerDegree : OSRGetLinearUnits(srs, nullptr);
            OSRDestroySpatialReference(srs);
        }
        break;
    }
    if (metersPerUnit != mViewport.metersPerUnit()) {
        mViewport.setMetersPerUnit(metersPerUnit);
        Q_EMIT scaleChanged(mViewport.scale());
    }
}

void TZMapCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    const bool partial = !mPartial.isNull();
    const QImage& image = partial ? mPartial : mImage;
    const TZMapViewport& imageViewport = partial ? mPartialViewport : mImageViewport;
    if (image.isNull() || !imageViewport.isValid())
        return;
    // The last drawing where it lies in the current view.
    const QRectF drawn = imageViewport.mapExtent();
    const QRectF target = QRectF(mViewport.toDevice(drawn.topLeft()), mViewport.toDevice(drawn.bottomRight())).normalized();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    painter.drawImage(target, image);
}

void TZMapCanvas::resizeEvent(QResizeEvent*)
{
    if (!mViewport.isValid()) {
        const QRectF all = fullExtent();
        if (!all.isNull()) {
            zoomToExtent(all);
            return;
        }
    }
    setViewport(mViewport);
}

void TZMapCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        mDragging = true;
        mLastDragPos = event->pos();
        setCursor(Qt::ClosedHandCursor);
    }
}

void TZMapCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (mViewport.isValid())
        Q_EMIT mouseMapPosition(mViewport.toMap(event->pos()));
    if (!mDragging)
        return;
    const QPoint delta = event->pos() - mLastDragPos;
    mLastDragPos = event->pos();
    cancelDrawing();
    // Move the picture now; draw anew once the drag ends.
    mViewport = mViewport.movedByPixels(delta);
    update();
}

void TZMapCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && mDragging) {
        mDragging = false;
        setCursor(Qt::OpenHandCursor);
        refresh();
    }
}

void TZMapCanvas::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0.0 || !mViewport.isValid())
        return;
    setViewport(mViewport.zoomedAt(event->position(), std::pow(1.25, steps)));
    event->accept();
}
