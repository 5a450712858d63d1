#pragma once

#include "renders/TEImageRenderInfo.h"

#include <vector>

namespace TZObjects {

// A band's colour table: pixel value i takes colour i.
class TZOBJECTS_EXPORT TEImageColormapRenderInfo : public TEImageRenderInfo
{
public:
    TEString GetType() const override { return L"Colormap"; }
    int GetRenderMode() const override { return 2; }
    TERefPtr<TEImageRenderInfo> Clone() const override;
    // Copies the band's colour table; fails when the band has none.
    bool AddFromRaster(TERasterProps* raster, int band, TEString* error = nullptr) override;
    int GetItemCount() const override { return int(mColors.size()); }
    QRgb ColorOf(double value) const override;

    bool GetItemColr(int index, TEColor* color) const;
    // Sets entry index, growing the table (with transparent entries) as needed.
    void SetRenderColorTable(int index, TEColor color);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    std::vector<TEColor> mColors;
};

} // namespace TZObjects
