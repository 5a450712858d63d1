#include "TZBandChartView.h"

#include "TZDialogBandPixHistogram.h"

#include <QMouseEvent>

#include <cmath>

using namespace QtCharts;

TZBandChartView::TZBandChartView(QChart* chart, TZDialogBandPixHistogram* dialog, QWidget* parent)
    : QChartView(chart, parent)
    , mDialog(dialog)
{
    setMouseTracking(true);
    setRenderHint(QPainter::Antialiasing);
}

void TZBandChartView::setRanges(int xMinimum, int xMaximum, double yMaximum)
{
    mXMinimum = xMinimum;
    mXMaximum = xMaximum;
    mYMaximum = yMaximum;
}

bool TZBandChartView::valueAt(const QPoint& position, int& value) const
{
    if (!chart())
        return false;
    const QPointF scenePoint = mapToScene(position);
    const QPointF chartPoint = chart()->mapFromScene(scenePoint);
    if (!chart()->plotArea().contains(chartPoint))
        return false;
    const double x = chart()->mapToValue(chartPoint).x();
    if (!std::isfinite(x) || x < double(mXMinimum) || x > double(mXMaximum) + 1.0)
        return false;
    value = int(x);
    return true;
}

void TZBandChartView::mouseMoveEvent(QMouseEvent* event)
{
    int value = 0;
    if (mDialog && valueAt(event->pos(), value))
        mDialog->showCount(value);
    QChartView::mouseMoveEvent(event);
}
