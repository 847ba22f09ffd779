// DescriptorEvents.cpp: the thread, in the kernel's poll queue.
#include <kelgen/platform/posix/threads/DescriptorEvents.h>

#include <kelgen/platform/posix/base/NoMemory.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <sys/epoll.h>
#include <thread>

namespace kelgen::posix {

DescriptorEvents& DescriptorEvents::Get()
{
    // Never destroyed: its thread runs until the process ends.
    static auto& events = *new DescriptorEvents;
    return events;
}

// Makes queue and thread, under the lock; false with errno.
bool DescriptorEvents::Start()
{
    m_queue = Descriptor(epoll_create1(EPOLL_CLOEXEC));
    if (!m_queue)
        return false;
    // Signals are the host's threads' business.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread([this] { Run(); }).detach();
    } catch (const std::exception&) {
        // No thread, or no memory for one: the next watch tries again.
        m_queue.Close();
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = ENOMEM;
    return static_cast<bool>(m_queue);
}

bool DescriptorEvents::Watch(int descriptor, std::function<void()> readable)
{
    auto function = std::make_shared<const std::function<void()>>(std::move(readable));
    const std::lock_guard lock(m_mutex);
    if (!m_queue && !Start())
        return false;
    m_functions[descriptor] = std::move(function);
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    if (epoll_ctl(m_queue.Get(), EPOLL_CTL_ADD, descriptor, &event) == 0)
        return true;
    const int error = errno;
    m_functions.erase(descriptor);
    errno = error;
    return false;
}

void DescriptorEvents::Forget(int descriptor)
{
    const std::lock_guard lock(m_mutex);
    epoll_ctl(m_queue.Get(), EPOLL_CTL_DEL, descriptor, nullptr);
    m_functions.erase(descriptor);
}

void DescriptorEvents::Run()
{
    const MemoryMode own(true);
    for (;;) {
        epoll_event event{};
        if (epoll_wait(m_queue.Get(), &event, 1, -1) != 1)
            continue;
        std::shared_ptr<const std::function<void()>> readable;
        {
            const std::lock_guard lock(m_mutex);
            if (const auto found = m_functions.find(event.data.fd); found != m_functions.end())
                readable = found->second;
        }
        if (readable)
            (*readable)();
    }
}

}  // namespace kelgen::posix
