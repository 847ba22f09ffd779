// AppIntegerMapTest.cpp: integers by owner and number.
#include <kelgen/property/AppIntegerMap.h>

#include "support/Rows.h"

using kelgen::test::Table;

namespace {

struct Owner : CBaseComparable
{
    int Compare(const CBaseComparable&) const override { return 0; }
};

}  // namespace

TEST(AppIntegerMap, KeepsValuesApartByOwnerAndNumber)
{
    gen::CAppIntegerMap map;
    Owner first, second;
    int value = 5;
    EXPECT_FALSE(map.Get(&first, 1, value));
    EXPECT_EQ(5, value);

    map.Set(&first, 1, 10);
    const Table<Owner*, int, int> stored{{&first, 1, 11}, {&second, 1, 20}, {&first, -1, 30}, {&second, -1, 40}, {nullptr, 1, 50}};
    for (const auto& [owner, id, number] : stored)
        map.Set(owner, id, number);
    EXPECT_EQ(5, map.GetCount());
    for (const auto& [owner, id, number] : stored) {
        EXPECT_TRUE(map.Get(owner, id, value));
        EXPECT_EQ(number, value) << "-1 gives all owners one hash";
    }
}
