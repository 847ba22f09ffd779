// Edges.cpp: DrawEdge and DrawFrameControl, over the calls that fill.
#include <kelgen/platform/posix/user/api/DeviceContexts.h>
#include <kelgen/platform/posix/user/api/DrawingObjects.h>
#include <kelgen/platform/posix/user/api/Painting.h>
#include <kelgen/platform/posix/user/api/Shapes.h>
#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <algorithm>

namespace {

/// The colours of one ring of an edge: its upper left and its lower right sides.
struct Ring
{
    int upperLeft;
    int lowerRight;
};

/// A colour number; -1 for a ring that is not there.
Ring RingOf(UINT edge, UINT flags, bool isOuter)
{
    const UINT raised = isOuter ? BDR_RAISEDOUTER : BDR_RAISEDINNER;
    const UINT sunken = isOuter ? BDR_SUNKENOUTER : BDR_SUNKENINNER;
    if (!(edge & (raised | sunken)))
        return {-1, -1};
    if (flags & BF_MONO)
        return isOuter ? Ring{COLOR_WINDOWFRAME, COLOR_WINDOWFRAME} : Ring{COLOR_WINDOW, COLOR_WINDOW};
    if (flags & BF_FLAT)
        return isOuter ? Ring{COLOR_BTNSHADOW, COLOR_BTNSHADOW} : Ring{COLOR_BTNFACE, COLOR_BTNFACE};
    const bool isSoft = (flags & BF_SOFT) != 0;
    if (edge & raised) {
        const int lower = isOuter ? COLOR_3DDKSHADOW : COLOR_BTNSHADOW;
        return {isOuter != isSoft ? COLOR_3DLIGHT : COLOR_BTNHIGHLIGHT, lower};
    }
    const int lower = isOuter ? COLOR_BTNHIGHLIGHT : COLOR_3DLIGHT;
    return {isOuter != isSoft ? COLOR_BTNSHADOW : COLOR_3DDKSHADOW, lower};
}

void FillSide(HDC context, RECT side, int color)
{
    FillRect(context, &side, GetSysColorBrush(color));
}

/// Draws a ring and takes its sides off @p area.
void DrawRing(HDC context, RECT& area, Ring ring, UINT flags)
{
    if (ring.upperLeft < 0)
        return;
    if (flags & BF_BOTTOM) {
        FillSide(context, {area.left, area.bottom - 1, area.right, area.bottom}, ring.lowerRight);
        --area.bottom;
    }
    if (flags & BF_RIGHT) {
        FillSide(context, {area.right - 1, area.top, area.right, area.bottom}, ring.lowerRight);
        --area.right;
    }
    if (flags & BF_TOP) {
        FillSide(context, {area.left, area.top, area.right, area.top + 1}, ring.upperLeft);
        ++area.top;
    }
    if (flags & BF_LEFT) {
        FillSide(context, {area.left, area.top, area.left + 1, area.bottom}, ring.upperLeft);
        ++area.left;
    }
}

/// Draws with an object for the time of a call.
class With
{
public:
    With(HDC context, HGDIOBJ object) : m_context(context), m_former(SelectObject(context, object)) {}
    ~With() { SelectObject(m_context, m_former); }
    With(const With&) = delete;
    With& operator=(const With&) = delete;

private:
    HDC m_context;
    HGDIOBJ m_former;
};

/// A polygon in the colour of texts, its points in eighths of a square in the middle of @p area.
void DrawSign(HDC context, const RECT& area, std::initializer_list<POINT> eighths, UINT state)
{
    const int size = std::min(area.right - area.left, area.bottom - area.top);
    const int left = (area.left + area.right - size) / 2;
    const int top = (area.top + area.bottom - size) / 2;
    POINT points[8];
    int count = 0;
    for (const POINT& each : eighths)
        points[count++] = {left + each.x * size / 8, top + each.y * size / 8};
    const With pen(context, GetStockObject(NULL_PEN));
    const With brush(context, GetSysColorBrush(state & DFCS_INACTIVE ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    Polygon(context, points, count);
}

void DrawPush(HDC context, RECT& area, UINT state)
{
    const UINT edge = state & (DFCS_PUSHED | DFCS_CHECKED) ? EDGE_SUNKEN : EDGE_RAISED;
    DrawEdge(context, &area, edge, BF_RECT | BF_MIDDLE | BF_ADJUST | (state & DFCS_FLAT ? BF_FLAT : BF_SOFT));
}

void DrawButton(HDC context, RECT area, UINT state)
{
    if (state & DFCS_BUTTONPUSH)
        return DrawPush(context, area, state);
    const bool isGrey = (state & (DFCS_INACTIVE | DFCS_PUSHED)) != 0;
    const int ground = isGrey ? COLOR_BTNFACE : COLOR_WINDOW;
    if (state & DFCS_BUTTONRADIO) {
        const With brush(context, GetSysColorBrush(ground));
        Ellipse(context, area.left, area.top, area.right, area.bottom);
        const int inner = (area.right - area.left) / 3;
        if (!(state & DFCS_CHECKED))
            return;
        const With dot(context, GetSysColorBrush(COLOR_BTNTEXT));
        Ellipse(context, area.left + inner, area.top + inner, area.right - inner, area.bottom - inner);
        return;
    }
    DrawEdge(context, &area, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    FillRect(context, &area, GetSysColorBrush(ground));
    if (state & DFCS_CHECKED)
        DrawSign(context, area, {{1, 3}, {3, 5}, {7, 1}, {7, 3}, {3, 7}, {1, 5}}, state);
}

void DrawCaptionSign(HDC context, RECT area, UINT state)
{
    DrawPush(context, area, state);
    switch (state & 7) {
    case DFCS_CAPTIONCLOSE:
        DrawSign(context, area, {{1, 1}, {2, 1}, {7, 6}, {7, 7}, {6, 7}, {1, 2}}, state);
        return DrawSign(context, area, {{6, 1}, {7, 1}, {7, 2}, {2, 7}, {1, 7}, {1, 6}}, state);
    case DFCS_CAPTIONMIN:
        return DrawSign(context, area, {{1, 6}, {6, 6}, {6, 7}, {1, 7}}, state);
    default: {
        const int inner = (area.right - area.left) / 5;
        InflateRect(&area, -inner, -inner);
        FrameRect(context, &area, GetSysColorBrush(COLOR_BTNTEXT));
    }
    }
}

void DrawScrollSign(HDC context, RECT area, UINT state)
{
    DrawPush(context, area, state);
    switch (state & 3) {
    case DFCS_SCROLLUP:
        return DrawSign(context, area, {{4, 2}, {7, 5}, {1, 5}}, state);
    case DFCS_SCROLLDOWN:
        return DrawSign(context, area, {{1, 3}, {7, 3}, {4, 6}}, state);
    case DFCS_SCROLLLEFT:
        return DrawSign(context, area, {{2, 4}, {5, 1}, {5, 7}}, state);
    default:
        return DrawSign(context, area, {{3, 1}, {6, 4}, {3, 7}}, state);
    }
}

void DrawMenuSign(HDC context, const RECT& area, UINT state)
{
    switch (state & 3) {
    case DFCS_MENUARROW:
        return DrawSign(context, area, {{3, 1}, {6, 4}, {3, 7}}, state);
    case DFCS_MENUCHECK:
        return DrawSign(context, area, {{1, 3}, {3, 5}, {7, 1}, {7, 3}, {3, 7}, {1, 5}}, state);
    default:
        return DrawSign(context, area, {{3, 2}, {5, 2}, {6, 3}, {6, 5}, {5, 6}, {3, 6}, {2, 5}, {2, 3}}, state);
    }
}

}  // namespace

BOOL DrawEdge(HDC context, RECT* area, UINT edge, UINT flags)
{
    if (!area)
        return FALSE;
    RECT rest = *area;
    DrawRing(context, rest, RingOf(edge, flags, true), flags);
    DrawRing(context, rest, RingOf(edge, flags, false), flags);
    if (flags & BF_MIDDLE)
        FillSide(context, rest, flags & BF_MONO ? COLOR_WINDOW : COLOR_BTNFACE);
    if (flags & BF_ADJUST)
        *area = rest;
    return GetObjectType(context) != 0;
}

BOOL DrawFrameControl(HDC context, RECT* area, UINT kind, UINT state)
{
    if (!area || !GetObjectType(context))
        return FALSE;
    switch (kind) {
    case DFC_BUTTON:
        DrawButton(context, *area, state);
        return TRUE;
    case DFC_CAPTION:
        DrawCaptionSign(context, *area, state);
        return TRUE;
    case DFC_SCROLL:
        DrawScrollSign(context, *area, state);
        return TRUE;
    case DFC_MENU:
        DrawMenuSign(context, *area, state);
        return TRUE;
    default:
        return FALSE;
    }
}
