// Extension modules: libraries that put their resources into the framework's search chain.
//
// A module keeps one AFX_EXTENSION_MODULE for its life. On attach it initialises the record, may point
// hResource at a localized module, and allocates a CDynLinkLibrary, which links it into the chain. On detach
// AfxTermExtensionModule takes every CDynLinkLibrary of that record out of the chain and deletes it.
//
//   static AFX_EXTENSION_MODULE record;
//
//   extern "C" KZ_EXPORT BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
//       if (reason == DLL_PROCESS_ATTACH) {
//           if (!AfxInitExtensionModule(record, instance)) return 0;
//           new (std::nothrow) CDynLinkLibrary(record);     // belongs to the chain
//       } else if (reason == DLL_PROCESS_DETACH) {
//           AfxTermExtensionModule(record);
//       }
//       return 1;
//   }
//
// A library that the program links can do the same in a static initialiser; GetModuleHandleExW with the
// address of anything of its own gives the instance.
//
// The chain is searched from the newest module to the oldest, system modules after all others, the program
// last. Within one module the localized resources come first and the module's own second, so whatever a
// localized module lacks is found in the module itself: for strings this holds id by id, not table block by
// table block.
//
// The chain belongs to the process, and to the thread that loads modules and runs the windows: it
// is not locked.
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

// The preamble of an extension module's entry point: moves the module state's class and factory lists into
// its initialisation slots and empties the lists, so that what is registered from now on is the loading
// module's own. AfxInitExtensionModule moves that into the record and puts the earlier lists back.
void AfxPrepareExtensionModule();

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
    CRuntimeClass* pFirstSharedClass;
    COleObjectFactory* pFirstSharedFactory;
};

// Fills the record: both handles are the module's own. Returns zero (record untouched) for a null instance; a
// record that is initialised already stays as it is.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE instance);

// Unlinks and deletes the record's CDynLinkLibrary objects, and clears the record. With `all`, takes out
// whatever still belongs to the module's handle, linked through other records too.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all = FALSE);

class CDynLinkLibrary {
public:
    // Links itself at the head of the chain, with the record's handles as they are now. Allocated with new:
    // the chain deletes it when the record is terminated, unless its holder does so before.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& record, BOOL system = FALSE);
    virtual ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    bool belongs_to(const AFX_EXTENSION_MODULE& record) const { return m_record == &record; }

    HMODULE m_hModule;
    HMODULE m_hResource;
    CRuntimeClass* m_pFirstSharedClass;
    COleObjectFactory* m_pFirstSharedFactory;
    bool m_bSystem;
    CDynLinkLibrary* m_pNextDLL;

private:
    const AFX_EXTENSION_MODULE* m_record;
};

// The first module of the chain that holds the resource; the program itself when none does.
HMODULE AfxFindResourceHandle(LPCWSTR name, LPCWSTR type);

// The text of a string id, searched id by id along the chain. Copies at most size - 1 characters and a NUL;
// returns the number of characters copied, 0 (and an empty string) when no module has the id.
int AfxLoadString(UINT id, LPWSTR buffer, UINT size);
