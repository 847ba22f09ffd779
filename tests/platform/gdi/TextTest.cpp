// TextTest.cpp: how large texts are.
#include "support/Rows.h"

#include <array>
#include <cstdlib>

using namespace kelgen::test;

namespace {

/// A memory context with a font.
class TextContext
{
public:
    TextContext(int height, int weight) : m_context(CreateCompatibleDC(nullptr))
    {
        m_font = CreateFontA(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, "MS Shell Dlg");
        m_former = SelectObject(m_context, m_font);
    }
    ~TextContext()
    {
        SelectObject(m_context, m_former);
        DeleteObject(m_font);
        DeleteDC(m_context);
    }
    TextContext(const TextContext&) = delete;
    TextContext& operator=(const TextContext&) = delete;

    operator HDC() const { return m_context; }
    SIZE Extent(const std::string& text) const
    {
        SIZE size{};
        EXPECT_TRUE(GetTextExtentPoint32A(m_context, text.data(), static_cast<int>(text.size()), &size));
        return size;
    }

private:
    HDC m_context;
    HFONT m_font;
    HGDIOBJ m_former;
};

struct FontRow
{
    const char* name;
    int height;
    int weight;
    std::array<LONG, 6> metrics;  // height, ascent, descent, internal leading, average and largest width
    int pangram;                  // its width
};

class FontSize : public testing::TestWithParam<FontRow>
{};

struct Laid
{
    const char* name;
    const char* text;
    int room;
    UINT format;
    int height;
    std::array<LONG, 4> area;
};

class LaidText : public testing::TestWithParam<Laid>
{};

}  // namespace

TEST_P(FontSize, HasTheFixedNumbers)
{
    const TextContext context(GetParam().height, GetParam().weight);
    TEXTMETRICA metrics{};
    ASSERT_TRUE(GetTextMetricsA(context, &metrics));
    EXPECT_EQ(GetParam().metrics, (std::array{metrics.tmHeight, metrics.tmAscent, metrics.tmDescent, metrics.tmInternalLeading,
                                              metrics.tmAveCharWidth, metrics.tmMaxCharWidth}));
    const SIZE size = context.Extent("The quick brown fox jumps over the lazy dog 0123");
    // Hinting of scaled outlines may round a character otherwise; at the dialogs' size it does not.
    const int tolerance = std::abs(GetParam().height) == 11 ? 1 : GetParam().pangram / 50;
    EXPECT_NEAR(GetParam().pangram, size.cx, tolerance);
    EXPECT_EQ(GetParam().metrics[0], size.cy);
    WCHAR first = 'A';
    SIZE wide{};
    int narrow = 0;
    EXPECT_TRUE(GetTextExtentPoint32W(context, &first, 1, &wide));
    EXPECT_TRUE(GetCharWidth32A(context, 'A', 'A', &narrow));
    EXPECT_EQ(wide.cx, narrow);
}

INSTANTIATE_TEST_SUITE_P(, FontSize,
                         testing::Values(FontRow{"Dialog", -11, FW_NORMAL, {13, 10, 3, 2, 6, 31}, 289},
                                         FontRow{"Bold", -11, FW_BOLD, {13, 10, 3, 2, 6, 33}, 317},
                                         FontRow{"Small", -8, FW_NORMAL, {9, 7, 2, 1, 4, 23}, 207},
                                         FontRow{"Large", -16, FW_NORMAL, {19, 15, 4, 3, 8, 45}, 403},
                                         FontRow{"LargeBold", -27, FW_BOLD, {31, 25, 6, 4, 15, 82}, 763},
                                         FontRow{"ByLine", 24, FW_NORMAL, {24, 19, 5, 3, 11, 59}, 532},
                                         FontRow{"Usual", 0, FW_NORMAL, {16, 13, 3, 2, 7, 39}, 356}),
                         RowName);

TEST(Text, CharactersOfTheDialogFontAreAsWideAsOnAnyMachine)
{
    const TextContext context(-11, FW_NORMAL);
    std::array<int, 95> widths{};
    ASSERT_TRUE(GetCharWidth32A(context, ' ', '~', widths.data()));
    std::string digits;
    for (const int width : widths)
        digits += "0123456789ab"[width];
    EXPECT_EQ("44597a93446944447777777777449996b8888769833769897987788b878444966776774773363b77775647797767479", digits);
}

