// Object.cpp: kinds, creation by record, and the list of classes that archives know by name.
#include <kelgen/framework/base/Object.h>

#include <kelgen/framework/base/Exceptions.h>

#include <cstdio>
#include <cstring>
#include <mutex>
#include <new>

using kelgen::detail::ClassListing;

namespace {

struct ListedClasses
{
    std::mutex mutex;
    ClassListing* first = nullptr;
};

// Listings are made and ended by static initialisation of any library, so the list outlives them all.
ListedClasses& Listed()
{
    static ListedClasses& listed = *new ListedClasses;
    return listed;
}

}  // namespace

const UINT CRuntimeClass::kNoSchema;

ClassListing::ClassListing(CRuntimeClass* runtimeClass) : m_class(runtimeClass)
{
    const std::lock_guard lock(Listed().mutex);
    m_next = Listed().first;
    Listed().first = this;
}

ClassListing::~ClassListing()
{
    const std::lock_guard lock(Listed().mutex);
    ClassListing** link = &Listed().first;
    while (*link && *link != this)
        link = &(*link)->m_next;
    if (*link)
        *link = m_next;
}

CObject* CRuntimeClass::CreateObject()
{
    if (!m_pfnCreateObject)
        return nullptr;
    try {
        return m_pfnCreateObject();
    } catch (CMemoryException* e) {
        e->Delete();
        return nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const
{
    for (const CRuntimeClass* current = this; current;) {
        if (current == base)
            return TRUE;
        current = current->m_pfnGetBaseClass ? current->m_pfnGetBaseClass() : nullptr;
    }
    return FALSE;
}

CRuntimeClass* CRuntimeClass::FromName(LPCSTR className)
{
    if (!className)
        return nullptr;
    const std::lock_guard lock(Listed().mutex);
    for (const ClassListing* listing = Listed().first; listing; listing = listing->m_next) {
        if (std::strcmp(listing->m_class->m_lpszClassName, className) == 0)
            return listing->m_class;
    }
    return nullptr;
}

CObject* CRuntimeClass::CreateObject(LPCSTR className)
{
    CRuntimeClass* runtimeClass = FromName(className);
    return runtimeClass ? runtimeClass->CreateObject() : nullptr;
}

const CRuntimeClass CObject::classCObject = {"CObject", static_cast<int>(sizeof(CObject)), CRuntimeClass::kNoSchema, nullptr, nullptr};

CObject::~CObject() = default;

CRuntimeClass* CObject::GetThisClass()
{
    return const_cast<CRuntimeClass*>(&classCObject);
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return GetThisClass();
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext& context) const
{
    context << "a " << GetRuntimeClass()->m_lpszClassName << " at " << static_cast<const void*>(this) << "\n";
}

BOOL CObject::IsSerializable() const
{
    return GetRuntimeClass()->m_wSchema != CRuntimeClass::kNoSchema;
}

BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}

namespace kelgen::detail {

const CObject* DynamicDownCast(const CRuntimeClass* runtimeClass, const CObject* object)
{
    return object && object->IsKindOf(runtimeClass) ? object : nullptr;
}

CObject* DynamicDownCast(const CRuntimeClass* runtimeClass, CObject* object)
{
    return object && object->IsKindOf(runtimeClass) ? object : nullptr;
}

const CObject* StaticDownCast([[maybe_unused]] const CRuntimeClass* runtimeClass, const CObject* object)
{
    KELGEN_ASSERT(!object || object->IsKindOf(runtimeClass));
    return object;
}

CObject* StaticDownCast([[maybe_unused]] const CRuntimeClass* runtimeClass, CObject* object)
{
    KELGEN_ASSERT(!object || object->IsKindOf(runtimeClass));
    return object;
}

}  // namespace kelgen::detail

CDumpContext::~CDumpContext() = default;

void CDumpContext::OutputString(LPCSTR text)
{
    std::fputs(text, stderr);
}

CDumpContext& CDumpContext::operator<<(LPCSTR text)
{
    OutputString(text ? text : "NULL");
    return *this;
}

CDumpContext& CDumpContext::operator<<(int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    return *this << text;
}

CDumpContext& CDumpContext::operator<<(UINT value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%u", value);
    return *this << text;
}

CDumpContext& CDumpContext::operator<<(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return *this << text;
}

CDumpContext& CDumpContext::operator<<(const void* pointer)
{
    char text[32];
    std::snprintf(text, sizeof text, "%p", pointer);
    return *this << text;
}

CDumpContext& CDumpContext::operator<<(const CObject* object)
{
    if (!object)
        return *this << "NULL";
    object->Dump(*this);
    return *this;
}
