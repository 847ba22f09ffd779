// PrivateProfileTest.cpp: reading, writing and listing of initialization files.
#include "support/Failures.h"
#include "support/Scratch.h"

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

const std::string kFile =
    "; head\r\npre=0\r\n"
    "[a]\r\nk=v\r\nempty=\r\nblank=   \r\nnoeq\r\n;c=1\r\n ; d=2\r\n"
    "q='x'\r\nq2=\"x'\r\nq3=\"\"\r\nq4=\"\r\nq5=\" a \"\r\nq6=\"a\" b\r\n"
    "  ind  =  z  \r\n=nokey\r\nk=second\r\ntab\t=\ty\t\r\ncom=v ; c\r\n"
    "[ sp ace ]\r\nk=1\r\n[b] trailing\nk=2\n[unclosed\nx=3\n  [ind]\r\nk=4\r\n[]\r\nk=5\r\n[a]\r\nz=late\r\n[x]y]\r\nk=6";

/// What a call that fills a buffer with a list returns, and the list; '|' for a terminator.
template <class Call>
std::pair<DWORD, std::string> ListOf(DWORD size, Call call)
{
    std::string buffer(400, '#');
    const DWORD length = call(buffer.data(), size);
    std::string list = buffer.substr(0, length);
    for (char& unit : list)
        unit = unit ? unit : '|';
    return {length, list};
}

}  // namespace

struct ValueRow
{
    const char* name;
    const char* section;
    const char* key;
    const char* fallback;
    std::string value;
};

TEST(ProfileValue, IsReadWithoutBlanksAndQuotes)
{
    const ValueRow rows[] = {
        {"First", "a", "k", "-", "v"},
        {"OtherCase", "A", "K", "-", "v"},
        {"BlanksInNames", " a ", " k ", "-", "v"},
        {"Empty", "a", "empty", "-", ""},
        {"Blank", "a", "blank", "-", ""},
        {"NoEqualSign", "a", "noeq", "-", "-"},
        {"Comment", "a", ";c", "-", "1"},
        {"SingleQuotes", "a", "q", "-", "x"},
        {"QuotesDiffer", "a", "q2", "-", "\"x'"},
        {"OnlyQuotes", "a", "q3", "-", ""},
        {"OneQuote", "a", "q4", "-", "\""},
        {"BlanksInQuotes", "a", "q5", "-", " a "},
        {"QuotesInside", "a", "q6", "-", "\"a\" b"},
        {"BlanksAround", "a", "ind", "-", "z"},
        {"EmptyKey", "a", "", "-", "nokey"},
        {"Tabs", "a", "tab", "-", "y"},
        {"SemicolonInValue", "a", "com", "-", "v ; c"},
        {"SectionWithBlanks", "sp ace", "k", "-", "1"},
        {"TextAfterBracket", "b", "k", "-", "2"},
        {"UnclosedBracket", "unclosed", "x", "-", "-"},
        {"BelowUnclosed", "b", "x", "-", "3"},
        {"IndentedSection", "ind", "k", "-", "4"},
        {"NamelessSection", "", "k", "-", "-"},
        {"BeforeTheFirstSection", "", "pre", "-", "0"},
        {"BlankSection", " ", "pre", "-", "0"},
        {"SectionAgain", "a", "z", "-", "-"},
        {"LastBracketCounts", "x]y", "k", "-", "6"},
        {"DefaultTrimmed", "a", "none", "  l t \t ", "  l t \t"},
        {"DefaultUnquoted", "a", "none", "\"quoted\"", "quoted"},
        {"DefaultNull", "a", "none", nullptr, ""},
        {"SectionMissing", "none", nullptr, "-", "-"},
    };
    for (const ValueRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string file = ScratchFile("test.ini");
        WriteBytes(file, kFile);
        char buffer[50] = "####";
        SetLastError(777);
        const DWORD length = GetPrivateProfileStringA(row.section, row.key, row.fallback, buffer, sizeof buffer, file.c_str());
        EXPECT_EQ(row.value, buffer);
        EXPECT_EQ(row.value.size(), length);
        EXPECT_EQ(0u, GetLastError());
    }
}

