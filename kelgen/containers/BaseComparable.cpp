// BaseComparable.cpp: comparison by run-time class.
#include <kelgen/containers/BaseComparable.h>

#include <cstring>
#include <typeinfo>

bool CBaseComparableEq::operator==(const CBaseComparableEq& other) const
{
    return typeid(*this) == typeid(other);
}

bool CBaseComparableEq::operator!=(const CBaseComparableEq& other) const
{
    return typeid(*this) != typeid(other);
}

bool CBaseComparable::operator==(const CBaseComparableEq& other) const
{
    const auto* const comparable = dynamic_cast<const CBaseComparable*>(&other);
    return comparable != nullptr && Compare(*comparable) == 0;
}

bool CBaseComparable::operator!=(const CBaseComparableEq& other) const
{
    const auto* const comparable = dynamic_cast<const CBaseComparable*>(&other);
    return comparable == nullptr || Compare(*comparable) != 0;
}

int CBaseComparable::Compare(const CBaseComparable& other) const
{
    const int order = std::strcmp(typeid(*this).name(), typeid(other).name());
    return (order > 0) - (order < 0);
}

bool CBaseComparable::operator>(const CBaseComparable& other) const
{
    return Compare(other) > 0;
}

bool CBaseComparable::operator<(const CBaseComparable& other) const
{
    return Compare(other) < 0;
}

bool CBaseComparable::operator>=(const CBaseComparable& other) const
{
    return Compare(other) >= 0;
}

bool CBaseComparable::operator<=(const CBaseComparable& other) const
{
    return Compare(other) <= 0;
}
