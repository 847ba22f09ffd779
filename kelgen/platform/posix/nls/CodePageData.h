// CodePageData.h: what is known of single code pages beyond the C library's conversion tables.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <iterator>

namespace kelgen::posix {

/// A code page that the platform has.
struct CodePageFacts
{
    UINT number;
    const char* name;       // the C library's name for it
    const char* leadBytes;  // pairs: first and last of each range
    WCHAR unknown;          // what a pair of bytes outside the page becomes
    WCHAR firstUndefined;   // what the first undefined byte above the controls becomes; the next one gets the next unit
    bool hasGlyphs;         // control bytes have pictures
    int bestFitBit;         // its bit in kBestFitPages, or -1 when it has no best fits
};

/// @p count codes from @p code on (a byte, or lead byte * 256 + trail byte) that become @p unit and the units after it, or nothing
/// for 0xFFFF, whatever the C library says.
struct CodePageChange
{
    UINT page;
    WORD code;
    WORD count;
    WCHAR unit;
};

/// Of several codes for @p unit, the one that it becomes.
struct CodePagePreference
{
    UINT page;
    WCHAR unit;
    WORD code;
};

/// In the pages of kBestFitPages[pages], @p count units from @p unit on become @p fit and the units after it.
struct BestFit
{
    WCHAR unit;
    WORD count;
    WCHAR fit;
    WORD pages;
};

extern const CodePageFacts kCodePages[];
extern const std::size_t kCodePageCount;
extern const CodePageChange kCodePageChanges[];
extern const std::size_t kCodePageChangeCount;
extern const CodePagePreference kCodePagePreferences[];
extern const std::size_t kCodePagePreferenceCount;
extern const std::uint64_t kBestFitPages[];
extern const BestFit kBestFits[];
extern const std::size_t kBestFitCount;

}  // namespace kelgen::posix
