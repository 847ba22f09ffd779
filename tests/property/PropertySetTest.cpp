// PropertySetTest.cpp: look-up, copies, equality, and who hears of an assignment, how often and in which order.
#include <kelgen/property/PropertySet.h>

#include "framework/Thrown.h"
#include "property/Recorder.h"
#include "support/Random.h"
#include "support/Rows.h"

#include <climits>

using namespace gen;
using namespace kelgen::test;

namespace {

constexpr char kInvalid[] = "CInvalidArgException";

struct PropertySet : testing::Test
{
    PropertySet()
    {
        AddInteger(set, 1, "width");
        AddInteger(set, 2, "height");
        AddInteger(set, 1, "width");
        set.AddListener(&first);
        set.AddListener(&second);
    }

    /// What the listeners are told during @p action.
    template <class Action>
    Log Heard(Action action)
    {
        log.clear();
        action();
        return log;
    }

    CPropertySet set;
    Log log;
    Recorder first{"first", log};
    Recorder second{"second", log};
};

}  // namespace

TEST_F(PropertySet, EveryListenerHearsEveryAssignmentInOrderOfRegistration)
{
    const Log once{"first:height=5", "second:height=5"};
    EXPECT_EQ(once, Heard([&] { set.Set("height", 5); }));
    EXPECT_EQ(once, Heard([&] { set.Set(2, 5); })) << "unchanged";
    EXPECT_EQ((Log{once[0], once[1], once[0], once[1]}), Heard([&] { set["height"]->GetValue() = 5; })) << "from a number";
    EXPECT_EQ(Log{}, Heard([&] {
                  set.Set("Height", 1);
                  set.Set("", 1);
                  set.Set(3, 1);
              }));
    EXPECT_EQ(3, set.GetPropertyCount()) << "unknown properties are not added";

    set.AddListener(&first);
    EXPECT_EQ((Log{once[0], once[1], once[0]}), Heard([&] { set.Set("height", 5); })) << "as often as it was added";
    set.RemoveListener(&first);
    EXPECT_EQ((Log{"second:height=tall"}), Heard([&] { set.Set("height", CPropertyValue("tall")); })) << "the type is taken";
}

TEST_F(PropertySet, IndicesAreChecked)
{
    const CProperty* const last = &set.PropertyAt(2);
    for (const auto& [expected, found] : Table<const CProperty*, const CProperty*>{
             {last, set.FindFirst("width", 1)},
             {last, set.FindFirst(1, 1)},
             {nullptr, set.FindFirst("Width", 0)},
             {nullptr, set.FindFirst("width", 3)},
             {nullptr, set.FindFirst(1, INT_MAX)},
         })
        EXPECT_EQ(expected, found);
    EXPECT_EQ(kInvalid, Thrown([&] { set.FindFirst("width", -1); }));
    EXPECT_EQ(kInvalid, Thrown([&] { set.FindFirst(1, INT_MIN); }));

    CProperty out(9, "out", eptString);
    EXPECT_EQ(kInvalid, Thrown([&] { set.PropertyAt(-1); }));
    EXPECT_EQ(kInvalid, Thrown([&] { set.PropertyAt(3, out); }));
    EXPECT_STREQ("out", out.GetName());
    set.PropertyAt(1, out);
    EXPECT_EQ(2, out.GetId());
    EXPECT_EQ(nullptr, out.GetSet());
}

TEST_F(PropertySet, GetAndCopyReportToTheOwnerOfTheTarget)
{
    set.Set("height", 5);
    CPropertyValue& target = set[1]->GetValue();
    EXPECT_EQ((Log{"first:width=5", "second:width=5", "first:width=5", "second:width=5"}),
              Heard([&] { EXPECT_TRUE(set.Get("height", target) && set.Get(2, target)); }));

    CPropertySet source;
    AddInteger(source, 70, "other");
    source.Set(70, 42);
    EXPECT_EQ((Log{"first:height=42", "second:height=42"}), Heard([&] { set.Copy(2, source, 70); }));
    EXPECT_EQ(Log{}, Heard([&] {
                  EXPECT_FALSE(set.Get("depth", target) || set.Get(3, target));
                  set.Copy(2, source, 71);
                  set.Copy(3, source, 70);
              }));
    EXPECT_EQ(5, target.GetValueInteger());
}

