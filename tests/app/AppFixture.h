#pragma once

#include "TZMapViewport.h"

#include "core/TERefPtr.h"
#include "symbology/TEStyle.h"

#include <QColor>
#include <QImage>
#include <QModelIndexList>
#include <QString>
#include <QStringList>

class TZLayerTree;

// Test data written through GDAL into a folder, and pixel helpers.
//
// fixture.gpkg (EPSG:3857) holds "squares": two 100 x 100 polygons side by
// side, (0,0)-(100,100) with landuse "Forest" and (100,0)-(200,100) with
// "Water"; and "spots": points at (50,50) kind "a" and (150,50) kind "b".
// grey.tif is a 10 x 10 Float32 raster over (0,0)-(100,100) whose values
// rise 0..99 row by row, pixel (0,0) being no-data (-1).
// palette.tif is a 2 x 1 Byte raster over (0,0)-(200,100) with values 1, 2
// and a colour table (1 red, 2 blue).
// Each writer returns the file's path, empty when it could not be written.
class AppFixture
{
public:
    static QString writeVectors(const QString& folder);
    static QString writeGreyRaster(const QString& folder);
    static QString writePalettedRaster(const QString& folder);

    // The viewport showing (0,0)-(200,100) in a 400 x 200 image: 2 pixels
    // per map unit, no margin.
    static TZMapViewport squaresViewport();
    // The colour of the image at a map point.
    static QColor colorAt(const QImage& image, const TZMapViewport& viewport, const QPointF& map);
    // A solid fill style of the colour, with the style's default outline.
    static TZObjects::TERefPtr<TZObjects::TEStyle> fillStyle(const QColor& color);

    // The legend entries under a layer of the list, fetched as a view
    // fetches them when it shows them.
    static QModelIndexList legendEntries(TZLayerTree& tree, const QString& guid);
    static QStringList legendTexts(TZLayerTree& tree, const QString& guid);

    // A blank image for the viewport.
    static QImage blankImage(const TZMapViewport& viewport, const QColor& fill = Qt::white);
};
