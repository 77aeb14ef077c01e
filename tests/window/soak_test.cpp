// A thousand random actions leave no window, menu, brush, bitmap or memory behind.
#include "window/window_fixture.h"

#include <psapi.h>

#include <random>

namespace test {

namespace {

using namespace app::window;

// Small numbers are handles of the system's tables, whatever their generation; where the system counts, it is asked.
int countOf(DWORD kind, bool (*isOne)(ULONG_PTR)) {
    if (const DWORD counted = GetGuiResources(GetCurrentProcess(), kind)) return static_cast<int>(counted);
    int count = 0;
    for (ULONG_PTR handle = 1; handle < 0x10000; ++handle) count += isOne(handle) ? 1 : 0;
    return count;
}

int countGdiObjects() {
    return countOf(GR_GDIOBJECTS,
                   [](ULONG_PTR handle) { return GetObjectType(reinterpret_cast<HGDIOBJ>(handle)) != 0; });
}

int countUserObjects() {
    return countOf(GR_USEROBJECTS, [](ULONG_PTR handle) {
        return IsMenu(reinterpret_cast<HMENU>(handle)) != 0 || IsWindow(reinterpret_cast<HWND>(handle)) != 0;
    });
}

std::size_t memoryInUse() {
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

class Soak : public WindowTest {
protected:
    std::minstd_rand random{17};
    std::string files[3];

    int upTo(int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }
    double place(int end) { return upTo(end * 10) / 10.0; }
    CPoint pixel() { return {upTo(500), upTo(400)}; }

    void runTool() {
        const bool agrees = upTo(2) == 0;
        driver::Driver acts([agrees](driver::Dialog& dialog) {
            dialog.press(agrees ? "OK" : "Cancel");
            return true;
        });
        window.strip().choose(upTo(static_cast<int>(window.strip().swatches().size())));
        window.perform(kFirstTool + upTo(9));
    }

    void act() {
        constexpr int kKeys[] = {VK_LEFT,   VK_DOWN,  VK_F6,   VK_TAB, VK_RETURN,
                                 VK_ESCAPE, VK_SPACE, VK_HOME, 'L',    VK_F7};
        constexpr int kCommands[] = {kUndo, kRedo,     kSelectAll, kSelectNone, kZoomIn, kZoomOut,
                                     kFit,  kFullSize, kShowAll,   kCopyScript, kAbout};
        switch (upTo(13)) {
            case 0:
                return click(place(100), place(80), upTo(2) ? MK_SHIFT : 0);
            case 1:
                return band(place(100), place(80), place(100), place(80), upTo(2) ? MK_SHIFT : 0);
            case 2:
                return wheel(pixel(), upTo(7) - 3, upTo(3) == 0 ? MK_SHIFT : 0);
            case 3:
                return key(kKeys[upTo(std::size(kKeys))]);
            case 4:
                return window.perform(kCommands[upTo(std::size(kCommands))]);
            case 5:
            case 6:
                return runTool();
            case 7:
                return clickOn(window.layers(),
                               upTo(2) ? window.layers().eyeOf(upTo(2)) : window.layers().lockOf(upTo(2)));
            case 8:
                return window.MoveWindow(0, 0, 640 + upTo(200), 520 + upTo(150));
            case 9:
                return static_cast<void>(upTo(4) == 0 && window.open(files[upTo(3)]));
            case 10: {
                user.choice = upTo(2) ? "Hide This Color" : "";
                window.strip().SendMessage(WM_CONTEXTMENU, 0, MAKELPARAM(-1, -1));
                return;
            }
            case 11:
                return drag(pixel(), pixel());
            default:
                window.canvas().UpdateWindow();
        }
    }

    // The same every time: what is left over from actions is not among it.
    void comeToRest() {
        user.told.clear();
        window.MoveWindow(0, 0, 700, 560);
        window.open(files[0]);
        window.lines().record().clear();
        paint();
    }
};

TEST_F(Soak, AThousandRandomActionsLeaveNothingBehind) {
    files[0] = write("park.svg", kPark);
    files[1] = std::string(KZ_SAMPLES) + "/harbour.svg";
    files[2] = write("broken.svg", "<svg");
    for (int i = 0; i < 150; ++i) act();
    comeToRest();
    const int gdi = countGdiObjects(), users = countUserObjects();
    const std::size_t memory = memoryInUse();
    ASSERT_GT(gdi, 0);
    ASSERT_GT(users, 0);
    for (int i = 0; i < 1000; ++i) act();
    comeToRest();
    EXPECT_LE(countGdiObjects(), gdi + 4) << "a font or brush that the system caches";
    EXPECT_LE(countUserObjects(), users + 4);
    EXPECT_LE(memoryInUse(), memory + (std::size_t{16} << 20));
    RecordProperty("gdi", countGdiObjects());
    RecordProperty("memory", static_cast<int>(memoryInUse() >> 20));
}

}  // namespace

}  // namespace test
