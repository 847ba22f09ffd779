// Services.h: the service control manager: installed services, their states and controls, and what a service process calls.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/base/api/Types.h>

DECLARE_HANDLE(SC_HANDLE);
DECLARE_HANDLE(SERVICE_STATUS_HANDLE);
using LPSC_HANDLE = SC_HANDLE*;

#define SERVICES_ACTIVE_DATABASEA "ServicesActive"
#define SERVICE_NO_CHANGE 0xFFFFFFFFu

// Rights of a manager's handle.
#define SC_MANAGER_CONNECT 0x0001u
#define SC_MANAGER_CREATE_SERVICE 0x0002u
#define SC_MANAGER_ENUMERATE_SERVICE 0x0004u
#define SC_MANAGER_LOCK 0x0008u
#define SC_MANAGER_QUERY_LOCK_STATUS 0x0010u
#define SC_MANAGER_MODIFY_BOOT_CONFIG 0x0020u
#define SC_MANAGER_ALL_ACCESS 0xF003Fu

// Rights of a service's handle.
#define SERVICE_QUERY_CONFIG 0x0001u
#define SERVICE_CHANGE_CONFIG 0x0002u
#define SERVICE_QUERY_STATUS 0x0004u
#define SERVICE_ENUMERATE_DEPENDENTS 0x0008u
#define SERVICE_START 0x0010u
#define SERVICE_STOP 0x0020u
#define SERVICE_PAUSE_CONTINUE 0x0040u
#define SERVICE_INTERROGATE 0x0080u
#define SERVICE_USER_DEFINED_CONTROL 0x0100u
#define SERVICE_ALL_ACCESS 0xF01FFu

#define SERVICE_KERNEL_DRIVER 0x01u
#define SERVICE_FILE_SYSTEM_DRIVER 0x02u
#define SERVICE_DRIVER 0x0Bu
#define SERVICE_WIN32_OWN_PROCESS 0x10u
#define SERVICE_WIN32_SHARE_PROCESS 0x20u
#define SERVICE_WIN32 0x30u
#define SERVICE_INTERACTIVE_PROCESS 0x100u

#define SERVICE_BOOT_START 0u
#define SERVICE_SYSTEM_START 1u
#define SERVICE_AUTO_START 2u
#define SERVICE_DEMAND_START 3u
#define SERVICE_DISABLED 4u

#define SERVICE_ERROR_IGNORE 0u
#define SERVICE_ERROR_NORMAL 1u
#define SERVICE_ERROR_SEVERE 2u
#define SERVICE_ERROR_CRITICAL 3u

#define SERVICE_STOPPED 1u
#define SERVICE_START_PENDING 2u
#define SERVICE_STOP_PENDING 3u
#define SERVICE_RUNNING 4u
#define SERVICE_CONTINUE_PENDING 5u
#define SERVICE_PAUSE_PENDING 6u
#define SERVICE_PAUSED 7u

#define SERVICE_ACTIVE 1u
#define SERVICE_INACTIVE 2u
#define SERVICE_STATE_ALL 3u

#define SERVICE_CONTROL_STOP 1u
#define SERVICE_CONTROL_PAUSE 2u
#define SERVICE_CONTROL_CONTINUE 3u
#define SERVICE_CONTROL_INTERROGATE 4u
#define SERVICE_CONTROL_SHUTDOWN 5u
#define SERVICE_CONTROL_PARAMCHANGE 6u

#define SERVICE_ACCEPT_STOP 0x01u
#define SERVICE_ACCEPT_PAUSE_CONTINUE 0x02u
#define SERVICE_ACCEPT_SHUTDOWN 0x04u
#define SERVICE_ACCEPT_PARAMCHANGE 0x08u

struct SERVICE_STATUS
{
    DWORD dwServiceType;
    DWORD dwCurrentState;
    DWORD dwControlsAccepted;
    DWORD dwWin32ExitCode;
    DWORD dwServiceSpecificExitCode;
    DWORD dwCheckPoint;
    DWORD dwWaitHint;
};
using LPSERVICE_STATUS = SERVICE_STATUS*;

