// Times tzmap's layer list and project files with a unique-values render of
// 100,000 categories, each with its own point symbol coloured from a ramp
// (as the unique values page makes them):
// - the legend: applying the render (the layer's row is refreshed and shows
//   the class count, collapsed), then expanding it and scrolling to its last
//   class, each with the time until the list has painted and the growth of
//   the process's resident memory; against a reference in the same run, a
//   QTreeWidget with one item and one drawn icon per class (how the list
//   used to hold a legend);
// - the project: saving and opening it (medians of 5), its size, and whether
//   the render reads back identical; against the same categories written as
//   one JSON object each with its symbol in full through QJsonDocument
//   (build, serialise and write; read and parse).
//
// Usage: bench_tzmap_legend [folder]   (default: <temp>/tzrender-bench-legend)

#include "BenchSupport.h"
#include "TZLayerTree.h"
#include "TZLayerTreeModel.h"
#include "TZMapIcons.h"
#include "TZMapProject.h"

#include "data/TEFeatureLayer.h"
#include "data/TEGdalSupport.h"
#include "renders/TECategorizedSymbolRender.h"
#include "renders/TEFileFunc.h"
#include "symbology/QuickStyle.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTreeWidget>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace TZObjects;

namespace {

using BenchSupport::median;

constexpr int kClassCount = 100000;
constexpr int kRepeats = 5;

TERefPtr<TECategorizedSymbolRender> manyCategories()
{
    auto render = MakeRef<TECategorizedSymbolRender>(TEString(L"name"));
    render->AddCategory(TECategorizedSymbolRender::AllOtherValues, TECategorizedSymbolRender::AllOtherValues,
                        QuickStyle::MakePointStyle(1, TEColor(200, 200, 200), 2.0, TEColor(0, 0, 0), 0.1));
    for (int i = 0; i < kClassCount; ++i) {
        const QColor colour = QColor::fromHsv(int(360.0 * i / kClassCount), 200, 220);
        const TEString value(QStringLiteral("place %1").arg(i, 6, 10, QLatin1Char('0')));
        render->AddCategory(value, value,
                            QuickStyle::MakePointStyle(1, TEColor(colour.red(), colour.green(), colour.blue()), 2.0,
                                                       TEColor(0, 0, 0), 0.1));
    }
    return render;
}

struct Measure
{
    double ms = 0.0;
    double mb = 0.0;
};

// Runs step and lets the list lay out and paint.
Measure measure(const std::function<void()>& step)
{
    const long before = BenchSupport::residentKb();
    QElapsedTimer timer;
    timer.start();
    step();
    QCoreApplication::processEvents();
    return {timer.nsecsElapsed() / 1e6, (BenchSupport::residentKb() - before) / 1024.0};
}

double timed(const std::function<bool()>& step)
{
    QElapsedTimer timer;
    timer.start();
    if (!step())
        return -1.0;
    return timer.nsecsElapsed() / 1e6;
}

// The categories as the list of objects, each style in full, that project
// files held before: built, serialised and written through QJsonDocument.
bool writeReference(const TECategorizedSymbolRender* render, const QString& path)
{
    QJsonArray categories;
    for (int i = 0; i < render->GetItemCount(); ++i) {
        const TERefPtr<TECategoryRenderItem> item = render->GetCategoryRenderItem(i);
        QJsonObject category;
        category[QStringLiteral("value")] = item->GetValue().toQString();
        category[QStringLiteral("label")] = item->GetLabel().toQString();
        category[QStringLiteral("style")] = TEFileFunc::SaveStyle(item->GetStyle().get());
        category[QStringLiteral("visible")] = item->IsVisible();
        item->GetScaleRange().save(category);
        categories.append(category);
    }
    QJsonObject root;
    root[QStringLiteral("categories")] = categories;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(root).toJson(QJsonDocument::Compact)) > 0;
}

bool readReference(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && QJsonDocument::fromJson(file.readAll()).isObject();
}

