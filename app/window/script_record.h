// What was done, as the lines of a script.
#pragma once

#include <deque>
#include <string>

namespace app::window {

class ScriptRecord {
public:
    // Lines that only print are left out; of very many the oldest go.
    void add(const std::string& line);
    // How many lines were ever added, for cutTo(): what was added since is taken back, as far as it is still there.
    std::size_t addedCount() const { return m_gone + m_lines.size(); }
    void cutTo(std::size_t addedCount);
    void clear();

    bool isEmpty() const { return m_lines.empty(); }
    // Every line with its line feed.
    std::string text() const;

private:
    static constexpr std::size_t kMostLines = 5000;

    std::deque<std::string> m_lines;
    std::size_t m_gone = 0;  // before them
};

}  // namespace app::window
