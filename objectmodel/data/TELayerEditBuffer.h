#pragma once

#include "data/TEFeatureEditBuffer.h"
#include "data/TEQueryFilter.h"

#include <QMutex>
#include <QString>

#include <map>
#include <vector>

namespace TZObjects {

// The unsaved edits of a feature layer: features added (with negative ids
// until saved), changed or deleted. The layer's searches read the saved
// data; code that must see the edits asks this buffer as well.
class TZOBJECTS_EXPORT TELayerEditBuffer
{
public:
    explicit TELayerEditBuffer(OGRFeatureDefnH definition) : mDefinition(definition) {}

    // Ids of the buffered features (deleted ones included, in edit order)
    // whose current feature passes the filter's where clause and rectangle.
    // An invalid where clause gives no ids (and the error, if asked for).
    std::vector<int> Query(const TEQueryFilter& filter, QString* error = nullptr) const;

    // The buffered edit of a feature, or null when the feature is not edited.
    // The pointer stays valid until the edits are saved or discarded.
    TEFeatureEditBuffer* GetActiveEditFeatureByFeatureId(const int& id) const;

    bool IsEmpty() const;
    int GetEditCount() const;
    // Features added minus features deleted.
    int GetCountChange() const;
    // Every edit, in edit order.
    std::vector<TERefPtr<TEFeatureEditBuffer>> GetEdits() const;

private:
    friend class TEFeatureLayer;

    // Records an edit in the feature's entry (made on its first edit); an
    // edit of an added feature stays an add, deleting an added feature
    // forgets it (its entry, marked deleted, lives on until Clear).
    void Record(TEFeatureEditBuffer::EditOperation operation, TERefPtr<TEFeature> feature);
    void Clear();
    int NextNewId();

    mutable QMutex mMutex;
    OGRFeatureDefnH mDefinition = nullptr;
    std::map<int, TERefPtr<TEFeatureEditBuffer>> mEdits;
    std::vector<int> mOrder;
    // Entries of added features deleted again, kept for pointers handed out.
    std::vector<TERefPtr<TEFeatureEditBuffer>> mForgotten;
    int mLastNewId = 0;
};

} // namespace TZObjects
