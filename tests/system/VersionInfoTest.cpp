// VersionInfoTest.cpp: version resources of sound and damaged files, and the generations of operating systems.
#include <kelgen/system/VersionInfo.h>

#include <kelgen/Version.h>

#include "support/Scratch.h"
#include "support/VersionImages.h"

#include <climits>
#include <cstring>

using namespace kelgen::test;

namespace {

const std::string kFixed = FixedInfo(0x10002, 0x30004, 0x50006, 0x70008);

std::string Write(const std::string& resource)
{
    const std::string path = ScratchFile("image with 'quotes'.dll");
    WriteBytes(path, Image{true, {{16, 1, 0x409, resource}}}.Bytes());
    return path;
}

std::string Translation(WORD language, WORD codePage)
{
    return Number(language, 2) + Number(codePage, 2);
}

}  // namespace

TEST(VersionInfo, TellsNumbersAndTexts)
{
    CVersionInfo version;
    ASSERT_EQ(1,
              version.Load(Write(VersionResource(kFixed,
                                                 {{u"040904e4", {TextNode(u"ProductName", u"English"), TextNode(u"Comments", u"\u20AC")}},
                                                  {u"040704b0", {TextNode(u"ProductName", u"Deutsch")}}},
                                                 Translation(0x409, 1252) + Translation(0x407, 1200)))
                               .c_str()));
    EXPECT_EQ(0x0001000200030004u, version.GetFileVersion());
    EXPECT_EQ(0x0005000600070008u, version.GetProductVersion());
    EXPECT_EQ(0x3Fu, version.GetFileFlagsMask());
    EXPECT_EQ(2u, version.GetFileFlags());
    EXPECT_EQ(0x40004u, version.GetOS());
    EXPECT_EQ(1u, version.GetFileType());
    EXPECT_EQ(7u, version.GetFileSubType());
    EXPECT_EQ(0x55667788u, version.GetCreationTime().dwLowDateTime);
    EXPECT_EQ(0x11223344u, version.GetCreationTime().dwHighDateTime);
    EXPECT_EQ(0xFEEF04BDu, version.GetFixedFileInfo()->dwSignature);

    EXPECT_EQ(2, version.GetNumberOfTranslations());
    EXPECT_EQ(1200, version.GetTranslation(1)->codePage);
    EXPECT_STREQ("English", version.GetProductName());
    EXPECT_STREQ("\x80", version.GetComments());
    EXPECT_STREQ("", version.GetValue("Comments\\x"));
    version.SetTranslation(1);
    EXPECT_STREQ("Deutsch", version.GetProductName());
    EXPECT_STREQ("", version.GetComments());
    for (const int outside : {INT_MIN, -100000, 100000, INT_MAX})
        version.SetTranslation(outside);
    EXPECT_STREQ("Deutsch", version.GetProductName());

    EXPECT_EQ(0, version.Load("none.dll"));
    EXPECT_EQ(0u, version.GetFileVersion());
    EXPECT_EQ(nullptr, version.GetFixedFileInfo());
    EXPECT_EQ(0, version.GetNumberOfTranslations());
    EXPECT_STREQ("", version.GetProductName());
}

TEST(VersionInfo, EveryTextHasItsKey)
{
    const std::pair<const char16_t*, CString (CVersionInfo::*)() const> rows[] = {
        {u"CompanyName", &CVersionInfo::GetCompanyName},
        {u"FileDescription", &CVersionInfo::GetFileDescription},
        {u"FileVersion", &CVersionInfo::GetFileVersionAsString},
        {u"InternalName", &CVersionInfo::GetInternalName},
        {u"LegalCopyright", &CVersionInfo::GetLegalCopyright},
        {u"OriginalFilename", &CVersionInfo::GetOriginalFilename},
        {u"ProductName", &CVersionInfo::GetProductName},
        {u"ProductVersion", &CVersionInfo::GetProductVersionAsString},
        {u"Comments", &CVersionInfo::GetComments},
        {u"LegalTrademarks", &CVersionInfo::GetLegalTrademarks},
        {u"PrivateBuild", &CVersionInfo::GetPrivateBuild},
        {u"SpecialBuild", &CVersionInfo::GetSpecialBuild},
    };
    StringTable table{u"000004e4", {}};
    for (const auto& [key, get] : rows)
        table.entries.push_back(TextNode(key, std::u16string(u"the ") + key));
    CVersionInfo version;
    ASSERT_EQ(1, version.Load(Write(VersionResource(kFixed, {table}, "")).c_str())) << "without translations";
    for (const auto& [key, get] : rows)
        EXPECT_EQ("the " + std::string(key, key + std::char_traits<char16_t>::length(key)), (version.*get)().GetString());
}

