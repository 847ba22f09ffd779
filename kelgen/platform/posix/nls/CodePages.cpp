// CodePages.cpp: the calls for code pages.
#include <kelgen/platform/posix/nls/api/CodePages.h>

#include <kelgen/platform/posix/base/NoMemory.h>
#include <kelgen/platform/posix/base/api/ErrorCodes.h>
#include <kelgen/platform/posix/base/api/LastError.h>
#include <kelgen/platform/posix/nls/CodePage.h>
#include <kelgen/platform/posix/nls/Conversions.h>
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

using namespace kelgen::posix;

namespace {

constexpr UINT kMacintoshPage = 10000;
constexpr DWORD kDecodeFlags = MB_PRECOMPOSED | MB_COMPOSITE | MB_USEGLYPHCHARS | MB_ERR_INVALID_CHARS;
constexpr DWORD kEncodeFlags =
    WC_DISCARDNS | WC_SEPCHARS | WC_DEFAULTCHAR | WC_ERR_INVALID_CHARS | WC_COMPOSITECHECK | WC_NO_BEST_FIT_CHARS;

// The page that the environment names, or @p standard.
UINT PageFromEnvironment(const char* variable, UINT standard)
{
    const char* text = secure_getenv(variable);
    if (!text)
        return standard;

    const UINT page = static_cast<UINT>(std::strtoul(text, nullptr, 10));
    return IsValidCodePage(page) && page != kGb18030 ? page : standard;
}

// Finds the table of a page; false with the last error.
bool FindTable(UINT number, const CodePage*& table)
{
    return OrNoMemory(false, [&] {
        table = CodePage::Find(number);
        return table || Fail(ERROR_INVALID_PARAMETER, false);
    });
}

// The call's result for a conversion that ended; sizes are bounded by the caller's own capacities.
int Finish(Converted converted)
{
    if (converted.outcome == Outcome::kShort)
        return Fail(ERROR_INSUFFICIENT_BUFFER, 0);
    if (converted.outcome == Outcome::kInvalid)
        return Fail(ERROR_NO_UNICODE_TRANSLATION, 0);
    if (converted.size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return Fail(ERROR_INVALID_PARAMETER, 0);

    return static_cast<int>(converted.size);
}

// The code that replaces what the page does not hold: the caller's default character or the page's own.
WORD DefaultCodeOf(const CodePage& page, LPCCH defaultChar)
{
    if (!defaultChar)
        return page.DefaultCode();

    const BYTE first = static_cast<BYTE>(defaultChar[0]);
    const BYTE second = page.HasPairs() && first != 0 ? static_cast<BYTE>(defaultChar[1]) : BYTE{0};
    return second != 0 ? static_cast<WORD>(first << 8 | second) : WORD{first};
}

// UTF-7 and symbols know no flags and no default character.
int EncodeUnflagged(UINT page, Units from, ByteRoom to)
{
    return Finish(page == CP_UTF7 ? EncodeUtf7(from, to) : EncodeSymbols(from, to));
}

int EncodeGb18030Text(DWORD flags, Units from, ByteRoom to, LPBOOL usedDefault)
{
    if ((flags & ~WC_ERR_INVALID_CHARS) != 0)
        return Fail(ERROR_INVALID_FLAGS, 0);

    const Converted converted = EncodeGb18030(flags != 0, from, to);
    if (usedDefault)
        *usedDefault = converted.outcome == Outcome::kDone && converted.hasReplaced;
    return Finish(converted);
}

// Text of one page in another; FALSE, with the last error, when a table cannot be built now.
BOOL Exchange(UINT fromPage, DWORD flags, LPCSTR from, UINT toPage, LPSTR to)
{
    return OrNoMemory<BOOL>(FALSE, [&]() -> BOOL {
        std::vector<WCHAR> wide(std::strlen(from) + 1);
        const int units = MultiByteToWideChar(fromPage, flags, from, -1, wide.data(), static_cast<int>(wide.size()));
        const int size = WideCharToMultiByte(toPage, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
        return WideCharToMultiByte(toPage, 0, wide.data(), units, to, size, nullptr, nullptr) != 0;
    });
}

}  // namespace

UINT kelgen::posix::ResolveCodePage(UINT page)
{
    switch (page) {
    case CP_ACP:
    case CP_THREAD_ACP:
        return GetACP();
    case CP_OEMCP:
        return GetOEMCP();
    case CP_MACCP:
        return kMacintoshPage;
    default:
        return page;
    }
}

UINT GetACP()
{
    static const UINT page = PageFromEnvironment("KELGEN_ACP", CP_UTF8);
    return page;
}

UINT GetOEMCP()
{
    // UTF-8 is both at once: the library passes OEM text to calls that take ANSI text.
    static const UINT page = PageFromEnvironment("KELGEN_OEMCP", GetACP() == CP_UTF8 ? CP_UTF8 : 437);
    return page;
}

BOOL IsValidCodePage(UINT page)
{
    switch (page) {
    case CP_ACP:
    case CP_OEMCP:
    case CP_MACCP:
    case CP_THREAD_ACP:
    case CP_SYMBOL:
        return FALSE;
    case CP_UTF7:
    case CP_UTF8:
        return TRUE;
    case kGb18030:
        return HasGb18030();
    default:
        return OrNoMemory<BOOL>(FALSE, [page]() -> BOOL { return CodePage::Find(page) != nullptr; });
    }
}

BOOL GetCPInfo(UINT page, LPCPINFO info)
{
    const UINT number = ResolveCodePage(page);
    if (!info || !IsValidCodePage(number))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);

    *info = CPINFO{};
    info->DefaultChar[0] = '?';
    if (number == CP_UTF7 || number == CP_UTF8 || number == kGb18030) {
        info->MaxCharSize = number == CP_UTF7 ? 5 : 4;
        return TRUE;
    }

    const CodePage& table = *CodePage::Find(number);
    info->DefaultChar[0] = static_cast<BYTE>(table.DefaultCode());
    info->MaxCharSize = table.HasPairs() ? 2 : 1;
    int ranges = 0;
    for (int byte = 0; byte < 0x100 && ranges < MAX_LEADBYTES - 2; ++byte) {
        const bool isLead = table.IsLead(static_cast<BYTE>(byte));
        if (isLead && !table.IsLead(static_cast<BYTE>(byte - 1)))
            info->LeadByte[ranges] = static_cast<BYTE>(byte);
        if (isLead && (byte == 0xFF || !table.IsLead(static_cast<BYTE>(byte + 1)))) {
            info->LeadByte[ranges + 1] = static_cast<BYTE>(byte);
            ranges += 2;
        }
    }
    return TRUE;
}

BOOL IsDBCSLeadByte(BYTE byte)
{
    return IsDBCSLeadByteEx(CP_ACP, byte);
}

BOOL IsDBCSLeadByteEx(UINT page, BYTE byte)
{
    const UINT number = ResolveCodePage(page);
    if (!IsValidCodePage(number))
        return Fail(ERROR_INVALID_PARAMETER, FALSE);

    const CodePage* table = CodePage::Find(number);
    return table && table->IsLead(byte);
}

int MultiByteToWideChar(UINT page, DWORD flags, LPCCH text, int length, LPWSTR wide, int capacity)
{
    if (!text || length == 0 || capacity < 0 || (capacity > 0 && !wide))
        return Fail(ERROR_INVALID_PARAMETER, 0);

    const Bytes from{text, length < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(length)};
    const UnitRoom to{capacity > 0 ? wide : nullptr, static_cast<std::size_t>(capacity)};
    const UINT number = ResolveCodePage(page);
    if (number == CP_UTF7 || number == CP_SYMBOL) {
        if (flags != 0)
            return Fail(ERROR_INVALID_FLAGS, 0);
        return Finish(number == CP_UTF7 ? DecodeUtf7(from, to) : DecodeSymbols(from, to));
    }
    if (number == kGb18030 && HasGb18030()) {
        if ((flags & ~MB_ERR_INVALID_CHARS) != 0)
            return Fail(ERROR_INVALID_FLAGS, 0);
        return Finish(DecodeGb18030(flags != 0, from, to));
    }

    const CodePage* table = nullptr;
    if (number != CP_UTF8 && !FindTable(number, table))
        return 0;
    if ((flags & ~kDecodeFlags) != 0)
        return Fail(ERROR_INVALID_FLAGS, 0);

    return Finish(table ? DecodePage(*table, flags, from, to) : DecodeUtf8((flags & MB_ERR_INVALID_CHARS) != 0, from, to));
}

int WideCharToMultiByte(UINT page, DWORD flags, LPCWCH wide, int length, LPSTR text, int capacity, LPCCH defaultChar, LPBOOL usedDefault)
{
    if (!wide || length == 0 || capacity < 0 || (capacity > 0 && !text))
        return Fail(ERROR_INVALID_PARAMETER, 0);

    const Units from{wide, length < 0 ? wcslen(wide) + 1 : static_cast<std::size_t>(length)};
    const ByteRoom to{capacity > 0 ? text : nullptr, static_cast<std::size_t>(capacity)};
    const UINT number = ResolveCodePage(page);
    if (number == CP_UTF7 || number == CP_SYMBOL) {
        if (number == CP_SYMBOL && flags != 0)
            return Fail(ERROR_INVALID_FLAGS, 0);
        if (defaultChar || usedDefault)
            return Fail(ERROR_INVALID_PARAMETER, 0);
        return flags != 0 ? Fail(ERROR_INVALID_FLAGS, 0) : EncodeUnflagged(number, from, to);
    }
    if (number == kGb18030 && HasGb18030())
        return EncodeGb18030Text(flags, from, to, usedDefault);

    const CodePage* table = nullptr;
    if (number != CP_UTF8 && !FindTable(number, table))
        return 0;
    if ((flags & ~kEncodeFlags) != 0)
        return Fail(ERROR_INVALID_FLAGS, 0);

    if (usedDefault)
        *usedDefault = FALSE;
    if (!table) {
        const Converted converted = EncodeUtf8((flags & WC_ERR_INVALID_CHARS) != 0, from, to);
        if (usedDefault && converted.outcome == Outcome::kDone)
            *usedDefault = converted.hasReplaced;
        return Finish(converted);
    }

    Replacement replacement;
    replacement.allowBestFit = (flags & WC_NO_BEST_FIT_CHARS) == 0;
    replacement.compose = (flags & WC_COMPOSITECHECK) != 0;
    replacement.code = DefaultCodeOf(*table, defaultChar);
    replacement.used = usedDefault;
    return Finish(EncodePage(*table, replacement, from, to));
}

BOOL CharToOemA(LPCSTR ansi, LPSTR oem)
{
    if (!ansi || !oem)
        return FALSE;

    return Exchange(CP_ACP, 0, ansi, CP_OEMCP, oem);
}

BOOL OemToCharA(LPCSTR oem, LPSTR ansi)
{
    if (!oem || !ansi)
        return FALSE;

    return Exchange(CP_OEMCP, MB_USEGLYPHCHARS, oem, CP_ACP, ansi);
}
