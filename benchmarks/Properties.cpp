// Properties.cpp: an assignment to a property of a set until every listener has heard it; a property found by name.
#include "PropertyOperations.h"

#include <kelgen/property/PropertySet.h>

#include <deque>
#include <functional>
#include <unordered_map>

using namespace bench;

namespace {

struct StdSignal
{
    std::vector<std::function<void(int)>> slots;

    void connect(std::function<void(int)> f) { slots.push_back(std::move(f)); }
    void operator()(int v) const
    {
        for (const auto& f : slots)
            f(v);
    }
};

class Listener : public gen::CPropertySetListener
{
public:
    long sum = 0;

protected:
    void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty* property) override { sum += property->GetValue().GetValueInteger(); }
};

void SetNotify(State& st)
{
    gen::CPropertySet set;
    gen::CProperty property(1, "value", gen::eptInteger);
    set.AddProperty(property);
    std::deque<Listener> listeners(static_cast<std::size_t>(st.range(0)));
    for (Listener& listener : listeners)
        set.AddListener(&listener);
    gen::CPropertyValue& value = set.PropertyAt(0).GetValue();
    int v = 0;
    for (auto _ : st)
        value.SetValueInteger(++v);
    long sum = 0;
    for (const Listener& listener : listeners)
        sum += listener.sum;
    finish(st, sum, v);
}

// One among so many goes and comes again, each in turn.
template <class Add, class Remove>
void ReplaceListener(State& st, Add add, Remove remove)
{
    std::deque<Listener> listeners(static_cast<std::size_t>(st.range(0)));
    for (Listener& listener : listeners)
        add(listener);
    std::size_t i = 0;
    for (auto _ : st) {
        Listener& listener = listeners[++i % listeners.size()];
        remove(listener);
        add(listener);
    }
}

void ReplaceListenerOfSet(State& st)
{
    gen::CPropertySet set;
    ReplaceListener(
        st, [&](Listener& listener) { set.AddListener(&listener); }, [&](Listener& listener) { set.RemoveListener(&listener); });
}

void ReplaceInVector(State& st)
{
    std::vector<Listener*> vector;
    ReplaceListener(
        st, [&](Listener& listener) { vector.push_back(&listener); }, [&](Listener& listener) { std::erase(vector, &listener); });
}

void FindInSet(State& st)
{
    gen::CPropertySet set;
    for (int i = 0; i < 20; ++i) {
        gen::CProperty property(i, names[i], gen::eptInteger);
        set.AddProperty(property);
    }
    findByName(st, [&](unsigned i) { return set[names[i]]; });
}

// One of so many, each in turn: a set of 32 and more has an index.
template <class Add, class Find>
void FindAmongMany(State& st, Add add, Find find)
{
    std::vector<std::string> keys;
    for (int i = 0; i < st.range(0); ++i)
        add(keys.emplace_back("property" + std::to_string(i)), i);
    unsigned i = 0;
    for (auto _ : st)
        DoNotOptimize(find(keys[(i += 7919) % keys.size()]));
}

void FindManyInSet(State& st)
{
    gen::CPropertySet set;
    FindAmongMany(
        st, [&](const std::string& key, int id) { set.AddProperty(gen::CProperty(id, key.c_str(), gen::eptInteger)); },
        [&](const std::string& key) { return set[key.c_str()]; });
}

void FindManyInMap(State& st)
{
    std::unordered_map<std::string, int> map;
    FindAmongMany(
        st, [&](const std::string& key, int id) { map[key] = id; }, [&](const std::string& key) { return map.find(key); });
}

COUNTED(FunctionList<StdSignal>)->Name("Property/SetNotify/std_function") LISTENERS;
COUNTED(SetNotify)->Name("Property/SetNotify/kelgen") LISTENERS;
BENCHMARK_TEMPLATE(FindMap, std::unordered_map<std::u16string, int>, std::u16string)->Name("Property/FindByName20/unordered_map");
COUNTED(FindInSet)->Name("Property/FindByName20/kelgen");
COUNTED(ReplaceListenerOfSet)->Name("Property/ReplaceListener/kelgen")->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);
COUNTED(ReplaceInVector)->Name("Property/ReplaceListener/std_vector")->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);
COUNTED(FindManyInMap)->Name("Property/FindByName/unordered_map")->Arg(100)->Arg(1000)->Arg(10000);
COUNTED(FindManyInSet)->Name("Property/FindByName/kelgen")->Arg(100)->Arg(1000)->Arg(10000);

}  // namespace
