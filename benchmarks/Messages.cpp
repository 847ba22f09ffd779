// Messages.cpp: messages posted, sent through hooks and across threads; timers; windows made and destroyed.
#include "Bench.h"

#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/window/WndInterface.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

using namespace bench;

namespace {

constexpr int kPosts = 10000;
constexpr int kMany = 1000;

/// A window of the library that counts WM_APP.
class Receiver : public CWnd, public C000WndInterface
{
public:
    Receiver() { require(CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr), "CreateEx"); }
    ~Receiver() override { DestroyWindow(); }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override { return _000WindowProc(message, wParam, lParam); }
    LRESULT _000DefaultWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_APP)
            return CWnd::WindowProc(message, wParam, lParam);
        ++m_count;
        return 0;
    }

    long m_count = 0;
};

class Filter : public C000WndProcInterface
{
public:
    bool _000BeforeWndProc(UINT, WPARAM, LPARAM, LRESULT&) override
    {
        ++m_seen;
        return false;
    }

    long m_seen = 0;
};

LRESULT CALLBACK CountingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_APP)
        return ::DefWindowProcA(window, message, wParam, lParam);
    ++*reinterpret_cast<long*>(lParam);
    return 0;
}

LPCSTR PlainClass()
{
    static const ATOM atom = [] {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = CountingProcedure;
        windowClass.hInstance = ::GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "Benchmark";
        return ::RegisterClassA(&windowClass);
    }();
    return MAKEINTRESOURCEA(atom);
}

HWND PlainWindow()
{
    return ::CreateWindowExA(0, PlainClass(), "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
}

void PostDeliver(State& st)
{
    const HWND window = PlainWindow();
    for (auto _ : st) {
        long count = 0;
        for (int i = 0; i < kPosts; ++i)
            ::PostMessageA(window, WM_APP, 0, reinterpret_cast<LPARAM>(&count));
        for (MSG message; count < kPosts && ::GetMessageA(&message, nullptr, 0, 0);)
            ::DispatchMessageA(&message);
    }
    ::DestroyWindow(window);
}

void PostDeliverStd(State& st)  // a deque of functions under a mutex
{
    std::deque<std::function<void()>> queue;
    std::mutex mutex;
    for (auto _ : st) {
        int n = 0;
        for (int i = 0; i < kPosts; ++i) {
            const std::lock_guard lock(mutex);
            queue.emplace_back([&n] { ++n; });
        }
        while (n < kPosts) {
            std::unique_lock lock(mutex);
            const auto next = std::move(queue.front());
            queue.pop_front();
            lock.unlock();
            next();
        }
    }
}

void SendPlain(State& st)  // a window procedure alone
{
    const HWND window = PlainWindow();
    long count = 0;
    for (auto _ : st)
        ::SendMessageA(window, WM_APP, 0, reinterpret_cast<LPARAM>(&count));
    require(count == st.iterations(), "SendMessageA");
    ::DestroyWindow(window);
}

void SendFiltered(State& st)
{
    // The hooks outlive the window that calls them.
    std::deque<Filter> filters(static_cast<std::size_t>(st.range(0)));
    Receiver receiver;
    for (Filter& filter : filters)
        receiver._000HookBeforeWndProc(C000WndProcInterface::CHook(&C000WndProcInterface::_000BeforeWndProc, &filter));
    for (auto _ : st)
        ::SendMessageA(receiver.m_hWnd, WM_APP, 0, 0);
    require(receiver.m_count == st.iterations(), "SendMessageA");
    for (const Filter& filter : filters)
        require(filter.m_seen >= receiver.m_count, "hooks");
}

void SendFilteredStd(State& st)  // a vector of functions, then the receiver
{
    struct Event
    {
        unsigned message;
    };
    long seen = 0;
    std::vector<std::function<bool(Event&)>> hooks(static_cast<std::size_t>(st.range(0)), [&seen](Event&) { return ++seen < 0; });
    std::function<bool(Event&)> receiver = [&seen](Event&) { return ++seen > 0; };
    for (auto _ : st) {
        Event event{1};
        DoNotOptimize(event);
        bool taken = false;
        for (auto& hook : hooks) {
            taken = hook(event);
            if (taken)
                break;
        }
        if (!taken)
            receiver(event);
    }
    require(seen == long(st.iterations()) * (st.range(0) + 1), "functions");
}

/// A thread that handles the messages of one window until it is told to quit.
class ServingThread
{
public:
    explicit ServingThread(WNDPROC procedure)
    {
        m_thread = std::thread([this, procedure] {
            m_window = PlainWindow();
            ::SetWindowLongPtrA(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
            ::SetEvent(m_ready);
            for (MSG message; ::GetMessageA(&message, nullptr, 0, 0) > 0;)
                ::DispatchMessageA(&message);
            ::DestroyWindow(m_window);
        });
        ::WaitForSingleObject(m_ready, INFINITE);
    }
    ~ServingThread()
    {
        ::PostMessageA(m_window, WM_QUIT, 0, 0);
        m_thread.join();
        ::CloseHandle(m_ready);
    }

    HWND Window() const { return m_window; }

private:
    const HANDLE m_ready = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HWND m_window = nullptr;
    std::thread m_thread;
};

void ThreadSend(State& st)
{
    const ServingThread there(CountingProcedure);
    long count = 0;
    for (auto _ : st)
        ::SendMessageA(there.Window(), WM_APP, 0, reinterpret_cast<LPARAM>(&count));
    require(count == st.iterations(), "SendMessageA");
}

LRESULT CALLBACK AnsweringProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_APP)
        return ::DefWindowProcA(window, message, wParam, lParam);
    ::PostMessageA(reinterpret_cast<HWND>(lParam), WM_APP + 1, 0, 0);
    return 0;
}

