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
    if (m_free.size() <= kRest && m_slots.size() < kIndexMask) {
        m_free.push_front(static_cast<DWORD>(m_slots.size()));
        m_slots.emplace_back();
    }
    if (m_free.empty())
        return Fail(ERROR_NO_SYSTEM_RESOURCES, failure);
    const DWORD index = m_free.front();
    m_free.pop_front();
    Slot& slot = m_slots[index];
    slot.object = std::move(object);
    const ULONG_PTR value = (ULONG_PTR{slot.generation} << kIndexBits) | (index + 1);
    return reinterpret_cast<HANDLE>(value << 2);
}

HandleTable::Slot* HandleTable::SlotOf(const void* handle)
{
    const ULONG_PTR value = reinterpret_cast<ULONG_PTR>(handle);
    const ULONG_PTR index = ((value >> 2) & kIndexMask) - 1;
    if (value % 4 != 0 || index >= m_slots.size())
        return nullptr;

    Slot& slot = m_slots[index];
    return slot.object && slot.generation == value >> (2 + kIndexBits) ? &slot : nullptr;
}

std::shared_ptr<HandleObject> HandleTable::FindAny(const void* handle)
{
    const std::lock_guard lock(m_mutex);
    const Slot* slot = SlotOf(handle);
    return slot ? slot->object : nullptr;
}

std::shared_ptr<HandleObject> HandleTable::Remove(const void* handle)
{
    const std::lock_guard lock(m_mutex);
    Slot* slot = SlotOf(handle);
    if (!slot)
        return nullptr;

    slot->generation = (slot->generation + 1) & kGenerationMask;
    m_free.push_back(static_cast<DWORD>(slot - m_slots.data()));
    return std::move(slot->object);
}

}  // namespace kelgen::posix
