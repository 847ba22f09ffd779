// IniFileTest.cpp: which lines become what, look-up, and files of any bytes and sizes.
#include <kelgen/persistence/IniFile.h>

#include "framework/Thrown.h"
#include "support/Random.h"
#include "support/Rows.h"
#include "support/Scratch.h"

#include <climits>

using namespace kelgen::test;
using _kelgen::CIniFile;
using _kelgen::CIniSection;
using namespace std::string_literals;

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

TEST(IniFile, LinesBecomeTheModel)
{
    for (const auto& [name, bytes, model] : Table<const char*, std::string, std::string>{
             {"OnlyLineEnds", "\n\r\n\n", ""},
             {"LinesBeforeTheFirstSectionAreLost", "a=1\nplain\n[S]\nb=2\n", "[S]\nb=2\n"},
             {"NothingIsTrimmed", "  [Main]  ; x\n name = value \n\tplain \n", "[Main  ; x]\n name = value \n|\tplain \n"},
             {"ThereAreNoComments", "[S]\n; note\n# a=b\n", "[S]\n# a=b\n|; note\n"},
             {"ValuesMayHoldEqualsSigns", "[S]\na=b=c\n=x\ny=\n=\n==\n", "[S]\na=b=c\n=x\ny=\n=\n==\n"},
             {"BracketsInsideALine", "[S]\na[b]c\n", "[S]\n[bc]\n"},
             {"BracketsInAValue", "[S]\nkey=[a]\nb=1\n", "[S]\n[a]\nb=1\n"},
             {"OnlyTheFirstClosingBracketGoes", "[a]b]c\n[[d]]\n", "[ab]c]\n[[d]]\n"},
             {"ClosingBeforeAndAfterOpening", "x]y[z]w\n", "[zw]\n"},
             {"ClosingBracketFirstOrAlone", "[S]\n]x[\n][a]\n]=[\n[open\nclose]\n", "[S]\n]=[\n|]x[\n|][a]\n|[open\n|close]\n"},
             {"SectionsOfOneNameOrNoneAreKeptApart", "[]\na=1\n[]\na=2\n", "[]\na=1\n[]\na=2\n"},
             {"NoLastLineEnd", "[S]\na=1\nlast", "[S]\na=1\n|last\n"},
             {"WindowsLineEnds", "[S]\r\na=1\r\nv\r\n", "[S]\na=1\n|v\n"},
             {"ReturnsInsideALineStay", "[S]\na=1\r2\nb\r\r\n", "[S]\na=1\r2\n|b\r\n"},
             {"TheEndOfTextByteEndsTheFile",
              "[S]\na=1\x1A"
              "b\nc=2\n",
              "[S]\na=1\n"},
             {"ZerosAreBytesLikeOthers", "[S\0T]\na\0b=c\0d\n\0\n"s, "[S\0T]\na\0b=c\0d\n|\0\n"s},
             {"ZeroBeforeTheBrackets", "\0[S]\nx=1\n"s, "[S]\nx=1\n"},
             {"HighBytes", "\xEF\xBB\xBF[\xE4]\n\xFF=\x80\n", "[\xE4]\n\xFF=\x80\n"},
         }) {
        SCOPED_TRACE(name);
        CIniFile ini;
        ASSERT_TRUE(ini.LoadFile(Written(bytes).c_str()));
        EXPECT_EQ(model, Dump(ini));
    }
}

TEST(IniFile, LookUpTakesTheFirstMatch)
{
    CIniFile ini(Written("[A]\nNAME=1\nname=2\n[a]\nname=3\n[A]\nonly=4\n[V]\none\nx=y\ntwo\n").c_str());
    for (const auto& [section, property, value] : Table<const char*, const char*, const char*>{
             {"A", "Name", "1"},
             {"a", "NAME", "3"},
             {"A", "only", ""},  // the first section of the name decides
             {"B", "name", ""},
             {"A", "name ", ""},
         })
        EXPECT_STREQ(value, ini.GetPropertyValue(section, property)) << section << "." << property;

    EXPECT_EQ(ini.GetAt(0), ini.FindSection("A"));
    EXPECT_EQ(ini.GetAt(1), ini.FindSection("a"));
    EXPECT_EQ(nullptr, ini.FindSection("B"));

    CStringArray values;
    values.Add("zero");
    ini.GetPropertyValue("V", values);
    ini.GetPropertyValue("v", values);
    ini.GetPropertyValue("a", values);
    ASSERT_EQ(3, values.GetSize());
    EXPECT_EQ("zero one two", values[0] + " " + values[1] + " " + values[2]);
}

