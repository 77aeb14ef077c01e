#include "kzcore/display/display_recorder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "kzcore/document/document.h"
#include "kzcore/document/refer_item.h"

namespace {

ABox common(const ABox& a, const ABox& b) {
    if (!a.touches(b)) return {};
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

// Of all points, moved; everything when one is not finite.
AFRect boundsOf(const APath& path, const AAffine& transform) {
    AFRect box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const AFPoint& from : path.points()) {
        const AFPoint p = transform.apply(from);
        box.left = std::min(box.left, p.x);
        box.top = std::min(box.top, p.y);
        box.right = std::max(box.right, p.x);
        box.bottom = std::max(box.bottom, p.y);
    }
    return box;
}

AFRect boundsOf(const ATextShape& text, const AAffine& transform) {
    return text.bounds(transform);
}

bool isFinite(const AFRect& box) {
    return std::isfinite(box.left) && std::isfinite(box.top) && std::isfinite(box.right) &&
           std::isfinite(box.bottom);
}

// How much longer a length becomes at most.
double largestScale(const AAffine& t) {
    return std::max(std::hypot(t.a, t.b), std::hypot(t.c, t.d)) * std::sqrt(2.0);
}

// How far a pen reaches from its outline. Curved outlines join at any angle, so beyond a miter counts, too.
double reachOf(const AStrokeStyle& style, const AAffine& toDrawing) {
    const double corners = style.join == ELineJoin::miter ? std::max(style.miterLimit, 1.5) : 1.5;
    return style.width / 2 * corners * largestScale(toDrawing);
}

// Outlines of so many points are worth looking for among those that are kept.
constexpr std::size_t kLong = 24;

bool same(const AStrokeStyle& a, const AStrokeStyle& b) {
    return a.width == b.width && a.cap == b.cap && a.join == b.join && a.miterLimit == b.miterLimit &&
           a.dashes == b.dashes && a.dashOffset == b.dashOffset;
}

}  // namespace

ADisplayRecorder::ADisplayRecorder(ADocument& document) : m_list(new ADisplayList(document)) {
    ADisplayList& list = *m_list;
    list.m_gradients.emplace_back();
    list.m_pens.emplace_back();
    list.m_transforms.emplace_back();
    list.m_fillItems.resize(document.getObjectCount() + 1);
    list.m_strokeItems.resize(document.getObjectCount() + 1);
    // The first is for a brush or a pen without an item: it is never asked about, and shows.
    list.m_referItems.push_back(nullptr);
    list.m_entries.reserve(document.getObjectCount());
    list.m_boxes.reserve(document.getObjectCount());
    list.m_items.reserve(document.getObjectCount());
}

std::uint32_t ADisplayRecorder::referItemNumber(AReferItem* item) {
    if (!item) return 1;
    const auto hashOf = [](const AReferItem* one) {
        return kzutil::mixBits(reinterpret_cast<std::uintptr_t>(one) ^ kzutil::hashSeed());
    };
    m_referNumbers.makeRoom([&](const ReferSlot& slot) { return hashOf(slot.item); });
    ReferSlot& slot =
        m_referNumbers.locate(hashOf(item), [item](const ReferSlot& other) { return other.item == item; });
    if (slot.item) return slot.number;
    m_list->m_referItems.push_back(item);
    const auto number = static_cast<std::uint32_t>(m_list->m_referItems.size());
    m_referNumbers.take(slot, {item, number});
    return number;
}

void ADisplayRecorder::noteReferItems(const AObject& object) {
    const std::uint32_t number = object.getIndex();
    if (const ABrush* const brush = object.getBrush())
        m_list->m_fillItems[number] = referItemNumber(brush->getBrushItem());
    if (const APen* const pen = object.getPen()) {
        APenItem* const item = pen->getPenItem();
        // A pen with a brush has no colour that a filter could find in it.
        AReferItem* asked = item;
        if (item && item->getBrushItem()) asked = item->getBrushItem();
        m_list->m_strokeItems[number] = referItemNumber(asked);
    }
}

void ADisplayRecorder::beginObject(const AObject& object) {
    m_object = &object;
    m_entryOpen = m_objectNeedsPicture = false;
    m_objectReach = ABox();
    m_firstEntry = static_cast<std::uint32_t>(m_list->m_entries.size());
    m_firstGroup = static_cast<std::uint32_t>(m_list->m_groups.size());
    m_lastPath = nullptr;
    noteReferItems(object);
}

void ADisplayRecorder::endObject() {
    if (m_objectNeedsPicture && !m_inPicture) wrapObject();
    m_object = nullptr;
    m_part.reset();
}

