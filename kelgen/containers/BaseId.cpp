// BaseId.cpp: counting, copying and ordering identifiers; the seeds by name.
#include <kelgen/containers/BaseId.h>

#include <cstring>
#include <memory>

const CBaseIdBase CBaseIdBase::g_idbaseNull;
CBaseIdSeedSource CBaseIdentifiable::g_idseedsource;

CBaseIdBase::CBaseIdBase(const CBaseIdBase& other) : CBaseComparable()
{
    _Copy(this, &other);
}

CBaseIdBase& CBaseIdBase::operator=(const CBaseIdBase& other)
{
    if (this != &other)
        _Copy(this, &other);
    return *this;
}

int CBaseIdBase::Compare(const CBaseComparable& other) const
{
    const int classes = CBaseComparable::Compare(other);
    if (classes != 0)
        return classes;
    return _Compare(this, static_cast<const CBaseIdBase*>(&other));
}

bool CBaseIdBase::IsNull() const
{
    // Objects of other classes than the null object's own never equal it; for them its fields decide.
    return *this == static_cast<const CBaseComparableEq&>(g_idbaseNull) || _Compare(this, &g_idbaseNull) == 0;
}

int CBaseIdBase::_Compare(const CBaseIdBase* a, const CBaseIdBase* b)
{
    const int bytes = std::memcmp(a->m_id, b->m_id, sizeof(a->m_id));
    if (bytes != 0)
        return bytes < 0 ? -1 : 1;
    if (a->m_seed == nullptr)
        return b->m_seed == nullptr ? 0 : -1;
    if (b->m_seed == nullptr)
        return 1;
    return a->m_seed->Compare(*b->m_seed);
}

void CBaseIdBase::_Copy(CBaseIdBase* dst, const CBaseIdBase* src)
{
    std::memmove(dst->m_id, src->m_id, sizeof(dst->m_id));
    dst->m_seed = src->m_seed;
}

void CBaseIdBase::_IncId(unsigned char* id)
{
    for (unsigned char* digit = id; digit != id + sizeof(m_id); ++digit) {
        if (++*digit != 0)
            return;
    }
}

CBaseIdSeed& CBaseIdSeed::operator=(const CBaseIdBase& other)
{
    CBaseIdBase::operator=(other);
    return *this;
}

CBaseIdSeed& CBaseIdSeed::operator=(const CBaseIdSeed& other) = default;

CBaseId::CBaseId(CBaseIdSeed& seed)
{
    New(seed);
}

CBaseId& CBaseId::operator=(const CBaseId& other) = default;

CBaseId& CBaseId::operator=(const CBaseIdBase& other)
{
    CBaseIdBase::operator=(other);
    return *this;
}

void CBaseId::New(CBaseIdSeed& seed)
{
    _IncId(seed.m_id);
    _Copy(this, &seed);
}

CBaseIdSeedSource::~CBaseIdSeedSource()
{
    for (POSITION position = GetStartPosition(); position != nullptr;) {
        CStr name;
        CBaseIdSeed seed;
        GetNextAssoc(position, name, seed);
        delete static_cast<CStr*>(seed.GetSeed());
    }
}

CBaseIdSeed& CBaseIdSeedSource::GetSeed(const char* name)
{
    CStr key;
    key = CString(name);
    if (auto* const stored = PLookup(key))
        return stored->value;

    auto ownedName = std::make_unique<CStr>(key);
    CBaseIdSeed& seed = (*this)[key];
    seed.m_seed = ownedName.release();
    return seed;
}

CBaseIdentifiable::CBaseIdentifiable(const char* name)
{
    m_id.New(g_idseedsource.GetSeed(name));
}
