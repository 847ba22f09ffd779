// VersionTest.cpp: queries of version resources, and which files have one.
#include "support/Failures.h"
#include "support/Scratch.h"
#include "support/Target.h"
#include "support/VersionImages.h"

#include <algorithm>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

const std::string kFixed = FixedInfo(0x10002, 0x30004, 0x50006, 0x70008);
const std::string kTranslations = Number(0x409, 2) + Number(1252, 2) + Number(0x407, 2) + Number(1200, 2);

std::string Resource()
{
    VersionNode odd{u"ZeroIn", 1, Units(u"ab\0cd\0"s), {}};
    return VersionResource(kFixed,
                           {{u"040904E4",
                             {TextNode(u"CompanyName", u"caf\u00E9 \u20AC \u0416"),
                              TextNode(u"ProductName", u"Product"),
                              TextNode(u"Empty", u""),
                              {u"NoValue", 1, "", {}},
                              {u"NoEnd", 1, Units(u"abc"), {}},
                              odd,
                              {u"TooLong", 1, Units(u"xyz\0"s), {}, 60000},
                              {u"Bytes", 0, "\1\2\3", {}}}}},
                           kTranslations);
}

std::string Write(const std::string& bytes)
{
    const std::string path = ScratchFile("image.dll");
    WriteBytes(path, bytes);
    return path;
}

std::string Write(const std::vector<ImageResource>& resources, bool is64Bit = true)
{
    return Write(Image{is64Bit, resources}.Bytes());
}

std::string BlockOf(const std::string& path)
{
    std::string block(GetFileVersionInfoSizeA(path.c_str(), nullptr), '#');
    return GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ? block : "";
}

// "value", or "error N length L".
std::string Narrow(std::string& block, const char* path)
{
    void* value = nullptr;
    UINT length = 99;
    SetLastError(777);
    const BOOL found = VerQueryValueA(block.data(), path, &value, &length);
    const DWORD error = GetLastError();
    if (!found || error != 777)
        return std::string(found ? "TRUE " : "FALSE ") + std::to_string(error) + " length " + std::to_string(length);
    return {static_cast<const char*>(value), length};
}

}  // namespace

TEST(VersionQuery, FindsFixedPartTranslationsAndConvertedTexts)
{
    struct Row
    {
        const char* path;
        std::string value;
    };
    const std::string none = "FALSE 1813 length 0", empty = "TRUE 87 length 0";
    const Row rows[] = {
        {"\\", kFixed},
        {"", kFixed},
        {nullptr, kFixed},
        {"\\VarFileInfo\\Translation", kTranslations},
        {"varfileinfo\\TRANSLATION\\", kTranslations},
        {"/VarFileInfo/Translation", none},
        {"\\VarFileInfo", empty},
        {"\\StringFileInfo\\040904e4\\", empty},
        {"\\StringFileInfo\\040904e4\\CompanyName", "caf\xE9 \x80 ?\0"s},
        {"\\\\StringFileInfo\\\\040904E4\\Productname", "Product\0"s},
        {"\\StringFileInfo\\040904e4\\Empty", "\0"s},
        {"\\StringFileInfo\\040904e4\\NoValue", empty},
        {"\\StringFileInfo\\040904e4\\NoEnd", "abc"},
        {"\\StringFileInfo\\040904e4\\ZeroIn", "ab\0cd\0"s},
        {"\\StringFileInfo\\040904e4\\TooLong", "TRUE 122 length 0"},
        {"\\StringFileInfo\\040904e4\\Bytes", "\1\2\3"},
        {"\\StringFileInfo\\040904e4\\Nope", none},
        {"\\StringFileInfo\\04090000\\CompanyName", none},
        {"\\StringFileInfo\\040904e4\\CompanyName\\x", none},
    };
    for (const bool is64Bit : {true, false}) {
        std::string block = BlockOf(Write({{16, 1, 0x409, Resource()}}, is64Bit));
        ASSERT_FALSE(block.empty()) << is64Bit;
        for (const Row& row : rows)
            EXPECT_EQ(row.value, Narrow(block, row.path)) << (row.path ? row.path : "null");

        void* value = nullptr;
        UINT units = 0;
        ASSERT_TRUE(VerQueryValueW(block.data(), kelgen::AsWide(u"\\StringFileInfo\\040904E4\\CompanyName"_w), &value, &units));
        EXPECT_EQ(Units(u"caf\u00E9 \u20AC \u0416\0"s), std::string(static_cast<const char*>(value), units * 2));
        EXPECT_TRUE(VerQueryValueA(block.data(), "\\", &value, nullptr));
        EXPECT_FALSE(VerQueryValueA(nullptr, "\\", &value, &units));
    }
}

