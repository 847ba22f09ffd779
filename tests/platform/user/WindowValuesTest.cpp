// WindowValuesTest.cpp: classes, longs, properties, texts, frames and the results of calls on bad windows.
#include "support/Rows.h"

#include <functional>

using namespace kelgen::test;

namespace {

constexpr DWORD kUntouched = 0xDEAD;

LRESULT CALLBACK Plain(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT CALLBACK PlainWide(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcW(window, message, wParam, lParam);
}

HINSTANCE Program()
{
    return GetModuleHandleA(nullptr);
}

// A class of its own for each use, taken back at the end.
struct OwnClass
{
    explicit OwnClass(int windowExtra = 0, int classExtra = 0, bool wide = false)
    {
        if (wide) {
            WNDCLASSW windowClass{};
            windowClass.lpfnWndProc = PlainWide;
            windowClass.hInstance = Program();
            windowClass.lpszClassName = kelgen::AsWide(u"OwnClass"_w);
            RegisterClassW(&windowClass);
            return;
        }
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = Plain;
        windowClass.cbWndExtra = windowExtra;
        windowClass.cbClsExtra = classExtra;
        windowClass.hInstance = Program();
        windowClass.lpszMenuName = "menu";
        windowClass.lpszClassName = "OwnClass";
        EXPECT_NE(0, RegisterClassA(&windowClass));
    }
    ~OwnClass() { EXPECT_TRUE(UnregisterClassA("OwnClass", Program())); }
};

// A window that its owner destroys.
struct OwnWindow
{
    explicit OwnWindow(DWORD style = WS_POPUP, HWND parent = nullptr, DWORD exStyle = 0, RECT place = {5, 6, 60, 60}, int id = 0,
                       const char* text = "text")
        : handle(CreateWindowExA(exStyle, "OwnClass", text, style, place.left, place.top, place.right, place.bottom, parent,
                                 reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(id)), Program(), nullptr))
    {}
    ~OwnWindow() { DestroyWindow(handle); }
    operator HWND() const { return handle; }
    HWND handle;
};

HWND StaleWindow()
{
    const OwnWindow window;
    return window;
}

// "result/error" of a call, '-' for an untouched error.
template <class Call>
std::string Outcome(Call call)
{
    SetLastError(kUntouched);
    const auto result = static_cast<long long>(call());
    const DWORD error = GetLastError();
    return std::to_string(result) + "/" + (error == kUntouched ? "-" : std::to_string(error));
}

}  // namespace