TEST_P(LaidText, HasTheAreaThatItNeeds)
{
    const TextContext context(-11, FW_NORMAL);
    RECT area{10, 20, 10 + GetParam().room, 60};
    EXPECT_EQ(GetParam().height, DrawTextA(context, GetParam().text, -1, &area, GetParam().format | DT_CALCRECT));
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(GetParam().area[i], (std::array{area.left, area.top, area.right, area.bottom})[i], 1) << "side " << i;
    RECT drawn{10, 20, 10 + GetParam().room, 60};
    EXPECT_EQ(GetParam().height, DrawTextA(context, GetParam().text, -1, &drawn, GetParam().format));
}

INSTANTIATE_TEST_SUITE_P(
    , LaidText,
    testing::Values(Laid{"OneLine", "Hello world", 200, 0, 13, {10, 20, 73, 33}},
                    Laid{"Broken", "Hello world", 30, DT_WORDBREAK, 26, {10, 20, 41, 46}},
                    Laid{"Lines", "Hello\nworld\r\nagain", 200, 0, 39, {10, 20, 41, 59}},
                    Laid{"SingleLine", "Hello\nworld", 200, DT_SINGLELINE, 13, {10, 20, 76, 33}},
                    Laid{"Mnemonic", "&File && more", 200, 0, 13, {10, 20, 76, 33}},
                    Laid{"NoPrefix", "&File && more", 200, DT_NOPREFIX, 13, {10, 20, 94, 33}},
                    Laid{"Tabulator", "a\tb", 200, DT_EXPANDTABS, 13, {10, 20, 65, 33}},
                    Laid{"ManyWords", "one two dialogues", 60, DT_WORDBREAK, 26, {10, 20, 64, 46}},
                    Laid{"Ellipsis", "one two three four five", 60, DT_SINGLELINE | DT_END_ELLIPSIS, 13, {10, 20, 67, 33}},
                    Laid{"Middle", "center", 200, DT_CENTER | DT_VCENTER | DT_SINGLELINE, 27, {10, 20, 46, 47}},
                    Laid{"Bottom", "right", 200, DT_RIGHT | DT_BOTTOM | DT_SINGLELINE, 40, {10, 20, 36, 60}},
                    Laid{"Empty", "", 200, 0, 13, {10, 20, 10, 20}}, Laid{"EndsWithABreak", "a\n", 200, 0, 13, {10, 20, 17, 33}},
                    Laid{"LongWord", "longwordwithoutblanks x", 40, DT_WORDBREAK, 26, {10, 20, 139, 46}},
                    Laid{"BlanksAtTheEnd", "trail   ", 200, DT_WORDBREAK, 13, {10, 20, 44, 33}},
                    Laid{"BlanksAtTheBreak", "one  dialogues", 60, DT_WORDBREAK, 26, {10, 20, 64, 46}}),
    RowName);

TEST(Text, TellsWhatFitsAndMovesThePoint)
{
    const TextContext context(-11, FW_NORMAL);
    int fits = 0;
    std::array<int, 5> ends{};
    SIZE size{};
    EXPECT_TRUE(GetTextExtentExPointA(context, "Hello", 5, context.Extent("Hel").cx, &fits, ends.data(), &size));
    EXPECT_EQ(3, fits);
    EXPECT_EQ(context.Extent("He").cx, ends[1]);
    EXPECT_EQ(context.Extent("Hello").cx, size.cx);
    SetTextAlign(context, TA_UPDATECP);
    MoveToEx(context, 7, 7, nullptr);
    EXPECT_TRUE(TextOutA(context, 0, 0, "abc", 3));
    POINT point{};
    EXPECT_TRUE(GetCurrentPositionEx(context, &point));
    EXPECT_EQ(7 + context.Extent("abc").cx, point.x);
    EXPECT_TRUE(TextOutA(context, 0, 0, "", 0));
    EXPECT_FALSE(GetTextExtentPoint32A(nullptr, "a", 1, &size));
}