void ADisplayRecorder::startEntry(std::uint32_t object) {
    ADisplayList& list = *m_list;
    list.m_entries.push_back({object, static_cast<std::uint32_t>(list.m_items.size()), m_current});
    list.m_boxes.emplace_back();
}

// A picture's group starts with an entry of its own, around all that it reaches.
void ADisplayRecorder::wrapObject() {
    ADisplayList& list = *m_list;
    const auto first = static_cast<std::ptrdiff_t>(m_firstEntry);
    ABox reach = m_objectReach;
    for (std::size_t i = m_firstEntry; i < list.m_boxes.size(); ++i) reach.add(list.m_boxes[i]);
    if (reach.isEmpty()) return;
    // An object without any paint can be seen, too: a flood stands where it would be.
    if (m_firstEntry == list.m_entries.size()) startEntry(m_object->getIndex());
    const auto picture = static_cast<std::uint32_t>(list.m_groups.size());
    for (std::size_t i = m_firstGroup; i < list.m_groups.size(); ++i) {
        ADisplayGroup& group = list.m_groups[i];
        if (group.parent == m_current) group.parent = picture;
        ++group.firstEntry;
        ++group.endEntry;
    }
    for (std::size_t i = m_firstEntry; i < list.m_entries.size(); ++i) {
        if (list.m_entries[i].group == m_current) list.m_entries[i].group = picture;
        // Where it is drawn cannot be told from its outlines.
        list.m_boxes[i].add(m_objectReach);
    }
    const std::uint32_t firstItem = m_firstEntry < list.m_entries.size()
                                        ? list.m_entries[m_firstEntry].firstItem
                                        : static_cast<std::uint32_t>(list.m_items.size());
    list.m_entries.insert(list.m_entries.begin() + first, {0, firstItem, picture});
    list.m_boxes.insert(list.m_boxes.begin() + first, common(reach, m_clip));
    ADisplayGroup group;
    group.parent = m_current;
    group.firstEntry = m_firstEntry;
    group.endEntry = static_cast<std::uint32_t>(list.m_entries.size());
    group.picture = m_object;
    list.m_groups.push_back(group);
}

void ADisplayRecorder::open(const ADisplayGroup& group, const ABox& clip) {
    ADisplayList& list = *m_list;
    m_open.push_back({m_current, m_clip, m_inPicture});
    m_current = static_cast<std::uint32_t>(list.m_groups.size());
    m_clip = common(m_clip, clip);
    m_entryOpen = false;
    list.m_groups.push_back(group);
    list.m_groups.back().parent = m_open.back().group;
    list.m_groups.back().firstEntry = static_cast<std::uint32_t>(list.m_entries.size());
}

void ADisplayRecorder::openGroup(double opacity) {
    ADisplayGroup group;
    group.opacity = opacity;
    open(group, ABox::everything());
}

void ADisplayRecorder::pushClip(const APath& path, const AAffine& toDrawing, EFillRule rule) {
    ADisplayList& list = *m_list;
    ADisplayGroup group;
    group.clip = static_cast<std::uint32_t>(list.m_clips.size());
    list.m_clips.push_back({keepOutline(path, toDrawing), rule});
    const AFRect box = boundsOf(path, toDrawing);
    m_lastPath = nullptr;
    // Cuts away everything where it has no outline.
    open(group, isFinite(box) ? ABox::around(box) : ABox());
}

void ADisplayRecorder::openPicture(const ABox& reach) {
    if (m_object) {
        m_objectNeedsPicture = true;
        m_objectReach.add(reach);
        openGroup(1);
        return;
    }
    if (!m_container) drawAsOnePicture();
    ADisplayGroup group;
    if (!m_inPicture) group.picture = m_container;
    open(group, ABox::everything());
    if (!group.picture) return;
    m_inPicture = true;
    startEntry(0);
    m_list->m_boxes.back() = common(reach, m_clip);
}

void ADisplayRecorder::close() {
    ADisplayList& list = *m_list;
    ADisplayGroup& group = list.m_groups[m_current];
    group.endEntry = static_cast<std::uint32_t>(list.m_entries.size());
    if (group.picture) {
        ABox& reach = list.m_boxes[group.firstEntry];
        for (std::size_t i = group.firstEntry + 1; i < group.endEntry; ++i) reach.add(list.m_boxes[i]);
    }
    m_current = m_open.back().group;
    m_clip = m_open.back().clip;
    m_inPicture = m_open.back().inPicture;
    m_open.pop_back();
    m_entryOpen = false;
}

