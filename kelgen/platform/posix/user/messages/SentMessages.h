// SentMessages.h: a message on its way from one thread to a window of another.
#pragma once

#include <kelgen/platform/posix/user/api/WindowTypes.h>

#include <atomic>
#include <functional>
#include <memory>

namespace kelgen::posix::user {

struct ThreadQueue;

/// What one thread has delivered to another's queue. Both hold it: the one that waits may give up before it is answered.
struct SentMessage
{
    enum class State
    {
        Waiting,
        Answered,
        Lost
    };

    HWND window = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    bool wide = false;
    std::function<LRESULT()> work;  // runs in place of a window's procedure

    std::shared_ptr<ThreadQueue> sender;  // waits for the answer, or takes the callback; null when nobody does
    SENDASYNCPROC callback = nullptr;
    ULONG_PTR data = 0;
    UINT kind = 0;            // ISMEX_SEND, ISMEX_NOTIFY or ISMEX_CALLBACK
    bool calledBack = false;  // on its way back to the sender, for its callback

    LRESULT result = 0;  // written before the state is set
    std::atomic<State> state{State::Waiting};

    /// Ends the sender's wait, or sends the callback home; only the first call counts.
    void Answer(const std::shared_ptr<SentMessage>& self, LRESULT answer, State end = State::Answered);
};

}  // namespace kelgen::posix::user
