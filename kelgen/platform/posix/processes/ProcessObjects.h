// ProcessObjects.h: the objects behind process handles, and how programs are started.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/processes/RunningProcesses.h>
#include <kelgen/platform/posix/threads/Waits.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kelgen::posix {

/// A process, signalled when it has ended. One object stands for it while handles do.
class Process final : public Waitable, public std::enable_shared_from_this<Process>
{
public:
    Process(DWORD id, ULONGLONG start, bool isChild) : m_id(id), m_start(start), m_isChild(isChild) {}
    ~Process() override;

    DWORD Id() const { return m_id; }
    bool IsSignalled(DWORD) const override { return m_ended; }

    /// Sees to it that the object is signalled at the process's end. Called before the first wait; for a child at its start. False, with
    /// errno, when the system refuses now: to be called again.
    bool WatchEnd();

    /// The exit code, or STILL_ACTIVE; 0 for an ended process that this one has not started.
    DWORD ExitCode();

    /// Kills it unless it has ended; its exit code is then @p exitCode. False with errno.
    bool Kill(DWORD exitCode);

private:
    bool IsRunning() const;
    void Reap(int descriptor);
    void End(DWORD exitCode);

    const DWORD m_id;
    const ULONGLONG m_start;  // 0: a child's that the system could not tell
    const bool m_isChild;
    std::mutex m_watchMutex;
    bool m_isWatched = false;
    std::atomic<bool> m_killed = false;
    std::atomic<DWORD> m_killedWith = 0;
    bool m_ended = false;  // under the dispatcher lock, as the exit code
    DWORD m_exitCode = 0;
};

/// A handle's view of a process: the process and what may be done with it.
class ProcessObject final : public WaitsForAnother
{
public:
    ProcessObject(std::shared_ptr<Process> process, DWORD access) : m_process(std::move(process)), m_access(access) {}

    DWORD Id() const { return m_process->Id(); }
    DWORD Access() const { return m_access; }
    Process& Target() const { return *m_process; }
    std::shared_ptr<Waitable> WaitedFor() override;

    // What EnumProcessModules listed last, for the names that are asked for next.
    std::mutex listMutex;
    std::vector<ProcessModule> listed;

private:
    std::shared_ptr<Process> m_process;
    DWORD m_access;
};

/// The object of @p handle, even of the pseudo handle of this process; null for another kind.
std::shared_ptr<ProcessObject> FindProcessObject(HANDLE handle);

/// The process with number @p id; null, with errno, when there is none (ESRCH) or the system cannot tell now.
std::shared_ptr<Process> FindProcessById(DWORD id);

/// How a program is started.
struct ProgramStart
{
    std::string program;                   // path of the file system
    std::vector<std::string> arguments;    // the program's name first
    std::vector<std::string> environment;  // "NAME=value"
    std::string folder;                    // to start in; empty: the current one
    int files[3] = {-1, -1, -1};           // standard input, output and error; -1: the caller's own
    int extraFile = -1;                    // becomes descriptor 3
    bool apart = false;                    // a session of its own, with nothing of the caller's open but these files
};

/// Starts a program directly, never through a shell; null with the last error set.
std::shared_ptr<Process> StartProgram(const ProgramStart& start);

/// The environment of this process.
std::vector<std::string> OwnEnvironment();

}  // namespace kelgen::posix
