// ServiceStart.cpp: packs and unpacks the message.
#include <kelgen/platform/posix/services/ServiceStart.h>

#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/services/ServiceRecords.h>

#include <sys/socket.h>

namespace kelgen::posix {

std::string StartMessage(std::u16string_view name, const std::vector<std::string>& arguments)
{
    std::string texts = NarrowName(reinterpret_cast<LPCWSTR>(std::u16string(name).c_str())) + '\0';
    for (const std::string& argument : arguments)
        texts += argument + '\0';
    const DWORD size = static_cast<DWORD>(texts.size());
    return std::string(reinterpret_cast<const char*>(&size), sizeof size) + texts;
}

std::optional<StartArguments> ReadStartMessage(int socket, ULONGLONG deadline)
{
    constexpr DWORD kLargest = 16 << 20;
    DWORD size = 0;
    if (!ReceiveBytes(socket, &size, sizeof size, deadline) || size == 0 || size > kLargest)
        return std::nullopt;
    std::string texts(size, '\0');
    if (!ReceiveBytes(socket, texts.data(), size, deadline))
        return std::nullopt;
    if (texts.back() != '\0')
        return std::nullopt;
    StartArguments start;
    start.name = WideName(texts.c_str());
    for (std::size_t at = texts.find('\0') + 1; at < texts.size(); at = texts.find('\0', at) + 1)
        start.arguments.emplace_back(texts.c_str() + at);
    return start;
}

std::optional<DWORD> ReadControl(int socket)
{
    DWORD control = 0;
    const ssize_t received = Retry([&] { return recv(socket, &control, sizeof control, MSG_DONTWAIT); });
    return received == static_cast<ssize_t>(sizeof control) && IsControl(control) ? std::optional(control) : std::nullopt;
}

}  // namespace kelgen::posix
