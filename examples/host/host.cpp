// host.cpp: a first program: a setting that is watched, and text of any language in a list.
#include <kelgen/kelgen.h>
#include <kelgen/std.h>

#include <iostream>

int main()
{
    gen::CPropertySet settings;
    settings.AddProperty(gen::CProperty(1, "separator", gen::eptString));
    const kelgen::PropertyListener watch(settings, [](gen::CProperty& property) {
        std::cout << property.GetName() << " is now '" << property.GetValue().GetValueString() << "'\n";
    });
    settings.Set("separator", " | ");

    CWStrArray cities;
    cities.AddTokens(u"Łódź;Zürich;Oslo", u";", false);
    cities.Sort(CWStr::CompareNoCase);
    for (const CWStr& city : cities)
        std::cout << city << settings["separator"]->GetValue().GetValueString();
    std::cout << cities.GetSize() << " cities\n";
}
