#pragma once

#include "data/TEFeatureBatchCursor.h"
#include "data/TEFeatureCursor.h"
#include "data/TEFields.h"
#include "data/TEHandlePool.h"
#include "data/TELayer.h"
#include "data/TELayerEditBuffer.h"
#include "data/TEQueryFilter.h"
#include "renders/TEFeatureRender.h"

#include <QMutex>

#include <atomic>

#include <gdal.h>

#include <memory>

namespace TZObjects {

class TEFeatureTable;
class TEStyle;

// A vector layer over any OGR source: GeoPackage, Shapefile, GeoJSON,
// TopoJSON, CSV, or a PostGIS connection string ("PG:dbname=..."). Searches
// read the saved data through a dataset handle of their own, so they may run
// on any thread. Unsaved adds, changes and deletes are held in the edit
// buffer and written by SaveEdits.
class TZOBJECTS_EXPORT TEFeatureLayer : public TELayer
{
public:
    // Opens the named layer of the source (the first one when layerName is
    // empty). An empty pointer and an error text when it cannot be opened.
    static TERefPtr<TEFeatureLayer> Open(const QString& source, const QString& layerName = {},
                                         QString* error = nullptr);
    ~TEFeatureLayer() override;

    bool IsValid() const override;
    bool IsFeatureLayer() const override { return true; }

    // The OGR layer name within the source and the GDAL driver's short name.
    QString GetSourceLayerName() const { return mSourceLayerName; }
    QString GetDriverName() const { return mDriverName; }

    // The layer's table: its fields, distinct values and value counts.
    TERefPtr<TEFeatureTable> GetDatasource() const;
    TERefPtr<TEFields> GetFields() const { return mFields; }

    // Features of the saved data passing the filter, in source order.
    // Empty pointer (and error) for an invalid filter or unreadable source.
    virtual TERefPtr<TEFeatureCursor> Search(const TEQueryFilter& filter, QString* error = nullptr) const;
    // The same features in batches of OGR's Arrow stream, for readers of
    // many features (drawing); empty (and no error) when the source gives
    // no fast stream or a field asked for is of a type the batches do not
    // read: Search then reads them. Without withIds the features' ids are
    // not read (a GeoPackage then streams a third faster) and stay unset.
    TERefPtr<TEFeatureBatchCursor> SearchBatches(const TEQueryFilter& filter, QString* error = nullptr,
                                                 bool withIds = true) const;
    // One saved feature by id; empty when there is none.
    TERefPtr<TEFeature> GetFeature(int id) const;
    // Saved features plus unsaved adds minus unsaved deletes.
    int GetFeatureCount() const;
    // True when the source knows its feature count without reading or
    // asking a server, and the count (edits included) is at most limit:
    // such a layer is read faster than a worker thread starts.
    bool HasFewFeatures(int limit) const;

    bool GetExtent(QRectF& extent) const override;
    QString GetSpatialReferenceWkt() const override;

    // A layer opens with a single-symbol render of its default style. An
    // empty render pointer removes the render.
    void SetSymbolRender(TERefPtr<TEFeatureRender> render);
    TERefPtr<TEFeatureRender> GetSymbolRender() const;
    TERefPtr<TERender> GetRender() const override;

    // A simple point, line or fill style matching the layer type.
    TERefPtr<TEStyle> GetDefaultStyle() const;

    // The filter every value collection of the panels applies.
    TEQueryFilter query_filter() const;
    void SetQueryFilter(const TEQueryFilter& filter);

    // Editing, held in memory until SaveEdits.
    bool HasBeEdited() const;
    TELayerEditBuffer* layer_edit_buffer() const { return mEditBuffer.get(); }
    // A new feature with this layer's fields, not yet part of the layer.
    TERefPtr<TEFeature> CreateFeature() const;
    // Adds the feature as an unsaved feature; returns its new (negative) id
    // and raises features_added.
    int AddFeature(const TERefPtr<TEFeature>& feature);
    // Records a changed feature (identified by its id); false for an id the
    // layer does not have.
    bool UpdateFeature(const TERefPtr<TEFeature>& feature);
    // Marks a feature deleted and raises features_deleted; false when the
    // layer has no such feature.
    bool DeleteFeature(int id);
    // Writes every buffered edit in one transaction where the source has them.
    bool SaveEdits(QString* error = nullptr);
    void DiscardEdits();
    // Goes up whenever the layer's features may have changed (an edit, a
    // save, a discard, a feature stored straight into the source), so that a
    // reader can tell whether values it read earlier still hold.
    unsigned GetDataRevision() const { return mDataRevision.load(); }

