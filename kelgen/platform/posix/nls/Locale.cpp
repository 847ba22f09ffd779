// Locale.cpp: the one locale of the process, and the languages of threads.
#include <kelgen/platform/posix/nls/api/Locale.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/LocaleNumbers.h>

#include <algorithm>
#include <cstring>
#include <iterator>

using namespace kelgen::posix;

namespace {

constinit thread_local LCID threadLocale = kProcessLocale;
constinit thread_local LANGID threadLanguage = LANGIDFROMLCID(kProcessLocale);

struct LocaleFact
{
    LCTYPE type;
    const char* text;
    int number;  // for LOCALE_RETURN_NUMBER; -1 when the type has none
};

// By type.
constexpr LocaleFact kFacts[] = {
    {LOCALE_ILANGUAGE, "0409", 1033},
    {LOCALE_SLANGUAGE, "English (United States)", -1},
    {LOCALE_SABBREVLANGNAME, "ENU", -1},
    {LOCALE_SNATIVELANGNAME, "English", -1},
    {LOCALE_ICOUNTRY, "1", 1},
    {LOCALE_SCOUNTRY, "United States", -1},
    {LOCALE_SABBREVCTRYNAME, "USA", -1},
    {LOCALE_SNATIVECTRYNAME, "United States", -1},
    {LOCALE_IDEFAULTLANGUAGE, "0409", 1033},
    {LOCALE_IDEFAULTCOUNTRY, "1", 1},
    {LOCALE_IDEFAULTCODEPAGE, "437", 437},
    {LOCALE_SLIST, ",", -1},
    {LOCALE_IMEASURE, "1", 1},
    {LOCALE_SDECIMAL, ".", -1},
    {LOCALE_STHOUSAND, ",", -1},
    {LOCALE_SGROUPING, "3;0", -1},
    {LOCALE_IDIGITS, "2", 2},
    {LOCALE_ILZERO, "1", 1},
    {LOCALE_SNATIVEDIGITS, "0123456789", -1},
    {LOCALE_SCURRENCY, "$", -1},
    {LOCALE_SINTLSYMBOL, "USD", -1},
    {LOCALE_SMONDECIMALSEP, ".", -1},
    {LOCALE_SMONTHOUSANDSEP, ",", -1},
    {LOCALE_SMONGROUPING, "3;0", -1},
    {LOCALE_ICURRDIGITS, "2", 2},
    {LOCALE_IINTLCURRDIGITS, "2", 2},
    {LOCALE_ICURRENCY, "0", 0},
    {LOCALE_INEGCURR, "0", 0},
    {LOCALE_SDATE, "/", -1},
    {LOCALE_STIME, ":", -1},
    {LOCALE_SSHORTDATE, "M/d/yyyy", -1},
    {LOCALE_SLONGDATE, "dddd, MMMM d, yyyy", -1},
    {LOCALE_IDATE, "0", 0},
    {LOCALE_ILDATE, "0", 0},
    {LOCALE_ITIME, "0", 0},
    {LOCALE_ICENTURY, "1", 1},
    {LOCALE_ITLZERO, "0", 0},
    {LOCALE_IDAYLZERO, "0", 0},
    {LOCALE_IMONLZERO, "0", 0},
    {LOCALE_S1159, "AM", -1},
    {LOCALE_S2359, "PM", -1},
    {LOCALE_SDAYNAME1, "Monday", -1},
    {LOCALE_SDAYNAME2, "Tuesday", -1},
    {LOCALE_SDAYNAME3, "Wednesday", -1},
    {LOCALE_SDAYNAME4, "Thursday", -1},
    {LOCALE_SDAYNAME5, "Friday", -1},
    {LOCALE_SDAYNAME6, "Saturday", -1},
    {LOCALE_SDAYNAME7, "Sunday", -1},
    {LOCALE_SABBREVDAYNAME1, "Mon", -1},
    {LOCALE_SABBREVDAYNAME2, "Tue", -1},
    {LOCALE_SABBREVDAYNAME3, "Wed", -1},
    {LOCALE_SABBREVDAYNAME4, "Thu", -1},
    {LOCALE_SABBREVDAYNAME5, "Fri", -1},
    {LOCALE_SABBREVDAYNAME6, "Sat", -1},
    {LOCALE_SABBREVDAYNAME7, "Sun", -1},
    {LOCALE_SMONTHNAME1, "January", -1},
    {LOCALE_SMONTHNAME2, "February", -1},
    {LOCALE_SMONTHNAME3, "March", -1},
    {LOCALE_SMONTHNAME4, "April", -1},
    {LOCALE_SMONTHNAME5, "May", -1},
    {LOCALE_SMONTHNAME6, "June", -1},
    {LOCALE_SMONTHNAME7, "July", -1},
    {LOCALE_SMONTHNAME8, "August", -1},
    {LOCALE_SMONTHNAME9, "September", -1},
    {LOCALE_SMONTHNAME10, "October", -1},
    {LOCALE_SMONTHNAME11, "November", -1},
    {LOCALE_SMONTHNAME12, "December", -1},
    {LOCALE_SABBREVMONTHNAME1, "Jan", -1},
    {LOCALE_SABBREVMONTHNAME2, "Feb", -1},
    {LOCALE_SABBREVMONTHNAME3, "Mar", -1},
    {LOCALE_SABBREVMONTHNAME4, "Apr", -1},
    {LOCALE_SABBREVMONTHNAME5, "May", -1},
    {LOCALE_SABBREVMONTHNAME6, "Jun", -1},
    {LOCALE_SABBREVMONTHNAME7, "Jul", -1},
    {LOCALE_SABBREVMONTHNAME8, "Aug", -1},
    {LOCALE_SABBREVMONTHNAME9, "Sep", -1},
    {LOCALE_SABBREVMONTHNAME10, "Oct", -1},
    {LOCALE_SABBREVMONTHNAME11, "Nov", -1},
    {LOCALE_SABBREVMONTHNAME12, "Dec", -1},
    {LOCALE_SPOSITIVESIGN, "", -1},
    {LOCALE_SNEGATIVESIGN, "-", -1},
    {LOCALE_SISO639LANGNAME, "en", -1},
    {LOCALE_SISO3166CTRYNAME, "US", -1},
    {LOCALE_SNAME, "en-US", -1},
    {LOCALE_SENGLANGUAGE, "English", -1},
    {LOCALE_SENGCOUNTRY, "United States", -1},
    {LOCALE_STIMEFORMAT, "h:mm:ss tt", -1},
    {LOCALE_IDEFAULTANSICODEPAGE, "1252", 1252},
    {LOCALE_ITIMEMARKPOSN, "0", 0},
    {LOCALE_SYEARMONTH, "MMMM yyyy", -1},
    {LOCALE_SENGCURRNAME, "US Dollar", -1},
    {LOCALE_SNATIVECURRNAME, "US Dollar", -1},
    {LOCALE_ICALENDARTYPE, "1", 1},
    {LOCALE_IPAPERSIZE, "1", 1},
    {LOCALE_IOPTIONALCALENDAR, "0", 0},
    {LOCALE_IFIRSTDAYOFWEEK, "6", 6},
    {LOCALE_IFIRSTWEEKOFYEAR, "0", 0},
    {LOCALE_SMONTHNAME13, "", -1},
    {LOCALE_SABBREVMONTHNAME13, "", -1},
    {LOCALE_INEGNUMBER, "1", 1},
    {LOCALE_IDEFAULTMACCODEPAGE, "10000", 10000},
    {LOCALE_IDEFAULTEBCDICCODEPAGE, "037", 37},
};
static_assert(std::ranges::is_sorted(kFacts, {}, &LocaleFact::type));

const LocaleFact* FactOf(LCTYPE type)
{
    const auto* end = std::end(kFacts);
    const auto* fact =
        std::lower_bound(std::begin(kFacts), end, type, [](const LocaleFact& row, LCTYPE sought) { return row.type < sought; });
    return fact != end && fact->type == type ? fact : nullptr;
}

/// The language of one country that @p language stands for, when that is neutral or of no country; else itself.
LANGID OfCountry(LANGID language)
{
    if (PRIMARYLANGID(language) == LANG_NEUTRAL)
        return LANGIDFROMLCID(kProcessLocale);
    return SUBLANGID(language) == SUBLANG_NEUTRAL && language != LANG_INVARIANT ? MAKELANGID(language, SUBLANG_DEFAULT) : language;
}

// Answers in units of either size. The facts are ASCII, so a unit is a byte's value.
template <class Unit>
int Answer(LCID locale, LCTYPE type, Unit* data, int capacity)
{
    if (capacity < 0 || (capacity > 0 && !data) || !IsKnownLocale(locale))
        return Fail(ERROR_INVALID_PARAMETER, 0);

    const bool asNumber = (type & LOCALE_RETURN_NUMBER) != 0;
    const LocaleFact* fact = FactOf(type & ~(LOCALE_RETURN_NUMBER | LOCALE_USE_CP_ACP | LOCALE_NOUSEROVERRIDE));
    if (!fact || (asNumber && fact->number < 0))
        return Fail(ERROR_INVALID_FLAGS, 0);

    const int needed = asNumber ? static_cast<int>(sizeof(DWORD) / sizeof(Unit)) : static_cast<int>(std::strlen(fact->text)) + 1;
    if (capacity == 0)
        return needed;
    if (capacity < needed)
        return Fail(ERROR_INSUFFICIENT_BUFFER, 0);

    if (asNumber)
        std::memcpy(data, &fact->number, sizeof(DWORD));
    else
        std::copy_n(fact->text, needed, data);
    return needed;
}

}  // namespace

