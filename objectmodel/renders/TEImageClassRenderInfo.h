#pragma once

#include "renders/TEImageRenderInfo.h"

#include <vector>

namespace TZObjects {

// Band values in classes: each class a range (both ends included) and a
// colour; a value takes the colour of the first class that holds it.
class TZOBJECTS_EXPORT TEImageClassRenderInfo : public TEImageRenderInfo
{
public:
    // Classes AddFromRaster makes.
    static const int DefaultClassCount = 4;

    TEString GetType() const override { return L"Class"; }
    int GetRenderMode() const override { return 4; }
    TERefPtr<TEImageRenderInfo> Clone() const override;
    // Equal-interval classes between the band's minimum and maximum,
    // coloured from blue to red.
    bool AddFromRaster(TERasterProps* raster, int band, TEString* error = nullptr) override;
    int GetItemCount() const override { return int(mClasses.size()); }
    QRgb ColorOf(double value) const override;

    // Number of classes; new ones are 0,0 and black.
    void SetClassCount(int count);
    bool GetClassItemInfo(int index, double& low, double& high, TEColor& color) const;
    void SetClassItemInfo(int index, double low, double high, TEColor color);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    struct ClassItem
    {
        double low = 0.0;
        double high = 0.0;
        TEColor color;
    };
    std::vector<ClassItem> mClasses;
};

} // namespace TZObjects
