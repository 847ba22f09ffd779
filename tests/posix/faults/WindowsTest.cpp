// WindowsTest.cpp: windows, messages, dialogs and menus, without memory.
#include "posix/faults/Flow.h"
#include "support/Threads.h"
#include "support/faults/FailingMemory.h"

#include <kelgen/kelgen.h>

#include <gtest/gtest.h>

using namespace kelgen::test;

namespace {

/// Ends a window, even while there is no memory.
struct WindowEnd
{
    ~WindowEnd()
    {
        if (window)
            DestroyWindow(window);
    }
    HWND window;
};

HWND Made(const char* className, DWORD style, HWND parent)
{
    return CreateWindowExA(0, className, "a title of some length", style, 0, 0, 100, 100, parent, nullptr, nullptr, nullptr);
}

/// A dialog with an edit and a list box.
struct Template
{
    alignas(4) WORD words[64] = {};
    std::size_t count = 0;

    void Add(std::initializer_list<unsigned> more)
    {
        for (const unsigned word : more)
            words[count++] = static_cast<WORD>(word);
    }
    void Item(DWORD style, WORD id, WORD className)
    {
        count += count % 2;
        style |= WS_CHILD;
        Add({LOWORD(style), HIWORD(style), 0, 0, 5, 5, 20, 10, id, 0xFFFF, className, 0, 0});
    }
    Template()
    {
        Add({LOWORD(WS_POPUP), HIWORD(WS_POPUP), 0, 0, 2, 0, 0, 50, 40, 0, 0, 0});
        Item(0, 1, 0x81);
        Item(0, 2, 0x83);
    }
    LPCDLGTEMPLATEA Get() const { return reinterpret_cast<LPCDLGTEMPLATEA>(words); }
};

class PlainDialog : public CDialog
{
public:
    explicit PlainDialog(const Template& from) : m_from(from) {}
    bool Make() { return CreateIndirect(m_from.Get(), nullptr) != FALSE; }

private:
    const Template& m_from;
};

}  // namespace

TEST(WithoutMemory, WindowsOfThePlatform)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.lpszClassName = "faults";
    windowClass.cbWndExtra = 16;
    ASSERT_NE(0, RegisterClassA(&windowClass));
    RunFlow([] {
        const WindowEnd parent{Made("faults", WS_OVERLAPPEDWINDOW, nullptr)};
        if (!parent.window)
            return Outcome::Of(false);
        if (!Made("faults", WS_CHILD | WS_VISIBLE, parent.window) || !Made("edit", WS_CHILD, parent.window))
            return Outcome::Of(false);
        if (!SetPropA(parent.window, "a property", parent.window))
            return Outcome::Of(false);
        RemovePropA(parent.window, "a property");
        ShowWindow(parent.window, SW_SHOW);
        return Outcome::Of(SetWindowTextA(parent.window, "another title of some length") != FALSE);
    });
}

TEST(WithoutMemory, WindowClasses)
{
    RunFlow(
        [] {
            WNDCLASSA windowClass = {};
            windowClass.lpfnWndProc = DefWindowProcA;
            windowClass.lpszClassName = "another class of some length";
            windowClass.lpszMenuName = "a menu that is not there";
            return Outcome::Of(RegisterClassA(&windowClass) != 0);
        },
        [] { UnregisterClassA("another class of some length", nullptr); });
}

TEST(WithoutMemory, WindowsOfTheFramework)
{
    RunFlow([] {
        CWnd window;
        if (!window.CreateEx(0, AfxRegisterWndClass(0), "title", WS_POPUP, CRect(0, 0, 50, 50), nullptr, 0))
            return Outcome::Of(false);
        window.SetWindowTextA("another title of some length");
        CString text;
        window.GetWindowTextA(text);
        window.DestroyWindow();
        return Outcome{true};
    });
}

TEST(WithoutMemory, Messages)
{
    const WindowEnd window{Made("static", WS_POPUP, nullptr)};
    RunFlow(
        [&] {
            for (UINT i = 0; i < 100; ++i)
                if (!PostMessageA(window.window, WM_APP, i, 0))
                    return Outcome::Of(false);
            return Outcome{true};
        },
        [&] {
            // Those that were posted come in their order.
            MSG message;
            for (WPARAM i = 0; PeekMessageA(&message, window.window, WM_APP, WM_APP, PM_REMOVE); ++i)
                EXPECT_EQ(i, message.wParam);
            // Behind one that was alone the queue keeps no room for many.
            PostMessageA(window.window, WM_APP, 0, 0);
            EXPECT_TRUE(PeekMessageA(&message, window.window, WM_APP, WM_APP, PM_REMOVE));
        });
}

TEST(WithoutMemory, Timers)
{
    // A thread's table grows with its first timers: a thread for each failure.
    bool failed = true;
    for (int first = 0; failed; ++first)
        for (const bool fromThereOn : {false, true}) {
            const OwnedHandle thread = StartThread([&]() -> DWORD {
                SetTimer(nullptr, 0, 100000, nullptr);
                UINT_PTR timers[40] = {};
                FailingMemory memory(first, fromThereOn);
                for (UINT_PTR& timer : timers)
                    if ((timer = SetTimer(nullptr, 0, 100000, nullptr)) == 0 && GetLastError() != ERROR_NOT_ENOUGH_MEMORY)
                        return 1;
                memory.End();
                failed = memory.HasFailed();
                for (const UINT_PTR timer : timers)
                    if (timer && !KillTimer(nullptr, timer))
                        return 2;
                return 0;
            });
            ASSERT_EQ(0u, ExitCodeOf(thread)) << first << fromThereOn;
        }
}

