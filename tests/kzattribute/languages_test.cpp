// The localized modules beside the plug-in's own texts: what a translation must carry, keep, and fit into.
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

#include "module.h"
#include "text_size.h"

namespace {

using Text = std::basic_string<WCHAR>;

constexpr UINT kLastId = 0xFFFF;
constexpr UINT kMenus = 4;
constexpr UINT kDialogs = 5;
constexpr UINT kStrings = 6;
constexpr UINT kAccelerators = 9;

std::string utf8(const Text& text) {
    return AString(text.c_str()).toUtf8();
}

std::vector<std::string> languages() {
    std::istringstream words(KZ_LANGUAGES);
    return {std::istream_iterator<std::string>(words), {}};
}

bool has(HMODULE module, UINT id, UINT kind) {
    return FindResourceW(module, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(kind)) != nullptr;
}

// Of menus, dialogs and accelerators, which are numbered low.
std::set<UINT> idsOf(HMODULE module, UINT kind) {
    constexpr UINT kLast = 0x3FFF;
    std::set<UINT> ids;
    for (UINT id = 1; id <= kLast; ++id) {
        if (has(module, id, kind)) ids.insert(id);
    }
    return ids;
}

std::map<UINT, std::string> stringsOf(HMODULE module) {
    std::map<UINT, std::string> strings;
    for (UINT block = 1; block <= kLastId / 16 + 1; ++block) {
        if (!has(module, block, kStrings)) continue;
        for (UINT id = (block - 1) * 16; id < block * 16; ++id) {
            WCHAR text[512];
            if (LoadStringW(module, id, text, 512) > 0) strings[id] = utf8(text);
        }
    }
    return strings;
}

std::set<UINT> idsOf(const std::map<UINT, std::string>& strings) {
    std::set<UINT> ids;
    for (const auto& [id, text] : strings) ids.insert(id);
    return ids;
}

// "%d" and its like, in their order.
std::vector<std::string> placeholdersOf(const std::string& text) {
    std::vector<std::string> found;
    for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1)) {
        const std::size_t end = text.find_first_not_of("0123456789.-+ #%", at + 1);
        found.push_back(text.substr(at, end - at + 1));
    }
    return found;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

// What stands between backticks.
std::vector<std::string> quotedIn(const std::string& page) {
    std::vector<std::string> quoted;
    std::istringstream parts(page);
    bool inside = false;
    for (std::string part; std::getline(parts, part, '`'); inside = !inside) {
        if (inside) quoted.push_back(part);
    }
    return quoted;
}

// What is shown of "&Apply", and the letters that "&" stands before.
Text shownOf(const Text& text, std::string* letters = nullptr) {
    Text shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) {
            ++i;
            if (letters && text[i] != '&') *letters += static_cast<char>(text[i] | 0x20);
        }
        shown += text[i];
    }
    return shown;
}

struct Control {
    HWND window;
    int id;
    std::string className;
    LONG style;
    Text text;
    RECT rect;  // in the dialog's client area
};

Text textOf(HWND window) {
    WCHAR text[256] = {};
    GetWindowTextW(window, text, 256);
    return text;
}

// A dialog made of a module's template, without any of the plug-in's code behind it.
class Dialog {
public:
    Dialog(HMODULE module, UINT id) {
        m_owner = CreateWindowExW(0, _T("Static"), nullptr, WS_POPUP, 0, 0, 600, 400, nullptr, nullptr,
                                  nullptr, nullptr);
        const auto leaveAll = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
        window = CreateDialogParamW(module, MAKEINTRESOURCEW(id), m_owner, leaveAll, 0);
        if (!window) return;
        GetClientRect(window, &client);
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            controls.push_back(describe(child));
    }
    ~Dialog() { DestroyWindow(m_owner); }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    HWND window = nullptr;  // null: the template makes none
    RECT client{};
    std::vector<Control> controls;

private:
    Control describe(HWND child) const {
        WCHAR name[64] = {};
        GetClassNameW(child, name, 64);
        RECT rect{};
        GetWindowRect(child, &rect);
        POINT origin{0, 0};
        ClientToScreen(window, &origin);
        OffsetRect(&rect, -origin.x, -origin.y);
        return {child, GetDlgCtrlID(child), utf8(name), GetWindowLongW(child, GWL_STYLE), textOf(child),
                rect};
    }

    HWND m_owner = nullptr;
};

// The box of a check box and the gap behind it; the edges of a button and the frame of its focus.
constexpr int kBesideCheckBox = 18;
constexpr int kBesideButtonText = 8;
constexpr int kLeastCaptionButtons = 60;

int besideText(const Control& control) {
    return (control.style & 0xF) == BS_AUTOCHECKBOX ? kBesideCheckBox : kBesideButtonText;
}

void expectToFit(const Control& control, const Text& text, int width, int height) {
    const SIZE size = test::textSize(control.window, text);
    EXPECT_LE(size.cx + besideText(control), width) << utf8(text);
    EXPECT_LE(size.cy, height) << utf8(text);
}

class Languages : public testing::TestWithParam<std::string> {
protected:
    std::unique_ptr<APlugIn> plugIn;
    HMODULE own = nullptr;
    HMODULE localized = nullptr;

