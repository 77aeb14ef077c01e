#include "app/window/window_lines.h"

#include <memory>
#include <utility>

#include "app/output.h"
#include "app/script/interpreter.h"
#include "app/script/words.h"
#include "app/written_file.h"

namespace app::window {

std::string WindowLines::run(const std::vector<std::string>& words) {
    if (m_isRunning) throw Failure{inQuotes(words[0]) + " has to wait until the dialog is closed"};
    m_isRunning = true;
    const auto end = [this](void*) { m_isRunning = false; };
    const std::unique_ptr<void, decltype(end)> ending(this, end);

    m_line = joinWords(words);
    m_hasLine = true;
    const std::size_t before = m_record.addedCount();
    m_record.add(m_line);
    std::string output;
    const PrintedText printed(output);
    try {
        interpret(m_session, *this);
    } catch (...) {
        m_record.cutTo(before);
        throw;
    }
    return output;
}

void WindowLines::note(const std::vector<std::string>& words) {
    if (m_isRunning) m_record.add("  " + joinWords(words));
}

bool WindowLines::next(std::string& line, driver::Dialog*) {
    if (!std::exchange(m_hasLine, false)) return false;
    line = std::move(m_line);
    return true;
}

void WindowLines::write(const std::string& name, std::string_view bytes) {
    writeFile(name, bytes);
}

}  // namespace app::window
