#include "view/TEMapView.h"

#include "view/TEMapViewManager.h"

namespace TZObjects {

TEMapView::TEMapView()
{
    TEMapViewManager::GetInstance()->RegisterMapView(this);
}

TEMapView::~TEMapView()
{
    TEMapViewManager::GetInstance()->UnregisterMapView(this);
}

} // namespace TZObjects
