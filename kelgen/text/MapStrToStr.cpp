// MapStrToStr.cpp: plain substitution, and that of groups in braces.
#include <kelgen/text/MapStrToStr.h>

#include <kelgen/platform/support/Assert.h>
#include <kelgen/text/internal/ByteText.h>

using namespace kelgen::detail;

namespace {

/// Resolves the groups of @p text that name @p variable, a '$' and a name. False when the text holds no group.
bool ReplaceVariable(CString& text, const CString& variable, const CString& value)
{
    int resume = 0;
    for (int open = FindBytes(text, "{", 0); open >= 0; open = FindBytes(text, "{", resume)) {
        const int close = FindBytes(text, "}", open);
        KELGEN_ASSERT(close >= 0);
        if (close < 0)
            return false;

        const int at = FindBytes(text, variable, open);
        if (at < 0 || at >= close || CMapStrToStr::IsVarChar(text[at + variable.GetLength()], false)) {
            resume = close + 1;
            continue;
        }
        CString inner;
        if (!value.IsEmpty()) {
            inner = text.Mid(open + 1, close - open - 1);
            ReplaceBytes(inner, variable, value);
        }
        resume = open + inner.GetLength() + 1;
        text = text.Left(open) + inner + text.Mid(close + 1);
    }
    return resume > 0;
}

}  // namespace

CMapStrToStr::CMapStrToStr() : CMapStringToString(10) {}

CMapStrToStr::~CMapStrToStr() = default;

void CMapStrToStr::FormatString(CString& text) const
{
    CString name, value;
    for (POSITION position = GetStartPosition(); position != nullptr;) {
        GetNextAssoc(position, name, value);
        ReplaceBytes(text, name, value);
    }
}

void CMapStrToStr::ReplaceVars(CString& text) const
{
    if (FindBytes(text, "{", 0) < 0)
        return;
    CString name, value;
    for (POSITION position = GetStartPosition(); position != nullptr;) {
        GetNextAssoc(position, name, value);
        if (!ReplaceVariable(text, '$' + name, value))
            return;
    }
}

bool CMapStrToStr::IsVarChar(char c, bool bNoDigits)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || (!bNoDigits && c >= '0' && c <= '9');
}
