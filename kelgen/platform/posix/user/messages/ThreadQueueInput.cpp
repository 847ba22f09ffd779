// ThreadQueueInput.cpp: input events in a queue, and key events becoming messages.
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>

#include <kelgen/platform/posix/user/objects/WindowObject.h>

#include <algorithm>

namespace kelgen::posix::user {

namespace {

bool MayBeWanted(const InputEvent& event, const MessageFilter& filter)
{
    const UINT kind = event.IsKey() ? QS_KEY : event.message == WM_MOUSEMOVE ? QS_MOUSEMOVE : QS_MOUSEBUTTON;
    if (!(filter.kinds & kind))
        return false;
    if (filter.first == 0 && filter.last == 0)
        return true;
    if (event.IsKey())
        return filter.first <= WM_KEYLAST && filter.last >= WM_KEYFIRST;
    return (filter.first <= WM_MOUSELAST && filter.last >= WM_MOUSEFIRST) ||
           (filter.first <= WM_NCXBUTTONDBLCLK && filter.last >= WM_NCMOUSEMOVE);
}

}  // namespace

// The first event behind number @p after.
bool ThreadQueue::NextInput(unsigned long long after, InputEvent& event)
{
    const std::lock_guard lock(m_lock);
    const auto next = std::find_if(m_input.begin(), m_input.end(), [after](const auto& waiting) { return waiting.number > after; });
    if (next == m_input.end())
        return false;
    event = *next;
    return true;
}

// False when the event is not there any more.
bool ThreadQueue::DropInput(unsigned long long number)
{
    const std::lock_guard lock(m_lock);
    const bool dropped = std::erase_if(m_input, [number](const auto& waiting) { return waiting.number == number; }) != 0;
    m_hasInput = !m_input.empty();
    return dropped;
}

// Takes the event out and the thread's key states to where they are with it.
bool ThreadQueue::TakeState(const InputEvent& event)
{
    if (!DropInput(event.number))
        return false;
    if (event.stateKey)
        SetKey(keys, event.stateKey, event.down);
    return true;
}

ThreadQueue::Found ThreadQueue::TakeInput(MSG& message, const MessageFilter& filter, bool remove)
{
    if (filter.NoWindow())
        return Found::Nothing;
    InputEvent event;
    while (NextInput(event.number, event)) {
        if (!MayBeWanted(event, filter))
            continue;
        const Found found = event.IsKey() ? TakeKey(event, message, filter, remove) : TakeMouse(event, message, filter, remove);
        if (found != Found::Nothing)
            return found;
    }
    return Found::Nothing;
}

// An event whose hook throws is over: it would throw again at every look.
bool ThreadQueue::HooksRefuse(int hook, const InputEvent& event, WPARAM wParam, LPARAM lParam, bool remove)
{
    try {
        return CallHooks(hook, remove ? HC_ACTION : HC_NOREMOVE, wParam, lParam) != 0;
    } catch (...) {
        if (remove)
            TakeState(event);
        throw;
    }
}

ThreadQueue::Found ThreadQueue::TakeKey(const InputEvent& event, MSG& message, const MessageFilter& filter, bool remove)
{
    HWND target = focus;
    UINT number = event.message;
    if (!target) {
        // By contract, so that its menu can be reached, without a focus the active window gets the key as a system key.
        target = active;
        number |= WM_SYSKEYDOWN - WM_KEYDOWN;
    }
    if (!OwnWindow(target)) {
        TakeState(event);
        return Found::Again;
    }
    if (!filter.AcceptsNumber(number) || !filter.AcceptsWindow(target))
        return Found::Nothing;
    message = {target, number, event.key, event.keyBits, event.time, event.point};
    if (HooksRefuse(WH_KEYBOARD, event, event.key, event.keyBits, remove)) {
        TakeState(event);
        CallHooks(WH_CBT, HCBT_KEYSKIPPED, event.key, event.keyBits);
        return Found::Again;
    }
    if (!remove)
        return Found::Message;
    if (!TakeState(event))
        return Found::Again;
    return Take(message, static_cast<LPARAM>(event.extra)) ? Found::Message : Found::Nothing;
}

}  // namespace kelgen::posix::user
