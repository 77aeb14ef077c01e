// Two halves of a drawing, recorded apart, become one list.
#include <iterator>
#include <new>

#include "kzcore/display/display_recorder.h"

namespace {

template <class T>
std::uint32_t countOf(const std::vector<T>& list) {
    // Places have 32 bits.
    if (list.size() > 0x7fffffff) throw std::bad_alloc();
    return static_cast<std::uint32_t>(list.size());
}

template <class T>
void moveBehind(std::vector<T>& list, std::vector<T>& more) {
    list.insert(list.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

void shift(std::uint32_t& number, std::uint32_t by) {
    if (number != kNoGroup) number += by;
}

}  // namespace

bool ADisplayRecorder::append(ADisplayRecorder&& other) {
    if (m_repeated + other.m_repeated > m_mostRepeated) return false;
    ADisplayList& list = *m_list;
    ADisplayList& more = *other.m_list;
    const std::uint32_t verbs = countOf(list.m_verbs), points = countOf(list.m_points);
    const std::uint32_t lines = countOf(list.m_textLines), letters = countOf(list.m_letters);
    const std::uint32_t transforms = countOf(list.m_transforms), clips = countOf(list.m_clips);
    const std::uint32_t items = countOf(list.m_items), entries = countOf(list.m_entries);
    const std::uint32_t groups = countOf(list.m_groups);
    countOf(more.m_verbs);
    countOf(more.m_points);
    const auto place = [&](ADisplayOutline& outline) {
        outline.firstVerb += outline.isText() ? lines : verbs;
        if (!outline.isText()) outline.firstPoint += points;
        outline.transform += transforms;
    };

    std::vector<std::uint32_t> paints, pens{0}, outlines, refers{0, 1};
    for (const ADisplayPaint& kept : more.m_paints) {
        APaint paint;
        paint.color = kept.color;
        paint.opacity = kept.opacity;
        if (kept.gradient != 0) paint.gradient = &more.m_gradients[kept.gradient];
        paints.push_back(paintNumber(paint));
    }
    for (std::size_t i = 1; i < more.m_pens.size(); ++i) pens.push_back(penNumber(more.m_pens[i]));
    for (const auto& letter : more.m_letterOutlines) outlines.push_back(letterNumber(letter));
    for (std::size_t i = 1; i < more.m_referItems.size(); ++i)
        refers.push_back(referItemNumber(more.m_referItems[i]));

    for (ADisplayLetter& letter : more.m_letters) letter.outline = outlines[letter.outline];
    for (ADisplayTextLine& line : more.m_textLines) line.firstLetter += letters;
    for (ADisplayClip& clip : more.m_clips) place(clip.outline);
    for (ADisplayItem& item : more.m_items) {
        place(item.outline);
        item.paint = paints[item.paint];
        item.pen = pens[item.pen];
    }
    for (ADisplayEntry& entry : more.m_entries) {
        entry.firstItem += items;
        shift(entry.group, groups);
    }
    for (ADisplayGroup& group : more.m_groups) {
        shift(group.parent, groups);
        shift(group.clip, clips);
        group.firstEntry += entries;
        group.endEntry += entries;
    }
    for (std::size_t i = 0; i < more.m_fillItems.size(); ++i) {
        if (more.m_fillItems[i] != 0) list.m_fillItems[i] = refers[more.m_fillItems[i]];
        if (more.m_strokeItems[i] != 0) list.m_strokeItems[i] = refers[more.m_strokeItems[i]];
    }

    moveBehind(list.m_verbs, more.m_verbs);
    moveBehind(list.m_points, more.m_points);
    moveBehind(list.m_letters, more.m_letters);
    moveBehind(list.m_textLines, more.m_textLines);
    moveBehind(list.m_transforms, more.m_transforms);
    moveBehind(list.m_clips, more.m_clips);
    moveBehind(list.m_items, more.m_items);
    moveBehind(list.m_entries, more.m_entries);
    moveBehind(list.m_boxes, more.m_boxes);
    moveBehind(list.m_groups, more.m_groups);
    list.m_onePicture = list.m_onePicture || more.m_onePicture;
    return true;
}
