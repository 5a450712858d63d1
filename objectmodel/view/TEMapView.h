#pragma once

#include "view/TETrackCancel.h"

namespace TZObjects {

class TELayer;

// Base of a host's map view (its canvas derives from it or owns one). A
// view registers itself with TEMapViewManager on construction and leaves
// it on destruction; it tells which layers it shows and owns the
// cancellation flag of its drawing.
class TZOBJECTS_EXPORT TEMapView
{
public:
    TEMapView();
    virtual ~TEMapView();
    TEMapView(const TEMapView&) = delete;
    TEMapView& operator=(const TEMapView&) = delete;

    TETrackCancel* GetTrackCancel() { return &mTrackCancel; }
    const TETrackCancel* GetTrackCancel() const { return &mTrackCancel; }

    // Whether the layer is drawn in this view.
    virtual bool ContainsLayer(const TELayer* layer) const = 0;

private:
    TETrackCancel mTrackCancel;
};

} // namespace TZObjects
