// Contexts.cpp: the calls that make contexts, and read and write their state.
#include <kelgen/platform/posix/user/api/DeviceContexts.h>

#include <kelgen/platform/posix/user/drawing/Context.h>

#include <utility>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

/// Replaces a number of the state by one from @p first to @p last.
int Exchange(HDC context, int ContextState::*member, int value, int first, int last)
{
    return WithContext(context, 0, [=](Context& found) {
        if (value < first || value > last)
            return Fail(ERROR_INVALID_PARAMETER, 0);
        return std::exchange(found.state.*member, value);
    });
}

COLORREF ExchangeColor(HDC context, COLORREF ContextState::*member, COLORREF color)
{
    return WithContext(context, COLORREF{CLR_INVALID}, [=](Context& found) { return std::exchange(found.state.*member, color); });
}

template <class Result>
Result Read(HDC context, Result ContextState::*member, Result failure)
{
    return WithContext(context, failure, [=](Context& found) { return found.state.*member; });
}

BOOL MoveOrigin(HDC context, POINT ContextState::*member, POINT to, bool isOffset, POINT* former)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        POINT& origin = found.state.*member;
        if (former)
            *former = origin;
        if (isOffset)
            origin = {static_cast<LONG>(static_cast<DWORD>(origin.x) + static_cast<DWORD>(to.x)),
                      static_cast<LONG>(static_cast<DWORD>(origin.y) + static_cast<DWORD>(to.y))};
        else
            origin = to;
        return TRUE;
    });
}

BOOL ReadPoint(HDC context, POINT ContextState::*member, POINT* point)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        if (!point)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        *point = found.state.*member;
        return TRUE;
    });
}

template <class Convert>
BOOL ConvertPoints(HDC context, POINT* points, int count, Convert convert)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        for (int i = 0; i < count; ++i)
            points[i] = convert(found, points[i]);
        return TRUE;
    });
}

}  // namespace

HDC CreateCompatibleDC(HDC like)
{
    return OrNoMemory(HDC{}, [=]() -> HDC {
        const DesktopGuard guard;
        if (like && !FindContext(like))
            return Fail(ERROR_INVALID_HANDLE, HDC{});
        return static_cast<HDC>(InsertObject(std::make_shared<Context>(nullptr, true)));
    });
}

BOOL DeleteDC(HDC context)
{
    const DesktopGuard guard;
    return FindContext(context) ? RemoveObject(context) : Fail(ERROR_INVALID_HANDLE, FALSE);
}

int SaveDC(HDC context)
{
    return WithContext(context, 0, [](Context& found) {
        constexpr std::size_t kMostSaved = 10'000;
        if (found.saved.size() >= kMostSaved)
            return Fail(ERROR_NOT_ENOUGH_MEMORY, 0);
        found.saved.push_back(found.state);
        return static_cast<int>(found.saved.size());
    });
}

BOOL RestoreDC(HDC context, int level)
{
    return WithContext(context, FALSE, [=](Context& found) -> BOOL {
        const int count = static_cast<int>(found.saved.size());
        const int wanted = level < 0 ? count + level + 1 : level;
        if (wanted < 1 || wanted > count)
            return Fail(ERROR_INVALID_PARAMETER, FALSE);
        if (found.state.bitmap.object)
            found.state.bitmap.object->isSelected = false;
        found.state = found.saved[static_cast<std::size_t>(wanted - 1)];
        found.saved.resize(static_cast<std::size_t>(wanted - 1));
        if (found.state.bitmap.object)
            found.state.bitmap.object->isSelected = found.state.bitmap.handle != SmallestBitmap();
        found.ClipChanges();
        return TRUE;
    });
}

int GetDeviceCaps(HDC context, int index)
{
    return WithContext(context, 0, [=](Context&) {
        // An inch has 254 tenths of a millimetre and 96 pixels.
        const auto millimetres = [](int pixels) { return (pixels * 254 + 480) / 960; };
        switch (index) {
        case DRIVERVERSION:
            return 0x4000;
        case TECHNOLOGY:
            return DT_RASDISPLAY;
        case HORZSIZE:
            return millimetres(kScreenWidth);
        case VERTSIZE:
            return millimetres(kScreenHeight);
        case HORZRES:
            return kScreenWidth;
        case VERTRES:
            return kScreenHeight;
        case BITSPIXEL:
            return 32;
        case PLANES:
            return 1;
        case NUMCOLORS:
            return -1;
        case LOGPIXELSX:
        case LOGPIXELSY:
            return 96;
        default:
            return 0;
        }
    });
}

