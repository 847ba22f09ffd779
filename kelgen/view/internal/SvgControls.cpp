// SvgControls.cpp: buttons, labels, edit controls and lists.
#include <kelgen/view/internal/SvgDesktop.h>

#include <kelgen/platform/support/DialogText.h>
#include <kelgen/platform/support/IconPicture.h>

#include <algorithm>

namespace kelgen::view::detail {

namespace {

constexpr int kBox = 13;  // a check box's or a radio button's

std::string Style(const char* name, const WindowPicture& window)
{
    return std::string(name) + (IsDisabled(window) ? " off" : "");
}

int CentredTop(int height)
{
    return (height - kDialogTextHeight) / 2;
}

}  // namespace

void SvgDesktop::Control(const WindowPicture& window)
{
    switch (window.control.kind) {
    case EControlKind::button:
        return Button(window);
    case EControlKind::label:
        return StaticLabel(window);
    case EControlKind::edit:
        return Edit(window);
    case EControlKind::list:
        return List(window);
    case EControlKind::combo:
        return Combo(window);
    case EControlKind::listView:
        return ListView(window);
    case EControlKind::scrollBar:
        return ScrollBar(window.scrollBars[SB_CTL], {window.client.left, window.client.top}, true);
    default:
        return;
    }
}

void SvgDesktop::Button(const WindowPicture& window)
{
    switch (static_cast<DWORD>(window.style) & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        return CheckOrRadio(window, false);
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return CheckOrRadio(window, true);
    case BS_GROUPBOX:
        return GroupBox(window);
    case BS_OWNERDRAW:
        return window.drawn ? m_out.Rectangle("face", 0, 0, WidthOf(window.client), HeightOf(window.client)) : PushButton(window);
    default:
        return PushButton(window);
    }
}

void SvgDesktop::PushButton(const WindowPicture& window)
{
    const int width = WidthOf(window.client);
    const int height = HeightOf(window.client);
    const bool isDefault = (static_cast<DWORD>(window.style) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    m_out.Rectangle("face", 0, 0, width, height);
    m_out.Rectangle(window.control.bits & BST_PUSHED ? "button down"
                    : isDefault                      ? "button default"
                                                     : "button",
                    1, 1, width - 2, height - 2, 3);
    const int textWidth = DialogTextWidth(WithoutMnemonic(window.text));
    m_out.Label(Style("text", window), (width - textWidth) / 2, CentredTop(height), window.text);
    if (window.control.image)
        Sign(window.control.image, width, height);
    if (window.hasFocus)
        m_out.Rectangle("focus", 4, 4, width - 8, height - 8);
}

void SvgDesktop::CheckOrRadio(const WindowPicture& window, bool isRadio)
{
    const int width = WidthOf(window.client);
    const int height = HeightOf(window.client);
    const int top = (height - kBox) / 2;
    const bool isLeftText = (static_cast<DWORD>(window.style) & BS_LEFTTEXT) != 0;
    const int left = isLeftText ? width - kBox : 0;
    const UINT check = window.control.bits & 3;
    const std::string box = Style(window.control.bits & BST_PUSHED ? "box down" : "box", window);
    m_out.Rectangle("face", 0, 0, width, height);
    if (isRadio) {
        m_out.Circle(box, left + 6, top + 6, 6);
        if (check)
            m_out.Circle(Style("dot", window), left + 6, top + 6, 3);
    } else {
        m_out.Rectangle(box, left, top, kBox - 1, kBox - 1, 2);
        if (check == BST_CHECKED)
            m_out.Path(Style("check", window), "M" + std::to_string(left + 3) + " " + std::to_string(top + 6) + "l2 3l5-6");
        else if (check)
            m_out.Rectangle(Style("dot", window), left + 3, top + 3, 6, 6);
    }
    const int textLeft = isLeftText ? 0 : kBox + 4;
    m_out.Label(Style("text", window), textLeft, CentredTop(height), window.text);
    if (window.hasFocus)
        m_out.Rectangle("focus", textLeft - 2, CentredTop(height) - 1, DialogTextWidth(WithoutMnemonic(window.text)) + 4,
                        kDialogTextHeight + 2);
}

void SvgDesktop::GroupBox(const WindowPicture& window)
{
    const int width = WidthOf(window.client);
    const int height = HeightOf(window.client);
    m_out.Rectangle("group", 0, kDialogTextHeight / 2, width - 1, height - kDialogTextHeight / 2 - 1, 3);
    const int textWidth = DialogTextWidth(WithoutMnemonic(window.text));
    if (textWidth == 0)
        return;
    m_out.Rectangle("face", 7, 0, textWidth + 4, kDialogTextHeight);
    m_out.Label(Style("text", window), 9, 0, window.text);
}

/// An icon, or a sign for one without pixels.
void SvgDesktop::Sign(HANDLE image, int width, int height)
{
    if (const auto png = IconPng(static_cast<HICON>(image)); !png.empty())
        return m_out.Image(0, 0, width, height, png);
    const int size = std::min({width, height, 32});
    if (size < 6)
        return;
    const auto is = [image](WORD number) { return image == LoadIconW(nullptr, MAKEINTRESOURCEW(number)); };
    const bool isHand = is(32513);
    const bool isQuestion = is(32514);
    const bool isWarning = is(32515);
    const bool isNote = is(32516);
    const int middle = size / 2;
    const char* const style = isHand ? "sign-stop" : isWarning ? "sign-warning" : "sign-note";
    if (isHand || isQuestion || isWarning || isNote) {
        m_out.Circle(style, middle, middle, middle - 1);
        m_out.Text("sign-text", middle - 2, middle - 7, isHand ? u"\u00D7" : isQuestion ? u"?" : isWarning ? u"!" : u"i");
        return;
    }
    m_out.Rectangle("icon", 1, 1, size - 2, size - 2, 4);
}

void SvgDesktop::StaticLabel(const WindowPicture& window)
{
    const auto style = static_cast<DWORD>(window.style);
    const int width = WidthOf(window.client);
    const int height = HeightOf(window.client);
    const DWORD type = style & SS_TYPEMASK;
    switch (type) {
    case SS_ICON:
    case SS_BITMAP:
        if (window.control.image)
            Sign(window.control.image, width, height);
        return;
    case SS_BLACKRECT:
    case SS_GRAYRECT:
        return m_out.Rectangle("ink", 0, 0, width, height);
    case SS_WHITERECT:
        return m_out.Rectangle("field", 0, 0, width, height);
    case SS_BLACKFRAME:
    case SS_GRAYFRAME:
    case SS_WHITEFRAME:
    case SS_ETCHEDFRAME:
        return m_out.Rectangle("group", 0, 0, width - 1, height - 1);
    case SS_OWNERDRAW:
        return m_out.Rectangle("face", 0, 0, width, height);
    case SS_ETCHEDHORZ:
        return m_out.Line("line", 0, 0, width, 0);
    case SS_ETCHEDVERT:
        return m_out.Line("line", 0, 0, 0, height);
    default:
        break;
    }
    m_out.Rectangle("face", 0, 0, width, height);
    const bool isOneLine = type == SS_LEFTNOWORDWRAP || type == SS_SIMPLE;
    const auto lines =
        WrapDialogText(window.text, isOneLine ? 1 << 20 : width, static_cast<std::size_t>(std::max(height / kDialogTextHeight + 1, 1)));
    int top = style & SS_CENTERIMAGE ? CentredTop(height) : 0;
    for (const std::u16string& line : lines) {
        const int textWidth = DialogTextWidth(style & SS_NOPREFIX ? line : WithoutMnemonic(line));
        const int left = type == SS_CENTER ? (width - textWidth) / 2 : type == SS_RIGHT ? width - textWidth : 0;
        if (style & SS_NOPREFIX)
            m_out.Text(Style("text", window), left, top, line);
        else
            m_out.Label(Style("text", window), left, top, line);
        top += kDialogTextHeight;
    }
}

void SvgDesktop::Edit(const WindowPicture& window)
{
    const ControlPicture& control = window.control;
    const bool isGrey = IsDisabled(window) || (static_cast<DWORD>(window.style) & ES_READONLY);
    m_out.Rectangle(isGrey ? "face" : "field", 0, 0, WidthOf(window.client), HeightOf(window.client));
    const std::string style = Style("cells", window);
    const bool isOneLine = !(static_cast<DWORD>(window.style) & ES_MULTILINE);
    const int first = isOneLine ? std::max((HeightOf(window.client) - control.cellHeight) / 2, 0) : 0;
    int top = first;
    for (const LinePicture& line : control.lines) {
        const std::u16string_view text = line.text;
        const auto start = static_cast<std::size_t>(line.selectionStart);
        const auto end = static_cast<std::size_t>(line.selectionEnd);
        if (!window.hasFocus || start == end) {
            m_out.Cells(style, 1, top, text, control.cellWidth);
        } else {
            const int left = 1 + line.selectionStart * control.cellWidth;
            const int right = 1 + line.selectionEnd * control.cellWidth;
            m_out.Rectangle("chosen", left, top, right - left, control.cellHeight);
            m_out.Cells(style, 1, top, text.substr(0, start), control.cellWidth);
            m_out.Cells("cells chosen", left, top, text.substr(start, end - start), control.cellWidth);
            m_out.Cells(style, right, top, text.substr(end), control.cellWidth);
        }
        top += control.cellHeight;
    }
    if (window.hasFocus && control.caretLine >= 0)
        m_out.Rectangle("caret", 1 + control.caretColumn * control.cellWidth, control.caretLine * control.cellHeight, 1,
                        control.cellHeight);
}

/// What marks a row as selected or focused.
void SvgDesktop::RowMark(const WindowPicture& window, const RowPicture& row)
{
    if (row.isSelected)
        m_out.Rectangle(window.hasFocus || window.parent < 0 ? "chosen" : "chosen pale", row.place.left, row.place.top, WidthOf(row.place),
                        HeightOf(row.place));
    if (row.isFocused && window.hasFocus)
        m_out.Rectangle("focus", row.place.left, row.place.top, WidthOf(row.place) - 1, HeightOf(row.place) - 1);
}

/// The id of the row that the caret is on, which has the focus if its list has.
std::string SvgDesktop::RowFocus(const WindowPicture& window, const RowPicture& row) const
{
    // The list that a combo box has opened takes its keys.
    const bool hasKeys = window.hasFocus || (window.parent < 0 && row.isSelected);
    if (!hasKeys || !(row.isFocused || row.isSelected))
        return {};
    const auto index = static_cast<std::size_t>(&window - m_picture.windows.data());
    return Attribute("id", IdOf(index) + "-" + std::to_string(row.number + 1)) + Attribute("data-focus", row.isFocused ? "row" : "");
}

/// Where the rows in view lie among all.
void SvgDesktop::Thumb(const WindowPicture& window)
{
    const ControlPicture& control = window.control;
    if (control.rowCount <= control.pageRows || !IsRectEmpty(&window.scrollBars[SB_VERT].place))
        return;
    const int left = WidthOf(window.client) - 8;
    const int top = control.headerHeight;
    const int height = HeightOf(window.client) - top;
    const int length = std::max(static_cast<int>(static_cast<long long>(height) * control.pageRows / control.rowCount), 12);
    const int most = std::max(control.rowCount - control.pageRows, 1);
    const int offset = static_cast<int>(static_cast<long long>(height - length) * std::min(control.firstRow, most) / most);
    m_out.Rectangle("thumb", left, top + offset, 6, length, 3);
}

void SvgDesktop::List(const WindowPicture& window)
{
    const int width = WidthOf(window.client);
    m_out.Rectangle("field", 0, 0, width, HeightOf(window.client));
    const bool isDrawnByOwner = window.drawn && (static_cast<DWORD>(window.style) & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE));
    for (const RowPicture& row : window.control.rows) {
        m_out << "<g role=\"option\"" << RowFocus(window, row) << " aria-posinset=\"" << row.number + 1 << "\" aria-setsize=\""
              << window.control.rowCount << "\" aria-selected=\"" << (row.isSelected ? "true" : "false") << '"'
              << (isDrawnByOwner ? Attribute("aria-label", Escaped(row.cells.front())) : "") << ">";
        const bool isChosen = row.isSelected && (window.hasFocus || window.parent < 0);
        if (!isDrawnByOwner)
            RowMark(window, row);
        if (!isDrawnByOwner)
            m_out.Text(isChosen ? "text chosen" : Style("text", window), 3, row.place.top + CentredTop(HeightOf(row.place)),
                       Fitted(row.cells.front(), width - 6));
        m_out << "</g>";
    }
    Thumb(window);
}

void SvgDesktop::Combo(const WindowPicture& window)
{
    const int width = WidthOf(window.client);
    const int height = HeightOf(window.client);
    const bool isSimple = (static_cast<DWORD>(window.style) & 3) == CBS_SIMPLE;
    m_out.Rectangle(Style("box", window), 0, 0, width - 1, height - 1, 2);
    const bool isDrawnByOwner = window.drawn && (static_cast<DWORD>(window.style) & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE));
    if (!isDrawnByOwner)
        m_out.Text(Style("text", window), 4, CentredTop(height), Fitted(window.control.text, width - 24));
    if (window.hasFocus && !isDrawnByOwner)
        m_out.Rectangle("focus", 3, 3, width - 24, height - 7);
    if (!isSimple)
        m_out.Path(Style("arrow", window), "M" + std::to_string(width - 15) + " " + std::to_string(height / 2 - 2) + "h8l-4 5z");
}

