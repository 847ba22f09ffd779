// DumpByEnvironment.cpp: KELGEN_DUMP=FILE gets a dump of the desktop at the program's end and at each SIGUSR1.
#include <kelgen/window/DesktopDump.h>

#include <kelgen/framework/application/internal/ProgramMain.h>
#include <kelgen/platform/support/DesktopState.h>

#include <cstdlib>
#include <fstream>
#include <mutex>
#include <string>

namespace {

// Never destroyed: the signal may come at the very end of the process.
struct DumpFile
{
    std::mutex lock;
    std::string path;
};

DumpFile* dumpFile = nullptr;

void Append(const char* title) noexcept
{
    try {
        const std::lock_guard lock(dumpFile->lock);
        std::ofstream out(dumpFile->path, std::ios::app);
        out << title << '\n';
        kelgen::DumpDesktop(out);
    } catch (...) {
        // A dump is no reason to end.
    }
}

void AppendAtSignal()
{
    Append("desktop at a signal:");
}

// While the windows are there: the main thread's go with its thread-local objects, before static ones.
void AppendAtEnd()
{
    Append("desktop at the end:");
}

struct DumpByEnvironment
{
    DumpByEnvironment()
    {
        const char* const path = std::getenv("KELGEN_DUMP");
        if (!path || !*path)
            return;
        dumpFile = new DumpFile;
        dumpFile->path = path;
        kelgen::detail::CallAtProgramEnd(AppendAtEnd);
        kelgen::CallOnDumpSignal(AppendAtSignal);
    }
};

const DumpByEnvironment dumpByEnvironment;

}  // namespace
