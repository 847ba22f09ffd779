// PixelsTest.cpp: what shapes cover, pixel by pixel, and the plate shape by shape.
#include "platform/gdi/Plate.h"
#include "support/Rows.h"

#include <functional>
#include <string>

using namespace kelgen::test;

namespace {

/// A context with a white bitmap.
class Canvas
{
public:
    explicit Canvas(SIZE size)
        : m_size(size), m_context(CreateCompatibleDC(nullptr)), m_bitmap(CreateBitmap(size.cx, size.cy, 1, 32, nullptr))
    {
        m_former = SelectObject(m_context, m_bitmap);
        PatBlt(m_context, 0, 0, size.cx, size.cy, WHITENESS);
    }
    ~Canvas()
    {
        SelectObject(m_context, m_former);
        DeleteObject(m_bitmap);
        DeleteDC(m_context);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    operator HDC() const { return m_context; }

    /// All pixels as signs, rows with a bar behind them.
    std::string Picture() const
    {
        std::string rows;
        for (int y = 0; y < m_size.cy; ++y) {
            for (int x = 0; x < m_size.cx; ++x)
                rows += SignOf(GetPixel(m_context, x, y));
            rows += '|';
        }
        return rows;
    }

private:
    static char SignOf(COLORREF color)
    {
        switch (color) {
        case RGB(255, 255, 255):
            return '.';
        case RGB(0, 0, 0):
            return '#';
        case RGB(255, 0, 0):
            return 'r';
        case RGB(0, 255, 0):
            return 'g';
        case RGB(0, 0, 255):
            return 'b';
        case RGB(255, 255, 0):
            return 'y';
        default:
            return '?';
        }
    }

    SIZE m_size;
    HDC m_context;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

}  // namespace

TEST(Pixels, OfShapes)
{
    for (const auto& [name, size, draw, expected] : Table<const char*, SIZE, std::function<void(HDC)>, const char*>{
             {"rectangle",
              {20, 12},
              [](HDC context) { Rectangle(context, 2, 2, 17, 10); },
              "....................|"
              "....................|"
              "..###############...|"
              "..#ggggggggggggg#...|"
              "..#ggggggggggggg#...|"
              "..#ggggggggggggg#...|"
              "..#ggggggggggggg#...|"
              "..#ggggggggggggg#...|"
              "..#ggggggggggggg#...|"
              "..###############...|"
              "....................|"
              "....................|"},
             {"rectangle without a pen",
              {20, 12},
              [](HDC context) {
                  SelectObject(context, GetStockObject(NULL_PEN));
                  Rectangle(context, 2, 2, 17, 10);
              },
              "....................|"
              "....................|"
              "..gggggggggggggg....|"
              "..gggggggggggggg....|"
              "..gggggggggggggg....|"
              "..gggggggggggggg....|"
              "..gggggggggggggg....|"
              "..gggggggggggggg....|"
              "..gggggggggggggg....|"
              "....................|"
              "....................|"
              "....................|"},
             {"rectangle of swapped corners",
              {12, 8},
              [](HDC context) { Rectangle(context, 10, 6, 2, 1); },
              "............|"
              "..########..|"
              "..#gggggg#..|"
              "..#gggggg#..|"
              "..#gggggg#..|"
              "..########..|"
              "............|"
              "............|"},
             {"broken outline",
              {40, 12},
              [](HDC context) {
                  SetBkMode(context, TRANSPARENT);
                  const Drawing pen(context, CreatePen(PS_DASH, 1, RGB(0, 0, 255)));
                  Rectangle(context, 2, 2, 38, 10);
              },
              "........................................|"
              "........................................|"
              "..bbbbbbbbbbbb......bbbbbbbbbbbbbbbbbb..|"
              "..bggggggggggggggggggggggggggggggggggb..|"
              "..bggggggggggggggggggggggggggggggggggb..|"
              "..bggggggggggggggggggggggggggggggggggb..|"
              "..bggggggggggggggggggggggggggggggggggb..|"
              "..bggggggggggggggggggggggggggggggggggb..|"
              "..bggggggggggggggggggggggggggggggggggb..|"
              "........bbbbbbbbbbbbbbbbbb......bbbbbb..|"
              "........................................|"
              "........................................|"},
             {"ellipse",
              {24, 16},
              [](HDC context) { Ellipse(context, 2, 2, 21, 14); },
              "........................|"
              "........................|"
              "........#######.........|"
              ".....###ggggggg###......|"
              "....#ggggggggggggg#.....|"
              "...#ggggggggggggggg#....|"
              "..#ggggggggggggggggg#...|"
              "..#ggggggggggggggggg#...|"
              "..#ggggggggggggggggg#...|"
              "..#ggggggggggggggggg#...|"
              "...#ggggggggggggggg#....|"
              "....#ggggggggggggg#.....|"
              ".....###ggggggg###......|"
              "........#######.........|"
              "........................|"
              "........................|"},
             {"ellipse without a pen",
              {24, 16},
              [](HDC context) {
                  SelectObject(context, GetStockObject(NULL_PEN));
                  Ellipse(context, 2, 2, 21, 14);
              },
              "........................|"
              "........................|"
              "........ggggggg.........|"
              ".....ggggggggggggg......|"
              "....ggggggggggggggg.....|"
              "...ggggggggggggggggg....|"
              "..ggggggggggggggggggg...|"
              "..ggggggggggggggggggg...|"
              "..ggggggggggggggggggg...|"
              "..ggggggggggggggggggg...|"
              "...ggggggggggggggggg....|"
              "....ggggggggggggggg.....|"
              ".....ggggggggggggg......|"
              "........ggggggg.........|"
              "........................|"
              "........................|"},
             {"polygon",
              {24, 24},
              [](HDC context) {
                  const POINT points[] = {{1, 22}, {11, 1}, {21, 22}};
                  SelectObject(context, GetStockObject(NULL_PEN));
                  Polygon(context, points, 3);
              },
              "........................|"
              "........................|"
              "...........g............|"
              "...........g............|"
              "..........ggg...........|"
              "..........ggg...........|"
              ".........ggggg..........|"
              ".........ggggg..........|"
              "........ggggggg.........|"
              "........ggggggg.........|"
              ".......ggggggggg........|"
              ".......ggggggggg........|"
              "......ggggggggggg.......|"
              "......ggggggggggg.......|"
              ".....ggggggggggggg......|"
              ".....ggggggggggggg......|"
              "....ggggggggggggggg.....|"
              "....ggggggggggggggg.....|"
              "...ggggggggggggggggg....|"
              "...ggggggggggggggggg....|"
              "..ggggggggggggggggggg...|"
              "..ggggggggggggggggggg...|"
              "........................|"
              "........................|"},
             {"lines",
              {40, 14},
              [](HDC context) {
                  MoveToEx(context, 2, 2, nullptr);
                  LineTo(context, 12, 2);
                  MoveToEx(context, 12, 4, nullptr);
                  LineTo(context, 2, 4);
                  MoveToEx(context, 20, 2, nullptr);
                  LineTo(context, 30, 12);
                  MoveToEx(context, 2, 8, nullptr);
                  LineTo(context, 18, 13);
                  MoveToEx(context, 35, 2, nullptr);
                  LineTo(context, 35, 10);
                  MoveToEx(context, 37, 10, nullptr);
                  LineTo(context, 37, 2);
              },
              "........................................|"
              "........................................|"
              "..##########........#..............#....|"
              ".....................#.............#.#..|"
              "...##########.........#............#.#..|"
              ".......................#...........#.#..|"
              "........................#..........#.#..|"
              ".........................#.........#.#..|"
              "..##......................#........#.#..|"
              "....###....................#.......#.#..|"
              ".......####.................#........#..|"
              "...........###...............#..........|"
              "..............###.......................|"
              ".................#......................|"},
             {"focus rectangle",
              {24, 10},
              [](HDC context) {
                  const RECT area{2, 2, 21, 8};
                  DrawFocusRect(context, &area);
              },
              "........................|"
              "........................|"
              "..#.#.#.#.#.#.#.#.#.#...|"
              "........................|"
              "..#.................#...|"
              "........................|"
              "..#.................#...|"
              "...#.#.#.#.#.#.#.#.#....|"
              "........................|"
              "........................|"},
             {"focus rectangle at an odd place",
              {24, 10},
              [](HDC context) {
                  const RECT area{3, 2, 22, 9};
                  DrawFocusRect(context, &area);
              },
              "........................|"
              "........................|"
              "...#.#.#.#.#.#.#.#.#.#..|"
              "........................|"
              "...#.................#..|"
              "........................|"
              "...#.................#..|"
              "........................|"
              "...#.#.#.#.#.#.#.#.#.#..|"
              "........................|"},
             {"inverted twice",
              {20, 12},
              [](HDC context) {
                  RECT area{2, 2, 17, 10};
                  InvertRect(context, &area);
                  area = {5, 4, 9, 6};
                  InvertRect(context, &area);
              },
              "....................|"
              "....................|"
              "..###############...|"
              "..###############...|"
              "..###....########...|"
              "..###....########...|"
              "..###############...|"
              "..###############...|"
              "..###############...|"
              "..###############...|"
              "....................|"
              "....................|"},
         }) {
        const Canvas canvas(size);
        {
            const Drawing green(canvas, CreateSolidBrush(RGB(0, 255, 0)));
            const int level = SaveDC(canvas);
            draw(canvas);
            RestoreDC(canvas, level);
        }
        EXPECT_EQ(expected, canvas.Picture()) << name;
    }
}

TEST(Pixels, OfHatches)
{
    for (const auto& [hatch, expected] : Table<int, const char*>{
             {HS_HORIZONTAL, "..........|"
                             ".yyyyyyyyy|"
                             ".yyyyyyyyy|"
                             ".bbbbbbbbb|"
                             ".yyyyyyyyy|"
                             ".yyyyyyyyy|"
                             ".yyyyyyyyy|"
                             ".yyyyyyyyy|"
                             ".yyyyyyyyy|"
                             ".yyyyyyyyy|"},
             {HS_VERTICAL, "..........|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"
                           ".yyybyyyyy|"},
             {HS_FDIAGONAL, "..........|"
                            ".byyyyyyyb|"
                            ".ybyyyyyyy|"
                            ".yybyyyyyy|"
                            ".yyybyyyyy|"
                            ".yyyybyyyy|"
                            ".yyyyybyyy|"
                            ".yyyyyybyy|"
                            ".yyyyyyyby|"
                            ".byyyyyyyb|"},
             {HS_BDIAGONAL, "..........|"
                            ".yyyyybyyy|"
                            ".yyyybyyyy|"
                            ".yyybyyyyy|"
                            ".yybyyyyyy|"
                            ".ybyyyyyyy|"
                            ".byyyyyyyb|"
                            ".yyyyyyyby|"
                            ".yyyyyybyy|"
                            ".yyyyybyyy|"},
             {HS_CROSS, "..........|"
                        ".yyybyyyyy|"
                        ".yyybyyyyy|"
                        ".bbbbbbbbb|"
                        ".yyybyyyyy|"
                        ".yyybyyyyy|"
                        ".yyybyyyyy|"
                        ".yyybyyyyy|"
                        ".yyybyyyyy|"
                        ".yyybyyyyy|"},
             {HS_DIAGCROSS, "..........|"
                            ".byyyybyyb|"
                            ".ybyybyyyy|"
                            ".yybbyyyyy|"
                            ".yybbyyyyy|"
                            ".ybyybyyyy|"
                            ".byyyybyyb|"
                            ".yyyyyybby|"
                            ".yyyyyybby|"
                            ".byyyybyyb|"},
         }) {
        const Canvas canvas({10, 10});
        const HBRUSH brush = CreateHatchBrush(hatch, RGB(0, 0, 255));
        SetBkColor(canvas, RGB(255, 255, 0));
        const RECT area{1, 1, 10, 10};
        FillRect(canvas, &area, brush);
        DeleteObject(brush);
        EXPECT_EQ(expected, canvas.Picture()) << hatch;
    }
}

TEST(Pixels, OfBrokenLines)
{
    for (const auto& [style, expected] : Table<int, const char*>{
             {PS_DASH, "..bbbbbbbbbbbbbbbbbb......bbbbbbbbbbbbbbbbbb......bbbbbbbbbbbbbb|"},
             {PS_DOT, "..bbb...bbb...bbb...bbb...bbb...bbb...bbb...bbb...bbb...bbb...bb|"},
             {PS_DASHDOT, "..bbbbbbbbb......bbb......bbbbbbbbb......bbb......bbbbbbbbb.....|"},
             {PS_DASHDOTDOT, "..bbbbbbbbb...bbb...bbb...bbbbbbbbb...bbb...bbb...bbbbbbbbb...bb|"},
         }) {
        const Canvas canvas({64, 1});
        const Drawing pen(canvas, CreatePen(style, 1, RGB(0, 0, 255)));
        SetBkMode(canvas, TRANSPARENT);
        MoveToEx(canvas, 2, 0, nullptr);
        LineTo(canvas, 68, 0);
        EXPECT_EQ(expected, canvas.Picture()) << style;
    }
}

TEST(Pixels, OfCopiesInAnotherSize)
{
    const auto draw = [](HDC source, const RECT& area) {
        const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
        FillRect(source, &area, red);
        DeleteObject(red);
    };
    const Canvas small({10, 8});
    draw(small, {2, 1, 7, 5});
    SetPixel(small, 8, 6, RGB(0, 0, 0));
    const Canvas twice({24, 20});
    EXPECT_TRUE(StretchBlt(twice, 2, 2, 20, 16, small, 0, 0, 10, 8, SRCCOPY));
    EXPECT_EQ("........................|"
              "........................|"
              "........................|"
              "........................|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "......rrrrrrrrrr........|"
              "........................|"
              "........................|"
              "..................##....|"
              "..................##....|"
              "........................|"
              "........................|"
              "........................|"
              "........................|",
              twice.Picture());

    const Canvas large({20, 16});
    draw(large, {4, 2, 14, 10});
    const Canvas half({14, 10});
    EXPECT_TRUE(StretchBlt(half, 2, 2, 10, 8, large, 0, 0, 20, 16, SRCCOPY));
    EXPECT_EQ("..............|"
              "..............|"
              "..............|"
              "....rrrrr.....|"
              "....rrrrr.....|"
              "....rrrrr.....|"
              "....rrrrr.....|"
              "..............|"
              "..............|"
              "..............|",
              half.Picture());

    // Outlines stay in their boxes.
    const Canvas outlined({10, 8});
    Rectangle(outlined, 1, 1, 9, 7);
    const Canvas thick({20, 16});
    EXPECT_TRUE(StretchBlt(thick, 0, 0, 20, 16, outlined, 0, 0, 10, 8, SRCCOPY));
    for (const auto& [x, y, expected] : Table<int, int, COLORREF>{{10, 1, RGB(255, 255, 255)},
                                                                  {10, 2, RGB(0, 0, 0)},
                                                                  {10, 3, RGB(0, 0, 0)},
                                                                  {10, 4, RGB(255, 255, 255)},
                                                                  {17, 8, RGB(0, 0, 0)},
                                                                  {18, 8, RGB(255, 255, 255)}})
        EXPECT_EQ(expected, GetPixel(thick, x, y)) << x << "," << y;
}

// One point inside, outside and on the edge of each shape of the plate.
TEST(Pixels, OfThePlate)
{
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    constexpr COLORREF kBlack = RGB(0, 0, 0);
    constexpr COLORREF kGreen = RGB(0, 160, 0);
    constexpr COLORREF kRed = RGB(200, 30, 30);
    constexpr COLORREF kBlue = RGB(0, 0, 255);
    constexpr COLORREF kDark = RGB(0, 0, 200);
    constexpr COLORREF kHatch = RGB(160, 0, 160);
    constexpr COLORREF kPale = RGB(255, 255, 192);
    const Canvas canvas({320, 190});
    DrawPlate(canvas);
    for (const auto& [name, x, y, expected] : Table<const char*, int, int, COLORREF>{
             {"line", 10, 10, kBlack},
             {"line: its end", 59, 10, kBlack},
             {"line: above", 30, 9, kWhite},
             {"line: the second one", 60, 29, kBlack},
             {"line: without its last pixel", 60, 30, kWhite},
             {"broken line: its start", 10, 40, RGB(255, 0, 0)},
             {"wide line: first row", 35, 48, kBlue},
             {"wide line: last row", 35, 51, kBlue},
             {"wide line: above", 35, 47, kWhite},
             {"wide line: below", 35, 52, kWhite},
             {"rectangle: corner", 70, 10, kBlack},
             {"rectangle: inner corner", 71, 11, kGreen},
             {"rectangle: last corner", 109, 29, kBlack},
             {"rectangle: behind", 110, 20, kWhite},
             {"round rectangle: corner", 70, 35, kWhite},
             {"round rectangle: edge", 90, 35, kBlack},
             {"round rectangle: last edge", 109, 45, kBlack},
             {"round rectangle: inside", 90, 45, kGreen},
             {"ellipse: top", 140, 10, kBlack},
             {"ellipse: left", 120, 32, kBlack},
             {"ellipse: right", 159, 32, kBlack},
             {"ellipse: inside", 140, 32, kGreen},
             {"ellipse: corner of its box", 123, 13, kWhite},
             {"polygon: inside", 190, 40, kGreen},
             {"polygon: lower edge", 190, 55, kBlack},
             {"polygon: top", 190, 10, kBlack},
             {"polygon: beside", 172, 20, kWhite},
             {"pie: on its hatch", 252, 20, kHatch},
             {"pie: between the hatch", 250, 25, kWhite},
             {"pie: outside", 236, 20, kWhite},
             {"chord: on its hatch", 228, 44, kHatch},
             {"chord: outside", 232, 40, kWhite},
             {"arc: top", 290, 10, kBlack},
             {"arc: left", 270, 32, kBlack},
             {"arc: its open part", 304, 48, kWhite},
             {"arc: its middle", 290, 32, kWhite},
             {"fill: corner", 10, 70, kRed},
             {"fill: last corner", 59, 89, kRed},
             {"fill: behind", 60, 80, kWhite},
             {"inverted", 35, 80, RGB(55, 225, 225)},
             {"inverted: beside", 50, 80, kRed},
             {"frame: corner", 70, 70, kRed},
             {"frame: last corner", 109, 89, kRed},
             {"frame: inside", 90, 80, kWhite},
             {"edge: middle", 140, 80, GetSysColor(COLOR_BTNFACE)},
             {"edge: behind", 160, 80, kWhite},
             {"pixel", 221, 80, kBlue},
             {"pixel: beside", 222, 80, kWhite},
             {"focus: corner", 299, 70, kBlack},
             {"focus: every other pixel", 260, 70, kWhite},
             {"text: ground", 10, 100, kPale},
             {"text: above", 10, 99, kWhite},
             {"clipped text: ground", 11, 134, kPale},
             {"clipped text: last corner", 59, 134, kPale},
             {"clipped text: behind", 60, 134, kWhite},
             {"clip: inside", 20, 163, kDark},
             {"clip: above what is left out", 35, 147, kDark},
             {"clip: what is left out", 35, 160, kWhite},
             {"clip: outside", 11, 146, kWhite},
             {"copy: its ground", 70, 145, kWhite},
             {"copy: corner of its fill", 70, 150, kDark},
             {"copy: last corner", 109, 179, kDark},
             {"copy: ellipse", 100, 155, kBlack},
             {"copy: in the ellipse", 100, 165, kWhite},
             {"copy: cut", 110, 165, kWhite},
         })
        EXPECT_EQ(expected, GetPixel(canvas, x, y)) << name << std::hex << ", " << GetPixel(canvas, x, y);

    // The ground of a text is as wide as its extent.
    SIZE extent{};
    SelectObject(canvas, GetStockObject(DEFAULT_GUI_FONT));
    GetTextExtentPoint32A(canvas, "opaque", 6, &extent);
    int width = 0;
    while (GetPixel(canvas, 10 + width, 100) == kPale)
        ++width;
    EXPECT_EQ(extent.cx, width);
    EXPECT_EQ(kPale, GetPixel(canvas, 10, 99 + extent.cy));
    EXPECT_EQ(kWhite, GetPixel(canvas, 10, 100 + extent.cy));
}

namespace {

DRAWITEMSTRUCT g_item{};

LRESULT CALLBACK DrawItems(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_DRAWITEM)
        return DefWindowProcA(window, message, wParam, lParam);
    g_item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    FillRect(g_item.hDC, &g_item.rcItem, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    return TRUE;
}

}  // namespace

TEST(OwnerDraw, ALabelIsDrawnByItsParent)
{
    WNDCLASSA type{};
    type.lpfnWndProc = DrawItems;
    type.lpszClassName = "DrawsItems";
    RegisterClassA(&type);
    const HWND parent = CreateWindowExA(0, "DrawsItems", "", WS_POPUP | WS_VISIBLE, 50, 50, 200, 100, nullptr, nullptr, nullptr, nullptr);
    const HWND label = CreateWindowExA(0, "Static", "text", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, 10, 10, 50, 20, parent,
                                       reinterpret_cast<HMENU>(LONG_PTR{7}), nullptr, nullptr);
    g_item = {};
    InvalidateRect(label, nullptr, TRUE);
    UpdateWindow(label);
    EXPECT_EQ(UINT{ODT_STATIC}, g_item.CtlType);
    EXPECT_EQ(7u, g_item.CtlID);
    EXPECT_EQ(UINT{ODA_DRAWENTIRE}, g_item.itemAction);
    EXPECT_EQ(label, g_item.hwndItem);
    EXPECT_EQ(50, g_item.rcItem.right);
    EnableWindow(label, FALSE);
    InvalidateRect(label, nullptr, TRUE);
    UpdateWindow(label);
    EXPECT_EQ(UINT{ODS_DISABLED}, g_item.itemState);
    DestroyWindow(parent);
}

TEST(Pixels, OutsideOfTheSurfaceHaveNoColour)
{
    const Canvas canvas({4, 2});
    for (const POINT& point : {POINT{-1, 0}, POINT{4, 0}, POINT{0, 2}, POINT{0, -1}})
        EXPECT_EQ(CLR_INVALID, GetPixel(canvas, point.x, point.y)) << point.x << "," << point.y;
    EXPECT_EQ(CLR_INVALID, GetPixel(nullptr, 0, 0));
    SetViewportOrgEx(canvas, 1, 0, nullptr);
    SetPixel(canvas, 0, 0, RGB(255, 0, 0));
    EXPECT_EQ(RGB(255, 0, 0), GetPixel(canvas, 0, 0));
    SetViewportOrgEx(canvas, 0, 0, nullptr);
    EXPECT_EQ(".r..|....|", canvas.Picture());
}
