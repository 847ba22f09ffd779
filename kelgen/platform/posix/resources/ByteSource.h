// ByteSource.h: bytes of a file or of memory that parsers ask for piece by piece.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>
#include <kelgen/platform/posix/base/Retry.h>
#include <kelgen/platform/posix/base/api/Types.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>

namespace kelgen::posix {

/// Bytes of a known size. A request that does not lie in them fails as a whole.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    ULONGLONG Size() const { return m_size; }
    bool Holds(ULONGLONG offset, ULONGLONG count) const { return offset <= m_size && count <= m_size - offset; }

    /// Copies @p target's size of bytes from @p offset on; false when they are not all there.
    bool Read(ULONGLONG offset, std::span<BYTE> target) const
    {
        return Holds(offset, target.size()) && (target.empty() || Copy(offset, target));
    }

    /// The value whose little-endian bytes begin at @p offset.
    template <class Value>
    std::optional<Value> ReadAs(ULONGLONG offset) const
    {
        static_assert(std::is_trivially_copyable_v<Value>);
        BYTE bytes[sizeof(Value)];
        if (!Read(offset, bytes))
            return std::nullopt;
        Value value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }

protected:
    explicit ByteSource(ULONGLONG size) : m_size(size) {}

private:
    virtual bool Copy(ULONGLONG offset, std::span<BYTE> target) const = 0;

    ULONGLONG m_size;
};

/// Bytes in memory, which must outlive this.
class MemoryBytes : public ByteSource
{
public:
    explicit MemoryBytes(std::span<const BYTE> bytes) : ByteSource(bytes.size()), m_bytes(bytes) {}

private:
    bool Copy(ULONGLONG offset, std::span<BYTE> target) const override
    {
        std::memcpy(target.data(), m_bytes.data() + offset, target.size());
        return true;
    }

    std::span<const BYTE> m_bytes;
};

/// Bytes of an open file. The file may shrink meanwhile: then reading fails. Threads: one at a time.
class FileBytes : public ByteSource
{
public:
    FileBytes(Descriptor file, ULONGLONG size) : ByteSource(size), m_file(std::move(file)) {}

    /// Why the last read that failed did, as errno; 0 when none has.
    int Error() const { return m_error; }

private:
    static constexpr std::size_t kPage = 4096;

    bool Copy(ULONGLONG offset, std::span<BYTE> target) const override
    {
        if (target.size() > kPage)
            return ReadFile(offset, target) == target.size();
        // Parsers ask for many small pieces that lie close together.
        if (offset < m_start || offset + target.size() > m_start + m_count) {
            m_start = offset / kPage * kPage;
            m_count = ReadFile(m_start,
                               std::span(m_pages).first(static_cast<std::size_t>(std::min<ULONGLONG>(sizeof m_pages, Size() - m_start))));
        }
        if (offset + target.size() > m_start + m_count)
            return false;
        std::memcpy(target.data(), m_pages + (offset - m_start), target.size());
        return true;
    }

    std::size_t ReadFile(ULONGLONG offset, std::span<BYTE> target) const
    {
        const auto count = ReadFullyAt(m_file.Get(), target, static_cast<off_t>(offset));
        if (!count)
            m_error = errno;
        return count.value_or(0);
    }

    Descriptor m_file;
    mutable ULONGLONG m_start = 0;
    mutable std::size_t m_count = 0;
    mutable int m_error = 0;
    mutable BYTE m_pages[2 * kPage];
};

}  // namespace kelgen::posix
