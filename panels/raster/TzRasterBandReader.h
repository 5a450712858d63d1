#pragma once

#include "data/TEBandScan.h"
#include "data/TERasterProps.h"

#include <QList>

#include <vector>

class QWidget;

// One band histogram as the raster panels keep and show it: points of value
// and pixel count in ascending order of value (TEBandScan's bins).
using TzBandHistogram = std::vector<TZObjects::TEBandScan::Point>;

// Reads band statistics and histograms for the raster panels. A read that
// the raster has not answered before runs on a worker thread under the wait
// dialog, with a Cancel button; the GUI thread never scans a band itself.
class TzRasterBandReader
{
public:
    // The value a histogram leaves out when the band has no no-data value.
    static constexpr double DefaultNoData = -99999.0;

    // Exact statistics of a band (1-based). False when the band has none,
    // the read failed or the user cancelled it.
    static bool statistics(QWidget* parent, TZObjects::TERasterProps* raster, int band,
                           TZObjects::TERasterProps::BandStatistics& statistics);

    // The histogram of each band (1-based) between the band's minimum and
    // maximum, its no-data value (DefaultNoData when it has none) left out,
    // in one job. False, with histograms left empty, when a band cannot be
    // read or the user cancelled.
    static bool histograms(QWidget* parent, TZObjects::TERasterProps* raster, const QList<int>& bands,
                           QList<TzBandHistogram>& histograms);

    // What histograms does for one band, on the calling thread.
    static bool histogramOf(TZObjects::TERasterProps* raster, int band, TzBandHistogram& histogram,
                            const std::atomic<bool>* cancel = nullptr);
};
