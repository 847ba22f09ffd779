// DrawingTest.cpp: what the calls of drawing return: states, objects, regions, clips, edges.
#include "platform/gdi/Plate.h"
#include "support/Rows.h"

#include <array>
#include <tuple>

using namespace kelgen::test;

namespace {

std::array<LONG, 4> Numbers(const RECT& area)
{
    return {area.left, area.top, area.right, area.bottom};
}

using Box = std::array<LONG, 4>;

/// A context of a bitmap of 100 by 80 pixels.
class Memory
{
public:
    Memory() : m_context(CreateCompatibleDC(nullptr)), m_bitmap(CreateBitmap(100, 80, 1, 32, nullptr))
    {
        m_former = SelectObject(m_context, m_bitmap);
        SelectObject(m_context, GetStockObject(DEFAULT_GUI_FONT));
    }
    ~Memory()
    {
        SelectObject(m_context, m_former);
        DeleteObject(m_bitmap);
        DeleteDC(m_context);
    }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    operator HDC() const { return m_context; }
    HBITMAP Bitmap() const { return m_bitmap; }
    Box Clip() const
    {
        RECT box{};
        GetClipBox(m_context, &box);
        return Numbers(box);
    }

private:
    HDC m_context;
    HBITMAP m_bitmap;
    HGDIOBJ m_former;
};

struct Combination
{
    const char* name;
    Box left;
    Box right;
    int mode;
    int kind;
    Box box;
};

HRGN RegionOf(const Box& box)
{
    return CreateRectRgn(box[0], box[1], box[2], box[3]);
}

class CombinedRegion : public testing::TestWithParam<Combination>
{};

struct Edge
{
    const char* name;
    UINT edge;
    UINT flags;
    Box rest;
};

class DrawnEdge : public testing::TestWithParam<Edge>
{};

}  // namespace

TEST(Context, BeginsWithTheDocumentedState)
{
    const Memory context;
    EXPECT_EQ(RGB(0, 0, 0), GetTextColor(context));
    EXPECT_EQ(RGB(255, 255, 255), GetBkColor(context));
    EXPECT_EQ(OPAQUE, GetBkMode(context));
    EXPECT_EQ(TA_LEFT | TA_TOP | TA_NOUPDATECP, static_cast<int>(GetTextAlign(context)));
    EXPECT_EQ(R2_COPYPEN, GetROP2(context));
    EXPECT_EQ(ALTERNATE, GetPolyFillMode(context));
    EXPECT_EQ(BLACKONWHITE, GetStretchBltMode(context));
    EXPECT_EQ(MM_TEXT, GetMapMode(context));
    EXPECT_EQ(GetStockObject(BLACK_PEN), GetCurrentObject(context, OBJ_PEN));
    EXPECT_EQ(GetStockObject(WHITE_BRUSH), GetCurrentObject(context, OBJ_BRUSH));
    EXPECT_EQ(96, GetDeviceCaps(context, LOGPIXELSX));
    EXPECT_EQ(32, GetDeviceCaps(context, BITSPIXEL));
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), GetDeviceCaps(context, HORZRES));
}

TEST(Context, SavedStatesComeBackByLevelAndFromTheLast)
{
    const Memory context;
    SetTextColor(context, 1);
    EXPECT_EQ(1, SaveDC(context));
    SetTextColor(context, 2);
    EXPECT_EQ(2, SaveDC(context));
    EXPECT_EQ(2u, SetTextColor(context, 3));
    EXPECT_EQ(3, SaveDC(context));
    EXPECT_FALSE(RestoreDC(context, 4));
    EXPECT_FALSE(RestoreDC(context, -4));
    EXPECT_TRUE(RestoreDC(context, -1));
    EXPECT_EQ(3u, GetTextColor(context));
    EXPECT_TRUE(RestoreDC(context, 1));
    EXPECT_EQ(1u, GetTextColor(context));
    EXPECT_FALSE(RestoreDC(context, -1));
}

