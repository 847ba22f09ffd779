// SvgNames.cpp: roles, names and states, by which screen readers and tests find what a picture shows.
#include <kelgen/view/internal/SvgDesktop.h>

#include <kelgen/platform/support/DialogText.h>

#include <algorithm>

namespace kelgen::view::detail {

namespace {

constexpr DWORD kSeveral = LBS_MULTIPLESEL | LBS_EXTENDEDSEL;

/// "Name:" names an edit control as "Name".
std::u16string WithoutColon(std::u16string name)
{
    while (!name.empty() && (name.back() == u':' || name.back() == u' '))
        name.pop_back();
    return name;
}

/// The letter that presses a button with the Alt key, and the Enter key of the default one.
std::string ButtonKeys(const WindowPicture& window)
{
    std::string keys;
    int place = -1;
    const std::u16string text = WithoutMnemonic(window.text, &place);
    if (place >= 0 && place < static_cast<int>(text.size()))
        keys = "Alt+" + Escaped(text.substr(static_cast<std::size_t>(place), 1));
    if ((static_cast<DWORD>(window.style) & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
        keys += keys.empty() ? "Enter" : " Enter";
    return Attribute("aria-keyshortcuts", keys);
}

bool IsPushButton(const WindowPicture& window)
{
    const DWORD type = static_cast<DWORD>(window.style) & BS_TYPEMASK;
    return window.control.kind == EControlKind::button && (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON);
}

}  // namespace

const char* SignName(HANDLE image)
{
    static constexpr struct
    {
        WORD number;
        const char* name;
    } kSigns[] = {{32513, "Error"}, {32514, "Question"}, {32515, "Warning"}, {32516, "Information"}};
    for (const auto& sign : kSigns)
        if (image && image == LoadIconW(nullptr, MAKEINTRESOURCEW(sign.number)))
            return sign.name;
    return "";
}

std::string ScrollBarRole(const ScrollBarPicture& bar)
{
    return Attribute("role", "scrollbar") + Attribute("aria-orientation", bar.isUpright ? "vertical" : "horizontal") +
           Attribute("aria-valuemin", std::to_string(bar.least)) + Attribute("aria-valuemax", std::to_string(bar.most)) +
           Attribute("aria-valuenow", std::to_string(bar.position));
}

std::string ItemAttributes(const MenuItemPicture& item)
{
    const bool isOff = (item.state & (MFS_GRAYED | MFS_DISABLED)) != 0;
    return Attribute("aria-label", Escaped(WithoutMnemonic(item.text.substr(0, item.text.find(u'\t'))))) +
           Attribute("aria-disabled", isOff ? "true" : "") + Attribute("aria-haspopup", item.hasSubmenu ? "true" : "");
}

std::string SvgDesktop::Role(std::size_t index) const
{
    const WindowPicture& window = m_picture.windows[index];
    const ControlPicture& control = window.control;
    const auto style = static_cast<DWORD>(window.style);
    switch (control.kind) {
    case EControlKind::button: {
        const bool isMixed = (control.bits & 3) == BST_INDETERMINATE;
        const std::string checked = Attribute("aria-checked", isMixed ? "mixed" : YesNo((control.bits & 3) != 0));
        switch (style & BS_TYPEMASK) {
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
        case BS_3STATE:
        case BS_AUTO3STATE:
            return Attribute("role", "checkbox") + checked;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return Attribute("role", "radio") + checked;
        case BS_GROUPBOX:
            return Attribute("role", "group");
        default:
            return Attribute("role", "button") + ButtonKeys(window);
        }
    }
    case EControlKind::label:
        return *SignName(control.image) ? Attribute("role", "img") : "";
    case EControlKind::edit:
        return Attribute("role", "textbox") + Attribute("aria-multiline", style & ES_MULTILINE ? "true" : "") +
               Attribute("aria-readonly", style & ES_READONLY ? "true" : "");
    case EControlKind::list:
        return Attribute("role", "listbox") + Attribute("aria-multiselectable", style & kSeveral ? "true" : "");
    case EControlKind::combo:
        return Attribute("role", "combobox") + Attribute("aria-expanded", YesNo(control.isDropped)) +
               Attribute("aria-controls", control.isDropped ? DroppedList() : "") + Attribute("aria-description", Escaped(control.text));
    case EControlKind::scrollBar:
        return ScrollBarRole(window.scrollBars[SB_CTL]);
    case EControlKind::listView:
        return Attribute("role", "grid") + Attribute("aria-rowcount", std::to_string(control.rowCount + (control.headerHeight ? 1 : 0))) +
               Attribute("aria-multiselectable", style & LVS_SINGLESEL ? "" : "true");
    default:
        return FrameRole(index);
    }
}

/// The text of the label that stands before a control in the order of the Tab key.
std::u16string SvgDesktop::LabelBefore(std::size_t index) const
{
    const int parent = m_picture.windows[index].parent;
    if (parent < 0)
        return {};
    const auto& siblings = m_children[static_cast<std::size_t>(parent)];
    const auto place = std::find(siblings.begin(), siblings.end(), index);
    if (place == siblings.begin() || place == siblings.end())
        return {};
    const WindowPicture& before = m_picture.windows[*(place - 1)];
    return before.control.kind == EControlKind::label ? WithoutColon(WithoutMnemonic(before.text)) : std::u16string();
}

/// A box of nothing but texts and buttons tells something: what it tells is described by its texts.
bool SvgDesktop::IsNotice(std::size_t index) const
{
    const auto& children = m_children[index];
    const auto hasKind = [this](std::size_t child) {
        const WindowPicture& window = m_picture.windows[child];
        return window.control.kind == EControlKind::label || IsPushButton(window);
    };
    return !children.empty() && IsPushButton(m_picture.windows[children.back()]) && std::ranges::all_of(children, hasKind);
}

std::string SvgDesktop::FrameRole(std::size_t index) const
{
    const WindowPicture& window = m_picture.windows[index];
    if (window.parent >= 0 && (window.style & WS_CAPTION) != WS_CAPTION)
        return Attribute("role", "group");
    if (window.className != u"#32770")
        return Attribute("role", "region");
    const auto isOwner = [&window](const WindowPicture& other) { return window.owner && other.handle == window.owner; };
    const auto owner = std::ranges::find_if(m_picture.windows, isOwner);
    const bool isModal = owner != m_picture.windows.end() && IsDisabled(*owner);
    const bool isNotice = (window.exStyle & WS_EX_DLGMODALFRAME) && IsNotice(index);
    std::string texts;
    if (isNotice)
        for (const std::size_t child : m_children[index])
            if (m_picture.windows[child].control.kind == EControlKind::label && !m_picture.windows[child].control.image)
                texts += (texts.empty() ? "" : " ") + IdOf(child);
    return Attribute("role", isNotice ? "alertdialog" : "dialog") + Attribute("aria-modal", isModal ? "true" : "") +
           Attribute("aria-describedby", texts);
}

/// The id of the list that a combo box has opened.
std::string SvgDesktop::DroppedList() const
{
    for (std::size_t i = 0; i < m_picture.windows.size(); ++i)
        if (m_picture.windows[i].parent < 0 && m_picture.windows[i].className == kComboList)
            return IdOf(i);
    return {};
}

/// The combo box that a list or an edit control is part of; -1 for none.
int SvgDesktop::ComboOf(std::size_t index) const
{
    const WindowPicture& window = m_picture.windows[index];
    if (window.parent >= 0)
        return m_picture.windows[static_cast<std::size_t>(window.parent)].control.kind == EControlKind::combo ? window.parent : -1;
    if (window.className != kComboList)
        return -1;
    const auto isOpen = [](const WindowPicture& other) { return other.control.kind == EControlKind::combo && other.control.isDropped; };
    const auto combo = std::ranges::find_if(m_picture.windows, isOpen);
    return combo == m_picture.windows.end() ? -1 : static_cast<int>(combo - m_picture.windows.begin());
}

std::string SvgDesktop::Name(std::size_t index) const
{
    const WindowPicture& window = m_picture.windows[index];
    switch (window.control.kind) {
    case EControlKind::button:
        return Escaped(WithoutMnemonic(window.text));
    case EControlKind::label:
        return SignName(window.control.image);
    case EControlKind::none:
        return Escaped(window.text);
    default:
        if (const int combo = ComboOf(index); combo >= 0)
            return Name(static_cast<std::size_t>(combo));
        return Escaped(LabelBefore(index));
    }
}

/// The item that has opened the menu.
std::string SvgDesktop::MenuName(std::size_t level) const
{
    const auto nameIn = [](const std::vector<MenuItemPicture>& items) {
        for (const MenuItemPicture& item : items)
            if ((item.state & MFS_HILITE) && item.hasSubmenu)
                return Escaped(WithoutMnemonic(item.text));
        return std::string();
    };
    if (level > 0)
        return nameIn(m_picture.menus[level - 1].items);
    for (const WindowPicture& window : m_picture.windows)
        if (std::string name = nameIn(window.bar.items); !name.empty())
            return name;
    return {};
}

}  // namespace kelgen::view::detail
