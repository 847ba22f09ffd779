// RegistryTest.cpp: values of every type and length, and the life of a key's handle.
#include <kelgen/persistence/Registry.h>

#include "persistence/TestKey.h"
#include "support/Rows.h"

using kelgen::test::RowName;
using kelgen::test::TestKey;

using namespace std::string_literals;

struct Data
{
    const char* name;
    DWORD type;
    std::string bytes;
    const char* text;  // null: not read
};

class RegistryData : public testing::TestWithParam<Data>
{};

TEST_P(RegistryData, ReadsAsText)
{
    const Data& row = GetParam();
    const TestKey test;
    test.Put("value", row.type, row.bytes);
    CRegistry::CKey key(HKEY_CURRENT_USER, test.GetName().c_str());
    CString out = "before";
    EXPECT_EQ(row.text != nullptr, key.QueryValue("VALUE", out));
    EXPECT_STREQ(row.text != nullptr ? row.text : "before", out);
}

INSTANTIATE_TEST_SUITE_P(, RegistryData, testing::Values(
    Data{"Text", REG_SZ, "hello\0"s, "hello"}, Data{"EmptyText", REG_SZ, "\0"s, ""}, Data{"NoBytes", REG_SZ, "", ""},
    Data{"NoTerminator", REG_SZ, "hello", "hello"}, Data{"CutAtItsFirstZero", REG_SZ, "ab\0cd\0"s, "ab"},
    Data{"HighBytes", REG_SZ, "\xE4\x80\x81\xFF\0"s, "\xE4\x80\x81\xFF"}, Data{"Number", REG_DWORD, "\1\2\3\4", nullptr},
    Data{"Binary", REG_BINARY, "text\0"s, nullptr}, Data{"NoType", REG_NONE, "text\0"s, nullptr},
    Data{"Expandable", REG_EXPAND_SZ, "%OS%\0"s, nullptr}, Data{"List", REG_MULTI_SZ, "a\0b\0\0"s, nullptr},
    Data{"LongBinary", REG_BINARY, std::string(5000, 'x'), nullptr}), RowName);

TEST(Registry, TextsOfAnyLengthComeBack)
{
    const TestKey test;
    CRegistry::CKey key(HKEY_CURRENT_USER, test.GetName().c_str());
    for (int length : {0, 1, 510, 511, 512, 513, 1000, 100'000, 1'000'000}) {
        const std::string text(static_cast<std::size_t>(length), 'x');
        ASSERT_TRUE(key.SetValue("text", text.c_str())) << length;
        CString out;
        ASSERT_TRUE(key.QueryValue("text", out)) << length;
        EXPECT_EQ(length, out.GetLength());
        EXPECT_TRUE(out == text.c_str()) << length;
        EXPECT_EQ(static_cast<DWORD>(length + 1), test.SizeOf("text")) << "the terminator is stored";
    }
}

TEST(Registry, TheUnnamedValueAndAMissingOne)
{
    const TestKey test;
    CRegistry::CKey key(HKEY_CURRENT_USER, test.GetName().c_str());
    CString out = "before";
    EXPECT_FALSE(key.QueryValue("", out));
    EXPECT_TRUE(key.SetValue("", "default"));
    EXPECT_TRUE(key.QueryValue(nullptr, out));
    EXPECT_STREQ("default", out);
    EXPECT_TRUE(key.DeleteValue(""));
    EXPECT_FALSE(key.DeleteValue(""));
    EXPECT_FALSE(key.QueryValue("", out));
    EXPECT_STREQ("default", out);
    EXPECT_FALSE(key.SetValue("null", nullptr));
}

TEST(Registry, AClosedKeyFailsEverywhere)
{
    const TestKey test;
    CRegistry::CKey key(HKEY_CURRENT_USER, (test.GetName() + "\\missing").c_str());
    CString out;
    EXPECT_EQ(nullptr, key.GetHandle());
    EXPECT_FALSE(key.QueryValue("a", out));
    EXPECT_FALSE(key.SetValue("a", "b"));
    EXPECT_FALSE(key.DeleteValue("a"));
    EXPECT_FALSE(key.DeleteKey());
    key.CloseKey();

    EXPECT_TRUE(key.OpenKey(HKEY_CURRENT_USER, test.GetName().c_str()));
    EXPECT_TRUE(key.SetValue("a", "b"));
    key.CloseKey();
    EXPECT_EQ(nullptr, key.GetHandle());
    EXPECT_FALSE(key.OpenKey(nullptr, test.GetName().c_str()));
}

TEST(Registry, DeleteKeyRemovesTheKeyItselfUnlessItHasSubkeys)
{
    const TestKey test;
    const std::string inner = test.GetName() + "\\inner";
    test.Create("inner");
    CRegistry::CKey outerKey(HKEY_CURRENT_USER, test.GetName().c_str());
    EXPECT_FALSE(outerKey.DeleteKey());
    CRegistry::CKey innerKey(HKEY_CURRENT_USER, inner.c_str());
    EXPECT_TRUE(innerKey.SetValue("a", "b"));
    EXPECT_TRUE(innerKey.DeleteKey());
    EXPECT_FALSE(innerKey.SetValue("a", "b")) << "deleted, although the handle is open";
    EXPECT_NE(nullptr, innerKey.GetHandle());
    EXPECT_FALSE(CRegistry::CKey().OpenKey(HKEY_CURRENT_USER, inner.c_str()));
}

TEST(Registry, CopiesShareTheHandle)
{
    const TestKey test;
    CRegistry::CKey key(HKEY_CURRENT_USER, test.GetName().c_str());
    CRegistry::CKey copy(key);
    EXPECT_EQ(key.GetHandle(), copy.GetHandle());
    key.CloseKey();
    EXPECT_FALSE(copy.SetValue("a", "b"));
    copy.CloseKey();
    EXPECT_NE(nullptr, copy.GetHandle()) << "closing failed";
}
