// Threads.h: threads by handle, their ids and exit codes, and values of each thread's own.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#define CREATE_SUSPENDED 0x4u
#define STACK_SIZE_PARAM_IS_A_RESERVATION 0x10000u
#define STILL_ACTIVE 259u
#define TLS_OUT_OF_INDEXES 0xFFFFFFFFu
#define TLS_MINIMUM_AVAILABLE 64

#define THREAD_PRIORITY_LOWEST (-2)
#define THREAD_PRIORITY_BELOW_NORMAL (-1)
#define THREAD_PRIORITY_NORMAL 0
#define THREAD_PRIORITY_ABOVE_NORMAL 1
#define THREAD_PRIORITY_HIGHEST 2
#define THREAD_PRIORITY_TIME_CRITICAL 15
#define THREAD_PRIORITY_IDLE (-15)
#define THREAD_PRIORITY_ERROR_RETURN 0x7FFFFFFF

using LPTHREAD_START_ROUTINE = DWORD (*)(LPVOID);
using PTHREAD_START_ROUTINE = LPTHREAD_START_ROUTINE;

/// Starts a thread. Stores its id when @p id is not null. With CREATE_SUSPENDED it begins at the first ResumeThread.
/// @p stackSize is in bytes; 0 is the system's default.
/// @return A handle that is signalled once the thread has ended and its thread-local objects are gone; null with last error 8.
KELGEN_PLATFORM_API HANDLE CreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackSize, LPTHREAD_START_ROUTINE start, LPVOID argument,
                                        DWORD flags, LPDWORD id);

/// The runtime's way to start a thread: as CreateThread. @return The handle, 0 on failure.
KELGEN_PLATFORM_API UINT_PTR _beginthreadex(void* security, unsigned stackSize, unsigned (*start)(void*), void* argument, unsigned flags,
                                            unsigned* id);

/// Ends the calling thread; objects on its stack are destroyed.
[[noreturn]] KELGEN_PLATFORM_API void ExitThread(DWORD exitCode);

/// As ExitThread.
[[noreturn]] KELGEN_PLATFORM_API void _endthreadex(unsigned exitCode);

/// Stores the thread's exit code, STILL_ACTIVE while it runs. FALSE with 6 for a bad handle.
KELGEN_PLATFORM_API BOOL GetExitCodeThread(HANDLE thread, LPDWORD exitCode);

/// Lowers the suspend count; the thread begins when it reaches 0. @return The count before, 0xFFFFFFFF with 6 for a bad handle.
KELGEN_PLATFORM_API DWORD ResumeThread(HANDLE thread);

/// Raises the suspend count of a thread that has not begun yet. @return The count before; 0xFFFFFFFF with 50 for one that runs:
/// stopping it at any point could stop it inside a lock.
KELGEN_PLATFORM_API DWORD SuspendThread(HANDLE thread);

/// Keeps @p priority for GetThreadPriority; the scheduler is left alone. FALSE with 6 for a bad handle, 87 for no priority.
KELGEN_PLATFORM_API BOOL SetThreadPriority(HANDLE thread, int priority);

/// The thread's priority; THREAD_PRIORITY_ERROR_RETURN with 6 for a bad handle.
KELGEN_PLATFORM_API int GetThreadPriority(HANDLE thread);

/// The calling thread's id, the kernel's own number for it.
KELGEN_PLATFORM_API DWORD GetCurrentThreadId();

/// The id of a thread; 0 with last error 6 for a bad handle.
KELGEN_PLATFORM_API DWORD GetThreadId(HANDLE thread);

/// The pseudo handle -2, which always means the thread that uses it.
inline HANDLE GetCurrentThread()
{
    return reinterpret_cast<HANDLE>(LONG_PTR{-2});
}

/// The pseudo handle -1, which means this process.
inline HANDLE GetCurrentProcess()
{
    return reinterpret_cast<HANDLE>(LONG_PTR{-1});
}

/// Sleeps at least @p milliseconds; 0 lets another thread run.
KELGEN_PLATFORM_API void Sleep(DWORD milliseconds);

/// Lets another thread run.
KELGEN_PLATFORM_API BOOL SwitchToThread();

/// A new index whose value is null in every thread; TLS_OUT_OF_INDEXES after 1088.
KELGEN_PLATFORM_API DWORD TlsAlloc();

/// Gives the index back. FALSE with 87 when it is not in use.
KELGEN_PLATFORM_API BOOL TlsFree(DWORD index);

/// The calling thread's value at @p index, and last error 0; null with last error 87 past the last index.
KELGEN_PLATFORM_API LPVOID TlsGetValue(DWORD index);

/// Sets the calling thread's value at @p index. FALSE with 87 past the last index.
KELGEN_PLATFORM_API BOOL TlsSetValue(DWORD index, LPVOID value);
