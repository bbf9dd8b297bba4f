#ifndef TAVRIN_KEMOMUTEX_H
#define TAVRIN_KEMOMUTEX_H

#include <Tavrin/TavrinTypes.h>

#include <mutex>

namespace Tavrin {

/// A plain, non-recursive mutex. The library never locks one twice on the same thread.
class TAVRIN_API KemoMutex {
public:
    KemoMutex() = default;
    KemoMutex(const KemoMutex&) = delete;
    KemoMutex& operator=(const KemoMutex&) = delete;

    void Lock() { m_mutex.lock(); }
    void Unlock() { m_mutex.unlock(); }

private:
    std::mutex m_mutex;
};

}  // namespace Tavrin

#endif  // TAVRIN_KEMOMUTEX_H
