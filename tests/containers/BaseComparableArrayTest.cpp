// BaseComparableArrayTest.cpp: searches, set operations and maxima, against slow models.
#include <kelgen/containers/BaseNumericArray.h>

#include "Elements.h"
#include "support/Rows.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <tuple>

using namespace kelgen::test;

namespace {

using IntArray = CBaseNumericArray<int, const int>;
using TextArray = CBaseComparableArray<CString, const CString&>;

bool Occurs(const Ints& in, int value)
{
    return std::find(in.begin(), in.end(), value) != in.end();
}

template <class NUMBER>
void FindEqualsTheObviousSearch(NUMBER)
{
    Random random;
    for (int round = 0; round < 300; ++round) {
        CBaseComparableArray<NUMBER> array;
        for (int i = random.Between(0, 150); i > 0; --i)
            array.Add(static_cast<NUMBER>(random.Between(-200, 200)));
        const std::vector<NUMBER> model = ElementsOf(array);
        for (int value = -200; value <= 200; value += 7) {
            const auto wanted = static_cast<NUMBER>(value);
            const auto found = std::find(model.begin(), model.end(), wanted);
            ASSERT_EQ(found == model.end() ? -1 : static_cast<int>(found - model.begin()), array.FindFirst(wanted));
        }
    }
}

struct Faulty
{
    using MovableBitwise = Faulty;

    CString text;

    bool operator==(const Faulty& other) const
    {
        if (text == "fault")
            AfxThrowUserException();
        return text == other.text;
    }
    bool operator<(const Faulty& other) const { return text < other.text; }
};

}  // namespace

TEST(BaseComparableArray, FindsNumbersOfEverySize)
{
    std::apply([](auto... zeros) { (FindEqualsTheObviousSearch(zeros), ...); },
               std::tuple<signed char, short, int, unsigned, long long, float, double>());

    const CBaseComparableArray<double> numbers(2, std::nan(""), -0.0);
    EXPECT_EQ(1, numbers.FindFirst(0.0)) << "by value, not by bytes";
    EXPECT_EQ(-1, numbers.FindFirst(std::nan("")));
}

TEST(BaseComparableArray, FindsPointersByIdentity)
{
    int numbers[3] = {7, 7, 7};
    CBaseObjectPtrArray<int*> pointers(2, &numbers[1], &numbers[2]);
    EXPECT_EQ(1, pointers.FindFirst(numbers + 2));
    EXPECT_FALSE(pointers.Contains(numbers));
    EXPECT_TRUE(pointers.AddUnique(numbers));
    pointers.BubbleSort();
    EXPECT_EQ((std::vector<int*>{numbers, numbers + 1, numbers + 2}), ElementsOf(pointers));
}

TEST(BaseComparableArray, SetOperationsEqualTheObviousModel)
{
    Random random;
    for (int round = 0; round < 2000; ++round) {
        IntArray array, other;
        FillRandomly(array, random, 40, 20);
        FillRandomly(other, random, 12, 20);
        const Ints elements = ElementsOf(array);
        const Ints others = ElementsOf(other);
        const int keep = random.Between(-1, 41);
        const int value = random.Between(0, 20);

        Ints without, within, preserved, valueless;
        for (int i = 0; i < static_cast<int>(elements.size()); ++i) {
            const int element = elements[static_cast<std::size_t>(i)];
            (Occurs(others, element) ? within : without).push_back(element);
            if (i == keep || !Occurs(others, element))
                preserved.push_back(element);
            if (element != value)
                valueless.push_back(element);
        }

        IntArray result = array;
        ASSERT_EQ(static_cast<int>(within.size()), result.Remove(other));
        ASSERT_EQ(without, ElementsOf(result));
        ASSERT_EQ(within, ElementsOf(IntArray(array) &= other));
        ASSERT_EQ(without, ElementsOf(IntArray(array) -= other));
        ASSERT_EQ(preserved, ElementsOf(IntArray(array).DiffPreserveIndex(other, keep))) << "keep " << keep;
        IntArray same = array;
        ASSERT_TRUE(&same == &(same &= other) && &same == &(same -= other) && &same == &same.DiffPreserveIndex(other, keep));
        result = array;
        ASSERT_EQ(static_cast<int>(elements.size() - valueless.size()), result.Remove(value));
        ASSERT_EQ(valueless, ElementsOf(result));
        ASSERT_EQ(without.empty(), other.Contains(array));
        ASSERT_EQ(valueless == elements, result == array);
        ASSERT_EQ(valueless != elements, result != array);
        result = array;
        result.BubbleSort();
        Ints sorted = elements;
        std::sort(sorted.begin(), sorted.end());
        ASSERT_EQ(sorted, ElementsOf(result));
    }
}

