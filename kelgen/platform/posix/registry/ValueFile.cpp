// ValueFile.cpp: makes, checks, reads and writes value files.
#include <kelgen/platform/posix/registry/ValueFile.h>

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/registry/StoredNames.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace kelgen::posix {

namespace {

struct Preamble
{
    std::array<char, 4> magic;
    DWORD slotSize;
};

struct SlotHeader
{
    std::uint64_t checksum;  // of everything behind it in the slot
    std::uint64_t sequence;
    DWORD type;
    DWORD nameUnits;
    DWORD dataBytes;
    DWORD zero;
};

constexpr std::array<char, 4> kMagic = {'K', 'R', 'V', '2'};
constexpr std::size_t kFirstRead = 4096;
/// What a disk writes as a whole, at the least.
constexpr std::size_t kSector = 512;
/// Both slots of most values' files lie in one page, which one call reads.
constexpr DWORD kSmallSlot = (kFirstRead - sizeof(Preamble)) / 2;
constexpr std::size_t kLargestSlot = std::bit_ceil(kLargestValue + sizeof(SlotHeader));
constexpr std::size_t kLargestFile = sizeof(Preamble) + 2 * kLargestSlot;

/// FNV-1a.
std::uint64_t Checksum(std::span<const BYTE> bytes)
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const BYTE part : bytes)
        hash = (hash ^ part) * 0x100000001B3u;
    return hash;
}

template <class Struct>
bool Take(std::span<const BYTE> bytes, Struct& result)
{
    if (bytes.size() < sizeof result)
        return false;
    std::memcpy(&result, bytes.data(), sizeof result);
    return true;
}

/// The bytes that @p header describes, itself included.
std::size_t SizeOf(const SlotHeader& header)
{
    return sizeof header + std::size_t{header.nameUnits} * sizeof(char16_t) + header.dataBytes;
}

/// The bytes of a slot that @p header describes, or none when they are not there or not what was written.
std::span<const BYTE> CheckedSlot(std::span<const BYTE> slot, SlotHeader& header)
{
    if (!Take(slot, header))
        return {};
    const std::size_t size = SizeOf(header);
    if (size > slot.size() || header.checksum != Checksum(slot.first(size).subspan(sizeof header.checksum)))
        return {};
    return slot.first(size);
}

std::string SlotBytes(const StoredValue& value, std::uint64_t sequence)
{
    SlotHeader header = {0, sequence, value.type, static_cast<DWORD>(value.name.size()), static_cast<DWORD>(value.data.size()), 0};
    const std::size_t nameBytes = value.name.size() * sizeof(char16_t);
    std::string bytes(sizeof header + nameBytes + value.data.size(), '\0');
    std::memcpy(bytes.data(), &header, sizeof header);
    if (nameBytes != 0)
        std::memcpy(bytes.data() + sizeof header, value.name.data(), nameBytes);
    if (!value.data.empty())
        std::memcpy(bytes.data() + sizeof header + nameBytes, value.data.data(), value.data.size());
    const std::span written(reinterpret_cast<const BYTE*>(bytes.data()), bytes.size());
    header.checksum = Checksum(written.subspan(sizeof header.checksum));
    std::memcpy(bytes.data(), &header.checksum, sizeof header.checksum);
    return bytes;
}

/// What a file's bytes hold: its slots' size (0: not a value's file) and the slot that counts.
struct SlotState
{
    std::size_t slotSize = 0;
    bool isSecond = true;  // so that a first write goes to the first slot
    std::uint64_t sequence = 0;
    std::span<const BYTE> slot;  // empty when neither is sound
};

SlotState StateOf(std::span<const BYTE> bytes)
{
    SlotState state;
    Preamble preamble;
    if (!Take(bytes, preamble) || preamble.magic != kMagic)
        return state;
    if (preamble.slotSize < sizeof(SlotHeader) || preamble.slotSize > kLargestSlot)
        return state;
    state.slotSize = preamble.slotSize;
    bytes = bytes.subspan(sizeof preamble);
    for (const bool isSecond : {false, true}) {
        SlotHeader header;
        const auto own = bytes.subspan(std::min(bytes.size(), isSecond ? state.slotSize : 0));
        const auto slot = CheckedSlot(own.first(std::min(own.size(), state.slotSize)), header);
        if (!slot.empty() && (state.slot.empty() || header.sequence > state.sequence))
            state = {state.slotSize, isSecond, header.sequence, slot};
    }
    return state;
}

