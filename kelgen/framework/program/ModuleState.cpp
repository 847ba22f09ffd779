// ModuleState.cpp: module states, extension libraries and the framework's process-wide locks.
#include <kelgen/framework/program/ModuleState.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/WinApp.h>

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CCmdTarget)

namespace {

struct GlobalLocks
{
    GlobalLocks()
    {
        for (CRITICAL_SECTION& section : sections)
            InitializeCriticalSection(&section);
    }

    CRITICAL_SECTION sections[CRIT_MAX];
};

// Libraries come and go until the very end of the process, so the locks and the program's state are never destroyed.
CRITICAL_SECTION* GlobalLock(int lock)
{
    static GlobalLocks& locks = *new GlobalLocks;
    if (lock < 0 || lock >= CRIT_MAX)
        AfxThrowInvalidArgException();
    return &locks.sections[lock];
}

thread_local AFX_MODULE_STATE* threadModuleState = nullptr;

class GlobalLockScope
{
public:
    explicit GlobalLockScope(int lock) : m_lock(lock) { AfxLockGlobals(lock); }
    ~GlobalLockScope() { AfxUnlockGlobals(m_lock); }
    GlobalLockScope(const GlobalLockScope&) = delete;
    GlobalLockScope& operator=(const GlobalLockScope&) = delete;

private:
    int m_lock;
};

void DeleteLibrariesOf(AFX_MODULE_STATE* state, HMODULE module)
{
    const GlobalLockScope scope(CRIT_DYNLINKLIST);
    for (CDynLinkLibrary* library = state->m_libraryList; library;) {
        CDynLinkLibrary* const next = library->m_pNextDLL;
        if (library->m_hModule == module)
            delete library;
        library = next;
    }
}

}  // namespace

void AFX_LIBRARY_LIST::AddHead(CDynLinkLibrary* library)
{
    library->m_pNextDLL = m_pHead;
    m_pHead = library;
}

BOOL AFX_LIBRARY_LIST::Remove(CDynLinkLibrary* library)
{
    CDynLinkLibrary** link = &m_pHead;
    while (*link && *link != library)
        link = &(*link)->m_pNextDLL;
    if (!*link)
        return FALSE;
    *link = library->m_pNextDLL;
    library->m_pNextDLL = nullptr;
    return TRUE;
}

AFX_MODULE_STATE::AFX_MODULE_STATE(BOOL isLibrary, HINSTANCE instance, BOOL isSystem)
    : m_hCurrentInstanceHandle(instance), m_hCurrentResourceHandle(instance), m_bDLL(isLibrary != FALSE), m_bSystem(isSystem != FALSE)
{}

AFX_MODULE_STATE* AfxGetAppModuleState()
{
    static AFX_MODULE_STATE& program = *new AFX_MODULE_STATE(FALSE, GetModuleHandleA(nullptr));
    return &program;
}

AFX_MODULE_STATE* AfxGetModuleState()
{
    return threadModuleState ? threadModuleState : AfxGetAppModuleState();
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state)
{
    AFX_MODULE_STATE* const previous = threadModuleState;
    threadModuleState = state;
    return previous;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) : m_pPrevious(AfxSetModuleState(state)) {}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2()
{
    AfxSetModuleState(m_pPrevious);
}

HINSTANCE AfxGetInstanceHandle()
{
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AfxGetResourceHandle()
{
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}

void AfxSetResourceHandle(HINSTANCE resources)
{
    AfxGetModuleState()->m_hCurrentResourceHandle = resources;
}

CWinApp* AfxGetApp()
{
    return AfxGetModuleState()->m_pCurrentWinApp;
}

LPCSTR AfxGetAppName()
{
    return AfxGetModuleState()->m_lpszCurrentAppName;
}

HINSTANCE kelgen::detail::ModuleOf(const void* address)
{
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, static_cast<LPCSTR>(address),
                       &module);
    return module;
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& extension, HMODULE module)
{
    if (extension.bInitialized)
        return TRUE;
    extension.bInitialized = TRUE;
    extension.hModule = module;
    extension.hResource = module;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& extension, BOOL all)
{
    if (!extension.bInitialized)
        return;
    DeleteLibrariesOf(AfxGetModuleState(), extension.hModule);
    if (all)
        DeleteLibrariesOf(AfxGetAppModuleState(), extension.hModule);
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& extension, BOOL isSystem) : CDynLinkLibrary(extension.hModule, extension.hResource)
{
    m_bSystem = isSystem;
}

CDynLinkLibrary::CDynLinkLibrary(HINSTANCE module, HINSTANCE resources)
    : m_hModule(module), m_hResource(resources), m_bSystem(FALSE), m_pState(AfxGetModuleState())
{
    const GlobalLockScope scope(CRIT_DYNLINKLIST);
    m_pState->m_libraryList.AddHead(this);
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    const GlobalLockScope scope(CRIT_DYNLINKLIST);
    m_pState->m_libraryList.Remove(this);
}

void AfxLockGlobals(int lock)
{
    EnterCriticalSection(GlobalLock(lock));
}

void AfxUnlockGlobals(int lock)
{
    LeaveCriticalSection(GlobalLock(lock));
}
