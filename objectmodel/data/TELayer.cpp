#include "data/TELayer.h"

#include <QUuid>

namespace TZObjects {

TELayer::TELayer(LayerType type, const QString& source, const TEString& name)
    : mName(name), mGuid(QUuid::createUuid().toString()), mSource(source), mLayerType(type)
{
}

void TELayer::RaiseRenderChanged()
{
    TEEvent event;
    mRenderChanged.raise(this, &event);
}

} // namespace TZObjects
