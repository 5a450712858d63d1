#include "renders/TEDiagramRender.h"

#include "data/TEFeature.h"
#include "renders/TEFileFunc.h"

#include <QJsonArray>

#include <cmath>

namespace TZObjects {

TEDiagramRender::TEDiagramRender(const TEDiagramRender& other)
    : TEFeatureRender(other)
    , mBackground(other.mBackground ? other.mBackground->Clone() : TERefPtr<TEFeatureRender>())
    , mShowLabel(other.mShowLabel)
{
    for (const TERefPtr<TEDiagramRenderItem>& item : other.mItems)
        mItems.push_back(MakeRef<TEDiagramRenderItem>(item->GetField(), item->GetCaption(),
                                                      CloneStyle(item->GetStyle())));
}

TERefPtr<TEStyle> TEDiagramRender::GetStyleByFeature(TEFeature* feature, const double& scale,
                                                     bool ignoreScaleRange) const
{
    return mBackground ? mBackground->GetStyleByFeature(feature, scale, ignoreScaleRange) : TERefPtr<TEStyle>();
}

std::vector<TEString> TEDiagramRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = TEFeatureRender::GetUsedAttributes();
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems)
        AddUsedAttribute(fields, item->GetField());
    if (mBackground) {
        for (const TEString& field : mBackground->GetUsedAttributes())
            AddUsedAttribute(fields, field);
    }
    return fields;
}

bool TEDiagramRender::FilterNeedsGeometry() const
{
    return mBackground && mBackground->FilterNeedsGeometry();
}

bool TEDiagramRender::DrawDiagram(QPainter*, TEFeature*, const QPointF&) const
{
    return false;
}

std::vector<double> TEDiagramRender::ItemValues(TEFeature* feature) const
{
    std::vector<double> values;
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems) {
        const double value = feature ? feature->GetValue(item->GetField()).GetDouble() : 0.0;
        values.push_back(std::isfinite(value) && value > 0.0 ? value : 0.0);
    }
    return values;
}

void TEDiagramRender::AddItem(const TEString& field, const TEString& caption, const TERefPtr<TEStyle>& style)
{
    mItems.push_back(MakeRef<TEDiagramRenderItem>(field, caption, style));
}

void TEDiagramRender::SetBackgroundRender(TEFeatureRender* render)
{
    for (TEFeatureRender* link = render; link;) {
        if (link == this)
            return;
        auto* diagram = dynamic_cast<TEDiagramRender*>(link);
        link = diagram ? diagram->mBackground.get() : nullptr;
    }
    mBackground = render;
}

void TEDiagramRender::save(QJsonObject& json) const
{
    TEFeatureRender::save(json);
    json[QStringLiteral("showLabel")] = mShowLabel;
    QJsonArray items;
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems) {
        QJsonObject itemJson;
        itemJson[QStringLiteral("field")] = item->GetField().toQString();
        itemJson[QStringLiteral("caption")] = item->GetCaption().toQString();
        itemJson[QStringLiteral("style")] = TEFileFunc::SaveStyle(item->GetStyle().get());
        items.append(itemJson);
    }
    json[QStringLiteral("items")] = items;
    if (mBackground)
        json[QStringLiteral("background")] = TEFileFunc::SaveRender(mBackground.get());
}

bool TEDiagramRender::open(const QJsonObject& json, TEString* error)
{
    if (!TEFeatureRender::open(json, error))
        return false;
    mShowLabel = json.value(QStringLiteral("showLabel")).toBool(false);
    mItems.clear();
    bool ok = true;
    for (const QJsonValue& value : json.value(QStringLiteral("items")).toArray()) {
        const QJsonObject itemJson = value.toObject();
        TERefPtr<TEStyle> style;
        ok = TEFileFunc::OpenStyle(itemJson.value(QStringLiteral("style")), style, error) && ok;
        AddItem(TEString(itemJson.value(QStringLiteral("field")).toString()),
                TEString(itemJson.value(QStringLiteral("caption")).toString()), style);
    }
    mBackground.reset();
    const QJsonValue background = json.value(QStringLiteral("background"));
    if (background.isObject()) {
        mBackground = TEFileFunc::OpenFeatureRender(background.toObject(), error);
        ok = bool(mBackground) && ok;
    }
    return ok;
}

void TEDiagramRender::VisitStyles(const StyleVisitor& visit)
{
    for (const TERefPtr<TEDiagramRenderItem>& item : mItems) {
        TERefPtr<TEStyle> style = item->GetStyle();
        visit(style);
        item->SetStyle(style);
    }
}

} // namespace TZObjects
