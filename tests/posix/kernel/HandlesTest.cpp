// HandlesTest.cpp: a table that is full, and how late numbers come again.
#include <kelgen/platform/posix/base/Handles.h>

using namespace kelgen::posix;

namespace {

struct Object : HandleObject
{};

}  // namespace

TEST(Handles, FailBeyondAMillion)
{
    HandleTable table;
    const auto object = std::make_shared<Object>();
    HANDLE last = nullptr;
    int count = 0;
    while (const HANDLE handle = table.Insert(object)) {
        last = handle;
        ASSERT_LE(++count, 1 << 20);
    }
    EXPECT_EQ((1 << 20) - 1, count);
    EXPECT_EQ(DWORD{ERROR_NO_SYSTEM_RESOURCES}, GetLastError());
    EXPECT_EQ(INVALID_HANDLE_VALUE, table.Insert(object, INVALID_HANDLE_VALUE));
    EXPECT_EQ(object, table.Find<Object>(last));
    EXPECT_EQ(object, table.Remove(last));
    const HANDLE next = table.Insert(object);
    EXPECT_NE(nullptr, next);
    EXPECT_NE(last, next);
    EXPECT_EQ(nullptr, table.Find<Object>(last));
}

TEST(Handles, NumbersOfClosedOnesComeLate)
{
    HandleTable table;
    const auto object = std::make_shared<Object>();
    const HANDLE closed = table.Insert(object);
    EXPECT_EQ(object, table.Remove(closed));
    for (int i = 0; i < 1 << 20; ++i) {
        const HANDLE other = table.Insert(object);
        ASSERT_NE(closed, other) << i;
        table.Remove(other);
    }
}

TEST(Slots, AreTakenOnceThoughAnEarlierTakingFailed)
{
    static bool fails = false;
    struct Place
    {
        Place()
        {
            if (fails)
                throw std::bad_alloc();
        }
        Place(Place&&) noexcept {}
    };
    Slots<Place> slots;
    EXPECT_EQ(0u, slots.Take(1, 4).value());
    fails = true;
    EXPECT_THROW(slots.Take(1, 4), std::bad_alloc);
    fails = false;
    EXPECT_EQ(1u, slots.Take(1, 4).value());
    EXPECT_EQ(2u, slots.Take(1, 4).value());
    slots.GiveBack(1);
    slots.GiveBack(0);
    EXPECT_EQ(1u, slots.Take(1, 4).value()) << "two rest, and the first that was given back comes first";
    EXPECT_EQ(3u, slots.Take(1, 4).value());
    EXPECT_EQ(0u, slots.Take(1, 4).value());
    EXPECT_EQ(std::nullopt, slots.Take(1, 4));
}