TEST(WindowValues, BadWindowsFailWithTheirErrors)
{
    const OwnClass ownClass;
    const OwnWindow good;
    RECT rectangle;
    POINT point{};
    char text[20];
    WINDOWPLACEMENT placement{};
    // missing: of a stale window and of a number that was never one.
    struct Row
    {
        const char* name;
        std::string missing, null;
        std::function<long long(HWND)> call;
    };
    const Row rows[] = {
        {"IsWindow", "0/-", "0/-", [](HWND w) { return IsWindow(w); }},
        {"IsWindowVisible", "0/1400", "0/1400", [](HWND w) { return IsWindowVisible(w); }},
        {"IsIconic", "0/1400", "0/1400", [](HWND w) { return IsIconic(w); }},
        {"GetParent", "0/1400", "0/1400", [](HWND w) { return GetParent(w) != nullptr; }},
        {"GetWindowChild", "0/1400", "0/1400", [](HWND w) { return GetWindow(w, GW_CHILD) != nullptr; }},
        {"GetWindowOwner", "0/6", "0/6", [](HWND w) { return GetWindow(w, GW_OWNER) != nullptr; }},
        {"GetTopWindow", "0/1400", "1/-", [](HWND w) { return GetTopWindow(w) != nullptr; }},
        {"GetWindowRect", "0/1400", "0/1400", [&](HWND w) { return GetWindowRect(w, &rectangle); }},
        {"ClientToScreen", "0/1400", "0/1400", [&](HWND w) { return ClientToScreen(w, &point); }},
        {"GetWindowLong", "0/1400", "0/1400", [](HWND w) { return GetWindowLongA(w, GWL_STYLE); }},
        {"SetUserData", "0/1400", "0/1400", [](HWND w) { return SetWindowLongPtrA(w, GWLP_USERDATA, 1); }},
        {"GetProcedure", "0/1400", "0/1400", [](HWND w) { return GetWindowLongPtrA(w, GWLP_WNDPROC); }},
        {"GetClassName", "0/1400", "0/1400", [&](HWND w) { return GetClassNameA(w, text, 20); }},
        {"GetTextLength", "0/1400", "0/1400", [](HWND w) { return GetWindowTextLengthA(w); }},
        {"SetText", "0/1400", "0/1400", [](HWND w) { return SetWindowTextA(w, "x"); }},
        {"GetDlgItem", "0/-", "0/1400", [](HWND w) { return GetDlgItem(w, 5) != nullptr; }},
        {"SetDlgItemInt", "1/-", "1/1400", [](HWND w) { return SetDlgItemInt(w, 5, 1, FALSE); }},
        {"SetProp", "0/1400", "0/1400", [](HWND w) { return SetPropA(w, "p", nullptr); }},
        {"EnumProps", "-1/-", "-1/-", [](HWND w) { return EnumPropsA(w, [](HWND, LPCSTR, HANDLE) -> BOOL { return 1; }); }},
        {"ShowWindow", "0/1400", "0/1400", [](HWND w) { return ShowWindow(w, SW_HIDE); }},
        {"SetFocus", "0/1400", "0/-", [](HWND w) { return SetFocus(w) != nullptr; }},
        {"SetForeground", "0/1400", "0/1400", [](HWND w) { return SetForegroundWindow(w); }},
        {"SetCapture", "0/6", "0/-", [](HWND w) { return SetCapture(w) != nullptr; }},
        {"SetWindowPos", "0/1400", "0/1400", [](HWND w) { return SetWindowPos(w, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE); }},
        {"SetWindowPosAfter", "0/1400", "1/-",
         [&](HWND w) { return SetWindowPos(good, w, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE); }},
        {"SetParent", "0/1400", "0/1400", [&](HWND w) { return SetParent(w, good) != nullptr; }},
        {"GetPlacement", "0/1400", "0/1400", [&](HWND w) { return GetWindowPlacement(w, &placement); }},
        {"InvalidateRect", "0/1400", "1/-", [](HWND w) { return InvalidateRect(w, nullptr, FALSE); }},
        {"UpdateWindow", "1/1400", "0/1400", [](HWND w) { return UpdateWindow(w); }},
        {"GetLastActivePopup", "1/1400", "0/1400", [](HWND w) { return GetLastActivePopup(w) != nullptr; }},
        {"DefWindowProc", "0/-", "0/-", [](HWND w) { return DefWindowProcA(w, WM_CLOSE, 0, 0); }},
        {"DestroyWindow", "0/5", "0/5", [](HWND w) { return DestroyWindow(w); }},
        {"CreateChild", "0/1400", "0/1406",
         [](HWND w) { return CreateWindowExA(0, "OwnClass", "", WS_CHILD, 0, 0, 1, 1, w, nullptr, Program(), nullptr) != nullptr; }},
    };
    const HWND stale = StaleWindow();
    for (const Row& row : rows) {
        // The error of a window that was is not always that of a window that never was.
        const std::string failed = Outcome([&] { return row.call(stale); });
        EXPECT_EQ(row.missing.substr(0, row.missing.find('/')), failed.substr(0, failed.find('/'))) << row.name;
        EXPECT_EQ(row.missing, Outcome([&] { return row.call(reinterpret_cast<HWND>(ULONG_PTR{0x7F0002})); })) << row.name;
        EXPECT_EQ(row.null, Outcome([&] { return row.call(nullptr); })) << row.name;
    }
    EXPECT_EQ("0/5", Outcome([] { return DestroyWindow(GetDesktopWindow()); }));
    EXPECT_EQ("0/5", Outcome([] { return SetWindowLongPtrA(GetDesktopWindow(), GWLP_USERDATA, 1); }));
    EXPECT_EQ("0/5", Outcome([] { return SetWindowLongPtrA(reinterpret_cast<HWND>(ULONG_PTR{0xDEAD}), GWLP_WNDPROC, 1); }));
    EXPECT_EQ("0/87", Outcome([&] { return SetParent(good, good) != nullptr; }));
    EXPECT_TRUE(IsWindow(reinterpret_cast<HWND>(static_cast<ULONG_PTR>(LOWORD(reinterpret_cast<ULONG_PTR>(good.handle))))));
}

