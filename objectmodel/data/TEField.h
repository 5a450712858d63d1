#pragma once

#include "core/TERefBase.h"
#include "core/TERefPtr.h"
#include "core/TEString.h"

namespace TZObjects {

// One field of a feature layer's field list: its name, alias and host type.
// The list always starts with the system field "FID" and the geometry field
// "GEOMETRY"; attribute fields follow and map to an OGR field index.
class TZOBJECTS_EXPORT TEField : public TERefBase
{
public:
    enum FieldType {
        FT_Int16 = 0,
        FT_Integer = 1,   // 32- and 64-bit integers
        FT_Float = 2,
        FT_Double = 3,
        FT_String = 4,
        FT_DateTime = 5,  // dates, times and date-times
        FT_Binary = 6,
        FT_Geometry = 7
    };

    TEField(const TEString& name, FieldType type, int ogrIndex = -1, bool systemField = false)
        : mName(name), mAliasName(name), mType(type), mOgrIndex(ogrIndex), mSystemField(systemField)
    {
    }

    const TEString& GetName() const { return mName; }
    const TEString& GetAliasName() const { return mAliasName; }
    void SetAliasName(const TEString& alias) { mAliasName = alias; }
    FieldType GetFieldType() const { return mType; }
    bool IsGeoField() const { return mType == FT_Geometry; }
    bool IsSystemField() const { return mSystemField; }
    bool IsNumeric() const { return mType <= FT_Double; }

    // Index of the field in the OGR feature definition; -1 for FID and GEOMETRY.
    int GetOgrIndex() const { return mOgrIndex; }

private:
    TEString mName;
    TEString mAliasName;
    FieldType mType = FT_String;
    int mOgrIndex = -1;
    bool mSystemField = false;
};

} // namespace TZObjects
