#include "renders/TEMatchToSymbolsRender.h"

#include "symbology/TEStyleSystem.h"

namespace TZObjects {

TERefPtr<TEFeatureRender> TEMatchToSymbolsRender::Clone() const
{
    return MakeRef<TEMatchToSymbolsRender>(*this);
}

int TEMatchToSymbolsRender::ResolveStylesFromSymbolDB(TEStyle::StyleType styleType)
{
    TEStyleDB* db = TEStyleSystem::GetInstance()->FindStyleDB(mSymbolDB);
    if (!db)
        return 0;
    int resolved = 0;
    for (int i = 0; i < GetItemCount(); ++i) {
        TERefPtr<TECategoryRenderItem> item = GetCategoryRenderItem(i);
        if (item->GetStyle())
            continue;
        if (TEStyle* style = db->FindStyle(styleType, item->GetValue())) {
            item->SetStyle(style->Clone());
            ++resolved;
        }
    }
    return resolved;
}

void TEMatchToSymbolsRender::save(QJsonObject& json) const
{
    TECategorizedSymbolRender::save(json);
    json[QStringLiteral("symbolDB")] = mSymbolDB.toQString();
}

bool TEMatchToSymbolsRender::open(const QJsonObject& json, TEString* error)
{
    mSymbolDB = TEString(json.value(QStringLiteral("symbolDB")).toString());
    return TECategorizedSymbolRender::open(json, error);
}

} // namespace TZObjects
