// DesktopPicture.h: what the desktop of the process shows at a moment, and a mark that tells when that may have changed. Native only:
// on windows the desktop is the system's, and none of this is there.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/platform/support/DrawnShapes.h>

#include <string>
#include <vector>

namespace kelgen {

enum class EControlKind
{
    none,  ///< No control, or one of the host's own.
    button,
    label,
    edit,
    list,
    combo,
    listView,
    scrollBar,
};

/// A line of an edit control that lies in its client area, from its first visible column on.
struct LinePicture
{
    std::u16string text;
    int selectionStart = 0;  ///< In units of @p text; equal to the end for none.
    int selectionEnd = 0;
};

/// A row of a list that lies in its client area, wholly or in part.
struct RowPicture
{
    std::vector<std::u16string> cells;  ///< One, or one for each column.
    RECT place{};                       ///< In the control's client area.
    int number = 0;                     ///< The item's, from 0.
    bool isSelected = false;
    bool isFocused = false;
};

struct ColumnPicture
{
    std::u16string heading;
    int left = 0;
    int width = 0;
    int format = 0;  ///< LVCFMT_ number.
};

/// What one of the system's own controls shows beyond its window's text and style.
struct ControlPicture
{
    EControlKind kind = EControlKind::none;
    UINT bits = 0;           ///< Of a button: BST_ flags.
    HANDLE image = nullptr;  ///< Of a button or a label.
    std::u16string text;     ///< Of a combo box without an edit control.
    bool isDropped = false;  ///< Of a combo box: its list is open.
    std::vector<LinePicture> lines;
    int caretLine = -1;  ///< Among @p lines; -1 when the caret is not in view.
    int caretColumn = 0;
    int cellWidth = 0;  ///< Of a character of an edit control.
    int cellHeight = 0;
    int headerHeight = 0;  ///< Of a list view's columns' headings; 0 for none.
    std::vector<ColumnPicture> columns;
    std::vector<RowPicture> rows;
    int rowCount = 0;           ///< All, in view or not.
    bool hasTextColor = false;  ///< The host has chosen colours of its own.
    bool hasGroundColor = false;
    COLORREF textColor = 0;
    COLORREF groundColor = 0;
    int pageRows = 0;  ///< How many are wholly in view when there are enough.
    int firstRow = 0;
};

struct MenuItemPicture
{
    std::u16string text;
    RECT place{};    ///< On the screen.
    UINT state = 0;  ///< MFS_ flags.
    UINT type = 0;   ///< MFT_ flags.
    bool hasSubmenu = false;
    SIZE measured{};  ///< By the owner, which draws it; empty otherwise.
};

/// A menu bar, or a menu that is open.
struct MenuPicture
{
    RECT place{};  ///< On the screen.
    std::vector<MenuItemPicture> items;
    std::shared_ptr<const DrawnShapes> drawn;  ///< What the owner has painted of its items, from @p place on; null for nothing.
};

/// A scroll bar of a window's frame, or a control that is one.
struct ScrollBarPicture
{
    RECT place{};  ///< On the screen; empty for none.
    bool isUpright = false;
    bool isDisabled = false;
    int arrow = 0;       ///< The length of each of the two.
    int thumbStart = 0;  ///< From the bar's start.
    int thumbEnd = 0;    ///< As @p thumbStart without a thumb.
    int least = 0;
    int most = 0;  ///< The last position, a page before the range's end.
    int position = 0;
};

struct WindowPicture
{
    HWND handle = nullptr;
    HWND owner = nullptr;
    int parent = -1;  ///< Its place in the list; -1 for a top-level window.
    std::u16string className;
    std::u16string text;  ///< At most 1000 units of it.
    LONG style = 0;
    LONG exStyle = 0;
    RECT window{};  ///< On the screen, as is @p client.
    RECT client{};
    bool isActive = false;
    bool hasFocus = false;
    HICON icon = nullptr;  ///< The one of its caption; IconPicture.h has its pixels.
    bool hasIcon = false;
    ControlPicture control;
    MenuPicture bar;
    ScrollBarPicture scrollBars[3];            ///< By SB_HORZ, SB_VERT, and SB_CTL for a control.
    std::shared_ptr<const DrawnShapes> drawn;  ///< What the program has painted on the client area; null for nothing.
};

/// Bounded: 4000 windows, 500 lines or rows of one, 200 columns, 300 items of a menu, 1000 units of a text, 4000 shapes of a
/// window are the most.
struct DesktopPicture
{
    SIZE size{};
    std::vector<WindowPicture> windows;  ///< Visible ones, from the top of the z-order down; parents before their children.
    std::vector<MenuPicture> menus;      ///< Those that are open, in the order of their opening.
};

/// The desktop as it is, or the part of it that lies in @p window; without windows when that is none, or not visible.
/// Other threads are asked for what their controls show, all of them together for at most @p milliseconds: the controls of one that does
/// not serve its sends in time are as in @p before, if that is given, or show their windows only.
/// Threads: any, best one without windows.
KELGEN_PLATFORM_API DesktopPicture TakeDesktopPicture(HWND window, DWORD milliseconds, const DesktopPicture* before = nullptr);

/// From the first call on (@p isWatched) until as many with false, threads with windows mark changes. Nobody marks any before: then a look
/// into a queue costs the reading of one flag.
KELGEN_PLATFORM_API void WatchDesktop(bool isWatched);

/// The number of changes so far. It moves when a thread that has handled messages finds its queue empty.
KELGEN_PLATFORM_API unsigned DesktopChanges();

/// Waits until the number of changes differs from @p seen, at most @p milliseconds: the number then.
KELGEN_PLATFORM_API unsigned WaitForDesktopChange(unsigned seen, DWORD milliseconds);

/// Ends the wait of WaitForDesktopChange as if something had changed.
KELGEN_PLATFORM_API void MarkDesktopChange();

/// Says whether somebody is there to answer message boxes: then they wait for it, as dialogs. They answer themselves else, also those that
/// wait already.
KELGEN_PLATFORM_API void SetDesktopAttended(bool isAttended);

}  // namespace kelgen
