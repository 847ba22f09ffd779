// Remains.cpp: counts descriptors, files and windows.
#include "posix/faults/Remains.h"

#include <kelgen/platform/Win32.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>

#include <unistd.h>

namespace kelgen::test {

std::ostream& operator<<(std::ostream& out, const Remains& remains)
{
    return out << remains.descriptors << " descriptors, " << remains.files << " files, " << remains.windows << " windows";
}

Remains Remains::Now()
{
    namespace fs = std::filesystem;
    Remains remains;
    remains.descriptors = std::distance(fs::directory_iterator("/proc/self/fd"), {});
    const fs::path home = std::getenv("KELGEN_HOME");
    for (auto entry = fs::recursive_directory_iterator(home.parent_path()); entry != fs::recursive_directory_iterator(); ++entry)
        ++remains.files;
    const auto count = [](HWND, LPARAM number) -> BOOL {
        ++*reinterpret_cast<int*>(number);
        return TRUE;
    };
    EnumWindows(count, reinterpret_cast<LPARAM>(&remains.windows));
    for (HWND window = nullptr; (window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr));)
        ++remains.windows;
    return remains;
}

long Resident()
{
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace kelgen::test
