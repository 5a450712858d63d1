#include "renders/TEFeatureRender.h"

#include "data/TEFeature.h"
#include "renders/TEDrawContext.h"
#include "symbology/TEStyleMultiLayer.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace TZObjects {

const wchar_t* const TEFeatureRender::RandomRotateField = L"<random>";

std::vector<TEString> TEFeatureRender::GetUsedAttributes() const
{
    std::vector<TEString> fields;
    if (mRotateByField && mRotateField != RandomRotateField)
        AddUsedAttribute(fields, mRotateField);
    return fields;
}

std::vector<TERefPtr<TEStyle>> TEFeatureRender::GetStyles() const
{
    std::vector<TERefPtr<TEStyle>> styles;
    // The visitor only reads the slots.
    const_cast<TEFeatureRender*>(this)->VisitStyles([&styles](TERefPtr<TEStyle>& style) {
        if (style)
            styles.push_back(style);
    });
    return styles;
}

bool TEFeatureRender::DrawLayer(QPainter*, TEFeatureCursor*, const TEDrawContext& context) const
{
    return !context.IsCancelled();
}

TEStyle::StyleType TEFeatureRender::GetStyleType() const
{
    const std::vector<TERefPtr<TEStyle>> styles = GetStyles();
    return styles.empty() ? TEStyle::PointStyle : styles.front()->GetStyleType();
}

bool TEFeatureRender::ReplaceStyle(const TEStyle* oldStyle, const TERefPtr<TEStyle>& newStyle)
{
    if (!oldStyle)
        return false;
    bool replaced = false;
    VisitStyles([&](TERefPtr<TEStyle>& style) {
        if (style.get() == oldStyle) {
            style = newStyle;
            replaced = true;
        }
    });
    return replaced;
}

std::vector<int> TEFeatureRender::GetAllPriority() const
{
    std::set<int> priorities;
    for (const TERefPtr<TEStyle>& style : GetStyles()) {
        priorities.insert(style->GetPriority());
        if (auto* multi = dynamic_cast<const TEStyleMultiLayer*>(style.get())) {
            for (int i = 0; i < multi->GetLayerCount(); ++i)
                priorities.insert(multi->GetLayer(i)->GetPriority());
        }
    }
    return std::vector<int>(priorities.begin(), priorities.end());
}

void TEFeatureRender::GetRotateRandomRange(double& minimum, double& maximum) const
{
    minimum = mRandomMinimum;
    maximum = mRandomMaximum;
}

void TEFeatureRender::SetRotateRandomRange(double minimum, double maximum)
{
    mRandomMinimum = minimum;
    mRandomMaximum = maximum;
}

double TEFeatureRender::GetRotationAngle(TEFeature* feature) const
{
    if (!feature || !mRotateByField || mRotateField.IsEmpty())
        return 0.0;
    double angle = 0.0;
    if (mRotateField == RandomRotateField) {
        // A hash of the id (splitmix64) so that a feature keeps its angle.
        uint64_t x = uint64_t(int64_t(feature->GetId())) + 0x9E3779B97F4A7C15ull;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
        x ^= x >> 31;
        const double unit = double(x >> 11) / double(1ull << 53);
        angle = mRandomMinimum + unit * (mRandomMaximum - mRandomMinimum);
    } else {
        const TEVariant value = feature->GetValue(mRotateField);
        if (value.IsNull())
            return 0.0;
        angle = value.GetDouble();
    }
    if (!std::isfinite(angle))
        return 0.0;
    return mRotateClockWise ? -angle : angle;
}

void TEFeatureRender::save(QJsonObject& json) const
{
    json[QStringLiteral("priorityRender")] = mPriorityRender;
    QJsonObject rotation;
    rotation[QStringLiteral("byField")] = mRotateByField;
    rotation[QStringLiteral("field")] = mRotateField.toQString();
    rotation[QStringLiteral("clockwise")] = mRotateClockWise;
    rotation[QStringLiteral("randomMin")] = mRandomMinimum;
    rotation[QStringLiteral("randomMax")] = mRandomMaximum;
    json[QStringLiteral("rotation")] = rotation;
}

bool TEFeatureRender::open(const QJsonObject& json, TEString*)
{
    mPriorityRender = json.value(QStringLiteral("priorityRender")).toBool(false);
    const QJsonObject rotation = json.value(QStringLiteral("rotation")).toObject();
    mRotateByField = rotation.value(QStringLiteral("byField")).toBool(false);
    mRotateField = TEString(rotation.value(QStringLiteral("field")).toString());
    mRotateClockWise = rotation.value(QStringLiteral("clockwise")).toBool(true);
    mRandomMinimum = rotation.value(QStringLiteral("randomMin")).toDouble(0.0);
    mRandomMaximum = rotation.value(QStringLiteral("randomMax")).toDouble(360.0);
    return true;
}

void TEFeatureRender::VisitStyles(const StyleVisitor&)
{
}

void TEFeatureRender::AddUsedAttribute(std::vector<TEString>& fields, const TEString& field)
{
    if (!field.IsEmpty() && std::find(fields.begin(), fields.end(), field) == fields.end())
        fields.push_back(field);
}

TERefPtr<TEStyle> TEFeatureRender::CloneStyle(const TERefPtr<TEStyle>& style)
{
    return style ? style->Clone() : TERefPtr<TEStyle>();
}

} // namespace TZObjects
