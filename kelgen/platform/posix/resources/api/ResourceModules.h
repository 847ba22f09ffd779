// ResourceModules.h: which compiled resources belong to which loaded module.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <memory>
#include <optional>
#include <vector>

namespace kelgen::posix {

class ResourceTable;
struct ResourceEntry;

/// Makes compiled resources part of a module while it lives; the sources that kelgen_add_resources generates hold one each.
/// Threads: any.
class KELGEN_PLATFORM_API RegisteredResources
{
public:
    /// Registers the bytes from @p begin to @p end, the contents of a .res file, under the module whose first byte in memory is
    /// @p module. The bytes must stay readable and unchanged while this object lives. Damaged entries are left out.
    RegisteredResources(const void* module, const void* begin, const void* end);
    ~RegisteredResources();
    RegisteredResources(const RegisteredResources&) = delete;
    RegisteredResources& operator=(const RegisteredResources&) = delete;

private:
    std::shared_ptr<const ResourceTable> m_table;
    const void* m_module;
};

/// The resources that are registered under @p module, in the order of registration.
std::vector<std::shared_ptr<const ResourceTable>> ResourcesOf(const void* module);

/// @p entry when it is one of any registered resources, else null.
const ResourceEntry* RegisteredEntry(const void* entry);

/// The bytes from @p place to the end of the registered resource that it lies in; nothing when it lies in none.
std::optional<std::size_t> RegisteredBytesFrom(const void* place);

}  // namespace kelgen::posix