TEST(WindowValues, ClassesAreKnownByNameAndModule)
{
    WNDCLASSA windowClass{}, read{};
    windowClass.lpfnWndProc = Plain;
    windowClass.hInstance = Program();
    windowClass.lpszClassName = "Known";
    const ATOM atom = RegisterClassA(&windowClass);
    EXPECT_NE(0, atom);
    EXPECT_EQ("0/1410", Outcome([&] { return RegisterClassA(&windowClass); }));
    EXPECT_TRUE(GetClassInfoA(Program(), "KNOWN", &read));
    EXPECT_EQ(Plain, read.lpfnWndProc);
    EXPECT_EQ("0/1411", Outcome([&] { return GetClassInfoA(nullptr, "Known", &read); }));
    EXPECT_EQ("0/1411", Outcome([&] { return GetClassInfoA(GetModuleHandleA("kernel32"), "Known", &read); }));

    const HWND window = CreateWindowA(MAKEINTATOM(atom), "w", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, Program(), nullptr);
    char name[20];
    EXPECT_EQ(5, GetClassNameA(window, name, 20));
    EXPECT_STREQ("Known", name);
    EXPECT_EQ(2, GetClassNameA(window, name, 3));
    EXPECT_STREQ("Kn", name);
    EXPECT_EQ(atom, GetClassWord(window, GCW_ATOM));
    EXPECT_EQ("0/1412", Outcome([&] { return UnregisterClassA("known", Program()); }));
    DestroyWindow(window);
    EXPECT_EQ("1/-", Outcome([&] { return UnregisterClassA("known", Program()); }));
    EXPECT_EQ("0/1411", Outcome([&] { return UnregisterClassA("known", Program()); }));
    EXPECT_EQ("0/1411", Outcome([] { return CreateWindowA("Known", "", 0, 0, 0, 0, 0, nullptr, nullptr, Program(), nullptr) != nullptr; }));

    windowClass.cbWndExtra = -1;
    EXPECT_EQ("0/87", Outcome([&] { return RegisterClassA(&windowClass); }));
    windowClass.cbWndExtra = 0;
    const std::string longName(256, 'x');
    windowClass.lpszClassName = longName.c_str();
    EXPECT_EQ("0/122", Outcome([&] { return RegisterClassA(&windowClass); }));
    WNDCLASSEXA extended{};
    EXPECT_EQ("0/87", Outcome([&] { return RegisterClassExA(&extended); }));
}

