#include "symbology/TEPointSymbolCache.h"

#include <QPaintEngine>
#include <QPainter>

#include <ogr_api.h>

#include <cmath>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace TZObjects {

namespace {

// Markers are first drawn into a square this wide, doubled while they reach
// its border, up to the largest.
constexpr int FirstScratchSize = 16;
constexpr int LargestScratchSize = 1024;

// The rectangle of pixels the image paints (alpha above 0); null when none.
QRect paintedRect(const QImage& image)
{
    const int width = image.width();
    const int height = image.height();
    int left = width, right = -1, top = height, bottom = -1;
    for (int y = 0; y < height; ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < width; ++x) {
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

#ifdef __SSE2__
// Blends count premultiplied ARGB pixels (a multiple of four) of source
// over destination as QPainter's source-over does, rounding alike:
// d = s + d * (255 - alpha of s) / 255, on the red and blue bytes and on
// the alpha and green bytes of each pixel side by side. Without SSE2 (not
// an x86 processor) QPainter blends the copies instead.
void blendOver(quint32* destination, const quint32* source, int count)
{
    const __m128i redBlue = _mm_set1_epi32(0x00ff00ff);
    const __m128i half = _mm_set1_epi16(0x80);
    const __m128i opaque = _mm_set1_epi16(0xff);
    for (int i = 0; i < count; i += 4) {
        const __m128i s = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + i));
        const __m128i alpha = _mm_srli_epi32(s, 24);
        const __m128i rest = _mm_sub_epi16(opaque, _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16)));
        auto* at = reinterpret_cast<__m128i*>(destination + i);
        const __m128i d = _mm_loadu_si128(at);
        __m128i rb = _mm_mullo_epi16(_mm_and_si128(d, redBlue), rest);
        __m128i ag = _mm_mullo_epi16(_mm_srli_epi16(d, 8), rest);
        rb = _mm_srli_epi16(_mm_add_epi16(_mm_add_epi16(rb, _mm_srli_epi16(rb, 8)), half), 8);
        ag = _mm_andnot_si128(redBlue, _mm_add_epi16(_mm_add_epi16(ag, _mm_srli_epi16(ag, 8)), half));
        _mm_storeu_si128(at, _mm_add_epi8(s, _mm_or_si128(rb, ag)));
    }
}
#endif

// Asks for the memory at address to be brought into the cache.
inline void prefetch(const void* address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address, 1);
#else
    Q_UNUSED(address);
#endif
}

} // namespace

TEPointSymbolCache::TEPointSymbolCache(int expectedSymbols)
    : mStepShift(expectedSymbols > VeryManySymbols ? 0 : expectedSymbols > ManySymbols ? 1 : 2)
{
}

TEPointSymbolCache::~TEPointSymbolCache() = default;

TEPointSymbolCache::Run::Run(TEPointSymbolCache& cache, QPainter* painter)
    : mCache(cache)
    , mPainter(painter)
{
    QPaintDevice* device = painter ? painter->device() : nullptr;
    const QPaintEngine* engine = painter ? painter->paintEngine() : nullptr;
    if (!device || !engine || engine->type() != QPaintEngine::Raster || device->devicePixelRatioF() != 1.0
        || painter->compositionMode() != QPainter::CompositionMode_SourceOver)
        return;
    // A copy lands on whole pixels: a shift by a fraction of one would move
    // it off the marker's position.
    const QTransform& transform = painter->transform();
    if (transform.type() > QTransform::TxTranslate || transform.dx() != std::floor(transform.dx())
        || transform.dy() != std::floor(transform.dy()))
        return;
    mCopies = true;
    mDpi = qRound(TEStyle::DeviceDpi(painter));
    mAntialiased = painter->testRenderHint(QPainter::Antialiasing);
#ifdef __SSE2__
    if (device->devType() != QInternal::Image || painter->hasClipping() || painter->opacity() != 1.0)
        return;
    auto* image = static_cast<QImage*>(device);
    if (image->format() != QImage::Format_ARGB32_Premultiplied && image->format() != QImage::Format_RGB32)
        return;
    // The painter draws into this very buffer (bits() would detach an image
    // shared since the painter began, and so write elsewhere).
    mBits = reinterpret_cast<quint32*>(const_cast<uchar*>(image->constBits()));
    mStride = image->bytesPerLine() / qsizetype(sizeof(quint32));
    mBounds = image->rect();
    mShift = QPoint(int(transform.dx()), int(transform.dy()));
#endif
}

