// The framework's resource chain.
#include "platform/afx/extension_module.h"

#include "platform/afx/object.h"
#include "tests/platform/module_support.h"
#include "tests/platform/modules/linked.h"

namespace {

Wide chain_string(UINT id) {
    WCHAR buffer[256];
    const int length = AfxLoadString(id, buffer, 256);
    EXPECT_EQ(buffer[length], 0);
    return Wide(buffer, static_cast<std::size_t>(length));
}

HMODULE program() {
    HMODULE handle = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, nullptr, &handle);
    return handle;
}

// A module in the chain for the length of a scope, by a record of the test's own.
class Linked {
public:
    explicit Linked(HMODULE module, HMODULE resources = nullptr, BOOL system = FALSE) {
        EXPECT_TRUE(AfxInitExtensionModule(record, module));
        if (resources != nullptr) record.hResource = resources;
        library = new CDynLinkLibrary(record, system);
    }
    ~Linked() { AfxTermExtensionModule(record); }
    Linked(const Linked&) = delete;
    Linked& operator=(const Linked&) = delete;

    AFX_EXTENSION_MODULE record = {};
    CDynLinkLibrary* library;
};

TEST(ExtensionModule, RecordHoldsTheModuleTwice) {
    const LoadedModule module(load_native("sample"));
    AFX_EXTENSION_MODULE record = {};
    EXPECT_TRUE(AfxInitExtensionModule(record, module));
    EXPECT_TRUE(record.bInitialized);
    EXPECT_EQ(record.hModule, module);
    EXPECT_EQ(record.hResource, module);
}

TEST(ExtensionModule, NullInstanceLeavesTheRecordUntouched) {
    AFX_EXTENSION_MODULE record = {};
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
    EXPECT_FALSE(record.bInitialized);
}

TEST(ExtensionModule, InitialisedRecordStaysAsItIs) {
    const LoadedModule module(load_native("sample"));
    AFX_EXTENSION_MODULE record = {};
    ASSERT_TRUE(AfxInitExtensionModule(record, module));
    record.hResource = program();
    EXPECT_TRUE(AfxInitExtensionModule(record, program()));
    EXPECT_EQ(record.hModule, module);
    EXPECT_EQ(record.hResource, program());
}

TEST(ExtensionModule, TerminatingClearsTheRecord) {
    const LoadedModule module(load_native("sample"));
    AFX_EXTENSION_MODULE record = {};
    ASSERT_TRUE(AfxInitExtensionModule(record, module));
    AfxTermExtensionModule(record);
    EXPECT_FALSE(record.bInitialized);
    EXPECT_EQ(record.hModule, nullptr);
    EXPECT_EQ(record.hResource, nullptr);
}

TEST(ExtensionModule, RecordTakesTheClassesRegisteredSinceThePreamble) {
    const LoadedModule module(load_native("sample"));
    AFX_MODULE_STATE& state = AfxGetModuleState();
    CRuntimeClass earlier = {"Earlier", 0, 0, nullptr, nullptr};
    CRuntimeClass own = {"Own", 0, 0, nullptr, nullptr};
    CRuntimeClass* const before = std::exchange(state.m_classList.m_pHead, &earlier);

    AfxPrepareExtensionModule();
    EXPECT_EQ(state.m_classList.m_pHead, nullptr);
    EXPECT_EQ(state.m_pClassInit, &earlier);
    state.m_classList.m_pHead = &own;
    AFX_EXTENSION_MODULE record = {};
    ASSERT_TRUE(AfxInitExtensionModule(record, module));
    EXPECT_EQ(record.pFirstSharedClass, &own);
    EXPECT_EQ(state.m_classList.m_pHead, &earlier);

    state.m_classList.m_pHead = before;
}

TEST(ResourceChain, EndsWithTheProgram) {
    EXPECT_EQ(chain_string(400), _T("Program"));
    EXPECT_EQ(chain_string(100), _T("The program's hundred"));
    EXPECT_EQ(chain_string(5000), _T(""));
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(99), _T("NOTYPE")), program());
}

