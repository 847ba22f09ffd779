// ResourceModules.cpp: the process's list of registered resources.
#include <kelgen/platform/posix/resources/api/ResourceModules.h>

#include <kelgen/platform/posix/base/LibraryLoad.h>
#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/resources/ResourceTable.h>

#include <algorithm>
#include <mutex>

namespace kelgen::posix {

namespace {

struct Registration
{
    const void* module;
    std::shared_ptr<const ResourceTable> table;
};

struct Registrations
{
    std::mutex mutex;
    std::vector<Registration> list;
};

Registrations& All()
{
    // Never destroyed: modules are unloaded after this library's own statics are gone.
    static Registrations& registrations = *new Registrations;
    return registrations;
}

}  // namespace

RegisteredResources::RegisteredResources(const void* module, const void* begin, const void* end) : m_module(module)
{
    try {
        const MemoryMode own(true);
        m_table = std::make_shared<ResourceTable>(std::span(static_cast<const BYTE*>(begin), static_cast<const BYTE*>(end)));
        const std::lock_guard lock(All().mutex);
        All().list.push_back({m_module, m_table});
    } catch (const std::bad_alloc&) {
        if (!LibraryLoad::Current())
            throw;
        LibraryLoad::Current()->lacksMemory = true;
    }
}

RegisteredResources::~RegisteredResources()
{
    const std::lock_guard lock(All().mutex);
    std::erase_if(All().list, [this](const Registration& registration) { return registration.table == m_table; });
}

std::vector<std::shared_ptr<const ResourceTable>> ResourcesOf(const void* module)
{
    const std::lock_guard lock(All().mutex);
    std::vector<std::shared_ptr<const ResourceTable>> tables;
    for (const Registration& registration : All().list)
        if (registration.module == module)
            tables.push_back(registration.table);
    return tables;
}

const ResourceEntry* RegisteredEntry(const void* entry)
{
    const auto address = reinterpret_cast<std::uintptr_t>(entry);
    const std::lock_guard lock(All().mutex);
    for (const Registration& registration : All().list) {
        const auto& entries = registration.table->Entries();
        const std::uintptr_t offset = address - reinterpret_cast<std::uintptr_t>(entries.data());
        if (offset < entries.size() * sizeof(ResourceEntry) && offset % sizeof(ResourceEntry) == 0)
            return &entries[offset / sizeof(ResourceEntry)];
    }
    return nullptr;
}

std::optional<std::size_t> RegisteredBytesFrom(const void* place)
{
    const auto address = reinterpret_cast<std::uintptr_t>(place);
    const std::lock_guard lock(All().mutex);
    for (const Registration& registration : All().list) {
        for (const ResourceEntry& entry : registration.table->Entries()) {
            const std::uintptr_t offset = address - reinterpret_cast<std::uintptr_t>(entry.data.data());
            if (offset < entry.data.size())
                return entry.data.size() - offset;
        }
    }
    return std::nullopt;
}

}  // namespace kelgen::posix
