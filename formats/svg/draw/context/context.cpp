#include "formats/svg/draw/context/context.h"

#include <algorithm>

#include "formats/svg/draw/context/pixel_area.h"
#include "formats/svg/values/blend_mode.h"

namespace svg {

namespace {

// What references may repeat in one picture, like what "use" may repeat while a drawing is read.
constexpr std::size_t kRepeatedAtLeast = 100'000;
constexpr std::size_t kRepeatedPerElement = 100;
constexpr std::size_t kRepeatedAtMost = 2'000'000;
// Operations on whole images: some seconds' work.
constexpr double kStepsAtLeast = 2e8;
constexpr double kStepsPerPixel = 256;
// References within references.
constexpr std::size_t kDeepestReference = 48;

std::size_t repeatable(std::size_t elements) {
    return std::min(kRepeatedAtLeast + kRepeatedPerElement * elements, kRepeatedAtMost);
}

double pixelSteps(const RECT& area) {
    const double pixels =
        isEmpty(area) ? 0 : static_cast<double>(area.right - area.left) * (area.bottom - area.top);
    return kStepsAtLeast + kStepsPerPixel * pixels;
}

}  // namespace

DrawContext::DrawContext(const std::string& text, const UserSpace& root)
    : m_tree(text),
      m_styles(Vocabulary::drawing),
      m_root(root),
      m_blends(asksForBlending(text)),
      m_usesContextPaint(text.find("context-") != text.npos),
      m_hasDecorations(text.find("text-decoration") != text.npos),
      m_canvas(nullptr),
      m_clipBounds(pixelsAround({-kFarPixels, -kFarPixels, kFarPixels, kFarPixels}, 0)),
      m_pixelSteps(pixelSteps(m_clipBounds)),
      m_repeatable(repeatable(m_tree.elementCount())) {
    for (const pugi::xml_node style : m_tree.styles()) m_styles.sheet().add(styleText(style));
}

DrawContext::DrawContext(const std::string& text, const UserSpace& root, ACanvas& canvas)
    : DrawContext(text, root) {
    restart(root, canvas);
}

DrawContext::DrawContext(const std::string& text, const UserSpace& root, ADisplayRecorder& recorder)
    : DrawContext(text, root) {
    m_recorder = &recorder;
}

DrawContext::~DrawContext() = default;

void DrawContext::restart(const UserSpace& root, ACanvas& canvas) {
    m_root = root;
    m_canvas = &canvas;
    m_clipBounds = canvas.clipBounds();
    m_touched = {0, 0, 0, 0};
    m_visited.clear();
    m_contextPaint = nullptr;
    m_place = {};
    m_heldPixels = 0;
    m_pixelSteps = pixelSteps(m_clipBounds);
    m_repeatable = repeatable(m_tree.elementCount());
}

bool DrawContext::lendTo(DrawContext& inner) {
    if (m_isInner || !spend(inner.m_tree.elementCount())) return false;
    inner.m_isInner = true;
    inner.takeBack(*this);
    return true;
}

void DrawContext::takeBack(const DrawContext& inner) {
    m_repeatable = inner.m_repeatable;
    m_pixelSteps = inner.m_pixelSteps;
    m_heldPixels = inner.m_heldPixels;
}

void DrawContext::fill(const APath& path, const AAffine& toPixels, const APaint& paint, EFillRule rule) {
    m_recorder ? m_recorder->fill(path, toPixels, paint, rule) : m_canvas->fill(path, toPixels, paint, rule);
}

void DrawContext::stroke(const APath& path, const AAffine& toPixels, const APaint& paint,
                         const AStrokeStyle& style) {
    m_recorder ? m_recorder->stroke(path, toPixels, paint, style)
               : m_canvas->stroke(path, toPixels, paint, style);
}

void DrawContext::fill(const ATextShape& text, const AAffine& toPixels, const APaint& paint, EFillRule rule) {
    if (m_recorder) return m_recorder->fill(text, toPixels, paint, rule);
    m_letters.clear();
    text.appendTo(m_letters, AAffine());
    m_canvas->fill(m_letters, toPixels, paint, rule);
}

void DrawContext::stroke(const ATextShape& text, const AAffine& toPixels, const APaint& paint,
                         const AStrokeStyle& style) {
    if (m_recorder) return m_recorder->stroke(text, toPixels, paint, style);
    m_letters.clear();
    text.appendTo(m_letters, AAffine());
    m_canvas->stroke(m_letters, toPixels, paint, style);
}

void DrawContext::drawImage(const AImage& image, const AAffine& toPixels, double opacity, bool smooth,
                            EBlend blend) {
    if (m_canvas) m_canvas->drawImage(image, toPixels, opacity, smooth, blend);
}

void DrawContext::pushClip(const APath& path, const AAffine& toPixels, EFillRule rule) {
    if (m_recorder) return m_recorder->pushClip(path, toPixels, rule);
    m_canvas->pushClip(path, toPixels, rule);
    m_clipBounds = m_canvas->clipBounds();
}

void DrawContext::popClip() {
    if (m_recorder) return m_recorder->close();
    m_canvas->popClip();
    m_clipBounds = m_canvas->clipBounds();
}

void DrawContext::touch(const RECT& area) {
    const RECT seen = intersection(area, m_clipBounds);
    if (isEmpty(seen)) return;
    m_touched = isEmpty(m_touched)
                    ? seen
                    : RECT{std::min(seen.left, m_touched.left), std::min(seen.top, m_touched.top),
                           std::max(seen.right, m_touched.right), std::max(seen.bottom, m_touched.bottom)};
}

DrawContext::OnCanvas::OnCanvas(DrawContext& context, ACanvas& canvas, const AAffine& place)
    : m_context(context),
      m_before(context.m_canvas),
      m_recorderBefore(context.m_recorder),
      m_boundsBefore(context.m_clipBounds),
      m_touchedBefore(context.m_touched),
      m_placeBefore(context.m_place) {
    context.m_place = place * context.m_place;
    context.m_touched = {0, 0, 0, 0};
    context.m_canvas = &canvas;
    context.m_recorder = nullptr;
    context.m_clipBounds = canvas.clipBounds();
}

DrawContext::OnCanvas::~OnCanvas() {
    m_context.m_canvas = m_before;
    m_context.m_recorder = m_recorderBefore;
    m_context.m_clipBounds = m_boundsBefore;
    m_context.m_touched = m_touchedBefore;
    m_context.m_place = m_placeBefore;
}

bool DrawContext::enterReference(pugi::xml_node node) {
    if (!node || m_visited.size() >= kDeepestReference || !spend(1)) return false;
    if (std::find(m_visited.begin(), m_visited.end(), node) != m_visited.end()) return false;
    m_visited.push_back(node);
    return true;
}

bool DrawContext::spend(std::size_t elements) {
    const bool enough = m_repeatable >= elements;
    m_repeatable = enough ? m_repeatable - elements : 0;
    return enough;
}

std::size_t DrawContext::mostRepeated() const {
    return repeatable(m_tree.elementCount());
}

bool DrawContext::HeldPixels::take(std::size_t pixels) {
    // A dozen screens of the largest kind in one another, sixty of the usual size.
    constexpr std::size_t kMostHeld = std::size_t{1} << 27;
    if (pixels > kMostHeld - m_context.m_heldPixels) return false;
    m_pixels += pixels;
    m_context.m_heldPixels += pixels;
    return true;
}

bool DrawContext::spendPixels(double pixels) {
    const bool enough = m_pixelSteps >= pixels;
    m_pixelSteps = enough ? m_pixelSteps - pixels : 0;
    return enough;
}

Style DrawContext::styleAt(pugi::xml_node element) {
    std::vector<pugi::xml_node> chain;
    for (pugi::xml_node at = element; at.type() == pugi::node_element; at = at.parent()) chain.push_back(at);
    Style style;
    Style room;
    AttributeSet attributes;
    for (std::size_t i = chain.size(); i-- > 0;) {
        attributes.read(chain[i]);
        const Style& own = styleOf(chain[i], attributes, style, m_root, room);
        if (&own != &style) style = own;
    }
    style.displayed = true;
    return style;
}

bool boxUnits(const AFRect& box, AAffine& fromUnits) {
    fromUnits = {box.Width(), 0, 0, box.Height(), box.left, box.top};
    return box.Width() > 0 && box.Height() > 0;
}

}  // namespace svg
