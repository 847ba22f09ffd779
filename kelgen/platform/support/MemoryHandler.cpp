// MemoryHandler.cpp: the handler that the runtime calls before an allocation fails.
#include <kelgen/platform/support/MemoryHandler.h>

#include <atomic>
#include <new>

namespace kelgen {

namespace {

constinit std::atomic<void (*)()> memoryThrower = nullptr;

void HandleExhaustion()
{
    void (*const thrower)() = memoryThrower;
    if (thrower && !detail::throwsBadAlloc)
        thrower();
    throw std::bad_alloc();
}

}  // namespace

constinit thread_local bool detail::throwsBadAlloc = false;

void SetMemoryThrower(void (*thrower)())
{
    memoryThrower = thrower;
    const std::new_handler current = std::get_new_handler();
    if (thrower && !current)
        std::set_new_handler(HandleExhaustion);
    else if (!thrower && current == HandleExhaustion)
        std::set_new_handler(nullptr);
}

}  // namespace kelgen
