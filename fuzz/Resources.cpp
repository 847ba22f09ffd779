// Resources.cpp: any bytes as a module's compiled resources.
#include <kelgen/platform/posix/resources/ResourceTable.h>
#include <kelgen/platform/posix/resources/api/ResourceModules.h>
#include <kelgen/platform/posix/resources/api/Resources.h>

#include <cstdlib>

using namespace kelgen::posix;

namespace {

const char moduleByte = 0;

/// Adds up @p bytes so that each is read.
unsigned Sum(std::span<const BYTE> bytes)
{
    unsigned sum = 0;
    for (const BYTE part : bytes)
        sum += part;
    return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::vector<BYTE> bytes(data, data + size);
    const ResourceTable table(bytes);
    volatile unsigned sum = 0;
    for (const ResourceEntry& entry : table.Entries()) {
        sum = sum + Sum(entry.data);
        for (unsigned i = 0; i < 16; ++i)
            for (const char16_t unit : StringInBlock(entry.data, i))
                sum = sum + unit;
    }

    const RegisteredResources registered(&moduleByte, bytes.data(), bytes.data() + bytes.size());
    const auto module = reinterpret_cast<HMODULE>(const_cast<char*>(&moduleByte));
    char text[64];
    for (UINT id = 0; id < 64; ++id)
        if (LoadStringA(module, id, text, sizeof text) >= static_cast<int>(sizeof text))
            std::abort();
    if (const HRSRC found = FindResourceA(module, "BLOB1", "MYTYPE"))
        sum = sum + Sum({static_cast<const BYTE*>(LoadResource(module, found)), SizeofResource(module, found)});
    return 0;
}
