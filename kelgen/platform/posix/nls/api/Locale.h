// Locale.h: the locale of the process, which is English (United States), what it says, and the language of a thread.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/nls/api/Languages.h>

#define SORT_DEFAULT 0x0

#define MAKELANGID(primary, sub) (static_cast<WORD>((static_cast<WORD>(sub) << 10) | static_cast<WORD>(primary)))
#define PRIMARYLANGID(language) (static_cast<WORD>((language)&0x3ff))
#define SUBLANGID(language) (static_cast<WORD>(static_cast<WORD>(language) >> 10))
#define MAKELCID(language, sort) (static_cast<DWORD>((static_cast<DWORD>(sort) << 16) | static_cast<WORD>(language)))
#define LANGIDFROMLCID(locale) (static_cast<WORD>(locale))
#define SORTIDFROMLCID(locale) (static_cast<WORD>((static_cast<DWORD>(locale) >> 16) & 0xf))

#define LANG_SYSTEM_DEFAULT MAKELANGID(LANG_NEUTRAL, SUBLANG_SYS_DEFAULT)
#define LANG_USER_DEFAULT MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT)
#define LOCALE_SYSTEM_DEFAULT MAKELCID(LANG_SYSTEM_DEFAULT, SORT_DEFAULT)
#define LOCALE_USER_DEFAULT MAKELCID(LANG_USER_DEFAULT, SORT_DEFAULT)
#define LOCALE_NEUTRAL MAKELCID(MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL), SORT_DEFAULT)
#define LOCALE_INVARIANT MAKELCID(MAKELANGID(0x7f, SUBLANG_NEUTRAL), SORT_DEFAULT)

using LCTYPE = DWORD;

#define LOCALE_RETURN_NUMBER 0x20000000
#define LOCALE_USE_CP_ACP 0x40000000
#define LOCALE_NOUSEROVERRIDE 0x80000000
#define LOCALE_ILANGUAGE 0x0001
#define LOCALE_SLANGUAGE 0x0002
#define LOCALE_SABBREVLANGNAME 0x0003
#define LOCALE_SNATIVELANGNAME 0x0004
#define LOCALE_ICOUNTRY 0x0005
#define LOCALE_SCOUNTRY 0x0006
#define LOCALE_SABBREVCTRYNAME 0x0007
#define LOCALE_SNATIVECTRYNAME 0x0008
#define LOCALE_IDEFAULTLANGUAGE 0x0009
#define LOCALE_IDEFAULTCOUNTRY 0x000a
#define LOCALE_IDEFAULTCODEPAGE 0x000b
#define LOCALE_SLIST 0x000c
#define LOCALE_IMEASURE 0x000d
#define LOCALE_SDECIMAL 0x000e
#define LOCALE_STHOUSAND 0x000f
#define LOCALE_SGROUPING 0x0010
#define LOCALE_IDIGITS 0x0011
#define LOCALE_ILZERO 0x0012
#define LOCALE_SNATIVEDIGITS 0x0013
#define LOCALE_SCURRENCY 0x0014
#define LOCALE_SINTLSYMBOL 0x0015
#define LOCALE_SMONDECIMALSEP 0x0016
#define LOCALE_SMONTHOUSANDSEP 0x0017
#define LOCALE_SMONGROUPING 0x0018
#define LOCALE_ICURRDIGITS 0x0019
#define LOCALE_IINTLCURRDIGITS 0x001a
#define LOCALE_ICURRENCY 0x001b
#define LOCALE_INEGCURR 0x001c
#define LOCALE_SDATE 0x001d
#define LOCALE_STIME 0x001e
#define LOCALE_SSHORTDATE 0x001f
#define LOCALE_SLONGDATE 0x0020
#define LOCALE_IDATE 0x0021
#define LOCALE_ILDATE 0x0022
#define LOCALE_ITIME 0x0023
#define LOCALE_ICENTURY 0x0024
#define LOCALE_ITLZERO 0x0025
#define LOCALE_IDAYLZERO 0x0026
#define LOCALE_IMONLZERO 0x0027
#define LOCALE_S1159 0x0028
#define LOCALE_S2359 0x0029
#define LOCALE_SDAYNAME1 0x002a
#define LOCALE_SDAYNAME2 0x002b
#define LOCALE_SDAYNAME3 0x002c
#define LOCALE_SDAYNAME4 0x002d
#define LOCALE_SDAYNAME5 0x002e
#define LOCALE_SDAYNAME6 0x002f
#define LOCALE_SDAYNAME7 0x0030
#define LOCALE_SABBREVDAYNAME1 0x0031
#define LOCALE_SABBREVDAYNAME2 0x0032
#define LOCALE_SABBREVDAYNAME3 0x0033
#define LOCALE_SABBREVDAYNAME4 0x0034
#define LOCALE_SABBREVDAYNAME5 0x0035
#define LOCALE_SABBREVDAYNAME6 0x0036
#define LOCALE_SABBREVDAYNAME7 0x0037
#define LOCALE_SMONTHNAME1 0x0038
#define LOCALE_SMONTHNAME2 0x0039
#define LOCALE_SMONTHNAME3 0x003a
#define LOCALE_SMONTHNAME4 0x003b
#define LOCALE_SMONTHNAME5 0x003c
#define LOCALE_SMONTHNAME6 0x003d
#define LOCALE_SMONTHNAME7 0x003e
#define LOCALE_SMONTHNAME8 0x003f
#define LOCALE_SMONTHNAME9 0x0040
#define LOCALE_SMONTHNAME10 0x0041
#define LOCALE_SMONTHNAME11 0x0042
#define LOCALE_SMONTHNAME12 0x0043
#define LOCALE_SABBREVMONTHNAME1 0x0044
#define LOCALE_SABBREVMONTHNAME2 0x0045
#define LOCALE_SABBREVMONTHNAME3 0x0046
#define LOCALE_SABBREVMONTHNAME4 0x0047
#define LOCALE_SABBREVMONTHNAME5 0x0048
#define LOCALE_SABBREVMONTHNAME6 0x0049
#define LOCALE_SABBREVMONTHNAME7 0x004a
#define LOCALE_SABBREVMONTHNAME8 0x004b
#define LOCALE_SABBREVMONTHNAME9 0x004c
#define LOCALE_SABBREVMONTHNAME10 0x004d
#define LOCALE_SABBREVMONTHNAME11 0x004e
#define LOCALE_SABBREVMONTHNAME12 0x004f
#define LOCALE_SPOSITIVESIGN 0x0050
#define LOCALE_SNEGATIVESIGN 0x0051
#define LOCALE_SISO639LANGNAME 0x0059
#define LOCALE_SISO3166CTRYNAME 0x005a
#define LOCALE_SNAME 0x005c
#define LOCALE_SENGLANGUAGE 0x1001
#define LOCALE_SENGLISHLANGUAGENAME 0x1001
#define LOCALE_SENGCOUNTRY 0x1002
#define LOCALE_SENGLISHCOUNTRYNAME 0x1002
#define LOCALE_STIMEFORMAT 0x1003
#define LOCALE_IDEFAULTANSICODEPAGE 0x1004
#define LOCALE_ITIMEMARKPOSN 0x1005
#define LOCALE_SYEARMONTH 0x1006
#define LOCALE_SENGCURRNAME 0x1007
#define LOCALE_SNATIVECURRNAME 0x1008
#define LOCALE_ICALENDARTYPE 0x1009
#define LOCALE_IPAPERSIZE 0x100a
#define LOCALE_IOPTIONALCALENDAR 0x100b
#define LOCALE_IFIRSTDAYOFWEEK 0x100c
#define LOCALE_IFIRSTWEEKOFYEAR 0x100d
#define LOCALE_SMONTHNAME13 0x100e
#define LOCALE_SABBREVMONTHNAME13 0x100f
#define LOCALE_INEGNUMBER 0x1010
#define LOCALE_IDEFAULTMACCODEPAGE 0x1011
#define LOCALE_IDEFAULTEBCDICCODEPAGE 0x1012

