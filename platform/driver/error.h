// What the driver raises when an action cannot be done.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace driver {

// what() is one line that says it all, the nearest names included; the parts are for callers with words of
// their own. Texts are UTF-8.
class Error : public std::runtime_error {
public:
    // reason: `there is no page "Fil"`. nearest: names that exist, nearest first.
    explicit Error(const std::string& reason, std::vector<std::string> nearest = {});

    const std::string& reason() const { return m_reason; }
    const std::vector<std::string>& nearest() const { return m_nearest; }

private:
    std::string m_reason;
    std::vector<std::string> m_nearest;
};

// Raises the Error of a name that is not among the existing ones, with the nearest of them.
[[noreturn]] void failToFind(const std::string& what, const std::string& name,
                             const std::vector<std::string>& existing);

}  // namespace driver
