// ScrollBarTest.cpp: scroll bars of windows and as controls: numbers, places, the mouse and keys.
#include "platform/user/MessageLog.h"
#include "support/Rows.h"
#include "support/Target.h"

#include <functional>
#include <tuple>

using namespace kelgen::test;

namespace {

const char* CodeName(UINT code)
{
    static constexpr const char* kNames[] = {"lineup", "linedown", "pageup", "pagedown", "put", "track", "top", "bottom", "end"};
    return code < std::size(kNames) ? kNames[code] : "?";
}

/// A window that notes what its scroll bars and those in it tell.
class Scrolled : public NamedWindow
{
public:
    explicit Scrolled(DWORD style = WS_POPUP | WS_VSCROLL | WS_HSCROLL) : NamedWindow("scrolled", style, nullptr, {100, 100, 300, 300})
    {
        handler = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) { return OnMessage(message, wParam, lParam); };
    }

    /// Presses the left button at one point of the frame and lets it go at another one, both within it: a desktop may not tell of more.
    std::string Drag(POINT from, POINT to) const
    {
        RECT place{};
        GetWindowRect(*this, &place);
        SetForegroundWindow(*this);
        Drain();
        TakeLog();
        SetCursorPos(place.left + from.x, place.top + from.y);
        Button(MOUSEEVENTF_LEFTDOWN);
        SetCursorPos(place.left + to.x, place.top + to.y);
        Button(MOUSEEVENTF_LEFTUP);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        return TakeLog();
    }

private:
    static void Button(DWORD flags)
    {
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        SendInput(1, &input, sizeof input);
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        if (message == WM_SIZE)
            Note("size(%d,%d)", LOWORD(lParam), HIWORD(lParam));
        if (message == WM_STYLECHANGING || message == WM_STYLECHANGED)
            Note("style");
        if (message == WM_SYSCOMMAND)
            Note("command(%x)", static_cast<unsigned>(wParam));
        if (message == WM_CAPTURECHANGED)
            Note("release");
        if (message != WM_HSCROLL && message != WM_VSCROLL)
            return false;
        const UINT code = LOWORD(wParam);
        const auto bar = reinterpret_cast<HWND>(lParam);
        Note("%s%s%s", bar ? "control:" : "", message == WM_HSCROLL ? "h:" : "", CodeName(code));
        if (code == SB_THUMBTRACK || code == SB_THUMBPOSITION) {
            SCROLLINFO info{sizeof info, SIF_TRACKPOS | SIF_POS, 0, 0, 0, 0, 0};
            GetScrollInfo(bar ? bar : *this, bar ? SB_CTL : message == WM_HSCROLL ? SB_HORZ : SB_VERT, &info);
            ThreadLog() += "(" + std::to_string(HIWORD(wParam)) + ")";
            EXPECT_EQ(HIWORD(wParam), info.nTrackPos);
            EXPECT_EQ(40, info.nPos) << "the host sets it";
        }
        return true;
    }
};

int Set(HWND window, int bar, UINT mask, int least, int most, UINT page, int position)
{
    const SCROLLINFO info{sizeof info, mask, least, most, page, position, 0};
    return SetScrollInfo(window, bar, &info, TRUE);
}

/// "least..most page position", and the client area's size.
std::string StateOf(HWND window, int bar)
{
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    RECT client{};
    GetClientRect(window, &client);
    if (!GetScrollInfo(window, bar, &info))
        return "none";
    return std::to_string(info.nMin) + ".." + std::to_string(info.nMax) + " " + std::to_string(info.nPage) + " " +
           std::to_string(info.nPos) + ", " + std::to_string(client.right) + "x" + std::to_string(client.bottom);
}

