// Folders.cpp: opens, walks and removes the registry's folders.
#include <kelgen/platform/posix/registry/Folders.h>

#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/registry/ValueFile.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <vector>

namespace kelgen::posix {

namespace {

struct CloseStream
{
    void operator()(DIR* stream) const { closedir(stream); }
};

bool IsFolder(int parent, const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat state;
    return fstatat(parent, entry.d_name, &state, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(state.st_mode);
}

/// What the kernel lists of a folder in one call.
struct Listing
{
    alignas(std::uint64_t) char bytes[2048];
};

struct ListedEntry
{
    std::uint64_t number;
    std::int64_t offset;
    unsigned short size;
    unsigned char type;
    char name[1];
};

/// RemoveTree with no more memory than a stack has: what is taken out of sight goes, even when there is no other.
void RemoveTreeWithoutMemory(int parent, const char* name)
{
    // A process that has the key open may add a file while this runs, and a call may fail: empty it again then, but not for ever.
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const Descriptor folder(Retry([&] { return openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }));
        if (!folder && errno == ENOENT)
            return;
        Listing listing;
        for (long size; (size = syscall(SYS_getdents64, folder.Get(), listing.bytes, sizeof listing.bytes)) > 0;) {
            for (const char* at = listing.bytes; at < listing.bytes + size;) {
                const auto& entry = *reinterpret_cast<const ListedEntry*>(at);
                const char* const found = at + offsetof(ListedEntry, name);
                at += entry.size;
                if (std::strcmp(found, ".") == 0 || std::strcmp(found, "..") == 0)
                    continue;
                if (unlinkat(folder.Get(), found, 0) != 0 && (errno == EISDIR || errno == EPERM))
                    RemoveTreeWithoutMemory(folder.Get(), found);
            }
        }
        if (unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT)
            return;
    }
}

}  // namespace

Descriptor OpenFolder(int parent, const std::string& name)
{
    return Descriptor(Retry([&] { return openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); }));
}

bool ForEachEntry(int folder, const std::function<void(const std::string& name, bool isFolder)>& visit)
{
    Descriptor own = OpenFolder(folder, ".");
    if (!own)
        return false;
    const std::unique_ptr<DIR, CloseStream> stream(fdopendir(own.Get()));
    if (!stream && errno == ENOMEM)
        throw std::bad_alloc();
    if (!stream)
        return false;
    own.Release();
    for (;;) {
        errno = 0;
        const dirent* const entry = readdir(stream.get());
        if (!entry)
            return errno == 0;
        const std::string name = entry->d_name;
        if (name != "." && name != "..")
            visit(name, IsFolder(folder, *entry));
    }
}

bool HoldsSubkeys(int folder)
{
    bool found = false;
    ForEachEntry(folder,
                 [&](const std::string& name, bool isFolder) { found = found || (isFolder && !ReadKeyName(folder, name).empty()); });
    return found;
}

void EmptyFolder(int folder)
{
    std::vector<std::string> folders;
    ForEachEntry(folder, [&](const std::string& name, bool isFolder) {
        if (isFolder)
            folders.push_back(name);
        else if (name != kNameFile && !name.starts_with(kScratchPrefix))
            unlinkat(folder, name.c_str(), 0);
    });
    for (const std::string& name : folders) {
        const std::string scratch = ScratchName();
        if (renameat(folder, name.c_str(), folder, scratch.c_str()) == 0)
            RemoveTree(folder, scratch);
    }
}

void RemoveTree(int parent, const std::string& name)
{
    RemoveTreeWithoutMemory(parent, name.c_str());
}

int WriteNameFile(int folder, std::u16string_view name)
{
    std::string bytes(name.size() * sizeof(char16_t), '\0');
    std::memcpy(bytes.data(), name.data(), bytes.size());
    return ReplaceFile(folder, kNameFile, bytes);
}

std::u16string ReadKeyName(int parent, const std::string& fileName)
{
    const std::string nameFile = fileName + '/' + kNameFile;
    const Descriptor file(Retry([&] { return openat(parent, nameFile.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }));
    if (file) {
        std::array<unsigned char, 1024> bytes;
        std::u16string name(ReadFully(file.Get(), bytes).value_or(0) / sizeof(char16_t), u'\0');
        std::memcpy(name.data(), bytes.data(), name.size() * sizeof(char16_t));
        if (IsKeyName(name) && KeyFileName(name) == fileName)
            return name;
    }
    const auto plain = KeyNameOfFile(fileName);
    return plain && IsKeyName(*plain) ? *plain : std::u16string();
}

}  // namespace kelgen::posix
