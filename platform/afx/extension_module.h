// Extension modules: libraries that put their resources into the framework's search chain.
//
// A module keeps one AFX_EXTENSION_MODULE for its life. On attach it initialises the record, may point hResource at
// a localized module, and allocates a CDynLinkLibrary, which links it into the chain. On detach
// AfxTermExtensionModule takes every CDynLinkLibrary of that record out of the chain and deletes it.
//
// The chain is searched from the newest module to the oldest. Within one module the localized resources come first
// and the module's own second, so whatever a localized module lacks is found in the module itself: for strings this
// holds id by id, not table block by table block.
#pragma once

#include "platform/winapi.h"

struct CRuntimeClass;
class COleObjectFactory;

// One process-wide list of what a loading module registered before its entry point ran.
template <class T>
struct AFX_MODULE_LIST {
    T* m_pHead = nullptr;
};

struct AFX_MODULE_STATE {
    AFX_MODULE_LIST<CRuntimeClass> m_classList;
    AFX_MODULE_LIST<COleObjectFactory> m_factoryList;
    CRuntimeClass* m_pClassInit = nullptr;
    COleObjectFactory* m_pFactoryInit = nullptr;
};

AFX_MODULE_STATE& AfxGetModuleState();

// The preamble of every extension module's entry point: moves the module state's class and factory lists into its
// initialisation slots and empties the lists, so that AfxInitExtensionModule finds just the loading module's own.
void AfxPrepareExtensionModule();

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
    CRuntimeClass* pFirstSharedClass;
    COleObjectFactory* pFirstSharedFactory;
};

// Fills the record: both handles are the module's own. Returns zero (record untouched) for a null instance.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE instance);

// Unlinks and deletes the record's CDynLinkLibrary objects, and clears the record. With `all`, takes out whatever
// still belongs to the module's handle.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all = FALSE);

class CDynLinkLibrary {
public:
    // Links itself at the head of the chain. System modules are searched after all others.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system = FALSE);
    virtual ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    HMODULE m_hModule;
    HMODULE m_hResource;
    CRuntimeClass* m_pFirstSharedClass;
    COleObjectFactory* m_pFirstSharedFactory;
    bool m_bSystem;
    CDynLinkLibrary* m_pNextDLL;
};

// The first module of the chain that holds the resource; the program itself when none does.
HMODULE AfxFindResourceHandle(LPCWSTR name, LPCWSTR type);

// The text of a string id, searched id by id along the chain. Copies at most size - 1 characters and a NUL; returns
// the number of characters copied, 0 (and an empty string) when no module has the id.
int AfxLoadString(UINT id, LPWSTR buffer, UINT size);
