// Times tzmap's drawing of pie diagrams over 10,000 polygons, all in view:
// the regions drawn with their single symbol alone (the reference, timed in
// this process) and with a three-slice pie on each, labels off and on,
// shadow on. Prints the median of several runs, wall clock and this
// thread's CPU time (the drawing runs on one thread; on a busy machine the
// CPU time is what the drawing itself costs), and the ratio to the
// reference; the target is under 1 s for the pies.
//
// Usage: bench_pie_diagram

#include "TZFeatureLayerDrawer.h"
#include "TZMapViewport.h"

#include "data/TEMemoryFeatureLayer.h"
#include "renders/TEPieDiagramRender.h"
#include "renders/TESingleSymbolRender.h"
#include "symbology/TEStyleSimpleFill.h"
#include "symbology/TEStyleSimpleLine.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

using namespace TZObjects;

namespace {

constexpr int kSide = 100; // 100 x 100 squares
constexpr double kCell = 100.0;
constexpr int kRepeats = 5;

TERefPtr<TEStyle> fill(int r, int g, int b)
{
    auto outline = MakeRef<TEStyleSimpleLine>();
    outline->SetWidth(0.1);
    outline->SetColor(TEColor(40, 40, 40));
    auto style = MakeRef<TEStyleSimpleFill>();
    style->SetColor(TEColor(r, g, b));
    style->SetOutline(outline);
    return style;
}

TERefPtr<TEMemoryFeatureLayer> makeSquares()
{
    TERefPtr<TEMemoryFeatureLayer> layer = TEMemoryFeatureLayer::Create(
        QStringLiteral("squares"), TELayer::LT_Polygon,
        {{QStringLiteral("young"), TEField::FT_Integer},
         {QStringLiteral("working"), TEField::FT_Integer},
         {QStringLiteral("elderly"), TEField::FT_Integer}},
        QStringLiteral("EPSG:3857"));
    unsigned state = 12345u;
    auto next = [&state] {
        state = state * 1664525u + 1013904223u;
        return int(state >> 20) % 1000;
    };
    for (int j = 0; j < kSide; ++j) {
        for (int i = 0; i < kSide; ++i) {
            const double x = i * kCell;
            const double y = j * kCell;
            layer->AppendFeature(QStringLiteral("POLYGON((%1 %2,%3 %2,%3 %4,%1 %4,%1 %2))")
                                     .arg(x).arg(y).arg(x + kCell).arg(y + kCell),
                                 {TEVariant(next()), TEVariant(next() * 3), TEVariant(next())});
        }
    }
    return layer;
}

double threadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

struct Timing
{
    double wall = 0.0;
    double cpu = 0.0;
};

// Median seconds (wall and CPU) of drawing the layer with the render into a
// fresh image.
Timing medianDraw(TEFeatureLayer* layer, const TEFeatureRender& render, const TZMapViewport& view, int* diagrams)
{
    std::vector<double> times;
    std::vector<double> cpu;
    for (int r = 0; r < kRepeats; ++r) {
        QImage image(view.deviceSize(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        TZFeatureLayerDrawer drawer(layer, &render, nullptr);
        QElapsedTimer timer;
        const double cpuStart = threadSeconds();
        timer.start();
        {
            QPainter painter(&image);
            drawer.draw(&painter, view, nullptr);
        }
        times.push_back(timer.nsecsElapsed() / 1e9);
        cpu.push_back(threadSeconds() - cpuStart);
        *diagrams = drawer.diagramCount();
    }
    std::sort(times.begin(), times.end());
    std::sort(cpu.begin(), cpu.end());
    return {times[times.size() / 2], cpu[cpu.size() / 2]};
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    TERefPtr<TEMemoryFeatureLayer> layer = makeSquares();
    // Every square in view, 16 pixels each.
    const TZMapViewport view(QSize(1600, 1600), QPointF(kSide * kCell / 2.0, kSide * kCell / 2.0), kCell / 16.0);

    auto background = MakeRef<TESingleSymbolRender>(fill(230, 220, 200));
    auto pie = [&](bool labels, bool shadow) {
        auto render = MakeRef<TEPieDiagramRender>();
        render->AddItem(L"young", L"young", fill(70, 110, 170));
        render->AddItem(L"working", L"working", fill(240, 150, 40));
        render->AddItem(L"elderly", L"elderly", fill(220, 80, 80));
        render->SetRadius(6);
        render->SetShowLabel(labels);
        render->SetShowShadow(shadow);
        render->SetShadowThickness(0.3);
        render->SetBackgroundRender(background.get());
        return render;
    };

    int diagrams = 0;
    const Timing reference = medianDraw(layer.get(), *background, view, &diagrams);
    std::printf("%-30s %8s %8s %7s\n", "", "wall s", "CPU s", "ratio");
    std::printf("%-30s %8.3f %8.3f\n", "10,000 polygons, no diagrams", reference.wall, reference.cpu);
    const struct { const char* name; bool labels; bool shadow; } cases[] = {
        {"pies", false, false}, {"pies with 3D shadow", false, true}, {"pies with labels", true, false}};
    for (const auto& c : cases) {
        const Timing t = medianDraw(layer.get(), *pie(c.labels, c.shadow), view, &diagrams);
        std::printf("%-30s %8.3f %8.3f %7.2f  (%d diagrams)%s\n", c.name, t.wall, t.cpu, t.cpu / reference.cpu,
                    diagrams, t.cpu < 1.0 ? "" : "  over 1 s");
    }
    return 0;
}
