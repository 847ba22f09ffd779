// Format.cpp: formatting into a new string. swprintf makes 32-bit units.
#include "FormatOperations.h"

#include <kelgen/text/WStr.h>

#include <cwchar>

using namespace bench;

namespace {

void Kelgen(State& st)
{
    RunFormat(st, [] {
        CWStr s;
        s.Format(u"%d %s %08x %5.2f"_w, formatNumber, wideName, formatHex, formatReal);
        return s;
    });
}

void Swprintf(State& st)
{
    RunFormat(st, [] {
        wchar_t b[128];
        return std::wstring(b, std::swprintf(b, 128, L"%d %ls %08x %5.2f", formatNumber, wcharName, formatHex, formatReal));
    });
}

void SnprintfWiden(State& st)  // what is left with nothing but the C library
{
    RunFormat(st, [] {
        char b[128];
        const int n = std::snprintf(b, sizeof b, "%d %s %08x %5.2f", formatNumber, narrowName, formatHex, formatReal);
        return std::u16string(b, b + n);
    });
}

COUNTED(Kelgen)->Name("Format/Mixed4/kelgen");
COUNTED(Swprintf)->Name("Format/Mixed4/swprintf");
COUNTED(SnprintfWiden)->Name("Format/Mixed4/snprintf_widen");

}  // namespace
