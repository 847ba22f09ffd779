// settings.cpp: settings from an INI file, kept in the registry.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <fstream>
#include <iostream>

namespace {

constexpr char kKey[] = "Software\\kelgen\\guide";

/// What the program knows, with the defaults.
gen::CPropertySet Defaults()
{
    gen::CPropertySet settings;
    settings.AddProperty(gen::CProperty(1, "Title", gen::eptString));
    settings.AddProperty(gen::CProperty(2, "Width", gen::eptInteger));
    settings.AddProperty(gen::CProperty(3, "Maximized", gen::eptBool));
    settings.Set("Title", "untitled");
    settings["Width"]->GetValue().SetValueInteger(640);
    return settings;
}

void Show(const char* when, gen::CPropertySet& settings)
{
    std::cout << when << ':';
    for (int i = 0; i < settings.GetPropertyCount(); ++i)
        std::cout << ' ' << settings.PropertyAt(i).GetName() << '=' << settings.PropertyAt(i).GetValue().GetValueString();
    std::cout << '\n';
}

}  // namespace

int main()
{
    std::ofstream("guide.ini") << "[Window]\nTitle = Rates\nWidth=800\n";

    // An INI file is read as it is: the file trims nothing, so the program does.
    gen::CPropertySet settings = Defaults();
    Show("defaults", settings);
    _kelgen::CIniFile ini;
    if (!ini.LoadFile("guide.ini"))
        return 1;
    const _kelgen::CIniSection* const window = ini.FindSection("Window");
    for (int i = 0; window != nullptr && i < window->GetPropertiesCount(); ++i) {
        gen::CProperty* const property = settings[window->GetPropertyAt(i)->GetName().Trim()];
        if (property != nullptr)
            property->GetValue().SetValueString(window->GetPropertyAt(i)->GetValue().Trim());
    }
    Show("from the file", settings);

    // The registry keeps the whole set: a text value for each property.
    CRegistryPropertyExchange exchange;
    exchange.propertySet = &settings;
    if (!exchange.key.CreateKey(HKEY_CURRENT_USER, kKey))
        return 1;
    settings["Maximized"]->GetValue().SetValueInteger(1);
    exchange.Write();

    // The next run: TryLoad changes nothing if there is no key.
    gen::CPropertySet next = Defaults();
    exchange.propertySet = &next;
    std::cout << "loaded: " << exchange.TryLoad() << '\n';
    Show("from the registry", next);

    // A value alone, and the way to write an INI file: the platform's own calls.
    CString title;
    std::cout << "title: " << (exchange.key.QueryValue("Title", title) ? title : "none") << '\n';
    ::WritePrivateProfileStringA("Window", "Width", "1024", ".\\guide.ini");
    std::cout << "in the file: " << ::GetPrivateProfileIntA("Window", "Width", 0, ".\\guide.ini") << '\n';
    exchange.key.DeleteKey();
}