void legendFigures(const TERefPtr<TEFeatureLayer>& layer, const TERefPtr<TECategorizedSymbolRender>& render)
{
    TZLayerTree tree;
    tree.resize(320, 900);
    tree.show();
    tree.addLayer(layer);
    QCoreApplication::processEvents();
    const QString guid = layer->GetGuidStr().toQString();

    layer->SetSymbolRender(render);
    const Measure applied = measure([&] { tree.refreshLegend(guid); });
    const QModelIndex row = tree.indexOf(guid);
    const Measure expanded = measure([&] {
        tree.expand(row);
        tree.scrollToBottom();
    });
    const QModelIndex last = tree.layerModel()->index(tree.layerModel()->rowCount(row) - 1, 0, row);
    std::printf("  %-58s %8.1f ms %8.1f MB  (row: \"%s\")\n", "apply: legend refreshed, collapsed with its count",
                applied.ms, applied.mb, qPrintable(row.data().toString()));
    std::printf("  %-58s %8.1f ms %8.1f MB  (last: \"%s\")\n", "expand and scroll to the last class", expanded.ms,
                expanded.mb, qPrintable(last.data().toString()));

    QTreeWidget reference;
    reference.resize(320, 900);
    reference.setIconSize(TZMapIcons::LegendSize);
    reference.show();
    const Measure old = measure([&] {
        auto* top = new QTreeWidgetItem(&reference, {QStringLiteral("places")});
        for (int i = 0; i < render->GetItemCount(); ++i) {
            const TERefPtr<TECategoryRenderItem> item = render->GetCategoryRenderItem(i);
            auto* child = new QTreeWidgetItem(top, {item->GetLabel().toQString()});
            child->setIcon(0, TZMapIcons::symbol(item->GetStyle().get()));
        }
        top->setExpanded(true);
    });
    std::printf("  %-58s %8.1f ms %8.1f MB  (apply: %.3fx time, %.3fx memory)\n",
                "reference: QTreeWidget, an item and an icon per class", old.ms, old.mb, applied.ms / old.ms,
                applied.mb / std::max(old.mb, 0.001));
}

void projectFigures(const TERefPtr<TEFeatureLayer>& layer, const TERefPtr<TECategorizedSymbolRender>& render,
                    const QDir& folder)
{
    layer->SetSymbolRender(render);
    const QString path = folder.filePath(QStringLiteral("legend.tzmap"));
    const QString referencePath = folder.filePath(QStringLiteral("legend-reference.json"));
    const std::vector<TZMapProject::LayerState> layers = {{layer, true}};
    const TZMapViewport view(QSize(800, 600), QPointF(0, 0), 0.1);
    std::vector<double> saves, opens, referenceWrites, referenceReads;
    QString error;
    bool identical = true;
    const QByteArray before = QJsonDocument(TEFileFunc::SaveRender(render.get())).toJson(QJsonDocument::Compact);
    for (int i = 0; i < kRepeats; ++i) {
        saves.push_back(timed([&] { return TZMapProject::save(path, layers, view, &error); }));
        std::vector<TZMapProject::LayerState> opened;
        TZMapViewport openedView;
        opens.push_back(timed([&] { return TZMapProject::open(path, opened, openedView, nullptr, &error); }));
        identical = identical && opened.size() == 1
            && QJsonDocument(TEFileFunc::SaveRender(opened[0].layer->GetRender().get())).toJson(QJsonDocument::Compact)
                == before;
        referenceWrites.push_back(timed([&] { return writeReference(render.get(), referencePath); }));
        referenceReads.push_back(timed([&] { return readReference(referencePath); }));
    }
    if (!error.isEmpty())
        std::fprintf(stderr, "project: %s\n", qPrintable(error));
    const double save = median(saves), open = median(opens);
    const double write = median(referenceWrites), read = median(referenceReads);
    std::printf("  %-58s %8.1f ms  vs QJsonDocument %8.1f ms  ratio %.2fx\n", "save the project", save, write,
                save / write);
    std::printf("  %-58s %8.1f ms  vs QJsonDocument %8.1f ms  ratio %.2fx\n", "open the project", open, read,
                open / read);
    std::printf("  %-58s %8.1f MB  vs %8.1f MB  (render read back identical: %s)\n", "file size",
                QFileInfo(path).size() / 1048576.0, QFileInfo(referencePath).size() / 1048576.0,
                identical ? "yes" : "NO");
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    TEGdalSupport::EnsureRegistered();
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1])
                               : QDir::temp().filePath(QStringLiteral("tzrender-bench-legend")));
    const QString path = BenchSupport::ensurePointGeoPackage(
        folder.path(), QStringLiteral("places.gpkg"), 1000, {{"name", OFTString}}, 97,
        [](OGRFeatureH feature, int index, unsigned) {
            OGR_F_SetFieldString(feature, 0, qPrintable(QStringLiteral("place %1").arg(index, 6, 10, QLatin1Char('0'))));
        });
    if (path.isEmpty())
        return 1;
    QString error;
    const TERefPtr<TEFeatureLayer> layer = TEFeatureLayer::Open(path, {}, &error);
    if (!layer) {
        std::fprintf(stderr, "Cannot open %s: %s\n", qPrintable(path), qPrintable(error));
        return 1;
    }
    const TERefPtr<TECategorizedSymbolRender> render = manyCategories();
    std::printf("\nbench_tzmap_legend: %d categories\n", kClassCount);
    legendFigures(layer, render);
    projectFigures(layer, render, folder);
    return 0;
}
