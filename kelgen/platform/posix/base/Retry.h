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

/// Reads at @p position as many bytes as the file gives: fewer than asked for only at its end. Nothing, with errno, when it cannot.
inline std::optional<std::size_t> ReadFullyAt(int file, std::span<unsigned char> bytes, off_t position)
{
    std::size_t have = 0;
    while (have < bytes.size()) {
        const ssize_t count =
            Retry([&] { return pread(file, bytes.data() + have, bytes.size() - have, position + static_cast<off_t>(have)); });
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        have += static_cast<std::size_t>(count);
    }
    return have;
}

/// The same where the file stands: for pipes and sockets, too.
inline std::optional<std::size_t> ReadFully(int file, std::span<unsigned char> bytes)
{
    std::size_t have = 0;
    while (have < bytes.size()) {
        const ssize_t count = Retry([&] { return read(file, bytes.data() + have, bytes.size() - have); });
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        have += static_cast<std::size_t>(count);
    }
    return have;
}

/// Writes all of @p bytes where the file stands; false, with errno, when only a part of them could be.
inline bool WriteFully(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = Retry([&] { return write(file, bytes.data(), bytes.size()); });
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The same at @p position.
inline bool WriteFullyAt(int file, std::string_view bytes, off_t position)
{
    while (!bytes.empty()) {
        const ssize_t written = Retry([&] { return pwrite(file, bytes.data(), bytes.size(), position); });
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
        position += written;
    }
    return true;
}

}  // namespace kelgen::posix