COLORREF SetTextColor(HDC context, COLORREF color)
{
    return ExchangeColor(context, &ContextState::textColor, color);
}

COLORREF SetBkColor(HDC context, COLORREF color)
{
    return ExchangeColor(context, &ContextState::backColor, color);
}

COLORREF SetDCPenColor(HDC context, COLORREF color)
{
    return ExchangeColor(context, &ContextState::penColor, color);
}

COLORREF SetDCBrushColor(HDC context, COLORREF color)
{
    return ExchangeColor(context, &ContextState::brushColor, color);
}

COLORREF GetTextColor(HDC context)
{
    return Read(context, &ContextState::textColor, COLORREF{CLR_INVALID});
}

COLORREF GetBkColor(HDC context)
{
    return Read(context, &ContextState::backColor, COLORREF{CLR_INVALID});
}

int SetBkMode(HDC context, int mode)
{
    return Exchange(context, &ContextState::backMode, mode, TRANSPARENT, OPAQUE);
}

int GetBkMode(HDC context)
{
    return Read(context, &ContextState::backMode, 0);
}

UINT SetTextAlign(HDC context, UINT align)
{
    return WithContext(context, UINT{GDI_ERROR}, [=](Context& found) { return std::exchange(found.state.align, align); });
}

UINT GetTextAlign(HDC context)
{
    return Read(context, &ContextState::align, UINT{GDI_ERROR});
}

int SetROP2(HDC context, int mode)
{
    return Exchange(context, &ContextState::rop, mode, R2_BLACK, R2_WHITE);
}

int GetROP2(HDC context)
{
    return Read(context, &ContextState::rop, 0);
}

int SetPolyFillMode(HDC context, int mode)
{
    return Exchange(context, &ContextState::fillMode, mode, ALTERNATE, WINDING);
}

int GetPolyFillMode(HDC context)
{
    return Read(context, &ContextState::fillMode, 0);
}

int SetStretchBltMode(HDC context, int mode)
{
    return Exchange(context, &ContextState::stretchMode, mode, BLACKONWHITE, HALFTONE);
}

int GetStretchBltMode(HDC context)
{
    return Read(context, &ContextState::stretchMode, 0);
}

int GetMapMode(HDC context)
{
    return WithContext(context, 0, [](Context&) { return MM_TEXT; });
}

BOOL SetViewportOrgEx(HDC context, int x, int y, POINT* former)
{
    return MoveOrigin(context, &ContextState::viewport, {x, y}, false, former);
}

BOOL OffsetViewportOrgEx(HDC context, int x, int y, POINT* former)
{
    return MoveOrigin(context, &ContextState::viewport, {x, y}, true, former);
}

BOOL SetWindowOrgEx(HDC context, int x, int y, POINT* former)
{
    return MoveOrigin(context, &ContextState::windowOrigin, {x, y}, false, former);
}

BOOL OffsetWindowOrgEx(HDC context, int x, int y, POINT* former)
{
    return MoveOrigin(context, &ContextState::windowOrigin, {x, y}, true, former);
}

BOOL GetViewportOrgEx(HDC context, POINT* origin)
{
    return ReadPoint(context, &ContextState::viewport, origin);
}

BOOL GetWindowOrgEx(HDC context, POINT* origin)
{
    return ReadPoint(context, &ContextState::windowOrigin, origin);
}

BOOL LPtoDP(HDC context, POINT* points, int count)
{
    return ConvertPoints(context, points, count, [](const Context& found, POINT point) { return found.ToPixels(point); });
}

BOOL DPtoLP(HDC context, POINT* points, int count)
{
    return ConvertPoints(context, points, count, [](const Context& found, POINT point) { return found.ToLogical(point); });
}

BOOL GetCurrentPositionEx(HDC context, POINT* point)
{
    return ReadPoint(context, &ContextState::current, point);
}