TEST(Profile, ListsSectionsKeysAndEntries)
{
    const std::string file = ScratchFile("test.ini");
    WriteBytes(file, kFile);
    const auto strings = [&](const char* section) {
        return ListOf(400,
                      [&](LPSTR buffer, DWORD size) { return GetPrivateProfileStringA(section, nullptr, "", buffer, size, file.c_str()); })
            .second;
    };
    EXPECT_EQ("a|sp ace|b|ind|a|x]y|", strings(nullptr));
    EXPECT_EQ("k|empty|blank|q|q2|q3|q4|q5|q6|ind||k|tab|com|", strings("a"));
    EXPECT_EQ("pre|", strings(""));
    const auto entriesOf = [&](const char* section) {
        return ListOf(400, [&](LPSTR buffer, DWORD size) { return GetPrivateProfileSectionA(section, buffer, size, file.c_str()); }).second;
    };
    const std::string entries = entriesOf("a");
    EXPECT_EQ("k=v|empty=|blank=|noeq|q='x'|q2=\"x'|q3=\"\"|q4=\"|q5=\" a \"|q6=\"a\" b|ind=z|=nokey|k=second|tab=y|com=v ; c|", entries);
    EXPECT_EQ("pre=0|", entriesOf(""));
    EXPECT_EQ("", entriesOf(" "));
}

TEST(Profile, LinesEndWithReturnsAndFeeds)
{
    const std::string file = ScratchFile("test.ini");
    WriteBytes(file, "[s]\rx=4\r\ny=5\rz=6\n[t]\r\r\nu=1\r");
    const auto list = [&](const char* section) {
        return ListOf(50,
                      [&](LPSTR buffer, DWORD size) { return GetPrivateProfileStringA(section, nullptr, "", buffer, size, file.c_str()); })
            .second;
    };
    EXPECT_EQ("s|t|", list(nullptr));
    EXPECT_EQ("x|y|z|", list("s"));
    EXPECT_EQ(5u, GetPrivateProfileIntA("s", "y", 0, file.c_str()));
    EXPECT_TRUE(WritePrivateProfileStringA("t", "v", "2", file.c_str()));
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str());
    EXPECT_EQ("u|v|", list("t"));
    EXPECT_EQ(1u, GetPrivateProfileIntA("t", "u", 0, file.c_str()));
}

TEST(Profile, ListsAreCutToTwoLessThanTheSize)
{
    const std::string file = ScratchFile("test.ini");
    WriteBytes(file, "[b]\r\nk=2\r\nl=3\r\n[c]\r\n");
    using Cut = std::pair<DWORD, std::string>;
    const auto keys = [&](DWORD size) {
        return ListOf(size,
                      [&](LPSTR buffer, DWORD room) { return GetPrivateProfileStringA("b", nullptr, "", buffer, room, file.c_str()); });
    };
    const auto names = [&](DWORD size) {
        return ListOf(size, [&](LPSTR buffer, DWORD room) { return GetPrivateProfileSectionNamesA(buffer, room, file.c_str()); });
    };
    EXPECT_EQ(Cut(0, ""), keys(0));
    EXPECT_EQ(Cut(0, ""), keys(1));
    EXPECT_EQ(Cut(1, "k"), keys(3));
    EXPECT_EQ(Cut(3, "k|l"), keys(5)) << "an exact fit counts as cut";
    EXPECT_EQ(Cut(4, "k|l|"), keys(6));
    EXPECT_EQ(Cut(2, "b|"), names(4));
    EXPECT_EQ(Cut(4, "b|c|"), names(40));

    char buffer[20];
    EXPECT_EQ(3u, GetPrivateProfileSectionA("b", buffer, 5, file.c_str()));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER), GetLastError());
    EXPECT_EQ("k=2"s, buffer);
    EXPECT_EQ(1u, GetPrivateProfileStringA("b", "k", "", buffer, 2, file.c_str()));
    EXPECT_EQ(2u, GetPrivateProfileStringA("b", "none", "fallback", buffer, 3, file.c_str()));
    EXPECT_EQ("fa"s, buffer);
    EXPECT_EQ(0u, GetPrivateProfileStringA("b", "k", "", nullptr, 0, file.c_str()));
}

struct NumberRow
{
    const char* name;
    std::string text;
    int number;
};

