// WindowTypes.h: the types of windows, classes, messages and drawing surfaces that calls of the user interface take.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/user/api/VirtualKeys.h>
#include <kelgen/platform/posix/user/api/WindowConstants.h>

DECLARE_HANDLE(HACCEL);
DECLARE_HANDLE(HBITMAP);
DECLARE_HANDLE(HBRUSH);
DECLARE_HANDLE(HDC);
DECLARE_HANDLE(HDROP);
DECLARE_HANDLE(HFONT);
DECLARE_HANDLE(HHOOK);
DECLARE_HANDLE(HICON);
DECLARE_HANDLE(HKL);
DECLARE_HANDLE(HMONITOR);
DECLARE_HANDLE(HPALETTE);
DECLARE_HANDLE(HPEN);
DECLARE_HANDLE(HRGN);
using HCURSOR = HICON;
using HDWP = HANDLE;
using HGDIOBJ = void*;

struct POINT
{
    LONG x;
    LONG y;
};
using LPPOINT = POINT*;
using PPOINT = POINT*;

struct POINTS
{
    SHORT x;
    SHORT y;
};

struct SIZE
{
    LONG cx;
    LONG cy;
};
using LPSIZE = SIZE*;
using PSIZE = SIZE*;

/// From left and top, which belong to it, to right and bottom, which do not.
struct RECT
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using PRECT = RECT*;
using LPCRECT = const RECT*;

using WNDPROC = LRESULT(CALLBACK*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
using DLGPROC = INT_PTR(CALLBACK*)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
using TIMERPROC = void(CALLBACK*)(HWND window, UINT message, UINT_PTR timer, DWORD time);
using HOOKPROC = LRESULT(CALLBACK*)(int code, WPARAM wParam, LPARAM lParam);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND window, LPARAM parameter);
using SENDASYNCPROC = void(CALLBACK*)(HWND window, UINT message, ULONG_PTR data, LRESULT result);
using PROPENUMPROCA = BOOL(CALLBACK*)(HWND window, LPCSTR name, HANDLE value);
using PROPENUMPROCW = BOOL(CALLBACK*)(HWND window, LPCWSTR name, HANDLE value);
using PROPENUMPROCEXA = BOOL(CALLBACK*)(HWND window, LPSTR name, HANDLE value, ULONG_PTR parameter);
using PROPENUMPROCEXW = BOOL(CALLBACK*)(HWND window, LPWSTR name, HANDLE value, ULONG_PTR parameter);

