// BaseNumericArray.h: CBaseNumericArray, number sequences and their average.
#pragma once

#include <kelgen/containers/BaseComparableArray.h>

#include <type_traits>

/// A comparable array of numbers.
template <class TYPE, class ARG_TYPE = TYPE, class BASE = CBaseArray<TYPE, ARG_TYPE>>
class CBaseNumericArray : public CBaseComparableArray<TYPE, ARG_TYPE, BASE>
{
public:
    using MovableBitwise = CBaseNumericArray;
    using CBaseComparableArray<TYPE, ARG_TYPE, BASE>::CBaseComparableArray;
    using CBaseComparableArray<TYPE, ARG_TYPE, BASE>::operator=;

    /// Appends @p count numbers: @p start, start + @p step, start + 2 * step and so on, wrapping as 32-bit numbers do. A count
    /// below 1 appends nothing.
    void AddIncremental(TYPE start, int count, TYPE step);

    /// The sum of all elements divided by their count, truncated toward zero.
    /// By contract: an empty array faults with the processor's division by zero, so a caller asks for the size first.
    TYPE CalcAverage() const;

private:
    static constexpr bool kInteger = std::is_integral_v<TYPE>;
};

template <class TYPE, class ARG_TYPE, class BASE>
void CBaseNumericArray<TYPE, ARG_TYPE, BASE>::AddIncremental(TYPE start, int count, TYPE step)
{
    for (int i = 0; i < count; ++i) {
        if constexpr (kInteger) {
            // Unsigned: the sequence may leave the type's range.
            using Bits = std::make_unsigned_t<TYPE>;
            this->Add(static_cast<TYPE>(static_cast<Bits>(start) + static_cast<Bits>(i) * static_cast<Bits>(step)));
        } else {
            this->Add(start + static_cast<TYPE>(i) * step);
        }
    }
}

template <class TYPE, class ARG_TYPE, class BASE>
TYPE CBaseNumericArray<TYPE, ARG_TYPE, BASE>::CalcAverage() const
{
    using Whole = std::conditional_t<std::is_signed_v<TYPE>, long long, unsigned long long>;
    using Sum = std::conditional_t<kInteger, Whole, TYPE>;
    Sum sum = 0;
    for (int i = 0; i < this->m_nSize; ++i)
        sum += this->m_pData[i];
    return static_cast<TYPE>(sum / static_cast<Sum>(this->m_nSize));
}
