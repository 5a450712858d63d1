#pragma once

#include "data/TERasterLayer.h"
#include "renders/TESingleBandImageRender.h"

#include <QImage>
#include <QList>
#include <QRgb>
#include <QString>

#include <gdal.h>

#include <functional>
#include <vector>

class QWidget;
class TZRenderPanel;

// Rasters, renders and dock set-ups built in code for the class, unique-value
// and colour-map page tests.
namespace RasterClassFixtures {

struct RasterContent
{
    int width = 0;
    int height = 0;
    GDALDataType type = GDT_Byte;
    std::vector<double> values;  // row by row; empty leaves the file sparse (all 0)
    bool hasNoData = false;
    double noData = 0.0;
    std::vector<QRgb> colorTable;  // a colour table on band 1 when not empty
};

// Writes the raster as a GeoTIFF in folder (one map unit a pixel, top left
// at 0,0) and returns its path; empty on failure.
QString writeRaster(const QString& folder, const QString& name, const RasterContent& content);

// Opens path as a raster layer with a single-band stretch render on band 1.
TZObjects::TERefPtr<TZObjects::TERasterLayer> openWithStretch(const QString& path);

// Makes layer the dock's current layer, shows the dock and picks the page
// titled title (which resets it). Returns the page, or null.
TZRenderPanel* showPage(TZObjects::TELayer* layer, const QString& title);

// Draws the layer with its render as tzmap does, one device pixel per raster
// pixel.
QImage draw(TZObjects::TERasterLayer* layer);

// A message box that came up while an action ran.
struct SeenBox
{
    QString title;
    QString text;
};

// Runs action, answering every message box it brings up with button, and
// returns the boxes in order. Nothing is left watching once it returns, so a
// box of a later step is never answered by an earlier one.
QList<SeenBox> answerBoxesDuring(int button, const std::function<void()>& action);

// Double-clicks the colour cell of row in the page's table and picks the
// colour swatch swatchIndex of the colour menu that pops up. False when no
// menu came.
bool pickColorFromMenu(QWidget* page, int row, int swatchIndex);

} // namespace RasterClassFixtures
