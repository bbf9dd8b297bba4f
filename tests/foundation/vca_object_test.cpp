#include "support/GlTest.h"
#include "support/TestObject.h"

#include <cstring>

class VcaObjectTest : public ::testing::Test {
protected:
    void TearDown() override { obj->ReleaseRef(); }
    TestObject* obj = new TestObject();
};

TEST_F(VcaObjectTest, BornWithOneReferenceAndDeletedBelowOne)
{
    const int before = TestObject::live();
    TestObject* other = new TestObject();
    other->AddRef();
    other->ReleaseRef();
    EXPECT_EQ(TestObject::live(), before + 1);
    other->ReleaseRef();
    EXPECT_EQ(TestObject::live(), before);

}

TEST_F(VcaObjectTest, LabelIsAtMostSixteenRawBytes)
{
    char eighteen[] = "ABCDEFGHIJKLMNOPQR";
    EXPECT_TRUE(obj->SetLabelText(eighteen, 18));
    EXPECT_STREQ(obj->rawLabel(), "ABCDEFGHIJKLMNOP");
    char buf[32];
    std::memset(buf, 'x', sizeof buf);
    EXPECT_TRUE(obj->GetLabelText(buf, 16));
    EXPECT_EQ(std::memcmp(buf, "ABCDEFGHIJKLMNOPx", 17), 0);  // no terminator written
    std::memset(buf, 'x', sizeof buf);
    EXPECT_TRUE(obj->GetLabelText(buf, 4));
    EXPECT_EQ(std::memcmp(buf, "ABCDx", 5), 0);  // only `size` bytes are touched
    EXPECT_FALSE(obj->SetLabelText(eighteen, 0));  // refusals keep the label
    EXPECT_TRUE(obj->GetLabelText(buf, 32));
    EXPECT_STREQ(buf, "ABCDEFGHIJKLMNOP");
    // The copy does not stop at a zero byte; the read-back does.
    char text[] = {'a', '\0', 'b', 'c'};
    EXPECT_TRUE(obj->SetLabelText(text, 4));
    EXPECT_EQ(std::memcmp(obj->rawLabel(), text, 4), 0);
    EXPECT_TRUE(obj->GetLabelText(buf, 8));
    EXPECT_STREQ(buf, "a");
}

TEST_F(VcaObjectTest, LabelRectStaysInsideNearTheRightAndBottomEdges)
{
    const struct {
        const char* name;
        float ax, ay, x, y;
    } cases[] = {
        {"Middle", 0.5f, 0.5f, 0.51f, 0.49f},
        {"RightAndBottomRightWins", 0.95f, 0.95f, 0.87f, 0.94f},
        {"ExactlyAtRightThreshold", 0.9f, 0.5f, 0.9f - 0.08f, 0.49f},
        {"JustLeftOfRightThreshold", 0.8999f, 0.5f, 0.8999f + 0.01f, 0.49f},
        {"ExactlyAtBottomThreshold", 0.5f, 0.9f, 0.51f, 0.9f - 0.04f},
        {"TopLeftIsNotClamped", 0.0f, 0.0f, 0.01f, -0.01f},
    };
    for (const auto& c : cases) {
        tagTAVRIN_POINT anchor = pt(c.ax, c.ay);
        tagTAVRIN_VCA_RECT r{9, 9, 9, 9};
        obj->GetDrawLabelRect(anchor, r);
        EXPECT_FLOAT_EQ(r.x, c.x) << c.name;
        EXPECT_FLOAT_EQ(r.y, c.y) << c.name;
        EXPECT_FLOAT_EQ(r.width, 0.08f) << c.name;
        EXPECT_FLOAT_EQ(r.height, 0.04f) << c.name;
    }
}
