// PropertySetTest.cpp: look-up, copies, equality, and who hears of an assignment, how often and in which order.
#include <kelgen/property/PropertySet.h>

#include <kelgen/framework/Exceptions.h>

#include "property/Recorder.h"

using namespace gen;
using kelgen::test::AddInteger;
using kelgen::test::Log;
using kelgen::test::Recorder;

namespace {

template <class CALL>
bool ThrowsInvalidArgument(CALL call)
{
    try {
        call();
    } catch (CInvalidArgException* exception) {
        exception->Delete();
        return true;
    }
    return false;
}

}  // namespace

class PropertySet : public testing::Test
{
protected:
    PropertySet()
    {
        AddInteger(set, 1, "width");
        AddInteger(set, 2, "height");
        AddInteger(set, 1, "width");
        set.AddListener(&first);
        set.AddListener(&second);
    }

    CPropertySet set;
    Log log;
    Recorder first{"first", log};
    Recorder second{"second", log};
};

TEST_F(PropertySet, EveryListenerHearsEveryAssignmentInOrderOfRegistration)
{
    set.Set("height", 5);
    EXPECT_EQ((Log{"first:height=5", "second:height=5"}), log);
    log.clear();
    set.Set(2, 5);
    EXPECT_EQ((Log{"first:height=5", "second:height=5"}), log) << "unchanged";
    log.clear();
    set["height"]->GetValue() = 7;
    EXPECT_EQ((Log{"first:height=7", "second:height=7", "first:height=7", "second:height=7"}), log) << "assigned from a number";
}

TEST_F(PropertySet, SetTakesTheTypeAndIgnoresUnknownProperties)
{
    set.Set("height", CPropertyValue("tall"));
    EXPECT_EQ(eptString, set[2]->GetValue().GetType());
    log.clear();
    set.Set("Height", 1);
    set.Set("", 1);
    set.Set(3, 1);
    EXPECT_EQ(3, set.GetPropertyCount());
    EXPECT_EQ(Log{}, log);
}

TEST_F(PropertySet, FindFirstSearchesFromStart)
{
    EXPECT_EQ(&set.PropertyAt(0), set.FindFirst("width", 0));
    EXPECT_EQ(&set.PropertyAt(2), set.FindFirst("width", 1));
    EXPECT_EQ(&set.PropertyAt(2), set.FindFirst(1, 1));
    EXPECT_EQ(nullptr, set.FindFirst("Width", 0));
    EXPECT_EQ(nullptr, set.FindFirst("width", 3));
    EXPECT_EQ(nullptr, set.FindFirst(1, INT_MAX));
    EXPECT_TRUE(ThrowsInvalidArgument([&] { set.FindFirst("width", -1); }));
    EXPECT_TRUE(ThrowsInvalidArgument([&] { set.FindFirst(1, INT_MIN); }));
}

TEST_F(PropertySet, PropertyAtChecksItsIndexBeforeItTouchesTheResult)
{
    CProperty out(9, "out", eptString);
    for (int index : {-1, 3, INT_MAX, INT_MIN}) {
        EXPECT_TRUE(ThrowsInvalidArgument([&] { set.PropertyAt(index); })) << index;
        EXPECT_TRUE(ThrowsInvalidArgument([&] { set.PropertyAt(index, out); })) << index;
    }
    EXPECT_STREQ("out", out.GetName());
    set.PropertyAt(1, out);
    EXPECT_EQ(2, out.GetId());
    EXPECT_EQ(nullptr, out.GetSet());
    EXPECT_EQ(Log{}, log);
}

TEST_F(PropertySet, GetCopiesAndReportsToTheOwnerOfTheResult)
{
    set.Set("height", 5);
    log.clear();
    CPropertyValue& target = set[1]->GetValue();
    EXPECT_TRUE(set.Get("height", target));
    EXPECT_EQ((Log{"first:width=5", "second:width=5"}), log);
    EXPECT_FALSE(set.Get("depth", target));
    EXPECT_FALSE(set.Get(3, target));
    EXPECT_EQ(5, target.GetValueInteger());
    EXPECT_EQ(2u, log.size());
}

TEST_F(PropertySet, CopyTakesOneValueOfAnotherSet)
{
    CPropertySet source;
    AddInteger(source, 70, "other");
    source.Set(70, 42);
    set.Copy(2, source, 70);
    EXPECT_EQ((Log{"first:height=42", "second:height=42"}), log);
    set.Copy(2, source, 71);
    set.Copy(3, source, 70);
    EXPECT_EQ(2u, log.size());
}

TEST_F(PropertySet, AddPropertyCopiesAndAdopts)
{
    CProperty original(7, "depth", eptInteger);
    set.AddProperty(original);
    set.AddProperty(set.PropertyAt(3));
    EXPECT_EQ(Log{}, log);
    original.GetValue().SetValueInteger(1);
    EXPECT_EQ(Log{}, log);
    set.PropertyAt(4).GetValue().SetValueInteger(2);
    EXPECT_EQ((Log{"first:depth=2", "second:depth=2"}), log);
}

