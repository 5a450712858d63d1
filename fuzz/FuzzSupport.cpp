#include "FuzzSupport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gdal.h>

#include <cstdlib>

namespace {

void quiet(QtMsgType, const QMessageLogContext&, const QString&) {}

void silentGdal(CPLErr, CPLErrorNum, const char*) {}

void writeRaster(const QString& path, int bands)
{
    GDALDriverH driver = GDALGetDriverByName("GTiff");
    GDALDatasetH ds = GDALCreate(driver, path.toUtf8().constData(), 8, 8, bands, GDT_Byte, nullptr);
    if (!ds)
        return;
    double gt[6] = {0.0, 1.0, 0.0, 8.0, 0.0, -1.0};
    GDALSetGeoTransform(ds, gt);
    unsigned char pixels[64];
    for (int b = 1; b <= bands; ++b) {
        for (int i = 0; i < 64; ++i)
            pixels[i] = static_cast<unsigned char>(i * 4 * b);
        if (GDALRasterIO(GDALGetRasterBand(ds, b), GF_Write, 0, 0, 8, 8, pixels, 8, 8, GDT_Byte, 0, 0) != CE_None)
            break;
    }
    GDALClose(ds);
}

} // namespace

void tzFuzzInit()
{
    static int argc = 1;
    static char name[] = "tzfuzz";
    static char* argv[] = {name, nullptr};
    static QCoreApplication* app = nullptr;
    if (app)
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    app = new QCoreApplication(argc, argv);
    qInstallMessageHandler(quiet);
    GDALAllRegister();
    CPLSetErrorHandler(silentGdal);
}

QString tzFuzzDataFolder()
{
    static QTemporaryDir* folder = nullptr;
    if (folder)
        return folder->path();
    folder = new QTemporaryDir;
    const QDir dir(folder->path());
    QFile points(dir.filePath(QStringLiteral("points.geojson")));
    if (points.open(QIODevice::WriteOnly)) {
        points.write(R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"a","value":1},"geometry":{"type":"Point","coordinates":[1,1]}},
{"type":"Feature","properties":{"name":"b","value":2.5},"geometry":{"type":"Point","coordinates":[2,3]}},
{"type":"Feature","properties":{"name":null,"value":-7},"geometry":{"type":"Point","coordinates":[5,4]}}]})");
    }
    writeRaster(dir.filePath(QStringLiteral("rgb.tif")), 3);
    writeRaster(dir.filePath(QStringLiteral("grey.tif")), 1);
    return folder->path();
}
