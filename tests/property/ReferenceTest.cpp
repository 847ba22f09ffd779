// ReferenceTest.cpp: when a counted object deletes itself.
#include <kelgen/property/Reference.h>

#include "support/NullCall.h"

namespace {

class Counted : public gen::CReference
{
public:
    explicit Counted(int& deleted) : m_deleted(deleted) {}
    Counted(const Counted&) = default;
    ~Counted() override { ++m_deleted; }

private:
    int& m_deleted;
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
}

TEST(Reference, ReleaseWithoutReferencesDeletesNothing)
{
    int deleted = 0;
    Counted object(deleted);
    object.Release();
    object.AddRef();
    object.Release();
    EXPECT_EQ(0, deleted) << "the count was -1, then 0, then -1";
}

TEST(Reference, TheInterfaceKnowsANullPointer)
{
    CReferenceInterface object;
    EXPECT_FALSE(kelgen::test::IsNull<CReferenceInterface>(&object));
    EXPECT_TRUE(kelgen::test::IsNull<CReferenceInterface>(nullptr));
}
