// WStrFormatTest.cpp: the room that formats reserve, the texts they give, and formats that nobody should write.
#include <kelgen/text/WStr.h>

#include <kelgen/platform/support/WideFormat.h>

#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Rows.h"
#include "support/Target.h"
#include "text/Units.h"

#include <climits>
#include <cmath>
#include <limits>

using kelgen::test::Random;
using kelgen::test::Thrown;
using kelgen::test::Units;

namespace {

constexpr int kBase = 600;

/// What @p format adds to the room, in units: a first item beyond the size classes makes the capacity show it. Half of that item's
/// room stays free, so that no text needs more than what is reserved.
template <class... Arguments>
int Reserved(const std::u16string& format, Arguments... arguments)
{
    CWStr text;
    text.Format(Units(u"%300.300d" + format), 0, arguments...);
    return text.GetAllocLength() - kBase;
}

template <class... Arguments>
std::u16string Formatted(const std::u16string& format, Arguments... arguments)
{
    CWStr text;
    text.Format(Units(format), arguments...);
    return Units(text);
}

int LengthOf(const unsigned short* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = kelgen::FormatWide(nullptr, 0, kelgen::AsWide(format), arguments);
    va_end(arguments);
    return length;
}

constexpr const unsigned short* kNoText = nullptr;

}  // namespace

TEST(WStrFormat, RoomIsReservedByTheSum)
{
    EXPECT_EQ(4 + 3 + 32, Reserved(u"ab%d", 7)) << "a literal counts the rest of the format";
    EXPECT_EQ(32 + 3 + 2 + 1, Reserved(u"%dxyz", 7));
    for (int length = 10; length < 50; ++length)
        EXPECT_EQ(length * (length + 1) / 2 + 2 * length + 32, Reserved(std::u16string(static_cast<std::size_t>(length), u'x') + u"%d", 7));
    EXPECT_EQ(4 + 2 + 1, Reserved(u"a%%b")) << "counted at the second";
    EXPECT_EQ(2, Reserved(u"a%"));
    EXPECT_EQ(8 + 5, Reserved(u"%c%C%hc%lc%5c", 'a', 'b', 'c', 'd', 'e'));
    EXPECT_EQ(6, Reserved(u"%s", kNoText));
    EXPECT_EQ(2, Reserved(u"%s%hs", u""_w, ""));
    EXPECT_EQ(25, Reserved(u"%s%ls%lS%hs%hS", u"hello"_w, u"hello"_w, u"hello"_w, "hello", "hello"));
    EXPECT_EQ(3, Reserved(u"%S", "hello")) << "pairs of bytes";
    EXPECT_EQ(5 + 2, Reserved(u"%5.2s%.2s", u"hello"_w, u"hello"_w));
    EXPECT_EQ(5, Reserved(u"%.0s", u"hello"_w)) << "cuts nothing";
    EXPECT_EQ(0, Reserved(u"%.*s", -1, u"hello"_w)) << "cuts all";
    EXPECT_EQ(160, Reserved(u"%i%u%x%X%o", 1, 2, 3, 4, 5));
    EXPECT_EQ(50 + 40 + 44, Reserved(u"%30.20d%*d%.*d", 1, 40, 1, 44, 1));
    EXPECT_EQ(40, Reserved(u"%*40d", 0)) << "reads the digits";
    EXPECT_EQ(32 + 4, Reserved(u"%I64x%s", 1LL << 40, u"text"_w));
    EXPECT_EQ(2 + 32, Reserved(u"%#x", 1));
    EXPECT_EQ(32 + 4, Reserved(u"%p%s", kNoText, u"text"_w));
    EXPECT_EQ(3 * 128 + 150, Reserved(u"%e%g%G%100.50e", 1.0, 1.0, 1.0, 1.0));
    EXPECT_EQ(4 + 8, Reserved(u"%.2f", -12.5)) << "six digits more";
    EXPECT_EQ(20, Reserved(u"%*.*f", -20, -10, 12.5));
    EXPECT_EQ(8, Reserved(u"%f", std::numeric_limits<double>::infinity()));
    EXPECT_EQ(0, Reserved(u"%y%k"));
    EXPECT_EQ(4, Reserved(u"%E%s", 1.0, u"text"_w)) << "counts nothing";
    EXPECT_EQ(4 + 3 + 4, Reserved(u"%lld|%s", 1LL, u"text"_w)) << "literals";
    EXPECT_EQ(4 + 3 + 4, Reserved(u"%w%%d%s", u"text"_w));
    EXPECT_EQ(32 + 4, Reserved(u"%w%d%s", 1, u"text"_w)) << "a conversion cut short takes nothing";
}

