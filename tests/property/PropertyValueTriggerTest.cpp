// PropertyValueTriggerTest.cpp: conditions, what is reported when, and which links outlive a trigger or a callback.
#include <kelgen/property/PropertyValueTrigger.h>

#include "property/Recorder.h"
#include "support/Rows.h"

#include <optional>

using namespace gen;
using kelgen::test::AddInteger;
using kelgen::test::Table;

namespace {

constexpr int kWatched = 5;
constexpr int kOther = 6;

using Reports = std::vector<bool>;

struct Callback : CPropertyValueTriggerCallback
{
    Reports reports;
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

struct PropertyValueTrigger : testing::Test
{
    PropertyValueTrigger()
    {
        AddInteger(set, kWatched, "watched");
        AddInteger(set, kOther, "other");
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
    EXPECT_TRUE(callback.ids.front() == trigger.GetId() && trigger.GetId() == CPropertyValueTrigger(trigger).GetId());
    EXPECT_FALSE(trigger.GetId() == CPropertyValueTrigger().GetId());

    callback.reports.clear();
    trigger.SetSimpleCondition(&set, 99, 0);
    callback.Check();
    trigger.SetSimpleCondition(nullptr, kWatched, 0);
    trigger.Check();
    EXPECT_EQ((Reports{false, false}), callback.reports) << "a missing property or set";
    trigger.RemoveCallback(&callback);
}

TEST_F(PropertyValueTrigger, ANewConditionLeavesTheOldSets)
{
    CPropertySet second;
    AddInteger(second, kWatched, "watched");
    CPropertyValueTrigger trigger;
    trigger.AddCallback(&callback);
    trigger.SetSimpleCondition(&set, kWatched, 3);
    trigger.SetSimpleCondition(&set, kWatched, "1x");
    set.Set(kWatched, 1);
    set.Set(kWatched, true);
    set.Set(kWatched, "1");
    EXPECT_EQ((Reports{true, true, false}), callback.reports) << "the property's type decides the comparison";

    // A condition of the host's own may watch several sets.
    second.AddListener(&trigger);
    second.Set(kWatched, true);
    EXPECT_EQ(3u, callback.reports.size()) << "another set's property of the id";
    CPropertyValueTrigger::CItem item(kWatched, &second, true);
    trigger.GetCondition().items.Add(item);
    second.Set(kWatched, true);
    set.Set(kWatched, true);
    second.Set(kOther, true);
    EXPECT_EQ((Reports{true, true, false, false, true}), callback.reports);

    trigger.SetSimpleCondition(nullptr, kWatched, 4);
    set.Set(kWatched, 1);
    second.Set(kWatched, 1);
    EXPECT_EQ(5u, callback.reports.size());
    trigger.RemoveCallback(&callback);
}

TEST_F(PropertyValueTrigger, ConditionsCombineTheirItems)
{
    using Condition = CPropertyValueTrigger::CCondition;
    constexpr int kAll = Condition::modeAll, kAny = Condition::modeAny, kUnknown = 2;
    for (const auto& [mode, items, expected] : Table<int, Reports, bool>{
             {kAll, {}, true},
             {kAll, {true, true}, true},
             {kAll, {true, false}, false},
             {kAny, {}, false},
             {kAny, {false, true}, true},
             {kAny, {false, false}, false},
             {kUnknown, {true}, false},
         }) {
        Condition condition;
        condition.mode = mode;
        for (bool match : items) {
            CPropertyValueTrigger::CItem item(kWatched, &set, match ? 0 : 1);
            condition.items.Add(item);
        }
        EXPECT_EQ(expected, condition.DoesMatch()) << mode << testing::PrintToString(items);
    }
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
    for (const Callback* each : {&callback, &second, &third})
        EXPECT_EQ(1u, each->reports.size()) << "the third was added during the walk";
    trigger.RemoveCallback(&second);
    trigger.AddCallback(&third);
    trigger.RemoveCallback(&third);
    trigger.Check();
    EXPECT_EQ(2u, third.reports.size()) << "removed once of twice";
    EXPECT_EQ(1, third.GetTriggers().GetSize());
    trigger.RemoveCallback(&third);
    trigger.RemoveCallback(&third);
    EXPECT_EQ(0, third.GetTriggers().GetSize());
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

TEST_F(PropertyValueTrigger, CopiesAndAssignmentsLeaveNoDeadLinks)
{
    // Assigned to: the set still lists it, and its callback does.
    {
        auto trigger = std::make_unique<CPropertyValueTrigger>();
        trigger->AddCallback(&callback);
        trigger->SetSimpleCondition(&set, kWatched, 3);
        *trigger = CPropertyValueTrigger();
        set.Set(kWatched, 3);
        EXPECT_EQ(Reports{}, callback.reports) << "the condition is the other's";
        trigger.reset();
        set.Set(kWatched, 5);
        callback.Check();
        EXPECT_EQ(Reports{}, callback.reports);
    }
    // A copy that outlives its source, the callback and the set.
    auto dying = std::make_unique<CPropertySet>(set);
    std::optional<Callback> told(std::in_place);
    auto source = std::make_unique<CPropertyValueTrigger>();
    source->AddCallback(&*told);
    source->AddCallback(&callback);
    source->SetSimpleCondition(dying.get(), kWatched, 5);
    CPropertyValueTrigger copy(*source);
    CPropertyValueTrigger assigned;
    assigned = copy;
    source.reset();
    copy.Check();
    EXPECT_EQ((Reports{true}), told->reports) << "a copy reports to the source's callbacks";
    told.reset();
    for (const CPropertyValueTrigger* trigger : {&copy, &assigned}) {
        EXPECT_EQ(nullptr, trigger->GetCallbacks().GetAt(0)) << "the first, too";
        EXPECT_EQ(&callback, trigger->GetCallbacks().GetAt(1));
    }
    dying.reset();
    copy.Check();
    assigned.Check();
    EXPECT_EQ((Reports{true, false, false}), callback.reports) << "a set that is gone matches nothing";
    copy.SetSimpleCondition(&set, kWatched, 5);
    set.Set(kWatched, 5);
    EXPECT_EQ((Reports{true, false, false, true}), callback.reports);
}

TEST_F(PropertyValueTrigger, CopiedCallbacksOutliveTheirTriggers)
{
    auto trigger = std::make_unique<CPropertyValueTrigger>();
    trigger->AddCallback(&callback);
    Callback copy(callback), assigned;
    assigned = callback;
    copy.Check();
    EXPECT_EQ(Reports{true}, callback.reports) << "the trigger tells the source alone";
    EXPECT_EQ(Reports{}, copy.reports);
    trigger.reset();
    copy.Check();
    assigned.Check();
    EXPECT_EQ(nullptr, copy.GetTriggers().GetAt(0));
}

TEST_F(PropertyValueTrigger, SetMayEndBeforeItsTriggerAndNullIsNobody)
{
    CPropertyValueTrigger trigger;
    trigger.AddCallback(nullptr);
    trigger.RemoveCallback(nullptr);
    EXPECT_EQ(0, trigger.GetCallbacks().GetSize());
    trigger.AddCallback(&callback);
    {
        CPropertySet passing(set);
        passing.AddListener(nullptr);
        passing.RemoveListener(nullptr);
        trigger.SetSimpleCondition(&passing, kWatched, 0);
        passing.Set(kWatched, 0);
    }
    EXPECT_EQ(nullptr, trigger.GetCondition().items.GetAt(0).set);
    trigger.Check();
    EXPECT_EQ((Reports{true, false}), callback.reports);
    trigger.SetSimpleCondition(&set, kWatched, 0);
    trigger.RemoveCallback(&callback);
}