bool kelgen::posix::IsKnownLocale(LCID locale)
{
    // The default order only, a known language or one of the neutral numbers.
    constexpr WORD kLastLanguage = 0x92;
    constexpr WORD kLastSublanguage = 0x20;
    return locale <= 0xFFFF && PRIMARYLANGID(locale) <= kLastLanguage && SUBLANGID(locale) <= kLastSublanguage;
}

LCID GetThreadLocale()
{
    return threadLocale;
}

BOOL SetThreadLocale(LCID locale)
{
    constexpr LCID kSorting = 0xF0000;
    const LCID unsorted = locale & ~kSorting;
    if (!IsKnownLocale(unsorted))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    threadLocale = MAKELCID(OfCountry(LANGIDFROMLCID(unsorted)), SORT_DEFAULT);
    return TRUE;
}

LANGID GetThreadUILanguage()
{
    return threadLanguage;
}

LANGID SetThreadUILanguage(LANGID language)
{
    if (!IsKnownLocale(language))
        return Fail(ERROR_INVALID_PARAMETER, LANGID{0});
    threadLanguage = OfCountry(language);
    return language ? language : threadLanguage;
}

LCID GetUserDefaultLCID()
{
    return kProcessLocale;
}

LCID GetSystemDefaultLCID()
{
    return kProcessLocale;
}

LANGID GetUserDefaultLangID()
{
    return LANGIDFROMLCID(kProcessLocale);
}

LANGID GetSystemDefaultLangID()
{
    return LANGIDFROMLCID(kProcessLocale);
}

LANGID GetUserDefaultUILanguage()
{
    return LANGIDFROMLCID(kProcessLocale);
}

LANGID GetSystemDefaultUILanguage()
{
    return LANGIDFROMLCID(kProcessLocale);
}

int GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR data, int capacity)
{
    return OrNoMemory(int{0}, [&]() -> int { return Answer(locale, type, data, capacity); });
}

int GetLocaleInfoW(LCID locale, LCTYPE type, LPWSTR data, int capacity)
{
    return OrNoMemory(int{0}, [&]() -> int { return Answer(locale, type, data, capacity); });
}
