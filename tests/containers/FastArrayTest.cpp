// FastArrayTest.cpp: the used count over kept slots.
#include <kelgen/containers/BaseIntArray.h>
#include <kelgen/containers/FastArray.h>
#include <kelgen/framework/files/Archive.h>
#include <kelgen/framework/files/MemFile.h>
#include <kelgen/framework/ole/OleVariant.h>

#include "Elements.h"

#include <vector>

using namespace kelgen::test;

namespace {

using FastTexts = CFastArray<CString, const CString&>;
using FastInts = CFastArray<int, int>;

template <class TYPE, class ARG_TYPE>
int SlotsOf(const CArray<TYPE, ARG_TYPE>& array)
{
    return array.GetCount();
}

int ByText(const CString& left, const CString& right)
{
    return left.Compare(right);
}

int ByNumber(const int& left, const int& right)
{
    return left - right;
}

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
    EXPECT_EQ(2, SlotsOf(numbers));
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
    static_cast<CArray<CString, const CString&>&>(texts).SetSize(1);
    EXPECT_THROW(texts.RemoveAt(0), CInvalidArgException*);
    EXPECT_THROW(texts.BubbleSort(ByText), CInvalidArgException*);
    EXPECT_THROW(texts.Pop(), CInvalidArgException*);
    EXPECT_EQ(3, texts.Add("four"));
    EXPECT_EQ((std::vector<CString>{"one", "", "", "four"}), ElementsOf(texts));
}

TEST(FastArray, EveryMemberSpeaksOfTheUsedElements)
{
    using Texts = std::vector<CString>;
    const FastTexts two = [] {
        FastTexts texts = Three();
        texts.RemoveAt(1);
        return texts;
    }();
    FastTexts plain = two;
    struct Row
    {
        const char* name;
        void (*change)(FastTexts&);
        Texts expected;
    };
    // Before: "one" and "three" used, and a slot that still holds the removed "three".
    for (const auto& [name, change, expected] : std::vector<Row>{
             {"Push", [](FastTexts& texts) { texts.Push("x"); }, {"one", "three", "x"}},
             {"Pop", [](FastTexts& texts) { EXPECT_EQ("three", texts.Pop()); }, {"one"}},
             {"AddUnique of a removed value",
              [](FastTexts& texts) {
                  texts.RemoveAt(1);
                  texts.AddUnique("three", ByText);
              },
              {"one", "three"}},
             {"AddUnique of a used value", [](FastTexts& texts) { texts.AddUnique("three", ByText); }, {"one", "three"}},
             {"Append", [](FastTexts& texts) { EXPECT_EQ(2, texts.Append(texts)); }, {"one", "three", "one", "three"}},
             {"Append of all slots",
              [](FastTexts& texts) { texts.Append(static_cast<const CArray<CString, const CString&>&>(texts)); },
              {"one", "three", "one", "three", "one"}},
             {"InsertAt", [](FastTexts& texts) { texts.InsertAt(1, texts[0], 2); }, {"one", "one", "one", "three"}},
             {"InsertAt past the end", [](FastTexts& texts) { texts.InsertAt(3, "x"); }, {"one", "three", "", "x"}},
             {"InsertAt of itself", [](FastTexts& texts) { texts.InsertAt(1, &texts); }, {"one", "one", "three", "three"}},
             {"SetAtGrow", [](FastTexts& texts) { texts.SetAtGrow(4, texts[1]); }, {"one", "three", "", "", "three"}},
             {"SetAtGrow of a used one", [](FastTexts& texts) { texts.SetAtGrow(1, "x"); }, {"one", "x"}},
             {"SetSize", [](FastTexts& texts) { texts.SetSize(3); }, {"one", "three", ""}},
             {"SetSize to less", [](FastTexts& texts) { texts.SetSize(1); }, {"one"}},
             {"IncrementSize", [](FastTexts& texts) { texts.IncrementSize(1); }, {"one", "three", ""}},
             {"SortAdd",
              [](FastTexts& texts) {
                  texts.Swap(0, 1);
                  texts.SortAdd("p", ByText);
              },
              {"three", "p", "one"}},
             {"BubbleSort",
              [](FastTexts& texts) {
                  texts.SetAt(2, "a");
                  texts.Swap(0, 1);
                  texts.BubbleSort(ByText);
              },
              {"one", "three"}},
             {"RemoveDuplicates", [](FastTexts& texts) { texts.RemoveDuplicates(ByText); }, {"one", "three"}},
             {"LastElement", [](FastTexts& texts) { texts.LastElement() = "x"; }, {"one", "x"}},
             {"FreeExtra",
              [](FastTexts& texts) {
                  texts.FreeExtra();
                  EXPECT_EQ(2, SlotsOf(texts));
              },
              {"one", "three"}},
         }) {
        FastTexts texts = two;
        change(texts);
        Texts used;
        for (int i = 0; i < texts.GetCount(); ++i)
            used.push_back(texts[i]);
        EXPECT_EQ(expected, used) << name;
        EXPECT_EQ(texts.GetSize(), texts.GetCount()) << name;
        EXPECT_EQ(texts.GetSize() - 1, texts.GetUpperBound()) << name;
    }

    FastTexts removed = two;
    removed.RemoveAt(1);
    EXPECT_EQ(-1, removed.FindFirst("three", ByText, 0));
    EXPECT_EQ(-1, removed.FindFirst(&removed[1]));
    EXPECT_EQ(0, removed.FindFirst(&removed[0]));
    removed.RemoveAll();
    EXPECT_TRUE(removed.IsEmpty());
    EXPECT_THROW(removed.FirstElement(), CInvalidArgException*);
    EXPECT_THROW(removed.LastElement(), CInvalidArgException*);
    EXPECT_THROW(removed.InsertAt(-1, "x"), CInvalidArgException*);
    EXPECT_EQ(kThree.size(), static_cast<std::size_t>(SlotsOf(removed)));
}

TEST(FastArray, ArchivesAndAutomationSeeTheUsedElements)
{
    FastInts numbers;
    for (const int number : {4, 2, 7, 9})
        numbers.Add(number);
    numbers.RemoveAt(3);
    const COleVariant variant = FastInts::GetOleVariantArray(VT_I4, numbers);
    FastInts copy;
    for (int i = 0; i < 6; ++i)
        copy.Add(100);
    EXPECT_TRUE(copy.CopySafeArray(variant.parray));
    EXPECT_EQ(3, copy.GetSize());
    EXPECT_EQ(Ints({4, 2, 7, 100, 100, 100}), ElementsOf(copy));
    int index = 0;
    copy.BubbleSort(ByNumber);
    EXPECT_TRUE(copy.SortFind(4, ByNumber, index));

    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        numbers.Serialize(archive);
    }
    EXPECT_EQ(2u + 3 * sizeof(int), file.GetLength());
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    CFastIntList loaded;
    loaded.EnsureSize(5);
    loaded.Serialize(archive);
    EXPECT_EQ(3, loaded.GetSize());
    EXPECT_EQ(Ints({4, 2, 7, 0, 0}), ElementsOf(loaded));
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
        for (int i = 0; i < SlotsOf(arrays); ++i) {
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
