// PagesTest.cpp: which page a process has, and what processes on different ones tell each other.
#include <kelgen/platform/Win32.h>

#include "support/Rows.h"
#include "support/Scratch.h"

#include <cstdio>

using namespace kelgen::test;

namespace {

constexpr const char* kNoPage = "-u KELGEN_ACP";
constexpr const char* kUtf8 = "KELGEN_ACP=65001";
constexpr const char* kWestern = "KELGEN_ACP=1252";
constexpr const char* kJapanese = "KELGEN_ACP=932";

// What the program prints in an environment that is changed so.
std::string Output(const std::string& environment, const std::string& arguments)
{
    std::string output;
    FILE* const pipe = popen(("env " + environment + " '" PAGE_PROGRAM "' " + arguments).c_str(), "r");
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
        output += static_cast<char>(byte);
    EXPECT_EQ(0, pclose(pipe)) << environment << ' ' << arguments;
    return output;
}

}  // namespace

TEST(AnsiPage, IsUtf8UnlessTheEnvironmentNamesAKnownOne)
{
    for (const auto& [environment, page] : Table<const char*, const char*>{
             {kNoPage, "65001"},
             {"KELGEN_ACP=", "65001"},
             {"KELGEN_ACP=1252", "1252"},
             {"KELGEN_ACP=932", "932"},
             {"KELGEN_ACP=4711", "65001"},
             {"KELGEN_ACP=western", "65001"},
             {"KELGEN_ACP=54936", "65001"},
         })
        EXPECT_EQ(page, Output(environment, "page")) << environment;
}

TEST(AnsiPage, CommandLinesComeInThePageOfTheirReader)
{
    // The shell passes UTF-8.
    for (const auto& [environment, argument, given] : Table<const char*, const char*, const char*>{
             {kNoPage, "\xC3\xA4", "\xC3\xA4"},
             {kUtf8, "\xE4\xFF", "\xE4\xFF"},
             {kWestern, "\xC3\xA4", "\xE4"},
             {kWestern, "\xE4\xB8\xAD", "?"},
             {kWestern, "\xE4\xC3\xA4", "\xE4\xE4"},
             {kJapanese, "\xE8\xA1\xA8", "\x95\x5C"},
         })
        EXPECT_EQ(given, Output(environment, std::string("argument ") + argument)) << environment;
}

TEST(AnsiPage, ArgumentsNameTheFilesThatTheirGiverMeant)
{
    const std::string folder = ScratchFolder().string() + '/';
    for (const auto& [name, environment] : Table<std::string, const char*>{
             {"neu\xC3\xA4", kNoPage},
             {"neu\xC3\xA4", kWestern},
             {"\xE8\xA1\xA8", kNoPage},
             {"\xE8\xA1\xA8", kJapanese},
             {"old\xE4\xFF", kNoPage},
             {"old\xE4\xFF", kWestern},
             {"old\xE4\xFF", kJapanese},
         }) {
        WriteBytes(folder + name, name);
        EXPECT_EQ(name, Output(environment, "contents " + folder + name)) << environment;
    }
}

TEST(AnsiPage, RegistryTextReadsTheSameOnEveryPage)
{
    const auto store = [](const char* environment, const char* text) { Output(environment, std::string("store ") + text); };
    store(kWestern, "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ("\xC3\xA4\xE2\x82\xAC", Output(kUtf8, "value")) << "a command line is converted, so the value is, too";
    EXPECT_EQ("\xE4\x80", Output(kWestern, "value"));
    store(kUtf8, "\xE8\xA1\xA8");
    EXPECT_EQ("\x95\x5C", Output(kJapanese, "value"));
    EXPECT_EQ("?", Output(kWestern, "value"));
}

TEST(AnsiPage, ProfilesAreBytesInTheirWritersPage)
{
    const std::string file = ScratchFile("a.ini");
    ASSERT_TRUE(WritePrivateProfileStringA("section", "key", "\xC3\xA4", file.c_str()));
    EXPECT_EQ("[section]\r\nkey=\xC3\xA4\r\n", ReadBytes(file));
    EXPECT_EQ("\xC3\xA4", Output(kUtf8, "profile " + file));
    EXPECT_EQ("\xC3\xA4", Output(kWestern, "profile " + file)) << "two characters of that page";
    WriteBytes(file, "[section]\nother=\xE4\nkey=\xE4\n");
    EXPECT_EQ("\xE4", Output(kWestern, "profile " + file));
    EXPECT_EQ("\xEF\xBF\xBD", Output(kUtf8, "profile " + file));
    // Lines of another page that are not written stay as they are.
    ASSERT_TRUE(WritePrivateProfileStringA("section", "key", "\xC3\xA4", file.c_str()));
    EXPECT_EQ("[section]\nother=\xE4\nkey=\xC3\xA4\r\n", ReadBytes(file));
}
