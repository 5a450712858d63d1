#pragma once

#include "core/TZObjectsExport.h"
#include "symbology/TEStyle.h"

#include <QImage>
#include <QPoint>

#include <array>
#include <memory>
#include <unordered_map>

class QPaintDevice;
class QPainter;
typedef void* OGRGeometryH;

namespace TZObjects {

// Draws point symbols by copying an image of each symbol made once, instead
// of stroking the marker anew at every point: a map of a million points then
// costs a million small image copies. Each symbol is drawn by the style
// itself into its image, at every quarter-pixel position within a pixel, so
// a copy differs from a stroked marker by at most an eighth of a pixel at
// its anti-aliased edge.
//
// Images are keyed by the style object, the device's DPI and whether the
// painter anti-aliases. The styles must outlive the cache and not change
// while it lives: a host keeps one cache per drawing, over its own copy of
// the render. A symbol is copied only once it has been drawn often enough to
// repay its images (a rare category is stroked), and images stop being made
// past a memory budget. Not thread-safe: one cache per drawing thread.
class TZOBJECTS_EXPORT TEPointSymbolCache
{
public:
    TEPointSymbolCache() = default;
    ~TEPointSymbolCache();
    TEPointSymbolCache(const TEPointSymbolCache&) = delete;
    TEPointSymbolCache& operator=(const TEPointSymbolCache&) = delete;

    // Draws geometry with style as TEStyle::Draw does. Points and the parts
    // of multi-points drawn with a point style are copied from the symbol's
    // image; a marker turned by angle, other geometries and styles, and a
    // painter the copy would not match (turned or scaled, another
    // composition mode, a high-DPI device) are drawn by the style.
    bool Draw(QPainter* painter, const TEStyle* style, OGRGeometryH geometry, const QTransform& mapToDevice,
              double angle = 0.0);
    // Draws style's marker at a device point (TEStyle::DrawPoint), copied
    // from its image where it can be.
    bool DrawPoint(QPainter* painter, const TEStyle* style, const QPointF& device, double angle = 0.0);

    // Markers copied from an image so far (the others were stroked).
    qint64 GetCopiedCount() const { return mCopied; }

private:
    // Quarter-pixel positions along each axis.
    static constexpr int Steps = 4;
    // Points of a symbol stroked before its images are made.
    static constexpr int StrokedFirst = 32;
    // The most image memory a cache makes, in bytes.
    static constexpr qint64 MemoryBudget = 64 * 1024 * 1024;

    struct Sprite
    {
        QImage image;
        // From the marker's pixel to the image's top-left pixel.
        QPoint offset;
        bool made = false;
    };

    struct Symbol
    {
        // False when the marker does not fit an image (a huge symbol) or
        // draws nothing: the style then draws every point itself.
        bool usable = true;
        int uses = 0;
        // Made with the first image, so that the many rare symbols of a
        // large category list cost no more than their count.
        std::unique_ptr<std::array<Sprite, Steps * Steps>> sprites;
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
    // The image of the marker drawn at (stepX, stepY) quarters of a pixel,
    // made on first use; null when the style draws the point itself.
    const Sprite* sprite(Symbol& symbol, const Key& key, int stepX, int stepY);
    // Whether a copy onto the painter's device matches a stroked marker.
    bool canCopyOnto(const QPainter* painter);

    std::unordered_map<Key, Symbol, KeyHash> mSymbols;
    // Symbols met lately, by their style's address: most points find theirs
    // here without a lookup in mSymbols.
    struct Recent
    {
        Key key{nullptr, 0, false};
        Symbol* symbol = nullptr;
    };
    static constexpr size_t RecentCount = 256;
    std::array<Recent, RecentCount> mRecent;
    // Where markers are drawn to be cut out into images, and its painter.
    QImage mScratch;
    std::unique_ptr<QPainter> mScratchPainter;
    qint64 mBytes = 0;
    const QPaintDevice* mDevice = nullptr;
    bool mDeviceTakesCopies = false;
    int mDeviceDpi = 96;
    qint64 mCopied = 0;
};

} // namespace TZObjects
