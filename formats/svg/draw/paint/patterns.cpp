// A tile is an image at the resolution of the picture. Three ways, so that edges stay as sharp as those of a
// shape that is drawn directly:
// - Upright tiles lie on whole pixels. As many are put side by side in the image as it takes until their
//   width comes to whole pixels, each on its own nearest pixels, so that no seam shows between them.
//   Tiny ones are drawn finer, and averaged.
// - Turned ones are resampled by the canvas anyway, small ones from a finer image.
// - What is larger than the picture's visible part is drawn there once, and not kept.
#include "formats/svg/draw/paint/patterns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <list>
#include <optional>

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

constexpr int kLongestChain = 32;
constexpr std::size_t kMostTileBytes = std::size_t{1} << 26;
constexpr double kMostTilePixels = 1 << 22;
// Smaller ones would change their shape on whole pixels: they are drawn finer, and averaged.
constexpr double kTinyTile = 4;
constexpr int kFiner = 8;
// Tiles smaller than this are repeated within the image until they fit the pixels.
constexpr double kSmallTile = 128;
constexpr int kMostRepeats = 16;
constexpr double kFitsPixels = 1.0 / 64;
constexpr std::size_t kMostRepeatedElements = 2000;
constexpr double kMostCells = 4096;

// A pattern with what it takes from those it refers to.
struct Pattern {
    std::string_view x, y, width, height, units, contentUnits, transform, viewBox, aspect;
    pugi::xml_node content;  // the element whose children are drawn
};

bool hasContent(pugi::xml_node node) {
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_element) return true;
    }
    return false;
}

Pattern readPattern(DrawContext& context, pugi::xml_node node) {
    Pattern pattern;
    const std::pair<std::string_view Pattern::*, const char*> attributes[] = {
        {&Pattern::x, "x"},
        {&Pattern::y, "y"},
        {&Pattern::width, "width"},
        {&Pattern::height, "height"},
        {&Pattern::units, "patternUnits"},
        {&Pattern::contentUnits, "patternContentUnits"},
        {&Pattern::transform, "patternTransform"},
        {&Pattern::viewBox, "viewBox"},
        {&Pattern::aspect, "preserveAspectRatio"},
    };
    // A chain that bites its tail ends with its length.
    for (int i = 0; i < kLongestChain && kindOf(node) == Element::pattern; ++i) {
        for (const auto& [member, name] : attributes) {
            if ((pattern.*member).empty()) pattern.*member = textOf(node, name);
        }
        if (!pattern.content && hasContent(node)) pattern.content = node;
        const std::string_view id = referenceOf(node);
        node = id.empty() ? pugi::xml_node() : context.tree().findResource(id);
    }
    return pattern;
}

bool isOfUserSpace(std::string_view units) {
    return equalsNoCase(units, "userspaceonuse");
}

// Where a pattern goes.
struct Placing {
    Affine toPixels;    // from the pattern's space
    AFRect cell;        // in the pattern's space
    UserSpace content;  // of the first cell
};

std::optional<Placing> place(const Pattern& pattern, const AFRect& box, const UserSpace& space,
                             const Style& style) {
    Affine fromUnit;
    const bool hasBox = boxUnits(box, fromUnit);
    const bool ofBox = !isOfUserSpace(pattern.units);
    if (ofBox && !hasBox) return std::nullopt;
    const LengthContext lengths{style.fontSize, ofBox ? 1 : space.width, ofBox ? 1 : space.height};
    const auto get = [&](std::string_view text, Axis axis) {
        double value = 0;
        parseLength(text, axis, lengths, value);
        return value;
    };
    AFRect cell{get(pattern.x, Axis::horizontal), get(pattern.y, Axis::vertical), 0, 0};
    cell.right = cell.left + get(pattern.width, Axis::horizontal);
    cell.bottom = cell.top + get(pattern.height, Axis::vertical);
    if (ofBox) cell = rectBounds(fromUnit, cell);
    if (cell.IsRectEmpty()) return std::nullopt;

    Placing placing{space.toDrawing * aboutOrigin(parseTransform(pattern.transform), style, space), cell,
                    space};
    UserSpace& content = placing.content;
    content.useWidth = content.useHeight = -1;
    AFRect viewBox;
    if (isEmptyViewBox(pattern.viewBox)) return std::nullopt;
    if (!pattern.viewBox.empty() && parseViewBox(pattern.viewBox, viewBox)) {
        content.toDrawing = translation(cell.left, cell.top) *
                            fitViewBox(viewBox, cell.Width(), cell.Height(), pattern.aspect);
        content.width = viewBox.Width();
        content.height = viewBox.Height();
    } else if (equalsNoCase(pattern.contentUnits, "objectboundingbox")) {
        if (!hasBox) return std::nullopt;
        // A part of the box is as large as the box says, and starts where the cell does.
        content.toDrawing = translation(cell.left, cell.top) * AAffine::scaling(box.Width(), box.Height());
        content.width = content.height = 1;
    } else {
        content.toDrawing = translation(cell.left, cell.top);
    }
    content.toDrawing = placing.toPixels * content.toDrawing;
    return placing;
}