    void SetUp() override {
        plugIn = test::loadPlugIn();
        ASSERT_NE(plugIn, nullptr);
        own = plugIn->getModule();
        const std::filesystem::path file =
            test::programFolder() / "Languages" / GetParam() / "kzattributeloc.dll";
        const std::u16string path = file.u16string();
        localized = LoadLibraryExW(Text(path.begin(), path.end()).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_NE(localized, nullptr) << file;
    }
    void TearDown() override {
        if (localized) FreeLibrary(localized);
    }
    void forEachDialog(const std::function<void(const Dialog& original, const Dialog& translated)>& check) {
        static const std::set<UINT> ids = idsOf(own, kDialogs);
        for (const UINT id : ids) {
            SCOPED_TRACE(id);
            const Dialog original(own, id);
            const Dialog translated(localized, id);
            ASSERT_TRUE(original.window && translated.window);
            ASSERT_EQ(original.controls.size(), translated.controls.size());
            check(original, translated);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(All, Languages, testing::ValuesIn(languages()),
                         [](const testing::TestParamInfo<std::string>& one) { return one.param; });

}  // namespace

TEST(LanguageList, HoldsWhatIsDelivered) {
    const std::vector<std::string> built = languages();
    for (const char* language : {"de", "fr", "ja"})
        EXPECT_EQ(std::count(built.begin(), built.end(), language), 1) << language;
}

// The page names files and texts; both may change without it.
TEST(TranslatingPage, NamesFilesThatExistAndEveryText) {
    const std::filesystem::path root = std::filesystem::path(KZ_SAMPLES).parent_path();
    const std::string page = contentOf(root / "docs/translating.md");
    int files = 0;
    for (const std::string& name : quotedIn(page)) {
        if (!name.starts_with("kzattribute/") && !name.starts_with("tests/")) continue;
        EXPECT_TRUE(std::filesystem::exists(root / name)) << name;
        ++files;
    }
    EXPECT_EQ(files, 3);
    const std::vector<std::string> quoted = quotedIn(page);
    std::istringstream words(contentOf(root / "kzattribute/res/resource.h"));
    int ids = 0;
    for (std::string word; words >> word;) {
        if (!word.starts_with("IDS_") && !word.starts_with("IDD_")) continue;
        EXPECT_EQ(std::count(quoted.begin(), quoted.end(), word), 1) << word;
        ++ids;
    }
    EXPECT_EQ(ids, 29 + 2);
}

TEST_P(Languages, CarriesEveryResourceThatHoldsText) {
    for (const UINT kind : {kMenus, kDialogs, kAccelerators})
        EXPECT_EQ(idsOf(localized, kind), idsOf(own, kind));
    EXPECT_EQ(idsOf(stringsOf(localized)), idsOf(stringsOf(own)));
    EXPECT_EQ(stringsOf(own).size(), 29U);
}

// "/" separates the parts of an entry's path; a command that asks for more says so with three dots.
TEST_P(Languages, KeepsWhatTextsMeanToThePlugIn) {
    const auto translated = stringsOf(localized);
    for (const auto& [id, english] : stringsOf(own)) {
        SCOPED_TRACE(english);
        const std::string& text = translated.at(id);
        EXPECT_NE(text, english);
        EXPECT_EQ(placeholdersOf(text), placeholdersOf(english));
        EXPECT_EQ(text.find('/'), std::string::npos);
        EXPECT_EQ(text.ends_with("..."), english.ends_with("..."));
        EXPECT_FALSE(text.starts_with(' ') || text.ends_with(' '));
    }
}

TEST_P(Languages, HasTheSameControlsInItsDialogs) {
    forEachDialog([](const Dialog& original, const Dialog& translated) {
        for (std::size_t i = 0; i < original.controls.size(); ++i) {
            EXPECT_EQ(translated.controls[i].id, original.controls[i].id);
            EXPECT_EQ(translated.controls[i].className, original.controls[i].className);
            EXPECT_EQ(translated.controls[i].style, original.controls[i].style);
            EXPECT_EQ(placeholdersOf(utf8(translated.controls[i].text)),
                      placeholdersOf(utf8(original.controls[i].text)));
        }
        EXPECT_EQ(GetWindowLongW(translated.window, GWL_STYLE), GetWindowLongW(original.window, GWL_STYLE));
    });
}

TEST_P(Languages, PlacesControlsInsideTheDialogAndApart) {
    forEachDialog([](const Dialog&, const Dialog& translated) {
        for (const Control& control : translated.controls) {
            RECT both{};
            IntersectRect(&both, &control.rect, &translated.client);
            EXPECT_TRUE(EqualRect(&both, &control.rect)) << utf8(control.text);
            for (const Control& other : translated.controls) {
                if (other.id == control.id) continue;
                EXPECT_FALSE(IntersectRect(&both, &control.rect, &other.rect)) << utf8(control.text);
            }
        }
    });
}

TEST_P(Languages, HasRoomForEachText) {
    forEachDialog([](const Dialog&, const Dialog& translated) {
        for (const Control& control : translated.controls) {
            if (control.className != "Button") continue;
            expectToFit(control, shownOf(control.text), control.rect.right - control.rect.left,
                        control.rect.bottom - control.rect.top);
        }
        const Control& any = translated.controls.back();
        const SIZE caption = test::textSize(any.window, textOf(translated.window));
        EXPECT_LE(caption.cx + kLeastCaptionButtons, translated.client.right);
    });
}

// The sheet makes its check box itself, 136 by 14 pixels.
TEST_P(Languages, HasRoomForTheCheckBoxOfTheSheet) {
    WCHAR text[128] = {};
    ASSERT_GT(LoadStringW(localized, 4103, text, 128), 0);
    const Dialog page(localized, 4096);
    ASSERT_EQ(page.controls.size(), 3U);
    expectToFit(page.controls[1], text, 136, 14);
}

TEST_P(Languages, GivesEachControlOfADialogALetterOfItsOwn) {
    forEachDialog([](const Dialog&, const Dialog& translated) {
        std::string letters;
        for (const Control& control : translated.controls) shownOf(control.text, &letters);
        EXPECT_EQ(std::set<char>(letters.begin(), letters.end()).size(), letters.size()) << letters;
    });
}
