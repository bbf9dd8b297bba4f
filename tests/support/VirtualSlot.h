#ifndef TAVRIN_TESTS_VIRTUALSLOT_H
#define TAVRIN_TESTS_VIRTUALSLOT_H

// The vtable slot of a virtual member function, for checking a class's slot order. Under
// the Itanium C++ ABI on x86 a pointer to a virtual member holds 1 + the slot's byte
// offset in its first word; elsewhere the encoding differs and the check is skipped.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

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

/// The object base's slots in declared order, the destructor's two entries at 24 and 25,
/// then SetPoints and GetPoints at 26 and 27.
#define TAVRIN_EXPECT_SLOT(T, name, slot) EXPECT_EQ(slotOf(&T::name), slot) << #T "::" #name
template <class T>
void expectObjectSlots()
{
    TAVRIN_EXPECT_SLOT(T, IsNull, 0);
    TAVRIN_EXPECT_SLOT(T, GetObjStatus, 1);
    TAVRIN_EXPECT_SLOT(T, SetObjStatus, 2);
    TAVRIN_EXPECT_SLOT(T, Move, 3);
    TAVRIN_EXPECT_SLOT(T, MovePoint, 4);
    TAVRIN_EXPECT_SLOT(T, CheckSelected, 5);
    TAVRIN_EXPECT_SLOT(T, CheckPointSelected, 6);
    TAVRIN_EXPECT_SLOT(T, Draw, 7);
    TAVRIN_EXPECT_SLOT(T, SetLabelText, 8);
    TAVRIN_EXPECT_SLOT(T, GetLabelText, 9);
    TAVRIN_EXPECT_SLOT(T, SetSelPointIndex, 10);
    TAVRIN_EXPECT_SLOT(T, GetSelPointIndex, 11);
    TAVRIN_EXPECT_SLOT(T, SetWndSize, 12);
    TAVRIN_EXPECT_SLOT(T, SetClosed, 13);
    TAVRIN_EXPECT_SLOT(T, GetClosed, 14);
    TAVRIN_EXPECT_SLOT(T, GetDrawLabelRect, 15);
    TAVRIN_EXPECT_SLOT(T, SetSizeFilterType, 23);
    TAVRIN_EXPECT_SLOT(T, SetPoints, 26);
    TAVRIN_EXPECT_SLOT(T, GetPoints, 27);
}

#endif  // TAVRIN_TESTS_VIRTUALSLOT_H
