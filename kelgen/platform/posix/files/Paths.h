// Paths.h: between the platform's path names and those of the file system.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelgen::posix {

/// The full drive form of @p name by its text alone: "Z:\etc\passwd" for "/etc/passwd"; empty for an empty name. A network name
/// "\\server\..." stays one, a device is "\\.\name".
std::string FullPath(std::string_view name);

/// The drive form of a path of the file system: below drive C's folder "C:\...", else "Z:\...". A relative one is taken from the
/// current folder.
KELGEN_PLATFORM_TESTED_API std::string DriveForm(std::string_view nativePath);

/// A name that a call was given, resolved against the file system.
struct ResolvedPath
{
    std::string native;  // where the entry lies, or, when missing, where it would be made
    bool exists = false;
    bool isFolder = false;
    bool namesFolder = false;  // the name ended in a slash
    bool isDevice = false;     // "nul", "con"
    mode_t mode = 0;           // the kind and the permissions of what exists; 0 where they cannot be told
    DWORD error = 0;           // 0, or why it is not there: ERROR_FILE_NOT_FOUND, else something that keeps it from being made
};

/// Looks @p name up part by part: the exact name, else one that differs only in case (the first in byte order), else a generated
/// 8.3 name, else an entry that is not UTF-8 and reads like the name in the ANSI code page. Cost: one system call when every part is
/// spelt exactly, else a walk and a listing for each folder with another spelling.
KELGEN_PLATFORM_TESTED_API ResolvedPath Resolve(std::string_view name);

/// Resolve for an entry that is to be made: @p folder becomes the open folder in which it is missing, or stays empty.
ResolvedPath ResolveToMake(std::string_view name, Descriptor& folder);

/// Tells ResolveToMake that this thread has just made the folder @p native: it goes about names in it in another order.
void NoteMadeFolder(std::string_view native);

/// Resolve for what must exist; nothing with the last error set: ERROR_PATH_NOT_FOUND for a file's name that ends in a slash.
std::optional<ResolvedPath> ResolveExisting(std::string_view name);

/// The existing path of the file system that @p name means, or nothing, as ResolveExisting.
std::optional<std::string> ToNative(std::string_view name);

/// The existing folder that @p name means, or nothing with the last error set: ERROR_DIRECTORY for a file.
std::optional<std::string> ToNativeFolder(std::string_view name);

/// How many parts most paths have at most: lists of parts begin with room for them.
constexpr std::size_t kUsualDepth = 24;

/// The parts of @p text, where they lie in it, between backslashes; empty ones left out.
std::vector<std::string_view> SplitAtBackslashes(std::string_view text);

/// The names in the folder @p native in byte order, without "." and ".."; nothing, with errno, when it cannot be read. @p opened, which
/// may be null, becomes the open folder.
std::optional<std::vector<std::string>> ListFolder(const std::string& native, Descriptor* opened = nullptr);

/// The same; empty when it cannot be read.
KELGEN_PLATFORM_TESTED_API std::vector<std::string> FolderEntries(const std::string& native);

/// True when the file names differ at most in case (NameCase.h has the rule); bytes that are not UTF-8 must be equal.
KELGEN_PLATFORM_TESTED_API bool EqualNames(std::string_view left, std::string_view right);

/// Less than, equal to or greater than 0: the order of file names by code unit in upper case, equal ones by byte.
KELGEN_PLATFORM_TESTED_API int OrderOfNames(std::string_view left, std::string_view right);

/// The current folder's drive form, without a final backslash unless it is a root.
std::string CurrentFolder();

// Inside, names are bytes of the file system: UTF-8. So are command lines and the environment.

/// UTF-8 of 16-bit text, and back. Bytes that are not UTF-8 become U+DC80 to U+DCFF, which become those bytes again: every name
/// of the file system survives. Null and empty give empty text.
KELGEN_PLATFORM_TESTED_API std::string NarrowName(LPCWSTR wide);
KELGEN_PLATFORM_TESTED_API std::u16string WideName(std::string_view narrow);

/// UTF-8 of a name in the ANSI code page, and back. On page 65001 all bytes stay as they are. On another one, bytes that are not
/// UTF-8 stay too; on the way back they are characters of the page, and Resolve finds such an entry where no other has that name.
KELGEN_PLATFORM_TESTED_API std::string NarrowName(LPCSTR ansi);
KELGEN_PLATFORM_TESTED_API std::string AnsiName(std::string_view narrow);

/// Whether the name is the same bytes in UTF-8 and in the ANSI code page.
bool IsSameInAnsi(std::string_view narrow);

/// True when @p narrow holds nothing but whole characters.
bool IsUtf8(std::string_view narrow);

/// @p narrow as the calls with that kind of characters give it.
template <class Char>
std::basic_string<Char> NameIn(std::string_view narrow)
{
    if constexpr (sizeof(Char) == 1) {
        return AnsiName(narrow);
    } else {
        const std::u16string wide = WideName(narrow);
        return {wide.begin(), wide.end()};
    }
}

/// Stores @p narrow for a call that fills a buffer of @p size: its length, or the size that is needed, terminator included.
DWORD StoreName(std::string_view narrow, LPSTR buffer, DWORD size);
DWORD StoreName(std::string_view narrow, LPWSTR buffer, DWORD size);

/// The drive form of the file that @p name means for who starts a program: looked for in the program's folder, the current one, the
/// system's and those of PATH, with @p extension when it has none; empty when there is none.
std::string FileForCommand(const std::string& name, const std::string& extension);

}  // namespace kelgen::posix
