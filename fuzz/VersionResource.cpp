// VersionResource.cpp: any bytes as a program's file, and as a version resource in blocks of every kind of size.
#include "Input.h"

#include <kelgen/platform/Win32.h>
#include <kelgen/platform/posix/resources/ExecutableFiles.h>
#include <kelgen/platform/posix/resources/VersionBlock.h>

#include <cstdlib>
#include <memory>

using namespace kelgen::posix;

using fuzz::Require;

namespace {

/// Asks @p block for everything, the texts of the wide form first: the narrow form changes only its own room.
void QueryAll(std::span<BYTE> block)
{
    volatile unsigned sum = 0;
    const auto isInside = [&](const void* value, std::size_t bytes) {
        const auto at = static_cast<const BYTE*>(value) - block.data();
        Require(at >= 0 && static_cast<std::size_t>(at) + bytes <= block.size());
        for (std::size_t i = 0; i < bytes; ++i)
            sum = sum + static_cast<const BYTE*>(value)[i];
    };
    for (const char* path : {"\\", "\\VarFileInfo\\Translation", "\\StringFileInfo", "\\StringFileInfo\\040904e4\\CompanyName",
                             "\\StringFileInfo\\040904e4\\X", "\\StringFileInfo\\000004e4\\X", "\\a\\a\\a\\a\\a\\a"}) {
        const std::u16string wide(path, path + std::char_traits<char>::length(path));
        void* value = nullptr;
        UINT length = 0;
        if (VerQueryValueW(block.data(), reinterpret_cast<LPCWSTR>(wide.c_str()), &value, &length))
            isInside(value, length);
        if (VerQueryValueA(block.data(), path, &value, &length))
            isInside(value, length);
    }
}

void QueryInBlock(std::span<const BYTE> resource, std::size_t size)
{
    // Of exactly that size, so that the sanitizer sees the first byte too many. Callers give at least the length word.
    const auto bytes = std::make_unique<BYTE[]>(size);
    FillVersionBlock(resource, {bytes.get(), size});
    if (size >= sizeof(WORD))
        QueryAll({bytes.get(), size});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::vector<BYTE> bytes(data, data + size);
    if (const auto found = FindVersionResource(MemoryBytes(bytes)))
        QueryInBlock(*found, VersionBlockSize(*found));
    for (const std::size_t blockSize : {VersionBlockSize(bytes), bytes.size(), bytes.size() / 2, std::size_t{7}})
        QueryInBlock(bytes, blockSize);
    return 0;
}