std::uint32_t ADisplayRecorder::transformNumber(const AAffine& toDrawing) {
    std::vector<AAffine>& transforms = m_list->m_transforms;
    if (!(transforms.back() == toDrawing)) transforms.push_back(toDrawing);
    return static_cast<std::uint32_t>(transforms.size() - 1);
}

ADisplayOutline ADisplayRecorder::keepOutline(const APath& path, const AAffine& toDrawing) {
    // A stroke mostly follows the fill of the same outline.
    const bool isAgain = m_lastPath == &path && isOutline(m_lastOutline, path);
    if (!isAgain) m_lastOutline = path.points().size() < kLong ? appendOutline(path) : sharedOutline(path);
    m_lastPath = &path;
    m_lastOutline.transform = transformNumber(toDrawing);
    return m_lastOutline;
}

ADisplayOutline ADisplayRecorder::keepOutline(const ATextShape& text, const AAffine& toDrawing) {
    std::vector<ADisplayTextLine>& lines = m_list->m_textLines;
    // A stroke mostly follows the fill of the same text.
    if (!isText(m_lastText, text)) {
        m_lastText.firstVerb = static_cast<std::uint32_t>(lines.size());
        m_lastText.verbs = static_cast<std::uint32_t>(text.lines().size());
        for (const ATextShape::Line& line : text.lines()) {
            ADisplayTextLine kept = lettersOf(line.text);
            kept.placed = line.placed;
            lines.push_back(kept);
        }
    }
    m_lastText.transform = transformNumber(toDrawing);
    return m_lastText;
}

bool ADisplayRecorder::isText(const ADisplayOutline& outline, const ATextShape& text) const {
    const auto isSame = [this](const ADisplayTextLine& kept, const ATextShape::Line& line) {
        const auto known = m_texts.find(line.text.get());
        return known != m_texts.end() && known->second.letters.firstLetter == kept.firstLetter &&
               kept.placed == line.placed;
    };
    const auto first = m_list->m_textLines.begin() + outline.firstVerb;
    return std::equal(first, first + outline.verbs, text.lines().begin(), text.lines().end(), isSame);
}

const ADisplayTextLine& ADisplayRecorder::lettersOf(const std::shared_ptr<const ATextOutline>& text) {
    const auto known = m_texts.find(text.get());
    if (known != m_texts.end()) return known->second.letters;
    std::vector<ADisplayLetter>& letters = m_list->m_letters;
    ADisplayTextLine line;
    line.firstLetter = static_cast<std::uint32_t>(letters.size());
    line.letters = static_cast<std::uint32_t>(text->letters.size());
    for (const ATextLetter& letter : text->letters)
        letters.push_back({letterNumber(letter.outline), letter.at});
    return m_texts.emplace(text.get(), KnownText{text, line}).first->second.letters;
}

std::uint32_t ADisplayRecorder::letterNumber(const std::shared_ptr<const ALetterOutline>& letter) {
    const auto next = static_cast<std::uint32_t>(m_list->m_letterOutlines.size());
    const auto [known, isNew] = m_letters.try_emplace(letter.get(), next);
    if (isNew) m_list->m_letterOutlines.push_back(letter);
    return known->second;
}

// Bit by bit, so that what is drawn is the same.
bool ADisplayRecorder::isOutline(const ADisplayOutline& outline, const APath& path) const {
    return outline.verbs == path.verbs().size() && outline.points == path.points().size() &&
           std::memcmp(path.verbs().data(), m_list->m_verbs.data() + outline.firstVerb,
                       path.verbs().size() * sizeof path.verbs()[0]) == 0 &&
           std::memcmp(path.points().data(), m_list->m_points.data() + outline.firstPoint,
                       path.points().size() * sizeof path.points()[0]) == 0;
}

ADisplayOutline ADisplayRecorder::appendOutline(const APath& path) {
    ADisplayList& list = *m_list;
    const ADisplayOutline outline{static_cast<std::uint32_t>(list.m_verbs.size()),
                                  static_cast<std::uint32_t>(path.verbs().size()),
                                  static_cast<std::uint32_t>(list.m_points.size()),
                                  static_cast<std::uint32_t>(path.points().size()), 0};
    list.m_verbs.insert(list.m_verbs.end(), path.verbs().begin(), path.verbs().end());
    list.m_points.insert(list.m_points.end(), path.points().begin(), path.points().end());
    // Offsets have 32 bits.
    if (list.m_points.size() > 0xffffffff) throw std::bad_alloc();
    return outline;
}

