// SvgDesktop.cpp: windows in their order, their frames, and menus.
#include <kelgen/view/internal/SvgDesktop.h>

#include <kelgen/platform/support/DialogText.h>
#include <kelgen/platform/support/IconPicture.h>
#include <kelgen/view/internal/Page.h>

#include <algorithm>
#include <cstdio>

namespace kelgen::view::detail {

namespace {

constexpr int kCaption = 19;
constexpr int kSmallCaption = 16;
constexpr int kButton = 18;
constexpr int kEdge = 2;

bool HasCaption(const WindowPicture& window)
{
    return (window.style & WS_CAPTION) == WS_CAPTION;
}

bool IsMinimized(const WindowPicture& window)
{
    return (window.style & WS_MINIMIZE) != 0;
}

int BorderOf(const WindowPicture& window)
{
    const bool isModal = (window.exStyle & WS_EX_DLGMODALFRAME) != 0;
    if (isModal || (window.style & WS_DLGFRAME))
        return window.style & WS_THICKFRAME ? 4 : 3;
    if (window.style & WS_THICKFRAME)
        return 3;
    return (window.style & WS_BORDER) || (window.exStyle & WS_EX_STATICEDGE) ? 1 : 0;
}

}  // namespace

SvgDesktop::SvgDesktop(const DesktopPicture& picture, EIds ids) : m_picture(picture), m_ids(ids), m_children(picture.windows.size())
{
    for (std::size_t i = 0; i < picture.windows.size(); ++i)
        if (picture.windows[i].parent >= 0)
            m_children[static_cast<std::size_t>(picture.windows[i].parent)].push_back(i);
}

std::vector<std::size_t> SvgDesktop::FromBottom() const
{
    std::vector<std::size_t> places;
    for (std::size_t i = m_picture.windows.size(); i-- > 0;)
        if (m_picture.windows[i].parent < 0 && !IsMinimized(m_picture.windows[i]))
            places.push_back(i);
    return places;
}

std::string SvgDesktop::TopLevel(std::size_t window)
{
    Window(window, false);
    return m_out.Take();
}

std::string SvgDesktop::Alone(std::size_t window)
{
    Window(window, true);
    return m_out.Take();
}

std::vector<std::size_t> SvgDesktop::Within(std::size_t window) const
{
    if (IsMinimized(m_picture.windows[window]))
        return {};
    return {m_children[window].rbegin(), m_children[window].rend()};
}

std::string SvgDesktop::IdOf(std::size_t window) const
{
    if (m_ids == EIds::ordinal)
        return "w" + std::to_string(window + 1);
    char text[24];
    std::snprintf(text, sizeof text, "w%llx",
                  static_cast<unsigned long long>(reinterpret_cast<ULONG_PTR>(m_picture.windows[window].handle)));
    return text;
}

void SvgDesktop::Begin(std::size_t index)
{
    const WindowPicture& window = m_picture.windows[index];
    POINT origin{};
    if (window.parent >= 0) {
        const RECT& around = m_picture.windows[static_cast<std::size_t>(window.parent)].client;
        origin = {around.left, around.top};
    }
    m_out << "<svg id=\"" << IdOf(index) << "\" x=\"" << window.window.left - origin.x << "\" y=\"" << window.window.top - origin.y
          << "\" width=\"" << std::max(WidthOf(window.window), 0) << "\" height=\"" << std::max(HeightOf(window.window), 0) << '"'
          << Role(index) << Attribute("aria-label", Name(index));
    if (IsDisabled(window))
        m_out << " aria-disabled=\"true\"";
    if (window.hasFocus)
        m_out << " data-focus=\"true\"";
    m_out << ">";
}

void SvgDesktop::Window(std::size_t index, bool isAlone)
{
    const WindowPicture& window = m_picture.windows[index];
    Begin(index);
    Frame(window);
    if (!IsMinimized(window)) {
        m_out << "<svg x=\"" << window.client.left - window.window.left << "\" y=\"" << window.client.top - window.window.top
              << "\" width=\"" << std::max(WidthOf(window.client), 0) << "\" height=\"" << std::max(HeightOf(window.client), 0)
              << "\" role=\"none\">";
        Content(index, isAlone);
        m_out << "</svg>";
    }
    m_out << "</svg>";
}

void SvgDesktop::Content(std::size_t index, bool isAlone)
{
    const WindowPicture& window = m_picture.windows[index];
    const int width = WidthOf(window.client);
    const int height = HeightOf(window.client);
    if (window.control.kind != EControlKind::none) {
        Colors(index);
        Control(window);
    } else {
        const bool isDialog = window.className == u"#32770" || window.parent >= 0;
        m_out.Rectangle(window.className == u"MDIClient" ? "work" : isDialog ? "face" : "field", 0, 0, width, height);
    }
    Shapes(window.drawn.get(), IdOf(index));
    if (!isAlone)
        for (const std::size_t child : Within(index))
            Window(child, false);
}

void SvgDesktop::Frame(const WindowPicture& window)
{
    const int width = WidthOf(window.window);
    const int height = HeightOf(window.window);
    const int border = BorderOf(window);
    if (border > 1 || HasCaption(window)) {
        m_out.Rectangle("frame", 0, 0, width, height, window.parent < 0 ? 4 : 0);
    } else if (border == 1) {
        m_out.Rectangle("thin", 0, 0, width, height);
    }
    if (HasCaption(window) || IsMinimized(window))
        Caption(window, border);
    MenuBar(window);
    if (window.exStyle & WS_EX_CLIENTEDGE)
        m_out.Rectangle("sunken", window.client.left - window.window.left - kEdge, window.client.top - window.window.top - kEdge,
                        WidthOf(window.client) + 2 * kEdge, HeightOf(window.client) + 2 * kEdge);
    for (const int bar : {SB_HORZ, SB_VERT})
        ScrollBar(window.scrollBars[bar], {window.window.left, window.window.top}, false);
}

void SvgDesktop::Caption(const WindowPicture& window, int border)
{
    const bool isTool = (window.exStyle & WS_EX_TOOLWINDOW) != 0;
    const int height = isTool ? kSmallCaption : kCaption;
    const int width = WidthOf(window.window) - 2 * border;
    m_out.Rectangle(window.isActive ? "caption active" : "caption", border, border, width, height - 1, 2);
    int left = border + 6;
    if (window.hasIcon && (window.style & WS_SYSMENU) && !isTool) {
        if (const auto png = IconPng(window.icon); !png.empty())
            m_out.Image(left - 3, border + 3, 12, 12, png);
        else
            m_out.Rectangle("icon", left - 3, border + 3, 12, 12, 3);
        left += 13;
    }
    int right = border + width;
    if (window.style & WS_SYSMENU) {
        const int size = isTool ? kSmallCaption - 1 : kButton;
        right -= size;
        CaptionButton("Close", right, border, size, height - 1, "M5 5l7 7m0-7l-7 7");
        if (!isTool && (window.style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX))) {
            right -= size;
            const bool isMaximized = (window.style & WS_MAXIMIZE) != 0;
            CaptionButton(isMaximized ? "Restore" : "Maximize", right, border, size, height - 1,
                          isMaximized ? "M5 7h5v5h-5zm2 0v-2h5v5h-2" : "M5 5h7v7h-7z");
            right -= size;
            CaptionButton("Minimize", right, border, size, height - 1, "M5 12h7");
        }
    }
    m_out.Text(window.isActive ? "title active" : "title", left, border + (height - 1 - kDialogTextHeight) / 2,
               Fitted(window.text, right - left - 4));
}

