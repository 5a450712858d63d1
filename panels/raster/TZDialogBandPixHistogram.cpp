#include "TZDialogBandPixHistogram.h"

#include "TZBandChartView.h"

#include "ui_TZDialogBandPixHistogram.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QScreen>
#include <QtCharts/QChart>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

#include <algorithm>
#include <cmath>

using namespace QtCharts;
using namespace TZObjects;

TZDialogBandPixHistogram::TZDialogBandPixHistogram(QWidget* parent)
    : QDialog(parent)
    , mUi(std::make_unique<Ui::TZDialogBandPixHistogram>())
{
    mUi->setupUi(this);
    // A quarter of the desktop in from its top left corner, half its size.
    const QScreen* screen = parentWidget() && parentWidget()->screen() ? parentWidget()->screen()
                                                                        : QGuiApplication::primaryScreen();
    const QRect desktop = screen ? screen->geometry() : QRect(0, 0, 1280, 800);
    const int halfWidth = desktop.width() / 2;
    const int halfHeight = desktop.height() / 2;
    move(desktop.left() + desktop.width() / 4, desktop.top() + desktop.height() / 4);
    setFixedSize(halfWidth, halfHeight);
    mUi->splitter->setGeometry(20, 20, halfWidth - 21, halfHeight - 21);
    mUi->splitter->setSizes({(halfWidth - 40) * 3 / 4, (halfWidth - 40) / 4});
    connect(mUi->tabWidget, SIGNAL(currentChanged(int)), this, SLOT(OnTableChanged(int)));
}

TZDialogBandPixHistogram::~TZDialogBandPixHistogram() = default;

QColor TZDialogBandPixHistogram::seriesColor(int index, int bandCount)
{
    if (bandCount == 3) {
        switch (index) {
        case 0:
            return QColor(240, 20, 20);
        case 1:
            return QColor(20, 240, 20);
        case 2:
            return QColor(20, 20, 240);
        default:
            break;
        }
    }
    return QColor(100, 100, 100);
}

QChart* TZDialogBandPixHistogram::makeChart(const TzBandHistogram& histogram, const QColor& color,
                                            TZBandChartView*& view)
{
    auto* chart = new QChart();
    auto* series = new QLineSeries();
    QPen pen(color);
    pen.setWidth(1);
    series->setPen(pen);
    QLinearGradient gradient(0.0, 0.0, 0.0, 1.0);
    gradient.setColorAt(0.0, color);
    gradient.setColorAt(1.0, color);
    gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
    series->setBrush(gradient);

    // Each value with pixels is a vertical line from 0 to its count.
    QVector<QPointF> points;
    double largest = 0.0;
    for (const TEBandScan::Point& point : histogram) {
        if (point.count <= 0.0)
            continue;
        points << QPointF(point.value, 0.0) << QPointF(point.value, point.count) << QPointF(point.value, 0.0);
        largest = std::max(largest, point.count);
    }
    series->replace(points);
    chart->addSeries(series);

    const double first = histogram.empty() ? 0.0 : histogram.front().value;
    const double last = histogram.empty() ? 0.0 : histogram.back().value;
    auto* axisX = new QValueAxis();
    // An axis needs a range of some width: a band of one value gets 1.
    axisX->setRange(first, last > first ? last : first + 1.0);
    axisX->setTitleText(QStringLiteral("值"));
    // Integer labels, unless the range is too narrow for them to differ
    // (a floating-point band of values within a few units).
    axisX->setLabelFormat(last - first >= 10.0 || histogram.size() < 2 ? QStringLiteral("%d")
                                                                       : QStringLiteral("%.2f"));
    auto* axisY = new QValueAxis();
    axisY->setRange(0.0, largest > 0.0 ? largest : 1.0);
    axisY->setTitleText(QStringLiteral("统计个数"));
    axisY->setLabelFormat(QStringLiteral("%d"));
    chart->addAxis(axisX, Qt::AlignBottom);
    chart->addAxis(axisY, Qt::AlignLeft);
    series->attachAxis(axisX);
    series->attachAxis(axisY);
    chart->setTitle(QStringLiteral("统计直方图"));
    chart->legend()->hide();

    view = new TZBandChartView(chart, this);
    view->setRanges(int(first), int(last), largest);
    return chart;
}

void TZDialogBandPixHistogram::setData(TERasterProps* raster, const QList<TzBandHistogram>& histograms)
{
    mRaster = raster;
    mHistograms = histograms;
    const int bandCount = raster ? raster->GetBandCount() : 0;
    {
        // The statistics are shown once, after every tab is in place.
        const QSignalBlocker blocker(mUi->tabWidget);
        while (mUi->tabWidget->count() > 0) {
            QWidget* page = mUi->tabWidget->widget(0);
            mUi->tabWidget->removeTab(0);
            delete page;
        }
        for (int i = 0; i < mHistograms.size(); ++i) {
            TZBandChartView* view = nullptr;
            makeChart(mHistograms[i], seriesColor(i, bandCount), view);
            mUi->tabWidget->addTab(view, QString::number(i));
        }
        if (mUi->tabWidget->count() > 1) {
            const QStringList names{QStringLiteral("red"), QStringLiteral("green"), QStringLiteral("blue")};
            for (int i = 0; i < std::min(3, mUi->tabWidget->count()); ++i)
                mUi->tabWidget->setTabText(i, names[i]);
        } else if (mUi->tabWidget->count() == 1) {
            mUi->tabWidget->setTabText(0, QStringLiteral("gray"));
        }
    }
    OnTableChanged(mUi->tabWidget->currentIndex());
}

void TZDialogBandPixHistogram::OnTableChanged(int index)
{
    TERasterProps::BandStatistics s;
    const bool known = index >= 0 && TzRasterBandReader::statistics(this, mRaster.get(), index + 1, s);
    auto show = [&](QLabel* label, const QString& text, double value) {
        label->setText(known ? QStringLiteral("%1 %2").arg(text, QString::number(value, 'f', 2)) : text);
    };
    show(mUi->label_min, tr("Min Value:"), s.minimum);
    show(mUi->label_max, tr("Max Value:"), s.maximum);
    show(mUi->label_mean, tr("Average Value:"), s.mean);
    show(mUi->label_stddev, tr("Standard Deviation:"), s.stdDev);
    mUi->label_count->setText(tr("Statistical Data:"));
    mUi->label_value->setText(tr("Value:"));
}

double TZDialogBandPixHistogram::countAt(int value) const
{
    const int index = mUi->tabWidget->currentIndex();
    if (index < 0 || index >= mHistograms.size())
        return 0.0;
    const TzBandHistogram& histogram = mHistograms[index];
    // Points are in ascending order of value: the first whose truncated
    // value reaches value is the one, if any.
    auto it = std::lower_bound(histogram.begin(), histogram.end(), value,
                               [](const TEBandScan::Point& point, int v) { return std::trunc(point.value) < v; });
    return it != histogram.end() && int(std::trunc(it->value)) == value ? it->count : 0.0;
}

void TZDialogBandPixHistogram::showCount(int value)
{
    mUi->label_count->setText(QStringLiteral("%1 %2").arg(tr("Statistical Data:")).arg(countAt(value), 0, 'f', 0));
    mUi->label_value->setText(QStringLiteral("%1 %2").arg(tr("Value:")).arg(value));
}
