#include "VectorFixtures.h"

#include "data/TEGdalSupport.h"

#include <gdal.h>
#include <ogr_api.h>

using namespace TZObjects;

namespace VectorFixtures {

namespace {

QString wktFor(TELayer::LayerType type, int i)
{
    const double x = i % 10;
    const double y = i / 10;
    switch (type) {
    case TELayer::LT_Line:
        return QStringLiteral("LINESTRING(%1 %2,%3 %4)").arg(x).arg(y).arg(x + 0.5).arg(y + 0.5);
    case TELayer::LT_Polygon:
        return QStringLiteral("POLYGON((%1 %2,%3 %2,%3 %4,%1 %4,%1 %2))").arg(x).arg(y).arg(x + 0.8).arg(y + 0.8);
    default:
        return QStringLiteral("POINT(%1 %2)").arg(x).arg(y);
    }
}

OGRwkbGeometryType ogrType(TELayer::LayerType type)
{
    switch (type) {
    case TELayer::LT_Line:
        return wkbLineString;
    case TELayer::LT_Polygon:
        return wkbPolygon;
    default:
        return wkbPoint;
    }
}

} // namespace

TERefPtr<TEMemoryFeatureLayer> makeLayer(TELayer::LayerType type, const QStringList& names)
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("fixture"), type, {{QStringLiteral("name"), TEField::FT_String},
                                          {QStringLiteral("angle"), TEField::FT_Double}});
    for (int i = 0; i < names.size(); ++i)
        layer->AppendFeature(wktFor(type, i), {TEVariant(TEString(names[i])), TEVariant(10.0 * i)});
    return layer;
}

TERefPtr<TEFeatureLayer> makeGeoPackage(const QString& folder, TELayer::LayerType type, const QStringList& names)
{
    TEGdalSupport::EnsureRegistered();
    const QString path = folder + QStringLiteral("/fixture.gpkg");
    GDALDatasetH dataset =
        GDALCreate(GDALGetDriverByName("GPKG"), path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset)
        return nullptr;
    OGRLayerH layer = GDALDatasetCreateLayer(dataset, "fixture", nullptr, ogrType(type), nullptr);
    OGRFieldDefnH nameField = OGR_Fld_Create("name", OFTString);
    OGR_L_CreateField(layer, nameField, TRUE);
    OGR_Fld_Destroy(nameField);
    OGRFieldDefnH angleField = OGR_Fld_Create("angle", OFTReal);
    OGR_L_CreateField(layer, angleField, TRUE);
    OGR_Fld_Destroy(angleField);
    GDALDatasetStartTransaction(dataset, FALSE);
    for (int i = 0; i < names.size(); ++i) {
        OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
        OGR_F_SetFieldString(feature, 0, names[i].toUtf8().constData());
        OGR_F_SetFieldDouble(feature, 1, 10.0 * i);
        QByteArray wkt = wktFor(type, i).toUtf8();
        char* cursor = wkt.data();
        OGRGeometryH geometry = nullptr;
        OGR_G_CreateFromWkt(&cursor, nullptr, &geometry);
        OGR_F_SetGeometryDirectly(feature, geometry);
        const OGRErr written = OGR_L_CreateFeature(layer, feature);
        OGR_F_Destroy(feature);
        if (written != OGRERR_NONE)
            break;
    }
    GDALDatasetCommitTransaction(dataset);
    GDALClose(dataset);
    return TEFeatureLayer::Open(path);
}

TERefPtr<TEEvenColorRamp> redToBlue()
{
    return MakeRef<TEEvenColorRamp>(rgb_color<float>(255, 0, 0), rgb_color<float>(0, 0, 255));
}

} // namespace VectorFixtures
