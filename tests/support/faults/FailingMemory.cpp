// FailingMemory.cpp: replaces malloc and its like; under a sanitizer, which has its own, operator new.
#include "support/faults/FailingMemory.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

struct Failures
{
    int left;  // how many allocations succeed before one fails; negative: all do
    bool fromThereOn;
    bool any;
};

constinit thread_local Failures failures{-1, false, false};
constinit std::atomic<std::ptrdiff_t> liveBlocks = 0;

/// What is planned for the threads that do not plan it.
struct FailuresOfOthers
{
    std::atomic<int> left;
    std::atomic<bool> isOn;
    std::atomic<bool> fromThereOn;
    std::atomic<bool> any;
};

constinit FailuresOfOthers others{};
constinit thread_local bool plansForOthers = false;

bool FailsAmongOthers()
{
    if (plansForOthers)
        return false;
    const int left = others.left--;
    const bool fails = left == 0 || (left < 0 && others.fromThereOn);
    others.any = others.any || fails;
    return fails;
}

bool Fails()
{
    if (others.isOn)
        return FailsAmongOthers();
    if (failures.left < 0 || failures.left-- > 0)
        return false;
    failures.any = true;
    if (failures.fromThereOn)
        failures.left = 0;
    return true;
}

}  // namespace

#if defined(KELGEN_ADDRESS_SANITIZER) || defined(KELGEN_THREAD_SANITIZER)

namespace {

void* Allocate(std::size_t size) noexcept
{
    void* const block = Fails() ? nullptr : std::malloc(size ? size : 1);
    liveBlocks += block ? 1 : 0;
    return block;
}

void Free(void* block) noexcept
{
    liveBlocks -= block ? 1 : 0;
    std::free(block);
}

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size)
{
    for (;;) {
        if (void* const block = Allocate(size))
            return block;
        const std::new_handler handler = std::get_new_handler();
        if (!handler)
            throw std::bad_alloc();
        handler();
    }
}

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

[[gnu::noinline]] void operator delete(void* block) noexcept
{
    Free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept
{
    Free(block);
}

#else

// Seen by the libraries, which take them from here.
#pragma GCC visibility push(default)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

static void* Counted(void* block)
{
    liveBlocks += block ? 1 : 0;
    return block;
}

static void* Failed()
{
    errno = ENOMEM;
    return nullptr;
}

void* malloc(std::size_t size)
{
    return Fails() ? Failed() : Counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size)
{
    return Fails() ? Failed() : Counted(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size)
{
    if (Fails())
        return Failed();
    void* const moved = __libc_realloc(block, size);
    liveBlocks += !block && moved ? 1 : block && !moved && size == 0 ? -1 : 0;
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size)
{
    return Fails() ? Failed() : Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    *block = memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}

void free(void* block)
{
    liveBlocks -= block ? 1 : 0;
    __libc_free(block);
}
}
#pragma GCC visibility pop

#endif

namespace kelgen::test {

FailingMemory::FailingMemory(int first, bool fromThereOn, FailingThreads threads)
{
    failures = {threads == FailingThreads::calling ? first : -1, fromThereOn, false};
    others.any = false;
    if (threads == FailingThreads::calling)
        return;
    plansForOthers = true;
    others.left = first;
    others.fromThereOn = fromThereOn;
    others.isOn = true;
}

void FailingMemory::End()
{
    failures.left = -1;
    others.isOn = false;
    plansForOthers = false;
}

bool FailingMemory::HasFailed() const
{
    return failures.any || others.any;
}

bool FailsMalloc()
{
#if defined(KELGEN_ADDRESS_SANITIZER) || defined(KELGEN_THREAD_SANITIZER)
    return false;
#else
    return true;
#endif
}

std::ptrdiff_t LiveBlocks()
{
    return liveBlocks;
}

}  // namespace kelgen::test
