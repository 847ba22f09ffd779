// ArrayTest.cpp: growth, bounds, element lifetimes, arguments from inside the array, and random changes against a vector.
#include <kelgen/framework/collections/Array.h>
#include <kelgen/framework/collections/ArrayTypes.h>
#include <kelgen/framework/collections/StringArray.h>

#include "framework/Thrown.h"
#include "support/Random.h"

#include <algorithm>
#include <climits>
#include <functional>
#include <vector>

using namespace kelgen::test;

namespace {

/// Shows the capacity, which is no public number.
template <class TYPE, class ARG_TYPE = TYPE>
class OpenArray : public CArray<TYPE, ARG_TYPE>
{
public:
    int Capacity() const { return this->m_nMaxSize; }
    std::vector<TYPE> Values() const { return {this->GetData(), this->GetData() + this->GetSize()}; }
    void Fill(const std::vector<TYPE>& values)
    {
        this->RemoveAll();
        for (const TYPE& value : values)
            this->Add(value);
    }
};

using Ints = OpenArray<int>;

/// Counts living objects and survives being moved bit by bit.
struct Counted
{
    using MovableBitwise = Counted;

    Counted() { ++living; }
    Counted(const Counted& other) : value(other.value) { ++living; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --living; }

    int value = 5;
    static inline int living = 0;
};

}  // namespace

TEST(Array, AddToAFullBlockGrowsByTheStep)
{
    struct Case
    {
        const char* name;
        int size;
        int growBy;
        int grownTo;
    };
    for (const Case& row : std::vector<Case>{
             {"automatic, at least 4", 8, 0, 12},
             {"automatic, an eighth", 40, 0, 45},
             {"automatic, an eighth rounded down", 47, 0, 52},
             {"automatic, at most 1024", 16000, 0, 17024},
             {"own step", 10, 100, 110},
             {"own step of one", 100, 1, 101},
         }) {
        SCOPED_TRACE(row.name);
        Ints array;
        array.SetSize(row.size);
        ASSERT_EQ(row.size, array.Capacity()) << "the first block is exact";
        array.SetSize(row.size, row.growBy);
        EXPECT_EQ(row.size, array.Add(1));
        EXPECT_EQ(row.grownTo, array.Capacity());
    }
}

TEST(Array, FirstBlockAndLargeStepsAreExact)
{
    Ints array;
    array.SetSize(3, 10);
    EXPECT_EQ(10, array.Capacity()) << "the step when it is larger";
    array.SetSize(50);
    EXPECT_EQ(50, array.Capacity()) << "the size when it is larger than a step";
    array.SetSize(20);
    EXPECT_EQ(50, array.Capacity()) << "shrinking keeps the block";
    array.FreeExtra();
    EXPECT_EQ(20, array.Capacity());
    array.SetSize(0);
    EXPECT_EQ(0, array.Capacity());
    EXPECT_EQ(nullptr, array.GetData());
    EXPECT_EQ(-1, array.GetUpperBound());
    array.Add(1);
    EXPECT_EQ(10, array.Capacity()) << "the step outlives the block";
}

TEST(Array, NewElementsAreZeroEvenInAReusedBlock)
{
    Ints array;
    array.Fill({1, 2, 3, 4, 5, 6});
    array.SetSize(2);
    array.SetSize(6);
    EXPECT_EQ((std::vector<int>{1, 2, 0, 0, 0, 0}), array.Values());
    array.RemoveAll();
    array.SetAtGrow(7, 9);
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 0, 0, 0, 9}), array.Values());
    array.InsertAt(array.GetSize() + 3, 8, 2);
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0, 0, 0, 0, 9, 0, 0, 0, 8, 8}), array.Values());
}

TEST(Array, MisuseThrowsInvalidArgumentAndChangesNothing)
{
    const std::function<void(Ints&)> misuses[] = {
        [](Ints& a) { a.GetAt(4); },
        [](Ints& a) { a.GetAt(-1); },
        [](Ints& a) { a[4] = 1; },
        [](Ints& a) { a.ElementAt(INT_MIN); },
        [](Ints& a) { a.SetAt(4, 1); },
        [](Ints& a) { a.SetSize(-1, 7); },
        [](Ints& a) { a.SetAtGrow(-1, 1); },
        [](Ints& a) { a.SetAtGrow(INT_MAX, 1); },
        [](Ints& a) { a.InsertAt(-1, 1); },
        [](Ints& a) { a.InsertAt(0, 1, 0); },
        [](Ints& a) { a.InsertAt(1, 1, INT_MAX); },
        [](Ints& a) { a.InsertAt(INT_MAX, 1, 1); },
        [](Ints& a) { a.InsertAt(0, static_cast<Ints*>(nullptr)); },
        [](Ints& a) { a.RemoveAt(-1); },
        [](Ints& a) { a.RemoveAt(0, -1); },
        [](Ints& a) { a.RemoveAt(2, 3); },
        [](Ints& a) { a.RemoveAt(2, INT_MAX); },
        [](Ints& a) {
            a.SetSize(4, INT_MAX);
            a.InsertAt(0, 1, 2);
        },
    };
    for (const auto& misuse : misuses) {
        SCOPED_TRACE(&misuse - misuses);
        Ints array;
        array.Fill({1, 2, 3, 4});
        const int capacity = array.Capacity();
        EXPECT_EQ("CInvalidArgException", Thrown([&] { misuse(array); }));
        EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), array.Values());
        EXPECT_EQ(capacity, array.Capacity());
    }
}

