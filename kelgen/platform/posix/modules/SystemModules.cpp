// SystemModules.cpp: names of the platform's modules, and its calls found among this library's exported symbols.
#include <kelgen/platform/posix/modules/SystemModules.h>

#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/modules/ModuleTable.h>

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <unordered_map>

namespace kelgen::posix {

namespace {

// The address of an entry is its module's handle.
constexpr std::string_view kNames[] = {"kernel32", "user32",   "advapi32", "psapi",  "ole32",    "oleaut32",
                                       "version",  "shell32",  "gdi32",    "ntdll",  "comctl32", "comdlg32",
                                       "winmm",    "wtsapi32", "shlwapi",  "ws2_32", "msvcrt",   "kernelbase"};

using Procedures = std::unordered_map<std::string, FARPROC>;

// The number of symbols in a table that has a GNU hash: the last symbol of the last chain ends it.
std::size_t SymbolCount(const Elf64_Word* hash)
{
    const Elf64_Word bucketCount = hash[0];
    const Elf64_Word firstSymbol = hash[1];
    const Elf64_Word bloomWords = hash[2];
    const Elf64_Word* const buckets = hash + 4 + std::size_t{bloomWords} * 2;
    const Elf64_Word* const chains = buckets + bucketCount;
    Elf64_Word last = 0;
    for (Elf64_Word i = 0; i < bucketCount; ++i)
        last = std::max(last, buckets[i]);
    if (last < firstSymbol)
        return firstSymbol;
    while ((chains[last - firstSymbol] & 1) == 0)
        ++last;
    return last + 1;
}

// The plain name of a function that C++ exports outside any namespace ("_Z8GetTickCountv"), or its C name;
// empty for members and what lies in namespaces.
std::string PlainName(std::string_view symbol)
{
    if (!symbol.starts_with("_Z"))
        return std::string(symbol);
    symbol.remove_prefix(2);
    std::size_t length = 0;
    while (!symbol.empty() && symbol[0] >= '0' && symbol[0] <= '9') {
        length = length * 10 + static_cast<std::size_t>(symbol[0] - '0');
        symbol.remove_prefix(1);
    }
    return std::string(symbol.substr(0, length));
}

Procedures ReadProcedures()
{
    Procedures procedures;
    Dl_info info;
    void* extra = nullptr;
    if (!dladdr1(&kNames, &info, &extra, RTLD_DL_LINKMAP))
        return procedures;

    const link_map& library = *static_cast<const link_map*>(extra);
    const Elf64_Sym* symbols = nullptr;
    const char* texts = nullptr;
    const Elf64_Word* hash = nullptr;
    for (const ElfW(Dyn)* entry = library.l_ld; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_SYMTAB)
            symbols = reinterpret_cast<const Elf64_Sym*>(entry->d_un.d_ptr);
        else if (entry->d_tag == DT_STRTAB)
            texts = reinterpret_cast<const char*>(entry->d_un.d_ptr);
        else if (entry->d_tag == DT_GNU_HASH)
            hash = reinterpret_cast<const Elf64_Word*>(entry->d_un.d_ptr);
    }
    if (!symbols || !texts || !hash)
        return procedures;

    const std::size_t count = SymbolCount(hash);
    for (std::size_t i = 0; i < count; ++i) {
        const Elf64_Sym& symbol = symbols[i];
        if (ELF64_ST_TYPE(symbol.st_info) != STT_FUNC || symbol.st_shndx == SHN_UNDEF)
            continue;
        if (std::string name = PlainName(texts + symbol.st_name); !name.empty())
            procedures.emplace(std::move(name), reinterpret_cast<FARPROC>(library.l_addr + symbol.st_value));
    }
    return procedures;
}

}  // namespace

HMODULE SystemModule(std::string_view name)
{
    if (name.size() > 4 && EqualNames(name.substr(name.size() - 4), ".dll"))
        name.remove_suffix(4);
    for (const std::string_view& known : kNames)
        if (EqualNames(known, name))
            return reinterpret_cast<HMODULE>(const_cast<std::string_view*>(&known));
    return nullptr;
}

std::optional<std::string_view> NameOfSystemModule(HMODULE module)
{
    for (const std::string_view& known : kNames)
        if (static_cast<const void*>(&known) == module)
            return known;
    return std::nullopt;
}

FARPROC SystemProcedure(std::string_view name)
{
    static const Procedures& procedures = *new Procedures(ReadProcedures());
    const auto found = procedures.find(std::string(name));
    return found == procedures.end() ? nullptr : found->second;
}

}  // namespace kelgen::posix
