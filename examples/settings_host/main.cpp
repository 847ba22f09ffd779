// main.cpp: the settings host. An INI file gives the settings, the registry keeps them from run to run, a listener and a value
// trigger watch them change. Every step is printed.
//
//     settings_host settings.ini
//
// Read main() at the end first: it is the whole flow, one step a line.
#include "Account.h"
#include "Pack.h"

#include <kelgen/persistence/IniFile.h>
#include <kelgen/persistence/RegistryPropertyExchange.h>
#include <kelgen/property/PropertyValueTrigger.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr char kRegistryKey[] = "Software\\kelgen\\settings_host";
constexpr char kRuns[] = "Runs";

// What the registry takes, and what people read.
constexpr int kLongestName = 255;
constexpr int kLongestValue = 16000;
constexpr int kMostProperties = 100;
constexpr int kMostChanges = 5;

// ---- Who watches the settings

/// Told of every assignment to any property of the set, changed or not.
class Listener : public gen::CPropertySetListener
{
protected:
    void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty* property) override
    {
        account::Notified("listener", account::NameAndValue(*property));
    }
};

/// Told whether the trigger's condition holds, at every assignment to the property that the trigger watches.
class Alarm : public gen::CPropertyValueTriggerCallback
{
public:
    void OnPropertyValueTrigger(const CBaseId&, bool match) override
    {
        account::Notified("trigger", match ? "the condition holds" : "the condition does not hold");
    }
};

// ---- From the INI file to a property set

// The first section that has a property; null when none has.
const _kelgen::CIniSection* FirstWithProperties(const _kelgen::CIniFile& ini)
{
    for (int i = 0; i < ini.GetSize(); ++i) {
        if (ini.GetAt(i)->GetPropertiesCount() > 0)
            return ini.GetAt(i);
    }
    return nullptr;
}

// The registry ignores the case of names, so the set must not hold two that differ in case only.
bool HasName(gen::CPropertySet& settings, const CString& name)
{
    for (int i = 0; i < settings.GetPropertyCount(); ++i) {
        if (settings.PropertyAt(i).GetName().CompareNoCase(name) == 0)
            return true;
    }
    return false;
}

bool IsSetting(const CString& name, const CString& value)
{
    const bool comment = name.Left(1) == ";" || name.Left(1) == "#";
    return !comment && name.GetLength() <= kLongestName && value.GetLength() <= kLongestValue;
}

// An INI file knows texts only: what reads as yes or no, or as a number, becomes that.
gen::EPropertyType TypeOf(const CString& value)
{
    for (const char* word : {"yes", "no", "true", "false", "on", "off"}) {
        if (value.CompareNoCase(word) == 0)
            return gen::eptBool;
    }
    const gen::CPropertyValue number(gen::CPropertyValue(value).GetValueInteger());
    return number.GetValueString() == value ? gen::eptInteger : gen::eptString;
}

void AddSetting(gen::CPropertySet& settings, const CString& name, CString value)
{
    const int id = settings.GetPropertyCount();
    gen::CProperty property(id, name, TypeOf(value));
    if (property.GetValue().GetType() == gen::eptBool) {
        value.MakeLower();
        value = value == "yes" || value == "true" || value == "on" ? "1" : "0";
    }
    property.GetValue().SetValueString(value);
    settings.AddProperty(property);  // a copy
    account::Line(account::NameAndValue(property));
}

void AddSection(gen::CPropertySet& settings, const _kelgen::CIniSection& section)
{
    int leftOut = 0;
    for (int i = 0; i < section.GetPropertiesCount(); ++i) {
        // The library trims nothing: " name = value " keeps its blanks.
        const CString name = section.GetPropertyAt(i)->GetName().Trim();
        const CString value = section.GetPropertyAt(i)->GetValue().Trim();
        if (settings.GetPropertyCount() <= kMostProperties && IsSetting(name, value) && !HasName(settings, name))
            AddSetting(settings, name, value);
        else
            ++leftOut;
    }
    CString line;
    line.Format("(%d left out: comments, repeated names, texts too long, or more than %d)", leftOut, kMostProperties);
    if (leftOut > 0)
        account::Line(line);
}

void BuildSettings(gen::CPropertySet& settings, const _kelgen::CIniFile& ini)
{
    const _kelgen::CIniSection* section = FirstWithProperties(ini);
    account::Step(section != nullptr ? "Build the property set from section " + account::Quoted(section->GetName())
                                     : CString("No section has properties: only the run counter is kept"));
    AddSetting(settings, kRuns, "0");
    if (section != nullptr)
        AddSection(settings, *section);
}

// ---- To and from the registry

