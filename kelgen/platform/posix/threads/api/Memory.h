// Memory.h: memory by handle (global and local, which are the same) and from the process's heap.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define GMEM_FIXED 0x0000
#define GMEM_MOVEABLE 0x0002
#define GMEM_NOCOMPACT 0x0010
#define GMEM_NODISCARD 0x0020
#define GMEM_ZEROINIT 0x0040
#define GMEM_MODIFY 0x0080
#define GMEM_DISCARDABLE 0x0100
#define GMEM_SHARE 0x2000
#define GMEM_DDESHARE 0x2000
#define GMEM_INVALID_HANDLE 0x8000
#define GMEM_DISCARDED 0x4000
#define GMEM_LOCKCOUNT 0x00FF
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)
#define LMEM_FIXED 0x0000
#define LMEM_MOVEABLE 0x0002
#define LMEM_ZEROINIT 0x0040
#define LMEM_MODIFY 0x0080
#define LMEM_INVALID_HANDLE 0x8000
#define LHND (LMEM_MOVEABLE | LMEM_ZEROINIT)
#define LPTR (LMEM_FIXED | LMEM_ZEROINIT)

#define HEAP_NO_SERIALIZE 0x00000001
#define HEAP_GENERATE_EXCEPTIONS 0x00000004
#define HEAP_ZERO_MEMORY 0x00000008
#define HEAP_REALLOC_IN_PLACE_ONLY 0x00000010

// Handles are checked: one that is free already or made up gives ERROR_INVALID_HANDLE and the failure result. Threads: any.

/// A block of @p size bytes: its address when GMEM_FIXED, else a handle for GlobalLock. Null with ERROR_NOT_ENOUGH_MEMORY.
///
/// By contract: a fixed block of 0 bytes has 1, so that its address is not null; a handle for 0 bytes is discarded: it cannot be locked
/// (ERROR_DISCARDED).
KELGEN_PLATFORM_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T size);
/// Changes the size and keeps the contents; new bytes are 0 with GMEM_ZEROINIT. A fixed or locked block may only move with
/// GMEM_MOVEABLE; without, growing fails with ERROR_NOT_ENOUGH_MEMORY. Size 0 discards an unlocked handle with GMEM_MOVEABLE
/// (ERROR_INVALID_PARAMETER without). With GMEM_MODIFY nothing changes.
KELGEN_PLATFORM_API HGLOBAL GlobalReAlloc(HGLOBAL memory, SIZE_T size, UINT flags);
/// Null when the block is freed, else @p memory. A null @p memory gives null.
KELGEN_PLATFORM_API HGLOBAL GlobalFree(HGLOBAL memory);
/// The block's address, which holds until as many GlobalUnlock as there were locks; a fixed block's own address.
KELGEN_PLATFORM_API LPVOID GlobalLock(HGLOBAL memory);
/// TRUE while the block stays locked. FALSE with last error 0 at the last unlock, with ERROR_NOT_LOCKED when there was none.
///
/// By contract: TRUE for a fixed block, which has no locks to count.
KELGEN_PLATFORM_API BOOL GlobalUnlock(HGLOBAL memory);
/// The size in bytes; 0 on failure. The address of a locked block is taken too.
KELGEN_PLATFORM_API SIZE_T GlobalSize(HGLOBAL memory);
/// The handle of the block at @p address.
KELGEN_PLATFORM_API HGLOBAL GlobalHandle(LPCVOID address);
/// GMEM_DISCARDED or 0, and the lock count; GMEM_INVALID_HANDLE.
KELGEN_PLATFORM_API UINT GlobalFlags(HGLOBAL memory);

/// Each does what the call with "Global" in its name does: there is one heap.
KELGEN_PLATFORM_API HLOCAL LocalAlloc(UINT flags, SIZE_T size);
KELGEN_PLATFORM_API HLOCAL LocalReAlloc(HLOCAL memory, SIZE_T size, UINT flags);
KELGEN_PLATFORM_API HLOCAL LocalFree(HLOCAL memory);
KELGEN_PLATFORM_API LPVOID LocalLock(HLOCAL memory);
KELGEN_PLATFORM_API BOOL LocalUnlock(HLOCAL memory);
KELGEN_PLATFORM_API SIZE_T LocalSize(HLOCAL memory);
KELGEN_PLATFORM_API HLOCAL LocalHandle(LPCVOID address);

/// The only heap: the calls below do not look at the one that they are given.
KELGEN_PLATFORM_API HANDLE GetProcessHeap();
/// A block, zeroed with HEAP_ZERO_MEMORY; null when memory is out, without a last error.
KELGEN_PLATFORM_API LPVOID HeapAlloc(HANDLE heap, DWORD flags, SIZE_T size);
/// Resizes a block and keeps its contents; null for null. HEAP_REALLOC_IN_PLACE_ONLY never grows it.
KELGEN_PLATFORM_API LPVOID HeapReAlloc(HANDLE heap, DWORD flags, LPVOID block, SIZE_T size);
/// TRUE, even for null.
KELGEN_PLATFORM_API BOOL HeapFree(HANDLE heap, DWORD flags, LPVOID block);
/// The size that was asked for.
KELGEN_PLATFORM_API SIZE_T HeapSize(HANDLE heap, DWORD flags, LPCVOID block);
