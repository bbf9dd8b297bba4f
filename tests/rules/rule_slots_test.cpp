#include "support/VirtualSlot.h"

#include <Tavrin/ITCLine.h>
#include <Tavrin/Lane.h>
#include <Tavrin/PdcRule.h>
#include <Tavrin/SizeFilter.h>
#include <Tavrin/VcaRule.h>

using namespace Tavrin;

// The base's slots come first (24 and 25 hold the destructor), then SetPoints and
// GetPoints, then each class's own operations in their declared order.
TEST(RuleSlots, OverridesKeepTheBaseSlotsAndNewOperationsFollowGetPoints)
{
#if TAVRIN_TESTS_HAVE_SLOTS
    EXPECT_EQ(slotOf(&VcaRule::SetIsTraversePlane), 16);
    EXPECT_EQ(slotOf(&VcaRule::SetPoints), 26);
    EXPECT_EQ(slotOf(&VcaRule::SetColors), 28);
    EXPECT_EQ(slotOf(&VcaRule::SetLineType), 29);
    EXPECT_EQ(slotOf(&VcaRule::SetRuleType), -1);  // not virtual
    EXPECT_EQ(slotOf(&ITCLine::GetLineType), 29);
    EXPECT_EQ(slotOf(&Lane::GetArrowPoints), 29);
    EXPECT_EQ(slotOf(&PdcRule::SetVcaPDCLineOrRect), 17);
    EXPECT_EQ(slotOf(&PdcRule::CheckCaliPointSelected), 22);
    EXPECT_EQ(slotOf(&PdcRule::SetArrowPoints), 28);
    EXPECT_EQ(slotOf(&PdcRule::SetVcaPDCCaliShoulderLine), 30);
    EXPECT_EQ(slotOf(&PdcRule::SetText), 35);
    EXPECT_EQ(slotOf(&SizeFilter::SetSizeFilterType), 23);
    EXPECT_EQ(slotOf(&SizeFilter::SetDiagonal), 28);
    EXPECT_EQ(slotOf(&SizeFilter::SetColor), 30);
#endif
}