TEST(WithoutMemory, Hooks)
{
    RunFlow([] {
        const HHOOK hook = SetWindowsHookExA(
            WH_GETMESSAGE, [](int code, WPARAM wParam, LPARAM lParam) { return CallNextHookEx(nullptr, code, wParam, lParam); }, nullptr,
            GetCurrentThreadId());
        if (!hook)
            return Outcome::Of(false);
        UnhookWindowsHookEx(hook);
        return Outcome{true};
    });
}

TEST(WithoutMemory, MessageFilters)
{
    RunFlow([] {
        CMessageFilterMainHook& filter = CMessageFilterMainHook::theMFMH;
        if (!filter.MessageFilterHook())
            return Outcome::Of(false);
        return Outcome::Of(filter.MessageFilterUnhook() != 0);
    });
}

TEST(WithoutMemory, DialogsOfThePlatform)
{
    const Template made;
    RunFlow([&] {
        const WindowEnd dialog{CreateDialogIndirectParamA(
            nullptr, made.Get(), nullptr, [](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR { return message == WM_INITDIALOG; }, 0)};
        if (!dialog.window)
            return Outcome::Of(false);
        return Outcome::Of(SetDlgItemTextA(dialog.window, 1, "some text") != FALSE);
    });
}

TEST(WithoutMemory, DialogsOfTheFramework)
{
    const Template made;
    RunFlow([&] {
        PlainDialog dialog(made);
        if (!dialog.Make())
            return Outcome::Of(false);
        dialog.SetDlgItemTextA(1, "some text");
        dialog.DestroyWindow();
        return Outcome{true};
    });
}

TEST(WithoutMemory, ListBoxes)
{
    const WindowEnd list{Made("listbox", WS_POPUP | LBS_SORT, nullptr)};
    RunFlow(
        [&] {
            for (const char* text : {"second", "first", "third, which is longer than the others"})
                if (SendMessageA(list.window, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)) < 0)
                    return Outcome{false, ERROR_NOT_ENOUGH_MEMORY};
            return Outcome{true};
        },
        [&] {
            const LRESULT count = SendMessageA(list.window, LB_GETCOUNT, 0, 0);
            for (LRESULT i = 0; i < count; ++i)
                EXPECT_GT(SendMessageA(list.window, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0), 4);
            SendMessageA(list.window, LB_RESETCONTENT, 0, 0);
        });
}

TEST(WithoutMemory, ListViews)
{
    const WindowEnd view{Made(WC_LISTVIEWA, WS_POPUP | LVS_REPORT, nullptr)};
    ASSERT_TRUE(view.window);
    char title[] = "a column's title";
    LVCOLUMNA column = {};
    column.mask = LVCF_TEXT;
    column.pszText = title;
    SendMessageA(view.window, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    RunFlow(
        [&] {
            char text[] = "an item's text of some length";
            for (int i = 0; i < 9; ++i) {
                LVITEMA item = {};
                item.mask = LVIF_TEXT;
                item.pszText = text;
                if (SendMessageA(view.window, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)) < 0)
                    return Outcome{false, ERROR_NOT_ENOUGH_MEMORY};
            }
            return Outcome{true};
        },
        [&] {
            char text[100];
            LVITEMA item = {};
            item.pszText = text;
            item.cchTextMax = sizeof text;
            const LRESULT count = SendMessageA(view.window, LVM_GETITEMCOUNT, 0, 0);
            for (LRESULT i = 0; i < count; ++i)
                EXPECT_GT(SendMessageA(view.window, LVM_GETITEMTEXTA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item)), 0);
            SendMessageA(view.window, LVM_DELETEALLITEMS, 0, 0);
        });
}

TEST(WithoutMemory, Menus)
{
    RunFlow([] {
        const HMENU menu = CreatePopupMenu();
        if (!menu)
            return Outcome::Of(false);
        Outcome outcome = {true};
        for (UINT_PTR i = 1; i < 6 && outcome.done; ++i)
            outcome = Outcome::Of(AppendMenuA(menu, MF_STRING, i, "an item's text of some length") != FALSE);
        DestroyMenu(menu);
        return outcome;
    });
}

TEST(WithoutMemory, HandlersThatAllocate)
{
    WNDCLASSA windowClass = {};
    windowClass.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message != WM_APP)
            return DefWindowProcA(window, message, wParam, lParam);
        return static_cast<LRESULT>(std::make_unique<std::string>(100, 'x')->size());
    };
    windowClass.lpszClassName = "allocating";
    ASSERT_NE(0, RegisterClassA(&windowClass));
    const WindowEnd window{Made("allocating", WS_POPUP, nullptr)};
    RunFlow([&] { return Outcome{SendMessageA(window.window, WM_APP, 0, 0) == 100}; });
}
