#include "app/window/script_record.h"

namespace app::window {

void ScriptRecord::add(const std::string& line) {
    if (line.starts_with("print")) return;
    m_lines.push_back(line);
    if (m_lines.size() <= kMostLines) return;
    m_lines.pop_front();
    ++m_gone;
}

void ScriptRecord::cutTo(std::size_t count) {
    while (!m_lines.empty() && addedCount() > count) m_lines.pop_back();
}

void ScriptRecord::clear() {
    m_gone = addedCount();
    m_lines.clear();
}

std::string ScriptRecord::text() const {
    std::string text;
    for (const std::string& line : m_lines) text += line + '\n';
    return text;
}

}  // namespace app::window
