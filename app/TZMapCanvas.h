#pragma once

#include "TZMapRenderJob.h"
#include "TZMapViewport.h"

#include "core/TERefPtr.h"
#include "data/TELayer.h"
#include "view/TEMapView.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class QThread;

// The map canvas: shows its layers (bottom first) drawn off the GUI thread
// into an image, pans by dragging and zooms with the wheel. It is a map view
// of the object model and makes itself the active one, so a render panel's
// Apply cancels its drawing through the view's TETrackCancel. Any change of
// the view or of the layers cancels the drawing in progress and starts a new
// one; meanwhile the last image is shown moved and scaled to fit, until the
// new drawing shows what it has drawn so far (every few hundred
// milliseconds), so that a large layer appears at once and fills in.
class TZMapCanvas : public QWidget, public TZObjects::TEMapView
{
    Q_OBJECT

public:
    explicit TZMapCanvas(QWidget* parent = nullptr);
    ~TZMapCanvas() override;

    // The layers drawn, bottom first; the view is kept.
    void setLayers(const std::vector<TZObjects::TERefPtr<TZObjects::TELayer>>& layers);
    const std::vector<TZObjects::TERefPtr<TZObjects::TELayer>>& layers() const { return mLayers; }
    bool ContainsLayer(const TZObjects::TELayer* layer) const override;

    TZMapViewport viewport() const { return mViewport; }
    void setViewport(const TZMapViewport& viewport);
    // Shows the whole rectangle (in map units).
    void zoomToExtent(const QRectF& extent);
    // The union of the layers' extents; null when none has one.
    QRectF fullExtent() const;
    double scale() const { return mViewport.scale(); }

    // Whether a drawing runs or is waiting to start.
    bool isDrawing() const;
    // The last complete drawing.
    QImage mapImage() const { return mImage; }
    // When a drawing shows its progress (TZMapRenderJob::setPartialImageIntervals).
    void setPartialImageIntervals(int firstMs, int everyMs);

public Q_SLOTS:
    // Draws again (after a short delay that gathers quick successive calls).
    void refresh();
    void zoomToAll();
    void zoomIn();
    void zoomOut();

Q_SIGNALS:
    void scaleChanged(double scale);
    void mouseMapPosition(const QPointF& map);
    void drawingStarted();
    void drawingProgress(int layersDone, int layerCount);
    // The drawing in progress showed what it has drawn so far.
    void partialImageShown();
    // complete is false when the drawing was cancelled; errors lists the
    // layers that could not be drawn.
    void drawingFinished(bool complete, const QStringList& errors);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private Q_SLOTS:
    void startDrawing();
    void onDrawingDone();

private:
    void onPartialImage(int drawing, const QImage& image);
    void cancelDrawing();
    void updateMetersPerUnit();

    std::vector<TZObjects::TERefPtr<TZObjects::TELayer>> mLayers;
    TZMapViewport mViewport;
    QImage mImage;
    TZMapViewport mImageViewport;
    // What the drawing in progress (or the last one cancelled) has drawn so
    // far; shown instead of mImage while it is there.
    QImage mPartial;
    TZMapViewport mPartialViewport;
    // Counts drawings, so that a partial image of one already over is dropped.
    int mDrawing = 0;
    int mFirstPartialMs = TZMapRenderJob::DefaultFirstPartialMs;
    int mPartialEveryMs = TZMapRenderJob::DefaultPartialEveryMs;
    QTimer mRedrawTimer;
    QThread* mThread = nullptr;
    std::unique_ptr<TZMapRenderJob> mJob;
    bool mRedrawPending = false;
    bool mDragging = false;
    QPoint mLastDragPos;
};
