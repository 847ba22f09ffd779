// Object.h: the base of the framework's classes, and the run-time records that name, create and load them.
#pragma once

#include <kelgen/framework/base/Export.h>
#include <kelgen/platform/Win32.h>

class CArchive;
class CObject;

/// What is known of a class at run time. The macros below make one record for each class that asks for it.
struct KELGEN_FRAMEWORK_API CRuntimeClass
{
    /// m_wSchema of a class that archives cannot hold.
    static const UINT kNoSchema = 0xFFFF;

    /// The class's name.
    LPCSTR m_lpszClassName;
    /// Bytes of an object.
    int m_nObjectSize;
    UINT m_wSchema;                         ///< The version that archives store, or kNoSchema.
    CObject* (*m_pfnCreateObject)();        ///< Null for a class that cannot be created by its record.
    CRuntimeClass* (*m_pfnGetBaseClass)();  ///< Null for CObject.

    /// A new object, or null when the class cannot be created by its record or memory runs out.
    CObject* CreateObject();

    /// Nonzero when this is @p base or derived from it.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;

    /// The record of the class of that exact name, or null. Only classes with DECLARE_SERIAL are listed.
    /// Threads: any.
    static CRuntimeClass* FromName(LPCSTR className);

    /// A new object of the class of that name; null when FromName or CreateObject give null.
    static CObject* CreateObject(LPCSTR className);

    /// Writes schema, name length (both 16 bits) and name.
    void Store(CArchive& archive) const;

    /// Reads what Store wrote and looks the class up. Null when no such class is listed; *@p schema is set in any case.
    static CRuntimeClass* Load(CArchive& archive, UINT* schema);
};

/// Where Dump writes its text: standard error, unless a derived class takes it elsewhere.
class KELGEN_FRAMEWORK_API CDumpContext
{
public:
    CDumpContext() = default;
    CDumpContext(const CDumpContext&) = delete;
    CDumpContext& operator=(const CDumpContext&) = delete;
    virtual ~CDumpContext();

    /// Writes a text; operators end here.
    virtual void OutputString(LPCSTR text);

    /// Each writes one value as text, null as "NULL", and returns this context.
    CDumpContext& operator<<(LPCSTR text);
    CDumpContext& operator<<(int value);
    CDumpContext& operator<<(UINT value);
    CDumpContext& operator<<(double value);
    CDumpContext& operator<<(const void* pointer);
    /// Dumps the object, or "NULL".
    CDumpContext& operator<<(const CObject* object);
};

/// The base of all framework classes: run-time class, archiving, checks of its own state, dump.
class KELGEN_FRAMEWORK_API CObject
{
public:
    /// The record of the object's own class.
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject();

    /// Stores or loads the object's state; the base has none.
    virtual void Serialize(CArchive& archive);

    /// Ends the process when the object's state is broken; the base checks nothing.
    virtual void AssertValid() const;

    /// Writes a line for people: the base gives class name and address.
    virtual void Dump(CDumpContext& context) const;

    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    /// Nonzero when the class has a schema, so that archives can hold its objects.
    BOOL IsSerializable() const;

    /// Nonzero when the object's class is @p runtimeClass or derived from it.
    BOOL IsKindOf(const CRuntimeClass* runtimeClass) const;

    /// The record of this class.
    static CRuntimeClass* GetThisClass();
    static const CRuntimeClass classCObject;  ///< The record itself.

protected:
    CObject() = default;
};

namespace kelgen::detail {

/// Lists a class for FromName while it lives, so that a library's classes leave with the library.
class KELGEN_FRAMEWORK_API ClassListing
{
public:
    explicit ClassListing(CRuntimeClass* runtimeClass);
    ~ClassListing();
    ClassListing(const ClassListing&) = delete;
    ClassListing& operator=(const ClassListing&) = delete;

private:
    friend struct ::CRuntimeClass;

    CRuntimeClass* m_class;
    ClassListing* m_next = nullptr;
};

/// The next object of an archive, which must be null or of that class.
/// Throws: CArchiveException badClass, badIndex, badSchema.
KELGEN_FRAMEWORK_API CObject* ReadSerialObject(CArchive& archive, const CRuntimeClass* runtimeClass);

/// @p object when it is of that class or derived from it, else null. Null gives null.
KELGEN_FRAMEWORK_API CObject* DynamicDownCast(const CRuntimeClass* runtimeClass, CObject* object);
KELGEN_FRAMEWORK_API const CObject* DynamicDownCast(const CRuntimeClass* runtimeClass, const CObject* object);

/// @p object; checked builds end the process when it is neither null nor of that class.
KELGEN_FRAMEWORK_API CObject* StaticDownCast(const CRuntimeClass* runtimeClass, CObject* object);
KELGEN_FRAMEWORK_API const CObject* StaticDownCast(const CRuntimeClass* runtimeClass, const CObject* object);

/// Throws: CInvalidArgException, whose text names @p index and @p size.
[[noreturn]] KELGEN_FRAMEWORK_API void ThrowBadIndex(LONGLONG index, LONGLONG size);

}  // namespace kelgen::detail

