#include "support/GlTest.h"
#include "support/TestObject.h"

#include <Tavrin/VcaObject.h>

#include <cstring>

using Tavrin::VcaObject;

namespace {

tagTAVRIN_VCA_RECT labelRect(float x, float y)
{
    TestObject* obj = new TestObject();
    tagTAVRIN_POINT anchor = pt(x, y);
    tagTAVRIN_VCA_RECT rect{9, 9, 9, 9};
    obj->GetDrawLabelRect(anchor, rect);
    obj->ReleaseRef();
    return rect;
}

}  // namespace

TEST(VcaObjectRefCount, BornWithOneAndDeletedBelowOne)
{
    const int before = TestObject::live();
    TestObject* obj = new TestObject();
    EXPECT_EQ(obj->refCount(), 1);
    obj->AddRef();
    EXPECT_EQ(obj->refCount(), 2);
    obj->ReleaseRef();
    EXPECT_EQ(TestObject::live(), before + 1);
    obj->ReleaseRef();
    EXPECT_EQ(TestObject::live(), before);
}

TEST(VcaObjectDefaults, BaseOperationsAreHarmless)
{
    TestObject* obj = new TestObject();
    tagTAVRIN_POINT p = pt(0.5f, 0.5f);
    tagTAVRIN_POINT buf[2] = {};
    unsigned int count = 77;
    EXPECT_EQ(obj->wndWidth(), 0);
    EXPECT_EQ(obj->wndHeight(), 0);
    EXPECT_TRUE(obj->GetClosed());
    EXPECT_TRUE(obj->SetPDCCaliPoint(buf, 999));
    EXPECT_FALSE(obj->SetPDCCaliPoint(nullptr, 1));
    EXPECT_TRUE(obj->GetPDCCaliPoint(buf, &count));
    EXPECT_EQ(count, 77u);  // writes nothing
    EXPECT_FALSE(obj->GetPDCCaliPoint(buf, nullptr));
    EXPECT_FALSE(obj->GetPDCCaliPoint(nullptr, &count));
    EXPECT_TRUE(obj->MoveCaliPoints(p, p));
    EXPECT_EQ(obj->CheckCaliPointSelected(p), 1u);
    obj->SetWndSize(640, 480);
    EXPECT_EQ(obj->wndWidth(), 640);
    EXPECT_EQ(obj->wndHeight(), 480);
    obj->SetClosed(false);
    EXPECT_FALSE(obj->GetClosed());
    obj->ReleaseRef();
}

TEST(VcaObjectLabel, CopiesAtMostSixteenRawBytes)
{
    TestObject* obj = new TestObject();
    char eighteen[] = "ABCDEFGHIJKLMNOPQR";
    EXPECT_TRUE(obj->SetLabelText(eighteen, 18));
    EXPECT_STREQ(obj->rawLabel(), "ABCDEFGHIJKLMNOP");

    char buf16[16];
    std::memset(buf16, 'x', sizeof buf16);
    EXPECT_TRUE(obj->GetLabelText(buf16, 16));
    EXPECT_EQ(std::memcmp(buf16, "ABCDEFGHIJKLMNOP", 16), 0);  // no terminator written

    char buf4[8];
    std::memset(buf4, 'x', sizeof buf4);
    EXPECT_TRUE(obj->GetLabelText(buf4, 4));
    EXPECT_EQ(std::memcmp(buf4, "ABCD", 4), 0);
    EXPECT_EQ(buf4[4], 'x');  // only `size` bytes are touched

    char buf32[32];
    EXPECT_TRUE(obj->GetLabelText(buf32, 32));
    EXPECT_STREQ(buf32, "ABCDEFGHIJKLMNOP");
    obj->ReleaseRef();
}

TEST(VcaObjectLabel, RawCopyDoesNotStopAtZeroByte)
{
    TestObject* obj = new TestObject();
    char text[] = {'a', '\0', 'b', 'c'};
    EXPECT_TRUE(obj->SetLabelText(text, 4));
    EXPECT_EQ(obj->rawLabel()[0], 'a');
    EXPECT_EQ(obj->rawLabel()[2], 'b');
    EXPECT_EQ(obj->rawLabel()[3], 'c');
    char out[8];
    EXPECT_TRUE(obj->GetLabelText(out, 8));
    EXPECT_STREQ(out, "a");  // the read-back stops at the first zero
    obj->ReleaseRef();
}

TEST(VcaObjectLabel, RefusalsKeepThePreviousLabel)
{
    TestObject* obj = new TestObject();
    char text[] = "Gate";
    ASSERT_TRUE(obj->SetLabelText(text, 4));
    EXPECT_FALSE(obj->SetLabelText(text, 0));
    EXPECT_FALSE(obj->SetLabelText(nullptr, 4));
    EXPECT_STREQ(obj->rawLabel(), "Gate");
    char out[4] = {'x', 'x', 'x', 'x'};
    EXPECT_FALSE(obj->GetLabelText(out, 0));
    EXPECT_FALSE(obj->GetLabelText(nullptr, 4));
    EXPECT_EQ(out[0], 'x');
    obj->ReleaseRef();
}

struct LabelRectCase {
    const char* name;
    float ax, ay;
    float x, y;
};

TEST(VcaObjectLabelRect, PlacesTheBoxInsideNearRightAndBottomEdges)
{
    const LabelRectCase cases[] = {
        {"Middle", 0.5f, 0.5f, 0.51f, 0.49f},
        {"RightAndBottomRightWins", 0.95f, 0.95f, 0.87f, 0.94f},
        {"Bottom", 0.5f, 0.95f, 0.51f, 0.91f},
        {"ExactlyAtRightThreshold", 0.9f, 0.5f, 0.9f - 0.08f, 0.49f},
        {"JustLeftOfRightThreshold", 0.8999f, 0.5f, 0.8999f + 0.01f, 0.49f},
        {"ExactlyAtBottomThreshold", 0.5f, 0.9f, 0.51f, 0.9f - 0.04f},
        {"TopLeftIsNotClamped", 0.0f, 0.0f, 0.01f, -0.01f},
    };
    for (const LabelRectCase& c : cases) {
        SCOPED_TRACE(c.name);
        const tagTAVRIN_VCA_RECT r = labelRect(c.ax, c.ay);
        EXPECT_FLOAT_EQ(r.x, c.x);
        EXPECT_FLOAT_EQ(r.y, c.y);
        EXPECT_FLOAT_EQ(r.width, 0.08f);
        EXPECT_FLOAT_EQ(r.height, 0.04f);
    }
}

