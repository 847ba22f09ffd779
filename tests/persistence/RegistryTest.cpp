// RegistryTest.cpp: values of every type and length, and the life of a key's handle.
#include <kelgen/persistence/Registry.h>

#include "platform/registry/RegistryFixture.h"
#include "support/Rows.h"

#include <algorithm>
#include <atomic>
#include <thread>

using namespace kelgen::test;
using namespace std::string_literals;

TEST(Registry, DataIsReadAsText)
{
    struct Case
    {
        const char* name;
        DWORD type;
        std::string bytes;
        const char* text;
    };
    for (const Case& row : std::vector<Case>{
             {"no bytes", REG_SZ, "", ""},
             {"no terminator", REG_SZ, "hello", "hello"},
             {"cut at its first zero", REG_SZ, "ab\0cd\0"s, "ab"},
             {"high bytes", REG_SZ, "\xE4\x80\x81\xFF\0"s, "\xE4\x80\x81\xFF"},
             {"number", REG_DWORD, "\1\2\3\4", nullptr},
             {"expandable", REG_EXPAND_SZ, "%OS%\0"s, nullptr},
             {"no type", REG_NONE, "text\0"s, nullptr},
             {"long binary", REG_BINARY, std::string(5000, 'x'), nullptr},
         }) {
        SCOPED_TRACE(row.name);
        const ScratchKey scratch;
        RegSetValueExA(scratch, "value", 0, row.type, Bytes(row.bytes.c_str()), static_cast<DWORD>(row.bytes.size()));
        CRegistry::CKey key(HKEY_CURRENT_USER, scratch.Path().c_str());
        CString out = "before";
        EXPECT_EQ(row.text != nullptr, key.QueryValue("VALUE", out));
        EXPECT_STREQ(row.text != nullptr ? row.text : "before", out);
    }
}

TEST(Registry, TextsOfAnyLengthComeBackFromNamedAndUnnamedValues)
{
    const ScratchKey scratch;
    CRegistry::CKey key(HKEY_CURRENT_USER, scratch.Path().c_str());
    for (int length : {0, 1, 510, 511, 512, 513, 1000, 1'000'000}) {
        const std::string text(static_cast<std::size_t>(length), 'x');
        ASSERT_TRUE(key.SetValue("text", text.c_str())) << length;
        CString out;
        ASSERT_TRUE(key.QueryValue("text", out)) << length;
        EXPECT_EQ(length, out.GetLength());
        EXPECT_TRUE(out == text.c_str()) << length;
        EXPECT_EQ(text, GetText(scratch, "text")) << "the terminator is stored";
    }
    CString out;
    EXPECT_FALSE(key.SetValue("null", nullptr));
    EXPECT_TRUE(key.SetValue("", "default"));
    EXPECT_TRUE(key.QueryValue(nullptr, out));
    EXPECT_TRUE(key.DeleteValue(""));
    EXPECT_FALSE(key.QueryValue("", out));
    EXPECT_STREQ("default", out);
}

TEST(Registry, CreateKeyOpensWhatIsThereAndMakesWhatIsNot)
{
    const ScratchKey scratch;
    CRegistry::CKey key;
    ASSERT_TRUE(key.CreateKey(scratch, "new\\inner"));
    ASSERT_TRUE(key.SetValue("text", "kept"));
    const CRegistry::CKey first(key);

    CString text;
    ASSERT_TRUE(key.CreateKey(scratch, "NEW\\INNER"));
    EXPECT_TRUE(key.QueryValue("text", text));
    EXPECT_STREQ("kept", text);
    EXPECT_FALSE(first.QueryValue("text", text)) << "the key that was open is closed";

    const HKEY before = key.GetHandle();
    EXPECT_FALSE(key.CreateKey(nullptr, "new"));
    EXPECT_EQ(before, key.GetHandle());
}

TEST(Registry, DeleteKeyRemovesTheKeyItselfUnlessItHasSubkeys)
{
    const ScratchKey scratch;
    HKEY made = nullptr;
    RegCreateKeyA(scratch, "inner", &made);
    RegCloseKey(made);
    CRegistry::CKey outerKey(HKEY_CURRENT_USER, scratch.Path().c_str());
    EXPECT_FALSE(outerKey.DeleteKey());
    CRegistry::CKey innerKey(scratch, "inner");
    EXPECT_TRUE(innerKey.DeleteKey());
    EXPECT_FALSE(innerKey.SetValue("a", "b")) << "deleted, although the handle is open";
    EXPECT_NE(nullptr, innerKey.GetHandle());
    EXPECT_EQ(nullptr, CRegistry::CKey(scratch, "inner").GetHandle());
}

TEST(Registry, CopiesShareTheHandleAndAFailedOpeningLosesIt)
{
    const ScratchKey scratch;
    CRegistry::CKey key(HKEY_CURRENT_USER, scratch.Path().c_str());
    CRegistry::CKey copy(key);
    EXPECT_EQ(key.GetHandle(), copy.GetHandle());
    key.CloseKey();
    EXPECT_EQ(nullptr, key.GetHandle());
    EXPECT_FALSE(copy.SetValue("a", "b"));
    copy.CloseKey();
    EXPECT_NE(nullptr, copy.GetHandle()) << "closing failed";
    EXPECT_FALSE(copy.OpenKey(scratch, "missing"));
    EXPECT_EQ(nullptr, copy.GetHandle());
}

TEST(Registry, ValueThatOthersWriteIsNeverMissing)
{
    const ScratchKey scratch;
    const std::string texts[] = {std::string(600, 'a'), std::string(3000, 'b'), std::string(20000, 'c')};
    SetText(scratch, "value", texts[0]);
    std::atomic<bool> stop = false;
    std::thread writer([&] {
        for (std::size_t i = 0; !stop; ++i)
            SetText(scratch, "value", texts[i % 3]);
    });
    CRegistry::CKey key(HKEY_CURRENT_USER, scratch.Path().c_str());
    int missing = 0, torn = 0;
    for (int i = 0; i < 500; ++i) {
        CString out;
        missing += !key.QueryValue("value", out);
        torn += std::find(std::begin(texts), std::end(texts), std::string(out)) == std::end(texts);
    }
    stop = true;
    writer.join();
    EXPECT_EQ(0, missing);
    EXPECT_EQ(0, torn);
}
