// MapTest.cpp: hashing, iteration order, entry lifetimes and random changes against a standard map.
#include <kelgen/framework/collections/Map.h>
#include <kelgen/framework/collections/MapTypes.h>

#include "framework/Thrown.h"
#include "support/Random.h"

#include <map>

using namespace kelgen::test;

namespace {

/// Keys compared by both parts, hashed by the first alone.
struct PairKey
{
    const void* owner;
    int id;
};

template <class MAP>
std::vector<int> KeysInOrder(const MAP& map)
{
    std::vector<int> keys;
    for (POSITION position = map.GetStartPosition(); position != nullptr;) {
        int key = 0, value = 0;
        map.GetNextAssoc(position, key, value);
        keys.push_back(key);
    }
    return keys;
}

}  // namespace

template <>
UINT HashKey<PairKey&>(PairKey& key)
{
    return static_cast<UINT>(reinterpret_cast<DWORD_PTR>(key.owner) | static_cast<UINT>(key.id));
}

template <>
BOOL CompareElements<PairKey, PairKey>(const PairKey* left, const PairKey* right)
{
    return left->owner == right->owner && left->id == right->id;
}

TEST(Map, HashFollowsTheRule)
{
    EXPECT_EQ(0x123u, HashKey<int>(0x1234));
    EXPECT_EQ(0x0FFFFFFFu, HashKey<int>(-1)) << "32 bits";
    EXPECT_EQ(0x23456789u, HashKey<ULONGLONG>(0x123456789AULL));
    EXPECT_EQ(0x01234567u, HashKey<void*>(reinterpret_cast<void*>(0x12345678)));
    EXPECT_EQ(('a' * 33u + 'b') * 33 + 'c', HashKey<LPCSTR>("abc"));
    EXPECT_EQ(('a' * 33u + 'b') * 33 + 'c', HashKey<const CString&>("abc"));
    EXPECT_EQ('a' * 33u + 0x20AC, HashKey<const unsigned short*>(u"a\u20AC"_w));
    EXPECT_EQ(0xFFFFFFE9u, HashKey<LPCSTR>("\xE9")) << "high characters count as signed";
    EXPECT_EQ(0u, HashKey<LPCSTR>(""));
}

TEST(Map, IteratesByBucketAndNewestFirst)
{
    CMap<int, int, int, int> map;
    EXPECT_EQ(17u, map.GetHashTableSize());
    // Buckets of a key: (key >> 4) % 17.
    for (int key : {0x20, 0x00, 0x130, 0x10, 0x05, 0x220})
        map.SetAt(key, 1);
    EXPECT_EQ((std::vector<int>{0x220, 0x05, 0x00, 0x10, 0x130, 0x20}), KeysInOrder(map));
    map.SetAt(0x00, 2);
    EXPECT_EQ((std::vector<int>{0x220, 0x05, 0x00, 0x10, 0x130, 0x20}), KeysInOrder(map)) << "a new value keeps the place";
}

TEST(Map, EntriesMayBeRemovedWhileIterating)
{
    CMap<int, int, int, int> map;
    for (int key = 0; key < 1000; ++key)
        map[key] = key;
    int seen = 0;
    for (POSITION position = map.GetStartPosition(); position != nullptr; ++seen) {
        int key, value;
        map.GetNextAssoc(position, key, value);
        EXPECT_EQ(key, value);
        EXPECT_TRUE(map.RemoveKey(key));
    }
    EXPECT_EQ(1000, seen);
    EXPECT_TRUE(map.IsEmpty());
    EXPECT_EQ(nullptr, map.GetStartPosition());
}

TEST(Map, KeepsAValueOfAMissingKeyUntouched)
{
    CMap<int, int, int, int> map;
    int value = 42;
    EXPECT_FALSE(map.Lookup(1, value));
    EXPECT_EQ(42, value);
    EXPECT_EQ(0, map[1]) << "the subscript adds a zero";
    EXPECT_TRUE(map.Lookup(1, value));
    EXPECT_EQ(0, value);
    EXPECT_FALSE(map.RemoveKey(2));
}