void ThreadRoundTrip(State& st)
{
    const ServingThread there(AnsweringProcedure);
    const HWND here = PlainWindow();
    for (auto _ : st) {
        ::PostMessageA(there.Window(), WM_APP, 0, reinterpret_cast<LPARAM>(here));
        MSG message;
        do
            ::GetMessageA(&message, nullptr, 0, 0);
        while (message.message != WM_APP + 1);
    }
    ::DestroyWindow(here);
}

void TimerStartStop(State& st)
{
    const HWND window = PlainWindow();
    for (auto _ : st) {
        ::SetTimer(window, 1, 1000, nullptr);
        ::KillTimer(window, 1);
    }
    ::DestroyWindow(window);
}

void Timers1000(State& st)
{
    const HWND window = PlainWindow();
    for (auto _ : st) {
        for (UINT_PTR id = 1; id <= kMany; ++id)
            ::SetTimer(window, id, static_cast<UINT>(1000 + id % 7), nullptr);
        for (UINT_PTR id = 1; id <= kMany; ++id)
            ::KillTimer(window, id);
    }
    ::DestroyWindow(window);
}

void Windows1000(State& st)
{
    std::vector<HWND> windows(kMany);
    for (auto _ : st) {
        for (HWND& window : windows)
            window = PlainWindow();
        for (const HWND window : windows)
            ::DestroyWindow(window);
    }
}

void LibraryWindows1000(State& st)
{
    for (auto _ : st) {
        std::vector<std::unique_ptr<Receiver>> windows(kMany);
        for (auto& window : windows)
            window = std::make_unique<Receiver>();
        windows.clear();
        // The messages of their creation.
        for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
            ::DispatchMessageA(&message);
    }
}

COUNTED(PostDeliver)->Name("Messages/PostDeliver10000/kelgen");
COUNTED(PostDeliverStd)->Name("Messages/PostDeliver10000/std_deque");
COUNTED(SendPlain)->Name("Messages/SendPlain/kelgen");
COUNTED(SendFiltered)->Name("Messages/SendFiltered/kelgen")->Arg(0)->Arg(3)->Arg(10);
COUNTED(SendFilteredStd)->Name("Messages/SendFiltered/std_function")->Arg(0)->Arg(3)->Arg(10);
COUNTED(ThreadSend)->Name("Messages/ThreadSend/kelgen")->UseRealTime();
COUNTED(ThreadRoundTrip)->Name("Messages/ThreadRoundTrip/kelgen")->UseRealTime();
COUNTED(TimerStartStop)->Name("Timers/StartStop/kelgen");
COUNTED(Timers1000)->Name("Timers/StartStop1000/kelgen");
COUNTED(Windows1000)->Name("Windows/CreateDestroy1000/kelgen");
COUNTED(LibraryWindows1000)->Name("Windows/CreateDestroyHooked1000/kelgen");

}  // namespace
