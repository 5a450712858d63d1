#include "data/TEGdalSupport.h"

#include <cpl_error.h>
#include <gdal.h>

#include <mutex>

namespace TZObjects {

void TEGdalSupport::EnsureRegistered()
{
    static std::once_flag once;
    std::call_once(once, [] { GDALAllRegister(); });
}

QString TEGdalSupport::LastError(const QString& fallback)
{
    const char* message = CPLGetLastErrorMsg();
    if (message && *message)
        return QString::fromUtf8(message);
    return fallback;
}

} // namespace TZObjects
