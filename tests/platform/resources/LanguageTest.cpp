// LanguageTest.cpp: the language of a thread, and in which one its resources are found.
#include "support/Failures.h"
#include "support/Target.h"

#include <optional>
#include <thread>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

constexpr LANGID kEnglish = 0x409, kBritish = 0x809, kGerman = 0x407, kSwiss = 0x807, kFrench = 0x40C, kItalian = 0x410;

class ResourceLanguage : public testing::Test
{
protected:
    ResourceLanguage() : m_module(LoadLibraryA(RESOURCE_MODULE)) {}
    ~ResourceLanguage() override
    {
        SetThreadLocale(LOCALE_USER_DEFAULT);
        SetThreadUILanguage(0);
        FreeLibrary(m_module);
    }

    /// What the resource says; "error N" when there is none.
    std::string Find(int number, std::optional<WORD> language = {})
    {
        const LPCSTR name = MAKEINTRESOURCEA(number), type = MAKEINTRESOURCEA(10);
        const HRSRC found = language ? FindResourceExA(m_module, type, name, *language) : FindResourceA(m_module, name, type);
        if (!found)
            return "error " + std::to_string(GetLastError());
        return {static_cast<const char*>(LockResource(LoadResource(m_module, found))), SizeofResource(m_module, found)};
    }

    std::string String(UINT id)
    {
        char text[40] = "";
        LoadStringA(m_module, id, text, sizeof text);
        return text;
    }

    std::string MenuItem()
    {
        const HMENU menu = LoadMenuA(m_module, MAKEINTRESOURCEA(101));
        char text[40] = "";
        GetMenuStringA(menu, 0, text, sizeof text, MF_BYPOSITION);
        DestroyMenu(menu);
        return text;
    }

    std::string Caption()
    {
        const HWND dialog = CreateDialogParamA(m_module, MAKEINTRESOURCEA(101), nullptr, nullptr, 0);
        char text[40] = "";
        GetWindowTextA(dialog, text, sizeof text);
        DestroyWindow(dialog);
        return text;
    }

    int AcceleratorCount()
    {
        const HACCEL table = LoadAcceleratorsA(m_module, MAKEINTRESOURCEA(101));
        const int count = CopyAcceleratorTableA(table, nullptr, 0);
        DestroyAcceleratorTable(table);
        return count;
    }

    const HMODULE m_module;
};

}  // namespace

TEST_F(ResourceLanguage, IsTheFirstOfAFixedOrder)
{
    struct Row
    {
        const char* name;
        int number;
        LCID locale;
        std::string found;
    };
    const Row rows[] = {
        {"thread's", 101, kGerman, "de-DE"},
        {"thread's, without a country", 101, LANG_GERMAN, "de-DE"},
        {"user's for another country", 101, kSwiss, "en-US"},
        {"user's for none", 101, kItalian, "en-US"},
        {"user's", 101, LOCALE_USER_DEFAULT, "en-US"},
        {"neutral before all", 102, kGerman, "neutral"},
        {"thread's country", 103, kSwiss, "de-CH"},
        {"not the primary language of the locale", 103, kGerman, "en-US"},
        {"thread's without English", 104, kFrench, "fr-FR"},
        {"lowest number", 104, kEnglish, "de-DE"},
        {"lowest number is not that of the lowest primary language", 105, kEnglish, "de-CH"},
        {"thread's second country", 105, kBritish, "en-GB"},
        {"user's primary language", 106, kGerman, "en"},
        {"lowest number without a country", 107, kEnglish, "fr"},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(SetThreadLocale(row.locale)) << row.name;
        EXPECT_EQ(row.found, Find(row.number)) << row.name;
    }
}

TEST_F(ResourceLanguage, ThatIsAskedForIsExactOrPrimaryOrNeutral)
{
    struct Row
    {
        int number;
        WORD language;
        std::string found;
    };
    const Row rows[] = {
        {101, kGerman, "de-DE"}, {101, kSwiss, "error 1815"}, {102, kFrench, "neutral"},         {102, kGerman, "de-DE"},
        {103, kGerman, "de"},    {106, kEnglish, "en"},       {103, LANG_USER_DEFAULT, "de-CH"}, {103, LANG_SYSTEM_DEFAULT, "en-US"},
    };
    ASSERT_TRUE(SetThreadLocale(kSwiss));
    for (const Row& row : rows)
        EXPECT_EQ(row.found, Find(row.number, row.language)) << row.number << " in " << row.language;
}

TEST_F(ResourceLanguage, HoldsForAllThatIsLoadedByName)
{
    const auto all = [this] {
        return String(1000) + ", " + String(1001) + ", " + MenuItem() + ", " + Caption() + ", " + std::to_string(AcceleratorCount());
    };
    EXPECT_EQ("file, not translated, menu, dialog, 1", all());
    ASSERT_TRUE(SetThreadLocale(kGerman));
    EXPECT_EQ("Datei, , Speisekarte, Gespr\xE4"
              "ch, 2",
              all())
        << "strings are translated in blocks";
}

