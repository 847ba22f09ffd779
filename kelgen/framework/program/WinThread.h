// WinThread.h: threads as objects: workers, which run a function, and threads with windows, which run a message loop.
#pragma once

#include <kelgen/framework/program/CmdTarget.h>

class AFX_MODULE_STATE;
class CException;
class CWinThread;
class CWnd;

using AFX_THREADPROC = UINT (*)(LPVOID parameter);

/// Starts a thread that calls @p procedure, in the caller's module state. The object deletes itself when the thread ends, unless
/// m_bAutoDelete is cleared before: start with CREATE_SUSPENDED, clear it, ResumeThread. Null when no thread can be started.
KELGEN_FRAMEWORK_API CWinThread* AfxBeginThread(AFX_THREADPROC procedure, LPVOID parameter, int priority = THREAD_PRIORITY_NORMAL,
                                                UINT stackSize = 0, DWORD flags = 0, LPSECURITY_ATTRIBUTES security = nullptr);
/// Starts a thread with a new object of that class, which is a CWinThread's: the thread calls InitInstance, Run and ExitInstance.
/// Throws: CMemoryException when the object cannot be made.
KELGEN_FRAMEWORK_API CWinThread* AfxBeginThread(CRuntimeClass* threadClass, int priority = THREAD_PRIORITY_NORMAL, UINT stackSize = 0,
                                                DWORD flags = 0, LPSECURITY_ATTRIBUTES security = nullptr);

/// Ends the calling thread, whose object goes as at its normal end unless @p deleteThread is FALSE.
[[noreturn]] KELGEN_FRAMEWORK_API void AfxEndThread(UINT exitCode, BOOL deleteThread = TRUE);

/// The same members of the calling thread's object; a thread without one pumps and tells idle messages apart all the same.
KELGEN_FRAMEWORK_API BOOL AfxPumpMessage();
KELGEN_FRAMEWORK_API BOOL AfxIsIdleMessage(MSG* message);
KELGEN_FRAMEWORK_API BOOL AfxPreTranslateMessage(MSG* message);
/// The message that the calling thread's loop took last.
KELGEN_FRAMEWORK_API MSG* AfxGetCurrentMessage();
/// PostQuitMessage.
KELGEN_FRAMEWORK_API void AfxPostQuitMessage(int exitCode);
/// Prepares the calling thread for messages: menus' and dialogs' own loops ask its ProcessMessageFilter.
KELGEN_FRAMEWORK_API void AfxInitThread();
/// Ends that, and deletes the thread's temporary objects.
KELGEN_FRAMEWORK_API void AfxTermThread();

/// A thread.
class KELGEN_FRAMEWORK_API CWinThread : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinThread)

public:
    CWinThread();
    CWinThread(AFX_THREADPROC procedure, LPVOID parameter);
    ~CWinThread() override;

    /// Starts the thread. FALSE when it cannot be started or has been already.
    BOOL CreateThread(DWORD flags = 0, UINT stackSize = 0, LPSECURITY_ATTRIBUTES security = nullptr);

    operator HANDLE() const { return m_hThread; }
    int GetThreadPriority() const;
    BOOL SetThreadPriority(int priority);
    /// The suspend count before; 0xFFFFFFFF on failure.
    DWORD SuspendThread();
    DWORD ResumeThread();
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // What a thread with windows runs.

    /// FALSE ends the thread at once, by ExitInstance. The base gives FALSE: a class without windows has nothing to run.
    virtual BOOL InitInstance();
    /// Handles messages until WM_QUIT, and calls OnIdle while there are none: ExitInstance's result.
    virtual int Run();
    /// The thread's exit code: the base gives that of WM_QUIT.
    virtual int ExitInstance();
    /// Work while no message waits; @p count is 0 after a message and rises by one a call. FALSE waits for the next message. The base
    /// updates the main window's controls and the other visible frames' at 0 and deletes temporary objects at 1.
    virtual BOOL OnIdle(LONG count);
    /// Whether idle work is due after @p message: not after painting, timers of the caret, nor mouse moves that move nothing.
    virtual BOOL IsIdleMessage(MSG* message);
    /// Waits for a message and handles it; FALSE on WM_QUIT.
    virtual BOOL PumpMessage();
    /// TRUE when the message needs no further handling. The base asks the thread's own map about messages without a window, then
    /// the windows from the message's up to the main window, and the main window for another top-level window's.
    virtual BOOL PreTranslateMessage(MSG* message);
    /// Offers a message without a window to the message map.
    BOOL DispatchThreadMessageEx(MSG* message);
    /// Messages of menus' and dialogs' own loops, with the hook's code; TRUE takes the message away.
    virtual BOOL ProcessMessageFilter(int code, MSG* message);
    /// The result of a window's message whose handler threw @p exception. The base fails WM_CREATE (-1), marks the window painted
    /// after WM_PAINT, and gives 0.
    virtual LRESULT ProcessWndProcException(CException* exception, const MSG* message);
    /// m_pActiveWnd when an in-place window is active, else m_pMainWnd.
    virtual CWnd* GetMainWnd();

    /// Deletes the object when m_bAutoDelete is set.
    virtual void Delete();

    CWnd* m_pMainWnd = nullptr;  ///< Its end ends the thread's loop.
    CWnd* m_pActiveWnd = nullptr;
    BOOL m_bAutoDelete = TRUE;
    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;
    LPVOID m_pThreadParams = nullptr;
    AFX_THREADPROC m_pfnThreadProc = nullptr;
    MSG m_msgCur{};  ///< The message that the object's loop took last.

protected:
    /// Makes this the calling thread's object.
    void Attach();

private:
    static unsigned WINAPI Main(void* object);
    int RunMain();

    AFX_MODULE_STATE* m_pModuleState;
};