    // Feature-count events (TEFeaturesCountEvent, sender this layer).
    TEEventSignal& features_added() const { return mFeaturesAdded; }
    TEEventSignal& features_deleted() const { return mFeaturesDeleted; }

    // The class name the layer's data source reports.
    virtual TEString GetDatasourceClassName() const { return TEString(L"TEFeatureLayer"); }

    static LayerType LayerTypeOfGeometry(OGRwkbGeometryType type);

protected:
    friend class TEFeatureTable;

    TEFeatureLayer(const QString& source, const QString& sourceLayerName, GDALDatasetH dataset, OGRLayerH layer);

    // A new read-only handle on the source for one search or query; null
    // (and error) when the source cannot be reopened.
    virtual GDALDatasetH OpenReadDataset(QString* error) const;
    // Writes the edits into the source.
    virtual bool WriteEdits(QString* error);

    // A read handle on the source lent from the layer's pool: idle handles
    // are reused, so a search on a small layer does not reopen the source.
    // The handle serves one thread until the lease ends.
    TEHandlePool::Lease AcquireReadDataset(QString* error) const;
    // A read-only SQLite connection on the source file (GeoPackage and
    // SQLite sources only), lent the same way; empty for other sources.
    TEHandlePool::Lease AcquireSqlite(QString* error) const;
    // A libpq connection (PGconn*) to the server of a PostGIS source, lent
    // the same way; empty for other sources.
    TEHandlePool::Lease AcquirePostgres(QString* error) const;
    bool IsPostgres() const { return mDriverName == QLatin1String("PostgreSQL"); }
    // The user's words for a failed read of the saved data: for a server
    // that can no longer be reached, that the connection is lost and why.
    // Every pooled handle is dropped, so the next read connects anew.
    QString ReadFailure(const QString& gdalError) const;

    // Gives the layer its opening render: a single symbol of its default style.
    void SetDefaultRender();

    // Sets the where clause, rectangle and ignored fields of a layer handle.
    bool PrepareLayer(OGRLayerH layer, const TEQueryFilter& filter, QString* error) const;
    // The filter a read of layer is prepared with: filter itself, or
    // without its rectangle when that holds the whole layer (wholeLayer).
    TEQueryFilter ReadFilter(OGRLayerH layer, const TEQueryFilter& filter, bool& wholeLayer) const;
    static bool WriteEditsTo(OGRLayerH layer, const std::vector<TERefPtr<TEFeatureEditBuffer>>& edits, QString* error);

    mutable QMutex mMutex;      // guards mDataset/mLayer, shared by every thread
    mutable GDALDatasetH mDataset = nullptr;
    mutable OGRLayerH mLayer = nullptr;

    void TouchData() { ++mDataRevision; }

private:
    void RaiseCountEvent(TEEventSignal& signal, int id);
    // Replaces the shared handle with a new one (mMutex held); false, the
    // old one kept, when the source cannot be opened.
    bool ReopenShared() const;
    // With mMutex held: whether the shared layer can be read, after
    // replacing it when a read found the server gone.
    bool SharedReady() const;
    void ClearReadPools() const;

    OGRFeatureDefnH mDefinition = nullptr;
    QString mSourceLayerName;
    QString mDriverName;
    TERefPtr<TEFields> mFields;
    std::unique_ptr<TELayerEditBuffer> mEditBuffer;
    TERefPtr<TEFeatureRender> mRender;
    TEQueryFilter mQueryFilter;
    mutable TEEventSignal mFeaturesAdded;
    mutable TEEventSignal mFeaturesDeleted;
    std::atomic<unsigned> mDataRevision{0};
    // A read found the server gone: the shared handle's connection is dead.
    mutable std::atomic<bool> mSharedLost{false};

    // Pools of read handles, made on first use; emptied when edits are saved.
    mutable QMutex mPoolMutex;
    mutable std::shared_ptr<TEHandlePool> mReadPool;
    mutable std::shared_ptr<TEHandlePool> mSqlitePool;
    mutable std::shared_ptr<TEHandlePool> mPostgresPool;
};

} // namespace TZObjects
