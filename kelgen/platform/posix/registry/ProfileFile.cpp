// ProfileFile.cpp: finds, reads and replaces initialization files.
#include <kelgen/platform/posix/registry/ProfileFile.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>

namespace kelgen::posix {

namespace {

constexpr const char* kWindowsFolder = "C:\\windows";

/// The whole file; false, with errno, when it cannot be read.
bool ReadWhole(const std::string& path, std::string& bytes)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return false;
    std::array<char, 16384> part;
    for (;;) {
        const ssize_t count = read(file.Get(), part.data(), part.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            return true;
        bytes.append(part.data(), static_cast<std::size_t>(count));
    }
}

/// Why a file cannot be opened. A folder in its place, or in the way to it, is told apart from a missing file.
DWORD ErrorOfPath(const std::string& path)
{
    const int error = errno;
    if (error == ENOENT && access(path.substr(0, path.rfind('/') + 1).c_str(), F_OK) != 0)
        return ERROR_PATH_NOT_FOUND;
    return ErrorFromErrno(error);
}

/// Where the file itself lies: a link to it stays a link when the file is replaced.
std::string FollowLinks(const std::string& path)
{
    std::array<char, PATH_MAX> target;
    return realpath(path.c_str(), target.data()) ? std::string(target.data()) : path;
}

/// Excludes other writers of files in the same folder until destruction. The lock is the folder's: nothing is left behind, and a
/// killed process holds nothing.
class FolderLock
{
public:
    explicit FolderLock(const std::string& folder) : m_folder(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        while (m_folder && flock(m_folder.Get(), LOCK_EX) != 0 && errno == EINTR) {
        }
    }

    explicit operator bool() const { return static_cast<bool>(m_folder); }

private:
    Descriptor m_folder;
};

/// Replaces @p path; its folder is locked, so the scratch file's name is free, or a killed process's.
bool Replace(const std::string& path, const std::string& bytes)
{
    struct stat old;
    const mode_t mode = stat(path.c_str(), &old) == 0 ? old.st_mode & 07777 : 0666;
    const std::size_t slash = path.rfind('/');
    const std::string scratch = path.substr(0, slash + 1) + '.' + path.substr(slash + 1) + ".new";
    unlink(scratch.c_str());
    Descriptor file(open(scratch.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file)
        return false;
    if (mode != 0666)
        fchmod(file.Get(), mode);
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const ssize_t written = write(file.Get(), rest.data(), rest.size());
        if (written < 0 && errno != EINTR)
            break;
        rest.remove_prefix(static_cast<std::size_t>(std::max(written, ssize_t{0})));
    }
    if (rest.empty() && close(file.Release()) == 0 && rename(scratch.c_str(), path.c_str()) == 0)
        return true;
    const int error = errno;
    unlink(scratch.c_str());
    errno = error;
    return false;
}

}  // namespace

std::string ProfilePath(LPCSTR file)
{
    std::string name = file ? file : "win.ini";
    if (name.empty())
        return Fail(ERROR_ACCESS_DENIED, std::string());
    if (name.find_first_of("\\/:") == std::string::npos) {
        mkdir((DriveCFolder() + "/windows").c_str(), 0700);
        name = std::string(kWindowsFolder) + '\\' + name;
    }
    const ResolvedPath resolved = Resolve(name);
    if (resolved.isFolder)
        return Fail(ERROR_ACCESS_DENIED, std::string());
    if (!resolved.exists && resolved.error != ERROR_FILE_NOT_FOUND)
        return Fail(resolved.error, std::string());
    return resolved.native;
}

ProfileText ReadProfile(const std::string& path)
{
    std::string bytes;
    if (path.empty())
        return ProfileText();
    if (!ReadWhole(path, bytes))
        return Fail(ErrorOfPath(path), ProfileText());
    SetLastError(ERROR_SUCCESS);
    return ProfileText(bytes);
}

BOOL ChangeProfile(const std::string& path, const std::function<bool(ProfileText&)>& change)
{
    if (path.empty())
        return FALSE;
    const std::string target = FollowLinks(path);
    const FolderLock lock(target.substr(0, target.rfind('/') + 1));
    if (!lock)
        return Fail(ErrorOfPath(target), FALSE);

    std::string bytes;
    if (!ReadWhole(target, bytes) && errno != ENOENT)
        return Fail(ErrorOfPath(target), FALSE);
    ProfileText text(bytes);
    if (!change(text))
        return TRUE;
    return Replace(target, text.Bytes()) ? TRUE : Fail(ErrorOfPath(target), FALSE);
}

}  // namespace kelgen::posix