TEST(VersionInfo, DamagedResourcesAreHarmless)
{
    const auto resource = [](const std::string& fixed, std::vector<VersionNode> entries, const std::string& translations) {
        return VersionResource(fixed, {{u"000004e4", std::move(entries)}}, translations);
    };
    const auto with = [](std::string bytes, std::size_t at, unsigned word) { return bytes.replace(at, 2, Number(word, 2)); };
    const std::string sound = resource(kFixed, {TextNode(u"X", u"y")}, "");
    struct Row
    {
        const char* name;
        std::string resource;
        int loaded;
        int translations;
        const char* x;
    };
    const Row rows[] = {
        {"sound", sound, 1, 0, "y"},
        {"half a translation", resource(kFixed, {TextNode(u"X", u"y")}, "\t\4"), 1, 0, "y"},
        {"one and a half", resource(kFixed, {TextNode(u"X", u"y")}, Number(0x4E40000, 4) + "ab"), 1, 1, "y"},
        {"no value", resource(kFixed, {{u"X", 1, "", {}}}, ""), 1, 0, ""},
        {"no terminator", resource(kFixed, {{u"X", 1, Units(u"yz"), {}}}, ""), 1, 0, "yz"},
        {"value too long", resource(kFixed, {{u"X", 1, Units(u"yz"), {}, 60000}}, ""), 1, 0, ""},
        {"other key", with(sound, 6, 'Z'), 1, 0, "y"},
        {"nothing", "", 0, 0, ""},
        {"zeros", std::string(200, 0), 0, 0, ""},
        {"no fixed part", resource("", {TextNode(u"X", u"y")}, ""), 0, 0, ""},
        {"half a fixed part", resource(kFixed.substr(0, 20), {TextNode(u"X", u"y")}, ""), 0, 0, ""},
        {"cut in the fixed part", sound.substr(0, 60), 0, 0, ""},
        {"claims a longer value", with(sound, 2, 60000), 0, 0, ""},
        {"claims to end in the fixed part", with(sound, 0, 60), 1, 0, ""},
        {"claims two units more", with(sound, 0, static_cast<unsigned>(sound.size()) + 4), 0, 0, ""},
        {"lacks its last units", sound.substr(0, sound.size() - 4), 0, 0, ""},
        {"fixed part as text", with(sound, 4, 2), 1, 0, ""},
    };
    for (const Row& row : rows) {
        CVersionInfo version;
        EXPECT_EQ(row.loaded, version.Load(Write(row.resource).c_str())) << row.name;
        EXPECT_EQ(row.translations, version.GetNumberOfTranslations()) << row.name;
        EXPECT_STREQ(row.x, version.GetValue("X")) << row.name;
    }
}

TEST(VersionInfo, EveryTypeButZeroIsTextAndLengthsMayCountBytes)
{
    struct Row
    {
        const char* name;
        VersionNode x;
        const char* text;
    };
    std::vector<Row> rows = {
        {"bytes", {u"X", 0, Units(std::u16string(u"yz\0", 3)), {}}, "y"},
        {"bytes counted", {u"X", 1, Units(std::u16string(u"yz\0", 3)), {}, 6}, "yz"},
        {"more than the bytes that follow", {u"X", 1, Units(std::u16string(u"yzabc\0", 6)), {}, 13}, ""},
        {"no terminator, bytes counted", {u"X", 1, Units(u"yz"), {}, 4}, "yz??"},
        {"one unit without terminator, bytes counted", {u"X", 1, Units(u"y"), {}, 2}, "y?"},
    };
    for (const WORD type : {2, 4, 0x100, 0x7FFF, 0x8000, 0x8001, 0xFFFF})
        rows.push_back({"another type", {u"X", type, Units(std::u16string(u"yz\0", 3)), {}, 3}, "yz"});
    for (const Row& row : rows) {
        CVersionInfo version;
        EXPECT_EQ(1, version.Load(Write(VersionResource(kFixed, {{u"000004e4", {TextNode(u"Z", u"z"), row.x}}}, "")).c_str())) << row.name;
        EXPECT_STREQ(row.text, version.GetValue("X")) << row.name << ' ' << row.x.type;
        EXPECT_STREQ("z", version.GetValue("Z")) << row.name << ' ' << row.x.type;
    }
}

