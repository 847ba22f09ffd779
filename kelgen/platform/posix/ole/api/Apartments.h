// Apartments.h: entering and leaving the object system, counted per thread.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/ole/api/OleTypes.h>

#define COINIT_MULTITHREADED 0x0
#define COINIT_APARTMENTTHREADED 0x2

/// Enters with @p mode. S_FALSE when the thread is inside already, RPC_E_CHANGED_MODE when it is with another mode.
KELGEN_PLATFORM_API HRESULT CoInitializeEx(LPVOID reserved, DWORD mode);
/// Enters with COINIT_APARTMENTTHREADED.
KELGEN_PLATFORM_API HRESULT CoInitialize(LPVOID reserved);
/// Leaves once.
KELGEN_PLATFORM_API void CoUninitialize();
/// As CoInitialize, but S_OK the first time that the thread comes this way.
KELGEN_PLATFORM_API HRESULT OleInitialize(LPVOID reserved);
/// Leaves what OleInitialize has entered.
KELGEN_PLATFORM_API void OleUninitialize();
