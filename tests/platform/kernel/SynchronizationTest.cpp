// SynchronizationTest.cpp: critical sections, events, mutexes, semaphores, and waits for one and several.
#include "support/Failures.h"
#include "support/Threads.h"

#include <atomic>

using namespace kelgen::test;

namespace {

OwnedHandle NewEvent(bool manual, bool signalled)
{
    return OwnedHandle(CreateEventA(nullptr, manual, signalled, nullptr));
}

bool IsSignalled(const OwnedHandle& object)
{
    return WaitForSingleObject(object.get(), 0) == WAIT_OBJECT_0;
}

}  // namespace

TEST(CriticalSection, OwnerEntersAgainAndLeavesAsOften)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EXPECT_TRUE(TryEnterCriticalSection(&section));
    LeaveCriticalSection(&section);

    const auto tryElsewhere = [&section] {
        return ExitCodeOf(StartThread([&section] {
            const BOOL inside = TryEnterCriticalSection(&section);
            if (inside)
                LeaveCriticalSection(&section);
            return static_cast<DWORD>(inside);
        }));
    };
    EXPECT_EQ(0u, tryElsewhere());
    LeaveCriticalSection(&section);
    EXPECT_EQ(1u, tryElsewhere());
    DeleteCriticalSection(&section);
}

TEST(CriticalSection, ContendedCounterLosesNothing)
{
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    int count = 0;
    std::vector<OwnedHandle> threads;
    for (int i = 0; i < 4; ++i) {
        threads.push_back(StartThread([&section, &count]() -> DWORD {
            for (int step = 0; step < 20000; ++step) {
                EnterCriticalSection(&section);
                ++count;
                LeaveCriticalSection(&section);
            }
            return 0;
        }));
    }
    for (const auto& thread : threads)
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(thread.get(), kDeadline));
    EXPECT_EQ(80000, count);
    DeleteCriticalSection(&section);
}

TEST(Event, AutomaticIsTakenByOneWaitAndManualStays)
{
    const auto automatic = NewEvent(false, true);
    EXPECT_TRUE(IsSignalled(automatic));
    EXPECT_FALSE(IsSignalled(automatic));

    const auto manual = NewEvent(true, false);
    EXPECT_FALSE(IsSignalled(manual));
    SetEvent(manual.get());
    EXPECT_TRUE(IsSignalled(manual));
    EXPECT_TRUE(IsSignalled(manual));
    ResetEvent(manual.get());
    EXPECT_FALSE(IsSignalled(manual));
}

TEST(Event, EachSetOfAnAutomaticEventWakesExactlyOneWaiter)
{
    const auto event = NewEvent(false, false);
    std::atomic<int> woken{0};
    const OwnedHandle wokenOnce(CreateSemaphoreA(nullptr, 0, 10, nullptr));
    std::vector<OwnedHandle> threads;
    for (int i = 0; i < 3; ++i) {
        threads.push_back(StartThread([&]() -> DWORD {
            WaitForSingleObject(event.get(), kDeadline);
            ++woken;
            ReleaseSemaphore(wokenOnce.get(), 1, nullptr);
            return 0;
        }));
    }
    for (int i = 1; i <= 3; ++i) {
        SetEvent(event.get());
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(wokenOnce.get(), kDeadline));
        EXPECT_EQ(i, woken);
    }
    for (const auto& thread : threads)
        WaitForSingleObject(thread.get(), kDeadline);
    EXPECT_FALSE(IsSignalled(event));
}

TEST(Event, NamesFindTheSameObjectWhileOneHandleIsOpen)
{
    OwnedHandle first(CreateEventA(nullptr, TRUE, FALSE, "kelgen test event"));
    EXPECT_EQ(DWORD{NO_ERROR}, GetLastError());
    OwnedHandle second(CreateEventA(nullptr, TRUE, FALSE, "kelgen test event"));
    EXPECT_EQ(DWORD{ERROR_ALREADY_EXISTS}, GetLastError());
    EXPECT_NE(first.get(), second.get());
    SetEvent(first.get());
    EXPECT_TRUE(IsSignalled(second));

    EXPECT_TRUE(FailedWith(ERROR_INVALID_HANDLE, !CreateMutexA(nullptr, FALSE, "kelgen test event")));
    first.reset();
    second.reset();
    EXPECT_TRUE(FailedWith(ERROR_FILE_NOT_FOUND, !OpenEventA(EVENT_ALL_ACCESS, FALSE, "kelgen test event")));
}

TEST(Mutex, BelongsToItsThreadByLevels)
{
    const OwnedHandle mutex(CreateMutexA(nullptr, TRUE, nullptr));
    EXPECT_TRUE(IsSignalled(mutex));
    EXPECT_TRUE(ReleaseMutex(mutex.get()));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, ExitCodeOf(StartThread([&mutex] { return WaitForSingleObject(mutex.get(), 0); })));

    EXPECT_TRUE(ReleaseMutex(mutex.get()));
    EXPECT_TRUE(FailedWith(ERROR_NOT_OWNER, !ReleaseMutex(mutex.get())));
}

TEST(Mutex, OfAnEndedThreadIsAbandonedOnce)
{
    const OwnedHandle mutex(CreateMutexA(nullptr, FALSE, nullptr));
    const auto owner = StartThread([&mutex] { return WaitForSingleObject(mutex.get(), 0); });
    WaitForSingleObject(owner.get(), kDeadline);
    EXPECT_EQ(DWORD{WAIT_ABANDONED}, WaitForSingleObject(mutex.get(), kDeadline));
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(mutex.get(), kDeadline));
}