// Moves the edges of an upright cell to the nearest pixel edges: two cells that meet in the middle of a pixel
// would leave it half transparent.
Affine onPixels(const Affine& toImage, const AFRect& cell) {
    const AFRect exact = rectBounds(toImage, cell);
    const AFRect whole{std::round(exact.left), std::round(exact.top), std::round(exact.right),
                       std::round(exact.bottom)};
    if (toImage.b != 0 || toImage.c != 0 || exact.IsRectEmpty() || whole.IsRectEmpty()) return {};
    const double x = whole.Width() / exact.Width();
    const double y = whole.Height() / exact.Height();
    return {x, 0, 0, y, whole.left - exact.left * x, whole.top - exact.top * y};
}

// Kept tiles, the last used one first.
struct TileCache : DrawCache {
    using Key = std::array<double, 16>;
    struct Entry {
        pugi::xml_node pattern;
        Key key;
        ATile tile;
        bool keeps;  // else it is right for one clip only
    };
    std::list<Entry> tiles;
    std::size_t bytes = 0;
};

std::size_t bytesOf(const TileCache::Entry& entry) {
    return entry.tile.image.pixels().size() * sizeof(std::uint32_t);
}

TileCache::Key keyOf(const Placing& placing) {
    const Affine& p = placing.toPixels;
    const Affine& c = placing.content.toDrawing;
    const AFRect& cell = placing.cell;
    return {p.a, p.b, p.c, p.d, p.e,       p.f,      c.a,        c.b,
            c.c, c.d, c.e, c.f, cell.left, cell.top, cell.right, cell.bottom};
}

struct Size {
    int width = 0, height = 0;
};

// An image in which each pixel is the average of `parts`.
AImage averaged(AImage image, const Size& parts) {
    if (parts.width == 1 && parts.height == 1) return image;
    AImage result(image.width() / parts.width, image.height() / parts.height);
    const auto count = static_cast<unsigned>(parts.width * parts.height);
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            std::array<unsigned, 4> sums{};
            for (int i = 0; i < parts.width * parts.height; ++i) {
                const std::uint32_t pixel =
                    image.at(x * parts.width + i % parts.width, y * parts.height + i / parts.width);
                for (std::size_t k = 0; k < sums.size(); ++k) sums[k] += pixel >> (8 * k) & 0xff;
            }
            for (std::size_t k = 0; k < sums.size(); ++k)
                result.at(x, y) |= (sums[k] + count / 2) / count << (8 * k);
        }
    }
    return result;
}

class TileDrawing {
public:
    TileDrawing(DrawContext& context, const Placing& placing, pugi::xml_node content)
        : m_context(context),
          m_placing(placing),
          m_content(content),
          m_style(context.styleAt(content)),
          m_width(placing.cell.Width() * std::hypot(placing.toPixels.a, placing.toPixels.b)),
          m_height(placing.cell.Height() * std::hypot(placing.toPixels.c, placing.toPixels.d)) {}

    // An empty image when nothing is painted.
    ATile draw(bool& keeps) {
        const RECT& clip = m_context.clipBounds();
        const double seen = static_cast<double>(clip.right - clip.left) * (clip.bottom - clip.top);
        keeps = m_width * m_height <= std::min(std::max(seen, kSmallTile * kSmallTile), kMostTilePixels);
        // A sliver of a tile is as long as the picture, too.
        keeps = keeps && std::max(m_width, m_height) < 1 << 14;
        if (!keeps) return drawSeen(clip);
        const Affine& p = m_placing.toPixels;
        const bool upright = p.b == 0 && p.c == 0;
        return upright ? drawUpright() : drawTurned();
    }

private:
    // Empty when patterns in patterns already take too many pixels, or too many were drawn.
    AImage makeImage(int width, int height) {
        constexpr double kSteps = 2;
        const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        if (!m_held.take(pixels) || !m_context.spendPixels(kSteps * static_cast<double>(pixels))) return {};
        return AImage(width, height);
    }

