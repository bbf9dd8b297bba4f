#include "support/VirtualSlot.h"

#include <Tavrin/AtmCali.h>
#include <Tavrin/BehaviorCheck.h>
#include <Tavrin/BinoCali.h>
#include <Tavrin/ItsCali.h>
#include <Tavrin/LfCali.h>
#include <Tavrin/PupilDistance.h>

#include <gtest/gtest.h>

using namespace Tavrin;


TEST(CaliSlots, EachClassAppendsItsOwnOperationsInOrder)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    expectObjectSlots<AtmCali>();
    expectObjectSlots<BehaviorCali>();
    expectObjectSlots<BehaviorCheck>();
    expectObjectSlots<ItsCali>();
    expectObjectSlots<PupilDistance>();
    expectObjectSlots<BinoCali>();
    expectObjectSlots<LfCali>();

    EXPECT_EQ(slotOf(&AtmCali::SetLinePoints), 28);
    EXPECT_EQ(slotOf(&AtmCali::GetLinePoints), 29);
    EXPECT_EQ(slotOf(&AtmCali::MoveLinePoint), 30);
    EXPECT_EQ(slotOf(&AtmCali::CheckLinePointSelected), 31);
    EXPECT_EQ(slotOf(&AtmCali::SetLineSelPointIndex), 32);
    EXPECT_EQ(slotOf(&AtmCali::GetLineSelPointIndex), 33);
    EXPECT_EQ(slotOf(&BehaviorCheck::SetCaliType), 28);
    EXPECT_EQ(slotOf(&BehaviorCheck::GetCaliType), 29);
    EXPECT_EQ(slotOf(&ItsCali::SetWidthLabelText), 28);
    EXPECT_EQ(slotOf(&ItsCali::SetHeightlabelText), 29);
    // Non-virtual helpers stay out of the table.
    EXPECT_EQ(slotOf(&AtmCali::GetVCaliLineHead), -1);
    EXPECT_EQ(slotOf(&PupilDistance::GetPupilLine), -1);
    EXPECT_EQ(slotOf(&ItsCali::GetMinYPoint), -1);
    EXPECT_EQ(slotOf(&BinoCali::SetRadius), -1);
#else
    GTEST_SKIP() << "member pointer layout not known on this target";
#endif
}
