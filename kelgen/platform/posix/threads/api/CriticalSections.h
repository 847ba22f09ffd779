// CriticalSections.h: the lock inside one process that its owner may enter again.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

/// A lock by value: pass it by address, never copy it. The size and the fields' names are the platform's.
struct CRITICAL_SECTION
{
    PVOID DebugInfo;
    LONG LockCount;       ///< Here 0 free, 1 owned, 2 owned with waiters.
    LONG RecursionCount;  ///< How often its owner is inside.
    HANDLE OwningThread;  ///< The owner's thread id, null when free.
    HANDLE LockSemaphore;
    ULONG_PTR SpinCount;
};
using LPCRITICAL_SECTION = CRITICAL_SECTION*;
using PCRITICAL_SECTION = CRITICAL_SECTION*;

/// Makes @p section a free lock.
KELGEN_PLATFORM_API void InitializeCriticalSection(CRITICAL_SECTION* section);

/// Makes @p section a free lock; always TRUE. @p spinCount tries come before the first sleep.
KELGEN_PLATFORM_API BOOL InitializeCriticalSectionAndSpinCount(CRITICAL_SECTION* section, DWORD spinCount);

/// Ends the use of a free lock; nobody may be inside or waiting.
KELGEN_PLATFORM_API void DeleteCriticalSection(CRITICAL_SECTION* section);

/// Enters, waiting while another thread is inside. Cost: one compare-exchange when free.
KELGEN_PLATFORM_API void EnterCriticalSection(CRITICAL_SECTION* section);

/// Enters when that needs no wait; else FALSE.
KELGEN_PLATFORM_API BOOL TryEnterCriticalSection(CRITICAL_SECTION* section);

/// Leaves as often as entered frees the lock. The caller is its owner.
KELGEN_PLATFORM_API void LeaveCriticalSection(CRITICAL_SECTION* section);
