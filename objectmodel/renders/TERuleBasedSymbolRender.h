#pragma once

#include "renders/TEFeatureRender.h"
#include "renders/TEScaleRange.h"

#include <memory>
#include <mutex>
#include <vector>

namespace TZObjects {

class TEWhereClause;

// Draws each feature with the styles of every rule whose scale range holds
// the map scale and whose filter the feature passes, one over the other in
// rule order. Filters are OGR SQL where-clauses ("pop > 1000 AND kind =
// 'city'"), compiled once per feature definition and evaluated on the
// feature's OGR record; a rule's scale range is checked before its filter.
// A filter that does not compile matches nothing (the other rules still
// draw) and is reported by GetLastError().
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
        // per feature definition and kept; a blank filter passes every
        // feature without being compiled.
        bool Matches(TEFeature* feature) const;
        // The compile error of the last evaluation, empty when none.
        TEString GetError() const;

        // Field names the expression reads.
        std::vector<TEString> UsedFields() const;
        // Whether the expression reads the geometry (OGR_GEOMETRY,
        // OGR_GEOM_WKT, OGR_GEOM_AREA).
        bool NeedsGeometry() const;
        // Whether the filter reads field values alone (no id, geometry or
        // other special field).
        bool ReadsFieldsOnly() const;

        void save(QJsonObject& json) const;
        bool open(const QJsonObject& json, TEString* error = nullptr);

    private:
        // The render reads the style and scale range of each rule for every
        // feature, without taking references.
        friend class TERuleBasedSymbolRender;

        void DropCompiled() const;

        TEString mExpression;
        bool mMatchesAll = true;
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

    TERuleBasedSymbolRender();
    TERuleBasedSymbolRender(const TERuleBasedSymbolRender& other);
    ~TERuleBasedSymbolRender() override;

    TEString GetType() const override { return L"Rule-based"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    // The style of the one matching rule, or, when several match, one
    // symbol made of their styles in rule order (kept for the next feature
    // that matches the same rules).
    TERefPtr<TEStyle> GetStyleByFeature(TEFeature* feature, const double& scale,
                                        bool ignoreScaleRange = false) const override;
    // Names the rules, by position and label, whose filters did not compile.
    TEString GetLastError() const override;
    std::vector<TEString> GetUsedAttributes() const override;
    bool FilterNeedsGeometry() const override;
    // True unless a filter reads the geometry, the id or another of OGR's
    // special fields.
    bool StyleFollowsUsedAttributes() const override;

    void AddRule(const TERefPtr<Rule>& rule);
    int RuleCount() const { return int(mRules.size()); }
    // The rule at index, or empty when out of range.
    TERefPtr<Rule> GetRule(int index) const;
    void RemoveRule(int index);
    void RemoveAllRules();

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;

private:
    struct Composite;
    TERefPtr<TEStyle> CompositeOf(const int* matched, int count) const;
    void DropComposites();

    std::vector<TERefPtr<Rule>> mRules;
    // Symbols made for the combinations of rules met so far.
    mutable std::mutex mCompositeMutex;
    mutable std::vector<Composite> mComposites;
};

} // namespace TZObjects
