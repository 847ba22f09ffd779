// WindowClasses.cpp: registering classes and reading them back.
#include <kelgen/platform/posix/user/api/WindowClasses.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/modules/ModuleTable.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>

#include <algorithm>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr std::size_t kLongestClassName = 255;
constexpr int kMostExtra = 0x10000;

template <class Char>
ATOM Register(const auto& from, const Char* name, const Char* menu, HICON smallIcon)
{
    if (from.cbClsExtra < 0 || from.cbWndExtra < 0 || from.cbClsExtra > kMostExtra || from.cbWndExtra > kMostExtra)
        return Fail(ERROR_INVALID_PARAMETER, ATOM{0});
    const ClassName className = NameOfClass(name);
    if (className.text.empty() && className.atom == 0)
        return Fail(ERROR_INVALID_PARAMETER, ATOM{0});
    if (className.text.size() > kLongestClassName)
        return Fail(ERROR_INSUFFICIENT_BUFFER, ATOM{0});

    auto added = std::make_shared<WindowClass>();
    added->name = className.text;
    added->style = from.style;
    added->procedure = ProcedureOf(from.lpfnWndProc, sizeof(Char) == 2);
    added->module = from.hInstance ? from.hInstance : ProgramModule();
    added->windowExtra = from.cbWndExtra;
    added->extra.resize(static_cast<std::size_t>(from.cbClsExtra));
    added->icon = from.hIcon;
    added->smallIcon = smallIcon;
    added->cursor = from.hCursor;
    added->background = from.hbrBackground;
    if (IS_INTRESOURCE(menu))
        added->menuNumber = reinterpret_cast<UINT_PTR>(menu);
    else {
        added->menuName = WideText(menu);
        added->menuNameNarrow = AnsiText(added->menuName);
    }

    DesktopGuard guard;
    added->atom = AtomOf(className);
    for (const auto& other : Classes())
        if (!other->system && other->atom == added->atom && other->module == added->module &&
            other->IsForAllModules() == added->IsForAllModules())
            return Fail(ERROR_CLASS_ALREADY_EXISTS, ATOM{0});
    Classes().push_back(added);
    return added->atom;
}

template <class Char>
BOOL Unregister(const Char* name, HINSTANCE module)
{
    DesktopGuard guard;
    const auto found = FindClass(NameOfClass(name), module ? module : ProgramModule());
    if (!found || found->system)
        return Fail(ERROR_CLASS_DOES_NOT_EXIST, FALSE);
    if (found->windows > 0)
        return Fail(ERROR_CLASS_HAS_WINDOWS, FALSE);
    std::erase(Classes(), found);
    return TRUE;
}

const CHAR* MenuText(const WindowClass& from, const CHAR*)
{
    return from.menuNameNarrow.c_str();
}
const WCHAR* MenuText(const WindowClass& from, const WCHAR*)
{
    return reinterpret_cast<const WCHAR*>(from.menuName.c_str());
}

template <class Char, class Info>
ATOM GetInfo(HINSTANCE module, const Char* name, Info* info, HICON* smallIcon)
{
    std::shared_ptr<WindowClass> found;
    {
        DesktopGuard guard;
        found = FindClass(NameOfClass(name), module);
    }
    if (!found)
        return Fail(ERROR_CLASS_DOES_NOT_EXIST, ATOM{0});
    const HCURSOR cursor = CursorOf(*found);
    DesktopGuard guard;
    info->style = found->style;
    info->lpfnWndProc = ProcedureFor(*found->procedure, sizeof(Char) == 2);
    info->cbClsExtra = static_cast<int>(found->extra.size());
    info->cbWndExtra = found->windowExtra;
    info->hInstance = found->system ? module : found->module;
    info->hIcon = found->icon;
    info->hCursor = cursor;
    info->hbrBackground = found->background;
    const bool hasName = found->menuNumber == 0 && !found->menuName.empty();
    info->lpszMenuName = hasName ? MenuText(*found, name) : reinterpret_cast<const Char*>(found->menuNumber);
    info->lpszClassName = name;
    if (smallIcon)
        *smallIcon = found->smallIcon;
    return found->atom;
}

