// The View Filter dialog in the hands of a user.
#pragma once

#include <cstdlib>

#include "dialog.h"
#include "kzutil/preference_manager.h"
#include "platform/driver/driver.h"
#include "platform/driver/input.h"
#include "support/temp_folder.h"
#include "tools.h"

namespace test {

using driver::Dialog;
using driver::Step;

inline Step pressing(const char* caption) {
    return [caption](Dialog& dialog) { dialog.press(caption); };
}

inline void tellItems(const std::vector<driver::TreeItem>& items, const std::string& above,
                      std::vector<std::string>& lines) {
    for (const driver::TreeItem& item : items) {
        lines.push_back(above + item.text + ' ' + std::to_string(item.check));
        tellItems(item.children, above + item.text + '/', lines);
    }
}
// "RGB Color 5", "RGB Color/red 1": every item with its check value, in the order shown.
inline std::vector<std::string> ticks(const Dialog& dialog) {
    std::vector<std::string> lines;
    tellItems(dialog.tree(), "", lines);
    return lines;
}

inline const driver::ControlDescription& control(const driver::DialogDescription& dialog, int id) {
    for (const driver::ControlDescription& one : dialog.controls) {
        if (one.id == id) return one;
    }
    throw std::runtime_error("there is no control " + std::to_string(id));
}
inline int widthOf(const RECT& rect) {
    return static_cast<int>(rect.right - rect.left);
}
inline int heightOf(const RECT& rect) {
    return static_cast<int>(rect.bottom - rect.top);
}

// A drawing with red, green, blue and black ovals and the tool, started on a view with any filter.
class DialogTest : public ToolTest {
protected:
    TempFolder folder;
    AViewFilterTool tool;

    DialogTest() {
        for (const char* name : {"red", "green", "blue", "black"}) paintOval(name);
        APreferenceManager::setFolder(folder.path());
    }
    ~DialogTest() override { APreferenceManager::setFolder({}); }

    AObject* paintOval(const std::string& name) {
        AObject* oval = drawing.add(object->getParent(), _T("AOval"));
        oval->setBrush(drawing.document.getPaint().solidBrush(color(name)));
        return oval;
    }
    // Starts the tool; a step each time the dialog waits.
    void use(std::initializer_list<Step> steps) {
        driver::Driver user(steps);
        EXPECT_EQ(tool.onToolStart(), 1);
        EXPECT_TRUE(user.finished());
    }
    std::string filter() { return told(drawing.view().m_viewFilter); }
};

}  // namespace test
