// ListTest.cpp: order, positions and random changes against a standard list.
#include <kelgen/framework/collections/List.h>
#include <kelgen/framework/collections/ListTypes.h>

#include "framework/Thrown.h"
#include "support/Random.h"

#include <list>

using namespace kelgen::test;

namespace {

template <class LIST>
std::vector<std::string> Forward(const LIST& list)
{
    std::vector<std::string> values;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
        values.emplace_back(list.GetNext(position));
    return values;
}

template <class LIST>
std::vector<std::string> Backward(const LIST& list)
{
    std::vector<std::string> values;
    for (POSITION position = list.GetTailPosition(); position != nullptr;)
        values.insert(values.begin(), list.GetPrev(position).GetString());
    return values;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(List, AddsWholeListsInTheirOrder)
{
    CStringList list;
    list.AddTail("c");
    list.AddTail("d");
    CStringList front;
    front.AddTail("a");
    front.AddTail("b");
    list.AddHead(&front);
    list.AddTail(&list);
    EXPECT_EQ((Texts{"a", "b", "c", "d", "a", "b", "c", "d"}), Forward(list));
    front.AddHead(&front);
    EXPECT_EQ((Texts{"a", "b", "a", "b"}), Backward(front));
}

TEST(List, InsertsAtTheEndsForANullPosition)
{
    CStringList list;
    const POSITION middle = list.InsertAfter(nullptr, "m");
    list.InsertBefore(nullptr, "first");
    list.InsertAfter(nullptr, "last");
    list.InsertBefore(middle, "l");
    list.InsertAfter(middle, "n");
    EXPECT_EQ((Texts{"first", "l", "m", "n", "last"}), Forward(list));
    EXPECT_EQ((Texts{"first", "l", "m", "n", "last"}), Backward(list));
}

TEST(List, FindsAfterAPosition)
{
    CStringList list;
    for (const char* text : {"x", "y", "x"})
        list.AddTail(text);
    const POSITION first = list.Find("x");
    EXPECT_EQ(list.GetHeadPosition(), first);
    EXPECT_EQ(list.GetTailPosition(), list.Find("x", first));
    EXPECT_EQ(nullptr, list.Find("x", list.GetTailPosition()));
    EXPECT_EQ(nullptr, list.Find("z"));
    EXPECT_EQ(list.GetTailPosition(), list.FindIndex(2));
    EXPECT_EQ(nullptr, list.FindIndex(3));
    EXPECT_EQ(nullptr, list.FindIndex(-1));
}

TEST(List, MisuseThrowsInvalidArgument)
{
    CStringList list;
    POSITION none = nullptr;
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.GetHead(); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.GetTail(); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.RemoveHead(); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.RemoveTail(); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.GetNext(none); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.GetPrev(none); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.RemoveAt(nullptr); }));
    EXPECT_EQ("CInvalidArgException", Thrown([&] { list.SetAt(nullptr, "a"); }));
}

TEST(List, RandomChangesMatchAStandardList)
{
    Random random;
    CList<CString, const CString&> list(3);
    std::list<std::string> model;
    for (int step = 0; step < 3000; ++step) {
        const std::string value = std::to_string(step);
        const int size = static_cast<int>(model.size()), index = random.Between(0, size);
        const auto place = std::next(model.begin(), index);
        switch (random.Between(0, 5)) {
        case 0:
            list.AddHead(value.c_str());
            model.push_front(value);
            break;
        case 1:
            list.AddTail(value.c_str());
            model.push_back(value);
            break;
        case 2:
            if (index < size) {
                list.InsertBefore(list.FindIndex(index), value.c_str());
                model.insert(place, value);
            }
            break;
        case 3:
            if (index < size) {
                list.InsertAfter(list.FindIndex(index), value.c_str());
                model.insert(std::next(place), value);
            }
            break;
        case 4:
            if (index < size) {
                list.RemoveAt(list.FindIndex(index));
                model.erase(place);
            }
            break;
        case 5:
            if (size > 0) {
                EXPECT_EQ(model.back(), list.RemoveTail().GetString());
                model.pop_back();
            }
            break;
        }
        ASSERT_EQ(static_cast<int>(model.size()), list.GetCount());
    }
    EXPECT_EQ(Texts(model.begin(), model.end()), Forward(list));
    EXPECT_EQ(Texts(model.begin(), model.end()), Backward(list));
}

TEST(TypedPtrList, GivesTheElementsWithTheirType)
{
    int values[] = {1, 2};
    CTypedPtrList<CPtrList, int*> list, copy;
    for (int& value : values)
        list.AddTail(&value);
    copy.AddTail(&list);
    POSITION position = copy.GetHeadPosition();
    copy.GetNext(position) = &values[1];
    EXPECT_EQ(2, *copy.RemoveHead());
    EXPECT_EQ(2, *copy.RemoveTail());
    EXPECT_TRUE(copy.IsEmpty());
}