void SvgDesktop::Headings(const WindowPicture& window)
{
    const ControlPicture& control = window.control;
    if (!control.headerHeight)
        return;
    m_out << "<g role=\"row\">";
    m_out.Rectangle("face", 0, 0, WidthOf(window.client), control.headerHeight - 1);
    for (const ColumnPicture& column : control.columns) {
        const std::u16string text = Fitted(column.heading, column.width - 12);
        const int free = column.width - 12 - DialogTextWidth(text);
        const int indent = column.format == LVCFMT_RIGHT ? free : column.format == LVCFMT_CENTER ? free / 2 : 0;
        m_out << "<g role=\"columnheader\">";
        m_out.Text("text", column.left + 6 + indent, 2, text);
        m_out << "</g>";
        m_out.Line("line", column.left + column.width - 1, 2, column.left + column.width - 1, control.headerHeight - 3);
    }
    m_out << "</g>";
}

void SvgDesktop::ListView(const WindowPicture& window)
{
    const ControlPicture& control = window.control;
    const int width = WidthOf(window.client);
    m_out.Rectangle("field", 0, 0, width, HeightOf(window.client));
    const auto listStyle = static_cast<DWORD>(window.style);
    const bool isDrawnByOwner = window.drawn && (listStyle & LVS_TYPEMASK) == LVS_REPORT && (listStyle & LVS_OWNERDRAWFIXED);
    for (const RowPicture& row : control.rows) {
        m_out << "<g role=\"row\"" << RowFocus(window, row) << " aria-rowindex=\"" << row.number + 1 + (control.headerHeight ? 1 : 0)
              << "\" aria-selected=\"" << (row.isSelected ? "true" : "false") << "\">";
        if (!isDrawnByOwner)
            RowMark(window, row);
        const std::string style = row.isSelected && window.hasFocus ? "text chosen" : Style("text", window);
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const ColumnPicture whole{{}, 0, width, LVCFMT_LEFT};
            const ColumnPicture& column = i < control.columns.size() ? control.columns[i] : whole;
            const std::u16string text = Fitted(row.cells[i], column.width - 12);
            const int free = column.width - 12 - DialogTextWidth(text);
            const int indent = column.format == LVCFMT_RIGHT ? free : column.format == LVCFMT_CENTER ? free / 2 : 0;
            m_out << "<g role=\"gridcell\"" << (isDrawnByOwner ? Attribute("aria-label", Escaped(row.cells[i])) : "") << ">";
            if (!isDrawnByOwner)
                m_out.Text(style, column.left + 6 + indent, row.place.top, text);
            m_out << "</g>";
        }
        m_out << "</g>";
    }
    Headings(window);
}

}  // namespace kelgen::view::detail
