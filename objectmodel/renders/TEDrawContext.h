#pragma once

#include "core/TZObjectsExport.h"

#include <QRectF>
#include <QTransform>

namespace TZObjects {

class TETrackCancel;

// What a render needs to know of the view it draws into, beyond the
// painter: where map coordinates land (mapToDevice, into the painter's
// pixels), which map rectangle is shown, the map scale denominator, the DPI
// that sizes in physical units are converted at, how many physical pixels
// one painter pixel covers (for renders that build their own raster image),
// and the view's cancel flag, which drawing code polls between features.
class TZOBJECTS_EXPORT TEDrawContext
{
public:
    QTransform mapToDevice;
    QRectF mapExtent;
    double scale = 0.0;
    double dpi = 96.0;
    double devicePixelRatio = 1.0;
    const TETrackCancel* cancel = nullptr;

    // True once the view asked the drawing to stop.
    bool IsCancelled() const;
    // A size in a unit code (TEStyle::Units) as painter pixels at dpi.
    double ToPixels(double size, int unit) const;
};

} // namespace TZObjects
