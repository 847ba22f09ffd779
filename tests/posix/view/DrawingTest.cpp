// DrawingTest.cpp: what a program paints, in pictures.
#include "platform/gdi/Plate.h"
#include "posix/view/Windows.h"

#include <kelgen/view/Picture.h>

#include <functional>
#include <sstream>

using namespace kelgen;
using namespace kelgen::test;

namespace {

using Paint = std::function<void(HWND, HDC, const RECT&)>;

Paint& Painter()
{
    static Paint paint;
    return paint;
}

LRESULT CALLBACK PaintedProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_PAINT)
        return DefWindowProcW(window, message, wParam, lParam);
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    if (Painter())
        Painter()(window, context, paint.rcPaint);
    EndPaint(window, &paint);
    return 0;
}

/// A shown window of 320 by 190 pixels, painted by a function.
class Painted
{
public:
    explicit Painted(Paint paint, HBRUSH background = GetSysColorBrush(COLOR_WINDOW))
    {
        Painter() = std::move(paint);
        WNDCLASSW type{};
        type.lpfnWndProc = PaintedProcedure;
        type.hbrBackground = background;
        type.lpszClassName = Wide(u"Painted");
        RegisterClassW(&type);
        m_window =
            CreateWindowExW(0, Wide(u"Painted"), Wide(u""), WS_POPUP | WS_VISIBLE, 10, 10, 320, 190, nullptr, nullptr, nullptr, nullptr);
        Serve();
    }
    ~Painted()
    {
        DestroyWindow(m_window);
        Serve();
        UnregisterClassW(Wide(u"Painted"), nullptr);
        Painter() = nullptr;
    }
    Painted(const Painted&) = delete;
    Painted& operator=(const Painted&) = delete;

    operator HWND() const { return m_window; }
    const DrawnShapes& Shapes() const
    {
        const DesktopPicture picture = TakeDesktopPicture(m_window, 0);
        m_shapes = picture.windows.at(0).drawn;
        static const DrawnShapes none;
        return m_shapes ? *m_shapes : none;
    }
    std::string Svg() const
    {
        std::ostringstream out;
        view::WriteSvg(out, m_window);
        return out.str();
    }

private:
    HWND m_window = nullptr;
    mutable std::shared_ptr<const DrawnShapes> m_shapes;
};

void FillAll(HWND window, HDC context, COLORREF color)
{
    RECT area;
    GetClientRect(window, &area);
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(context, &area, brush);
    DeleteObject(brush);
}

}  // namespace

TEST(Drawing, ShowsThePlateAsTheFileSays)
{
    const Painted window([](HWND, HDC context, const RECT&) { DrawPlate(context); });
    KELGEN_EXPECT_SVG("plate", window);
    const std::string once = window.Svg();
    InvalidateRect(window, nullptr, TRUE);
    Serve();
    // The same drawing over itself is the same picture.
    EXPECT_EQ(once, window.Svg());
    EXPECT_NE(std::string::npos, once.find("&lt;&amp;&gt;"));
    // What an element refers to stands before it.
    for (std::size_t at = once.find("url(#"); at != std::string::npos; at = once.find("url(#", at + 1)) {
        const std::string id = once.substr(at + 5, once.find(')', at) - at - 5);
        EXPECT_LT(once.find("id=\"" + id + "\""), at) << id;
    }
}

TEST(Drawing, ShowsNothingOfAWindowThatDrawsNothing)
{
    const Painted window(nullptr);
    EXPECT_TRUE(window.Shapes().empty());
}

