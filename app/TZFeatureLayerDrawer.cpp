#include "TZFeatureLayerDrawer.h"

#include "core/TEKeyIndex.h"
#include "data/TEFeatureCursor.h"
#include "data/TEGeometry.h"
#include "renders/TEDiagramRender.h"
#include "renders/TEDrawContext.h"
#include "symbology/TEStyleMultiLayer.h"
#include "view/TETrackCancel.h"

#include <QCoreApplication>
#include <QPainter>

#include <cmath>
#include <optional>
#include <string>

using namespace TZObjects;

namespace {

// Features drawn between two chances for the host to show the drawing so far.
constexpr int CheckpointInterval = 512;
// Distinct sets of values whose style a batch drawing remembers.
constexpr size_t MaxRememberedStyles = 200000;

} // namespace

TZFeatureLayerDrawer::TZFeatureLayerDrawer(TERefPtr<TEFeatureLayer> layer, const TEFeatureRender* render,
                                           TERefPtr<TEStyle> defaultStyle)
    : mLayer(std::move(layer))
    , mRender(render ? render->Clone() : TERefPtr<TEFeatureRender>())
    , mDefaultStyle(std::move(defaultStyle))
    , mSymbols(mRender ? int(mRender->GetStyles().size()) : 1)
{
}

bool TZFeatureLayerDrawer::styleFollowsFieldValues() const
{
    if (!mRender)
        return true;
    bool follows = mRender->StyleFollowsUsedAttributes();
    for (const TEString& name : mRender->GetUsedAttributes())
        follows = follows && mLayer->GetFields()->FindField(name) >= 2;
    return follows;
}

TEQueryFilter TZFeatureLayerDrawer::viewFilter(const QRectF& rect) const
{
    TEQueryFilter filter(mLayer->query_filter().GetWhereClause());
    filter.SetGeometryNeeded(true);
    // The layer drops a rectangle that holds all of it.
    filter.SetSpatialRect(rect);
    // Read only what the render needs; an empty list would mean every
    // field, so with none needed the id alone is asked for.
    std::vector<TEString> fields = mRender ? mRender->GetUsedAttributes() : std::vector<TEString>();
    filter.SetSubFields(fields.empty() ? std::vector<TEString>{TEString(L"FID")} : fields);
    return filter;
}

bool TZFeatureLayerDrawer::draw(QPainter* painter, const TZMapViewport& viewport, const TETrackCancel* cancel)
{
    mDrawnCount = 0;
    mDiagramCount = 0;
    mErrorText.clear();
    if (!mLayer || (!mRender && !mDefaultStyle))
        return true;
    if (cancel && cancel->IsCancelled())
        return false;

    TEDrawContext context;
    context.mapToDevice = viewport.mapToDevice();
    context.mapExtent = viewport.mapExtent();
    context.scale = viewport.scale();
    context.dpi = TEStyle::DeviceDpi(painter);
    context.devicePixelRatio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    context.cancel = cancel;

    // A render that draws everything from the whole layer needs no
    // per-feature pass.
    if (mRender && mRender->DrawsWholeLayer() && mRender->DrawsOnlyWholeLayer())
        return drawWholeLayer(painter, context);

    // Symbols reach beyond their geometry; a margin keeps edge points whole.
    const double margin = 40.0 * viewport.unitsPerPixel();
    const TEQueryFilter filter = viewFilter(context.mapExtent.adjusted(-margin, -margin, margin, margin));
    const bool wholeLayer = mRender && mRender->DrawsWholeLayer();
    // A render drawing from the whole layer draws its own overlay there.
    auto* diagram = wholeLayer ? nullptr : dynamic_cast<TEDiagramRender*>(mRender.get());
    const bool byPriority = mRender && mRender->PriorityRender();
    // Features drawn one by one as they come are read in batches where
    // the source gives them fast; their ids only where the style or the
    // rotation may read them.
    const bool followsFields = styleFollowsFieldValues();
    const bool withIds = !followsFields || (mRender && mRender->IsRotateByField());
    const TERefPtr<TEFeatureBatchCursor> batches = wholeLayer || diagram || byPriority
        ? TERefPtr<TEFeatureBatchCursor>()
        : mLayer->SearchBatches(filter, nullptr, withIds);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, true);
    const bool finished = batches ? drawBatches(painter, batches.get(), context, followsFields)
                                  : drawFeatures(painter, filter, context, diagram, byPriority);
    painter->restore();
    if (!finished)
        return false;
    if (wholeLayer && !drawWholeLayer(painter, context))
        return false;
    // The render drew what it could (a rule whose filter does not compile
    // draws nothing); what failed is reported with the layer's name.
    if (mRender && !mRender->GetLastError().IsEmpty()) {
        mErrorText = mRender->GetLastError().toQString();
        return false;
    }
    return true;
}

