// ProcessObjects.cpp: processes as waitable objects over the kernel's process descriptors, and starting them.
#include <kelgen/platform/posix/processes/ProcessObjects.h>

#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>
#include <kelgen/platform/posix/processes/api/ProcessList.h>
#include <kelgen/platform/posix/processes/api/Processes.h>
#include <kelgen/platform/posix/threads/DescriptorEvents.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

#include <csignal>
#include <map>
#include <new>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelgen::posix {

namespace {

// <sys/wait.h> of older systems does not know it.
constexpr auto kByDescriptor = static_cast<idtype_t>(3);
constexpr DWORD kAccessViolation = 0xC0000005;

class ProcessTable
{
public:
    static ProcessTable& Get()
    {
        static auto& table = *new ProcessTable;
        return table;
    }

    std::shared_ptr<Process> Find(DWORD id, ULONGLONG start)
    {
        const std::lock_guard lock(m_mutex);
        auto& entry = m_processes[{id, start}];
        auto process = entry.lock();
        if (!process)
            entry = process = std::make_shared<Process>(id, start, false);
        std::erase_if(m_processes, [](const auto& known) { return known.second.expired(); });
        return process;
    }

    void Add(const std::shared_ptr<Process>& process, ULONGLONG start)
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_processes, [](const auto& known) { return known.second.expired(); });
        m_processes[{process->Id(), start}] = process;
    }

private:
    std::mutex m_mutex;
    std::map<std::pair<DWORD, ULONGLONG>, std::weak_ptr<Process>> m_processes;
};

int OpenDescriptor(DWORD id)
{
    return static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0));
}

// The system's limits of watches and processes are a lack of memory for the platform.
DWORD LackError(int error)
{
    return error == ENOSPC || error == EAGAIN ? ERROR_NOT_ENOUGH_MEMORY : ErrorFromErrno(error);
}

// What the platform would give as exit code: that of an exception for a crash, 3 after abort.
DWORD CodeOf(const siginfo_t& end)
{
    if (end.si_code == CLD_EXITED)
        return static_cast<DWORD>(end.si_status);
    switch (end.si_status) {
    case SIGSEGV:
    case SIGBUS:
        return kAccessViolation;
    case SIGABRT:
        return 3;
    default:
        return static_cast<DWORD>(128 + end.si_status);
    }
}

}  // namespace

Process::~Process()
{
    // Nobody else asks for its end.
    if (m_isChild && !m_isWatched)
        waitpid(static_cast<pid_t>(m_id), nullptr, WNOHANG);
}

bool Process::IsRunning() const
{
    const auto start = StartOfProcess(m_id);
    if (!start)
        return errno != ESRCH;
    return *start == m_start || (m_isChild && m_start == 0);
}

bool Process::WatchEnd()
{
    const std::lock_guard lock(m_watchMutex);
    if (m_isWatched)
        return true;
    Descriptor descriptor(OpenDescriptor(m_id));
    if (!descriptor && errno != ESRCH)
        return false;
    // The number may be another process's by now.
    if (!descriptor || (!m_isChild && !IsRunning())) {
        m_isWatched = true;
        End(0);
        return true;
    }
    const int number = descriptor.Get();
    m_isWatched = DescriptorEvents::Get().Watch(number, [self = shared_from_this(), number] { self->Reap(number); });
    if (m_isWatched)
        descriptor.Release();
    return m_isWatched;
}

void Process::Reap(int descriptor)
{
    siginfo_t end{};
    if (m_isChild)
        Retry([&] { return waitid(kByDescriptor, static_cast<id_t>(descriptor), &end, WEXITED); });
    DescriptorEvents::Get().Forget(descriptor);
    close(descriptor);
    End(m_killed ? m_killedWith.load() : end.si_pid != 0 ? CodeOf(end) : 0);
}

void Process::End(DWORD exitCode)
{
    const std::lock_guard lock(DispatcherLock());
    m_exitCode = exitCode;
    m_ended = true;
    ServeWaits();
}

DWORD Process::ExitCode()
{
    if (m_isChild)
        WatchEnd();
    {
        const std::lock_guard lock(DispatcherLock());
        if (m_ended)
            return m_exitCode;
    }
    return m_isChild || IsRunning() ? STILL_ACTIVE : 0;
}

