// DescriptorEvents.cpp: the thread, in the kernel's poll queue.
#include <kelgen/platform/posix/threads/DescriptorEvents.h>

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

DescriptorEvents::DescriptorEvents() : m_queue(epoll_create1(EPOLL_CLOEXEC))
{
    if (!m_queue)
        return;
    // Signals are the host's threads' business.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread([this] { Run(); }).detach();
    } catch (const std::exception&) {
        // Nothing can be watched then: no thread, or no memory for one.
        m_queue = Descriptor();
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

bool DescriptorEvents::Watch(int descriptor, std::function<void()> readable)
{
    const std::lock_guard lock(m_mutex);
    m_functions[descriptor] = std::make_shared<const std::function<void()>>(std::move(readable));
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    if (epoll_ctl(m_queue.Get(), EPOLL_CTL_ADD, descriptor, &event) == 0)
        return true;
    m_functions.erase(descriptor);
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
