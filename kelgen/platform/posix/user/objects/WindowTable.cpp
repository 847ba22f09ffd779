// WindowTable.cpp: a fixed table of atomic entries, so that a thread finds its own windows without a lock.
#include <kelgen/platform/posix/user/objects/WindowTable.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/threads/api/Threads.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>
#include <kelgen/platform/posix/user/objects/ClassTable.h>

#include <array>
#include <utility>

namespace kelgen::posix::user {

namespace {

// A ring, used in the order of their coming, so that handles stay dead for long; giving one back takes no memory.
std::array<WORD, kWindowEntries> freeEntries;
DWORD firstFree = 0;
DWORD freeCount = 0;
DWORD entriesUsed = 0;

WindowEntry* EntryOf(HWND handle)
{
    const auto value = reinterpret_cast<ULONG_PTR>(handle);
    const auto low = static_cast<DWORD>(value & 0xFFFF);
    const auto high = static_cast<DWORD>(value >> 32);
    if (low < kFirstWindowIndex || (low & 1) != 0 || (high != 0 && high != 0xFFFFFFFF))
        return nullptr;
    return &windowEntries[(low - kFirstWindowIndex) / 2];
}

// By contract the lower 16 bits alone find a window too, since some callers keep no more of a handle.
bool Matches(DWORD stored, HWND handle)
{
    const auto value = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(handle));
    const DWORD generation = value >> 16;
    return stored != 0 && (stored == value || generation == 0 || generation == 0xFFFF);
}

DWORD TakeEntry()
{
    // A freed entry rests until many others have been freed after it.
    constexpr std::size_t kResting = 256;
    if (entriesUsed < kWindowEntries && freeCount < kResting)
        return entriesUsed++;
    if (freeCount == 0)
        return kWindowEntries;
    const DWORD entry = freeEntries[firstFree];
    firstFree = (firstFree + 1) % kWindowEntries;
    --freeCount;
    return entry;
}

// The root windows are of no thread and live for ever. They are made under the desktop lock, for their makers may hold it.
Window& Root(std::atomic<Window*>& made, const char16_t* className, RECT area, LONG style)
{
    if (Window* root = made.load(std::memory_order_acquire))
        return *root;
    DesktopGuard guard;
    if (!made) {
        auto* root = new Window;
        root->windowClass = FindSystemClass(className);
        root->procedure = root->windowClass->procedure;
        root->style = style;
        root->window = root->client = root->normal = area;
        InsertWindow(*root);
        made.store(root, std::memory_order_release);
    }
    return *made;
}

}  // namespace

std::array<WindowEntry, kWindowEntries> windowEntries;
constinit thread_local DWORD ownThread = 0;

std::recursive_mutex& DesktopLock()
{
    static std::recursive_mutex& lock = *new std::recursive_mutex;
    return lock;
}

Window& DesktopRoot()
{
    static std::atomic<Window*> root{nullptr};
    return Root(root, u"#32769", {0, 0, kScreenWidth, kScreenHeight},
                static_cast<LONG>(WS_POPUP | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN));
}

Window& MessageRoot()
{
    static std::atomic<Window*> root{nullptr};
    return Root(root, u"Message", {0, 0, 100, 100}, static_cast<LONG>(WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN));
}

bool InsertWindow(Window& window)
{
    DesktopGuard guard;
    const DWORD index = TakeEntry();
    if (index == kWindowEntries)
        return false;
    WindowEntry& entry = windowEntries[index];
    // Generations 0 and 0xFFFF are what short handles look like.
    entry.generation = static_cast<WORD>(entry.generation >= 0xFFFE ? 1 : entry.generation + 1);
    const DWORD handle = (DWORD{entry.generation} << 16) | (kFirstWindowIndex + index * 2);
    window.handle = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(handle));
    entry.window.store(&window, std::memory_order_relaxed);
    entry.thread.store(window.thread, std::memory_order_relaxed);
    entry.handle.store(handle, std::memory_order_relaxed);
    return true;
}

void RemoveWindow(Window& window)
{
    {
        DesktopGuard guard;
        UnlinkWindow(window);
        if (Window* const owner = FindWindowLocked(window.owner))
            --owner->owned;
        WindowEntry* entry = EntryOf(window.handle);
        entry->handle.store(0, std::memory_order_relaxed);
        entry->thread.store(0, std::memory_order_relaxed);
        entry->window.store(nullptr, std::memory_order_relaxed);
        freeEntries[(firstFree + freeCount++) % kWindowEntries] = static_cast<WORD>(entry - windowEntries.data());
        window.destroyed = true;
        --window.windowClass->windows;
    }
    if (window.uses == 0)
        delete &window;
}