TEST(Drawing, TheClassBrushIsShownAndFillsCoverWhatIsBelow)
{
    const HBRUSH green = CreateSolidBrush(RGB(0, 255, 0));
    const Painted window(nullptr, green);
    ASSERT_EQ(1u, window.Shapes().size());
    EXPECT_EQ(RGB(0, 255, 0), window.Shapes()[0].fillColor);
    const HDC context = GetDC(window);
    for (int i = 0; i < 10; ++i)
        Rectangle(context, i, i, 50, 50);
    EXPECT_EQ(11u, window.Shapes().size());
    FillAll(window, context, RGB(1, 2, 3));
    EXPECT_EQ(1u, window.Shapes().size());
    EXPECT_EQ(1, ReleaseDC(window, context));
    EXPECT_EQ(0, ReleaseDC(window, context));
    DeleteObject(green);
}

TEST(Drawing, PaintingKeepsToWhatWasInvalidated)
{
    RECT painted{};
    const Painted window([&](HWND self, HDC context, const RECT& area) {
        painted = area;
        FillAll(self, context, RGB(static_cast<BYTE>(area.left), 0, 0));
    });
    const RECT part{10, 20, 30, 40};
    InvalidateRect(window, &part, FALSE);
    Serve();
    EXPECT_TRUE(EqualRect(&part, &painted));
    ASSERT_EQ(2u, window.Shapes().size());
    EXPECT_TRUE(EqualRect(&part, &window.Shapes()[1].box));
    ValidateRect(window, nullptr);
    PAINTSTRUCT nothing;
    BeginPaint(window, &nothing);
    FillAll(window, nothing.hdc, RGB(9, 9, 9));
    EndPaint(window, &nothing);
    EXPECT_EQ(2u, window.Shapes().size());
}