TEST(Context, OriginsMoveWhatIsDrawnAndTheClipBox)
{
    const Memory context;
    POINT former{9, 9};
    EXPECT_TRUE(SetViewportOrgEx(context, 10, 20, &former));
    EXPECT_EQ(0, former.x);
    EXPECT_TRUE(SetWindowOrgEx(context, 1, 2, nullptr));
    POINT point{5, 5};
    EXPECT_TRUE(LPtoDP(context, &point, 1));
    EXPECT_EQ(14, point.x);
    EXPECT_EQ(23, point.y);
    EXPECT_TRUE(DPtoLP(context, &point, 1));
    EXPECT_EQ(5, point.x);
    EXPECT_EQ((Box{-9, -18, 91, 62}), context.Clip());
    EXPECT_TRUE(OffsetViewportOrgEx(context, 1, 1, &former));
    EXPECT_EQ(10, former.x);
}

TEST(Context, WrongModesAndHandlesChangeNothing)
{
    const Memory context;
    EXPECT_EQ(0, SetBkMode(context, 77));
    EXPECT_EQ(0, SetROP2(context, 99));
    EXPECT_EQ(0, SetPolyFillMode(context, 0));
    EXPECT_EQ(0, SetStretchBltMode(context, 5));
    EXPECT_EQ(BLACKONWHITE, SetStretchBltMode(context, HALFTONE));
    EXPECT_EQ(HALFTONE, SetStretchBltMode(context, COLORONCOLOR));
    EXPECT_EQ(OPAQUE, GetBkMode(context));
    EXPECT_EQ(CLR_INVALID, SetTextColor(nullptr, 1));
    EXPECT_EQ(0, SaveDC(nullptr));
    EXPECT_EQ(nullptr, SelectObject(context, nullptr));
    EXPECT_EQ(nullptr, SelectObject(nullptr, GetStockObject(BLACK_PEN)));
    const HDC gone = CreateCompatibleDC(nullptr);
    EXPECT_TRUE(DeleteDC(gone));
    EXPECT_FALSE(DeleteDC(gone));
    EXPECT_FALSE(LineTo(gone, 1, 1));
}

TEST(Objects, TellWhatTheyWereMadeOf)
{
    LOGPEN pen{};
    const HPEN dashed = CreatePen(PS_DASH, -3, RGB(1, 2, 3));
    EXPECT_EQ(16, GetObjectA(dashed, sizeof pen, &pen));
    EXPECT_EQ(std::tuple(UINT{PS_DASH}, LONG{3}, RGB(1, 2, 3)), std::tuple(pen.lopnStyle, pen.lopnWidth.x, pen.lopnColor));
    LOGBRUSH brush{};
    const HBRUSH hatched = CreateHatchBrush(HS_CROSS, RGB(4, 5, 6));
    EXPECT_EQ(16, GetObjectA(hatched, sizeof brush, &brush));
    EXPECT_EQ(std::tuple(UINT{BS_HATCHED}, RGB(4, 5, 6), ULONG_PTR{HS_CROSS}), std::tuple(brush.lbStyle, brush.lbColor, brush.lbHatch));
    const HFONT font = CreateFontA(-20, 0, 0, 0, FW_BOLD, TRUE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, "Some Face");
    LOGFONTA narrow{};
    EXPECT_EQ(60, GetObjectA(font, sizeof narrow, &narrow));
    EXPECT_EQ(std::tuple(LONG{-20}, LONG{FW_BOLD}, 1), std::tuple(narrow.lfHeight, narrow.lfWeight, static_cast<int>(narrow.lfItalic)));
    EXPECT_STREQ("Some Face", narrow.lfFaceName);
    LOGFONTW wide{};
    EXPECT_EQ(92, GetObjectW(font, sizeof wide, &wide));
    EXPECT_EQ('F', wide.lfFaceName[5]);
    EXPECT_EQ(std::tuple(DWORD{OBJ_PEN}, DWORD{OBJ_BRUSH}, DWORD{OBJ_FONT}),
              std::tuple(GetObjectType(dashed), GetObjectType(hatched), GetObjectType(font)));
    EXPECT_EQ(nullptr, CreateHatchBrush(77, 0));
    EXPECT_TRUE(DeleteObject(dashed));
    EXPECT_FALSE(DeleteObject(dashed));
    EXPECT_TRUE(DeleteObject(hatched));
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_TRUE(DeleteObject(GetStockObject(BLACK_PEN)));
    EXPECT_EQ(DWORD{OBJ_PEN}, GetObjectType(GetStockObject(BLACK_PEN)));
    EXPECT_FALSE(DeleteObject(nullptr));
}

