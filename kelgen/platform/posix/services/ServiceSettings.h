// ServiceSettings.h: what callers give to install or change a service.
#pragma once

#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/services/ServiceStore.h>

#include <optional>
#include <string>

namespace kelgen::posix {

/// Settings of a service; what is missing stays as it is.
struct ServiceSettings
{
    DWORD type;  // SERVICE_NO_CHANGE, as the next two
    DWORD start;
    DWORD errorControl;
    std::optional<std::u16string> path;
    std::optional<std::u16string> group;
    std::optional<std::u16string> dependencies;
    std::optional<std::u16string> account;
    std::optional<std::u16string> displayName;
};

/// Changes @p configuration; false, and nothing is changed, when the result is none that a service can have.
bool Apply(const ServiceSettings& settings, ServiceConfiguration& configuration);

namespace detail {

template <class Char>
std::optional<std::u16string> OptionalText(const Char* text)
{
    return text ? std::optional(std::u16string(WideText(text))) : std::nullopt;
}

/// The texts of a list, each with its terminator.
template <class Char>
std::optional<std::u16string> OptionalList(const Char* list)
{
    if (!list)
        return std::nullopt;
    std::u16string texts;
    while (*list) {
        const std::basic_string_view<Char> text(list);
        texts += WideText(list);
        texts += u'\0';
        list += text.size() + 1;
    }
    return texts;
}

inline std::optional<std::u16string> OptionalPath(LPCSTR path)
{
    return path ? std::optional(WideName(NarrowName(path))) : std::nullopt;
}
inline std::optional<std::u16string> OptionalPath(LPCWSTR path)
{
    return OptionalText(path);
}

}  // namespace detail

/// The settings that a call was given; null is missing.
template <class Char>
ServiceSettings SettingsOf(DWORD type, DWORD start, DWORD errorControl, const Char* path, const Char* group, const Char* dependencies,
                           const Char* account, const Char* displayName)
{
    return {type,
            start,
            errorControl,
            detail::OptionalPath(path),
            detail::OptionalText(group),
            detail::OptionalList(dependencies),
            detail::OptionalText(account),
            detail::OptionalText(displayName)};
}

}  // namespace kelgen::posix
