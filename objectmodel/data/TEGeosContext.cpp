#include "data/TEGeosContext.h"

#include <vector>

namespace TZObjects {

namespace {

struct ThreadContext
{
    ThreadContext() : handle(GEOS_init_r()) {}
    ~ThreadContext() { GEOS_finish_r(handle); }
    GEOSContextHandle_t handle;
};

} // namespace

GEOSContextHandle_t TEGeosContext::Current()
{
    thread_local ThreadContext context;
    return context.handle;
}

GEOSGeometry* TEGeosContext::ToGeos(GEOSContextHandle_t context, const TEGeometry* geometry)
{
    if (!geometry || !geometry->GetHandle())
        return nullptr;
    const int size = OGR_G_WkbSize(geometry->GetHandle());
    std::vector<unsigned char> wkb(size_t(size > 0 ? size : 0));
    if (size <= 0 || OGR_G_ExportToIsoWkb(geometry->GetHandle(), wkbNDR, wkb.data()) != OGRERR_NONE)
        return nullptr;
    GEOSWKBReader* reader = GEOSWKBReader_create_r(context);
    GEOSGeometry* result = GEOSWKBReader_read_r(context, reader, wkb.data(), wkb.size());
    GEOSWKBReader_destroy_r(context, reader);
    return result;
}

} // namespace TZObjects