/// Where the thumb begins and ends in its bar; "none" without one.
std::string ThumbOf(HWND window, LONG object)
{
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    EXPECT_TRUE(GetScrollBarInfo(window, object, &info));
    EXPECT_EQ(info.xyThumbBottom - info.xyThumbTop, info.dxyLineButton);
    return info.xyThumbBottom ? std::to_string(info.xyThumbTop) + ".." + std::to_string(info.xyThumbBottom) : "none";
}

HWND AddBar(HWND parent, DWORD style, RECT place)
{
    return CreateWindowExA(0, "ScrollBar", "", style | WS_CHILD | WS_VISIBLE, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, parent, nullptr, nullptr, nullptr);
}

}  // namespace

TEST(ScrollBars, KeepPositionAndPageWithinTheRange)
{
    const Scrolled window;
    EXPECT_EQ("0..100 0 0, 183x183", StateOf(window, SB_VERT)) << "what a new one has";
    for (const auto& [name, mask, least, most, page, position, expected, state] :
         Table<const char*, UINT, int, int, UINT, int, int, const char*>{
             {"range and page", SIF_RANGE | SIF_PAGE, 0, 99, 20, 0, 0, "0..99 20 0, 183x183"},
             {"inside", SIF_POS, 0, 0, 0, 33, 33, "0..99 20 33, 183x183"},
             {"a page before the end", SIF_POS, 0, 0, 0, 95, 80, "0..99 20 80, 183x183"},
             {"below", SIF_POS, 0, 0, 0, -5, 0, "0..99 20 0, 183x183"},
             {"tracked position", SIF_TRACKPOS, 0, 0, 0, 3, 0, "0..99 20 0, 183x183"},
             {"unknown flag", 0x100, 5, 6, 7, 8, 0, "0..99 20 0, 183x183"},
             {"a page that is all", SIF_PAGE, 0, 0, 500, 0, 0, "0..99 100 0, 200x183"},
             {"a page alone", SIF_PAGE, 0, 0, 20, 0, 0, "0..99 20 0, 200x183"},
             {"disabled", SIF_PAGE | SIF_DISABLENOSCROLL, 0, 0, 500, 0, 0, "0..99 100 0, 200x183"},
             {"shown by the flag", SIF_PAGE | SIF_DISABLENOSCROLL, 0, 0, 20, 0, 0, "0..99 20 0, 183x183"},
             {"reversed", SIF_RANGE, 10, 5, 0, 0, 0, "0..0 1 0, 200x183"},
             {"shown by the range", SIF_ALL, -50, 50, 10, 7, 7, "-50..50 10 7, 183x183"},
         }) {
        EXPECT_EQ(expected, Set(window, SB_VERT, mask, least, most, page, position)) << name;
        EXPECT_EQ(state, StateOf(window, SB_VERT)) << name;
    }
    EXPECT_EQ("0..100 0 0, 183x183", StateOf(window, SB_HORZ));
    EXPECT_EQ(0, Set(window, 7, SIF_POS, 0, 0, 0, 3));
}

TEST(ScrollBars, HaveShorterCallsForRangeAndPosition)
{
    const Scrolled window;
    EXPECT_TRUE(SetScrollRange(window, SB_VERT, 0, 99, TRUE));
    EXPECT_EQ(0, SetScrollPos(window, SB_VERT, 40, TRUE));
    EXPECT_EQ(40, SetScrollPos(window, SB_VERT, 200, TRUE));
    EXPECT_EQ(99, GetScrollPos(window, SB_VERT));
    int least = 7;
    int most = 7;
    EXPECT_TRUE(GetScrollRange(window, SB_VERT, &least, &most));
    EXPECT_EQ(std::tuple(0, 99), std::tuple(least, most));
    EXPECT_TRUE(SetScrollRange(window, SB_VERT, 0, 0, TRUE));
    EXPECT_EQ("0..0 0 0, 200x183", StateOf(window, SB_VERT)) << "gone";

    SCROLLINFO info{sizeof info, SIF_POS, 77, 77, 77, 77, 77};
    EXPECT_TRUE(GetScrollInfo(window, SB_HORZ, &info));
    EXPECT_EQ(std::tuple(77, 0), std::tuple(info.nMin, info.nPos)) << "what was not asked for stays";
    info.fMask = 0;
    EXPECT_FALSE(GetScrollInfo(window, SB_HORZ, &info));
    info = {3, SIF_POS, 0, 0, 0, 0, 0};
    EXPECT_FALSE(GetScrollInfo(window, SB_HORZ, &info));
}