ADisplayOutline ADisplayRecorder::sharedOutline(const APath& path) {
    m_outlines.makeRoom([](const OutlineSlot& slot) { return slot.hash; });
    const std::uint64_t hash = kzutil::hashValues(path.points());
    OutlineSlot& slot = m_outlines.locate(
        hash, [&](const OutlineSlot& other) { return other.hash == hash && isOutline(other.outline, path); });
    if (slot.outline.verbs == 0) m_outlines.take(slot, {hash, appendOutline(path)});
    return slot.outline;
}

std::uint32_t ADisplayRecorder::paintNumber(const APaint& paint) {
    ADisplayList& list = *m_list;
    const auto next = static_cast<std::uint32_t>(list.m_paints.size());
    if (paint.gradient) {
        list.m_paints.push_back(
            {paint.color, static_cast<std::uint32_t>(list.m_gradients.size()), paint.opacity});
        list.m_gradients.push_back(*paint.gradient);
        return next;
    }
    const double opacity = paint.color.getOpacity();
    if (opacity == 1) {
        const auto color = static_cast<std::uint32_t>(paint.color.getColorRef());
        if (const std::uint32_t known = m_opaque.find(color)) return known - 1;
        m_opaque.insert(color, next + 1);
    } else {
        const std::uint64_t key = std::bit_cast<std::uint64_t>(opacity) ^
                                  (std::uint64_t{paint.color.getColorRef()} * 0x9e3779b97f4a7c15);
        const auto [entry, isNew] = m_sheer.try_emplace(key, next);
        if (!isNew && list.m_paints[entry->second].color == paint.color) return entry->second;
    }
    list.m_paints.push_back({paint.color, 0, 1});
    return next;
}

std::uint32_t ADisplayRecorder::penNumber(const AStrokeStyle& style) {
    ADisplayList& list = *m_list;
    if (list.m_pens.size() > 1 && same(list.m_pens.back(), style))
        return static_cast<std::uint32_t>(list.m_pens.size() - 1);
    const std::uint64_t key = std::bit_cast<std::uint64_t>(style.width) ^ style.dashes.size();
    for (auto [at, end] = m_penNumbers.equal_range(key); at != end; ++at) {
        if (same(list.m_pens[at->second], style)) return at->second;
    }
    const auto number = static_cast<std::uint32_t>(list.m_pens.size());
    list.m_pens.push_back(style);
    m_penNumbers.emplace(key, number);
    return number;
}

template <class Outline>
void ADisplayRecorder::addItem(const Outline& outline, const AAffine& toDrawing, const APaint& paint,
                               std::uint32_t pen, EFillRule rule, double reach) {
    if (outline.empty()) return;
    AFRect box = boundsOf(outline, toDrawing);
    if (!isFinite(box) || !std::isfinite(reach)) return;
    box = {box.left - reach, box.top - reach, box.right + reach, box.bottom + reach};
    if (!m_entryOpen) startEntry(m_object ? m_object->getIndex() : 0);
    m_entryOpen = true;
    const EPaintPart part = m_part.value_or(pen == 0 ? EPaintPart::fill : EPaintPart::stroke);
    m_list->m_items.push_back({keepOutline(outline, toDrawing), paintNumber(paint), pen, part, rule});
    m_list->m_boxes.back().add(common(ABox::around(box), m_clip));
}

void ADisplayRecorder::fill(const APath& path, const AAffine& toDrawing, const APaint& paint,
                            EFillRule rule) {
    addItem(path, toDrawing, paint, 0, rule, 0);
}

void ADisplayRecorder::stroke(const APath& path, const AAffine& toDrawing, const APaint& paint,
                              const AStrokeStyle& style) {
    if (!(style.width > 0)) return;
    addItem(path, toDrawing, paint, penNumber(style), EFillRule::nonZero, reachOf(style, toDrawing));
}

void ADisplayRecorder::fill(const ATextShape& text, const AAffine& toDrawing, const APaint& paint,
                            EFillRule rule) {
    addItem(text, toDrawing, paint, 0, rule, 0);
}

void ADisplayRecorder::stroke(const ATextShape& text, const AAffine& toDrawing, const APaint& paint,
                              const AStrokeStyle& style) {
    if (!(style.width > 0)) return;
    addItem(text, toDrawing, paint, penNumber(style), EFillRule::nonZero, reachOf(style, toDrawing));
}

std::shared_ptr<const ADisplayList> ADisplayRecorder::finish() {
    ADisplayList& list = *m_list;
    list.m_tree = ABoxTree(list.m_boxes);
    return std::move(m_list);
}
