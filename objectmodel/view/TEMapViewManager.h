#pragma once

#include "core/TZObjectsExport.h"

#include <mutex>
#include <vector>

namespace TZObjects {

class TELayer;
class TEMapView;

// The map views of the application (single instance). Views register
// themselves; one of them may be the active view, which is the one a
// repaint is asked for.
class TZOBJECTS_EXPORT TEMapViewManager
{
public:
    static TEMapViewManager* GetInstance();

    // Registering twice keeps one entry; null is ignored.
    void RegisterMapView(TEMapView* view);
    // Also clears the active view when it is this one.
    void UnregisterMapView(TEMapView* view);
    std::vector<TEMapView*> GetMapViews() const;

    // The first registered view that shows the layer, or null.
    TEMapView* GetMapViewByLayer(const TELayer* layer) const;
    // The active view, or null.
    TEMapView* GetActivedMapView() const;
    // Makes a registered view active (null clears); an unregistered view is
    // refused with false.
    bool SetActivedMapView(TEMapView* view);

private:
    TEMapViewManager() = default;

    mutable std::mutex mMutex;
    std::vector<TEMapView*> mViews;
    TEMapView* mActive = nullptr;
};

} // namespace TZObjects