bool TZFeatureLayerDrawer::drawFeatures(QPainter* painter, const TEQueryFilter& filter, const TEDrawContext& context,
                                        TEDiagramRender* diagram, bool byPriority)
{
    QString error;
    TERefPtr<TEFeatureCursor> cursor = mLayer->Search(filter, &error);
    if (!cursor) {
        mErrorText = error;
        return false;
    }
    const QTransform& toDevice = context.mapToDevice;
    std::vector<Pending> pending;
    std::vector<Diagram> diagrams;
    int sinceCheckpoint = 0;
    // One feature object is refilled for every feature not kept for a
    // diagram, and the geometry is drawn where the feature holds it.
    TERefPtr<TEFeature> feature;
    // Copies of point symbols still waiting in the run are done when it
    // ends, before the priority passes and diagrams draw.
    std::optional<TEPointSymbolCache::Run> symbols(std::in_place, mSymbols, painter);
    while ((feature = cursor->NextFeature(std::move(feature)))) {
        if (context.IsCancelled())
            return false;
        if (++sinceCheckpoint == CheckpointInterval) {
            sinceCheckpoint = 0;
            checkpoint();
        }
        const TERefPtr<TEStyle> style =
            mRender ? mRender->GetStyleByFeature(feature.get(), context.scale) : mDefaultStyle;
        // A diagram is drawn for a feature the background leaves out too.
        OGRGeometryH geometry = style || diagram ? OGR_F_GetGeometryRef(feature->GetHandle()) : nullptr;
        if (!geometry)
            continue;
        if (style) {
            const double angle = mRender ? mRender->GetRotationAngle(feature.get()) : 0.0;
            if (byPriority)
                pending.push_back({TEGeometry::FromHandleCopy(geometry), style, angle});
            else if (symbols->Draw(style.get(), geometry, toDevice, angle))
                ++mDrawnCount;
        }
        QPointF anchor;
        if (diagram && TEDiagramRender::GetAnchor(geometry, anchor)) {
            feature->SetGeometry(TERefPtr<TEGeometry>());
            diagrams.push_back({anchor, feature});
        }
    }
    feature.reset();
    symbols.reset();
    // A read that failed (the server went away) is no end of the layer.
    if (!cursor->GetError().isEmpty()) {
        mErrorText = cursor->GetError();
        return false;
    }
    cursor.reset();
    if (byPriority && !drawByPriority(painter, pending, toDevice, context.cancel))
        return false;
    pending.clear();
    return !diagram || drawDiagrams(painter, diagram, diagrams, context);
}

bool TZFeatureLayerDrawer::drawBatches(QPainter* painter, TEFeatureBatchCursor* batches, const TEDrawContext& context,
                                       bool remember)
{
    const bool rotates = mRender && mRender->IsRotateByField();
    // The styles chosen so far, numbered as their values' keys.
    TEKeyIndex keys;
    std::vector<TERefPtr<TEStyle>> styles;
    const TERefPtr<TEFeature> feature = batches->MakeFeature();
    std::string key;
    const QTransform& toDevice = context.mapToDevice;
    // Points are mapped by the transform's coefficients where it is affine
    // (a view's always is), without a call per point.
    const bool affine = toDevice.isAffine();
    const double m11 = toDevice.m11(), m12 = toDevice.m12(), m21 = toDevice.m21(), m22 = toDevice.m22();
    const double dx = toDevice.dx(), dy = toDevice.dy();
    TEPointSymbolCache::Run symbols(mSymbols, painter);
    int sinceCheckpoint = 0;
    while (batches->NextBatch()) {
        const int64_t rows = batches->GetRowCount();
        for (int64_t row = 0; row < rows; ++row) {
            if (context.IsCancelled())
                return false;
            if (++sinceCheckpoint == CheckpointInterval) {
                sinceCheckpoint = 0;
                checkpoint();
            }
            bool filled = false;
            const TEStyle* style = mDefaultStyle.get();
            TERefPtr<TEStyle> asked;
            if (mRender) {
                size_t known = TEKeyIndex::None;
                if (remember) {
                    key.clear();
                    batches->AppendKey(row, key);
                    known = keys.Find(key);
                }
                if (known != TEKeyIndex::None) {
                    style = styles[known].get();
                } else {
                    batches->FillFeature(row, *feature);
                    filled = true;
                    asked = mRender->GetStyleByFeature(feature.get(), context.scale);
                    style = asked.get();
                    if (remember && keys.Size() < MaxRememberedStyles) {
                        keys.Add(key);
                        styles.push_back(asked);
                    }
                }
            }
            if (!style)
                continue;
            double angle = 0.0;
            if (rotates) {
                if (!filled)
                    batches->FillFeature(row, *feature);
                filled = true;
                angle = mRender->GetRotationAngle(feature.get());
            }
            double x = 0.0;
            double y = 0.0;
            if (batches->GetPoint(row, x, y)) {
                const QPointF device = affine ? QPointF(m11 * x + m21 * y + dx, m12 * x + m22 * y + dy)
                                              : toDevice.map(QPointF(x, y));
                if (symbols.DrawPoint(style, device, angle))
                    ++mDrawnCount;
                continue;
            }
            if (!filled)
                batches->FillFeature(row, *feature);
            OGRGeometryH geometry = OGR_F_GetGeometryRef(feature->GetHandle());
            if (geometry && symbols.Draw(style, geometry, toDevice, angle))
                ++mDrawnCount;
        }
    }
    if (!batches->GetError().isEmpty()) {
        mErrorText = batches->GetError();
        return false;
    }
    return true;
}

