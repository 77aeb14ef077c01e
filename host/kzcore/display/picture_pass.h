// APicturePass: takes a format's painter through the objects of entries of a display list.
//
// It reads of the objects only what never changes, so any thread may draw while others select and hide.
#pragma once

#include <algorithm>

#include "kzcore/display/display_list.h"
#include "kzcore/document/object.h"

class APicturePass {
public:
    // `picture`: what is drawn, a container or one object; null: the whole drawing.
    APicturePass(const ADisplayList& list, AObjectPainter& painter, const AObject* picture)
        : m_list(list), m_painter(painter), m_picture(picture) {}

    // Calls paint(object) for the objects of these entries, each in its containers, and ends the painting.
    template <class Paint>
    void run(std::uint32_t first, std::uint32_t end, Paint paint) {
        AParent* const outermost = m_picture ? const_cast<AObject*>(m_picture)->asParent() : nullptr;
        if (m_picture && !outermost) {
            paint(*m_picture);
            return m_painter.finish();
        }
        if (outermost && !enter(*outermost)) return m_painter.finish();
        const AObject* last = nullptr;
        for (std::uint32_t i = first; i < end; ++i) {
            if (m_list.entry(i).object == 0) continue;
            const AObject& object = m_list.object(m_list.entry(i).object);
            // An object may have several entries, one behind the other.
            if (&object != last && enterAround(object)) paint(object);
            last = &object;
        }
        while (!m_open.empty()) leave();
        m_painter.finish();
    }

private:
    bool enter(const AParent& container) {
        if (!m_painter.enter(container)) return false;
        m_open.push_back(&container);
        return true;
    }
    void leave() {
        m_painter.leave(*m_open.back());
        m_open.pop_back();
    }

    // False when nothing inside one of its containers can be seen.
    bool enterAround(const AObject& object) {
        m_chain.clear();
        // A layer stands in a database, which is not drawn itself.
        for (const AParent* at = object.getParent(); at && at->getParent(); at = at->getParent()) {
            m_chain.push_back(at);
            if (at == m_picture) break;
        }
        std::reverse(m_chain.begin(), m_chain.end());
        std::size_t common = 0;
        while (common < m_open.size() && common < m_chain.size() && m_open[common] == m_chain[common])
            ++common;
        while (m_open.size() > common) leave();
        for (; common < m_chain.size(); ++common) {
            if (m_chain[common] == m_refused || !enter(*m_chain[common])) {
                m_refused = m_chain[common];
                return false;
            }
        }
        return true;
    }

    const ADisplayList& m_list;
    AObjectPainter& m_painter;
    const AObject* m_picture;
    std::vector<const AParent*> m_open, m_chain;
    const AParent* m_refused = nullptr;  // the container that was not entered last
};