TEST(ProfileNumber, IsTheLeadingNumber)
{
    const NumberRow rows[] = {
        {"Decimal", "12", 12},
        {"Negative", "-12abc", -12},
        {"Plus", "+7", 7},
        {"Blank", " 8", 8},
        {"Hexadecimal", "0x1F", 31},
        {"UpperPrefix", "0X1f", 0},
        {"NegativeHexadecimal", "-0x10", -16},
        {"Octal", "0o17", 15},
        {"Binary", "0b11", 3},
        {"LeadingZero", "010", 10},
        {"Quoted", "\"5\"", 5},
        {"Wraps", "99999999999", 1215752191},
        {"Largest", "4294967295", -1},
        {"Letters", "abc", 0},
        {"EmptyIsTheDefault", "", 42},
    };
    for (const NumberRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string file = ScratchFile("test.ini");
        WriteBytes(file, "[i]\r\nn=" + row.text + "\r\n");
        EXPECT_EQ(row.number, static_cast<int>(GetPrivateProfileIntA("i", "n", 42, file.c_str())));
    }
}

struct WriteRow
{
    const char* name;
    std::string before;
    const char* section;
    const char* key;
    const char* value;
    std::string after;
};

TEST(ProfileWrite, ChangesOnlyThatEntry)
{
    const WriteRow rows[] = {
        {"NewFile", "", "s", "k", "v", "[s]\r\nk=v\r\n"},
        {"Changed", "[s]\r\nk=v\r\n", "S", "K", "x", "[s]\r\nk=x\r\n"},
        {"NewKey", "[s]\r\nk=v\r\n[t]\r\n", "s", "n", "1", "[s]\r\nk=v\r\nn=1\r\n[t]\r\n"},
        {"NewSection", "[s]\r\nk=v\r\n", "t", "k", "1", "[s]\r\nk=v\r\n[t]\r\nk=1\r\n"},
        {"UnendedLine", "[s]\r\nk=v", "s", "n", "1", "[s]\r\nk=v\r\nn=1\r\n"},
        {"LeadingBlanks", "[s]\r\n", "s", "k", "  lead", "[s]\r\nk=lead\r\n"},
        {"Quotes", "[s]\r\n", "s", "k", "\"q\"", "[s]\r\nk=\"q\"\r\n"},
        {"EmptyValue", "[s]\r\n", "s", "k", "", "[s]\r\nk=\r\n"},
        {"KeyWithEquals", "[s]\r\n", "s", "x=y", "3", "[s]\r\nx=y=3\r\n"},
        {"EmptyKey", "[s]\r\n", "s", "", "v", "[s]\r\n=v\r\n"},
        {"BecomesAnEntry", "[s]\r\nnoeq\r\n", "s", "noeq", "z", "[s]\r\nnoeq=z\r\n"},
        {"KeepsComments", "; h\r\n[s]\r\n; c\r\nk=v\r\n", "s", "k", "w", "; h\r\n[s]\r\n; c\r\nk=w\r\n"},
        {"SameValue", "[s]\nk = v \n", "s", "k", "v", "[s]\nk = v \n"},
        {"KeyRemoved", "[s]\r\nk=1\r\nk=2\r\n", "s", "k", nullptr, "[s]\r\nk=2\r\n"},
        {"FirstSectionOnly", "[s]\r\nk=1\r\n[s]\r\nk=2\r\n", "s", "k", nullptr, "[s]\r\n[s]\r\nk=2\r\n"},
        {"SectionRemoved", "[r]\r\n[s]\r\nk=1\r\nl\r\n[t]\r\nk=2\r\n", "s", nullptr, nullptr, "[r]\r\n[t]\r\nk=2\r\n"},
        {"MissingKey", "[s]\r\nk=1\r\n", "s", "n", nullptr, "[s]\r\nk=1\r\n"},
        {"MissingSection", "[s]\r\nk=1\r\n", "t", nullptr, nullptr, "[s]\r\nk=1\r\n"},
        {"NothingToRemove", "", "s", "k", nullptr, ""},
        {"BeforeTheFirstSection", "[s]\r\nk=1\r\n", "", "x", "3", "x=3\r\n[s]\r\nk=1\r\n"},
        {"ChangedBeforeTheFirst", "x=3\r\n[s]\r\nx=1\r\n", "", "x", "4", "x=4\r\n[s]\r\nx=1\r\n"},
        {"NothingBeforeTheFirst", "x=3\r\ny\r\n[s]\r\nx=1\r\n", "", nullptr, nullptr, "[s]\r\nx=1\r\n"},
        {"Utf8Mark", "\xEF\xBB\xBF[s]\r\nk=1\r\n", "s", "k", "2", "\xEF\xBB\xBF[s]\r\nk=2\r\n"},
    };
    for (const WriteRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string file = ScratchFile("test.ini");
        if (!row.before.empty())
            WriteBytes(file, row.before);
        EXPECT_TRUE(WritePrivateProfileStringA(row.section, row.key, row.value, file.c_str()));
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str());
        EXPECT_EQ(row.after, ReadBytes(file));
    }
}

