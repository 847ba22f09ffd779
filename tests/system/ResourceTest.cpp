// ResourceTest.cpp: custom resources as bytes and as text, with and without a module.
#include <kelgen/system/Resource.h>

using namespace std::string_literals;

namespace {

std::string Bytes(const CString& text)
{
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

}  // namespace

TEST(Resource, LoadsBytesAndTheTwoKindsOfText)
{
    struct Row
    {
        unsigned id;
        const char* type;
        std::string bytes, untilZero, wholeLength;
    };
    const Row rows[] = {
        {700, "BLOB", "ab\0cd"s, "ab", "ab\0\0\0"s},     // a zero inside
        {701, "blob", "text", "text", "text"},           // the type in another case
        {702, "BLOB", "\0ab"s, "", "\0\0\0"s},           // a zero first
        {703, "BLOB", "", "", ""},                       // no bytes
        {704, RT_RCDATA, "number", "number", "number"},  // a type that is a number
    };
    const HINSTANCE program = GetModuleHandleA(nullptr);
    for (const Row& row : rows) {
        for (const bool withModule : {true, false}) {
            CMemoryStorage storage(nullptr);
            ASSERT_TRUE(withModule ? CResource::LoadResource(storage, program, row.id, row.type)
                                   : CResource::LoadResource(storage, row.id, row.type));
            ASSERT_EQ(row.bytes.size(), storage.GetStorageSize()) << row.id;
            EXPECT_TRUE(std::equal(row.bytes.begin(), row.bytes.end(), reinterpret_cast<char*>(storage.GetAllocation()))) << row.id;
        }
        CString text("before");
        EXPECT_TRUE(CResource::LoadResource(text, program, row.id, row.type));
        EXPECT_EQ(row.untilZero, Bytes(text)) << row.id;
        EXPECT_TRUE(CResource::LoadResource(text, row.id, row.type));
        EXPECT_EQ(row.wholeLength, Bytes(text)) << row.id;
    }
}

TEST(Resource, FailuresLeaveTheTargetAlone)
{
    const HINSTANCE program = GetModuleHandleA(nullptr);
    CString text("before");
    CMemoryStorage storage(nullptr);
    storage.Allocate(3);
    EXPECT_FALSE(CResource::LoadResource(text, nullptr, 701, "BLOB"));
    EXPECT_FALSE(CResource::LoadResource(storage, nullptr, 701, "BLOB"));
    for (const auto& [id, type] : {std::pair{799u, "BLOB"}, std::pair{701u, "NONE"}, std::pair{0u, "BLOB"}}) {
        EXPECT_FALSE(CResource::LoadResource(text, program, id, type)) << id;
        EXPECT_FALSE(CResource::LoadResource(text, id, type)) << id;
        EXPECT_FALSE(CResource::LoadResource(storage, program, id, type)) << id;
        EXPECT_FALSE(CResource::LoadResource(storage, id, type)) << id;
    }
    EXPECT_STREQ("before", text);
    EXPECT_EQ(3u, storage.GetStorageSize());
}
