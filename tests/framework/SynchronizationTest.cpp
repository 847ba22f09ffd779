// SynchronizationTest.cpp: lock objects between threads, and scoped locking.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Synchronization.h>

#include <thread>

namespace {

/// What @p object.Lock(0) gives in another thread, which unlocks again.
BOOL LockElsewhere(CSyncObject& object)
{
    BOOL locked = FALSE;
    std::thread([&] {
        locked = object.Lock(0);
        if (locked)
            object.Unlock();
    }).join();
    return locked;
}

}  // namespace

TEST(Synchronization, MutexIsReenteredByItsOwnerOnly)
{
    CMutex mutex(TRUE);
    EXPECT_TRUE(mutex.Lock(0));
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_FALSE(LockElsewhere(mutex));
    EXPECT_TRUE(mutex.Unlock());
    EXPECT_TRUE(LockElsewhere(mutex));
    EXPECT_FALSE(mutex.Unlock()) << "not the owner";
}

TEST(Synchronization, EventsAreTakenOrStay)
{
    CEvent automatic(TRUE);
    EXPECT_TRUE(automatic.Lock(0));
    EXPECT_FALSE(automatic.Lock(0));
    EXPECT_TRUE(automatic.SetEvent());
    EXPECT_TRUE(automatic.Unlock());
    EXPECT_TRUE(automatic.Lock(0));

    CEvent manual(FALSE, TRUE);
    EXPECT_FALSE(manual.Lock(0));
    manual.SetEvent();
    EXPECT_TRUE(manual.Lock(0));
    EXPECT_TRUE(manual.Lock(0));
    manual.ResetEvent();
    EXPECT_FALSE(manual.Lock(0));
}

TEST(Synchronization, SemaphoreCountsAndRefusesTooMany)
{
    CSemaphore semaphore(2, 3);
    EXPECT_TRUE(semaphore.Lock(0));
    EXPECT_TRUE(semaphore.Lock(0));
    EXPECT_FALSE(semaphore.Lock(0));
    LONG previous = -1;
    EXPECT_TRUE(semaphore.Unlock(2, &previous));
    EXPECT_EQ(0, previous);
    EXPECT_TRUE(semaphore.Unlock());
    EXPECT_FALSE(semaphore.Unlock());
    EXPECT_THROW(CSemaphore(4, 3), CResourceException*);
}

TEST(Synchronization, NamedObjectsAreShared)
{
    CEvent first(FALSE, TRUE, "kelgen-test-shared-event"), second(FALSE, TRUE, "kelgen-test-shared-event");
    first.SetEvent();
    EXPECT_TRUE(second.Lock(0));
}

TEST(Synchronization, CriticalSectionKeepsCountsWhole)
{
    CCriticalSection section;
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 20000; ++i) {
            CSingleLock lock(&section, TRUE), again(&section, TRUE);
            ++count;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(40000, count);
}

TEST(Synchronization, SingleLockUnlocksAtItsEnd)
{
    CMutex mutex;
    {
        CSingleLock lock(&mutex);
        EXPECT_FALSE(lock.IsLocked());
        EXPECT_TRUE(lock.Unlock()) << "not held counts as unlocked";
        EXPECT_TRUE(lock.Lock(0));
        EXPECT_FALSE(LockElsewhere(mutex));
    }
    EXPECT_TRUE(LockElsewhere(mutex));
    EXPECT_THROW(CSingleLock(nullptr), CInvalidArgException*);
}

TEST(Synchronization, MultiLockHoldsOneOrAll)
{
    CEvent event;
    CSemaphore semaphore(0, 2);
    CSyncObject* objects[] = {&event, &semaphore};
    CMultiLock lock(objects, 2);
    EXPECT_EQ(WAIT_TIMEOUT, lock.Lock(0, FALSE));

    semaphore.Unlock();
    EXPECT_EQ(WAIT_TIMEOUT, lock.Lock(0, TRUE));
    EXPECT_EQ(WAIT_OBJECT_0 + 1, lock.Lock(0, FALSE));
    EXPECT_FALSE(lock.IsLocked(0));
    EXPECT_TRUE(lock.IsLocked(1));
    EXPECT_FALSE(lock.IsLocked(2));
    EXPECT_TRUE(lock.Unlock());
    EXPECT_FALSE(lock.IsLocked(1));

    event.SetEvent();
    EXPECT_EQ(WAIT_OBJECT_0, lock.Lock(0, TRUE));
    EXPECT_TRUE(lock.IsLocked(0));
    EXPECT_TRUE(lock.Unlock(2, nullptr)) << "frees the semaphore's places";
    EXPECT_TRUE(lock.IsLocked(0));
    EXPECT_TRUE(semaphore.Lock(0));
    EXPECT_TRUE(semaphore.Lock(0));

    CCriticalSection section;
    CSyncObject* wrong[] = {&section};
    EXPECT_THROW(CMultiLock(wrong, 1), CInvalidArgException*);
    EXPECT_THROW(CMultiLock(objects, 0), CInvalidArgException*);
}
