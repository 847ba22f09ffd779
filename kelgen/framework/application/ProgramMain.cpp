// ProgramMain.cpp: a program from start to end, and what it tells of an end before its time.
#include <kelgen/framework/application/internal/ProgramMain.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/framework/windows/Wnd.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include <cxxabi.h>

namespace {

constexpr int kFailed = 1;

enum class ECourse
{
    ran,
    notPrepared,
    notStarted,
};

struct Ended
{
    int exitCode;
    ECourse course;
};

// Whether the thread handled messages or is told to quit: what InitInstance did was the program's work.
bool HasWorked()
{
    MSG message;
    return AfxGetCurrentMessage()->message != 0 || ::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE);
}

constexpr std::size_t kMostAtEnd = 4;
std::array<std::atomic<void (*)()>, kMostAtEnd> atProgramEnd{};

// Also when an exception leaves the program.
struct ProgramEnd
{
    ~ProgramEnd()
    {
        for (const auto& each : atProgramEnd)
            if (const auto call = each.load())
                call();
    }
};

Ended Run(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand)
{
    const ProgramEnd end;
    Ended ended{-1, ECourse::notPrepared};
    CWinApp* const app = AfxGetApp();
    CWinThread* const thread = AfxGetThread();
    const bool ready = thread && AfxWinInit(instance, previousInstance, commandLine, showCommand) && (!app || app->InitApplication());
    if (ready && thread->InitInstance()) {
        ended = {thread->Run(), ECourse::ran};
    } else if (ready) {
        const bool hasWorked = HasWorked();
        if (thread->m_pMainWnd)
            thread->m_pMainWnd->DestroyWindow();
        ended.exitCode = thread->ExitInstance();
        ended.course = hasWorked || ended.exitCode != 0 ? ECourse::ran : ECourse::notStarted;
    }
    AfxWinTerm();
    return ended;
}

void Tell(const char* text) noexcept
{
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, sizeof path - 1);
    const char* const separator = std::strrchr(path, '\\');
    std::fprintf(stderr, "%s: %s\n", separator ? separator + 1 : path, text);
    std::fflush(stderr);
}

void TellOfException() noexcept
{
    char text[800] = "ended by ";
    const std::size_t length = std::strlen(text);
    kelgen::detail::DescribeCaught(text + length, static_cast<UINT>(sizeof text - length));
    Tell(text);
}

void TellOfFailedStart()
{
    char name[200] = "the thread";
    if (const CWinThread* const thread = AfxGetThread())
        kelgen::detail::WriteClassName(typeid(*thread), name, sizeof name);
    char text[300];
    std::snprintf(text, sizeof text, "cannot start: InitInstance of %s returned FALSE", name);
    Tell(text);
}

std::terminate_handler handlerBefore = nullptr;

void EndByException()
{
    if (!std::current_exception()) {
        handlerBefore();
        std::abort();
    }
    TellOfException();
    std::_Exit(kFailed);
}

}  // namespace

int AfxWinMain(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand)
{
    return Run(instance, previousInstance, commandLine, showCommand).exitCode;
}

namespace kelgen::detail {

int RunProgram(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand)
{
    try {
        const Ended ended = Run(instance, previousInstance, commandLine, showCommand);
        if (ended.course == ECourse::ran)
            return ended.exitCode;
        if (ended.course == ECourse::notStarted)
            TellOfFailedStart();
        else
            Tell(AfxGetThread() ? "cannot start: InitApplication returned FALSE" : "cannot start: there is no application object");
    } catch (CException* exception) {
        TellOfException();
        if (exception)
            exception->Delete();
    } catch (abi::__forced_unwind&) {
        // No exception: the thread ends.
        throw;
    } catch (...) {
        TellOfException();
    }
    return kFailed;
}

void CallAtProgramEnd(void (*call)())
{
    for (auto& each : atProgramEnd) {
        void (*none)() = nullptr;
        if (each.compare_exchange_strong(none, call))
            return;
    }
}

void TellOfFatalExceptions()
{
    handlerBefore = std::set_terminate(EndByException);
}

}  // namespace kelgen::detail
