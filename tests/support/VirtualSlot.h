#ifndef TAVRIN_TESTS_VIRTUALSLOT_H
#define TAVRIN_TESTS_VIRTUALSLOT_H

// The vtable slot of a virtual member function, for checking a class's slot order. Under
// the Itanium C++ ABI on x86 a pointer to a virtual member holds 1 + the slot's byte
// offset in its first word; elsewhere the encoding differs and the check is skipped.

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#define TAVRIN_TESTS_HAVE_SLOTS 1
#else
#define TAVRIN_TESTS_HAVE_SLOTS 0
#endif

/// 0-based vtable index of `member`, or -1 when it is not virtual.
template <class Member>
long slotOf(Member member)
{
    struct Representation {
        std::uintptr_t ptr;
        std::ptrdiff_t adj;
    };
    static_assert(sizeof(Member) == sizeof(Representation), "Itanium member pointer expected");
    Representation r;
    std::memcpy(&r, &member, sizeof r);
    if ((r.ptr & 1u) == 0) {
        return -1;
    }
    return static_cast<long>((r.ptr - 1) / sizeof(void*));
}

#endif  // TAVRIN_TESTS_VIRTUALSLOT_H
