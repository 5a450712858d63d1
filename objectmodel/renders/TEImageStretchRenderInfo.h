#pragma once

#include "data/TERasterProps.h"
#include "renders/TEImageRenderInfo.h"

#include <vector>

namespace TZObjects {

// Linear stretch of one band through a list of colours: band values from the
// low to the high end of the stretch run through the colours evenly. The
// ends are the band's minimum and maximum (algorithm 1), the mean minus and
// plus the standard value (algorithm 2), or with percent clip on, the values
// below which the left percentage and above which the right percentage of
// the pixels lie.
class TZOBJECTS_EXPORT TEImageStretchRenderInfo : public TEImageRenderInfo
{
public:
    enum AlgoType { MinMax = 1, StandardDeviation = 2 };

    TEImageStretchRenderInfo();

    TEString GetType() const override { return L"Stretch"; }
    int GetRenderMode() const override { return 1; }
    TERefPtr<TEImageRenderInfo> Clone() const override;
    // Reads the band's minimum, maximum, mean and standard deviation and its
    // histogram (for percent clip), exactly, and sets a grey ramp of 256
    // colours (a min-max stretch).
    bool AddFromRaster(TERasterProps* raster, int band, TEString* error = nullptr) override;
    // The same, with statistics and histogram as accurate as asked.
    bool AddFromRaster(TERasterProps* raster, int band, TERasterProps::Accuracy accuracy, TEString* error = nullptr);
    int GetItemCount() const override { return int(mColors.size()); }
    QRgb ColorOf(double value) const override;

    int GetAlgoType() const { return mAlgoType; }
    void SetAlgoType(int type) { mAlgoType = type; }
    void GetMinMaxVal(double& minimum, double& maximum) const;
    void SetMinMaxVal(double minimum, double maximum);
    double GetStandardValue() const { return mStandardValue; }
    void SetStandardValue(double value) { mStandardValue = value; }
    double GetMeanValue() const { return mMeanValue; }
    void SetMeanValue(double value) { mMeanValue = value; }

    bool IsPercentClip() const { return mPercentClip; }
    void SetPercentClip(bool clip) { mPercentClip = clip; }
    double GetLeftClipValue() const { return mLeftClip; }
    void SetLeftClipValue(double percent) { mLeftClip = percent; }
    double GetRightClipValue() const { return mRightClip; }
    void SetRightClipValue(double percent) { mRightClip = percent; }

    // Number of colours; new ones are black.
    void SetItemCount(int count);
    TEColor GetItemColr(int index) const;
    void SetItemColr(int index, const TEColor& color);

    // The band values mapped to the first and the last colour.
    void GetStretchRange(double& low, double& high) const;
    // Colour of a value for a stretch range worked out beforehand (what
    // ColorOf does, without working the range out again for every pixel).
    QRgb ColorIn(double value, double low, double high) const;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    int mAlgoType = MinMax;
    double mMinimum = 0.0;
    double mMaximum = 255.0;
    double mStandardValue = 2.5;
    double mMeanValue = 0.0;
    bool mPercentClip = false;
    double mLeftClip = 0.5;
    double mRightClip = 0.5;
    std::vector<TEColor> mColors;
    // Pixel counts over [minimum, maximum] in equal bins, for percent clip.
    std::vector<double> mHistogram;
};

} // namespace TZObjects
