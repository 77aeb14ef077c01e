// The entry point, called as a loader calls it.
#include <gtest/gtest.h>

#include "kzutil/file_path.h"
#include "platform/afx/extension_module.h"
#include "platform/afx/object.h"
#include "support/failing_new.h"
#include "support/temp_folder.h"
#include "viewfilter/view_attr_filter.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace {

constexpr UINT kSelectSimilarObjects = 4180;

std::string textOf(UINT id) {
    AString text;
    text.LoadStringW(id);
    return text.toUtf8();
}

// A base folder with the German module, so that a successful attach shows: this program has no texts of its
// own.
class Entry : public testing::Test {
protected:
    HMODULE self = nullptr;
    test::TempFolder base;

    void SetUp() override {
        constexpr DWORD flags =
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
        ASSERT_TRUE(GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&DllMain), &self));
        const std::string program = AFilePath().getPath().toUtf8();
        std::filesystem::create_directories(base.path() / "Plugins");
        std::filesystem::copy_file(std::filesystem::path(std::u8string(program.begin(), program.end())) /
                                       "Languages/de/kzattributeloc.dll",
                                   base.path() / "Plugins/kzattributeloc.dll");
        AFilePath::setBaseFolder(base.wide());
    }
    void TearDown() override { AFilePath::setBaseFolder(AString()); }
};

}  // namespace

TEST_F(Entry, AttachLinksTheLocalizedTextsAndDetachTakesThemBack) {
    EXPECT_EQ(textOf(kSelectSimilarObjects), "");
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    EXPECT_EQ(textOf(kSelectSimilarObjects), "Ähnliche Objekte auswählen");
    EXPECT_EQ(DllMain(self, DLL_PROCESS_DETACH, nullptr), 1);
    EXPECT_EQ(textOf(kSelectSimilarObjects), "");
}

TEST_F(Entry, AttachTellsTheHostHowToCopyFiltersAndDetachTakesItBack) {
    const AViewAttrFilter filter;
    EXPECT_EQ(copyViewFilter(&filter), nullptr);
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    const std::unique_ptr<AViewFilter> copy = copyViewFilter(&filter);
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(sameViewFilter(copy.get(), &filter));
    DllMain(self, DLL_PROCESS_DETACH, nullptr);
    EXPECT_EQ(copyViewFilter(&filter), nullptr);
}

TEST_F(Entry, AttachFailsWhenTheExtensionModuleCannotBeInitialised) {
    EXPECT_EQ(DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr), 0);
    EXPECT_EQ(textOf(kSelectSimilarObjects), "") << "nothing else was done";
}

TEST_F(Entry, ThreadsComingAndGoingDoNothing) {
    EXPECT_EQ(DllMain(self, DLL_THREAD_ATTACH, nullptr), 1);
    EXPECT_EQ(textOf(kSelectSimilarObjects), "");
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    EXPECT_EQ(DllMain(self, DLL_THREAD_DETACH, nullptr), 1);
    EXPECT_EQ(textOf(kSelectSimilarObjects), "Ähnliche Objekte auswählen");
    DllMain(self, DLL_PROCESS_DETACH, nullptr);
}

TEST_F(Entry, AttachSucceedsWhicheverAllocationFails) {
    bool withTexts = false;
    bool withoutTexts = false;
    for (int n = 1;; ++n) {
        bool happened = false;
        BOOL attached = 0;
        {
            const AllocationFailure failing = failAllocation(n);
            attached = DllMain(self, DLL_PROCESS_ATTACH, nullptr);
            happened = failing.happened();
        }
        EXPECT_EQ(attached, 1) << "allocation " << n;
        (textOf(kSelectSimilarObjects).empty() ? withoutTexts : withTexts) = true;
        EXPECT_EQ(DllMain(self, DLL_PROCESS_DETACH, nullptr), 1);
        if (!happened) break;
    }
    EXPECT_TRUE(withTexts);
    EXPECT_TRUE(withoutTexts);
}

TEST_F(Entry, TheHostsListOfClassesOutlivesAttachAndRefusal) {
    CRuntimeClass registered{"ATest", 1, 0, nullptr, nullptr};
    AFX_MODULE_STATE& state = AfxGetModuleState();
    state.m_classList.m_pHead = &registered;
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    EXPECT_EQ(state.m_classList.m_pHead, &registered);
    EXPECT_EQ(state.m_pClassInit, nullptr);
    DllMain(self, DLL_PROCESS_DETACH, nullptr);
    EXPECT_EQ(DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr), 0);
    EXPECT_EQ(state.m_classList.m_pHead, &registered);
    state.m_classList.m_pHead = nullptr;
}

TEST_F(Entry, TheModuleStandsInTheChainOfOrdinaryModules) {
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    {
        AFX_EXTENSION_MODULE record{};
        ASSERT_TRUE(AfxInitExtensionModule(record, self));
        const CDynLinkLibrary newer(record);
        const CDynLinkLibrary* linked = newer.m_pNextDLL;
        ASSERT_NE(linked, nullptr);
        EXPECT_EQ(linked->m_hModule, self);
        EXPECT_NE(linked->m_hResource, self) << "the localized module's";
        EXPECT_FALSE(linked->m_bSystem) << "system modules come after all others";
    }
    DllMain(self, DLL_PROCESS_DETACH, nullptr);
}

TEST_F(Entry, DetachTakesOutNothingButItsOwnLink) {
    struct Counted : CDynLinkLibrary {
        Counted(AFX_EXTENSION_MODULE& record, int& left) : CDynLinkLibrary(record), alive(left) { ++alive; }
        ~Counted() override { --alive; }
        int& alive;
    };
    int alive = 0;
    AFX_EXTENSION_MODULE record{};
    ASSERT_TRUE(AfxInitExtensionModule(record, self));
    auto* other = new Counted(record, alive);  // another link of the same module
    ASSERT_EQ(DllMain(self, DLL_PROCESS_ATTACH, nullptr), 1);
    DllMain(self, DLL_PROCESS_DETACH, nullptr);
    EXPECT_EQ(alive, 1);
    if (alive == 1) delete other;
}
