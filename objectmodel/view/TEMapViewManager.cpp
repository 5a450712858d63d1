#include "view/TEMapViewManager.h"

#include "view/TEMapView.h"

#include <algorithm>

namespace TZObjects {

TEMapViewManager* TEMapViewManager::GetInstance()
{
    static TEMapViewManager instance;
    return &instance;
}

void TEMapViewManager::RegisterMapView(TEMapView* view)
{
    std::lock_guard<std::mutex> lock(mMutex);
    if (view && std::find(mViews.begin(), mViews.end(), view) == mViews.end())
        mViews.push_back(view);
}

void TEMapViewManager::UnregisterMapView(TEMapView* view)
{
    std::lock_guard<std::mutex> lock(mMutex);
    mViews.erase(std::remove(mViews.begin(), mViews.end(), view), mViews.end());
    if (mActive == view)
        mActive = nullptr;
}

std::vector<TEMapView*> TEMapViewManager::GetMapViews() const
{
    std::lock_guard<std::mutex> lock(mMutex);
    return mViews;
}

TEMapView* TEMapViewManager::GetMapViewByLayer(const TELayer* layer) const
{
    if (!layer)
        return nullptr;
    std::lock_guard<std::mutex> lock(mMutex);
    for (TEMapView* view : mViews) {
        if (view->ContainsLayer(layer))
            return view;
    }
    return nullptr;
}

TEMapView* TEMapViewManager::GetActivedMapView() const
{
    std::lock_guard<std::mutex> lock(mMutex);
    return mActive;
}

bool TEMapViewManager::SetActivedMapView(TEMapView* view)
{
    std::lock_guard<std::mutex> lock(mMutex);
    if (view && std::find(mViews.begin(), mViews.end(), view) == mViews.end())
        return false;
    mActive = view;
    return true;
}

} // namespace TZObjects