TEST(ScrollBars, ComeToWindowsThatHadNone)
{
    const Scrolled window(WS_POPUP);
    EXPECT_EQ("none", StateOf(window, SB_VERT));
    EXPECT_EQ("none", StateOf(nullptr, SB_VERT));
    EXPECT_EQ(0, GetScrollPos(window, SB_VERT));
    int least = 7;
    int most = 7;
    EXPECT_TRUE(GetScrollRange(window, SB_VERT, &least, &most));
    EXPECT_EQ(std::tuple(0, 0), std::tuple(least, most));
    EXPECT_EQ(0, SetScrollPos(window, SB_VERT, 5, TRUE));
    EXPECT_EQ("0..100 0 5, 200x200", StateOf(window, SB_VERT)) << "numbers without a bar";
    TakeLog();
    EXPECT_EQ(7, Set(window, SB_VERT, SIF_ALL, 0, 50, 10, 7));
    EXPECT_EQ("size(183,200)", TakeLog()) << "no word of the style";
    EXPECT_EQ("0..50 10 7, 183x200", StateOf(window, SB_VERT));
    EXPECT_TRUE(ShowScrollBar(window, SB_BOTH, TRUE));
    EXPECT_EQ("0..50 10 7, 183x183", StateOf(window, SB_VERT));
    EXPECT_TRUE(ShowScrollBar(window, SB_VERT, FALSE));
    EXPECT_TRUE(ShowScrollBar(window, SB_VERT, FALSE));
    EXPECT_EQ("0..50 10 7, 200x183", StateOf(window, SB_VERT));
    EXPECT_EQ("size(183,183) size(200,183)", TakeLog());
    EXPECT_EQ(DWORD{WS_HSCROLL}, static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)) & (WS_HSCROLL | WS_VSCROLL));
}

