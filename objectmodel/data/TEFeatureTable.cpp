#include "data/TEFeatureTable.h"

#include "core/TEKeyIndex.h"

#include "data/TEArrowBatchReader.h"
#include "data/TEGdalSupport.h"
#include "data/TEWhereClause.h"

#include <libpq-fe.h>
#include <ogr_recordbatch.h>
#include <sqlite3.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

namespace TZObjects {

namespace {

QString quoteIdentifier(const QString& name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

// Values in first-met order with their counts. Keys are the UTF-8 bytes of
// the value's text, which is cheaper to hash than a wide string.
class ValueCollector
{
public:
    // One more feature of the value, in reading order.
    void addOne(const std::string& key) { ++rowFor(key, 0).count; }

    // Adds count features of the value; firstFid is the smallest FID that
    // holds it (used to order grouped results).
    void add(const std::string& key, int count, long long firstFid)
    {
        Row& row = rowFor(key, firstFid);
        row.count += count;
        row.firstFid = std::min(row.firstFid, firstFid);
    }

    // Hands every value with its count to out, in first-met order (or by
    // first FID for grouped results).
    void result(bool orderByFirstFid, const TEFeatureTable::ValueSink& out)
    {
        std::vector<size_t> order(mRows.size());
        for (size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        if (orderByFirstFid)
            std::stable_sort(order.begin(), order.end(),
                             [this](size_t a, size_t b) { return mRows[a].firstFid < mRows[b].firstFid; });
        for (const size_t i : order) {
            if (mRows[i].count > 0)
                out(mKeys.Key(i), mRows[i].count);
        }
    }

private:
    // The count and first FID of the key numbered alike in mKeys.
    struct Row
    {
        int count = 0;
        long long firstFid = 0;
    };

    Row& rowFor(const std::string& key, long long firstFid)
    {
        bool added = false;
        const size_t number = mKeys.Add(key, &added);
        if (added)
            mRows.push_back({0, firstFid});
        return mRows[number];
    }

    TEKeyIndex mKeys;
    std::vector<Row> mRows;
};

// The text ToString gives for the field of an OGR feature, as UTF-8.
// Strings and integers, by far the most common keys, skip the variant.
std::string valueKey(OGRFeatureH feature, int ogrIndex, OGRFieldType type)
{
    if (ogrIndex < 0)
        return std::to_string(OGR_F_GetFID(feature));
    if (!OGR_F_IsFieldSetAndNotNull(feature, ogrIndex))
        return std::string();
    switch (type) {
    case OFTString:
        return OGR_F_GetFieldAsString(feature, ogrIndex);
    case OFTInteger:
    case OFTInteger64:
        return std::to_string(OGR_F_GetFieldAsInteger64(feature, ogrIndex));
    default:
        return TEFeature::ReadOgrField(feature, ogrIndex).ToString().toUTF8();
    }
}

std::string featureKey(const TEFeature& feature, int ogrIndex)
{
    OGRFeatureH handle = feature.GetHandle();
    const OGRFieldType type =
        ogrIndex >= 0 ? OGR_Fld_GetType(OGR_F_GetFieldDefnRef(handle, ogrIndex)) : OFTInteger64;
    return valueKey(handle, ogrIndex, type);
}

// The combined key of several fields of an OGR feature.
std::string joinedKey(OGRFeatureH feature, const std::vector<int>& ogrIndexes, const std::string& separator)
{
    std::string key;
    for (size_t i = 0; i < ogrIndexes.size(); ++i) {
        if (i)
            key += separator;
        const int index = ogrIndexes[i];
        const OGRFieldType type =
            index >= 0 ? OGR_Fld_GetType(OGR_F_GetFieldDefnRef(feature, index)) : OFTInteger64;
        key += valueKey(feature, index, type);
    }
    return key;
}

// Writes an integer's decimal text into the key without allocating.
void integerKey(long long value, std::string& key)
{
    char digits[24];
    char* end = digits + sizeof(digits);
    char* at = end;
    unsigned long long magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value)
                                             : static_cast<unsigned long long>(value);
    do {
        *--at = char('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude);
    if (value < 0)
        *--at = '-';
    key.assign(at, size_t(end - at));
}

bool isReadableType(TEField::FieldType type)
{
    return type == TEField::FT_Int16 || type == TEField::FT_Integer || type == TEField::FT_String;
}

} // namespace

// What the layer's edit buffer changes in a collection: saved features that
// are changed or deleted are read from the buffer instead, and unsaved new
// features come after the saved ones. Readers hand the saved features'
// values (with their FIDs, in reading order) or groups to the sink.
class TEFeatureTable::RowSink
{
public:
    bool Build(const TEFeatureLayer& layer, int ogrIndex, const TEQueryFilter& filter, QString* error)
    {
        return Build(layer, [ogrIndex](const TEFeature& feature) { return featureKey(feature, ogrIndex); }, filter,
                     error);
    }

    // As above, with the key of a feature under edit given by keyOf.
    bool Build(const TEFeatureLayer& layer, const std::function<std::string(const TEFeature&)>& keyOf,
               const TEQueryFilter& filter, QString* error)
    {
        const TELayerEditBuffer* buffer = layer.layer_edit_buffer();
        if (!buffer || buffer->IsEmpty())
            return true;
        QString queryError;
        const std::vector<int> passing = buffer->Query(filter, &queryError);
        if (!queryError.isEmpty()) {
            if (error)
                *error = queryError;
            return false;
        }
        const std::unordered_set<int> passes(passing.begin(), passing.end());
        for (const TERefPtr<TEFeatureEditBuffer>& edit : buffer->GetEdits()) {
            const TERefPtr<TEFeature> feature = edit->GetFeature();
            if (!feature)
                continue;
            const int id = feature->GetId();
            const int operation = edit->edit_operation();
            const bool kept = operation != TEFeatureEditBuffer::EO_Deleted && passes.count(id);
            if (operation == TEFeatureEditBuffer::EO_Added) {
                if (kept)
                    mAdded.push_back(keyOf(*feature));
                continue;
            }
            mEdited.insert(id);
            if (kept)
                mChanged.push_back({id, keyOf(*feature)});
        }
        std::sort(mChanged.begin(), mChanged.end(),
                  [](const Changed& a, const Changed& b) { return a.fid < b.fid; });
        mActive = true;
        return true;
    }

    // Whether readers must give FIDs (and skip edited features).
    bool Active() const { return mActive; }
    const std::unordered_set<long long>& Edited() const { return mEdited; }

    // A saved feature, in reading order.
    void Saved(long long fid, const std::string& key)
    {
        if (!mActive) {
            mCollector.addOne(key);
            return;
        }
        // A changed feature that the saved data no longer passes is met
        // where its FID puts it.
        while (mNextChanged < mChanged.size() && mChanged[mNextChanged].fid < fid)
            mCollector.addOne(mChanged[mNextChanged++].key);
        if (!mEdited.count(fid)) {
            mCollector.addOne(key);
            return;
        }
        if (mNextChanged < mChanged.size() && mChanged[mNextChanged].fid == fid)
            mCollector.addOne(mChanged[mNextChanged++].key);
    }

    // A group of saved features (edited ones left out by the reader).
    void Group(const std::string& key, int count, long long firstFid)
    {
        mGrouped = true;
        mCollector.add(key, count, firstFid);
    }

    void Finish(const ValueSink& out)
    {
        if (mGrouped) {
            for (const Changed& changed : mChanged)
                mCollector.add(changed.key, 1, changed.fid);
            long long after = LLONG_MAX / 2;
            for (const std::string& key : mAdded)
                mCollector.add(key, 1, after++);
            mCollector.result(true, out);
            return;
        }
        while (mNextChanged < mChanged.size())
            mCollector.addOne(mChanged[mNextChanged++].key);
        for (const std::string& key : mAdded)
            mCollector.addOne(key);
        mCollector.result(false, out);
    }

private:
    struct Changed
    {
        long long fid;
        std::string key;
    };

    ValueCollector mCollector;
    bool mActive = false;
    bool mGrouped = false;
    std::unordered_set<long long> mEdited;
    std::vector<Changed> mChanged;
    size_t mNextChanged = 0;
    std::vector<std::string> mAdded;
};

int TEFeatureTable::FieldIndex(const TEString& fieldName, QString* error) const
{
    const int index = mLayer->GetFields()->FindField(fieldName);
    if (index < 0 || index == 1) {
        if (error)
            *error = index < 0 ? QStringLiteral("The layer has no field \"%1\".").arg(fieldName.toQString())
                               : QStringLiteral("Values of the geometry field cannot be listed.");
        return -1;
    }
    return index;
}

bool TEFeatureTable::CanPushDown(const TEString& fieldName) const
{
    const QString driver = mLayer->GetDriverName();
    if (driver != QLatin1String("GPKG") && driver != QLatin1String("SQLite") && driver != QLatin1String("PostgreSQL"))
        return false;
    const int index = mLayer->GetFields()->FindField(fieldName);
    if (index < 2)
        return false;
    // Only types whose SQL value reads back to the same text; reals (-0,
    // NaN) and dates (stored as ISO text with a 'T') may not.
    return isReadableType(mLayer->GetFields()->GetField(index)->GetFieldType());
}

TEFeatureTable::Method TEFeatureTable::MethodFor(const TEString& fieldName, const TEQueryFilter& filter) const
{
    const QString driver = mLayer->GetDriverName();
    if (driver == QLatin1String("PostgreSQL"))
        return CanPushDown(fieldName) && !filter.HasSpatialRect() ? Method::PushDown : Method::Cursor;
    const int index = mLayer->GetFields()->FindField(fieldName);
    if (index < 2 || !isReadableType(mLayer->GetFields()->GetField(index)->GetFieldType()))
        return Method::Cursor;
    bool fastArrow = false;
    {
        QMutexLocker lock(&mLayer->mMutex);
        fastArrow = mLayer->mLayer && mLayer->GetDatasourceClassName() == TEString(L"TEFeatureLayer")
            && OGR_L_TestCapability(mLayer->mLayer, OLCFastGetArrowStream);
    }
    // The driver's own Arrow stream reads a column in batches and beats
    // reading it row by row.
    if (fastArrow)
        return Method::ArrowStream;
    if (!filter.HasSpatialRect() && (driver == QLatin1String("GPKG") || driver == QLatin1String("SQLite")))
        return Method::SqliteRead;
    return Method::Cursor;
}

bool TEFeatureTable::GetDistinctValues(const TEString& fieldName, std::vector<TEString>& values, QString* error) const
{
    return GetDistinctValues(fieldName, mLayer->query_filter(), values, error);
}

bool TEFeatureTable::GetDistinctValues(const TEString& fieldName, const TEQueryFilter& filter,
                                       std::vector<TEString>& values, QString* error) const
{
    values.clear();
    return Collect(fieldName, filter,
                   [&values](const std::string& key, int) { values.push_back(TEString::fromUtf8(key)); }, error);
}

bool TEFeatureTable::GetValueCounts(const TEString& fieldName, std::vector<ValueCount>& counts, QString* error) const
{
    return GetValueCounts(fieldName, mLayer->query_filter(), counts, error);
}

bool TEFeatureTable::GetValueCounts(const TEString& fieldName, const TEQueryFilter& filter,
                                    std::vector<ValueCount>& counts, QString* error) const
{
    counts.clear();
    return Collect(fieldName, filter,
                   [&counts](const std::string& key, int count) { counts.push_back({TEString::fromUtf8(key), count}); },
                   error);
}

bool TEFeatureTable::GetValueTexts(const TEString& fieldName, const TEQueryFilter& filter, QStringList& values,
                                   std::vector<int>& counts, QString* error) const
{
    values.clear();
    counts.clear();
    return Collect(fieldName, filter,
                   [&values, &counts](const std::string& key, int count) {
                       values.append(QString::fromUtf8(key.data(), int(key.size())));
                       counts.push_back(count);
                   },
                   error);
}

bool TEFeatureTable::Collect(const TEString& fieldName, const TEQueryFilter& filter, const ValueSink& out,
                             QString* error) const
{
    // Distinct values cost the same as counts on every path: each reads the
    // field once and the counting is a hash lookup per feature.
    const int index = FieldIndex(fieldName, error);
    if (index < 0)
        return false;
    // The clause goes into SQL text on some paths: only a clause that parses
    // as one condition on this layer's fields may reach the source, never
    // text that closes the condition and adds SQL of its own.
    TEWhereClause check;
    if (!check.Compile(mLayer->mDefinition, filter.GetWhereClause(), error))
        return false;
    RowSink sink;
    if (!sink.Build(*mLayer, mLayer->GetFields()->GetField(index)->GetOgrIndex(), filter, error))
        return false;

    const Method method = mMethod == Method::Automatic ? MethodFor(fieldName, filter) : mMethod;
    bool read = false;
    switch (method) {
    case Method::PushDown:
        read = CanPushDown(fieldName) && ReadPushDown(index, filter, sink, nullptr);
        break;
    case Method::SqliteRead:
        read = ReadSqlite(index, filter, sink);
        break;
    case Method::ArrowStream:
        read = ReadArrow(index, filter, sink);
        break;
    default:
        break;
    }
    if (!read) {
        RowSink fresh;
        fresh.Build(*mLayer, mLayer->GetFields()->GetField(index)->GetOgrIndex(), filter, nullptr);
        mLastMethod = Method::Cursor;
        if (!ReadCursor(index, filter, fresh, error))
            return false;
        fresh.Finish(out);
        return true;
    }
    mLastMethod = method;
    sink.Finish(out);
    return true;
}

QString TEFeatureTable::FidColumn() const
{
    QMutexLocker lock(&mLayer->mMutex);
    return mLayer->mLayer ? QString::fromUtf8(OGR_L_GetFIDColumn(mLayer->mLayer)) : QString();
}

namespace {

// The table name of a layer in its source's SQL ("schema"."table" for a
// PostGIS layer named schema.table, or schema.table(geom), GDAL's name for
// one geometry column of a table that has several).
QString sqlTable(const QString& layerName, bool postgres)
{
    if (!postgres)
        return quoteIdentifier(layerName);
    QString name = layerName;
    const int paren = name.lastIndexOf(QLatin1Char('('));
    if (paren > 0 && name.endsWith(QLatin1Char(')')))
        name.truncate(paren);
    const int dot = name.indexOf(QLatin1Char('.'));
    if (dot > 0)
        return quoteIdentifier(name.left(dot)) + QLatin1Char('.') + quoteIdentifier(name.mid(dot + 1));
    return quoteIdentifier(name);
}

// " WHERE ..." from the filter's clause and the FIDs to leave out.
QString sqlWhere(const TEQueryFilter& filter, const QString& fidColumn, const std::unordered_set<long long>& without)
{
    QStringList terms;
    if (!filter.GetWhereClause().IsEmpty())
        terms << QStringLiteral("(%1)").arg(filter.GetWhereClause().toQString());
    if (!without.empty()) {
        QStringList ids;
        for (long long id : without) {
            if (id >= 0)
                ids << QString::number(id);
        }
        if (!ids.isEmpty())
            terms << QStringLiteral("%1 NOT IN (%2)").arg(quoteIdentifier(fidColumn), ids.join(QLatin1Char(',')));
    }
    return terms.isEmpty() ? QString() : QStringLiteral(" WHERE ") + terms.join(QStringLiteral(" AND "));
}

} // namespace

bool TEFeatureTable::ReadGroupsPostgres(const std::vector<int>& fieldIndexes, const std::string& separator,
                                        const TEQueryFilter& filter, RowSink& sink, QString* error) const
{
    const QString fidColumn = FidColumn();
    if (fidColumn.isEmpty())
        return false;
    // Only columns whose text from the server is the text a cursor gives:
    // strings and integers (booleans read as 0 and 1, as GDAL reads them);
    // not lists, whose texts differ.
    QStringList columns;
    QStringList selected;
    for (int index : fieldIndexes) {
        const int ogrIndex = mLayer->GetFields()->GetField(index)->GetOgrIndex();
        OGRFieldDefnH definition = ogrIndex >= 0 ? OGR_FD_GetFieldDefn(mLayer->mDefinition, ogrIndex) : nullptr;
        const OGRFieldType type = definition ? OGR_Fld_GetType(definition) : OFTMaxType;
        if (type != OFTString && type != OFTInteger && type != OFTInteger64)
            return false;
        const QString column = quoteIdentifier(mLayer->GetFields()->GetField(index)->GetName().toQString());
        columns << column;
        selected << (OGR_Fld_GetSubType(definition) == OFSTBoolean ? column + QStringLiteral("::int") : column);
    }
    TEHandlePool::Lease lease = mLayer->AcquirePostgres(error);
    if (!lease)
        return false;
    PGconn* connection = static_cast<PGconn*>(lease.get());

    // The filter is the user's condition, checked to be one (it is what the
    // cursor's GDAL query holds too); the features under edit go in as one
    // bound array.
    QStringList terms;
    if (!filter.GetWhereClause().IsEmpty())
        terms << QStringLiteral("(%1)").arg(filter.GetWhereClause().toQString());
    QStringList edited;
    for (long long id : sink.Edited()) {
        if (id >= 0)
            edited << QString::number(id);
    }
    const QByteArray editedArray = (QLatin1Char('{') + edited.join(QLatin1Char(',')) + QLatin1Char('}')).toUtf8();
    if (!edited.isEmpty())
        terms << QStringLiteral("%1 <> ALL($1::bigint[])").arg(quoteIdentifier(fidColumn));
    const QString sql = QStringLiteral("SELECT %1, COUNT(*), MIN(%2) FROM %3%4 GROUP BY %5")
                            .arg(selected.join(QStringLiteral(", ")), quoteIdentifier(fidColumn),
                                 sqlTable(mLayer->GetSourceLayerName(), true),
                                 terms.isEmpty() ? QString() : QStringLiteral(" WHERE ") + terms.join(QStringLiteral(" AND ")),
                                 columns.join(QStringLiteral(", ")));
    const char* parameters[] = {editedArray.constData()};
    PGresult* result = PQexecParams(connection, sql.toUtf8().constData(), edited.isEmpty() ? 0 : 1, nullptr,
                                    parameters, nullptr, nullptr, 0);
    if (PQresultStatus(result) != PGRES_TUPLES_OK) {
        if (error)
            *error = QString::fromUtf8(PQresultErrorMessage(result)).trimmed();
        PQclear(result);
        // A connection the server dropped is no use to the next query.
        if (PQstatus(connection) != CONNECTION_OK)
            lease.invalidate();
        return false;
    }
    const int n = int(fieldIndexes.size());
    const int rows = PQntuples(result);
    std::string key;
    for (int row = 0; row < rows; ++row) {
        key.clear();
        for (int i = 0; i < n; ++i) {
            if (i)
                key += separator;
            // A null reads as "", as ToString gives it.
            key.append(PQgetvalue(result, row, i), size_t(PQgetlength(result, row, i)));
        }
        sink.Group(key, std::atoi(PQgetvalue(result, row, n)), std::atoll(PQgetvalue(result, row, n + 1)));
    }
    PQclear(result);
    return true;
}

bool TEFeatureTable::ReadPushDown(int fieldIndex, const TEQueryFilter& filter, RowSink& sink, QString* error) const
{
    // The source's SQL knows nothing of the rectangle; leave that to a scan.
    if (filter.HasSpatialRect())
        return false;
    if (mLayer->IsPostgres())
        return ReadGroupsPostgres({fieldIndex}, std::string(), filter, sink, error);
    // GeoPackage and SQLite: a table without an FID column still has rowid.
    QString fidColumn = FidColumn();
    if (fidColumn.isEmpty())
        fidColumn = QStringLiteral("rowid");
    TEHandlePool::Lease lease = mLayer->AcquireReadDataset(error);
    if (!lease)
        return false;
    GDALDatasetH dataset = GDALDatasetH(lease.get());

    const QString column = quoteIdentifier(mLayer->GetFields()->GetField(fieldIndex)->GetName().toQString());
    const QString sql = QStringLiteral("SELECT %1, COUNT(*), MIN(%2) FROM %3%4 GROUP BY %1")
                            .arg(column, quoteIdentifier(fidColumn),
                                 sqlTable(mLayer->GetSourceLayerName(), false),
                                 sqlWhere(filter, fidColumn, sink.Edited()));
    CPLErrorReset();
    OGRLayerH rows = GDALDatasetExecuteSQL(dataset, sql.toUtf8().constData(), nullptr, nullptr);
    if (!rows) {
        if (error)
            *error = TEGdalSupport::LastError(QStringLiteral("SQL query failed"));
        return false;
    }
    OGRFeatureDefnH definition = OGR_L_GetLayerDefn(rows);
    const OGRFieldType type = OGR_Fld_GetType(OGR_FD_GetFieldDefn(definition, 0));
    while (OGRFeatureH row = OGR_L_GetNextFeature(rows)) {
        sink.Group(valueKey(row, 0, type), OGR_F_GetFieldAsInteger(row, 1), OGR_F_GetFieldAsInteger64(row, 2));
        OGR_F_Destroy(row);
    }
    GDALDatasetReleaseResultSet(dataset, rows);
    return true;
}

bool TEFeatureTable::ReadSqlite(int fieldIndex, const TEQueryFilter& filter, RowSink& sink) const
{
    const TERefPtr<TEField> field = mLayer->GetFields()->GetField(fieldIndex);
    if (filter.HasSpatialRect() || fieldIndex < 2 || !isReadableType(field->GetFieldType()))
        return false;
    TEHandlePool::Lease lease = mLayer->AcquireSqlite(nullptr);
    if (!lease)
        return false;
    sqlite3* db = static_cast<sqlite3*>(lease.get());
    QString fidColumn = FidColumn();
    if (fidColumn.isEmpty())
        fidColumn = QStringLiteral("rowid");

    // Edited features are left out by FID here rather than in SQL, so the
    // statement stays the same whatever the edits.
    const bool withFid = sink.Active();
    const QString column = quoteIdentifier(field->GetName().toQString());
    const QString sql = QStringLiteral("SELECT %1%2 FROM %3%4")
                            .arg(column, withFid ? QStringLiteral(", ") + quoteIdentifier(fidColumn) : QString(),
                                 sqlTable(mLayer->GetSourceLayerName(), false),
                                 sqlWhere(filter, fidColumn, {}));
    sqlite3_stmt* statement = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(db, utf8.constData(), utf8.size(), &statement, nullptr) != SQLITE_OK) {
        // A clause that needs the driver's own SQL functions: let OGR read.
        sqlite3_finalize(statement);
        return false;
    }
    // Read as OGR reads the column: strings as text, integers as numbers.
    const bool text = field->GetFieldType() == TEField::FT_String;
    std::string key;
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        if (sqlite3_column_type(statement, 0) == SQLITE_NULL) {
            key.clear();
        } else if (text) {
            const char* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
            key.assign(bytes ? bytes : "", size_t(sqlite3_column_bytes(statement, 0)));
        } else {
            integerKey(sqlite3_column_int64(statement, 0), key);
        }
        sink.Saved(withFid ? sqlite3_column_int64(statement, 1) : 0, key);
    }
    sqlite3_finalize(statement);
    return step == SQLITE_DONE;
}

bool TEFeatureTable::ReadArrow(int fieldIndex, const TEQueryFilter& filter, RowSink& sink) const
{
    const TERefPtr<TEField> field = mLayer->GetFields()->GetField(fieldIndex);
    if (fieldIndex < 2 || !isReadableType(field->GetFieldType()))
        return false;
    TEHandlePool::Lease lease = mLayer->AcquireReadDataset(nullptr);
    if (!lease)
        return false;
    OGRLayerH layer =
        GDALDatasetGetLayerByName(GDALDatasetH(lease.get()), mLayer->GetSourceLayerName().toUtf8().constData());
    TEQueryFilter oneField = filter;
    oneField.SetSubFields({field->GetName()});
    oneField.SetGeometryNeeded(false);
    if (!layer || !mLayer->PrepareLayer(layer, oneField, nullptr))
        return false;

    const bool withFid = sink.Active();
    constexpr int64_t batchSize = 65536;
    const QByteArray batchOption = "MAX_FEATURES_IN_BATCH=" + QByteArray::number(qint64(batchSize));
    char* options[] = {const_cast<char*>(withFid ? "INCLUDE_FID=YES" : "INCLUDE_FID=NO"),
                       const_cast<char*>(batchOption.constData()), nullptr};
    ArrowArrayStream stream{};
    if (!OGR_L_GetArrowStream(layer, &stream, options))
        return false;
    ArrowSchema schema{};
    bool ok = stream.get_schema(&stream, &schema) == 0;
    const QByteArray name = field->GetName().toQString().toUtf8();
    QByteArray fidName = FidColumn().toUtf8();
    if (fidName.isEmpty())
        fidName = "OGC_FID";
    int valueChild = -1;
    int fidChild = -1;
    for (int64_t i = 0; ok && i < schema.n_children; ++i) {
        if (name == schema.children[i]->name)
            valueChild = int(i);
        else if (fidName == schema.children[i]->name)
            fidChild = int(i);
    }
    const char* format = valueChild >= 0 ? schema.children[valueChild]->format : "";
    const char kind = std::strlen(format) == 1 ? format[0] : '\0';
    ok = ok && valueChild >= 0 && (!withFid || fidChild >= 0) && std::strchr("uUbcsil", kind);

    std::string key;
    {
        // GDAL reads the next batches while this thread counts the last one.
        TEArrowBatchReader reader(stream, batchSize);
        ArrowArray batch{};
        while (ok && reader.Next(batch)) {
            const ArrowArray* values = batch.children[valueChild];
            const ArrowArray* fids = withFid ? batch.children[fidChild] : nullptr;
            const auto* validity = static_cast<const uint8_t*>(values->buffers[0]);
            for (int64_t row = 0; row < batch.length; ++row) {
                const int64_t at = values->offset + row;
                if (validity && !(validity[at >> 3] & (1 << (at & 7)))) {
                    key.clear();
                } else {
                    switch (kind) {
                    case 'u': {
                        const auto* offsets = static_cast<const int32_t*>(values->buffers[1]);
                        key.assign(static_cast<const char*>(values->buffers[2]) + offsets[at],
                                   size_t(offsets[at + 1] - offsets[at]));
                        break;
                    }
                    case 'U': {
                        const auto* offsets = static_cast<const int64_t*>(values->buffers[1]);
                        key.assign(static_cast<const char*>(values->buffers[2]) + offsets[at],
                                   size_t(offsets[at + 1] - offsets[at]));
                        break;
                    }
                    case 'b':
                        integerKey((static_cast<const uint8_t*>(values->buffers[1])[at >> 3] >> (at & 7)) & 1, key);
                        break;
                    case 'c':
                        integerKey(static_cast<const int8_t*>(values->buffers[1])[at], key);
                        break;
                    case 's':
                        integerKey(static_cast<const int16_t*>(values->buffers[1])[at], key);
                        break;
                    case 'i':
                        integerKey(static_cast<const int32_t*>(values->buffers[1])[at], key);
                        break;
                    default:
                        integerKey(static_cast<const int64_t*>(values->buffers[1])[at], key);
                        break;
                    }
                }
                const long long fid = fids ? static_cast<const int64_t*>(fids->buffers[1])[fids->offset + row] : 0;
                sink.Saved(fid, key);
            }
            batch.release(&batch);
        }
        ok = ok && !reader.Failed();
    }
    if (schema.release)
        schema.release(&schema);
    stream.release(&stream);
    OGR_L_ResetReading(layer);
    return ok;
}

bool TEFeatureTable::ReadCursor(int fieldIndex, const TEQueryFilter& filter, RowSink& sink, QString* error) const
{
    TEQueryFilter scanFilter = filter;
    const TERefPtr<TEField> field = mLayer->GetFields()->GetField(fieldIndex);
    scanFilter.SetSubFields({field->GetName()});
    scanFilter.SetGeometryNeeded(false);
    TERefPtr<TEFeatureCursor> cursor = mLayer->Search(scanFilter, error);
    if (!cursor)
        return false;

    const int ogrIndex = field->GetOgrIndex();
    OGRFieldType type = OFTString;
    bool typeKnown = false;
    // A server table gives its rows in storage order, which an update
    // changes (the new row version goes elsewhere); values are met in FID
    // order there, as the grouped query orders them and as a GeoPackage of
    // the same data gives them.
    const bool server = mLayer->GetDriverName() == QLatin1String("PostgreSQL");
    std::vector<std::pair<long long, std::string>> rows;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        if (!typeKnown && ogrIndex >= 0) {
            type = OGR_Fld_GetType(OGR_F_GetFieldDefnRef(feature, ogrIndex));
            typeKnown = true;
        }
        if (server)
            rows.emplace_back(OGR_F_GetFID(feature), valueKey(feature, ogrIndex, type));
        else
            sink.Saved(OGR_F_GetFID(feature), valueKey(feature, ogrIndex, type));
        OGR_F_Destroy(feature);
    }
    if (!cursor->GetError().isEmpty()) {
        if (error)
            *error = cursor->GetError();
        return false;
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& row : rows)
        sink.Saved(row.first, row.second);
    return true;
}

bool TEFeatureTable::GetKeyTexts(const std::vector<TEString>& fieldNames, const QString& separator,
                                 const TEQueryFilter& filter, QStringList& keys, std::vector<int>& counts,
                                 QString* error) const
{
    keys.clear();
    counts.clear();
    if (fieldNames.empty()) {
        if (error)
            *error = QStringLiteral("No field is chosen.");
        return false;
    }
    std::vector<int> indexes;
    std::vector<int> ogrIndexes;
    bool pushable = !filter.HasSpatialRect();
    for (const TEString& name : fieldNames) {
        const int index = FieldIndex(name, error);
        if (index < 0)
            return false;
        indexes.push_back(index);
        ogrIndexes.push_back(mLayer->GetFields()->GetField(index)->GetOgrIndex());
        pushable = pushable && CanPushDown(name);
    }
    const std::string sep = separator.toStdString();
    const auto keyOf = [&ogrIndexes, &sep](const TEFeature& feature) {
        return joinedKey(feature.GetHandle(), ogrIndexes, sep);
    };
    const ValueSink out = [&keys, &counts](const std::string& key, int count) {
        keys.append(QString::fromUtf8(key.data(), int(key.size())));
        counts.push_back(count);
    };

    // Grouping by several fields is what the source's SQL does well: unlike
    // one field, a combined key would have to be built per feature here.
    if (pushable && (mMethod == Method::Automatic || mMethod == Method::PushDown)) {
        RowSink sink;
        if (!sink.Build(*mLayer, keyOf, filter, error))
            return false;
        if (ReadKeysPushDown(indexes, sep, filter, sink)) {
            mLastMethod = Method::PushDown;
            sink.Finish(out);
            return true;
        }
    }
    RowSink sink;
    if (!sink.Build(*mLayer, keyOf, filter, error))
        return false;
    mLastMethod = Method::Cursor;
    if (!ReadKeysCursor(indexes, sep, filter, sink, error))
        return false;
    sink.Finish(out);
    return true;
}

bool TEFeatureTable::ReadKeysPushDown(const std::vector<int>& fieldIndexes, const std::string& separator,
                                      const TEQueryFilter& filter, RowSink& sink) const
{
    if (mLayer->IsPostgres())
        return ReadGroupsPostgres(fieldIndexes, separator, filter, sink, nullptr);
    // GeoPackage and SQLite: a table without an FID column still has rowid.
    QString fidColumn = FidColumn();
    if (fidColumn.isEmpty())
        fidColumn = QStringLiteral("rowid");
    TEHandlePool::Lease lease = mLayer->AcquireReadDataset(nullptr);
    if (!lease)
        return false;
    GDALDatasetH dataset = GDALDatasetH(lease.get());

    QStringList columns;
    for (int index : fieldIndexes)
        columns << quoteIdentifier(mLayer->GetFields()->GetField(index)->GetName().toQString());
    const QString grouped = columns.join(QStringLiteral(", "));
    const QString sql = QStringLiteral("SELECT %1, COUNT(*), MIN(%2) FROM %3%4 GROUP BY %1")
                            .arg(grouped, quoteIdentifier(fidColumn),
                                 sqlTable(mLayer->GetSourceLayerName(), false),
                                 sqlWhere(filter, fidColumn, sink.Edited()));
    CPLErrorReset();
    OGRLayerH rows = GDALDatasetExecuteSQL(dataset, sql.toUtf8().constData(), nullptr, nullptr);
    if (!rows)
        return false;
    const int n = int(fieldIndexes.size());
    std::vector<int> resultIndexes;
    for (int i = 0; i < n; ++i)
        resultIndexes.push_back(i);
    while (OGRFeatureH row = OGR_L_GetNextFeature(rows)) {
        sink.Group(joinedKey(row, resultIndexes, separator), OGR_F_GetFieldAsInteger(row, n),
                   OGR_F_GetFieldAsInteger64(row, n + 1));
        OGR_F_Destroy(row);
    }
    GDALDatasetReleaseResultSet(dataset, rows);
    return true;
}

bool TEFeatureTable::ReadKeysCursor(const std::vector<int>& fieldIndexes, const std::string& separator,
                                    const TEQueryFilter& filter, RowSink& sink, QString* error) const
{
    TEQueryFilter scanFilter = filter;
    std::vector<TEString> names;
    std::vector<int> ogrIndexes;
    for (int index : fieldIndexes) {
        const TERefPtr<TEField> field = mLayer->GetFields()->GetField(index);
        names.push_back(field->GetName());
        ogrIndexes.push_back(field->GetOgrIndex());
    }
    scanFilter.SetSubFields(names);
    scanFilter.SetGeometryNeeded(false);
    TERefPtr<TEFeatureCursor> cursor = mLayer->Search(scanFilter, error);
    if (!cursor)
        return false;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        sink.Saved(OGR_F_GetFID(feature), joinedKey(feature, ogrIndexes, separator));
        OGR_F_Destroy(feature);
    }
    if (!cursor->GetError().isEmpty()) {
        if (error)
            *error = cursor->GetError();
        return false;
    }
    return true;
}

} // namespace TZObjects
