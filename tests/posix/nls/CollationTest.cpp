// CollationTest.cpp: what both texts begin with does not change their order.
#include "support/Random.h"

#include <kelgen/platform/Win32.h>

#include <string>
#include <string_view>

using namespace kelgen::test;
using namespace std::string_view_literals;

namespace {

int OrderOf(const std::u16string& left, const std::u16string& right, DWORD flags)
{
    return CompareStringW(LOCALE_USER_DEFAULT, flags, reinterpret_cast<LPCWSTR>(left.data()), static_cast<int>(left.size()),
                          reinterpret_cast<LPCWSTR>(right.data()), static_cast<int>(right.size()));
}

}  // namespace

// Units that count late, marks that add to the letter before them, ligatures and ignored units among letters, digits and symbols.
TEST(Collation, SameStartsOfAsciiDecideNothing)
{
    constexpr std::u16string_view kUnits = u"aAbz09 _-'\0\u0001\u0301\u0308\u00E4\u00DF\u00AD\uFF41"sv;
    constexpr DWORD kFlags[] = {0, NORM_IGNORECASE, NORM_IGNORENONSPACE, NORM_IGNORESYMBOLS, SORT_STRINGSORT};
    Random random;
    const auto text = [&](int least) {
        std::u16string units;
        for (int i = random.Between(least, 6); i > 0; --i)
            units += kUnits[static_cast<std::size_t>(random.Between(0, static_cast<int>(kUnits.size()) - 1))];
        return units;
    };
    for (int round = 0; round < 50000; ++round) {
        const std::u16string start = text(0);
        // No mark may add to what stands before, which is no unit of ASCII, so that the start is walked through.
        const std::u16string left = u'x' + start + text(0);
        const std::u16string right = u'x' + start + text(0);
        for (const DWORD flags : kFlags)
            ASSERT_EQ(OrderOf(u'\u00E9' + left, u'\u00E9' + right, flags), OrderOf(left, right, flags))
                << "round " << round << ", flags " << flags;
    }
}
