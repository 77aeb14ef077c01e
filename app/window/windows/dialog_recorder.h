// DialogRecorder: notes what a user does in the dialogs that open while it lives, as lines of a script.
//
//     DialogRecorder recorder([&](const std::vector<std::string>& words) { … });
//     session.runTool("AViewFilterTool");      // {"click", "RGB Color/red"}, {"press", "OK"}
//
// It watches the messages of this thread, and changes none. Only one is there at a time.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/winapi.h"

namespace app::window {

class DialogRecorder {
public:
    using Note = std::function<void(const std::vector<std::string>& words)>;

    explicit DialogRecorder(Note note);
    ~DialogRecorder();
    DialogRecorder(const DialogRecorder&) = delete;
    DialogRecorder& operator=(const DialogRecorder&) = delete;

private:
    static LRESULT CALLBACK watchSent(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK watchPosted(int code, WPARAM wParam, LPARAM lParam);

    void see(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void seeCommand(HWND dialog, WPARAM wParam, LPARAM lParam);
    void seeTree(HWND tree, UINT message, LPARAM lParam);

    const Note m_note;
    HHOOK m_sent, m_posted;
};

}  // namespace app::window