TEST(Array, BlockThatCannotBeHadThrowsMemoryException)
{
    struct Large
    {
        char bytes[1LL << 33];
    };
    CArray<Large, const Large&> array;
    EXPECT_EQ("CMemoryException", Thrown([&] { array.SetSize(INT_MAX); }));
    EXPECT_EQ(0, array.GetSize());
    EXPECT_EQ(nullptr, array.GetData());
}

TEST(Array, ArgumentsMayBeElementsOfTheArrayItself)
{
    OpenArray<CString, const CString&> array;
    for (const char* text : {"a", "b", "c"})
        array.Add(text);
    array.FreeExtra();
    array.Add(array[0]);
    array.FreeExtra();
    array.SetAtGrow(5, array[1]);
    array.FreeExtra();
    array.InsertAt(1, array[2], 2);
    array.FreeExtra();
    array.InsertAt(4, array[0]);
    array.FreeExtra();
    array.InsertAt(10, array[1]);
    EXPECT_EQ((std::vector<CString>{"a", "c", "c", "b", "a", "c", "a", "", "b", "", "c"}), array.Values());
}

TEST(Array, WholeArraysMayBeTheArrayItself)
{
    Ints array;
    array.Fill({1, 2, 3});
    array.InsertAt(1, &array);
    EXPECT_EQ((std::vector<int>{1, 1, 2, 3, 2, 3}), array.Values());
    EXPECT_EQ(6, array.Append(array));
    EXPECT_EQ((std::vector<int>{1, 1, 2, 3, 2, 3, 1, 1, 2, 3, 2, 3}), array.Values());
    array.Copy(array);
    EXPECT_EQ(12, array.GetSize());
    Ints none;
    array.Copy(none);
    EXPECT_TRUE(array.IsEmpty());
}

TEST(Array, ElementsAreConstructedAndDestroyedOnce)
{
    ASSERT_EQ(0, Counted::living);
    {
        CArray<Counted> array;
        array.SetSize(3, 20);
        EXPECT_EQ(3, Counted::living) << "spare room holds no objects";
        array.Add(Counted());
        array.InsertAt(1, Counted(), 4);
        EXPECT_EQ(8, Counted::living);
        array.RemoveAt(2, 3);
        EXPECT_EQ(5, Counted::living);
        array.SetSize(2);
        EXPECT_EQ(2, Counted::living);
        array.SetSize(100);
        EXPECT_EQ(100, Counted::living);
        CArray<Counted> other;
        other.Copy(array);
        EXPECT_EQ(200, Counted::living);
    }
    EXPECT_EQ(0, Counted::living);
}

TEST(Array, RandomChangesMatchAVector)
{
    Random random;
    for (int round = 0; round < 50; ++round) {
        OpenArray<CString, const CString&> array;
        std::vector<CString> model;
        for (int step = 0; step < 200; ++step) {
            const int size = static_cast<int>(model.size());
            const CString value(static_cast<char>('a' + random.Between(0, 25)), 3);
            const int index = random.Between(0, size), count = random.Between(1, 5);
            switch (random.Between(0, 6)) {
            case 0:
            case 1:
                EXPECT_EQ(size, array.Add(value));
                model.push_back(value);
                break;
            case 2:
                array.InsertAt(index, value, count);
                model.insert(model.begin() + index, static_cast<std::size_t>(count), value);
                break;
            case 3: {
                const int removed = std::min(count, size - index);
                array.RemoveAt(index, removed);
                model.erase(model.begin() + index, model.begin() + index + removed);
                break;
            }
            case 4:
                array.SetSize(index);
                model.resize(static_cast<std::size_t>(index));
                break;
            case 5:
                array.SetAtGrow(index + 1, value);
                model.resize(std::max(model.size(), static_cast<std::size_t>(index) + 2));
                model[static_cast<std::size_t>(index) + 1] = value;
                break;
            case 6:
                array.FreeExtra();
                break;
            }
            ASSERT_EQ(model, array.Values());
        }
    }
}

TEST(TypedPtrArray, GivesTheElementsWithTheirType)
{
    int first = 1, second = 2;
    CTypedPtrArray<CPtrArray, int*> array;
    array.Add(&first);
    array.InsertAt(0, &second);
    array[1] = array[0];
    EXPECT_EQ(&second, array.GetAt(1));
    CPtrArray& plain = array;
    EXPECT_EQ(static_cast<void*>(&second), plain.GetAt(0));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { array[2] = &first; }));
}
