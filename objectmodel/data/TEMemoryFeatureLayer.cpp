#include "data/TEMemoryFeatureLayer.h"

#include "data/TEGdalSupport.h"

#include <ogr_srs_api.h>

namespace TZObjects {

namespace {

OGRwkbGeometryType geometryTypeOf(TELayer::LayerType type)
{
    switch (type) {
    case TELayer::LT_Point:
        return wkbPoint;
    case TELayer::LT_MultiPoint:
        return wkbMultiPoint;
    case TELayer::LT_Line:
        return wkbMultiLineString;
    case TELayer::LT_Polygon:
        return wkbMultiPolygon;
    default:
        return wkbUnknown;
    }
}

OGRFieldDefnH makeFieldDefn(const QString& name, TEField::FieldType type)
{
    OGRFieldType ogrType = OFTString;
    OGRFieldSubType subType = OFSTNone;
    switch (type) {
    case TEField::FT_Int16:
        ogrType = OFTInteger;
        subType = OFSTInt16;
        break;
    case TEField::FT_Integer:
        ogrType = OFTInteger64;
        break;
    case TEField::FT_Float:
        ogrType = OFTReal;
        subType = OFSTFloat32;
        break;
    case TEField::FT_Double:
        ogrType = OFTReal;
        break;
    case TEField::FT_DateTime:
        ogrType = OFTDateTime;
        break;
    case TEField::FT_Binary:
        ogrType = OFTBinary;
        break;
    default:
        break;
    }
    OGRFieldDefnH field = OGR_Fld_Create(name.toUtf8().constData(), ogrType);
    OGR_Fld_SetSubType(field, subType);
    return field;
}

} // namespace

TERefPtr<TEMemoryFeatureLayer> TEMemoryFeatureLayer::Create(const QString& name, LayerType type,
                                                           const std::vector<FieldDef>& fields, const QString& crs,
                                                           QString* error)
{
    TEGdalSupport::EnsureRegistered();
    for (const FieldDef& field : fields) {
        if (field.second == TEField::FT_Geometry || field.first.isEmpty()) {
            if (error)
                *error = QStringLiteral("\"%1\" is not a valid attribute field.").arg(field.first);
            return {};
        }
    }
    OGRSpatialReferenceH srs = nullptr;
    if (!crs.isEmpty()) {
        srs = OSRNewSpatialReference(nullptr);
        OSRSetAxisMappingStrategy(srs, OAMS_TRADITIONAL_GIS_ORDER);
        if (OSRSetFromUserInput(srs, crs.toUtf8().constData()) != OGRERR_NONE) {
            OSRDestroySpatialReference(srs);
            if (error)
                *error = QStringLiteral("Unknown coordinate system \"%1\".").arg(crs);
            return {};
        }
    }
    GDALDriverH driver = GDALGetDriverByName("Memory");
    GDALDatasetH dataset = driver ? GDALCreate(driver, "", 0, 0, 0, GDT_Unknown, nullptr) : nullptr;
    OGRLayerH layer = dataset ? GDALDatasetCreateLayer(dataset, name.toUtf8().constData(), srs,
                                                       geometryTypeOf(type), nullptr)
                              : nullptr;
    if (srs)
        OSRRelease(srs);
    if (!layer) {
        if (error)
            *error = TEGdalSupport::LastError(QStringLiteral("Cannot create an in-memory layer."));
        if (dataset)
            GDALClose(dataset);
        return {};
    }
    for (const FieldDef& field : fields) {
        OGRFieldDefnH definition = makeFieldDefn(field.first, field.second);
        const OGRErr result = OGR_L_CreateField(layer, definition, TRUE);
        OGR_Fld_Destroy(definition);
        if (result != OGRERR_NONE) {
            if (error)
                *error = QStringLiteral("Cannot add field \"%1\": %2").arg(field.first, TEGdalSupport::LastError());
            GDALClose(dataset);
            return {};
        }
    }
    TERefPtr<TEMemoryFeatureLayer> created(new TEMemoryFeatureLayer(name, dataset, layer, type));
    created->SetDefaultRender();
    return created;
}

TEMemoryFeatureLayer::TEMemoryFeatureLayer(const QString& name, GDALDatasetH dataset, OGRLayerH layer,
                                           LayerType type)
    : TEFeatureLayer(QStringLiteral("memory:%1").arg(name), name, dataset, layer)
{
    SetLayerType(type);
}

int TEMemoryFeatureLayer::AppendFeature(const QString& wkt, const std::vector<TEVariant>& values, QString* error)
{
    TERefPtr<TEGeometry> geometry;
    if (!wkt.isEmpty()) {
        geometry = TEGeometry::FromWkt(wkt, error);
        if (!geometry)
            return -1;
    }
    QMutexLocker lock(&mMutex);
    OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(mLayer));
    if (int(values.size()) > OGR_F_GetFieldCount(feature)) {
        OGR_F_Destroy(feature);
        if (error)
            *error = QStringLiteral("%1 values given for %2 fields.").arg(values.size()).arg(GetFields()->GetFieldCount() - 2);
        return -1;
    }
    for (int i = 0; i < int(values.size()); ++i)
        TEFeature::WriteOgrField(feature, i, values[size_t(i)]);
    if (geometry)
        OGR_F_SetGeometry(feature, geometry->GetHandle());
    int fid = -1;
    if (OGR_L_CreateFeature(mLayer, feature) == OGRERR_NONE)
        fid = int(OGR_F_GetFID(feature));
    else if (error)
        *error = TEGdalSupport::LastError(QStringLiteral("Cannot add the feature."));
    OGR_F_Destroy(feature);
    if (fid >= 0)
        TouchData();
    return fid;
}

TERefPtr<TEFeatureCursor> TEMemoryFeatureLayer::Search(const TEQueryFilter& filter, QString* error) const
{
    QMutexLocker lock(&mMutex);
    if (!PrepareLayer(mLayer, filter, error))
        return {};
    std::vector<TERefPtr<TEFeature>> features;
    OGR_L_ResetReading(mLayer);
    while (OGRFeatureH feature = OGR_L_GetNextFeature(mLayer))
        features.push_back(MakeRef<TEFeature>(feature, GetFields()));
    PrepareLayer(mLayer, TEQueryFilter(), nullptr);
    return MakeRef<TEFeatureCursor>(std::move(features));
}

GDALDatasetH TEMemoryFeatureLayer::OpenReadDataset(QString* error) const
{
    if (error)
        *error = QStringLiteral("An in-memory layer has no source to reopen.");
    return nullptr;
}

bool TEMemoryFeatureLayer::WriteEdits(QString* error)
{
    QMutexLocker lock(&mMutex);
    return WriteEditsTo(mLayer, layer_edit_buffer()->GetEdits(), error);
}

} // namespace TZObjects