TEST_F(ResourceLanguage, BelongsToAThread)
{
    ASSERT_TRUE(SetThreadLocale(kGerman));
    std::string other;
    LCID locale = 0;
    std::thread([&] {
        locale = GetThreadLocale();
        SetThreadLocale(kFrench);
        other = Find(101);
    }).join();
    EXPECT_EQ(GetUserDefaultLCID(), locale);
    EXPECT_EQ("fr-FR", other);
    EXPECT_EQ("de-DE", Find(101));
}

TEST_F(ResourceLanguage, TakesLocalesThatThereAre)
{
    struct Row
    {
        LCID locale, now;
    };
    for (const Row& row : {Row{kSwiss, kSwiss}, Row{LANG_FRENCH, kFrench}, Row{0, kEnglish}, Row{LOCALE_USER_DEFAULT, kEnglish},
                           Row{LOCALE_SYSTEM_DEFAULT, kEnglish}, Row{LOCALE_INVARIANT, LOCALE_INVARIANT}, Row{0x10407, kGerman}}) {
        EXPECT_TRUE(SetThreadLocale(row.locale)) << row.locale;
        EXPECT_EQ(row.now, GetThreadLocale());
    }
    for (const LCID unknown : {0xFFFFu, 0x1234u, 0x12345678u}) {
        EXPECT_TRUE(FailedWith(ERROR_INVALID_PARAMETER, !SetThreadLocale(unknown))) << unknown;
        EXPECT_EQ(kGerman, GetThreadLocale());
    }
    EXPECT_EQ(GetUserDefaultUILanguage(), GetThreadUILanguage());
    EXPECT_EQ(kFrench, SetThreadUILanguage(kFrench));
    EXPECT_EQ(GetUserDefaultUILanguage(), SetThreadUILanguage(0));
    EXPECT_EQ(GetUserDefaultUILanguage(), GetThreadUILanguage());
    EXPECT_EQ(kEnglish, GetSystemDefaultUILanguage());
}

namespace {

std::string seen;

BOOL CALLBACK SeeType(HMODULE, LPWSTR type, LONG_PTR)
{
    seen +=
        (IS_INTRESOURCE(type) ? std::to_string(LOWORD(reinterpret_cast<ULONG_PTR>(type))) : std::string(type, type + lstrlenW(type))) + " ";
    return TRUE;
}

BOOL CALLBACK SeeName(HMODULE module, LPCWSTR, LPWSTR name, LONG_PTR)
{
    return SeeType(module, name, 0);
}

BOOL CALLBACK SeeLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR)
{
    seen += std::to_string(language) + " ";
    return TRUE;
}

}  // namespace

TEST_F(ResourceLanguage, WideEnumerationsTellAll)
{
    seen.clear();
    EXPECT_TRUE(EnumResourceTypesW(nullptr, SeeType, 0));
    EXPECT_TRUE(seen.starts_with("MYTYPE 6 10 301 ")) << seen;
    seen.clear();
    EXPECT_TRUE(EnumResourceNamesW(nullptr, kelgen::AsWide(u"mytype"_w), SeeName, 0));
    EXPECT_TRUE(EnumResourceLanguagesW(m_module, MAKEINTRESOURCEW(10), MAKEINTRESOURCEW(101), SeeLanguage, 0));
    EXPECT_EQ("BLOB1 7 1031 1033 1036 ", seen);
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_TYPE_NOT_FOUND, !EnumResourceNamesW(nullptr, kelgen::AsWide(u"NOPE"_w), SeeName, 0)));
}

// A difference that stays (docs/differences.md): the emulator keeps no language of the thread's interface.
TEST_F(ResourceLanguage, OfTheThreadsInterfaceComesBeforeItsLocale)
{
    struct Row
    {
        int number;
        LANGID language;
        std::string found, elsewhere;
    };
    const Row rows[] = {
        {101, kFrench, "fr-FR", "de-DE"}, {102, kFrench, "neutral", "neutral"}, {101, kItalian, "de-DE", "de-DE"},
        {103, kGerman, "de", "en-US"},    {101, LANG_FRENCH, "fr-FR", "de-DE"},
    };
    ASSERT_TRUE(SetThreadLocale(kGerman));
    for (const Row& row : rows) {
        EXPECT_EQ(row.language, SetThreadUILanguage(row.language));
        EXPECT_EQ(isOurPlatform ? row.found : row.elsewhere, Find(row.number)) << row.number << " in " << row.language;
    }
    EXPECT_EQ(isOurPlatform ? kFrench : kEnglish, GetThreadUILanguage());
    EXPECT_EQ(isOurPlatform ? 0 : 0xFFFF, SetThreadUILanguage(0xFFFF));
}
