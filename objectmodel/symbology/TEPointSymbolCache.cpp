#include "symbology/TEPointSymbolCache.h"

#include <QPaintEngine>
#include <QPainter>

#include <ogr_api.h>

#include <cmath>
#include <functional>

namespace TZObjects {

namespace {

// Markers are first drawn into a square this wide, doubled while they reach
// its border, up to the largest.
constexpr int FirstScratchSize = 32;
constexpr int LargestScratchSize = 1024;

// The rectangle of pixels the image paints (alpha above 0); null when none.
QRect paintedRect(const QImage& image)
{
    int left = image.width(), right = -1, top = image.height(), bottom = -1;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) == 0)
                continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

} // namespace

size_t TEPointSymbolCache::KeyHash::operator()(const Key& key) const
{
    return std::hash<const void*>()(key.style) ^ (size_t(key.dpi) << 1) ^ size_t(key.antialiased);
}

TEPointSymbolCache::~TEPointSymbolCache() = default;

bool TEPointSymbolCache::canCopyOnto(const QPainter* painter)
{
    // The device's kind and DPI are read once per device: a drawing paints one.
    const QPaintDevice* device = painter->device();
    if (!device)
        return false;
    if (device != mDevice) {
        const QPaintEngine* engine = painter->paintEngine();
        mDevice = device;
        mDeviceTakesCopies = engine && engine->type() == QPaintEngine::Raster && device->devicePixelRatioF() == 1.0;
        mDeviceDpi = qRound(TEStyle::DeviceDpi(painter));
    }
    if (!mDeviceTakesCopies || painter->compositionMode() != QPainter::CompositionMode_SourceOver)
        return false;
    // The copy lands on whole pixels: a shift by a fraction of one would
    // move it off the marker's position.
    const QTransform& transform = painter->transform();
    return transform.type() <= QTransform::TxTranslate && transform.dx() == std::floor(transform.dx())
        && transform.dy() == std::floor(transform.dy());
}

TEPointSymbolCache::Symbol& TEPointSymbolCache::symbol(const Key& key)
{
    Recent& recent = mRecent[(reinterpret_cast<quintptr>(key.style) >> 4) % RecentCount];
    if (recent.symbol && recent.key == key)
        return *recent.symbol;
    Symbol& found = mSymbols[key];
    recent = {key, &found};
    return found;
}

const TEPointSymbolCache::Sprite* TEPointSymbolCache::sprite(Symbol& symbol, const Key& key, int stepX, int stepY)
{
    if (!symbol.sprites)
        symbol.sprites = std::make_unique<std::array<Sprite, Steps * Steps>>();
    Sprite& sprite = (*symbol.sprites)[size_t(stepY * Steps + stepX)];
    if (sprite.made)
        return &sprite;
    if (mBytes > MemoryBudget)
        return nullptr;
    const int dotsPerMeter = qRound(key.dpi / 0.0254);
    for (int size = FirstScratchSize; size <= LargestScratchSize; size *= 2) {
        if (mScratch.width() != size || mScratch.dotsPerMeterX() != dotsPerMeter) {
            mScratchPainter.reset();
            mScratch = QImage(size, size, QImage::Format_ARGB32_Premultiplied);
            mScratch.setDotsPerMeterX(dotsPerMeter);
            mScratch.setDotsPerMeterY(dotsPerMeter);
            // One painter serves every marker drawn there.
            mScratchPainter = std::make_unique<QPainter>(&mScratch);
        }
        QPainter& painter = *mScratchPainter;
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(mScratch.rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setRenderHint(QPainter::Antialiasing, key.antialiased);
        const int centre = size / 2;
        const bool drawn =
            key.style->DrawPoint(&painter, QPointF(centre + double(stepX) / Steps, centre + double(stepY) / Steps));
        if (!drawn) {
            symbol.usable = false;
            return nullptr;
        }
        const QRect painted = paintedRect(mScratch);
        if (painted.isNull()) {
            // A marker that paints nothing (fully transparent) is copied as nothing.
            sprite.made = true;
            return &sprite;
        }
        if (painted.left() > 0 && painted.top() > 0 && painted.right() < size - 1 && painted.bottom() < size - 1) {
            sprite.image = mScratch.copy(painted);
            sprite.offset = painted.topLeft() - QPoint(centre, centre);
            sprite.made = true;
            mBytes += sprite.image.sizeInBytes();
            return &sprite;
        }
    }
    symbol.usable = false;
    return nullptr;
}

bool TEPointSymbolCache::DrawPoint(QPainter* painter, const TEStyle* style, const QPointF& device, double angle)
{
    if (!painter || !style)
        return false;
    if (angle != 0.0 || style->GetStyleType() != TEStyle::PointStyle || !canCopyOnto(painter)
        || !std::isfinite(device.x()) || !std::isfinite(device.y()) || std::abs(device.x()) > 1e7
        || std::abs(device.y()) > 1e7)
        return style->DrawPoint(painter, device, angle);
    const Key key{style, mDeviceDpi, painter->testRenderHint(QPainter::Antialiasing)};
    Symbol& found = symbol(key);
    if (!found.usable || found.uses < StrokedFirst) {
        ++found.uses;
        return style->DrawPoint(painter, device, angle);
    }
    // The marker's position in quarter pixels: a whole pixel and the
    // quarter step within it.
    const double quarterX = std::round(device.x() * Steps);
    const double quarterY = std::round(device.y() * Steps);
    const int pixelX = int(std::floor(quarterX / Steps));
    const int pixelY = int(std::floor(quarterY / Steps));
    const Sprite* image = sprite(found, key, int(quarterX) - pixelX * Steps, int(quarterY) - pixelY * Steps);
    if (!image)
        return style->DrawPoint(painter, device, angle);
    if (!image->image.isNull())
        painter->drawImage(QPoint(pixelX + image->offset.x(), pixelY + image->offset.y()), image->image);
    ++mCopied;
    return true;
}

bool TEPointSymbolCache::Draw(QPainter* painter, const TEStyle* style, OGRGeometryH geometry,
                              const QTransform& mapToDevice, double angle)
{
    if (!painter || !style || !geometry)
        return false;
    switch (wkbFlatten(OGR_G_GetGeometryType(geometry))) {
    case wkbPoint:
        if (OGR_G_IsEmpty(geometry))
            return false;
        return DrawPoint(painter, style, mapToDevice.map(QPointF(OGR_G_GetX(geometry, 0), OGR_G_GetY(geometry, 0))),
                         angle);
    case wkbMultiPoint: {
        bool drawn = false;
        for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i)
            drawn = Draw(painter, style, OGR_G_GetGeometryRef(geometry, i), mapToDevice, angle) || drawn;
        return drawn;
    }
    default:
        return style->Draw(painter, geometry, mapToDevice, angle);
    }
}

} // namespace TZObjects
