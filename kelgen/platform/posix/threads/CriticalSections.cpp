// CriticalSections.cpp: a three-state lock over the kernel's address wait, with an owner for re-entry.
#include <kelgen/platform/posix/threads/api/CriticalSections.h>

#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/support/Assert.h>
#include <kelgen/platform/support/Processor.h>

#include <atomic>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr LONG kFree = 0;
constexpr LONG kOwned = 1;
constexpr LONG kContended = 2;

std::atomic_ref<LONG> StateOf(CRITICAL_SECTION* section)
{
    return std::atomic_ref<LONG>(section->LockCount);
}

std::atomic_ref<HANDLE> OwnerOf(CRITICAL_SECTION* section)
{
    return std::atomic_ref<HANDLE>(section->OwningThread);
}

HANDLE Self()
{
    return reinterpret_cast<HANDLE>(ULONG_PTR{GetCurrentThreadId()});
}

bool TakeFree(CRITICAL_SECTION* section)
{
    LONG expected = kFree;
    return StateOf(section).compare_exchange_strong(expected, kOwned, std::memory_order_acquire);
}

// Any thread that slept must leave the state contended: it cannot know whether others sleep still.
void WaitUntilOwned(CRITICAL_SECTION* section)
{
    for (ULONG_PTR tries = section->SpinCount; tries > 0; --tries) {
        if (TakeFree(section))
            return;
        kelgen::processor::Pause();
    }
    while (StateOf(section).exchange(kContended, std::memory_order_acquire) != kFree)
        syscall(SYS_futex, &section->LockCount, FUTEX_WAIT_PRIVATE, kContended, nullptr, nullptr, 0);
}

}  // namespace

void InitializeCriticalSection(CRITICAL_SECTION* section)
{
    InitializeCriticalSectionAndSpinCount(section, 0);
}

BOOL InitializeCriticalSectionAndSpinCount(CRITICAL_SECTION* section, DWORD spinCount)
{
    *section = CRITICAL_SECTION{};
    section->SpinCount = spinCount & 0xFFFFFF;
    return TRUE;
}

void DeleteCriticalSection(CRITICAL_SECTION* section)
{
    KELGEN_ASSERT(StateOf(section).load() == kFree);
    *section = CRITICAL_SECTION{};
}

BOOL TryEnterCriticalSection(CRITICAL_SECTION* section)
{
    const HANDLE self = Self();
    if (OwnerOf(section).load(std::memory_order_relaxed) == self) {
        ++section->RecursionCount;
        return TRUE;
    }
    if (!TakeFree(section))
        return FALSE;

    OwnerOf(section).store(self, std::memory_order_relaxed);
    section->RecursionCount = 1;
    return TRUE;
}

void EnterCriticalSection(CRITICAL_SECTION* section)
{
    if (TryEnterCriticalSection(section))
        return;

    WaitUntilOwned(section);
    OwnerOf(section).store(Self(), std::memory_order_relaxed);
    section->RecursionCount = 1;
}

void LeaveCriticalSection(CRITICAL_SECTION* section)
{
    KELGEN_ASSERT(OwnerOf(section).load(std::memory_order_relaxed) == Self());
    if (--section->RecursionCount > 0)
        return;

    OwnerOf(section).store(nullptr, std::memory_order_relaxed);
    if (StateOf(section).exchange(kFree, std::memory_order_release) == kContended)
        syscall(SYS_futex, &section->LockCount, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
}
