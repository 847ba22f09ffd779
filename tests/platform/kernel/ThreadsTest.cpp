// ThreadsTest.cpp: a thread's life as its handle shows it, and values of each thread's own.
#include "support/Threads.h"
#include "support/Failures.h"

#include <atomic>

using namespace kelgen::test;

TEST(Thread, SuspendedOneBeginsWhenItsCountReachesZero)
{
    std::atomic<bool> ran{false};
    const auto thread = StartThread(
        [&ran]() -> DWORD {
            ran = true;
            return 7;
        },
        CREATE_SUSPENDED);
    EXPECT_EQ(1u, SuspendThread(thread.get()));
    EXPECT_EQ(2u, ResumeThread(thread.get()));
    EXPECT_EQ(DWORD{WAIT_TIMEOUT}, WaitForSingleObject(thread.get(), 20));
    EXPECT_FALSE(ran);
    EXPECT_EQ(1u, ResumeThread(thread.get()));
    EXPECT_EQ(7u, ExitCodeOf(thread));
    EXPECT_TRUE(ran);
}

TEST(Thread, RunsUntilItEndsAndReportsItsId)
{
    const OwnedHandle go(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    std::atomic<DWORD> own{0};
    DWORD id = 0;
    const auto thread = StartThread(
        [&]() -> DWORD {
            own = GetCurrentThreadId();
            WaitForSingleObject(go.get(), kDeadline);
            ExitThread(11);
        },
        0, &id);
    DWORD exitCode = 0;
    EXPECT_TRUE(GetExitCodeThread(thread.get(), &exitCode));
    EXPECT_EQ(DWORD{STILL_ACTIVE}, exitCode);
    SetEvent(go.get());
    EXPECT_EQ(11u, ExitCodeOf(thread));
    EXPECT_EQ(id, own);
    EXPECT_NE(GetCurrentThreadId(), id);
}

TEST(Thread, IsSignalledOnlyAfterItsThreadLocalObjectsAreGone)
{
    static std::atomic<bool> destroyed;
    destroyed = false;
    struct Local
    {
        ~Local()
        {
            Sleep(20);
            destroyed = true;
        }
        int touched = 0;
    };
    const auto thread = StartThread([]() -> DWORD {
        static thread_local Local local;
        return static_cast<DWORD>(local.touched++);
    });
    ASSERT_EQ(DWORD{WAIT_OBJECT_0}, WaitForSingleObject(thread.get(), kDeadline));
    EXPECT_TRUE(destroyed);
}

TEST(ThreadStorage, ValuesAreEachThreadsOwnAndAReusedIndexIsEmpty)
{
    const DWORD index = TlsAlloc();
    ASSERT_NE(TLS_OUT_OF_INDEXES, index);
    int here = 0;
    EXPECT_TRUE(TlsSetValue(index, &here));
    const auto other = StartThread([index]() -> DWORD { return TlsGetValue(index) == nullptr; });
    EXPECT_EQ(1u, ExitCodeOf(other)) << "null";
    EXPECT_EQ(&here, TlsGetValue(index));

    EXPECT_TRUE(TlsFree(index));
    EXPECT_EQ(index, TlsAlloc());
    EXPECT_EQ(nullptr, TlsGetValue(index));
    EXPECT_TRUE(TlsFree(index));
}

TEST(ThreadStorage, BadIndexesFail)
{
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !TlsSetValue(0xFFFFFFF0, nullptr)));
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !TlsFree(0xFFFFFFF0)));
}
