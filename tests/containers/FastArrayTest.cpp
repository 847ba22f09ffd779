// FastArrayTest.cpp: the used count over kept slots.
#include <kelgen/containers/FastArray.h>

#include "Elements.h"

using namespace kelgen::test;

namespace {

using FastTexts = CFastArray<CString, const CString&>;
using FastInts = CFastArray<int, int>;

const std::vector<CString> kThree{"one", "two", "three"};

FastTexts Three()
{
    FastTexts texts;
    for (const CString& text : kThree)
        texts.Add(text);
    return texts;
}

}  // namespace

TEST(FastArray, SlotsOutliveRemoval)
{
    FastTexts texts = Three();
    CStdArrayInterface<CString, const CString&>& view = texts;
    view.StdRemoveAll();
    EXPECT_EQ(0, view.StdArrayGetSize());
    EXPECT_EQ(kThree, ElementsOf(texts));
    texts.Swap(0, 2);
    EXPECT_EQ((std::vector<CString>{"three", "two", "one"}), ElementsOf(texts)) << "swapping reaches every slot";
    EXPECT_THROW(texts.Swap(0, 3), CInvalidArgException*);
    texts.Swap(0, 2);

    view.StdAdd("four");
    EXPECT_EQ(1, texts.GetSize());
    EXPECT_EQ((std::vector<CString>{"four", "two", "three"}), ElementsOf(texts));
    EXPECT_EQ("two", texts.ElementAt(1)) << "access is checked against the slots";
    EXPECT_THROW(texts.ElementAt(3), CInvalidArgException*);

    texts.Add(texts.ElementAt(2));
    texts.Add("five");
    EXPECT_EQ(3, texts.Add("six"));
    EXPECT_EQ((std::vector<CString>{"four", "three", "five", "six"}), ElementsOf(texts));
}

TEST(FastArray, RemoveAtMovesUsedElementsOnly)
{
    FastTexts texts = Three();
    texts.RemoveAt(0);
    EXPECT_EQ((std::vector<CString>{"two", "three", "three"}), ElementsOf(texts));
    EXPECT_THROW(texts.RemoveAt(2), CInvalidArgException*);
    EXPECT_THROW(texts.RemoveAt(-1), CInvalidArgException*);
    EXPECT_EQ(2, texts.GetSize());
}

TEST(FastArray, EnsureSizeRevealsKeptSlots)
{
    FastInts numbers;
    numbers.Add(1);
    numbers.Add(2);
    numbers.RemoveAll();
    numbers.EnsureSize(1);
    EXPECT_EQ(1, numbers.GetSize());
    EXPECT_EQ(2, numbers.GetCount());
    numbers.EnsureSize(4);
    EXPECT_EQ(4, numbers.GetSize());
    EXPECT_EQ(Ints({1, 2, 0, 0}), ElementsOf(numbers));
    EXPECT_THROW(numbers.EnsureSize(-1), CInvalidArgException*);
    EXPECT_EQ(4, numbers.GetSize());
}

TEST(FastArray, CopyTakesSlotsAndCount)
{
    FastTexts source = Three();
    source.RemoveAt(2);

    const std::unique_ptr<CObject> onHeap(new FastTexts(source));
    FastTexts& copy = *static_cast<FastTexts*>(onHeap.get());
    EXPECT_EQ(2, copy.GetSize());
    EXPECT_EQ(kThree, ElementsOf(copy));
    copy.Add("other");
    copy = source;
    copy.Copy(copy);
    EXPECT_EQ(2, copy.GetSize());
    EXPECT_EQ(kThree, ElementsOf(copy));

    copy = FastTexts();
    EXPECT_EQ(0, copy.GetSize());
    EXPECT_EQ(nullptr, copy.GetData());
}

TEST(FastArray, SlotsTakenAwayThroughTheBaseAreNeverTouched)
{
    FastTexts texts = Three();
    texts.SetSize(1);
    EXPECT_THROW(texts.RemoveAt(0), CInvalidArgException*);
    EXPECT_EQ(3, texts.Add("four"));
    EXPECT_EQ((std::vector<CString>{"one", "", "", "four"}), ElementsOf(texts));
}

TEST(FastArrayArray, OrdersByUsedCountOfTheUsedArrays)
{
    CFastArrayArray<FastInts, const FastInts&> arrays;
    for (const int size : {2, 5, 1, 3, 9}) {
        FastInts numbers;
        for (int i = 0; i < 10; ++i)
            numbers.Add(size);
        numbers.EnsureSize(size);
        arrays.Add(numbers);
    }
    arrays.RemoveAt(4);  // its slot stays, with nine used numbers

    const auto sizes = [&] {
        Ints result;
        for (int i = 0; i < arrays.GetCount(); ++i) {
            result.push_back(arrays[i].GetSize());
            EXPECT_EQ(arrays[i].GetSize(), arrays[i][0]);
        }
        return result;
    };
    arrays.BubbleSortByGetSize(false);
    EXPECT_EQ(Ints({5, 3, 2, 1, 9}), sizes());
    arrays.BubbleSortByGetSize(true);
    EXPECT_EQ(Ints({1, 2, 3, 5, 9}), sizes());
}
