#pragma once

#include "core/TEString.h"

#include <QRectF>

#include <vector>

namespace TZObjects {

// What a search reads: an OGR SQL where clause, the attribute fields the
// caller needs (empty list: all of them), whether geometry is needed, and an
// optional rectangle (in the layer's CRS) the geometries must meet.
class TZOBJECTS_EXPORT TEQueryFilter
{
public:
    TEQueryFilter() = default;
    explicit TEQueryFilter(const TEString& whereClause) : mWhereClause(whereClause) {}

    const TEString& GetWhereClause() const { return mWhereClause; }
    void SetWhereClause(const TEString& whereClause) { mWhereClause = whereClause; }

    // Fields the cursor must read; all others may be left unread (null).
    const std::vector<TEString>& GetSubFields() const { return mSubFields; }
    void SetSubFields(const std::vector<TEString>& fields) { mSubFields = fields; }
    void AddSubField(const TEString& field) { mSubFields.push_back(field); }

    bool IsGeometryNeeded() const { return mGeometryNeeded; }
    void SetGeometryNeeded(bool needed) { mGeometryNeeded = needed; }

    bool HasSpatialRect() const { return !mSpatialRect.isNull(); }
    const QRectF& GetSpatialRect() const { return mSpatialRect; }
    void SetSpatialRect(const QRectF& rect) { mSpatialRect = rect; }
    void ClearSpatialRect() { mSpatialRect = QRectF(); }

    bool operator==(const TEQueryFilter& other) const
    {
        return mWhereClause == other.mWhereClause && mSubFields == other.mSubFields
            && mGeometryNeeded == other.mGeometryNeeded && mSpatialRect == other.mSpatialRect;
    }
    bool operator!=(const TEQueryFilter& other) const { return !(*this == other); }

private:
    TEString mWhereClause;
    std::vector<TEString> mSubFields;
    bool mGeometryNeeded = true;
    QRectF mSpatialRect;
};

} // namespace TZObjects
