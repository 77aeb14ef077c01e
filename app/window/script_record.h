// What was done, as the lines of a script.
#pragma once

#include <deque>
#include <string>

namespace app::window {

class ScriptRecord {
public:
    // Lines that only print are left out; of very many the oldest go.
    void add(const std::string& line);
    // What was added since there were so many lines is taken back.
    void cutTo(std::size_t lines);
    void clear() { m_lines.clear(); }

    std::size_t size() const { return m_lines.size(); }
    // Every line with its line feed.
    std::string text() const;

private:
    static constexpr std::size_t kMostLines = 5000;

    std::deque<std::string> m_lines;
};

}  // namespace app::window
