// ThreadState.cpp: each thread's state, and its maps of handles.
#include <kelgen/framework/windows/ThreadState.h>

#include <kelgen/framework/windows/internal/CurrentThread.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>
#include <kelgen/platform/support/ThreadSlot.h>

using namespace kelgen::detail;

constinit thread_local _AFX_THREAD_STATE* kelgen::detail::threadState = nullptr;

namespace {

void WINAPI DeleteState(void* state)
{
    delete static_cast<_AFX_THREAD_STATE*>(state);
}

kelgen::ThreadSlot& StateSlot()
{
    static kelgen::ThreadSlot& slot = *new kelgen::ThreadSlot(&DeleteState);
    return slot;
}

}  // namespace

_AFX_THREAD_STATE::_AFX_THREAD_STATE() : m_maps(new HandleMaps) {}

_AFX_THREAD_STATE::~_AFX_THREAD_STATE()
{
    delete m_maps;
    if (threadState == this)
        threadState = nullptr;
}

_AFX_THREAD_STATE* AfxGetThreadState()
{
    if (!threadState) {
        kelgen::ThreadSlot& slot = StateSlot();
        threadState = new _AFX_THREAD_STATE;
        // Without a slot the state of this thread is never freed.
        static_cast<void>(slot.Set(threadState));
    }
    return threadState;
}

HandleMaps& kelgen::detail::ThreadMaps()
{
    return *AfxGetThreadState()->m_maps;
}

HandleMaps* kelgen::detail::ExistingThreadMaps()
{
    return threadState ? threadState->m_maps : nullptr;
}

int AfxLockTempMaps()
{
    return ++AfxGetThreadState()->m_nTempMapLock;
}

int AfxUnlockTempMaps(BOOL deleteTemp)
{
    _AFX_THREAD_STATE* const state = AfxGetThreadState();
    if (state->m_nTempMapLock > 0 && --state->m_nTempMapLock == 0 && deleteTemp) {
        CWnd::DeleteTempMap();
        CMenu::DeleteTempMap();
        CDC::DeleteTempMap();
    }
    return state->m_nTempMapLock;
}
