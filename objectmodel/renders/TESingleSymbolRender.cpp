#include "renders/TESingleSymbolRender.h"

#include "renders/TEFileFunc.h"

namespace TZObjects {

TESingleSymbolRender::TESingleSymbolRender(const TERefPtr<TEStyle>& style)
    : mStyle(style)
{
}

TESingleSymbolRender::TESingleSymbolRender(const TESingleSymbolRender& other)
    : TEFeatureRender(other)
    , mStyle(CloneStyle(other.mStyle))
    , mStyleLabel(other.mStyleLabel)
    , mSymbolDB(other.mSymbolDB)
    , mMemorySymbol(other.mMemorySymbol)
{
}

TERefPtr<TEFeatureRender> TESingleSymbolRender::Clone() const
{
    return MakeRef<TESingleSymbolRender>(*this);
}

TERefPtr<TEStyle> TESingleSymbolRender::GetStyleByFeature(TEFeature*, const double&, bool) const
{
    return mStyle;
}

void TESingleSymbolRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("style")] = TEFileFunc::SaveStyle(mStyle.get());
    json[QStringLiteral("label")] = mStyleLabel.toQString();
    json[QStringLiteral("symbolDB")] = mSymbolDB.toQString();
    json[QStringLiteral("memorySymbol")] = mMemorySymbol;
}

bool TESingleSymbolRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    mStyleLabel = TEString(json.value(QStringLiteral("label")).toString());
    mSymbolDB = TEString(json.value(QStringLiteral("symbolDB")).toString());
    mMemorySymbol = json.value(QStringLiteral("memorySymbol")).toBool(false);
    return TEFileFunc::OpenStyle(json.value(QStringLiteral("style")), mStyle, error);
}

void TESingleSymbolRender::VisitStyles(const StyleVisitor& visit)
{
    visit(mStyle);
}

} // namespace TZObjects
