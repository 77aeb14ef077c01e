#include "kzutil/object_list.h"

#include <algorithm>

AObList::AObList(int, int blockSize) : m_blockSize(std::max(blockSize, 1)) {}

void AObList::AddTail(ARoot* entry) {
    if (m_entries.capacity() == 0) m_entries.reserve(static_cast<std::size_t>(m_blockSize));
    m_entries.push_back(entry);
}

void AObList::AddTail(const AObList* list) {
    if (!list) return;
    const std::size_t old = m_entries.size();
    const std::size_t added = list->m_entries.size();
    if (old + added > m_entries.capacity()) m_entries.reserve(std::max(old + added, 2 * old));
    m_entries.resize(old + added);
    std::copy_n(list->m_entries.begin(), added, m_entries.begin() + static_cast<std::ptrdiff_t>(old));
}

void AObList::RemoveAll() {
    m_entries.clear();
}

bool AObList::Remove(const ARoot* entry) {
    const auto found = std::find(m_entries.begin(), m_entries.end(), entry);
    if (found == m_entries.end()) return false;
    m_entries.erase(found);
    return true;
}

POSITION AObList::Find(const ARoot* entry) const {
    return positionOf(
        static_cast<std::size_t>(std::find(m_entries.begin(), m_entries.end(), entry) - m_entries.begin()));
}
