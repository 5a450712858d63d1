#pragma once

#include "renders/TECategorizedSymbolRender.h"

namespace TZObjects {

// A categorized render over several fields: the expression is the field
// names joined by ",", and a feature's category value is the texts of those
// fields' values joined by "," in the same order.
class TZOBJECTS_EXPORT TECategorizedByManyFieldsSymbolRender : public TECategorizedSymbolRender
{
public:
    explicit TECategorizedByManyFieldsSymbolRender(const TEString& fieldNames = TEString());

    TEString GetType() const override { return L"UniqueValuesManyFields"; }
    TERefPtr<TEFeatureRender> Clone() const override;
    std::vector<TEString> GetUsedAttributes() const override;

    // The field names of the expression, in order.
    const std::vector<TEString>& GetFieldNames() const { return mFieldNames; }

protected:
    TEString FeatureKey(TEFeature* feature) const override;
    void ExpressionChanged() override;

private:
    std::vector<TEString> mFieldNames;
};

} // namespace TZObjects