struct SERVICE_STATUS_PROCESS
{
    DWORD dwServiceType;
    DWORD dwCurrentState;
    DWORD dwControlsAccepted;
    DWORD dwWin32ExitCode;
    DWORD dwServiceSpecificExitCode;
    DWORD dwCheckPoint;
    DWORD dwWaitHint;
    DWORD dwProcessId;
    DWORD dwServiceFlags;
};
using LPSERVICE_STATUS_PROCESS = SERVICE_STATUS_PROCESS*;

enum SC_STATUS_TYPE
{
    SC_STATUS_PROCESS_INFO = 0
};

struct QUERY_SERVICE_CONFIGA
{
    DWORD dwServiceType;
    DWORD dwStartType;
    DWORD dwErrorControl;
    LPSTR lpBinaryPathName;
    LPSTR lpLoadOrderGroup;
    DWORD dwTagId;
    LPSTR lpDependencies;
    LPSTR lpServiceStartName;
    LPSTR lpDisplayName;
};
using LPQUERY_SERVICE_CONFIGA = QUERY_SERVICE_CONFIGA*;

struct QUERY_SERVICE_CONFIGW
{
    DWORD dwServiceType;
    DWORD dwStartType;
    DWORD dwErrorControl;
    LPWSTR lpBinaryPathName;
    LPWSTR lpLoadOrderGroup;
    DWORD dwTagId;
    LPWSTR lpDependencies;
    LPWSTR lpServiceStartName;
    LPWSTR lpDisplayName;
};
using LPQUERY_SERVICE_CONFIGW = QUERY_SERVICE_CONFIGW*;

struct ENUM_SERVICE_STATUSA
{
    LPSTR lpServiceName;
    LPSTR lpDisplayName;
    SERVICE_STATUS ServiceStatus;
};
using LPENUM_SERVICE_STATUSA = ENUM_SERVICE_STATUSA*;

using LPSERVICE_MAIN_FUNCTIONA = void (*)(DWORD count, LPSTR* arguments);
using LPSERVICE_MAIN_FUNCTIONW = void (*)(DWORD count, LPWSTR* arguments);
using LPHANDLER_FUNCTION = void (*)(DWORD control);
using LPHANDLER_FUNCTION_EX = DWORD (*)(DWORD control, DWORD eventType, LPVOID eventData, LPVOID context);

struct SERVICE_TABLE_ENTRYA
{
    LPSTR lpServiceName;
    LPSERVICE_MAIN_FUNCTIONA lpServiceProc;
};
struct SERVICE_TABLE_ENTRYW
{
    LPWSTR lpServiceName;
    LPSERVICE_MAIN_FUNCTIONW lpServiceProc;
};

// Services are described in the registry below HKLM\SYSTEM\CurrentControlSet\Services, as on the real system. There is no manager
// process: what a running service reports lies in the home folder's services/ for every process to read, and controls go to the
// service's own socket there. Each service has a process of its own, even one of type SERVICE_WIN32_SHARE_PROCESS. Nothing starts by
// itself: automatic ones start when they are told to.
// Failures set the last error: ERROR_INVALID_HANDLE for a handle that is closed or of another kind, ERROR_ACCESS_DENIED for one
// without the right that the call needs, ERROR_INVALID_ADDRESS for a missing pointer. Service names ignore case and have 1 to 256
// units without slashes (ERROR_INVALID_NAME). Narrow text is in the ANSI code page.
// Threads: any, also several processes at once.

/// A connection to the manager of this home; the machine's name is ignored. Null with ERROR_INVALID_NAME for a @p database other than
/// null or "ServicesActive".
KELGEN_PLATFORM_API SC_HANDLE OpenSCManagerA(LPCSTR machine, LPCSTR database, DWORD access);
KELGEN_PLATFORM_API SC_HANDLE OpenSCManagerW(LPCWSTR machine, LPCWSTR database, DWORD access);

