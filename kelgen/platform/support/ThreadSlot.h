// ThreadSlot.h: one pointer for each thread, handed back when the thread ends.
#pragma once

#include <kelgen/platform/Win32.h>

namespace kelgen {

/// A pointer for each thread. A thread that ends with one set passes it to @p finish, after its thread-local objects are gone.
///
/// By contract: whether threads that still live get their call when the slot is destroyed, or when the process ends, is open, since the
/// platforms differ there.
/// Threads: any.
class KELGEN_PLATFORM_API ThreadSlot
{
public:
    using Finish = void(WINAPI*)(void* value);

    explicit ThreadSlot(Finish finish);
    ~ThreadSlot();
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    /// Sets the calling thread's pointer; null takes it back. False, with nothing set, when the system has no room for it.
    [[nodiscard]] bool Set(void* value);

private:
    DWORD m_key;
    bool m_usable;
};

}  // namespace kelgen
