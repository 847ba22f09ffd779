// StoredNames.h: what the registry's keys and values are called in the file system.
#pragma once

#include <kelgen/platform/Export.h>

#include <optional>
#include <string>
#include <string_view>

namespace kelgen::posix {

// The file name is the lower-cased name, so that look-up ignores case without a search; what a file name cannot hold is written
// "%41" (a byte) or "%uD800" (half of a surrogate pair), other text as UTF-8. A value's file name ends with "=". A name that
// gets too long for a file is replaced by "%~" and a hash. Names with a leading dot are the registry's own.

/// The folder of the key @p name.
KELGEN_PLATFORM_TESTED_API std::string KeyFileName(std::u16string_view name);

/// The file of the value @p name; "=" for the default value.
std::string ValueFileName(std::u16string_view name);

/// The lower-cased name that @p fileName stands for; nothing when it is not one that KeyFileName makes or when it is a hash.
KELGEN_PLATFORM_TESTED_API std::optional<std::u16string> KeyNameOfFile(std::string_view fileName);

inline constexpr std::size_t kLongestKeyName = 255;
inline constexpr std::size_t kLongestValueName = 16383;

/// Whether a key, or a value, may have the name @p name, which somebody may have put into a file.
bool IsKeyName(std::u16string_view name);
bool IsValueName(std::u16string_view name);

/// Keeps a folder's name with its case; lies in the folder unless the name is all lower case.
inline constexpr const char* kNameFile = ".name";

/// Starts the names of files and folders that are being written or removed.
inline constexpr std::string_view kScratchPrefix = ".new-";

/// A fresh name with that prefix.
std::string ScratchName();

}  // namespace kelgen::posix
