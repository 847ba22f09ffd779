// Collation.cpp: comparison in the locale's order.
#include <kelgen/platform/posix/nls/api/PlainText.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/CollationWeights.h>
#include <kelgen/platform/posix/nls/LocaleNumbers.h>
#include <kelgen/platform/posix/nls/api/CodePages.h>
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <cstring>
#include <string_view>
#include <vector>

using namespace kelgen::posix;

namespace {

// Flags without a name here that calls accept: digits as numbers, accents by language, and the like.
constexpr DWORD kOtherFlags = 0x58000028;
constexpr DWORD kKnownFlags = NORM_IGNORECASE | NORM_IGNORENONSPACE | NORM_IGNORESYMBOLS | LINGUISTIC_IGNORECASE | SORT_STRINGSORT |
                              NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | kOtherFlags;
constexpr DWORD kIgnoreDiacritics = 0x00000020;

// What one level of one step compares by: -1, 0 or 1.
template <class Value>
int Order(Value left, Value right)
{
    return (left > right) - (left < right);
}

// The elements of a text one after another, and its special units by position.
class Walk
{
public:
    Walk(const WCHAR* text, std::size_t length, DWORD flags) : m_text(text), m_end(text + length), m_flags(flags) {}

    // The next element with a primary; false at the end.
    bool Next(CollationElement& element)
    {
        if (!Take(element))
            return false;
        // Marks after a letter add to its accent, as in the letter that has them built in.
        for (CollationElement mark; Peek(mark) && mark.primary == 0;) {
            element.accent = static_cast<WORD>(element.accent + mark.accent);
            Take(mark);
        }
        Mask(element);
        return true;
    }

    struct Special
    {
        std::size_t position;  // elements before it
        WORD weight;
    };
    const std::vector<Special>& Specials() const { return m_specials; }

private:
    bool Peek(CollationElement& element)
    {
        if (!Fill())
            return false;
        element = m_pending.elements[m_taken];
        return true;
    }

    bool Take(CollationElement& element)
    {
        if (!Peek(element))
            return false;
        ++m_taken;
        ++m_position;
        return true;
    }

    // Sees to it that an element is pending.
    bool Fill()
    {
        while (m_taken == m_pending.count) {
            if (m_text == m_end)
                return false;
            const WCHAR unit = *m_text++;
            const WORD special = SpecialWeightOf(unit);
            if (special != 0 && (m_flags & NORM_IGNORESYMBOLS) != 0)
                continue;
            if (special != 0 && (m_flags & SORT_STRINGSORT) == 0) {
                m_specials.push_back({m_position, special});
                continue;
            }
            m_taken = 0;
            m_pending = special != 0 ? CollationElements{{{{special, 0, 0}, {}}}, 1} : WeightsOf(unit);
            if ((m_flags & NORM_IGNORESYMBOLS) != 0 && m_pending.count > 0 && IsSymbolPrimary(m_pending.elements[0].primary))
                m_pending.count = 0;
        }
        return true;
    }

    void Mask(CollationElement& element) const
    {
        if ((m_flags & (NORM_IGNORENONSPACE | kIgnoreDiacritics)) != 0)
            element.accent = 0;
        BYTE ignored = 0;
        if ((m_flags & (NORM_IGNORECASE | LINGUISTIC_IGNORECASE)) != 0)
            ignored |= kCapital;
        if ((m_flags & NORM_IGNOREWIDTH) != 0)
            ignored |= kWide;
        if ((m_flags & NORM_IGNOREKANATYPE) != 0)
            ignored |= kHiragana;
        element.shape = static_cast<BYTE>(element.shape & ~ignored);
    }

