// TemplateReader.h: reads the templates of menus, dialogs, accelerators and icons without leaving their bytes.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>
#include <kelgen/platform/posix/resources/api/ResourceModules.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

namespace kelgen::posix::user {

/// A place in a template. What lies behind the end reads as 0 and the template is not sound from then on.
class TemplateReader
{
public:
    /// From @p bytes on; without a size the caller vouches for the template's end.
    explicit TemplateReader(const BYTE* bytes, std::size_t size = std::numeric_limits<std::ptrdiff_t>::max()) : m_bytes(bytes), m_size(size)
    {}

    /// A template at @p place: its end is that of the resource in which it lies, or else the caller's matter.
    static TemplateReader At(const void* place)
    {
        const auto* const bytes = static_cast<const BYTE*>(place);
        const auto size = RegisteredBytesFrom(place);
        return size ? TemplateReader(bytes, *size) : TemplateReader(bytes);
    }

    bool IsSound() const { return m_isSound; }
    std::size_t Offset() const { return m_offset; }
    std::size_t Left() const { return m_size - m_offset; }
    const BYTE* Here() const { return m_bytes + m_offset; }

    BYTE Byte() { return Number<BYTE>(); }
    WORD Word() { return Number<WORD>(); }
    DWORD Dword() { return Number<DWORD>(); }
    SHORT Short() { return Number<SHORT>(); }

    /// The next unit without leaving it behind; 0 at the end.
    WORD PeekWord() const
    {
        TemplateReader copy = *this;
        return copy.Word();
    }

    /// The units up to a terminator, which is left behind too.
    std::u16string Text()
    {
        std::u16string text;
        while (m_isSound) {
            const WORD unit = Word();
            if (unit == 0)
                break;
            text.push_back(unit);
        }
        return text;
    }

    void Skip(std::size_t count)
    {
        if (count > Left())
            m_isSound = false;
        else
            m_offset += count;
    }

    /// Goes on at the next multiple of four, counted from the template's start. An end before it is sound.
    void AlignToDword() { Skip(std::min((4 - m_offset % 4) % 4, Left())); }

private:
    template <class Value>
    Value Number()
    {
        Value value = 0;
        if (Left() < sizeof value) {
            m_isSound = false;
            return value;
        }
        std::memcpy(&value, Here(), sizeof value);
        m_offset += sizeof value;
        return value;
    }

    const BYTE* m_bytes;
    std::size_t m_size;
    std::size_t m_offset = 0;
    bool m_isSound = true;
};

}  // namespace kelgen::posix::user
