// ServiceDispatcher.cpp: the side of the service process: dispatcher, control handlers and reports.
#include <kelgen/platform/posix/services/api/Services.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>
#include <kelgen/platform/posix/processes/api/Processes.h>
#include <kelgen/platform/posix/services/ServiceObjects.h>
#include <kelgen/platform/posix/services/ServiceStart.h>
#include <kelgen/platform/posix/threads/api/CloseHandle.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/threads/api/Ticks.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

using namespace kelgen::posix;

namespace {

constexpr ULONGLONG kMessageMilliseconds = 10000;

using Handler = std::function<DWORD(DWORD)>;

/// Whether the other end of a socket is the service's own user, or the system's.
bool IsOfUser(int socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && (peer.uid == geteuid() || peer.uid == 0);
}

/// The service that this process runs.
class RunningService
{
public:
    RunningService(StartArguments start, Descriptor channel)
        : m_start(std::move(start)), m_folder(m_start.name), m_listener(m_folder.Listen()), m_stopped(eventfd(0, EFD_CLOEXEC)),
          m_channel(std::move(channel)), m_process(GetCurrentProcessId()), m_processStart(StartOfProcess(m_process).value_or(0))
    {}

    const StartArguments& Start() const { return m_start; }
    /// Whether it can be asked, and its reports told from those of another process.
    bool IsReady() const { return m_listener && m_stopped && m_processStart != 0; }

    void SetHandler(Handler handler)
    {
        const std::lock_guard lock(m_mutex);
        m_handler = std::move(handler);
    }

    /// Reports @p status; an error code.
    DWORD Report(const SERVICE_STATUS& status)
    {
        if (status.dwCurrentState < SERVICE_STOPPED || status.dwCurrentState > SERVICE_PAUSED)
            return ERROR_INVALID_DATA;
        const std::lock_guard lock(m_mutex);
        ServiceRecord record{status, m_process, m_processStart};
        const auto isOurs = [this](const ServiceRecord& now) { return now.IsOf(m_process, m_processStart) && !now.IsStopped(); };
        if (const DWORD error = m_folder.Write(record, isOurs))
            return error;
        if (m_channel && SendBytes(m_channel.Get(), "r"))
            m_channel = Descriptor();
        if (status.dwCurrentState == SERVICE_STOPPED)
            eventfd_write(m_stopped.Get(), 1);
        return ERROR_SUCCESS;
    }

    /// Takes controls until the service has reported its stop.
    void TakeControls()
    {
        std::vector<Descriptor> clients;
        for (Turn turn = Turn::taken; turn != Turn::stopped;) {
            turn = OrNoMemory(Turn::lacking, [&] { return TakeTurn(clients); });
            if (turn == Turn::lacking)
                turn = Refuse(clients);
        }
        const ServiceLock lock = LockServices();
        RemoveIfDue(m_start.name);
    }

private:
    enum class Turn
    {
        taken,
        lacking,
        stopped,
    };

    /// Waits for clients and takes what they send. A client that says nothing waits aside, until it is the eldest of too many.
    Turn TakeTurn(std::vector<Descriptor>& clients)
    {
        constexpr std::size_t kMostClients = 64;
        std::vector<pollfd> wanted = {{m_stopped.Get(), POLLIN, 0}, {m_listener.Get(), POLLIN, 0}};
        for (const Descriptor& client : clients)
            wanted.push_back({client.Get(), POLLIN, 0});
        clients.reserve(clients.size() + 1);
        if (Retry([&] { return poll(wanted.data(), wanted.size(), -1); }) < 0)
            return Turn::lacking;
        if (wanted[0].revents)
            return Turn::stopped;
        for (std::size_t i = clients.size(); i-- > 0;) {
            if (!wanted[i + 2].revents)
                continue;
            // It goes with its answer, also when there is none.
            const Descriptor client = std::move(clients[i]);
            clients.erase(clients.begin() + static_cast<std::ptrdiff_t>(i));
            TakeControl(client);
        }
        if (!wanted[1].revents)
            return Turn::taken;
        Descriptor client(Retry([&] { return accept4(m_listener.Get(), nullptr, nullptr, SOCK_CLOEXEC); }));
        if (!client && errno != ECONNABORTED)
            return Turn::lacking;
        if (client && IsOfUser(client.Get()))
            clients.push_back(std::move(client));
        if (clients.size() > kMostClients)
            clients.erase(clients.begin());
        return Turn::taken;
    }

