#include "renders/TEMultiBandImageRender.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace TZObjects {

namespace {

int Stretch(double value, double low, double high)
{
    if (std::isnan(value))
        return 0;
    const double t = high > low ? (value - low) / (high - low) : (value <= low ? 0.0 : 1.0);
    return int(std::lround(std::clamp(t, 0.0, 1.0) * 255.0));
}

} // namespace

TERefPtr<TERender> TEMultiBandImageRender::CloneRender() const
{
    return MakeRef<TEMultiBandImageRender>(*this);
}

QRgb TEMultiBandImageRender::ComposeRgb(const double values[4], const double low[4], const double high[4]) const
{
    const bool use[4] = {mUseRed, mUseGreen, mUseBlue, mUseAlpha};
    int channel[4] = {0, 0, 0, 255};
    for (int i = 0; i < 4; ++i) {
        if (!use[i])
            continue;
        channel[i] = mStretchType == NoStretch ? std::clamp(int(std::lround(std::isnan(values[i]) ? 0.0 : values[i])), 0, 255)
                                               : Stretch(values[i], low[i], high[i]);
    }
    return qRgba(channel[0], channel[1], channel[2], channel[3]);
}

QRgb TEMultiBandImageRender::StretchGrey(double value, double low, double high)
{
    const int grey = Stretch(value, low, high);
    return qRgb(grey, grey, grey);
}

void TEMultiBandImageRender::save(QJsonObject& json) const
{
    TEImageRender::save(json);
    json[QStringLiteral("redBand")] = mRedBand;
    json[QStringLiteral("greenBand")] = mGreenBand;
    json[QStringLiteral("blueBand")] = mBlueBand;
    json[QStringLiteral("useRed")] = mUseRed;
    json[QStringLiteral("useGreen")] = mUseGreen;
    json[QStringLiteral("useBlue")] = mUseBlue;
    json[QStringLiteral("useAlpha")] = mUseAlpha;
    json[QStringLiteral("alphaBand")] = mAlphaBand;
    json[QStringLiteral("stretchType")] = mStretchType;
    json[QStringLiteral("stretchMin")] = mStretchMin;
    json[QStringLiteral("stretchMax")] = mStretchMax;
    json[QStringLiteral("stretchBand")] = mStretchBand;
}

bool TEMultiBandImageRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEImageRender::open(json, error))
        return false;
    mMode = json.value(QStringLiteral("mode")).toInt(5);
    mRedBand = json.value(QStringLiteral("redBand")).toInt(1);
    mGreenBand = json.value(QStringLiteral("greenBand")).toInt(2);
    mBlueBand = json.value(QStringLiteral("blueBand")).toInt(3);
    mUseRed = json.value(QStringLiteral("useRed")).toBool(true);
    mUseGreen = json.value(QStringLiteral("useGreen")).toBool(true);
    mUseBlue = json.value(QStringLiteral("useBlue")).toBool(true);
    mUseAlpha = json.value(QStringLiteral("useAlpha")).toBool(false);
    mAlphaBand = json.value(QStringLiteral("alphaBand")).toInt(4);
    mStretchType = json.value(QStringLiteral("stretchType")).toInt(PercentClip);
    mStretchMin = json.value(QStringLiteral("stretchMin")).toDouble(0.5);
    mStretchMax = json.value(QStringLiteral("stretchMax")).toDouble(0.5);
    mStretchBand = json.value(QStringLiteral("stretchBand")).toInt(1);
    return true;
}

} // namespace TZObjects
