// ThreadQueues.cpp: the queues of all threads, made at a thread's first call and ended with the thread.
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <kelgen/platform/posix/threads/ThreadObjects.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>

#include <unordered_map>

namespace kelgen::posix::user {

namespace {

using QueueMap = std::unordered_map<DWORD, std::shared_ptr<ThreadQueue>>;

// Under the desktop lock.
QueueMap& Queues()
{
    static QueueMap& queues = *new QueueMap;
    return queues;
}

thread_local ThreadQueue* currentQueue = nullptr;

// Also of a thread that has made no call, but whose queue somebody else has made.
void EndQueue(DWORD thread)
{
    if (const auto queue = FindQueue(thread))
        queue->End();
    currentQueue = nullptr;
}

ThreadQueue& MakeQueue()
{
    // The thread must be seen to end.
    CurrentThreadObject();
    currentQueue = EnsureQueue(GetCurrentThreadId()).get();
    return *currentQueue;
}

}  // namespace

ThreadQueue& CurrentQueue()
{
    return currentQueue ? *currentQueue : MakeQueue();
}

bool ThreadQueue::IsCurrent() const
{
    return currentQueue == this;
}

std::shared_ptr<ThreadQueue> FindQueue(DWORD thread)
{
    const DesktopGuard guard;
    const auto found = Queues().find(thread);
    return found == Queues().end() ? nullptr : found->second;
}

std::shared_ptr<ThreadQueue> EnsureQueue(DWORD thread)
{
    CallAtThreadEnd(EndQueue);
    const DesktopGuard guard;
    if (auto queue = FindQueue(thread))
        return queue;
    if (!ThreadRuns(thread))
        return nullptr;
    return Queues()[thread] = std::make_shared<ThreadQueue>(thread);
}

std::vector<std::shared_ptr<ThreadQueue>> AllQueues()
{
    const DesktopGuard guard;
    std::vector<std::shared_ptr<ThreadQueue>> all;
    for (const auto& entry : Queues())
        all.push_back(entry.second);
    return all;
}

void ForgetQueue(const ThreadQueue& queue)
{
    const DesktopGuard guard;
    const auto found = Queues().find(queue.thread);
    if (found != Queues().end() && found->second.get() == &queue)
        Queues().erase(found);
}

}  // namespace kelgen::posix::user