TEST(WStrFormat, RoomOfFixedNumbersIsThatOfTheirText)
{
    Random random;
    for (int i = 0; i < 2000; ++i) {
        const int precision = random.Between(-8, 30);
        const int width = random.Between(-60, 60);
        // Around powers of ten rounding adds a digit.
        double value = std::pow(10.0, random.Between(-3, 20));
        if (i % 2)
            value -= std::pow(10.0, -random.Between(0, 12));
        if (i % 3)
            value *= random.Between(-1000, 1000) / 100.0;
        ASSERT_EQ(LengthOf(u"%*.*f"_w, width, precision + 6, value), Reserved(u"%*.*f", width, precision, value))
            << value << " width " << width << " precision " << precision;
    }
}

TEST(WStrFormat, TextFollowsTheRuntime)
{
    EXPECT_EQ(u"-5 text 0000beef  3.14%", Formatted(u"%d %s %08x %5.2f%%", -5, u"text"_w, 0xBEEF, 3.14159));
    EXPECT_EQ(u"a\x3042|b|c|d|\x3042|e", Formatted(u"%s|%S|%hs|%lS|%c|%C", u"a\x3042"_w, "b", "c", u"d"_w, 0x3042, 'e'));
    EXPECT_EQ(u"(null)(null)", Formatted(u"%s%S", kNoText, nullptr));
    EXPECT_EQ(u"-1099511627776 10000000000", Formatted(u"%I64d %I64x", -1LL << 40, 1LL << 40));
    EXPECT_EQ(u"ab", Formatted(u"ab%ccd", 0));
    EXPECT_EQ(u"", Formatted(u""));
    EXPECT_EQ(u"a text|", Formatted(u"%.*s|", -1, u"a text"_w));
    EXPECT_EQ(u"y5", Formatted(u"%y%d", 5));
    EXPECT_EQ(u"71.500000E+000 1099511627776 3 w 0x1.0000000000000p+0 end",
              Formatted(u"%d%E %lld %I32d %ws %a %s", 7, 1.5, 1LL << 40, 3, u"w"_w, 1.0, u"end"_w));

    CWStr text(u"old"_w);
    text.Format(kNoText);
    EXPECT_EQ(u"", Units(text));
    text = u"old"_w;
    text.Format(60000u);
    EXPECT_EQ(u"", Units(text)) << "a missing resource";
    text.Format(40, 5, u"six"_w);
    EXPECT_EQ(u"5 of six", Units(text));
}

TEST(WStrFormat, TextBeyondTheRoomIsCutToTheBlock)
{
    EXPECT_EQ(u"", Formatted(u"%E", 1.5)) << "no block is reserved";
    EXPECT_EQ(u"+1.50000", Formatted(u"%+f", 1.5)) << "signs are not counted";
    EXPECT_EQ(u"5" + std::u16string(63, u' '), Formatted(u"%*d|", -70, 5)) << "negative widths are not counted";
    EXPECT_EQ(std::u16string(64, u'x'), Formatted(u"%S", std::string(80, 'x').c_str())) << "half of the bytes are counted";
    CWStr text;
    text.GetBuffer(30);
    text.Format(u"%E"_w, 1.5);
    EXPECT_EQ(u"1.500000E+000", Units(text)) << "the block that was there holds it";
}

#ifdef KELGEN_CHECKED
TEST(WStrFormat, CheckedBuildsTellWhatIsCut)
{
    if (!kelgen::test::isOurPlatform)
        GTEST_SKIP() << "the debugger's output is seen by debuggers alone";
    const std::string told = "kelgen: CWStr: the format ";
    for (const auto& [format, message] : kelgen::test::Table<std::u16string, std::string>{
             {u"%E", told + "\"%E\" makes 13 units, of which the first 0 are kept\n"},
             {u"%+f", told + "\"%+f\" makes 9 units, of which the first 8 are kept\n"},
             {u"%f", ""},
         }) {
        testing::internal::CaptureStderr();
        CWStr text;
        text.Format(reinterpret_cast<const unsigned short*>(format.c_str()), 1.5);
        EXPECT_EQ(message, testing::internal::GetCapturedStderr());
    }
}
#endif

TEST(WStrFormat, PrecisionReadsNoFurther)
{
    // No terminator behind them: the sanitizer watches.
    const auto wide = std::make_unique<unsigned short[]>(3);
    const auto narrow = std::make_unique<char[]>(3);
    for (int i = 0; i < 3; ++i)
        wide[i] = static_cast<unsigned char>(narrow[i] = static_cast<char>('a' + i));
    EXPECT_EQ(u"abc|abc|abc", Formatted(u"%.3s|%.3S|%.*hs", wide.get(), narrow.get(), 3, narrow.get()));
}

