#include "renders/TECategorizedByManyFieldsSymbolRender.h"

#include "data/TEFeature.h"

namespace TZObjects {

TECategorizedByManyFieldsSymbolRender::TECategorizedByManyFieldsSymbolRender(const TEString& fieldNames)
    : TECategorizedSymbolRender(fieldNames)
{
    ExpressionChanged();
}

TERefPtr<TEFeatureRender> TECategorizedByManyFieldsSymbolRender::Clone() const
{
    return MakeRef<TECategorizedByManyFieldsSymbolRender>(*this);
}

void TECategorizedByManyFieldsSymbolRender::ExpressionChanged()
{
    mFieldNames.clear();
    if (GetExpression().IsEmpty())
        return;
    for (const TEString& part : GetExpression().split(L",")) {
        const QString name = part.toQString().trimmed();
        if (!name.isEmpty())
            mFieldNames.emplace_back(name);
    }
}

std::vector<TEString> TECategorizedByManyFieldsSymbolRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = mFieldNames;
    for (const TEString& field : TEFeatureRender::GetUsedAttributes())
        AddUsedAttribute(fields, field);
    return fields;
}

TEString TECategorizedByManyFieldsSymbolRender::FeatureKey(TEFeature* feature) const
{
    TEString key;
    bool first = true;
    for (const TEString& field : mFieldNames) {
        if (!first)
            key += L",";
        key += feature->GetValue(field).ToString();
        first = false;
    }
    return key;
}

} // namespace TZObjects
