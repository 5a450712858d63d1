#include "data/TEFeatureTable.h"

#include "data/TEGdalSupport.h"

#include <algorithm>
#include <string>
#include <unordered_map>

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
    // Adds count features of the value; firstFid is the smallest FID that
    // holds it (only used to order pushed-down groups).
    void add(const std::string& key, int count, long long firstFid = 0)
    {
        auto found = mIndex.find(key);
        if (found == mIndex.end()) {
            mIndex.emplace(key, mRows.size());
            mRows.push_back({key, count, firstFid});
            return;
        }
        Row& row = mRows[found->second];
        row.count += count;
        row.firstFid = std::min(row.firstFid, firstFid);
    }

    std::vector<TEFeatureTable::ValueCount> result(bool orderByFirstFid)
    {
        if (orderByFirstFid)
            std::stable_sort(mRows.begin(), mRows.end(),
                             [](const Row& a, const Row& b) { return a.firstFid < b.firstFid; });
        std::vector<TEFeatureTable::ValueCount> values;
        values.reserve(mRows.size());
        for (const Row& row : mRows)
            values.push_back({TEString::fromUtf8(row.key), row.count});
        return values;
    }

private:
    struct Row
    {
        std::string key;
        int count = 0;
        long long firstFid = 0;
    };
    std::unordered_map<std::string, size_t> mIndex;
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

} // namespace

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
    const TEField::FieldType type = mLayer->GetFields()->GetField(index)->GetFieldType();
    return type == TEField::FT_Int16 || type == TEField::FT_Integer || type == TEField::FT_String;
}

bool TEFeatureTable::GetDistinctValues(const TEString& fieldName, std::vector<TEString>& values, QString* error) const
{
    return GetDistinctValues(fieldName, mLayer->query_filter(), values, error);
}

bool TEFeatureTable::GetDistinctValues(const TEString& fieldName, const TEQueryFilter& filter,
                                       std::vector<TEString>& values, QString* error) const
{
    values.clear();
    const int index = FieldIndex(fieldName, error);
    if (index < 0)
        return false;
    std::vector<ValueCount> counts;
    if (!(mPushDownEnabled && CanPushDown(fieldName) && PushDown(Query::Distinct, index, filter, counts, nullptr))
        && !Scan(index, filter, counts, error))
        return false;
    values.reserve(counts.size());
    for (ValueCount& entry : counts)
        values.push_back(std::move(entry.value));
    return true;
}

bool TEFeatureTable::GetValueCounts(const TEString& fieldName, std::vector<ValueCount>& counts, QString* error) const
{
    return GetValueCounts(fieldName, mLayer->query_filter(), counts, error);
}

bool TEFeatureTable::GetValueCounts(const TEString& fieldName, const TEQueryFilter& filter,
                                    std::vector<ValueCount>& counts, QString* error) const
{
    counts.clear();
    const int index = FieldIndex(fieldName, error);
    if (index < 0)
        return false;
    if (mPushDownEnabled && CanPushDown(fieldName) && PushDown(Query::Counts, index, filter, counts, nullptr))
        return true;
    return Scan(index, filter, counts, error);
}

bool TEFeatureTable::PushDown(Query query, int fieldIndex, const TEQueryFilter& filter,
                              std::vector<ValueCount>& result, QString* error) const
{
    // The source's SQL knows nothing of the rectangle; leave that to a scan.
    if (filter.HasSpatialRect())
        return false;
    GDALDatasetH dataset = mLayer->OpenReadDataset(error);
    if (!dataset)
        return false;
    const bool postgres = mLayer->GetDriverName() == QLatin1String("PostgreSQL");
    OGRLayerH layer = GDALDatasetGetLayerByName(dataset, mLayer->GetSourceLayerName().toUtf8().constData());
    QString fidColumn = layer ? QString::fromUtf8(OGR_L_GetFIDColumn(layer)) : QString();
    if (fidColumn.isEmpty() && !postgres)
        fidColumn = QStringLiteral("rowid");
    if (!layer || (query == Query::Counts && fidColumn.isEmpty())) {
        GDALClose(dataset);
        return false;
    }

    QString table;
    const QString layerName = mLayer->GetSourceLayerName();
    const int dot = layerName.indexOf(QLatin1Char('.'));
    if (postgres && dot > 0)
        table = quoteIdentifier(layerName.left(dot)) + QLatin1Char('.') + quoteIdentifier(layerName.mid(dot + 1));
    else
        table = quoteIdentifier(layerName);
    const QString column = quoteIdentifier(mLayer->GetFields()->GetField(fieldIndex)->GetName().toQString());
    const QString where = filter.GetWhereClause().IsEmpty()
        ? QString()
        : QStringLiteral(" WHERE (%1)").arg(filter.GetWhereClause().toQString());
    const QString sql = query == Query::Distinct
        ? QStringLiteral("SELECT DISTINCT %1 FROM %2%3").arg(column, table, where)
        : QStringLiteral("SELECT %1, COUNT(*), MIN(%4) FROM %2%3 GROUP BY %1")
              .arg(column, table, where, quoteIdentifier(fidColumn));

    CPLErrorReset();
    OGRLayerH rows = GDALDatasetExecuteSQL(dataset, sql.toUtf8().constData(), nullptr, nullptr);
    if (!rows) {
        if (error)
            *error = TEGdalSupport::LastError(QStringLiteral("SQL query failed"));
        GDALClose(dataset);
        return false;
    }
    ValueCollector collector;
    OGRFeatureDefnH definition = OGR_L_GetLayerDefn(rows);
    const OGRFieldType type = OGR_Fld_GetType(OGR_FD_GetFieldDefn(definition, 0));
    while (OGRFeatureH row = OGR_L_GetNextFeature(rows)) {
        if (query == Query::Distinct)
            collector.add(valueKey(row, 0, type), 0);
        else
            collector.add(valueKey(row, 0, type), OGR_F_GetFieldAsInteger(row, 1), OGR_F_GetFieldAsInteger64(row, 2));
        OGR_F_Destroy(row);
    }
    GDALDatasetReleaseResultSet(dataset, rows);
    GDALClose(dataset);
    result = collector.result(query == Query::Counts);
    return true;
}

bool TEFeatureTable::Scan(int fieldIndex, const TEQueryFilter& filter, std::vector<ValueCount>& result,
                          QString* error) const
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
    ValueCollector collector;
    bool typeKnown = false;
    while (OGRFeatureH feature = cursor->NextOgrFeature()) {
        if (!typeKnown && ogrIndex >= 0) {
            type = OGR_Fld_GetType(OGR_F_GetFieldDefnRef(feature, ogrIndex));
            typeKnown = true;
        }
        collector.add(valueKey(feature, ogrIndex, type), 1);
        OGR_F_Destroy(feature);
    }
    result = collector.result(false);
    return true;
}

} // namespace TZObjects
