#include "data/TEFeature.h"

#include <QDateTime>

namespace TZObjects {

TEFeature::TEFeature(OGRFeatureH handle, TERefPtr<TEFields> fields)
    : mHandle(handle), mFields(std::move(fields))
{
}

TEFeature::~TEFeature()
{
    if (mHandle)
        OGR_F_Destroy(mHandle);
}

void TEFeature::ResetHandle(OGRFeatureH handle)
{
    if (mHandle == handle)
        return;
    if (mHandle)
        OGR_F_Destroy(mHandle);
    mHandle = handle;
}

int TEFeature::GetId() const
{
    return int(OGR_F_GetFID(mHandle));
}

void TEFeature::SetId(int id)
{
    OGR_F_SetFID(mHandle, id);
}

TEVariant TEFeature::GetValue(const TEString& fieldName) const
{
    return GetValue(mFields ? mFields->FindField(fieldName) : -1);
}

TEVariant TEFeature::GetValue(int fieldIndex) const
{
    if (fieldIndex == 0)
        return TEVariant(GetId());
    if (fieldIndex == 1) {
        OGRGeometryH geometry = OGR_F_GetGeometryRef(mHandle);
        return geometry ? TEVariant(TEString(TEGeometry::FromHandleCopy(geometry)->ExportToWkt())) : TEVariant();
    }
    if (fieldIndex < 2)
        return {};
    return ReadOgrField(mHandle, fieldIndex - 2);
}

bool TEFeature::SetValue(const TEString& fieldName, const TEVariant& value)
{
    return SetValue(mFields ? mFields->FindField(fieldName) : -1, value);
}

bool TEFeature::SetValue(int fieldIndex, const TEVariant& value)
{
    if (fieldIndex < 2)
        return false;
    return WriteOgrField(mHandle, fieldIndex - 2, value);
}

TERefPtr<TEGeometry> TEFeature::GetGeometry() const
{
    return TEGeometry::FromHandleCopy(OGR_F_GetGeometryRef(mHandle));
}

void TEFeature::SetGeometry(const TERefPtr<TEGeometry>& geometry)
{
    OGR_F_SetGeometry(mHandle, geometry ? geometry->GetHandle() : nullptr);
}

TERefPtr<TEFeature> TEFeature::Clone() const
{
    return MakeRef<TEFeature>(OGR_F_Clone(mHandle), mFields);
}

TEVariant TEFeature::ReadOgrField(OGRFeatureH feature, int ogrIndex)
{
    if (ogrIndex < 0 || ogrIndex >= OGR_F_GetFieldCount(feature) || !OGR_F_IsFieldSetAndNotNull(feature, ogrIndex))
        return {};
    OGRFieldDefnH definition = OGR_F_GetFieldDefnRef(feature, ogrIndex);
    switch (OGR_Fld_GetType(definition)) {
    case OFTInteger:
        return TEVariant(OGR_F_GetFieldAsInteger(feature, ogrIndex));
    case OFTInteger64:
        return TEVariant(static_cast<long long>(OGR_F_GetFieldAsInteger64(feature, ogrIndex)));
    case OFTReal:
        return TEVariant(OGR_F_GetFieldAsDouble(feature, ogrIndex));
    case OFTString:
        return TEVariant(TEString::fromUtf8(OGR_F_GetFieldAsString(feature, ogrIndex)));
    case OFTDate:
    case OFTTime:
    case OFTDateTime: {
        int year = 0, month = 0, day = 0, hour = 0, minute = 0, tz = 0;
        float second = 0;
        OGR_F_GetFieldAsDateTimeEx(feature, ogrIndex, &year, &month, &day, &hour, &minute, &second, &tz);
        const int wholeSeconds = int(second);
        const QTime time(hour, minute, wholeSeconds, int((second - wholeSeconds) * 1000.0f + 0.5f));
        if (OGR_Fld_GetType(definition) == OFTDate)
            return TEVariant(QDate(year, month, day));
        if (OGR_Fld_GetType(definition) == OFTTime)
            return TEVariant(time);
        return TEVariant(QDateTime(QDate(year, month, day), time));
    }
    case OFTBinary: {
        int size = 0;
        const GByte* bytes = OGR_F_GetFieldAsBinary(feature, ogrIndex, &size);
        return TEVariant(QByteArray(reinterpret_cast<const char*>(bytes), size));
    }
    default:
        return TEVariant(TEString::fromUtf8(OGR_F_GetFieldAsString(feature, ogrIndex)));
    }
}

bool TEFeature::WriteOgrField(OGRFeatureH feature, int ogrIndex, const TEVariant& value)
{
    if (ogrIndex < 0 || ogrIndex >= OGR_F_GetFieldCount(feature))
        return false;
    switch (value.GetType()) {
    case TEVariant::Type::Null:
        OGR_F_SetFieldNull(feature, ogrIndex);
        return true;
    case TEVariant::Type::Integer:
        OGR_F_SetFieldInteger64(feature, ogrIndex, value.GetInt());
        return true;
    case TEVariant::Type::Real:
        OGR_F_SetFieldDouble(feature, ogrIndex, value.GetDouble());
        return true;
    case TEVariant::Type::Date:
    case TEVariant::Type::Time:
    case TEVariant::Type::DateTime: {
        const QDateTime dt = value.GetDateTime();
        const QTime t = dt.time();
        OGR_F_SetFieldDateTimeEx(feature, ogrIndex, dt.date().year(), dt.date().month(), dt.date().day(),
                                 t.hour(), t.minute(), float(t.second() + t.msec() / 1000.0), 0);
        return true;
    }
    case TEVariant::Type::Binary: {
        const QByteArray bytes = value.GetBinary();
        OGR_F_SetFieldBinary(feature, ogrIndex, bytes.size(), reinterpret_cast<const void*>(bytes.constData()));
        return true;
    }
    case TEVariant::Type::String:
        OGR_F_SetFieldString(feature, ogrIndex, value.ToString().toUTF8().c_str());
        return true;
    }
    return false;
}

} // namespace TZObjects
