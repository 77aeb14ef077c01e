#include "checkpage/path_index.h"

#include <algorithm>

#include "kzutil/text_hash.h"

namespace checkpage {

AItemPath numberedPath(const AString& base, int number) {
    AItemPath path(base);
    path += WCHAR('_');
    path.AppendNumber(number);
    return path;
}

std::size_t PathIndex::Hash::operator()(kzutil::WideView text) const {
    return kzutil::hashText({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR)});
}

int PathIndex::find(const AString& path) const {
    const auto found = m_places->byPath.find(path.view());
    return found == m_places->byPath.end() ? -1 : found->second;
}

void PathIndex::add(const AString& path, int place) {
    const std::size_t length = static_cast<std::size_t>(path.GetLength());
    auto* kept = static_cast<WCHAR*>(m_places->memory.allocate(length * sizeof(WCHAR), alignof(WCHAR)));
    std::copy_n(static_cast<const WCHAR*>(path), length, kept);
    m_places->byPath.emplace(kzutil::WideView(kept, length), place);
}

int PathIndex::nextFree(const AString& base) {
    int& number = m_free.try_emplace(kzutil::WideString(base.view()), 1).first->second;
    while (find(numberedPath(base, number)) >= 0) ++number;
    return number;
}

}  // namespace checkpage
