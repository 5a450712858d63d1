#include "renders/TEMultiBandImageRender.h"

#include "renders/TEFileFunc.h"

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
    if (!TEFileFunc::OpenInt(json, "mode", 5, 5, 8, mMode, error) || (mMode != 5 && mMode != 8)) {
        if (error && error->IsEmpty())
            *error = TEString(QStringLiteral("\"mode\" must be 5 or 8, not %1").arg(mMode));
        return false;
    }
    if (!TEFileFunc::OpenInt(json, "redBand", 1, 1, 65535, mRedBand, error)
        || !TEFileFunc::OpenInt(json, "greenBand", 2, 1, 65535, mGreenBand, error)
        || !TEFileFunc::OpenInt(json, "blueBand", 3, 1, 65535, mBlueBand, error)
        || !TEFileFunc::OpenInt(json, "alphaBand", 4, 1, 65535, mAlphaBand, error)
        || !TEFileFunc::OpenInt(json, "stretchBand", 1, 1, 65535, mStretchBand, error)
        || !TEFileFunc::OpenInt(json, "stretchType", PercentClip, 0, 1, mStretchType, error))
        return false;
    mUseRed = json.value(QStringLiteral("useRed")).toBool(true);
    mUseGreen = json.value(QStringLiteral("useGreen")).toBool(true);
    mUseBlue = json.value(QStringLiteral("useBlue")).toBool(true);
    mUseAlpha = json.value(QStringLiteral("useAlpha")).toBool(false);
    mStretchMin = json.value(QStringLiteral("stretchMin")).toDouble(0.5);
    mStretchMax = json.value(QStringLiteral("stretchMax")).toDouble(0.5);
    return true;
}

bool TEMultiBandImageRender::CheckBands(int bandCount, TEString* error) const
{
    const std::pair<const char*, int> used[] = {
        {"stretch", mMode == 8 ? mStretchBand : 0},
        {"red", mMode == 5 && mUseRed ? mRedBand : 0},
        {"green", mMode == 5 && mUseGreen ? mGreenBand : 0},
        {"blue", mMode == 5 && mUseBlue ? mBlueBand : 0},
        {"alpha", mMode == 5 && mUseAlpha ? mAlphaBand : 0},
    };
    for (const auto& [role, band] : used) {
        if (band != 0 && (band < 1 || band > bandCount)) {
            if (error)
                *error = TEString(QStringLiteral("the %1 band %2 does not exist (the raster has %3)")
                                      .arg(QLatin1String(role)).arg(band).arg(bandCount));
            return false;
        }
    }
    return true;
}

} // namespace TZObjects
