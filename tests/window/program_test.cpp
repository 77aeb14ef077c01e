// The window of the program as it is installed: started as a process, and with a plug-in in another language.
#include "window/window_fixture.h"

#include <dlgs.h>

#include <algorithm>

#include "app/window/window.h"
#include "kzutil/utf.h"
#include "support/program_folder.h"
#include "support/started_process.h"

namespace test {

namespace {

using namespace app::window;

std::string textOf(HWND window) {
    WCHAR text[600] = {};
    // Asked of the window itself, which answers as soon as it has time.
    ::SendMessageW(window, WM_GETTEXT, 600, reinterpret_cast<LPARAM>(text));
    return kzutil::narrow(text);
}

// kzdraw.exe with a window.
class StartedProgram {
public:
    explicit StartedProgram(const std::filesystem::path& drawing)
        : m_process(startProcess(L"kzdraw.exe", L"kzdraw.exe window \"" + drawing.wstring() + L"\"", {})) {
        WaitForInputIdle(m_process.hProcess, INFINITE);
    }
    ~StartedProgram() {
        if (status() == STILL_ACTIVE) TerminateProcess(m_process.hProcess, 1);
        CloseHandle(m_process.hThread);
        CloseHandle(m_process.hProcess);
    }
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    // Its window of this title once it shows, a dialog or not; null when the program ends without.
    HWND shown(const std::string& title, bool isDialog = false) const {
        Search search{m_process.dwProcessId, title, isDialog, nullptr};
        while (!search.found && status() == STILL_ACTIVE)
            EnumWindows(examine, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    DWORD status() const {
        DWORD status = 0;
        GetExitCodeProcess(m_process.hProcess, &status);
        return status;
    }
    DWORD close(HWND window) const {
        ::PostMessageW(window, WM_CLOSE, 0, 0);
        WaitForSingleObject(m_process.hProcess, INFINITE);
        return status();
    }

private:
    struct Search {
        DWORD process;
        std::string title;
        bool isDialog;
        HWND found;
    };
    static BOOL CALLBACK examine(HWND window, LPARAM parameter) {
        auto& search = *reinterpret_cast<Search*>(parameter);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != search.process || !IsWindowVisible(window)) return TRUE;
        WCHAR className[20] = {};
        GetClassNameW(window, className, 20);
        if ((kzutil::narrow(className) == "#32770") == search.isDialog && textOf(window) == search.title)
            search.found = window;
        return !search.found;
    }

    PROCESS_INFORMATION m_process = {};
};

// Of all controls within.
std::string textsIn(HWND dialog) {
    std::string texts;
    const auto add = [](HWND child, LPARAM all) -> BOOL {
        *reinterpret_cast<std::string*>(all) += textOf(child) + "\n";
        return TRUE;
    };
    EnumChildWindows(dialog, add, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

TEST(WindowProcess, OpensTheDrawingItIsStartedWithAndEndsWithStatus0WhenItIsClosed) {
    const TempFolder folder;
    const StartedProgram program(folder.write(u8"p\u00E5rk.svg", kPark));
    const HWND window = program.shown("p\u00E5rk.svg \u2013 kzdraw");
    ASSERT_TRUE(window) << "it ended with status " << program.status();
    EXPECT_EQ(program.close(window), 0U);
}

TEST(WindowProcess, TellsInABoxWhyADrawingIsRefusedAndOpensAnotherFromTheSystemsDialog) {
    const TempFolder folder;
    const std::filesystem::path park = folder.write("park.svg", kPark);
    const StartedProgram program(folder.write("broken.svg", "<svg"));
    const HWND box = program.shown("kzdraw", true);
    ASSERT_TRUE(box) << "it ended with status " << program.status();
    EXPECT_NE(textsIn(box).find("broken.svg:1: the file ends in the middle of the drawing"),
              std::string::npos)
        << textsIn(box);
    ::PostMessageW(box, WM_COMMAND, IDOK, 0);

    const HWND window = program.shown("kzdraw");
    ASSERT_TRUE(window);
    ::PostMessageW(window, WM_COMMAND, kOpen, 0);
    const HWND dialog = program.shown("Open", true);
    ASSERT_TRUE(dialog);
    const HWND name = ::GetDlgItem(dialog, cmb13) ? ::GetDlgItem(dialog, cmb13) : ::GetDlgItem(dialog, edt1);
    ::SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(park.c_str()));
    ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(program.shown("park.svg \u2013 kzdraw"), window);
    EXPECT_EQ(program.close(window), 0U);
}

// The plug-in in a folder of its own, with its texts in another language beside it.
class LocalizedPlugIn {
protected:
    explicit LocalizedPlugIn(const std::string& language) {
        const std::filesystem::path program = programFolder(), plugIns = m_base.path() / "Plugins";
        std::filesystem::create_directory(plugIns);
        std::filesystem::copy(program / "Plugins" / "kzattribute.dll", plugIns);
        std::filesystem::copy(program / "Languages" / language / "kzattributeloc.dll", plugIns);
        AFilePath::setBaseFolder(m_base.wide());
    }
    ~LocalizedPlugIn() { AFilePath::setBaseFolder(AString()); }

private:
    TempFolder m_base;
};

struct LanguageTexts {
    std::string language, sheetTitle, filterTitle, showAll;
};

class LocalizedWindow : LocalizedPlugIn,
                        public WindowTest,
                        public testing::WithParamInterface<LanguageTexts> {
protected:
    LocalizedWindow() : LocalizedPlugIn(GetParam().language) {}
    // The icon is 20 pixels wide.
    void expectRoomFor(const BarButton& button) {
        ToolBar& column = window.toolColumn();
        const RECT rect = column.buttonRect(button.command);
        const CClientDC context(column);
        const HGDIOBJ before =
            ::SelectObject(context, reinterpret_cast<HFONT>(column.SendMessage(WM_GETFONT)));
        const kzutil::WideString name = kzutil::widen(button.name);
        SIZE size = {};
        GetTextExtentPoint32W(context, name.c_str(), static_cast<int>(name.size()), &size);
        ::SelectObject(context, before);
        EXPECT_LE(size.cx + 20 + 12, rect.right - rect.left) << button.name;
        RECT client;
        column.GetClientRect(&client);
        EXPECT_LE(rect.right, client.right) << button.name;
    }
    void expectTitle(const char* tool, const std::string& title, const std::string& picture) {
        driver::Driver acts({[&](driver::Dialog& dialog) {
            EXPECT_EQ(dialog.describe().title, title);
            keepPicture(picture + "-" + GetParam().language);
            dialog.cancel();
        }});
        window.perform(toolCommand(window, tool));
        EXPECT_TRUE(acts.finished());
    }
};

TEST_P(LocalizedWindow, ShowsToolsAndDialogsInItsLanguage) {
    const auto& buttons = window.toolColumn().buttons();
    const auto showAll = std::ranges::find(buttons, toolCommand(window, "AShowAllTool"), &BarButton::command);
    ASSERT_NE(showAll, buttons.end());
    EXPECT_EQ(showAll->name, GetParam().showAll);
    for (const BarButton& button : buttons) expectRoomFor(button);
    expectTitle("ASelectByAttrTool", GetParam().sheetTitle, "sheet");
    expectTitle("AViewFilterTool", GetParam().filterTitle, "filter");
}

INSTANTIATE_TEST_SUITE_P(All, LocalizedWindow,
                         testing::Values(LanguageTexts{"de", "Nach Attributen ausw\u00E4hlen",
                                                       "Ansichtsfilter", "Alle zeigen"},
                                         LanguageTexts{"fr", "S\u00E9lectionner par attributs",
                                                       "Filtre d\u2019affichage", "Tout afficher"},
                                         LanguageTexts{"ja", "\u5C5E\u6027\u3067\u9078\u629E",
                                                       "\u8868\u793A\u30D5\u30A3\u30EB\u30BF\u30FC",
                                                       "\u3059\u3079\u3066\u8868\u793A"}),
                         [](const testing::TestParamInfo<LanguageTexts>& one) { return one.param.language; });

}  // namespace

}  // namespace test