TEST(WindowValues, LongsAreBoundedByTheirExtraBytes)
{
    const OwnClass ownClass(12, 8);
    const OwnWindow window, frame(WS_OVERLAPPEDWINDOW), child(WS_CHILD, frame, 0, {0, 0, 5, 5}, 7);
    struct Row
    {
        const char* name;
        std::string outcome;
        std::function<long long()> call;
    };
    const Row rows[] = {
        {"First", "0/-", [&] { return SetWindowLongA(window, 0, 5); }},
        {"Last", "0/-", [&] { return SetWindowLongA(window, 8, 6); }},
        {"Past", "0/1413", [&] { return SetWindowLongA(window, 9, 6); }},
        {"PtrOverBoth", "25769803776/-", [&] { return SetWindowLongPtrA(window, 4, 7); }},
        {"PtrPast", "0/1413", [&] { return SetWindowLongPtrA(window, 8, 7); }},
        {"PtrRead", "7/-", [&] { return GetWindowLongPtrA(window, 4); }},
        {"Unknown", "0/1413", [&] { return GetWindowLongA(window, -3); }},
        {"ProcedureInALong", "0/1413", [&] { return GetWindowLongA(window, GWLP_WNDPROC); }},
        {"Id", "7/-", [&] { return SetWindowLongPtrA(child, GWLP_ID, 9); }},
        {"IdRead", "9/-", [&] { return GetDlgCtrlID(child); }},
        {"NullProcedure", "1/-", [&] { return SetWindowLongPtrA(window, GWLP_WNDPROC, 0) == reinterpret_cast<LONG_PTR>(&Plain); }},
        {"ClassExtra", "8/-", [&] { return GetClassLongA(window, GCL_CBCLSEXTRA); }},
        {"ClassExtraSet", "0/87", [&] { return SetClassLongA(window, GCL_CBCLSEXTRA, 20); }},
        {"ClassLong", "0/-", [&] { return SetClassLongA(window, 4, 3); }},
        {"ClassLongPast", "0/1413", [&] { return SetClassLongA(window, 5, 3); }},
        {"ClassMenu", "1/-", [&] { return reinterpret_cast<const char*>(GetClassLongPtrA(window, GCLP_MENUNAME)) == std::string("menu"); }},
        {"Owner", "0/-", [&] { return SetWindowLongPtrA(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(frame.handle)); }},
        {"OwnerRead", "1/-", [&] { return GetWindow(window, GW_OWNER) == frame.handle; }},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.outcome, Outcome(row.call)) << row.name;
}

TEST(WindowValues, ProceduresOfTheOtherKindOfTextAreCookies)
{
    static std::string seen;
    static WNDPROC before;
    struct Spy
    {
        static LRESULT CALLBACK Narrow(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
        {
            if (message == WM_SETTEXT)
                seen = reinterpret_cast<const char*>(lParam);
            return CallWindowProcA(before, window, message, wParam, lParam);
        }
    };
    {
        const OwnClass ownClass(0, 0, true);
        const OwnWindow window;
        EXPECT_TRUE(IsWindowUnicode(window));
        EXPECT_EQ(reinterpret_cast<LONG_PTR>(&PlainWide), GetWindowLongPtrW(window, GWLP_WNDPROC));
        EXPECT_NE(reinterpret_cast<LONG_PTR>(&PlainWide), GetWindowLongPtrA(window, GWLP_WNDPROC));

        before = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Spy::Narrow)));
        EXPECT_FALSE(IsWindowUnicode(window));
        SetWindowTextW(window, kelgen::AsWide(u"\u20AC\u4E00z"_w));
        EXPECT_EQ("\x80?z", seen);
        char text[10];
        EXPECT_EQ(2, SendMessageA(window, WM_GETTEXT, 3, reinterpret_cast<LPARAM>(text)));
        EXPECT_STREQ("\x80?", text);
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before));
        EXPECT_TRUE(IsWindowUnicode(window));
        EXPECT_EQ(reinterpret_cast<LONG_PTR>(&PlainWide), GetWindowLongPtrW(window, GWLP_WNDPROC));
    }
    const OwnClass ownClass;
    const OwnWindow window;
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(&Plain), GetWindowLongPtrA(window, GWLP_WNDPROC));
    EXPECT_NE(reinterpret_cast<LONG_PTR>(&Plain), GetWindowLongPtrW(window, GWLP_WNDPROC));
}

