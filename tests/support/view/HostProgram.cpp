// HostProgram.cpp: a host that knows nothing of the view: a frame with every kind of control, 100000 items in its list view, a label in its
// own colour, a mark that it paints, and a text that shows and prints the time in microseconds at each line of the standard input. Its end
// ends the program.
#include <kelgen/platform/Win32.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

namespace {

constexpr UINT kClock = WM_APP + 1;
constexpr int kItems = 100'000;
constexpr int kAsk = 1;
constexpr int kClockLabel = 2;
constexpr int kRedLabel = 3;
constexpr RECT kMark{10, 390, 30, 400};

LPCWSTR Wide(const char16_t* text)
{
    return reinterpret_cast<LPCWSTR>(text);
}

HWND Add(HWND frame, const char16_t* type, const char16_t* text, DWORD style, RECT place, int id = 0, DWORD exStyle = 0)
{
    return CreateWindowExW(exStyle, Wide(type), Wide(text), WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, frame, reinterpret_cast<HMENU>(static_cast<LONG_PTR>(id)), nullptr, nullptr);
}

void AddButtons(HWND frame)
{
    SetFocus(Add(frame, u"Button", u"&Ask", WS_TABSTOP | BS_DEFPUSHBUTTON, {10, 10, 90, 33}, kAsk));
    EnableWindow(Add(frame, u"Button", u"Stop", WS_TABSTOP, {100, 10, 180, 33}), FALSE);
    SendMessageW(Add(frame, u"Button", u"&Loud", WS_TABSTOP | BS_AUTOCHECKBOX, {10, 40, 90, 56}), BM_SETCHECK, BST_CHECKED, 0);
    SendMessageW(Add(frame, u"Button", u"Some", WS_TABSTOP | BS_AUTO3STATE, {100, 40, 180, 56}), BM_SETCHECK, BST_INDETERMINATE, 0);
    Add(frame, u"Button", u"Speed", BS_GROUPBOX, {190, 5, 380, 60});
    SendMessageW(Add(frame, u"Button", u"Slow", WS_GROUP | WS_TABSTOP | BS_AUTORADIOBUTTON, {200, 20, 280, 36}), BM_SETCHECK, BST_CHECKED,
                 0);
    Add(frame, u"Button", u"Fast", BS_AUTORADIOBUTTON, {290, 20, 370, 36});
    ShowWindow(Add(frame, u"Button", u"Secret", BS_PUSHBUTTON, {200, 40, 280, 56}), SW_HIDE);
}

void AddTexts(HWND frame)
{
    Add(frame, u"Static", u"no time", SS_LEFT | WS_GROUP, {400, 10, 600, 23}, kClockLabel);
    Add(frame, u"Static", u"&Name:", SS_LEFT, {10, 70, 60, 83});
    Add(frame, u"Edit", u"some text", WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, {65, 68, 180, 86});
    Add(frame, u"Static", u"&Password:", SS_LEFT, {190, 70, 250, 83});
    Add(frame, u"Edit", u"hidden", WS_TABSTOP | WS_BORDER | ES_PASSWORD, {255, 68, 380, 86});
    Add(frame, u"Static", u"&Report:", SS_LEFT, {400, 30, 450, 43});
    Add(frame, u"Edit", u"one\r\ntwo", ES_MULTILINE | ES_READONLY | WS_BORDER, {460, 30, 600, 86});
    SendMessageW(Add(frame, u"Static", u"", SS_ICON, {560, 100, 592, 132}), STM_SETICON,
                 reinterpret_cast<WPARAM>(LoadIconA(nullptr, IDI_WARNING)), 0);
}

void AddLists(HWND frame)
{
    Add(frame, u"Static", u"&Colour:", SS_LEFT, {10, 100, 60, 113});
    const HWND list = Add(frame, u"ListBox", u"", WS_TABSTOP | WS_BORDER | LBS_NOINTEGRALHEIGHT, {65, 98, 180, 160});
    Add(frame, u"Static", u"Si&ze:", SS_LEFT, {190, 100, 250, 113});
    const HWND size = Add(frame, u"ComboBox", u"", WS_TABSTOP | CBS_DROPDOWNLIST, {255, 98, 380, 250});
    Add(frame, u"Static", u"Fon&t:", SS_LEFT, {400, 100, 440, 113});
    const HWND font = Add(frame, u"ComboBox", u"", WS_TABSTOP | CBS_DROPDOWN, {445, 98, 550, 250});
    for (const char16_t* text : {u"first", u"second", u"third", u"fourth"})
        for (const auto& [control, message] : {std::pair{list, LB_ADDSTRING}, {size, CB_ADDSTRING}, {font, CB_ADDSTRING}})
            SendMessageW(control, static_cast<UINT>(message), 0, reinterpret_cast<LPARAM>(text));
    SendMessageW(list, LB_SETCURSEL, 1, 0);
    SendMessageW(size, CB_SETCURSEL, 2, 0);
}

void AddListView(HWND frame)
{
    Add(frame, u"Static", u"&Files:", SS_LEFT, {10, 180, 60, 193}, kRedLabel);
    const HWND list =
        Add(frame, u"SysListView32", u"", WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS, {65, 180, 600, 380}, 0, WS_EX_CLIENTEDGE);
    int number = 0;
    for (const auto& [heading, width, format] : {std::tuple{u"Name", 250, LVCFMT_LEFT}, {u"Size", 100, LVCFMT_RIGHT}}) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        std::u16string text = heading;
        column.pszText = reinterpret_cast<LPWSTR>(text.data());
        column.cx = width;
        column.fmt = format;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(number++), reinterpret_cast<LPARAM>(&column));
    }
    for (int i = 0; i < kItems; ++i) {
        std::string text = "file " + std::to_string(i);
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = i;
        item.pszText = text.data();
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        text = std::to_string(i % 977);
        item.iSubItem = 1;
        item.pszText = text.data();
        SendMessageA(list, LVM_SETITEMTEXTA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

HMENU Menus()
{
    const HMENU recent = CreatePopupMenu();
    AppendMenuA(recent, MF_STRING, 103, "one.txt");
    const HMENU file = CreatePopupMenu();
    AppendMenuA(file, MF_STRING, 100, "&Open...\tCtrl+O");
    AppendMenuA(file, MF_STRING | MF_CHECKED, 101, "&Keep");
    AppendMenuA(file, MF_POPUP, reinterpret_cast<UINT_PTR>(recent), "&Recent");
    AppendMenuA(file, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(file, MF_STRING | MF_GRAYED, 102, "&Save");
    const HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
    AppendMenuA(bar, MF_STRING | MF_GRAYED, 104, "&Edit");
    return bar;
}

void ShowClock(HWND frame)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const std::string text = std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
    SetDlgItemTextA(frame, kClockLabel, text.c_str());
    std::puts(text.c_str());
    std::fflush(stdout);
}

void PaintMark(HWND frame)
{
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(frame, &paint);
    SetTextColor(context, RGB(200, 0, 0));
    TextOutA(context, kMark.left, kMark.top, "mark", 4);
    InvertRect(context, &kMark);
    EndPaint(frame, &paint);
}

LRESULT CALLBACK Procedure(HWND frame, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CTLCOLORSTATIC && GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) == kRedLabel)
        SetTextColor(reinterpret_cast<HDC>(wParam), RGB(200, 0, 0));
    else if (message == WM_PAINT)
        PaintMark(frame);
    if (message == kClock)
        ShowClock(frame);
    else if (message == WM_COMMAND && LOWORD(wParam) == kAsk)
        MessageBoxA(frame, "Is that so?", "Question", MB_YESNO | MB_ICONQUESTION);
    else if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcW(frame, message, wParam, lParam);
}

HWND MakeFrame()
{
    WNDCLASSW type{};
    type.lpfnWndProc = Procedure;
    type.lpszClassName = Wide(u"Host");
    RegisterClassW(&type);
    const HWND frame =
        CreateWindowExW(0, type.lpszClassName, Wide(u"A host"), WS_OVERLAPPEDWINDOW, 100, 50, 640, 460, nullptr, Menus(), nullptr, nullptr);
    AddButtons(frame);
    AddTexts(frame);
    AddLists(frame);
    AddListView(frame);
    ShowWindow(frame, SW_SHOW);
    return frame;
}

}  // namespace

int main()
{
    const HWND frame = MakeFrame();
    std::puts("ready");
    std::fflush(stdout);
    std::thread([frame] {
        for (std::string line; std::getline(std::cin, line);)
            PostMessageW(frame, kClock, 0, 0);
        PostMessageW(frame, WM_CLOSE, 0, 0);
    }).detach();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (IsDialogMessageW(frame, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
