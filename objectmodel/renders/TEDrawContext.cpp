#include "renders/TEDrawContext.h"

#include "symbology/TEStyle.h"
#include "view/TETrackCancel.h"

namespace TZObjects {

bool TEDrawContext::IsCancelled() const
{
    return cancel && cancel->IsCancelled();
}

double TEDrawContext::ToPixels(double size, int unit) const
{
    return TEStyle::SizeToPixels(size, unit, dpi);
}

} // namespace TZObjects
