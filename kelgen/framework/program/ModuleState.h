// ModuleState.h: what each module (program or library) knows of itself, its extension libraries, and the look-up of resources.
#pragma once

#include <kelgen/framework/program/CmdTarget.h>

class CDynLinkLibrary;
class CWinApp;
class CWinThread;

/// The extension libraries of a module, the latest first. Guarded by CRIT_DYNLINKLIST.
///
///     AfxLockGlobals(CRIT_DYNLINKLIST);
///     for (CDynLinkLibrary* library = AfxGetModuleState()->m_libraryList; library; library = library->m_pNextDLL)
///         Look(library->m_hResource);
///     AfxUnlockGlobals(CRIT_DYNLINKLIST);
class KELGEN_FRAMEWORK_API AFX_LIBRARY_LIST
{
public:
    /// Lists @p library before the others; it is not owned.
    void AddHead(CDynLinkLibrary* library);
    /// TRUE when @p library was listed.
    BOOL Remove(CDynLinkLibrary* library);
    /// The latest; null if there is none.
    CDynLinkLibrary* GetHead() const { return m_pHead; }
    /// Whether there is none.
    BOOL IsEmpty() const { return m_pHead == nullptr; }
    /// The latest, so that a walk reads as above; null if there is none.
    operator CDynLinkLibrary*() const { return m_pHead; }

private:
    CDynLinkLibrary* m_pHead = nullptr;
};

/// The state of one module.
class KELGEN_FRAMEWORK_API AFX_MODULE_STATE
{
public:
    /// @p instance becomes the module's instance and resource handle.
    AFX_MODULE_STATE(BOOL isLibrary, HINSTANCE instance, BOOL isSystem = FALSE);
    ~AFX_MODULE_STATE() = default;
    AFX_MODULE_STATE(const AFX_MODULE_STATE&) = delete;
    AFX_MODULE_STATE& operator=(const AFX_MODULE_STATE&) = delete;

    CWinApp* m_pCurrentWinApp = nullptr;    ///< The module's application object; null before it is made.
    HINSTANCE m_hCurrentInstanceHandle;     ///< What AfxGetInstanceHandle returns.
    HINSTANCE m_hCurrentResourceHandle;     ///< What AfxGetResourceHandle returns.
    LPCSTR m_lpszCurrentAppName = nullptr;  ///< The application's name; its memory is not owned.
    BYTE m_bDLL;                            ///< Whether the module is a library.
    BYTE m_bSystem;                         ///< Whether its resources come last in look-up.
    AFX_LIBRARY_LIST m_libraryList;         ///< The module's extension libraries.
    HINSTANCE m_appLangDLL = nullptr;       ///< The library of the application's language, if any.
};

/// The state that the calling thread works in: that of the innermost AFX_MANAGE_STATE, else the program's.
/// Threads: any; so are all functions here.
KELGEN_FRAMEWORK_API AFX_MODULE_STATE* AfxGetModuleState();
/// The state of the program.
KELGEN_FRAMEWORK_API AFX_MODULE_STATE* AfxGetAppModuleState();
/// Makes @p state the calling thread's (null: the program's) and returns the one before, null for the program's.
KELGEN_FRAMEWORK_API AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state);

/// Never null.
KELGEN_FRAMEWORK_API HINSTANCE AfxGetInstanceHandle();
/// Where resources are looked for first; never null unless it was set so.
KELGEN_FRAMEWORK_API HINSTANCE AfxGetResourceHandle();
/// Sets where the calling thread's module looks for resources first.
KELGEN_FRAMEWORK_API void AfxSetResourceHandle(HINSTANCE resources);
/// The module's application object, or null.
KELGEN_FRAMEWORK_API CWinApp* AfxGetApp();
/// The calling thread's object; in a thread without one the module's application object, or null.
KELGEN_FRAMEWORK_API CWinThread* AfxGetThread();
/// The application's name, or null before AfxWinInit.
KELGEN_FRAMEWORK_API LPCSTR AfxGetAppName();

/// Works in @p state while it lives.
class KELGEN_FRAMEWORK_API AFX_MAINTAIN_STATE2
{
public:
    /// Remembers the state that is set, for the destructor to set again; @p state null stands for the program's.
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state);
    ~AFX_MAINTAIN_STATE2();
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