StoredValue ValueOf(std::span<const BYTE> slot)
{
    SlotHeader header;
    Take(slot, header);
    StoredValue value;
    value.type = header.type;
    value.name.resize(header.nameUnits);
    slot = slot.subspan(sizeof header);
    const std::size_t nameBytes = header.nameUnits * sizeof(char16_t);
    std::memcpy(value.name.data(), slot.data(), nameBytes);
    slot = slot.subspan(nameBytes);
    value.data.assign(slot.begin(), slot.end());
    return value;
}

/// Whether the first bytes of a file reach to the end of what its second slot describes: then no more of them count.
bool HoldsSecondSlot(std::span<const BYTE> bytes)
{
    Preamble preamble;
    SlotHeader header;
    if (!Take(bytes, preamble) || preamble.magic != kMagic || preamble.slotSize > bytes.size() - sizeof preamble)
        return false;
    const auto second = bytes.subspan(sizeof preamble + preamble.slotSize);
    return Take(second, header) && SizeOf(header) <= second.size();
}

/// The bytes of an open file: up to a page of them in @p page, more in @p whole. Nothing, with errno, when it cannot be read
/// (EUCLEAN: it is larger than any value's).
std::optional<std::span<const BYTE>> ReadBytes(int file, std::array<BYTE, kFirstRead>& page, std::vector<BYTE>& whole)
{
    const ssize_t begun = Retry([&] { return pread(file, page.data(), page.size(), 0); });
    if (begun < 0)
        return std::nullopt;
    auto first = std::span<const BYTE>(page).first(static_cast<std::size_t>(begun));
    if (!HoldsSecondSlot(first)) {
        const auto rest = ReadFullyAt(file, std::span(page).subspan(first.size()), static_cast<off_t>(begun));
        if (!rest)
            return std::nullopt;
        first = std::span<const BYTE>(page).first(first.size() + *rest);
    }
    Preamble preamble;
    if (first.size() < kFirstRead || !Take(first, preamble) || preamble.magic != kMagic || preamble.slotSize <= kSmallSlot)
        return first;

    struct stat state;
    if (fstat(file, &state) != 0)
        return std::nullopt;
    if (!S_ISREG(state.st_mode) || static_cast<std::size_t>(state.st_size) > kLargestFile) {
        errno = EUCLEAN;
        return std::nullopt;
    }
    whole.resize(static_cast<std::size_t>(state.st_size));
    const auto have = ReadFullyAt(file, whole, 0);
    if (!have)
        return std::nullopt;
    return std::span<const BYTE>(whole).first(*have);
}

void Lock(int file, int operation)
{
    Retry([&] { return flock(file, operation); });
}

/// A slot that does not count is overwritten: a power cut leaves any of its sectors old or new. While it is one sector that does no
/// harm; else the other slot has to be on the disk first. False with errno.
bool SaveOtherSlot(int file, off_t position, std::size_t size)
{
    const bool isOneSector = static_cast<std::size_t>(position) % kSector + size <= kSector;
    return isOneSector || Retry([&] { return fdatasync(file); }) == 0;
}