TEST(VersionQuery, TakesTheLanguageThatLookUpPrefers)
{
    struct Row
    {
        LCID locale;
        std::vector<WORD> languages;
        WORD taken;
    };
    for (const Row& row : {Row{0x409, {0x40C, 0x407}, 0x407}, Row{0x409, {0x407, 0x409, 0x0C}, 0x409}, Row{0x409, {0x407, 0, 0x409}, 0},
                           Row{0x40C, {0x407, 0x409, 0x40C}, 0x40C}}) {
        SetThreadLocale(row.locale);
        std::vector<ImageResource> resources;
        for (const WORD language : row.languages)
            resources.push_back({16, 1, language, VersionResource(kFixed, {}, Number(language, 4))});
        std::string block = BlockOf(Write(resources));
        EXPECT_EQ(Number(row.taken, 4), Narrow(block, "\\VarFileInfo\\Translation"));
    }
    SetThreadLocale(LOCALE_USER_DEFAULT);
}

TEST(VersionFile, ErrorsTellWhatIsMissing)
{
    const std::string folder = ScratchFolder().string(), sound = Image{true, {{16, 1, 0x409, Resource()}}}.Bytes();
    struct Row
    {
        const char* name;
        std::string path;
        DWORD error;
    };
    const Row rows[] = {
        {"missing", folder + "/none.dll", ERROR_FILE_NOT_FOUND},
        {"missing folder", folder + "/none/none.dll", ERROR_PATH_NOT_FOUND},
        {"no name", "", ERROR_BAD_PATHNAME},
        {"folder", folder, ERROR_ACCESS_DENIED},
        {"empty", Write(""), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"text", Write("hello world"), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"two letters", Write("MZ"), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"cut in the headers", Write(sound.substr(0, 0x300)), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"cut in the resources", Write(sound.substr(0, 0x450)), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"no resources", Write(std::vector<ImageResource>()), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"other resources", Write({{10, 1, 0x409, "abc"}}), ERROR_RESOURCE_DATA_NOT_FOUND},
        {"other number", Write({{16, 2, 0x409, Resource()}}), ERROR_RESOURCE_DATA_NOT_FOUND},
    };
    for (const Row& row : rows) {
        DWORD handle = 99;
        SetLastError(777);
        EXPECT_EQ(0u, GetFileVersionInfoSizeA(row.path.c_str(), &handle)) << row.name;
        EXPECT_EQ(row.error, GetLastError()) << row.name;
        EXPECT_EQ(0u, handle) << row.name;
        char block[64];
        EXPECT_FALSE(GetFileVersionInfoA(row.path.c_str(), 0, sizeof block, block)) << row.name;
    }
    EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !GetFileVersionInfoSizeW(nullptr, nullptr)));

    std::string path = Write(sound);
    EXPECT_EQ(GetFileVersionInfoSizeA(path.c_str(), nullptr), GetFileVersionInfoSizeA(path.substr(0, path.size() - 4).c_str(), nullptr))
        << "the extension is added";
    EXPECT_EQ(0u, GetLastError());
    EXPECT_TRUE(FailedWith(ERROR_INVALID_DATA, !GetFileVersionInfoA(path.c_str(), 0, 5000, nullptr)));
}

// A difference that stays (docs/differences.md): the real platform believes the value's length alone.
TEST(Differences, ValuesLieWithinTheirBlock)
{
    for (const auto& [length, isWhole] :
         std::vector<std::pair<WORD, bool>>{{0, false}, {6, false}, {10, false}, {40, false}, {91, false}, {92, true}}) {
        std::vector<WORD> block(60);
        block[0] = length;
        block[1] = 52;
        std::ranges::copy(u"VS_VERSION_INFO"s, block.begin() + 3);
        block[20] = 0x04BD;
        block[21] = 0xFEEF;
        void* value = nullptr;
        UINT size = 0;
        const BOOL found = VerQueryValueA(block.data(), "\\", &value, &size);
        EXPECT_EQ(isWhole || !isOurPlatform, found != FALSE) << length;
        EXPECT_EQ(found ? 52u : 0u, size) << length;
    }
}
