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
/// Whether idle work follows @p message, as CWinThread::IsIdleMessage says.
KELGEN_FRAMEWORK_API BOOL AfxIsIdleMessage(MSG* message);
/// CWinThread::PreTranslateMessage: TRUE when the message is done with.
KELGEN_FRAMEWORK_API BOOL AfxPreTranslateMessage(MSG* message);
/// The message that the calling thread's loop took last.
KELGEN_FRAMEWORK_API MSG* AfxGetCurrentMessage();
/// Calls PostQuitMessage: the thread's loop ends with that exit code.
KELGEN_FRAMEWORK_API void AfxPostQuitMessage(int exitCode);
/// Prepares the calling thread for messages: menus' and dialogs' own loops ask its ProcessMessageFilter.
KELGEN_FRAMEWORK_API void AfxInitThread();
/// Ends what AfxInitThread began, and deletes the thread's temporary objects.
KELGEN_FRAMEWORK_API void AfxTermThread();

/// A thread.
class KELGEN_FRAMEWORK_API CWinThread : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinThread)

public:
    CWinThread();
    /// A thread that runs @p procedure with @p parameter instead of a message loop; CreateThread starts it.
    CWinThread(AFX_THREADPROC procedure, LPVOID parameter);
    ~CWinThread() override;

    /// Starts the thread. FALSE when it cannot be started or has been already.
    BOOL CreateThread(DWORD flags = 0, UINT stackSize = 0, LPSECURITY_ATTRIBUTES security = nullptr);

    /// The handle, so that an object serves where a call takes a thread.
    operator HANDLE() const { return m_hThread; }
    /// The priority, a THREAD_PRIORITY_ number; THREAD_PRIORITY_ERROR_RETURN on failure.
    int GetThreadPriority() const;
    /// Sets the priority. FALSE on failure.
    BOOL SetThreadPriority(int priority);
    /// Makes the thread wait until as many calls of ResumeThread. Returns the count before; 0xFFFFFFFF on failure.
    DWORD SuspendThread();
    /// Takes one SuspendThread back. Returns the count before; 0xFFFFFFFF on failure.
    DWORD ResumeThread();
    /// Puts a message without a window into the thread's queue. FALSE if the thread has none or it is full.
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // What a thread with windows runs.

    /// FALSE ends the thread at once, by ExitInstance. The base gives FALSE: a class without windows has nothing to run.
    virtual BOOL InitInstance();
    /// Handles messages until WM_QUIT, and calls OnIdle while there are none. Returns ExitInstance's result.
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
    /// m_pActiveWnd if an in-place window is active, otherwise m_pMainWnd.
    virtual CWnd* GetMainWnd();

    /// Deletes the object when m_bAutoDelete is set.
    virtual void Delete();

    CWnd* m_pMainWnd = nullptr;  ///< Its end ends the thread's loop.
    /// The main window of an application that works in another one's place; null for none.
    CWnd* m_pActiveWnd = nullptr;
    /// Whether the object deletes itself when the thread ends.
    BOOL m_bAutoDelete = TRUE;
    /// The handle; null before CreateThread.
    HANDLE m_hThread = nullptr;
    /// The number; 0 before CreateThread.
    DWORD m_nThreadID = 0;
    /// What m_pfnThreadProc is called with.
    LPVOID m_pThreadParams = nullptr;
    /// The function of a worker; null for a thread with a message loop.
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
