// VersionImages.h: version resources and executable files around them, byte by byte, sound ones and damaged ones.
#pragma once

#include <kelgen/platform/Win32.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelgen::test {

/// @p value as @p size little-endian bytes.
std::string Number(ULONGLONG value, std::size_t size);

/// The bytes of @p text in 16-bit units.
std::string Units(std::u16string_view text);

/// A node of a version resource. Lengths are those of its parts unless they are given.
struct VersionNode
{
    std::u16string key;
    WORD type = 1;      // 1: text, 0: bytes
    std::string value;  // the bytes; a text with its terminator
    std::vector<VersionNode> children;
    int valueLength = -1;  // units of a text, else bytes
    int length = -1;

    std::string Bytes() const;
};

/// A node of text, its value terminated.
VersionNode TextNode(std::u16string key, std::u16string value);

/// The fixed part, 52 bytes.
std::string FixedInfo(DWORD fileHigh, DWORD fileLow, DWORD productHigh, DWORD productLow);

/// A version resource with that fixed part, string tables (of name and entries) and translations.
struct StringTable
{
    std::u16string name;  // "040904e4"
    std::vector<VersionNode> entries;
};
std::string VersionResource(const std::string& fixed, const std::vector<StringTable>& tables, const std::string& translations);

/// A resource of an executable file.
struct ImageResource
{
    WORD type;
    WORD name;
    WORD language;
    std::string data;
};

/// An executable file without code: headers and one section with the resources, sorted by type, name and language.
struct Image
{
    bool is64Bit = true;
    std::vector<ImageResource> resources;

    std::string Bytes() const;
};

/// Where Image puts its resource section, and where that section is in memory.
constexpr DWORD kImageSectionOffset = 0x400;
constexpr DWORD kImageSectionAddress = 0x1000;

}  // namespace kelgen::test
