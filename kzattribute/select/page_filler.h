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
// What is offered again brings nothing new but the serials of the entries that merge; it is not made, so that
// a million objects with twenty colours cost a few look-ups each.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "kzcore/document/object.h"
#include "select/page_entries.h"

class PageFiller {
public:
    explicit PageFiller(const std::vector<ACheckPageBase*>& pages);

    void offerLayer(ALayer& layer, bool selected);
    void offerObject(AObject& object, bool selected);

private:
    struct Page {
        ACheckPageBase* page;
        PageEntries entries;
    };
    // What is known of a class of objects, of a fill or of a stroke that was offered before.
    struct Known {
        // The page that takes it, and marks nothing by it any more, also when it is selected if
        // `isSettled[1]`: as long as no more entries have its class and it is of this kind.
        Page* page = nullptr;
        const PageEntries::Places* entries = nullptr;
        std::size_t entryCount = 0;
        ItemKind kind = ItemKind::none;
        bool isSettled[2] = {false, false};
        bool hasColor = false;  // an entry stands for the colour
    };
    // The entry for objects without a fill, or without a stroke.
    struct NoPaint {
        ACondition* entry = nullptr;
        bool isKnown = false;
    };

    Page* offer(ARoot* item, ItemKind kind, bool selected, Known& known);
    bool isSettled(const Known& known, ItemKind kind, bool selected) const;
    void settle(Known& known, Page& page, const PageEntries::Places& entries, ItemKind kind, bool selected);
    void offerFill(const AObject& object, bool selected);
    void offerStroke(const AObject& object, bool selected);
    void addFill(Page& page, ABrushItem& brush, bool selected, Known& known);
    void addStroke(Page& page, APenItem& pen, bool selected, Known& known);
    static void add(Page& page, ACondition* entry, bool selected);
    const AString& structureOf(const AString& className);
    AItemPath pathOf(const AString& className, const AColorItem& color);
    template <class Kind>
    void markNoPaint(NoPaint& none, bool selected);

    std::vector<std::unique_ptr<Page>> m_pages;
    PointerTable<std::size_t> m_first;  // by class name: one more than the first page with entries for it
    PointerMap<Known> m_objects;        // by class name
    PointerMap<Known> m_fills;          // by brush item
    PointerMap<Known> m_strokes;        // by pen item
    PointerMap<std::optional<AString>> m_structures;            // by class name
    PointerMap<PointerMap<std::optional<AItemPath>>> m_groups;  // by the paint's class name, by its colour's
    NoPaint m_noFill;
    NoPaint m_noStroke;
};
