// FileLikeness.cpp: copies what a file is beside its bytes.
#include <kelgen/platform/posix/files/FileLikeness.h>

#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>

namespace kelgen::posix {

bool MakeAlike(int file, int model, const struct stat& state)
{
    if (fchown(file, state.st_uid, state.st_gid) != 0)
        return false;
    std::string names(static_cast<std::size_t>(std::max<ssize_t>(flistxattr(model, nullptr, 0), 0)), '\0');
    names.resize(static_cast<std::size_t>(std::max<ssize_t>(flistxattr(model, names.data(), names.size()), 0)));
    for (std::size_t begin = 0; begin < names.size(); begin = names.find('\0', begin) + 1) {
        const char* const name = names.c_str() + begin;
        errno = EACCES;
        std::string value(static_cast<std::size_t>(std::max<ssize_t>(fgetxattr(model, name, nullptr, 0), 0)), '\0');
        // What the system keeps for itself it gives to each file.
        const bool isKept = fgetxattr(model, name, value.data(), value.size()) == static_cast<ssize_t>(value.size()) &&
                            fsetxattr(file, name, value.data(), value.size(), 0) == 0;
        if (!isKept && !std::string_view(name).starts_with("security."))
            return false;
    }
    return fchmod(file, state.st_mode & 07777) == 0;
}

}  // namespace kelgen::posix
