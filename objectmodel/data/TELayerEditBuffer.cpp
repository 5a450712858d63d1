#include "data/TELayerEditBuffer.h"

#include "data/TEWhereClause.h"

#include <algorithm>

namespace TZObjects {

std::vector<int> TELayerEditBuffer::Query(const TEQueryFilter& filter, QString* error) const
{
    TEWhereClause clause;
    if (!clause.Compile(mDefinition, filter.GetWhereClause(), error))
        return {};
    std::vector<int> ids;
    QMutexLocker lock(&mMutex);
    for (int id : mOrder) {
        const TERefPtr<TEFeature> feature = mEdits.at(id)->GetFeature();
        if (!clause.Evaluate(feature->GetHandle()))
            continue;
        if (filter.HasSpatialRect()) {
            const TERefPtr<TEGeometry> geometry = feature->GetGeometry();
            if (!geometry || !geometry->GetEnvelope().intersects(filter.GetSpatialRect()))
                continue;
        }
        ids.push_back(id);
    }
    return ids;
}

TEFeatureEditBuffer* TELayerEditBuffer::GetActiveEditFeatureByFeatureId(const int& id) const
{
    QMutexLocker lock(&mMutex);
    auto found = mEdits.find(id);
    return found == mEdits.end() ? nullptr : found->second.get();
}

bool TELayerEditBuffer::IsEmpty() const
{
    QMutexLocker lock(&mMutex);
    return mEdits.empty();
}

int TELayerEditBuffer::GetEditCount() const
{
    QMutexLocker lock(&mMutex);
    return int(mEdits.size());
}

int TELayerEditBuffer::GetCountChange() const
{
    QMutexLocker lock(&mMutex);
    int change = 0;
    for (const auto& entry : mEdits) {
        if (entry.second->edit_operation() == TEFeatureEditBuffer::EO_Added)
            ++change;
        else if (entry.second->edit_operation() == TEFeatureEditBuffer::EO_Deleted)
            --change;
    }
    return change;
}

std::vector<TERefPtr<TEFeatureEditBuffer>> TELayerEditBuffer::GetEdits() const
{
    QMutexLocker lock(&mMutex);
    std::vector<TERefPtr<TEFeatureEditBuffer>> edits;
    for (int id : mOrder)
        edits.push_back(mEdits.at(id));
    return edits;
}

void TELayerEditBuffer::Record(TEFeatureEditBuffer::EditOperation operation, TERefPtr<TEFeature> feature)
{
    QMutexLocker lock(&mMutex);
    const int id = feature->GetId();
    auto found = mEdits.find(id);
    if (found == mEdits.end()) {
        mOrder.push_back(id);
        mEdits.emplace(id, MakeRef<TEFeatureEditBuffer>(operation, std::move(feature)));
        return;
    }
    TERefPtr<TEFeatureEditBuffer> edit = found->second;
    if (edit->edit_operation() == TEFeatureEditBuffer::EO_Added) {
        if (operation == TEFeatureEditBuffer::EO_Deleted) {
            edit->Update(TEFeatureEditBuffer::EO_Deleted, nullptr);
            mForgotten.push_back(edit);
            mEdits.erase(found);
            mOrder.erase(std::find(mOrder.begin(), mOrder.end(), id));
            return;
        }
        operation = TEFeatureEditBuffer::EO_Added;
    }
    edit->Update(operation, std::move(feature));
}

void TELayerEditBuffer::Clear()
{
    QMutexLocker lock(&mMutex);
    mEdits.clear();
    mOrder.clear();
    mForgotten.clear();
}

int TELayerEditBuffer::NextNewId()
{
    QMutexLocker lock(&mMutex);
    return --mLastNewId;
}

} // namespace TZObjects
