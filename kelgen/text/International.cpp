// International.cpp: conversions with one call of the platform's converters, and heap copies.
#include <kelgen/text/International.h>

#include <cstdlib>
#include <cstring>

using kelgen::AsWide;

namespace {

constexpr UINT kLatin1 = 1252;

bool ToUnicode(UINT page, unsigned short* dst, int capacity, const char* src)
{
    return MultiByteToWideChar(page, 0, src, -1, AsWide(dst), capacity) != 0;
}

int ToUnicodeCount(UINT page, const char* src)
{
    return MultiByteToWideChar(page, 0, src, -1, nullptr, 0);
}

bool FromUnicode(UINT page, char* dst, int capacity, const unsigned short* src)
{
    return WideCharToMultiByte(page, 0, AsWide(src), -1, dst, capacity, nullptr, nullptr) != 0;
}

int FromUnicodeCount(UINT page, const unsigned short* src)
{
    return WideCharToMultiByte(page, 0, AsWide(src), -1, nullptr, 0, nullptr, nullptr);
}

bool FromUnicode(UINT page, CString& dst, const unsigned short* src)
{
    const int needed = FromUnicodeCount(page, src);
    if (needed == 0 || !FromUnicode(page, dst.GetBuffer(needed), needed, src)) {
        dst.Empty();
        return false;
    }
    dst.ReleaseBuffer();
    return true;
}

bool FromUnicode(UINT page, CMemoryStorage& dst, const unsigned short* src)
{
    dst.Allocate(static_cast<DWORD>(FromUnicodeCount(page, src)));
    return FromUnicode(page, reinterpret_cast<char*>(dst.GetAllocation()), static_cast<int>(dst.GetStorageSize()), src);
}

}  // namespace

CInternational::~CInternational() = default;

bool CInternational::AnsiToUnicode(unsigned short* dst, int capacity, const char* src)
{
    return ToUnicode(CP_ACP, dst, capacity, src);
}

int CInternational::AnsiToUnicodeCount(const char* src)
{
    return ToUnicodeCount(CP_ACP, src);
}

bool CInternational::OEMToUnicode(unsigned short* dst, int capacity, const char* src)
{
    return ToUnicode(CP_OEMCP, dst, capacity, src);
}

int CInternational::OEMToUnicodeCount(const char* src)
{
    return ToUnicodeCount(CP_OEMCP, src);
}

bool CInternational::CPToUnicode(DWORD cp, unsigned short* dst, int capacity, const char* src)
{
    return ToUnicode(cp, dst, capacity, src);
}

int CInternational::CPToUnicodeCount(DWORD cp, const char* src)
{
    return src ? MultiByteToWideChar(cp, 0, src, static_cast<int>(std::strlen(src)), nullptr, 0) : 0;
}

bool CInternational::StringToUnicode(unsigned short* dst, int n, const char* src)
{
    MultiByteToWideChar(GetOEMCP(), 0, src, n, AsWide(dst), n);
    return true;
}

int CInternational::StringToUnicodeCount(const char* src)
{
    return ToUnicodeCount(GetOEMCP(), src);
}

bool CInternational::UnicodeToAnsi(char* dst, int capacity, const unsigned short* src)
{
    return FromUnicode(CP_ACP, dst, capacity, src);
}

int CInternational::UnicodeToAnsiCount(const unsigned short* src)
{
    return FromUnicodeCount(CP_ACP, src);
}

bool CInternational::UnicodeToOEM(char* dst, int capacity, const unsigned short* src)
{
    return FromUnicode(CP_OEMCP, dst, capacity, src);
}

int CInternational::UnicodeToOEMCount(const unsigned short* src)
{
    return FromUnicodeCount(CP_OEMCP, src);
}

bool CInternational::UnicodeToLatin1(char* dst, int capacity, const unsigned short* src)
{
    return FromUnicode(kLatin1, dst, capacity, src);
}

int CInternational::UnicodeToLatin1Count(const unsigned short* src)
{
    return FromUnicodeCount(kLatin1, src);
}

bool CInternational::CPToUnicode(DWORD cp, CWStr& dst, const char* src)
{
    const int needed = CPToUnicodeCount(cp, src) + 1;
    unsigned short* const units = dst.GetBuffer(needed);
    const int count = MultiByteToWideChar(cp, 0, src, -1, AsWide(units), needed);
    // A character that is cut takes the terminator with it.
    if (count > 0)
        units[count] = 0;
    dst.ReleaseBuffer(-1);
    return count != 0;
}

bool CInternational::UnicodeToAnsi(CString& dst, const unsigned short* src)
{
    return FromUnicode(CP_ACP, dst, src);
}

bool CInternational::UnicodeToOEM(CString& dst, const unsigned short* src)
{
    return FromUnicode(CP_OEMCP, dst, src);
}

bool CInternational::UnicodeToAnsi(CMemoryStorage& dst, const unsigned short* src)
{
    return FromUnicode(CP_ACP, dst, src);
}

bool CInternational::UnicodeToLatin1(CMemoryStorage& dst, const unsigned short* src)
{
    return FromUnicode(kLatin1, dst, src);
}

bool CInternational::UnicodeToOEM(CMemoryStorage& dst, const unsigned short* src)
{
    const int needed = UnicodeToOEMCount(src);
    dst.Allocate(static_cast<DWORD>(needed) + 1);
    return needed != 0 && UnicodeToOEM(reinterpret_cast<char*>(dst.GetAllocation()), needed, src);
}

bool CInternational::StringToLatin1(CMemoryStorage& dst, const char* src)
{
    dst.Allocate(static_cast<DWORD>(StringToLatin1Count(src)) + 1);
    return StringToLatin1(reinterpret_cast<char*>(dst.GetAllocation()), static_cast<int>(dst.GetStorageSize()) - 1, src);
}

unsigned short* CInternational::ToUnicodeDup_(const char* src)
{
    if (!src)
        return nullptr;
    // Zeroed: two-byte characters leave units unwritten before the terminator.
    const std::size_t length = std::strlen(src);
    const auto copy = static_cast<unsigned short*>(std::calloc(length + 1, sizeof(unsigned short)));
    if (copy)
        MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, src, static_cast<int>(length), AsWide(copy), static_cast<int>(length));
    return copy;
}

char* CInternational::UnicodeToAnsiDup_(const char* src)
{
    if (!src)
        return nullptr;
    const std::size_t length = std::strlen(src);
    const auto copy = static_cast<unsigned char*>(std::malloc(length + 1));
    if (!copy)
        return nullptr;
    _mbsnbcpy(copy, reinterpret_cast<const unsigned char*>(src), length);
    copy[length] = 0;
    return reinterpret_cast<char*>(copy);
}

char* CInternational::UnicodeToAnsiDup_(CString& src)
{
    const std::size_t length = static_cast<std::size_t>(src.GetLength());
    const auto copy = static_cast<char*>(std::malloc(length + 1));
    if (!copy)
        return nullptr;
    std::memcpy(copy, static_cast<LPCSTR>(src), length);
    copy[length] = 0;
    return copy;
}
