#include "rules/RulesTest.h"

#include <Tavrin/ITCLine.h>
#include <Tavrin/Lane.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/SizeFilter.h>
#include <Tavrin/VcaRule.h>

#include <functional>

using namespace Tavrin;

namespace {

tagTAVRIN_POINT kQuad[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.4f}, {0.2f, 0.4f}};

// Every analytics rule, filled and selected so that it draws all it can.
std::vector<std::function<VcaObject*()>> everyRule()
{
    return {
        [] {
            VcaRule* r = VcaRule::NewInstance();
            r->SetPoints(kQuad, 3);
            r->SetRuleType(TAVRIN_RULE_BROKEN_LINE);
            r->SetArrowDirection(TAVRIN_ARROW_BOTH);
            return r;
        },
        [] {
            VcaRule* r = VcaRule::NewInstance();
            r->SetPoints(kQuad, 2);
            r->SetRuleType(TAVRIN_RULE_LINE);
            r->SetArrowDirection(TAVRIN_ARROW_POSITIVE);
            return r;
        },
        [] {
            ITCLine* l = ITCLine::NewInstance();
            l->SetPoints(kQuad, 2);
            return l;
        },
        [] {
            Lane* l = Lane::NewInstance();
            l->SetPoints(kQuad, 4);
            l->SetArrowPoints(kQuad[0], kQuad[2]);
            return l;
        },
        [] {
            PdcRule* r = PdcRule::NewInstance();
            r->SetVcaPDCLineOrRect(true);
            r->SetVcaPDCLineCali(true);
            r->SetVcaPDCCaliShoulderLine(true);
            r->SetPoints(kQuad, 2);
            float widths[16] = {0.05f, 0.1f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f,
                                0.05f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f};
            r->SetTargetWidthLine(widths);
            r->SetSinglePoints(kQuad, 1);
            return r;
        },
        [] {
            PdcRule* r = PdcRule::NewInstance();
            r->SetPoints(kQuad, 4);
            r->SetArrowPoints(kQuad[0], kQuad[2]);
            return r;
        },
        [] {
            SizeFilter* f = SizeFilter::NewInstance();
            f->SetSizeFilterType(TAVRIN_SIZE_FILTER_SQUARE);
            f->SetPoints(kQuad, 4);
            f->SetColor(1);
            return f;
        },
    };
}

}  // namespace

class RuleRobustness : public RuleTest {};

TEST_F(RuleRobustness, DegenerateViewSizesDrawNoNonFiniteVertex)
{
    std::size_t index = 0;
    for (const auto& make : everyRule()) {
        SCOPED_TRACE(::testing::Message() << "rule " << index++);
        VcaObject* obj = make();
        ASSERT_NE(obj, nullptr);
        obj->SetObjStatus(TAVRIN_OBJ_STATUS_SELECTED);
        obj->SetSelPointIndex(1);
        expectFiniteAtDegenerateSizes(*obj);
        obj->ReleaseRef();
    }
}

TEST_F(RuleRobustness, NonFiniteCursorsAreHarmless)
{
    tagTAVRIN_POINT cursors[] = {{kNaN, 0.3f}, {0.3f, kInf}, {-kInf, -kInf}, {1e30f, 1e30f}};
    for (const auto& make : everyRule()) {
        VcaObject* obj = make();
        ASSERT_NE(obj, nullptr);
        obj->Draw(nullptr, 640, 480, true);  // the view size the pixel hit tests use
        obj->SetSelPointIndex(1);
        tagTAVRIN_POINT inside = pt(0.3f, 0.3f);
        for (tagTAVRIN_POINT& c : cursors) {
            EXPECT_FALSE(obj->CheckSelected(c));
            EXPECT_EQ(obj->CheckPointSelected(c), 0u);
            obj->Move(inside, c);
            obj->MovePoint(inside, c);
            obj->Move(c, inside);
        }
        rec::gl().reset();
        obj->Draw(nullptr, 640, 480, true);
        EXPECT_TRUE(everythingFinite());
        EXPECT_GL_STATE_CLEAN();
        obj->ReleaseRef();
    }
}