TEST(WindowValues, TextsAreCutAndConverted)
{
    const OwnClass ownClass;
    const OwnWindow frame, item(WS_CHILD, frame, 0, {0, 0, 5, 5}, 5, "-12");
    char text[10] = "old";
    WCHAR wide[10];
    EXPECT_EQ(0, GetWindowTextA(frame, text, 0));
    EXPECT_EQ(0, GetWindowTextA(frame, nullptr, 5));
    EXPECT_EQ(0, GetWindowTextA(frame, text, 1));
    EXPECT_EQ(3, GetWindowTextA(frame, text, 4));
    EXPECT_STREQ("tex", text);
    EXPECT_TRUE(SetWindowTextA(frame, nullptr));
    EXPECT_EQ(0, GetWindowTextLengthA(frame));
    EXPECT_TRUE(SetWindowTextA(frame, "\xE9\x80x"));
    EXPECT_EQ(3, GetWindowTextW(frame, wide, 10));
    EXPECT_EQ(0x20AC, wide[1]);

    BOOL translated = FALSE;
    EXPECT_EQ(static_cast<UINT>(-12), GetDlgItemInt(frame, 5, &translated, TRUE));
    EXPECT_TRUE(translated);
    EXPECT_EQ(static_cast<UINT>(-12), GetDlgItemInt(frame, 5, &translated, FALSE));
    EXPECT_TRUE(translated);
    EXPECT_TRUE(SetDlgItemInt(frame, 5, 4000000000u, FALSE));
    EXPECT_EQ(9u, GetDlgItemTextA(frame, 5, text, 10));
    EXPECT_STREQ("400000000", text);
    EXPECT_EQ("0/-", Outcome([&] { return GetDlgItemTextA(frame, 6, text, 10); }));
    EXPECT_EQ(1, DestroyWindow(item));
}

TEST(WindowValues, PropertiesGoByNameWithoutCase)
{
    const OwnClass ownClass;
    const OwnWindow window;
    const auto value = [](int number) { return reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(number)); };
    EXPECT_TRUE(SetPropA(window, "DeskAbc", value(5)));
    EXPECT_TRUE(SetPropA(window, MAKEINTATOM(0x1234), value(6)));
    EXPECT_TRUE(SetPropA(window, "", value(7)));
    EXPECT_EQ(value(5), GetPropA(window, "deskABC"));
    EXPECT_EQ(value(5), GetPropW(window, kelgen::AsWide(u"DESKabc"_w)));
    EXPECT_EQ(value(6), GetPropA(window, MAKEINTATOM(0x1234)));
    std::string names;
    EnumPropsExA(
        window,
        [](HWND, LPSTR name, HANDLE, ULONG_PTR all) -> BOOL {
            if (std::string(name).find("__") != 0)
                *reinterpret_cast<std::string*>(all) += std::string(name) + " ";
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&names));
    EXPECT_EQ("DeskAbc #4660 ", names);
    EXPECT_EQ(value(5), RemovePropA(window, "DESKABC"));
    EXPECT_EQ(nullptr, RemovePropA(window, "DeskAbc"));
}

