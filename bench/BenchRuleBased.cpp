// Times the drawing of a point layer with a rule render of five rules, as
// tzmap draws it (the layer drawer, into an image), as a ratio to drawing
// the same layer with a single symbol in the same process. Every feature
// matches exactly one rule, so both draw the same number of symbols and the
// ratio is the cost of choosing the style. A second figure adds a sixth rule
// whose scale range excludes the view and whose filter does not compile: it
// must cost nothing, since the scale range is checked before the filter.
//
// Usage: bench_rule_based [folder]   (default: <temp>/tzrender-bench-rules;
// the GeoPackage is made once and reused by later runs)

#include "BenchSupport.h"
#include "TZLayerDrawer.h"
#include "TZMapViewport.h"

#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "renders/TERuleBasedSymbolRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/QuickStyle.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace TZObjects;

namespace {

constexpr int kFeatureCount = 135000;
constexpr int kRepeats = 5;
constexpr double kTarget = 2.0;

TERefPtr<TEStyle> dot(int red, int green, int blue)
{
    return QuickStyle::MakePointStyle(0, TEColor(red, green, blue), 1.0, TEColor(0, 0, 0), 0.1);
}

// The grid of points, 1000 by 135 at 0.01 apart, one point per pixel.
TZMapViewport wholeLayer()
{
    return TZMapViewport(QSize(1000, 135), QPointF(4.995, 0.67), 0.01);
}

// Draws the layer as it is set up and gives the time in milliseconds, or
// -1 when the drawing failed for another reason than the expected one.
double drawOnce(TEFeatureLayer* layer, bool brokenRuleExpected)
{
    const TZMapViewport viewport = wholeLayer();
    QImage image(viewport.deviceSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QElapsedTimer timer;
    timer.start();
    std::unique_ptr<TZLayerDrawer> drawer = TZLayerDrawer::create(layer);
    QPainter painter(&image);
    const bool finished = drawer->draw(&painter, viewport, nullptr);
    const double ms = timer.nsecsElapsed() / 1e6;
    if (!finished && !brokenRuleExpected) {
        std::fprintf(stderr, "drawing failed: %s\n", qPrintable(drawer->errorText()));
        return -1.0;
    }
    return ms;
}

using BenchSupport::Comparison;

Comparison compare(const std::function<double()>& ours, const std::function<double()>& reference)
{
    return BenchSupport::compare(ours, reference, kRepeats);
}

TERefPtr<TERuleBasedSymbolRender> fiveRules()
{
    auto render = MakeRef<TERuleBasedSymbolRender>();
    const char* filters[] = {"cls < 20", "cls >= 20 AND cls < 40", "cls >= 40 AND cls < 60",
                             "cls >= 60 AND cls < 80 AND kind <> 'none'", "cls >= 80"};
    for (int i = 0; i < 5; ++i)
        render->AddRule(MakeRef<TERuleBasedSymbolRender::Rule>(dot(50 * i, 200 - 40 * i, 100), TEString(filters[i]),
                                                               TEString(QStringLiteral("class %1").arg(i + 1))));
    return render;
}

void report(const char* what, const Comparison& c)
{
    std::printf("  %-44s %8.1f ms  vs single symbol %8.1f ms  ratio %5.2fx  (target <= %.0fx: %s)\n", what, c.ours,
                c.reference, c.ratio, kTarget, c.ratio <= kTarget ? "met" : "MISSED");
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                    : QDir::temp().filePath(QStringLiteral("tzrender-bench-rules"));
    const QString path = BenchSupport::ensurePointGeoPackage(
        folder, QStringLiteral("points-135k-classes.gpkg"), kFeatureCount, {{"cls", OFTInteger}, {"kind", OFTString}},
        1357, [](OGRFeatureH feature, int, unsigned state) {
            OGR_F_SetFieldInteger(feature, 0, int((state >> 8) % 100));
            OGR_F_SetFieldString(feature, 1, (state >> 4) % 2 ? "town" : "city");
        });
    if (path.isEmpty())
        return 1;
    QString error;
    const TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
    if (!layer) {
        std::fprintf(stderr, "Cannot open %s: %s\n", qPrintable(path), qPrintable(error));
        return 1;
    }

    const auto single = MakeRef<TESingleSymbolRender>(dot(0, 120, 200));
    const TERefPtr<TERuleBasedSymbolRender> rules = fiveRules();
    const TERefPtr<TERuleBasedSymbolRender> withDistantRule = fiveRules();
    auto distant = MakeRef<TERuleBasedSymbolRender::Rule>(dot(255, 0, 0), TEString(L"cls = = 1"), TEString(L"far"));
    distant->SetScaleFilter(true);
    distant->SetMinimumScale(1);
    distant->SetMaximumScale(10);
    withDistantRule->AddRule(distant);

    const auto drawWith = [&](const TERefPtr<TEFeatureRender>& render, bool broken) {
        layer->SetSymbolRender(render);
        return drawOnce(layer.get(), broken);
    };
    std::printf("\nbench_rule_based: drawing %d points (median of %d paired runs)\n", kFeatureCount, kRepeats);
    report("five rules", compare([&] { return drawWith(rules, false); }, [&] { return drawWith(single, false); }));
    report("five rules and one out of its scale range",
           compare([&] { return drawWith(withDistantRule, false); }, [&] { return drawWith(single, false); }));
    return 0;
}