/// What operations throw for @p index outside @p size elements: a CInvalidArgException, which in checked builds names both.
#ifdef KELGEN_CHECKED
#define KELGEN_THROW_BAD_INDEX(index, size) ::kelgen::detail::ThrowBadIndex(index, size)
#else
#define KELGEN_THROW_BAD_INDEX(index, size) (static_cast<void>(index), static_cast<void>(size), AfxThrowInvalidArgException())
#endif

/// A name of its own for a local object of a macro: KELGEN_UNIQUE_NAME(caught, __LINE__).
#define KELGEN_JOIN_NAMES(left, right) left##right
#define KELGEN_UNIQUE_NAME(stem, line) KELGEN_JOIN_NAMES(stem, line)

/// Checks in debug builds; VERIFY evaluates its expression in every build.
#define ASSERT(condition) KELGEN_ASSERT(condition)
#ifdef KELGEN_CHECKED
#define VERIFY(condition) KELGEN_ASSERT(condition)
#define ASSERT_VALID(object) (KELGEN_ASSERT((object) != nullptr), (object)->AssertValid())
#else
#define VERIFY(condition) static_cast<void>(condition)
#define ASSERT_VALID(object) static_cast<void>(0)
#endif
#define ASSERT_KINDOF(className, object) KELGEN_ASSERT((object)->IsKindOf(RUNTIME_CLASS(className)))

/// The record of a class.
#define RUNTIME_CLASS(className) (className::GetThisClass())

/// The object as a className*, or null when it is of another class.
#define DYNAMIC_DOWNCAST(className, object) (static_cast<className*>(::kelgen::detail::DynamicDownCast(RUNTIME_CLASS(className), object)))
/// The object as a className*, checked in debug builds.
#define STATIC_DOWNCAST(className, object) (static_cast<className*>(::kelgen::detail::StaticDownCast(RUNTIME_CLASS(className), object)))

/// In the class: IsKindOf and RUNTIME_CLASS know it. IMPLEMENT_DYNAMIC stands in one source.
#define DECLARE_DYNAMIC(className)                                                                                                         \
public:                                                                                                                                    \
    static const CRuntimeClass class##className;                                                                                           \
    static CRuntimeClass* GetThisClass();                                                                                                  \
    CRuntimeClass* GetRuntimeClass() const override;

/// DECLARE_DYNAMIC, and objects can be made by the record. The class needs a default constructor.
#define DECLARE_DYNCREATE(className)                                                                                                       \
    DECLARE_DYNAMIC(className)                                                                                                             \
    static CObject* CreateObject();

/// DECLARE_DYNCREATE, and archives hold the class: `archive >> pointer` reads an object of it or of a derived class.
#define DECLARE_SERIAL(className)                                                                                                          \
    DECLARE_DYNCREATE(className)                                                                                                           \
    friend CArchive& operator>>(CArchive& archive, className*& object)                                                                     \
    {                                                                                                                                      \
        object = static_cast<className*>(::kelgen::detail::ReadSerialObject(archive, className::GetThisClass()));                          \
        return archive;                                                                                                                    \
    }

#define KELGEN_IMPLEMENT_CLASS(className, baseName, schema, create)                                                                        \
    const CRuntimeClass className::class##className = {#className, static_cast<int>(sizeof(className)), schema, create,                    \
                                                       &baseName::GetThisClass};                                                           \
    CRuntimeClass* className::GetThisClass()                                                                                               \
    {                                                                                                                                      \
        return const_cast<CRuntimeClass*>(&className::class##className);                                                                   \
    }                                                                                                                                      \
    CRuntimeClass* className::GetRuntimeClass() const                                                                                      \
    {                                                                                                                                      \
        return className::GetThisClass();                                                                                                  \
    }

#define IMPLEMENT_DYNAMIC(className, baseName) KELGEN_IMPLEMENT_CLASS(className, baseName, CRuntimeClass::kNoSchema, nullptr)

#define IMPLEMENT_DYNCREATE(className, baseName)                                                                                           \
    CObject* className::CreateObject()                                                                                                     \
    {                                                                                                                                      \
        return new className;                                                                                                              \
    }                                                                                                                                      \
    KELGEN_IMPLEMENT_CLASS(className, baseName, CRuntimeClass::kNoSchema, &className::CreateObject)

#define IMPLEMENT_SERIAL(className, baseName, schema)                                                                                      \
    CObject* className::CreateObject()                                                                                                     \
    {                                                                                                                                      \
        return new className;                                                                                                              \
    }                                                                                                                                      \
    static ::kelgen::detail::ClassListing listing##className(className::GetThisClass());                                                   \
    KELGEN_IMPLEMENT_CLASS(className, baseName, schema, &className::CreateObject)

/// Joined to a schema number: the class itself reads objects of other schemas.
#define VERSIONABLE_SCHEMA 0x80000000u