TEST(Objects, ABitmapIsInOneContextAtATime)
{
    const Memory context;
    const HDC other = CreateCompatibleDC(context);
    EXPECT_EQ(nullptr, SelectObject(other, context.Bitmap()));
    EXPECT_EQ(context.Bitmap(), GetCurrentObject(context, OBJ_BITMAP));
    DeleteDC(other);
}

TEST_P(CombinedRegion, HasTheKindAndTheBox)
{
    const Combination& row = GetParam();
    const HRGN left = RegionOf(row.left);
    const HRGN right = RegionOf(row.right);
    const HRGN result = CreateRectRgn(0, 0, 0, 0);
    RECT box{};
    EXPECT_EQ(row.kind, CombineRgn(result, left, right, row.mode));
    EXPECT_EQ(row.kind, GetRgnBox(result, &box));
    EXPECT_EQ(row.box, Numbers(box));
    // The result may be one of those that it is made of.
    EXPECT_EQ(row.kind, CombineRgn(left, left, right, row.mode));
    EXPECT_TRUE(EqualRgn(left, result));
    for (const HRGN region : {left, right, result})
        DeleteObject(region);
}

INSTANTIATE_TEST_SUITE_P(, CombinedRegion,
                         testing::Values(Combination{"Common", {0, 0, 10, 10}, {5, 5, 20, 20}, RGN_AND, SIMPLEREGION, {5, 5, 10, 10}},
                                         Combination{
                                             "CornersSwapped", {10, 10, 0, 0}, {5, 5, 20, 20}, RGN_AND, SIMPLEREGION, {5, 5, 10, 10}},
                                         Combination{"Apart", {0, 0, 10, 10}, {10, 0, 20, 10}, RGN_AND, NULLREGION, {0, 0, 0, 0}},
                                         Combination{"Both", {0, 0, 10, 10}, {5, 5, 20, 20}, RGN_OR, COMPLEXREGION, {0, 0, 20, 20}},
                                         Combination{"SideBySide", {0, 0, 10, 10}, {10, 0, 20, 10}, RGN_OR, SIMPLEREGION, {0, 0, 20, 10}},
                                         Combination{"OnTop", {0, 0, 10, 10}, {0, 10, 10, 20}, RGN_OR, SIMPLEREGION, {0, 0, 10, 20}},
                                         Combination{"Inside", {0, 0, 10, 10}, {2, 2, 4, 4}, RGN_OR, SIMPLEREGION, {0, 0, 10, 10}},
                                         Combination{"Either", {0, 0, 10, 10}, {0, 0, 10, 5}, RGN_XOR, SIMPLEREGION, {0, 5, 10, 10}},
                                         Combination{"Nothing", {0, 0, 10, 10}, {0, 0, 10, 10}, RGN_XOR, NULLREGION, {0, 0, 0, 0}},
                                         Combination{"Without", {0, 0, 10, 10}, {5, 5, 20, 20}, RGN_DIFF, COMPLEXREGION, {0, 0, 10, 10}},
                                         Combination{"Hole", {0, 0, 10, 10}, {2, 2, 4, 4}, RGN_DIFF, COMPLEXREGION, {0, 0, 10, 10}},
                                         Combination{"Half", {0, 0, 10, 10}, {0, 0, 5, 10}, RGN_DIFF, SIMPLEREGION, {5, 0, 10, 10}},
                                         Combination{"Copy", {0, 0, 10, 10}, {5, 5, 20, 20}, RGN_COPY, SIMPLEREGION, {0, 0, 10, 10}}),
                         RowName);

TEST(Region, AnEllipseLacksItsLastColumnAndRow)
{
    const HRGN ellipse = CreateEllipticRgn(0, 0, 40, 21);
    RECT box{};
    EXPECT_EQ(COMPLEXREGION, GetRgnBox(ellipse, &box));
    EXPECT_EQ((Box{0, 0, 39, 20}), Numbers(box));
    EXPECT_TRUE(PtInRegion(ellipse, 20, 10));
    EXPECT_FALSE(PtInRegion(ellipse, 1, 1));
    EXPECT_EQ(COMPLEXREGION, OffsetRgn(ellipse, 100, 0));
    EXPECT_FALSE(PtInRegion(ellipse, 20, 10));
    const RECT touched{110, 5, 111, 6};
    EXPECT_TRUE(RectInRegion(ellipse, &touched));
    EXPECT_TRUE(SetRectRgn(ellipse, 4, 4, 2, 2));
    EXPECT_EQ(SIMPLEREGION, GetRgnBox(ellipse, &box));
    EXPECT_EQ((Box{2, 2, 4, 4}), Numbers(box));
    DeleteObject(ellipse);
    EXPECT_EQ(ERROR, GetRgnBox(ellipse, &box));
    EXPECT_EQ(ERROR, CombineRgn(nullptr, nullptr, nullptr, RGN_AND));
}

