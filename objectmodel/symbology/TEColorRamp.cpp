#include "symbology/TEColorRamp.h"

#include "symbology/TEEvenColorRamp.h"

#include <QJsonObject>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace TZObjects {

namespace {

const char* const kCategoryNames[] = {"custom", "sequential", "diverging", "qualitative"};

} // namespace

TEColorRampContainer TEColorRamp::split(int n) const
{
    TEColorRampContainer colors;
    if (n < 1 || !isValid())
        return colors;
    for (int i = 0; i < n; ++i)
        colors.addColor(splitColor(i, n));
    return colors;
}

int TEColorRamp::getLevel() const
{
    return mLevel > 0 ? mLevel : naturalLevel();
}

rgb_color<float> TEColorRamp::getColor(int i) const
{
    const int n = getLevel();
    if (n < 1 || !isValid())
        return rgb_color<float>();
    return splitColor(std::clamp(i, 0, n - 1), n);
}

void TEColorRamp::DrawPreview(QPainter* painter, const QRectF& rect) const
{
    if (!painter || rect.isEmpty() || !isValid())
        return;
    const int n = naturalLevel();
    painter->save();
    painter->setPen(Qt::NoPen);
    if (isDiscrete()) {
        const double w = rect.width() / n;
        for (int i = 0; i < n; ++i)
            painter->fillRect(QRectF(rect.left() + i * w, rect.top(), w, rect.height()),
                              splitColor(i, n).toQColor());
    } else {
        QLinearGradient gradient(rect.topLeft(), rect.topRight());
        const int stops = std::max(n, 16);
        for (int i = 0; i < stops; ++i) {
            const double t = stops == 1 ? 0.0 : double(i) / (stops - 1);
            gradient.setColorAt(t, colorAt(t).toQColor());
        }
        painter->fillRect(rect, gradient);
    }
    painter->restore();
}

const char* TEColorRamp::CategoryName(ColorRampType category)
{
    if (category < Custom || category > Qualitative)
        return kCategoryNames[Custom];
    return kCategoryNames[category];
}

TEColorRamp::ColorRampType TEColorRamp::CategoryFromName(const QString& name)
{
    for (int i = Custom; i <= Qualitative; ++i) {
        if (name.compare(QLatin1String(kCategoryNames[i]), Qt::CaseInsensitive) == 0)
            return ColorRampType(i);
    }
    return Custom;
}

void TEColorRamp::save(QJsonObject& json) const
{
    json.insert("name", mName.toQString());
    json.insert("group", mGroup.toQString());
    json.insert("category", QLatin1String(CategoryName(mCategory)));
    json.insert("level", mLevel);
}

bool TEColorRamp::open(const QJsonObject& json)
{
    mName = TEString(json.value("name").toString(mName.toQString()));
    mGroup = TEString(json.value("group").toString(mGroup.toQString()));
    if (json.contains("category"))
        mCategory = CategoryFromName(json.value("category").toString());
    setLevel(json.value("level").toInt(mLevel));
    return true;
}

TERefPtr<TEColorRamp> TEColorRamp::FromJson(const QJsonObject& json, QString* error)
{
    const QString kind = json.value("kind").toString(QStringLiteral("even"));
    if (kind != QLatin1String("even")) {
        if (error)
            *error = QStringLiteral("Unknown colour ramp kind \"%1\"").arg(kind);
        return TERefPtr<TEColorRamp>();
    }
    auto ramp = MakeRef<TEEvenColorRamp>();
    if (!ramp->open(json)) {
        if (error)
            *error = QStringLiteral("The colour ramp \"%1\" could not be read").arg(json.value("name").toString());
        return TERefPtr<TEColorRamp>();
    }
    return ramp;
}

} // namespace TZObjects