TEST_F(PropertySet, TheFirstOfSeveralIsMeant)
{
    CPropertyValue read(0);
    set.Set("width", 3);
    EXPECT_TRUE(set.Get("width", read));
    EXPECT_EQ(3, read.GetValueInteger());
    set.Set(1, 4);
    EXPECT_TRUE(set.Get(1, read));
    EXPECT_EQ(4, read.GetValueInteger());
    EXPECT_EQ(4, set.PropertyAt(0).GetValue().GetValueInteger());
    EXPECT_EQ(0, set.PropertyAt(2).GetValue().GetValueInteger());
}

TEST_F(PropertySet, CopiesReportToTheSetThatHoldsThem)
{
    CProperty original(7, "depth", eptInteger);
    EXPECT_EQ(Log{}, Heard([&] {
                  set.AddProperty(original);
                  set.AddProperty(set.PropertyAt(3));
                  original.GetValue().SetValueInteger(1);
              }));
    EXPECT_EQ((Log{"first:depth=2", "second:depth=2"}), Heard([&] { set.PropertyAt(4).GetValue().SetValueInteger(2); }));

    Recorder other("other", log);
    CPropertySet target;
    AddInteger(target, 1, "gone");
    target.AddListener(&other);
    EXPECT_EQ(Log{}, Heard([&] { target = set; }));
    EXPECT_EQ(5, target.GetPropertyCount());
    EXPECT_EQ(nullptr, target["gone"]);
    EXPECT_EQ((Log{"other:height=1"}), Heard([&] { target.Set("height", 1); }));
    CPropertySet copy(set);
    EXPECT_EQ(Log{}, Heard([&] { copy.Set("height", 1); }));
    EXPECT_EQ(0, set["height"]->GetValue().GetValueInteger());

    const CProperty* before = set["height"];
    CPropertySet& same = set;
    set = same;
    EXPECT_EQ(before, set["height"]) << "assignment to itself";
}

TEST_F(PropertySet, AssignedPropertyReportsBeforeItsNewNameAndKeepsItsSet)
{
    CProperty replacement(8, "replacement", eptInteger);
    replacement.GetValue().SetValueInteger(3);
    EXPECT_EQ((Log{"first:height=3", "second:height=3"}), Heard([&] { set.PropertyAt(1) = replacement; }));
    EXPECT_EQ(&set.PropertyAt(1), set["replacement"]);
    EXPECT_EQ(&set, set[8]->GetSet());
}

TEST_F(PropertySet, EqualityWalksTheLeftSetOnly)
{
    CPropertySet longer(set);
    AddInteger(longer, 9, "more");
    EXPECT_TRUE(set == longer);
    EXPECT_EQ(kInvalid, Thrown([&] { static_cast<void>(longer == set); }));
    EXPECT_TRUE(CPropertySet() == set);

    longer.Set("height", 1);
    EXPECT_FALSE(longer == set) << "a difference before the missing property";
    longer.Set("height", "0x");
    EXPECT_TRUE(set == longer) << "the left property's type decides";
    longer["height"]->SetName("Height");
    EXPECT_FALSE(set == longer);
}

TEST_F(PropertySet, ListenersAreReadAgainAfterEachCall)
{
    const auto assign = [&](int value) { return Heard([&] { set.Set("height", value); }); };
    Recorder third("third", log);
    first.react = [&](CPropertySet& to, CProperty&) {
        first.react = nullptr;
        to.AddListener(&third);
    };
    EXPECT_EQ((Log{"first:height=1", "second:height=1", "third:height=1"}), assign(1)) << "added inside";
    set.RemoveListener(&third);

    first.react = [](CPropertySet& from, CProperty& property) {
        if (property.GetValue().GetValueInteger() != 3)
            from.Set("height", 3);
    };
    EXPECT_EQ((Log{"first:height=2", "first:height=3", "second:height=3", "second:height=3"}), assign(2)) << "assigned inside";

    first.react = [&](CPropertySet& from, CProperty&) { from.RemoveListener(&first); };
    EXPECT_EQ((Log{"first:height=4"}), assign(4)) << "one that removes itself hides its successor once";
    EXPECT_EQ((Log{"second:height=5"}), assign(5));
}

