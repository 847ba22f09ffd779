// InternationalScratch.cpp: conversions through the process's two scratch buffers.
#include <kelgen/text/International.h>

#include <climits>
#include <cstdlib>

using kelgen::AsWide;

namespace {

constexpr UINT kWesternPage = 1252;
constexpr UINT kShiftJis = 932;

/// A zeroed buffer that only grows.
template <class UNIT>
struct Scratch
{
    UNIT* units = nullptr;
    int capacity = 0;

    bool Reserve(int n)
    {
        // Without a buffer the capacity is what is left of one that could not grow.
        if (n <= capacity && (units || capacity == 0))
            return true;
        std::free(units);
        units = n > 0 ? static_cast<UNIT*>(std::calloc(static_cast<std::size_t>(n), sizeof(UNIT))) : nullptr;
        if (!units)
            return n <= 0;
        capacity = n;
        return true;
    }
};

// Freed by nobody: text may be converted until the process ends.
Scratch<unsigned short> wideScratch;
Scratch<char> narrowScratch;

/// Converts @p n bytes into the wide scratch, which has the room; the number of units, 0 on failure.
int ToScratch(UINT page, const char* src, int n, int capacity)
{
    return MultiByteToWideChar(page, 0, src, n, AsWide(wideScratch.units), capacity);
}

/// Converts @p units units of the wide scratch; the number of bytes, 0 on failure.
int FromScratch(UINT page, int units, char* dst, int capacity)
{
    return WideCharToMultiByte(page, 0, AsWide(wideScratch.units), units, dst, capacity, nullptr, nullptr);
}

/// n bytes of the OEM page into n bytes of @p page and a terminator; the converters' results are ignored.
void StringTo(UINT page, char* dst, int n, const char* src)
{
    if (n < 0)
        return;
    const int units = ToScratch(GetOEMCP(), src, n, n);
    FromScratch(page, units, dst, n);
    dst[n] = 0;
}

}  // namespace

bool CInternational::AllocWch(int nUnits)
{
    return wideScratch.Reserve(nUnits);
}

bool CInternational::AllocCh(int nBytes)
{
    return narrowScratch.Reserve(nBytes);
}

bool CInternational::Latin1ToUnicode(CWStr& dst, const char* src, int n)
{
    const int count = MultiByteToWideChar(kWesternPage, 0, src, n, nullptr, 0);
    if (!AllocWch(count + 1))
        return false;
    ToScratch(kWesternPage, src, n, count);
    wideScratch.units[count] = 0;
    dst = wideScratch.units;
    return true;
}

bool CInternational::ShiftJisToUnicode(CWStr& dst, const char* src, int n)
{
    if (n < 1) {
        dst = u""_w;
        return true;
    }
    if (n == INT_MAX || !AllocWch(n + 1))
        return false;
    ToScratch(kShiftJis, src, n, n);
    wideScratch.units[n - 1] = 0;
    dst = wideScratch.units;
    return true;
}

bool CInternational::StringToLatin1(char* dst, int n, const char* src)
{
    if (!AllocWch(n))
        return false;
    StringTo(kWesternPage, dst, n, src);
    return true;
}

bool CInternational::StringToShiftJis(char* dst, int n, const char* src)
{
    if (!AllocWch(n))
        return false;
    StringTo(kShiftJis, dst, n, src);
    return true;
}

int CInternational::StringToLatin1Count(const char* src)
{
    const int count = StringToUnicodeCount(src);
    if (!AllocWch(count))
        return 0;
    return FromScratch(kWesternPage, ToScratch(GetOEMCP(), src, -1, count), nullptr, 0);
}

int CInternational::StringToShiftJisCount(const char* src)
{
    const int count = StringToUnicodeCount(src);
    if (!AllocWch(count))
        return 0;
    return FromScratch(kShiftJis, ToScratch(GetOEMCP(), src, -1, count), nullptr, 0);
}

namespace {

/// Converts the first @p units units of the wide scratch through the narrow one; AllocNarrow grows that.
template <class AllocNarrow>
bool ScratchToString(CString& dst, int units, const AllocNarrow& allocNarrow)
{
    const UINT page = GetOEMCP();
    const int needed = FromScratch(page, units, nullptr, 0);
    if (needed == 0 || !allocNarrow(needed + 1))
        return false;
    FromScratch(page, units, narrowScratch.units, needed);
    narrowScratch.units[needed] = 0;
    dst = narrowScratch.units;
    return true;
}

}  // namespace

bool CInternational::Latin1ToString(CString& dst, const char* src, int n)
{
    const int count = MultiByteToWideChar(kWesternPage, 0, src, n, nullptr, 0);
    return AllocWch(count) && ScratchToString(dst, ToScratch(kWesternPage, src, n, count), AllocCh);
}

bool CInternational::ShiftJisToString(CString& dst, const char* src, int n)
{
    const int count = MultiByteToWideChar(kShiftJis, 0, src, n, nullptr, 0);
    return AllocWch(count) && ScratchToString(dst, ToScratch(kShiftJis, src, n, count), AllocCh);
}
