// HandleMaps.h: a thread's objects by their handles.
#pragma once

#include <kelgen/platform/Win32.h>

#include <unordered_map>

class CDC;
class CMenu;
class CWnd;

namespace kelgen::detail {

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
        const auto found = m_permanent.find(handle);
        return found == m_permanent.end() ? nullptr : found->second;
    }

    Object* Any(Handle handle)
    {
        if (!handle)
            return nullptr;
        if (Object* const permanent = Permanent(handle))
            return permanent;
        Object*& temporary = m_temporary[handle];
        if (!temporary) {
            temporary = new Object;
            temporary->*Member = handle;
        }
        return temporary;
    }

    void SetPermanent(Handle handle, Object* object) { m_permanent[handle] = object; }

    /// Another object that took the handle over meanwhile stays.
    void RemovePermanent(Handle handle, const Object* object)
    {
        const auto found = m_permanent.find(handle);
        if (found != m_permanent.end() && found->second == object)
            m_permanent.erase(found);
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
    std::unordered_map<Handle, Object*> m_permanent;
    std::unordered_map<Handle, Object*> m_temporary;
};

struct HandleMaps;

/// The calling thread's maps, made when missing; and null instead.
HandleMaps& ThreadMaps();
HandleMaps* ExistingThreadMaps();

}  // namespace kelgen::detail
