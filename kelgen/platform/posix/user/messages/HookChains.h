// HookChains.h: the hooks of one thread or of all, and calling them.
#pragma once

#include <kelgen/platform/posix/user/api/Hooks.h>

#include <array>
#include <atomic>
#include <memory>
#include <utility>
#include <vector>

namespace kelgen::posix::user {

struct ThreadQueue;

struct Hook
{
    HHOOK handle;
    int type;
    HOOKPROC procedure;
    DWORD target;  // the thread whose chain it is in, 0: all
    DWORD setter;  // the thread that has set it
    bool wide;
    std::atomic<bool> removed{false};
};
using HookList = std::vector<std::shared_ptr<Hook>>;

/// A chain for each type of hook, newest first. A list is never changed but replaced, so calls in progress keep theirs; a hook that
/// is taken out meanwhile is passed over by its mark.
/// Threads: the lists are read and replaced under the desktop lock, the mask is for all.
class HookChains
{
public:
    /// Whether one of the types in @p types (bits of BitOf) has hooks. Cost: one plain read.
    bool HasAny(unsigned types) const { return (m_types.load(std::memory_order_relaxed) & types) != 0; }
    static constexpr unsigned BitOf(int type) { return 1u << (type - WH_MSGFILTER); }

    std::shared_ptr<const HookList> List(int type) const { return m_lists[static_cast<std::size_t>(type - WH_MSGFILTER)]; }
    void Add(const std::shared_ptr<Hook>& hook);
    void Remove(const Hook& hook);
    std::vector<std::shared_ptr<Hook>> All() const;

    /// Takes all out, without memory; @p taken sees each.
    template <class Taken>
    void Clear(Taken taken)
    {
        for (auto& list : m_lists)
            if (const auto gone = std::exchange(list, nullptr))
                for (const auto& hook : *gone)
                    taken(*hook);
        m_types = 0;
    }

private:
    void Replace(int type, HookList list);

    static constexpr std::size_t kTypes = 17;
    std::array<std::shared_ptr<const HookList>, kTypes> m_lists;
    std::atomic<unsigned> m_types{0};
};

/// Lives for ever.
union GlobalHookChains {
    constexpr GlobalHookChains() : chains() {}
    ~GlobalHookChains() {}

    HookChains chains;
};
extern constinit GlobalHookChains globalHookChains;

/// The chains of all threads' hooks.
inline HookChains& GlobalHooks()
{
    return globalHookChains.chains;
}

/// A run along the chain of one type: the thread's hooks, then those of all threads. Lives on the stack of who runs it.
class HookCall
{
public:
    HookCall(ThreadQueue& queue, int type);
    /// A run from @p first on along the hooks that thread @p setter has set.
    HookCall(ThreadQueue& queue, int type, DWORD setter, const Hook* first);
    HookCall(const HookCall&) = delete;
    HookCall& operator=(const HookCall&) = delete;

    /// Calls the first, or inside a hook's procedure the next; 0 after the last.
    LRESULT Next(int code, WPARAM wParam, LPARAM lParam);

private:
    Hook* At(std::size_t index) const;

    ThreadQueue& m_queue;
    std::shared_ptr<const HookList> m_own;
    std::shared_ptr<const HookList> m_global;
    std::size_t m_next = 0;
    DWORD m_setter = 0;
};

/// Takes the hooks out that are in the chains of a thread that ends.
void TakeOutHooksOf(ThreadQueue& queue);

/// Whether the calling thread has a hook of one of @p types.
bool HasHooks(unsigned types);

/// Runs the hooks of @p type; 0 when there is none.
LRESULT CallHooks(int type, int code, WPARAM wParam, LPARAM lParam);

/// Runs the low-level hooks on the thread that has set the newest one. True when the event is swallowed.
/// By contract: a thread that takes longer than 300 ms is not waited for, so that no hook stops the mouse, and CallNextHookEx reaches the
/// hooks of the same thread.
bool CallMouseLowLevelHooks(WPARAM message, const MSLLHOOKSTRUCT& event);
bool CallKeyboardLowLevelHooks(WPARAM message, const KBDLLHOOKSTRUCT& event);

}  // namespace kelgen::posix::user
