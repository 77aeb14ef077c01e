#include "platform/afx/extension_module.h"

#include <algorithm>
#include <climits>
#include <utility>

namespace {

// Newest first. A plain pointer, ready before any static initialiser of a library that links itself
// into the chain.
CDynLinkLibrary* newest_library = nullptr;

// The first module handle, in search order, of which the question holds: localized resources before the
// module's own, system modules after all others, the program last. Null when it holds of none.
template <class Question>
HMODULE first_module_that(Question holds) {
    for (const bool system : {false, true}) {
        for (const CDynLinkLibrary* at = newest_library; at != nullptr; at = at->m_pNextDLL) {
            if (at->m_bSystem != system) continue;
            if (at->m_hResource != nullptr && holds(at->m_hResource)) return at->m_hResource;
            if (at->m_hModule != at->m_hResource && holds(at->m_hModule)) return at->m_hModule;
        }
    }
    HMODULE program = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, nullptr, &program);
    return holds(program) ? program : nullptr;
}

}  // namespace

AFX_MODULE_STATE& AfxGetModuleState() {
    static AFX_MODULE_STATE state;
    return state;
}

void AfxPrepareExtensionModule() {
    AFX_MODULE_STATE& state = AfxGetModuleState();
    state.m_pClassInit = std::exchange(state.m_classList.m_pHead, nullptr);
    state.m_pFactoryInit = std::exchange(state.m_factoryList.m_pHead, nullptr);
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE instance) {
    if (instance == nullptr) {
        // The module does not come, so what was registered before it goes back into its lists.
        AFX_MODULE_STATE& refused = AfxGetModuleState();
        if (refused.m_pClassInit) refused.m_classList.m_pHead = std::exchange(refused.m_pClassInit, nullptr);
        if (refused.m_pFactoryInit)
            refused.m_factoryList.m_pHead = std::exchange(refused.m_pFactoryInit, nullptr);
        return FALSE;
    }
    if (record.bInitialized) return TRUE;
    AFX_MODULE_STATE& state = AfxGetModuleState();
    record.bInitialized = TRUE;
    record.hModule = instance;
    record.hResource = instance;
    record.pFirstSharedClass =
        std::exchange(state.m_classList.m_pHead, std::exchange(state.m_pClassInit, nullptr));
    record.pFirstSharedFactory =
        std::exchange(state.m_factoryList.m_pHead, std::exchange(state.m_pFactoryInit, nullptr));
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) {
    for (CDynLinkLibrary* at = newest_library; at != nullptr;) {
        CDynLinkLibrary* next = at->m_pNextDLL;
        if (at->belongs_to(record) || (all && record.hModule != nullptr && at->m_hModule == record.hModule))
            delete at;
        at = next;
    }
    record = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system)
    : m_hModule(record.hModule),
      m_hResource(record.hResource),
      m_pFirstSharedClass(record.pFirstSharedClass),
      m_pFirstSharedFactory(record.pFirstSharedFactory),
      m_bSystem(system != FALSE),
      m_pNextDLL(std::exchange(newest_library, this)),
      m_record(&record) {}

CDynLinkLibrary::~CDynLinkLibrary() {
    for (CDynLinkLibrary** link = &newest_library; *link != nullptr; link = &(*link)->m_pNextDLL) {
        if (*link != this) continue;
        *link = m_pNextDLL;
        return;
    }
}

HMODULE AfxFindResourceHandle(LPCWSTR name, LPCWSTR type) {
    const HMODULE found =
        first_module_that([&](HMODULE module) { return FindResourceW(module, name, type) != nullptr; });
    if (found != nullptr) return found;
    HMODULE program = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, nullptr, &program);
    return program;
}

int AfxLoadString(UINT id, LPWSTR buffer, UINT size) {
    // Size 0 means something else to LoadStringW: it would store a pointer.
    if (buffer == nullptr || size == 0) return 0;
    buffer[0] = 0;
    const int capacity = static_cast<int>(std::min<UINT>(size, INT_MAX));
    int length = 0;
    first_module_that([&](HMODULE module) {
        length = LoadStringW(module, id, buffer, capacity);
        return length > 0;
    });
    return length;
}