TEST(ResourceChain, HoldsALibraryThatLinkedItselfBeforeMain) {
    ASSERT_NE(linked_record().hModule, nullptr);
    EXPECT_NE(linked_record().hModule, program());
    EXPECT_EQ(chain_string(300), _T("Linked"));
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(300 / 16 + 1), MAKEINTRESOURCEW(6)),
              linked_record().hModule);
}

TEST(ResourceChain, FallsBackFromALocalizedModuleIdById) {
    const LoadedModule module(load_native("sample"));
    const LoadedModule localized(load_resources(_T("localized.dll")));
    const Linked linked(module, localized);
    EXPECT_EQ(chain_string(100), _T("Hundert"));
    EXPECT_EQ(chain_string(101), _T("Hundred and one"));  // in the same block of sixteen as 100
    EXPECT_EQ(chain_string(200), _T("Two hundred"));
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(8), _T("KZTYPE")), localized);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(7), _T("KZTYPE")), module);
}

TEST(ResourceChain, FallsBackFromALocalizedModuleWithoutStrings) {
    const LoadedModule module(load_native("sample"));
    const LoadedModule localized(load_resources(_T("no_strings.dll")));
    const Linked linked(module, localized);
    EXPECT_EQ(chain_string(100), _T("Hundred"));
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(9), _T("KZTYPE")), localized);
}

TEST(ResourceChain, AsksTheNewestModuleFirst) {
    const LoadedModule older(load_native("sample"));
    const LoadedModule newer(load_resources(_T("localized.dll")));
    const Linked first(older);
    {
        const Linked second(newer);
        EXPECT_EQ(chain_string(100), _T("Hundert"));
    }
    EXPECT_EQ(chain_string(100), _T("Hundred"));
}

TEST(ResourceChain, AsksSystemModulesAfterAllOthers) {
    const LoadedModule older(load_native("sample"));
    const LoadedModule newer(load_resources(_T("localized.dll")));
    const Linked first(older);
    const Linked system(newer, nullptr, TRUE);
    EXPECT_EQ(chain_string(100), _T("Hundred"));
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(8), _T("KZTYPE")), newer);
}

TEST(ResourceChain, LosesALibraryThatIsDeletedByItsHolder) {
    const LoadedModule module(load_native("sample"));
    const Linked linked(module);
    EXPECT_EQ(chain_string(200), _T("Two hundred"));
    delete linked.library;
    EXPECT_EQ(chain_string(200), _T(""));
}

TEST(ResourceChain, TerminatingOneRecordKeepsAnotherOfTheSameModuleUnlessAllAreMeant) {
    const LoadedModule module(load_native("sample"));
    Linked first(module);
    Linked second(module);
    AfxTermExtensionModule(first.record);
    EXPECT_EQ(chain_string(200), _T("Two hundred"));

    ASSERT_TRUE(AfxInitExtensionModule(first.record, module));
    AfxTermExtensionModule(first.record, TRUE);
    EXPECT_EQ(chain_string(200), _T(""));
}

TEST(ResourceChain, HoldsAModuleForAsLongAsItIsLoaded) {
    {
        const LoadedModule module(load_native("chained"));
        EXPECT_EQ(chain_string(100), _T("Hundert"));
        EXPECT_EQ(chain_string(101), _T("Hundred and one"));
    }
    EXPECT_EQ(chain_string(100), _T("The program's hundred"));
    EXPECT_EQ(chain_string(101), _T(""));
}

TEST(ResourceChain, CutsAStringToTheBuffer) {
    WCHAR buffer[8] = _T("#######");
    EXPECT_EQ(AfxLoadString(400, buffer, 4), 3);
    EXPECT_EQ(Wide(buffer), _T("Pro"));
    EXPECT_EQ(buffer[4], _T('#'));
}

TEST(ResourceChain, WritesNothingIntoABufferWithoutRoom) {
    WCHAR buffer[8] = _T("#######");
    EXPECT_EQ(AfxLoadString(400, buffer, 0), 0);
    EXPECT_EQ(Wide(buffer), _T("#######"));
    EXPECT_EQ(AfxLoadString(400, nullptr, 8), 0);
}

}  // namespace