TEST_F(PropertySet, AnExceptionEndsTheWalkAndTheValueStays)
{
    first.react = [](CPropertySet&, CProperty&) { AfxThrowInvalidArgException(); };
    EXPECT_EQ(kInvalid, Thrown([&] { set["height"]->GetValue() = 4; }));
    EXPECT_EQ((Log{"first:height=4"}), log) << "neither the successor nor the second report";
    first.react = nullptr;
    EXPECT_EQ((Log{"first:height=5", "second:height=5"}), Heard([&] { set.Set("height", 5); }));
}

TEST_F(PropertySet, PulseTellsOfEveryPropertyInOrder)
{
    set.RemoveListener(&second);
    CPropertySet empty, other;
    AddInteger(other, 1, "other");
    other.AddListener(&second);
    CPropertySetPtrArray sets;
    for (CPropertySet* each : {&other, &empty, &set})
        sets.Add(each);
    EXPECT_EQ((Log{"second:other=0", "first:width=0", "first:height=0", "first:width=0"}), Heard([&] { sets.PulsePropertyChange(); }));
}

TEST(PropertySetListener, EndOfListenerOrPropertyEndsTheLink)
{
    Log log;
    CPropertySet set, other;
    AddInteger(set, 1, "a");
    AddInteger(other, 1, "a");
    {
        Recorder passing("passing", log);
        const Recorder copy(passing);
        set.AddListener(&passing);
        other.AddListener(&passing);
        set.AddListener(&passing);
    }
    set.Set("a", 1);
    EXPECT_EQ(Log{}, log);

    Recorder first("first", log), second("second", log);
    set.AddListener(&first);
    set.AddListener(&second);
    first.react = [&](CPropertySet&, CProperty&) {
        first.react = nullptr;
        set = other;
    };
    set["a"]->GetValue() = 2;
    EXPECT_EQ(Log{"first:a=2"}, log) << "nobody is told of a property that is gone";
}

// A large set has an index beside its properties: whatever changes, its answers are those of a walk.
TEST(LargePropertySet, IsSearchedAsIfWalked)
{
    Random random;
    const auto name = [&] { return std::to_string(random.Between(0, 60)); };
    CPropertySet set;
    for (int step = 0; step < 3000; ++step) {
        const int count = set.GetPropertyCount();
        CProperty added(random.Between(0, 60), name().c_str(), eptInteger);
        const int change = random.Between(0, 99);
        if (count < 20 || change < 3)
            set.AddProperty(added);
        else if (change == 4)
            set.PropertyAt(random.Between(0, count - 1)).SetName(name().c_str());
        else if (change == 5)
            set.PropertyAt(random.Between(0, count - 1)).SetId(random.Between(0, 60));
        else if (change == 6)
            set.PropertyAt(random.Between(0, count - 1)) = added;
        else if (change == 7)
            set = CPropertySet(set);

        const std::string wanted = name();
        const int id = random.Between(0, 60);
        const int start = random.Between(0, 1) * random.Between(0, set.GetPropertyCount());
        CProperty* byName = nullptr;
        CProperty* byId = nullptr;
        for (int i = set.GetPropertyCount() - 1; i >= start; --i) {
            CProperty& property = set.PropertyAt(i);
            byName = property.GetName() == wanted.c_str() ? &property : byName;
            byId = property.GetId() == id ? &property : byId;
        }
        ASSERT_EQ(byName, set.FindFirst(wanted.c_str(), start)) << step;
        ASSERT_EQ(byId, set.FindFirst(id, start)) << step;
    }
}
