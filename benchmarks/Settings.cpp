// Settings.cpp: INI files read and searched, and 100 settings written to the registry and read back.
#include "SettingsOperations.h"

#include <kelgen/persistence/IniFile.h>
#include <kelgen/persistence/RegistryPropertyExchange.h>
#include <kelgen/property/PropertySet.h>

using namespace bench;

namespace {

void ParseIni(State& st)
{
    for (auto _ : st) {
        _kelgen::CIniFile ini;
        require(ini.LoadFile(iniFile().c_str()) && ini.GetSize() == 1000, "CIniFile");
    }
}

void LookupIni(State& st)
{
    _kelgen::CIniFile ini;
    ini.LoadFile(iniFile().c_str());
    std::vector<std::pair<CString, CString>> all;
    for (auto [s, k] : thousand())
        all.emplace_back(section(s).c_str(), key(k).c_str());
    for (auto _ : st)
        for (const auto& [s, k] : all)
            require(!ini.GetPropertyValue(s, k).IsEmpty(), "CIniFile");
}

// A registry key for the time of a benchmark, and a set of 100 properties: 50 numbers, 50 texts.
struct Settings
{
    gen::CPropertySet set;
    CRegistryPropertyExchange exchange;

    Settings()
    {
        for (int i = 0; i < 100; ++i) {
            gen::CProperty property(i, key(i).c_str(), i % 2 ? gen::eptInteger : gen::eptString);
            set.AddProperty(property);
        }
        HKEY made = nullptr;
        RegCreateKeyA(HKEY_CURRENT_USER, "Software\\kelgen-bench", &made);
        RegCloseKey(made);
        exchange.propertySet = &set;
        exchange.key.OpenKey(HKEY_CURRENT_USER, "Software\\kelgen-bench");
    }
    void Change(int n)
    {
        for (int i = 0; i < 100; ++i)
            set.PropertyAt(i).GetValue().SetValueInteger(n + i);
    }
};

void WriteRegistry(State& st)
{
    Settings settings;
    int n = 0;
    for (auto _ : st) {
        settings.Change(++n);
        settings.exchange.Write();
    }
}

void ReadRegistry(State& st)
{
    Settings settings;
    settings.Change(5);
    settings.exchange.Write();
    settings.Change(0);
    for (auto _ : st)
        settings.exchange.Load();
    require(settings.set.PropertyAt(99).GetValue().GetValueInteger() == 104, "CRegistryPropertyExchange");
}

COUNTED(ParseIni)->Name("Settings/ParseIni10000/kelgen");
COUNTED(LookupIni)->Name("Settings/Lookup1000/kelgen");
COUNTED(WriteRegistry)->Name("Settings/Write100Sync/kelgen")->UseRealTime();
COUNTED(ReadRegistry)->Name("Settings/Read100/kelgen")->UseRealTime();

}  // namespace
