// Retry.h: system calls that a signal breaks are made again.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kelgen::posix {

/// What @p call, a system call that tells its failure by -1 and errno, comes to when no signal breaks it.
template <class Call>
auto Retry(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// Calls @p readSome(rest, offset), a system call that reads, until @p bytes are full or it gives none. How many were read, or nothing,
/// with errno, when it failed.
template <class ReadSome>
std::optional<std::size_t> ReadUntilFull(std::span<unsigned char> bytes, ReadSome readSome)
{
    std::size_t have = 0;
    while (have < bytes.size()) {
        const ssize_t count = Retry([&] { return readSome(bytes.subspan(have), static_cast<off_t>(have)); });
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        have += static_cast<std::size_t>(count);
    }
    return have;
}

/// Reads at @p position as many bytes as the file gives: fewer than asked for only at its end. Nothing, with errno, when it cannot.
inline std::optional<std::size_t> ReadFullyAt(int file, std::span<unsigned char> bytes, off_t position)
{
    return ReadUntilFull(
        bytes, [&](std::span<unsigned char> rest, off_t offset) { return pread(file, rest.data(), rest.size(), position + offset); });
}

/// The same where the file stands: for pipes and sockets, too.
inline std::optional<std::size_t> ReadFully(int file, std::span<unsigned char> bytes)
{
    return ReadUntilFull(bytes, [&](std::span<unsigned char> rest, off_t) { return read(file, rest.data(), rest.size()); });
}

/// Calls @p writeSome(rest, offset), a system call that writes, until all of @p bytes are written; false, with errno, when it failed.
template <class WriteSome>
bool WriteUntilDone(std::string_view bytes, WriteSome writeSome)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = Retry([&] { return writeSome(bytes.substr(done), static_cast<off_t>(done)); });
        if (count < 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

/// Writes all of @p bytes where the file stands; false, with errno, when only a part of them could be.
inline bool WriteFully(int file, std::string_view bytes)
{
    return WriteUntilDone(bytes, [&](std::string_view rest, off_t) { return write(file, rest.data(), rest.size()); });
}

/// The same at @p position.
inline bool WriteFullyAt(int file, std::string_view bytes, off_t position)
{
    return WriteUntilDone(bytes,
                          [&](std::string_view rest, off_t offset) { return pwrite(file, rest.data(), rest.size(), position + offset); });
}

}  // namespace kelgen::posix