TEST(VersionInfo, FilesThatAreCutInTheResourceEndInZeros)
{
    const std::string resource =
        VersionResource(kFixed, {{u"000004e4", {TextNode(u"X", u"abcd"), TextNode(u"Z", u"z")}}}, Translation(0, 1252));
    const std::size_t text = resource.find(Units(u"abcd"));
    struct Row
    {
        const char* name;
        std::size_t left;
        int loaded;
        ULONGLONG version;
        const char* x;
        int translations;
    };
    const Row rows[] = {
        {"before the resource", 0, 0, 0, "", 0},
        {"in the key of the root", 12, 1, 0, "", 0},
        {"behind the file's version", 52, 1, 0x0001000200000000, "", 0},
        {"before a text's key", text - 8, 1, 0x0001000200030004, "", 0},
        {"in a text", text + 4, 1, 0x0001000200030004, "ab", 0},
        {"in the translation", resource.size() - 1, 1, 0x0001000200030004, "", 1},
        {"behind the resource", resource.size(), 1, 0x0001000200030004, "abcd", 1},
    };
    for (const bool is64Bit : {true, false}) {
        const std::string whole = Image{is64Bit, {{16, 1, 0x409, resource}}}.Bytes();
        const std::string path = ScratchFile("cut.dll");
        for (const Row& row : rows) {
            WriteBytes(path, whole.substr(0, whole.find(resource) + row.left));
            CVersionInfo version;
            EXPECT_EQ(row.loaded, version.Load(path.c_str())) << row.name;
            EXPECT_EQ(row.version, version.GetFileVersion()) << row.name;
            EXPECT_STREQ(row.x, version.GetValue("X")) << row.name;
            EXPECT_EQ(row.translations, version.GetNumberOfTranslations()) << row.name;
        }
    }
}

TEST(VersionInfo, DamagedLengthsEndASearchAndNothingElse)
{
    const auto entry = [](const char16_t* key, int length) {
        return VersionNode{key, 1, Units(std::u16string(u"y\0", 2)), {}, -1, length};
    };
    struct Row
    {
        const char* name;
        std::vector<VersionNode> entries;
        const char* x;
    };
    const Row rows[] = {
        {"an odd length", {entry(u"AB", 15), entry(u"X", -1)}, "y"},
        {"no length", {entry(u"AB", 0), entry(u"X", -1)}, ""},
        {"shorter than its head", {entry(u"AB", 4), entry(u"X", -1)}, ""},
        {"ends in its key", {entry(u"AB", 9), entry(u"X", -1)}, ""},
        {"longer than its table", {entry(u"AB", 0xFFFF), entry(u"X", -1)}, ""},
        {"longer than the resource", {entry(u"X", 0xFFFF)}, "y"},
        {"found with no length", {entry(u"X", 0)}, "y"},
        {"found though shorter than its head", {entry(u"X", 2)}, "y"},
        {"deep", {{u"AB", 1, "", {{u"X", 1, "", {entry(u"X", -1)}}}}, entry(u"X", -1)}, "y"},
    };
    for (const Row& row : rows) {
        CVersionInfo version;
        EXPECT_EQ(1, version.Load(Write(VersionResource(kFixed, {{u"000004e4", row.entries}}, "")).c_str())) << row.name;
        EXPECT_STREQ(row.x, version.GetValue("X")) << row.name;
    }
}

