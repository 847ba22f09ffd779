// AppIntegerMapTest.cpp: integers by owner and number.
#include <kelgen/property/AppIntegerMap.h>

#include "support/Rows.h"

namespace {

class Owner : public CBaseComparable
{
public:
    int Compare(const CBaseComparable&) const override { return 0; }
};

}  // namespace

TEST(AppIntegerMap, KeepsValuesApartByOwnerAndNumber)
{
    gen::CAppIntegerMap map;
    Owner first;
    Owner second;
    int value = 5;
    EXPECT_FALSE(map.Get(&first, 1, value));
    EXPECT_EQ(5, value);

    map.Set(&first, 1, 10);
    map.Set(&second, 1, 20);
    map.Set(&first, -1, 30);
    map.Set(&second, -1, 40);
    map.Set(nullptr, 1, 50);
    map.Set(&first, 1, 11);
    EXPECT_EQ(5, map.GetCount());
    for (const auto& [owner, id, expected] : {std::tuple<Owner*, int, int>{&first, 1, 11}, {&second, 1, 20}, {&first, -1, 30}, {&second, -1, 40}, {nullptr, 1, 50}}) {
        EXPECT_TRUE(map.Get(owner, id, value));
        EXPECT_EQ(expected, value) << "-1 gives all owners one hash";
    }
}