/// Installs a service and opens it. @p path is a command line and kept as it is: the caller quotes a program whose path has blanks, for
/// without quotes the first of `C:\A`, `C:\A.exe`, `C:\A B.exe` that is there is what `C:\A B.exe` starts. @p dependencies is a list of
/// texts with an empty one at its end; the password is ignored. A null account is "LocalSystem". Null with ERROR_SERVICE_EXISTS,
/// ERROR_DUPLICATE_SERVICE_NAME for another service's display name, ERROR_SERVICE_MARKED_FOR_DELETE, ERROR_INVALID_PARAMETER.
KELGEN_PLATFORM_API SC_HANDLE CreateServiceA(SC_HANDLE manager, LPCSTR name, LPCSTR displayName, DWORD access, DWORD type, DWORD start,
                                             DWORD errorControl, LPCSTR path, LPCSTR group, LPDWORD tag, LPCSTR dependencies,
                                             LPCSTR account, LPCSTR password);
KELGEN_PLATFORM_API SC_HANDLE CreateServiceW(SC_HANDLE manager, LPCWSTR name, LPCWSTR displayName, DWORD access, DWORD type, DWORD start,
                                             DWORD errorControl, LPCWSTR path, LPCWSTR group, LPDWORD tag, LPCWSTR dependencies,
                                             LPCWSTR account, LPCWSTR password);

/// Opens an installed service. Null with ERROR_SERVICE_DOES_NOT_EXIST.
KELGEN_PLATFORM_API SC_HANDLE OpenServiceA(SC_HANDLE manager, LPCSTR name, DWORD access);
KELGEN_PLATFORM_API SC_HANDLE OpenServiceW(SC_HANDLE manager, LPCWSTR name, DWORD access);

/// Marks the service for removal: it goes when it has stopped and no process has it open. FALSE with
/// ERROR_SERVICE_MARKED_FOR_DELETE the second time.
KELGEN_PLATFORM_API BOOL DeleteService(SC_HANDLE service);

/// Closes a service's or a manager's handle.
KELGEN_PLATFORM_API BOOL CloseServiceHandle(SC_HANDLE handle);

/// What the service reported last. One that died without a word is stopped with exit code ERROR_PROCESS_ABORTED; one that never ran has
/// ERROR_SERVICE_NEVER_STARTED.
KELGEN_PLATFORM_API BOOL QueryServiceStatus(SC_HANDLE service, LPSERVICE_STATUS status);
/// The same with the process's number, 0 when stopped. FALSE with ERROR_INSUFFICIENT_BUFFER, ERROR_INVALID_LEVEL.
KELGEN_PLATFORM_API BOOL QueryServiceStatusEx(SC_HANDLE service, SC_STATUS_TYPE level, LPBYTE buffer, DWORD size, LPDWORD needed);

/// Starts the service's program, without a shell and apart from the caller, and waits until it reports a state. Its main function
/// gets the service's name and the @p count @p arguments. FALSE with ERROR_SERVICE_DISABLED, ERROR_SERVICE_ALREADY_RUNNING,
/// ERROR_FILE_NOT_FOUND, ERROR_BAD_EXE_FORMAT, ERROR_SERVICE_REQUEST_TIMEOUT for a program that ends or takes ten seconds without.
KELGEN_PLATFORM_API BOOL StartServiceA(SC_HANDLE service, DWORD count, LPCSTR* arguments);
KELGEN_PLATFORM_API BOOL StartServiceW(SC_HANDLE service, DWORD count, LPCWSTR* arguments);

/// Sends @p control and stores the state once the service's handler has returned. FALSE with ERROR_INVALID_PARAMETER for an unknown
/// control, ERROR_SERVICE_NOT_ACTIVE, ERROR_SERVICE_CANNOT_ACCEPT_CTRL while a start or stop is pending
/// and after a stop that the service ignored, ERROR_INVALID_SERVICE_CONTROL for one that the service does not accept,
/// ERROR_SERVICE_REQUEST_TIMEOUT after thirty seconds.
/// By contract: the handler's result is not reported, so a caller watches the state.
KELGEN_PLATFORM_API BOOL ControlService(SC_HANDLE service, DWORD control, LPSERVICE_STATUS status);

/// Fills @p configuration and the texts behind it. FALSE with ERROR_INSUFFICIENT_BUFFER and the size in @p needed.
KELGEN_PLATFORM_API BOOL QueryServiceConfigA(SC_HANDLE service, LPQUERY_SERVICE_CONFIGA configuration, DWORD size, LPDWORD needed);
KELGEN_PLATFORM_API BOOL QueryServiceConfigW(SC_HANDLE service, LPQUERY_SERVICE_CONFIGW configuration, DWORD size, LPDWORD needed);

