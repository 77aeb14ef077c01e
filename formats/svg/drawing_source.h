// What a document keeps of its drawing: the text, in which every object's element is found again.
//
// An object's source index is the byte offset of its element's name in the text; 0: it has no element (an
// effect made around an object). The objects inside a "use" point to the elements that they repeat. Boxes
// of shapes are not needed while reading and are computed here, from one start tag and those of the
// containers around it, of which the last one is remembered: so not from two threads at once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/svg/tree/user_space.h"
#include "formats/svg/xml/entities.h"
#include "kzcore/document/document.h"

namespace svg {

class DrawingSource : public AGeometrySource {
public:
    // `root`: the user space of the root's content.
    DrawingSource(std::string text, const UserSpace& root) : m_text(std::move(text)), m_root(root) {}

    AFRect computeBounds(const AObject& object) const override;
    std::unique_ptr<AObjectPainter> startPainting(ACanvas& canvas, const AAffine& toPixels) const override;
    std::unique_ptr<AObjectPainter> startRecording(ADisplayRecorder& recorder) const override;

    // UTF-8 without byte order mark, the drawing's own entities replaced.
    const std::string& text() const { return m_text; }
    // What reading changed of the file besides: the references to its own entities, and whether a UTF-8 byte
    // order mark stood in front.
    void noteChanges(std::vector<EntityUse> entityUses, bool hadMark) {
        m_entityUses = std::move(entityUses);
        m_hadMark = hadMark;
    }
    const std::vector<EntityUse>& entityUses() const { return m_entityUses; }
    bool hadMark() const { return m_hadMark; }
    // The start tag of an object's element, from "<" to ">"; empty when it has none.
    std::string_view startTag(const AObject& object) const;
    // The user space in which the object's own element stands, its own transform not included.
    UserSpace spaceAround(const AObject& object) const;

private:
    std::string m_text;
    std::vector<EntityUse> m_entityUses;
    bool m_hadMark = false;
    UserSpace m_root;
    mutable const AParent* m_lastParent = nullptr;
    mutable UserSpace m_lastSpace;
    mutable std::string m_buffer;  // a start tag being read
};

}  // namespace svg
