#include "renders/TECategorizedByManyFieldsSymbolRender.h"

#include "data/TEFeature.h"

#include <algorithm>

namespace TZObjects {

TECategorizedByManyFieldsSymbolRender::TECategorizedByManyFieldsSymbolRender(const TEString& fieldNames)
    : TECategorizedSymbolRender(fieldNames)
{
}

TERefPtr<TEFeatureRender> TECategorizedByManyFieldsSymbolRender::Clone() const
{
    return MakeRef<TECategorizedByManyFieldsSymbolRender>(*this);
}

std::vector<TEString> TECategorizedByManyFieldsSymbolRender::GetFieldNames() const
{
    std::vector<TEString> names;
    if (GetExpression().IsEmpty())
        return names;
    for (const TEString& part : GetExpression().split(L",")) {
        const QString name = part.toQString().trimmed();
        if (!name.isEmpty())
            names.emplace_back(name);
    }
    return names;
}

std::vector<TEString> TECategorizedByManyFieldsSymbolRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = GetFieldNames();
    for (const TEString& field : TEFeatureRender::GetUsedAttributes()) {
        if (std::find(fields.begin(), fields.end(), field) == fields.end())
            fields.push_back(field);
    }
    return fields;
}

TEString TECategorizedByManyFieldsSymbolRender::FeatureKey(TEFeature* feature) const
{
    TEString key;
    bool first = true;
    for (const TEString& field : GetFieldNames()) {
        if (!first)
            key += L",";
        key += feature->GetValue(field).ToString();
        first = false;
    }
    return key;
}

} // namespace TZObjects
