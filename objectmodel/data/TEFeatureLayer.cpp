#include "data/TEFeatureLayer.h"

#include "data/TEFeatureTable.h"
#include "data/TEFeaturesCountEvent.h"
#include "data/TEGdalSupport.h"
#include "data/TEPostgresSource.h"
#include "data/TEWhereClause.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/QuickStyle.h"

#include <cpl_conv.h>
#include <cpl_string.h>
#include <ogr_srs_api.h>

#include <libpq-fe.h>
#include <sqlite3.h>

#include <set>

namespace TZObjects {

namespace {

// The libpq connection string of a PostGIS source: GDAL's keys left out,
// texts in UTF-8 (as GDAL reads them), and a bound on the wait for a server
// that does not answer.
QByteArray postgresConnInfo(const QString& source, int timeoutSeconds)
{
    TEPostgresSource parsed(source);
    if (parsed.Value(QStringLiteral("connect_timeout")).isEmpty())
        parsed.SetValue(QStringLiteral("connect_timeout"), QString::number(timeoutSeconds));
    parsed.SetValue(QStringLiteral("client_encoding"), QStringLiteral("UTF8"));
    return parsed.ToConnInfo().toUtf8();
}

} // namespace

TERefPtr<TEFeatureLayer> TEFeatureLayer::Open(const QString& source, const QString& layerName, QString* error)
{
    TEGdalSupport::EnsureRegistered();
    CPLErrorReset();
    GDALDatasetH dataset = GDALOpenEx(source.toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY,
                                      nullptr, nullptr, nullptr);
    if (!dataset) {
        // A message may be shown or logged: it never carries a password.
        if (error)
            *error = QStringLiteral("Cannot open \"%1\": %2")
                         .arg(TEPostgresSource::WithoutPassword(source),
                              TEPostgresSource::ServerMessage(TEGdalSupport::LastError(QStringLiteral("not a vector data source"))));
        return {};
    }
    OGRLayerH layer = layerName.isEmpty() ? GDALDatasetGetLayer(dataset, 0)
                                          : GDALDatasetGetLayerByName(dataset, layerName.toUtf8().constData());
    if (!layer) {
        GDALClose(dataset);
        const QString shown = TEPostgresSource::WithoutPassword(source);
        if (error)
            *error = layerName.isEmpty() ? QStringLiteral("\"%1\" holds no vector layer.").arg(shown)
                                         : QStringLiteral("\"%1\" has no layer \"%2\".").arg(shown, layerName);
        return {};
    }
    TERefPtr<TEFeatureLayer> opened(
        new TEFeatureLayer(source, QString::fromUtf8(OGR_L_GetName(layer)), dataset, layer));
    opened->SetDefaultRender();
    return opened;
}

TEFeatureLayer::TEFeatureLayer(const QString& source, const QString& sourceLayerName, GDALDatasetH dataset,
                               OGRLayerH layer)
    : TELayer(LayerTypeOfGeometry(layer ? OGR_L_GetGeomType(layer) : wkbNone), source, TEString(sourceLayerName))
    , mDataset(dataset)
    , mLayer(layer)
    , mSourceLayerName(sourceLayerName)
{
    if (dataset) {
        GDALDriverH driver = GDALGetDatasetDriver(dataset);
        mDriverName = driver ? QString::fromUtf8(GDALGetDriverShortName(driver)) : QString();
    }
    // Held for the layer's lifetime: the shared handle is reopened after a
    // save, and the edit buffer and new features must outlive that.
    mDefinition = layer ? OGR_L_GetLayerDefn(layer) : OGR_FD_Create("");
    OGR_FD_Reference(mDefinition);
    mFields = TEFields::FromDefinition(mDefinition);
    mEditBuffer = std::make_unique<TELayerEditBuffer>(mDefinition);
}

TEFeatureLayer::~TEFeatureLayer()
{
    mEditBuffer.reset();
    OGR_FD_Release(mDefinition);
    if (mDataset)
        GDALClose(mDataset);
}

bool TEFeatureLayer::IsValid() const
{
    // The handles are swapped by a save while other threads may ask.
    QMutexLocker lock(&mMutex);
    return mDataset && mLayer;
}

TERefPtr<TEFeatureTable> TEFeatureLayer::GetDatasource() const
{
    return MakeRef<TEFeatureTable>(TERefPtr<const TEFeatureLayer>(this));
}

GDALDatasetH TEFeatureLayer::OpenReadDataset(QString* error) const
{
    TEGdalSupport::EnsureRegistered();
    CPLErrorReset();
    GDALDatasetH dataset = GDALOpenEx(GetSource().toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_READONLY,
                                      nullptr, nullptr, nullptr);
    if (!dataset && IsPostgres())
        mSharedLost = true;
    if (!dataset && error) {
        if (IsPostgres())
            *error = QStringLiteral("Cannot connect to the PostgreSQL server: %1")
                         .arg(TEPostgresSource::ServerMessage(TEGdalSupport::LastError()));
        else
            *error = QStringLiteral("Cannot reopen \"%1\": %2").arg(GetSource(), TEGdalSupport::LastError());
    }
    return dataset;
}

TEHandlePool::Lease TEFeatureLayer::AcquireReadDataset(QString* error) const
{
    std::shared_ptr<TEHandlePool> pool;
    {
        QMutexLocker lock(&mPoolMutex);
        if (!mReadPool)
            mReadPool = std::make_shared<TEHandlePool>([](void* handle) { GDALClose(GDALDatasetH(handle)); });
        pool = mReadPool;
    }
    return pool->Acquire([this](QString* openError) -> void* { return OpenReadDataset(openError); }, error);
}

TEHandlePool::Lease TEFeatureLayer::AcquireSqlite(QString* error) const
{
    if (mDriverName != QLatin1String("GPKG") && mDriverName != QLatin1String("SQLite"))
        return {};
    std::shared_ptr<TEHandlePool> pool;
    {
        QMutexLocker lock(&mPoolMutex);
        if (!mSqlitePool)
            mSqlitePool = std::make_shared<TEHandlePool>([](void* handle) { sqlite3_close(static_cast<sqlite3*>(handle)); });
        pool = mSqlitePool;
    }
    const QByteArray path = GetSource().toUtf8();
    return pool->Acquire(
        [path](QString* openError) -> void* {
            sqlite3* db = nullptr;
            if (sqlite3_open_v2(path.constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr)
                != SQLITE_OK) {
                if (openError)
                    *openError = QStringLiteral("Cannot open \"%1\": %2")
                                     .arg(QString::fromUtf8(path), QString::fromUtf8(sqlite3_errmsg(db)));
                sqlite3_close(db);
                return nullptr;
            }
            return db;
        },
        error);
}

TEHandlePool::Lease TEFeatureLayer::AcquirePostgres(QString* error) const
{
    if (!IsPostgres())
        return {};
    std::shared_ptr<TEHandlePool> pool;
    {
        QMutexLocker lock(&mPoolMutex);
        if (!mPostgresPool)
            mPostgresPool = std::make_shared<TEHandlePool>([](void* handle) { PQfinish(static_cast<PGconn*>(handle)); });
        pool = mPostgresPool;
    }
    const QByteArray connInfo = postgresConnInfo(GetSource(), 10);
    return pool->Acquire(
        [connInfo](QString* openError) -> void* {
            PGconn* connection = PQconnectdb(connInfo.constData());
            if (PQstatus(connection) == CONNECTION_OK)
                return connection;
            if (openError)
                *openError = QStringLiteral("Cannot connect to the PostgreSQL server: %1")
                                 .arg(TEPostgresSource::ServerMessage(QString::fromUtf8(PQerrorMessage(connection))));
            PQfinish(connection);
            return nullptr;
        },
        error);
}

QString TEFeatureLayer::ReadFailure(const QString& gdalError) const
{
    ClearReadPools();
    if (!IsPostgres())
        return gdalError;
    mSharedLost = true;
    // Whether the server is still there tells a lost connection from a
    // query the server refused.
    PGconn* probe = PQconnectdb(postgresConnInfo(GetSource(), 5).constData());
    const bool reachable = PQstatus(probe) == CONNECTION_OK;
    const QString reason = TEPostgresSource::ServerMessage(reachable ? gdalError : QString::fromUtf8(PQerrorMessage(probe)));
    PQfinish(probe);
    return reachable ? reason : QStringLiteral("The connection to the PostgreSQL server is lost: %1").arg(reason);
}

bool TEFeatureLayer::PrepareLayer(OGRLayerH layer, const TEQueryFilter& filter, QString* error) const
{
    // Some drivers (GeoPackage, PostGIS) hand the clause to their database
    // only when reading starts and then just yield nothing; check it first.
    TEWhereClause check;
    if (!check.Compile(OGR_L_GetLayerDefn(layer), filter.GetWhereClause(), error))
        return false;
    CPLErrorReset();
    const std::string where = filter.GetWhereClause().toUTF8();
    if (OGR_L_SetAttributeFilter(layer, where.empty() ? nullptr : where.c_str()) != OGRERR_NONE) {
        if (error)
            *error = QStringLiteral("Invalid filter \"%1\": %2")
                         .arg(filter.GetWhereClause().toQString(), TEGdalSupport::LastError());
        return false;
    }
    if (filter.HasSpatialRect()) {
        const QRectF& r = filter.GetSpatialRect();
        OGR_L_SetSpatialFilterRect(layer, r.left(), r.top(), r.right(), r.bottom());
    } else {
        OGR_L_SetSpatialFilter(layer, nullptr);
    }

    // Fields the caller did not ask for are not read at all. The where
    // clause and rectangle still need theirs, so they are kept.
    CPLStringList ignored;
    if (!filter.GetSubFields().empty()) {
        std::set<int> wanted;
        for (const TEString& name : filter.GetSubFields()) {
            const int index = mFields->FindField(name);
            if (index >= 2)
                wanted.insert(index);
        }
        const QString clause = filter.GetWhereClause().toQString();
        for (int i = 2; i < mFields->GetFieldCount(); ++i) {
            const QString name = mFields->GetField(i)->GetName().toQString();
            if (wanted.count(i) || (!clause.isEmpty() && clause.contains(name, Qt::CaseInsensitive)))
                continue;
            ignored.AddString(name.toUtf8().constData());
        }
    }
    if (!filter.IsGeometryNeeded() && !filter.HasSpatialRect())
        ignored.AddString("OGR_GEOMETRY");
    ignored.AddString("OGR_STYLE");
    OGR_L_SetIgnoredFields(layer, const_cast<const char**>(ignored.List()));
    return true;
}

TERefPtr<TEFeatureCursor> TEFeatureLayer::Search(const TEQueryFilter& filter, QString* error) const
{
    TEHandlePool::Lease dataset = AcquireReadDataset(error);
    if (!dataset)
        return {};
    OGRLayerH layer = GDALDatasetGetLayerByName(GDALDatasetH(dataset.get()), mSourceLayerName.toUtf8().constData());
    if (!layer) {
        if (error)
            *error = QStringLiteral("Layer \"%1\" is gone from \"%2\".").arg(mSourceLayerName, GetSource());
        return {};
    }
    bool wholeLayer = false;
    if (!PrepareLayer(layer, ReadFilter(layer, filter, wholeLayer), error))
        return {};
    // Features without geometry are those the dropped rectangle would
    // have left out.
    const TERefPtr<const TEFeatureLayer> self(this);
    TERefPtr<TEFeatureCursor> cursor = MakeRef<TEFeatureCursor>(
        std::move(dataset), layer, mFields, [self](const QString& gdalError) { return self->ReadFailure(gdalError); });
    cursor->SetSkipFeaturesWithoutGeometry(wholeLayer);
    return cursor;
}

TEQueryFilter TEFeatureLayer::ReadFilter(OGRLayerH layer, const TEQueryFilter& filter, bool& wholeLayer) const
{
    // A rectangle holding the whole layer filters nothing, but the driver
    // still tests every feature against it (a GeoPackage joins its R-tree,
    // which doubles the read). Only an extent the source keeps counts:
    // computing one would read every feature. Servers keep their rectangle:
    // their extent may be an estimate.
    wholeLayer = false;
    if (!filter.HasSpatialRect() || GetDriverName() == QLatin1String("PostgreSQL")
        || !OGR_L_TestCapability(layer, OLCFastGetExtent))
        return filter;
    OGREnvelope envelope;
    if (OGR_L_GetExtent(layer, &envelope, FALSE) != OGRERR_NONE)
        return filter;
    const QRectF& rect = filter.GetSpatialRect();
    wholeLayer = rect.left() <= envelope.MinX && envelope.MaxX <= rect.right() && rect.top() <= envelope.MinY
        && envelope.MaxY <= rect.bottom();
    if (!wholeLayer)
        return filter;
    TEQueryFilter plain = filter;
    plain.ClearSpatialRect();
    plain.SetGeometryNeeded(true);
    return plain;
}

TERefPtr<TEFeatureBatchCursor> TEFeatureLayer::SearchBatches(const TEQueryFilter& filter, QString* error,
                                                             bool withIds) const
{
    TEHandlePool::Lease dataset = AcquireReadDataset(nullptr);
    if (!dataset)
        return {};
    OGRLayerH layer = GDALDatasetGetLayerByName(GDALDatasetH(dataset.get()), mSourceLayerName.toUtf8().constData());
    // Batches are drawn, and a feature without geometry draws nothing, so
    // a dropped rectangle needs no further care here.
    bool wholeLayer = false;
    if (!layer || !PrepareLayer(layer, ReadFilter(layer, filter, wholeLayer), error)
        || !OGR_L_TestCapability(layer, OLCFastGetArrowStream))
        return {};
    return TEFeatureBatchCursor::Open(std::move(dataset), layer, mFields, withIds);
}

TERefPtr<TEFeature> TEFeatureLayer::GetFeature(int id) const
{
    QMutexLocker lock(&mMutex);
    if (!SharedReady())
        return {};
    OGRFeatureH feature = OGR_L_GetFeature(mLayer, id);
    return feature ? MakeRef<TEFeature>(feature, mFields) : TERefPtr<TEFeature>();
}

int TEFeatureLayer::GetFeatureCount() const
{
    QMutexLocker lock(&mMutex);
    if (!SharedReady())
        return 0;
    return int(OGR_L_GetFeatureCount(mLayer, TRUE)) + mEditBuffer->GetCountChange();
}

bool TEFeatureLayer::HasFewFeatures(int limit) const
{
    QMutexLocker lock(&mMutex);
    if (!mLayer || GetDriverName() == QLatin1String("PostgreSQL") || !OGR_L_TestCapability(mLayer, OLCFastFeatureCount))
        return false;
    const GIntBig saved = OGR_L_GetFeatureCount(mLayer, FALSE);
    return saved >= 0 && saved + mEditBuffer->GetCountChange() <= limit;
}

bool TEFeatureLayer::GetExtent(QRectF& extent) const
{
    QMutexLocker lock(&mMutex);
    OGREnvelope envelope;
    if (!SharedReady() || OGR_L_GetGeomType(mLayer) == wkbNone || OGR_L_GetExtent(mLayer, &envelope, TRUE) != OGRERR_NONE)
        return false;
    extent = QRectF(QPointF(envelope.MinX, envelope.MinY), QPointF(envelope.MaxX, envelope.MaxY));
    return true;
}

QString TEFeatureLayer::GetSpatialReferenceWkt() const
{
    QMutexLocker lock(&mMutex);
    OGRSpatialReferenceH srs = mLayer ? OGR_L_GetSpatialRef(mLayer) : nullptr;
    if (!srs)
        return {};
    char* wkt = nullptr;
    OSRExportToWkt(srs, &wkt);
    const QString text = QString::fromUtf8(wkt);
    CPLFree(wkt);
    return text;
}

void TEFeatureLayer::SetSymbolRender(TERefPtr<TEFeatureRender> render)
{
    {
        QMutexLocker lock(&mMutex);
        mRender = std::move(render);
    }
    RaiseRenderChanged();
}

void TEFeatureLayer::SetDefaultRender()
{
    // A table without geometry has no style, and so no render.
    const TERefPtr<TEStyle> style = GetDefaultStyle();
    QMutexLocker lock(&mMutex);
    mRender = style ? TERefPtr<TEFeatureRender>(MakeRef<TESingleSymbolRender>(style)) : TERefPtr<TEFeatureRender>();
}

TERefPtr<TEFeatureRender> TEFeatureLayer::GetSymbolRender() const
{
    QMutexLocker lock(&mMutex);
    return mRender;
}

TERefPtr<TERender> TEFeatureLayer::GetRender() const
{
    return GetSymbolRender();
}

TERefPtr<TEStyle> TEFeatureLayer::GetDefaultStyle() const
{
    // A colour of its own per layer, steady for the layer's lifetime.
    static const TEColor palette[] = {TEColor(0x1f, 0x77, 0xb4), TEColor(0xff, 0x7f, 0x0e), TEColor(0x2c, 0xa0, 0x2c),
                                      TEColor(0xd6, 0x27, 0x28), TEColor(0x94, 0x67, 0xbd), TEColor(0x8c, 0x56, 0x4b),
                                      TEColor(0xe3, 0x77, 0xc2), TEColor(0x17, 0xbe, 0xcf)};
    const TEColor color = palette[std::hash<TEString>()(GetGuidStr()) % (sizeof(palette) / sizeof(palette[0]))];
    switch (GetLayerType()) {
    case LT_Point:
    case LT_MultiPoint:
        return QuickStyle::MakeDefaultStyle(TEStyle::PointStyle, color);
    case LT_Line:
        return QuickStyle::MakeDefaultStyle(TEStyle::LineStyle, color);
    case LT_Polygon:
        return QuickStyle::MakeDefaultStyle(TEStyle::FillStyle, color);
    default:
        return {};
    }
}

TEQueryFilter TEFeatureLayer::query_filter() const
{
    QMutexLocker lock(&mMutex);
    return mQueryFilter;
}

void TEFeatureLayer::SetQueryFilter(const TEQueryFilter& filter)
{
    QMutexLocker lock(&mMutex);
    mQueryFilter = filter;
}

bool TEFeatureLayer::HasBeEdited() const
{
    return !mEditBuffer->IsEmpty();
}

TERefPtr<TEFeature> TEFeatureLayer::CreateFeature() const
{
    return MakeRef<TEFeature>(OGR_F_Create(mDefinition), mFields);
}

int TEFeatureLayer::AddFeature(const TERefPtr<TEFeature>& feature)
{
    if (!feature)
        return -1;
    TERefPtr<TEFeature> copy = feature->Clone();
    const int id = mEditBuffer->NextNewId();
    copy->SetId(id);
    mEditBuffer->Record(TEFeatureEditBuffer::EO_Added, copy);
    TouchData();
    RaiseCountEvent(mFeaturesAdded, id);
    return id;
}

bool TEFeatureLayer::UpdateFeature(const TERefPtr<TEFeature>& feature)
{
    if (!feature)
        return false;
    const int id = feature->GetId();
    TEFeatureEditBuffer* edit = mEditBuffer->GetActiveEditFeatureByFeatureId(id);
    if (edit ? edit->edit_operation() == TEFeatureEditBuffer::EO_Deleted : !GetFeature(id))
        return false;
    mEditBuffer->Record(TEFeatureEditBuffer::EO_Modified, feature->Clone());
    TouchData();
    return true;
}

bool TEFeatureLayer::DeleteFeature(int id)
{
    TEFeatureEditBuffer* edit = mEditBuffer->GetActiveEditFeatureByFeatureId(id);
    TERefPtr<TEFeature> feature;
    if (edit) {
        if (edit->edit_operation() == TEFeatureEditBuffer::EO_Deleted)
            return false;
        feature = edit->GetFeature();
    } else {
        feature = GetFeature(id);
        if (!feature)
            return false;
    }
    mEditBuffer->Record(TEFeatureEditBuffer::EO_Deleted, feature);
    TouchData();
    RaiseCountEvent(mFeaturesDeleted, id);
    return true;
}

bool TEFeatureLayer::SaveEdits(QString* error)
{
    if (mEditBuffer->IsEmpty())
        return true;
    // Idle read handles would keep reading what was saved before.
    ClearReadPools();
    const bool written = WriteEdits(error);
    ClearReadPools();
    if (!written)
        return false;
    mEditBuffer->Clear();
    TouchData();
    return true;
}

void TEFeatureLayer::ClearReadPools() const
{
    QMutexLocker lock(&mPoolMutex);
    if (mReadPool)
        mReadPool->Clear();
    if (mSqlitePool)
        mSqlitePool->Clear();
    if (mPostgresPool)
        mPostgresPool->Clear();
}

void TEFeatureLayer::DiscardEdits()
{
    mEditBuffer->Clear();
    TouchData();
}

bool TEFeatureLayer::WriteEdits(QString* error)
{
    CPLErrorReset();
    GDALDatasetH dataset = GDALOpenEx(GetSource().toUtf8().constData(), GDAL_OF_VECTOR | GDAL_OF_UPDATE,
                                      nullptr, nullptr, nullptr);
    OGRLayerH layer = dataset ? GDALDatasetGetLayerByName(dataset, mSourceLayerName.toUtf8().constData()) : nullptr;
    if (!layer) {
        if (error)
            *error = QStringLiteral("Cannot open \"%1\" for writing: %2")
                         .arg(GetSource(), TEGdalSupport::LastError(QStringLiteral("read-only source")));
        if (dataset)
            GDALClose(dataset);
        return false;
    }
    const bool transaction = GDALDatasetStartTransaction(dataset, FALSE) == OGRERR_NONE;
    const bool written = WriteEditsTo(layer, mEditBuffer->GetEdits(), error);
    bool ok = written;
    if (transaction)
        ok = written ? GDALDatasetCommitTransaction(dataset) == OGRERR_NONE
                     : (GDALDatasetRollbackTransaction(dataset), false);
    if (written && !ok && error)
        *error = QStringLiteral("Saving edits failed: %1").arg(TEGdalSupport::LastError());
    GDALClose(dataset);

    // Reopen the shared handle so counts and extents see the saved data.
    QMutexLocker lock(&mMutex);
    ReopenShared();
    return ok;
}

bool TEFeatureLayer::ReopenShared() const
{
    GDALDatasetH fresh = OpenReadDataset(nullptr);
    OGRLayerH freshLayer = fresh ? GDALDatasetGetLayerByName(fresh, mSourceLayerName.toUtf8().constData()) : nullptr;
    if (!freshLayer) {
        if (fresh)
            GDALClose(fresh);
        return false;
    }
    GDALClose(mDataset);
    mDataset = fresh;
    mLayer = freshLayer;
    mSharedLost = false;
    return true;
}

bool TEFeatureLayer::SharedReady() const
{
    // After the server went away the shared connection is dead too; it is
    // replaced once the server answers again.
    if (mSharedLost)
        ReopenShared();
    return mLayer != nullptr;
}

bool TEFeatureLayer::WriteEditsTo(OGRLayerH layer, const std::vector<TERefPtr<TEFeatureEditBuffer>>& edits,
                                  QString* error)
{
    for (const TERefPtr<TEFeatureEditBuffer>& edit : edits) {
        OGRErr result = OGRERR_NONE;
        OGRFeatureH feature = edit->GetFeature()->GetHandle();
        switch (edit->edit_operation()) {
        case TEFeatureEditBuffer::EO_Added: {
            OGRFeatureH copy = OGR_F_Clone(feature);
            OGR_F_SetFID(copy, OGRNullFID);
            result = OGR_L_CreateFeature(layer, copy);
            OGR_F_Destroy(copy);
            break;
        }
        case TEFeatureEditBuffer::EO_Modified:
            result = OGR_L_SetFeature(layer, feature);
            break;
        case TEFeatureEditBuffer::EO_Deleted:
            result = OGR_L_DeleteFeature(layer, OGR_F_GetFID(feature));
            break;
        default:
            break;
        }
        if (result != OGRERR_NONE) {
            if (error)
                *error = QStringLiteral("Saving feature %1 failed: %2")
                             .arg(edit->GetFeatureId())
                             .arg(TEGdalSupport::LastError(QStringLiteral("write error")));
            return false;
        }
    }
    return true;
}

void TEFeatureLayer::RaiseCountEvent(TEEventSignal& signal, int id)
{
    TEFeaturesCountEvent event({id});
    signal.raise(this, &event);
}

TELayer::LayerType TEFeatureLayer::LayerTypeOfGeometry(OGRwkbGeometryType type)
{
    switch (wkbFlatten(type)) {
    case wkbPoint:
        return LT_Point;
    case wkbMultiPoint:
        return LT_MultiPoint;
    case wkbLineString:
    case wkbMultiLineString:
    case wkbCircularString:
    case wkbCompoundCurve:
    case wkbMultiCurve:
        return LT_Line;
    case wkbPolygon:
    case wkbMultiPolygon:
    case wkbCurvePolygon:
    case wkbMultiSurface:
    case wkbTriangle:
    case wkbTIN:
    case wkbPolyhedralSurface:
        return LT_Polygon;
    default:
        return LT_Unknown;
    }
}

} // namespace TZObjects
