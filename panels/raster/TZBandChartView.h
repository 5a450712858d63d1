#pragma once

#include <QtCharts/QChartView>

class TZDialogBandPixHistogram;

// The chart of one band histogram in the band pixel histogram dialog. As
// the mouse moves over the plot it asks the dialog to show the pixel count
// of the value under the pointer.
class TZBandChartView : public QtCharts::QChartView
{
    Q_OBJECT
public:
    TZBandChartView(QtCharts::QChart* chart, TZDialogBandPixHistogram* dialog, QWidget* parent = nullptr);

    // The ranges of the histogram shown: x from its first to its last value
    // (truncated to integers), y from 0 to its largest count.
    void setRanges(int xMinimum, int xMaximum, double yMaximum);
    int xMinimum() const { return mXMinimum; }
    int xMaximum() const { return mXMaximum; }
    double yMaximum() const { return mYMaximum; }

    // The value under a point of the view, truncated to an integer; false
    // when the point lies outside the plot or the x range.
    bool valueAt(const QPoint& position, int& value) const;

protected:
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    TZDialogBandPixHistogram* mDialog = nullptr;
    int mXMinimum = 0;
    int mXMaximum = 0;
    double mYMaximum = 0.0;
};
