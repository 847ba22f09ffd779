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

    operator HANDLE() const { return m_hObject; }

    /// Waits for the object. FALSE after @p timeout milliseconds.
    /// By contract: FALSE also for a mutex whose owner ended, which the caller then owns.
    virtual BOOL Lock(DWORD timeout = INFINITE);
    virtual BOOL Unlock() = 0;
    /// By contract: TRUE, and nothing is done, except by semaphores.
    virtual BOOL Unlock(LONG count, LPLONG previousCount = nullptr);

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
    /// Throws: CResourceException when the platform refuses, as for a count above the maximum.
    explicit CSemaphore(LONG initialCount = 1, LONG maximumCount = 1, LPCSTR name = nullptr, LPSECURITY_ATTRIBUTES security = nullptr);
    ~CSemaphore() override;

    /// Frees one place. FALSE when all are free.
    BOOL Unlock() override;
    /// Frees @p count places, or none and FALSE when that are too many.
    BOOL Unlock(LONG count, LPLONG previousCount = nullptr) override;
};

/// A lock with an owner thread, which may lock it again.
class KELGEN_FRAMEWORK_API CMutex : public CSyncObject
{
    DECLARE_DYNAMIC(CMutex)

public:
    explicit CMutex(BOOL initiallyOwned = FALSE, LPCSTR name = nullptr, LPSECURITY_ATTRIBUTES security = nullptr);
    ~CMutex() override;

    using CSyncObject::Unlock;
    /// FALSE when the calling thread does not own it.
    BOOL Unlock() override;
};

/// A signal. An automatic one lets one waiting thread go, a manual one all of them until it is reset.
class KELGEN_FRAMEWORK_API CEvent : public CSyncObject
{
    DECLARE_DYNAMIC(CEvent)

public:
    explicit CEvent(BOOL initiallySignalled = FALSE, BOOL manualReset = FALSE, LPCSTR name = nullptr,
                    LPSECURITY_ATTRIBUTES security = nullptr);
    ~CEvent() override;

    BOOL SetEvent();
    BOOL PulseEvent();
    BOOL ResetEvent();

    using CSyncObject::Unlock;
    /// By contract: TRUE, and nothing is done.
    BOOL Unlock() override;
};

/// The quickest lock, for the threads of one process; its owner may lock it again.
class KELGEN_FRAMEWORK_API CCriticalSection : public CSyncObject
{
    DECLARE_DYNAMIC(CCriticalSection)

public:
    CCriticalSection();
    ~CCriticalSection() override;

    operator CRITICAL_SECTION*() { return &m_sect; }

    BOOL Lock();
    /// By contract: @p timeout must be INFINITE; there is no timed wait.
    BOOL Lock(DWORD timeout) override;
    using CSyncObject::Unlock;
    BOOL Unlock() override;

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

    /// The object must not be locked by this lock already.
    BOOL Lock(DWORD timeout = INFINITE);
    /// TRUE when the object is not locked by this lock any more.
    BOOL Unlock();
    BOOL Unlock(LONG count, LPLONG previousCount = nullptr);
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

    /// The platform's wait result: WAIT_OBJECT_0 or WAIT_ABANDONED_0 plus an index, WAIT_TIMEOUT, WAIT_FAILED.
    DWORD Lock(DWORD timeout = INFINITE, BOOL waitForAll = TRUE);
    /// Unlocks all that are held. TRUE.
    BOOL Unlock();
    /// Frees @p count places of each held semaphore. TRUE when there was one.
    BOOL Unlock(LONG count, LPLONG previousCount = nullptr);
    BOOL IsLocked(DWORD index) const;

private:
    DWORD m_dwCount;
    std::unique_ptr<CSyncObject*[]> m_ppObjects;
    std::unique_ptr<HANDLE[]> m_pHandles;
    std::unique_ptr<bool[]> m_pLocked;
};
