// ServiceController.cpp: over the service control manager's calls.
#include <kelgen/system/ServiceController.h>

CServiceController::~CServiceController()
{
    if (m_hService)
        CloseServiceHandle(m_hService);
    if (m_hManager)
        CloseServiceHandle(m_hManager);
    m_hService = nullptr;
    m_hManager = nullptr;
}

CServiceController::ServiceStatus CServiceController::OpenServiceA(const char* name)
{
    m_strServiceName = name;
    m_hManager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE);
    if (!m_hManager)
        return serviceFailed;
    m_hService = ::OpenServiceA(m_hManager, m_strServiceName, SERVICE_ALL_ACCESS);
    return m_hService ? serviceOpened : serviceFailed;
}

CServiceController::ServiceStatus CServiceController::GetServiceStatus()
{
    return QueryServiceStatus(m_hService, &m_status) ? static_cast<ServiceStatus>(m_status.dwCurrentState) : serviceFailed;
}

int CServiceController::StartServiceA(DWORD timeoutMs)
{
    const int result = ::StartServiceA(m_hService, 0, nullptr);
    WaitForState(SERVICE_RUNNING, timeoutMs);
    return result;
}

int CServiceController::StopService(DWORD timeoutMs)
{
    SERVICE_STATUS status = {};
    const int result = ControlService(m_hService, SERVICE_CONTROL_STOP, &status);
    WaitForState(SERVICE_STOPPED, timeoutMs);
    return result;
}

void CServiceController::WaitForState(DWORD state, DWORD timeoutMs)
{
    constexpr DWORD kPollMilliseconds = 200;
    if (timeoutMs == 0)
        return;
    const DWORD start = GetTickCount();
    while (GetServiceStatus() != static_cast<ServiceStatus>(state) && GetTickCount() - start < timeoutMs)
        Sleep(kPollMilliseconds);
}

CString CServiceController::GetServiceBinaryPath()
{
    constexpr DWORD kConfigurationSize = 4096;
    alignas(QUERY_SERVICE_CONFIGA) BYTE buffer[kConfigurationSize] = {};
    auto* const configuration = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer);
    DWORD needed = 0;
    if (!QueryServiceConfigA(m_hService, configuration, kConfigurationSize, &needed))
        return CString();
    CString path(configuration->lpBinaryPathName);
    path.Remove('"');
    return path;
}