private:
    AFX_MODULE_STATE* m_pPrevious;
};

/// First in an exported function of a library that has a state of its own:
///
///     AFX_MANAGE_STATE(AfxGetStaticModuleState());
#define AFX_MANAGE_STATE(state) const AFX_MAINTAIN_STATE2 KELGEN_UNIQUE_NAME(managedState, __LINE__)(state);

namespace kelgen::detail {

/// The module that @p address lies in.
KELGEN_FRAMEWORK_API HINSTANCE ModuleOf(const void* address);

}  // namespace kelgen::detail

/// The state of the module that calls this: the program's, or the library's own.
KELGEN_MODULE_LOCAL inline AFX_MODULE_STATE* AfxGetStaticModuleState()
{
    static AFX_MODULE_STATE state(TRUE, kelgen::detail::ModuleOf(&state));
    AFX_MODULE_STATE* const program = AfxGetAppModuleState();
    return state.m_hCurrentInstanceHandle == program->m_hCurrentInstanceHandle ? program : &state;
}

/// What an extension library keeps of itself, as a static object.
struct AFX_EXTENSION_MODULE
{
    BOOL bInitialized;  ///< TRUE from AfxInitExtensionModule on.
    HMODULE hModule;    ///< The library.
    HMODULE hResource;  ///< Where its resources are.
};

/// Fills @p extension at its first call. Returns TRUE.
KELGEN_FRAMEWORK_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& extension, HMODULE module);
/// Deletes the CDynLinkLibrary objects that were made for the extension, in the calling thread's module state or, with @p all,
/// also in the program's.
KELGEN_FRAMEWORK_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& extension, BOOL all = FALSE);

/// An extension library as a place of resources. Made with new when the library is loaded; AfxTermExtensionModule deletes it.
class KELGEN_FRAMEWORK_API CDynLinkLibrary : public CCmdTarget
{
    DECLARE_DYNAMIC(CDynLinkLibrary)

public:
    /// Becomes the first in the calling thread's module state. @p isSystem: its resources come last in look-up.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& extension, BOOL isSystem = FALSE);
    /// Does the same for a library that keeps no AFX_EXTENSION_MODULE; its resources do not come last.
    CDynLinkLibrary(HINSTANCE module, HINSTANCE resources);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;                      ///< The library.
    HMODULE m_hResource;                    ///< Null for one without resources.
    BOOL m_bSystem;                         ///< Whether its resources come last in look-up.
    CDynLinkLibrary* m_pNextDLL = nullptr;  ///< The one that was made before; null at the end.

private:
    AFX_MODULE_STATE* m_pState;
};

/// What AfxLockGlobals locks.
enum
{
    CRIT_DYNLINKLIST,
    CRIT_RUNTIMECLASSLIST,
    CRIT_OBJECTFACTORYLIST,
    CRIT_REGCLASSLIST,
    CRIT_MAX,
};

/// Enters one of the framework's process-wide locks, which its owner may enter again.
/// Throws: CInvalidArgException for a number outside the list.
KELGEN_FRAMEWORK_API void AfxLockGlobals(int lock);
/// Leaves it again. Throws: as AfxLockGlobals.
KELGEN_FRAMEWORK_API void AfxUnlockGlobals(int lock);

/// The first module that has the resource: the state's resource handle unless the state is a system module's, extension libraries
/// that are not system ones, the application's language library, the resource handle of a system state, system extension
/// libraries. By contract: the state's resource handle when none has it, so that a look-up there fails with the platform's own error.
KELGEN_FRAMEWORK_API HINSTANCE AfxFindResourceHandle(LPCSTR name, LPCSTR type);
/// The first module, in the same order, that has a text for that string number; null when none has.
KELGEN_FRAMEWORK_API HINSTANCE AfxFindStringResourceHandle(UINT id);
/// Copies the text of a string number in the ANSI code page, cut to @p capacity - 1 bytes and terminated, and returns its length;
/// 0, and an empty text, when there is none.
KELGEN_FRAMEWORK_API int AfxLoadString(UINT id, LPSTR buffer, UINT capacity = 256);
