#ifndef TAVRIN_KEMOGUARD_H
#define TAVRIN_KEMOGUARD_H

#include <Tavrin/KemoMutex.h>

namespace Tavrin {

/// Scoped lock: locks the mutex on construction and unlocks it on destruction.
class TAVRIN_API KemoGuard {
public:
    explicit KemoGuard(KemoMutex& mutex) : m_mutex(mutex) { m_mutex.Lock(); }
    ~KemoGuard() { m_mutex.Unlock(); }
    KemoGuard(const KemoGuard&) = delete;
    KemoGuard& operator=(const KemoGuard&) = delete;

private:
    KemoMutex& m_mutex;
};

}  // namespace Tavrin

#endif  // TAVRIN_KEMOGUARD_H
