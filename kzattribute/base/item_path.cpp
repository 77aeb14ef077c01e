#include "base/item_path.h"

#include <algorithm>

void AItemPath::appendSegment(const AString& segment) {
    const AString added(segment);  // the segment may be this very path
    *this += m_separator;
    *this += added;
}

void AItemPath::removeFirstSegment() {
    const int separator = Find(m_separator);
    if (separator < 0)
        Empty();
    else
        *this = AItemPath(Mid(separator + 1));
}

void AItemPath::getSegment(int index, AString& out) const {
    const AString text(*this);  // `out` may be this very path
    out.Empty();
    int start = 0;
    for (int met = 0; met < index; ++met) {
        const int separator = text.Find(m_separator, start);
        if (separator < 0) return;
        start = separator + 1;
    }
    const int end = text.Find(m_separator, start);
    out = text.Mid(start, (end < 0 ? text.GetLength() : end) - start);
}

int AItemPath::getSegmentCount() const {
    const kzutil::WideView text = view();
    return 1 + static_cast<int>(std::count(text.begin(), text.end(), m_separator));
}
