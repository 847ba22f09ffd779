// Handles.cpp: slots with generations; bits 2 to 21 of a handle are the slot's number plus one, the bits above its generation.
#include <kelgen/platform/posix/base/Handles.h>

#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>

namespace kelgen::posix {

namespace {

constexpr int kIndexBits = 20;
constexpr ULONG_PTR kIndexMask = (ULONG_PTR{1} << kIndexBits) - 1;
// Handles must fit 31 bits: code keeps them in 32-bit fields.
constexpr int kGenerationBits = 9;
constexpr DWORD kGenerationMask = (1u << kGenerationBits) - 1;
// A slot is used again when so many others are free: a closed handle's number comes back after all of its slot's generations.
constexpr std::size_t kRest = std::size_t{1} << (kIndexBits - kGenerationBits);

}  // namespace

HandleObject::~HandleObject() = default;

HandleTable& HandleTable::Get()
{
    // Never destroyed: static objects of hosts close handles after this library's own statics are gone.
    static HandleTable& table = *new HandleTable;
    return table;
}

HANDLE HandleTable::Insert(std::shared_ptr<HandleObject> object, HANDLE failure)
{
    const std::lock_guard lock(m_mutex);
    const std::optional<std::size_t> index = m_slots.Take(kRest, kIndexMask);
    if (!index)
        return Fail(ERROR_NO_SYSTEM_RESOURCES, failure);
    Entry& entry = m_slots[*index];
    entry.object = std::move(object);
    const ULONG_PTR value = (ULONG_PTR{entry.generation} << kIndexBits) | (*index + 1);
    return reinterpret_cast<HANDLE>(value << 2);
}

std::optional<std::size_t> HandleTable::SlotOf(const void* handle) const
{
    const ULONG_PTR value = reinterpret_cast<ULONG_PTR>(handle);
    const ULONG_PTR index = ((value >> 2) & kIndexMask) - 1;
    if (value % 4 != 0 || index >= m_slots.Count())
        return std::nullopt;
    const Entry& entry = m_slots[index];
    return entry.object && entry.generation == value >> (2 + kIndexBits) ? std::optional(index) : std::nullopt;
}

std::shared_ptr<HandleObject> HandleTable::FindAny(const void* handle)
{
    const std::lock_guard lock(m_mutex);
    const std::optional<std::size_t> index = SlotOf(handle);
    return index ? m_slots[*index].object : nullptr;
}

std::shared_ptr<HandleObject> HandleTable::Remove(const void* handle)
{
    const std::lock_guard lock(m_mutex);
    const std::optional<std::size_t> index = SlotOf(handle);
    if (!index)
        return nullptr;
    Entry& entry = m_slots[*index];
    entry.generation = (entry.generation + 1) & kGenerationMask;
    m_slots.GiveBack(*index);
    return std::move(entry.object);
}

}  // namespace kelgen::posix