TEST(ScrollBars, AThumbIsAsLongAsThePage)
{
    const Scrolled window(WS_POPUP | WS_VSCROLL);
    for (const auto& [length, least, most, page, position, expected] : Table<int, int, int, UINT, int, const char*>{
             {200, 0, 50, 10, 7, "40..73"},
             {200, 0, 99, 20, 37, "79..112"},
             {200, 0, 99, 20, 80, "150..183"},
             {184, 0, 99, 0, 0, "17..34"},
             {184, 0, 99, 0, 50, "84..101"},
             {184, 0, 99, 0, 99, "150..167"},
             {184, 0, 99, 1, 50, "89..97"},
             {184, 0, 99, 20, 80, "137..167"},
             {184, 0, 9999, 10, 9990, "159..167"},
             {184, -50, 50, 10, 0, "91..106"},
             {184, 0, 0x7FFFFFFE, 100, 1000000000, "83..91"},
             {184, 0, 99, 99, 1, "18..167"},
             {121, 0, 99, 20, 37, "49..66"},
             {61, 0, 99, 20, 37, "26..34"},
             {43, 0, 99, 20, 37, "17..25"},
             {35, 0, 99, 20, 37, "none"},
             {20, 0, 99, 20, 37, "none"},
         }) {
        SetWindowPos(window, nullptr, 0, 0, 200, length, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        Set(window, SB_VERT, SIF_ALL, least, most, page, position);
        EXPECT_EQ(expected, ThumbOf(window, static_cast<LONG>(OBJID_VSCROLL))) << length << " " << most << " " << page << " " << position;
    }
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    EXPECT_FALSE(GetScrollBarInfo(window, static_cast<LONG>(OBJID_CLIENT), &info)) << "no control";
    EXPECT_TRUE(GetScrollBarInfo(window, static_cast<LONG>(OBJID_VSCROLL), &info));
    EXPECT_EQ(std::tuple(LONG{283}, LONG{100}, LONG{300}, LONG{120}),
              std::tuple(info.rcScrollBar.left, info.rcScrollBar.top, info.rcScrollBar.right, info.rcScrollBar.bottom));
}

TEST(ScrollBars, DisabledArrowsTellWhetherTheyChanged)
{
    const Scrolled window(WS_POPUP | WS_VSCROLL);
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    const auto arrows = [&] {
        GetScrollBarInfo(window, static_cast<LONG>(OBJID_VSCROLL), &info);
        return std::tuple(info.rgstate[1], info.rgstate[5], info.xyThumbBottom != 0);
    };
    EXPECT_TRUE(EnableScrollBar(window, SB_VERT, ESB_DISABLE_BOTH));
    EXPECT_FALSE(EnableScrollBar(window, SB_VERT, ESB_DISABLE_BOTH));
    EXPECT_EQ(std::tuple(1u, 1u, false), arrows());
    EXPECT_EQ(isOurPlatform ? DWORD{STATE_SYSTEM_UNAVAILABLE} : 0u, info.rgstate[0]) << "the bar";
    EXPECT_TRUE(EnableScrollBar(window, SB_BOTH, ESB_DISABLE_UP));
    EXPECT_EQ(std::tuple(1u, 0u, true), arrows());
    EXPECT_TRUE(EnableScrollBar(window, SB_VERT, ESB_ENABLE_BOTH));
    EXPECT_EQ(std::tuple(0u, 0u, true), arrows());
    EXPECT_FALSE(EnableScrollBar(window, 9, ESB_ENABLE_BOTH));
}

TEST(ScrollBars, TellWhatTheMousePresses)
{
    const Scrolled window(WS_POPUP | WS_VISIBLE | WS_VSCROLL);
    const Scrolled level(WS_POPUP | WS_VISIBLE | WS_HSCROLL);
    SetWindowPos(level, nullptr, 500, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    Set(window, SB_VERT, SIF_ALL, 0, 99, 20, 40);
    Set(level, SB_HORZ, SIF_ALL, 0, 99, 20, 40);
    SetDoubleClickTime(1);
    for (const auto& [name, bar, from, to, expected] : Table<const char*, const Scrolled*, POINT, POINT, const char*>{
             {"first arrow", &window, {190, 5}, {190, 5}, "command(f077) lineup release end"},
             {"last arrow", &window, {190, 190}, {190, 190}, "command(f077) linedown release end"},
             {"before the thumb", &window, {190, 30}, {190, 30}, "command(f077) pageup release end"},
             {"behind the thumb", &window, {190, 160}, {190, 160}, "command(f077) pagedown release end"},
             {"thumb", &window, {190, 90}, {190, 103}, "command(f077) track(40) track(48) release put(48) end"},
             {"thumb held", &window, {190, 90}, {190, 90}, "command(f077) track(40) release put(40) end"},
             {"thumb to the end", &window, {190, 90}, {190, 195}, "command(f077) track(40) track(80) release put(80) end"},
             {"thumb to the start", &window, {190, 90}, {190, 2}, "command(f077) track(40) track(0) release put(0) end"},
             {"arrow left", &window, {190, 5}, {100, 100}, "command(f077) lineup release end"},
             {"left arrow", &level, {5, 190}, {5, 190}, "command(f086) h:lineup release h:end"},
             {"right arrow", &level, {190, 190}, {190, 190}, "command(f086) h:linedown release h:end"},
             {"level thumb", &level, {90, 190}, {110, 190}, "command(f086) h:track(40) h:track(52) release h:put(52) h:end"},
         })
        EXPECT_EQ(expected, bar->Drag(from, to)) << name;
    // Elsewhere a disabled arrow is only painted otherwise.
    for (const auto& [name, arrows, from, expected] : Table<const char*, UINT, POINT, const char*>{
             {"disabled first arrow", ESB_DISABLE_UP, {190, 5}, isOurPlatform ? "" : "lineup release end"},
             {"disabled last arrow", ESB_DISABLE_DOWN, {190, 190}, isOurPlatform ? "" : "linedown release end"},
             {"the other one", ESB_DISABLE_UP, {190, 190}, "linedown release end"},
             {"before the thumb", ESB_DISABLE_UP, {190, 30}, "pageup release end"},
             {"behind the thumb", ESB_DISABLE_DOWN, {190, 160}, "pagedown release end"},
             {"both", ESB_DISABLE_BOTH, {190, 30}, isOurPlatform ? "" : "pageup release end"},
         }) {
        EnableScrollBar(window, SB_VERT, arrows);
        EXPECT_EQ("command(f077)" + std::string(*expected ? " " : "") + expected, window.Drag(from, from)) << name;
    }
    SetDoubleClickTime(0);
    SetCursorPos(700, 700);
}

TEST(ScrollBars, CallsThatFailSayWhy)
{
    const Scrolled bare(WS_POPUP);
    const Scrolled window;
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 9, 0, 0, 0};
    // Elsewhere they say nothing, or do it in part.
    for (const auto& [name, call, result, error, elsewhere] : Table<const char*, std::function<int()>, int, DWORD, int>{
             {"no bar", [&] { return GetScrollInfo(bare, SB_VERT, &info); }, 0, ERROR_NO_SCROLLBARS, 0},
             {"position of no bar", [&] { return GetScrollPos(bare, SB_VERT); }, 0, ERROR_NO_SCROLLBARS, 0},
             {"no window", [&] { return GetScrollInfo(nullptr, SB_VERT, &info); }, 0, ERROR_INVALID_WINDOW_HANDLE, 0},
             {"set of no window", [&] { return SetScrollInfo(nullptr, SB_VERT, &info, TRUE); }, 0, ERROR_INVALID_WINDOW_HANDLE, 0},
             {"shown of no window", [] { return ShowScrollBar(nullptr, SB_VERT, TRUE); }, 0, ERROR_INVALID_WINDOW_HANDLE, 0},
             {"enabled of no window", [] { return EnableScrollBar(nullptr, SB_VERT, 0); }, 0, ERROR_INVALID_WINDOW_HANDLE, 0},
             {"unknown bar shown", [&] { return ShowScrollBar(window, 9, TRUE); }, 0, ERROR_INVALID_PARAMETER, 1},
             {"unknown bar enabled", [&] { return EnableScrollBar(window, 9, 0); }, 0, ERROR_INVALID_PARAMETER, 0},
             {"too wide", [&] { return SetScrollRange(window, SB_VERT, -2, 0x7FFFFFFF, TRUE); }, 0, ERROR_INVALID_SCROLLBAR_RANGE, 1},
         }) {
        SetLastError(77);
        EXPECT_EQ(isOurPlatform ? result : elsewhere, call()) << name;
        const DWORD found = GetLastError();
        EXPECT_TRUE(isOurPlatform ? found == error : found == 0 || found == 77) << name << ": " << found;
    }
    Set(window, SB_VERT, SIF_ALL, 0, 100, 0xFFFFFFFF, 50);
    EXPECT_EQ(isOurPlatform ? "0..100 101 0, 200x183" : "0..100 0 50, 183x183", StateOf(window, SB_VERT)) << "a page beyond all numbers";
}

TEST(ScrollBarControl, BeginsWithoutARangeAndStays)
{
    const Scrolled parent(WS_POPUP | WS_VISIBLE);
    const HWND bar = AddBar(parent, SBS_VERT, {10, 10, 40, 160});
    EXPECT_EQ("0..0 0 0, 30x150", StateOf(bar, SB_CTL));
    EXPECT_EQ(DLGC_WANTARROWS, SendMessageA(bar, WM_GETDLGCODE, 0, 0));
    EXPECT_EQ(40, Set(bar, SB_CTL, SIF_ALL, 0, 99, 20, 40));
    EXPECT_EQ("64..87", ThumbOf(bar, static_cast<LONG>(OBJID_CLIENT)));
    Set(bar, SB_CTL, SIF_PAGE, 0, 0, 500, 0);
    EXPECT_EQ("0..99 100 0, 30x150", StateOf(bar, SB_CTL));
    EXPECT_TRUE(IsWindowVisible(bar) && IsWindowEnabled(bar));
    Set(bar, SB_CTL, SIF_ALL | SIF_DISABLENOSCROLL, 0, 99, 500, 0);
    EXPECT_TRUE(IsWindowVisible(bar) && !IsWindowEnabled(bar));
    Set(bar, SB_CTL, SIF_ALL | SIF_DISABLENOSCROLL, 0, 99, 20, 40);
    EXPECT_TRUE(IsWindowEnabled(bar));
    EXPECT_TRUE(EnableScrollBar(bar, SB_CTL, ESB_DISABLE_BOTH));
    EXPECT_FALSE(IsWindowEnabled(bar));
    EXPECT_TRUE(EnableScrollBar(bar, SB_CTL, ESB_ENABLE_BOTH));
    EXPECT_TRUE(IsWindowEnabled(bar));
    ShowScrollBar(bar, SB_CTL, FALSE);
    EXPECT_FALSE(IsWindowVisible(bar));
}

TEST(ScrollBarControl, IsSetByMessages)
{
    const Scrolled parent(WS_POPUP);
    const HWND bar = AddBar(parent, SBS_VERT, {10, 10, 40, 160});
    int least = 7;
    int most = 7;
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 99, 20, 30, 0};
    EXPECT_EQ(30, SendMessageA(bar, SBM_SETSCROLLINFO, TRUE, reinterpret_cast<LPARAM>(&info)));
    EXPECT_EQ(30, SendMessageA(bar, SBM_SETPOS, 50, TRUE)) << "the one before";
    EXPECT_EQ(50, SendMessageA(bar, SBM_GETPOS, 0, 0));
    EXPECT_EQ(0, SendMessageA(bar, SBM_SETRANGE, 0, 70)) << "the position stays";
    EXPECT_TRUE(SendMessageA(bar, SBM_GETRANGE, reinterpret_cast<WPARAM>(&least), reinterpret_cast<LPARAM>(&most)));
    EXPECT_EQ(std::tuple(0, 70), std::tuple(least, most));
    EXPECT_TRUE(SendMessageA(bar, SBM_GETSCROLLINFO, 0, reinterpret_cast<LPARAM>(&info)));
    EXPECT_EQ(std::tuple(50, 70, 20u), std::tuple(info.nPos, info.nMax, info.nPage));
    EXPECT_TRUE(SendMessageA(bar, SBM_ENABLE_ARROWS, ESB_DISABLE_BOTH, 0));
    EXPECT_FALSE(IsWindowEnabled(bar));
    EXPECT_TRUE(SendMessageA(bar, SBM_ENABLE_ARROWS, ESB_ENABLE_BOTH, 0));
}

