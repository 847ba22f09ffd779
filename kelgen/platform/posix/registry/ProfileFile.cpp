// ProfileFile.cpp: finds, reads and replaces initialization files.
#include <kelgen/platform/posix/registry/ProfileFile.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/FileLikeness.h>
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

/// The whole of an open file; false, with errno, when it cannot be read.
bool ReadWhole(const Descriptor& file, std::string& bytes)
{
    if (!file)
        return false;
    std::array<char, 16384> part;
    for (;;) {
        const ssize_t count = Retry([&] { return read(file.Get(), part.data(), part.size()); });
        if (count < 0)
            return false;
        if (count == 0)
            return true;
        bytes.append(part.data(), static_cast<std::size_t>(count));
    }
}

Descriptor OpenToRead(const std::string& path)
{
    return Descriptor(Retry([&] { return open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
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

/// The file beside a profile that takes its place when it is written. Who has it locked is the only writer: nobody else but its owner can
/// open it, so that no stranger's lock is in the way, and a killed process leaves nothing locked. What it leaves is used by the next.
class Successor
{
public:
    explicit Successor(const std::string& path) : m_path(path)
    {
        const std::size_t slash = path.rfind('/');
        m_name = path.substr(0, slash + 1) + '.' + path.substr(slash + 1) + ".new";
        while (!TakeOnce()) {
        }
    }
    ~Successor()
    {
        if (m_file)
            unlink(m_name.c_str());
    }
    Successor(const Successor&) = delete;
    Successor& operator=(const Successor&) = delete;

    explicit operator bool() const { return static_cast<bool>(m_file); }

    /// Replaces the profile; false with errno, and then it is as it was.
    bool Replace(const std::string& bytes)
    {
        // A new one gets the rights that any file gets in its folder.
        Descriptor old(Retry([&] { return open(m_path.c_str(), O_RDONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); }));
        const bool isNew = static_cast<bool>(old);
        if (!isNew)
            old = OpenToRead(m_path);
        if (old && ReplaceOpen(old.Get(), bytes))
            return true;
        const int error = errno;
        if (isNew)
            unlink(m_path.c_str());
        errno = error;
        return false;
    }

private:
    /// True when it is open and locked, or cannot be, with errno.
    bool TakeOnce()
    {
        m_file = Descriptor(Retry([&] { return open(m_name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600); }));
        if (!m_file && errno == EACCES && IsStrangers()) {
            // Another user's is there as long as that one writes, or for good when it was killed.
            usleep(1000);
            if (--m_patience > 0)
                return false;
            return unlink(m_name.c_str()) != 0;
        }
        if (!m_file || Retry([&] { return flock(m_file.Get(), LOCK_EX); }) != 0)
            return true;
        // It may have become the profile, or have gone, before it was locked.
        struct stat own;
        struct stat there;
        return fstat(m_file.Get(), &own) == 0 && lstat(m_name.c_str(), &there) == 0 && own.st_ino == there.st_ino &&
               own.st_dev == there.st_dev;
    }

    bool ReplaceOpen(int old, const std::string& bytes)
    {
        struct stat state;
        if (fstat(old, &state) != 0)
            return false;
        // By contract a read-only one stays as it is, since the attribute binds even a user who may write everything.
        errno = EACCES;
        if ((state.st_mode & 0222) == 0 || access(m_path.c_str(), W_OK) != 0)
            return false;
        if (!Fill(bytes))
            return false;
        return MakeAlike(m_file.Get(), old, state) ? Rename() : Overwrite(bytes);
    }

    bool IsStrangers() const
    {
        struct stat state;
        const bool is = lstat(m_name.c_str(), &state) == 0 && state.st_uid != geteuid();
        errno = EACCES;
        return is;
    }

    bool Fill(const std::string& bytes) const
    {
        return Retry([&] { return ftruncate(m_file.Get(), 0); }) == 0 && WriteFully(m_file.Get(), bytes) &&
               Retry([&] { return fsync(m_file.Get()); }) == 0;
    }

    bool Rename()
    {
        if (rename(m_name.c_str(), m_path.c_str()) != 0)
            return false;
        m_file.Close();
        return true;
    }

    /// For a file that no other can stand in for, such as another user's.
    bool Overwrite(const std::string& bytes) const
    {
        const Descriptor file(Retry([&] { return open(m_path.c_str(), O_WRONLY | O_CLOEXEC); }));
        return file && WriteFully(file.Get(), bytes) &&
               Retry([&] { return ftruncate(file.Get(), static_cast<off_t>(bytes.size())); }) == 0 &&
               Retry([&] { return fsync(file.Get()); }) == 0;
    }

    std::string m_path;
    std::string m_name;
    Descriptor m_file;
    int m_patience = 1000;
};

}  // namespace

std::string ProfilePath(const std::optional<std::string>& file)
{
    std::string name = file.value_or("win.ini");
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
    if (!ReadWhole(OpenToRead(path), bytes))
        return Fail(ErrorOfPath(path), ProfileText());
    SetLastError(ERROR_SUCCESS);
    return ProfileText(bytes);
}

BOOL ChangeProfile(const std::string& path, const std::function<bool(ProfileText&)>& change)
{
    if (path.empty())
        return FALSE;
    const std::string target = FollowLinks(path);
    Successor successor(target);
    if (!successor)
        return Fail(ErrorOfPath(target), FALSE);

    std::string bytes;
    const Descriptor old = OpenToRead(target);
    if (!ReadWhole(old, bytes) && (old || errno != ENOENT))
        return Fail(ErrorOfPath(target), FALSE);
    ProfileText text(bytes);
    if (!change(text))
        return TRUE;
    return successor.Replace(text.Bytes()) ? TRUE : Fail(ErrorOfPath(target), FALSE);
}

}  // namespace kelgen::posix
