#pragma once

#include "renders/TEImageRender.h"

namespace TZObjects {

// Draws a multi-band raster as an RGB composite (mode 5: three bands feed
// red, green and blue, a fourth may feed alpha, stretched not at all or by a
// percent clip) or by stretching one chosen band (mode 8).
class TZOBJECTS_EXPORT TEMultiBandImageRender : public TEImageRender
{
public:
    enum StretchType { NoStretch = 0, PercentClip = 1 };

    TEString GetType() const override { return L"MultiBandImage"; }
    TERefPtr<TERender> CloneRender() const override;

    int getImageRenderMODE() const override { return mMode; }
    void setImageRenderMODE(int mode) { mMode = mode; }

    int getRedBand() const { return mRedBand; }
    void setRedBand(int band) { mRedBand = band; }
    int getGreenBand() const { return mGreenBand; }
    void setGreenBand(int band) { mGreenBand = band; }
    int getBlueBand() const { return mBlueBand; }
    void setBlueBand(int band) { mBlueBand = band; }
    bool CheckBands(int bandCount, TEString* error = nullptr) const override;
    bool getUseRedBand() const { return mUseRed; }
    void setUseRedBand(bool use) { mUseRed = use; }
    bool getUseGreenBand() const { return mUseGreen; }
    void setUseGreenBand(bool use) { mUseGreen = use; }
    bool getUseBlueBand() const { return mUseBlue; }
    void setUseBlueBand(bool use) { mUseBlue = use; }
    bool getAlphaBandUse() const { return mUseAlpha; }
    void setAlphaBandUse(bool use) { mUseAlpha = use; }
    int getAlphaBandNum() const { return mAlphaBand; }
    void setAlphaBandNum(int band) { mAlphaBand = band; }

    int getStretchType() const { return mStretchType; }
    void setStretchType(int type) { mStretchType = type; }
    // Percentages clipped at the low and the high end by a percent clip.
    double getStretchMin() const { return mStretchMin; }
    void setStretchMin(double percent) { mStretchMin = percent; }
    double getStretchMax() const { return mStretchMax; }
    void setStretchMax(double percent) { mStretchMax = percent; }
    // 1-based band stretched in mode 8.
    int GetStretchBandIndex() const { return mStretchBand; }
    void SetStretchBandIndex(int band) { mStretchBand = band; }

    // Colour of a pixel from its red, green, blue (and alpha) band values:
    // each channel is stretched linearly from low to high onto 0..255 (with
    // no stretch, values are taken as bytes); a channel not in use is 0, and
    // alpha is opaque unless the alpha band is used.
    QRgb ComposeRgb(const double values[4], const double low[4], const double high[4]) const;
    // Grey level of a value stretched from low to high (mode 8).
    static QRgb StretchGrey(double value, double low, double high);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    int mMode = 5;
    int mRedBand = 1;
    int mGreenBand = 2;
    int mBlueBand = 3;
    bool mUseRed = true;
    bool mUseGreen = true;
    bool mUseBlue = true;
    bool mUseAlpha = false;
    int mAlphaBand = 4;
    int mStretchType = PercentClip;
    double mStretchMin = 0.5;
    double mStretchMax = 0.5;
    int mStretchBand = 1;
};

} // namespace TZObjects
