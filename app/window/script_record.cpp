#include "app/window/script_record.h"

namespace app::window {

void ScriptRecord::add(const std::string& line) {
    if (line.starts_with("print")) return;
    m_lines.push_back(line);
    if (m_lines.size() > kMostLines) m_lines.pop_front();
}

void ScriptRecord::cutTo(std::size_t lines) {
    if (lines < m_lines.size()) m_lines.resize(lines);
}

std::string ScriptRecord::text() const {
    std::string text;
    for (const std::string& line : m_lines) text += line + '\n';
    return text;
}

}  // namespace app::window