    ATile drawSeen(const RECT& clip) {
        ATile tile{makeImage(clip.right - clip.left, clip.bottom - clip.top),
                   AAffine::translation(clip.left, clip.top)};
        paintCells(tile.image, AAffine::translation(-clip.left, -clip.top));
        return tile;
    }

    // How many cells side by side come nearest to whole pixels.
    int repeatsFor(double size) const {
        if (size >= kSmallTile) return 1;
        int best = 1;
        double least = 1;
        for (int count = 1; count <= kMostRepeats; ++count) {
            const double whole = std::round(size * count);
            // An error counts less the more pixels share it.
            const double error = whole >= 1 ? std::fabs(size * count - whole) / count : 1;
            if (error < least - 1e-12) {
                least = error;
                best = count;
            }
            if (least < kFitsPixels / kMostRepeats) break;
        }
        return best;
    }

    std::size_t elementsWithin(std::size_t most) const {
        std::size_t count = 0;
        int depth = 0;
        for (pugi::xml_node node = nextNode(m_content, m_content, depth); node && count < most;
             node = nextNode(node, m_content, depth)) {
            ++count;
        }
        return count;
    }

    ATile drawUpright() {
        const Affine& p = m_placing.toPixels;
        int across = repeatsFor(m_width);
        int down = repeatsFor(m_height);
        if (static_cast<std::size_t>(across * down) * elementsWithin(kMostRepeatedElements) >
            kMostRepeatedElements) {
            across = down = 1;
        }
        const Size size{std::max(1, static_cast<int>(std::lround(m_width * across))),
                        std::max(1, static_cast<int>(std::lround(m_height * down)))};
        const AFPoint corner = p.apply({m_placing.cell.left, m_placing.cell.top});
        const AFPoint at{std::floor(corner.x), std::floor(corner.y)};
        // What is left of the error is spread over the whole image.
        const double x = m_width * across / size.width;
        const double y = m_height * down / size.height;
        const Size finer{m_width < kTinyTile ? kFiner : 1, m_height < kTinyTile ? kFiner : 1};
        AImage image = makeImage(size.width * finer.width, size.height * finer.height);
        if (image.empty()) return {};
        paintCells(image, AAffine::scaling(finer.width / x, finer.height / y) * translation(-at.x, -at.y));
        return {averaged(std::move(image), finer), AAffine{x, 0, 0, y, at.x, at.y}};
    }

    static int finerSize(double size) {
        const double factor = size >= kTinyTile && size < kSmallTile ? 2 : 1;
        return std::max(1, static_cast<int>(std::ceil(size * factor)));
    }

    ATile drawTurned() {
        const Size size{finerSize(m_width), finerSize(m_height)};
        const AFRect& cell = m_placing.cell;
        // From the image to the pattern's space.
        const AAffine toCell = translation(cell.left, cell.top) *
                               AAffine::scaling(cell.Width() / size.width, cell.Height() / size.height);
        ATile tile{makeImage(size.width, size.height), m_placing.toPixels * toCell};
        const std::optional<AAffine> back = tile.toPixels.inverse();
        if (!back) return {};
        paintCells(tile.image, *back);
        return tile;
    }

    // Paints every cell that meets the image; `toImage`: from the picture's pixels.
    void paintCells(AImage& image, const AAffine& toImage) {
        const std::optional<AAffine> back = (toImage * m_placing.toPixels).inverse();
        if (image.empty() || !back) return;
        const AFRect& cell = m_placing.cell;
        const AFRect seen = rectBounds(
            *back, {0, 0, static_cast<double>(image.width()), static_cast<double>(image.height())});
        constexpr double kSlack = 1e-6;
        double left = std::floor((seen.left - cell.left) / cell.Width() + kSlack);
        double top = std::floor((seen.top - cell.top) / cell.Height() + kSlack);
        double right = std::ceil((seen.right - cell.left) / cell.Width() - kSlack);
        double bottom = std::ceil((seen.bottom - cell.top) / cell.Height() - kSlack);
        if (m_style.own.showsOverflow) {  // into the cells next to it
            left -= 1;
            top -= 1;
            right += 1;
            bottom += 1;
        }
        if (!((right - left) * (bottom - top) <= kMostCells)) return;
        ACanvas canvas(pixelsOf(image));
        const DrawContext::OnCanvas on(m_context, canvas);
        // A tile serves many shapes, so it is painted like none of them.
        const ContextPaint* const around = m_context.contextPaint();
        m_context.setContextPaint(nullptr);
        paintCells(toImage, left, top, right, bottom);
        m_context.setContextPaint(around);
    }

