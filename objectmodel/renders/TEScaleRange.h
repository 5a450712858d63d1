#pragma once

#include "core/TZObjectsExport.h"

#include <QJsonObject>

namespace TZObjects {

// The scale filter of a category or a rule: when enabled, the item is drawn
// only at map scales (denominators) between its two bounds, both included.
// The bounds may be given in either order; two zero bounds set no limit.
class TZOBJECTS_EXPORT TEScaleRange
{
public:
    TEScaleRange() = default;
    TEScaleRange(bool enabled, double minimum, double maximum)
        : mEnabled(enabled), mMinimum(minimum), mMaximum(maximum) {}

    bool IsEnabled() const { return mEnabled; }
    void SetEnabled(bool enabled) { mEnabled = enabled; }
    double GetMinimum() const { return mMinimum; }
    void SetMinimum(double minimum) { mMinimum = minimum; }
    double GetMaximum() const { return mMaximum; }
    void SetMaximum(double maximum) { mMaximum = maximum; }

    bool Contains(double scale) const;

    void save(QJsonObject& json) const;
    void open(const QJsonObject& json);

    bool operator==(const TEScaleRange& o) const
    {
        return mEnabled == o.mEnabled && mMinimum == o.mMinimum && mMaximum == o.mMaximum;
    }

private:
    bool mEnabled = false;
    double mMinimum = 0.0;
    double mMaximum = 0.0;
};

} // namespace TZObjects