TEST(ScrollBarControl, TellsItsParentOfMouseAndKeys)
{
    const Scrolled parent(WS_POPUP | WS_VISIBLE);
    const HWND bar = AddBar(parent, SBS_VERT, {10, 10, 40, 160});
    const HWND level = AddBar(parent, SBS_HORZ | WS_TABSTOP, {50, 10, 150, 30});
    for (const HWND each : {bar, level})
        Set(each, SB_CTL, SIF_ALL, 0, 99, 20, 40);
    SetDoubleClickTime(1);
    SetFocus(parent);
    EXPECT_EQ("control:lineup control:end", parent.Drag({25, 15}, {25, 15}));
    EXPECT_EQ("control:linedown control:end", parent.Drag({25, 155}, {25, 155}));
    EXPECT_EQ("control:pageup control:end", parent.Drag({25, 35}, {25, 35}));
    EXPECT_EQ("control:track(40) control:track(49) control:put(49) control:end", parent.Drag({25, 80}, {25, 90}));
    EXPECT_EQ(parent, GetFocus()) << "without WS_TABSTOP";
    EXPECT_EQ("control:h:track(41) control:h:track(63) control:h:put(63) control:h:end", parent.Drag({95, 15}, {110, 15}));
    EXPECT_EQ(level, GetFocus());
    SetDoubleClickTime(0);
    for (const auto& [key, expected] : Table<UINT, const char*>{{VK_UP, "control:lineup"},
                                                                {VK_RIGHT, "control:linedown"},
                                                                {VK_PRIOR, "control:pageup"},
                                                                {VK_NEXT, "control:pagedown"},
                                                                {VK_HOME, "control:top"},
                                                                {VK_END, "control:bottom"},
                                                                {'A', ""}}) {
        SendMessageA(bar, WM_KEYDOWN, key, 1);
        EXPECT_EQ(expected, TakeLog());
    }
    SetCursorPos(700, 700);
}

