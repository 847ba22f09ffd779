// format.cpp: the peers' formatting. wxString and fmt's wide form make 32-bit units here.
#include "../FormatOperations.h"

#include <unicode/unistr.h>
#include <unicode/ustdio.h>
#include <wx/string.h>

#include <QString>

#include <fmt/format.h>
#include <fmt/printf.h>
#include <fmt/xchar.h>

using namespace bench;

namespace {

void Asprintf(State& st)  // Qt's %ls takes 16-bit units, whatever the compiler thinks of wchar_t
{
    RunFormat(st, [] {
        return QString::asprintf("%d %ls %08x %5.2f", formatNumber, reinterpret_cast<const wchar_t*>(wideName), formatHex, formatReal);
    });
}

void QtArg(State& st)
{
    RunFormat(st, [] {
        return QStringLiteral("%1 %2 %3 %4")
            .arg(formatNumber)
            .arg(QStringView(wideName))
            .arg(formatHex, 8, 16, QChar('0'))
            .arg(formatReal, 5, 'f', 2);
    });
}

void Icu(State& st)
{
    RunFormat(st, [] {
        char16_t b[128];
        return icu::UnicodeString(b, u_snprintf_u(b, 128, u"%d %S %08x %5.2f", formatNumber, wideName, formatHex, formatReal));
    });
}

void Wx(State& st)
{
    RunFormat(st, [] { return wxString::Format(L"%d %s %08x %5.2f", formatNumber, wcharName, formatHex, formatReal); });
}

void FmtWide(State& st)
{
    RunFormat(st, [] { return fmt::format(L"{} {} {:08x} {:5.2f}", formatNumber, wcharName, formatHex, formatReal); });
}

void FmtWiden(State& st)
{
    RunFormat(st, [] {
        fmt::memory_buffer b;
        fmt::format_to(std::back_inserter(b), "{} {} {:08x} {:5.2f}", formatNumber, narrowName, formatHex, formatReal);
        return std::u16string(b.begin(), b.end());
    });
}

BENCHMARK(Asprintf)->Name("Format/Mixed4/QString_asprintf");
BENCHMARK(QtArg)->Name("Format/Mixed4/QString_arg");
BENCHMARK(Icu)->Name("Format/Mixed4/u_snprintf");
BENCHMARK(Wx)->Name("Format/Mixed4/wxString_Format");
BENCHMARK(FmtWide)->Name("Format/Mixed4/fmt_wchar");
BENCHMARK(FmtWiden)->Name("Format/Mixed4/fmt_widen");

}  // namespace
