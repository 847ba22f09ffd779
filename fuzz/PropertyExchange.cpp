// PropertyExchange.cpp: any registry values loaded as properties of every type; what was loaded is written and loaded again.
#include "HomeFolder.h"

#include <kelgen/persistence/RegistryPropertyExchange.h>

using namespace fuzz;

namespace {

constexpr gen::EPropertyType kTypes[] = {gen::eptInteger, gen::eptUnsignedInteger, gen::eptShort,     gen::eptUnsignedShort,
                                         gen::eptBool,    gen::eptString,          gen::eptUndefined, gen::eptNone};
constexpr const char* kNames[] = {"a", "b", "c", "d"};

bool Same(gen::CPropertySet& left, gen::CPropertySet& right)
{
    for (int i = 0; i < left.GetPropertyCount(); ++i)
        if (left.PropertyAt(i).GetValue().GetType() != right.PropertyAt(i).GetValue().GetType() ||
            left.PropertyAt(i).GetValue().GetValueString() != right.PropertyAt(i).GetValue().GetValueString())
            return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static const Key key("fuzzexchange");
    Input input(data, size);
    gen::CPropertySet loaded, again;
    for (const char* name : kNames) {
        const gen::CProperty property(0, name, kTypes[input.Below(std::size(kTypes))]);
        loaded.AddProperty(property);
        again.AddProperty(property);
        const DWORD type = input.Below(4) == 0 ? input.Below(12) : REG_SZ;
        const std::string value = input.Counted<char>();
        if (input.Below(8) == 0)
            RegDeleteValueA(key, name);
        else
            Require(RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(value.data()), static_cast<DWORD>(value.size())) ==
                    ERROR_SUCCESS);
    }
    CRegistryPropertyExchange exchange;
    Require(exchange.key.OpenKey(HKEY_CURRENT_USER, "fuzzexchange"));
    exchange.propertySet = &loaded;
    Require(exchange.TryLoad());
    exchange.Write();
    exchange.propertySet = &again;
    Require(exchange.TryLoad() && Same(loaded, again));
    return 0;
}
