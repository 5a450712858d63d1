#include "data/TEFeatureBatchCursor.h"

#include "data/TEGdalSupport.h"

#include <cmath>
#include <cstring>

namespace TZObjects {

namespace {

// The one-letter Arrow formats of the field types read.
bool isReadFormat(const char* format)
{
    return format && std::strlen(format) == 1 && std::strchr("uiscblgf", format[0]);
}

template <class T>
T valueAt(const ArrowArray* values, int64_t row)
{
    T value;
    std::memcpy(&value, static_cast<const char*>(values->buffers[1]) + (values->offset + row) * int64_t(sizeof(T)),
                sizeof(T));
    return value;
}

bool bitAt(const ArrowArray* values, int64_t row)
{
    const int64_t at = values->offset + row;
    return (static_cast<const uint8_t*>(values->buffers[1])[at >> 3] >> (at & 7)) & 1;
}

// The bytes of a text value.
const char* textAt(const ArrowArray* values, int64_t row, size_t& size)
{
    const auto* offsets = static_cast<const int32_t*>(values->buffers[1]);
    const int64_t at = values->offset + row;
    size = size_t(offsets[at + 1] - offsets[at]);
    return static_cast<const char*>(values->buffers[2]) + offsets[at];
}

} // namespace

TEFeatureBatchCursor::TEFeatureBatchCursor(TEHandlePool::Lease dataset, OGRLayerH layer, TERefPtr<TEFields> fields)
    : mLease(std::move(dataset)), mLayer(layer), mFields(std::move(fields))
{
}

TERefPtr<TEFeatureBatchCursor> TEFeatureBatchCursor::Open(TEHandlePool::Lease dataset, OGRLayerH layer,
                                                          TERefPtr<TEFields> fields, bool withIds)
{
    TERefPtr<TEFeatureBatchCursor> cursor(new TEFeatureBatchCursor(std::move(dataset), layer, std::move(fields)));
    return cursor->start(withIds) ? cursor : TERefPtr<TEFeatureBatchCursor>();
}

bool TEFeatureBatchCursor::start(bool withIds)
{
    OGR_L_ResetReading(mLayer);
    OGRFeatureDefnH definition = OGR_L_GetLayerDefn(mLayer);
    // GDAL 3.6 streams empty geometries from a GeoPackage when the geometry
    // is the only column; with the ids beside it they come.
    bool fieldRead = false;
    for (int i = 0; i < OGR_FD_GetFieldCount(definition) && !fieldRead; ++i)
        fieldRead = !OGR_Fld_IsIgnored(OGR_FD_GetFieldDefn(definition, i));
    withIds = withIds || !fieldRead;
    char* options[] = {const_cast<char*>(withIds ? "INCLUDE_FID=YES" : "INCLUDE_FID=NO"), nullptr};
    if (!OGR_L_GetArrowStream(mLayer, &mStream, options))
        return false;
    ArrowSchema schema{};
    if (mStream.get_schema(&mStream, &schema) != 0)
        return false;
    const char* fidColumn = OGR_L_GetFIDColumn(mLayer);
    const QByteArray fidName = fidColumn && *fidColumn ? QByteArray(fidColumn) : QByteArray("OGC_FID");
    bool readable = true;
    for (int64_t i = 0; i < schema.n_children && readable; ++i) {
        const ArrowSchema* column = schema.children[i];
        if (mFidChild < 0 && fidName == column->name && std::strcmp(column->format, "l") == 0) {
            mFidChild = int(i);
            continue;
        }
        const int ogrIndex = OGR_FD_GetFieldIndex(definition, column->name);
        if (ogrIndex >= 0) {
            readable = isReadFormat(column->format);
            mColumns.push_back({int(i), ogrIndex, column->format[0]});
        } else if (mGeometryChild < 0 && std::strcmp(column->format, "z") == 0) {
            mGeometryChild = int(i);
        }
    }
    schema.release(&schema);
    return readable && mGeometryChild >= 0;
}

TEFeatureBatchCursor::~TEFeatureBatchCursor()
{
    if (mBatch.release)
        mBatch.release(&mBatch);
    if (mStream.release)
        mStream.release(&mStream);
    // The pooled dataset goes back idle, its statement ended.
    if (mLayer)
        OGR_L_ResetReading(mLayer);
}

bool TEFeatureBatchCursor::NextBatch()
{
    if (mBatch.release)
        mBatch.release(&mBatch);
    mBatch = ArrowArray{};
    if (!mStream.release)
        return false;
    if (mStream.get_next(&mStream, &mBatch) != 0) {
        const char* message = mStream.get_last_error(&mStream);
        mError = message ? QString::fromUtf8(message) : TEGdalSupport::LastError();
        mBatch = ArrowArray{};
        return false;
    }
    return mBatch.release != nullptr;
}

bool TEFeatureBatchCursor::isNull(const ArrowArray* values, int64_t row)
{
    const auto* validity = static_cast<const uint8_t*>(values->buffers[0]);
    const int64_t at = values->offset + row;
    return validity && !(validity[at >> 3] & (1 << (at & 7)));
}

const unsigned char* TEFeatureBatchCursor::wkb(int64_t row, size_t& size) const
{
    const ArrowArray* geometry = child(mGeometryChild);
    if (isNull(geometry, row))
        return nullptr;
    const char* bytes = textAt(geometry, row, size);
    return size > 0 ? reinterpret_cast<const unsigned char*>(bytes) : nullptr;
}

bool TEFeatureBatchCursor::GetPoint(int64_t row, double& x, double& y) const
{
    size_t size = 0;
    const unsigned char* bytes = wkb(row, size);
    // Little-endian WKB of a point: order, type (1, 1001 with Z, 2001 with
    // M, 3001 with both, or the 2.5D flag), x, y.
    if (!bytes || size < 21 || bytes[0] != 1)
        return false;
    uint32_t type;
    std::memcpy(&type, bytes + 1, sizeof type);
    if ((type & 0x7fffffffu) % 1000 != 1 || (type & 0x7fffffffu) > 3001)
        return false;
    std::memcpy(&x, bytes + 5, sizeof x);
    std::memcpy(&y, bytes + 13, sizeof y);
    // An empty point holds NaN coordinates.
    return std::isfinite(x) && std::isfinite(y);
}

void TEFeatureBatchCursor::AppendKey(int64_t row, std::string& key) const
{
    for (const Column& column : mColumns) {
        const ArrowArray* values = child(column.child);
        if (isNull(values, row)) {
            key += '\0';
            continue;
        }
        key += '\1';
        switch (column.format) {
        case 'u': {
            size_t size = 0;
            const char* text = textAt(values, row, size);
            const uint32_t length = uint32_t(size);
            key.append(reinterpret_cast<const char*>(&length), sizeof length);
            key.append(text, size);
            break;
        }
        case 'b': key += bitAt(values, row) ? '\1' : '\0'; break;
        case 'c': key += char(valueAt<int8_t>(values, row)); break;
        case 's': {
            const int16_t value = valueAt<int16_t>(values, row);
            key.append(reinterpret_cast<const char*>(&value), sizeof value);
            break;
        }
        case 'i': {
            const int32_t value = valueAt<int32_t>(values, row);
            key.append(reinterpret_cast<const char*>(&value), sizeof value);
            break;
        }
        case 'f': {
            const float value = valueAt<float>(values, row);
            key.append(reinterpret_cast<const char*>(&value), sizeof value);
            break;
        }
        default: {
            // 'l' and 'g': eight bytes.
            const int64_t value = valueAt<int64_t>(values, row);
            key.append(reinterpret_cast<const char*>(&value), sizeof value);
            break;
        }
        }
    }
}

TERefPtr<TEFeature> TEFeatureBatchCursor::MakeFeature() const
{
    return MakeRef<TEFeature>(OGR_F_Create(OGR_L_GetLayerDefn(mLayer)), mFields);
}

void TEFeatureBatchCursor::FillFeature(int64_t row, TEFeature& feature) const
{
    OGRFeatureH handle = feature.GetHandle();
    OGR_F_SetFID(handle, mFidChild >= 0 ? valueAt<int64_t>(child(mFidChild), row) : OGRNullFID);
    for (const Column& column : mColumns) {
        const ArrowArray* values = child(column.child);
        if (isNull(values, row)) {
            OGR_F_SetFieldNull(handle, column.ogrIndex);
            continue;
        }
        switch (column.format) {
        case 'u': {
            size_t size = 0;
            const char* text = textAt(values, row, size);
            mText.assign(text, size);
            OGR_F_SetFieldString(handle, column.ogrIndex, mText.c_str());
            break;
        }
        case 'b': OGR_F_SetFieldInteger(handle, column.ogrIndex, bitAt(values, row) ? 1 : 0); break;
        case 'c': OGR_F_SetFieldInteger(handle, column.ogrIndex, valueAt<int8_t>(values, row)); break;
        case 's': OGR_F_SetFieldInteger(handle, column.ogrIndex, valueAt<int16_t>(values, row)); break;
        case 'i': OGR_F_SetFieldInteger(handle, column.ogrIndex, valueAt<int32_t>(values, row)); break;
        case 'l': OGR_F_SetFieldInteger64(handle, column.ogrIndex, valueAt<int64_t>(values, row)); break;
        case 'f': OGR_F_SetFieldDouble(handle, column.ogrIndex, valueAt<float>(values, row)); break;
        default: OGR_F_SetFieldDouble(handle, column.ogrIndex, valueAt<double>(values, row)); break;
        }
    }
    double x = 0.0;
    double y = 0.0;
    OGRGeometryH held = OGR_F_GetGeometryRef(handle);
    if (GetPoint(row, x, y) && held && OGR_G_GetGeometryType(held) == wkbPoint) {
        // The point the feature holds is moved rather than made anew.
        OGR_G_SetPoint_2D(held, 0, x, y);
        return;
    }
    size_t size = 0;
    const unsigned char* bytes = wkb(row, size);
    OGRGeometryH geometry = nullptr;
    if (bytes && OGR_G_CreateFromWkbEx(bytes, nullptr, &geometry, size) != OGRERR_NONE)
        geometry = nullptr;
    OGR_F_SetGeometryDirectly(handle, geometry);
}

} // namespace TZObjects
