#ifndef TAVRIN_FOUNDATION_NEWINSTANCE_H
#define TAVRIN_FOUNDATION_NEWINSTANCE_H

namespace Tavrin {

/// Allocates and constructs a T with the throwing allocation; null if either throws.
/// Every analytics class's static `NewInstance()` is this.
template <class T>
T* newInstanceOf() noexcept
{
    try {
        return new T();
    } catch (...) {
        return nullptr;
    }
}

}  // namespace Tavrin

#endif  // TAVRIN_FOUNDATION_NEWINSTANCE_H
