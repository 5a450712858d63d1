#pragma once

#include "data/TEFeatureLayer.h"

#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace TZObjects {

// The attribute table of a feature layer: its fields, the distinct values of
// a field and the values with their counts. Values are the texts
// TEVariant::ToString gives, so a null and an empty string are the same
// value "". Every way of reading gives the same values, counts and order:
// the order in which a scan of the layer as edited meets them first (saved
// features in source order, a changed feature in its place, unsaved new
// features last). Unsaved adds, changes and deletes of the layer's edit
// buffer count as if they were saved.
class TZOBJECTS_EXPORT TEFeatureTable : public TERefBase
{
public:
    struct ValueCount
    {
        TEString value;
        int count = 0;
        bool operator==(const ValueCount& o) const { return value == o.value && count == o.count; }
    };

    // How the saved features are read.
    enum class Method {
        Automatic,    // the fastest that fits the source and the field (MethodFor)
        PushDown,     // the source's SQL groups and counts (GROUP BY, first FID)
        SqliteRead,   // GeoPackage/SQLite: one column read straight through SQLite
        ArrowStream,  // OGR's Arrow stream of the one field, no geometry
        Cursor        // a cursor reading the one field, no geometry
    };

    explicit TEFeatureTable(TERefPtr<const TEFeatureLayer> layer) : mLayer(std::move(layer)) {}

    TEFields* GetFields() const { return mLayer->GetFields().get(); }
    // "TEFeatureLayer", or "TEMemoryFeatureLayer" for an in-memory layer.
    TEString GetClassName() const { return mLayer->GetDatasourceClassName(); }

    // Whether queries on this field can be pushed down to the source's SQL
    // (its SQL texts read back as the texts a cursor gives).
    bool CanPushDown(const TEString& fieldName) const;

    // Automatic by default. A method that cannot serve a query (a field type
    // it cannot read, a rectangle SQL knows nothing of, a driver without
    // SQL) falls back to the cursor.
    void SetMethod(Method method) { mMethod = method; }
    Method GetMethod() const { return mMethod; }
    // What Automatic uses for the field and filter: SQL push-down for a
    // server (PostGIS); for a local source the Arrow stream where the driver
    // offers a fast one (GeoPackage does), else the one-column SQLite read
    // for GeoPackage and SQLite files, else the cursor. Counting one field
    // in a hash table on the client beats a local file's GROUP BY; a server
    // is better asked to do the work.
    Method MethodFor(const TEString& fieldName, const TEQueryFilter& filter) const;
    // The method that served the last query (after any fallback).
    Method GetLastMethod() const { return mLastMethod; }

    // Distinct values of the field among the features passing the filter
    // (the layer's query filter in the first form), each once, in the order
    // first met. False, with an error text, for an unknown field or a
    // failed query.
    bool GetDistinctValues(const TEString& fieldName, std::vector<TEString>& values, QString* error = nullptr) const;
    bool GetDistinctValues(const TEString& fieldName, const TEQueryFilter& filter, std::vector<TEString>& values,
                           QString* error = nullptr) const;

    // Each distinct value with the number of features holding it, in the
    // order first met.
    bool GetValueCounts(const TEString& fieldName, std::vector<ValueCount>& counts, QString* error = nullptr) const;
    bool GetValueCounts(const TEString& fieldName, const TEQueryFilter& filter, std::vector<ValueCount>& counts,
                        QString* error = nullptr) const;

    // The values as QStrings, with their counts alongside (what the panels
    // show), without going through TEString.
    bool GetValueTexts(const TEString& fieldName, const TEQueryFilter& filter, QStringList& values,
                       std::vector<int>& counts, QString* error = nullptr) const;

    // Combined keys of several fields: each feature's value texts joined by
    // separator in the order of fieldNames (no escaping, so a value holding
    // the separator makes an ambiguous key), with counts, in the order first
    // met. Pushed down to the source's SQL (GROUP BY over all the fields)
    // where every field can be, else read by a cursor of just those fields.
    bool GetKeyTexts(const std::vector<TEString>& fieldNames, const QString& separator,
                     const TEQueryFilter& filter, QStringList& keys, std::vector<int>& counts,
                     QString* error = nullptr) const;

    // Receives each value (its UTF-8 text) with its count.
    using ValueSink = std::function<void(const std::string& value, int count)>;

private:

    class RowSink;

    int FieldIndex(const TEString& fieldName, QString* error) const;
    // Each reader gives the saved features' values to the sink; false when
    // it cannot serve the query (the caller then uses the cursor).
    bool ReadPushDown(int fieldIndex, const TEQueryFilter& filter, RowSink& sink, QString* error) const;
    bool ReadSqlite(int fieldIndex, const TEQueryFilter& filter, RowSink& sink) const;
    bool ReadArrow(int fieldIndex, const TEQueryFilter& filter, RowSink& sink) const;
    bool ReadCursor(int fieldIndex, const TEQueryFilter& filter, RowSink& sink, QString* error) const;
    // The grouped query run straight through libpq on a PostGIS source (one
    // field, or several joined by separator).
    bool ReadGroupsPostgres(const std::vector<int>& fieldIndexes, const std::string& separator,
                            const TEQueryFilter& filter, RowSink& sink, QString* error) const;
    bool ReadKeysPushDown(const std::vector<int>& fieldIndexes, const std::string& separator,
                          const TEQueryFilter& filter, RowSink& sink) const;
    bool ReadKeysCursor(const std::vector<int>& fieldIndexes, const std::string& separator,
                        const TEQueryFilter& filter, RowSink& sink, QString* error) const;
    QString FidColumn() const;
    bool Collect(const TEString& fieldName, const TEQueryFilter& filter, const ValueSink& out,
                 QString* error) const;

    TERefPtr<const TEFeatureLayer> mLayer;
    Method mMethod = Method::Automatic;
    mutable Method mLastMethod = Method::Automatic;
};

} // namespace TZObjects
