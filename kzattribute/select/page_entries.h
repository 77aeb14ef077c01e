// Takes the layers, objects and paint of a document into the entries of a page, while it is filled.
//
//     PageEntries entries(page);
//     if (entries.take(item, kindOf(item), selected)) …  // some entry is about the item
//
// The rule: every entry that has the item's class is marked as used by the document, and by the selection
// when the item is selected; a fill entry only when it matches the item. An entry of another kind than the
// item calls for becomes one of that kind, in its place. An AObjectCondition that stays is marked only when
// it matches the object.
//
// Asking every entry for every item would take objects times entries. Most entries answer alike for all items
// of a class and are left alone once they are marked; entries for one fill are found by that fill.
#pragma once

#include <map>
#include <memory>
#include <unordered_map>

#include "checkpage/check_page_base.h"
#include "kzcore/document/refer_item.h"
#include "select/item_kind.h"
#include "select/pointer_table.h"

class PageEntries {
public:
    using Places = std::vector<int>;  // in the page's list

    explicit PageEntries(ACheckPageBase& page) : m_page(page) {}

    // True when some entry accepted the item. Null is accepted by none. The item, and its class's name, have
    // to stay where they are while the page is filled.
    bool take(ARoot* item, ItemKind kind, bool selected);
    // The entries that have the item's class, when taking the item would mark nothing that is not marked
    // already, nor change any entry; it is then known to be accepted. Null when that is not known. It stays
    // so until the page's revision changes or there are more such entries.
    const Places* findSettled(ARoot* item, ItemKind kind, bool selected);

    // Takes note of entries that the page got since.
    void catchUp();
    // Whether any entry has the item's class.
    bool hasClassOf(ARoot& item) { return entriesOf(item) != nullptr; }

private:
    // What has been asked on behalf of items that are not selected, and of selected ones: how many of a list.
    // Once an entry is marked as selected it is marked as used, too.
    struct Asked {
        std::size_t counts[2] = {0, 0};
        std::size_t& of(bool selected) { return counts[selected ? 1 : 0]; }
        void done(bool selected, std::size_t count) {
            counts[0] = std::max(counts[0], count);
            if (selected) counts[1] = count;
        }
    };
    struct FillState {
        Places* entries = nullptr;  // that may be about the fill
        Asked asked;
        bool accepted = false;
    };
    struct ClassEntries {
        Places all;
        Places alike;   // answer alike for all items of the class
        Places always;  // have to be asked for each item
        // Entries for one fill, by the name of its colour, or by the item itself when it is no colour.
        std::unordered_map<kzutil::WideString, Places> colorFills;
        PointerTable<Places*> knownColors;  // of those, by colour item: its name has to be made
        std::unordered_map<const ABrushItem*, Places> otherFills;
        PointerMap<FillState> fills;  // by brush item
        bool hasFills = false;
        bool hasSubKinds = false;
        Asked asked;
        ItemKind kind = ItemKind::none;  // for which it was asked
        bool isMixed = false;            // for several: nothing is known then
    };

    void file(int place);
    ClassEntries* findClass(const AString& name) const;
    ClassEntries* entriesOf(ARoot& item);
    Places& fillEntries(ClassEntries& of, const ABrushItem& brush);
    static bool isPlain(ClassEntries& of, ItemKind kind);
    bool takeFill(ClassEntries& of, ARoot& item, bool selected);
    bool visit(int place, ARoot& item, ItemKind kind, bool selected);

    ACheckPageBase& m_page;
    int m_seen = 0;
    unsigned m_revision = 0;
    std::map<kzutil::WideString, std::unique_ptr<ClassEntries>, std::less<>> m_classes;  // few
    PointerTable<ClassEntries*> m_known;  // by the address of the class's name
};
