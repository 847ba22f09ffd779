// PathsTest.cpp: paths of the standard library there and back, and files that both sides name alike.
#include <kelgen/std.h>

#include "support/Rows.h"
#include "support/Target.h"

#include <fstream>

using namespace kelgen::test;

TEST(Paths, TextsGoThereAndBack)
{
    for (const auto& [name, text] : Table<const char*, std::u16string>{
             {"Empty", u""},
             {"Plain", u"dir/file.txt"},
             {"Backslashes", u"Z:\\dir\\file"},
             {"Umlaut", u"n\u00E4me"},
             {"Ideographs", u"\u4E2D\u6587"},
             {"Pairs", u"\U0001F600\U0010FC80"},
             {"LowSurrogateOfAPair", u"\U0001F480x"},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(std::filesystem::path(text), kelgen::ToPath(CWStr(text)));
        EXPECT_EQ(text, kelgen::View(kelgen::FromPath(std::filesystem::path(text))));
    }
}

// Bytes are lost nowhere, whatever they are.
TEST(Paths, BytesThatAreNoUtf8GoThereAndBack)
{
    if (!isOurPlatform)
        GTEST_SKIP() << "paths are 16-bit text";
    for (const auto& [name, bytes, units] : Table<const char*, std::string, std::u16string>{
             {"Latin1", "n\xE4m", u"n\xDCE4m"},
             {"CutAtTheEnd", "x\xE4\xB8", u"x\xDCE4\xDCB8"},
             {"BesideUtf8", "\xFF\xC3\xA4\x80", u"\xDCFF\u00E4\xDC80"},
             {"Overlong", "\xC0\xAF", u"\xDCC0\xDCAF"},
             {"EncodedSurrogate", "\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},
         }) {
        SCOPED_TRACE(name);
        const std::filesystem::path path(bytes);
        EXPECT_EQ(units, kelgen::View(kelgen::FromPath(path)));
        EXPECT_EQ(path, kelgen::ToPath(kelgen::FromPath(path)));
    }
}

TEST(Paths, NarrowTextIsInTheAnsiPage)
{
    for (const auto& [name, path, narrow] : Table<const char*, std::u16string, std::string>{
             {"Plain", u"a/b.txt", "a/b.txt"},
             {"Umlaut", u"n\u00E4me", "n\xE4me"},
             {"Euro", u"\u20AC", "\x80"},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(narrow, kelgen::View(kelgen::NarrowFromPath(std::filesystem::path(path))));
        EXPECT_EQ(std::filesystem::path(path), kelgen::ToPath(CString(narrow.c_str())));
    }
    if (isOurPlatform) {
        EXPECT_STREQ("\xFF\xE4\x90", kelgen::NarrowFromPath("\xFF\xC3\xA4\x90")) << "bytes that are no UTF-8 stay";
    }
}

TEST(Paths, BothSidesNameOneFile)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / ("kelgen-paths-" + std::to_string(GetCurrentProcessId()));
    std::filesystem::create_directory(folder);
    const std::filesystem::path file = folder / u"n\u00E4me \u4E2D.txt";
    std::ofstream(file) << "text";
    const CWStr name = kelgen::FromPath(file);
    EXPECT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesW(reinterpret_cast<const WCHAR*>(static_cast<const unsigned short*>(name))));
    std::filesystem::remove_all(folder);
}
