// MessageText.cpp: a row for each message that carries text says how it is converted.
#include <kelgen/platform/posix/user/messages/MessageText.h>

#include <kelgen/platform/posix/nls/AnsiText.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>
#include <kelgen/platform/posix/nls/api/Locale.h>
#include <kelgen/platform/posix/user/api/WindowCalls.h>

#include <algorithm>
#include <cstring>

namespace kelgen::posix::user {

namespace {

enum class Carries
{
    Nothing,
    Text,
    TextUnlessOwnerDrawn,
    Buffer,
    ItemBuffer,
    ItemLength,
    LineBuffer,
    Length,
    CreateStruct,
    MdiCreateStruct,
    Character
};

constexpr LONG kListOwnerDrawn = 0x0030;  // LBS_OWNERDRAWFIXED, LBS_OWNERDRAWVARIABLE; the combo box's have the same values
constexpr LONG kListHasStrings = 0x0040;
constexpr LONG kComboHasStrings = 0x0200;
// What one unit takes at most in a code page: in UTF-8 a pair of units takes four.
constexpr std::size_t kBytesForUnit = 3;

Carries KindOf(UINT message)
{
    switch (message) {
    case WM_SETTEXT:
    case WM_SETTINGCHANGE:
    case WM_DEVMODECHANGE:
    case 0x00C2:  // EM_REPLACESEL
    case 0x0145:  // CB_DIR
    case 0x018D:  // LB_DIR
    case 0x0196:  // LB_ADDFILE
        return Carries::Text;
    case 0x0143:  // CB_ADDSTRING
    case 0x014A:  // CB_INSERTSTRING
    case 0x014C:  // CB_FINDSTRING
    case 0x014D:  // CB_SELECTSTRING
    case 0x0158:  // CB_FINDSTRINGEXACT
    case 0x0180:  // LB_ADDSTRING
    case 0x0181:  // LB_INSERTSTRING
    case 0x018C:  // LB_SELECTSTRING
    case 0x018F:  // LB_FINDSTRING
    case 0x01A2:  // LB_FINDSTRINGEXACT
        return Carries::TextUnlessOwnerDrawn;
    case WM_GETTEXT:
    case WM_ASKCBFORMATNAME:
        return Carries::Buffer;
    case 0x0148:  // CB_GETLBTEXT
    case 0x0189:  // LB_GETTEXT
        return Carries::ItemBuffer;
    case 0x0149:  // CB_GETLBTEXTLEN
    case 0x018A:  // LB_GETTEXTLEN
        return Carries::ItemLength;
    case 0x00C4:  // EM_GETLINE
        return Carries::LineBuffer;
    case WM_GETTEXTLENGTH:
        return Carries::Length;
    case WM_NCCREATE:
    case WM_CREATE:
        return Carries::CreateStruct;
    case WM_MDICREATE:
        return Carries::MdiCreateStruct;
    case WM_CHAR:
    case WM_DEADCHAR:
    case WM_SYSCHAR:
    case WM_SYSDEADCHAR:
    case WM_CHARTOITEM:
    case WM_MENUCHAR:
    case WM_IME_CHAR:
    case 0x00CC:  // EM_SETPASSWORDCHAR
        return Carries::Character;
    default:
        return Carries::Nothing;
    }
}

// What goes with a procedure that takes units of one kind from a caller with the other.
template <class To>
struct Text;
template <>
struct Text<CHAR>
{
    using From = WCHAR;
    using CreateFrom = CREATESTRUCTW;
    using CreateTo = CREATESTRUCTA;
    using MdiFrom = MDICREATESTRUCTW;
    using MdiTo = MDICREATESTRUCTA;
    static std::string Convert(LPCWSTR text) { return AnsiText(WideText(text)); }
};
template <>
struct Text<WCHAR>
{
    using From = CHAR;
    using CreateFrom = CREATESTRUCTA;
    using CreateTo = CREATESTRUCTW;
    using MdiFrom = MDICREATESTRUCTA;
    using MdiTo = MDICREATESTRUCTW;
    static std::u16string Convert(LPCSTR text) { return WideText(text); }
};

const CHAR* Pointer(const std::string& text)
{
    return text.c_str();
}
const WCHAR* Pointer(const std::u16string& text)
{
    return reinterpret_cast<const WCHAR*>(text.c_str());
}

// A name that may be a number.
template <class To>
class Name
{
public:
    explicit Name(const typename Text<To>::From* name) : m_number(reinterpret_cast<ULONG_PTR>(name))
    {
        if (!IS_INTRESOURCE(name))
            m_text = Text<To>::Convert(name);
    }
    const To* Get() const { return IS_INTRESOURCE(m_number) ? reinterpret_cast<const To*>(m_number) : Pointer(m_text); }

private:
    ULONG_PTR m_number;
    decltype(Text<To>::Convert(nullptr)) m_text;
};

// Copies a terminated text back, cut to the room; the copied length.
template <class From, class To>
std::size_t CopyBack(const To* answer, From* buffer, std::size_t room)
{
    const auto text = Text<From>::Convert(answer);
    const std::size_t length = LengthThatFits(text, room - 1);
    std::copy_n(Pointer(text), length, buffer);
    buffer[length] = 0;
    return length;
}

template <class To>
class Conversion
{
public:
    using From = typename Text<To>::From;