void SvgDesktop::CaptionButton(const char* name, int x, int y, int width, int height, const char* sign)
{
    m_out << "<svg role=\"button\" aria-label=\"" << name << "\" x=\"" << x << "\" y=\"" << y << "\" width=\"" << width << "\" height=\""
          << height << "\">";
    m_out.Rectangle("plain", 0, 0, width, height);
    m_out.Path("sign", sign);
    m_out << "</svg>";
}

void SvgDesktop::MenuBar(const WindowPicture& window)
{
    const std::string bar = IdOf(static_cast<std::size_t>(&window - m_picture.windows.data()));
    if (window.bar.items.empty())
        return;
    const int x = window.bar.place.left - window.window.left;
    const int y = window.bar.place.top - window.window.top;
    m_out << "<svg role=\"menubar\" x=\"" << x << "\" y=\"" << y << "\" width=\"" << WidthOf(window.bar.place) << "\" height=\""
          << HeightOf(window.bar.place) << "\">";
    m_out.Rectangle("face", 0, 0, WidthOf(window.bar.place), HeightOf(window.bar.place));
    int number = 0;
    for (const MenuItemPicture& item : window.bar.items) {
        const int left = item.place.left - window.bar.place.left;
        const int top = item.place.top - window.bar.place.top;
        const bool isOpen = (item.state & MFS_HILITE) != 0;
        m_out << "<g id=\"" << bar << "-m" << ++number << "\" role=\"menuitem\"" << ItemAttributes(item)
              << (isOpen ? " data-focus=\"menu\"" : "") << ">";
        m_out.Rectangle(isOpen ? "chosen" : "plain", left, top, WidthOf(item.place), HeightOf(item.place));
        m_out.Label(isOpen ? "text chosen" : (item.state & MFS_GRAYED) ? "text off" : "text", left + 7, top + 2, item.text);
        m_out << "</g>";
    }
    m_out << "</svg>";
}

