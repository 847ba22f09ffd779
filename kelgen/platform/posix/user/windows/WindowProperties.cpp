// WindowProperties.cpp: values that hosts keep with a window by name.
#include <kelgen/platform/posix/user/api/WindowCalls.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

// An atom reads as "#number", which is also how it is enumerated.
template <class Char>
std::u16string Spelling(const Char* name)
{
    if (!IS_INTRESOURCE(name))
        return std::u16string(WideText(name));
    const std::string digits = std::to_string(reinterpret_cast<ULONG_PTR>(name));
    return u"#" + std::u16string(digits.begin(), digits.end());
}

auto Place(Window& window, const std::u16string& key)
{
    return std::find_if(window.properties.begin(), window.properties.end(), [&key](const auto& property) { return property.key == key; });
}

template <class Char>
BOOL Set(HWND window, const Char* name, HANDLE value)
{
    const std::u16string spelling = Spelling(name);
    const std::u16string key = WithoutCase(spelling);
    DesktopGuard guard;
    Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, FALSE);
    // By contract a missing name is no failure, though nothing is stored.
    if (!name || spelling.empty())
        return TRUE;
    const auto place = Place(*found, key);
    if (place != found->properties.end())
        place->value = value;
    else
        found->properties.push_back({spelling, key, value});
    return TRUE;
}

template <class Char>
HANDLE Get(HWND window, const Char* name, bool remove)
{
    const std::u16string key = WithoutCase(Spelling(name));
    DesktopGuard guard;
    Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, HANDLE{nullptr});
    const auto place = Place(*found, key);
    if (place == found->properties.end())
        return nullptr;
    const HANDLE value = place->value;
    if (remove)
        found->properties.erase(place);
    return value;
}

// The list is taken first: the callback may change it.
template <class Char, class Callback>
int Enumerate(HWND window, Callback callback)
{
    std::vector<WindowProperty> all;
    {
        DesktopGuard guard;
        const Window* found = FindWindowLocked(window);
        if (!found)
            return -1;
        all = found->properties;
    }
    int result = -1;
    for (const WindowProperty& property : all) {
        auto name = TextOf<Char>(property.name);
        result = callback(name.data(), property.value);
        if (!result)
            break;
    }
    return result;
}

}  // namespace

BOOL SetPropA(HWND window, LPCSTR name, HANDLE value)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Set(window, name, value); });
}

BOOL SetPropW(HWND window, LPCWSTR name, HANDLE value)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Set(window, name, value); });
}

HANDLE GetPropA(HWND window, LPCSTR name)
{
    return Get(window, name, false);
}

HANDLE GetPropW(HWND window, LPCWSTR name)
{
    return Get(window, name, false);
}

HANDLE RemovePropA(HWND window, LPCSTR name)
{
    return Get(window, name, true);
}

HANDLE RemovePropW(HWND window, LPCWSTR name)
{
    return Get(window, name, true);
}

int EnumPropsA(HWND window, PROPENUMPROCA callback)
{
    return Enumerate<CHAR>(window, [=](LPSTR name, HANDLE value) { return callback(window, name, value); });
}

int EnumPropsW(HWND window, PROPENUMPROCW callback)
{
    return Enumerate<WCHAR>(window, [=](LPWSTR name, HANDLE value) { return callback(window, name, value); });
}

int EnumPropsExA(HWND window, PROPENUMPROCEXA callback, LPARAM parameter)
{
    return Enumerate<CHAR>(window,
                           [=](LPSTR name, HANDLE value) { return callback(window, name, value, static_cast<ULONG_PTR>(parameter)); });
}

int EnumPropsExW(HWND window, PROPENUMPROCEXW callback, LPARAM parameter)
{
    return Enumerate<WCHAR>(window,
                            [=](LPWSTR name, HANDLE value) { return callback(window, name, value, static_cast<ULONG_PTR>(parameter)); });
}
