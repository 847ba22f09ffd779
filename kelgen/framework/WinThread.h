// WinThread.h: threads as objects.
#pragma once

#include <kelgen/framework/CmdTarget.h>

class AFX_MODULE_STATE;
class CWinThread;
class CWnd;

using AFX_THREADPROC = UINT (*)(LPVOID parameter);

/// Starts a thread that calls @p procedure, in the caller's module state. The object deletes itself when the thread ends, unless
/// m_bAutoDelete is cleared before: start with CREATE_SUSPENDED, clear it, ResumeThread. Null when no thread can be started.
KELGEN_FRAMEWORK_API CWinThread* AfxBeginThread(AFX_THREADPROC procedure, LPVOID parameter, int priority = THREAD_PRIORITY_NORMAL,
                                                UINT stackSize = 0, DWORD flags = 0, LPSECURITY_ATTRIBUTES security = nullptr);

/// Ends the calling thread, whose object goes as at its normal end unless @p deleteThread is FALSE.
[[noreturn]] KELGEN_FRAMEWORK_API void AfxEndThread(UINT exitCode, BOOL deleteThread = TRUE);

/// A thread.
class KELGEN_FRAMEWORK_API CWinThread : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinThread)

public:
    CWinThread();
    CWinThread(AFX_THREADPROC procedure, LPVOID parameter);
    ~CWinThread() override;

    /// Starts the thread. FALSE when it cannot be started or the object has no procedure.
    BOOL CreateThread(DWORD flags = 0, UINT stackSize = 0, LPSECURITY_ATTRIBUTES security = nullptr);

    operator HANDLE() const { return m_hThread; }
    int GetThreadPriority() const;
    BOOL SetThreadPriority(int priority);
    /// The suspend count before; 0xFFFFFFFF on failure.
    DWORD SuspendThread();
    DWORD ResumeThread();

    /// Deletes the object when m_bAutoDelete is set.
    virtual void Delete();

    CWnd* m_pMainWnd = nullptr;
    CWnd* m_pActiveWnd = nullptr;
    BOOL m_bAutoDelete = TRUE;
    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;
    LPVOID m_pThreadParams = nullptr;
    AFX_THREADPROC m_pfnThreadProc = nullptr;

protected:
    /// Makes this the calling thread's object.
    void Attach();

private:
    static unsigned WINAPI Main(void* object);

    AFX_MODULE_STATE* m_pModuleState;
};
