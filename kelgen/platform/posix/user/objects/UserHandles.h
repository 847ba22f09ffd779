// UserHandles.h: tables of the handles of menus, icons, accelerator tables and objects of drawing, checked by generation.
#pragma once

#include <kelgen/platform/posix/base/Slots.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <memory>
#include <optional>

namespace kelgen::posix::user {

/// The low halves of the handles of each kind: first, first + 8, first + 16 and so on. Windows have the even ones.
enum class HandleKind : WORD
{
    kMenu = 0x21,
    kIcon = 0x23,
    kAccelerators = 0x25,
    kDrawing = 0x27,  // pens, brushes, fonts, bitmaps, regions, contexts
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
        const std::optional<std::size_t> index = m_slots.Take(0, kMostSlots);
        if (!index)
            return nullptr;
        Entry& entry = m_slots[*index];
        entry.object = std::move(object);
        entry.generation = static_cast<WORD>(entry.generation == 0x7FFF ? 1 : entry.generation + 1);
        return reinterpret_cast<Handle>(static_cast<std::uintptr_t>(entry.generation) << 16 | (kFirst + kStep * *index));
    }

    /// The object of @p handle, or null.
    Object* Find(const void* handle) const
    {
        const std::optional<std::size_t> index = SlotOf(handle);
        return index ? m_slots[*index].object.get() : nullptr;
    }

    /// Takes @p handle out of the table and returns its object, or null.
    std::unique_ptr<Object> Remove(const void* handle)
    {
        const std::optional<std::size_t> index = SlotOf(handle);
        if (!index)
            return nullptr;
        m_slots.GiveBack(*index);
        return std::move(m_slots[*index].object);
    }

private:
    static constexpr std::size_t kFirst = static_cast<std::size_t>(kind);
    static constexpr std::size_t kStep = 8;
    static constexpr std::size_t kMostSlots = (0x10000 - kFirst) / kStep;

    struct Entry
    {
        std::unique_ptr<Object> object;
        WORD generation = 0;
    };

    std::optional<std::size_t> SlotOf(const void* handle) const
    {
        const auto value = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t low = value & 0xFFFF;
        if (low < kFirst || (low - kFirst) % kStep != 0)
            return std::nullopt;
        const std::size_t index = (low - kFirst) / kStep;
        if (index >= m_slots.Count())
            return std::nullopt;
        const Entry& entry = m_slots[index];
        return entry.object && value >> 16 == entry.generation ? std::optional(index) : std::nullopt;
    }

    // A freed handle's slot stays unused as long as possible.
    Slots<Entry> m_slots;
};

}  // namespace kelgen::posix::user