TEST(Drawing, HiddenWindowsKeepWhatTheyHadAndNumbersAreBounded)
{
    const Painted window(nullptr);
    const HDC context = GetDC(window);
    for (int i = 0; i < 20'000; ++i)
        Rectangle(context, i % 300, i % 150, i % 300 + 5, i % 150 + 5);
    EXPECT_LE(window.Shapes().size(), 4000u);
    EXPECT_GE(window.Shapes().size(), 3000u);
    FillAll(window, context, 0);
    for (int x = 0; x < 300; ++x)
        SetPixel(context, x, 5, RGB(255, 0, 0));
    // A row of pixels is one shape.
    EXPECT_EQ(2u, window.Shapes().size());
    const std::vector<POINT> many(16'000);
    for (int i = 0; i < 10; ++i)
        Polyline(context, many.data(), 16'000);
    EXPECT_LE(window.Shapes().size(), 6u);
    FillAll(window, context, 0);
    ShowWindow(window, SW_HIDE);
    Rectangle(context, 0, 0, 5, 5);
    ShowWindow(window, SW_SHOW);
    EXPECT_EQ(1u, window.Shapes().size());
    ReleaseDC(window, context);
}

TEST(Drawing, PixelsOfLongBrokenLinesAreCountedFarther)
{
    const Painted window(nullptr);
    const HDC context = GetDC(window);
    FillAll(window, context, 0);
    // Together they are longer than a pixel's number: from the left to the right and back, and down through the window at last.
    constexpr LONG kFar = 0x7FFFFFF;
    std::vector<POINT> points;
    for (int i = 0; i < 20; ++i)
        points.push_back({i % 2 ? kFar : -kFar, -10});
    points.push_back({100, -10});
    points.push_back({100, 100});
    const HGDIOBJ former = SelectObject(context, CreatePen(PS_DASH, 1, RGB(0, 0, 255)));
    SetBkMode(context, TRANSPARENT);
    Polyline(context, points.data(), static_cast<int>(points.size()));
    int ink = 0;
    for (int y = 0; y < 48; ++y)
        ink += GetPixel(context, 100, y) == RGB(0, 0, 255);
    EXPECT_EQ(36, ink);
    DeleteObject(SelectObject(context, former));
    ReleaseDC(window, context);
}

TEST(Drawing, CopiesWithinAWindowAndInvertsTwice)
{
    const Painted window(nullptr);
    const HDC context = GetDC(window);
    FillAll(window, context, 0);
    const RECT box{10, 10, 20, 20};
    FillRect(context, &box, GetSysColorBrush(COLOR_WINDOW));
    EXPECT_TRUE(BitBlt(context, 100, 100, 30, 30, context, 0, 0, SRCCOPY));
    // The ground of the copied part, cut to it, and the box.
    ASSERT_EQ(4u, window.Shapes().size());
    EXPECT_EQ(110, window.Shapes()[3].box.left);
    EXPECT_FALSE(BitBlt(context, 0, 0, 5, 5, context, 0, 0, 0x00EE0086));
    EXPECT_FALSE(StretchBlt(context, 0, 0, -5, 5, context, 0, 0, 5, 5, SRCCOPY)) << "mirrored";
    const std::size_t before = window.Shapes().size();
    DrawFocusRect(context, &box);
    EXPECT_EQ(before + 1, window.Shapes().size());
    DrawFocusRect(context, &box);
    EXPECT_EQ(before, window.Shapes().size());
    ReleaseDC(window, context);
}

namespace {

std::string DesktopSvg()
{
    std::ostringstream out;
    view::WriteSvg(out);
    return out.str();
}

WNDPROC g_before = nullptr;
std::string g_seen;

/// Writes into what it is asked to draw, and at WM_APP looks at the desktop and closes the menu.
LRESULT CALLBACK DrawOwn(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DRAWITEM) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        const std::string text = (item.itemState & ODS_SELECTED ? "chosen " : "own ") + std::to_string(item.itemData);
        TextOutA(item.hDC, item.rcItem.left, item.rcItem.top, text.c_str(), static_cast<int>(text.size()));
        return TRUE;
    }
    if (message == WM_APP) {
        g_seen = DesktopSvg();
        EndMenu();
    }
    return CallWindowProcW(g_before, window, message, wParam, lParam);
}

bool Has(const std::string& text, const char* part)
{
    return text.find(part) != text.npos;
}

}  // namespace

TEST(Drawing, OwnersDrawItemsOfListViewsComboBoxesAndMenus)
{
    const Frame frame(u"Owner");
    g_before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(frame, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DrawOwn)));
    const HWND list = AddChild(frame, u"SysListView32", u"", LVS_REPORT | LVS_OWNERDRAWFIXED, 1, {10, 10, 150, 100});
    char name[] = "its name";
    LVITEMA item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.pszText = name;
    item.lParam = 70;
    SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    const HWND combo = AddChild(frame, u"ComboBox", u"", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, 2, {160, 10, 300, 150});
    SendMessageA(combo, CB_ADDSTRING, 0, 80);
    SendMessageA(combo, CB_SETCURSEL, 0, 0);
    Serve();
    const std::string closed = DesktopSvg();
    EXPECT_TRUE(Has(closed, ">own 70<") && Has(closed, ">own 80<"));
    EXPECT_TRUE(Has(closed, "role=\"gridcell\" aria-label=\"its name\"") && !Has(closed, ">its name<"));
    SendMessageA(combo, CB_SHOWDROPDOWN, TRUE, 0);
    Serve();
    EXPECT_TRUE(Has(DesktopSvg(), ">chosen 80<"));
    SendMessageA(combo, CB_SHOWDROPDOWN, FALSE, 0);

    const HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_OWNERDRAW, 11, reinterpret_cast<LPCSTR>(91));
    AppendMenuA(menu, MF_OWNERDRAW, 12, reinterpret_cast<LPCSTR>(92));
    AppendMenuA(menu, MF_STRING, 13, "plain");
    PostMessageA(frame, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageA(frame, WM_APP, 0, 0);
    TrackPopupMenu(menu, 0, 200, 200, 0, frame, nullptr);
    EXPECT_TRUE(Has(g_seen, ">chosen 91<") && Has(g_seen, ">own 92<") && Has(g_seen, ">plain<"));
    EXPECT_TRUE(Has(g_seen, "<g transform=\"translate(200 200)\">"));
    DestroyMenu(menu);
}
