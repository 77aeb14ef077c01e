#include "kzcore/display/display_drawing.h"

#include <algorithm>
#include <cmath>

#include "kzcore/display/picture_pass.h"
#include "kzcore/document/object.h"
#include "kzutil/rect_math.h"

namespace {

// Groups in groups without end: the innermost ones are drawn as if they were none.
constexpr std::size_t kMostImagePixels = std::size_t{1} << 25;
// In pixels.
constexpr double kSpeck = 0.25;
constexpr double kLeastSpeck = 0.125;

AFRect placed(const ABox& box, const AAffine& t) {
    const AFRect r = box.rect();
    const AFPoint corners[] = {t.apply({r.left, r.top}), t.apply({r.right, r.top}),
                               t.apply({r.left, r.bottom}), t.apply({r.right, r.bottom})};
    AFRect result{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const AFPoint& p : corners) {
        result.left = std::min(result.left, p.x);
        result.top = std::min(result.top, p.y);
        result.right = std::max(result.right, p.x);
        result.bottom = std::max(result.bottom, p.y);
    }
    return result;
}

}  // namespace

ABox boxOfPixels(const RECT& area, const AAffine& toPixels) {
    const std::optional<AAffine> inverse = toPixels.inverse();
    if (!inverse) return {};
    // Antialiasing reaches a pixel farther, and so does what cairo rounds.
    const ABox pixels =
        ABox::around({static_cast<double>(area.left) - 2, static_cast<double>(area.top) - 2,
                      static_cast<double>(area.right) + 2, static_cast<double>(area.bottom) + 2});
    return ABox::around(placed(pixels, *inverse));
}

bool ADisplayDrawing::draw(ACanvas& canvas, const std::function<bool()>& stops) {
    const RECT area = canvas.clipBounds();
    if (isEmpty(area)) return true;
    m_canvas = &canvas;
    m_list.tree().find(boxOfPixels(area, m_toPixels), m_found);
    if (m_list.isOnePicture()) {
        drawPicture(nullptr, 0, static_cast<std::uint32_t>(m_list.entryCount()));
        return true;
    }
    constexpr std::size_t kAskEvery = 64;
    for (m_next = 0; m_next < m_found.size();) {
        if (stops && m_next % kAskEvery == 0 && stops()) {
            m_open.clear();
            return false;
        }
        const std::uint32_t entry = m_found[m_next];
        std::uint32_t skipTo = 0;
        if (!enterGroups(entry, skipTo)) {
            while (m_next < m_found.size() && m_found[m_next] < skipTo) ++m_next;
            continue;
        }
        drawEntry(entry);
        ++m_next;
    }
    while (!m_open.empty()) close();
    return true;
}

// Closes the groups that the entry is not in, and opens those that it is in. False when one of them draws all its
// entries by itself, or shows nothing.
bool ADisplayDrawing::enterGroups(std::uint32_t entry, std::uint32_t& skipTo) {
    while (!m_open.empty() && entry >= m_list.group(m_open.back().group).endEntry) close();
    const std::uint32_t around = m_open.empty() ? kNoGroup : m_open.back().group;
    std::vector<std::uint32_t> inside;
    for (std::uint32_t at = m_list.entry(entry).group; at != around && at != kNoGroup;
         at = m_list.group(at).parent)
        inside.push_back(at);
    for (std::size_t i = inside.size(); i-- > 0;) {
        const ADisplayGroup& group = m_list.group(inside[i]);
        skipTo = group.endEntry;
        if (group.picture) {
            drawPicture(group.picture, group.firstEntry, group.endEntry);
            return false;
        }
        if (!open(inside[i])) return false;
    }
    return true;
}

// What the entries that are found of it can touch of the canvas.
RECT ADisplayDrawing::areaOf(std::uint32_t group) const {
    constexpr std::size_t kMostAsked = 64;
    const RECT whole = m_canvas->clipBounds();
    ABox box;
    for (std::size_t i = m_next; i < m_found.size() && m_found[i] < m_list.group(group).endEntry; ++i) {
        if (i - m_next == kMostAsked) return whole;
        box.add(m_list.box(m_found[i]));
    }
    const AFRect pixels = placed(box, m_toPixels);
    const auto within = [](double value, LONG low, LONG high) {
        return static_cast<LONG>(std::clamp<double>(value, low, high));
    };
    return {within(std::floor(pixels.left) - 2, whole.left, whole.right),
            within(std::floor(pixels.top) - 2, whole.top, whole.bottom),
            within(std::ceil(pixels.right) + 2, whole.left, whole.right),
            within(std::ceil(pixels.bottom) + 2, whole.top, whole.bottom)};
}

bool ADisplayDrawing::open(std::uint32_t number) {
    const ADisplayGroup& group = m_list.group(number);
    Open& open = m_open.emplace_back();
    open.group = number;
    open.toPixels = m_toPixels;
    open.below = m_canvas;
    if (group.clip != kNoGroup) {
        pushClip(group.clip);
        open.clips = true;
        if (isEmpty(m_canvas->clipBounds())) {
            close();
            return false;
        }
    }
    if (group.opacity < 1) openImage(open);
    return true;
}

void ADisplayDrawing::openImage(Open& open) {
    const RECT area = areaOf(open.group);
    if (isEmpty(area)) return;
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (pixels > kMostImagePixels - std::min(m_pixels, kMostImagePixels)) return;
    open.area = area;
    open.image = AImage(width, height);
    open.canvas = std::make_unique<ACanvas>(pixelsOf(open.image));
    m_pixels += pixels;
    m_toPixels = AAffine::translation(-area.left, -area.top) * m_toPixels;
    m_canvas = open.canvas.get();
}

