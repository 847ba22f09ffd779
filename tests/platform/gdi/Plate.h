// Plate.h: one drawing with every kind of shape and text.
#pragma once

#include <kelgen/platform/Win32.h>

namespace kelgen::test {

/// Has a context draw with an object while it lives, and deletes it then.
class Drawing
{
public:
    Drawing(HDC context, HGDIOBJ object) : m_context(context), m_object(object), m_former(SelectObject(context, object)) {}
    ~Drawing()
    {
        SelectObject(m_context, m_former);
        DeleteObject(m_object);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

private:
    HDC m_context;
    HGDIOBJ m_object;
    HGDIOBJ m_former;
};

inline void DrawLines(HDC context)
{
    MoveToEx(context, 10, 10, nullptr);
    LineTo(context, 60, 10);
    LineTo(context, 60, 30);
    const Drawing pen(context, CreatePen(PS_DASH, 1, RGB(255, 0, 0)));
    const POINT points[] = {{10, 40}, {30, 15}, {50, 40}};
    Polyline(context, points, 3);
    const Drawing wide(context, CreatePen(PS_SOLID, 4, RGB(0, 0, 255)));
    MoveToEx(context, 10, 50, nullptr);
    LineTo(context, 60, 50);
}

inline void DrawAreas(HDC context)
{
    const Drawing green(context, CreateSolidBrush(RGB(0, 160, 0)));
    Rectangle(context, 70, 10, 110, 30);
    RoundRect(context, 70, 35, 110, 55, 10, 10);
    Ellipse(context, 120, 10, 160, 55);
    const POINT points[] = {{170, 55}, {190, 10}, {210, 55}};
    Polygon(context, points, 3);
    const Drawing hatch(context, CreateHatchBrush(HS_DIAGCROSS, RGB(160, 0, 160)));
    Pie(context, 220, 10, 260, 55, 260, 32, 240, 10);
    Chord(context, 220, 10, 260, 55, 220, 32, 240, 55);
    Arc(context, 270, 10, 310, 55, 310, 32, 290, 55);
}

inline void DrawFills(HDC context)
{
    const HBRUSH red = CreateSolidBrush(RGB(200, 30, 30));
    RECT area{10, 70, 60, 90};
    FillRect(context, &area, red);
    area = {70, 70, 110, 90};
    FrameRect(context, &area, red);
    area = {120, 70, 160, 90};
    DrawEdge(context, &area, EDGE_RAISED, BF_RECT | BF_MIDDLE);
    area = {170, 70, 210, 90};
    DrawFrameControl(context, &area, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_CHECKED);
    area = {20, 75, 50, 85};
    InvertRect(context, &area);
    SetPixel(context, 220, 80, RGB(0, 0, 255));
    SetPixel(context, 221, 80, RGB(0, 0, 255));
    DrawIconEx(context, 230, 65, LoadIconA(nullptr, IDI_EXCLAMATION), 16, 16, 0, nullptr, DI_NORMAL);
    area = {260, 70, 300, 90};
    DrawFocusRect(context, &area);
    DeleteObject(red);
}

inline void DrawTexts(HDC context)
{
    SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
    SetTextColor(context, RGB(0, 0, 128));
    SetBkColor(context, RGB(255, 255, 192));
    TextOutA(context, 10, 100, "opaque", 6);
    SetBkMode(context, TRANSPARENT);
    TextOutA(context, 60, 100, "<&>", 3);
    SetTextAlign(context, TA_RIGHT | TA_BASELINE);
    TextOutA(context, 160, 110, "right", 5);
    SetTextAlign(context, TA_LEFT);
    RECT area{170, 100, 250, 130};
    DrawTextA(context, "&Several words in two lines", -1, &area, DT_WORDBREAK | DT_CENTER);
    area = {10, 120, 60, 135};
    ExtTextOutA(context, 15, 121, ETO_OPAQUE | ETO_CLIPPED, &area, "cut where the area ends", 23, nullptr);
    const Drawing font(context, CreateFontA(-20, 0, 0, 0, FW_BOLD, TRUE, TRUE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, "Arial"));
    TextOutA(context, 70, 115, "Big", 3);
}

/// Clips, an origin, and a copy from a bitmap.
inline void DrawClipped(HDC context)
{
    SaveDC(context);
    const HRGN ring = CreateEllipticRgn(10, 145, 61, 181);
    SelectClipRgn(context, ring);
    ExcludeClipRect(context, 30, 150, 40, 170);
    const HBRUSH blue = CreateSolidBrush(RGB(0, 0, 200));
    SetViewportOrgEx(context, 10, 140, nullptr);
    RECT area{0, 0, 60, 50};
    FillRect(context, &area, blue);
    RestoreDC(context, -1);

    const HDC memory = CreateCompatibleDC(context);
    const HBITMAP bitmap = CreateCompatibleBitmap(context, 50, 40);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    PatBlt(memory, 0, 0, 50, 40, WHITENESS);
    area = {5, 5, 45, 35};
    FillRect(memory, &area, blue);
    Ellipse(memory, 10, 10, 60, 30);
    BitBlt(context, 70, 145, 40, 35, memory, 5, 0, SRCCOPY);
    SelectObject(memory, former);
    DeleteObject(bitmap);
    DeleteDC(memory);
    DeleteObject(blue);
    DeleteObject(ring);
}

/// 320 by 190 pixels.
inline void DrawPlate(HDC context)
{
    const int level = SaveDC(context);
    DrawLines(context);
    DrawAreas(context);
    DrawFills(context);
    DrawTexts(context);
    DrawClipped(context);
    RestoreDC(context, level);
}

}  // namespace kelgen::test