bool TZFeatureLayerDrawer::drawDiagrams(QPainter* painter, TEDiagramRender* render,
                                        const std::vector<Diagram>& diagrams, const TEDrawContext& context)
{
    // Diagrams are measured against those in view (the drawer's own copy of
    // the render holds that measure).
    std::vector<TEFeature*> features;
    features.reserve(diagrams.size());
    for (const Diagram& item : diagrams)
        features.push_back(item.values.get());
    render->PrepareDiagrams(features);
    for (std::size_t i = 0; i < diagrams.size(); ++i) {
        const Diagram& item = diagrams[i];
        if (context.IsCancelled())
            return false;
        if (i % CheckpointInterval == 0)
            checkpoint();
        painter->save();
        if (render->DrawDiagram(painter, item.values.get(), context.mapToDevice.map(item.mapAnchor), context))
            ++mDiagramCount;
        painter->restore();
    }
    return true;
}

bool TZFeatureLayerDrawer::drawWholeLayer(QPainter* painter, const TEDrawContext& context)
{
    if (context.IsCancelled())
        return false;
    // Features just outside the view may still reach into it (a kernel's
    // radius); the render says how far, in pixels.
    const double pixelSize = std::sqrt(std::abs(context.mapToDevice.determinant()));
    const double margin = pixelSize > 0.0 ? mRender->DrawLayerMargin(context) / pixelSize : 0.0;
    QString error;
    TERefPtr<TEFeatureCursor> cursor =
        mLayer->Search(viewFilter(context.mapExtent.adjusted(-margin, -margin, margin, margin)), &error);
    if (!cursor) {
        mErrorText = error;
        return false;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, true);
    bool finished = mRender->DrawLayer(painter, cursor.get(), context);
    painter->restore();
    if (!cursor->GetError().isEmpty()) {
        mErrorText = cursor->GetError();
        finished = false;
    }
    if (!finished && !context.IsCancelled() && mErrorText.isEmpty())
        mErrorText = QCoreApplication::translate("TZFeatureLayerDrawer", "The %1 render could not draw the layer.").arg(mRender->GetType().toQString());
    return finished;
}

bool TZFeatureLayerDrawer::drawByPriority(QPainter* painter, const std::vector<Pending>& pending,
                                          const QTransform& toDevice, const TETrackCancel* cancel)
{
    std::vector<bool> drawn(pending.size(), false);
    TEPointSymbolCache::Run symbols(mSymbols, painter);
    for (int priority : mRender->GetAllPriority()) {
        for (std::size_t i = 0; i < pending.size(); ++i) {
            if (cancel && cancel->IsCancelled())
                return false;
            const Pending& item = pending[i];
            OGRGeometryH handle = item.geometry->GetHandle();
            if (i % CheckpointInterval == 0)
                checkpoint();
            if (auto* multi = dynamic_cast<const TEStyleMultiLayer*>(item.style.get())) {
                for (int index : multi->DrawingOrder()) {
                    const TEStyle* layer = multi->GetLayer(index);
                    if (layer && layer->GetPriority() == priority
                        && symbols.Draw(layer, handle, toDevice, item.angle))
                        drawn[i] = true;
                }
            } else if (item.style->GetPriority() == priority
                       && symbols.Draw(item.style.get(), handle, toDevice, item.angle)) {
                drawn[i] = true;
            }
        }
    }
    mDrawnCount = static_cast<int>(std::count(drawn.begin(), drawn.end(), true));
    return true;
}
