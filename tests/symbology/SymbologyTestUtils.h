#pragma once

#include "symbology/TEStyle.h"

#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>

namespace SymbologyTest {

// A white canvas at 96 DPI, so that one millimetre is 96 / 25.4 pixels.
inline QImage whiteImage(int w = 100, int h = 100)
{
    QImage image(w, h, QImage::Format_ARGB32);
    image.setDotsPerMeterX(3780);
    image.setDotsPerMeterY(3780);
    image.fill(Qt::white);
    return image;
}

inline QRgb pixel(const QImage& image, int x, int y)
{
    return image.pixel(x, y) | 0xFF000000u;
}

inline QByteArray styleJson(const TZObjects::TEStyle* style)
{
    QJsonObject json;
    style->save(json);
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

} // namespace SymbologyTest