Window* OwnWindowByOtherHandle(HWND handle)
{
    if (ownThread == 0)
        ownThread = GetCurrentThreadId();
    const WindowEntry* entry = EntryOf(handle);
    if (!entry || entry->thread.load(std::memory_order_relaxed) != ownThread ||
        !Matches(entry->handle.load(std::memory_order_relaxed), handle))
        return nullptr;
    return entry->window.load(std::memory_order_relaxed);
}

Window* FindWindowLocked(HWND handle)
{
    const WindowEntry* entry = EntryOf(handle);
    if (!entry || !Matches(entry->handle.load(std::memory_order_relaxed), handle))
        return nullptr;
    return entry->window.load(std::memory_order_relaxed);
}

void WindowUse::Delete(Window& window)
{
    delete &window;
}

HWND SetOwner(Window& window, HWND owner)
{
    if (Window* const former = FindWindowLocked(window.owner))
        --former->owned;
    if (Window* const next = FindWindowLocked(owner))
        ++next->owned;
    return std::exchange(window.owner, owner);
}

HWND ParentAsTold(const Window& window)
{
    if (window.style & static_cast<LONG>(WS_POPUP))
        return window.owner;
    return (window.style & WS_CHILD) && window.parent ? window.parent->handle : nullptr;
}

void LinkBelow(Window& window, Window& parent, Window& after)
{
    window.parent = &parent;
    ++parent.children;
    window.above = &after;
    window.below = after.below;
    (after.below ? after.below->above : parent.lastChild) = &window;
    after.below = &window;
}

void LinkWindow(Window& window, Window& parent, Place place)
{
    Window* above = nullptr;
    if (place == Place::Bottom)
        above = parent.lastChild;
    else if (&parent == &DesktopRoot() && !(window.exStyle & WS_EX_TOPMOST))
        for (Window* next = parent.firstChild; next && (next->exStyle & WS_EX_TOPMOST); next = next->below)
            above = next;
    if (above)
        return LinkBelow(window, parent, *above);

    window.parent = &parent;
    ++parent.children;
    window.above = nullptr;
    window.below = parent.firstChild;
    (parent.firstChild ? parent.firstChild->above : parent.lastChild) = &window;
    parent.firstChild = &window;
}

void UnlinkWindow(Window& window)
{
    if (!window.parent)
        return;
    --window.parent->children;
    (window.above ? window.above->below : window.parent->firstChild) = window.below;
    (window.below ? window.below->above : window.parent->lastChild) = window.above;
    window.parent = window.above = window.below = nullptr;
}

Window& TopLevelOf(Window& window)
{
    Window* top = &window;
    while (top->parent && !top->parent->IsDesktopOrMessageRoot())
        top = top->parent;
    return *top;
}

bool IsWithin(const Window* window, const Window& ancestor)
{
    while (window && window != &ancestor)
        window = window->parent;
    return window != nullptr;
}

std::vector<HWND> ChildrenOf(const Window& window)
{
    std::vector<HWND> result;
    for (const Window* child = window.firstChild; child; child = child->below)
        result.push_back(child->handle);
    return result;
}

std::vector<HWND> DescendantsOf(const Window& window)
{
    std::vector<HWND> result;
    const Window* next = window.firstChild;
    while (next) {
        result.push_back(next->handle);
        if (next->firstChild) {
            next = next->firstChild;
            continue;
        }
        while (next != &window && !next->below)
            next = next->parent;
        next = next == &window ? nullptr : next->below;
    }
    return result;
}

std::vector<HWND> TopLevelWindows(DWORD thread)
{
    std::vector<HWND> result;
    for (const Window* window = DesktopRoot().firstChild; window; window = window->below)
        if (thread == 0 || window->thread == thread)
            result.push_back(window->handle);
    return result;
}

void OffsetWithChildren(Window& window, int x, int y)
{
    if (x == 0 && y == 0)
        return;
    const auto offset = [x, y](Window& moved) {
        for (RECT* area : {&moved.window, &moved.client})
            *area = {area->left + x, area->top + y, area->right + x, area->bottom + y};
    };
    offset(window);
    for (HWND handle : DescendantsOf(window))
        offset(*FindWindowLocked(handle));
}

bool IsShown(const Window& window)
{
    const Window* next = &window;
    while (next && (next->style & WS_VISIBLE))
        next = next->parent;
    return !next;
}

}  // namespace kelgen::posix::user
