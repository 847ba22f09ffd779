// VersionImages.cpp: writes version resources and executable files.
#include "support/VersionImages.h"

#include <map>

namespace kelgen::test {

namespace {

void Align(std::string& bytes, std::size_t alignment)
{
    bytes.resize((bytes.size() + alignment - 1) / alignment * alignment);
}

void Put(std::string& bytes, std::size_t at, ULONGLONG value, std::size_t size)
{
    bytes.replace(at, size, Number(value, size));
}

constexpr DWORD kSubdirectory = 0x80000000;
constexpr std::size_t kDirectorySize = 16;
constexpr std::size_t kEntrySize = 8;

// Directories of three levels, then the data entries, then the data.
std::string ResourceSection(const std::vector<ImageResource>& resources)
{
    std::map<WORD, std::map<WORD, std::map<WORD, const std::string*>>> tree;
    for (const ImageResource& resource : resources)
        tree[resource.type][resource.name][resource.language] = &resource.data;

    std::string section;
    const auto directory = [&section](std::size_t count) {
        const std::size_t at = section.size();
        section += std::string(14, 0) + Number(count, 2) + std::string(count * kEntrySize, 0);
        return at + kDirectorySize;
    };
    const auto entry = [&section](std::size_t& at, WORD id, DWORD target) {
        Put(section, at, id, 4);
        Put(section, at + 4, target, 4);
        at += kEntrySize;
    };
    std::vector<std::pair<std::size_t, const std::string*>> dataEntries;
    std::size_t types = directory(tree.size());
    for (const auto& [type, namesOfType] : tree) {
        entry(types, type, kSubdirectory | static_cast<DWORD>(section.size()));
        std::size_t names = directory(namesOfType.size());
        for (const auto& [name, languagesOfName] : namesOfType) {
            entry(names, name, kSubdirectory | static_cast<DWORD>(section.size()));
            std::size_t languages = directory(languagesOfName.size());
            for (const auto& [language, data] : languagesOfName) {
                dataEntries.emplace_back(languages, data);
                entry(languages, language, 0);
            }
        }
    }
    for (const auto& [where, data] : dataEntries) {
        Put(section, where + 4, section.size(), 4);
        const std::size_t at = section.size();
        section += std::string(16, 0);
        Put(section, at, kImageSectionAddress + section.size(), 4);
        Put(section, at + 4, data->size(), 4);
        section += *data;
        Align(section, 8);
    }
    return section;
}

}  // namespace

std::string Number(ULONGLONG value, std::size_t size)
{
    std::string bytes;
    for (; size > 0; --size, value >>= 8)
        bytes += static_cast<char>(value);
    return bytes;
}

std::string Units(std::u16string_view text)
{
    std::string bytes;
    for (const char16_t unit : text)
        bytes += Number(unit, 2);
    return bytes;
}

std::string VersionNode::Bytes() const
{
    const std::size_t natural = type == 1 ? value.size() / 2 : value.size();
    std::string bytes = Number(0, 2) + Number(valueLength >= 0 ? static_cast<unsigned>(valueLength) : natural, 2) + Number(type, 2) +
                        Units(key) + Number(0, 2);
    Align(bytes, 4);
    bytes += value;
    for (const VersionNode& child : children) {
        Align(bytes, 4);
        bytes += child.Bytes();
    }
    Put(bytes, 0, length >= 0 ? static_cast<unsigned>(length) : bytes.size(), 2);
    return bytes;
}

VersionNode TextNode(std::u16string key, std::u16string value)
{
    return {std::move(key), 1, Units(value) + Number(0, 2), {}};
}

std::string FixedInfo(DWORD fileHigh, DWORD fileLow, DWORD productHigh, DWORD productLow)
{
    std::string bytes;
    for (const DWORD part : std::initializer_list<DWORD>{0xFEEF04BD, 0x10000, fileHigh, fileLow, productHigh, productLow, 0x3F, 0x2,
                                                         0x40004, 0x1, 0x7, 0x11223344, 0x55667788})
        bytes += Number(part, 4);
    return bytes;
}

std::string VersionResource(const std::string& fixed, const std::vector<StringTable>& tables, const std::string& translations)
{
    VersionNode root{u"VS_VERSION_INFO", 0, fixed, {}};
    if (!tables.empty()) {
        VersionNode strings{u"StringFileInfo", 1, "", {}};
        for (const StringTable& table : tables)
            strings.children.push_back({table.name, 1, "", table.entries});
        root.children.push_back(strings);
    }
    if (!translations.empty())
        root.children.push_back({u"VarFileInfo", 1, "", {{u"Translation", 0, translations, {}}}});
    return root.Bytes();
}

std::string Image::Bytes() const
{
    constexpr std::size_t kHeaderOffset = 0x80;
    constexpr std::size_t kFileHeaderSize = 24;
    const std::size_t optionalSize = is64Bit ? 240 : 224;
    const std::size_t sections = kHeaderOffset + kFileHeaderSize + optionalSize;
    std::string section = ResourceSection(resources);
    const std::size_t size = section.size();
    Align(section, 0x200);

    std::string bytes(kImageSectionOffset, 0);
    bytes.replace(0, 2, "MZ");
    Put(bytes, 0x3C, kHeaderOffset, 4);
    bytes.replace(kHeaderOffset, 2, "PE");
    const std::size_t file = kHeaderOffset + 4;
    Put(bytes, file, is64Bit ? 0x8664 : 0x14C, 2);
    Put(bytes, file + 2, 1, 2);  // sections
    Put(bytes, file + 16, optionalSize, 2);
    Put(bytes, file + 18, is64Bit ? 0x2022 : 0x2102, 2);  // a library
    const std::size_t optional = kHeaderOffset + kFileHeaderSize;
    Put(bytes, optional, is64Bit ? 0x20B : 0x10B, 2);
    Put(bytes, optional + (is64Bit ? 24 : 28), 0x10000000, is64Bit ? 8 : 4);
    Put(bytes, optional + 32, kImageSectionAddress, 4);
    Put(bytes, optional + 36, 0x200, 4);
    Put(bytes, optional + 40, 5, 2);
    Put(bytes, optional + 48, 5, 2);
    Put(bytes, optional + 56, kImageSectionAddress + (size + 0xFFF) / 0x1000 * 0x1000, 4);
    Put(bytes, optional + 60, kImageSectionOffset, 4);
    Put(bytes, optional + 68, 3, 2);
    const std::size_t directories = optional + (is64Bit ? 108 : 92);
    Put(bytes, directories, 16, 4);
    if (!resources.empty()) {
        Put(bytes, directories + 4 + 2 * 8, kImageSectionAddress, 4);
        Put(bytes, directories + 4 + 2 * 8 + 4, size, 4);
    }
    bytes.replace(sections, 5, ".rsrc");
    Put(bytes, sections + 8, size, 4);
    Put(bytes, sections + 12, kImageSectionAddress, 4);
    Put(bytes, sections + 16, section.size(), 4);
    Put(bytes, sections + 20, kImageSectionOffset, 4);
    Put(bytes, sections + 36, 0x40000040, 4);
    return bytes + section;
}

}  // namespace kelgen::test
