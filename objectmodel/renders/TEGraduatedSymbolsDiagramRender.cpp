#include "renders/TEGraduatedSymbolsDiagramRender.h"

#include "data/TEFeature.h"
#include "renders/TEDrawContext.h"
#include "renders/TEFileFunc.h"
#include "symbology/TEStylePoint.h"

#include <QJsonArray>

#include <cmath>

namespace TZObjects {

TEGraduatedSymbolsDiagramRender::TEGraduatedSymbolsDiagramRender(const TEString& expression)
    : mExpression(expression)
{
}

TEGraduatedSymbolsDiagramRender::TEGraduatedSymbolsDiagramRender(const TEGraduatedSymbolsDiagramRender& other)
    : TEDiagramRender(other)
    , mExpression(other.mExpression)
    , mItems(other.mItems)
    , mLevel(other.mLevel)
{
    for (TEGraduatedSymbolsDiagramItem& item : mItems)
        item.setStyle(CloneStyle(item.style()));
}

TERefPtr<TEFeatureRender> TEGraduatedSymbolsDiagramRender::Clone() const
{
    return MakeRef<TEGraduatedSymbolsDiagramRender>(*this);
}

std::vector<TEString> TEGraduatedSymbolsDiagramRender::GetUsedAttributes() const
{
    std::vector<TEString> fields = TEDiagramRender::GetUsedAttributes();
    AddUsedAttribute(fields, mExpression);
    return fields;
}

TERefPtr<TEStyle> TEGraduatedSymbolsDiagramRender::GetSymbolByFeature(TEFeature* feature) const
{
    if (!feature)
        return {};
    const TEVariant value = feature->GetValue(mExpression);
    if (value.IsNull())
        return {};
    bool ok = true;
    const double number = value.IsNumeric() ? value.GetDouble() : value.ToString().ToDouble(&ok);
    if (!ok || std::isnan(number))
        return {};
    for (const TEGraduatedSymbolsDiagramItem& item : mItems) {
        if (item.Contains(number))
            return item.style();
    }
    return {};
}

bool TEGraduatedSymbolsDiagramRender::DrawDiagram(QPainter* painter, TEFeature* feature, const QPointF& anchor,
                                                   const TEDrawContext& context) const
{
    const TERefPtr<TEStyle> symbol = GetSymbolByFeature(feature);
    if (!painter || !symbol || !symbol->DrawPoint(painter, anchor))
        return false;
    if (IsShowLabel()) {
        // Beside the symbol: half its width plus a small gap to the right.
        double half = 0.0;
        if (const auto* point = dynamic_cast<const TEStylePoint*>(symbol.get()))
            half = context.ToPixels(point->GetWidth(), point->GetUnits()) / 2.0;
        const TEVariant value = feature->GetValue(mExpression);
        DrawLabel(painter, value.ToString().toQString(), anchor + QPointF(half + 2.0, 0.0),
                  Qt::AlignLeft | Qt::AlignVCenter, context);
    }
    return true;
}

void TEGraduatedSymbolsDiagramRender::save(QJsonObject& json) const
{
    TEDiagramRender::save(json);
    json[QStringLiteral("expression")] = mExpression.toQString();
    json[QStringLiteral("level")] = mLevel;
    QJsonArray classes;
    for (const TEGraduatedSymbolsDiagramItem& item : mItems) {
        QJsonObject itemJson;
        itemJson[QStringLiteral("lower")] = item.lower();
        itemJson[QStringLiteral("upper")] = item.upper();
        itemJson[QStringLiteral("style")] = TEFileFunc::SaveStyle(item.style().get());
        classes.append(itemJson);
    }
    json[QStringLiteral("classes")] = classes;
}

bool TEGraduatedSymbolsDiagramRender::open(const QJsonObject& json, TEString* error)
{
    mExpression = TEString(json.value(QStringLiteral("expression")).toString());
    mLevel = json.value(QStringLiteral("level")).toInt(0);
    mItems.clear();
    bool ok = true;
    if (!TEFileFunc::IsListOrMissing(json, "classes", error))
        return false;
    for (const QJsonValue& value : json.value(QStringLiteral("classes")).toArray()) {
        const QJsonObject itemJson = value.toObject();
        TERefPtr<TEStyle> style;
        ok = TEFileFunc::OpenStyle(itemJson.value(QStringLiteral("style")), style, error) && ok;
        mItems.emplace_back(style, itemJson.value(QStringLiteral("lower")).toDouble(),
                            itemJson.value(QStringLiteral("upper")).toDouble());
    }
    return TEDiagramRender::open(json, error) && ok;
}

void TEGraduatedSymbolsDiagramRender::VisitStyles(const StyleVisitor& visit)
{
    TEDiagramRender::VisitStyles(visit);
    for (TEGraduatedSymbolsDiagramItem& item : mItems) {
        TERefPtr<TEStyle> style = item.style();
        visit(style);
        item.setStyle(style);
    }
}

} // namespace TZObjects
