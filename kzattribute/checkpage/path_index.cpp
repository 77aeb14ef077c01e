#include "checkpage/path_index.h"

#include <algorithm>

namespace checkpage {

AItemPath numberedPath(const AString& base, int number) {
    AItemPath path(base);
    path += WCHAR('_');
    path.AppendNumber(number);
    return path;
}

std::size_t PathIndex::Hash::operator()(kzutil::WideView text) const {
    return kzutil::hashValues(text);
}

const PathIndex::Slot& PathIndex::slotOf(kzutil::WideView path, std::uint64_t hash) const {
    return m_slots.locate(hash, [&](const Slot& slot) { return slot.hash == hash && slot.path == path; });
}

int PathIndex::find(const AString& path) const {
    return slotOf(path.view(), Hash()(path.view())).number - 1;
}

void PathIndex::add(const AString& path, int place) {
    m_slots.makeRoom([](const Slot& slot) { return slot.hash; });
    const kzutil::WideView text = path.view();
    auto* kept = static_cast<WCHAR*>(m_texts->allocate(text.size() * sizeof(WCHAR), alignof(WCHAR)));
    std::copy(text.begin(), text.end(), kept);
    const std::uint64_t hash = Hash()(text);
    m_slots.add(hash, {hash, {kept, text.size()}, place + 1});
}

int PathIndex::nextFree(const AString& base) {
    int& number = m_free.try_emplace(kzutil::WideString(base.view()), 1).first->second;
    while (find(numberedPath(base, number)) >= 0) ++number;
    return number;
}

}  // namespace checkpage