struct MSG
{
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using LPMSG = MSG*;
using PMSG = MSG*;

struct WNDCLASSA
{
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
};
using LPWNDCLASSA = WNDCLASSA*;
using PWNDCLASSA = WNDCLASSA*;

struct WNDCLASSW
{
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
};
using LPWNDCLASSW = WNDCLASSW*;
using PWNDCLASSW = WNDCLASSW*;

struct WNDCLASSEXA
{
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
    HICON hIconSm;
};
using LPWNDCLASSEXA = WNDCLASSEXA*;
using PWNDCLASSEXA = WNDCLASSEXA*;

struct WNDCLASSEXW
{
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
    HICON hIconSm;
};
using LPWNDCLASSEXW = WNDCLASSEXW*;
using PWNDCLASSEXW = WNDCLASSEXW*;

struct CREATESTRUCTA
{
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
};
using LPCREATESTRUCTA = CREATESTRUCTA*;

struct CREATESTRUCTW
{
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
};
using LPCREATESTRUCTW = CREATESTRUCTW*;

struct MDICREATESTRUCTA
{
    LPCSTR szClass;
    LPCSTR szTitle;
    HANDLE hOwner;
    int x;
    int y;
    int cx;
    int cy;
    DWORD style;
    LPARAM lParam;
};
using LPMDICREATESTRUCTA = MDICREATESTRUCTA*;

struct MDICREATESTRUCTW
{
    LPCWSTR szClass;
    LPCWSTR szTitle;
    HANDLE hOwner;
    int x;
    int y;
    int cx;
    int cy;
    DWORD style;
    LPARAM lParam;
};
using LPMDICREATESTRUCTW = MDICREATESTRUCTW*;

struct CLIENTCREATESTRUCT
{
    HANDLE hWindowMenu;
    UINT idFirstChild;
};
using LPCLIENTCREATESTRUCT = CLIENTCREATESTRUCT*;

struct WINDOWPOS
{
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};
using LPWINDOWPOS = WINDOWPOS*;
using PWINDOWPOS = WINDOWPOS*;

struct WINDOWPLACEMENT
{
    UINT length;
    UINT flags;
    UINT showCmd;
    POINT ptMinPosition;
    POINT ptMaxPosition;
    RECT rcNormalPosition;
};
using LPWINDOWPLACEMENT = WINDOWPLACEMENT*;

struct NCCALCSIZE_PARAMS
{
    RECT rgrc[3];
    PWINDOWPOS lppos;
};
using LPNCCALCSIZE_PARAMS = NCCALCSIZE_PARAMS*;

struct MINMAXINFO
{
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};
using LPMINMAXINFO = MINMAXINFO*;
using PMINMAXINFO = MINMAXINFO*;

struct STYLESTRUCT
{
    DWORD styleOld;
    DWORD styleNew;
};
using LPSTYLESTRUCT = STYLESTRUCT*;

struct WINDOWINFO
{
    DWORD cbSize;
    RECT rcWindow;
    RECT rcClient;
    DWORD dwStyle;
    DWORD dwExStyle;
    DWORD dwWindowStatus;
    UINT cxWindowBorders;
    UINT cyWindowBorders;
    ATOM atomWindowType;
    WORD wCreatorVersion;
};
using PWINDOWINFO = WINDOWINFO*;
using LPWINDOWINFO = WINDOWINFO*;

struct GUITHREADINFO
{
    DWORD cbSize;
    DWORD flags;
    HWND hwndActive;
    HWND hwndFocus;
    HWND hwndCapture;
    HWND hwndMenuOwner;
    HWND hwndMoveSize;
    HWND hwndCaret;
    RECT rcCaret;
};
using PGUITHREADINFO = GUITHREADINFO*;
using LPGUITHREADINFO = GUITHREADINFO*;

struct PAINTSTRUCT
{
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
using LPPAINTSTRUCT = PAINTSTRUCT*;
using PPAINTSTRUCT = PAINTSTRUCT*;

struct COPYDATASTRUCT
{
    ULONG_PTR dwData;
    DWORD cbData;
    PVOID lpData;
};
using PCOPYDATASTRUCT = COPYDATASTRUCT*;

struct NMHDR
{
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};
using LPNMHDR = NMHDR*;

struct DRAWITEMSTRUCT
{
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;

struct MEASUREITEMSTRUCT
{
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemWidth;
    UINT itemHeight;
    ULONG_PTR itemData;
};
using LPMEASUREITEMSTRUCT = MEASUREITEMSTRUCT*;

struct DELETEITEMSTRUCT
{
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    HWND hwndItem;
    ULONG_PTR itemData;
};
using LPDELETEITEMSTRUCT = DELETEITEMSTRUCT*;

struct COMPAREITEMSTRUCT
{
    UINT CtlType;
    UINT CtlID;
    HWND hwndItem;
    UINT itemID1;
    ULONG_PTR itemData1;
    UINT itemID2;
    ULONG_PTR itemData2;
    DWORD dwLocaleId;
};
using LPCOMPAREITEMSTRUCT = COMPAREITEMSTRUCT*;

struct HELPINFO
{
    UINT cbSize;
    int iContextType;
    int iCtrlId;
    HANDLE hItemHandle;
    DWORD_PTR dwContextId;
    POINT MousePos;
};
using LPHELPINFO = HELPINFO*;

struct TRACKMOUSEEVENT
{
    DWORD cbSize;
    DWORD dwFlags;
    HWND hwndTrack;
    DWORD dwHoverTime;
};
using LPTRACKMOUSEEVENT = TRACKMOUSEEVENT*;

struct FLASHWINFO
{
    UINT cbSize;
    HWND hwnd;
    DWORD dwFlags;
    UINT uCount;
    DWORD dwTimeout;
};
using PFLASHWINFO = FLASHWINFO*;

using WNDCLASS = WNDCLASSA;
using LPWNDCLASS = LPWNDCLASSA;
using PWNDCLASS = PWNDCLASSA;
using WNDCLASSEX = WNDCLASSEXA;
using LPWNDCLASSEX = LPWNDCLASSEXA;
using PWNDCLASSEX = PWNDCLASSEXA;
using CREATESTRUCT = CREATESTRUCTA;
using LPCREATESTRUCT = LPCREATESTRUCTA;
using MDICREATESTRUCT = MDICREATESTRUCTA;
using LPMDICREATESTRUCT = LPMDICREATESTRUCTA;
using PROPENUMPROC = PROPENUMPROCA;
using PROPENUMPROCEX = PROPENUMPROCEXA;

#define MAKEWPARAM(l, h) (static_cast<WPARAM>(static_cast<DWORD>(MAKELONG(l, h))))
#define MAKELPARAM(l, h) (static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(l, h))))
#define MAKELRESULT(l, h) (static_cast<LRESULT>(static_cast<DWORD>(MAKELONG(l, h))))
#define MAKEPOINTS(l) (POINTS{static_cast<SHORT>(LOWORD(l)), static_cast<SHORT>(HIWORD(l))})
#define MAKEINTATOM(i) (reinterpret_cast<LPSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(i))))
#define POINTSTOPOINT(pt, pts) ((pt).x = (pts).x, (pt).y = (pts).y)
#define RGB(r, g, b)                                                                                                                       \
    (static_cast<COLORREF>(static_cast<BYTE>(r) | (static_cast<WORD>(static_cast<BYTE>(g)) << 8) |                                         \
                           (static_cast<DWORD>(static_cast<BYTE>(b)) << 16)))
#define GetRValue(rgb) (LOBYTE(rgb))
#define GetGValue(rgb) (LOBYTE(static_cast<WORD>(rgb) >> 8))
#define GetBValue(rgb) (LOBYTE((rgb) >> 16))
