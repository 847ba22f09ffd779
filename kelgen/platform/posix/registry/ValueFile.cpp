// ValueFile.cpp: makes, checks, reads and replaces value files.
#include <kelgen/platform/posix/registry/ValueFile.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/registry/StoredNames.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace kelgen::posix {

namespace {

struct Header
{
    std::array<char, 4> magic;
    DWORD type;
    DWORD nameUnits;
    DWORD dataBytes;
};

constexpr std::array<char, 4> kMagic = {'K', 'R', 'V', '1'};
constexpr std::size_t kFirstRead = 4096;

/// The size that the whole file must have, or 0 when @p bytes do not start with a sound header.
std::size_t ExpectedSize(std::span<const BYTE> bytes, Header& header)
{
    if (bytes.size() < sizeof header)
        return 0;
    std::memcpy(&header, bytes.data(), sizeof header);
    if (header.magic != kMagic)
        return 0;
    return sizeof header + std::size_t{header.nameUnits} * sizeof(char16_t) + header.dataBytes;
}

/// Reads until @p bytes is full or the file ends; the number of bytes read, or -1.
ssize_t ReadFully(int file, std::span<BYTE> bytes)
{
    std::size_t count = 0;
    while (count < bytes.size()) {
        const ssize_t got = read(file, bytes.data() + count, bytes.size() - count);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return -1;
        count += static_cast<std::size_t>(got);
        // A regular file gives less than asked only at its end: one call less for small values.
        if (got == 0 || count < kFirstRead)
            break;
    }
    return static_cast<ssize_t>(count);
}

bool WriteFully(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The rest of a file whose first bytes are @p bytes; false unless the file has exactly the size that its header says.
bool ReadRest(int file, std::vector<BYTE>& bytes)
{
    Header header;
    const std::size_t size = ExpectedSize(bytes, header);
    struct stat state;
    if (size < bytes.size() || fstat(file, &state) != 0 || !S_ISREG(state.st_mode) ||
        static_cast<std::size_t>(state.st_size) != size)
        return false;

    const std::size_t have = bytes.size();
    bytes.resize(size);
    return ReadFully(file, std::span(bytes).subspan(have)) == static_cast<ssize_t>(size - have);
}

}  // namespace

std::string ValueFileBytes(std::u16string_view name, DWORD type, std::span<const BYTE> data)
{
    const Header header = {kMagic, type, static_cast<DWORD>(name.size()), static_cast<DWORD>(data.size())};
    std::string bytes(sizeof header + name.size() * sizeof(char16_t) + data.size(), '\0');
    char* end = bytes.data();
    const auto append = [&end](const void* part, std::size_t size) {
        if (size != 0)
            std::memcpy(end, part, size);
        end += size;
    };
    append(&header, sizeof header);
    append(name.data(), name.size() * sizeof(char16_t));
    append(data.data(), data.size());
    return bytes;
}

std::optional<StoredValue> ParseValueFile(std::span<const BYTE> bytes)
{
    Header header;
    if (const std::size_t size = ExpectedSize(bytes, header); size == 0 || size != bytes.size())
        return std::nullopt;

    StoredValue value;
    value.type = header.type;
    value.name.resize(header.nameUnits);
    bytes = bytes.subspan(sizeof header);
    const std::size_t nameBytes = header.nameUnits * sizeof(char16_t);
    std::memcpy(value.name.data(), bytes.data(), nameBytes);
    bytes = bytes.subspan(nameBytes);
    value.data.assign(bytes.begin(), bytes.end());
    return value;
}

int ReadValueFile(int folder, const std::string& fileName, StoredValue& value)
{
    // Not blocking: a pipe of that name must not stop us.
    const Descriptor file(openat(folder, fileName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return errno == ELOOP || errno == ENXIO || errno == ENAMETOOLONG ? ENOENT : errno;

    std::array<BYTE, kFirstRead> start;
    const ssize_t count = ReadFully(file.Get(), start);
    if (count < 0)
        return errno == EISDIR || errno == EAGAIN ? ENOENT : errno;

    std::optional<StoredValue> found;
    if (const auto size = static_cast<std::size_t>(count); size < kFirstRead) {
        found = ParseValueFile(std::span(start).first(size));
    } else {
        std::vector<BYTE> bytes(start.begin(), start.end());
        if (ReadRest(file.Get(), bytes))
            found = ParseValueFile(bytes);
    }
    if (!found || ValueFileName(found->name) != fileName)
        return ENOENT;
    value = std::move(*found);
    return 0;
}

int ReplaceFile(int folder, const std::string& fileName, std::string_view bytes)
{
    std::string scratch;
    Descriptor file;
    do {
        scratch = ScratchName();
        file = Descriptor(openat(folder, scratch.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    } while (!file && errno == EEXIST);
    if (!file)
        return errno;

    bool good = WriteFully(file.Get(), bytes);
    const int closed = close(file.Release());
    good = good && closed == 0 && renameat(folder, scratch.c_str(), folder, fileName.c_str()) == 0;
    if (good)
        return 0;
    const int error = errno;
    unlinkat(folder, scratch.c_str(), 0);
    return error;
}

}  // namespace kelgen::posix