TEST(ScrollBarControl, LiesAlongAnEdge)
{
    const Scrolled parent(WS_POPUP);
    for (const auto& [style, expected] : Table<DWORD, RECT>{{SBS_VERT | SBS_LEFTALIGN, {10, 10, 28, 90}},
                                                            {SBS_VERT | SBS_RIGHTALIGN, {52, 10, 70, 90}},
                                                            {SBS_TOPALIGN, {10, 10, 70, 28}},
                                                            {SBS_BOTTOMALIGN, {10, 72, 70, 90}},
                                                            {SBS_SIZEBOX, {10, 10, 70, 90}},
                                                            {SBS_SIZEBOX | SBS_SIZEBOXBOTTOMRIGHTALIGN, {52, 72, 70, 90}}}) {
        RECT place{};
        GetWindowRect(AddBar(parent, style, {10, 10, 70, 90}), &place);
        OffsetRect(&place, -100, -100);
        EXPECT_TRUE(EqualRect(&expected, &place)) << std::hex << style;
    }
}

TEST(ScrollBars, OfListsShowTheirRows)
{
    const Scrolled parent(WS_POPUP | WS_VISIBLE);
    const HWND list =
        CreateWindowExA(0, "ListBox", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL, 10, 10, 100, 96, parent, nullptr, nullptr, nullptr);
    for (int i = 0; i < 20; ++i)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("item"));
    EXPECT_EQ("0..19 6 0, 83x96", StateOf(list, SB_VERT));
    SendMessageA(list, LB_SETTOPINDEX, 4, 0);
    EXPECT_EQ("0..19 6 4, 83x96", StateOf(list, SB_VERT));
    for (const auto& [code, top] :
         Table<UINT, int>{{SB_LINEDOWN, 5}, {SB_PAGEUP, 0}, {SB_BOTTOM, 14}, {SB_PAGEDOWN, 14}, {SB_LINEUP, 13}}) {
        SendMessageA(list, WM_VSCROLL, code, 0);
        EXPECT_EQ(top, SendMessageA(list, LB_GETTOPINDEX, 0, 0)) << code;
    }
}

