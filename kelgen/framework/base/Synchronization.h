// Synchronization.h: locks, events, mutexes and semaphores as objects, and scoped locking of one or several of them.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

#include <memory>

/// Something that threads lock or wait for: the owner of a platform handle.
/// Threads: any.
class KELGEN_FRAMEWORK_API CSyncObject : public CObject
{
    DECLARE_DYNAMIC(CSyncObject)

public:
    /// @p name is for people only; derived classes create the platform's object under it.
    explicit CSyncObject(LPCSTR name);
    ~CSyncObject() override;

    /// The handle, so that an object serves where a call takes one.
    operator HANDLE() const { return m_hObject; }

    /// Waits for the object by WaitForSingleObject. FALSE after @p timeout milliseconds. By contract: FALSE even for a mutex whose owner
    /// ended, which the caller then owns, since what it guards may be half changed.
    virtual BOOL Lock(DWORD timeout = INFINITE);
    /// Gives the object free. FALSE on failure.
    virtual BOOL Unlock() = 0;
    /// Frees several places of a semaphore. By contract: other objects do nothing and return TRUE, so that locks need not ask for the
    /// kind.
    virtual BOOL Unlock(LONG count, LPLONG previousCount = nullptr);

    /// The platform's object; null for a critical section.
    HANDLE m_hObject = nullptr;

protected:
    /// Takes the new object over. Throws: CResourceException when it could not be created.
    void Take(HANDLE object);

private:
    CString m_strName;
};

/// A count of free places.
class KELGEN_FRAMEWORK_API CSemaphore : public CSyncObject
{
    DECLARE_DYNAMIC(CSemaphore)

public:
    /// Calls CreateSemaphoreA. Throws: CResourceException when the platform refuses, as for a count above the maximum.
    explicit CSemaphore(LONG initialCount = 1, LONG maximumCount = 1, LPCSTR name = nullptr, LPSECURITY_ATTRIBUTES security = nullptr);
    ~CSemaphore() override;

    /// Frees one place. FALSE when all are free.
    BOOL Unlock() override;
    /// Frees @p count places by ReleaseSemaphore, or none and FALSE when that are too many.
    BOOL Unlock(LONG count, LPLONG previousCount = nullptr) override;
};

/// A lock with an owner thread, which may lock it again.
class KELGEN_FRAMEWORK_API CMutex : public CSyncObject
{
    DECLARE_DYNAMIC(CMutex)

public:
    /// Calls CreateMutexA: with a name that exists the mutex of that name, whoever owns it.
    explicit CMutex(BOOL initiallyOwned = FALSE, LPCSTR name = nullptr, LPSECURITY_ATTRIBUTES security = nullptr);
    ~CMutex() override;

    using CSyncObject::Unlock;
    /// Calls ReleaseMutex: FALSE when the calling thread does not own it.
    BOOL Unlock() override;
};

/// A signal. An automatic one lets one waiting thread go, a manual one all of them until it is reset.
class KELGEN_FRAMEWORK_API CEvent : public CSyncObject
{
    DECLARE_DYNAMIC(CEvent)

public:
    /// Calls CreateEventA: with a name that exists the event of that name, in its own state.
    explicit CEvent(BOOL initiallySignalled = FALSE, BOOL manualReset = FALSE, LPCSTR name = nullptr,
                    LPSECURITY_ATTRIBUTES security = nullptr);
    ~CEvent() override;

    /// Signals the event. FALSE on failure.
    BOOL SetEvent();
    /// Signals the event to those who wait at this moment, then takes the signal back. FALSE on failure.
    BOOL PulseEvent();
    /// Takes the signal back. FALSE on failure.
    BOOL ResetEvent();

    using CSyncObject::Unlock;
    /// By contract: does nothing and returns TRUE, since an event is not owned.
    BOOL Unlock() override;
};

/// The quickest lock, for the threads of one process; its owner may lock it again.
class KELGEN_FRAMEWORK_API CCriticalSection : public CSyncObject
{
    DECLARE_DYNAMIC(CCriticalSection)

public:
    CCriticalSection();
    ~CCriticalSection() override;

    /// The system's object, for its calls.
    operator CRITICAL_SECTION*() { return &m_sect; }

    /// Waits for the lock by EnterCriticalSection. Returns TRUE.
    BOOL Lock();
    /// Does the same. By contract: @p timeout must be INFINITE, since the platform has no timed wait for this lock.
    BOOL Lock(DWORD timeout) override;
    using CSyncObject::Unlock;
    /// Gives the lock free by LeaveCriticalSection. Returns TRUE.
    BOOL Unlock() override;

    /// The platform's lock.
    CRITICAL_SECTION m_sect;
};

/// Locks one object and unlocks it at the end of its own life.
///
///     CSingleLock lock(&m_section, TRUE);
class KELGEN_FRAMEWORK_API CSingleLock
{
public:
    /// Throws: CInvalidArgException for null.
    explicit CSingleLock(CSyncObject* object, BOOL initialLock = FALSE);
    ~CSingleLock();
    CSingleLock(const CSingleLock&) = delete;
    CSingleLock& operator=(const CSingleLock&) = delete;

    /// Waits for the object, which this lock must not hold already. FALSE after @p timeout milliseconds.
    BOOL Lock(DWORD timeout = INFINITE);
    /// Gives the object free. TRUE if this lock does not hold it any more.
    BOOL Unlock();
    /// Does the same by the object's own Unlock of @p count.
    BOOL Unlock(LONG count, LPLONG previousCount = nullptr);
    /// Whether this lock holds the object.
    BOOL IsLocked() const { return m_bAcquired; }

private:
    CSyncObject* m_pObject;
    BOOL m_bAcquired = FALSE;
};

/// Locks any one or all of several objects at once and unlocks what it holds at the end of its own life.
class KELGEN_FRAMEWORK_API CMultiLock
{
public:
    /// 1 to 64 objects, none of them a critical section.
    /// Throws: CInvalidArgException for any other.
    CMultiLock(CSyncObject* objects[], DWORD count, BOOL initialLock = FALSE);
    ~CMultiLock();
    CMultiLock(const CMultiLock&) = delete;
    CMultiLock& operator=(const CMultiLock&) = delete;

    /// Waits by WaitForMultipleObjects, whose result it returns: WAIT_OBJECT_0 or WAIT_ABANDONED_0 plus an index, WAIT_TIMEOUT,
    /// WAIT_FAILED.
    DWORD Lock(DWORD timeout = INFINITE, BOOL waitForAll = TRUE);
    /// Unlocks all that are held. Returns TRUE.
    BOOL Unlock();
    /// Frees @p count places of each held semaphore. TRUE when there was one.
    BOOL Unlock(LONG count, LPLONG previousCount = nullptr);
    /// Whether this lock holds the object @p index.
    BOOL IsLocked(DWORD index) const;

private:
    DWORD m_dwCount;
    std::unique_ptr<CSyncObject*[]> m_ppObjects;
    std::unique_ptr<HANDLE[]> m_pHandles;
    std::unique_ptr<bool[]> m_pLocked;
};
