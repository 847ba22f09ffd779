// ResourceTest.cpp: look-up of resources and strings in the test program's own module.

#include "support/Failures.h"

#include <optional>

using namespace kelgen::test;
using namespace std::string_literals;

namespace {

LPCSTR Number(int number)
{
    return MAKEINTRESOURCEA(number);
}

std::string DataOf(HRSRC resource, HMODULE module = nullptr)
{
    const auto* data = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    return {data, SizeofResource(module, resource)};
}

}  // namespace

struct FindRow
{
    const char* name;
    LPCSTR type, resource;
    std::optional<WORD> language;
    std::string data;
    DWORD error;
};

const LPCSTR kRcData = Number(10);
const WORD kEnglish = MAKELANGID(9, 1);

TEST(ResourceFind, GivesDataOrError)
{
    const FindRow rows[] = {
        {"Text", "MYTYPE", "BLOB1", {}, "ab\0cd"s, 777},
        {"TextOtherCase", "mytype", "blob1", {}, "ab\0cd"s, 777},
        {"Numbers", Number(301), Number(300), {}, "\1\0\2\0\3\0\0\0"s, 777},
        {"NumbersAsText", "#301", "#300", {}, "\1\0\2\0\3\0\0\0"s, 777},
        {"NumberWithLetters", "MYTYPE", "#7x", {}, "seven", 777},
        {"NoData", kRcData, "empty", {}, "", 777},
        {"MissingType", "NOPE", "BLOB1", {}, "", ERROR_RESOURCE_TYPE_NOT_FOUND},
        {"MissingName", "MYTYPE", "NOPE", {}, "", ERROR_RESOURCE_NAME_NOT_FOUND},
        {"EmptyName", "MYTYPE", "", {}, "", ERROR_RESOURCE_NAME_NOT_FOUND},
        {"HashAlone", "MYTYPE", "#", {}, "", ERROR_RESOURCE_NAME_NOT_FOUND},
        {"NumberZero", kRcData, Number(0), {}, "", ERROR_RESOURCE_NAME_NOT_FOUND},
        {"NumberTooBig", "MYTYPE", "#70000", {}, "", ERROR_INVALID_PARAMETER},
        {"NumberNegative", "MYTYPE", "#-1", {}, "", ERROR_INVALID_PARAMETER},
        {"English", "MYTYPE", Number(7), kEnglish, "seven", 777},
        {"German", "MYTYPE", Number(7), MAKELANGID(7, 1), "sieben!", 777},
        {"LanguageMissing", "MYTYPE", Number(7), MAKELANGID(12, 1), "", ERROR_RESOURCE_LANG_NOT_FOUND},
        {"OtherSublanguage", "MYTYPE", Number(7), MAKELANGID(9, 2), "", ERROR_RESOURCE_LANG_NOT_FOUND},
        {"NeutralSublanguage", "MYTYPE", Number(7), MAKELANGID(7, 0), "", ERROR_RESOURCE_LANG_NOT_FOUND},
        {"NoLanguage", "MYTYPE", Number(7), 0, "seven", 777},
        {"UsersLanguage", "MYTYPE", Number(7), MAKELANGID(0, 1), "seven", 777},
        {"NeutralForEnglish", kRcData, Number(2), kEnglish, "neutral", 777},
        {"EnglishIsExact", kRcData, Number(3), kEnglish, "english!", 777},
        {"NeutralFirst", kRcData, Number(3), {}, "neutral", 777},
        {"PrimaryLanguage", kRcData, Number(4), MAKELANGID(7, 1), "deu", 777},
        {"AnyLanguage", kRcData, Number(4), {}, "deu", 777},
    };
    for (const FindRow& row : rows) {
        SCOPED_TRACE(row.name);
        SetLastError(777);
        const HRSRC found =
            row.language ? FindResourceExA(nullptr, row.type, row.resource, *row.language) : FindResourceA(nullptr, row.resource, row.type);
        EXPECT_EQ(row.error, GetLastError());
        ASSERT_EQ(row.error == 777, found != nullptr);
        EXPECT_EQ(row.data, found ? DataOf(found) : "");
    }
}

TEST(Resource, NullAndForeignHandlesAreHarmless)
{
    EXPECT_EQ(nullptr, LoadResource(nullptr, nullptr));
    EXPECT_EQ(nullptr, LockResource(nullptr));
    EXPECT_EQ(0u, SizeofResource(nullptr, nullptr));
    EXPECT_FALSE(FreeResource(nullptr));
    const HRSRC empty = FindResourceA(nullptr, "empty", kRcData);
    EXPECT_NE(nullptr, LockResource(LoadResource(nullptr, empty)));
    EXPECT_FALSE(FreeResource(LoadResource(nullptr, empty)));
}