/// Writes the value into the slot that does not count. False when that cannot be: no value's file yet, or a slot too small;
/// @p value then has the name that the file holds.
bool WriteInPlace(int folder, const std::string& fileName, StoredValue& value, int& error)
{
    const Descriptor file(
        Retry([&] { return openat(folder, fileName.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600); }));
    if (!file) {
        error = errno;
        return error != ELOOP && error != ENXIO;
    }
    // Of two writers that chose the same slot one would overwrite what counts. Closing unlocks.
    Lock(file.Get(), LOCK_EX);
    std::array<BYTE, kFirstRead> page;
    std::vector<BYTE> whole;
    const auto bytes = ReadBytes(file.Get(), page, whole);
    if (!bytes)
        return false;

    const SlotState state = StateOf(*bytes);
    if (!state.slot.empty()) {
        StoredValue old = ValueOf(state.slot);
        if (old.name != value.name && ValueFileName(old.name) == fileName)
            value.name = std::move(old.name);
    }
    const std::string slot = SlotBytes(value, state.sequence + 1);
    bool written = false;
    if (bytes->empty() && slot.size() <= kSmallSlot) {
        written = WriteFullyAt(file.Get(), ValueFileBytes(value), 0);
    } else if (slot.size() <= state.slotSize) {
        const off_t position = static_cast<off_t>(sizeof(Preamble) + (state.isSecond ? 0 : state.slotSize));
        written = SaveOtherSlot(file.Get(), position, slot.size()) && WriteFullyAt(file.Get(), slot, position);
    } else {
        return false;
    }
    error = written ? 0 : errno;
    return true;
}

}  // namespace

std::string ValueFileBytes(const StoredValue& value)
{
    const std::string slot = SlotBytes(value, 1);
    const Preamble preamble = {kMagic, slot.size() <= kSmallSlot ? kSmallSlot : static_cast<DWORD>(std::bit_ceil(slot.size()))};
    std::string bytes(sizeof preamble, '\0');
    std::memcpy(bytes.data(), &preamble, sizeof preamble);
    return bytes + slot;
}

std::optional<StoredValue> ParseValueFile(std::span<const BYTE> bytes)
{
    const SlotState state = StateOf(bytes);
    if (state.slot.empty())
        return std::nullopt;
    return ValueOf(state.slot);
}

int ReadValueFile(int folder, const std::string& fileName, StoredValue& value)
{
    // Not blocking: a pipe of that name must not stop us.
    const Descriptor file(Retry([&] { return openat(folder, fileName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }));
    if (!file)
        return errno == ELOOP || errno == ENXIO || errno == ENAMETOOLONG ? ENOENT : errno;

    std::array<BYTE, kFirstRead> page;
    std::vector<BYTE> whole;
    int error = 0;
    for (const bool isLocked : {false, true}) {
        // Both slots may be caught in the middle of writes; then no writer is let in for a second look.
        if (isLocked)
            Lock(file.Get(), LOCK_SH);
        const auto bytes = ReadBytes(file.Get(), page, whole);
        if (!bytes)
            return errno == EISDIR || errno == ESPIPE ? ENOENT : errno;
        auto found = ParseValueFile(*bytes);
        if (found && IsValueName(found->name) && ValueFileName(found->name) == fileName) {
            value = std::move(*found);
            return 0;
        }
        // A writer that was killed before its first byte leaves an empty file; one of another name's value was copied there.
        error = found || bytes->empty() ? ENOENT : EUCLEAN;
    }
    return error;
}

int WriteValueFile(int folder, const std::string& fileName, StoredValue value)
{
    if (value.data.size() > kLargestValue - value.name.size() * sizeof(char16_t))
        return ENOMEM;
    int error = 0;
    if (WriteInPlace(folder, fileName, value, error))
        return error;
    return ReplaceFile(folder, fileName, ValueFileBytes(value));
}

int ReplaceFile(int folder, const std::string& fileName, std::string_view bytes)
{
    std::string scratch;
    Descriptor file;
    do {
        scratch = ScratchName();
        file = Descriptor(Retry([&] { return openat(folder, scratch.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600); }));
    } while (!file && errno == EEXIST);
    if (!file)
        return errno;

    // Renamed before its bytes are on the disk it might come out of a power cut empty.
    bool good = WriteFully(file.Get(), bytes) && Retry([&] { return fsync(file.Get()); }) == 0;
    // Closed for all that a signal says.
    const bool closed = close(file.Release()) == 0 || errno == EINTR;
    good = good && closed && renameat(folder, scratch.c_str(), folder, fileName.c_str()) == 0;
    if (good)
        return 0;
    const int error = errno;
    unlinkat(folder, scratch.c_str(), 0);
    return error;
}

}  // namespace kelgen::posix
