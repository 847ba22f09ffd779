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
        // Messages come in runs to one window.
        if (handle == m_lastHandle)
            return m_lastObject;
        const auto found = m_permanent.find(handle);
        m_lastHandle = handle;
        return m_lastObject = found == m_permanent.end() ? nullptr : found->second;
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
        m_permanent[handle] = object;
        ForgetLastAnswer();
    }

    /// Another object that took the handle over meanwhile stays.
    void RemovePermanent(Handle handle, const Object* object)
    {
        const auto found = m_permanent.find(handle);
        if (found != m_permanent.end() && found->second == object)
            m_permanent.erase(found);
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

    std::unordered_map<Handle, Object*> m_permanent;
    mutable Handle m_lastHandle = nullptr;  ///< Asked for last, and the answer.
    mutable Object* m_lastObject = nullptr;
    std::unordered_map<Handle, Object*> m_temporary;
};

struct HandleMaps;

/// The calling thread's maps, made when missing; and null instead.
HandleMaps& ThreadMaps();
HandleMaps* ExistingThreadMaps();

}  // namespace kelgen::detail
