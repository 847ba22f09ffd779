// FormatOperations.h: '%d %s %08x %5.2f' into a new string.
#pragma once

#include "Bench.h"

namespace bench {

inline int formatNumber = 12345;
inline unsigned formatHex = 0xBEEF;
inline double formatReal = 3.14159;
inline const char* narrowName = "benchmark";
inline const char16_t* wideName = u"benchmark";
inline const wchar_t* wcharName = L"benchmark";

template <class F>
void RunFormat(State& st, F format)
{
    const auto first = format();
    const std::u16string want = u"12345 benchmark 0000beef  3.14";
    require(first == text<std::remove_const_t<decltype(first)>>(want), "format");
    for (auto _ : st) {
        benchmark::ClobberMemory();  // the arguments are globals: they are read anew
        auto s = format();
        DoNotOptimize(s);
    }
}

}  // namespace bench
