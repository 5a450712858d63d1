#pragma once

#include "core/TZObjectsExport.h"
#include "symbology/TEStyle.h"

#include <QImage>
#include <QPoint>
#include <QRect>

#include <array>
#include <memory>
#include <unordered_map>

class QPainter;
typedef void* OGRGeometryH;

namespace TZObjects {

// Draws point symbols by copying images of each symbol made once, instead
// of stroking the marker anew at every point: a map of a million points then
// costs a million small image copies. Each symbol is drawn by the style
// itself at each quarter-pixel position within a pixel where it is first
// needed, so a copy differs from a stroked marker by at most an eighth of a
// pixel at its anti-aliased edge. A drawing of many symbols (a long category
// list) has them made at half-pixel positions, a quarter of a pixel off at
// most: sixteen images of each of hundreds of symbols would not stay in the
// processor's cache, and reading them from memory doubles the drawing.
//
// Onto an image in premultiplied ARGB (a map canvas's), a copy blends the
// symbol's pixels straight into the image's memory, with the same
// arithmetic as QPainter's source-over; elsewhere QPainter draws the image.
//
// Images are keyed by the style object, the device's DPI and whether the
// painter anti-aliases. The styles must outlive the cache and not change
// while it lives: a host keeps one cache per drawing, over its own copy of
// the render. A symbol is copied only once it has been drawn often enough to
// repay its images (a category met once or twice is stroked), and images
// stop being made past a memory budget. Not thread-safe: one cache per
// drawing thread.
class TZOBJECTS_EXPORT TEPointSymbolCache
{
    struct Sprite;

public:
    // expectedSymbols: how many point symbols the drawing will copy (the
    // render's styles); past ManySymbols they are placed to half pixels.
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
    // Sub-pixel positions along each axis: quarters, or halves for a
    // drawing of more than ManySymbols symbols.
    static constexpr int MaxSteps = 4;
    static constexpr int ManySymbols = 64;
    // Points of a symbol stroked before its images are made: a style met
    // once or twice (one of many thousand categories) costs no image.
    static constexpr int StrokedFirst = 2;
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
        // False when the marker does not fit an image (a huge symbol) or
        // draws nothing: the style then draws every point itself.
        bool usable = true;
        int uses = 0;
        std::array<Sprite, MaxSteps * MaxSteps> sprites;
        // The images that hold the sprites' pixels, made with the first.
        std::unique_ptr<std::array<QImage, MaxSteps * MaxSteps>> images;
    };

    struct Key
    {
        const TEStyle* style;
        int dpi;
        bool antialiased;
        bool operator==(const Key& other) const
        {
            return style == other.style && dpi == other.dpi && antialiased == other.antialiased;
        }
    };
    struct KeyHash
    {
        size_t operator()(const Key& key) const;
    };

    Symbol& symbol(const Key& key);
    // The image of the marker drawn (stepX, stepY) steps into its pixel,
    // made on first use; null when the style must draw the point itself.
    const Sprite* sprite(Symbol& symbol, const Key& key, int stepX, int stepY);

    std::unordered_map<Key, Symbol, KeyHash> mSymbols;
    // Symbols met lately, by their style's address: most points find theirs
    // here without a lookup in mSymbols.
    struct Recent
    {
        Key key{nullptr, 0, false};
        Symbol* symbol = nullptr;
    };
    static constexpr int RecentBits = 10;
    std::array<Recent, size_t(1) << RecentBits> mRecent;
    // Where markers are drawn to be cut out into images, and its painter.
    QImage mScratch;
    std::unique_ptr<QPainter> mScratchPainter;
    qint64 mBytes = 0;
    qint64 mCopied = 0;
    // Steps per pixel along each axis, as a power of two.
    int mStepShift;
};

} // namespace TZObjects
