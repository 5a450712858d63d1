#include "TZSampleProjectWriter.h"

#include "TZLayerOpener.h"
#include "TZMapProject.h"
#include "TZSampleDataGenerator.h"

#include "data/TEFeatureLayer.h"
#include "data/TERasterLayer.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TESingleBandImageRender.h"
#include "symbology/TEColorRampCatalog.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QDir>

using namespace TZObjects;

namespace {

TEColor color(QRgb rgb)
{
    return TEColor(qRed(rgb), qGreen(rgb), qBlue(rgb));
}

TERefPtr<TEStyle> fill(QRgb rgb)
{
    auto style = MakeRef<TEStyleSimpleFill>();
    style->SetColor(color(rgb));
    // Lets the relief of the elevation below show through.
    style->SetTransparency(25);
    return style;
}

TERefPtr<TEStyle> line(QRgb rgb, double widthMm, int pen = TEStyleSimpleLine::Solid)
{
    auto style = MakeRef<TEStyleSimpleLine>();
    style->SetColor(color(rgb));
    style->SetWidth(widthMm);
    style->SetPenStyle(pen);
    return style;
}

TERefPtr<TEStyle> marker(QRgb rgb, double sizeMm)
{
    auto style = MakeRef<TEStyleSimplePoint>();
    style->SetShapeType(TEStyleSimplePoint::Circle);
    style->SetColor(color(rgb));
    style->SetSize(sizeMm);
    style->SetOutlineColor(TEColor(255, 255, 255));
    style->SetOutlineWidth(0.2);
    return style;
}

struct Category
{
    const wchar_t* value;
    TERefPtr<TEStyle> style;
};

TERefPtr<TECategorizedSymbolRender> byCategory(const wchar_t* field, const std::vector<Category>& categories)
{
    auto render = MakeRef<TECategorizedSymbolRender>(TEString(field));
    for (const Category& category : categories)
        render->AddCategory(category.value, category.value, category.style);
    render->SetIsShowOtherValue(false);
    return render;
}

// Colours the elevation's opening min-max stretch with the "DEM" ramp, so
// that the relief reads as lowland green to upland brown.
void colourElevation(TELayer* elevation)
{
    auto* raster = dynamic_cast<TERasterLayer*>(elevation);
    const auto render = raster ? raster->GetImageRender().cast<TESingleBandImageRender>() : nullptr;
    const auto info = render ? render->getRenderInfo().cast<TEImageStretchRenderInfo>() : nullptr;
    const TERefPtr<TEColorRamp> ramp = TEColorRampCatalog::Instance()->find(TEString(L"DEM"), TEString(L"Default"));
    if (!info || !ramp)
        return;
    const int count = info->GetItemCount();
    for (int i = 0; i < count; ++i) {
        const rgb_color<float> c = ramp->colorAt(count > 1 ? double(i) / (count - 1) : 0.0);
        info->SetItemColr(i, TEColor(int(c.r + 0.5f), int(c.g + 0.5f), int(c.b + 0.5f)));
    }
}

} // namespace

bool TZSampleProjectWriter::write(const QString& folder, QString* error)
{
    const QDir dir(folder);
    auto open = [&](const QString& kind, const QString& file, const QString& layerName) {
        return TZLayerOpener::openLayer(kind, dir.filePath(file), layerName, error);
    };
    const QString gpkg = QString::fromLatin1(TZSampleDataGenerator::GeoPackageName);
    TERefPtr<TELayer> places = open(TZLayerOpener::FeatureKind, gpkg, QStringLiteral("places"));
    TERefPtr<TELayer> roads = open(TZLayerOpener::FeatureKind, gpkg, QStringLiteral("roads"));
    TERefPtr<TELayer> regions = open(TZLayerOpener::FeatureKind, gpkg, QStringLiteral("regions"));
    TERefPtr<TELayer> landcover = open(TZLayerOpener::RasterKind, TZSampleDataGenerator::LandcoverName, QString());
    TERefPtr<TELayer> image = open(TZLayerOpener::RasterKind, TZSampleDataGenerator::RgbnImageName, QString());
    TERefPtr<TELayer> tiles = open(TZLayerOpener::RasterDirKind, TZSampleDataGenerator::TilesFolderName, QString());
    TERefPtr<TELayer> elevation = open(TZLayerOpener::RasterKind, TZSampleDataGenerator::ElevationName, QString());
    if (!places || !roads || !regions || !landcover || !image || !tiles || !elevation)
        return false;

    places.cast<TEFeatureLayer>()->SetSymbolRender(byCategory(L"place_type", {
        {L"City", marker(0xff8e1b1b, 4.0)},
        {L"Town", marker(0xffc0392b, 2.6)},
        {L"Village", marker(0xff34495e, 1.6)},
        {L"Hamlet", marker(0xff7f8c8d, 0.9)}}));
    roads.cast<TEFeatureLayer>()->SetSymbolRender(byCategory(L"road_class", {
        {L"Motorway", line(0xffc0392b, 1.1)},
        {L"Primary", line(0xffe67e22, 0.8)},
        {L"Secondary", line(0xffd4ac0d, 0.55)},
        {L"Tertiary", line(0xff6e6e6e, 0.35)},
        {L"Residential road", line(0xff8a8a8a, 0.25)},
        {L"Track", line(0xff8d6e63, 0.25, TEStyleSimpleLine::Dash)}}));
    regions.cast<TEFeatureLayer>()->SetSymbolRender(byCategory(L"landuse", {
        {L"Residential", fill(0xffe8b4a0)},
        {L"Commercial", fill(0xffe07b6a)},
        {L"Industrial", fill(0xffb7a1c9)},
        {L"Farmland", fill(0xfff1e3a0)},
        {L"Forest", fill(0xff4f8f4a)},
        {L"Park", fill(0xff9ed28a)},
        {L"Water", fill(0xff6fa8dc)},
        {L"Wetland", fill(0xff8fc1b5)}}));
    regions->SetLayerName(TEString(L"regions"));
    colourElevation(elevation.get());

    const std::vector<TZMapProject::LayerState> layers = {
        {places, true}, {roads, true}, {regions, true}, {landcover, false},
        {image, false}, {tiles, false}, {elevation, true}};
    return TZMapProject::save(dir.filePath(QString::fromLatin1(ProjectName)), layers, TZMapViewport(), error);
}
