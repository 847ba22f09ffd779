// PropertyValueTriggerTest.cpp: conditions, what is reported when, and which links outlive a trigger or a callback.
#include <kelgen/property/PropertyValueTrigger.h>

#include "property/Recorder.h"
#include "support/Rows.h"

#include <functional>
#include <optional>

using namespace gen;
using kelgen::test::AddInteger;
using kelgen::test::RowName;

namespace {

constexpr int kWatched = 5;
constexpr int kOther = 6;

class Callback : public CPropertyValueTriggerCallback
{
public:
    std::vector<bool> reports;
    std::vector<CBaseId> ids;
    std::function<void()> react;

    void OnPropertyValueTrigger(const CBaseId& id, bool match) override
    {
        reports.push_back(match);
        ids.push_back(id);
        if (const auto reaction = react)  // a copy: it may set another
            reaction();
    }
};

using Reports = std::vector<bool>;

class PropertyValueTrigger : public testing::Test
{
protected:
    PropertyValueTrigger()
    {
        AddInteger(set, kWatched, "watched");
        AddInteger(set, kOther, "other");
    }

    // How often the set tells the listener of one assignment.
    static int TimesTold(CPropertySet& by, int id, Callback& callback)
    {
        const auto before = callback.reports.size();
        by.Set(id, 0);
        return static_cast<int>(callback.reports.size() - before);
    }

    CPropertySet set;
    Callback callback;
};

}  // namespace

TEST_F(PropertyValueTrigger, ReportsTheTruthAtEveryAssignmentToTheWatchedProperty)
{
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.SetSimpleCondition(&set, kWatched, 3);
    EXPECT_EQ(Reports{}, callback.reports) << "a new condition reports nothing";
    set.Set(kWatched, 3);
    set.Set(kWatched, 3);
    set.Set(kWatched, 4);
    set.Set(kOther, 3);
    EXPECT_EQ((Reports{true, true, false}), callback.reports);
    set[kWatched]->GetValue() = 3;
    EXPECT_EQ((Reports{true, true, false, true, true}), callback.reports) << "an assignment operator reports twice";
    EXPECT_TRUE(callback.ids.front() == trigger.GetId());
    trigger.RemoveCallback(&callback);
}

TEST_F(PropertyValueTrigger, AMissingPropertyOrSetDoesNotMatch)
{
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.Check();
    trigger.SetSimpleCondition(&set, 99, 0);
    callback.Check();
    trigger.SetSimpleCondition(nullptr, kWatched, 0);
    trigger.Check();
    EXPECT_EQ((Reports{true, false, false}), callback.reports) << "no item matches, a missing property does not";
    trigger.RemoveCallback(&callback);
}

TEST_F(PropertyValueTrigger, ANewConditionLeavesTheOldSets)
{
    CPropertySet second;
    AddInteger(second, kWatched, "watched");
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.SetSimpleCondition(&set, kWatched, 3);
    trigger.SetSimpleCondition(&set, kWatched, 4);
    EXPECT_EQ(1, TimesTold(set, kWatched, callback));
    trigger.SetSimpleCondition(&second, kWatched, 4);
    EXPECT_EQ(0, TimesTold(set, kWatched, callback));
    EXPECT_EQ(1, TimesTold(second, kWatched, callback));
    trigger.RemoveCallback(&callback);
}

struct Combined
{
    const char* name;
    int mode;
    std::vector<bool> matches;  // one item each
    bool result;
};

class PropertyValueTriggerCondition : public testing::TestWithParam<Combined>
{};

TEST_P(PropertyValueTriggerCondition, CombinesItsItems)
{
    CPropertySet set;
    AddInteger(set, kWatched, "watched");
    CPropertyValueTrigger::CCondition condition;
    condition.mode = GetParam().mode;
    for (bool match : GetParam().matches) {
        CPropertyValueTrigger::CItem item(kWatched, &set, match ? 0 : 1);
        condition.items.Add(item);
    }
    EXPECT_EQ(GetParam().result, condition.DoesMatch());
    EXPECT_EQ(!GetParam().matches.empty(), condition.Intersects(&set, kWatched));
    EXPECT_FALSE(condition.Intersects(&set, kOther));
    EXPECT_FALSE(condition.Intersects(nullptr, kWatched));
}

INSTANTIATE_TEST_SUITE_P(, PropertyValueTriggerCondition, testing::Values(
    Combined{"AllOfNone", 0, {}, true}, Combined{"AllOfBoth", 0, {true, true}, true},
    Combined{"AllButLast", 0, {true, false}, false}, Combined{"AnyOfNone", 1, {}, false},
    Combined{"AnyIsLast", 1, {false, true}, true}, Combined{"AnyOfMismatches", 1, {false, false}, false},
    Combined{"UnknownMode", 2, {true}, false}, Combined{"NegativeMode", -1, {true}, false}), RowName);

