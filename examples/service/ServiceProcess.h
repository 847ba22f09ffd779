// ServiceProcess.h: a service's side of the talk with the system's service manager: states that it reports, controls that it takes.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/base/Synchronization.h>
#include <kelgen/platform/Win32.h>

#include <atomic>

/// The one service of a process. A derived class says what it does.
///
///     CMyService service;
///     if (!service.Dispatch())
///         ...  // a person has started the program, not the service manager
///
/// Threads: OnStart and OnRun run on a thread of the service's own, OnControl on the one that called Dispatch.
class CServiceProcess
{
public:
    CServiceProcess() = default;
    CServiceProcess(const CServiceProcess&) = delete;
    CServiceProcess& operator=(const CServiceProcess&) = delete;
    virtual ~CServiceProcess() = default;

    /// Runs the service until it has stopped. False with the last error in a process that the service manager did not start.
    bool Dispatch();

protected:
    /// Prepares what the service @p name needs and returns soon: clients wait. What is not 0 ends it with that exit code.
    virtual DWORD OnStart(const CString& name) = 0;
    /// Works until GetStopEvent() is signalled; does nothing to be seen while IsPaused().
    virtual void OnRun() = 0;
    /// A control of the service's own, 128 to 255, or SERVICE_CONTROL_CONTINUE after a pause has ended. The client waits for the return.
    virtual void OnControl(DWORD control) = 0;

    HANDLE GetStopEvent() const { return m_stop.m_hObject; }
    bool IsPaused() const { return m_isPaused; }

private:
    static void WINAPI ServiceMain(DWORD count, LPSTR* arguments);
    static DWORD WINAPI HandleControl(DWORD control, DWORD eventType, LPVOID eventData, LPVOID context);
    void TakeControl(DWORD control);
    void Report(DWORD state, DWORD exitCode = NO_ERROR);

    SERVICE_STATUS_HANDLE m_handle = nullptr;
    CEvent m_stop{FALSE, TRUE};  // stays signalled
    std::atomic<bool> m_isPaused = false;
};
