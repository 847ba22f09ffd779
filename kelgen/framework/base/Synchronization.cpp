// Synchronization.cpp: lock objects over the platform's handles.
#include <kelgen/framework/base/Synchronization.h>

#include <kelgen/framework/base/Exceptions.h>

#include <algorithm>

IMPLEMENT_DYNAMIC(CSyncObject, CObject)
IMPLEMENT_DYNAMIC(CSemaphore, CSyncObject)
IMPLEMENT_DYNAMIC(CMutex, CSyncObject)
IMPLEMENT_DYNAMIC(CEvent, CSyncObject)
IMPLEMENT_DYNAMIC(CCriticalSection, CSyncObject)

CSyncObject::CSyncObject(LPCSTR name) : m_strName(name) {}

CSyncObject::~CSyncObject()
{
    if (m_hObject)
        CloseHandle(m_hObject);
}

void CSyncObject::Take(HANDLE object)
{
    m_hObject = object;
    if (!m_hObject)
        AfxThrowResourceException();
}

BOOL CSyncObject::Lock(DWORD timeout)
{
    return WaitForSingleObject(m_hObject, timeout) == WAIT_OBJECT_0;
}

BOOL CSyncObject::Unlock(LONG, LPLONG)
{
    return TRUE;
}

CSemaphore::CSemaphore(LONG initialCount, LONG maximumCount, LPCSTR name, LPSECURITY_ATTRIBUTES security) : CSyncObject(name)
{
    Take(CreateSemaphoreA(security, initialCount, maximumCount, name));
}

CSemaphore::~CSemaphore() = default;

BOOL CSemaphore::Unlock()
{
    return Unlock(1, nullptr);
}

BOOL CSemaphore::Unlock(LONG count, LPLONG previousCount)
{
    return ReleaseSemaphore(m_hObject, count, previousCount);
}

CMutex::CMutex(BOOL initiallyOwned, LPCSTR name, LPSECURITY_ATTRIBUTES security) : CSyncObject(name)
{
    Take(CreateMutexA(security, initiallyOwned, name));
}

CMutex::~CMutex() = default;

BOOL CMutex::Unlock()
{
    return ReleaseMutex(m_hObject);
}

CEvent::CEvent(BOOL initiallySignalled, BOOL manualReset, LPCSTR name, LPSECURITY_ATTRIBUTES security) : CSyncObject(name)
{
    Take(CreateEventA(security, manualReset, initiallySignalled, name));
}

CEvent::~CEvent() = default;

BOOL CEvent::SetEvent()
{
    return ::SetEvent(m_hObject);
}

BOOL CEvent::PulseEvent()
{
    return ::PulseEvent(m_hObject);
}

BOOL CEvent::ResetEvent()
{
    return ::ResetEvent(m_hObject);
}

BOOL CEvent::Unlock()
{
    return TRUE;
}

CCriticalSection::CCriticalSection() : CSyncObject(nullptr)
{
    InitializeCriticalSection(&m_sect);
}

CCriticalSection::~CCriticalSection()
{
    DeleteCriticalSection(&m_sect);
}

BOOL CCriticalSection::Lock()
{
    EnterCriticalSection(&m_sect);
    return TRUE;
}

BOOL CCriticalSection::Lock([[maybe_unused]] DWORD timeout)
{
    KELGEN_ASSERT(timeout == INFINITE);
    return Lock();
}

BOOL CCriticalSection::Unlock()
{
    LeaveCriticalSection(&m_sect);
    return TRUE;
}

CSingleLock::CSingleLock(CSyncObject* object, BOOL initialLock) : m_pObject(object)
{
    if (!object)
        AfxThrowInvalidArgException();
    if (initialLock)
        Lock();
}

CSingleLock::~CSingleLock()
{
    Unlock();
}

BOOL CSingleLock::Lock(DWORD timeout)
{
    KELGEN_ASSERT(!m_bAcquired);
    m_bAcquired = m_pObject->Lock(timeout);
    return m_bAcquired;
}

BOOL CSingleLock::Unlock()
{
    if (m_bAcquired)
        m_bAcquired = !m_pObject->Unlock();
    return !m_bAcquired;
}

BOOL CSingleLock::Unlock(LONG count, LPLONG previousCount)
{
    if (m_bAcquired)
        m_bAcquired = !m_pObject->Unlock(count, previousCount);
    return !m_bAcquired;
}

CMultiLock::CMultiLock(CSyncObject* objects[], DWORD count, BOOL initialLock) : m_dwCount(count)
{
    if (!objects || count < 1 || count > MAXIMUM_WAIT_OBJECTS)
        AfxThrowInvalidArgException();
    m_ppObjects = std::make_unique<CSyncObject*[]>(count);
    m_pHandles = std::make_unique<HANDLE[]>(count);
    m_pLocked = std::make_unique<bool[]>(count);
    for (DWORD i = 0; i < count; ++i) {
        if (!objects[i] || !objects[i]->m_hObject)
            AfxThrowInvalidArgException();
        m_ppObjects[i] = objects[i];
        m_pHandles[i] = objects[i]->m_hObject;
    }
    if (initialLock)
        Lock();
}

CMultiLock::~CMultiLock()
{
    Unlock();
}

DWORD CMultiLock::Lock(DWORD timeout, BOOL waitForAll)
{
    const DWORD result = WaitForMultipleObjects(m_dwCount, m_pHandles.get(), waitForAll, timeout);
    const DWORD index = result >= WAIT_ABANDONED_0 ? result - WAIT_ABANDONED_0 : result - WAIT_OBJECT_0;
    if (index >= m_dwCount)
        return result;
    if (waitForAll)
        std::fill_n(m_pLocked.get(), m_dwCount, true);
    else
        m_pLocked[index] = true;
    return result;
}

BOOL CMultiLock::Unlock()
{
    for (DWORD i = 0; i < m_dwCount; ++i) {
        if (m_pLocked[i])
            m_pLocked[i] = !m_ppObjects[i]->Unlock();
    }
    return TRUE;
}

BOOL CMultiLock::Unlock(LONG count, LPLONG previousCount)
{
    BOOL found = FALSE;
    for (DWORD i = 0; i < m_dwCount; ++i) {
        if (!m_pLocked[i] || !m_ppObjects[i]->IsKindOf(RUNTIME_CLASS(CSemaphore)))
            continue;
        found = TRUE;
        m_pLocked[i] = !m_ppObjects[i]->Unlock(count, previousCount);
    }
    return found;
}

BOOL CMultiLock::IsLocked(DWORD index) const
{
    return index < m_dwCount && m_pLocked[index];
}
