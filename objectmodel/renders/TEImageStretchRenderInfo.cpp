#include "renders/TEImageStretchRenderInfo.h"

#include "data/TERasterProps.h"
#include "renders/TEFileFunc.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace TZObjects {

namespace {

const int HistogramBins = 256;

} // namespace

TEImageStretchRenderInfo::TEImageStretchRenderInfo()
{
    SetItemCount(256);
    for (int i = 0; i < 256; ++i)
        mColors[size_t(i)] = TEColor(i, i, i);
}

TERefPtr<TEImageRenderInfo> TEImageStretchRenderInfo::Clone() const
{
    return MakeRef<TEImageStretchRenderInfo>(*this);
}

bool TEImageStretchRenderInfo::AddFromRaster(TERasterProps* raster, int band, TEString* error)
{
    return AddFromRaster(raster, band, TERasterProps::Accuracy::Exact, error);
}

bool TEImageStretchRenderInfo::AddFromRaster(TERasterProps* raster, int band, TERasterProps::Accuracy accuracy,
                                             TEString* error)
{
    TERasterProps::BandStatistics statistics;
    if (!raster || !raster->GetStatistics(band, statistics, accuracy)) {
        SetError(error, QStringLiteral("Band %1 has no statistics").arg(band));
        return false;
    }
    std::vector<double> histogram;
    if (!raster->GetHistogram(band, statistics.minimum, statistics.maximum, HistogramBins, histogram, accuracy)) {
        SetError(error, QStringLiteral("Band %1 does not read").arg(band));
        return false;
    }
    mMinimum = statistics.minimum;
    mMaximum = statistics.maximum;
    mMeanValue = statistics.mean;
    mStandardValue = 2.5 * statistics.stdDev;
    mHistogram = std::move(histogram);
    SetItemCount(256);
    for (int i = 0; i < 256; ++i)
        mColors[size_t(i)] = TEColor(i, i, i);
    return true;
}

void TEImageStretchRenderInfo::GetMinMaxVal(double& minimum, double& maximum) const
{
    minimum = mMinimum;
    maximum = mMaximum;
}

void TEImageStretchRenderInfo::SetMinMaxVal(double minimum, double maximum)
{
    mMinimum = minimum;
    mMaximum = maximum;
}

void TEImageStretchRenderInfo::SetItemCount(int count)
{
    mColors.resize(size_t(std::max(0, count)), TEColor(0, 0, 0));
}

TEColor TEImageStretchRenderInfo::GetItemColr(int index) const
{
    return index >= 0 && index < GetItemCount() ? mColors[size_t(index)] : TEColor(0, 0, 0, 0);
}

void TEImageStretchRenderInfo::SetItemColr(int index, const TEColor& color)
{
    if (index >= 0 && index < GetItemCount())
        mColors[size_t(index)] = color;
}

void TEImageStretchRenderInfo::GetStretchRange(double& low, double& high) const
{
    low = mMinimum;
    high = mMaximum;
    if (mAlgoType == StandardDeviation) {
        low = mMeanValue - mStandardValue;
        high = mMeanValue + mStandardValue;
        return;
    }
    if (!mPercentClip || mHistogram.empty())
        return;
    double total = 0.0;
    for (double count : mHistogram)
        total += count;
    if (total <= 0.0)
        return;
    const double binWidth = (mMaximum - mMinimum) / double(mHistogram.size());
    const double leftCount = total * std::max(0.0, mLeftClip) / 100.0;
    const double rightCount = total * std::max(0.0, mRightClip) / 100.0;
    double cumulative = 0.0;
    for (size_t i = 0; i < mHistogram.size(); ++i) {
        if (cumulative + mHistogram[i] > leftCount) {
            low = mMinimum + double(i) * binWidth;
            break;
        }
        cumulative += mHistogram[i];
    }
    cumulative = 0.0;
    for (size_t i = mHistogram.size(); i-- > 0;) {
        if (cumulative + mHistogram[i] > rightCount) {
            high = mMinimum + double(i + 1) * binWidth;
            break;
        }
        cumulative += mHistogram[i];
    }
    if (high < low)
        std::swap(low, high);
}

QRgb TEImageStretchRenderInfo::ColorOf(double value) const
{
    double low = 0.0;
    double high = 0.0;
    GetStretchRange(low, high);
    return ColorIn(value, low, high);
}

QRgb TEImageStretchRenderInfo::ColorIn(double value, double low, double high) const
{
    if (mColors.empty() || std::isnan(value))
        return 0;
    double t = high > low ? (value - low) / (high - low) : (value <= low ? 0.0 : 1.0);
    t = std::clamp(t, 0.0, 1.0);
    const size_t index = size_t(std::lround(t * double(mColors.size() - 1)));
    return mColors[index].GetColor();
}

void TEImageStretchRenderInfo::save(QJsonObject& json) const
{
    json[QStringLiteral("algoType")] = mAlgoType;
    json[QStringLiteral("minimum")] = mMinimum;
    json[QStringLiteral("maximum")] = mMaximum;
    json[QStringLiteral("standardValue")] = mStandardValue;
    json[QStringLiteral("mean")] = mMeanValue;
    json[QStringLiteral("percentClip")] = mPercentClip;
    json[QStringLiteral("leftClip")] = mLeftClip;
    json[QStringLiteral("rightClip")] = mRightClip;
    QJsonArray colors;
    for (const TEColor& color : mColors)
        colors.append(TEFileFunc::SaveColor(color));
    json[QStringLiteral("colors")] = colors;
    QJsonArray histogram;
    for (double count : mHistogram)
        histogram.append(count);
    json[QStringLiteral("histogram")] = histogram;
}

bool TEImageStretchRenderInfo::open(const QJsonObject& json, TEString* error)
{
    mAlgoType = json.value(QStringLiteral("algoType")).toInt(MinMax);
    mMinimum = json.value(QStringLiteral("minimum")).toDouble(0.0);
    mMaximum = json.value(QStringLiteral("maximum")).toDouble(255.0);
    mStandardValue = json.value(QStringLiteral("standardValue")).toDouble(2.5);
    mMeanValue = json.value(QStringLiteral("mean")).toDouble(0.0);
    mPercentClip = json.value(QStringLiteral("percentClip")).toBool(false);
    mLeftClip = json.value(QStringLiteral("leftClip")).toDouble(0.5);
    mRightClip = json.value(QStringLiteral("rightClip")).toDouble(0.5);
    mColors.clear();
    if (!TEFileFunc::IsListOrMissing(json, "colors", error))
        return false;
    for (const QJsonValue& color : json.value(QStringLiteral("colors")).toArray())
        mColors.push_back(TEFileFunc::OpenColor(color));
    mHistogram.clear();
    if (!TEFileFunc::IsListOrMissing(json, "histogram", error))
        return false;
    for (const QJsonValue& count : json.value(QStringLiteral("histogram")).toArray())
        mHistogram.push_back(count.toDouble());
    return true;
}

} // namespace TZObjects
