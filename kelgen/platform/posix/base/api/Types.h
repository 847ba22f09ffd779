// Types.h: the platform's types with the platform's sizes. LONG and DWORD are 32-bit; WCHAR is a 16-bit unit.
#pragma once

#include <cstddef>
#include <cstdint>

#define WINAPI
#define CALLBACK
#define APIENTRY
#define PASCAL
#define CONST const
#define FAR
#define IN
#define OUT

using VOID = void;
using BOOL = int;
using BOOLEAN = unsigned char;
using CHAR = char;
using BYTE = unsigned char;
using UCHAR = unsigned char;
using SHORT = short;
using USHORT = unsigned short;
using WORD = unsigned short;
using WCHAR = unsigned short;
using INT = int;
using UINT = unsigned int;
using LONG = int;
using ULONG = unsigned int;
using DWORD = unsigned int;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using DWORDLONG = unsigned long long;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using ATOM = WORD;
using LANGID = WORD;
using LCID = DWORD;
using HRESULT = LONG;
using REGSAM = DWORD;
using COLORREF = DWORD;

using LPVOID = void*;
using PVOID = void*;
using LPCVOID = const void*;
using LPSTR = char*;
using PSTR = char*;
using LPCSTR = const char*;
using PCSTR = const char*;
using LPWSTR = WCHAR*;
using PWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using PCWSTR = const WCHAR*;
using TCHAR = char;
#define TEXT(text) text
using LPTSTR = char*;
using LPCTSTR = const char*;
using LPBYTE = BYTE*;
using PBYTE = BYTE*;
using LPBOOL = BOOL*;
using PBOOL = BOOL*;
using LPINT = int*;
using LPWORD = WORD*;
using PWORD = WORD*;
using LPLONG = LONG*;
using PLONG = LONG*;
using LPDWORD = DWORD*;
using PDWORD = DWORD*;

using HANDLE = void*;
using LPHANDLE = HANDLE*;
using PHANDLE = HANDLE*;

/// A handle type of its own, so that handles of different kinds do not mix.
#define DECLARE_HANDLE(name)                                                                                                               \
    struct name##__;                                                                                                                       \
    using name = name##__*

DECLARE_HANDLE(HINSTANCE);
DECLARE_HANDLE(HKEY);
DECLARE_HANDLE(HRSRC);
DECLARE_HANDLE(HWND);
DECLARE_HANDLE(HMENU);
using HMODULE = HINSTANCE;
using HGLOBAL = HANDLE;
using HLOCAL = HANDLE;
using PHKEY = HKEY*;

using FARPROC = INT_PTR (*)();
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
#define MAX_PATH 260
#define INFINITE 0xFFFFFFFFu
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)))

#define LOBYTE(w) (static_cast<BYTE>(static_cast<DWORD_PTR>(w) & 0xff))
#define HIBYTE(w) (static_cast<BYTE>((static_cast<DWORD_PTR>(w) >> 8) & 0xff))
#define LOWORD(l) (static_cast<WORD>(static_cast<DWORD_PTR>(l) & 0xffff))
#define HIWORD(l) (static_cast<WORD>((static_cast<DWORD_PTR>(l) >> 16) & 0xffff))
#define MAKEWORD(a, b) (static_cast<WORD>(static_cast<BYTE>(a) | (static_cast<WORD>(static_cast<BYTE>(b)) << 8)))
#define MAKELONG(a, b) (static_cast<LONG>(static_cast<WORD>(a) | (static_cast<DWORD>(static_cast<WORD>(b)) << 16)))
#define MAKEINTRESOURCEA(i) (reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(i))))
#define MAKEINTRESOURCEW(i) (reinterpret_cast<LPWSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(i))))
#define MAKEINTRESOURCE MAKEINTRESOURCEA
#define IS_INTRESOURCE(r) ((reinterpret_cast<ULONG_PTR>(r) >> 16) == 0)

union LARGE_INTEGER {
    __extension__ struct
    {
        DWORD LowPart;
        LONG HighPart;
    };
    struct
    {
        DWORD LowPart;
        LONG HighPart;
    } u;
    LONGLONG QuadPart;
};

union ULARGE_INTEGER {
    __extension__ struct
    {
        DWORD LowPart;
        DWORD HighPart;
    };
    struct
    {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;

/// 100-nanosecond steps since 1601-01-01 UTC.
struct FILETIME
{
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};
using LPFILETIME = FILETIME*;
using PFILETIME = FILETIME*;

struct SYSTEMTIME
{
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

/// Accepted and ignored: objects on Linux carry the creating user's rights.
struct SECURITY_ATTRIBUTES
{
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
