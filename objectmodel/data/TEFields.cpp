#include "data/TEFields.h"

namespace TZObjects {

TERefPtr<TEFields> TEFields::FromDefinition(OGRFeatureDefnH definition)
{
    TERefPtr<TEFields> fields = MakeRef<TEFields>();
    fields->mFields.push_back(MakeRef<TEField>(TEString(L"FID"), TEField::FT_Integer, -1, true));
    fields->mFields.push_back(MakeRef<TEField>(TEString(L"GEOMETRY"), TEField::FT_Geometry, -1, false));
    const int count = definition ? OGR_FD_GetFieldCount(definition) : 0;
    for (int i = 0; i < count; ++i) {
        OGRFieldDefnH field = OGR_FD_GetFieldDefn(definition, i);
        TERefPtr<TEField> hostField = MakeRef<TEField>(
            TEString::fromUtf8(OGR_Fld_GetNameRef(field)),
            FieldTypeOf(OGR_Fld_GetType(field), OGR_Fld_GetSubType(field)), i);
        const char* alias = OGR_Fld_GetAlternativeNameRef(field);
        if (alias && *alias)
            hostField->SetAliasName(TEString::fromUtf8(alias));
        fields->mFields.push_back(hostField);
    }
    for (int i = 0; i < int(fields->mFields.size()); ++i)
        fields->mIndexByName.emplace(fields->mFields[i]->GetName(), i);
    return fields;
}

TERefPtr<TEField> TEFields::GetField(int index) const
{
    if (index < 0 || index >= int(mFields.size()))
        return {};
    return mFields[index];
}

int TEFields::FindField(const TEString& name) const
{
    auto found = mIndexByName.find(name);
    if (found != mIndexByName.end())
        return found->second;
    for (int i = 0; i < int(mFields.size()); ++i) {
        if (mFields[i]->GetName().CompareNoCase(name) == 0)
            return i;
    }
    return -1;
}

TEField::FieldType TEFields::FieldTypeOf(OGRFieldType type, OGRFieldSubType subType)
{
    switch (type) {
    case OFTInteger:
        return (subType == OFSTInt16 || subType == OFSTBoolean) ? TEField::FT_Int16 : TEField::FT_Integer;
    case OFTInteger64:
        return TEField::FT_Integer;
    case OFTReal:
        return subType == OFSTFloat32 ? TEField::FT_Float : TEField::FT_Double;
    case OFTDate:
    case OFTTime:
    case OFTDateTime:
        return TEField::FT_DateTime;
    case OFTBinary:
        return TEField::FT_Binary;
    default:
        return TEField::FT_String;
    }
}

} // namespace TZObjects
