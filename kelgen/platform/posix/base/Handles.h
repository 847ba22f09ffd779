// Handles.h: the process's table of handles, checked by generation so that a closed or forged handle never finds an object.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/Slots.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <memory>
#include <mutex>
#include <optional>
#include <typeinfo>
#include <utility>

namespace kelgen::posix {

/// What a handle stands for. Kinds of objects derive from it and are told apart by dynamic type.
class KELGEN_PLATFORM_TESTED_API HandleObject
{
public:
    HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;
    virtual ~HandleObject();

    /// False for objects whose handles have a closing call of their own and are no business of CloseHandle.
    virtual bool ClosesByCloseHandle() const { return true; }
};

/// Maps handles to shared objects. Handles are multiples of four, as on the real platform, and never 0 or -1. The number of a
/// closed one comes again after 2^20 others at the earliest, unless nearly a million are open.
/// Threads: every member locks; an object stays alive while a caller holds what Find returned, even when closed meanwhile.
class KELGEN_PLATFORM_TESTED_API HandleTable
{
public:
    /// The process's only table.
    static HandleTable& Get();

    /// A new handle for @p object; @p failure with ERROR_NO_SYSTEM_RESOURCES when a million are open, and then the object goes.
    HANDLE Insert(std::shared_ptr<HandleObject> object, HANDLE failure = nullptr);

    /// The object of @p handle, or null when the handle is closed, forged or of another kind. The last error stays.
    template <class Object>
    std::shared_ptr<Object> Find(const void* handle)
    {
        auto any = FindAny(handle);
        const HandleObject* const object = any.get();
        // Mostly it is of that very type, which is quicker to tell than what a type derives from.
        if (object && typeid(*object) == typeid(Object))
            return std::static_pointer_cast<Object>(std::move(any));
        return std::dynamic_pointer_cast<Object>(any);
    }

    /// The object of @p handle of any kind, or null.
    std::shared_ptr<HandleObject> FindAny(const void* handle);

    /// Takes @p handle out of the table and returns its object (its last owner destroys it), or null.
    std::shared_ptr<HandleObject> Remove(const void* handle);

private:
    struct Entry
    {
        std::shared_ptr<HandleObject> object;
        DWORD generation = 0;
    };

    std::optional<std::size_t> SlotOf(const void* handle) const;

    std::mutex m_mutex;
    Slots<Entry> m_slots;
};

/// The process's handle table.
inline HandleTable& Handles()
{
    return HandleTable::Get();
}

}  // namespace kelgen::posix
