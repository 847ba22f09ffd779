// ModuleTable.cpp: walks the loader's list of ELF files.
#include <kelgen/platform/posix/modules/ModuleTable.h>

#include <kelgen/platform/posix/base/Home.h>
#include <kelgen/platform/posix/base/ProgramFile.h>
#include <kelgen/platform/posix/modules/SystemModules.h>

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <functional>

namespace kelgen::posix {

namespace {

using Visitor = std::function<bool(const LoadedFile&)>;

const void* FirstByte(const dl_phdr_info& info)
{
    static const ElfW(Addr) pageMask = ~(static_cast<ElfW(Addr)>(sysconf(_SC_PAGESIZE)) - 1);
    for (int i = 0; i < info.dlpi_phnum; ++i)
        if (info.dlpi_phdr[i].p_type == PT_LOAD)
            return reinterpret_cast<const void*>(info.dlpi_addr + (info.dlpi_phdr[i].p_vaddr & pageMask));
    return nullptr;
}

int VisitOne(dl_phdr_info* info, std::size_t, void* visitor)
{
    LoadedFile file;
    file.base = FirstByte(*info);
    if (!file.base)
        return 0;
    // The program comes first and has no name of its own.
    file.path = info->dlpi_name && *info->dlpi_name ? info->dlpi_name : ProgramFile();
    return (*static_cast<Visitor*>(visitor))(file) ? 1 : 0;
}

// Shows the loaded files, the program first, to visitor until that returns true.
void VisitLoadedFiles(Visitor visitor)
{
    dl_iterate_phdr(VisitOne, &visitor);
}

}  // namespace

std::vector<LoadedFile> LoadedFiles()
{
    std::vector<LoadedFile> files;
    VisitLoadedFiles([&files](const LoadedFile& file) {
        files.push_back(file);
        return false;
    });
    return files;
}

HMODULE ModuleOfAddress(const void* address)
{
    Dl_info info;
    return dladdr(address, &info) ? static_cast<HMODULE>(info.dli_fbase) : nullptr;
}

HMODULE ProgramModule()
{
    static const void* program = [] {
        const void* first = nullptr;
        VisitLoadedFiles([&first](const LoadedFile& file) {
            first = file.base;
            return true;
        });
        return first;
    }();
    return static_cast<HMODULE>(const_cast<void*>(program));
}

const void* ModuleBase(HMODULE module)
{
    if (!module)
        return ProgramModule();
    bool loaded = false;
    VisitLoadedFiles([&loaded, module](const LoadedFile& file) { return loaded = file.base == module; });
    return loaded ? module : nullptr;
}

std::optional<std::string> ModuleFile(HMODULE module)
{
    if (const auto name = NameOfSystemModule(module))
        return DriveCFolder() + "/windows/system32/" + std::string(*name) + ".dll";

    const void* const base = module ? module : ProgramModule();
    std::optional<std::string> path;
    VisitLoadedFiles([&path, base](const LoadedFile& file) {
        if (file.base == base)
            path = file.path;
        return path.has_value();
    });
    return path;
}

}  // namespace kelgen::posix
