// Reference.cpp: the count of references.
#include <kelgen/property/Reference.h>

#include <cstdint>

namespace gen {

void CReference::AddRef()
{
    ++m_count;
}

void CReference::Release()
{
    if (m_count-- == 1)
        delete this;
}

}  // namespace gen

// Out of line, so that the compiler of a caller cannot take for granted that its pointer is not null.
bool CReferenceInterface::IsThisNull() const
{
    return reinterpret_cast<std::uintptr_t>(this) == 0;
}
