// BaseIntArray.cpp: descending order, and numbers from and to text.
#include <kelgen/containers/BaseIntArray.h>

#include <kelgen/text/StrTokenizer.h>

#include <cstdlib>

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
            Add(std::atoi(token));
        else if (option)
            Add(emptyValue);
    }
}

void CBaseIntArray::FormatString(CString& out, const char* format, const char* separator) const
{
    for (int i = 0; i < GetSize(); ++i) {
        if (i > 0)
            out.Append(separator);
        out.AppendFormat(format, GetAt(i));
    }
}
