// constants.cpp: a host that takes the address of every constant of an exported class, as binding it to a reference does.
#include <kelgen/kelgen.h>

#include "constant-headers.inc"

#include <cstdio>
#include <memory>
#include <set>

namespace {

struct Constant
{
    const char* name;
    const void* address;
};

#define CONSTANT(name) {#name, std::addressof(name)},
const Constant constants[] = {
#include "constants.inc"
};

struct Number
{
    const UINT& bound;
    UINT value;
};

}  // namespace

int main()
{
    std::set<const void*> addresses;
    for (const Constant& constant : constants)
        if (constant.address == nullptr || !addresses.insert(constant.address).second) {
            std::printf("%s has no address of its own\n", constant.name);
            return 1;
        }
    const Number numbers[] = {
        {C000WndInterface::MESSAGE_WNDPOSCREATE, 32780},
        {_kelgen::CTimer::ID_HOVER, 16381},
        {CKelGenApp::APPM_LANGUAGE, 32885},
        {CKelGenApp::WPARAM_LANGUAGE_UPDATE, 1},
    };
    for (const Number& number : numbers)
        if (number.bound != number.value || !addresses.contains(&number.bound)) {
            std::printf("%u instead of %u, or not listed\n", number.bound, number.value);
            return 1;
        }
    std::printf("%zu constants\n", addresses.size());
    return 0;
}
