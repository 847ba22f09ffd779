// StrArrayFormat.cpp: joining, expanding references to entries, and multi-strings.
#include <kelgen/text/StrArray.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

char* PutBytes(char* at, const char* bytes, int count)
{
    if (count == 1)
        *at = *bytes;
    else if (count > 0)
        std::memcpy(at, bytes, static_cast<std::size_t>(count));
    return at + count;
}

// A short text goes with what lies behind it in its block, which the next one overwrites.
char* PutText(char* at, const char* end, const CString& text)
{
    constexpr int kAtOnce = 12;
    const int count = text.GetLength();
    if (count > kAtOnce || text.GetAllocLength() < kAtOnce || end - at < kAtOnce)
        return PutBytes(at, text, count);
    std::memcpy(at, text.GetString(), kAtOnce);
    return at + count;
}

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Reads the digits at @p at, which moves behind them. A number beyond int is the largest int.
int ReadNumber(const char*& at)
{
    long long number = 0;
    for (; IsDigit(*at); ++at) {
        if (number <= INT_MAX)
            number = number * 10 + (*at - '0');
    }
    return number <= INT_MAX ? static_cast<int>(number) : INT_MAX;
}

}  // namespace

void CStrArray::GetFormatString(CString* out, const char* separator) const
{
    const int separatorLength = CString::StringLength(separator);
    long long length = 0;
    for (int i = 0; i < GetSize(); ++i)
        length += (i > 0 ? separatorLength : 0) + GetAt(i).GetLength();
    if (length > INT_MAX)
        AfxThrowMemoryException();

    // A text of its own first: the result or the separator may be an entry.
    CString joined;
    char* at = joined.GetBufferSetLength(static_cast<int>(length));
    const char* const end = at + length;
    for (int i = 0; i < GetSize(); ++i) {
        if (i > 0)
            at = PutBytes(at, separator, separatorLength);
        at = PutText(at, end, m_pData[i]);
    }
    *out = std::move(joined);
}

CString CStrArray::FormatString(const char* format) const
{
    CString result;
    for (const char* at = format != nullptr ? format : ""; *at != 0;) {
        const char character = *at++;
        if (character != '%') {
            result.AppendChar(character);
        } else if (IsDigit(*at)) {
            result.Append(GetAt(ReadNumber(at) - 1));
        } else {
            result.AppendChar('%');
            if (*at != 0)
                ++at;
        }
    }
    return result;
}

char* CStrArray::GetFormatV004() const
{
    std::size_t size = GetSize() > 0 ? 1 : 2;
    for (int i = 0; i < GetSize(); ++i)
        size += static_cast<std::size_t>(GetAt(i).GetLength()) + 1;

    const auto block = static_cast<char*>(std::malloc(size));
    if (block == nullptr)
        AfxThrowMemoryException();
    char* at = block;
    for (int i = 0; i < GetSize(); ++i)
        at = PutBytes(at, GetAt(i), GetAt(i).GetLength() + 1);
    std::memset(at, 0, static_cast<std::size_t>(block + size - at));
    return block;
}
