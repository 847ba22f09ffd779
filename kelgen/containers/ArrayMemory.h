// ArrayMemory.h: work on array elements as bytes: exchange by a memory move, equality searches many elements at a time.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace kelgen::detail {

/// Exchanges two elements by moving their bytes, as arrays do on growth: no constructor, no assignment runs.
template <class TYPE>
void ExchangeBytes(TYPE& first, TYPE& second)
{
    if (&first == &second)
        return;
    alignas(TYPE) unsigned char held[sizeof(TYPE)];
    std::memcpy(held, static_cast<const void*>(&first), sizeof(TYPE));
    std::memcpy(static_cast<void*>(&first), static_cast<const void*>(&second), sizeof(TYPE));
    std::memcpy(static_cast<void*>(&second), held, sizeof(TYPE));
}

/// Types for which == is the equality of the bytes, and which the processor compares several at a time.
template <class TYPE>
inline constexpr bool kEqualAsNumber = (std::is_integral_v<TYPE> || std::is_enum_v<TYPE> || std::is_pointer_v<TYPE>)&&(sizeof(TYPE) == 4 ||
                                                                                                                       sizeof(TYPE) == 8);

/// The index of the first of @p count numbers that equals @p value, or -1. Compares 128 bytes between two branches.
template <class NUMBER>
int FindEqualNumber(const NUMBER* numbers, int count, NUMBER value)
{
    constexpr int kLanes = 16 / sizeof(NUMBER);
    constexpr int kBlock = 8 * kLanes;
    using Vector [[gnu::vector_size(16)]] = NUMBER;
    // Copied, since numbers need not lie as a vector does; the compiler makes one load of it.
    const auto load = [](const NUMBER* from) {
        Vector vector;
        std::memcpy(&vector, from, sizeof(vector));
        return vector;
    };

    const Vector wanted = Vector{} + value;
    int i = 0;
    for (; i + kBlock <= count; i += kBlock) {
        const auto isEqual = [&](int place) { return load(numbers + i + place * kLanes) == wanted; };
        const auto equal =
            ((isEqual(0) | isEqual(1)) | (isEqual(2) | isEqual(3))) | ((isEqual(4) | isEqual(5)) | (isEqual(6) | isEqual(7)));
        long long halves[2];
        std::memcpy(halves, &equal, sizeof(halves));
        if ((halves[0] | halves[1]) != 0)
            break;
    }
    for (; i < count; ++i) {
        if (numbers[i] == value)
            return i;
    }
    return -1;
}

/// The index of the first of @p count elements that equals @p value by its ==, or -1.
template <class TYPE>
int FindEqual(const TYPE* elements, int count, const TYPE& value)
{
    if constexpr (kEqualAsNumber<TYPE>) {
        using Number = std::conditional_t<sizeof(TYPE) == 4, int, long long>;
        Number number;
        std::memcpy(&number, &value, sizeof(number));
        return FindEqualNumber(reinterpret_cast<const Number*>(elements), count, number);
    } else {
        for (int i = 0; i < count; ++i) {
            if (elements[i] == value)
                return i;
        }
        return -1;
    }
}

}  // namespace kelgen::detail
