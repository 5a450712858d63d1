#pragma once

#include "renders/TEFeatureRender.h"

namespace TZObjects {

// Draws every feature with one style.
class TZOBJECTS_EXPORT TESingleSymbolRender : public TEFeatureRender
{
public:
    explicit TESingleSymbolRender(const TERefPtr<TEStyle>& style = nullptr);
    TESingleSymbolRender(const TESingleSymbolRender& other);

    TEString GetType() const override { return L"SingleSymbol"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;
    bool StyleFollowsUsedAttributes() const override { return true; }

    TERefPtr<TEStyle> GetStyle() const { return mStyle; }
    void SetStyle(const TERefPtr<TEStyle>& style) { mStyle = style; }
    TEString GetStyleLabel() const { return mStyleLabel; }
    void SetStyleLabel(const TEString& label) { mStyleLabel = label; }
    // Name of the style database the style was chosen from (empty for a
    // style made in memory).
    TEString GetSymbolDB() const { return mSymbolDB; }
    void SetSymbolDB(const TEString& name) { mSymbolDB = name; }
    bool IsMemorySymbol() const { return mMemorySymbol; }
    void SetIsMemorySymbol(bool memory) { mMemorySymbol = memory; }

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;

private:
    TERefPtr<TEStyle> mStyle;
    TEString mStyleLabel;
    TEString mSymbolDB;
    bool mMemorySymbol = false;
};

} // namespace TZObjects
