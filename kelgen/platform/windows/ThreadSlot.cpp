// ThreadSlot.cpp: one pointer for each thread, over the system's fiber-local storage, which calls back when a thread ends.
#include <kelgen/platform/support/ThreadSlot.h>

namespace kelgen {

ThreadSlot::ThreadSlot(Finish finish) : m_key(FlsAlloc(finish)), m_usable(m_key != FLS_OUT_OF_INDEXES) {}

ThreadSlot::~ThreadSlot()
{
    if (m_usable)
        FlsFree(m_key);
}

bool ThreadSlot::Set(void* value)
{
    return m_usable && FlsSetValue(m_key, value);
}

}  // namespace kelgen
