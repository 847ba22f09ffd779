// ThreadState.h: what the framework keeps for each thread.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

class CFrameWnd;
class CWnd;

namespace kelgen::detail {
struct HandleMaps;
}

/// A thread's state. It exists from its first use in the thread until the thread ends.
class KELGEN_FRAMEWORK_API _AFX_THREAD_STATE
{
public:
    _AFX_THREAD_STATE();
    ~_AFX_THREAD_STATE();
    _AFX_THREAD_STATE(const _AFX_THREAD_STATE&) = delete;
    _AFX_THREAD_STATE& operator=(const _AFX_THREAD_STATE&) = delete;

    /// The message that a window procedure of this thread handles now, which Default() passes on. Whoever calls handlers outside
    /// AfxCallWndProc saves it, sets window, message and parameters, and restores it.
    MSG m_lastSentMsg{};
    MSG m_msgCur{};          ///< The message that the thread's loop took last.
    POINT m_ptCursorLast{};  ///< Where the mouse was at the last mouse move that idle work followed.
    UINT m_nMsgLast = 0;     ///< The last message that idle work followed.

    CWnd* m_pWndInit = nullptr;                 ///< The object that the next window created is attached to.
    HHOOK m_hHookOldCbtFilter = nullptr;        ///< The creation hook while m_pWndInit waits.
    HHOOK m_hHookOldMsgFilter = nullptr;        ///< The hook of menus' and dialogs' loops.
    HWND m_hLockoutNotifyWindow = nullptr;      ///< The window whose controls' notifications are held back.
    HWND m_hTrackingWindow = nullptr;           ///< The window that tracks a menu, and that menu.
    HMENU m_hTrackingMenu = nullptr;            ///< Null while none is tracked.
    CFrameWnd* m_pRoutingFrame = nullptr;       ///< The frame through which commands are routed, if not the view's own.
    int m_nWaitCursorCount = 0;                 ///< How many BeginWaitCursor are not ended.
    HCURSOR m_hcurWaitCursorRestore = nullptr;  ///< What the last EndWaitCursor shows again.
    int m_nTempMapLock = 0;                     ///< Temporary objects stay while it is above 0.
    kelgen::detail::HandleMaps* m_maps;         ///< The thread's objects of windows and the like; null before the first.
};

/// The calling thread's state.
KELGEN_FRAMEWORK_API _AFX_THREAD_STATE* AfxGetThreadState();

/// Keeps temporary objects of the calling thread alive, until AfxUnlockTempMaps has been called as often. Returns the count after it.
KELGEN_FRAMEWORK_API int AfxLockTempMaps();
/// Lets them go again: when the count reaches 0 and @p deleteTemp is set, they are deleted. Returns the count after it.
KELGEN_FRAMEWORK_API int AfxUnlockTempMaps(BOOL deleteTemp = TRUE);
