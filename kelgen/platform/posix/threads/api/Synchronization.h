// Synchronization.h: events, mutexes and semaphores by handle, and waiting for them and for threads.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define WAIT_OBJECT_0 0u
#define WAIT_ABANDONED 0x80u
#define WAIT_ABANDONED_0 0x80u
#define WAIT_TIMEOUT 258u
#define WAIT_FAILED 0xFFFFFFFFu
#define MAXIMUM_WAIT_OBJECTS 64

#define SYNCHRONIZE 0x00100000u
#define EVENT_MODIFY_STATE 0x0002u
#define EVENT_ALL_ACCESS 0x1F0003u
#define MUTEX_ALL_ACCESS 0x1F0001u
#define SEMAPHORE_ALL_ACCESS 0x1F0003u

/// A new event, or the existing one of that name with last error 183. Names are the process's own and tell upper from lower case.
/// @return The handle; null with last error 6 when the name belongs to an object of another kind.
KELGEN_PLATFORM_API HANDLE CreateEventA(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL initialState, LPCSTR name);

/// The existing event of that name; null with last error 2 when there is none.
KELGEN_PLATFORM_API HANDLE OpenEventA(DWORD access, BOOL inherit, LPCSTR name);

/// Signals: a manual event until it is reset, an automatic one until one wait has taken it. FALSE with 6 for a bad handle.
KELGEN_PLATFORM_API BOOL SetEvent(HANDLE event);

/// Ends the signal. FALSE with 6 for a bad handle.
KELGEN_PLATFORM_API BOOL ResetEvent(HANDLE event);

/// Lets the waits that are pending now go, one only for an automatic event, and leaves it not signalled.
KELGEN_PLATFORM_API BOOL PulseEvent(HANDLE event);

/// A new mutex, owned by the caller when @p initialOwner, or the existing one of that name with last error 183.
KELGEN_PLATFORM_API HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES security, BOOL initialOwner, LPCSTR name);

/// The existing mutex of that name; null with last error 2 when there is none.
KELGEN_PLATFORM_API HANDLE OpenMutexA(DWORD access, BOOL inherit, LPCSTR name);

/// Gives up one level of ownership. FALSE with 288 when the caller does not own it.
KELGEN_PLATFORM_API BOOL ReleaseMutex(HANDLE mutex);

/// A new semaphore, or the existing one of that name with last error 183. Null with 87 unless 0 <= initial <= maximum, maximum > 0.
KELGEN_PLATFORM_API HANDLE CreateSemaphoreA(LPSECURITY_ATTRIBUTES security, LONG initial, LONG maximum, LPCSTR name);

/// Adds @p count > 0; stores the count before when @p previous is not null. FALSE with 298 when the maximum would be passed: the
/// count stays.
KELGEN_PLATFORM_API BOOL ReleaseSemaphore(HANDLE semaphore, LONG count, LPLONG previous);

/// Waits for one object. @return WAIT_OBJECT_0, WAIT_ABANDONED, WAIT_TIMEOUT, or WAIT_FAILED with last error 6 for a bad handle.
KELGEN_PLATFORM_API DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

/// Waits for any one (the lowest index wins) or for all of 1 to 64 objects; nothing is taken from an object before all are there.
/// @return WAIT_OBJECT_0 or WAIT_ABANDONED_0 plus the index, WAIT_TIMEOUT, or WAIT_FAILED: 87 for a bad count, 6 for a bad handle.
KELGEN_PLATFORM_API DWORD WaitForMultipleObjects(DWORD count, const HANDLE* handles, BOOL all, DWORD milliseconds);

#define CreateEvent CreateEventA
#define OpenEvent OpenEventA
#define CreateMutex CreateMutexA
#define OpenMutex OpenMutexA
#define CreateSemaphore CreateSemaphoreA
