// ModuleTable.h: loaded ELF files by the address of their first byte, for the platform's own use.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <optional>
#include <string>
#include <vector>

namespace kelgen::posix {

/// A loaded ELF file.
struct LoadedFile
{
    const void* base = nullptr;  // its first byte in memory
    std::string path;            // as the loader has it
};

/// All loaded files, the program first.
std::vector<LoadedFile> LoadedFiles();

/// The module that holds @p address, or null.
KELGEN_PLATFORM_TESTED_API HMODULE ModuleOfAddress(const void* address);

/// The program's module. Cost: found once.
HMODULE ProgramModule();

/// The address of the first byte of @p module, null for the program; null when nothing is loaded there.
KELGEN_PLATFORM_TESTED_API const void* ModuleBase(HMODULE module);

/// The Linux path of the file of @p module (null for the program), or nothing when it is no loaded module. The platform's own
/// modules have a name in the system folder of drive C, where nothing lies.
std::optional<std::string> ModuleFile(HMODULE module);

}  // namespace kelgen::posix