void LoadKeptValues(CRegistryPropertyExchange& exchange)
{
    account::Step(CString("Load what HKEY_CURRENT_USER\\") + kRegistryKey + " keeps");
    gen::CPropertySet& settings = *exchange.propertySet;
    for (int i = 0; i < settings.GetPropertyCount(); ++i) {
        // Load() of the whole set would reset each property that the key does not hold; those keep what the file says.
        gen::CProperty& property = settings.PropertyAt(i);
        CString kept;
        const bool found = exchange.key.QueryValue(property.GetName(), kept);
        if (found)
            exchange.Load(property);
        account::Line(account::NameAndValue(property) + (found ? " (kept from the last run)" : " (not kept yet)"));
    }
}

void WriteBack(CRegistryPropertyExchange& exchange)
{
    account::Step("Write the set back and read it again");
    exchange.Write();

    gen::CPropertySet written(*exchange.propertySet);
    gen::CPropertySet* const settings = exchange.propertySet;
    exchange.propertySet = &written;
    exchange.Load();
    exchange.propertySet = settings;
    account::Line(written == *settings ? "The registry holds every value of the set" : "The registry holds other values than the set");
}

// ---- Changes

// What this run makes of a property: the number after it, the other of yes and no, the file's text and the run.
gen::CPropertyValue NextValue(gen::CProperty& property, gen::CPropertySet& fromFile, int run)
{
    const gen::CPropertyValue& value = property.GetValue();
    if (value.GetType() == gen::eptInteger)
        return static_cast<int>(value.GetValueUnsignedInteger() + 1);
    if (value.GetType() == gen::eptBool)
        return value.GetValueInteger() == 0;
    CString text;
    text.Format(" (run %d)", run);
    return (fromFile[property.GetId()]->GetValue().GetValueString() + text).GetString();
}

void Change(gen::CPropertySet& settings, gen::CProperty& property, const gen::CPropertyValue& next)
{
    gen::CPropertyValue& value = property.GetValue();
    switch (value.GetType()) {
    case gen::eptInteger:
        account::Line(account::NameAndValue(property) + ", assigned: an assignment operator tells twice");
        value = next.GetValueInteger();
        break;
    case gen::eptBool:
        account::Line(account::NameAndValue(property) + ", stored by a setter: told once");
        value.SetValueInteger(next.GetValueInteger());
        break;
    default:
        account::Line(account::NameAndValue(property) + ", set by name: told once");
        settings.Set(property.GetName(), next);
        break;
    }
}

void WatchAndChange(gen::CPropertySet& settings, gen::CPropertySet& fromFile)
{
    const int run = settings[kRuns]->GetValue().GetValueInteger() + 1;
    const int changes = std::min(settings.GetPropertyCount(), kMostChanges);
    gen::CProperty& watched = settings.PropertyAt(changes > 1 ? 1 : 0);
    const gen::CPropertyValue awaited = NextValue(watched, fromFile, run);

    account::Step("Watch the set: a listener, and a trigger for " + watched.GetName() + " = " + account::Quoted(awaited.GetValueString()));
    Listener listener;
    settings.AddListener(&listener);
    Alarm alarm;
    gen::CPropertyValueTrigger trigger;
    trigger.AddCallback(&alarm);
    trigger.SetSimpleCondition(&settings, watched.GetId(), awaited);
    trigger.Check();

    account::Step("Change values");
    for (int i = 0; i < changes; ++i) {
        gen::CProperty& property = settings.PropertyAt(i);
        Change(settings, property, NextValue(property, fromFile, run));
    }

    // Neither the set nor the trigger owns those it tells.
    trigger.RemoveCallback(&alarm);
    settings.RemoveListener(&listener);
}

int Fail(const char* message, const char* what)
{
    std::fprintf(stderr, "settings_host: %s %s\n", message, what);
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return Fail("usage:", "settings_host FILE.ini");
    _kelgen::CIniFile ini;
    if (!ini.LoadFile(argv[1]))
        return Fail("cannot read", argv[1]);
    CString sections;
    sections.Format(": %d sections", ini.GetSize());
    account::Step("Read " + account::FileName(argv[1]) + sections);

    gen::CPropertySet settings;
    BuildSettings(settings, ini);
    gen::CPropertySet fromFile(settings);

    CRegistryPropertyExchange exchange;
    exchange.propertySet = &settings;
    if (!exchange.key.CreateKey(HKEY_CURRENT_USER, kRegistryKey))
        return Fail("cannot open the registry key", kRegistryKey);
    LoadKeptValues(exchange);

    WatchAndChange(settings, fromFile);
    WriteBack(exchange);
    PackAndReport(settings);
    return 0;
}