TEST_F(PropertySet, CopiesReportToTheirOwnListenersOnly)
{
    Log otherLog;
    Recorder other("other", otherLog);
    CPropertySet target;
    AddInteger(target, 1, "gone");
    target.AddListener(&other);
    target = set;
    EXPECT_EQ(3, target.GetPropertyCount());
    EXPECT_EQ(nullptr, target["gone"]);
    EXPECT_EQ(Log{}, otherLog);
    EXPECT_EQ(Log{}, log);

    target.Set("height", 1);
    EXPECT_EQ((Log{"other:height=1"}), otherLog);
    CPropertySet copy(set);
    copy.Set("height", 1);
    EXPECT_EQ(Log{}, log);
    EXPECT_EQ(0, set["height"]->GetValue().GetValueInteger());
}

TEST_F(PropertySet, AssignmentToItselfKeepsEverything)
{
    const CProperty* before = set["height"];
    CPropertySet& same = set;
    set = same;
    EXPECT_EQ(before, set["height"]);
    set.Set("height", 1);
    EXPECT_EQ(2u, log.size());
}

TEST_F(PropertySet, EqualityWalksTheLeftSetOnly)
{
    CPropertySet longer(set);
    AddInteger(longer, 9, "more");
    EXPECT_TRUE(set == longer);
    EXPECT_TRUE(ThrowsInvalidArgument([&] { static_cast<void>(longer == set); }));
    EXPECT_TRUE(CPropertySet() == set);

    longer.Set("height", 1);
    EXPECT_FALSE(longer == set) << "a difference before the missing property";
    longer.Set("height", "0x");
    EXPECT_TRUE(set == longer) << "the left property's type decides";
    longer["height"]->SetName("Height");
    EXPECT_FALSE(set == longer);
}

TEST_F(PropertySet, ListenersMayBeAddedSeveralTimes)
{
    set.AddListener(&first);
    set.Set("height", 1);
    EXPECT_EQ((Log{"first:height=1", "second:height=1", "first:height=1"}), log);
    log.clear();
    set.RemoveListener(&first);
    set.Set("height", 2);
    EXPECT_EQ((Log{"second:height=2"}), log);
}

TEST_F(PropertySet, AListenerThatRemovesItselfHidesItsSuccessorOnce)
{
    first.react = [&](CPropertySet& from, CProperty&) { from.RemoveListener(&first); };
    set.Set("height", 1);
    EXPECT_EQ((Log{"first:height=1"}), log);
    set.Set("height", 2);
    EXPECT_EQ((Log{"first:height=1", "second:height=2"}), log);
}

TEST_F(PropertySet, AListenerAddedInsideIsToldInTheSameWalk)
{
    Recorder third("third", log);
    first.react = [&](CPropertySet& to, CProperty&) {
        first.react = nullptr;
        to.AddListener(&third);
    };
    set.Set("height", 1);
    EXPECT_EQ((Log{"first:height=1", "second:height=1", "third:height=1"}), log);
}

TEST_F(PropertySet, AnExceptionEndsTheWalkAndTheValueStays)
{
    first.react = [](CPropertySet&, CProperty&) { AfxThrowInvalidArgException(); };
    EXPECT_TRUE(ThrowsInvalidArgument([&] { set["height"]->GetValue() = 4; }));
    EXPECT_EQ((Log{"first:height=4"}), log) << "neither the successor nor the second report";
    first.react = nullptr;
    set.Set("height", 5);
    EXPECT_EQ((Log{"first:height=4", "first:height=5", "second:height=5"}), log);
}

TEST_F(PropertySet, AssignmentInsideANotificationIsToldInside)
{
    first.react = [](CPropertySet& from, CProperty& property) {
        if (property.GetValue().GetValueInteger() < 2)
            from.Set("height", 2);
    };
    set.Set("height", 1);
    EXPECT_EQ((Log{"first:height=1", "first:height=2", "second:height=2", "second:height=2"}), log);
}

TEST_F(PropertySet, PulseTellsOfEveryPropertyInOrder)
{
    set.RemoveListener(&second);
    set.PulsePropertyChange();
    const Log once{"first:width=0", "first:height=0", "first:width=0"};
    EXPECT_EQ(once, log);

    CPropertySet empty;
    CPropertySet other;
    AddInteger(other, 1, "other");
    other.AddListener(&second);
    CPropertySetPtrArray sets;
    for (CPropertySet* each : {&other, &empty, &set, &other})
        sets.Add(each);
    log.clear();
    sets.PulsePropertyChange();
    EXPECT_EQ((Log{"second:other=0", once[0], once[1], once[2], "second:other=0"}), log);
}

TEST_F(PropertySet, AssignedPropertyReportsBeforeItsNewNameAndKeepsItsSet)
{
    CProperty replacement(8, "replacement", eptInteger);
    replacement.GetValue().SetValueInteger(3);
    set.RemoveListener(&second);
    set.PropertyAt(1) = replacement;
    EXPECT_EQ((Log{"first:height=3"}), log);
    EXPECT_EQ(&set.PropertyAt(1), set["replacement"]);
    EXPECT_EQ(&set, set[8]->GetSet());
}