TEST(WindowValues, StylesDecideOnFrameAndClientArea)
{
    const OwnClass ownClass;
    const OwnWindow frame(WS_OVERLAPPEDWINDOW, nullptr, 0, {0, 0, 400, 300});
    // place: left, top, width, height.
    struct Row
    {
        const char* name;
        DWORD style, exStyle;
        RECT place;
        const char* result;
    };
    const Row rows[] = {
        {"Overlapped", 0, 0, {0, 0, 0, 0}, "04c00000 00000100 116x27 client 110x2 at 3,22"},
        {"Popup", WS_POPUP, 0, {0, 0, 0, 0}, "84000000 00000000 0x0 client 0x0 at 0,0"},
        {"Negative", WS_POPUP, 0, {5, 6, -30, -30}, "84000000 00000000 0x0 client 0x0 at 0,0"},
        {"PopupCaption", WS_POPUP | WS_CAPTION, 0, {5, 6, 10, 10}, "84c00000 00000100 10x10 client 4x0 at 3,22"},
        {"Border", WS_POPUP | WS_BORDER, 0, {5, 6, 10, 10}, "84800000 00000000 10x10 client 8x8 at 1,1"},
        {"Thick", WS_POPUP | WS_THICKFRAME, 0, {5, 6, 10, 10}, "84040000 00000100 10x10 client 4x4 at 3,3"},
        {"ThickCaption", WS_POPUP | WS_THICKFRAME | WS_CAPTION, 0, {5, 6, 10, 10}, "84c40000 00000100 116x27 client 108x0 at 4,23"},
        {"Frame", WS_OVERLAPPEDWINDOW, 0, {5, 6, 10, 10}, "04cf0000 00000100 116x27 client 108x0 at 4,23"},
        {"ClientEdge", WS_POPUP, WS_EX_CLIENTEDGE, {5, 6, 30, 30}, "84000000 00000200 30x30 client 26x26 at 2,2"},
        {"StaticEdge", WS_POPUP, WS_EX_STATICEDGE, {5, 6, 30, 30}, "84000000 00020000 30x30 client 28x28 at 1,1"},
        {"Modal", WS_POPUP, WS_EX_DLGMODALFRAME, {5, 6, 30, 30}, "84000000 00000101 30x30 client 24x24 at 3,3"},
        {"Tool", WS_POPUP | WS_CAPTION, WS_EX_TOOLWINDOW, {5, 6, 130, 130}, "84c00000 00000180 130x130 client 124x108 at 3,19"},
        {"EdgeUnasked", WS_POPUP, WS_EX_WINDOWEDGE, {5, 6, 30, 30}, "84000000 00000000 30x30 client 30x30 at 0,0"},
        {"ScrollBars", WS_POPUP | WS_VSCROLL | WS_HSCROLL, 0, {5, 6, 130, 130}, "84300000 00000000 130x130 client 113x113 at 0,0"},
        {"DefaultPopup", WS_POPUP, 0, {CW_USEDEFAULT, 0, CW_USEDEFAULT, 0}, "84000000 00000000 0x0 client 0x0 at 0,0"},
        {"Child", WS_CHILD, 0, {5, 6, 60, 60}, "40000000 00000000 60x60 client 60x60 at 0,0"},
        {"ChildCaption", WS_CHILD | WS_CAPTION, 0, {5, 6, 60, 60}, "40c00000 00000100 60x60 client 54x35 at 3,22"},
        {"ChildEdges", WS_CHILD | WS_BORDER, WS_EX_CLIENTEDGE, {5, 6, 60, 60}, "40800000 00000200 60x60 client 54x54 at 3,3"},
        {"ChildPopup", WS_CHILD | WS_POPUP, 0, {5, 6, 60, 60}, "c4000000 00000000 60x60 client 60x60 at 0,0"},
        {"ChildMaximized", WS_CHILD | WS_MAXIMIZE, 0, {5, 6, 60, 60}, "41000000 00000000 392x273 client 392x273 at 0,0"},
    };
    for (const Row& row : rows) {
        const OwnWindow window(row.style, (row.style & WS_CHILD) ? frame.handle : nullptr, row.exStyle, row.place);
        RECT outer{}, client{};
        POINT origin{0, 0};
        GetWindowRect(window, &outer);
        GetClientRect(window, &client);
        ClientToScreen(window, &origin);
        char result[120];
        std::snprintf(result, sizeof result, "%08x %08x %dx%d client %dx%d at %d,%d",
                      static_cast<unsigned>(GetWindowLongA(window, GWL_STYLE)), static_cast<unsigned>(GetWindowLongA(window, GWL_EXSTYLE)),
                      static_cast<int>(outer.right - outer.left), static_cast<int>(outer.bottom - outer.top),
                      static_cast<int>(client.right), static_cast<int>(client.bottom), static_cast<int>(origin.x - outer.left),
                      static_cast<int>(origin.y - outer.top));
        EXPECT_STREQ(row.result, result) << row.name;
        if (row.place.right > 100 || row.style & (WS_VSCROLL | WS_MAXIMIZE))
            continue;
        RECT adjusted{100, 100, 200, 200};
        const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
        AdjustWindowRectEx(&adjusted, style, FALSE, static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE)));
        EXPECT_EQ(origin.x - outer.left, 100 - adjusted.left) << row.name;
        EXPECT_EQ(origin.y - outer.top, 100 - adjusted.top) << row.name;
    }
    EXPECT_EQ("0/1401", Outcome([] {
                  return CreateWindowExA(0, "OwnClass", "", WS_POPUP, 0, 0, 1, 1, nullptr, reinterpret_cast<HMENU>(ULONG_PTR{0x7F0002}),
                                         Program(), nullptr) != nullptr;
              }));
}

