#include "renders/TEScaleRange.h"

#include <algorithm>

namespace TZObjects {

bool TEScaleRange::Contains(double scale) const
{
    if (!mEnabled || (mMinimum == 0.0 && mMaximum == 0.0))
        return true;
    const double low = std::min(mMinimum, mMaximum);
    const double high = std::max(mMinimum, mMaximum);
    return low <= scale && scale <= high;
}

void TEScaleRange::save(QJsonObject& json) const
{
    json[QStringLiteral("scaleFilter")] = mEnabled;
    json[QStringLiteral("minScale")] = mMinimum;
    json[QStringLiteral("maxScale")] = mMaximum;
}

void TEScaleRange::open(const QJsonObject& json)
{
    mEnabled = json.value(QStringLiteral("scaleFilter")).toBool(false);
    mMinimum = json.value(QStringLiteral("minScale")).toDouble(0.0);
    mMaximum = json.value(QStringLiteral("maxScale")).toDouble(0.0);
}

} // namespace TZObjects
