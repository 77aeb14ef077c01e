#include "formats/svg/draw/compositing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "formats/svg/draw/clip.h"
#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/draw/filter/filters.h"
#include "formats/svg/draw/mask.h"
#include "formats/svg/tree/object_class.h"
#include "formats/svg/values/transform.h"

namespace svg {

namespace {

// Clean images that serve one group after another: a drawing may have a hundred thousand groups that show
// through, each touching a few pixels of an image as large as the canvas.
struct GroupImages : DrawCache {
    static constexpr std::size_t kMost = 8;

    AImage take(int width, int height) {
        for (std::size_t i = 0; i < images.size(); ++i) {
            if (images[i].width() != width || images[i].height() != height) continue;
            AImage image = std::move(images[i]);
            images.erase(images.begin() + static_cast<std::ptrdiff_t>(i));
            return image;
        }
        return AImage(width, height);
    }
    void giveBack(AImage image, const RECT& touched) {
        for (int y = touched.top; y < touched.bottom; ++y) {
            std::uint32_t* const row = image.row(y);
            std::fill(row + touched.left, row + touched.right, 0);
        }
        if (images.size() == kMost) images.erase(images.begin());
        images.push_back(std::move(image));
    }

    std::vector<AImage> images;
};

AImage partOf(const AImage& image, const RECT& area) {
    AImage part(area.right - area.left, area.bottom - area.top);
    for (int y = 0; y < part.height(); ++y) {
        const std::uint32_t* const row = image.row(area.top + y);
        std::copy(row + area.left, row + area.right, part.row(y));
    }
    return part;
}

bool isEqual(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Whether what blends inside must not see what lies below the element. A clip path makes a group, too, but
// one that has to be an image only for that.
bool isolates(const DrawContext& context, const DrawnElement& element) {
    if (!context.blends() || !isContainer(kindOf(element.node))) return false;
    return element.style.own.isolated || !element.style.own.clipPath.empty();
}

// An image of less is made faster than looked for.
constexpr LONG kWorthKeeping = 4096;

}  // namespace

Compositing::~Compositing() {
    // Left without an end: nothing is drawn, but the canvas is as before.
    m_on.reset();
    popClips();
}

void Compositing::popClips() {
    for (; m_clips > 0; --m_clips) m_context.popClip();
}

bool Compositing::begin(const DrawnElement& element, BoundingBox& box, const RECT* reach, double opacity) {
    m_space = element.space;
    m_opacity = opacity;
    if (!(opacity > 0)) return false;
    const Style& style = element.style;
    if (!style.own.clipPath.empty() &&
        !pushClipPath(m_context, style, element.space, box, m_clips, m_clipPaths)) {
        popClips();
        return false;
    }
    findMask(style.own.mask);
    if (m_context.recorder()) return beginRecording(element, box);
    if (!style.own.filter.empty()) {
        m_box = box.get();
        findTurn(element.space);
        const UserSpace& space = m_turn ? m_turn->space : element.space;
        m_filtered = m_filter.read(m_context, {style.own.filter, m_box, space, style});
        if (!m_filtered) m_turn.reset();
    }
    const bool needsImage = opacity < 1 || m_mask || m_filtered || !m_clipPaths.empty() ||
                            style.own.blend != EBlend::normal || isolates(m_context, element);
    if (needsImage ? beginImage(element, box, reach) : !isEmpty(m_context.clipBounds())) return true;
    popClips();
    return false;
}

void Compositing::findTurn(const UserSpace& space) {
    const AAffine& t = space.toDrawing;
    constexpr double kHair = 1e-9;
    const AAffine upright = AAffine::scaling(std::hypot(t.a, t.b), std::hypot(t.c, t.d));
    const std::optional<AAffine> flat = upright.inverse();
    if (!flat || std::fabs(t.b) + std::fabs(t.c) <= kHair * (upright.a + upright.d)) return;
    const AAffine toPixels = t * *flat;
    const std::optional<AAffine> back = toPixels.inverse();
    if (!back || !toPixels.isFinite() || !back->isFinite()) return;
    m_turn = {toPixels, *back, space};
    m_turn->space.toDrawing = upright;
}

void Compositing::findMask(std::string_view property) {
    std::string_view id;
    if (property.empty() || !takeUrl(property, id)) return;
    m_mask = m_context.tree().findResource(id);
    if (kindOf(m_mask) != Element::mask) m_mask = {};
}

// A list can cut and fade by itself; the rest is drawn at the resolution of the picture, with its own clips.
bool Compositing::beginRecording(const DrawnElement& element, BoundingBox& box) {
    ADisplayRecorder& recorder = *m_context.recorder();
    const Style& style = element.style;
    ElementFilter filter;
    const bool filtered = !style.own.filter.empty() &&
                          filter.read(m_context, {style.own.filter, box.get(), element.space, style});
    if (m_mask || filtered || !m_clipPaths.empty() || style.own.blend != EBlend::normal ||
        isolates(m_context, element)) {
        popClips();
        recorder.openPicture(filtered ? filter.reach() : ABox());
        ++m_clips;
    } else if (m_opacity < 1) {
        recorder.openGroup(m_opacity);
        ++m_clips;
    }
    return true;
}

bool Compositing::beginImage(const DrawnElement& element, BoundingBox& box, const RECT* reach) {
    RECT area = m_context.clipBounds();
    if (isEmpty(area)) return false;
    const UserSpace& space = m_turn ? m_turn->space : element.space;
    if (m_turn) {
        const AFRect seen{static_cast<double>(area.left), static_cast<double>(area.top),
                          static_cast<double>(area.right), static_cast<double>(area.bottom)};
        area = pixelsAround(rectBounds(m_turn->back, seen), 1);
    }
    if (reach && !m_filtered) area = intersection(area, *reach);
    if (m_mask) {
        AFRect region;
        if (maskNeedsBox(m_mask)) m_box = box.get();
        if (!maskRegion(m_context, m_mask, space, m_box, region)) return false;
        area = intersection(area, pixelsAround(rectBounds(space.toDrawing, region), 1));
    }
    if (!m_clipPaths.empty()) m_box = box.get();
    if (isEmpty(area)) return false;
    m_blend = element.style.own.blend;
    if (m_filtered) {
        area = m_filter.bounds(area);
        if (isEmpty(area)) return false;
    }
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    // Groups in groups without end: the innermost ones are drawn as if they were none.
    if (!m_held.take(pixels)) return true;
    m_lent = !m_filtered && width * height >= kWorthKeeping;
    m_image =
        m_lent ? m_context.cache<GroupImages>(CacheOf::groups).take(width, height) : AImage(width, height);
    m_canvas = std::make_unique<ACanvas>(pixelsOf(m_image));
    m_area = area;
    m_space.toDrawing = shift() * m_space.toDrawing;
    m_on.emplace(m_context, *m_canvas, shift());
    return true;
}

void Compositing::end() {
    if (m_on) finishImage();
    popClips();
}

void Compositing::finishImage() {
    const RECT touched = m_filtered ? RECT{0, 0, m_image.width(), m_image.height()} : m_context.touched();
    m_on.reset();
    m_canvas.reset();  // the pixels are complete
    if (!isEmpty(touched)) compose(touched);
    if (m_lent) m_context.cache<GroupImages>(CacheOf::groups).giveBack(std::move(m_image), touched);
    m_image = AImage();
    m_held.release();
}

void Compositing::compose(const RECT& touched) {
    if (m_filtered) m_filter.apply(m_context, m_image, {m_area.left, m_area.top});
    for (const pugi::xml_node clipPath : m_clipPaths) clipImage(m_context, clipPath, m_space, m_box, m_image);
    if (m_mask) maskImage(m_context, m_mask, m_space, m_box, m_image);
    const RECT outside{touched.left + m_area.left, touched.top + m_area.top, touched.right + m_area.left,
                       touched.bottom + m_area.top};
    AAffine place = AAffine::translation(outside.left, outside.top);
    if (m_turn) place = m_turn->toPixels * place;
    const AFRect size{0, 0, static_cast<double>(outside.right - outside.left),
                      static_cast<double>(outside.bottom - outside.top)};
    m_context.touch(m_turn ? pixelsAround(rectBounds(place, size), 1) : outside);
    const bool whole = isEqual(touched, {0, 0, m_image.width(), m_image.height()});
    m_context.drawImage(whole ? m_image : partOf(m_image, touched), place, m_opacity, m_turn.has_value(),
                        m_blend);
}

}  // namespace svg
