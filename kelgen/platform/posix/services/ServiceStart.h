// ServiceStart.h: what a starting service and its starter tell each other.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/services/api/Services.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// Set in the environment of a process that is started as a service's.
inline constexpr const char* kServiceMark = "KELGEN_SERVICE";

/// The descriptor of the channel to the starter in such a process. The starter sends a StartMessage; the service a byte when it
/// reports its first state.
inline constexpr int kStartChannel = 3;

/// Whether a service may be sent @p control at all.
constexpr bool IsControl(DWORD control)
{
    switch (control) {
    case SERVICE_CONTROL_STOP:
    case SERVICE_CONTROL_PAUSE:
    case SERVICE_CONTROL_CONTINUE:
    case SERVICE_CONTROL_INTERROGATE:
    case SERVICE_CONTROL_PARAMCHANGE:
        return true;
    default:
        return control >= 128 && control <= 255;
    }
}

/// A service's name, which stays 16-bit text, and its arguments, in the bytes of the narrow calls.
struct StartArguments
{
    std::u16string name;
    std::vector<std::string> arguments;
};

/// The message: its size without these four bytes, then texts with their terminators.
KELGEN_PLATFORM_TESTED_API std::string StartMessage(std::u16string_view name, const std::vector<std::string>& arguments);

/// Reads the message from @p socket; nothing when there is none, or one without its last terminator.
KELGEN_PLATFORM_TESTED_API std::optional<StartArguments> ReadStartMessage(int socket, ULONGLONG deadline);

/// The control that a client has sent to @p socket, without waiting for it; nothing when it is none.
KELGEN_PLATFORM_TESTED_API std::optional<DWORD> ReadControl(int socket);

}  // namespace kelgen::posix
