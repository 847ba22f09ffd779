// IniFileTest.cpp: which lines become what, look-up, and files of any bytes and sizes.
#include <kelgen/persistence/IniFile.h>

#include "framework/Thrown.h"
#include "support/Rows.h"
#include "support/Scratch.h"

#include <climits>

using namespace kelgen::test;
using _kelgen::CIniFile;
using _kelgen::CIniSection;

namespace {

std::string Bytes(const CString& text)
{
    return std::string(text.GetString(), static_cast<std::size_t>(text.GetLength()));
}

// The whole model in one text: "[section]" then "name=value" for properties and "|value" for plain values, each ended by "\n".
std::string Dump(const CIniFile& ini)
{
    std::string dump;
    for (int s = 0; s < ini.GetSize(); ++s) {
        const CIniSection& section = *ini.GetAt(s);
        dump += "[" + Bytes(section.GetName()) + "]\n";
        for (int i = 0; i < section.GetPropertiesCount(); ++i)
            dump += Bytes(section.GetPropertyAt(i)->GetName()) + "=" + Bytes(section.GetPropertyAt(i)->GetValue()) + "\n";
        for (int i = 0; i < section.GetValuesCount(); ++i)
            dump += "|" + Bytes(section.GetValueAt(i)) + "\n";
    }
    return dump;
}

std::string Written(const std::string& bytes)
{
    const std::string path = ScratchFile("test.ini");
    WriteBytes(path, bytes);
    return path;
}

}  // namespace

struct Content
{
    const char* name;
    std::string bytes;
    std::string model;
};

class IniFileContent : public testing::TestWithParam<Content>
{};

TEST_P(IniFileContent, BecomesTheModel)
{
    CIniFile ini;
    ASSERT_TRUE(ini.LoadFile(Written(GetParam().bytes).c_str()));
    EXPECT_EQ(GetParam().model, Dump(ini));
}

using namespace std::string_literals;
INSTANTIATE_TEST_SUITE_P(, IniFileContent, testing::Values(
    Content{"OnlyLineEnds", "\n\r\n\n", ""},
    Content{"LinesBeforeTheFirstSectionAreLost", "a=1\nplain\n[S]\nb=2\n", "[S]\nb=2\n"},
    Content{"NothingIsTrimmed", "  [Main]  ; x\n name = value \n\tplain \n", "[Main  ; x]\n name = value \n|\tplain \n"},
    Content{"ThereAreNoComments", "[S]\n; note\n# a=b\n", "[S]\n# a=b\n|; note\n"},
    Content{"ValuesMayHoldEqualsSigns", "[S]\na=b=c\n=x\ny=\n=\n==\n", "[S]\na=b=c\n=x\ny=\n=\n==\n"},
    Content{"BracketsInsideALine", "[S]\na[b]c\n", "[S]\n[bc]\n"},
    Content{"BracketsInAValue", "[S]\nkey=[a]\nb=1\n", "[S]\n[a]\nb=1\n"},
    Content{"OnlyTheFirstClosingBracketGoes", "[a]b]c\n[[d]]\n", "[ab]c]\n[[d]]\n"},
    Content{"ClosingBeforeAndAfterOpening", "x]y[z]w\n", "[zw]\n"},
    Content{"ClosingBracketFirst", "[S]\n]x[\n][a]\n]=[\n", "[S]\n]=[\n|]x[\n|][a]\n"},
    Content{"OneBracketOnly", "[S]\n[open\nclose]\n", "[S]\n|[open\n|close]\n"},
    Content{"EmptyName", "[]\na=1\n", "[]\na=1\n"},
    Content{"SectionsOfOneNameAreKeptApart", "[A]\na=1\n[A]\na=2\n", "[A]\na=1\n[A]\na=2\n"},
    Content{"NoLastLineEnd", "[S]\na=1\nlast", "[S]\na=1\n|last\n"},
    Content{"WindowsLineEnds", "[S]\r\na=1\r\nv\r\n", "[S]\na=1\n|v\n"},
    Content{"ReturnsInsideALineStay", "[S]\na=1\r2\nb\r\r\n", "[S]\na=1\r2\n|b\r\n"},
    Content{"TheEndOfTextByteEndsTheFile", "[S]\na=1\x1A" "b\nc=2\n", "[S]\na=1\n"},
    Content{"ZerosAreBytesLikeOthers", "[S\0T]\na\0b=c\0d\n\0\n"s, "[S\0T]\na\0b=c\0d\n|\0\n"s},
    Content{"ZeroBeforeTheBrackets", "\0[S]\nx=1\n"s, "[S]\nx=1\n"},
    Content{"HighBytes", "\xEF\xBB\xBF[\xE4]\n\xFF=\x80\n", "[\xE4]\n\xFF=\x80\n"}), RowName);

