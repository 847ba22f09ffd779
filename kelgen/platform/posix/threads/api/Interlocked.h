// Interlocked.h: atomic operations on plain variables, all sequentially consistent.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

/// Adds one; the new value.
inline LONG InterlockedIncrement(volatile LONG* value)
{
    return __atomic_add_fetch(value, 1, __ATOMIC_SEQ_CST);
}

/// Subtracts one; the new value.
inline LONG InterlockedDecrement(volatile LONG* value)
{
    return __atomic_sub_fetch(value, 1, __ATOMIC_SEQ_CST);
}

/// Stores @p replacement; the value before.
inline LONG InterlockedExchange(volatile LONG* value, LONG replacement)
{
    return __atomic_exchange_n(value, replacement, __ATOMIC_SEQ_CST);
}

/// Adds @p addend; the value before.
inline LONG InterlockedExchangeAdd(volatile LONG* value, LONG addend)
{
    return __atomic_fetch_add(value, addend, __ATOMIC_SEQ_CST);
}

/// Stores @p replacement when the value equals @p comparand; the value before in either case.
inline LONG InterlockedCompareExchange(volatile LONG* value, LONG replacement, LONG comparand)
{
    __atomic_compare_exchange_n(value, &comparand, replacement, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}

/// Stores the pointer @p replacement; the pointer before.
inline PVOID InterlockedExchangePointer(PVOID volatile* value, PVOID replacement)
{
    return __atomic_exchange_n(value, replacement, __ATOMIC_SEQ_CST);
}

/// Stores the pointer @p replacement when the value equals @p comparand; the pointer before in either case.
inline PVOID InterlockedCompareExchangePointer(PVOID volatile* value, PVOID replacement, PVOID comparand)
{
    __atomic_compare_exchange_n(value, &comparand, replacement, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    return comparand;
}
