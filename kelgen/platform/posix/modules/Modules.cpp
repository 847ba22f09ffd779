// Modules.cpp: module handles, loading, procedures.
#include <kelgen/platform/posix/modules/api/Modules.h>

#include <kelgen/platform/posix/base/LibraryLoad.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/ProgramFile.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/files/Paths.h>
#include <kelgen/platform/posix/modules/ModuleTable.h>
#include <kelgen/platform/posix/modules/SystemModules.h>

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <new>

using namespace kelgen::posix;

namespace {

// The loader's references that LoadLibraryA took and FreeLibrary gives back.
struct References
{
    std::mutex mutex;
    std::map<HMODULE, std::vector<void*>> taken;
};

References& AllReferences()
{
    static References& references = *new References;
    return references;
}

bool HasFolder(std::string_view name)
{
    return name.find_first_of("/\\:") != std::string_view::npos;
}

// "X" for "libX.so.1", "X.dll", "X.exe" and "X".
std::string_view StemOf(std::string_view file)
{
    if (const std::size_t shared = file.find(".so"); shared != std::string_view::npos)
        file = file.substr(0, shared);
    for (const std::string_view ending : {".dll", ".exe"})
        if (file.size() > ending.size() && EqualNames(file.substr(file.size() - ending.size()), ending))
            file.remove_suffix(ending.size());
    if (file.starts_with("lib"))
        file.remove_prefix(3);
    return file;
}

std::string_view LastPart(std::string_view path)
{
    return path.substr(path.find_last_of('/') + 1);
}

bool IsSameFile(const std::string& left, const std::string& right)
{
    struct stat first;
    struct stat second;
    return stat(left.c_str(), &first) == 0 && stat(right.c_str(), &second) == 0 && first.st_ino == second.st_ino &&
           first.st_dev == second.st_dev;
}

HMODULE AsModule(const void* base)
{
    return static_cast<HMODULE>(const_cast<void*>(base));
}

HMODULE LoadedModule(const std::string& name)
{
    const ResolvedPath path = HasFolder(name) ? Resolve(name) : ResolvedPath{};
    for (const LoadedFile& file : LoadedFiles()) {
        const bool same = path.exists ? IsSameFile(path.native, file.path) : !HasFolder(name) && EqualNames(LastPart(file.path), name);
        if (same)
            return AsModule(file.base);
    }
    if (HasFolder(name))
        return nullptr;
    for (const LoadedFile& file : LoadedFiles())
        if (EqualNames(StemOf(LastPart(file.path)), StemOf(name)))
            return AsModule(file.base);
    return nullptr;
}

HMODULE FindModule(const std::string& name)
{
    if (name.empty())
        return nullptr;
    if (const HMODULE system = SystemModule(name))
        return system;
    return LoadedModule(name);
}

bool IsModule(HMODULE module)
{
    return NameOfSystemModule(module) || ModuleBase(module);
}

// Names that a library may have on disk when it is called name.
std::vector<std::string> FileNames(const std::string& name)
{
    const std::string stem(StemOf(name));
    std::vector<std::string> names{name};
    for (std::string other : {name + ".so", "lib" + stem + ".so", stem + ".so"})
        if (std::find(names.begin(), names.end(), other) == names.end())
            names.push_back(std::move(other));
    return names;
}

// Keeps the reference that was taken; without memory it is given back.
HMODULE Keep(void* taken)
{
    struct Unload
    {
        void operator()(void* library) const { dlclose(library); }
    };
    std::unique_ptr<void, Unload> library(taken);
    const link_map* map = nullptr;
    dlinfo(library.get(), RTLD_DI_LINKMAP, &map);
    const HMODULE module = ModuleOfAddress(map->l_ld);
    References& references = AllReferences();
    const std::lock_guard lock(references.mutex);
    references.taken[module].push_back(taken);
    library.release();
    return module;
}

// The latest reference to the module, which is the caller's now; null when there is none.
void* TakeReference(HMODULE module)
{
    References& references = AllReferences();
    const std::lock_guard lock(references.mutex);
    const auto taken = references.taken.find(module);
    if (taken == references.taken.end())
        return nullptr;
    void* const library = taken->second.back();
    taken->second.pop_back();
    if (taken->second.empty())
        references.taken.erase(taken);
    return library;
}

// The module of the library at path, or null; found becomes true when there is a file at all.
HMODULE LoadFile(const std::string& path, bool& found)
{
    struct stat status;
    if (HasFolder(path) && (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)))
        return nullptr;
    const LibraryLoad load;
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    found = found || HasFolder(path);
    if (library && load.lacksMemory) {
        dlclose(library);
        throw std::bad_alloc();
    }
    return library ? Keep(library) : nullptr;
}

// Takes a reference to a loaded file by its path; nothing for the program and the system's modules.
void AddReference(HMODULE module)
{
    const auto path = ModuleFile(module);
    if (module == ProgramModule() || NameOfSystemModule(module) || !path)
        return;
    if (void* const library = dlopen(path->c_str(), RTLD_NOW | RTLD_NOLOAD))
        Keep(library);
}

