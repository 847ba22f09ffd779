// ExtraBytes.h: reading and writing values in the extra bytes of windows and classes.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <cstring>
#include <vector>

namespace kelgen::posix::user {

/// Whether a value of @p size bytes lies at @p offset.
inline bool IsInside(const std::vector<BYTE>& bytes, int offset, std::size_t size)
{
    return offset >= 0 && size <= bytes.size() && static_cast<std::size_t>(offset) <= bytes.size() - size;
}

/// The value at @p offset, which is inside.
template <class Value>
Value ReadExtra(const std::vector<BYTE>& bytes, int offset)
{
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

/// Replaces the value at @p offset, which is inside, and returns the one before.
template <class Value>
Value ExchangeExtra(std::vector<BYTE>& bytes, int offset, Value value)
{
    const Value before = ReadExtra<Value>(bytes, offset);
    std::memcpy(bytes.data() + offset, &value, sizeof value);
    return before;
}

}  // namespace kelgen::posix::user