TEST(IniFile, LookUpTakesTheFirstMatch)
{
    CIniFile ini(Written("[A]\nNAME=1\nname=2\n[a]\nname=3\n[A]\nonly=4\n[V]\none\nx=y\ntwo\n").c_str());
    EXPECT_STREQ("1", ini.GetPropertyValue("A", "Name"));
    EXPECT_STREQ("3", ini.GetPropertyValue("a", "NAME"));
    EXPECT_STREQ("", ini.GetPropertyValue("A", "only")) << "the first section of the name decides";
    EXPECT_STREQ("", ini.GetPropertyValue("B", "name"));
    EXPECT_STREQ("", ini.GetPropertyValue("A", "name "));

    CStringArray values;
    values.Add("zero");
    ini.GetPropertyValue("V", values);
    ini.GetPropertyValue("v", values);
    ini.GetPropertyValue("a", values);
    ASSERT_EQ(3, values.GetSize());
    EXPECT_STREQ("zero", values.GetAt(0));
    EXPECT_STREQ("one", values.GetAt(1));
    EXPECT_STREQ("two", values.GetAt(2));
}

TEST(IniFile, LoadFileAppendsAndFailureKeepsTheModel)
{
    CIniFile ini;
    const std::string path = Written("lost=1\n[A]\na=1\n");
    EXPECT_TRUE(ini.LoadFile(path.c_str()));
    EXPECT_TRUE(ini.LoadFile(path.c_str())) << "each file starts without a section";
    const std::string model = "[A]\na=1\n[A]\na=1\n";
    EXPECT_EQ(model, Dump(ini));

    EXPECT_FALSE(ini.LoadFile((path + ".missing").c_str()));
    EXPECT_FALSE(ini.LoadFile(ScratchFolder().string().c_str())) << "a folder";
    EXPECT_FALSE(ini.LoadFile(""));
    EXPECT_FALSE(ini.LoadFile(nullptr));
    EXPECT_EQ(model, Dump(ini));
    EXPECT_STREQ("", CIniFile((path + ".missing").c_str()).GetPropertyValue("A", "a"));

    ini.RemoveAll();
    EXPECT_EQ("", Dump(ini));
    EXPECT_TRUE(ini.LoadFile(path.c_str()));
    EXPECT_EQ("[A]\na=1\n", Dump(ini));
}

TEST(IniFile, ValueIndicesAreChecked)
{
    CIniSection section("S");
    section.AddValue("v");
    for (int index : {-1, 1, INT_MAX, INT_MIN})
        EXPECT_EQ("CInvalidArgException", Thrown([&] { section.GetValueAt(index); })) << index;
    section.AddProperty("a", "1");
    section.ClearProperties();
    EXPECT_EQ("CInvalidArgException", Thrown([&] { section.GetPropertyAt(0); }));
    EXPECT_STREQ("v", section.GetValueAt(0)) << "plain values stay";
}

TEST(IniFile, LongAndManyLines)
{
    const std::string longText(10'000'000, 'x');
    CIniFile ini;
    ASSERT_TRUE(ini.LoadFile(Written("[S]\na=" + longText + "\n" + longText + "=b\n[" + longText + "]\n" + longText).c_str()));
    EXPECT_EQ("[S]\na=" + longText + "\n" + longText + "=b\n[" + longText + "]\n|" + longText + "\n", Dump(ini));

    std::string bytes;
    for (int i = 0; i < 300'000; ++i)
        bytes += "[S" + std::to_string(i) + "]\nv\nk=" + std::to_string(i) + "\n";
    ASSERT_TRUE(ini.LoadFile(Written(bytes).c_str()));
    EXPECT_STREQ("299999", ini.GetPropertyValue("S299999", "K"));
}
