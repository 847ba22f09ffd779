// ThreadSlot.cpp: one pointer for each thread, over the thread library's keys.
#include <kelgen/platform/support/ThreadSlot.h>

#include <pthread.h>

namespace kelgen {

ThreadSlot::ThreadSlot(Finish finish)
{
    pthread_key_t key = 0;
    m_usable = pthread_key_create(&key, finish) == 0;
    m_key = key;
}

ThreadSlot::~ThreadSlot()
{
    if (m_usable)
        pthread_key_delete(m_key);
}

bool ThreadSlot::Set(void* value)
{
    return m_usable && pthread_setspecific(m_key, value) == 0;
}

}  // namespace kelgen
