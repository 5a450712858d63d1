#include "RenderFixtures.h"

#include "renders/TECategorizedByManyFieldsSymbolRender.h"
#include "renders/TEClusterDiagramRender.h"
#include "renders/TEDotDensityDiagramRender.h"
#include "renders/TEFourColorTheoremRender.h"
#include "renders/TEGradingSymbolRender.h"
#include "renders/TEGraduatedSymbolsDiagramRender.h"
#include "renders/TEHeatMapperRender.h"
#include "renders/TEHistogramDiagramRender.h"
#include "renders/TEImageClassRenderInfo.h"
#include "renders/TEImageStretchRenderInfo.h"
#include "renders/TEMatchToSymbolsRender.h"
#include "renders/TEMultiBandImageRender.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleBandImageRender.h"
#include "renders/TESingleSymbolRender.h"
#include "renders/TEStackDiagramRender.h"
#include "symbology/TEEvenColorRamp.h"
#include "symbology/TEStyleSimplePoint.h"

#include <QColor>
#include <QDir>

#include <gdal.h>
#include <ogr_api.h>

using namespace TZObjects;

namespace RenderFixtures {

namespace {

// One definition for all features, as a layer would share it.
OGRFeatureDefnH Definition()
{
    static OGRFeatureDefnH definition = [] {
        OGRFeatureDefnH d = OGR_FD_Create("places");
        OGR_FD_Reference(d);
        const std::pair<const char*, OGRFieldType> fields[] = {
            {"kind", OFTString}, {"pop", OFTReal}, {"code", OFTInteger}, {"angle", OFTReal}};
        for (const auto& field : fields) {
            OGRFieldDefnH f = OGR_Fld_Create(field.first, field.second);
            OGR_FD_AddFieldDefn(d, f);
            OGR_Fld_Destroy(f);
        }
        return d;
    }();
    return definition;
}

TERefPtr<TEColorRamp> Ramp()
{
    return MakeRef<TEEvenColorRamp>(rgb_color<float>(10, 20, 30), rgb_color<float>(200, 100, 50));
}

} // namespace

TERefPtr<TEFeature> MakeFeature(const Attributes& a)
{
    OGRFeatureH handle = OGR_F_Create(Definition());
    OGR_F_SetFID(handle, a.id);
    if (a.kind)
        OGR_F_SetFieldString(handle, 0, a.kind);
    if (a.popSet)
        OGR_F_SetFieldDouble(handle, 1, a.pop);
    OGR_F_SetFieldInteger(handle, 2, a.code);
    OGR_F_SetFieldDouble(handle, 3, a.angle);
    static TERefPtr<TEFields> fields = TEFields::FromDefinition(Definition());
    return MakeRef<TEFeature>(handle, fields);
}

TERefPtr<TEStyle> PointStyle(int r, int g, int b)
{
    auto style = MakeRef<TEStyleSimplePoint>();
    style->SetColor(TEColor(r, g, b));
    style->SetName(TEString(QColor(r, g, b).name()));
    return style;
}

QString ColorName(const TERefPtr<TEStyle>& style)
{
    if (!style)
        return QStringLiteral("null");
    const TEColor c = style->GetColor();
    return QColor(c.getR(), c.getG(), c.getB()).name();
}

std::vector<TERefPtr<TERender>> FullyPopulatedRenders()
{
    std::vector<TERefPtr<TERender>> renders;
    auto common = [](TEFeatureRender* render) {
        render->EnablePriorityRender(true);
        render->SetIsRotateByField(true);
        render->SetRotateField(L"angle");
        render->SetIsRotateByClockWise(false);
        render->SetRotateRandomRange(15, 45);
    };

    auto single = MakeRef<TESingleSymbolRender>(PointStyle(1, 2, 3));
    single->SetStyleLabel(L"All places");
    single->SetSymbolDB(L"Places");
    single->SetIsMemorySymbol(true);
    renders.push_back(single);

    auto fillCategories = [](TECategorizedSymbolRender* render, const TEString& first, const TEString& second) {
        render->AddCategory(TECategorizedSymbolRender::AllOtherValues, TECategorizedSymbolRender::AllOtherValues,
                            PointStyle(9, 9, 9));
        render->AddCategory(first, L"First", PointStyle(200, 0, 0), true, 1000, 50000);
        render->AddCategory(second, L"Second", PointStyle(0, 200, 0));
        render->GetCategoryRenderItem(2)->SetVisible(false);
        render->SetIsShowOtherValue(false);
        TECategorizedSymbolRender::OutLineInfo outline;
        outline.color = TEColor(1, 2, 3, 200);
        outline.width = 1.5;
        outline.unit = 3;
        render->SetOutLineInfo(outline);
    };
    auto categorized = MakeRef<TECategorizedSymbolRender>(L"kind");
    fillCategories(categorized.get(), L"city", L"town");
    renders.push_back(categorized);

    auto manyFields = MakeRef<TECategorizedByManyFieldsSymbolRender>(L"kind,code");
    fillCategories(manyFields.get(), L"city,1", L"town,2");
    renders.push_back(manyFields);

    auto grading = MakeRef<TEGradingSymbolRender>(L"pop");
    fillCategories(grading.get(), L"0,10", L"10,20");
    grading->SetLevel(2);
    renders.push_back(grading);

    auto graduated = MakeRef<TEGraduatedSymbolsDiagramRender>(L"pop");
    graduated->setLevel(2);
    graduated->setItems({TEGraduatedSymbolsDiagramItem(PointStyle(5, 5, 5), 0, 10),
                         TEGraduatedSymbolsDiagramItem(PointStyle(6, 6, 6), 10, 20)});
    graduated->SetBackgroundRender(MakeRef<TESingleSymbolRender>(PointStyle(4, 4, 4)).get());
    renders.push_back(graduated);

    auto match = MakeRef<TEMatchToSymbolsRender>(L"kind");
    fillCategories(match.get(), L"city", L"village");
    match->setSymbolDB(L"Places");
    renders.push_back(match);

    auto rules = MakeRef<TERuleBasedSymbolRender>();
    auto rule = MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(7, 7, 7), L"pop > 5", L"Big");
    rule->SetScaleFilter(true);
    rule->SetMinimumScale(100);
    rule->SetMaximumScale(2000);
    rules->AddRule(rule);
    rules->AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(PointStyle(8, 8, 8), L"", L"Rest"));
    renders.push_back(rules);

    auto fourColor = MakeRef<TEFourColorTheoremRender>();
    fourColor->setDefaultStyle(PointStyle(50, 50, 50));
    fourColor->setColorMap({{1, TEColor(255, 0, 0)}, {2, TEColor(0, 0, 255)}});
    renders.push_back(fourColor);

    auto heat = MakeRef<TEHeatMapperRender>();
    heat->SetRadius(25.5);
    heat->SetRadiusUnitType(2);
    heat->SetMaximumValue(12.5);
    heat->SetColorRamp(Ramp());
    renders.push_back(heat);

    auto fillDiagram = [](TEDiagramRender* render) {
        render->AddItem(L"pop", L"Population", PointStyle(11, 12, 13));
        render->AddItem(L"code", L"Code", PointStyle(14, 15, 16));
        render->SetShowLabel(true);
        auto background = MakeRef<TECategorizedSymbolRender>(L"kind");
        background->AddCategory(L"city", L"City", PointStyle(20, 21, 22));
        render->SetBackgroundRender(background.get());
    };
    auto pie = MakeRef<TEPieDiagramRender>();
    fillDiagram(pie.get());
    pie->SetRadius(33);
    pie->SetShowShadow(true);
    pie->SetShadowThickness(0.35);
    renders.push_back(pie);

    auto histogram = MakeRef<TEHistogramDiagramRender>();
    fillDiagram(histogram.get());
    histogram->SetWidth(12.5);
    histogram->setMaxHeight(150);
    histogram->setUnitType(2);
    histogram->SetVerticalDirection(false);
    renders.push_back(histogram);

    auto stack = MakeRef<TEStackDiagramRender>();
    fillDiagram(stack.get());
    stack->SetWidth(31);
    stack->SetMaxHeight(140);
    renders.push_back(stack);

    auto dots = MakeRef<TEDotDensityDiagramRender>();
    fillDiagram(dots.get());
    dots->setDotColor(TEColor(10, 200, 30));
    dots->setTimestamp(1700000000u);
    dots->setFieldName(L"pop");
    dots->setNumberPerDot(250);
    renders.push_back(dots);

    auto cluster = MakeRef<TEClusterDiagramRender>();
    fillDiagram(cluster.get());
    TERefPtr<TEColorRamp> ramp = Ramp();
    cluster->setColorRamp(ramp.get());
    cluster->setMakerSize(7.25);
    renders.push_back(cluster);

    for (const TERefPtr<TERender>& render : renders)
        common(static_cast<TEFeatureRender*>(render.get()));

    auto stretch = MakeRef<TEImageStretchRenderInfo>();
    stretch->SetAlgoType(TEImageStretchRenderInfo::StandardDeviation);
    stretch->SetMinMaxVal(3, 250);
    stretch->SetMeanValue(120);
    stretch->SetStandardValue(40);
    stretch->SetPercentClip(true);
    stretch->SetLeftClipValue(2);
    stretch->SetRightClipValue(3);
    stretch->SetItemColr(0, TEColor(255, 0, 0));
    auto singleBand = MakeRef<TESingleBandImageRender>(stretch);
    singleBand->SetBandIndex(2);
    singleBand->SetNodataColorType(1);
    singleBand->SetNodataColor(TEColor(1, 2, 3));
    singleBand->SetBackgroundColor(TEColor(4, 5, 6));
    renders.push_back(singleBand);

    auto classBand = MakeRef<TESingleBandImageRender>();
    auto classes = MakeRef<TEImageClassRenderInfo>();
    classes->SetClassCount(2);
    classes->SetClassItemInfo(0, 0, 10, TEColor(1, 1, 1));
    classes->SetClassItemInfo(1, 10, 20, TEColor(2, 2, 2));
    classBand->setRenderInfo(classes);
    renders.push_back(classBand);

    auto multi = MakeRef<TEMultiBandImageRender>();
    multi->setImageRenderMODE(8);
    multi->setRedBand(3);
    multi->setGreenBand(1);
    multi->setBlueBand(2);
    multi->setUseGreenBand(false);
    multi->setAlphaBandUse(true);
    multi->setAlphaBandNum(5);
    multi->setStretchType(TEMultiBandImageRender::NoStretch);
    multi->setStretchMin(1.5);
    multi->setStretchMax(2.5);
    multi->SetStretchBandIndex(2);
    multi->SetNodataColorType(1);
    multi->SetBackgroundColor(TEColor(9, 8, 7));
    renders.push_back(multi);
    return renders;
}