void ADisplayDrawing::close() {
    Open open = std::move(m_open.back());
    m_open.pop_back();
    if (open.canvas) {
        open.canvas.reset();
        m_toPixels = open.toPixels;
        m_pixels -= open.image.pixels().size();
        m_canvas = open.below;
        m_canvas->drawImage(open.image, AAffine::translation(open.area.left, open.area.top),
                            m_list.group(open.group).opacity, false);
    }
    if (open.clips) m_canvas->popClip();
}

void ADisplayDrawing::pushClip(std::uint32_t number) {
    const ADisplayClip& clip = m_list.clip(number);
    m_list.readOutline(clip.outline, m_path);
    m_canvas->pushClip(m_path, m_toPixels * m_list.transform(clip.outline.transform), clip.rule);
}

void ADisplayDrawing::drawEntry(std::uint32_t entry) {
    const std::uint32_t object = m_list.entry(entry).object;
    const APaintVisibility visible = m_shown.of(object);
    if (!visible.fill && !visible.stroke) return;
    if (drawSpeck(entry, visible)) return;
    const std::uint32_t end = m_list.endOfItems(entry);
    for (std::uint32_t i = m_list.entry(entry).firstItem; i < end; ++i) {
        const ADisplayItem& item = m_list.item(i);
        if (item.part == EPaintPart::fill ? visible.fill : visible.stroke)
            drawItem(item, &m_list.paint(item.paint));
    }
}

// An object too small to be seen in its shape: its box, in the first of its colours.
bool ADisplayDrawing::drawSpeck(std::uint32_t entry, APaintVisibility visible) {
    AFRect box = placed(m_list.box(entry), m_toPixels);
    if (!(box.Width() < kSpeck && box.Height() < kSpeck)) return false;
    const std::uint32_t end = m_list.endOfItems(entry);
    for (std::uint32_t i = m_list.entry(entry).firstItem; i < end; ++i) {
        const ADisplayItem& item = m_list.item(i);
        const ADisplayPaint& paint = m_list.paint(item.paint);
        if (!(item.part == EPaintPart::fill ? visible.fill : visible.stroke) || paint.gradient != 0) continue;
        box.right = std::max(box.right, box.left + kLeastSpeck);
        box.bottom = std::max(box.bottom, box.top + kLeastSpeck);
        m_canvas->fill(APath::rectangle(box), AAffine(), {paint.color}, EFillRule::nonZero);
        return true;
    }
    return false;
}

void ADisplayDrawing::drawItem(const ADisplayItem& item, const ADisplayPaint* kept) {
    APaint paint;
    if (kept) {
        paint.color = kept->color;
        paint.opacity = kept->opacity;
        if (kept->gradient != 0) {
            m_gradient = m_list.gradient(kept->gradient);
            m_gradient.toPixels = m_toPixels * m_gradient.toPixels;
            paint.gradient = &m_gradient;
        }
    }
    m_list.readOutline(item.outline, m_path);
    const AAffine toPixels = m_toPixels * m_list.transform(item.outline.transform);
    if (item.pen != 0) {
        m_canvas->stroke(m_path, toPixels, paint, m_list.pen(item.pen));
    } else {
        m_canvas->fill(m_path, toPixels, paint, item.rule);
    }
}

void ADisplayDrawing::drawPicture(const AObject* picture, std::uint32_t first, std::uint32_t end) {
    if (!m_list.pictures()) return;
    if (picture && !m_shown.shows(picture->getIndex())) return;
    const std::unique_ptr<AObjectPainter> painter = m_list.pictures()->start(*m_canvas, m_toPixels, picture);
    APicturePass(m_list, *painter, picture).run(first, end, [&](const AObject& object) {
        const APaintVisibility visible = m_shown.of(object.getIndex());
        if (visible.fill || visible.stroke) painter->paint(object, visible);
    });
}

void ADisplayDrawing::drawAlone(ACanvas& canvas, const std::vector<std::uint32_t>& entries) {
    m_canvas = &canvas;
    for (const std::uint32_t entry : entries) {
        const AObject* picture = nullptr;
        std::vector<std::uint32_t> clips;
        for (std::uint32_t at = m_list.entry(entry).group; at != kNoGroup; at = m_list.group(at).parent) {
            const ADisplayGroup& group = m_list.group(at);
            if (group.clip != kNoGroup) clips.push_back(group.clip);
            if (!group.picture) continue;
            picture = group.picture;
            clips.clear();  // its own
        }
        const bool isPicture = picture || m_list.isOnePicture();
        if (m_list.isOnePicture()) {
            picture = nullptr;
            clips.clear();
        }
        for (std::size_t i = clips.size(); i-- > 0;) pushClip(clips[i]);
        if (isPicture) {
            drawPicture(picture, entry, entry + 1);
        } else {
            const APaintVisibility visible = m_shown.of(m_list.entry(entry).object);
            const std::uint32_t end = m_list.endOfItems(entry);
            for (std::uint32_t i = m_list.entry(entry).firstItem; i < end; ++i) {
                const ADisplayItem& item = m_list.item(i);
                const ADisplayPaint& paint = m_list.paint(item.paint);
                // A faint color counts as any other; a gradient may leave parts out.
                if (item.part == EPaintPart::fill ? visible.fill : visible.stroke)
                    drawItem(item, paint.gradient != 0 ? &paint : nullptr);
            }
        }
        for (std::size_t i = clips.size(); i > 0; --i) canvas.popClip();
        if (isPicture) return;  // the whole object
    }
}
