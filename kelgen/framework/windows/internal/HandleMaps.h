// HandleMaps.h: a thread's objects by their handles.
#pragma once

#include <kelgen/platform/Win32.h>

#include <bit>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

class CDC;
class CMenu;
class CWnd;

namespace kelgen::detail {

/// Objects by their handles, none of which is null. Every message of a window looks into one: places in a row, of which one in two is free.
template <class Object, class Handle>
class HandleTable
{
public:
    Object* Find(Handle handle) const { return m_places.empty() ? nullptr : m_places[PlaceOf(handle)].second; }

    void Set(Handle handle, Object* object)
    {
        if (2 * (m_count + 1) > m_places.size())
            Grow();
        auto& place = m_places[PlaceOf(handle)];
        m_count += !place.first;
        place = {handle, object};
    }

    void Remove(Handle handle)
    {
        if (!Find(handle))
            return;
        std::size_t hole = PlaceOf(handle);
        // Those behind it that it kept from their own places move up.
        for (std::size_t i = Next(hole); m_places[i].first; i = Next(i)) {
            const std::size_t wanted = Start(m_places[i].first);
            if (((i - wanted) & Mask()) >= ((i - hole) & Mask()))
                m_places[std::exchange(hole, i)] = m_places[i];
        }
        m_places[hole] = {};
        --m_count;
    }

private:
    std::size_t Mask() const { return m_places.size() - 1; }
    std::size_t Next(std::size_t place) const { return (place + 1) & Mask(); }
    std::size_t Start(Handle handle) const
    {
        // What differs in handles is in the middle of their bits.
        const auto mixed = reinterpret_cast<UINT_PTR>(handle) * UINT_PTR{0x9E3779B1} >> 16;
        return static_cast<std::size_t>(mixed) & Mask();
    }
    /// The handle's place, or the free one that it would get.
    std::size_t PlaceOf(Handle handle) const
    {
        std::size_t place = Start(handle);
        while (m_places[place].first != handle && m_places[place].first)
            place = Next(place);
        return place;
    }

    void Grow()
    {
        constexpr std::size_t kLeast = 16;
        std::vector<std::pair<Handle, Object*>> before(m_places.empty() ? kLeast : 2 * m_places.size());
        before.swap(m_places);
        for (const auto& place : before) {
            if (place.first)
                m_places[PlaceOf(place.first)] = place;
        }
    }

    std::vector<std::pair<Handle, Object*>> m_places;  // a power of two
    std::size_t m_count = 0;
};

/// Objects of one class by handle: permanent ones, which are attached, and temporary ones, which the map makes and owns.
template <class Object, class Handle, Handle Object::*Member>
class HandleMap
{
public:
    HandleMap() = default;
    ~HandleMap() { DeleteTemporary(); }
    HandleMap(const HandleMap&) = delete;
    HandleMap& operator=(const HandleMap&) = delete;

    Object* Permanent(Handle handle) const
    {
        // Messages come in runs to one window.
        if (handle == m_lastHandle)
            return m_lastObject;
        m_lastHandle = handle;
        return m_lastObject = m_permanent.Find(handle);
    }

    Object* Any(Handle handle)
    {
        return Any(handle, [](Handle) { return new Object; });
    }

    /// @p make: a new object for a handle that has none.
    template <class Make>
    Object* Any(Handle handle, Make make)
    {
        if (!handle)
            return nullptr;
        if (Object* const permanent = Permanent(handle))
            return permanent;
        Object*& temporary = m_temporary[handle];
        if (!temporary) {
            temporary = make(handle);
            temporary->*Member = handle;
        }
        return temporary;
    }

    void SetPermanent(Handle handle, Object* object)
    {
        m_permanent.Set(handle, object);
        ForgetLastAnswer();
    }

    /// Another object that took the handle over meanwhile stays.
    void RemovePermanent(Handle handle, const Object* object)
    {
        if (m_permanent.Find(handle) == object)
            m_permanent.Remove(handle);
        ForgetLastAnswer();
    }

    void DeleteTemporary()
    {
        std::unordered_map<Handle, Object*> objects;
        objects.swap(m_temporary);
        for (const auto& [handle, object] : objects) {
            // The handle is somebody else's.
            object->*Member = nullptr;
            delete object;
        }
    }

private:
    void ForgetLastAnswer() const
    {
        m_lastHandle = nullptr;
        m_lastObject = nullptr;
    }

    HandleTable<Object, Handle> m_permanent;
    mutable Handle m_lastHandle = nullptr;  ///< Asked for last, and the answer.
    mutable Object* m_lastObject = nullptr;
    std::unordered_map<Handle, Object*> m_temporary;
};

struct HandleMaps;

/// The calling thread's maps, made when missing; and null instead.
HandleMaps& ThreadMaps();
HandleMaps* ExistingThreadMaps();

}  // namespace kelgen::detail
