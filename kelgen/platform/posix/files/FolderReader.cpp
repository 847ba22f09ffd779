// FolderReader.cpp: lists a folder without a stream's buffer and its look at the folder's kind: what makes or opens a file of another
// spelling reads small folders most of the time.
#include <kelgen/platform/posix/files/FolderReader.h>

#include <kelgen/platform/posix/base/Retry.h>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

namespace kelgen::posix {

namespace {

// The head of an entry as the kernel gives it; its name follows, ended by a zero.
struct EntryHead
{
    std::uint64_t number;
    std::int64_t offset;
    std::uint16_t size;
    std::uint8_t type;
};

constexpr std::size_t kNameOffset = offsetof(EntryHead, type) + 1;

}  // namespace

FolderReader::FolderReader(const std::string& native)
    : m_folder(Retry([&] { return open(native.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC); }))
{
    if (!m_folder && errno == ENOMEM)
        throw std::bad_alloc();
}

void FolderReader::Rewind()
{
    lseek(m_folder.Get(), 0, SEEK_SET);
}

bool FolderReader::Read(Piece& piece)
{
    const long size = syscall(SYS_getdents64, m_folder.Get(), piece.bytes, sizeof piece.bytes);
    // A folder that was removed meanwhile has no names.
    piece.error = size < 0 && errno != ENOENT ? errno : 0;
    piece.size = size < 0 ? 0 : static_cast<std::size_t>(size);
    piece.at = 0;
    return piece.size != 0;
}

std::string_view FolderReader::Piece::Next()
{
    while (at < size) {
        EntryHead head;
        std::memcpy(&head, bytes + at, kNameOffset);
        const std::string_view name(bytes + at + kNameOffset);
        at += head.size;
        if (name != "." && name != "..")
            return name;
    }
    return {};
}

}  // namespace kelgen::posix
