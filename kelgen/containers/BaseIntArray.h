// BaseIntArray.h: arrays of integers, sorted insertion, delimited text, and arrays of such arrays.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseNumericArray.h>
#include <kelgen/containers/FastArray.h>
#include <kelgen/framework/base/String.h>

/// Integers; kept in descending order when they are added by SortAdd alone.
///
///     CBaseIntArray numbers;
///     numbers.AddString("3;1;;2", ";", true, -1);  // 3, 1, -1, 2
///     CString text;
///     numbers.FormatString(text, "%d", ", ");      // "3, 1, -1, 2"
class KELGEN_API CBaseIntArray : public CBaseNumericArray<int, const int>
{
public:
    using MovableBitwise = CBaseIntArray;
    using CBaseNumericArray<int, const int>::CBaseNumericArray;
    /// Takes the elements of another comparable array, such as what &= returns.
    using CBaseNumericArray<int, const int>::operator=;
    using CBaseNumericArray<int, const int>::SortAdd;
    using CBaseNumericArray<int, const int>::SortFind;

    /// The difference a - b, by 32-bit subtraction. By contract: it wraps for numbers 2^31 or more apart, which then sort the wrong way
    /// round, so a host keeps them closer.
    static int IntCompare(const int& a, const int& b);

    /// Inserts @p value into the descending order, before the numbers equal to it.
    void SortAdd(int value);
    /// An index of @p value in an array kept by SortAdd, or -1.
    int SortFind(int value) const;

    /// Appends the numbers of a text split at the separator text @p separators (as CStrTokenizer does): the decimal number that a piece
    /// begins with (0 for none, the low 32 bits of a larger one), @p emptyValue for an empty one. Empty pieces are passed over unless
    /// @p option.
    void AddString(const char* text, const char* separators, bool option, int emptyValue);

    /// Appends to @p out every number by @p format, a printf format for one int, with @p separator between them. Both may lie in @p out.
    void FormatString(CString& out, const char* format, const char* separator) const;
};

/// Rows of numbers, each with a length of its own.
class CBase2DIntArray : public CBaseArray<CBaseIntArray, const CBaseIntArray&>
{
public:
    using CBaseArray<CBaseIntArray, const CBaseIntArray&>::CBaseArray;
};

/// Numbers, without the arithmetic of CBaseIntArray.
class CIntList : public CBaseArray<int, int>
{
public:
    using CBaseArray<int, int>::CBaseArray;
};

/// The same with a used count.
class CFastIntList : public CFastArray<int, int>
{};