bool TEPointSymbolCache::Run::DrawPoint(const TEStyle* style, const QPointF& device, double angle)
{
    if (!mPainter || !style)
        return false;
    // Strokes come after the copies before them.
    const auto stroke = [&] {
        Flush();
        return style->DrawPoint(mPainter, device, angle);
    };
    if (!mCopies || angle != 0.0 || !std::isfinite(device.x()) || !std::isfinite(device.y())
        || std::abs(device.x()) > 1e7 || std::abs(device.y()) > 1e7)
        return stroke();
    const Key key{style, mDpi, mAntialiased};
    Symbol& symbol = mCache.symbol(key);
    if (!symbol.usable)
        return stroke();
    // The marker's position in steps (quarter, half or whole pixels): a whole
    // pixel and the step within it.
    // Steps are a power of two: the pixel is the floor of a shift (an
    // arithmetic one, as every compiler Qt supports makes it), the step the
    // bits shifted out.
    const int shift = mCache.mStepShift;
    const qint64 stepsX = qRound64(device.x() * (1 << shift));
    const qint64 stepsY = qRound64(device.y() * (1 << shift));
    const qint64 within = (qint64(1) << shift) - 1;
    const Sprite* sprite = mCache.sprite(symbol, key, int(stepsX & within), int(stepsY & within));
    if (!sprite)
        return stroke();
    if (sprite->pixels)
        copy(*sprite, QPoint(int(stepsX >> shift), int(stepsY >> shift)));
    ++mCache.mCopied;
    return true;
}

TEPointSymbolCache::Run::~Run()
{
    Flush();
}

void TEPointSymbolCache::Run::Flush()
{
    for (; mCount > 0; --mCount, mFirst = (mFirst + 1) % Lag)
        blend(mWaiting[size_t(mFirst)]);
}

void TEPointSymbolCache::Run::blend(const Blend& blend) const
{
#ifdef __SSE2__
    const QRect& box = blend.sprite->box;
    quint32* row = blend.target;
    const quint32* source = blend.sprite->pixels;
    for (int y = 0; y < box.height(); ++y, row += mStride, source += box.width())
        blendOver(row, source, box.width());
#else
    // Nothing waits: without SSE2 there are no image bits to blend into.
    Q_UNUSED(blend);
#endif
}

void TEPointSymbolCache::Run::copy(const Sprite& sprite, const QPoint& pixel)
{
    const QRect& box = sprite.box;
    const QPoint corner = pixel + box.topLeft();
    const QPoint target = corner + mShift;
    if (mBits && target.x() >= mBounds.left() && target.y() >= mBounds.top()
        && target.x() + box.width() - 1 <= mBounds.right() && target.y() + box.height() - 1 <= mBounds.bottom()) {
        // The rows lie far apart in a large image: they are asked for now
        // and blended a few points later, so that the waits for memory
        // overlap.
        quint32* row = mBits + target.y() * mStride + target.x();
        for (int y = 0; y < box.height(); ++y) {
            prefetch(row + y * mStride);
            prefetch(row + y * mStride + box.width() - 1);
        }
        if (mCount == Lag) {
            blend(mWaiting[size_t(mFirst)]);
            mFirst = (mFirst + 1) % Lag;
            --mCount;
        }
        mWaiting[size_t((mFirst + mCount) % Lag)] = {row, &sprite};
        ++mCount;
        return;
    }
    // Across the image's edge, or onto another device: QPainter clips.
    Flush();
    const QImage wrapped(reinterpret_cast<const uchar*>(sprite.pixels), box.width(), box.height(),
                         box.width() * int(sizeof(quint32)), QImage::Format_ARGB32_Premultiplied);
    mPainter->drawImage(corner, wrapped);
}