std::shared_ptr<WindowClass> ClassOf(HWND window)
{
    DesktopGuard guard;
    const Window* found = FindWindowLocked(window);
    if (!found)
        return Fail(ERROR_INVALID_WINDOW_HANDLE, std::shared_ptr<WindowClass>());
    return found->windowClass;
}

template <class Char>
int CopyName(HWND window, Char* name, int size)
{
    const auto found = ClassOf(window);
    if (!found || size <= 0 || !name)
        return 0;
    const auto text = TextOf<Char>(found->name);
    const std::size_t length = std::min<std::size_t>(text.size(), static_cast<std::size_t>(size) - 1);
    std::copy_n(text.data(), length, name);
    name[length] = 0;
    return static_cast<int>(length);
}

}  // namespace

ATOM RegisterClassA(const WNDCLASSA* windowClass)
{
    return OrNoMemory(ATOM{0},
                      [&]() -> ATOM { return Register(*windowClass, windowClass->lpszClassName, windowClass->lpszMenuName, nullptr); });
}

ATOM RegisterClassW(const WNDCLASSW* windowClass)
{
    return OrNoMemory(ATOM{0},
                      [&]() -> ATOM { return Register(*windowClass, windowClass->lpszClassName, windowClass->lpszMenuName, nullptr); });
}

ATOM RegisterClassExA(const WNDCLASSEXA* windowClass)
{
    return OrNoMemory(ATOM{0}, [&]() -> ATOM {
        if (windowClass->cbSize != sizeof *windowClass)
            return Fail(ERROR_INVALID_PARAMETER, ATOM{0});
        return Register(*windowClass, windowClass->lpszClassName, windowClass->lpszMenuName, windowClass->hIconSm);
    });
}

ATOM RegisterClassExW(const WNDCLASSEXW* windowClass)
{
    return OrNoMemory(ATOM{0}, [&]() -> ATOM {
        if (windowClass->cbSize != sizeof *windowClass)
            return Fail(ERROR_INVALID_PARAMETER, ATOM{0});
        return Register(*windowClass, windowClass->lpszClassName, windowClass->lpszMenuName, windowClass->hIconSm);
    });
}

BOOL UnregisterClassA(LPCSTR name, HINSTANCE module)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Unregister(name, module); });
}

BOOL UnregisterClassW(LPCWSTR name, HINSTANCE module)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return Unregister(name, module); });
}

BOOL GetClassInfoA(HINSTANCE module, LPCSTR name, WNDCLASSA* windowClass)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return GetInfo(module, name, windowClass, nullptr) != 0; });
}

BOOL GetClassInfoW(HINSTANCE module, LPCWSTR name, WNDCLASSW* windowClass)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return GetInfo(module, name, windowClass, nullptr) != 0; });
}

BOOL GetClassInfoExA(HINSTANCE module, LPCSTR name, WNDCLASSEXA* windowClass)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return GetInfo(module, name, windowClass, &windowClass->hIconSm); });
}

BOOL GetClassInfoExW(HINSTANCE module, LPCWSTR name, WNDCLASSEXW* windowClass)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return GetInfo(module, name, windowClass, &windowClass->hIconSm); });
}

int GetClassNameA(HWND window, LPSTR name, int size)
{
    return OrNoMemory(int{0}, [&]() -> int { return CopyName(window, name, size); });
}

int GetClassNameW(HWND window, LPWSTR name, int size)
{
    return OrNoMemory(int{0}, [&]() -> int { return CopyName(window, name, size); });
}

UINT RealGetWindowClassA(HWND window, LPSTR name, UINT size)
{
    return static_cast<UINT>(CopyName(window, name, static_cast<int>(size)));
}

UINT RealGetWindowClassW(HWND window, LPWSTR name, UINT size)
{
    return static_cast<UINT>(CopyName(window, name, static_cast<int>(size)));
}
