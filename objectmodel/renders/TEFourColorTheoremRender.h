#pragma once

#include "renders/TEFeatureRender.h"
#include "core/TEColor.h"

#include <map>
#include <mutex>

namespace TZObjects {

// The four-colour map of a polygon layer: a feature whose id has a colour in
// the colour map is drawn with the default style recoloured to it; any other
// feature with the default style as it is.
class TZOBJECTS_EXPORT TEFourColorTheoremRender : public TEFeatureRender
{
public:
    TEFourColorTheoremRender() = default;
    TEFourColorTheoremRender(const TEFourColorTheoremRender& other);

    TEString GetType() const override { return L"FourColorTheorem"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;

    const std::map<int, TEColor>& getColorMap() const { return mColorMap; }
    void setColorMap(const std::map<int, TEColor>& colorMap);
    TERefPtr<TEStyle> getDefaultStyle() const { return mDefaultStyle; }
    void setDefaultStyle(const TERefPtr<TEStyle>& style);

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;

private:
    void DropRecoloured();

    std::map<int, TEColor> mColorMap;
    TERefPtr<TEStyle> mDefaultStyle;
    // One recoloured copy of the default style per colour, made on first use.
    mutable std::mutex mRecolouredMutex;
    mutable std::map<uint32_t, TERefPtr<TEStyle>> mRecoloured;
};

} // namespace TZObjects
