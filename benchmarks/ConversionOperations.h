// ConversionOperations.h: what is timed of code pages, and the C library's converter, which checks every result.
#pragma once

#include "Bench.h"

#include <iconv.h>

namespace bench {

struct IconvConv
{
    iconv_t out, in;
    explicit IconvConv(const char* page) : out(iconv_open(page, "UTF-16LE")), in(iconv_open("UTF-16LE", page))
    {
        require(out != iconv_t(-1) && in != iconv_t(-1), "iconv_open");
    }
    ~IconvConv()
    {
        iconv_close(out);
        iconv_close(in);
    }
    static std::size_t run(iconv_t cd, const void* from, std::size_t bytes, char* to, std::size_t room)
    {
        char *p = const_cast<char*>(static_cast<const char*>(from)), *start = to;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        require(iconv(cd, &p, &bytes, &to, &room) != std::size_t(-1), "iconv");
        return to - start;
    }
    std::size_t encode(std::u16string_view s, char* to, std::size_t room) { return run(out, s.data(), s.size() * 2, to, room); }
    std::size_t decode(std::string_view s, char16_t* to, std::size_t room)
    {
        return run(in, s.data(), s.size(), reinterpret_cast<char*>(to), room * 2) / 2;
    }
};

inline std::u16string western(std::size_t n, bool mixed)  // mixed: about one unit in eight is U+00C0..U+00FF
{
    std::u16string s = letters(n);
    std::mt19937 rng(5);
    for (char16_t& c : s)
        if (mixed && rng() % 8 == 0)
            c = char16_t(0xC0 + rng() % 64);
    return s;
}

inline std::string japanese(std::size_t bytes)  // Shift-JIS, cut at a character
{
    static const char16_t para[] = u"吾輩は猫である。名前はまだ無い。どこで生れたかとんと見当がつかぬ。"
                                   u"何でも薄暗いじめじめした所でニャーニャー泣いていた事だけは記憶している。"
                                   u"しかもあとで聞くとそれは書生という人間中で一番獰悪な種族であったそうだ。(Chapter 1, 1905)\r\n";
    char one[1024];
    const std::size_t n = IconvConv("CP932").encode(para, one, sizeof one);
    std::string s;
    while (s.size() < bytes)
        s.append(one, n);
    std::size_t at = 0;
    for (;;) {
        const unsigned char c = s[at];
        const std::size_t step = (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC) ? 2 : 1;
        if (at + step > bytes)
            break;
        at += step;
        if (at == s.size())
            break;
    }
    s.resize(at);
    return s;
}

template <class Conv>
void encode(State& st, const char* page, const std::u16string& from)
{
    Conv c(page);
    std::string to(from.size() * 3 + 16, '\0');
    std::u16string again(from.size() + 16, u'\0');
    const std::size_t n = c.encode(from, to.data(), to.size());
    again.resize(IconvConv(page).decode({to.data(), n}, again.data(), again.size()));
    require(again == from, "encode");
    for (auto _ : st) {
        DoNotOptimize(c.encode(from, to.data(), to.size()));
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * from.size());
}

template <class Conv>
void decode(State& st, const char* page, const std::string& from)
{
    Conv c(page);
    std::u16string to(from.size() + 16, u'\0'), want(to);
    const std::size_t n = c.decode(from, to.data(), to.size());
    want.resize(IconvConv(page).decode(from, want.data(), want.size()));
    require(to.substr(0, n) == want, "decode");
    for (auto _ : st) {
        DoNotOptimize(c.decode(from, to.data(), to.size()));
        benchmark::ClobberMemory();
    }
    st.SetItemsProcessed(st.iterations() * from.size());
}

inline std::string narrow(const std::u16string& s)
{
    return std::string(s.begin(), s.end());  // letters and U+00C0..U+00FF: the same bytes in CP1252
}

template <class Conv>
void Cp1252Encode(State& st)
{
    encode<Conv>(st, "windows-1252", western(st.range(0), st.range(1)));
}
template <class Conv>
void Cp1252Decode(State& st)
{
    decode<Conv>(st, "windows-1252", narrow(western(st.range(0), st.range(1))));
}
template <class Conv>
void ShiftJisDecode(State& st)
{
    // the same page under the name each peer knows
    decode<Conv>(st, std::is_same_v<Conv, IconvConv> ? "CP932" : "windows-31j", japanese(st.range(0)));
}
template <class Conv>
void ShiftJisEncode(State& st)
{
    const std::string sj = japanese(st.range(0));
    std::u16string u(sj.size(), u'\0');
    u.resize(IconvConv("CP932").decode(sj, u.data(), u.size()));
    encode<Conv>(st, std::is_same_v<Conv, IconvConv> ? "CP932" : "windows-31j", u);
}

// sizes in characters; the second argument: 0 ASCII, 1 mixed
#define WESTERN ->ArgNames({"", "mixed"})->ArgsProduct({{64, 4096, 1 << 20}, {0, 1}})
#define JAPANESE ->Arg(64)->Arg(1 << 20)

}  // namespace bench
