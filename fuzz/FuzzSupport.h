#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What every fuzz target needs before its first input: a Qt application
// object, GDAL's drivers, and quiet message handlers (a reader's warning is
// an expected outcome, not a finding).
void tzFuzzInit();

inline QByteArray tzFuzzBytes(const uint8_t* data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size));
}

// A folder, made once per process, holding small data sets that fuzzed
// projects may name as layer sources: "points.geojson" (three points with a
// text and a number field), "rgb.tif" (3 bands, 8x8), "grey.tif" (1 band).
QString tzFuzzDataFolder();
