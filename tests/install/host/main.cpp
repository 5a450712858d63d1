// A minimal host of the dock, built outside the tree against the installed
// package: it opens the dock on a polygon layer, applies a single symbol
// and checks what the dock announced. With an image argument it instead
// checks that a snapshot shows a drawn map (many saturated colours).
#include <TZControlRender>
#include <TZRenderPanelSingleSymbol>

#include <data/TEMemoryFeatureLayer.h>
#include <renders/TEFeatureRender.h>

#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QMainWindow>
#include <QSet>

#include <gdal.h>

#include <cstdio>

int tzHeaderCount();

namespace {

int fail(const char* what)
{
    std::fprintf(stderr, "tzhost: %s\n", what);
    return 1;
}

int checkSnapshot(const QString& file)
{
    const QImage image(file);
    if (image.isNull())
        return fail("the snapshot is not an image");
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2) {
        for (int x = 0; x < image.width(); x += 2) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.hsvSaturation() > 80)
                colours.insert(colour.rgb());
        }
    }
    std::printf("snapshot %dx%d, %d saturated colours\n", image.width(), image.height(), int(colours.size()));
    return colours.size() >= 1000 ? 0 : fail("the snapshot shows no drawn map");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc == 2)
        return checkSnapshot(QString::fromLocal8Bit(argv[1]));
    GDALAllRegister();

    using namespace TZObjects;
    const auto layer = TEMemoryFeatureLayer::Create(QStringLiteral("parcels"), TELayer::LT_Polygon,
                                                    {{QStringLiteral("name"), TEField::FT_String}});
    if (!layer || layer->AppendFeature(QStringLiteral("POLYGON((0 0,1 0,1 1,0 1,0 0))"), {TEVariant("a")}) < 0)
        return fail("cannot make the layer");

    QMainWindow window;
    TZControlRender* dock = TZControlRender::instance(&window);
    window.addDockWidget(Qt::RightDockWidgetArea, dock);
    int refreshed = 0;
    QString announced;
    QObject::connect(dock, &TZControlRender::refreshMap, [&] { ++refreshed; });
    QObject::connect(dock, &TZControlRender::symbolChanged, [&](const QString& guid) { announced = guid; });
    window.show();
    dock->show();
    dock->setLayer(layer.get());
    dock->showLayerStyle();

    auto* styles = dock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
    if (!styles)
        return fail("the dock has no rendering style box");
    const int single = styles->findText(TZRenderPanelSingleSymbol().title());
    if (styles->itemText(0) != QLatin1String("Not to render") || single < 1)
        return fail("the dock does not offer the single symbol panel");
    styles->setCurrentIndex(single);
    dock->onApply();

    const auto render = layer->GetSymbolRender();
    if (!render || render->GetType().toQString() != QLatin1String("SingleSymbol"))
        return fail("Apply set no single symbol render");
    if (announced != layer->GetGuidStr().toQString())
        return fail("the dock did not announce the changed symbology");
    std::printf("dock applied %s to %s (%d installed headers, %d redraws asked)\n",
                qPrintable(render->GetType().toQString()), qPrintable(layer->GetLayerName().toQString()),
                tzHeaderCount(), refreshed);
    return 0;
}