TEST(VersionInfo, TheLibraryHasAVersionOfItsOwn)
{
    char path[MAX_PATH] = "";
    ASSERT_NE(0u, GetModuleFileNameA(GetModuleHandleA("kelgen.dll"), path, sizeof path));
    for (const char* name : {static_cast<const char*>(path), "kelgen.dll"}) {
        CVersionInfo version;
        ASSERT_EQ(1, version.Load(name)) << name;
        EXPECT_STREQ("kelgen", version.GetProductName());
        EXPECT_STREQ(KELGEN_VERSION_TEXT, version.GetFileVersionAsString());
        const ULONGLONG number = version.GetFileVersion();
        EXPECT_EQ(KELGEN_VERSION_TEXT,
                  std::to_string(number >> 48) + '.' + std::to_string(number >> 32 & 0xFFFF) + '.' + std::to_string(number >> 16 & 0xFFFF));
        EXPECT_EQ(static_cast<ULONGLONG>(kelgen::Version()),
                  (number >> 48) * 10000 + (number >> 32 & 0xFFFF) * 100 + (number >> 16 & 0xFFFF));
        EXPECT_EQ(DWORD{VFT_DLL}, version.GetFileType());
    }
    EXPECT_EQ(KELGEN_VERSION, kelgen::Version());
}

TEST(OSVersionInfo, ToldFromPlatformAndVersion)
{
    struct Row
    {
        DWORD platform, major, minor;
        const char* is;
    };
    const Row rows[] = {
        {0, 3, 10, "31"},
        {1, 3, 90, ""},
        {1, 4, 0, "95 95+"},
        {1, 4, 9, "95 95+"},
        {1, 4, 10, "98 95+ 98+"},
        {1, 4, 89, "95+ 98+"},
        {1, 4, 90, "ME 95+ 98+ ME+"},
        {1, 5, 0, "95+ 98+ ME+"},
        {2, 3, 51, ""},
        {2, 4, 0, "NT4 NT4+"},
        {2, 4, 1, "NT4+"},
        {2, 5, 0, "2K NT4+ 2K+"},
        {2, 5, 1, "XP NT4+ 2K+ XP+"},
        {2, 5, 2, "NT4+ 2K+ XP+"},
        {2, 6, 0, "NT4+ 2K+ XP+"},
        {3, 5, 1, "NT4+ 2K+ XP+"},
    };
    const std::pair<const char*, bool (COSVersionInfo::*)() const> tests[] = {
        {"31", &COSVersionInfo::IsWin31},
        {"95", &COSVersionInfo::IsWin95},
        {"98", &COSVersionInfo::IsWin98},
        {"ME", &COSVersionInfo::IsWinME},
        {"NT4", &COSVersionInfo::IsWinNT4},
        {"2K", &COSVersionInfo::IsWin2K},
        {"XP", &COSVersionInfo::IsWinXP},
        {"95+", &COSVersionInfo::IsWin95OrGreater},
        {"98+", &COSVersionInfo::IsWin98OrGreater},
        {"ME+", &COSVersionInfo::IsWinMEOrGreater},
        {"NT4+", &COSVersionInfo::IsWinNT4OrGreater},
        {"2K+", &COSVersionInfo::IsWin2KOrGreater},
        {"XP+", &COSVersionInfo::IsWinXPOrGreater},
    };
    // The object is the system's record and nothing else.
    static_assert(sizeof(COSVersionInfo) == sizeof(OSVERSIONINFOA) && sizeof(OSVERSIONINFOA) == 148);
    OSVERSIONINFOA running{};
    running.dwOSVersionInfoSize = sizeof running;
    GetVersionExA(&running);
    COSVersionInfo& version = COSVersionInfo::Get();
    EXPECT_EQ(0, std::memcmp(&running, &version, sizeof running));
    for (const Row& row : rows) {
        const OSVERSIONINFOA record{sizeof record, row.major, row.minor, 0, row.platform, ""};
        std::memcpy(static_cast<void*>(&version), &record, sizeof record);
        std::string is;
        for (const auto& [name, test] : tests)
            if ((version.*test)())
                is += (is.empty() ? "" : " ") + std::string(name);
        EXPECT_EQ(row.is, is) << row.platform << ' ' << row.major << '.' << row.minor;
    }
    std::memcpy(static_cast<void*>(&version), &running, sizeof running);
}
