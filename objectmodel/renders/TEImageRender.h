#pragma once

#include "renders/TERender.h"
#include "core/TEColor.h"

#include <QRgb>

namespace TZObjects {

// Base of the raster renders: the image render mode (1 stretch, 2 colour
// map, 3 unique, 4 class, 5 RGB composite, 8 multi-band stretch), the colour
// no-data pixels are shown with (when its type is not 0) and the background
// colour.
class TZOBJECTS_EXPORT TEImageRender : public TERender
{
public:
    virtual int getImageRenderMODE() const = 0;

    // 0: no-data pixels are transparent; otherwise drawn in the no-data colour.
    int GetNodataColorType() const { return mNodataColorType; }
    void SetNodataColorType(int type) { mNodataColorType = type; }
    TEColor GetNodataColor() const { return mNodataColor; }
    void SetNodataColor(const TEColor& color) { mNodataColor = color; }
    TEColor GetBackgroundColor() const { return mBackgroundColor; }
    void SetBackgroundColor(const TEColor& color) { mBackgroundColor = color; }

    // What a no-data pixel is drawn with.
    QRgb NodataRgb() const;

    // Whether every band the render reads is one of a raster's 1..bandCount;
    // if not, the error names the band.
    virtual bool CheckBands(int bandCount, TEString* error = nullptr) const { return true; }

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    int mNodataColorType = 0;
    TEColor mNodataColor = TEColor(0, 0, 0);
    TEColor mBackgroundColor = TEColor(255, 255, 255);
};

} // namespace TZObjects