/// The calling thread's locale: what SetThreadLocale said, else the user's.
KELGEN_PLATFORM_API LCID GetThreadLocale();
/// Makes @p locale the calling thread's, in which resources are looked for (FindResourceA), and returns TRUE. A language without a
/// country stands for its first one, a neutral number for the user's locale; the order of sorting is not kept. FALSE and
/// ERROR_INVALID_PARAMETER for an unknown number. Limits: what GetLocaleInfoA says, comparison and narrow text stay as they are.
/// Threads: a new thread begins with the user's locale.
KELGEN_PLATFORM_API BOOL SetThreadLocale(LCID locale);
/// The language of the calling thread's user interface: what SetThreadUILanguage said, else the user's.
KELGEN_PLATFORM_API LANGID GetThreadUILanguage();
/// Makes @p language the calling thread's, in which resources are looked for (FindResourceA), and returns it; 0 gives the user's back
/// to the thread and returns that one. A language without a country stands for its first one. 0 and ERROR_INVALID_PARAMETER for an
/// unknown number.
/// Threads: a new thread begins with the user's language.
KELGEN_PLATFORM_API LANGID SetThreadUILanguage(LANGID language);
/// The user's locale: 0x0409.
KELGEN_PLATFORM_API LCID GetUserDefaultLCID();
/// The system's locale: 0x0409.
KELGEN_PLATFORM_API LCID GetSystemDefaultLCID();
/// The user's language: 0x0409.
KELGEN_PLATFORM_API LANGID GetUserDefaultLangID();
/// The system's language: 0x0409.
KELGEN_PLATFORM_API LANGID GetSystemDefaultLangID();
/// The language of the user's interface: 0x0409.
KELGEN_PLATFORM_API LANGID GetUserDefaultUILanguage();
/// The language in which the system was installed: 0x0409.
KELGEN_PLATFORM_API LANGID GetSystemDefaultUILanguage();

/// The bytes written to @p data with the terminator, or needed when @p capacity is 0; with LOCALE_RETURN_NUMBER the value as a DWORD.
/// Every locale answers as English (United States). 0 with ERROR_INSUFFICIENT_BUFFER, ERROR_INVALID_FLAGS for an unknown type, or
/// ERROR_INVALID_PARAMETER for a negative capacity, a null buffer with a capacity, an unknown locale.
KELGEN_PLATFORM_API int GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR data, int capacity);
/// GetLocaleInfoA in units.
KELGEN_PLATFORM_API int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR data, int capacity);
