// Numbers.cpp: any text as a number in every base, and any bits as a date.
#include "Input.h"

#include <kelgen/framework/ole/OleDateTime.h>
#include <kelgen/platform/Win32.h>
#include <kelgen/property/PropertyValue.h>

#include <cerrno>
#include <climits>
#include <cmath>

using namespace fuzz;

namespace {

bool IsAscii(const std::string& text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return c & 0x80; });
}

/// The C library's own function says the same of ASCII text.
void WholeNumbers(const std::string& text, int base)
{
    auto wide = Terminated<WCHAR>(text);
    auto narrow = Terminated<char>(text);
    const std::size_t length = wcslen(wide.Get());
    WCHAR* end = wide.Get();
    errno = 0;
    const LONGLONG number = _wcstoi64(wide.Get(), &end, base);
    const int error = errno;
    Require(end >= wide.Get() && end <= wide.Get() + length);
    const LONG shorter = wcstol(wide.Get(), nullptr, base);
    Require(shorter == std::clamp<LONGLONG>(number, INT_MIN, INT_MAX));
    wcstoul(wide.Get(), &end, base);
    Require(end >= wide.Get() && end <= wide.Get() + length);
    _wcstoui64(wide.Get(), nullptr, base);

    if (IsAscii(text) && base != 1 && base <= 36 && text.find_first_of("bB") == std::string::npos) {
        errno = 0;
        Require(std::strtoll(narrow.Get(), nullptr, base) == number && errno == error);
    }
    if (base >= 2 && base <= 36) {
        WCHAR spelt[66];
        Require(_wcstoi64(_i64tow(number, spelt, 10), nullptr, 10) == number);
        Require(static_cast<LONGLONG>(_wcstoui64(_ui64tow(static_cast<ULONGLONG>(number), spelt, base), nullptr, base)) == number);
    }
}

void RealNumbers(const std::string& text)
{
    auto wide = Terminated<WCHAR>(text);
    auto narrow = Terminated<char>(text);
    WCHAR* end = nullptr;
    const double number = wcstod(wide.Get(), &end);
    Require(!std::isnan(number) && end >= wide.Get() && end <= wide.Get() + wcslen(wide.Get()));
    // Where both know the same forms.
    if (text.find_first_not_of("0123456789+-.eE ") == std::string::npos)
        Require(std::strtod(narrow.Get(), nullptr) == number);

    const gen::CPropertyValue value(narrow.Get());
    gen::CPropertyValue again(0);
    again.SetValueString(narrow.Get());
    Require(again.GetValueInteger() == value.GetValueInteger());
    // Both keep the low bits, of 32 and of 64.
    if (IsAscii(text))
        Require(value.GetValueInteger() == static_cast<int>(static_cast<DWORD>(_wtoi64(wide.Get()))));
}

void IsInItsRanges(const SYSTEMTIME& time)
{
    Require(time.wYear >= 100 && time.wYear <= 9999 && time.wMonth >= 1 && time.wMonth <= 12 && time.wDay >= 1 && time.wDay <= 31);
    Require(time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wDayOfWeek < 7);
}

void Dates(Input& input)
{
    double date;
    const ULONGLONG bits = input.Take<ULONGLONG>();
    std::memcpy(&date, &bits, sizeof date);
    SYSTEMTIME time = {};
    if (VariantTimeToSystemTime(date, &time)) {
        IsInItsRanges(time);
        DATE again = 0;
        SYSTEMTIME same = {};
        Require(SystemTimeToVariantTime(&time, &again) && VariantTimeToSystemTime(again, &same));
        Require(std::memcmp(&same, &time, sizeof time) == 0);
    }

    SYSTEMTIME any = {};
    for (WORD* field : {&any.wYear, &any.wMonth, &any.wDay, &any.wHour, &any.wMinute, &any.wSecond, &any.wMilliseconds})
        *field = input.Take<WORD>();
    if (SystemTimeToVariantTime(&any, &date)) {
        Require(VariantTimeToSystemTime(date, &time) != FALSE);
        IsInItsRanges(time);
    }
    FILETIME file = {};
    if (SystemTimeToFileTime(&any, &file)) {
        Require(FileTimeToSystemTime(&file, &time) != FALSE);
        Require(time.wYear == any.wYear && time.wMonth == any.wMonth && time.wDay == any.wDay && time.wMilliseconds == any.wMilliseconds);
    }
    const COleDateTime moment(any);
    moment.Format("%Y-%m-%d %H:%M:%S %a %b");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    const int base = static_cast<int>(input.Below(40));
    if (base == 39) {
        Dates(input);
        return 0;
    }
    const std::string text = input.Rest<char>();
    WholeNumbers(text, base);
    RealNumbers(text);
    return 0;
}
