// AppIntegerMap.cpp: integers by owner and number.
#include <kelgen/property/AppIntegerMap.h>

namespace gen {

CAppIntegerMap::CAppIntegerMap() = default;

CAppIntegerMap::~CAppIntegerMap() = default;

void CAppIntegerMap::Set(const CBaseComparable* owner, int id, int value)
{
    CKey key(owner, id);
    SetAt(key, value);
}

bool CAppIntegerMap::Get(const CBaseComparable* owner, int id, int& value) const
{
    CKey key(owner, id);
    return Lookup(key, value) != FALSE;
}

}  // namespace gen
