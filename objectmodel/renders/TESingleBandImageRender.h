#pragma once

#include "renders/TEImageRender.h"
#include "renders/TEImageRenderInfo.h"

namespace TZObjects {

// Draws one band of a raster through a render info (stretch, class, unique
// values or colour map); setting an info sets the render mode to the info's.
class TZOBJECTS_EXPORT TESingleBandImageRender : public TEImageRender
{
public:
    TESingleBandImageRender() = default;
    explicit TESingleBandImageRender(const TERefPtr<TEImageRenderInfo>& info);
    TESingleBandImageRender(const TESingleBandImageRender& other);

    TEString GetType() const override { return L"SingleBandImage"; }
    TERefPtr<TERender> CloneRender() const override;

    int getImageRenderMODE() const override { return mMode; }
    void setImageRenderMODE(int mode) { mMode = mode; }
    TERefPtr<TEImageRenderInfo> getRenderInfo() const { return mInfo; }
    void setRenderInfo(const TERefPtr<TEImageRenderInfo>& info);
    // 1-based band drawn.
    int GetBandIndex() const { return mBand; }
    bool CheckBands(int bandCount, TEString* error = nullptr) const override;
    void SetBandIndex(int band) { mBand = band; }

    // Colour of a band value through the info (transparent without one).
    QRgb ColorOf(double value) const;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    int mMode = 1;
    int mBand = 1;
    TERefPtr<TEImageRenderInfo> mInfo;
};

} // namespace TZObjects
