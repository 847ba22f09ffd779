// ReferenceTest.cpp: when a counted object deletes itself.
#include <kelgen/property/Reference.h>

#include "support/NullCall.h"

namespace {

struct Counted : gen::CReference
{
    explicit Counted(int& count) : deleted(count) {}
    Counted(const Counted&) = default;
    ~Counted() override { ++deleted; }

    int& deleted;
};

}  // namespace

TEST(Reference, TheLastReleaseDeletesAndACopyStartsWithTheSourcesCount)
{
    int deleted = 0;
    Counted source(deleted);
    source.AddRef();
    source.AddRef();
    auto* copy = new Counted(source);
    copy->Release();
    EXPECT_EQ(0, deleted);
    copy->Release();
    EXPECT_EQ(1, deleted);

    Counted none(deleted);
    none.Release();
    none.AddRef();
    none.Release();
    EXPECT_EQ(1, deleted) << "the count was -1, then 0, then -1";
}

TEST(Reference, TheInterfaceKnowsANullPointer)
{
    CReferenceInterface object;
    EXPECT_FALSE(kelgen::test::IsNull<CReferenceInterface>(&object));
    EXPECT_TRUE(kelgen::test::IsNull<CReferenceInterface>(nullptr));
}
