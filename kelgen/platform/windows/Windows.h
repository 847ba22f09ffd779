// Windows.h: the real platform's headers, as the library needs them.
#pragma once

#ifndef WINVER
#define WINVER 0x0601
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef STRICT
#define STRICT
#endif

#include <windows.h>

#include <commctrl.h>
#include <mbctype.h>
#include <mbstring.h>
// Bits of the multibyte tables; the C++ library uses these names for itself.
#undef _M1
#undef _M2
// A macro with parameters, and a member of the framework's windows.
#undef GetNextWindow
#include <process.h>
#include <tlhelp32.h>

#include <kelgen/platform/Export.h>
