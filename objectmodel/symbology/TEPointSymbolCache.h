#pragma once

#include "core/TEKeyIndex.h"
#include "core/TZObjectsExport.h"
#include "symbology/TEStyle.h"

#include <QImage>
#include <QPoint>
#include <QRect>

#include <array>
#include <deque>
#include <memory>

class QPainter;
typedef void* OGRGeometryH;

namespace TZObjects {

// Draws point symbols by copying images of each symbol made once, instead
// of stroking the marker anew at every point: a map of a million points then
// costs a million small image copies. Each symbol is drawn by the style
// itself at each quarter-pixel position within a pixel where it is first
// needed, so a copy differs from a stroked marker by at most an eighth of a
// pixel at its anti-aliased edge.
//
// The more symbols a drawing has, the coarser the positions: half pixels
// past ManySymbols (a long category list), whole pixels past
// VeryManySymbols (a category per place name). Sixteen images of each of
// hundreds of symbols would not stay in the processor's cache, and waiting
// for them doubles the drawing; and a symbol met a few times in a million
// points should cost one image, not four or sixteen.
//
// Onto an image in premultiplied ARGB (a map canvas's), a copy blends the
// symbol's pixels straight into the image's memory, with the same
// arithmetic as QPainter's source-over; elsewhere QPainter draws the image.
//
// Images are keyed by the style object, the device's DPI and whether the
// painter anti-aliases. The styles must outlive the cache and not change
// while it lives: a host keeps one cache per drawing, over its own copy of
// the render. Images stop being made past a memory budget; the styles then
// stroke their markers. Not thread-safe: one cache per drawing thread.
class TZOBJECTS_EXPORT TEPointSymbolCache
{
    struct Sprite;

public:
    // expectedSymbols: how many point symbols the drawing will copy (the
    // render's styles), which sets how finely copies are placed.
    explicit TEPointSymbolCache(int expectedSymbols = 1);
    ~TEPointSymbolCache();
    TEPointSymbolCache(const TEPointSymbolCache&) = delete;
    TEPointSymbolCache& operator=(const TEPointSymbolCache&) = delete;

    // Draws many markers onto one painter, which is looked at once: its
    // transform, clip, composition mode and opacity must not change while
    // the run lives.
    //
    // Copies blended into an image lag a few points behind the calls, so
    // that the memory they touch is fetched meanwhile; they are all done
    // before anything else is drawn, by Flush() and at the latest when the
    // run ends.
    class TZOBJECTS_EXPORT Run
    {
    public:
        Run(TEPointSymbolCache& cache, QPainter* painter);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

        // Draws style's marker at a device point (TEStyle::DrawPoint),
        // copied from its images where it can be.
        bool DrawPoint(const TEStyle* style, const QPointF& device, double angle = 0.0);
        // Draws geometry as TEPointSymbolCache::Draw does.
        bool Draw(const TEStyle* style, OGRGeometryH geometry, const QTransform& mapToDevice, double angle = 0.0);
        // Does the copies still waiting.
        void Flush();

    private:
        struct Blend
        {
            quint32* target;
            const Sprite* sprite;
        };
        static constexpr int Lag = 8;

        // Copies sprite to its pixel's top-left corner (in painter
        // coordinates).
        void copy(const Sprite& sprite, const QPoint& pixel);
        void blend(const Blend& blend) const;

        TEPointSymbolCache& mCache;
        QPainter* mPainter;
        // Whether copies match stroked markers on this painter at all.
        bool mCopies = false;
        int mDpi = 96;
        bool mAntialiased = false;
        // The image's pixels where copies are blended in directly (null:
        // QPainter draws them), its row length in pixels, the pixels a
        // copy may cover, and the painter's translation.
        quint32* mBits = nullptr;
        qsizetype mStride = 0;
        QRect mBounds;
        QPoint mShift;
        // The copies waiting, oldest at mFirst.
        std::array<Blend, Lag> mWaiting{};
        int mFirst = 0;
        int mCount = 0;
    };

    // Draws geometry with style as TEStyle::Draw does. Points and the parts
    // of multi-points drawn with a point style are copied from the symbol's
    // images; a marker turned by angle, other geometries and styles, and a
    // painter the copy would not match (turned or scaled, another
    // composition mode, a high-DPI device) are drawn by the style.
    bool Draw(QPainter* painter, const TEStyle* style, OGRGeometryH geometry, const QTransform& mapToDevice,
              double angle = 0.0);
    // Draws one marker at a device point; Run draws many faster.
    bool DrawPoint(QPainter* painter, const TEStyle* style, const QPointF& device, double angle = 0.0);

    // Markers copied from an image so far (the others were stroked).
    qint64 GetCopiedCount() const { return mCopied; }

private:
    // Sub-pixel positions along each axis: quarters, halves past
    // ManySymbols symbols, whole pixels past VeryManySymbols.
    static constexpr int ManySymbols = 64;
    static constexpr int VeryManySymbols = 4096;
    // The most image memory a cache makes, in bytes.
    static constexpr qint64 MemoryBudget = 64 * 1024 * 1024;

    // One image of a marker, at one quarter-pixel position: its pixels in
    // premultiplied ARGB, row after row, and where it lies from the marker's
    // pixel. The width is a multiple of four (transparent on the right) so
    // that a copy blends four pixels at a time.
    struct Sprite
    {
        const quint32* pixels = nullptr;
        QRect box;
        bool made = false;
    };

    struct Symbol
    {
        // False when the marker does not fit an image (a huge symbol), draws
        // nothing or came past the budget: the style then draws every point
        // itself.
        bool usable = true;
        // The device the images are made for.
        bool antialiased = false;
        int dpi = 0;
        // The sprite for each step within a pixel, and the image holding
        // its pixels; made with the first.
        std::unique_ptr<Sprite[]> sprites;
        std::unique_ptr<QImage[]> images;
    };

    struct Key
    {
        const TEStyle* style;
        int dpi;
        bool antialiased;
    };

    Symbol& symbol(const Key& key);
    // The image of the marker drawn (stepX, stepY) steps into its pixel,
    // made on first use; null when the style must draw the point itself.
    const Sprite* sprite(Symbol& symbol, const Key& key, int stepX, int stepY);

    // The symbols, numbered by the bytes of their keys: a drawing of a
    // hundred thousand categories looks one up at every point.
    TEKeyIndex mKeys;
    std::deque<Symbol> mSymbols;
    // Symbols met lately, by their style's address: with a few hundred
    // styles, nearly every point finds its symbol here.
    struct Recent
    {
        const TEStyle* style = nullptr;
        Symbol* symbol = nullptr;
    };
    static constexpr int RecentBits = 10;
    std::array<Recent, size_t(1) << RecentBits> mRecent{};
    // Where markers are drawn to be cut out into images, and its painter.
    QImage mScratch;
    std::unique_ptr<QPainter> mScratchPainter;
    qint64 mBytes = 0;
    qint64 mCopied = 0;
    // Steps per pixel along each axis, as a power of two.
    int mStepShift;
};

} // namespace TZObjects
