// RegistryValue.cpp: any bytes as a registry value's file, and as a file's name.
#include <kelgen/platform/posix/registry/StoredNames.h>
#include <kelgen/platform/posix/registry/ValueFile.h>

#include <cstdlib>

using namespace kelgen::posix;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    if (const auto value = ParseValueFile({data, size})) {
        const std::string written = ValueFileBytes(*value);
        if (ParseValueFile({reinterpret_cast<const BYTE*>(written.data()), written.size()}) != value)
            std::abort();
    }
    const std::string bytes(data, data + size);
    if (const auto name = KeyNameOfFile(bytes); name && (KeyFileName(*name) != bytes || bytes.find('/') != std::string::npos))
        std::abort();
    return 0;
}
