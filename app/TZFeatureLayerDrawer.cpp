#include "TZFeatureLayerDrawer.h"

#include "data/TEFeatureCursor.h"
#include "symbology/TEStyleMultiLayer.h"
#include "view/TETrackCancel.h"

#include <QPainter>

using namespace TZObjects;

TZFeatureLayerDrawer::TZFeatureLayerDrawer(TERefPtr<TEFeatureLayer> layer, const TEFeatureRender* render,
                                           TERefPtr<TEStyle> defaultStyle)
    : mLayer(std::move(layer))
    , mRender(render ? render->Clone() : TERefPtr<TEFeatureRender>())
    , mDefaultStyle(std::move(defaultStyle))
{
}

bool TZFeatureLayerDrawer::draw(QPainter* painter, const TZMapViewport& viewport, const TETrackCancel* cancel)
{
    mDrawnCount = 0;
    mErrorText.clear();
    if (!mLayer || (!mRender && !mDefaultStyle))
        return true;
    if (cancel && cancel->IsCancelled())
        return false;

    TEQueryFilter filter(mLayer->query_filter().GetWhereClause());
    filter.SetGeometryNeeded(true);
    // Symbols reach beyond their geometry; a margin keeps edge points whole.
    const QRectF extent = viewport.mapExtent();
    const double margin = 40.0 * viewport.unitsPerPixel();
    filter.SetSpatialRect(extent.adjusted(-margin, -margin, margin, margin));
    // Read only what choosing the style needs; an empty list would mean
    // every field, so with none needed the id alone is asked for.
    std::vector<TEString> fields = mRender ? mRender->GetUsedAttributes() : std::vector<TEString>();
    filter.SetSubFields(fields.empty() ? std::vector<TEString>{TEString(L"FID")} : fields);

    QString error;
    TERefPtr<TEFeatureCursor> cursor = mLayer->Search(filter, &error);
    if (!cursor) {
        mErrorText = error;
        return false;
    }

    const QTransform toDevice = viewport.mapToDevice();
    const double scale = viewport.scale();
    const bool byPriority = mRender && mRender->PriorityRender();
    std::vector<Pending> pending;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, true);
    bool finished = true;
    while (TERefPtr<TEFeature> feature = cursor->NextFeature()) {
        if (cancel && cancel->IsCancelled()) {
            finished = false;
            break;
        }
        TERefPtr<TEStyle> style = mRender ? mRender->GetStyleByFeature(feature.get(), scale) : mDefaultStyle;
        TERefPtr<TEGeometry> geometry = style ? feature->GetGeometry() : TERefPtr<TEGeometry>();
        if (!geometry)
            continue;
        const double angle = mRender ? mRender->GetRotationAngle(feature.get()) : 0.0;
        if (byPriority) {
            pending.push_back({geometry, style, angle});
            continue;
        }
        if (style->Draw(painter, geometry->GetHandle(), toDevice, angle))
            ++mDrawnCount;
    }
    if (finished && byPriority)
        finished = drawByPriority(painter, pending, toDevice, cancel);
    painter->restore();
    // The render drew what it could (a rule whose filter does not compile
    // draws nothing); what failed is reported with the layer's name.
    if (finished && mRender && !mRender->GetLastError().IsEmpty()) {
        mErrorText = mRender->GetLastError().toQString();
        return false;
    }
    return finished;
}

bool TZFeatureLayerDrawer::drawByPriority(QPainter* painter, const std::vector<Pending>& pending,
                                          const QTransform& toDevice, const TETrackCancel* cancel)
{
    std::vector<bool> drawn(pending.size(), false);
    for (int priority : mRender->GetAllPriority()) {
        for (std::size_t i = 0; i < pending.size(); ++i) {
            if (cancel && cancel->IsCancelled())
                return false;
            const Pending& item = pending[i];
            OGRGeometryH handle = item.geometry->GetHandle();
            if (auto* multi = dynamic_cast<const TEStyleMultiLayer*>(item.style.get())) {
                for (int index : multi->DrawingOrder()) {
                    const TEStyle* layer = multi->GetLayer(index);
                    if (layer && layer->GetPriority() == priority && layer->Draw(painter, handle, toDevice, item.angle))
                        drawn[i] = true;
                }
            } else if (item.style->GetPriority() == priority && item.style->Draw(painter, handle, toDevice, item.angle)) {
                drawn[i] = true;
            }
        }
    }
    mDrawnCount = static_cast<int>(std::count(drawn.begin(), drawn.end(), true));
    return true;
}
