// Run-time classes.
#include <afx.h>
#include <gtest/gtest.h>
#include <memory>

namespace {

class CShape : public CObject
{
    DECLARE_DYNAMIC(CShape)
};

class CCircle : public CShape
{
    DECLARE_DYNCREATE(CCircle)

  public:
    int m_radius = 5;
};

class CSquare : public CShape
{
    DECLARE_DYNAMIC(CSquare)
};

class CBroken : public CShape
{
    DECLARE_DYNCREATE(CBroken)

  public:
    CBroken() { throw 59163; }
};

IMPLEMENT_DYNAMIC(CShape, CObject)
IMPLEMENT_DYNCREATE(CCircle, CShape)
IMPLEMENT_DYNAMIC(CSquare, CShape)
IMPLEMENT_DYNCREATE(CBroken, CShape)

TEST(RuntimeClass, NamesTheClassAndItsSize)
{
    const CCircle circle;

    EXPECT_STREQ(circle.GetRuntimeClass()->m_lpszClassName, "CCircle");
    EXPECT_EQ(circle.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(CCircle)));
    EXPECT_EQ(circle.GetRuntimeClass(), RUNTIME_CLASS(CCircle));
}

TEST(RuntimeClass, NamesTheBaseOfAllAndItsSize)
{
    const CRuntimeClass* const base = RUNTIME_CLASS(CObject);

    EXPECT_STREQ(base->m_lpszClassName, "CObject");
    EXPECT_EQ(base->m_nObjectSize, static_cast<int>(sizeof(CObject)));
    EXPECT_FALSE(base->IsDerivedFrom(RUNTIME_CLASS(CShape)));
}

TEST(RuntimeClass, KnowsItsBasesAndNothingElse)
{
    const CCircle circle;

    EXPECT_TRUE(circle.IsKindOf(RUNTIME_CLASS(CCircle)));
    EXPECT_TRUE(circle.IsKindOf(RUNTIME_CLASS(CShape)));
    EXPECT_TRUE(circle.IsKindOf(RUNTIME_CLASS(CObject)));
    EXPECT_FALSE(circle.IsKindOf(RUNTIME_CLASS(CSquare)));
    EXPECT_FALSE(RUNTIME_CLASS(CShape)->IsDerivedFrom(RUNTIME_CLASS(CCircle)));
}

TEST(RuntimeClass, SeesTheDerivedClassThroughTheBase)
{
    const std::unique_ptr<CObject> object = std::make_unique<CSquare>();

    EXPECT_EQ(object->GetRuntimeClass(), RUNTIME_CLASS(CSquare));
}

TEST(RuntimeClass, MakesObjectsOfCreatableClasses)
{
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(CCircle)->CreateObject());

    const auto circle = dynamic_cast<CCircle*>(object.get());
    ASSERT_NE(circle, nullptr);
    EXPECT_EQ(circle->m_radius, 5);
}

TEST(RuntimeClass, MakesNoObjectsOfOtherClasses)
{
    EXPECT_EQ(RUNTIME_CLASS(CSquare)->CreateObject(), nullptr);
}

TEST(RuntimeClass, PassesOnWhatAConstructorThrows)
{
    try {
        const std::unique_ptr<CObject> object(RUNTIME_CLASS(CBroken)->CreateObject());
        FAIL() << "nothing was thrown";
    } catch (int number) {
        EXPECT_EQ(number, 59163);
    }
}

TEST(Verify, EvaluatesItsArgumentInEveryBuild)
{
    int calls = 0;
    VERIFY(++calls > 0);

    EXPECT_EQ(calls, 1);
}

} // namespace
