// CreateProcess.cpp: starts programs, tells their exit codes and ends them.
#include <kelgen/platform/posix/processes/api/Processes.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileObjects.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/processes/CommandLines.h>
#include <kelgen/platform/posix/processes/ProcessObjects.h>
#include <kelgen/platform/posix/processes/api/ProcessList.h>
#include <kelgen/platform/posix/threads/api/Threads.h>

using namespace kelgen::posix;

namespace {

struct Request
{
    std::optional<std::string> program;
    std::string commandLine;
    std::optional<std::string> folder;
    const void* environment;
    bool wideEnvironment;
};

template <class Char>
std::vector<std::string> TextsOf(const Char* block)
{
    std::vector<std::string> texts;
    for (; *block; block += std::basic_string_view<Char>(block).size() + 1)
        texts.push_back(NarrowName(block));
    return texts;
}

std::vector<std::string> EnvironmentOf(const Request& request)
{
    if (!request.environment)
        return OwnEnvironment();
    return request.wideEnvironment ? TextsOf(static_cast<const WCHAR*>(request.environment))
                                   : TextsOf(static_cast<const char*>(request.environment));
}

// Program and arguments; false with the last error.
bool ResolveProgram(const Request& request, ProgramStart& start)
{
    if (!request.program) {
        auto command = FindCommand(request.commandLine);
        if (!command)
            return false;
        start.program = std::move(command->program);
        start.arguments = std::move(command->arguments);
        return true;
    }
    const ResolvedPath path = Resolve(*request.program);
    if (!path.exists)
        return Fail(path.error ? path.error : ERROR_FILE_NOT_FOUND, false);
    if (path.isFolder)
        return Fail(ERROR_ACCESS_DENIED, false);
    start.program = path.native;
    start.arguments = SplitArguments(request.commandLine);
    if (start.arguments.empty())
        start.arguments.push_back(*request.program);
    return true;
}

template <class Char>
void TakeFiles(const KelgenStartupInfo<Char>& startup, ProgramStart& start)
{
    if (!(startup.dwFlags & STARTF_USESTDHANDLES))
        return;
    const HANDLE handles[] = {startup.hStdInput, startup.hStdOutput, startup.hStdError};
    for (int i = 0; i < 3; ++i)
        if (const auto file = Handles().Find<FileObject>(handles[i]))
            start.files[i] = file->Number();
}

BOOL Start(const Request& request, ProgramStart& start, PROCESS_INFORMATION* information)
{
    if (!ResolveProgram(request, start))
        return FALSE;
    if (request.folder) {
        const auto folder = ToNativeFolder(*request.folder);
        if (!folder)
            return Fail(ERROR_DIRECTORY, FALSE);
        start.folder = *folder;
    }
    start.environment = EnvironmentOf(request);
    const auto process = StartProgram(start);
    if (!process)
        return FALSE;
    const auto insert = [&process] {
        return OrNoMemory(HANDLE{}, [&process] { return Handles().Insert(std::make_shared<ProcessObject>(process, PROCESS_ALL_ACCESS)); });
    };
    const HANDLE opened = insert();
    const HANDLE thread = opened ? insert() : nullptr;
    if (!thread) {
        const DWORD error = GetLastError();
        Handles().Remove(opened);
        OrNoMemory(false, [&process, error] { return process->Kill(error); });
        return Fail(error, FALSE);
    }
    *information = {opened, thread, process->Id(), process->Id()};
    return TRUE;
}

template <class Char>
BOOL Start(const Request& request, BOOL inherit, DWORD flags, const KelgenStartupInfo<Char>* startup, PROCESS_INFORMATION* information)
{
    if (flags & CREATE_SUSPENDED)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    if (!startup || !information)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    ProgramStart start;
    if (inherit)
        TakeFiles(*startup, start);
    return Start(request, start, information);
}

}  // namespace

BOOL CreateProcessA(LPCSTR program, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL inherit, DWORD flags,
                    LPVOID environment, LPCSTR folder, LPSTARTUPINFOA startup, LPPROCESS_INFORMATION information)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        Request request{{}, NarrowName(commandLine), {}, environment, (flags & CREATE_UNICODE_ENVIRONMENT) != 0};
        if (program)
            request.program = NarrowName(program);
        if (folder)
            request.folder = NarrowName(folder);
        return Start(request, inherit, flags, startup, information);
    });
}

BOOL CreateProcessW(LPCWSTR program, LPWSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL inherit, DWORD flags,
                    LPVOID environment, LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION information)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        Request request{{}, NarrowName(commandLine), {}, environment, (flags & CREATE_UNICODE_ENVIRONMENT) != 0};
        if (program)
            request.program = NarrowName(program);
        if (folder)
            request.folder = NarrowName(folder);
        return Start(request, inherit, flags, startup, information);
    });
}

BOOL GetExitCodeProcess(HANDLE process, LPDWORD exitCode)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = FindProcessObject(process);
        if (!object)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        *exitCode = object->Target().ExitCode();
        return TRUE;
    });
}

BOOL TerminateProcess(HANDLE process, UINT exitCode)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        const auto object = FindProcessObject(process);
        if (!object)
            return Fail(ERROR_INVALID_HANDLE, FALSE);
        if (!(object->Access() & PROCESS_TERMINATE) || !object->Target().Kill(exitCode))
            return Fail(ERROR_ACCESS_DENIED, FALSE);
        return TRUE;
    });
}
