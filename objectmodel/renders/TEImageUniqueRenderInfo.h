#pragma once

#include "renders/TEImageRenderInfo.h"

#include <unordered_map>
#include <vector>

namespace TZObjects {

// One colour per distinct band value.
class TZOBJECTS_EXPORT TEImageUniqueRenderInfo : public TEImageRenderInfo
{
public:
    // AddFromRaster keeps at most this many distinct values; a band with
    // more is scanned only until the next one is met, and the info is then
    // incomplete.
    static constexpr int MaxValueCount = 65536;

    TEString GetType() const override { return L"Unique"; }
    int GetRenderMode() const override { return 3; }
    TERefPtr<TEImageRenderInfo> Clone() const override;
    // The band's distinct values (no-data and NaN excluded), ascending, each
    // with a colour of its own. The band is read a few blocks at a time in
    // its own data type, so any thread may run it.
    bool AddFromRaster(TERasterProps* raster, int band, TEString* error = nullptr) override;
    // False when the last AddFromRaster stopped at MaxValueCount values
    // before the end of the band.
    bool IsComplete() const { return mComplete; }

    // The distinct values of a band as AddFromRaster collects them,
    // ascending; complete tells whether the whole band was seen.
    static bool CollectValues(TERasterProps* raster, int band, std::vector<double>& values, bool& complete,
                              TEString* error = nullptr);
    int GetItemCount() const override { return int(mItems.size()); }
    QRgb ColorOf(double value) const override;

    void AddValue(double value, const TEColor& color);
    bool GetItemColr(int index, TEColor* color) const;
    bool GetValue(int index, double& value) const;
    void SetColorInfo(int index, int r, int g, int b);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    struct Item
    {
        double value = 0.0;
        TEColor color;
    };
    void Reindex();

    std::vector<Item> mItems;
    std::unordered_map<double, int> mIndexByValue;
    bool mComplete = true;
};

} // namespace TZObjects