TEST(Map, MisuseThrowsInvalidArgument)
{
    CMap<int, int, int, int> map;
    EXPECT_EQ("CInvalidArgException", Thrown([&] { map.InitHashTable(0); }));
    map.InitHashTable(101, FALSE);
    map.SetAt(1, 1);
    EXPECT_EQ("CInvalidArgException", Thrown([&] { map.InitHashTable(7); }));
    EXPECT_EQ(101u, map.GetHashTableSize());
    POSITION none = nullptr;
    int key, value;
    EXPECT_EQ("CInvalidArgException", Thrown([&] { map.GetNextAssoc(none, key, value); }));
    map.RemoveAll();
    EXPECT_EQ(101u, map.GetHashTableSize()) << "the table's size outlives its entries";
}

TEST(Map, KeysOfEqualHashAreToldApart)
{
    CMap<PairKey, PairKey&, int, int> map;
    int owners[2] = {};
    PairKey first{reinterpret_cast<void*>(0x10), 1}, same{reinterpret_cast<void*>(0x11), 0}, other{&owners[1], 1};
    map.SetAt(first, 1);
    map.SetAt(same, 2);
    map.SetAt(other, 3);
    map.SetAt(first, 4);
    EXPECT_EQ(3, map.GetCount());
    int value = 0;
    EXPECT_TRUE(map.Lookup(first, value));
    EXPECT_EQ(4, value);
    EXPECT_TRUE(map.Lookup(same, value));
    EXPECT_EQ(2, value);
}

TEST(Map, RandomChangesMatchAStandardMap)
{
    Random random;
    for (int blockSize : {1, 10}) {
        CMap<CString, LPCSTR, CString, LPCSTR> map(blockSize);
        std::map<std::string, std::string> model;
        for (int step = 0; step < 5000; ++step) {
            const std::string key = std::to_string(random.Between(0, 200)), value = std::to_string(step);
            if (random.Between(0, 2) != 0) {
                map.SetAt(key.c_str(), value.c_str());
                model[key] = value;
            } else {
                EXPECT_EQ(model.erase(key) != 0, map.RemoveKey(key.c_str()) != FALSE) << key;
            }
        }
        ASSERT_EQ(static_cast<int>(model.size()), map.GetCount());
        int seen = 0;
        for (const auto* pair = map.PGetFirstAssoc(); pair != nullptr; pair = map.PGetNextAssoc(pair), ++seen)
            EXPECT_EQ(model[pair->key.GetString()], pair->value.GetString()) << pair->key.GetString();
        EXPECT_EQ(map.GetCount(), seen);
    }
}

TEST(MapStringToString, FindsItsOwnKeyText)
{
    CMapStringToString map;
    map["name"] = "value";
    LPCSTR own = nullptr;
    const std::string asked = "name";
    EXPECT_TRUE(map.LookupKey(asked.c_str(), own));
    EXPECT_STREQ("name", own);
    EXPECT_NE(asked.c_str(), own);
    EXPECT_FALSE(map.LookupKey("NAME", own));
}

TEST(TypedPtrMap, GivesKeysAndValuesWithTheirTypes)
{
    CTypedPtrMap<CMapPtrToPtr, int*, std::string*> map;
    int key = 0;
    std::string first = "first", second = "second";
    map.SetAt(&key, &first);
    map[&key] = &second;
    std::string* value = nullptr;
    EXPECT_TRUE(map.Lookup(&key, value));
    EXPECT_EQ(&second, value);
    POSITION position = map.GetStartPosition();
    int* found = nullptr;
    map.GetNextAssoc(position, found, value);
    EXPECT_EQ(&key, found);
    EXPECT_EQ(&second, value);
    EXPECT_EQ(nullptr, position);
}