TEST(Profile, SectionsAreReplacedAsAWhole)
{
    const std::string file = ScratchFile("test.ini");
    WriteBytes(file, "[s]\r\nk=1\r\n[t]\r\n");
    EXPECT_TRUE(WritePrivateProfileSectionA("s", "a=1\0b=2\0c\0", file.c_str()));
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str());
    EXPECT_EQ("[s]\r\na=1\r\nb=2\r\n[t]\r\n", ReadBytes(file)) << "a line without \"=\" is left out";
    EXPECT_TRUE(WritePrivateProfileSectionA("new", "", file.c_str())) << "no lines make no section";
    EXPECT_TRUE(WritePrivateProfileSectionA("s", "", file.c_str()));
    EXPECT_TRUE(WritePrivateProfileSectionA("t", nullptr, file.c_str()));
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str());
    EXPECT_EQ("[s]\r\n", ReadBytes(file));
}

TEST(Profile, FailuresSetTheLastError)
{
    const std::string file = ScratchFile("none.ini"), lost = ScratchFile("none") + "/x.ini";
    char buffer[10];
    EXPECT_EQ(1u, GetPrivateProfileStringA("a", "k", "d", buffer, sizeof buffer, file.c_str()));
    EXPECT_EQ(static_cast<DWORD>(ERROR_FILE_NOT_FOUND), GetLastError());
    EXPECT_EQ(5u, GetPrivateProfileIntA("a", "k", 5, file.c_str()));
    EXPECT_EQ(0u, GetPrivateProfileSectionNamesA(buffer, sizeof buffer, file.c_str()));
    EXPECT_EQ(1u, GetPrivateProfileStringA("a", "k", "d", buffer, sizeof buffer, lost.c_str()));
    EXPECT_EQ(static_cast<DWORD>(ERROR_PATH_NOT_FOUND), GetLastError());
    EXPECT_TRUE(FailedWith(ERROR_PATH_NOT_FOUND, !WritePrivateProfileStringA("a", "k", "v", lost.c_str())));
    EXPECT_TRUE(FailedWith(ERROR_ACCESS_DENIED, !WritePrivateProfileStringA("a", "k", "v", ScratchFolder().string().c_str())));
    EXPECT_FALSE(WritePrivateProfileStringA("a", "k", "v", ""));
    EXPECT_FALSE(WritePrivateProfileStringA(nullptr, "k", "v", file.c_str()));
    EXPECT_EQ("", ReadBytes(file));
}

TEST(Profile, FilesOf16BitTextStaySo)
{
    const std::string file = ScratchFile("test.ini");
    const auto utf16 = [](std::u16string text) { return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2); };
    WriteBytes(file, utf16(u"\uFEFF[s]\r\nk=\u263Ae\r\n"));
    char buffer[10];
    EXPECT_EQ(2u, GetPrivateProfileStringA("s", "k", "", buffer, sizeof buffer, file.c_str()));
    EXPECT_EQ("?e"s, buffer);
    std::vector<unsigned short> name(file.begin(), file.end());
    name.push_back(0);
    WCHAR wide[10];
    EXPECT_EQ(2u, GetPrivateProfileStringW(kelgen::AsWide(u"s"_w), kelgen::AsWide(u"k"_w), nullptr, wide, 10, kelgen::AsWide(name.data())));
    EXPECT_EQ(0x263A, wide[0]);
    EXPECT_TRUE(WritePrivateProfileStringW(kelgen::AsWide(u"s"_w), kelgen::AsWide(u"j"_w), kelgen::AsWide(u"\u263B"_w),
                                           kelgen::AsWide(name.data())));
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.c_str());
    EXPECT_EQ(utf16(u"\uFEFF[s]\r\nk=\u263Ae\r\nj=\u263B\r\n"), ReadBytes(file));
}

TEST(Profile, FileWithoutFolderLiesInTheWindowsFolder)
{
    const std::string name = "kelgen-test.ini", inFolder = "C:\\windows\\" + name;
    EXPECT_TRUE(WritePrivateProfileStringA("s", "k", "v", name.c_str()));
    char buffer[10];
    EXPECT_EQ(1u, GetPrivateProfileStringA("s", "k", "", buffer, sizeof buffer, inFolder.c_str()));
    DeleteFileA(inFolder.c_str());
}