TEPointSymbolCache::Symbol& TEPointSymbolCache::symbol(const Key& key)
{
    // A run keeps its DPI and anti-aliasing, so the style alone picks the
    // recent entry; the entry is checked against the whole key below only
    // when it was made for another device.
    Recent& recent = mRecent[size_t((quint64(quintptr(key.style)) * Q_UINT64_C(0x9E3779B97F4A7C15)) >> (64 - RecentBits))];
    if (recent.style == key.style && recent.symbol->dpi == key.dpi && recent.symbol->antialiased == key.antialiased)
        return *recent.symbol;
    char bytes[sizeof key.style + sizeof key.dpi + 1];
    std::memcpy(bytes, &key.style, sizeof key.style);
    std::memcpy(bytes + sizeof key.style, &key.dpi, sizeof key.dpi);
    bytes[sizeof bytes - 1] = key.antialiased ? 1 : 0;
    bool added = false;
    const size_t number = mKeys.Add(std::string_view(bytes, sizeof bytes), &added);
    if (added) {
        mSymbols.emplace_back();
        mSymbols.back().dpi = key.dpi;
        mSymbols.back().antialiased = key.antialiased;
    }
    recent = {key.style, &mSymbols[number]};
    return mSymbols[number];
}

const TEPointSymbolCache::Sprite* TEPointSymbolCache::sprite(Symbol& symbol, const Key& key, int stepX, int stepY)
{
    const size_t step = size_t((stepY << mStepShift) + stepX);
    if (!symbol.sprites) {
        if (key.style->GetStyleType() != TEStyle::PointStyle) {
            symbol.usable = false;
            return nullptr;
        }
        symbol.sprites = std::make_unique<Sprite[]>(size_t(1) << (2 * mStepShift));
        symbol.images = std::make_unique<QImage[]>(size_t(1) << (2 * mStepShift));
    }
    Sprite& sprite = symbol.sprites[step];
    if (sprite.made)
        return &sprite;
    if (mBytes > MemoryBudget) {
        symbol.usable = false;
        return nullptr;
    }
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
        const double stepSize = 1.0 / (1 << mStepShift);
        if (!key.style->DrawPoint(&painter, QPointF(centre + stepX * stepSize, centre + stepY * stepSize))) {
            symbol.usable = false;
            return nullptr;
        }
        QRect painted = paintedRect(mScratch);
        if (painted.isNull()) {
            // A marker that paints nothing (fully transparent) is copied as nothing.
            sprite.made = true;
            return &sprite;
        }
        if (painted.left() > 0 && painted.top() > 0 && painted.right() < size - 1 && painted.bottom() < size - 1) {
            // Widened to whole groups of four with transparent pixels
            // (copy() gives those outside the scratch).
            painted.setWidth((painted.width() + 3) / 4 * 4);
            QImage& image = symbol.images[step];
            image = mScratch.copy(painted);
            sprite.pixels = reinterpret_cast<const quint32*>(image.constBits());
            sprite.box = painted.translated(-centre, -centre);
            sprite.made = true;
            mBytes += image.sizeInBytes();
            return &sprite;
        }
    }
    symbol.usable = false;
    return nullptr;
}

bool TEPointSymbolCache::DrawPoint(QPainter* painter, const TEStyle* style, const QPointF& device, double angle)
{
    return Run(*this, painter).DrawPoint(style, device, angle);
}

bool TEPointSymbolCache::Draw(QPainter* painter, const TEStyle* style, OGRGeometryH geometry,
                              const QTransform& mapToDevice, double angle)
{
    return Run(*this, painter).Draw(style, geometry, mapToDevice, angle);
}

bool TEPointSymbolCache::Run::Draw(const TEStyle* style, OGRGeometryH geometry, const QTransform& mapToDevice,
                                   double angle)
{
    if (!mPainter || !style || !geometry)
        return false;
    const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
    if (type != wkbPoint && type != wkbMultiPoint) {
        Flush();
        return style->Draw(mPainter, geometry, mapToDevice, angle);
    }
    const auto drawPoint = [&](OGRGeometryH point) {
        return point && !OGR_G_IsEmpty(point)
            && DrawPoint(style, mapToDevice.map(QPointF(OGR_G_GetX(point, 0), OGR_G_GetY(point, 0))), angle);
    };
    if (type == wkbPoint)
        return drawPoint(geometry);
    bool drawn = false;
    for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i)
        drawn = drawPoint(OGR_G_GetGeometryRef(geometry, i)) || drawn;
    return drawn;
}

} // namespace TZObjects
