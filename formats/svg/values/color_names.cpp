#include "formats/svg/values/color.h"
#include "formats/svg/values/text_scan.h"
#include "kzcore/document/named_colors.h"

namespace svg {

namespace {

constexpr std::size_t kLongestName = 20;  // lightgoldenrodyellow

}  // namespace

bool findColorName(std::string_view name, std::uint32_t& rgb) {
    if (name.size() > kLongestName) return false;
    char lower[kLongestName];
    for (std::size_t i = 0; i < name.size(); ++i) lower[i] = toLower(name[i]);
    const auto found = findNamedColor({lower, name.size()});
    if (found) rgb = *found;
    return found.has_value();
}

}  // namespace svg
