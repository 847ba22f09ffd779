// KeyListing.cpp: an open key's own members: its state, its values, and the list of what it holds.
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/NameCase.h>
#include <kelgen/platform/posix/registry/Folders.h>
#include <kelgen/platform/posix/registry/KeyStore.h>
#include <kelgen/platform/posix/registry/StoredNames.h>

#include <fcntl.h>

#include <algorithm>
#include <ctime>

namespace kelgen::posix {

namespace {

// Two changes within one tick of the file system's clock give a folder the same time; ticks are at most 10 ms.
constexpr std::int64_t kSettledAfterNanoseconds = 50'000'000;
// What a killed process left half written is removed after an hour.
constexpr std::time_t kScratchLifetimeSeconds = 3600;

std::int64_t Nanoseconds(const timespec& time)
{
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

timespec Now()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return now;
}

void RemoveOldScratch(int folder, const std::string& name, bool isFolder)
{
    struct stat state;
    if (fstatat(folder, name.c_str(), &state, AT_SYMLINK_NOFOLLOW) != 0 || Now().tv_sec - state.st_mtim.tv_sec < kScratchLifetimeSeconds)
        return;
    if (isFolder)
        RemoveTree(folder, name);
    else
        unlinkat(folder, name.c_str(), 0);
}

}  // namespace

Key::Key(Descriptor folder, std::string path, REGSAM rights) : m_folder(std::move(folder)), m_path(std::move(path)), m_rights(rights)
{
    constexpr REGSAM kGenericRead = 0x80000000;
    constexpr REGSAM kGenericWrite = 0x40000000;
    constexpr REGSAM kGenericAll = 0x10000000;
    if (m_rights & kGenericRead)
        m_rights |= KEY_READ;
    if (m_rights & kGenericWrite)
        m_rights |= KEY_WRITE;
    if (m_rights & (kGenericAll | MAXIMUM_ALLOWED))
        m_rights |= KEY_ALL_ACCESS;
}

bool Key::IsDeleted() const
{
    struct stat state;
    return fstat(m_folder.Get(), &state) == 0 && state.st_nlink == 0;
}

LSTATUS Key::Status(int error) const
{
    if (error == ENOENT && IsDeleted())
        return ERROR_KEY_DELETED;
    return error == EUCLEAN ? ERROR_CANTREAD : static_cast<LSTATUS>(ErrorFromErrno(error));
}

LSTATUS Key::ReadValue(std::u16string_view name, StoredValue& value) const
{
    const int error = ReadValueFile(m_folder.Get(), ValueFileName(name), value);
    return error == 0 ? ERROR_SUCCESS : Status(error);
}

bool Key::IsListingCurrent(const struct stat& folder) const
{
    return m_listingSettled && Nanoseconds(folder.st_mtim) == Nanoseconds(m_listedState);
}

LSTATUS Key::List(KeyListing& listing)
{
    const std::lock_guard lock(m_mutex);
    struct stat state;
    if (fstat(m_folder.Get(), &state) != 0)
        return Status(errno);
    if (state.st_nlink == 0)
        return ERROR_KEY_DELETED;
    if (!IsListingCurrent(state)) {
        m_listedState = state.st_mtim;
        m_listingSettled = Nanoseconds(Now()) - Nanoseconds(state.st_mtim) > kSettledAfterNanoseconds;
        if (const LSTATUS status = ReadListing(); status != ERROR_SUCCESS)
            return status;
    }
    listing = m_listing;
    return ERROR_SUCCESS;
}

void Key::ForgetListing()
{
    const std::lock_guard lock(m_mutex);
    m_listingSettled = false;
}

LSTATUS Key::ReadListing()
{
    m_listing = {};
    const bool read = ForEachEntry(m_folder.Get(), [this](const std::string& name, bool isFolder) {
        if (name.starts_with(kScratchPrefix)) {
            RemoveOldScratch(m_folder.Get(), name, isFolder);
        } else if (isFolder) {
            if (auto key = ReadKeyName(m_folder.Get(), name); !key.empty())
                m_listing.subkeys.push_back(std::move(key));
        } else if (StoredValue value; name.ends_with('=') && ReadValueFile(m_folder.Get(), name, value) == 0) {
            m_listing.values.push_back(std::move(value.name));
        }
    });
    if (!read)
        return Status(errno);
    const auto before = [](const std::u16string& left, const std::u16string& right) { return CompareNames(left, right) < 0; };
    std::ranges::sort(m_listing.subkeys, before);
    std::ranges::sort(m_listing.values, before);
    return ERROR_SUCCESS;
}

}  // namespace kelgen::posix
