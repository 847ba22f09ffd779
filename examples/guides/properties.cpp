// properties.cpp: named values in a set, listeners, and a trigger.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

namespace {

constexpr int kLevel = 1;
constexpr int kName = 2;
constexpr int kIsOpen = 3;

/// A listener as a class: for objects that hear of several sets, or that are there anyway.
class Counter : public gen::CPropertySetListener
{
public:
    int calls = 0;

protected:
    void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty*) override { ++calls; }
};

}  // namespace

int main()
{
    // The set holds copies, in order. A property has a number, a name and a type that it keeps.
    gen::CPropertySet tank;
    tank.AddProperty(gen::CProperty(kLevel, "level", gen::eptInteger));
    tank.AddProperty(gen::CProperty(kName, "name", gen::eptString));
    tank.AddProperty(gen::CProperty(kIsOpen, "is open", gen::eptBool));

    // Told of every assignment, at once and on the same thread, for as long as the objects live.
    Counter counter;
    tank.AddListener(&counter);
    const kelgen::PropertyListener watch(tank, [](gen::CProperty& property) {
        std::cout << "  " << property.GetName() << " is now '" << property.GetValue().GetValueString() << "'\n";
    });
    kelgen::PropertyTrigger full(tank, kLevel, 100, [](bool isFull) { std::cout << (isFull ? "  full\n" : "  not full\n"); });

    std::cout << "set by name\n";
    tank.Set("name", "north");
    std::cout << "set by number\n";
    tank.Set(kLevel, 100);

    // An operator tells twice, a setter once: listeners of old hosts count on it.
    std::cout << "assigned\n";
    tank[kIsOpen]->GetValue() = true;
    std::cout << "by the setter\n";
    tank[kIsOpen]->GetValue().SetValueInteger(0);

    // Values convert themselves on request.
    tank[kName]->GetValue().SetValueString("7 north");
    std::cout << "as a number: " << tank[kName]->GetValue().GetValueInteger() << '\n';

    // What is not there changes nothing, and says nothing.
    tank.Set("colour", "red");
    gen::CPropertyValue value;
    std::cout << "colour is " << (tank.Get("colour", value) ? "known" : "unknown") << ", " << counter.calls << " calls\n";
    tank.RemoveListener(&counter);
}
