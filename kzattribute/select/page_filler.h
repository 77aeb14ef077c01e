// Offers a document's layers, objects and paint to the pages, entry by entry.
//
//     PageFiller filler(pages);
//     for (…) filler.offerLayer(layer, selected);
//     for (…) filler.offerObject(object, selected);
//
// Offering goes through the pages in their order; the first that has an entry for what is offered takes it.
// A page that takes an object's fill or stroke also gets an entry of that very colour or brush: one for each
// colour, but one for each object with a fill that is no colour.
//
// As on the sheet's pages, one page alone takes fills and one strokes, and no entry has classes of objects and of
// paint.
//
// What is offered again brings nothing new but the serials of the entries that merge; it is not made, so that
// a million objects with twenty colours cost three look-ups each.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "kzcore/document/object_paint.h"
#include "select/object_walk.h"
#include "select/page_entries.h"

class PageFiller {
public:
    explicit PageFiller(const std::vector<ACheckPageBase*>& pages);
    // Serials of what was not made are consumed by the next entry, or here.
    ~PageFiller() { consumeSerials(); }
    PageFiller(const PageFiller&) = delete;
    PageFiller& operator=(const PageFiller&) = delete;

    void offerLayer(ALayer& layer, bool selected);
    void offerObject(AObject& object, bool selected) {
        const ABrush* brush = brushOf(object);
        const APen* pen = penOf(object);
        const Known& ofClass = m_classes.get(&object.getClassInfo());
        const Known& fill = m_fills.get(keyOf(brush));
        const Known& stroke = m_strokes.get(keyOf(pen));
        // One branch for the three, and seldom the wrong one.
        if ((newsOf(ofClass, ItemKind::object, selected) | newsOf(fill, ItemKind::fill, selected) |
             newsOf(stroke, ItemKind::stroke, selected)) == 0) {
            m_serials += std::uint64_t{fill.hasColor} + stroke.hasColor;
            return;
        }
        if (!isSettled(ofClass, ItemKind::object, selected)) offerClass(object, selected);
        if (isSettled(fill, ItemKind::fill, selected))
            m_serials += fill.hasColor;
        else
            offerFill(brush, selected);
        if (isSettled(stroke, ItemKind::stroke, selected))
            m_serials += stroke.hasColor;
        else
            offerStroke(pen, selected);
    }

private:
    struct Page {
        ACheckPageBase* page;
        PageEntries entries;
    };
    // What is known of a class of objects, of a brush or of a pen that was offered before.
    struct Known {
        // One more than what had become unsettled of its kind when offering it, not selected and selected, was
        // found to mark nothing any more; 0: not found.
        std::uint32_t settledAt[2] = {0, 0};
        bool hasColor = false;  // an entry stands for the colour: offering it costs a serial
    };
    // The entry for objects without a fill, or without a stroke.
    struct NoPaint {
        ACondition* entry = nullptr;
        bool isKnown = false;
    };

    // No paint is known like any other.
    const void* keyOf(const void* paint) const { return paint ? paint : this; }
    // 0 when offering it marks nothing any more.
    std::uint32_t newsOf(const Known& known, ItemKind kind, bool selected) const {
        return known.settledAt[selected ? 1 : 0] ^ (m_unsettled.count(kind, selected) + 1);
    }
    bool isSettled(const Known& known, ItemKind kind, bool selected) const {
        return newsOf(known, kind, selected) == 0;
    }
    void settle(Known& known, ItemKind kind, bool selected) {
        known.settledAt[selected ? 1 : 0] = m_unsettled.count(kind, selected) + 1;
    }

    Page* offer(ARoot* item, ItemKind kind, bool selected);
    void offerClass(AObject& object, bool selected);
    void offerFill(const ABrush* brush, bool selected);
    void offerStroke(const APen* pen, bool selected);
    void addFill(Page& page, ABrushItem& brush, bool selected, Known& known);
    void addStroke(Page& page, APenItem& pen, bool selected, Known& known);
    static void add(Page& page, ACondition* entry, bool selected);
    const AString& structureOf(const AString& className);
    AItemPath pathOf(const AString& className, const AColorItem& color);
    template <class Kind>
    void markNoPaint(NoPaint& none, bool selected);
    void consumeSerials() { ACondition::consumeSerials(std::exchange(m_serials, 0)); }

    Unsettled m_unsettled;
    std::vector<std::unique_ptr<Page>> m_pages;
    std::uint64_t m_serials = 0;        // still to be consumed
    PointerTable<std::size_t> m_first;  // by class name: one more than the first page with entries for it
    PointerTable<Known> m_classes;      // by class
    PointerTable<Known> m_fills;        // by brush
    PointerTable<Known> m_strokes;      // by pen
    PointerMap<std::optional<AString>> m_structures;            // by class name
    PointerMap<PointerMap<std::optional<AItemPath>>> m_groups;  // by the paint's class name, by its colour's
    NoPaint m_noFill;
    NoPaint m_noStroke;
};