TEST(IniFile, LoadFileAppendsAndFailureKeepsTheModel)
{
    CIniFile ini;
    const std::string path = Written("lost=1\n[A]\na=1\n");
    EXPECT_TRUE(ini.LoadFile(path.c_str()));
    EXPECT_TRUE(ini.LoadFile(path.c_str())) << "each file starts without a section";
    const std::string model = "[A]\na=1\n[A]\na=1\n";
    EXPECT_EQ(model, Dump(ini));

    const std::string folder = ScratchFolder().string(), missing = path + ".missing";
    for (const char* bad : {missing.c_str(), folder.c_str(), "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(ini.LoadFile(bad));
    EXPECT_EQ(model, Dump(ini));
    EXPECT_STREQ("", CIniFile(missing.c_str()).GetPropertyValue("A", "a"));

    ini.RemoveAll();
    EXPECT_TRUE(ini.LoadFile(path.c_str()));
    EXPECT_EQ("[A]\na=1\n", Dump(ini));
}

TEST(IniFile, SectionsEndOneByOneFromTheFirst)
{
    class Noting : public CIniSection
    {
    public:
        Noting(const char* name, const CIniFile& ini, std::string& account) : CIniSection(name), m_ini(ini), m_account(account) {}
        ~Noting() override
        {
            const CString last = m_ini.GetPropertyValue("last", "a");
            m_account +=
                std::to_string(m_ini.GetSize()) + GetName().GetString() + (m_ini.GetAt(0) == this ? "" : "?") + last.GetString() + " ";
        }

    private:
        const CIniFile& m_ini;
        std::string& m_account;
    };
    std::string account;
    {
        CIniFile ini;
        for (const char* name : {"x", "plain", "y", "last"}) {
            auto* const section = name == std::string("plain") ? new CIniSection(name) : new Noting(name, ini, account);
            section->AddProperty("a", "1");
            ini.Add(section);
        }
        ini.RemoveAll();
        EXPECT_EQ("4x1 2y1 1last1 ", std::exchange(account, {}));
        for (const char* name : {"1", "2", "3"})
            ini.Add(new Noting(name, ini, account));
    }
    EXPECT_EQ("31 22 13 ", account);
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
    const std::string longText(1'000'000, 'x');
    CIniFile ini;
    ASSERT_TRUE(ini.LoadFile(Written("[S]\na=" + longText + "\n" + longText + "=b\n[" + longText + "]\n" + longText).c_str()));
    EXPECT_EQ("[S]\na=" + longText + "\n" + longText + "=b\n[" + longText + "]\n|" + longText + "\n", Dump(ini));

    std::string bytes;
    for (int i = 0; i < 50'000; ++i)
        bytes += "[S" + std::to_string(i) + "]\nv\nk=" + std::to_string(i) + "\n";
    ASSERT_TRUE(ini.LoadFile(Written(bytes).c_str()));
    EXPECT_STREQ("49999", ini.GetPropertyValue("S49999", "K"));
}

// Whatever a host does to the list and to names in it, the first section of a name is found.
TEST(IniFile, LookupEqualsTheWalkThroughTheList)
{
    Random random;
    const auto name = [&random] { return CString(static_cast<char>('a' + random.Between(0, 9))); };
    for (int round = 0; round < 30; ++round) {
        CIniFile ini, other;
        for (int step = 0; step < 60; ++step) {
            const int size = ini.GetSize();
            const int at = random.Between(0, std::max(size - 1, 0));
            switch (size == 0 ? 0 : random.Between(0, 7)) {
            case 0: {
                std::string text;
                for (int i = random.Between(0, 20); i > 0; --i)
                    text += "[" + Bytes(name()) + "]\n";
                ASSERT_TRUE(ini.LoadFile(Written(text).c_str()));
                break;
            }
            case 1:
                ini.Add(new CIniSection(name()));
                break;
            case 2:
                ini.InsertAt(at, new CIniSection(name()));
                break;
            case 3:
                ini[at]->SetName(name());
                break;
            case 4:
                delete ini[at];
                ini[at] = new CIniSection(name());
                break;
            case 5:
                std::swap(ini[at], ini[random.Between(0, size - 1)]);
                break;
            case 6:
                delete ini[at];
                ini.RemoveAt(at);
                break;
            case 7:
                // A section that another file has loaded, or the other way round.
                ASSERT_TRUE(other.LoadFile(Written("[x]\n[y]\n").c_str()));
                std::swap(ini[at], other[0]);
                break;
            }
            for (char letter = 'a'; letter <= 'k'; ++letter) {
                const CIniSection* first = nullptr;
                for (int i = ini.GetSize(); i-- > 0;)
                    first = ini[i]->GetName() == CString(letter) ? ini[i] : first;
                ASSERT_EQ(first, ini.FindSection(CString(letter))) << letter;
            }
        }
    }
}

TEST(IniFile, PropertyNamesAreEqualAsCompareNoCaseSays)
{
    // Letters, what lies around them, and bytes of more than one page.
    constexpr std::string_view kBytes("aAzZiI1@`[{ \xC4\xE4\x83\x61\x81");
    Random random;
    const auto name = [&random, kBytes] {
        CString text;
        for (int i = random.Between(1, 3); i > 0; --i)
            text += kBytes[static_cast<std::size_t>(random.Between(0, static_cast<int>(kBytes.size()) - 1))];
        return text;
    };
    for (int round = 0; round < 2000; ++round) {
        CIniSection section("S");
        for (int i = 0; i < 12; ++i)
            section.AddProperty(name(), CString(static_cast<char>('a' + i)));
        const CString sought = name();
        CString first;
        for (int i = section.GetPropertiesCount(); i-- > 0;)
            if (section.GetPropertyAt(i)->GetName().CompareNoCase(sought) == 0)
                first = section.GetPropertyAt(i)->GetValue();
        ASSERT_EQ(first, section.GetPropertyValue(sought)) << sought.GetString();
    }
}
