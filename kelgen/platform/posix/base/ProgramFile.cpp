// ProgramFile.cpp: asks the system for the running program's file.
#include <kelgen/platform/posix/base/ProgramFile.h>

#include <unistd.h>

#include <climits>

namespace kelgen::posix {

std::string ProgramFile()
{
    char buffer[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer);
    return std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
}

}  // namespace kelgen::posix
