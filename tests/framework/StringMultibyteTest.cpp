// StringMultibyteTest.cpp: CString in a page whose characters may have two bytes, the second of which may look like a letter or '\'.
#include <kelgen/framework/base/String.h>

namespace {

/// Another multibyte code page while it lives.
class MultibytePage
{
public:
    explicit MultibytePage(int page) : m_before(_getmbcp()) { EXPECT_EQ(0, _setmbcp(page)); }
    ~MultibytePage() { _setmbcp(m_before); }
    MultibytePage(MultibytePage&&) = delete;

private:
    int m_before;
};

// The second byte of this character is '\'.
#define SO "\x83\x5c"

}  // namespace

TEST(StringMultibyte, SecondHalvesAreNeverFound)
{
    const MultibytePage page(932);
    const CString path("a" SO "\\b" SO);
    EXPECT_EQ(3, path.Find('\\'));
    EXPECT_EQ(3, path.Find("\\"));
    EXPECT_EQ(3, path.ReverseFind('\\'));
    EXPECT_EQ(3, path.FindOneOf("/\\"));
    EXPECT_EQ("a" SO, path.SpanExcluding("\\"));
    CString changed = path;
    EXPECT_EQ(1, changed.Replace('\\', '/'));
    EXPECT_EQ("a" SO "/b" SO, changed);
    EXPECT_EQ(1, changed.Replace("/", "\\\\"));
    EXPECT_EQ(2, changed.Remove('\\'));
    EXPECT_EQ("a" SO "b" SO, changed);
}

TEST(StringMultibyte, CharactersStayWhole)
{
    const MultibytePage page(932);
    EXPECT_EQ("x" SO, CString("x" SO "\\\\").TrimRight('\\'));
    EXPECT_EQ("x" SO, CString("x" SO).TrimRight("\\"));
    EXPECT_EQ(SO "x", CString("\\" SO "x").TrimLeft("\\"));
    EXPECT_EQ("x", CString("\x81\x40 x \x81\x40").Trim()) << "the wide blank is white space";
    EXPECT_EQ("z" SO "a", CString("a" SO "z").MakeReverse());
    EXPECT_EQ("A\x83\x61", CString("a\x83\x61").MakeUpper());
    int start = 0;
    EXPECT_EQ("a" SO, CString("a" SO "\\b").Tokenize("\\", start));
}

TEST(StringMultibyte, CutCharacterAtTheEndIsOneByte)
{
    const MultibytePage page(932);
    CString cut("ab\x83");
    cut.TrimLeft();
    cut.TrimRight();
    EXPECT_EQ(0, cut.Remove('x'));
    EXPECT_EQ(1, cut.Remove('b'));
    EXPECT_EQ(2, cut.GetLength());
    EXPECT_EQ(-1, cut.Find('x'));
}

TEST(StringMultibyte, SingleBytePageHasOnlyWhatTheRuntimeKnows)
{
    const MultibytePage page(1252);
    EXPECT_EQ("x", CString("\xa0x\xa0").Trim()) << "the no-break space is white space";
    EXPECT_EQ("\xe9", CString("\xe9").MakeUpper()) << "case follows the locale";
    EXPECT_EQ(2, CString("a" SO).Find('\\'));
    EXPECT_EQ("\\\x83"
              "a",
              CString("a" SO).MakeReverse());
}
