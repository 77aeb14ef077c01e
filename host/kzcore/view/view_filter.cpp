#include "kzcore/view/view_filter.h"

#include <typeindex>
#include <unordered_map>
#include <utility>

namespace {

using Registry = std::unordered_map<std::type_index, AViewFilterOperations>;

Registry& registry() {
    static Registry filters;
    return filters;
}

const AViewFilterOperations* operationsOf(const AViewFilter& filter) {
    const auto found = registry().find(typeid(filter));
    return found == registry().end() ? nullptr : &found->second;
}

// The state of a filter that is simply copied.
class CopiedState : public AViewFilterState {
public:
    explicit CopiedState(std::unique_ptr<AViewFilter> copy) : m_copy(std::move(copy)) {}
    bool isStateOf(const AViewFilter& filter) const override { return sameViewFilter(m_copy.get(), &filter); }
    std::unique_ptr<AViewFilter> make() const override { return copyViewFilter(m_copy.get()); }

private:
    std::unique_ptr<AViewFilter> m_copy;
};

}  // namespace

int AViewFilter::isVisible(AReferItem*) {
    return 1;
}

void registerViewFilter(const std::type_info& type, const AViewFilterOperations& operations) {
    registry().insert_or_assign(type, operations);
}

void unregisterViewFilter(const std::type_info& type) {
    registry().erase(type);
}

std::unique_ptr<AViewFilter> copyViewFilter(const AViewFilter* filter) {
    const AViewFilterOperations* operations = filter ? operationsOf(*filter) : nullptr;
    return std::unique_ptr<AViewFilter>(operations ? operations->copy(*filter) : nullptr);
}

bool sameViewFilter(const AViewFilter* a, const AViewFilter* b) {
    if (a == b) return true;
    if (!a || !b || typeid(*a) != typeid(*b)) return false;
    const AViewFilterOperations* operations = operationsOf(*a);
    return operations && operations->same(*a, *b);
}

std::unique_ptr<AViewFilterState> keepViewFilter(const AViewFilter* filter) {
    const AViewFilterOperations* operations = filter ? operationsOf(*filter) : nullptr;
    if (!operations) return nullptr;
    if (operations->keep) return operations->keep(*filter);
    return std::make_unique<CopiedState>(copyViewFilter(filter));
}
