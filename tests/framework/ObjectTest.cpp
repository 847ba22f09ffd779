// ObjectTest.cpp: kinds, creation by record or name, and dumps.
#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Object.h>

namespace {

class CShape : public CObject
{
    DECLARE_DYNAMIC(CShape)
};
IMPLEMENT_DYNAMIC(CShape, CObject)

class CSquare : public CShape
{
    DECLARE_DYNCREATE(CSquare)
};
IMPLEMENT_DYNCREATE(CSquare, CShape)

class CStored : public CObject
{
public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() { return const_cast<CRuntimeClass*>(&classCStored); }
    static CObject* CreateObject() { return new CStored; }
    static const CRuntimeClass classCStored;
};
const CRuntimeClass CStored::classCStored = {"CStored", sizeof(CStored), 3, &CStored::CreateObject, &CObject::GetThisClass};

class CollectedDump : public CDumpContext
{
public:
    void OutputString(LPCSTR text) override { m_text += text; }
    std::string m_text;
};

}  // namespace

TEST(Object, KindFollowsTheWholeChainUpwardsOnly)
{
    const CSquare square;
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(CSquare)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(CShape)));
    EXPECT_TRUE(square.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(square.IsKindOf(RUNTIME_CLASS(CException)));
    EXPECT_FALSE(RUNTIME_CLASS(CShape)->IsDerivedFrom(RUNTIME_CLASS(CSquare)));
    EXPECT_STREQ("CSquare", square.GetRuntimeClass()->m_lpszClassName);
    EXPECT_EQ(static_cast<int>(sizeof(CSquare)), square.GetRuntimeClass()->m_nObjectSize);
}

TEST(Object, DowncastIsNullForAnotherClassAndForNull)
{
    CSquare square;
    CObject* object = &square;
    EXPECT_EQ(&square, DYNAMIC_DOWNCAST(CShape, object));
    EXPECT_EQ(nullptr, DYNAMIC_DOWNCAST(CException, object));
    object = nullptr;
    EXPECT_EQ(nullptr, DYNAMIC_DOWNCAST(CShape, object));
}

TEST(Object, OnlyCreatableClassesAreCreatedByRecord)
{
    const std::unique_ptr<CObject> square(RUNTIME_CLASS(CSquare)->CreateObject());
    ASSERT_NE(nullptr, square);
    EXPECT_TRUE(square->IsKindOf(RUNTIME_CLASS(CSquare)));
    EXPECT_EQ(nullptr, RUNTIME_CLASS(CShape)->CreateObject());
}

TEST(Object, NamesAreKnownOnlyWhileListedAndToTheLetter)
{
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("CStored"));
    {
        const kelgen::detail::ClassListing first(RUNTIME_CLASS(CSquare)), second(RUNTIME_CLASS(CStored));
        EXPECT_EQ(RUNTIME_CLASS(CStored), CRuntimeClass::FromName("CStored"));
        EXPECT_EQ(RUNTIME_CLASS(CSquare), CRuntimeClass::FromName("CSquare"));
        EXPECT_EQ(nullptr, CRuntimeClass::FromName("cstored"));
        EXPECT_EQ(nullptr, CRuntimeClass::FromName(nullptr));
        const std::unique_ptr<CObject> made(CRuntimeClass::CreateObject("CStored"));
        ASSERT_NE(nullptr, made);
        EXPECT_TRUE(made->IsSerializable());
    }
    EXPECT_EQ(nullptr, CRuntimeClass::FromName("CSquare"));
    EXPECT_FALSE(CSquare().IsSerializable());
}

TEST(Object, DumpNamesTheClass)
{
    CollectedDump dump;
    const CSquare square;
    dump << &square << static_cast<const CObject*>(nullptr) << 5 << CString("text");
    EXPECT_EQ(0u, dump.m_text.find("a CSquare at ")) << dump.m_text;
    EXPECT_NE(std::string::npos, dump.m_text.find("NULL5text")) << dump.m_text;
}
