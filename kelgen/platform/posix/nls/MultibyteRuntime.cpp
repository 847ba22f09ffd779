// MultibyteRuntime.cpp: the multibyte code page, character classes and stepping.
#include <kelgen/platform/posix/nls/api/MultibyteRuntime.h>

#include <kelgen/platform/posix/nls/Characters.h>
#include <kelgen/platform/posix/nls/Conversions.h>
#include <kelgen/platform/posix/nls/MultibytePage.h>
#include <kelgen/platform/posix/nls/RuntimeLocale.h>
#include <kelgen/platform/posix/nls/api/NarrowRuntime.h>

#include <langinfo.h>

#include <cstdlib>
#include <cstring>

using namespace kelgen::posix;

namespace {

constexpr UINT kAsciiPage = 20127;

UINT PageOfLocale()
{
    if (IsPlainLocale(LC_CTYPE))
        return kAsciiPage;
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0 ? UINT{CP_UTF8} : GetACP();
}

UINT PageOf(int page)
{
    switch (page) {
    case _MB_CP_SBCS:
        return kAsciiPage;
    case _MB_CP_OEM:
        return GetOEMCP();
    case _MB_CP_ANSI:
        return GetACP();
    case _MB_CP_LOCALE:
        return PageOfLocale();
    default:
        return static_cast<UINT>(page);
    }
}

// The second bytes of a page's pairs, as the runtime has them: the gaps of some pages count as such bytes.
struct TrailBytes
{
    UINT page;
    BYTE ranges[4];
};
constexpr TrailBytes kTrailBytes[] = {
    {932, {0x40, 0x7E, 0x80, 0xFC}},
    {936, {0x40, 0xFE, 0x40, 0xFE}},
    {949, {0x41, 0xFE, 0x41, 0xFE}},
    {950, {0x40, 0x7E, 0xA1, 0xFE}},
};

bool IsTrailOf(UINT page, BYTE byte)
{
    for (const TrailBytes& trail : kTrailBytes) {
        const BYTE* ranges = trail.ranges;
        if (trail.page == page)
            return (byte >= ranges[0] && byte <= ranges[1]) || (byte >= ranges[2] && byte <= ranges[3]);
    }
    return false;
}

// The unit of a character of the page; 0 for none.
WCHAR UnitOf(const MultibytePage& page, unsigned int character)
{
    if (!page.table)
        return character < 0x80 ? static_cast<WCHAR>(character) : WCHAR{0};
    if (character < 0x100) {
        const WCHAR unit = page.table->UnitOfByte(static_cast<BYTE>(character));
        return unit == CodePage::kLead ? WCHAR{0} : unit;
    }
    const BYTE lead = static_cast<BYTE>(character >> 8);
    const BYTE trail = static_cast<BYTE>(character);
    if (character > 0xFFFF || !page.table->IsLead(lead) || trail == 0)
        return 0;
    const WCHAR unit = page.table->UnitOfPair(lead, trail);
    return unit == page.table->Unknown() ? WCHAR{0} : unit;
}

int IsOfClass(unsigned int character, unsigned classes)
{
    const WCHAR unit = UnitOf(CurrentMultibytePage(), character);
    // The runtime's classes leave these out: the next-line control and the letters that are only signs.
    const bool isLeftOut = unit == 0x85 || unit == 0xAA || unit == 0xB5 || unit == 0xBA;
    return unit != 0 && !isLeftOut && Characters::Get().Is(unit, classes);
}

// By contract a counterpart that the page lacks gives its best fit or the question mark, and a character with two codes gives the
// preferred one, since the way leads through the page's conversion.
unsigned int MapCharacter(unsigned int character, WCHAR (Characters::*map)(WCHAR) const)
{
    const MultibytePage& page = CurrentMultibytePage();
    const WCHAR unit = UnitOf(page, character);
    if (unit == 0)
        return character;
    const WCHAR mapped = (Characters::Get().*map)(unit);
    if (mapped == unit && !page.HasPairs())
        return character;
    if (page.table)
        return page.table->CodeOf(mapped);
    return mapped < 0x80 ? mapped : character;
}

}  // namespace

int _getmbcp()
{
    return static_cast<int>(CurrentMultibytePage().number);
}

int _setmbcp(int page)
{
    const UINT number = PageOf(page);
    if (!IsValidCodePage(number) || number == kGb18030)
        return -1;
    SelectMultibytePage(number);
    return 0;
}

int _ismbblead(unsigned int byte)
{
    const MultibytePage& page = CurrentMultibytePage();
    return page.HasPairs() && page.table->IsLead(static_cast<BYTE>(byte));
}

int _ismbbtrail(unsigned int byte)
{
    const MultibytePage& page = CurrentMultibytePage();
    return page.HasPairs() && IsTrailOf(page.number, static_cast<BYTE>(byte));
}

int _ismbcspace(unsigned int character)
{
    // Trimming asks this of every unit.
    if (character < 0x80 && CurrentMultibytePage().IsAsciiBased())
        return character == ' ' || (character >= 0x09 && character <= 0x0D);
    return IsOfClass(character, Characters::kSpace);
}

int _ismbcdigit(unsigned int character)
{
    return IsOfClass(character, Characters::kDigit);
}

int _ismbcalpha(unsigned int character)
{
    return IsOfClass(character, Characters::kLetter);
}

int _ismbcupper(unsigned int character)
{
    return IsOfClass(character, Characters::kUpper);
}

int _ismbclower(unsigned int character)
{
    return IsOfClass(character, Characters::kLower);
}

unsigned int _mbctoupper(unsigned int character)
{
    return MapCharacter(character, &Characters::ToUpper);
}

unsigned int _mbctolower(unsigned int character)
{
    return MapCharacter(character, &Characters::ToLower);
}

std::size_t _mbstrlen(const char* text)
{
    if (IsPlainLocale(LC_CTYPE))
        return std::strlen(text);
    return std::mbstowcs(nullptr, text, 0);
}
