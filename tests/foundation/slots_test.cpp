// The virtual tables hosts are built against: the object base's slots, then SetPoints
// and GetPoints, then each class's own operations in declared order; the primitives'
// tables likewise. A new operation must never move one of these.

#include "support/VirtualSlot.h"

#include <Tavrin/Tavrin.h>

#include <vector>

using namespace Tavrin;

TEST(Slots, AnalyticsClassesKeepTheBaseSlotsAndAppendTheirOwn)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    expectObjectSlots<ShieldRegion>();
    expectObjectSlots<ReferenceRegion>();
    expectObjectSlots<EnterRegion>();
    expectObjectSlots<ITCPlateRegion>();
    expectObjectSlots<AtmCali>();
    expectObjectSlots<BehaviorCali>();
    expectObjectSlots<BehaviorCheck>();
    expectObjectSlots<ItsCali>();
    expectObjectSlots<PupilDistance>();
    expectObjectSlots<BinoCali>();
    expectObjectSlots<LfCali>();
    const std::vector<long> own = {
        slotOf(&VcaRule::SetIsTraversePlane),     slotOf(&VcaRule::SetPoints),
        slotOf(&VcaRule::SetColors),              slotOf(&VcaRule::SetLineType),
        slotOf(&ITCLine::GetLineType),            slotOf(&Lane::GetArrowPoints),
        slotOf(&PdcRule::SetVcaPDCLineOrRect),    slotOf(&PdcRule::CheckCaliPointSelected),
        slotOf(&PdcRule::SetArrowPoints),         slotOf(&PdcRule::SetVcaPDCCaliShoulderLine),
        slotOf(&PdcRule::SetText),                slotOf(&SizeFilter::SetSizeFilterType),
        slotOf(&SizeFilter::SetDiagonal),         slotOf(&SizeFilter::SetColor),
        slotOf(&AtmCali::SetLinePoints),          slotOf(&AtmCali::GetLinePoints),
        slotOf(&AtmCali::MoveLinePoint),          slotOf(&AtmCali::CheckLinePointSelected),
        slotOf(&AtmCali::SetLineSelPointIndex),   slotOf(&AtmCali::GetLineSelPointIndex),
        slotOf(&BehaviorCheck::SetCaliType),      slotOf(&BehaviorCheck::GetCaliType),
        slotOf(&ItsCali::SetWidthLabelText),      slotOf(&ItsCali::SetHeightlabelText),
        // Non-virtual helpers stay out of the table.
        slotOf(&VcaRule::SetRuleType),            slotOf(&AtmCali::GetVCaliLineHead),
        slotOf(&PupilDistance::GetPupilLine),     slotOf(&ItsCali::GetMinYPoint),
        slotOf(&BinoCali::SetRadius)};
    EXPECT_EQ(own, (std::vector<long>{16, 26, 28, 29, 29, 29, 17, 22, 28, 30, 35, 23, 28, 30, 28, 29, 30, 31, 32,
                                      33, 28, 29, 28, 29, -1, -1, -1, -1, -1}));
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}

TEST(Slots, PrimitivesKeepTheirOrder)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    // Slots 0 and 1 hold the destructor.
    const std::vector<long> polygons = {
        slotOf(&Polygon::IsNull),      slotOf(&Polygon::Draw),          slotOf(&Polygon::SetSuptPolygonMoveRightOut),
        slotOf(&Polygon::SetPoints),   slotOf(&Polygon::GetPoints),     slotOf(&Polygon::Move),
        slotOf(&Polygon::MovePoint),   slotOf(&Polygon::CheckSelected), slotOf(&Polygon::CheckPointSelected),
        slotOf(static_cast<void (Polygon::*)(Polygon&)>(&Polygon::operator=)),
        slotOf(&Polygon::IsNearPoint), slotOf(&Rectangle::SetPoints),   slotOf(&Rectangle::MovePoint),
        slotOf(&Rectangle::SetDiagonal), slotOf(&Square::MovePoint),    slotOf(&Square::SetDiagonal),
        slotOf(&Label::Draw)};
    EXPECT_EQ(polygons, (std::vector<long>{2, 8, 15, 16, 17, 18, 19, 20, 21, 22, -1, 16, 19, 23, 19, 23, 8}));
    const std::vector<long> lines = {
        slotOf(&Line::IsNull),       slotOf(&Line::Draw),          slotOf(&Line::SetPoints),
        slotOf(&Line::GetPoints),    slotOf(&Line::Move),          slotOf(&Line::MovePoint),
        slotOf(&Line::CheckSelected), slotOf(&Line::CheckPointSelected), slotOf(&Line::SetLineType),
        slotOf(&Line::GetLineType),  slotOf(&Line::SetShowPoint),
        slotOf(static_cast<void (Line::*)(Line&)>(&Line::operator=)),
        slotOf(&Line::IsNearPoint),  slotOf(&Arrow::Draw),         slotOf(&BrokenLine::Draw),
        slotOf(&BrokenLine::SetPoints), slotOf(&BrokenLine::CheckPointSelected)};
    EXPECT_EQ(lines, (std::vector<long>{2, 8, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, -1, 8, 8, 16, 21}));
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}