TEST_F(PropertyValueTrigger, ThePropertysTypeDecidesTheComparison)
{
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.SetSimpleCondition(&set, kWatched, "1x");
    set.Set(kWatched, 1);
    set.Set(kWatched, true);
    set.Set(kWatched, "1");
    EXPECT_EQ((Reports{true, true, false}), callback.reports);
    trigger.RemoveCallback(&callback);
}

TEST_F(PropertyValueTrigger, AConditionOfTheHostsOwnWatchesSeveralSets)
{
    CPropertySet second;
    AddInteger(second, kWatched, "watched");
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    for (CPropertySet* each : {&set, &second}) {
        CPropertyValueTrigger::CItem item(kWatched, each, 1);
        trigger.GetCondition().items.Add(item);
        each->AddListener(&trigger);
    }
    set.Set(kWatched, 1);
    second.Set(kWatched, 1);
    second.Set(kOther, 1);
    EXPECT_EQ((Reports{false, true}), callback.reports);
    trigger.RemoveCallback(&callback);
}

TEST_F(PropertyValueTrigger, CallbacksAreToldInOrderAndRereadAfterEachCall)
{
    Callback second, third;
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.AddCallback(&second);
    callback.react = [&] { trigger.RemoveCallback(&callback); };
    trigger.Check();
    EXPECT_EQ(0u, second.reports.size()) << "moved into the place just visited";
    second.react = [&] {
        second.react = nullptr;
        trigger.AddCallback(&third);
    };
    trigger.Check();
    EXPECT_EQ(1u, callback.reports.size());
    EXPECT_EQ(1u, second.reports.size());
    EXPECT_EQ(1u, third.reports.size()) << "added during the walk";
    trigger.RemoveCallback(&second);
    trigger.RemoveCallback(&third);
    trigger.RemoveCallback(&third);
}

TEST_F(PropertyValueTrigger, RemoveCallbackUndoesOneAdd)
{
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.AddCallback(&callback);
    trigger.Check();
    trigger.RemoveCallback(&callback);
    trigger.Check();
    EXPECT_EQ(3u, callback.reports.size());
    EXPECT_EQ(1, callback.GetTriggers().GetSize());
    trigger.RemoveCallback(&callback);
    EXPECT_EQ(0, callback.GetTriggers().GetSize());
}

TEST_F(PropertyValueTrigger, EverySecondCallbackKeepsItsLinkToADestroyedTrigger)
{
    Callback callbacks[5];
    CPropertyValueTrigger survivor;
    {
        CPropertyValueTrigger trigger;
        trigger.SetSimpleCondition(&set, kWatched, 0);
        for (Callback& each : callbacks) {
            trigger.AddCallback(&each);
            survivor.AddCallback(&each);
        }
    }
    set.Set(kWatched, 1);  // the destroyed trigger has left the set
    for (int i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        const bool kept = i % 2 == 1;
        EXPECT_EQ(kept ? 2 : 1, callbacks[i].GetTriggers().GetSize());
        EXPECT_EQ(kept ? nullptr : &survivor, callbacks[i].GetTriggers().GetAt(0));
        callbacks[i].Check();
        EXPECT_EQ(Reports(static_cast<std::size_t>(i + 1), true), callbacks[0].reports) << "only the survivor reports";
    }
    for (Callback& each : callbacks)
        survivor.RemoveCallback(&each);
}

TEST_F(PropertyValueTrigger, EverySecondTriggerKeepsItsLinkToADestroyedCallback)
{
    CPropertyValueTrigger triggers[4];
    std::optional<Callback> doomed(std::in_place);
    for (CPropertyValueTrigger& each : triggers) {
        each.AddCallback(&*doomed);
        each.AddCallback(&callback);
    }
    doomed.reset();
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(i % 2 == 1 ? 2 : 1, triggers[i].GetCallbacks().GetSize());
        triggers[i].Check();
        EXPECT_EQ(static_cast<std::size_t>(i + 1), callback.reports.size());
        triggers[i].RemoveCallback(&callback);
    }
}

TEST_F(PropertyValueTrigger, IdentifiersAreConsecutiveAndCopied)
{
    CPropertyValueTrigger first, second;
    CPropertyValueTrigger copy(first);
    EXPECT_FALSE(first.GetId() == second.GetId());
    EXPECT_TRUE(first.GetId() == copy.GetId());
}
