// Str.cpp: comparison across types and the text operations of CStr.
#include <kelgen/text/Str.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/text/internal/ByteText.h>

#include <algorithm>
#include <climits>
#include <cstring>

CStr::CStr() = default;

CStr::CStr(const CStr& other) : CString(other), CBaseComparable() {}

CStr::~CStr() = default;

CStr& CStr::operator=(const CStr& other)
{
    CString::operator=(other);
    return *this;
}

CString& CStr::operator=(const CString& other)
{
    return CString::operator=(other);
}

int CStr::Compare(const CBaseComparable& other) const
{
    const auto* const text = dynamic_cast<const CStr*>(&other);
    return text != nullptr ? kelgen::detail::CompareBytes(*this, *text) : CBaseComparable::Compare(other);
}

bool CStr::Copy(const char* p, int n)
{
    SetString(p, p != nullptr && n > 0 ? n : 0);
    return true;
}

void CStr::AppendRepetition(const char* text, int n)
{
    // A copy: the text may lie in this string, which moves as it grows.
    const CString piece(text);
    if (n <= 0 || piece.IsEmpty())
        return;
    const int count = piece.GetLength();
    const long long length = GetLength() + static_cast<long long>(n) * count;
    if (length > INT_MAX)
        AfxThrowMemoryException();
    if (n == 1) {
        Append(piece);
        return;
    }
    char* end = GetBuffer(static_cast<int>(length)) + GetLength();
    for (int i = 0; i < n; ++i, end += count)
        std::memcpy(end, piece.GetString(), static_cast<std::size_t>(count));
    ReleaseBuffer(static_cast<int>(length));
}

int CStr::ReverseFind(const char* sub, int nEnd) const
{
    const int length = GetLength();
    const int limit = nEnd < 0 ? length : nEnd;
    const int subLength = sub != nullptr ? static_cast<int>(std::strlen(sub)) : 0;
    if (subLength == 0)
        return limit;

    const char* const text = GetString();
    for (int i = std::min(limit, length) - subLength; i >= 0; --i) {
        if (std::memcmp(text + i, sub, static_cast<std::size_t>(subLength)) == 0)
            return i;
    }
    return -1;
}
