#include "renders/TEFourColorTheoremRender.h"

#include "data/TEFeature.h"
#include "renders/TEFileFunc.h"

#include <QJsonArray>

namespace TZObjects {

TEFourColorTheoremRender::TEFourColorTheoremRender(const TEFourColorTheoremRender& other)
    : TEFeatureRender(other)
    , mColorMap(other.mColorMap)
    , mDefaultStyle(CloneStyle(other.mDefaultStyle))
{
}

TERefPtr<TEFeatureRender> TEFourColorTheoremRender::Clone() const
{
    return MakeRef<TEFourColorTheoremRender>(*this);
}

TERefPtr<TEStyle> TEFourColorTheoremRender::GetStyleByFeature(TEFeature* feature, const double&, bool) const
{
    if (!feature || !mDefaultStyle)
        return {};
    const auto found = mColorMap.find(feature->GetId());
    if (found == mColorMap.end())
        return mDefaultStyle;
    const uint32_t key = found->second.GetColor();
    std::lock_guard<std::mutex> lock(mRecolouredMutex);
    TERefPtr<TEStyle>& recoloured = mRecoloured[key];
    if (!recoloured) {
        recoloured = mDefaultStyle->Clone();
        recoloured->SetColor(found->second);
    }
    return recoloured;
}

void TEFourColorTheoremRender::setColorMap(const std::map<int, TEColor>& colorMap)
{
    mColorMap = colorMap;
}

void TEFourColorTheoremRender::setDefaultStyle(const TERefPtr<TEStyle>& style)
{
    mDefaultStyle = style;
    DropRecoloured();
}

void TEFourColorTheoremRender::DropRecoloured()
{
    std::lock_guard<std::mutex> lock(mRecolouredMutex);
    mRecoloured.clear();
}

void TEFourColorTheoremRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("defaultStyle")] = TEFileFunc::SaveStyle(mDefaultStyle.get());
    QJsonArray colors;
    for (const auto& entry : mColorMap) {
        QJsonObject pair;
        pair[QStringLiteral("id")] = entry.first;
        pair[QStringLiteral("color")] = TEFileFunc::SaveColor(entry.second);
        colors.append(pair);
    }
    json[QStringLiteral("colorMap")] = colors;
}

bool TEFourColorTheoremRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    mColorMap.clear();
    if (!TEFileFunc::IsListOrMissing(json, "colorMap", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("colorMap")).toArray()) {
        const QJsonObject pair = value.toObject();
        mColorMap[pair.value(QStringLiteral("id")).toInt()] = TEFileFunc::OpenColor(pair.value(QStringLiteral("color")));
    }
    TERefPtr<TEStyle> style;
    const bool ok = TEFileFunc::OpenStyle(json.value(QStringLiteral("defaultStyle")), style, error);
    setDefaultStyle(style);
    return ok;
}

void TEFourColorTheoremRender::VisitStyles(const StyleVisitor& visit)
{
    TERefPtr<TEStyle> style = mDefaultStyle;
    visit(style);
    if (style != mDefaultStyle)
        setDefaultStyle(style);
}

} // namespace TZObjects
