// SystemStrings.cpp: a four-byte length before the text, as hosts and debuggers expect it.
#include <kelgen/platform/posix/ole/api/SystemStrings.h>

#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

// The block begins eight bytes before the text so that the text is aligned as a pointer is.
constexpr size_t kLengthPrefix = 8;
constexpr size_t kLength = 4;

UINT* LengthOf(BSTR string)
{
    return reinterpret_cast<UINT*>(reinterpret_cast<char*>(string) - kLength);
}

BSTR Allocate(const void* bytes, size_t length)
{
    if (length > 0x7FFFFFF0)
        return nullptr;
    auto* const block = static_cast<char*>(std::malloc(kLengthPrefix + length + sizeof(OLECHAR)));
    if (!block)
        return nullptr;
    const BSTR string = reinterpret_cast<BSTR>(block + kLengthPrefix);
    *LengthOf(string) = static_cast<UINT>(length);
    if (bytes)
        std::memcpy(string, bytes, length);
    std::memset(block + kLengthPrefix + length, 0, sizeof(OLECHAR));
    return string;
}

size_t UnitsOf(const OLECHAR* text)
{
    size_t length = 0;
    while (text[length])
        ++length;
    return length;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* text)
{
    return text ? Allocate(text, UnitsOf(text) * sizeof(OLECHAR)) : nullptr;
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length)
{
    return Allocate(text, size_t{length} * sizeof(OLECHAR));
}

BSTR SysAllocStringByteLen(LPCSTR bytes, UINT length)
{
    return Allocate(bytes, length);
}

INT SysReAllocString(BSTR* string, const OLECHAR* text)
{
    return text ? SysReAllocStringLen(string, text, static_cast<UINT>(UnitsOf(text))) : FALSE;
}

INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length)
{
    const BSTR copy = SysAllocStringLen(text, length);
    if (!copy)
        return FALSE;
    SysFreeString(std::exchange(*string, copy));
    return TRUE;
}

void SysFreeString(BSTR string)
{
    if (string)
        std::free(reinterpret_cast<char*>(string) - kLengthPrefix);
}

UINT SysStringLen(BSTR string)
{
    return SysStringByteLen(string) / sizeof(OLECHAR);
}

UINT SysStringByteLen(BSTR string)
{
    return string ? *LengthOf(string) : 0;
}
