// WideRuntimeTest.cpp: the block-wise text functions against obvious models, and the runtime's comparison results.
#include <kelgen/platform/support/WideText.h>

#include "support/Random.h"

#include <algorithm>
#include <climits>
#include <clocale>

using kelgen::AsWide;
using namespace kelgen::test;

namespace {

int Lower(WCHAR unit)
{
    return unit >= 'A' && unit <= 'Z' ? unit + 32 : unit;
}

int Sign(int value)
{
    return (value > 0) - (value < 0);
}

// A text in a block of exactly its size, so that the address sanitizer sees a read behind it; its start moves through all
// alignments.
class ExactText
{
public:
    ExactText(Random& random, int length, int letters) : m_units(static_cast<std::size_t>(length + 1 + random.Between(0, 7)))
    {
        static constexpr WCHAR kLetters[] = {'a', 'A', 'b', 'B', 'Z', 0x61E9, 0xFF41};
        m_text = m_units.data() + m_units.size() - static_cast<std::size_t>(length) - 1;
        std::generate_n(m_text, length, [&] { return kLetters[random.Between(0, letters - 1)]; });
    }

    WCHAR* Text() { return m_text; }
    std::vector<WCHAR> Units() const
    {
        return std::vector<WCHAR>(m_units.end() - (m_units.data() + m_units.size() - m_text), m_units.end());
    }

private:
    std::vector<WCHAR> m_units;
    WCHAR* m_text;
};

int Difference(const WCHAR* left, const WCHAR* right, std::size_t limit, bool fold)
{
    for (std::size_t at = 0; at < limit; ++at) {
        const int difference = fold ? Lower(left[at]) - Lower(right[at]) : left[at] - right[at];
        if (difference != 0 || left[at] == 0)
            return difference;
    }
    return 0;
}

// Where the units from @p first on are @p sought; null when nowhere.
const WCHAR* Search(const WCHAR* first, const WCHAR* end, const std::vector<WCHAR>& sought)
{
    const WCHAR* found = std::search(first, end, sought.begin(), sought.end() - 1);
    return found != end || sought.size() == 1 ? found : nullptr;
}

}  // namespace

TEST(WideRuntime, SearchesEqualTheModel)
{
    Random random;
    for (int round = 0; round < 20000; ++round) {
        const int length = random.Between(0, round % 10 == 0 ? 700 : 40), letters = random.Between(1, 7);
        ExactText text(random, length, letters), sought(random, random.Between(0, 4), letters);
        const WCHAR* first = text.Text();
        const WCHAR* end = first + length;
        const WCHAR unit = *ExactText(random, 1, 7).Text();
        const auto limit = static_cast<std::size_t>(random.Between(0, 60));

        ASSERT_EQ(static_cast<std::size_t>(length), wcslen(first));
        ASSERT_EQ(std::min(limit, static_cast<std::size_t>(length)), wcsnlen(first, limit));
        const WCHAR* at = std::find(first, end, unit);
        ASSERT_EQ(at != end ? at : nullptr, wcschr(first, unit));
        const WCHAR* last = std::find(std::make_reverse_iterator(end), std::make_reverse_iterator(first), unit).base();
        ASSERT_EQ(last != first ? last - 1 : nullptr, wcsrchr(first, unit));
        ASSERT_EQ(end, wcschr(first, 0));
        ASSERT_EQ(end, wcsrchr(first, 0));
        if (length != 0) {
            ASSERT_EQ(Search(first, end, sought.Units()), wcsstr(first, sought.Text()));
        }

        const auto isInSet = [&](WCHAR candidate) { return candidate != 0 && wcschr(sought.Text(), candidate) != nullptr; };
        ASSERT_EQ(std::find_if_not(first, end, isInSet) - first, static_cast<std::ptrdiff_t>(wcsspn(first, sought.Text())));
        at = std::find_if(first, end, isInSet);
        ASSERT_EQ(at - first, static_cast<std::ptrdiff_t>(wcscspn(first, sought.Text())));
        ASSERT_EQ(at != end ? at : nullptr, wcspbrk(first, sought.Text()));
    }
}

TEST(WideRuntime, ComparisonsEqualTheModel)
{
    Random random;
    for (int round = 0; round < 20000; ++round) {
        const int length = random.Between(0, round % 10 == 0 ? 700 : 40);
        ExactText left(random, length, random.Between(1, 7));
        ExactText right(random, random.Between(std::max(length - 3, 0), length + 3), 7);
        // Mostly the same text, up to some place.
        const int common = random.Between(0, std::min(length, static_cast<int>(wcslen(right.Text()))));
        std::copy_n(left.Text(), common, right.Text());
        const auto limit = static_cast<std::size_t>(random.Between(0, 60));

        ASSERT_EQ(Sign(Difference(left.Text(), right.Text(), SIZE_MAX, false)), wcscmp(left.Text(), right.Text()));
        ASSERT_EQ(Difference(left.Text(), right.Text(), limit, false), wcsncmp(left.Text(), right.Text(), limit));
        ASSERT_EQ(Difference(left.Text(), right.Text(), SIZE_MAX, true), _wcsicmp(left.Text(), right.Text()));
        ASSERT_EQ(Difference(left.Text(), right.Text(), limit, true), _wcsnicmp(left.Text(), right.Text(), limit));
        ASSERT_EQ(0, _wcsicmp(left.Text(), left.Text()));
    }
}

