// ExecutableFiles.cpp: finds version resources in PE and ELF files, trusting no offset.
#include <kelgen/platform/posix/resources/ExecutableFiles.h>

#include <kelgen/platform/posix/resources/ResourceLanguage.h>

#include <elf.h>

#include <algorithm>
#include <string_view>

namespace kelgen::posix {

namespace {

constexpr WORD kVersionType = 16;
constexpr WORD kVersionName = 1;
// A version resource counts its length in 16 bits.
constexpr ULONGLONG kLongestResource = 0x10000;

/// Where one language's version resource lies in the file.
struct Found
{
    WORD language;
    ULONGLONG offset;
    ULONGLONG size;
    ULONGLONG inFile;  // what the file has of it at most; the rest is zeros
};

std::optional<std::vector<BYTE>> Load(const ByteSource& file, const std::vector<Found>& found)
{
    const Found* chosen = ChooseLanguage(found, 0, [](const Found& each) { return each.language; });
    if (!chosen || chosen->offset > file.Size())
        return std::nullopt;
    std::vector<BYTE> bytes(static_cast<std::size_t>(std::min(chosen->size, kLongestResource)));
    const ULONGLONG inFile = std::min({ULONGLONG{bytes.size()}, chosen->inFile, file.Size() - chosen->offset});
    if (!file.Read(chosen->offset, std::span(bytes).first(static_cast<std::size_t>(inFile))))
        return std::nullopt;
    return bytes;
}

/// The array of @p count values that begins at @p offset; empty when the file ends before its end.
template <class Value>
std::vector<Value> ReadArray(const ByteSource& file, ULONGLONG offset, std::size_t count)
{
    if (!file.Holds(offset, count * sizeof(Value)))
        return {};
    std::vector<Value> values(count);
    if (!file.Read(offset, {reinterpret_cast<BYTE*>(values.data()), count * sizeof(Value)}))
        return {};
    return values;
}

struct PeFileHeader
{
    DWORD signature;
    WORD machine;
    WORD sectionCount;
    DWORD unused[3];
    WORD optionalHeaderSize;
    WORD characteristics;
};

struct PeSection
{
    BYTE name[8];
    DWORD virtualSize;
    DWORD address;
    DWORD fileSize;
    DWORD fileOffset;
    DWORD unused[4];
};

struct PeResourceDirectory
{
    DWORD unused[3];
    WORD namedEntries;
    WORD numberedEntries;
};

struct PeResourceEntry
{
    DWORD id;
    DWORD target;
};

struct PeDataEntry
{
    DWORD address;
    DWORD size;
    DWORD unused[2];
};

/// The resources of a PE file: directories of types, of names and of languages, one below the other.
class PeResources
{
public:
    explicit PeResources(const ByteSource& file) : m_file(file) {}

    std::vector<Found> Versions()
    {
        if (!ReadHeaders())
            return {};
        DWORD directory = 0;
        for (const DWORD id : {DWORD{kVersionType}, DWORD{kVersionName}}) {
            const auto entries = Entries(directory);
            const auto entry = std::ranges::find(entries, id, &PeResourceEntry::id);
            if (entry == entries.end() || !(entry->target & kSubdirectory))
                return {};
            directory = entry->target & ~kSubdirectory;
        }
        std::vector<Found> found;
        for (const PeResourceEntry& language : Entries(directory)) {
            const auto data = language.target & kSubdirectory ? std::nullopt : ReadAt<PeDataEntry>(language.target);
            const PeSection* const section = data ? SectionOf(data->address) : nullptr;
            if (!section)
                continue;
            const DWORD start = data->address - section->address;
            // A loaded section ends in zeros: behind its bytes, and in the place of those that a cut file lacks.
            const ULONGLONG pages = (ULONGLONG{section->fileSize} + kPage - 1) / kPage * kPage;
            if (data->size <= pages - start)
                found.push_back({LOWORD(language.id), ULONGLONG{section->fileOffset} + start, data->size, section->fileSize - start});
        }
        return found;
    }

private:
    static constexpr DWORD kSignature = 0x00004550;
    static constexpr DWORD kSubdirectory = 0x80000000;
    static constexpr DWORD kResourceDirectory = 2;
    // The loader's own limit; every address is looked for in all sections.
    static constexpr WORD kMostSections = 96;
    static constexpr ULONGLONG kPage = 0x1000;

    bool ReadHeaders()
    {
        constexpr ULONGLONG kHeaderOffset = 0x3C;
        const auto start = m_file.ReadAs<DWORD>(kHeaderOffset);
        const auto header = start ? m_file.ReadAs<PeFileHeader>(*start) : std::nullopt;
        if (!header || header->signature != kSignature || header->sectionCount > kMostSections)
            return false;
        const ULONGLONG optional = ULONGLONG{*start} + sizeof(PeFileHeader);
        m_sections = ReadArray<PeSection>(m_file, optional + header->optionalHeaderSize, header->sectionCount);

        // Behind the part whose size differs: the number of directories, then their addresses and sizes.
        const auto magic = m_file.ReadAs<WORD>(optional);
        if (magic != WORD{0x10B} && magic != WORD{0x20B})
            return false;
        const ULONGLONG directories = magic == WORD{0x10B} ? 92 : 108;
        const ULONGLONG entry = directories + 4 + ULONGLONG{kResourceDirectory} * 8;
        const auto count = m_file.ReadAs<DWORD>(optional + directories);
        const auto address = m_file.ReadAs<DWORD>(optional + entry);
        if (count.value_or(0) <= kResourceDirectory || entry + 8 > header->optionalHeaderSize || address.value_or(0) == 0)
            return false;
        m_root = *address;
        return true;
    }