QString WriteGeoTiff(const QString& folder, const QString& name, int width, int height,
                     const std::vector<std::vector<double>>& bands, bool hasNoData, double noData,
                     const std::vector<TEColor>& colors)
{
    GDALAllRegister();
    const QString path = QDir(folder).filePath(name);
    GDALDriverH driver = GDALGetDriverByName("GTiff");
    GDALDatasetH dataset = GDALCreate(driver, path.toUtf8().constData(), width, height, int(bands.size()),
                                      GDT_Byte, nullptr);
    if (!dataset)
        return {};
    for (size_t b = 0; b < bands.size(); ++b) {
        GDALRasterBandH band = GDALGetRasterBand(dataset, int(b) + 1);
        std::vector<double> values = bands[b];
        if (GDALRasterIO(band, GF_Write, 0, 0, width, height, values.data(), width, height, GDT_Float64, 0, 0)
            != CE_None) {
            GDALClose(dataset);
            return {};
        }
        if (b == 0 && hasNoData)
            GDALSetRasterNoDataValue(band, noData);
        if (b == 0 && !colors.empty()) {
            GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
            for (size_t i = 0; i < colors.size(); ++i) {
                const GDALColorEntry entry = {short(colors[i].getR()), short(colors[i].getG()),
                                              short(colors[i].getB()), short(colors[i].getA())};
                GDALSetColorEntry(table, int(i), &entry);
            }
            GDALSetRasterColorTable(band, table);
            GDALDestroyColorTable(table);
        }
    }
    GDALClose(dataset);
    return path;
}

} // namespace RenderFixtures
