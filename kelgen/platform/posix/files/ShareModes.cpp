// ShareModes.cpp: share modes as shared byte locks far behind the data: one byte for each kind of use, one for each kind of denial.
// The locks belong to the open description, so they end with its last duplicate and clash within a process too.
#include <kelgen/platform/posix/files/ShareModes.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/AccessRights.h>
#include <kelgen/platform/posix/files/api/Files.h>

#include <fcntl.h>

namespace kelgen::posix {

namespace {

// Bit sets of kinds: bit 0 reading, 1 writing, 2 deleting.
constexpr unsigned kKinds = 3;
constexpr off_t kUses = static_cast<off_t>(kShareOffset);
constexpr off_t kDenials = kUses + kKinds;

unsigned KindsOf(DWORD access)
{
    unsigned kinds = 0;
    if (access & (FILE_READ_DATA | FILE_EXECUTE))
        kinds |= FILE_SHARE_READ;
    if (access & (FILE_WRITE_DATA | FILE_APPEND_DATA))
        kinds |= FILE_SHARE_WRITE;
    if (access & DELETE)
        kinds |= FILE_SHARE_DELETE;
    return kinds;
}

struct flock LockOf(short type, off_t start, unsigned kind)
{
    struct flock lock
    {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = start + static_cast<off_t>(kind);
    lock.l_len = 1;
    return lock;
}

void Announce(int file, off_t start, unsigned kinds)
{
    for (unsigned kind = 0; kind < kKinds; ++kind) {
        if ((kinds >> kind) & 1) {
            struct flock lock = LockOf(F_RDLCK, start, kind);
            fcntl(file, F_OFD_SETLK, &lock);
        }
    }
}

bool AnyAnnounced(int file, off_t start, unsigned kinds)
{
    for (unsigned kind = 0; kind < kKinds; ++kind) {
        if (((kinds >> kind) & 1) == 0)
            continue;
        struct flock lock = LockOf(F_WRLCK, start, kind);
        if (fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK)
            return true;
    }
    return false;
}

}  // namespace

bool ClaimShare(int file, DWORD access, DWORD share)
{
    const unsigned uses = KindsOf(access);
    if (uses == 0)
        return true;

    // Announcing before looking: of two clashing openers at one time at most one succeeds.
    const unsigned denials = ~share & 7;
    Announce(file, kUses, uses);
    Announce(file, kDenials, denials);
    return !AnyAnnounced(file, kDenials, uses) && !AnyAnnounced(file, kUses, denials);
}

bool MayDelete(const std::string& native)
{
    const Descriptor file(Retry([&] { return open(native.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | O_NOFOLLOW); }));
    return !file || !AnyAnnounced(file.Get(), kDenials, FILE_SHARE_DELETE);
}

}  // namespace kelgen::posix