    void paintCells(const AAffine& toImage, double left, double top, double right, double bottom) {
        const AFRect& cell = m_placing.cell;
        bool repeated = false;
        for (double y = top; y < bottom; ++y) {
            for (double x = left; x < right; ++x) {
                if (repeated && !m_context.spend(1)) return;
                repeated = true;
                const Affine& p = m_placing.toPixels;
                const AFPoint step = p.applyLinear({x * cell.Width(), y * cell.Height()});
                paintCell(toImage * translation(step.x, step.y));
            }
        }
    }

    void paintCell(const AAffine& wanted) {
        const AAffine toImage = onPixels(wanted * m_placing.toPixels, m_placing.cell) * wanted;
        const bool clips = !m_style.own.showsOverflow;
        if (clips) {
            m_context.pushClip(APath::rectangle(m_placing.cell), toImage * m_placing.toPixels,
                               EFillRule::nonZero);
        }
        UserSpace space = m_placing.content;
        space.toDrawing = toImage * space.toDrawing;
        m_context.paintChildren(m_content, m_style, space);
        if (clips) m_context.popClip();
    }

    DrawContext& m_context;
    const Placing& m_placing;
    pugi::xml_node m_content;
    Style m_style;
    double m_width, m_height;  // of a cell, in pixels
    DrawContext::HeldPixels m_held{m_context};
};

// Makes room, but not of the tile in front, which is about to be used.
void shrink(TileCache& cache) {
    constexpr std::size_t kMostTiles = 256;
    // What was drawn for one clip only is never asked for again.
    for (auto at = std::next(cache.tiles.begin()); at != cache.tiles.end();) {
        if (!at->keeps) cache.bytes -= bytesOf(*at);
        at = at->keeps ? std::next(at) : cache.tiles.erase(at);
    }
    while ((cache.bytes > kMostTileBytes || cache.tiles.size() > kMostTiles) && cache.tiles.size() > 1) {
        cache.bytes -= bytesOf(cache.tiles.back());
        cache.tiles.pop_back();
    }
}

}  // namespace

const ATile* patternTile(DrawContext& context, pugi::xml_node node, const AFRect& box,
                         const UserSpace& space) {
    const RECT& clip = context.clipBounds();
    if (clip.left >= clip.right || clip.top >= clip.bottom) return nullptr;
    const Pattern pattern = readPattern(context, node);
    if (!pattern.content) return nullptr;
    const Style style = context.styleAt(node);
    const std::optional<Placing> placing = place(pattern, box, space, style);
    if (!placing || !placing->toPixels.inverse() || !placing->content.toDrawing.isFinite()) return nullptr;

    auto& cache = context.cache<TileCache>(CacheOf::tiles);
    const TileCache::Key key = keyOf(*placing);
    const auto found = std::find_if(cache.tiles.begin(), cache.tiles.end(), [&](const TileCache::Entry& one) {
        return one.keeps && one.pattern == pattern.content && one.key == key;
    });
    if (found != cache.tiles.end()) {
        cache.tiles.splice(cache.tiles.begin(), cache.tiles, found);
        return &found->tile;
    }
    const DrawContext::Visit visit(context, pattern.content);
    if (!visit) return nullptr;
    TileCache::Entry entry{pattern.content, key, {}, false};
    // Patterns within it may come and go in the cache meanwhile.
    entry.tile = TileDrawing(context, *placing, pattern.content).draw(entry.keeps);
    if (entry.tile.image.empty()) return nullptr;
    cache.tiles.push_front(std::move(entry));
    cache.bytes += bytesOf(cache.tiles.front());
    shrink(cache);
    return &cache.tiles.front().tile;
}

}  // namespace svg
