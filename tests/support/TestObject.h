#ifndef TAVRIN_TESTS_TESTOBJECT_H
#define TAVRIN_TESTS_TESTOBJECT_H

// A minimal concrete VcaObject for testing the base class and the registry: it counts
// live instances so tests can see exactly when the reference count deletes one.

#include <Tavrin/VcaObject.h>

#include <atomic>

class TestObject : public Tavrin::VcaObject {
public:
    static std::atomic<int>& live()
    {
        static std::atomic<int> count{0};
        return count;
    }

    TestObject() { ++live(); }
    ~TestObject() override { --live(); }

    int refCount() const { return m_refCount; }
    int wndWidth() const { return m_wndWidth; }
    int wndHeight() const { return m_wndHeight; }
    const char* rawLabel() const { return m_labelText; }

    bool IsNull() override { return true; }
    tagTAVRIN_OBJ_STATUS GetObjStatus() override { return TAVRIN_OBJ_STATUS_NORMAL; }
    void SetObjStatus(tagTAVRIN_OBJ_STATUS) override {}
    void Move(tagTAVRIN_POINT&, tagTAVRIN_POINT&) override {}
    void MovePoint(tagTAVRIN_POINT&, tagTAVRIN_POINT&) override {}
    bool CheckSelected(tagTAVRIN_POINT&) override { return false; }
    unsigned int CheckPointSelected(tagTAVRIN_POINT&) override { return 0; }
    void Draw(void*, int, int, bool) override {}
    void SetSelPointIndex(unsigned int) override {}
    unsigned int GetSelPointIndex() override { return 0; }
};

#endif  // TAVRIN_TESTS_TESTOBJECT_H
