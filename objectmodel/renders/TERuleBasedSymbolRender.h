#pragma once

#include "renders/TEFeatureRender.h"
#include "renders/TEScaleRange.h"

#include <memory>
#include <mutex>
#include <vector>

namespace TZObjects {

class TEWhereClause;

// Draws each feature with the style of the first rule, in rule order, whose
// filter the feature passes and whose scale range holds the map scale.
// Filters are OGR SQL where-clauses ("pop > 1000 AND kind = 'city'"),
// evaluated on the feature's OGR record.
class TZOBJECTS_EXPORT TERuleBasedSymbolRender : public TEFeatureRender
{
public:
    // One rule: filter expression, style, label and scale filter. An empty
    // expression matches every feature; one that does not compile matches
    // none and leaves its error in GetError().
    class TZOBJECTS_EXPORT Rule : public TERefBase
    {
    public:
        Rule();
        Rule(const TERefPtr<TEStyle>& style, const TEString& expression = TEString(),
             const TEString& label = TEString());
        Rule(const Rule& other);
        ~Rule() override;
        Rule& operator=(const Rule&) = delete;

        // A deep copy (the style is copied).
        TERefPtr<Rule> Clone() const;

        TEString Expression() const { return mExpression; }
        void SetExpression(const TEString& expression);
        TERefPtr<TEStyle> Style() const { return mStyle; }
        void SetStyle(const TERefPtr<TEStyle>& style) { mStyle = style; }
        TEString Label() const { return mLabel; }
        void SetLabel(const TEString& label) { mLabel = label; }

        bool IsScaleFilter() const { return mScaleRange.IsEnabled(); }
        void SetScaleFilter(bool enabled) { mScaleRange.SetEnabled(enabled); }
        double MinimumScale() const { return mScaleRange.GetMinimum(); }
        void SetMinimumScale(double scale) { mScaleRange.SetMinimum(scale); }
        double MaximumScale() const { return mScaleRange.GetMaximum(); }
        void SetMaximumScale(double scale) { mScaleRange.SetMaximum(scale); }
        TEScaleRange ScaleRange() const { return mScaleRange; }

        // Whether the feature passes the filter. The filter is compiled once
        // per feature layout and kept.
        bool Matches(TEFeature* feature) const;
        // The compile error of the last evaluation, empty when none.
        TEString GetError() const;

        // Field names the expression reads.
        std::vector<TEString> UsedFields() const;
        // Whether the expression reads the geometry (OGR_GEOMETRY,
        // OGR_GEOM_WKT, OGR_GEOM_AREA).
        bool NeedsGeometry() const;

        void save(QJsonObject& json) const;
        bool open(const QJsonObject& json, TEString* error = nullptr);

    private:
        void DropCompiled() const;

        TEString mExpression;
        TERefPtr<TEStyle> mStyle;
        TEString mLabel;
        TEScaleRange mScaleRange;

        // The filter compiled for one feature definition, which is kept
        // referenced so that its address cannot be reused by another.
        mutable std::mutex mCompileMutex;
        mutable void* mCompiledFor = nullptr;
        mutable std::unique_ptr<TEWhereClause> mCompiled;
        mutable TEString mError;
    };

    TERuleBasedSymbolRender() = default;
    TERuleBasedSymbolRender(const TERuleBasedSymbolRender& other);

    TEString GetType() const override { return L"Rule-based"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;
    std::vector<TEString> GetUsedAttributes() const override;
    bool FilterNeedsGeometry() const override;

    void AddRule(const TERefPtr<Rule>& rule);
    int RuleCount() const { return int(mRules.size()); }
    // The rule at index, or empty when out of range.
    TERefPtr<Rule> GetRule(int index) const;
    void RemoveRule(int index);
    void RemoveAllRules() { mRules.clear(); }

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;

private:
    std::vector<TERefPtr<Rule>> mRules;
};

} // namespace TZObjects
