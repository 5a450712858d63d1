#include "TzRasterBandReader.h"

#include "widgets/TZWaitDialog.h"

#include <QCoreApplication>

using namespace TZObjects;

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("TzRasterBandReader", text);
}

} // namespace

bool TzRasterBandReader::statistics(QWidget* parent, TERasterProps* raster, int band,
                                    TERasterProps::BandStatistics& statistics)
{
    if (!raster)
        return false;
    if (raster->HasStatistics(band))
        return raster->GetStatistics(band, statistics);
    bool ok = false;
    std::atomic<bool> cancel(false);
    TZWaitDialog wait(tr("Computing the statistics of band %1...").arg(band), parent);
    wait.setCancelHandler([&cancel] { cancel.store(true); });
    wait.WaitFor([&] { ok = raster->GetStatistics(band, statistics, TERasterProps::Accuracy::Exact, &cancel); });
    return ok && !cancel.load();
}

bool TzRasterBandReader::histogramOf(TERasterProps* raster, int band, TzBandHistogram& histogram,
                                     const std::atomic<bool>* cancel)
{
    histogram.clear();
    TERasterProps::BandStatistics s;
    if (!raster || !raster->GetStatistics(band, s, TERasterProps::Accuracy::Exact, cancel))
        return false;
    bool hasNoData = false;
    double noData = raster->GetNoDataValue(band, &hasNoData);
    if (!hasNoData)
        noData = DefaultNoData;
    return raster->GetValueHistogram(band, s.minimum, s.maximum, noData, histogram, cancel);
}

bool TzRasterBandReader::histograms(QWidget* parent, TERasterProps* raster, const QList<int>& bands,
                                    QList<TzBandHistogram>& histograms)
{
    histograms.clear();
    if (!raster)
        return false;
    QList<TzBandHistogram> read;
    bool ok = true;
    std::atomic<bool> cancel(false);
    TZWaitDialog wait(tr("Computing the band histograms..."), parent);
    wait.setCancelHandler([&cancel] { cancel.store(true); });
    wait.WaitFor([&] {
        for (int band : bands) {
            TzBandHistogram histogram;
            ok = histogramOf(raster, band, histogram, &cancel);
            if (!ok)
                return;
            read.append(std::move(histogram));
        }
    });
    if (!ok || cancel.load())
        return false;
    histograms = std::move(read);
    return true;
}
