// MathTest.cpp: roundings, limits and the runtime's random numbers.
#include <kelgen/system/Math.h>

#include <kelgen/platform/support/RuntimeRandom.h>

#include <climits>
#include <cmath>
#include <cstdlib>

TEST(Math, RoundsAsStated)
{
    struct Row
    {
        double x;
        int rounded;
    };
    for (const Row& row : {Row{2.5, 3}, Row{2.4, 2}, Row{-2.5, -2}, Row{-1.5, -1}, Row{-1.7, -1}, Row{-0.2, 0}, Row{2147483647.7, INT_MAX},
                           Row{NAN, INT_MIN}, Row{1e300, INT_MIN}, Row{-1e300, INT_MIN}, Row{2147483648.0, INT_MIN}})
        EXPECT_EQ(row.rounded, CMath::MidUpRound(row.x)) << row.x;

    CMath math;
    EXPECT_EQ(50, math.LinearMap(0, 100, 5, 0, 10));
    EXPECT_EQ(3, math.LinearMap(0, 10, 1, 0, 3));
    EXPECT_EQ(-2, math.LinearMap(0, -10, 1, 0, 4));
    EXPECT_EQ(INT_MIN, math.LinearMap(0, 10, 1, 3, 3));
    EXPECT_DOUBLE_EQ(2.5, math.LinearMap(0.0, 10.0, 1.0, 0.0, 4.0));
    EXPECT_DOUBLE_EQ(3.141592653589793, math.GetPi());
    EXPECT_EQ(7, math.RangeRate(10, 0, 0.39));
    EXPECT_EQ(0, math.RangeRate(INT_MIN, INT_MAX, 0.5) / 2);
}

TEST(Math, ReversesAndTestsBits)
{
    EXPECT_EQ(8u, CMath::ReverseBits(1, 4));
    EXPECT_EQ(3u, CMath::ReverseBits(6, 3));
    EXPECT_EQ(0u, CMath::ReverseBits(6, 0));
    EXPECT_EQ(0x80000000u, CMath::ReverseBits(1, 32));
    EXPECT_EQ(0u, CMath::ReverseBits(0xFFFFFFFF, UINT_MAX));
    for (const unsigned n : {0u, 1u, 3u, 6u, 0xFFFFFFFFu})
        EXPECT_EQ(0, CMath::IsPowerOfTwo(n)) << n;
    for (const unsigned n : {2u, 1024u, 0x80000000u})
        EXPECT_EQ(1, CMath::IsPowerOfTwo(n)) << n;
}

TEST(Math, ClipsButLeavesNoNumberAlone)
{
    for (const auto clip : {&CMath::MaxClip, &CMath::MinClip}) {
        double none = NAN;
        clip(&none, 1);
        EXPECT_TRUE(std::isnan(none));
    }
    double above = 5;
    CMath::MaxClip(&above, 3);
    EXPECT_EQ(3, above);
    CMath::MinClip(&above, 4);
    EXPECT_EQ(4, above);
}

TEST(Math, RandRangeIsTheRuntimesSequence)
{
    kelgen::RuntimeSeed(1);
    EXPECT_EQ(41, kelgen::RuntimeRand());
    EXPECT_EQ(18467, kelgen::RuntimeRand());
    EXPECT_EQ(6334, kelgen::RuntimeRand());

    CMath math;
    kelgen::RuntimeSeed(1);
    EXPECT_EQ(0, math.RandRange(0, 100));  // 41 of 32767
    EXPECT_EQ(56, math.RandRange(0, 100));
    EXPECT_EQ(-60, math.RandRange(-100, 100));  // -61.34 + 0.5, toward zero
    std::srand(1);
    EXPECT_EQ(0, math.RandRange(0, 100)) << "a host seeds it";
    EXPECT_EQ(56, math.RandRange(0, 100));
    bool low = false;
    bool high = false;
    for (int i = 0; i < 100000 && !(low && high); ++i) {
        const int value = math.RandRange(-2147483647 - 1, 2147483647);
        low |= value < -2000000000;
        high |= value > 2000000000;
    }
    EXPECT_TRUE(low && high);
}

TEST(Logic, BothConditionalsAreTheSame)
{
    for (const bool a : {false, true}) {
        for (const bool b : {false, true}) {
            EXPECT_EQ(!a || b, CLogic::ForwardConditional(a, b)) << a << b;
            EXPECT_EQ(!a || b, CLogic::ReverseConditional(a, b)) << a << b;
        }
    }
}
