// KeyStore.h: keys as folders: opening, making, removing and listing them.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Handles.h>
#include <kelgen/platform/posix/registry/ValueFile.h>
#include <kelgen/platform/posix/registry/api/Registry.h>

#include <sys/stat.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// The names of what a key holds, each list in alphabetical order.
struct KeyListing
{
    std::vector<std::u16string> subkeys;
    std::vector<std::u16string> values;
};

/// An open key: its folder and the rights that it grants.
/// Threads: any.
class Key : public HandleObject
{
public:
    Key(Descriptor folder, std::string path, REGSAM rights);

    int Folder() const { return m_folder.Get(); }
    /// The absolute path of the folder.
    const std::string& Path() const { return m_path; }
    bool Grants(REGSAM rights) const { return (m_rights & rights) == rights; }

    /// Whether somebody removed the key since it was opened.
    bool IsDeleted() const;

    /// The error code for errno value @p error of a call in the folder.
    LSTATUS Status(int error) const;

    /// What the key holds now. Cost: a system call while nothing changes, else the whole folder is read.
    LSTATUS List(KeyListing& listing);

    /// Makes the next List read the folder.
    void ForgetListing();

    LSTATUS ReadValue(std::u16string_view name, StoredValue& value) const;

private:
    bool IsListingCurrent(const struct stat& folder) const;
    LSTATUS ReadListing();

    Descriptor m_folder;
    std::string m_path;
    REGSAM m_rights;
    std::mutex m_mutex;
    KeyListing m_listing;
    timespec m_listedState = {};
    bool m_listingSettled = false;
};

/// Whether @p handle is a predefined key.
bool IsPredefinedKey(HKEY handle);

/// The key of @p handle, predefined or opened; null when there is none.
std::shared_ptr<Key> FindKey(HKEY handle);

/// Opens the key @p subkey below @p key; with @p made also makes it when it is missing, and tells whether it did.
LSTATUS OpenSubkey(const Key& key, std::u16string_view subkey, REGSAM rights, std::shared_ptr<Key>& result, bool* made = nullptr);

enum class Removal
{
    LeafOnly,
    WholeTree
};

/// Removes the key @p subkey below @p key, or @p key itself when empty.
LSTATUS RemoveKey(const Key& key, std::u16string_view subkey, Removal removal);

/// Removes everything in @p key but keeps that.
LSTATUS EmptyKey(const Key& key);

}  // namespace kelgen::posix
