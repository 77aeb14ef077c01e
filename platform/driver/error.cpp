#include "platform/driver/error.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <numeric>
#include <utility>

namespace driver {

namespace {

constexpr std::size_t kMostNames = 5;

std::string inQuotes(const std::string& name) {
    return '"' + name + '"';
}

std::string sentence(const std::string& reason, const std::vector<std::string>& nearest) {
    std::string text = reason;
    for (std::size_t i = 0; i < nearest.size(); ++i)
        text += (i == 0 ? "; nearest: " : ", ") + inQuotes(nearest[i]);
    return text;
}

// How many bytes must be put in, taken out or replaced, whatever their letter case.
std::size_t distance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const bool same = std::tolower(static_cast<unsigned char>(one[i])) ==
                              std::tolower(static_cast<unsigned char>(other[j]));
            const std::size_t replaced = diagonal + (same ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

}  // namespace

Error::Error(const std::string& reason, std::vector<std::string> nearest)
    : std::runtime_error(sentence(reason, nearest)), m_reason(reason), m_nearest(std::move(nearest)) {}

void failToFind(const std::string& what, const std::string& name, const std::vector<std::string>& existing) {
    std::vector<std::pair<std::size_t, std::string>> candidates;
    for (const std::string& candidate : existing)
        candidates.emplace_back(distance(name, candidate), candidate);
    std::ranges::stable_sort(candidates, {}, [](const auto& candidate) { return candidate.first; });
    std::vector<std::string> nearest;
    for (const auto& [steps, candidate] : candidates) {
        if (nearest.size() == kMostNames) break;
        if (std::ranges::find(nearest, candidate) == nearest.end()) nearest.push_back(candidate);
    }
    throw Error("there is no " + what + ' ' + inQuotes(name), std::move(nearest));
}

}  // namespace driver
