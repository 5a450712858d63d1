#pragma once

#include "symbology/TEColorRamp.h"

#include <QString>

#include <mutex>
#include <vector>

namespace TZObjects {

// The colour ramps shipped with the library, in named groups ("Graph",
// "DEM", "Default", "Unique", "Sequential", "Diverging", "Qualitative",
// "Perceptual"), read once from the compiled-in catalog. The ramps handed
// out are shared: clone one before changing it.
class TZOBJECTS_EXPORT TEColorRampCatalog
{
public:
    static TEColorRampCatalog* Instance();

    // Group names in catalog order.
    std::vector<TEString> groups() const;
    // The ramps of a group in catalog order; empty for an unknown group.
    std::vector<TERefPtr<TEColorRamp>> ramps(const TEString& group) const;
    // The ramp of that group and name, or empty.
    TERefPtr<TEColorRamp> find(const TEString& group, const TEString& name) const;
    // The error text when the catalog could not be read; empty when fine.
    QString loadError() const { return mError; }

    // Reads a catalog {"groups":[{"name":..., "ramps":[ramp, ...]}]}; used
    // for the shipped one and for tests.
    bool loadFromJson(const QByteArray& data, QString* error = nullptr);

private:
    TEColorRampCatalog();

    struct Group
    {
        TEString name;
        std::vector<TERefPtr<TEColorRamp>> ramps;
    };

    mutable std::mutex mMutex;
    std::vector<Group> mGroups;
    QString mError;
};

} // namespace TZObjects
