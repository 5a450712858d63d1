#pragma once

#include "renders/TEDiagramRender.h"
#include "core/TEColor.h"

namespace TZObjects {

// Dots scattered inside each polygon, one dot per "number per dot" units of
// the field's value. The timestamp seeds the dot placement.
class TZOBJECTS_EXPORT TEDotDensityDiagramRender : public TEDiagramRender
{
public:
    TEString GetType() const override { return L"DotDensityDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    std::vector<TEString> GetUsedAttributes() const override;

    TEColor getDotColor() const { return mDotColor; }
    void setDotColor(const TEColor& color) { mDotColor = color; }
    unsigned int getTimestamp() const { return mTimestamp; }
    void setTimestamp(unsigned int timestamp) { mTimestamp = timestamp; }
    TEString getFieldName() const { return mFieldName; }
    void setFieldName(const TEString& field) { mFieldName = field; }
    int getNumberPerDot() const { return mNumberPerDot; }
    void setNumberPerDot(int number) { mNumberPerDot = number; }

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    TEColor mDotColor = TEColor(0, 0, 0);
    unsigned int mTimestamp = 0;
    TEString mFieldName;
    int mNumberPerDot = 1;
};

} // namespace TZObjects
