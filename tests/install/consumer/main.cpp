// main.cpp: a host built against an installed tree: settings in a property set, told of by a listener.
#include <kelgen/kelgen.h>

#include <cstdio>

namespace {

class Counter : public gen::CPropertySetListener
{
public:
    int count = 0;

protected:
    void OnPropertyValueChange(gen::CPropertySet*, gen::CProperty*) override { ++count; }
};

}  // namespace

int main()
{
    gen::CPropertySet settings;
    gen::CProperty width(1, "width", gen::eptInteger);
    settings.AddProperty(width);
    Counter counter;
    settings.AddListener(&counter);
    settings.Set("width", gen::CPropertyValue(640));

    const CWStr text(u"installed"_w);
    // The numbers of the header and of the library, and the package's.
    std::printf("kelgen %s\n", KELGEN_VERSION_TEXT);
    if (kelgen::Version() != KELGEN_VERSION)
        return 1;
    std::printf("%d listener call, width %d, %d units\n", counter.count, settings["width"]->GetValue().GetValueInteger(), text.GetLength());
    return counter.count == 1 && text.GetLength() == 9 ? 0 : 1;
}
