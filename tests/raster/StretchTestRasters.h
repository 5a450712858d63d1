#pragma once

#include <QMetaType>
#include <QString>

#include <gdal.h>

#include <functional>
#include <vector>

// GeoTIFFs for the stretch, composite and histogram tests, written through
// GDAL: tiled with small blocks (so that partial blocks at the right and
// bottom edges are read too), over (0,0)-(width,height) in map units, one
// map unit a pixel, row 0 at the top.
namespace StretchTestRasters {

using Value = std::function<double(int band, int x, int y)>;

inline QString write(const QString& path, int width, int height, int bands, GDALDataType type, const Value& value,
                     const double* noData = nullptr, int block = 16)
{
    GDALAllRegister();
    const QByteArray blockText = QByteArray::number(block);
    const char* options[] = {"TILED=YES", nullptr, nullptr, nullptr};
    const QByteArray xOption = "BLOCKXSIZE=" + blockText;
    const QByteArray yOption = "BLOCKYSIZE=" + blockText;
    options[1] = xOption.constData();
    options[2] = yOption.constData();
    GDALDatasetH dataset = GDALCreate(GDALGetDriverByName("GTiff"), path.toUtf8().constData(), width, height, bands,
                                      type, const_cast<char**>(options));
    if (!dataset)
        return QString();
    double transform[6] = {0.0, 1.0, 0.0, double(height), 0.0, -1.0};
    GDALSetGeoTransform(dataset, transform);
    std::vector<double> row(static_cast<size_t>(width));
    bool written = true;
    for (int b = 1; b <= bands; ++b) {
        GDALRasterBandH band = GDALGetRasterBand(dataset, b);
        if (noData)
            GDALSetRasterNoDataValue(band, *noData);
        for (int y = 0; y < height && written; ++y) {
            for (int x = 0; x < width; ++x)
                row[size_t(x)] = value(b, x, y);
            written = GDALRasterIO(band, GF_Write, 0, y, width, 1, row.data(), width, 1, GDT_Float64, 0, 0) == CE_None;
        }
    }
    GDALClose(dataset);
    return written ? path : QString();
}

} // namespace StretchTestRasters

Q_DECLARE_METATYPE(GDALDataType)