TEST(BaseComparableArray, StringsMoveOverTheHoles)
{
    TextArray texts(6, "a", "b", "a", "c", "b", "d");
    EXPECT_EQ(2, texts.Remove("b"));
    EXPECT_EQ((std::vector<CString>{"a", "a", "c", "d"}), ElementsOf(texts));
    EXPECT_TRUE(texts.RemoveFirst("a"));
    EXPECT_FALSE(texts.RemoveFirst("x"));
    EXPECT_EQ((std::vector<CString>{"a", "c", "d"}), ElementsOf(texts));
    texts.AddUnique(TextArray(3, "d", "e", "e"));
    EXPECT_EQ((std::vector<CString>{"a", "c", "d", "e"}), ElementsOf(texts));
    EXPECT_EQ(3, texts.Remove(TextArray(4, "e", "a", "c", "x")));
    EXPECT_EQ((std::vector<CString>{"d"}), ElementsOf(texts));
}

TEST(BaseComparableArray, AnArrayIsItsOwnArgument)
{
    const TextArray texts(3, "a", "b", "a");
    TextArray self = texts;
    EXPECT_TRUE(self.Contains(self));
    self.AddUnique(self);
    TextArray& same = self;
    self &= same;
    EXPECT_TRUE(self == texts);
    self.DiffPreserveIndex(self, 1);
    EXPECT_TRUE(self == TextArray(CString("b")));
    EXPECT_EQ(1, self.Remove(self));
    EXPECT_EQ(0, self.GetSize());

    CBaseComparableArray<double> numbers(2, 1.0, std::nan(""));
    numbers.AddUnique(numbers);
    EXPECT_EQ(3, numbers.GetSize()) << "what is no number is unequal even to itself";
}

TEST(BaseComparableArray, AThrowingComparisonLeavesAWholeArray)
{
    CBaseComparableArray<Faulty, const Faulty&> array;
    for (const char* text : {"a", "b", "a", "fault", "a"})
        array.Add(Faulty{text});
    EXPECT_THROW(array.Remove(Faulty{"a"}), CUserException*);
    ASSERT_EQ(3, array.GetSize());
    EXPECT_EQ("b fault a", array[0].text + " " + array[1].text + " " + array[2].text);
}

TEST(BaseComparableArray, MaximumIndexIsMinusOneUnlessALaterElementExceeds)
{
    for (const auto& [at, array] : Table<int, IntArray>{
             {-1, {3, 9, 3, 5}},
             {1, {3, 3, 9, 5}},
             {1, {4, 3, 9, 5, 9}},
             {-1, {7}},
             {-1, {2, 7, 7}},
         })
        EXPECT_EQ(at, array.GetMaxValueIndex()) << testing::PrintToString(ElementsOf(array));
    EXPECT_THROW(IntArray().GetMaxValueIndex(), CInvalidArgException*);

    IntArray array(3, 3, 9, 5);
    EXPECT_EQ(&array[0], &array.GetMaxValue());
    EXPECT_EQ(Ints({9, 9, 5}), ElementsOf(array)) << "the first element is overwritten";
    EXPECT_THROW(IntArray().GetMaxValue(), CInvalidArgException*);
}

TEST(BaseNumericArray, SequencesWrapAndAveragesTruncateTowardZero)
{
    IntArray array(1);
    array.AddIncremental(10, 3, 5);
    array.AddIncremental(0, 0, 1);
    array.AddIncremental(0, -3, 1);
    array.AddIncremental(INT_MAX, 2, 1);
    EXPECT_EQ(Ints({1, 10, 15, 20, INT_MAX, INT_MIN}), ElementsOf(array));

    EXPECT_EQ(2, IntArray(3, 1, 2, 5).CalcAverage());
    EXPECT_EQ(-2, IntArray(3, -1, -2, -5).CalcAverage());
    EXPECT_EQ(INT_MAX, IntArray(2, INT_MAX, INT_MAX).CalcAverage());
    EXPECT_EQ(0x80000000u, (CBaseNumericArray<DWORD, DWORD>(2, 0x80000000u, 0x80000001u).CalcAverage()));
}