/// @p origin is where the element's coordinates start on the screen.
void SvgDesktop::ScrollBar(const ScrollBarPicture& bar, POINT origin, bool isControl)
{
    if (IsRectEmpty(&bar.place))
        return;
    const int width = WidthOf(bar.place);
    const int height = HeightOf(bar.place);
    m_out << "<svg x=\"" << bar.place.left - origin.x << "\" y=\"" << bar.place.top - origin.y << "\" width=\"" << width << "\" height=\""
          << height << '"';
    // A control's element says so already.
    if (!isControl)
        m_out << ScrollBarRole(bar);
    m_out << ">";
    m_out.Rectangle("bar", 0, 0, width, height);
    const std::string sign = bar.isDisabled ? "arrow off" : "arrow";
    const int middle = (bar.isUpright ? width : height) / 2;
    const int length = bar.isUpright ? height : width;
    for (const bool isFirst : {true, false}) {
        const int tip = isFirst ? bar.arrow / 2 - 2 : length - bar.arrow / 2 + 2;
        const char* const rest = bar.isUpright ? isFirst ? "l4 4h-8z" : "l4 -4h-8z" : isFirst ? "l4 4v-8z" : "l-4 4v-8z";
        const int x = bar.isUpright ? middle : tip;
        const int y = bar.isUpright ? tip : middle;
        m_out.Path(sign, "M" + std::to_string(x) + " " + std::to_string(y) + rest);
    }
    const int thumb = bar.thumbEnd - bar.thumbStart;
    if (bar.isUpright)
        m_out.Rectangle("thumb", 2, bar.thumbStart, width - 4, thumb, 3);
    else
        m_out.Rectangle("thumb", bar.thumbStart, 2, thumb, height - 4, 3);
    m_out << "</svg>";
}

std::string SvgDesktop::Menus()
{
    for (std::size_t level = 0; level < m_picture.menus.size(); ++level)
        Menu(level);
    return m_out.Take();
}