TEST(Semaphore, CountsAndRefusesToPassItsMaximum)
{
    const OwnedHandle semaphore(CreateSemaphoreA(nullptr, 1, 3, nullptr));
    LONG previous = -1;
    EXPECT_TRUE(ReleaseSemaphore(semaphore.get(), 2, &previous));
    EXPECT_EQ(1, previous);
    EXPECT_TRUE(FailedWith(ERROR_TOO_MANY_POSTS, !ReleaseSemaphore(semaphore.get(), 1, &previous)));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(IsSignalled(semaphore)) << i;
    EXPECT_FALSE(IsSignalled(semaphore));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !CreateSemaphoreA(nullptr, 4, 3, nullptr)));
}

TEST(Wait, AnyTakesTheLowestIndexOnly)
{
    const auto first = NewEvent(false, false);
    const auto second = NewEvent(false, true);
    const auto third = NewEvent(false, true);
    const HANDLE handles[] = {first.get(), second.get(), third.get()};
    EXPECT_EQ(WAIT_OBJECT_0 + 1, WaitForMultipleObjects(3, handles, FALSE, 0));
    EXPECT_EQ(WAIT_OBJECT_0 + 2, WaitForMultipleObjects(3, handles, FALSE, 0));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, WaitForMultipleObjects(3, handles, FALSE, 0));
}

TEST(Wait, AllTakesNothingBeforeAllAreThere)
{
    const auto first = NewEvent(false, true);
    const auto second = NewEvent(false, false);
    const HANDLE handles[] = {first.get(), second.get()};
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, WaitForMultipleObjects(2, handles, TRUE, 10));
    EXPECT_TRUE(IsSignalled(first));

    SetEvent(first.get());
    const auto setter = StartThread([&second]() -> DWORD { return static_cast<DWORD>(SetEvent(second.get())); });
    EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForMultipleObjects(2, handles, TRUE, kDeadline));
    EXPECT_FALSE(IsSignalled(first));
    EXPECT_FALSE(IsSignalled(second));
    WaitForSingleObject(setter.get(), kDeadline);
}

TEST(Wait, ThatEndsAsItIsServedTakesOnceOrNothing)
{
    constexpr int kWaiters = 3;
    constexpr int kReleases = 3000;
    const OwnedHandle units(CreateSemaphoreA(nullptr, 0, kReleases, nullptr));
    const auto never = NewEvent(true, false);
    const auto stop = NewEvent(true, false);
    std::atomic<int> taken = 0;
    std::vector<OwnedHandle> waiters;
    for (int i = 0; i < kWaiters; ++i)
        waiters.push_back(StartThread([&, i]() -> DWORD {
            // One object twice, and times so short that many waits end by themselves.
            const HANDLE handles[] = {never.get(), units.get(), stop.get(), units.get()};
            for (DWORD result = WAIT_TIMEOUT; result != WAIT_OBJECT_0 + 2;) {
                result = WaitForMultipleObjects(4, handles, FALSE, i == 0 ? INFINITE : 1);
                taken += result == WAIT_OBJECT_0 + 1;
            }
            return 0;
        }));
    for (int i = 0; i < kReleases; ++i) {
        EXPECT_TRUE(ReleaseSemaphore(units.get(), 1, nullptr));
        if (i % 100 == 0) {
            EXPECT_EQ(DWORD{WAIT_TIMEOUT}, WaitForSingleObject(never.get(), 1));
        }
    }
    // Of all that are signalled the first in the list is taken: what is left goes before the stop.
    EXPECT_TRUE(SetEvent(stop.get()));
    for (const OwnedHandle& waiter : waiters)
        EXPECT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(waiter.get(), kDeadline));
    EXPECT_EQ(kReleases, taken);
}

TEST(Wait, RefusesBadCountsAndHandles)
{
    const auto event = NewEvent(true, false);
    const std::vector<HANDLE> many(MAXIMUM_WAIT_OBJECTS + 1, event.get());
    struct Row
    {
        const char* name;
        DWORD count;
        std::vector<HANDLE> handles;
        BOOL all;
        DWORD result, error;
    };
    const HANDLE one = event.get();
    const Row rows[] = {
        {"none", 0, {one}, FALSE, WAIT_FAILED, ERROR_INVALID_PARAMETER},
        {"65", MAXIMUM_WAIT_OBJECTS + 1, many, FALSE, WAIT_FAILED, ERROR_INVALID_PARAMETER},
        {"64", MAXIMUM_WAIT_OBJECTS, many, FALSE, WAIT_TIMEOUT, 0},
        {"null", 2, {one, nullptr}, FALSE, WAIT_FAILED, ERROR_INVALID_HANDLE},
        {"never signalled", 1, {INVALID_HANDLE_VALUE}, FALSE, WAIT_TIMEOUT, 0},
    };
    for (const Row& row : rows) {
        SetLastError(0);
        EXPECT_EQ(row.result, WaitForMultipleObjects(row.count, row.handles.data(), row.all, 0)) << row.name;
        EXPECT_EQ(row.error, GetLastError()) << row.name;
    }
}
