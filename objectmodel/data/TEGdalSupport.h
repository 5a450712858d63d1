#pragma once

#include "core/TZObjectsExport.h"

#include <QString>

namespace TZObjects {

// Process-wide GDAL set-up and error texts shared by the data classes.
class TZOBJECTS_EXPORT TEGdalSupport
{
public:
    // Registers every GDAL/OGR driver once; safe from any thread.
    static void EnsureRegistered();
    // The calling thread's last GDAL error message, or fallback when empty.
    static QString LastError(const QString& fallback = {});
};

} // namespace TZObjects
