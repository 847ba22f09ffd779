// SvgDesktop.h: a picture of the desktop as elements of SVG.
#pragma once

#include <kelgen/platform/support/DesktopPicture.h>
#include <kelgen/view/internal/SvgText.h>

#include <string>
#include <string_view>
#include <vector>

namespace kelgen::view::detail {

/// What stands in the id of an element: a number that counts them, or the window's handle.
enum class EIds
{
    ordinal,
    handle,
};

/// Draws the windows of one picture, which outlives it.
class SvgDesktop
{
public:
    SvgDesktop(const DesktopPicture& picture, EIds ids);

    /// The places of the top-level windows in the picture, from the bottom of the z-order up.
    std::vector<std::size_t> FromBottom() const;
    /// The element of a top-level window with all that lies in it.
    std::string TopLevel(std::size_t window);
    /// The element of a window without those of the windows in it, which go to the end of the element that is its own last one.
    std::string Alone(std::size_t window);
    /// The places of the windows that are drawn in a window, from the bottom of the z-order up.
    std::vector<std::size_t> Within(std::size_t window) const;
    /// The elements of the open menus; empty without any.
    std::string Menus();
    std::string IdOf(std::size_t window) const;

private:
    void Window(std::size_t index, bool isAlone);
    void Frame(const WindowPicture& window);
    void Caption(const WindowPicture& window, int border);
    void CaptionButton(const char* name, int x, int y, int width, int height, const char* sign);
    void MenuBar(const WindowPicture& window);
    void ScrollBar(const ScrollBarPicture& bar, POINT origin, bool isControl);
    void Content(std::size_t index, bool isAlone);
    void Menu(std::size_t level);
    void MenuItem(const MenuItemPicture& item, const std::string& id);

    void Begin(std::size_t index);
    std::string RowFocus(const WindowPicture& window, const RowPicture& row) const;

    // Roles and names; in their own source.
    std::string Role(std::size_t index) const;
    std::string FrameRole(std::size_t index) const;
    bool IsNotice(std::size_t index) const;
    std::string Name(std::size_t index) const;
    std::u16string LabelBefore(std::size_t index) const;
    std::string DroppedList() const;
    int ComboOf(std::size_t index) const;
    std::string MenuName(std::size_t level) const;

    // What was painted; in its own source.
    void Shapes(const DrawnShapes* shapes, const std::string& id);
    void Colors(std::size_t index);

    // Of the controls; in their own source.
    void Control(const WindowPicture& window);
    void Button(const WindowPicture& window);
    void PushButton(const WindowPicture& window);
    void CheckOrRadio(const WindowPicture& window, bool isRadio);
    void GroupBox(const WindowPicture& window);
    void StaticLabel(const WindowPicture& window);
    void Sign(HANDLE image, int width, int height);
    void Edit(const WindowPicture& window);
    void List(const WindowPicture& window);
    void Combo(const WindowPicture& window);
    void ListView(const WindowPicture& window);
    void Headings(const WindowPicture& window);
    void RowMark(const WindowPicture& window, const RowPicture& row);
    void Thumb(const WindowPicture& window);

    const DesktopPicture& m_picture;
    EIds m_ids;
    std::vector<std::vector<std::size_t>> m_children;
    SvgText m_out;
};

inline constexpr std::u16string_view kComboList = u"ComboLBox";

/// An attribute with a blank before it; nothing without a value.
inline std::string Attribute(const char* name, const std::string& value)
{
    return value.empty() ? "" : std::string(" ") + name + "=\"" + value + '"';
}

inline const char* YesNo(bool is)
{
    return is ? "true" : "false";
}

/// What one of the system's signs means, which message boxes show; empty for any other icon.
const char* SignName(HANDLE image);

/// The role and the values of a scroll bar.
std::string ScrollBarRole(const ScrollBarPicture& bar);

/// Name and states of an item of a menu.
std::string ItemAttributes(const MenuItemPicture& item);

/// Whether the window cannot be used.
inline bool IsDisabled(const WindowPicture& window)
{
    return (window.style & WS_DISABLED) != 0;
}

/// The whole document; of one window with all that lies in it, it is as large as that.
std::string SvgDocument(const DesktopPicture& picture, bool isWindow);

}  // namespace kelgen::view::detail
