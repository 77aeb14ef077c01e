#include "canvas/text_outline.h"

#include <algorithm>

namespace {

AAffine atLetter(const AAffine& transform, const ATextLetter& letter) {
    return transform * AAffine::translation(letter.at.x, letter.at.y);
}

void add(AFRect& box, const AFPoint& p) {
    box.left = std::min(box.left, p.x);
    box.top = std::min(box.top, p.y);
    box.right = std::max(box.right, p.x);
    box.bottom = std::max(box.bottom, p.y);
}

// Letters keep their boxes where nothing is turned.
void addBounds(AFRect& box, const ALetterOutline& letter, const AAffine& t) {
    if (t.b == 0 && t.c == 0) {
        const AFRect& own = letter.bounds();
        add(box, t.apply({own.left, own.top}));
        add(box, t.apply({own.right, own.bottom}));
        return;
    }
    for (const AFPoint& point : letter.path().points()) add(box, t.apply(point));
}

}  // namespace

ATextOutline ATextOutline::ofPath(APath path) {
    ATextOutline text;
    if (!path.empty()) text.letters.push_back({std::make_shared<ALetterOutline>(std::move(path)), {}});
    return text;
}

void ATextOutline::appendTo(APath& path, const AAffine& transform) const {
    const AAffine scaled = transform * AAffine::scaling(scale);
    for (const ATextLetter& letter : letters) path.append(letter.outline->path(), atLetter(scaled, letter));
}

APath ATextOutline::path() const {
    APath path;
    appendTo(path, AAffine());
    return path;
}

void ATextShape::add(std::shared_ptr<const ATextOutline> text, const AAffine& placed) {
    if (text->letters.empty()) return;
    const AAffine scaled = placed * AAffine::scaling(text->scale);
    m_lines.push_back({std::move(text), scaled});
}

AFRect ATextShape::bounds(const AAffine& transform) const {
    if (m_lines.empty()) return {};
    AFRect box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const Line& line : m_lines) {
        const AAffine placed = transform * line.placed;
        for (const ATextLetter& letter : line.text->letters)
            addBounds(box, *letter.outline, atLetter(placed, letter));
    }
    return box;
}

void ATextShape::appendTo(APath& path, const AAffine& transform) const {
    for (const Line& line : m_lines) {
        const AAffine placed = transform * line.placed;
        for (const ATextLetter& letter : line.text->letters)
            path.append(letter.outline->path(), atLetter(placed, letter));
    }
}