    Conversion(const Procedure& procedure, HWND window) : m_procedure(procedure), m_window(window) {}

    LRESULT Call(UINT message, WPARAM wParam, LPARAM lParam) const { return m_procedure.call(m_window, message, wParam, lParam); }

    LRESULT CallWithText(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        if (lParam == 0)
            return Call(message, wParam, lParam);
        const auto text = Text<To>::Convert(reinterpret_cast<const From*>(lParam));
        return Call(message, wParam, reinterpret_cast<LPARAM>(Pointer(text)));
    }

    LRESULT CallWithBuffer(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        auto* buffer = reinterpret_cast<From*>(lParam);
        if (!buffer || wParam == 0)
            return Call(message, wParam, lParam);
        std::vector<To> text(std::min<std::size_t>(wParam, 0x1000000) * (sizeof(To) == 1 ? kBytesForUnit : 1) + 1);
        const LRESULT result = Call(message, text.size() - 1, reinterpret_cast<LPARAM>(text.data()));
        if (result <= 0) {
            buffer[0] = 0;
            return result;
        }
        text[std::min<std::size_t>(static_cast<std::size_t>(result), text.size() - 1)] = 0;
        return static_cast<LRESULT>(CopyBack(text.data(), buffer, wParam));
    }

    // The room for an item's text is unknown: the caller has asked for its length.
    LRESULT CallWithItemBuffer(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const UINT lengthMessage = message + 1;
        const LRESULT length = Call(lengthMessage, wParam, 0);
        if (length < 0 || lParam == 0)
            return Call(message, wParam, lParam);
        std::vector<To> text(static_cast<std::size_t>(length) + 1);
        const LRESULT result = Call(message, wParam, reinterpret_cast<LPARAM>(text.data()));
        if (result < 0)
            return result;
        return static_cast<LRESULT>(
            CopyBack(text.data(), reinterpret_cast<From*>(lParam), static_cast<std::size_t>(length) * kBytesForUnit + 1));
    }

    // The first word of the buffer tells its size; the answer is not terminated.
    LRESULT CallWithLineBuffer(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        if (lParam == 0)
            return Call(message, wParam, lParam);
        WORD room = 0;
        std::memcpy(&room, reinterpret_cast<const void*>(lParam), sizeof room);
        const auto roomThere = static_cast<WORD>(std::min<std::size_t>(room * (sizeof(To) == 1 ? kBytesForUnit : 1), 0xFFFF));
        std::vector<To> line(std::max<std::size_t>(roomThere, 4) + 1);
        std::memcpy(line.data(), &roomThere, sizeof roomThere);
        const LRESULT result = Call(message, wParam, reinterpret_cast<LPARAM>(line.data()));
        if (result <= 0 || room == 0)
            return result;
        line[std::min<std::size_t>(static_cast<std::size_t>(result), roomThere)] = 0;
        const auto text = Text<From>::Convert(line.data());
        const std::size_t length = LengthThatFits(text, room);
        std::copy_n(Pointer(text), length, reinterpret_cast<From*>(lParam));
        return static_cast<LRESULT>(length);
    }

    // The length that a text has after its conversion: in a page of single bytes the one that it has before.
    LRESULT CallForLength(UINT message, WPARAM wParam, UINT textMessage) const
    {
        const LRESULT length = Call(message, wParam, 0);
        CPINFO page{};
        if (length <= 0 || (GetCPInfo(CP_ACP, &page) && page.MaxCharSize == 1))
            return length;
        std::vector<To> text(static_cast<std::size_t>(length) + 1);
        Call(textMessage, textMessage == WM_GETTEXT ? text.size() : wParam, reinterpret_cast<LPARAM>(text.data()));
        text.back() = 0;
        return static_cast<LRESULT>(Text<From>::Convert(text.data()).size());
    }

    LRESULT CallWithCreateStruct(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const auto* from = reinterpret_cast<const typename Text<To>::CreateFrom*>(lParam);
        if (!from)
            return Call(message, wParam, lParam);
        const Name<To> name(from->lpszName);
        const Name<To> className(from->lpszClass);
        typename Text<To>::CreateTo create{
            from->lpCreateParams, from->hInstance, from->hMenu,     from->hwndParent, from->cy, from->cx, from->y, from->x,
            from->style,          name.Get(),      className.Get(), from->dwExStyle};
        return Call(message, wParam, reinterpret_cast<LPARAM>(&create));
    }

    LRESULT CallWithMdiCreateStruct(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        const auto* from = reinterpret_cast<const typename Text<To>::MdiFrom*>(lParam);
        if (!from)
            return Call(message, wParam, lParam);
        const Name<To> title(from->szTitle);
        const Name<To> className(from->szClass);
        typename Text<To>::MdiTo create{className.Get(), title.Get(), from->hOwner, from->x,     from->y,
                                        from->cx,        from->cy,    from->style,  from->lParam};
        return Call(message, wParam, reinterpret_cast<LPARAM>(&create));
    }

