#include "AppFixture.h"

#include "TZLayerTree.h"
#include "TZLayerTreeModel.h"

#include "symbology/TEStyleSimpleFill.h"

#include <QDir>

#include <cpl_conv.h>
#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

namespace {

OGRSpatialReferenceH webMercator()
{
    OGRSpatialReferenceH srs = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(srs, 3857);
    return srs;
}

bool addFeature(OGRLayerH layer, const char* wkt, const char* field, const char* value)
{
    OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer));
    OGR_F_SetFieldString(feature, OGR_F_GetFieldIndex(feature, field), value);
    OGRGeometryH geometry = nullptr;
    char* text = const_cast<char*>(wkt);
    OGR_G_CreateFromWkt(&text, nullptr, &geometry);
    OGR_F_SetGeometryDirectly(feature, geometry);
    const OGRErr err = OGR_L_CreateFeature(layer, feature);
    OGR_F_Destroy(feature);
    return err == OGRERR_NONE;
}

GDALDatasetH createTiff(const QString& path, int width, int height, GDALDataType type, double pixelWidth,
                        double pixelHeight)
{
    GDALDatasetH ds = GDALCreate(GDALGetDriverByName("GTiff"), path.toUtf8().constData(), width, height, 1, type, nullptr);
    double transform[6] = {0.0, pixelWidth, 0.0, 100.0, 0.0, -pixelHeight};
    GDALSetGeoTransform(ds, transform);
    OGRSpatialReferenceH srs = webMercator();
    char* wkt = nullptr;
    OSRExportToWkt(srs, &wkt);
    GDALSetProjection(ds, wkt);
    CPLFree(wkt);
    OSRDestroySpatialReference(srs);
    return ds;
}

} // namespace

QString AppFixture::writeVectors(const QString& folder)
{
    GDALAllRegister();
    const QString path = QDir(folder).filePath(QStringLiteral("fixture.gpkg"));
    GDALDatasetH ds = GDALCreate(GDALGetDriverByName("GPKG"), path.toUtf8().constData(), 0, 0, 0, GDT_Unknown, nullptr);
    OGRSpatialReferenceH srs = webMercator();

    OGRLayerH squares = GDALDatasetCreateLayer(ds, "squares", srs, wkbPolygon, nullptr);
    OGRFieldDefnH landuse = OGR_Fld_Create("landuse", OFTString);
    OGR_L_CreateField(squares, landuse, TRUE);
    OGR_Fld_Destroy(landuse);
    bool ok = addFeature(squares, "POLYGON((0 0,100 0,100 100,0 100,0 0))", "landuse", "Forest")
        && addFeature(squares, "POLYGON((100 0,200 0,200 100,100 100,100 0))", "landuse", "Water");

    OGRLayerH spots = GDALDatasetCreateLayer(ds, "spots", srs, wkbPoint, nullptr);
    OGRFieldDefnH kind = OGR_Fld_Create("kind", OFTString);
    OGR_L_CreateField(spots, kind, TRUE);
    OGR_Fld_Destroy(kind);
    ok = ok && addFeature(spots, "POINT(50 50)", "kind", "a") && addFeature(spots, "POINT(150 50)", "kind", "b");

    OSRDestroySpatialReference(srs);
    GDALClose(ds);
    return ok ? path : QString();
}

QString AppFixture::writeGreyRaster(const QString& folder)
{
    GDALAllRegister();
    const QString path = QDir(folder).filePath(QStringLiteral("grey.tif"));
    GDALDatasetH ds = createTiff(path, 10, 10, GDT_Float32, 10.0, 10.0);
    std::vector<float> values(100);
    for (int i = 0; i < 100; ++i)
        values[i] = static_cast<float>(i);
    values[0] = -1.0f;
    GDALRasterBandH band = GDALGetRasterBand(ds, 1);
    GDALSetRasterNoDataValue(band, -1.0);
    const CPLErr err = GDALRasterIO(band, GF_Write, 0, 0, 10, 10, values.data(), 10, 10, GDT_Float32, 0, 0);
    GDALClose(ds);
    return err == CE_None ? path : QString();
}

QString AppFixture::writePalettedRaster(const QString& folder)
{
    GDALAllRegister();
    const QString path = QDir(folder).filePath(QStringLiteral("palette.tif"));
    GDALDatasetH ds = createTiff(path, 2, 1, GDT_Byte, 100.0, 100.0);
    GDALRasterBandH band = GDALGetRasterBand(ds, 1);
    GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
    const GDALColorEntry none{0, 0, 0, 0}, red{255, 0, 0, 255}, blue{0, 0, 255, 255};
    GDALSetColorEntry(table, 0, &none);
    GDALSetColorEntry(table, 1, &red);
    GDALSetColorEntry(table, 2, &blue);
    GDALSetRasterColorTable(band, table);
    GDALDestroyColorTable(table);
    unsigned char values[2] = {1, 2};
    const CPLErr err = GDALRasterIO(band, GF_Write, 0, 0, 2, 1, values, 2, 1, GDT_Byte, 0, 0);
    GDALClose(ds);
    return err == CE_None ? path : QString();
}

TZMapViewport AppFixture::squaresViewport()
{
    return TZMapViewport(QSize(400, 200), QPointF(100.0, 50.0), 0.5);
}

QColor AppFixture::colorAt(const QImage& image, const TZMapViewport& viewport, const QPointF& map)
{
    return image.pixelColor(viewport.toDevice(map).toPoint());
}

QImage AppFixture::blankImage(const TZMapViewport& viewport, const QColor& fill)
{
    QImage image(viewport.deviceSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(fill);
    return image;
}

TZObjects::TERefPtr<TZObjects::TEStyle> AppFixture::fillStyle(const QColor& color)
{
    auto style = TZObjects::MakeRef<TZObjects::TEStyleSimpleFill>();
    style->SetColor(TZObjects::TEColor(color.red(), color.green(), color.blue()));
    return style;
}

QModelIndexList AppFixture::legendEntries(TZLayerTree& tree, const QString& guid)
{
    TZLayerTreeModel* model = tree.layerModel();
    const QModelIndex layer = tree.indexOf(guid);
    if (model->canFetchMore(layer))
        model->fetchMore(layer);
    QModelIndexList entries;
    for (int row = 0; row < model->rowCount(layer); ++row)
        entries << model->index(row, 0, layer);
    return entries;
}

QStringList AppFixture::legendTexts(TZLayerTree& tree, const QString& guid)
{
    QStringList texts;
    for (const QModelIndex& entry : legendEntries(tree, guid))
        texts << entry.data().toString();
    return texts;
}
