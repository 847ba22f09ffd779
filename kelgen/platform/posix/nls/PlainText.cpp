// PlainText.cpp: the guarded text helpers.
#include <kelgen/platform/posix/nls/api/PlainText.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/api/Locale.h>
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <algorithm>
#include <cstring>

using namespace kelgen::posix;

namespace {

std::size_t LengthOf(LPCSTR text)
{
    return std::strlen(text);
}

std::size_t LengthOf(LPCWSTR text)
{
    return wcslen(text);
}

template <class Unit>
int Length(const Unit* text)
{
    return text ? static_cast<int>(LengthOf(text)) : Fail(ERROR_INVALID_PARAMETER, 0);
}

template <class Unit>
Unit* Copy(Unit* target, const Unit* source, std::size_t offset = 0)
{
    std::memmove(target + offset, source, (LengthOf(source) + 1) * sizeof(Unit));
    return target;
}

template <class Unit>
Unit* CopyChecked(Unit* target, const Unit* source)
{
    return target && source ? Copy(target, source) : Fail<Unit*>(ERROR_INVALID_PARAMETER, nullptr);
}

template <class Unit>
Unit* CopyUpTo(Unit* target, const Unit* source, int capacity)
{
    if (!target || !source)
        return Fail<Unit*>(ERROR_INVALID_PARAMETER, nullptr);
    if (capacity <= 0)
        return target;

    const Unit* end = source;
    while (end - source < capacity - 1 && *end != 0)
        ++end;
    std::memmove(target, source, static_cast<std::size_t>(end - source) * sizeof(Unit));
    target[end - source] = 0;
    return target;
}

template <class Unit>
Unit* Append(Unit* target, const Unit* source)
{
    return target && source ? Copy(target, source, LengthOf(target)) : Fail<Unit*>(ERROR_INVALID_PARAMETER, nullptr);
}

int CompareTerminated(LPCSTR left, LPCSTR right, DWORD flags)
{
    return CompareStringA(GetThreadLocale(), flags, left, -1, right, -1);
}

int CompareTerminated(LPCWSTR left, LPCWSTR right, DWORD flags)
{
    return CompareStringW(GetThreadLocale(), flags, left, -1, right, -1);
}

template <class Unit>
int Compare(const Unit* left, const Unit* right, DWORD flags)
{
    if (!left || !right)
        return (left != nullptr) - (right != nullptr);
    return CompareTerminated(left, right, flags) - CSTR_EQUAL;
}

}  // namespace

int lstrlenA(LPCSTR text)
{
    return Length(text);
}

int lstrlenW(LPCWSTR text)
{
    return Length(text);
}

LPSTR lstrcpyA(LPSTR target, LPCSTR source)
{
    return CopyChecked(target, source);
}

LPWSTR lstrcpyW(LPWSTR target, LPCWSTR source)
{
    return CopyChecked(target, source);
}

LPSTR lstrcpynA(LPSTR target, LPCSTR source, int capacity)
{
    return CopyUpTo(target, source, capacity);
}

LPWSTR lstrcpynW(LPWSTR target, LPCWSTR source, int capacity)
{
    return CopyUpTo(target, source, capacity);
}

LPSTR lstrcatA(LPSTR target, LPCSTR source)
{
    return Append(target, source);
}

LPWSTR lstrcatW(LPWSTR target, LPCWSTR source)
{
    return Append(target, source);
}

int lstrcmpA(LPCSTR left, LPCSTR right)
{
    return Compare(left, right, 0);
}

int lstrcmpW(LPCWSTR left, LPCWSTR right)
{
    return Compare(left, right, 0);
}

int lstrcmpiA(LPCSTR left, LPCSTR right)
{
    return Compare(left, right, NORM_IGNORECASE);
}

int lstrcmpiW(LPCWSTR left, LPCWSTR right)
{
    return Compare(left, right, NORM_IGNORECASE);
}
