// International.h: conversion between 16-bit text and code pages.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/MemoryStorage.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/text/WStr.h>

/// Conversions, all static. In their names Ansi is the system's ANSI code page, OEM and String its OEM code page, Latin1 page
/// 1252, ShiftJis page 932, CP the page given, Unicode 16-bit text.
///
/// True is success. Inputs end at their 0 unless a length is given. A count is of output units for the whole input with its
/// terminator; 0 means failure. A capacity is of output units; output that is longer fails after filling what fits.
/// Throws: the memory exceptions of the objects that receive text.
/// Threads: those marked "Scratch" share a buffer of the process and must not run at the same time; the others are free.
/// Cost: that of the platform's converters; scratch buffers only grow.
class KELGEN_API CInternational
{
public:
    virtual ~CInternational();

    // ---- One conversion ----

    /// Each converts, or counts, between the pages of its name.
    static bool AnsiToUnicode(unsigned short* dst, int capacity, const char* src);
    static int AnsiToUnicodeCount(const char* src);
    static bool OEMToUnicode(unsigned short* dst, int capacity, const char* src);
    static int OEMToUnicodeCount(const char* src);
    static bool CPToUnicode(DWORD cp, unsigned short* dst, int capacity, const char* src);
    /// By contract: the terminator is not counted, unlike in the other counts, so a caller adds room for it.
    static int CPToUnicodeCount(DWORD cp, const char* src);
    /// Converts @p n bytes into @p n units. By contract: always true, since each byte has a unit.
    static bool StringToUnicode(unsigned short* dst, int n, const char* src);
    static int StringToUnicodeCount(const char* src);
    /// Units outside the page become its default character.
    static bool UnicodeToAnsi(char* dst, int capacity, const unsigned short* src);
    static int UnicodeToAnsiCount(const unsigned short* src);
    static bool UnicodeToOEM(char* dst, int capacity, const unsigned short* src);
    static int UnicodeToOEMCount(const unsigned short* src);
    static bool UnicodeToLatin1(char* dst, int capacity, const unsigned short* src);
    static int UnicodeToLatin1Count(const unsigned short* src);

    // ---- Into a CWStr; the text ends at its first 0 ----

    /// Converts @p n bytes, or with -1 up to the terminator. False only when the scratch cannot grow. Scratch.
    static bool Latin1ToUnicode(CWStr& dst, const char* src, int n);
    /// Converts @p n bytes, which should include the terminator. False only when the scratch cannot grow. Scratch.
    /// By contract: unit @p n - 1 becomes the terminator whatever was converted, so without the source's terminator the last unit
    /// is lost, and after two-byte characters units of an earlier conversion follow. Nothing is converted for @p n below 1: the
    /// text is empty.
    static bool ShiftJisToUnicode(CWStr& dst, const char* src, int n);
    /// Converts terminated text of page @p cp. False on failure.
    static bool CPToUnicode(DWORD cp, CWStr& dst, const char* src);

    // ---- Between two pages, through 16-bit text. Scratch ----

    /// Converts @p n bytes into @p n bytes and a terminator, for which @p dst has room. False only when the scratch cannot grow.
    static bool StringToLatin1(char* dst, int n, const char* src);
    /// StringToLatin1's units for terminated text; 0 on failure.
    static int StringToLatin1Count(const char* src);
    /// As StringToLatin1.
    static bool StringToShiftJis(char* dst, int n, const char* src);
    /// StringToShiftJis's units for terminated text; 0 on failure.
    static int StringToShiftJisCount(const char* src);
    /// Both convert @p n bytes. False leaves @p dst alone.
    static bool Latin1ToString(CString& dst, const char* src, int n);
    static bool ShiftJisToString(CString& dst, const char* src, int n);

    // ---- Into other containers ----

    /// Both: false empties @p dst.
    static bool UnicodeToAnsi(CString& dst, const unsigned short* src);
    static bool UnicodeToOEM(CString& dst, const unsigned short* src);
    /// Both: the size becomes that of the text with its terminator.
    static bool UnicodeToAnsi(CMemoryStorage& dst, const unsigned short* src);
    static bool UnicodeToLatin1(CMemoryStorage& dst, const unsigned short* src);
    /// By contract: the size becomes one byte more than the text with its terminator, and that byte is not written, so a reader stops at
    /// the terminator.
    static bool UnicodeToOEM(CMemoryStorage& dst, const unsigned short* src);
    /// By contract: the size as by UnicodeToOEM, but the last byte is a further terminator, so that a reader of all bytes is safe too.
    /// Scratch.
    static bool StringToLatin1(CMemoryStorage& dst, const char* src);

    // ---- Copies that the caller frees with free(); null for null or when memory ends ----

    /// From the ANSI page; the terminator is at unit strlen(src).
    [[nodiscard]] static unsigned short* ToUnicodeDup_(const char* src);
    /// By contract: a copy of the bytes, whatever the name says, since they are narrow already.
    [[nodiscard]] static char* UnicodeToAnsiDup_(const char* src);
    /// The same of all bytes of a string.
    [[nodiscard]] static char* UnicodeToAnsiDup_(CString& src);

protected:
    /// Makes room for @p nUnits in the wide scratch, whose content is lost when it grows. False when memory ends.
    static bool AllocWch(int nUnits);
    /// The same for the narrow scratch.
    static bool AllocCh(int nBytes);
};
