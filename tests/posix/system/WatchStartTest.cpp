// WatchStartTest.cpp: watchers whose thread cannot be started.
#include "support/system/Watcher.h"

#include <cstdlib>
#include <new>

using namespace kelgen::test;

namespace {

/// How many allocations of this thread succeed before one fails; negative: all do.
thread_local int allocationsLeft = -1;

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (allocationsLeft >= 0 && allocationsLeft-- == 0)
        throw std::bad_alloc();
    if (void* memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

// The sanitizer's own form would hand out memory that the operators below may not free.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (allocationsLeft >= 0 && allocationsLeft-- == 0)
        return nullptr;
    return std::malloc(size ? size : 1);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

TEST(FileChangeEvent, EndsWhenItsThreadCouldNotBeStarted)
{
    bool failed = true;
    int count = 0;
    for (; failed; ++count) {
        auto* const watcher = new RecordingWatcher;
        watcher->Add(ScratchFile("f"));
        failed = false;
        allocationsLeft = count;
        try {
            watcher->StartWatch();
        } catch (const std::bad_alloc&) {
            failed = true;
        } catch (CException* e) {
            e->Delete();
            failed = true;
        }
        failed = failed || !watcher->IsWatching();
        allocationsLeft = -1;
        EXPECT_EQ(!failed, watcher->IsWatching()) << count;
        const OwnedHandle end = StartThread([watcher]() -> DWORD {
            delete watcher;
            return 0;
        });
        ASSERT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(end.get(), kDeadline)) << count;
    }
    EXPECT_GT(count, 1) << "the first allocation belongs to the start";
}