TEST(WStrFormat, BlockIsReusedUnsharedOrGrown)
{
    CWStr text(u"x"_w);
    text.GetBuffer(300);
    const CWStr copy(text);
    text.Format(u"%d"_w, 5);
    EXPECT_EQ(u"x", Units(copy));
    EXPECT_EQ(64, text.GetAllocLength());

    text.GetBuffer(300);
    const unsigned short* const block = text;
    text.Format(u"%d"_w, 6);
    EXPECT_EQ(block, static_cast<const unsigned short*>(text));

    const unsigned short* const locked = text.LockBuffer();
    text.Format(u"%s!"_w, static_cast<const unsigned short*>(text));
    EXPECT_EQ(locked, static_cast<const unsigned short*>(text));
    EXPECT_EQ(u"6!", Units(text));
    text.UnlockBuffer();
}

TEST(WStrFormat, FormatAndArgumentsMayBeTheStringItself)
{
    CWStr text(u"%s and %s"_w);
    text.Format(text, u"one"_w, static_cast<const unsigned short*>(text) + 3);
    EXPECT_EQ(u"one and and %s", Units(text));
    text.Format(u"[%s]%400d"_w, static_cast<const unsigned short*>(text), 1);
    EXPECT_EQ(u"[one and and %s]", Units(text.Left(16)));
    EXPECT_EQ(416, text.GetLength());

    const std::u16string longFormat(70000, u'x');
    EXPECT_EQ(longFormat + u"1", Formatted(longFormat + u"%d", 1)) << "no block holds the sum";
}

TEST(WStrFormat, HugeNumbersAreRefusedAndLeaveTheStringUsable)
{
    CWStr text(u"old"_w);
    for (const char16_t* format :
         {u"%2147483647d", u"%99999999999999999999d", u"%.2147483647d", u"%2147483647.2147483647d", u"%*.*f", u"%*d", u"%-*dx"}) {
        EXPECT_EQ("CMemoryException", Thrown([&] { text.Format(Units(format), INT_MAX, INT_MAX, 1.0); }));
        text.Format(u"%d"_w, 1);
        EXPECT_EQ(u"1", Units(text));
    }
}

TEST(WStrFormat, DigitsBeyondTheRuntimesBuffersAreExact)
{
    const std::u16string zeros(100000 - 1, u'0');
    EXPECT_EQ(zeros + u"5", Formatted(u"%.100000d", 5));
    EXPECT_EQ(u"0.5" + zeros, Formatted(u"%.*f", 100000, 0.5));
    EXPECT_EQ(u"-5.0" + zeros + u"e-001", Formatted(u"%100020.100000e", -0.5).substr(12));
    EXPECT_EQ(std::u16string(200000, u' ') + u"5", Formatted(u"%*d", 200001, 5));
}

TEST(WStrFormatMessage, PutsArgumentsInByNumberAndFailsByTheMemoryException)
{
    CWStr text(u"old"_w);
    text.FormatMessageA(u"%2 %1!05d! %3%%"_w, 42, u"is"_w, static_cast<const unsigned short*>(text));
    EXPECT_EQ(u"is 00042 old%", Units(text));
    text.FormatMessageA(41, 5, u"six"_w);
    EXPECT_EQ(u"six and 5", Units(text));
    EXPECT_EQ("CMemoryException", Thrown([&] { text.FormatMessageA(u""_w); })) << "an empty result";
    EXPECT_EQ("CMemoryException", Thrown([&] { text.FormatMessageA(u"%"_w); })) << "a bad format";
    EXPECT_EQ("CMemoryException", Thrown([&] { text.FormatMessageA(60000u); })) << "a missing resource";
    EXPECT_EQ(u"six and 5", Units(text));
}

TEST(WStrSystemString, HoldsExactlyTheUnits)
{
    const CWStr text(u"a\0b"_w, 3);
    BSTR string = text.AllocSysString();
    EXPECT_EQ(3u, SysStringLen(string));
    EXPECT_EQ(0, std::memcmp(string, u"a\0b", 8));

    const CWStr other(u"longer text"_w);
    const BSTR set = other.SetSysString(&string);
    EXPECT_EQ(string, set);
    EXPECT_EQ(11u, SysStringLen(string));
    EXPECT_EQ(u"longer text", Units(CWStr(reinterpret_cast<const unsigned short*>(string), 11)));
    SysFreeString(string);

    string = CWStr().AllocSysString();
    EXPECT_NE(nullptr, string) << "empty is not null";
    SysFreeString(string);
}
