// Accelerators.cpp: tables of accelerators, made from entries and from resources.
#include <kelgen/platform/posix/user/api/Accelerators.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/resources/api/Resources.h>
#include <kelgen/platform/posix/user/menus/AcceleratorTables.h>
#include <kelgen/platform/posix/user/objects/TemplateReader.h>
#include <kelgen/platform/posix/user/objects/UserHandles.h>

#include <algorithm>
#include <mutex>

using namespace kelgen::posix;
using namespace kelgen::posix::user;

namespace {

using Entries = std::vector<ACCEL>;

struct AcceleratorTables
{
    std::mutex mutex;
    UserHandleTable<HACCEL, Entries, HandleKind::kAccelerators> table;

    static AcceleratorTables& Get()
    {
        static AcceleratorTables& tables = *new AcceleratorTables;
        return tables;
    }
};

HACCEL Insert(Entries entries)
{
    AcceleratorTables& tables = AcceleratorTables::Get();
    const std::lock_guard lock(tables.mutex);
    const HACCEL handle = tables.table.Insert(std::make_unique<Entries>(std::move(entries)));
    return handle ? handle : Fail(ERROR_NOT_ENOUGH_MEMORY, HACCEL());
}

/// Entries of eight bytes, the last one marked. Source: the ACCELTABLEENTRY format.
HACCEL LoadTable(HINSTANCE module, HRSRC resource)
{
    constexpr WORD kIsLast = 0x80;
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
    if (!bytes)
        return nullptr;
    TemplateReader reader(bytes, SizeofResource(module, resource));
    Entries entries;
    for (;;) {
        const WORD flags = reader.Word();
        const WORD key = reader.Word();
        const WORD command = reader.Word();
        reader.Word();  // padding
        if (!reader.IsSound())
            break;
        entries.push_back({static_cast<BYTE>(flags & ~kIsLast), key, command});
        if (flags & kIsLast)
            break;
    }
    return entries.empty() ? Fail(ERROR_INVALID_DATA, HACCEL()) : Insert(std::move(entries));
}

}  // namespace

namespace kelgen::posix::user {

std::vector<ACCEL> AcceleratorsOf(HACCEL table)
{
    AcceleratorTables& tables = AcceleratorTables::Get();
    const std::lock_guard lock(tables.mutex);
    const Entries* entries = tables.table.Find(table);
    return entries ? *entries : Entries();
}

}  // namespace kelgen::posix::user

HACCEL CreateAcceleratorTableA(LPACCEL entries, int count)
{
    return OrNoMemory(HACCEL{}, [&]() -> HACCEL {
        if (!entries || count < 1)
            return Fail(ERROR_INVALID_PARAMETER, HACCEL());
        return Insert(Entries(entries, entries + count));
    });
}

HACCEL CreateAcceleratorTableW(LPACCEL entries, int count)
{
    return OrNoMemory(HACCEL{}, [&]() -> HACCEL { return CreateAcceleratorTableA(entries, count); });
}

HACCEL LoadAcceleratorsA(HINSTANCE module, LPCSTR name)
{
    return OrNoMemory(HACCEL{}, [&]() -> HACCEL { return LoadTable(module, FindResourceA(module, name, RT_ACCELERATOR)); });
}

HACCEL LoadAcceleratorsW(HINSTANCE module, LPCWSTR name)
{
    return OrNoMemory(HACCEL{}, [&]() -> HACCEL { return LoadTable(module, FindResourceW(module, name, MAKEINTRESOURCEW(9))); });
}

BOOL DestroyAcceleratorTable(HACCEL table)
{
    AcceleratorTables& tables = AcceleratorTables::Get();
    const std::lock_guard lock(tables.mutex);
    return tables.table.Remove(table) != nullptr;
}

int CopyAcceleratorTableA(HACCEL table, LPACCEL entries, int count)
{
    const Entries all = AcceleratorsOf(table);
    if (!entries)
        return static_cast<int>(all.size());
    const std::size_t copied = std::min(all.size(), static_cast<std::size_t>(count));
    std::copy_n(all.begin(), copied, entries);
    return static_cast<int>(copied);
}

int CopyAcceleratorTableW(HACCEL table, LPACCEL entries, int count)
{
    return CopyAcceleratorTableA(table, entries, count);
}
