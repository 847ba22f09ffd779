// ArchiveObjects.cpp: objects and classes in archives.
#include <kelgen/framework/files/internal/ArchiveObjects.h>

#include <kelgen/framework/collections/CollectionHelpers.h>

namespace {

constexpr WORD kNullTag = 0;
constexpr WORD kNewClassTag = 0xFFFF;
constexpr WORD kClassFlag = 0x8000;
constexpr WORD kBigTag = 0x7FFF;  // a number of 32 bits follows
constexpr DWORD kBigClassFlag = 0x80000000u;
constexpr DWORD kMostNumbers = 0x3FFFFFFE;
constexpr UINT kDeepest = 2048;  // each level takes some of the stack

}  // namespace

CArchive::ObjectMaps& CArchive::Maps()
{
    if (!m_maps) {
        m_maps = std::make_unique<ObjectMaps>();
        if (IsStoring())
            m_maps->stored.reserve(m_nMapHint);
        else
            m_maps->loaded.reserve(m_nMapHint);
    }
    return *m_maps;
}

DWORD CArchive::NextNumber()
{
    ObjectMaps& maps = Maps();
    if (maps.count >= kMostNumbers)
        Throw(CArchiveException::badIndex);
    return maps.count++;
}

/// One object more inside the others. The maps go when the archive is closed in the middle.
class CArchive::ObjectMaps::Level
{
public:
    explicit Level(CArchive& archive) : m_archive(archive)
    {
        if (archive.Maps().depth >= kDeepest)
            archive.Throw(CArchiveException::badIndex);
        ++archive.Maps().depth;
    }
    ~Level()
    {
        if (m_archive.m_maps && m_archive.m_maps->depth > 0)
            --m_archive.m_maps->depth;
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    CArchive& m_archive;
};

void CArchive::SetStoreParams(UINT nHashSize, UINT)
{
    m_nMapHint = nHashSize;
}

void CArchive::SetLoadParams(UINT nGrowBy)
{
    m_nMapHint = nGrowBy;
}

void CArchive::MapObject(const CObject* pOb)
{
    const DWORD number = NextNumber();
    if (IsStoring())
        Maps().stored[pOb] = number;
    else
        Maps().loaded.push_back({const_cast<CObject*>(pOb), nullptr, 0});
}

void CArchive::WriteObject(const CObject* pOb)
{
    CheckStoring();
    if (pOb == nullptr) {
        *this << kNullTag;
        return;
    }
    const auto known = Maps().stored.find(pOb);
    if (known != Maps().stored.end()) {
        const DWORD number = known->second;
        if (number < kBigTag)
            *this << static_cast<WORD>(number);
        else
            *this << kBigTag << number;
        return;
    }

    const ObjectMaps::Level level(*this);
    WriteClass(pOb->GetRuntimeClass());
    MapObject(pOb);
    const_cast<CObject*>(pOb)->Serialize(*this);
}

void CArchive::WriteClass(const CRuntimeClass* pClassRef)
{
    CheckStoring();
    if (pClassRef->m_wSchema == CRuntimeClass::kNoSchema)
        AfxThrowNotSupportedException();

    const auto known = Maps().stored.find(pClassRef);
    if (known != Maps().stored.end()) {
        const DWORD number = known->second;
        if (number < kBigTag)
            *this << static_cast<WORD>(kClassFlag | number);
        else
            *this << kBigTag << (kBigClassFlag | number);
        return;
    }

    *this << kNewClassTag;
    pClassRef->Store(*this);
    Maps().stored[pClassRef] = NextNumber();
}

CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* pClassRefRequested, UINT* pSchema, DWORD* pObTag)
{
    CheckLoading();
    if (pClassRefRequested != nullptr && pClassRefRequested->m_wSchema == CRuntimeClass::kNoSchema)
        AfxThrowNotSupportedException();

    const WORD tag = Get<WORD>();
    CRuntimeClass* runtimeClass;
    UINT schema;
    if (tag == kNewClassTag) {
        runtimeClass = CRuntimeClass::Load(*this, &schema);
        if (runtimeClass == nullptr)
            Throw(CArchiveException::badClass);
        const bool versionable = (runtimeClass->m_wSchema & VERSIONABLE_SCHEMA) != 0;
        if ((runtimeClass->m_wSchema & ~VERSIONABLE_SCHEMA) != schema && !versionable)
            Throw(CArchiveException::badSchema);
        NextNumber();
        Maps().loaded.push_back({nullptr, runtimeClass, schema});
    } else {
        const DWORD number = tag == kBigTag ? Get<DWORD>() : (tag & kClassFlag ? kBigClassFlag | (tag & ~kClassFlag) : tag);
        if ((number & kBigClassFlag) == 0) {
            if (pObTag == nullptr)
                Throw(CArchiveException::badIndex);
            *pObTag = number;
            return nullptr;
        }
        const DWORD index = number & ~kBigClassFlag;
        if (index >= Maps().loaded.size() || Maps().loaded[index].runtimeClass == nullptr)
            Throw(CArchiveException::badIndex);
        runtimeClass = Maps().loaded[index].runtimeClass;
        schema = Maps().loaded[index].schema;
    }

    if (pClassRefRequested != nullptr && !runtimeClass->IsDerivedFrom(pClassRefRequested))
        Throw(CArchiveException::badClass);
    if (pSchema != nullptr)
        *pSchema = schema;
    else
        m_nObjectSchema = schema;
    if (pObTag != nullptr)
        *pObTag = 0;
    return runtimeClass;
}