HMODULE Load(const std::string& name)
{
    if (name.empty())
        return Fail(ERROR_MOD_NOT_FOUND, nullptr);
    if (const HMODULE system = SystemModule(name))
        return system;

    bool found = false;
    if (HasFolder(name)) {
        const std::size_t end = name.find_last_of("/\\:") + 1;
        for (const std::string& file : FileNames(name.substr(end))) {
            const ResolvedPath path = Resolve(name.substr(0, end) + file);
            if (const HMODULE module = path.exists ? LoadFile(path.native, found) : nullptr)
                return module;
        }
    } else {
        // Never the current folder: whoever can write there would choose what a program loads.
        const std::string program = ProgramFile();
        for (const std::string& folder : {program.substr(0, program.rfind('/') + 1), std::string()})
            for (const std::string& file : FileNames(name))
                if (const HMODULE module = LoadFile(folder + file, found))
                    return module;
        if (const HMODULE loaded = LoadedModule(name)) {
            AddReference(loaded);
            return loaded;
        }
    }
    return Fail(found ? ERROR_BAD_EXE_FORMAT : ERROR_MOD_NOT_FOUND, nullptr);
}

BOOL StoreModule(DWORD flags, HMODULE found, HMODULE* module)
{
    if (!module)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *module = found;
    if (!found)
        return Fail(ERROR_MOD_NOT_FOUND, FALSE);
    if ((flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT) == 0)
        AddReference(found);
    return TRUE;
}

template <class Unit>
DWORD StoreModuleFile(HMODULE module, Unit* buffer, DWORD size)
{
    const auto path = ModuleFile(module);
    if (!path)
        return Fail(ERROR_MOD_NOT_FOUND, DWORD{0});

    const std::basic_string<Unit> name = NameIn<Unit>(DriveForm(*path));
    const DWORD length = static_cast<DWORD>(name.size());
    std::copy_n(name.c_str(), std::min(length + 1, size), buffer);
    SetLastError(length < size ? ERROR_SUCCESS : ERROR_INSUFFICIENT_BUFFER);
    return std::min(length, size);
}

template <class Unit>
HMODULE ModuleCalled(const Unit* name)
{
    const HMODULE module = name ? FindModule(NarrowName(name)) : ProgramModule();
    return module ? module : Fail(ERROR_MOD_NOT_FOUND, module);
}

FARPROC ProcedureOf(HMODULE module, const char* name)
{
    const auto path = ModuleFile(module);
    const bool isProgram = module == ProgramModule();
    void* const library = path ? dlopen(isProgram ? nullptr : path->c_str(), RTLD_NOW | RTLD_NOLOAD) : nullptr;
    if (!library)
        return nullptr;

    void* const address = dlsym(library, name);
    dlclose(library);
    // The loader also looks into the libraries that the module itself needs.
    return address && ModuleOfAddress(address) == module ? reinterpret_cast<FARPROC>(address) : nullptr;
}

}  // namespace

HMODULE GetModuleHandleA(LPCSTR name)
{
    return OrNoMemory(HMODULE{}, [&]() -> HMODULE { return ModuleCalled(name); });
}

HMODULE GetModuleHandleW(LPCWSTR name)
{
    return OrNoMemory(HMODULE{}, [&]() -> HMODULE { return ModuleCalled(name); });
}

BOOL GetModuleHandleExA(DWORD flags, LPCSTR name, HMODULE* module)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (flags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS)
            return StoreModule(flags, ModuleOfAddress(name), module);
        return StoreModule(flags, name ? FindModule(NarrowName(name)) : ProgramModule(), module);
    });
}

BOOL GetModuleHandleExW(DWORD flags, LPCWSTR name, HMODULE* module)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        if (flags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS)
            return StoreModule(flags, ModuleOfAddress(name), module);
        return StoreModule(flags, name ? FindModule(NarrowName(name)) : ProgramModule(), module);
    });
}

DWORD GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreModuleFile(module, buffer, size); });
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD size)
{
    return OrNoMemory(DWORD{0}, [&]() -> DWORD { return StoreModuleFile(module, buffer, size); });
}

HMODULE LoadLibraryA(LPCSTR name)
{
    return OrNoMemory(HMODULE{}, [&]() -> HMODULE { return Load(NarrowName(name)); });
}

HMODULE LoadLibraryW(LPCWSTR name)
{
    return OrNoMemory(HMODULE{}, [&]() -> HMODULE { return Load(NarrowName(name)); });
}

HMODULE LoadLibraryExA(LPCSTR name, HANDLE, DWORD)
{
    return OrNoMemory(HMODULE{}, [&]() -> HMODULE { return LoadLibraryA(name); });
}

HMODULE LoadLibraryExW(LPCWSTR name, HANDLE, DWORD)
{
    return OrNoMemory(HMODULE{}, [&]() -> HMODULE { return LoadLibraryW(name); });
}

BOOL FreeLibrary(HMODULE module)
{
    if (!module)
        return Fail(ERROR_INVALID_HANDLE, FALSE);

    // First, since it takes no memory: what is loaded can be given back at any time.
    if (void* const library = TakeReference(module)) {
        dlclose(library);
        return TRUE;
    }
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL { return IsModule(module) ? TRUE : Fail(ERROR_MOD_NOT_FOUND, FALSE); });
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name)
{
    return OrNoMemory(FARPROC{}, [&]() -> FARPROC {
        if (!module)
            module = ProgramModule();
        if (!IsModule(module))
            return Fail(ERROR_MOD_NOT_FOUND, FARPROC{});
        if (IS_INTRESOURCE(name))
            return Fail(ERROR_PROC_NOT_FOUND, FARPROC{});

        const FARPROC procedure = NameOfSystemModule(module) ? SystemProcedure(name) : ProcedureOf(module, name);
        return procedure ? procedure : Fail(ERROR_PROC_NOT_FOUND, FARPROC{});
    });
}

BOOL DisableThreadLibraryCalls(HMODULE module)
{
    return IsModule(module) ? TRUE : Fail(ERROR_MOD_NOT_FOUND, FALSE);
}
