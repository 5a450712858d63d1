#pragma once

#include "data/TEFeatureLayer.h"

#include <vector>

namespace TZObjects {

// The attribute table of a feature layer: its fields, the distinct values of
// a field and the values with their counts. Values are the texts
// TEVariant::ToString gives, so a null and an empty string are the same
// value "". Where the source speaks SQL (GeoPackage, SQLite, PostGIS) and
// the field's texts come out the same, the query is pushed down to it;
// otherwise the saved features are scanned, reading only that one field.
class TZOBJECTS_EXPORT TEFeatureTable : public TERefBase
{
public:
    struct ValueCount
    {
        TEString value;
        int count = 0;
        bool operator==(const ValueCount& o) const { return value == o.value && count == o.count; }
    };

    explicit TEFeatureTable(TERefPtr<const TEFeatureLayer> layer) : mLayer(std::move(layer)) {}

    TEFields* GetFields() const { return mLayer->GetFields().get(); }
    // "TEFeatureLayer", or "TEMemoryFeatureLayer" for an in-memory layer.
    TEString GetClassName() const { return mLayer->GetDatasourceClassName(); }

    // Whether queries on this field can be pushed down to the source's SQL.
    bool CanPushDown(const TEString& fieldName) const;
    // Pushing down is on by default; switched off, every query scans.
    void SetPushDownEnabled(bool enabled) { mPushDownEnabled = enabled; }

    // Distinct values of the field among the features passing the filter
    // (the layer's query filter in the first form), each once, in the order
    // first met. False, with an error text, for an unknown field or a
    // failed query.
    bool GetDistinctValues(const TEString& fieldName, std::vector<TEString>& values, QString* error = nullptr) const;
    bool GetDistinctValues(const TEString& fieldName, const TEQueryFilter& filter, std::vector<TEString>& values,
                           QString* error = nullptr) const;

    // Each distinct value with the number of features holding it, in the
    // order a cursor over the same filter meets them first.
    bool GetValueCounts(const TEString& fieldName, std::vector<ValueCount>& counts, QString* error = nullptr) const;
    bool GetValueCounts(const TEString& fieldName, const TEQueryFilter& filter, std::vector<ValueCount>& counts,
                        QString* error = nullptr) const;

private:
    enum class Query { Distinct, Counts };

    int FieldIndex(const TEString& fieldName, QString* error) const;
    bool PushDown(Query query, int fieldIndex, const TEQueryFilter& filter, std::vector<ValueCount>& result,
                  QString* error) const;
    bool Scan(int fieldIndex, const TEQueryFilter& filter, std::vector<ValueCount>& result, QString* error) const;

    TERefPtr<const TEFeatureLayer> mLayer;
    bool mPushDownEnabled = true;
};

} // namespace TZObjects
