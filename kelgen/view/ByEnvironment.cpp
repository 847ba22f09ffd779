// ByEnvironment.cpp: what KELGEN_VIEW and KELGEN_SNAPSHOT ask for, as soon as the library is loaded.
#include <kelgen/view/Picture.h>
#include <kelgen/view/View.h>

#include <kelgen/framework/application/internal/ProgramMain.h>
#include <kelgen/platform/support/DesktopPicture.h>
#include <kelgen/platform/support/DesktopState.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace {

// Never destroyed: the signal may come at the very end of the process.
struct SnapshotFile
{
    std::mutex lock;
    std::string path;
};

SnapshotFile* snapshotFile = nullptr;

void WriteSnapshot() noexcept
{
    try {
        const std::lock_guard lock(snapshotFile->lock);
        // Whoever waits for the file finds it whole.
        const std::string unfinished = snapshotFile->path + ".part";
        {
            std::ofstream out(unfinished, std::ios::binary | std::ios::trunc);
            kelgen::view::WriteSvg(out);
        }
        std::rename(unfinished.c_str(), snapshotFile->path.c_str());
    } catch (...) {
        // A picture is no reason to end.
    }
}

void WriteSnapshotAtEnd() noexcept
{
    try {
        if (kelgen::TakeDesktopPicture(nullptr, 0).windows.empty())
            return;
    } catch (...) {
        return;
    }
    WriteSnapshot();
}

void StartBy(const char* text)
{
    constexpr std::string_view kSocket = "unix:";
    if (std::string_view(text).starts_with(kSocket) && text[kSocket.size()] != 0) {
        kelgen::view::Start({.socket = text + kSocket.size()});
        return;
    }
    int port = 0;
    const char* const end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, port);
    if (error != std::errc() || stop != end || port < 0 || port > 0xFFFF)
        std::fprintf(stderr, "view: KELGEN_VIEW is neither a port nor unix:PATH: %s\n", text);
    else
        kelgen::view::Start({.port = port});
}

struct ByEnvironment
{
    // Programs with raised rights show nothing.
    ByEnvironment()
    {
        if (const char* const path = secure_getenv("KELGEN_SNAPSHOT"); path && *path) {
            snapshotFile = new SnapshotFile;
            snapshotFile->path = path;
            kelgen::detail::CallAtProgramEnd([] { WriteSnapshotAtEnd(); });
            kelgen::CallOnDumpSignal([] { WriteSnapshot(); });
        }
        if (const char* const port = secure_getenv("KELGEN_VIEW"); port && *port)
            StartBy(port);
    }
};

const ByEnvironment byEnvironment;

}  // namespace
