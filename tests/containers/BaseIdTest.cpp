// BaseIdTest.cpp: comparison across types; counting, ordering and naming of identifiers.
#include <kelgen/containers/BaseId.h>

#include "Elements.h"
#include "support/Rows.h"

#include <cstring>
#include <typeinfo>

using namespace kelgen::test;

namespace {

struct Identified : CBaseIdentifiable
{
    using CBaseIdentifiable::CBaseIdentifiable;
};

class First : public CBaseComparable
{};

struct Id : CBaseId
{
    using CBaseId::m_id;
    Id() = default;
    explicit Id(const CBaseId& other) : CBaseId(other) {}
    void Set(unsigned char* bytes, CBaseComparable* seed)
    {
        std::memcpy(m_id, bytes, sizeof(m_id));
        m_seed = seed;
    }
};

/// A name that no identifier had yet; later ones come later in the order.
std::string FreshName()
{
    static int count = 1000;
    return "Test." + std::to_string(++count);
}

/// The low byte of the identifier's number.
int CountOf(const CBaseId& id)
{
    Id copy;
    static_cast<CBaseId&>(copy) = id;
    return copy.m_id[0];
}

template <class LEFT, class RIGHT>
std::string Operators(const LEFT& a, const RIGHT& b)
{
    std::string holds;
    holds += a == b ? "==" : "";
    holds += a != b ? "!=" : "";
    holds += a < b ? "<" : "";
    holds += a <= b ? "<=" : "";
    holds += a > b ? ">" : "";
    holds += a >= b ? ">=" : "";
    return holds;
}

}  // namespace

TEST(BaseComparable, IsNeverEqualToWhatHasNoOrder)
{
    const CBaseComparableEq plain, otherPlain;
    const First first;
    const CBaseComparableEq& asPlain = first;
    EXPECT_FALSE(asPlain == plain);
    EXPECT_TRUE(asPlain != plain);
    EXPECT_FALSE(plain == asPlain);
    EXPECT_TRUE(plain == otherPlain);
    EXPECT_FALSE(plain != otherPlain);
}

TEST(BaseComparable, OrdersByNameOfTheClassAndTextsOfEachOtherByText)
{
    CStr a, b, upper;
    a = CString("a");
    b = CString("b");
    upper = CString("A");
    EXPECT_EQ("!=<<=", Operators(a, b));
    EXPECT_EQ("!=>>=", Operators(a, upper));
    EXPECT_EQ("==<=>=", Operators(a, CStr(a)));
    const CBaseComparable& comparable = a;
    EXPECT_TRUE(comparable < b);

    const First first, other;
    EXPECT_EQ("==<=>=", Operators(first, other));
    const bool before = std::strcmp(typeid(CStr).name(), typeid(First).name()) < 0;
    EXPECT_EQ(before ? -1 : 1, a.Compare(first));
    EXPECT_EQ(before ? 1 : -1, first.Compare(b));
}

TEST(BaseIdentifiable, NumbersCountPerName)
{
    const std::string nameA = FreshName(), nameB = FreshName();
    Identified a1(nameA.c_str()), a2(nameA.c_str()), b1(nameB.c_str());
    EXPECT_FALSE(a1 == a2);
    EXPECT_EQ("!=<<=", Operators(a1.GetId(), b1.GetId())) << "equal numbers compare by name";
    EXPECT_EQ(1, CountOf(*a1.GetPtrId()));
    EXPECT_EQ(2, CountOf(*a2.GetPtrId()));
    EXPECT_EQ(1, CountOf(*b1.GetPtrId()));

    const Identified copy(a1);
    EXPECT_TRUE(copy == a1);
    EXPECT_TRUE(copy.GetId() == *a1.GetPtrId());
    b1 = a2;
    EXPECT_TRUE(b1 == a2);
    EXPECT_EQ(a1.GetSeed(), b1.GetSeed());
    const auto* const name = dynamic_cast<const CStr*>(a1.GetSeed());
    ASSERT_NE(nullptr, name);
    EXPECT_EQ(nameA, name->GetString());
}

TEST(BaseIdentifiable, TheFirstNumberWithACarryComesBeforeAllSmallerOnes)
{
    const std::string name = FreshName();
    const Identified first(name.c_str());
    CBaseId last;
    for (int i = 0; i < 255; ++i)
        last = Identified(name.c_str()).GetId();
    const Id drawn(last);
    EXPECT_EQ(0, drawn.m_id[0]);
    EXPECT_EQ(1, drawn.m_id[1]);
    EXPECT_TRUE(last < first.GetId());
}

TEST(BaseId, CountsFrom128BitsToNothing)
{
    struct Seed : CBaseIdSeed
    {
        using CBaseIdSeed::m_id;
    } seed;
    std::memset(seed.m_id, 0xFF, sizeof(seed.m_id));
    seed.m_id[15] = 0x7F;
    CBaseId id(seed);
    EXPECT_EQ(0x80, Id(id).m_id[15]);
    EXPECT_EQ(0, Id(id).m_id[14]);
    std::memset(seed.m_id, 0xFF, sizeof(seed.m_id));
    id.New(seed);
    EXPECT_TRUE(id.IsNull());
    EXPECT_TRUE(CBaseId().IsNull());
    id.New(seed);
    EXPECT_FALSE(id.IsNull());
    EXPECT_FALSE(id == seed) << "of another class";
    EXPECT_EQ(nullptr, id.GetSeed());
}

TEST(BaseId, OrdersByBytesThenBySeed)
{
    CStr nameA, nameB;
    nameA = CString("A");
    nameB = CString("B");
    unsigned char zero[16] = {};
    unsigned char one[16] = {1};
    unsigned char high[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF};
    struct Case
    {
        const char* name;
        unsigned char* leftBytes;
        CBaseComparable* leftSeed;
        unsigned char* rightBytes;
        CBaseComparable* rightSeed;
        int order;
    };
    for (const Case& row : std::vector<Case>{
             {"lowest byte decides", high, &nameB, one, &nameA, -1},
             {"bytes are unsigned", high, nullptr, zero, &nameA, 1},
             {"both nameless", one, nullptr, one, nullptr, 0},
             {"nameless first", one, nullptr, one, &nameA, -1},
             {"named last", one, &nameA, one, nullptr, 1},
             {"by name", one, &nameA, one, &nameB, -1},
         }) {
        Id left, right;
        left.Set(row.leftBytes, row.leftSeed);
        right.Set(row.rightBytes, row.rightSeed);
        EXPECT_EQ(row.order, left.Compare(right)) << row.name;
        EXPECT_EQ(-row.order, right.Compare(left)) << row.name;
    }
}
