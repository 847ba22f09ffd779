// UserHandles.h: tables of the handles of menus, icons, accelerator tables and bitmaps, checked by generation.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <deque>
#include <memory>
#include <vector>

namespace kelgen::posix::user {

/// The low halves of the handles of each kind: first, first + 8, first + 16 and so on. Windows have the even ones.
enum class HandleKind : WORD
{
    kMenu = 0x21,
    kIcon = 0x23,
    kAccelerators = 0x25,
    kBitmap = 0x27,
};

/// Objects by handle. A handle has 32 bits: its slot, and above it a generation that is never 0, so that a handle is no command
/// number and a stale or forged one finds nothing.
/// Threads: the owner of the table guards it.
template <class Handle, class Object, HandleKind kind>
class UserHandleTable
{
public:
    /// The handle of @p object from now on; null when all slots are taken.
    Handle Insert(std::unique_ptr<Object> object)
    {
        if (m_free.empty()) {
            if (m_slots.size() == kMostSlots)
                return nullptr;
            m_free.push_back(m_slots.size());
            m_slots.emplace_back();
        }
        const std::size_t index = m_free.front();
        m_free.pop_front();
        Slot& slot = m_slots[index];
        slot.object = std::move(object);
        slot.generation = static_cast<WORD>(slot.generation == 0x7FFF ? 1 : slot.generation + 1);
        return reinterpret_cast<Handle>(static_cast<std::uintptr_t>(slot.generation) << 16 | (kFirst + kStep * index));
    }

    /// The object of @p handle, or null.
    Object* Find(const void* handle) const
    {
        const Slot* slot = SlotOf(handle);
        return slot ? slot->object.get() : nullptr;
    }

    /// Takes @p handle out of the table and returns its object, or null.
    std::unique_ptr<Object> Remove(const void* handle)
    {
        Slot* slot = const_cast<Slot*>(SlotOf(handle));
        if (!slot)
            return nullptr;
        m_free.push_back(static_cast<std::size_t>(slot - m_slots.data()));
        return std::move(slot->object);
    }

private:
    static constexpr std::size_t kFirst = static_cast<std::size_t>(kind);
    static constexpr std::size_t kStep = 8;
    static constexpr std::size_t kMostSlots = (0x10000 - kFirst) / kStep;

    struct Slot
    {
        std::unique_ptr<Object> object;
        WORD generation = 0;
    };

    const Slot* SlotOf(const void* handle) const
    {
        const auto value = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t low = value & 0xFFFF;
        if (low < kFirst || (low - kFirst) % kStep != 0 || (low - kFirst) / kStep >= m_slots.size())
            return nullptr;
        const Slot& slot = m_slots[(low - kFirst) / kStep];
        return slot.object && value >> 16 == slot.generation ? &slot : nullptr;
    }

    std::vector<Slot> m_slots;
    // First in, first out: a freed handle's slot stays unused as long as possible.
    std::deque<std::size_t> m_free;
};

}  // namespace kelgen::posix::user
