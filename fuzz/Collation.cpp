// Collation.cpp: any three texts are in one order, which does not depend on how they are handed over.
#include "Input.h"

#include <kelgen/platform/Win32.h>

using namespace fuzz;

namespace {

using Wide = std::basic_string<WCHAR>;

constexpr DWORD kFlags[] = {NORM_IGNORECASE,     NORM_IGNORENONSPACE, NORM_IGNORESYMBOLS, LINGUISTIC_IGNORECASE,
                            NORM_IGNOREKANATYPE, NORM_IGNOREWIDTH,    SORT_STRINGSORT};

int Order(const Wide& left, const Wide& right, DWORD flags)
{
    Exact<WCHAR> l(left.size()), r(right.size());
    std::copy(left.begin(), left.end(), l.Get());
    std::copy(right.begin(), right.end(), r.Get());
    const int result = CompareStringW(LOCALE_USER_DEFAULT, flags, l.Get(), static_cast<int>(l.Size()), r.Get(), static_cast<int>(r.Size()));
    Require(result >= CSTR_LESS_THAN && result <= CSTR_GREATER_THAN);
    return result - CSTR_EQUAL;
}

int Sign(int number)
{
    return (number > 0) - (number < 0);
}

/// Terminated texts compare as they do by their lengths, and narrow calls agree with themselves.
void TerminatedIsTheSame(const Wide& left, const Wide& right, int order, DWORD flags)
{
    auto l = Terminated<WCHAR>(left.substr(0, left.find(WCHAR(0))));
    auto r = Terminated<WCHAR>(right.substr(0, right.find(WCHAR(0))));
    if (l.Size() == left.size() + 1 && r.Size() == right.size() + 1)
        Require(CompareStringW(LOCALE_USER_DEFAULT, flags, l.Get(), -1, r.Get(), -1) - CSTR_EQUAL == order);
    Require(Sign(lstrcmpW(l.Get(), r.Get())) == -Sign(lstrcmpW(r.Get(), l.Get())));
    Require(Sign(wcscoll(l.Get(), r.Get())) == -Sign(wcscoll(r.Get(), l.Get())));
    Require(Sign(_wcsicoll(l.Get(), r.Get())) == -Sign(_wcsicoll(r.Get(), l.Get())));
    auto nl = Terminated<char>(std::string(left.begin(), left.end()));
    auto nr = Terminated<char>(std::string(right.begin(), right.end()));
    Require(Sign(lstrcmpiA(nl.Get(), nr.Get())) == -Sign(lstrcmpiA(nr.Get(), nl.Get())));
    Require(Sign(lstrcmpA(nl.Get(), nr.Get())) == -Sign(lstrcmpA(nr.Get(), nl.Get())));
}

void CaseIsMappedOnce(const Wide& text)
{
    Wide upper = text;
    Require(CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size())) == text.size());
    Wide again = upper;
    CharUpperBuffW(again.data(), static_cast<DWORD>(again.size()));
    Require(again == upper);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Input input(data, size);
    DWORD flags = 0;
    const unsigned chosen = input.Take<unsigned char>();
    for (std::size_t i = 0; i < std::size(kFlags); ++i)
        if (chosen & (1u << i))
            flags |= kFlags[i];
    const Wide a = input.Counted<WCHAR>();
    const Wide b = input.Counted<WCHAR>();
    const Wide c = input.Rest<WCHAR>();

    const int ab = Order(a, b, flags);
    const int bc = Order(b, c, flags);
    const int ac = Order(a, c, flags);
    Require(Order(b, a, flags) == -ab && Order(a, a, flags) == 0 && Order(c, a, flags) == -ac);
    if (ab == bc || bc == 0)
        Require(ac == ab);
    if (ab == 0)
        Require(ac == bc);
    TerminatedIsTheSame(a, b, ab, flags);
    CaseIsMappedOnce(c);
    return 0;
}
