#pragma once

#include "renders/TEImageRenderInfo.h"

#include <unordered_map>
#include <vector>

namespace TZObjects {

// One colour per distinct band value.
class TZOBJECTS_EXPORT TEImageUniqueRenderInfo : public TEImageRenderInfo
{
public:
    // AddFromRaster stops collecting after this many distinct values.
    static const int MaxValueCount = 65536;

    TEString GetType() const override { return L"Unique"; }
    int GetRenderMode() const override { return 3; }
    TERefPtr<TEImageRenderInfo> Clone() const override;
    // The band's distinct values (no-data excluded), ascending, each with a
    // colour of its own.
    bool AddFromRaster(TERasterProps* raster, int band, TEString* error = nullptr) override;
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
};

} // namespace TZObjects