TEST(WindowValues, OrderKeepsTopmostAndOwnedWindowsAbove)
{
    const OwnClass ownClass;
    const OwnWindow owner(WS_POPUP | WS_VISIBLE), first(WS_POPUP | WS_VISIBLE, owner);
    const OwnWindow second(WS_POPUP | WS_VISIBLE, owner), other(WS_POPUP | WS_VISIBLE);
    const std::pair<HWND, char> names[] = {{owner, 'q'}, {first, 'b'}, {second, 'c'}, {other, 'x'}};
    const auto order = [&](HWND window, HWND after) {
        SetWindowPos(window, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        std::string result;
        for (HWND next = GetTopWindow(nullptr); next; next = GetWindow(next, GW_HWNDNEXT))
            for (const auto& [handle, name] : names)
                if (handle == next)
                    result += std::string(1, name) + (GetWindowLongA(next, GWL_EXSTYLE) & WS_EX_TOPMOST ? "^" : "");
        return result;
    };
    EXPECT_EQ("bxcq", order(first, HWND_TOP));
    EXPECT_EQ("x^bcq", order(other, HWND_TOPMOST));
    EXPECT_EQ("b^c^q^x^", order(owner, HWND_TOPMOST));
    EXPECT_EQ("b^c^x^q", order(owner, HWND_BOTTOM));
    EXPECT_EQ("b^c^xq", order(other, HWND_NOTOPMOST));
    EXPECT_EQ("b^c^qx", order(other, owner));
}

TEST(WindowValues, SearchesFindByClassAndText)
{
    const OwnClass ownClass;
    const OwnWindow frame(WS_POPUP, nullptr, 0, {0, 0, 50, 50}, 0, "DeskFind");
    const OwnWindow child(WS_CHILD, frame, 0, {0, 0, 9, 9}, 1, "one"), next(WS_CHILD, frame, 0, {0, 0, 9, 9}, 2, "two");
    const OwnWindow below(WS_CHILD, child, 0, {0, 0, 9, 9}, 3, "three");
    const OwnWindow message(WS_POPUP, HWND_MESSAGE, 0, {0, 0, 9, 9}, 0, "DeskMessage");
    EXPECT_EQ(frame.handle, FindWindowA("ownCLASS", "deskFIND"));
    EXPECT_EQ(message.handle, FindWindowA("OwnClass", "DeskMessage"));
    EXPECT_EQ(nullptr, GetParent(message));
    EXPECT_NE(nullptr, GetAncestor(message, GA_PARENT));
    EXPECT_EQ("0/1407", Outcome([] { return FindWindowA("OwnClass", "none") != nullptr; }));
    EXPECT_EQ(next.handle, FindWindowExA(frame, child, "OwnClass", nullptr));
    EXPECT_EQ("0/-", Outcome([&] { return FindWindowExA(frame, next, nullptr, nullptr) != nullptr; }));
    EXPECT_EQ(child.handle, GetWindow(next, GW_HWNDFIRST));
    EXPECT_TRUE(IsChild(frame, below));
    EXPECT_FALSE(IsChild(below, frame));
    EXPECT_EQ(frame.handle, GetAncestor(below, GA_ROOT));

    std::vector<HWND> all;
    const WNDENUMPROC collect = [](HWND window, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    };
    EXPECT_TRUE(EnumChildWindows(frame, collect, reinterpret_cast<LPARAM>(&all)));
    EXPECT_EQ((std::vector<HWND>{child, below, next}), all);
    EXPECT_FALSE(EnumThreadWindows(
        GetCurrentThreadId(), [](HWND, LPARAM) -> BOOL { return FALSE; }, 0));
    EXPECT_TRUE(EnumThreadWindows(0x7FFF0, collect, 0));
}
