#pragma once

#include "renders/TEFeatureRender.h"
#include "renders/TEImageRender.h"
#include "core/TEColor.h"

#include <QJsonObject>

namespace TZObjects {

class TEColorRamp;

// Saving and opening renders as JSON. A saved render is an object whose
// "type" member is its type key; OpenRender makes a render of that class and
// lets it read the rest. Styles, colour ramps and colours nested in a render
// go through the helpers below so that every render writes them alike.
class TZOBJECTS_EXPORT TEFileFunc
{
public:
    // A new render with default settings for a type key, or empty when the
    // key is unknown. Feature and image render keys are both accepted.
    static TERefPtr<TERender> CreateRender(const TEString& type);
    // Every type key CreateRender knows.
    static std::vector<TEString> RenderTypes();

    static QJsonObject SaveRender(const TERender* render);
    static TERefPtr<TERender> OpenRender(const QJsonObject& json, TEString* error = nullptr);
    // The same, typed; empty (with an error) when the JSON holds another kind.
    static TERefPtr<TEFeatureRender> OpenFeatureRender(const QJsonObject& json, TEString* error = nullptr);
    static TERefPtr<TEImageRender> OpenImageRender(const QJsonObject& json, TEString* error = nullptr);

    // A render as an indented UTF-8 JSON document in a file, and back.
    static bool SaveRenderToFile(const TERender* render, const TEString& path, TEString* error = nullptr);
    static TERefPtr<TERender> OpenRenderFromFile(const TEString& path, TEString* error = nullptr);

    // Nested values. An empty style or ramp saves as null and opens as empty.
    static QJsonValue SaveStyle(const TEStyle* style);
    static bool OpenStyle(const QJsonValue& json, TERefPtr<TEStyle>& style, TEString* error = nullptr);
    static QJsonValue SaveColorRamp(const TEColorRamp* ramp);
    static bool OpenColorRamp(const QJsonValue& json, TERefPtr<TEColorRamp>& ramp, TEString* error = nullptr);
    // A whole number member from low to high; a missing member gives the
    // fallback. Another type or a value out of range fails with an error
    // naming the member and the range.
    static bool OpenInt(const QJsonObject& json, const char* key, int fallback, int low, int high, int& value,
                        TEString* error = nullptr);
    // Whether a member is a list or missing; otherwise an error naming it
    // (a list given as anything else would silently open empty).
    static bool IsListOrMissing(const QJsonObject& json, const char* key, TEString* error = nullptr);
    // Colours as "#AARRGGBB".
    static QJsonValue SaveColor(const TEColor& color);
    static TEColor OpenColor(const QJsonValue& json, const TEColor& fallback = TEColor());
};

} // namespace TZObjects