TEST(Resource, StringsAreCutAndTerminated)
{
    char text[20] = "####";
    SetLastError(777);
    EXPECT_EQ(4, LoadStringA(nullptr, 5, text, sizeof text));
    EXPECT_STREQ("five", text);
    EXPECT_EQ(2, LoadStringA(nullptr, 5, text, 3));
    EXPECT_STREQ("fi", text);
    EXPECT_EQ(0, LoadStringA(nullptr, 5, text, 1));
    EXPECT_STREQ("", text);
    EXPECT_EQ(-1, LoadStringA(nullptr, 5, text, 0));
    EXPECT_TRUE(FailedWith(777, !LoadStringA(nullptr, 2, text, sizeof text))) << "not in its block";
    EXPECT_EQ(7, LoadStringA(nullptr, 16, text, sizeof text)) << "first of the second block";
    EXPECT_STREQ("sixteen", text);
    EXPECT_EQ(11, LoadStringA(nullptr, 500, text, sizeof text)) << "any language";
    EXPECT_EQ(7, LoadStringA(nullptr, 40, text, sizeof text));
    EXPECT_STREQ("caf\xE9 \x80!", text);
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_NAME_NOT_FOUND, !LoadStringA(nullptr, 3000, text, sizeof text)));
    EXPECT_STREQ("", text);
}

TEST(Resource, WideStringsGiveTheirAddressForSizeZero)
{
    WCHAR text[20] = {};
    EXPECT_EQ(2, LoadStringW(nullptr, 5, text, 3));
    EXPECT_EQ('i', text[1]);
    EXPECT_EQ(0, text[2]);
    const WCHAR* address = nullptr;
    ASSERT_EQ(4, LoadStringW(nullptr, 5, reinterpret_cast<LPWSTR>(&address), 0));
    EXPECT_EQ('f', address[0]);
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_NAME_NOT_FOUND, !LoadStringW(nullptr, 3000, text, 3)));
}

namespace {

std::string seen;

BOOL CALLBACK SeeType(HMODULE, LPSTR type, LONG_PTR)
{
    seen += (IS_INTRESOURCE(type) ? std::to_string(LOWORD(reinterpret_cast<ULONG_PTR>(type))) : type) + " ";
    return TRUE;
}

BOOL CALLBACK SeeName(HMODULE module, LPCSTR, LPSTR name, LONG_PTR stop)
{
    SeeType(module, name, 0);
    return stop == 0;
}

BOOL CALLBACK SeeLanguage(HMODULE, LPCSTR, LPCSTR, WORD language, LONG_PTR)
{
    seen += std::to_string(language) + " ";
    return TRUE;
}

}  // namespace

TEST(Resource, EnumerationsAreOrderedTextsBeforeNumbers)
{
    seen.clear();
    EXPECT_TRUE(EnumResourceTypesA(nullptr, SeeType, 0));
    EXPECT_TRUE(seen.starts_with("MYTYPE 6 10 301 ")) << seen;
    seen.clear();
    EXPECT_TRUE(EnumResourceNamesA(nullptr, "mytype", SeeName, 0));
    EXPECT_TRUE(EnumResourceNamesA(nullptr, Number(6), SeeName, 0));
    EXPECT_EQ("BLOB1 7 1 2 3 32 ", seen);
    seen.clear();
    EXPECT_FALSE(EnumResourceNamesA(nullptr, "MYTYPE", SeeName, 1)) << "the callback ends it";
    EXPECT_TRUE(EnumResourceLanguagesA(nullptr, "MYTYPE", Number(7), SeeLanguage, 0));
    EXPECT_EQ("BLOB1 1031 1033 ", seen);

    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_TYPE_NOT_FOUND, !EnumResourceNamesA(nullptr, "NOPE", SeeName, 0)));
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_NAME_NOT_FOUND, !EnumResourceLanguagesA(nullptr, "MYTYPE", "NOPE", SeeLanguage, 0)));
}

TEST(Resource, OfALoadedLibraryLivesAsLongAsThat)
{
    const HMODULE module = LoadLibraryA(RESOURCE_MODULE);
    ASSERT_NE(nullptr, module) << GetLastError();
    char text[20] = "";
    EXPECT_EQ(13, LoadStringA(module, 5, text, sizeof text));
    EXPECT_STREQ("of the module", text);
    EXPECT_EQ("more", DataOf(FindResourceA(module, Number(2), kRcData), module));
    EXPECT_EQ(nullptr, FindResourceA(module, "BLOB1", "MYTYPE")) << "the program's are not the library's";
    EXPECT_EQ(static_cast<DWORD>(ERROR_RESOURCE_TYPE_NOT_FOUND), GetLastError());
    EXPECT_EQ(4, LoadStringA(nullptr, 5, text, sizeof text));

    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(FailedWith(ERROR_RESOURCE_DATA_NOT_FOUND, !LoadStringA(module, 5, text, sizeof text)));
}