    /// The section with the byte at @p address of the loaded file, or null.
    const PeSection* SectionOf(ULONGLONG address) const
    {
        const auto section = std::ranges::find_if(
            m_sections, [address](const PeSection& each) { return address >= each.address && address - each.address < each.fileSize; });
        return section == m_sections.end() ? nullptr : &*section;
    }

    /// Where the byte at @p address of the loaded file lies in the file.
    std::optional<ULONGLONG> OffsetOf(ULONGLONG address) const
    {
        const PeSection* const section = SectionOf(address);
        return section ? std::optional(section->fileOffset + (address - section->address)) : std::nullopt;
    }

    template <class Value>
    std::optional<Value> ReadAt(DWORD resourceOffset) const
    {
        const auto offset = OffsetOf(ULONGLONG{m_root} + resourceOffset);
        return offset ? m_file.ReadAs<Value>(*offset) : std::nullopt;
    }

    /// The numbered entries of a directory.
    std::vector<PeResourceEntry> Entries(DWORD directory) const
    {
        const auto header = ReadAt<PeResourceDirectory>(directory);
        const auto offset = OffsetOf(ULONGLONG{m_root} + directory);
        if (!header || !offset)
            return {};
        const ULONGLONG named = ULONGLONG{header->namedEntries} * sizeof(PeResourceEntry);
        return ReadArray<PeResourceEntry>(m_file, *offset + sizeof(PeResourceDirectory) + named, header->numberedEntries);
    }

    const ByteSource& m_file;
    std::vector<PeSection> m_sections;
    DWORD m_root = 0;
};

/// The version entries of compiled resource files, joined with padding, in @p size bytes at @p offset.
std::vector<Found> VersionsOfSection(const ByteSource& file, ULONGLONG offset, ULONGLONG size)
{
    // Sizes, type and name as numbers, data version, flags, language, two more numbers.
    struct Header
    {
        DWORD dataSize;
        DWORD headerSize;
        WORD typeMark;
        WORD type;
        WORD nameMark;
        WORD name;
        DWORD dataVersion;
        WORD flags;
        WORD language;
        DWORD unused[2];
    };
    constexpr ULONGLONG kAlignment = 4;
    constexpr WORD kNumberMark = 0xFFFF;
    constexpr int kMostEntries = 1 << 20;

    std::vector<Found> found;
    const ULONGLONG end = offset + size;
    for (int i = 0; i < kMostEntries && end - offset >= sizeof(Header); ++i) {
        const auto header = file.ReadAs<Header>(offset);
        if (!header)
            break;
        if (header->dataSize == 0 && header->headerSize == 0) {
            offset += kAlignment;
            continue;
        }
        const ULONGLONG whole = ULONGLONG{header->headerSize} + header->dataSize;
        if (header->headerSize < sizeof(Header) || whole > end - offset)
            break;
        if (header->typeMark == kNumberMark && header->type == kVersionType && header->nameMark == kNumberMark &&
            header->name == kVersionName)
            found.push_back({header->language, offset + header->headerSize, header->dataSize, header->dataSize});
        offset += std::min((whole + kAlignment - 1) / kAlignment * kAlignment, end - offset);
    }
    std::ranges::stable_sort(found, {}, &Found::language);
    return found;
}

std::vector<Found> VersionsOfElf(const ByteSource& file)
{
    constexpr std::string_view kSectionName(".kelgen.res\0", 12);
    const auto header = file.ReadAs<Elf64_Ehdr>(0);
    if (!header || header->e_ident[EI_CLASS] != ELFCLASS64 || header->e_ident[EI_DATA] != ELFDATA2LSB ||
        header->e_shentsize != sizeof(Elf64_Shdr))
        return {};
    const auto sections = ReadArray<Elf64_Shdr>(file, header->e_shoff, header->e_shnum);
    if (header->e_shstrndx >= sections.size())
        return {};
    const Elf64_Shdr& names = sections[header->e_shstrndx];
    for (const Elf64_Shdr& section : sections) {
        BYTE name[kSectionName.size()];
        const bool isNamed = section.sh_type == SHT_PROGBITS && section.sh_name < names.sh_size && names.sh_offset < file.Size() &&
                             file.Read(names.sh_offset + section.sh_name, name);
        if (isNamed && std::memcmp(name, kSectionName.data(), sizeof name) == 0 && file.Holds(section.sh_offset, section.sh_size))
            return VersionsOfSection(file, section.sh_offset, section.sh_size);
    }
    return {};
}

}  // namespace

std::optional<std::vector<BYTE>> FindVersionResource(const ByteSource& file)
{
    const auto magic = file.ReadAs<DWORD>(0);
    if (!magic)
        return std::nullopt;
    constexpr WORD kDosMagic = 0x5A4D;
    constexpr DWORD kElfMagic = 0x464C457F;
    if (LOWORD(*magic) == kDosMagic)
        return Load(file, PeResources(file).Versions());
    return *magic == kElfMagic ? Load(file, VersionsOfElf(file)) : std::nullopt;
}

}  // namespace kelgen::posix
