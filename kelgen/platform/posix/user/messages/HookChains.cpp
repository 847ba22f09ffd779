// HookChains.cpp: lists of hooks that are replaced, never changed, and runs along them.
#include <kelgen/platform/posix/user/messages/HookChains.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/user/messages/ThreadQueue.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kelgen::posix::user {

namespace {

constexpr DWORD kLowLevelMilliseconds = 300;

// A low-level hook's procedure runs on the thread that has set it, with a copy of the event: who waits for it may give up.
template <class Event>
bool CallLowLevelHooksWith(int type, WPARAM wParam, const Event& event)
{
    std::shared_ptr<const HookList> list;
    {
        const DesktopGuard guard;
        list = GlobalHooks().List(type);
    }
    if (!list)
        return false;
    ThreadQueue& own = CurrentQueue();
    for (const auto& hook : *list) {
        if (hook->removed)
            continue;
        const auto copy = std::make_shared<Event>(event);
        const auto run = [hook, type, wParam, copy] {
            HookCall call(CurrentQueue(), type, hook->setter, hook.get());
            return call.Next(HC_ACTION, wParam, reinterpret_cast<LPARAM>(copy.get()));
        };
        if (hook->setter == own.thread)
            return run() != 0;
        const auto target = FindQueue(hook->setter);
        const auto sent = std::make_shared<SentMessage>();
        sent->work = run;
        sent->kind = ISMEX_SEND;
        sent->sender = own.shared_from_this();
        if (!target || !target->Deliver(sent))
            continue;
        if (!own.AwaitAnswer(*sent, DeadlineAfter(kLowLevelMilliseconds), false)) {
            target->Withdraw(*sent);
            return false;
        }
        return sent->result != 0;
    }
    return false;
}

}  // namespace

void HookChains::Replace(int type, HookList list)
{
    const bool any = !list.empty();
    m_lists[static_cast<std::size_t>(type - WH_MSGFILTER)] = any ? std::make_shared<const HookList>(std::move(list)) : nullptr;
    if (any)
        m_types.fetch_or(BitOf(type));
    else
        m_types.fetch_and(~BitOf(type));
}

void HookChains::Add(const std::shared_ptr<Hook>& hook)
{
    HookList list = {hook};
    if (const auto& before = List(hook->type))
        std::ranges::copy_if(*before, std::back_inserter(list), [](const auto& other) { return !other->removed; });
    Replace(hook->type, std::move(list));
}

void HookChains::Remove(const Hook& hook)
{
    // One that nobody calls any more does no harm in its list: without memory for another it stays there until the next change.
    OrNoMemory(false, [this, &hook] {
        HookList list;
        if (const auto& before = List(hook.type))
            std::ranges::copy_if(*before, std::back_inserter(list), [](const auto& other) { return !other->removed; });
        Replace(hook.type, std::move(list));
        return true;
    });
}

std::vector<std::shared_ptr<Hook>> HookChains::All() const
{
    std::vector<std::shared_ptr<Hook>> all;
    for (const auto& list : m_lists) {
        if (list)
            all.insert(all.end(), list->begin(), list->end());
    }
    return all;
}

constinit GlobalHookChains globalHookChains;

HookCall::HookCall(ThreadQueue& queue, int type) : m_queue(queue)
{
    const DesktopGuard guard;
    m_own = queue.hooks.List(type);
    m_global = GlobalHooks().List(type);
}

HookCall::HookCall(ThreadQueue& queue, int type, DWORD setter, const Hook* first) : HookCall(queue, type)
{
    m_setter = setter;
    while (At(m_next) && At(m_next) != first)
        ++m_next;
}

Hook* HookCall::At(std::size_t index) const
{
    const std::size_t own = m_own ? m_own->size() : 0;
    if (index < own)
        return (*m_own)[index].get();
    index -= own;
    return m_global && index < m_global->size() ? (*m_global)[index].get() : nullptr;
}

LRESULT HookCall::Next(int code, WPARAM wParam, LPARAM lParam)
{
    struct Step
    {
        HookCall*& current;
        HookCall* currentBefore;
        std::size_t& next;
        std::size_t nextBefore;
        ~Step()
        {
            current = currentBefore;
            next = nextBefore;
        }
    };
    const Step step{m_queue.hookCall, std::exchange(m_queue.hookCall, this), m_next, m_next};
    const MemoryMode ofHost(false);
    while (const Hook* hook = At(m_next)) {
        ++m_next;
        if (!hook->removed && (m_setter == 0 || hook->setter == m_setter))
            return hook->procedure(code, wParam, lParam);
    }
    return 0;
}

bool HasHooks(unsigned types)
{
    return CurrentQueue().hooks.HasAny(types) || GlobalHooks().HasAny(types);
}

LRESULT CallHooks(int type, int code, WPARAM wParam, LPARAM lParam)
{
    if (!HasHooks(HookChains::BitOf(type)))
        return 0;
    HookCall call(CurrentQueue(), type);
    return call.Next(code, wParam, lParam);
}

bool CallMouseLowLevelHooks(WPARAM message, const MSLLHOOKSTRUCT& event)
{
    return GlobalHooks().HasAny(HookChains::BitOf(WH_MOUSE_LL)) && CallLowLevelHooksWith(WH_MOUSE_LL, message, event);
}

bool CallKeyboardLowLevelHooks(WPARAM message, const KBDLLHOOKSTRUCT& event)
{
    return GlobalHooks().HasAny(HookChains::BitOf(WH_KEYBOARD_LL)) && CallLowLevelHooksWith(WH_KEYBOARD_LL, message, event);
}

}  // namespace kelgen::posix::user
