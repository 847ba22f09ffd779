// ClassLongs.cpp: single values of a window's class.
#include <kelgen/platform/posix/user/api/WindowClasses.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>
#include <kelgen/platform/posix/user/objects/ExtraBytes.h>
#include <kelgen/platform/posix/user/objects/ProcedureTable.h>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

ULONG_PTR MenuName(const WindowClass& from, bool wide)
{
    if (from.menuNumber != 0 || from.menuName.empty())
        return from.menuNumber;
    return wide ? reinterpret_cast<ULONG_PTR>(from.menuName.c_str()) : reinterpret_cast<ULONG_PTR>(from.menuNameNarrow.c_str());
}

void SetMenuName(WindowClass& to, ULONG_PTR value, bool wide)
{
    to.menuNumber = IS_INTRESOURCE(value) ? value : 0;
    to.menuName.clear();
    if (!IS_INTRESOURCE(value))
        to.menuName = wide ? std::u16string(WideText(reinterpret_cast<LPCWSTR>(value))) : WideText(reinterpret_cast<LPCSTR>(value));
    to.menuNameNarrow = AnsiText(to.menuName);
}

// Reads a named value, and stores *value in its place when that is given.
bool Exchange(WindowClass& from, int index, bool wide, const ULONG_PTR* value, ULONG_PTR& before)
{
    const auto exchange = [&](auto& field) {
        using Field = std::remove_reference_t<decltype(field)>;
        if constexpr (std::is_pointer_v<Field>) {
            before = reinterpret_cast<ULONG_PTR>(field);
            if (value)
                field = reinterpret_cast<Field>(*value);
        } else {
            before = static_cast<ULONG_PTR>(field);
            if (value)
                field = static_cast<Field>(*value);
        }
        return true;
    };
    switch (index) {
    case GCLP_MENUNAME:
        before = MenuName(from, wide);
        if (value)
            SetMenuName(from, *value, wide);
        return true;
    case GCLP_WNDPROC:
        before = reinterpret_cast<ULONG_PTR>(ProcedureFor(*from.procedure, wide));
        if (value)
            from.procedure = ProcedureOf(reinterpret_cast<WNDPROC>(*value), wide);
        return true;
    case GCLP_HBRBACKGROUND:
        return exchange(from.background);
    case GCLP_HCURSOR:
        if (value)
            from.systemCursor = 0;
        return exchange(from.cursor);
    case GCLP_HICON:
        return exchange(from.icon);
    case GCLP_HICONSM:
        return exchange(from.smallIcon);
    case GCLP_HMODULE:
        return exchange(from.module);
    case GCL_CBWNDEXTRA:
        if (value && static_cast<LONG>(*value) < 0)
            return Fail(ERROR_INVALID_PARAMETER, false);
        return exchange(from.windowExtra);
    case GCL_CBCLSEXTRA:
        before = from.extra.size();
        return value ? Fail(ERROR_INVALID_PARAMETER, false) : true;
    case GCL_STYLE:
        return exchange(from.style);
    case GCW_ATOM:
        return exchange(from.atom);
    default:
        return Fail(ERROR_INVALID_INDEX, false);
    }
}

template <class Value>
Value Access(HWND window, int index, bool wide, const Value* value)
{
    std::shared_ptr<WindowClass> found;
    {
        DesktopGuard guard;
        const Window* owner = FindWindowLocked(window);
        if (!owner)
            return Fail(ERROR_INVALID_WINDOW_HANDLE, Value{0});
        if (value && owner->IsDesktopOrMessageRoot())
            return Fail(ERROR_ACCESS_DENIED, Value{0});
        found = owner->windowClass;
    }
    if (index == GCLP_HCURSOR)
        CursorOf(*found);
    DesktopGuard guard;
    if (index >= 0) {
        if (!IsInside(found->extra, index, sizeof(Value)))
            return Fail(ERROR_INVALID_INDEX, Value{0});
        return value ? ExchangeExtra<Value>(found->extra, index, *value) : ReadExtra<Value>(found->extra, index);
    }
    ULONG_PTR before = 0;
    ULONG_PTR after = 0;
    if (value)
        after = static_cast<ULONG_PTR>(*value);
    if (!Exchange(*found, index, wide, value ? &after : nullptr, before))
        return 0;
    return static_cast<Value>(before);
}

// A long of 32 bits cannot hold what is pointer-sized; menu numbers and handles fit.
bool IsTooWide(int index)
{
    return index == GCLP_WNDPROC || index == GCLP_HMODULE;
}

DWORD GetLong(HWND window, int index, bool wide)
{
    if (IsTooWide(index))
        return Fail(ERROR_INVALID_INDEX, DWORD{0});
    return Access<DWORD>(window, index, wide, nullptr);
}

DWORD SetLong(HWND window, int index, LONG value, bool wide)
{
    if (IsTooWide(index) || index == GCLP_MENUNAME)
        return Fail(ERROR_INVALID_INDEX, DWORD{0});
    const auto bits = static_cast<DWORD>(value);
    return Access<DWORD>(window, index, wide, &bits);
}

ULONG_PTR SetLongPtr(HWND window, int index, LONG_PTR value, bool wide)
{
    const auto bits = static_cast<ULONG_PTR>(value);
    return Access<ULONG_PTR>(window, index, wide, &bits);
}

}  // namespace

DWORD GetClassLongA(HWND window, int index)
{
    return GetLong(window, index, false);
}

DWORD GetClassLongW(HWND window, int index)
{
    return GetLong(window, index, true);
}

ULONG_PTR GetClassLongPtrA(HWND window, int index)
{
    return Access<ULONG_PTR>(window, index, false, nullptr);
}

ULONG_PTR GetClassLongPtrW(HWND window, int index)
{
    return Access<ULONG_PTR>(window, index, true, nullptr);
}

WORD GetClassWord(HWND window, int index)
{
    return Access<WORD>(window, index, false, nullptr);
}

DWORD SetClassLongA(HWND window, int index, LONG value)
{
    return SetLong(window, index, value, false);
}

DWORD SetClassLongW(HWND window, int index, LONG value)
{
    return SetLong(window, index, value, true);
}

ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value)
{
    return SetLongPtr(window, index, value, false);
}

ULONG_PTR SetClassLongPtrW(HWND window, int index, LONG_PTR value)
{
    return SetLongPtr(window, index, value, true);
}