    const WCHAR* m_text;
    const WCHAR* m_end;
    DWORD m_flags;
    CollationElements m_pending{{}, 0};
    int m_taken = 0;
    std::size_t m_position = 0;
    std::vector<Special> m_specials;
};

int OrderOfSpecials(const std::vector<Walk::Special>& left, const std::vector<Walk::Special>& right)
{
    for (std::size_t at = 0; at < left.size() && at < right.size(); ++at) {
        // The text whose special unit comes first is the greater one.
        if (const int order = Order(right[at].position, left[at].position); order != 0)
            return order;
        if (const int order = Order(left[at].weight, right[at].weight); order != 0)
            return order;
    }
    return Order(left.size(), right.size());
}

int OrderOf(Walk left, Walk right)
{
    int accents = 0;
    int shapes = 0;
    for (;;) {
        CollationElement leftElement{};
        CollationElement rightElement{};
        const bool hasLeft = left.Next(leftElement);
        const bool hasRight = right.Next(rightElement);
        const int order = hasLeft && hasRight ? Order(leftElement.primary, rightElement.primary) : hasLeft - hasRight;
        if (order != 0)
            return order;
        if (!hasLeft)
            break;
        if (accents == 0)
            accents = Order(leftElement.accent, rightElement.accent);
        if (shapes == 0)
            shapes = Order(leftElement.shape, rightElement.shape);
    }
    if (accents != 0)
        return accents;
    return shapes != 0 ? shapes : OrderOfSpecials(left.Specials(), right.Specials());
}

// How many units of ASCII at the start decide nothing, as both texts have them. The last letter or digit is not among them: what follows
// may add to it.
std::size_t SameStart(std::u16string_view left, std::u16string_view right)
{
    const auto isLetterOrDigit = [](char16_t unit) {
        return (unit >= '0' && unit <= '9') || ((unit | 0x20) >= 'a' && (unit | 0x20) <= 'z');
    };
    std::size_t same = 0;
    while (same < left.size() && same < right.size() && left[same] == right[same] && left[same] < 0x80)
        ++same;
    while (same > 0 && !isLetterOrDigit(left[same - 1]))
        --same;
    return same > 0 ? same - 1 : 0;
}

std::vector<WCHAR> Widen(LPCSTR text, int length)
{
    std::vector<WCHAR> wide(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text, length, nullptr, 0)));
    MultiByteToWideChar(CP_ACP, 0, text, length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

}  // namespace

int CompareStringW(LCID locale, DWORD flags, LPCWSTR left, int leftLength, LPCWSTR right, int rightLength)
{
    if (!left || !right || !IsKnownLocale(locale))
        return Fail(ERROR_INVALID_PARAMETER, 0);
    if ((flags & ~kKnownFlags) != 0)
        return Fail(ERROR_INVALID_FLAGS, 0);

    const std::size_t leftUnits = leftLength < 0 ? wcslen(left) : static_cast<std::size_t>(leftLength);
    const std::size_t rightUnits = rightLength < 0 ? wcslen(right) : static_cast<std::size_t>(rightLength);
    if (leftUnits == rightUnits && std::memcmp(left, right, leftUnits * sizeof(WCHAR)) == 0)
        return CSTR_EQUAL;
    const std::size_t same =
        SameStart({reinterpret_cast<const char16_t*>(left), leftUnits}, {reinterpret_cast<const char16_t*>(right), rightUnits});
    return CSTR_EQUAL + OrderOf(Walk(left + same, leftUnits - same, flags), Walk(right + same, rightUnits - same, flags));
}

int CompareStringA(LCID locale, DWORD flags, LPCSTR left, int leftLength, LPCSTR right, int rightLength)
{
    if (!left || !right)
        return Fail(ERROR_INVALID_PARAMETER, 0);

    const std::vector<WCHAR> wideLeft = Widen(left, leftLength);
    const std::vector<WCHAR> wideRight = Widen(right, rightLength);
    // A converted terminator is ignored like every 0 unit; an empty vector's data may be null.
    static constexpr WCHAR kNothing[1] = {0};
    return CompareStringW(locale, flags, wideLeft.empty() ? kNothing : wideLeft.data(), static_cast<int>(wideLeft.size()),
                          wideRight.empty() ? kNothing : wideRight.data(), static_cast<int>(wideRight.size()));
}
