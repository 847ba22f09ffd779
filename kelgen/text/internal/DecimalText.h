// DecimalText.h: decimal integers from and to narrow text, the same on every target.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>

namespace kelgen::detail {

/// The decimal number that @p text begins with; 0 when there is none. Blanks (0x09 to 0x0D, 0x20) may come first, then one
/// sign; the digits end at the first other character. A null text reads as 0.
/// By contract: a number beyond 32 bits keeps its low 32 bits, as the Windows runtime's atoi does: "4294967295" reads as -1.
inline int ReadDecimal(const char* text)
{
    if (text == nullptr)
        return 0;
    while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
        ++text;

    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    std::uint32_t number = 0;
    for (; *text >= '0' && *text <= '9'; ++text)
        number = number * 10 + static_cast<std::uint32_t>(*text - '0');
    return static_cast<int>(negative ? 0 - number : number);
}

/// A 32-bit integer written in decimal, terminated, held in the object itself.
class DecimalText
{
public:
    explicit DecimalText(int number) { Write(number); }
    explicit DecimalText(unsigned int number) { Write(number); }

    const char* Get() const { return m_text; }

private:
    template <class NUMBER>
    void Write(NUMBER number)
    {
        *std::to_chars(m_text, m_text + sizeof m_text - 1, number).ptr = '\0';
    }

    char m_text[12];  // "-2147483648" and its terminator
};

}  // namespace kelgen::detail
