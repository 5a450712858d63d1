#pragma once

#include "renders/TEDiagramRender.h"
#include "renders/TEGraduatedSymbolsDiagramItem.h"

#include <vector>

namespace TZObjects {

// One symbol per feature, over the background render, whose size grows with
// the class of a numeric field. Classes are tried in order; the first that
// holds the value gives the symbol.
class TZOBJECTS_EXPORT TEGraduatedSymbolsDiagramRender : public TEDiagramRender
{
public:
    explicit TEGraduatedSymbolsDiagramRender(const TEString& expression = TEString());
    TEGraduatedSymbolsDiagramRender(const TEGraduatedSymbolsDiagramRender& other);

    TEString GetType() const override { return L"GradingSymbolDiagram"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    std::vector<TEString> GetUsedAttributes() const override;

    TEString expression() const { return mExpression; }
    void setExpression(const TEString& expression) { mExpression = expression; }
    const std::vector<TEGraduatedSymbolsDiagramItem>& items() const { return mItems; }
    void setItems(const std::vector<TEGraduatedSymbolsDiagramItem>& items) { mItems = items; }
    int level() const { return mLevel; }
    void setLevel(int level) { mLevel = level; }

    // The symbol drawn for the feature over the background, or empty when
    // its value is null, not a number or in no class.
    TERefPtr<TEStyle> GetSymbolByFeature(TEFeature* feature) const;

    // The feature's class symbol drawn as a point at the anchor (its size
    // in the symbol's own units); the label gives the field's value.
    bool DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                     const TEDrawContext& context) const override;

    void save(QJsonObject& json) const override;
    bool open(const QJsonObject& json, TEString* error = nullptr) override;

protected:
    void VisitStyles(const StyleVisitor& visit) override;

private:
    TEString mExpression;
    std::vector<TEGraduatedSymbolsDiagramItem> mItems;
    int mLevel = 0;
};

} // namespace TZObjects