TEST(WideRuntime, EditsEqualTheModel)
{
    Random random;
    for (int round = 0; round < 5000; ++round) {
        ExactText text(random, random.Between(0, 40), 7);
        const std::vector<WCHAR> before = text.Units();
        std::vector<WCHAR> expected = before;
        std::transform(before.begin(), before.end(), expected.begin(), [](WCHAR unit) { return static_cast<WCHAR>(Lower(unit)); });
        ASSERT_EQ(text.Text(), _wcslwr(text.Text()));
        ASSERT_EQ(expected, text.Units());
        std::transform(before.begin(), before.end(), expected.begin(),
                       [](WCHAR unit) { return static_cast<WCHAR>(Lower(unit) >= 'a' && Lower(unit) <= 'z' ? Lower(unit) - 32 : unit); });
        ASSERT_EQ(text.Text(), _wcsupr(text.Text()));
        ASSERT_EQ(expected, text.Units());
        std::reverse(expected.begin(), expected.end() - 1);
        ASSERT_EQ(expected, (_wcsrev(text.Text()), text.Units()));

        // Copies: the exact size, and cut or filled.
        std::vector<WCHAR> copy(expected.size(), 7);
        ASSERT_EQ(expected, (wcscpy(copy.data(), text.Text()), copy));
        std::vector<WCHAR> part(static_cast<std::size_t>(random.Between(0, 60)), 7);
        wcsncpy(part.data(), text.Text(), part.size());
        expected.resize(part.size(), 0);
        ASSERT_EQ(expected, part);
    }
}

TEST(WideRuntime, AppendsBehindTheTerminator)
{
    WCHAR text[8] = {'a', 'b', 0, 7, 7, 7, 7, 7};
    wcscat(text, AsWide(u"cd"_w));
    wcsncat(text, AsWide(u"efg"_w), 2);
    EXPECT_EQ(0, wcscmp(AsWide(u"abcdef"_w), text));
    EXPECT_EQ(7, text[7]);

    WCHAR* copy = _wcsdup(text);
    EXPECT_EQ(0, wcscmp(text, copy));
    std::free(copy);
    EXPECT_EQ(nullptr, _wcsdup(nullptr));
}

struct CompareRow
{
    const char* name;
    const unsigned short* left;
    const unsigned short* right;
    int noCase, collated;
};

TEST(WideComparison, FollowsTheRuntimeInItsFirstLocale)
{
    const CompareRow rows[] = {
        {"LettersFold", u"ABC"_w, u"abc"_w, 0, -1},
        {"LetterBeforeUnderscoreWhenFolded", u"A"_w, u"_"_w, 2, -1},
        {"SmallBeforeCapital", u"a"_w, u"B"_w, -1, 1},
        {"AccentsDoNotFold", u"\u00E9"_w, u"\u00C9"_w, 32, 1},
        {"GreekDoesNotFold", u"\u03B1"_w, u"\u0391"_w, 32, 1},
        {"PrefixIsLess", u""_w, u"a"_w, -97, -1},
        {"LongerIsGreater", u"abcd"_w, u"abc"_w, 100, 1},
        {"HyphenCounts", u"co-op"_w, u"coop"_w, -66, -1},
        {"UnitsAreUnsigned", u"\uFFFF"_w, u"a"_w, 0xFFFF - 'a', 1},
    };
    for (const CompareRow& row : rows) {
        SCOPED_TRACE(row.name);
        const WCHAR* left = AsWide(row.left);
        const WCHAR* right = AsWide(row.right);
        EXPECT_EQ(row.noCase, _wcsicmp(left, right));
        EXPECT_EQ(row.noCase, _wcsicoll(left, right));
        EXPECT_EQ(row.collated, wcscoll(left, right));
        EXPECT_EQ(row.collated, wcscmp(left, right));
    }
}

TEST(WideRuntime, LimitedCollationGivesDifferences)
{
    EXPECT_EQ(32, _wcsncoll(AsWide(u"ab"_w), AsWide(u"aB"_w), 2));
    EXPECT_EQ(0, _wcsnicoll(AsWide(u"abx"_w), AsWide(u"aBy"_w), 2));
    EXPECT_EQ(INT_MAX, _wcsicmp(nullptr, AsWide(u"a"_w)));
    EXPECT_EQ(INT_MAX, _wcsicmp(AsWide(u"a"_w), nullptr));
}

TEST(WideRuntime, SelectedLocaleFoldsItsLetters)
{
    // One of these exists on each target.
    const bool selected = std::setlocale(LC_ALL, "English_United States.1252") || std::setlocale(LC_ALL, "C.UTF-8");
    ASSERT_TRUE(selected);
    WCHAR text[] = {'a', 0x00E9, 0x03B1, 0};
    EXPECT_EQ(0, _wcsicmp(AsWide(u"\u00E9a"_w), AsWide(u"\u00C9A"_w)));
    EXPECT_EQ(0, _wcsicoll(AsWide(u"\u00E9a"_w), AsWide(u"\u00C9A"_w)));
    EXPECT_EQ(0, _wcsnicmp(AsWide(u"\u00E9x"_w), AsWide(u"\u00C9y"_w), 1));
    _wcsupr(text);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ('A', text[0]);
    EXPECT_EQ(0xC9, text[1]);
    EXPECT_EQ(32, _wcsicmp(AsWide(u"\u00E9"_w), AsWide(u"\u00C9"_w)));
}
