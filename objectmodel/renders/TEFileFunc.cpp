#include "renders/TEFileFunc.h"

#include "renders/TECategorizedByManyFieldsSymbolRender.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TEFourColorTheoremRender.h"
#include "renders/TEGradingSymbolRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TEHistogramDiagramRender.h"
#include "renders/TEMatchToSymbolsRender.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleBandImageRender.h"
#include "renders/TESingleSymbolRender.h"
#include "renders/TEStackDiagramRender.h"
#include "symbology/TEColorRamp.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <cmath>
#include <functional>
#include <utility>

namespace TZObjects {

namespace {

using RenderMaker = std::function<TERender*()>;

const std::vector<std::pair<TEString, RenderMaker>>& Makers()
{
    static const std::vector<std::pair<TEString, RenderMaker>> makers = {
        {L"SingleSymbol", [] { return new TESingleSymbolRender; }},
        {L"UniqueValues", [] { return new TECategorizedSymbolRender; }},
        {L"UniqueValuesManyFields", [] { return new TECategorizedByManyFieldsSymbolRender; }},
        {L"GradingSymbol", [] { return new TEGradingSymbolRender; }},
        {L"GradingSymbolDiagram", [] { return new TEGraduatedSymbolsDiagramRender; }},
        {L"MatchToSymbols", [] { return new TEMatchToSymbolsRender; }},
        {L"Rule-based", [] { return new TERuleBasedSymbolRender; }},
        {L"FourColorTheorem", [] { return new TEFourColorTheoremRender; }},
        {L"Heatmap", [] { return new TEHeatMapperRender; }},
        {L"PieDiagram", [] { return new TEPieDiagramRender; }},
        {L"HistogramDiagram", [] { return new TEHistogramDiagramRender; }},
        {L"StackDiagram", [] { return new TEStackDiagramRender; }},
        {L"DotDensityDiagram", [] { return new TEDotDensityDiagramRender; }},
        {L"ClusterDiagram", [] { return new TEClusterDiagramRender; }},
        {L"SingleBandImage", [] { return new TESingleBandImageRender; }},
        {L"MultiBandImage", [] { return new TEMultiBandImageRender; }},
    };
    return makers;
}

void SetError(TEString* error, const QString& text)
{
    if (error)
        *error = TEString(text);
}

} // namespace

TERefPtr<TERender> TEFileFunc::CreateRender(const TEString& type)
{
    for (const auto& maker : Makers()) {
        if (maker.first == type)
            return TERefPtr<TERender>(maker.second());
    }
    return {};
}

std::vector<TEString> TEFileFunc::RenderTypes()
{
    std::vector<TEString> types;
    for (const auto& maker : Makers())
        types.push_back(maker.first);
    return types;
}

QJsonObject TEFileFunc::SaveRender(const TERender* render)
{
    QJsonObject json;
    if (!render)
        return json;
    render->save(json);
    json[QStringLiteral("type")] = render->GetType().toQString();
    return json;
}

TERefPtr<TERender> TEFileFunc::OpenRender(const QJsonObject& json, TEString* error)
{
    const QString type = json.value(QStringLiteral("type")).toString();
    TERefPtr<TERender> render = CreateRender(TEString(type));
    if (!render) {
        SetError(error, QStringLiteral("Unknown render type \"%1\"").arg(type));
        return {};
    }
    if (!render->open(json, error))
        return {};
    return render;
}

TERefPtr<TEFeatureRender> TEFileFunc::OpenFeatureRender(const QJsonObject& json, TEString* error)
{
    TERefPtr<TERender> render = OpenRender(json, error);
    if (!render)
        return {};
    TERefPtr<TEFeatureRender> feature = render.cast<TEFeatureRender>();
    if (!feature)
        SetError(error, QStringLiteral("\"%1\" is not a feature render").arg(render->GetType().toQString()));
    return feature;
}

TERefPtr<TEImageRender> TEFileFunc::OpenImageRender(const QJsonObject& json, TEString* error)
{
    TERefPtr<TERender> render = OpenRender(json, error);
    if (!render)
        return {};
    TERefPtr<TEImageRender> image = render.cast<TEImageRender>();
    if (!image)
        SetError(error, QStringLiteral("\"%1\" is not an image render").arg(render->GetType().toQString()));
    return image;
}

bool TEFileFunc::SaveRenderToFile(const TERender* render, const TEString& path, TEString* error)
{
    if (!render) {
        SetError(error, QStringLiteral("No render to save"));
        return false;
    }
    QSaveFile file(path.toQString());
    if (!file.open(QIODevice::WriteOnly)) {
        SetError(error, file.errorString());
        return false;
    }
    file.write(QJsonDocument(SaveRender(render)).toJson(QJsonDocument::Indented));
    if (!file.commit()) {
        SetError(error, file.errorString());
        return false;
    }
    return true;
}

TERefPtr<TERender> TEFileFunc::OpenRenderFromFile(const TEString& path, TEString* error)
{
    QFile file(path.toQString());
    if (!file.open(QIODevice::ReadOnly)) {
        SetError(error, file.errorString());
        return {};
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (!document.isObject()) {
        SetError(error, parseError.error != QJsonParseError::NoError ? parseError.errorString()
                                                                      : QStringLiteral("The file holds no render"));
        return {};
    }
    return OpenRender(document.object(), error);
}

QJsonValue TEFileFunc::SaveStyle(const TEStyle* style)
{
    if (!style)
        return QJsonValue::Null;
    QJsonObject json;
    style->save(json);
    return json;
}

bool TEFileFunc::OpenStyle(const QJsonValue& json, TERefPtr<TEStyle>& style, TEString* error)
{
    style.reset();
    if (json.isNull() || json.isUndefined())
        return true;
    QString text;
    style = TEStyle::FromJson(json.toObject(), &text);
    if (!style)
        SetError(error, text.isEmpty() ? QStringLiteral("A style does not read") : text);
    return bool(style);
}

QJsonValue TEFileFunc::SaveColorRamp(const TEColorRamp* ramp)
{
    if (!ramp)
        return QJsonValue::Null;
    QJsonObject json;
    ramp->save(json);
    return json;
}

bool TEFileFunc::OpenColorRamp(const QJsonValue& json, TERefPtr<TEColorRamp>& ramp, TEString* error)
{
    ramp.reset();
    if (json.isNull() || json.isUndefined())
        return true;
    QString text;
    ramp = TEColorRamp::FromJson(json.toObject(), &text);
    if (!ramp)
        SetError(error, text.isEmpty() ? QStringLiteral("A colour ramp does not read") : text);
    return bool(ramp);
}

bool TEFileFunc::OpenInt(const QJsonObject& json, const char* key, int fallback, int low, int high, int& value,
                         TEString* error)
{
    const QJsonValue member = json.value(QLatin1String(key));
    if (member.isUndefined()) {
        value = fallback;
        return true;
    }
    const double number = member.toDouble(std::nan(""));
    if (!member.isDouble() || number != std::floor(number) || number < low || number > high) {
        SetError(error, QStringLiteral("\"%1\" must be a whole number from %2 to %3, not %4")
                            .arg(QLatin1String(key)).arg(low).arg(high)
                            .arg(QString::fromUtf8(QJsonDocument(QJsonArray{member}).toJson(QJsonDocument::Compact))
                                     .mid(1).chopped(1)));
        return false;
    }
    value = static_cast<int>(number);
    return true;
}

bool TEFileFunc::IsListOrMissing(const QJsonObject& json, const char* key, TEString* error)
{
    const QJsonValue member = json.value(QLatin1String(key));
    if (member.isUndefined() || member.isArray())
        return true;
    SetError(error, QStringLiteral("\"%1\" must be a list").arg(QLatin1String(key)));
    return false;
}

QJsonValue TEFileFunc::SaveColor(const TEColor& color)
{
    // "#%08x", written by hand: a render of many categories writes one each.
    static const char digits[] = "0123456789abcdef";
    char text[9];
    text[0] = '#';
    uint32_t packed = color.GetColor();
    for (int i = 8; i > 0; --i, packed >>= 4)
        text[i] = digits[packed & 15u];
    return QString::fromLatin1(text, 9);
}

TEColor TEFileFunc::OpenColor(const QJsonValue& json, const TEColor& fallback)
{
    const QString text = json.toString();
    if (text.size() != 9 || !text.startsWith(QLatin1Char('#')))
        return fallback;
    bool ok = false;
    const uint packed = text.midRef(1).toUInt(&ok, 16);
    if (!ok)
        return fallback;
    TEColor color;
    color = uint32_t(packed);
    return color;
}

} // namespace TZObjects
