#pragma once

#include "TzRasterBandReader.h"

#include "core/TERefPtr.h"
#include "data/TERasterProps.h"

#include <QDialog>

#include <memory>

namespace Ui {
class TZDialogBandPixHistogram;
}
namespace QtCharts {
class QChart;
}
class TZBandChartView;

// The band pixel histogram: one tab per band histogram with a chart of how
// many pixels take each value, and beside it the statistics of the band of
// the current tab. Opened modally by the stretch and RGB composite panels,
// which compute the histograms (TzRasterBandReader) and keep them.
class TZDialogBandPixHistogram : public QDialog
{
    Q_OBJECT
public:
    explicit TZDialogBandPixHistogram(QWidget* parent = nullptr);
    ~TZDialogBandPixHistogram() override;

    // The raster whose bands the histograms belong to (histogram i to band
    // i + 1) and the histograms; builds one tab per histogram.
    void setData(TZObjects::TERasterProps* raster, const QList<TzBandHistogram>& histograms);

    // Shows the count of the current tab's point whose value, truncated to
    // an integer, equals value (0 when there is none).
    void showCount(int value);
    // The count showCount shows.
    double countAt(int value) const;

    // The series colour of band index (0-based) of a raster of bandCount bands.
    static QColor seriesColor(int index, int bandCount);

public Q_SLOTS:
    void OnTableChanged(int index);

private:
    QtCharts::QChart* makeChart(const TzBandHistogram& histogram, const QColor& color, TZBandChartView*& view);

    std::unique_ptr<Ui::TZDialogBandPixHistogram> mUi;
    TZObjects::TERefPtr<TZObjects::TERasterProps> mRaster;
    QList<TzBandHistogram> mHistograms;
};
