// SystemMetrics.cpp: sizes and colours of the desktop, as a row for each.
#include <kelgen/platform/posix/user/api/Painting.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/user/objects/Desktop.h>
#include <kelgen/platform/posix/user/windows/Borders.h>

#include <array>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

constexpr int kTrackMargin = 12;   // a window may be larger than the screen by its frame and a little
constexpr int kFrameOverhang = 8;  // a maximised window's frame is outside of the screen

constexpr std::array<COLORREF, 31> kColors{0xFFFFFF, 0x956F25, 0xFA9632, 0x808080, 0xFFFFFF, 0xFFFFFF, 0x9E9E9E, 0x000000,
                                           0x000000, 0x000000, 0xFFFFFF, 0xFFFFFF, 0x808080, 0xFA9630, 0xFFFFFF, 0xF5F5F5,
                                           0xA6A6A6, 0xA6A6A6, 0x000000, 0xC8C8C8, 0xFFFFFF, 0x6A6A6A, 0xE3E3E3, 0x000000,
                                           0xFFFFFF, 0xFFFFFF, 0xE0E0E0, 0xFA9632, 0x808080, 0xFA9630, 0xFFFFFF};

}  // namespace

DWORD GetSysColor(int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < kColors.size() ? kColors[static_cast<std::size_t>(index)] : 0;
}

int GetSystemMetrics(int index)
{
    switch (index) {
    case SM_CXSCREEN:
    case SM_CXFULLSCREEN:
    case SM_CXVIRTUALSCREEN:
        return kScreenWidth;
    case SM_CYSCREEN:
    case SM_CYVIRTUALSCREEN:
        return kScreenHeight;
    case SM_CYFULLSCREEN:
        return kScreenHeight - kCaptionHeight;
    case SM_CXMAXTRACK:
        return kScreenWidth + kTrackMargin;
    case SM_CYMAXTRACK:
        return kScreenHeight + kTrackMargin;
    case SM_CXMAXIMIZED:
        return kScreenWidth + kFrameOverhang;
    case SM_CYMAXIMIZED:
        return kScreenHeight + kFrameOverhang;
    case SM_CXVSCROLL:
    case SM_CYHSCROLL:
    case SM_CYVTHUMB:
    case SM_CXHTHUMB:
    case SM_CYVSCROLL:
    case SM_CXHSCROLL:
        return kScrollBarSize;
    case SM_CYCAPTION:
        return kCaptionHeight;
    case SM_CYMENU:
        return kMenuHeight;
    case SM_CYSMCAPTION:
        return kSmallCaptionHeight;
    case SM_CXBORDER:
    case SM_CYBORDER:
    case SM_CXFOCUSBORDER:
    case SM_CYFOCUSBORDER:
    case SM_MOUSEPRESENT:
    case SM_MOUSEWHEELPRESENT:
    case SM_CMONITORS:
    case SM_SAMEDISPLAYFORMAT:
        return 1;
    case SM_CXDLGFRAME:
    case SM_CYDLGFRAME:
    case SM_CMOUSEBUTTONS:
    case SM_NETWORK:
        return 3;
    case SM_CXFRAME:
    case SM_CYFRAME:
    case SM_CXDOUBLECLK:
    case SM_CYDOUBLECLK:
    case SM_CXDRAG:
    case SM_CYDRAG:
        return 4;
    case SM_CXEDGE:
    case SM_CYEDGE:
        return kClientEdge;
    case SM_CXICON:
    case SM_CYICON:
    case SM_CXCURSOR:
    case SM_CYCURSOR:
        return 32;
    case SM_CXSMICON:
    case SM_CYSMICON:
        return 16;
    case SM_CXMIN:
    case SM_CXMINTRACK:
        return 116;
    case SM_CYMIN:
    case SM_CYMINTRACK:
        return 27;
    case SM_CXSIZE:
    case SM_CYSIZE:
    case SM_CXMENUSIZE:
    case SM_CYMENUSIZE:
        return 18;
    case SM_CXSMSIZE:
    case SM_CYSMSIZE:
        return 15;
    case SM_CXICONSPACING:
    case SM_CYICONSPACING:
        return 75;
    case SM_CXMINSPACING:
    case SM_CXMINIMIZED:
        return kMinimizedWidth;
    case SM_CYMINSPACING:
    case SM_CYMINIMIZED:
        return kMinimizedHeight;
    case SM_CXMENUCHECK:
    case SM_CYMENUCHECK:
        return 13;
    case SM_ARRANGE:
        return 8;
    default:
        return 0;
    }
}

BOOL SystemParametersInfoA(UINT action, UINT, PVOID data, UINT)
{
    if (data && action == SPI_GETWORKAREA) {
        *static_cast<RECT*>(data) = {0, 0, kScreenWidth, kScreenHeight};
        return TRUE;
    }
    if (data && action == SPI_GETWHEELSCROLLLINES) {
        *static_cast<UINT*>(data) = 3;
        return TRUE;
    }
    return Fail(ERROR_INVALID_SPI_VALUE, FALSE);
}

BOOL SystemParametersInfoW(UINT action, UINT number, PVOID data, UINT flags)
{
    return SystemParametersInfoA(action, number, data, flags);
}