CObject* CArchive::ReadObject(const CRuntimeClass* pClassRefRequested)
{
    UINT schema;
    DWORD number;
    CRuntimeClass* runtimeClass = ReadClass(pClassRefRequested, &schema, &number);
    if (runtimeClass == nullptr) {
        // A number that stands for a class would otherwise be taken as an object's address.
        if (number >= Maps().loaded.size() || Maps().loaded[number].runtimeClass != nullptr)
            Throw(CArchiveException::badIndex);
        CObject* known = Maps().loaded[number].object;
        if (known != nullptr && pClassRefRequested != nullptr && !known->IsKindOf(pClassRefRequested))
            Throw(CArchiveException::badClass);
        return known;
    }

    if (runtimeClass->m_pfnCreateObject == nullptr)
        Throw(CArchiveException::badClass);
    const ObjectMaps::Level level(*this);
    std::unique_ptr<CObject> object(runtimeClass->CreateObject());
    if (!object)
        AfxThrowMemoryException();
    // Known before it is loaded: its parts may refer to it.
    const DWORD own = static_cast<DWORD>(Maps().loaded.size());
    MapObject(object.get());

    const UINT outerSchema = m_nObjectSchema;
    m_nObjectSchema = schema;
    try {
        object->Serialize(*this);
    } catch (...) {
        if (m_maps && own < m_maps->loaded.size())
            m_maps->loaded[own].object = nullptr;
        m_nObjectSchema = outerSchema;
        throw;
    }
    m_nObjectSchema = outerSchema;
    return object.release();
}

void CArchive::SerializeClass(const CRuntimeClass* pRuntimeClass)
{
    if (IsLoading())
        ReadClass(pRuntimeClass);
    else
        WriteClass(pRuntimeClass);
}

CArchive& operator<<(CArchive& ar, const CObject* pOb)
{
    ar.WriteObject(pOb);
    return ar;
}

CArchive& operator>>(CArchive& ar, CObject*& pOb)
{
    pOb = ar.ReadObject(nullptr);
    return ar;
}

namespace kelgen::detail {

CObject* ReadSerialObject(CArchive& archive, const CRuntimeClass* runtimeClass)
{
    return archive.ReadObject(runtimeClass);
}

}  // namespace kelgen::detail

void CRuntimeClass::Store(CArchive& archive) const
{
    const WORD length = static_cast<WORD>(std::strlen(m_lpszClassName));
    archive << static_cast<WORD>(m_wSchema) << length;
    archive.Write(m_lpszClassName, length);
}

CRuntimeClass* CRuntimeClass::Load(CArchive& archive, UINT* schema)
{
    constexpr WORD kLongestName = 64;
    WORD storedSchema;
    WORD length;
    archive >> storedSchema >> length;
    *schema = storedSchema;
    char name[kLongestName];
    if (length >= kLongestName || archive.Read(name, length) != length)
        return nullptr;
    name[length] = 0;
    return FromName(name);
}

template <>
void SerializeElements<CObject*>(CArchive& ar, CObject** pElements, int nCount)
{
    for (int i = 0; i < nCount; ++i) {
        if (ar.IsStoring())
            ar.WriteObject(pElements[i]);
        else
            pElements[i] = ar.ReadObject(nullptr);
    }
}
