// ValueFile.h: the file that holds one value of the registry.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Types.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// A value as it is kept: text data in 16-bit units, lowest byte first.
struct StoredValue
{
    std::u16string name;
    DWORD type = 0;
    std::vector<BYTE> data;
};

/// The file's bytes: "KRV1", type, length of the name in units, size of the data in bytes (32 bits each, lowest byte first), then
/// name and data.
KELGEN_PLATFORM_API std::string ValueFileBytes(std::u16string_view name, DWORD type, std::span<const BYTE> data);

/// The value that @p bytes hold, or nothing when they are not exactly such a file.
KELGEN_PLATFORM_API std::optional<StoredValue> ParseValueFile(std::span<const BYTE> bytes);

/// Reads the value from the file @p fileName in @p folder. 0, or an errno value: ENOENT also for a file that is damaged, not a
/// value's or not that value's. Cost: three system calls for up to 4 KB.
int ReadValueFile(int folder, const std::string& fileName, StoredValue& value);

/// Replaces the file @p fileName in @p folder by one with these bytes; it is the old or the new one whenever the process is
/// killed. 0, or an errno value. Cost: four system calls.
int ReplaceFile(int folder, const std::string& fileName, std::string_view bytes);

}  // namespace kelgen::posix
