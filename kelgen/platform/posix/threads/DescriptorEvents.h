// DescriptorEvents.h: one thread of the process that waits for descriptors on behalf of waitable objects.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace kelgen::posix {

/// Calls functions when descriptors become readable. The thread starts with the first descriptor and lasts as long as the process.
/// Threads: any.
class DescriptorEvents
{
public:
    static DescriptorEvents& Get();

    /// Calls @p readable on the thread, with no lock held, as long as @p descriptor has something to read; false, with errno, when
    /// the system refuses. The descriptor must stay open until Forget.
    bool Watch(int descriptor, std::function<void()> readable);

    /// Calls no more for @p descriptor, except that a call may be under way.
    void Forget(int descriptor);

private:
    DescriptorEvents() = default;
    bool Start();
    void Run();

    Descriptor m_queue;
    std::mutex m_mutex;
    std::map<int, std::shared_ptr<const std::function<void()>>> m_functions;
};

}  // namespace kelgen::posix
