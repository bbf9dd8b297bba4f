#ifndef TAVRIN_BEHAVIORCHECK_H
#define TAVRIN_BEHAVIORCHECK_H

#include <Tavrin/BehaviorCali.h>

namespace Tavrin {

/// The behaviour calibration line in the check step: the same figure and operations as
/// `BehaviorCali`, with the type-1 look drawn in 0xFFFF00 (line, end bars and label).
/// Other types draw exactly like a `BehaviorCali`.
class TAVRIN_API BehaviorCheck : public BehaviorCali {
public:
    /// A new object with a reference count of 1; null when allocation fails.
    static BehaviorCheck* NewInstance();

    /// As `BehaviorCali::Draw`, with 0xFFFF00 for the type-1 look.
    void Draw(void* context, int width, int height, bool flag) override;
    ~BehaviorCheck() override;

protected:
    BehaviorCheck();

private:
    friend BehaviorCheck* newInstanceOf<BehaviorCheck>() noexcept;
};

}  // namespace Tavrin

#endif  // TAVRIN_BEHAVIORCHECK_H