void SvgDesktop::Menu(std::size_t level)
{
    const MenuPicture& menu = m_picture.menus[level];
    m_out << "<g role=\"menu\"" << Attribute("aria-label", MenuName(level)) << ">";
    m_out.Rectangle("popup", menu.place.left, menu.place.top, WidthOf(menu.place), HeightOf(menu.place), 3);
    for (std::size_t i = 0; i < menu.items.size(); ++i)
        MenuItem(menu.items[i], "m" + std::to_string(level + 1) + "-" + std::to_string(i + 1));
    if (menu.drawn) {
        m_out << "<g transform=\"translate(" << menu.place.left << ' ' << menu.place.top << ")\">";
        Shapes(menu.drawn.get(), "m" + std::to_string(level + 1));
        m_out << "</g>";
    }
    m_out << "</g>";
}

void SvgDesktop::MenuItem(const MenuItemPicture& item, const std::string& id)
{
    const int left = item.place.left;
    const int top = item.place.top;
    const bool isDrawnByOwner = (item.type & MFT_OWNERDRAW) != 0;
    if (item.type & MFT_SEPARATOR) {
        m_out << "<g role=\"separator\">";
        if (!isDrawnByOwner)
            m_out.Line("line", left + 4, top + 4, item.place.right - 4, top + 4);
        m_out << "</g>";
        return;
    }
    const bool isOff = (item.state & (MFS_GRAYED | MFS_DISABLED)) != 0;
    const bool isChosen = (item.state & MFS_HILITE) != 0;
    const bool isChecked = (item.state & MFS_CHECKED) != 0;
    const bool isRadio = (item.type & MFT_RADIOCHECK) != 0;
    const auto tabulator = item.text.find(u'\t');
    const std::u16string label = item.text.substr(0, tabulator);
    m_out << "<g id=\"" << id << "\" role=\""
          << (isRadio     ? "menuitemradio"
              : isChecked ? "menuitemcheckbox"
                          : "menuitem")
          << '"' << ItemAttributes(item) << (isRadio || isChecked ? Attribute("aria-checked", YesNo(isChecked)) : "")
          << (isChosen ? " data-focus=\"menu\"" : "") << ">";
    if (isDrawnByOwner) {
        m_out.Rectangle("plain", left, top, WidthOf(item.place), HeightOf(item.place));
        m_out << "</g>";
        return;
    }
    m_out.Rectangle(isChosen ? "chosen" : "plain", left, top, WidthOf(item.place), HeightOf(item.place), 2);
    const std::string style =
        std::string("text") + (isOff ? " off" : "") + (isChosen ? " chosen" : "") + (item.state & MFS_DEFAULT ? " bold" : "");
    if (isChecked && isRadio)
        m_out.Circle("dot", left + 9, top + 9, 3);
    else if (isChecked)
        m_out.Path("check", "M" + std::to_string(left + 5) + " " + std::to_string(top + 9) + "l3 3l5-6");
    m_out.Label(style, left + 20, top + 3, label);
    if (tabulator != label.npos) {
        const std::u16string key = item.text.substr(tabulator + 1);
        m_out.Text(style, item.place.right - 18 - DialogTextWidth(key), top + 3, key);
    }
    if (item.hasSubmenu)
        m_out.Path("arrow", "M" + std::to_string(item.place.right - 11) + " " + std::to_string(top + 5) + "l4 4l-4 4z");
    m_out << "</g>";
}

std::string SvgDocument(const DesktopPicture& picture, bool isWindow)
{
    RECT area{0, 0, picture.size.cx, picture.size.cy};
    if (isWindow)
        area = picture.windows.empty() ? RECT{} : picture.windows.front().window;
    SvgDesktop desktop(picture, EIds::ordinal);
    SvgText out;
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << WidthOf(area) << "\" height=\"" << HeightOf(area) << "\" viewBox=\""
        << area.left << " " << area.top << " " << WidthOf(area) << " " << HeightOf(area) << "\">\n<style>\n"
        << page::kStyle << "</style>\n";
    if (!isWindow)
        out.Rectangle("desktop", 0, 0, WidthOf(area), HeightOf(area));
    for (const std::size_t window : desktop.FromBottom())
        out << desktop.TopLevel(window) << "\n";
    out << desktop.Menus() << "</svg>\n";
    return out.Take();
}

}  // namespace kelgen::view::detail