bool Process::Kill(DWORD exitCode)
{
    const Descriptor descriptor(OpenDescriptor(m_id));
    if ((!descriptor && errno == ESRCH) || !IsRunning())
        return true;
    m_killedWith = exitCode;
    m_killed = true;
    if (!descriptor)
        return kill(static_cast<pid_t>(m_id), SIGKILL) == 0;
    return syscall(SYS_pidfd_send_signal, descriptor.Get(), SIGKILL, nullptr, 0) == 0;
}

std::shared_ptr<Waitable> ProcessObject::WaitedFor()
{
    return m_process->WatchEnd() ? m_process : Fail(LackError(errno), std::shared_ptr<Process>());
}

std::shared_ptr<ProcessObject> FindProcessObject(HANDLE handle)
{
    if (handle != GetCurrentProcess())
        return Handles().Find<ProcessObject>(handle);
    return std::make_shared<ProcessObject>(FindProcessById(GetCurrentProcessId()), PROCESS_ALL_ACCESS);
}

std::shared_ptr<Process> FindProcessById(DWORD id)
{
    const auto start = StartOfProcess(id);
    return start ? ProcessTable::Get().Find(id, *start) : nullptr;
}

std::vector<std::string> OwnEnvironment()
{
    std::vector<std::string> variables;
    for (char** entry = environ; *entry; ++entry)
        variables.emplace_back(*entry);
    return variables;
}

namespace {

std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

DWORD StartError(int error, const std::string& program)
{
    struct stat file;
    const bool isFile = stat(program.c_str(), &file) == 0 && S_ISREG(file.st_mode);
    // A file that nobody may execute is no program; the platform knows no such permission.
    if (error == ENOEXEC || (error == EACCES && isFile && (file.st_mode & 0111) == 0))
        return ERROR_BAD_EXE_FORMAT;
    return LackError(error);
}

class SpawnActions
{
public:
    explicit SpawnActions(const ProgramStart& start)
    {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        bool done = true;
        for (int i = 0; i < 3; ++i)
            if (start.files[i] >= 0)
                done &= posix_spawn_file_actions_adddup2(&actions, start.files[i], i) == 0;
        if (start.extraFile >= 0)
            done &= posix_spawn_file_actions_adddup2(&actions, start.extraFile, 3) == 0;
        if (start.apart)
            done &= posix_spawn_file_actions_addclosefrom_np(&actions, start.extraFile >= 0 ? 4 : 3) == 0;
        if (!start.folder.empty())
            done &= posix_spawn_file_actions_addchdir_np(&actions, start.folder.c_str()) == 0;
        if (!done) {
            Destroy();
            throw std::bad_alloc();
        }

        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_setsigdefault(&attributes, &all);
        posix_spawnattr_setsigmask(&attributes, &none);
        const int flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | (start.apart ? POSIX_SPAWN_SETSID : 0);
        posix_spawnattr_setflags(&attributes, static_cast<short>(flags));
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { Destroy(); }

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;

private:
    void Destroy()
    {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
};

}  // namespace

std::shared_ptr<Process> StartProgram(const ProgramStart& start)
{
    const SpawnActions spawn(start);
    pid_t id = 0;
    const std::vector<char*> arguments = Pointers(start.arguments);
    const std::vector<char*> environment = Pointers(start.environment);
    const int error = posix_spawn(&id, start.program.c_str(), &spawn.actions, &spawn.attributes, arguments.data(), environment.data());
    if (error != 0)
        return Fail(StartError(error, start.program), std::shared_ptr<Process>());

    // Not waited for yet, so the number is still its own even when it has ended; then it has no start, and needs none.
    try {
        const DWORD number = static_cast<DWORD>(id);
        const ULONGLONG started = StartOfProcess(number).value_or(0);
        auto process = std::make_shared<Process>(number, started, true);
        ProcessTable::Get().Add(process, started);
        process->WatchEnd();
        return process;
    } catch (const std::bad_alloc&) {
        kill(id, SIGKILL);
        Retry([id] { return waitpid(id, nullptr, 0); });
        throw;
    }
}

}  // namespace kelgen::posix
