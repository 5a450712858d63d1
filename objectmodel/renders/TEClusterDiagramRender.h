#pragma once

#include "renders/TEDiagramRender.h"
#include "symbology/TEColorRamp.h"

namespace TZObjects {

// Points gathered into clusters, each drawn as a marker coloured through the
// ramp by the number of points it holds.
class TZOBJECTS_EXPORT TEClusterDiagramRender : public TEDiagramRender
{
public:
    TEClusterDiagramRender() = default;
    TEClusterDiagramRender(const TEClusterDiagramRender& other);

    TEString GetType() const override { return L"ClusterDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;

    // Keeps a copy of the ramp (the caller's ramp stays its own).
    void setColorRamp(TEColorRamp* ramp);
    TERefPtr<TEColorRamp> getColorRamp() const { return mColorRamp; }
    double getMakerSize() const { return mMakerSize; }
    void setMakerSize(double size) { mMakerSize = size; }

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

private:
    TERefPtr<TEColorRamp> mColorRamp;
    double mMakerSize = 4.0;
};

} // namespace TZObjects
