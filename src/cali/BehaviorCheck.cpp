#include <Tavrin/BehaviorCheck.h>

#include "foundation/NewInstance.h"

namespace Tavrin {

namespace {

const unsigned int kCheckVerticalColor = 0xFFFF00;

}  // namespace

BehaviorCheck::BehaviorCheck() = default;

BehaviorCheck::~BehaviorCheck() = default;

BehaviorCheck* BehaviorCheck::NewInstance() { return newInstanceOf<BehaviorCheck>(); }

void BehaviorCheck::Draw(void* context, int width, int height, bool /*flag*/)
{
    drawFigure(context, width, height, kCheckVerticalColor);
}

}  // namespace Tavrin
