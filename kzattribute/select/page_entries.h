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

#include <array>
#include <map>
#include <memory>

#include "checkpage/check_page_base.h"
#include "kzcore/document/refer_item.h"
#include "select/item_kind.h"
#include "select/name_map.h"
#include "select/pointer_table.h"

// An item is settled when taking it would mark nothing that is not marked already, nor change any entry.
// Counts, for each kind of items and for those that are not selected and are, how often settled ones became
// unsettled.
class Unsettled {
public:
    std::uint32_t count(ItemKind kind, bool selected) const {
        return m_counts[place(kind)][selected ? 1 : 0];
    }
    void add(ItemKind kind) {
        ++m_counts[place(kind)][0];
        addSelected(kind);
    }
    void addSelected(ItemKind kind) { ++m_counts[place(kind)][1]; }
    void addAll() {
        for (auto& counts : m_counts) ++counts[0], ++counts[1];
    }

private:
    static std::size_t place(ItemKind kind) { return static_cast<std::size_t>(kind); }

    std::array<std::array<std::uint32_t, 2>, 6> m_counts{};  // by kind
};

class AFillCondition;

class PageEntries {
public:
    using Places = std::vector<int>;  // in the page's list

    // `unsettled` is told when items that this page settled become unsettled; it may be null.
    explicit PageEntries(ACheckPageBase& page, Unsettled* unsettled = nullptr)
        : m_page(page), m_unsettled(unsettled) {}

    // True when some entry accepted the item. Null is accepted by none. The item, and its class's name, have
    // to stay where they are while the page is filled.
    bool take(ARoot* item, ItemKind kind, bool selected);
    // True when the item is known to be settled and accepted.
    bool isSettled(ARoot* item, ItemKind kind, bool selected);

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
    // The entries that may be about a fill: mostly one.
    class FillEntries {
    public:
        void add(int place) {
            if (m_first < 0)
                m_first = place;
            else
                m_more.push_back(place);
        }
        std::size_t size() const { return m_first < 0 ? 0 : 1 + m_more.size(); }
        int operator[](std::size_t i) const { return i == 0 ? m_first : m_more[i - 1]; }

    private:
        int m_first = -1;
        Places m_more;
    };
    struct FillState {
        FillEntries* entries = nullptr;  // that may be about the fill
        Asked asked;
        bool accepted = false;
    };
    struct ClassEntries {
        Places all;
        Places alike;   // answer alike for all items of the class
        Places always;  // have to be asked for each item
        // Entries for one fill, by the name of its colour, or by the item itself when it is no colour.
        NameMap<FillEntries> colorFills;
        PointerMap<FillEntries> otherFills;
        PointerMap<FillState> fills;  // by brush item
        bool hasFills = false;
        Asked asked;
        ItemKind kind = ItemKind::none;  // for which it was asked
        bool isMixed = false;            // for several: nothing is known then
    };

    void file(int place);
    ClassEntries* findClass(const AString& name) const;
    ClassEntries* entriesOf(ARoot& item);
    FillEntries& fillEntries(ClassEntries& of, const ABrushItem& brush);
    bool isPlain(ClassEntries& of, ItemKind kind);
    void addFill(ClassEntries& of, const AFillCondition& entry, int place);
    void addAlike(ClassEntries& of, int place);
    void unsettleAll();
    bool takeFill(ClassEntries& of, ARoot& item, bool selected);
    bool visit(int place, ARoot& item, ItemKind kind, bool selected);

    ACheckPageBase& m_page;
    Unsettled* m_unsettled;
    int m_seen = 0;
    unsigned m_revision = 0;
    std::map<kzutil::WideString, std::unique_ptr<ClassEntries>, std::less<>> m_classes;  // few
    PointerTable<ClassEntries*> m_known;  // by the address of the class's name
};