    LRESULT Run(UINT message, WPARAM wParam, LPARAM lParam) const
    {
        switch (KindOf(message)) {
        case Carries::TextUnlessOwnerDrawn:
            return HoldsStrings(message) ? CallWithText(message, wParam, lParam) : Call(message, wParam, lParam);
        case Carries::Text:
            return CallWithText(message, wParam, lParam);
        case Carries::Buffer:
            return CallWithBuffer(message, wParam, lParam);
        case Carries::ItemBuffer:
            return HoldsStrings(message) ? CallWithItemBuffer(message, wParam, lParam) : Call(message, wParam, lParam);
        case Carries::LineBuffer:
            return CallWithLineBuffer(message, wParam, lParam);
        case Carries::Length:
            return CallForLength(message, wParam, WM_GETTEXT);
        case Carries::ItemLength:
            return HoldsStrings(message) ? CallForLength(message, wParam, message - 1) : Call(message, wParam, lParam);
        case Carries::CreateStruct:
            return CallWithCreateStruct(message, wParam, lParam);
        case Carries::MdiCreateStruct:
            return CallWithMdiCreateStruct(message, wParam, lParam);
        case Carries::Character:
            return Call(message, ConvertCharacter(wParam, sizeof(To) == 2), lParam);
        case Carries::Nothing:
            break;
        }
        return Call(message, wParam, lParam);
    }

private:
    bool HoldsStrings(UINT message) const
    {
        const LONG style = GetWindowLongW(m_window, GWL_STYLE);
        const LONG hasStrings = message < 0x0180 ? kComboHasStrings : kListHasStrings;
        return (style & kListOwnerDrawn) == 0 || (style & hasStrings) != 0;
    }

    const Procedure& m_procedure;
    HWND m_window;
};

// In UTF-8 a character has up to three bytes, the first one highest; the third lies in the high word, where some messages have
// something else.
WPARAM UnitOfUtf8(WPARAM character)
{
    const auto byte = [character](int shift) { return static_cast<CHAR>(character >> shift); };
    const CHAR bytes[] = {byte(16), byte(8), byte(0)};
    const auto decode = [&](int first, WCHAR& unit) {
        return MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes + first, 3 - first, &unit, 1) == 1;
    };
    WCHAR unit = 0;
    if (bytes[0] != 0 && decode(0, unit))
        return (character & ~WPARAM{0xFFFFFF}) | unit;
    if (bytes[1] == 0 || !decode(1, unit))
        MultiByteToWideChar(CP_ACP, 0, bytes + 2, 1, &unit, 1);
    return (character & ~WPARAM{0xFFFF}) | unit;
}

WPARAM Utf8OfUnit(WPARAM character)
{
    const WPARAM rest = character & ~WPARAM{0xFFFF};
    const auto unit = static_cast<WCHAR>(character);
    CHAR bytes[4]{};
    const int count = WideCharToMultiByte(CP_ACP, 0, &unit, 1, bytes, 4, nullptr, nullptr);
    if (count == 3 && rest != 0)
        return rest | BYTE{'?'};
    WPARAM packed = 0;
    for (int i = 0; i < count; ++i)
        packed = packed << 8 | static_cast<BYTE>(bytes[i]);
    return rest | packed;
}

}  // namespace

bool CarriesText(UINT message)
{
    return KindOf(message) != Carries::Nothing;
}

LRESULT CallConverted(const Procedure& procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (procedure.wide)
        return Conversion<WCHAR>(procedure, window).Run(message, wParam, lParam);
    return Conversion<CHAR>(procedure, window).Run(message, wParam, lParam);
}

WPARAM ConvertCharacter(WPARAM character, bool toWide)
{
    if (GetACP() == CP_UTF8)
        return toWide ? UnitOfUtf8(character) : Utf8OfUnit(character);
    const WPARAM rest = character & ~WPARAM{0xFFFF};
    if (toWide) {
        // A double-byte character has its lead byte in the high half of the word.
        CHAR bytes[2] = {static_cast<CHAR>(character >> 8), static_cast<CHAR>(character)};
        const bool isDouble = bytes[0] != 0 && IsDBCSLeadByte(static_cast<BYTE>(bytes[0]));
        WCHAR unit = 0;
        MultiByteToWideChar(CP_ACP, 0, isDouble ? bytes : bytes + 1, isDouble ? 2 : 1, &unit, 1);
        return rest | unit;
    }
    const auto unit = static_cast<WCHAR>(character);
    CHAR bytes[4]{};
    const int count = WideCharToMultiByte(CP_ACP, 0, &unit, 1, bytes, 4, nullptr, nullptr);
    if (count == 2)
        return rest | MAKEWORD(bytes[1], bytes[0]);
    return rest | static_cast<BYTE>(bytes[0]);
}

}  // namespace kelgen::posix::user