/// Changes what is neither SERVICE_NO_CHANGE nor null. FALSE as CreateServiceA, and with ERROR_SERVICE_MARKED_FOR_DELETE.
KELGEN_PLATFORM_API BOOL ChangeServiceConfigA(SC_HANDLE service, DWORD type, DWORD start, DWORD errorControl, LPCSTR path, LPCSTR group,
                                              LPDWORD tag, LPCSTR dependencies, LPCSTR account, LPCSTR password, LPCSTR displayName);
KELGEN_PLATFORM_API BOOL ChangeServiceConfigW(SC_HANDLE service, DWORD type, DWORD start, DWORD errorControl, LPCWSTR path, LPCWSTR group,
                                              LPDWORD tag, LPCWSTR dependencies, LPCWSTR account, LPCWSTR password, LPCWSTR displayName);

/// Lists services of @p types in @p states by name, from entry *@p resume on. FALSE with ERROR_MORE_DATA when they do not all fit:
/// @p needed has the bytes for the rest, @p resume where to go on.
KELGEN_PLATFORM_API BOOL EnumServicesStatusA(SC_HANDLE manager, DWORD types, DWORD states, LPENUM_SERVICE_STATUSA services, DWORD size,
                                             LPDWORD needed, LPDWORD count, LPDWORD resume);

/// Runs the service that this process was started for: its main function on a new thread, controls on the calling one. TRUE once it
/// has reported SERVICE_STOPPED. FALSE with ERROR_FAILED_SERVICE_CONTROLLER_CONNECT in a process that is no service's,
/// ERROR_SERVICE_ALREADY_RUNNING at every later call. The entry is chosen by name; a program's only entry serves any.
KELGEN_PLATFORM_API BOOL StartServiceCtrlDispatcherA(const SERVICE_TABLE_ENTRYA* table);
KELGEN_PLATFORM_API BOOL StartServiceCtrlDispatcherW(const SERVICE_TABLE_ENTRYW* table);

/// Each makes @p handler get the controls of this process's service. Null with ERROR_SERVICE_DOES_NOT_EXIST when it runs none.
KELGEN_PLATFORM_API SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerA(LPCSTR name, LPHANDLER_FUNCTION handler);
KELGEN_PLATFORM_API SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerW(LPCWSTR name, LPHANDLER_FUNCTION handler);
KELGEN_PLATFORM_API SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerExA(LPCSTR name, LPHANDLER_FUNCTION_EX handler, LPVOID context);
KELGEN_PLATFORM_API SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerExW(LPCWSTR name, LPHANDLER_FUNCTION_EX handler, LPVOID context);

/// Reports the service's state. FALSE with ERROR_INVALID_DATA for a state that there is not, ERROR_INVALID_HANDLE.
KELGEN_PLATFORM_API BOOL SetServiceStatus(SERVICE_STATUS_HANDLE service, LPSERVICE_STATUS status);

using QUERY_SERVICE_CONFIG = QUERY_SERVICE_CONFIGA;
using LPQUERY_SERVICE_CONFIG = LPQUERY_SERVICE_CONFIGA;
using ENUM_SERVICE_STATUS = ENUM_SERVICE_STATUSA;
using LPENUM_SERVICE_STATUS = LPENUM_SERVICE_STATUSA;
using SERVICE_TABLE_ENTRY = SERVICE_TABLE_ENTRYA;
#define SERVICES_ACTIVE_DATABASE SERVICES_ACTIVE_DATABASEA
#define OpenSCManager OpenSCManagerA
#define CreateService CreateServiceA
#define OpenService OpenServiceA
#define StartService StartServiceA
#define QueryServiceConfig QueryServiceConfigA
#define ChangeServiceConfig ChangeServiceConfigA
#define EnumServicesStatus EnumServicesStatusA
#define StartServiceCtrlDispatcher StartServiceCtrlDispatcherA
#define RegisterServiceCtrlHandler RegisterServiceCtrlHandlerA
#define RegisterServiceCtrlHandlerEx RegisterServiceCtrlHandlerExA