    /// A turn without memory or descriptors: the eldest client is told so.
    Turn Refuse(std::vector<Descriptor>& clients)
    {
        constexpr int kTurnMilliseconds = 50;
        pollfd wanted[] = {{m_stopped.Get(), POLLIN, 0}, {m_listener.Get(), POLLIN, 0}};
        if (poll(wanted, clients.empty() ? 2 : 1, clients.empty() ? kTurnMilliseconds : 0) > 0 && wanted[0].revents)
            return Turn::stopped;
        Descriptor eldest;
        if (!clients.empty()) {
            eldest = std::move(clients.front());
            clients.erase(clients.begin());
        } else if (wanted[1].revents) {
            eldest = Descriptor(accept4(m_listener.Get(), nullptr, nullptr, SOCK_CLOEXEC));
            if (!eldest)
                poll(wanted, 1, kTurnMilliseconds);
        }
        if (eldest && IsOfUser(eldest.Get()))
            Answer(eldest, ERROR_NOT_ENOUGH_MEMORY);
        return Turn::taken;
    }

    static void Answer(const Descriptor& client, DWORD error)
    {
        SendBytes(client.Get(), {reinterpret_cast<const char*>(&error), sizeof error});
    }

    void TakeControl(const Descriptor& connection)
    {
        const auto control = ReadControl(connection.Get());
        if (!control)
            return;
        Handler handler;
        {
            const std::lock_guard lock(m_mutex);
            handler = m_handler;
        }
        // By contract nothing reaches a service that was asked to stop, which counts as gone even when it goes on running.
        const bool takes = handler && !m_isStopping;
        const DWORD error = takes ? ERROR_SUCCESS : ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
        if (takes) {
            const MemoryMode ofHost(false);
            handler(*control);
            m_isStopping = *control == SERVICE_CONTROL_STOP;
        }
        Answer(connection, error);
    }

    const StartArguments m_start;
    const ServiceFolder m_folder;
    const Descriptor m_listener;
    const Descriptor m_stopped;
    std::mutex m_mutex;
    Descriptor m_channel;
    Handler m_handler;
    bool m_isStopping = false;  // the dispatcher's thread alone looks at it
    const DWORD m_process;
    const ULONGLONG m_processStart;
};

/// A service's handle for its reports.
struct StatusObject final : HandleObject
{
    bool ClosesByCloseHandle() const override { return false; }
};

std::atomic<RunningService*> runningService = nullptr;
std::atomic<bool> dispatcherCalled = false;

// The service that this process was started for; null with the last error.
RunningService* ConnectToStarter()
{
    const bool isService = secure_getenv(kServiceMark) != nullptr;
    // Programs that the service starts are no services.
    unsetenv(kServiceMark);
    if (!isService || fcntl(kStartChannel, F_SETFD, FD_CLOEXEC) != 0)
        return Fail(ERROR_FAILED_SERVICE_CONTROLLER_CONNECT, static_cast<RunningService*>(nullptr));
    auto start = ReadStartMessage(kStartChannel, GetTickCount64() + kMessageMilliseconds);
    if (!start)
        return Fail(ERROR_FAILED_SERVICE_CONTROLLER_CONNECT, static_cast<RunningService*>(nullptr));
    // Never destroyed: its main function may still run when the dispatcher has returned.
    auto* const service = new RunningService(*std::move(start), Descriptor(kStartChannel));
    return service->IsReady() ? service : Fail(ERROR_FAILED_SERVICE_CONTROLLER_CONNECT, static_cast<RunningService*>(nullptr));
}

// The entry with the service's name, or the only one.
template <class Entry>
const Entry* EntryFor(const Entry* table, std::u16string_view name)
{
    std::size_t count = 0;
    for (; table[count].lpServiceName && table[count].lpServiceProc; ++count)
        if (CompareNames(WideText(table[count].lpServiceName), name) == 0)
            return &table[count];
    return count == 1 ? table : nullptr;
}

std::string Argument(const std::string& text, char)
{
    return AnsiName(text);
}

std::u16string Argument(const std::string& text, WCHAR)
{
    return WideName(text);
}

/// A service's main function with its arguments, which live as long as the process.
template <class Char>
struct MainCall
{
    using Text = decltype(Argument(std::string(), Char()));

    void (*procedure)(DWORD, Char**);
    std::vector<Text> texts;