TEST(ScrollBars, OfEditsShowTheirLines)
{
    const Scrolled parent(WS_POPUP | WS_VISIBLE);
    const HWND edit = CreateWindowExA(0, "Edit", "", WS_CHILD | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL, 10, 10, 100, 100, parent,
                                      nullptr, nullptr, nullptr);
    SetWindowTextA(edit, "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n12");
    SendMessageA(edit, WM_VSCROLL, SB_LINEDOWN, 0);
    SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(GetScrollInfo(edit, SB_VERT, &info));
    EXPECT_EQ(std::tuple(0, 11, 1), std::tuple(info.nMin, info.nMax, info.nPos));
    EXPECT_EQ(1, SendMessageA(edit, EM_GETFIRSTVISIBLELINE, 0, 0));
}

TEST(ScrollWindow, HasWhatIsUncoveredPainted)
{
    const Scrolled window(WS_POPUP | WS_VISIBLE);
    const HWND child = CreateWindowExA(0, "Static", "", WS_CHILD | WS_VISIBLE, 150, 10, 20, 20, window, nullptr, nullptr, nullptr);
    const RECT area{20, 20, 60, 60};
    const RECT clip{30, 30, 100, 50};
    for (const auto& [name, x, y, rectangle, within, kind, expected] : Table<const char*, int, int, const RECT*, const RECT*, int, RECT>{
             {"down", 0, 10, nullptr, nullptr, SIMPLEREGION, {0, 0, 200, 10}},
             {"up", 0, -10, nullptr, nullptr, SIMPLEREGION, {0, 190, 200, 200}},
             {"right", 7, 0, nullptr, nullptr, SIMPLEREGION, {0, 0, 7, 200}},
             {"both", 7, -9, nullptr, nullptr, COMPLEXREGION, {0, 0, 200, 200}},
             {"area", 5, 5, &area, nullptr, COMPLEXREGION, {20, 20, 60, 60}},
             {"clip", 5, 5, nullptr, &clip, COMPLEXREGION, {30, 30, 100, 50}},
             {"both of them", 5, 0, &area, &clip, SIMPLEREGION, {30, 30, 35, 50}},
             {"out of itself", 500, 0, &area, nullptr, SIMPLEREGION, {20, 20, 60, 60}},
             {"nowhere", 0, 0, nullptr, nullptr, NULLREGION, {0, 0, 0, 0}},
         }) {
        ValidateRect(window, nullptr);
        const HRGN region = CreateRectRgn(0, 0, 0, 0);
        RECT bounds{9, 9, 9, 9};
        RECT invalid{};
        EXPECT_NE(ERROR, ScrollWindowEx(window, x, y, rectangle, within, region, &bounds, SW_INVALIDATE)) << name;
        EXPECT_TRUE(EqualRect(&expected, &bounds)) << name;
        EXPECT_EQ(kind, GetRgnBox(region, &bounds)) << name;
        EXPECT_EQ(kind != NULLREGION, GetUpdateRect(window, &invalid, FALSE)) << name;
        EXPECT_TRUE(EqualRect(&expected, &invalid)) << name;
        DeleteObject(region);
    }
    ValidateRect(window, nullptr);
    const RECT before{10, 10, 20, 20};
    InvalidateRect(window, &before, TRUE);
    ScrollWindowEx(window, 0, 30, nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE);
    RECT invalid{};
    GetUpdateRect(window, &invalid, FALSE);
    EXPECT_EQ(50, invalid.bottom) << "what was to be painted moves along";

    EXPECT_TRUE(ScrollWindow(window, 5, 10, nullptr, nullptr));
    RECT place{};
    GetWindowRect(child, &place);
    EXPECT_EQ(std::tuple(LONG{255}, LONG{120}), std::tuple(place.left, place.top)) << "children move along";
    ShowWindow(window, SW_HIDE);
    EXPECT_EQ(isOurPlatform, ScrollWindow(window, 5, 10, nullptr, nullptr) != FALSE) << "hidden";
    EXPECT_EQ(ERROR, ScrollWindowEx(nullptr, 5, 10, nullptr, nullptr, nullptr, nullptr, 0));
}
