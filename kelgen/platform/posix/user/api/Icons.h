// Icons.h: icons, cursors and the bitmaps that tell of their size. They have sizes and hot spots, and no pixels.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/user/api/WindowTypes.h>

// The system's icons, with a null module.
#define IDI_APPLICATION MAKEINTRESOURCEA(32512)
#define IDI_HAND MAKEINTRESOURCEA(32513)
#define IDI_QUESTION MAKEINTRESOURCEA(32514)
#define IDI_EXCLAMATION MAKEINTRESOURCEA(32515)
#define IDI_ASTERISK MAKEINTRESOURCEA(32516)
#define IDI_WINLOGO MAKEINTRESOURCEA(32517)
#define IDI_SHIELD MAKEINTRESOURCEA(32518)
#define IDI_WARNING IDI_EXCLAMATION
#define IDI_ERROR IDI_HAND
#define IDI_INFORMATION IDI_ASTERISK

// The system's cursors.
#define IDC_ARROW MAKEINTRESOURCEA(32512)
#define IDC_IBEAM MAKEINTRESOURCEA(32513)
#define IDC_WAIT MAKEINTRESOURCEA(32514)
#define IDC_CROSS MAKEINTRESOURCEA(32515)
#define IDC_UPARROW MAKEINTRESOURCEA(32516)
#define IDC_SIZE MAKEINTRESOURCEA(32640)
#define IDC_ICON MAKEINTRESOURCEA(32641)
#define IDC_SIZENWSE MAKEINTRESOURCEA(32642)
#define IDC_SIZENESW MAKEINTRESOURCEA(32643)
#define IDC_SIZEWE MAKEINTRESOURCEA(32644)
#define IDC_SIZENS MAKEINTRESOURCEA(32645)
#define IDC_SIZEALL MAKEINTRESOURCEA(32646)
#define IDC_NO MAKEINTRESOURCEA(32648)
#define IDC_HAND MAKEINTRESOURCEA(32649)
#define IDC_APPSTARTING MAKEINTRESOURCEA(32650)
#define IDC_HELP MAKEINTRESOURCEA(32651)

#define IMAGE_BITMAP 0
#define IMAGE_ICON 1
#define IMAGE_CURSOR 2

#define LR_DEFAULTCOLOR 0x0000
#define LR_MONOCHROME 0x0001
#define LR_COLOR 0x0002
#define LR_COPYRETURNORG 0x0004
#define LR_COPYDELETEORG 0x0008
#define LR_LOADFROMFILE 0x0010
#define LR_LOADTRANSPARENT 0x0020
#define LR_DEFAULTSIZE 0x0040
#define LR_VGACOLOR 0x0080
#define LR_LOADMAP3DCOLORS 0x1000
#define LR_CREATEDIBSECTION 0x2000
#define LR_COPYFROMRESOURCE 0x4000
#define LR_SHARED 0x8000

struct ICONINFO
{
    BOOL fIcon;
    DWORD xHotspot;
    DWORD yHotspot;
    HBITMAP hbmMask;
    HBITMAP hbmColor;  // null for a black-and-white image, whose mask is twice as high
};
using PICONINFO = ICONINFO*;

struct BITMAP
{
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    LPVOID bmBits;
};
using LPBITMAP = BITMAP*;
using PBITMAP = BITMAP*;

// Threads: any.

/// The icon @p name of @p module at 32 by 32 pixels, or with a null module one of the system's. The same call returns the same
/// icon, which stays. Null and the last error: ERROR_RESOURCE_TYPE_NOT_FOUND, ERROR_RESOURCE_DATA_NOT_FOUND without resources.
KELGEN_PLATFORM_API HICON LoadIconA(HINSTANCE module, LPCSTR name);
KELGEN_PLATFORM_API HICON LoadIconW(HINSTANCE module, LPCWSTR name);
/// As LoadIconA for a cursor.
KELGEN_PLATFORM_API HCURSOR LoadCursorA(HINSTANCE module, LPCSTR name);
KELGEN_PLATFORM_API HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name);
/// An icon, cursor or bitmap from a resource or, with LR_LOADFROMFILE, a file, whose path @p name is. Of the images in it the one
/// nearest to the size that is asked for is taken and given that size; a size of 0 means the image's own or, with
/// LR_DEFAULTSIZE, 32. Null and the last error as LoadIconA or of opening the file.
///
/// By contract: LR_SHARED returns the same handle for the same image, whatever its size was at the first load, so a caller that needs
/// another size leaves it out.
KELGEN_PLATFORM_API HANDLE LoadImageA(HINSTANCE module, LPCSTR name, UINT type, int width, int height, UINT flags);
KELGEN_PLATFORM_API HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags);

/// Destroys an icon or cursor; a shared one stays, and that is TRUE too. FALSE when it is none.
KELGEN_PLATFORM_API BOOL DestroyIcon(HICON icon);
/// DestroyIcon.
KELGEN_PLATFORM_API BOOL DestroyCursor(HCURSOR cursor);
/// A copy that the caller destroys; null and ERROR_INVALID_CURSOR_HANDLE when @p icon is none.
KELGEN_PLATFORM_API HICON CopyIcon(HICON icon);
/// A copy of an icon, cursor or bitmap in another size (0 keeps it).
KELGEN_PLATFORM_API HANDLE CopyImage(HANDLE image, UINT type, int width, int height, UINT flags);
/// Reads kind and hot spot and makes bitmaps of the icon's size, which the caller deletes. FALSE and ERROR_INVALID_CURSOR_HANDLE.
KELGEN_PLATFORM_API BOOL GetIconInfo(HICON icon, PICONINFO info);

/// Both: an icon or cursor of that size, whose bits are not kept. Null with ERROR_INVALID_PARAMETER for a negative size.
KELGEN_PLATFORM_API HICON CreateIcon(HINSTANCE module, int width, int height, BYTE planes, BYTE bitsPerPixel, const BYTE* mask,
                                     const BYTE* color);
KELGEN_PLATFORM_API HCURSOR CreateCursor(HINSTANCE module, int xHotspot, int yHotspot, int width, int height, const void* mask,
                                         const void* color);
/// An icon of the bitmaps' size; null without a mask.
KELGEN_PLATFORM_API HICON CreateIconIndirect(PICONINFO info);
/// An icon or cursor from the bytes of its resource; null when they are damaged or cut.
KELGEN_PLATFORM_API HICON CreateIconFromResource(PBYTE bits, DWORD size, BOOL isIcon, DWORD version);
/// The same at another size; 0 stands for the image's own or, with LR_DEFAULTSIZE, the usual one.
KELGEN_PLATFORM_API HICON CreateIconFromResourceEx(PBYTE bits, DWORD size, BOOL isIcon, DWORD version, int width, int height, UINT flags);
/// The resource number of the image in a group's directory that fits best; 0 for none. The directory must be complete.
KELGEN_PLATFORM_API int LookupIconIdFromDirectory(PBYTE directory, BOOL isIcon);
/// The same for another size than the usual one, which 0 stands for.
KELGEN_PLATFORM_API int LookupIconIdFromDirectoryEx(PBYTE directory, BOOL isIcon, int width, int height, UINT flags);

#define LoadIcon LoadIconA
#define LoadCursor LoadCursorA
#define LoadImage LoadImageA
#define CopyCursor(cursor) (CopyIcon(cursor))
