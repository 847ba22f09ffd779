// WinThread.cpp: starting and ending threads, and each thread's own object.
#include <kelgen/framework/program/WinThread.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

namespace {

thread_local CWinThread* currentThread = nullptr;

CWinThread* Started(CWinThread* thread, int priority, UINT stackSize, DWORD flags, LPSECURITY_ATTRIBUTES security)
{
    bool isCreated = false;
    try {
        isCreated = thread->CreateThread(flags | CREATE_SUSPENDED, stackSize, security) != FALSE;
    } catch (...) {
        thread->Delete();
        throw;
    }
    if (!isCreated) {
        thread->Delete();
        return nullptr;
    }
    thread->SetThreadPriority(priority);
    if (!(flags & CREATE_SUSPENDED))
        thread->ResumeThread();
    return thread;
}

}  // namespace

CWinThread* AfxGetThread()
{
    return currentThread ? currentThread : AfxGetApp();
}

CWinThread* AfxBeginThread(AFX_THREADPROC procedure, LPVOID parameter, int priority, UINT stackSize, DWORD flags,
                           LPSECURITY_ATTRIBUTES security)
{
    return Started(new CWinThread(procedure, parameter), priority, stackSize, flags, security);
}

CWinThread* AfxBeginThread(CRuntimeClass* threadClass, int priority, UINT stackSize, DWORD flags, LPSECURITY_ATTRIBUTES security)
{
    const auto thread = static_cast<CWinThread*>(threadClass->CreateObject());
    if (!thread)
        AfxThrowMemoryException();
    return Started(thread, priority, stackSize, flags, security);
}

void AfxEndThread(UINT exitCode, BOOL deleteThread)
{
    AfxTermThread();
    if (currentThread && deleteThread)
        currentThread->Delete();
    currentThread = nullptr;
    _endthreadex(exitCode);
}

CWinThread::CWinThread() : CWinThread(nullptr, nullptr) {}

CWinThread::CWinThread(AFX_THREADPROC procedure, LPVOID parameter)
    : m_pThreadParams(parameter), m_pfnThreadProc(procedure), m_pModuleState(AfxGetModuleState())
{}

CWinThread::~CWinThread()
{
    if (m_hThread)
        CloseHandle(m_hThread);
    if (currentThread == this)
        currentThread = nullptr;
}

void CWinThread::Attach()
{
    currentThread = this;
}

BOOL CWinThread::CreateThread(DWORD flags, UINT stackSize, LPSECURITY_ATTRIBUTES security)
{
    if (m_hThread)
        return FALSE;
    // It begins only when handle and id are in place: the object may be gone as soon as the thread runs.
    unsigned id = 0;
    const UINT_PTR started = _beginthreadex(security, stackSize, &CWinThread::Main, this, flags | CREATE_SUSPENDED, &id);
    if (started == 0)
        return FALSE;
    const HANDLE thread = reinterpret_cast<HANDLE>(started);
    m_hThread = thread;
    m_nThreadID = id;
    if (!(flags & CREATE_SUSPENDED))
        ::ResumeThread(thread);
    return TRUE;
}

unsigned WINAPI CWinThread::Main(void* object)
{
    const auto thread = static_cast<CWinThread*>(object);
    AfxSetModuleState(thread->m_pModuleState);
    thread->Attach();
    const auto exitCode = static_cast<unsigned>(thread->RunMain());
    AfxTermThread();
    thread->Delete();
    return exitCode;
}

int CWinThread::RunMain()
{
    if (m_pfnThreadProc)
        return static_cast<int>(m_pfnThreadProc(m_pThreadParams));
    AfxInitThread();
    return InitInstance() ? Run() : ExitInstance();
}

int CWinThread::GetThreadPriority() const
{
    return ::GetThreadPriority(m_hThread);
}

BOOL CWinThread::SetThreadPriority(int priority)
{
    return ::SetThreadPriority(m_hThread, priority);
}

DWORD CWinThread::SuspendThread()
{
    return ::SuspendThread(m_hThread);
}

DWORD CWinThread::ResumeThread()
{
    return ::ResumeThread(m_hThread);
}

void CWinThread::Delete()
{
    if (m_bAutoDelete)
        delete this;
}
