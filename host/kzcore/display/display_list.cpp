#include "kzcore/display/display_list.h"

#include "kzcore/document/document.h"

namespace {

template <class T>
std::size_t bytesOf(const std::vector<T>& list) {
    return list.capacity() * sizeof(T);
}

}  // namespace

const AObject& ADisplayList::object(std::uint32_t number) const {
    return *m_document.getObject(number);
}

void ADisplayList::readOutline(const ADisplayOutline& outline, APath& path) const {
    if (!outline.isText()) {
        return path.assign({m_verbs.data() + outline.firstVerb, outline.verbs},
                           {m_points.data() + outline.firstPoint, outline.points});
    }
    path.clear();
    for (std::uint32_t i = outline.firstVerb; i < outline.firstVerb + outline.verbs; ++i) {
        const ADisplayTextLine& line = m_textLines[i];
        for (std::uint32_t k = line.firstLetter; k < line.firstLetter + line.letters; ++k) {
            const ADisplayLetter& letter = m_letters[k];
            path.append(m_letterOutlines[letter.outline]->path(),
                        line.placed * AAffine::translation(letter.at.x, letter.at.y));
        }
    }
}

std::size_t ADisplayList::bytes() const {
    std::size_t bytes = bytesOf(m_letterOutlines) + bytesOf(m_letters) + bytesOf(m_textLines) +
                        bytesOf(m_items) + bytesOf(m_entries) + bytesOf(m_boxes) + bytesOf(m_groups) +
                        bytesOf(m_clips) + bytesOf(m_paints) + bytesOf(m_gradients) + bytesOf(m_pens) +
                        bytesOf(m_transforms) + m_tree.bytes() + bytesOf(m_referItems) +
                        bytesOf(m_fillItems) + bytesOf(m_strokeItems);
    for (const AGradient& gradient : m_gradients) bytes += bytesOf(gradient.stops);
    for (const AStrokeStyle& pen : m_pens) bytes += bytesOf(pen.dashes);
    return bytes;
}

std::size_t ADisplayList::outlineBytes() const {
    std::size_t bytes = bytesOf(m_verbs) + bytesOf(m_points);
    for (const auto& letter : m_letterOutlines)
        bytes += bytesOf(letter->path().verbs()) + bytesOf(letter->path().points());
    return bytes;
}
