// AObList: an ordered list of objects that it does not own. Duplicates are kept.
//
//     for (POSITION at = list.GetHeadPosition(); at;) use(list.GetNext(at));
//
// A walk may append to the list that it walks: what AddTail puts behind the walk's position is walked too,
// and a position stays good until RemoveAll. A walk that has taken the last entry stands at null and is over:
// to go on, it starts anew at the head. Entries lie contiguously, one pointer each, so appending a list is
// one copy.
#pragma once

#include <vector>

#include "kzutil/root.h"

// A place in an AObList: null is behind the last entry.
struct AListPosition;
using POSITION = AListPosition*;

class AObList : public CObject {
public:
    // `blockSize` is how many entries a list of its own would take room for at first; none is taken while it
    // is empty. The first argument is reserved by the host and always 0.
    AObList() : AObList(0, 10) {}
    explicit AObList(int reserved, int blockSize = 10);

    int GetCount() const { return static_cast<int>(m_entries.size()); }
    bool IsEmpty() const { return m_entries.empty(); }

    void AddTail(ARoot* entry);
    // Appends the entries of another list, in order. Appending a list to itself doubles it;
    // null appends nothing.
    void AddTail(const AObList* list);
    void RemoveAll();
    // Removes the first entry that is this object; false when there is none. Positions at or behind
    // it move down.
    bool Remove(const ARoot* entry);

    // Both are null for an empty list.
    ARoot* GetHead() const { return m_entries.empty() ? nullptr : m_entries.front(); }
    ARoot* GetTail() const { return m_entries.empty() ? nullptr : m_entries.back(); }

    POSITION GetHeadPosition() const { return positionOf(0); }
    // The entry at the position, which moves to the next. Null, and the walk is over, where no entry is left:
    // at a null position and at one that RemoveAll or Remove has outdated.
    ARoot* GetNext(POSITION& position) const {
        const std::size_t index = indexOf(position);
        if (index >= m_entries.size()) {
            position = nullptr;
            return nullptr;
        }
        ARoot* entry = m_entries[index];
        position = positionOf(index + 1);
        return entry;
    }
    // The first position at which this very object stands, or null.
    POSITION Find(const ARoot* entry) const;

    ARoot* const* begin() const { return m_entries.data(); }
    ARoot* const* end() const { return m_entries.data() + m_entries.size(); }

private:
    // A position is the entry's index plus one, so that it stays good when the entries move.
    POSITION positionOf(std::size_t index) const {
        return index < m_entries.size() ? reinterpret_cast<POSITION>(index + 1) : nullptr;
    }
    static std::size_t indexOf(POSITION position) { return reinterpret_cast<std::size_t>(position) - 1; }

    std::vector<ARoot*> m_entries;
    int m_blockSize;
};
