// Reference.h: counted references to shared objects of the property model, and an empty polymorphic base.
#pragma once

#include <kelgen/Export.h>

namespace gen {

/// An object on the heap that deletes itself with its last reference. It starts with none: whoever makes it calls AddRef for
/// each holder, and each holder calls Release once.
///
/// Threads: the count is plain; objects shared between threads need a lock around AddRef and Release.
class KELGEN_API CReference
{
public:
    CReference() = default;
    /// By contract: a copy takes over the count of @p other instead of starting with 0, as all members are copied.
    CReference(const CReference& other) = default;
    CReference& operator=(const CReference& other) = default;
    virtual ~CReference() = default;

    /// Counts one reference more.
    virtual void AddRef();
    /// Gives one reference back, and deletes the object if that was the last one. By contract: without a reference the count becomes
    /// negative and nothing is deleted, since an object that nobody counts has another owner.
    virtual void Release();

private:
    int m_count = 0;
};

}  // namespace gen

/// A base for interfaces that are handed about by pointer.
class KELGEN_API CReferenceInterface
{
public:
    CReferenceInterface() = default;
    CReferenceInterface(const CReferenceInterface&) = default;
    CReferenceInterface& operator=(const CReferenceInterface&) = default;
    virtual ~CReferenceInterface() = default;

    /// Whether this pointer is null. By contract: may be called through a null pointer, for which hosts use it.
    bool IsThisNull() const;
};
