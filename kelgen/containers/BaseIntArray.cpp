// BaseIntArray.cpp: descending order, and numbers from and to text.
#include <kelgen/containers/BaseIntArray.h>

#include <kelgen/text/StrTokenizer.h>
#include <kelgen/text/internal/DecimalText.h>

int CBaseIntArray::IntCompare(const int& a, const int& b)
{
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}

void CBaseIntArray::SortAdd(int value)
{
    SortAdd(value, IntCompare);
}

int CBaseIntArray::SortFind(int value) const
{
    int index = 0;
    return SortFind(value, IntCompare, index) ? index : -1;
}

void CBaseIntArray::AddString(const char* text, const char* separators, bool option, int emptyValue)
{
    CStrTokenizer tokenizer{CString(text)};
    CString token;
    while (tokenizer.GetNextToken(token, separators, 0)) {
        if (!token.IsEmpty())
            Add(kelgen::detail::ReadDecimal(token));
        else if (option)
            Add(emptyValue);
    }
}

void CBaseIntArray::FormatString(CString& out, const char* format, const char* separator) const
{
    // Apart: format and separator may lie in the output.
    CString text;
    for (int i = 0; i < GetSize(); ++i) {
        if (i > 0)
            text.Append(separator);
        text.AppendFormat(format, GetAt(i));
    }
    out.Append(text);
}
