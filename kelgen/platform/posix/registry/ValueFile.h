// ValueFile.h: the file that holds one value of the registry.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

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

    bool operator==(const StoredValue&) const = default;
};

// A value's file is "KRV2", the size of a slot (32 bits), then two slots of that size. A slot is a checksum, a sequence number
// (64 bits each), type, length of the name in units, size of the data, 0 (32 bits each), name and data; numbers have their lowest
// byte first. The sound slot with the higher number holds the value; a write goes to the other one, and flushes the file first when
// it is larger than a sector. So a killed process or a power cut leaves the old or the new value, and no file need be made: on common file
// systems a file that is renamed over another one costs fifty times as much as a write in place, because the system then sends the new one
// to the disk.

/// The largest name and data together, in bytes, that a file holds.
inline constexpr std::size_t kLargestValue = 64 << 20;

/// A new file with @p value in its first slot; the slots have room for values of some more size.
KELGEN_PLATFORM_TESTED_API std::string ValueFileBytes(const StoredValue& value);

/// The value that @p bytes hold, or nothing when they are not such a file.
KELGEN_PLATFORM_TESTED_API std::optional<StoredValue> ParseValueFile(std::span<const BYTE> bytes);

/// Reads the value from the file @p fileName in @p folder. 0, or an errno value: EUCLEAN for a file that is damaged or not a
/// value's, ENOENT even for one that is empty or another value's. Cost: four system calls for up to 4 KB.
int ReadValueFile(int folder, const std::string& fileName, StoredValue& value);

/// Writes the value to the file @p fileName in @p folder, which keeps its name's case when it holds one. 0, or an errno value.
/// Cost: five system calls while the value fits its slot, else as ReplaceFile.
int WriteValueFile(int folder, const std::string& fileName, StoredValue value);

/// Replaces the file @p fileName in @p folder by one with these bytes, flushed; it is the old or the new one whenever the process is
/// killed or the system crashes. 0, or an errno value.
int ReplaceFile(int folder, const std::string& fileName, std::string_view bytes);

}  // namespace kelgen::posix