TEST(Clip, IsTheRegionAndTheBitmap)
{
    const Memory context;
    EXPECT_EQ((Box{0, 0, 100, 80}), context.Clip());
    EXPECT_EQ(SIMPLEREGION, IntersectClipRect(context, 10, 10, 50, 40));
    EXPECT_EQ(SIMPLEREGION, ExcludeClipRect(context, 10, 10, 50, 20));
    EXPECT_EQ((Box{10, 20, 50, 40}), context.Clip());
    EXPECT_EQ(COMPLEXREGION, ExcludeClipRect(context, 20, 30, 30, 35));
    EXPECT_FALSE(PtVisible(context, 25, 32));
    EXPECT_TRUE(PtVisible(context, 12, 22));
    EXPECT_EQ(1, SaveDC(context));
    EXPECT_EQ(NULLREGION, ExcludeClipRect(context, 0, 0, 200, 200));
    EXPECT_TRUE(RestoreDC(context, 1));
    EXPECT_EQ(1u, SetPixel(context, 12, 22, 1));
    const HRGN region = CreateRectRgn(90, 70, 200, 200);
    EXPECT_EQ(SIMPLEREGION, SelectClipRgn(context, region));
    DeleteObject(region);
    EXPECT_EQ((Box{90, 70, 100, 80}), context.Clip());
    EXPECT_EQ(SIMPLEREGION, SelectClipRgn(context, nullptr));
    EXPECT_EQ((Box{0, 0, 100, 80}), context.Clip());
}

TEST(Shapes, TellWhetherTheyCouldBeDrawn)
{
    const Memory context;
    POINT points[] = {{0, 0}, {5, 5}, {0, 5}};
    EXPECT_TRUE(Polyline(context, points, 2));
    EXPECT_FALSE(Polyline(context, points, 1));
    EXPECT_FALSE(Polygon(context, points, 1));
    EXPECT_TRUE(PatBlt(context, 0, 0, 5, 5, BLACKNESS));
    EXPECT_FALSE(PatBlt(context, 0, 0, 5, 5, SRCCOPY));
    EXPECT_FALSE(DrawIcon(context, 0, 0, nullptr));
    EXPECT_EQ(RGB(1, 2, 3), SetPixel(context, 99, 79, RGB(1, 2, 3)));
    POINT former{};
    EXPECT_TRUE(MoveToEx(context, 3, 4, nullptr));
    EXPECT_TRUE(LineTo(context, 10, 12));
    EXPECT_TRUE(Rectangle(context, 0, 0, 5, 5));
    EXPECT_TRUE(MoveToEx(context, 0, 0, &former));
    EXPECT_EQ(std::tuple(10, 12), std::tuple(static_cast<int>(former.x), static_cast<int>(former.y)));
    RECT area{0, 0, 9, 9};
    EXPECT_FALSE(DrawFrameControl(context, &area, 99, 0));
    DrawPlate(context);
    EXPECT_EQ(1, SaveDC(context));
}

TEST_P(DrawnEdge, LeavesTheRest)
{
    const Memory context;
    RECT area{0, 0, 20, 20};
    EXPECT_TRUE(DrawEdge(context, &area, GetParam().edge, GetParam().flags));
    EXPECT_EQ(GetParam().rest, Numbers(area));
}

INSTANTIATE_TEST_SUITE_P(, DrawnEdge,
                         testing::Values(Edge{"Raised", EDGE_RAISED, BF_RECT | BF_ADJUST, {2, 2, 18, 18}},
                                         Edge{"Kept", EDGE_RAISED, BF_RECT, {0, 0, 20, 20}},
                                         Edge{"Outer", BDR_SUNKENOUTER, BF_RECT | BF_ADJUST, {1, 1, 19, 19}},
                                         Edge{"TwoSides", EDGE_ETCHED, BF_TOPLEFT | BF_ADJUST, {2, 2, 20, 20}},
                                         Edge{"Flat", EDGE_BUMP, BF_BOTTOM | BF_FLAT | BF_ADJUST, {0, 0, 20, 18}}),
                         RowName);