    static DWORD Run(LPVOID parameter)
    {
        auto& call = *static_cast<MainCall*>(parameter);
        std::vector<Char*> pointers;
        pointers.reserve(call.texts.size() + 1);
        for (Text& text : call.texts)
            pointers.push_back(reinterpret_cast<Char*>(text.data()));
        pointers.push_back(nullptr);
        call.procedure(static_cast<DWORD>(call.texts.size()), pointers.data());
        return 0;
    }
};

template <class Char, class Entry>
BOOL Dispatch(const Entry* table)
{
    if (dispatcherCalled.exchange(true))
        return Fail(ERROR_SERVICE_ALREADY_RUNNING, FALSE);
    RunningService* const service = ConnectToStarter();
    if (!service)
        return FALSE;
    const Entry* const entry = table ? EntryFor(table, service->Start().name) : nullptr;
    if (!entry)
        return Fail(table ? ERROR_SERVICE_NOT_IN_EXE : ERROR_INVALID_PARAMETER, FALSE);

    runningService = service;
    auto* const call = new MainCall<Char>{entry->lpServiceProc, {}};
    call->texts.push_back(Argument(NarrowName(reinterpret_cast<LPCWSTR>(service->Start().name.c_str())), Char()));
    for (const std::string& argument : service->Start().arguments)
        call->texts.push_back(Argument(argument, Char()));
    const HANDLE thread = CreateThread(nullptr, 0, MainCall<Char>::Run, call, 0, nullptr);
    if (!thread)
        return FALSE;
    CloseHandle(thread);
    service->TakeControls();
    return TRUE;
}

SERVICE_STATUS_HANDLE Register(Handler handler)
{
    RunningService* const service = runningService;
    if (!service)
        return Fail(ERROR_SERVICE_DOES_NOT_EXIST, SERVICE_STATUS_HANDLE{});
    service->SetHandler(std::move(handler));
    return static_cast<SERVICE_STATUS_HANDLE>(Handles().Insert(std::make_shared<StatusObject>()));
}

Handler Plain(LPHANDLER_FUNCTION handler)
{
    return [handler](DWORD control) {
        handler(control);
        return DWORD{NO_ERROR};
    };
}

Handler Extended(LPHANDLER_FUNCTION_EX handler, LPVOID context)
{
    return [=](DWORD control) { return handler(control, 0, nullptr, context); };
}

}  // namespace

BOOL StartServiceCtrlDispatcherA(const SERVICE_TABLE_ENTRYA* table)
{
    return OrNoMemory<BOOL>(FALSE, [table] { return Dispatch<CHAR>(table); });
}

BOOL StartServiceCtrlDispatcherW(const SERVICE_TABLE_ENTRYW* table)
{
    return OrNoMemory<BOOL>(FALSE, [table] { return Dispatch<WCHAR>(table); });
}

SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerA(LPCSTR, LPHANDLER_FUNCTION handler)
{
    return OrNoMemory(SERVICE_STATUS_HANDLE{}, [&]() -> SERVICE_STATUS_HANDLE { return Register(Plain(handler)); });
}

SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerW(LPCWSTR, LPHANDLER_FUNCTION handler)
{
    return OrNoMemory(SERVICE_STATUS_HANDLE{}, [&]() -> SERVICE_STATUS_HANDLE { return Register(Plain(handler)); });
}

SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerExA(LPCSTR, LPHANDLER_FUNCTION_EX handler, LPVOID context)
{
    return OrNoMemory(SERVICE_STATUS_HANDLE{}, [&]() -> SERVICE_STATUS_HANDLE { return Register(Extended(handler, context)); });
}

SERVICE_STATUS_HANDLE RegisterServiceCtrlHandlerExW(LPCWSTR, LPHANDLER_FUNCTION_EX handler, LPVOID context)
{
    return OrNoMemory(SERVICE_STATUS_HANDLE{}, [&]() -> SERVICE_STATUS_HANDLE { return Register(Extended(handler, context)); });
}

BOOL SetServiceStatus(SERVICE_STATUS_HANDLE service, LPSERVICE_STATUS status)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (!runningService || !Handles().Find<StatusObject>(service))
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        if (!status)
            return Fail(ERROR_INVALID_ADDRESS, FALSE);
        const DWORD error = runningService.load()->Report(*status);
        return error == ERROR_SUCCESS ? TRUE : Fail(error, FALSE);
    });
}
