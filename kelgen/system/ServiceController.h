// ServiceController.h: starts, stops and questions one installed service.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/platform/Win32.h>

/// One installed service. Errors are results, never exceptions.
///
///     CServiceController spooler;
///     if (spooler.OpenServiceA("Spooler") && spooler.GetServiceStatus() == CServiceController::serviceStopped)
///         spooler.StartServiceA(5000);
///
/// By contract: a copy has the same handles, as all members are copied, and each of both closes them.
class KELGEN_API CServiceController
{
public:
    /// What OpenServiceA and GetServiceStatus tell: a state of the service control manager, or one of two results of our own.
    enum ServiceStatus
    {
        serviceFailed = 0,
        serviceStopped = 1,
        serviceStartPending = 2,
        serviceStopPending = 3,
        serviceRunning = 4,
        serviceContinuePending = 5,
        servicePausePending = 6,
        servicePaused = 7,
        /// The service is open and has not been asked for its state.
        serviceOpened = 8,
    };

    CServiceController() = default;
    CServiceController(const CServiceController&) = default;
    CServiceController& operator=(const CServiceController&) = default;
    /// Closes the service and the manager.
    virtual ~CServiceController();

    /// Connects to the local manager and opens the service @p name with all rights. @return serviceOpened, or serviceFailed.
    /// By contract: handles of an earlier call are not closed, since copies may share them; when the service cannot be opened, the
    /// manager stays open until destruction.
    ServiceStatus OpenServiceA(const char* name);

    /// The service's state now; serviceFailed when it cannot be asked.
    ServiceStatus GetServiceStatus();

    /// Starts the service without arguments and, unless @p timeoutMs (milliseconds) is 0, waits until it runs or the time is over.
    /// @return Nonzero when the start was accepted.
    /// By contract: a time-out is no failure, so a caller asks GetServiceStatus; and a start that was refused waits all the same.
    int StartServiceA(DWORD timeoutMs);

    /// Tells the service to stop and waits as StartServiceA does, until it has stopped.
    int StopService(DWORD timeoutMs);

    /// The service's command line without its double quotes; "" when it cannot be read or the configuration takes more than
    /// 4096 bytes.
    CString GetServiceBinaryPath();

private:
    void WaitForState(DWORD state, DWORD timeoutMs);

    CString m_strServiceName;
    SC_HANDLE m_hService = nullptr;
    SC_HANDLE m_hManager = nullptr;
    SERVICE_STATUS m_status = {};
};
