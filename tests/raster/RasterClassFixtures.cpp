#include "RasterClassFixtures.h"

#include "TZControlRender.h"
#include "TZMapViewport.h"
#include "TZRasterLayerDrawer.h"
#include "TZRenderPanel.h"

#include "renders/TEImageStretchRenderInfo.h"
#include "view/TETrackCancel.h"
#include "widgets/TZColorMenu.h"

#include <QApplication>
#include <QComboBox>
#include <QAbstractButton>
#include <QDir>
#include <QMessageBox>
#include <QPainter>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>


using namespace TZObjects;

namespace RasterClassFixtures {

QString writeRaster(const QString& folder, const QString& name, const RasterContent& content)
{
    GDALAllRegister();
    const QString path = QDir(folder).filePath(name);
    GDALDriverH driver = GDALGetDriverByName("GTiff");
    const char* options[] = {"SPARSE_OK=TRUE", nullptr};
    GDALDatasetH dataset = GDALCreate(driver, path.toUtf8().constData(), content.width, content.height, 1, content.type,
                                      const_cast<char**>(options));
    if (!dataset)
        return QString();
    double transform[6] = {0.0, 1.0, 0.0, 0.0, 0.0, -1.0};
    GDALSetGeoTransform(dataset, transform);
    GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    if (content.hasNoData)
        GDALSetRasterNoDataValue(band, content.noData);
    if (!content.colorTable.empty()) {
        GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
        for (size_t i = 0; i < content.colorTable.size(); ++i) {
            const QRgb c = content.colorTable[i];
            const GDALColorEntry entry{short(qRed(c)), short(qGreen(c)), short(qBlue(c)), short(qAlpha(c))};
            GDALSetColorEntry(table, int(i), &entry);
        }
        GDALSetRasterColorTable(band, table);
        GDALDestroyColorTable(table);
    }
    bool written = true;
    if (!content.values.empty()) {
        std::vector<double> values = content.values;
        written = GDALRasterIO(band, GF_Write, 0, 0, content.width, content.height, values.data(), content.width,
                               content.height, GDT_Float64, 0, 0) == CE_None;
    }
    GDALClose(dataset);
    return written ? path : QString();
}

TERefPtr<TERasterLayer> openWithStretch(const QString& path)
{
    TERefPtr<TERasterLayer> layer = TERasterLayer::Open(path);
    if (!layer)
        return layer;
    auto stretch = MakeRef<TEImageStretchRenderInfo>();
    stretch->AddFromRaster(layer->GetRaster().get(), 1);
    layer->SetRender(MakeRef<TESingleBandImageRender>(stretch));
    return layer;
}

TZRenderPanel* showPage(TELayer* layer, const QString& title)
{
    TZControlRender* dock = TZControlRender::instance(nullptr);
    dock->resize(360, 560);
    dock->show();
    dock->setLayer(layer);
    dock->showLayerStyle();
    auto* combo = dock->findChild<QComboBox*>(QStringLiteral("mComboBoxRenderStyle"));
    const int entry = combo ? combo->findText(title) : -1;
    if (entry < 0)
        return nullptr;
    TZRenderPanel* page = nullptr;
    for (TZRenderPanel* panel : dock->findChildren<TZRenderPanel*>()) {
        if (panel->title() == title)
            page = panel;
    }
    if (!page)
        return nullptr;
    if (entry > 0) {
        if (combo->currentIndex() == entry)
            dock->switchToTab(entry);  // what choosing the entry again does
        else
            combo->setCurrentIndex(entry);
    } else {
        // The dock's first entry always shows its no-render page, so it
        // selects this page only for a render of the page's mode; do here
        // what it does then.
        QSignalBlocker blocker(combo);
        combo->setCurrentIndex(entry);
        dock->findChild<QTabWidget*>(QStringLiteral("mTabWidgetStyle"))->setCurrentWidget(page);
        page->onReset();
    }
    return page->isVisible() ? page : nullptr;
}

QImage draw(TERasterLayer* layer)
{
    const TERefPtr<TERasterProps> raster = layer->GetRaster();
    const QSize size(raster->GetWidth(), raster->GetHeight());
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const TERefPtr<TEImageRender> render = layer->GetImageRender();
    TZRasterLayerDrawer drawer(raster, render.get());
    QPainter painter(&image);
    const TZMapViewport viewport(size, QPointF(size.width() / 2.0, -size.height() / 2.0), 1.0);
    TETrackCancel cancel;
    drawer.draw(&painter, viewport, &cancel);
    return image;
}

QList<SeenBox> answerBoxesDuring(int button, const std::function<void()>& action)
{
    QList<SeenBox> seen;
    QTimer timer;
    timer.setInterval(20);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        seen.append(SeenBox{box->windowTitle(), box->text()});
        QAbstractButton* answer = box->button(QMessageBox::StandardButton(button));
        if (!answer)
            answer = box->escapeButton() ? box->escapeButton() : box->defaultButton();
        if (answer)
            answer->click();
        else
            box->done(QMessageBox::Cancel);
    });
    timer.start();
    action();
    timer.stop();
    return seen;
}

bool pickColorFromMenu(QWidget* page, int row, int swatchIndex)
{
    auto* table = page->findChild<QTableView*>(QStringLiteral("tableView"));
    if (!table || !table->model())
        return false;
    // The menu runs its own event loop; the timer answers it from there.
    bool picked = false;
    QTimer timer;
    timer.setInterval(20);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<TZColorMenu*>(QApplication::activePopupWidget());
        auto* swatch = menu ? menu->findChild<QToolButton*>(QStringLiteral("mSwatch%1").arg(swatchIndex)) : nullptr;
        if (swatch) {
            picked = true;
            timer.stop();
            swatch->click();
        }
    });
    timer.start();
    const QRect cell = table->visualRect(table->model()->index(row, 0));
    // The first click selects, the second opens the menu, as a person's double-click does.
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    timer.stop();
    return picked;
}

} // namespace RasterClassFixtures
