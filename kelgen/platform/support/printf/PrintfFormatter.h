// PrintfFormatter.h: the runtime's printf over narrow or 16-bit units, whatever the arguments come from.
#pragma once

#include <kelgen/platform/Win32.h>
#include <kelgen/platform/support/printf/PrintfDirective.h>
#include <kelgen/platform/support/printf/PrintfFloat.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace kelgen::detail {

/// From so many units on a call of the runtime, which takes several at once, is quicker than a loop.
constexpr std::ptrdiff_t kLongRun = 16;

/// Takes any number of units and keeps those for which there is room. Cost: nothing for units past the room.
template <class Unit>
class BoundedOutput
{
public:
    BoundedOutput(Unit* text, std::size_t capacity) : m_next(text), m_room(capacity), m_capacity(capacity) {}

    void Put(Unit unit) { Fill(unit, 1); }

    void Fill(Unit unit, std::size_t count)
    {
        if (count == 0)
            return;
        m_length += count;
        const std::size_t kept = std::min(count, m_room);
        m_next = std::fill_n(m_next, kept, unit);
        m_room -= kept;
    }

    /// Narrow units widen as they stand.
    template <class Source>
    void Copy(const Source* units, std::size_t count)
    {
        if (count == 0)
            return;
        m_length += count;
        const std::size_t kept = std::min(count, m_room);
        m_room -= kept;
        // A pointer of its own: for all the compiler knows a unit could be written over the member.
        Unit* next = m_next;
        for (const Source* const end = units + kept; units != end; ++units)
            *next++ = static_cast<Unit>(static_cast<std::make_unsigned_t<Source>>(*units));
        m_next = next;
    }

    /// The same, quicker for many.
    void CopyLong(const Unit* units, std::size_t count)
    {
        m_length += count;
        const std::size_t kept = std::min(count, m_room);
        m_room -= kept;
        m_next = std::copy_n(units, kept, m_next);
    }

    /// Units taken, even those that found no room.
    std::size_t Length() const { return m_length; }

    /// What the runtime's bounded formatters return: the length when it fits, terminated when there is room for that too, else -1.
    int Finish()
    {
        if (m_length > m_capacity || m_length > INT_MAX)
            return -1;
        if (m_room > 0)
            *m_next = 0;
        return static_cast<int>(m_length);
    }

private:
    Unit* m_next;
    std::size_t m_room;
    const std::size_t m_capacity;
    std::size_t m_length = 0;
};

/// Formats once. In text of 16-bit units 's' and 'c' are wide and 'S' and 'C' narrow, in narrow text the other way round; 'h' makes
/// narrow, 'l' and 'w' wide. "I64" and "ll" are 64 bits, 'l' is 32.
template <class Unit, class Arguments>
class PrintfFormatter
{
public:
    PrintfFormatter(BoundedOutput<Unit>& output, Arguments& arguments) : m_output(output), m_arguments(arguments) {}

    /// False when a wide argument has no narrow form.
    bool Format(const Unit* format)
    {
        while (*format && !m_failed) {
            const Unit* literal = format;
            while (*format && *format != '%' && format - literal < kLongRun)
                ++format;
            if (format - literal < kLongRun) {
                m_output.Copy(literal, static_cast<std::size_t>(format - literal));
            } else {
                format = EndOfLongLiteral(format);
                m_output.CopyLong(literal, static_cast<std::size_t>(format - literal));
            }
            if (*format)
                format = FormatOne(format + 1);
        }
        return !m_failed;
    }

private:
    /// A number's parts in the order of output; padding goes before the prefix, or behind it when it is zeros.
    struct Number
    {
        std::string_view prefix;
        std::size_t leadingZeros = 0;
        std::string_view body;
        std::size_t trailingZeros = 0;
        std::string_view exponent;
    };

    /// The next '%' or the end behind @p format, at which a long literal goes on.
    static const Unit* EndOfLongLiteral(const Unit* format)
    {
        const Unit* const next = FindPercent(format);
        return next ? next : format + LengthOf(format);
    }

    static const char* FindPercent(const char* text) { return std::strchr(text, '%'); }
    static const WCHAR* FindPercent(const WCHAR* text) { return wcschr(text, '%'); }

    /// Formats what follows a '%'; where the format goes on.
    const Unit* FormatOne(const Unit* format)
    {
        if (*format == '%') {
            m_output.Put('%');
            return format + 1;
        }
        format = PrintfDirectiveReader<Unit, Arguments>(m_arguments).Read(format, m_directive);
        if (m_directive.width < 0) {
            m_directive.left = true;
            m_directive.width = -std::max(m_directive.width, -INT_MAX);
        }
        m_directive.precision = std::max(m_directive.precision, -1);
        if (m_directive.letter != 0)
            Convert(m_directive.letter);
        return format;
    }

    void Convert(unsigned letter)
    {
        constexpr bool kIsWide = sizeof(Unit) > 1;
        switch (letter) {
        case 'd':
        case 'i':
            return Signed();
        case 'u':
            return Unsigned(10, false);
        case 'o':
            return Unsigned(8, false);
        case 'x':
            return Unsigned(16, false);
        case 'X':
            return Unsigned(16, true);
        case 'p':
            return PointerValue();
        case 'e':
        case 'E':
        case 'f':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            return Float(static_cast<char>(letter));
        case 's':
            return Text(IsWideText(kIsWide));
        case 'S':
            return Text(IsWideText(!kIsWide));
        case 'c':
            return Character(IsWideText(kIsWide));
        case 'C':
            return Character(IsWideText(!kIsWide));
        case 'n':
            return StoreLength();
        case '%':
            return;
        default:
            m_output.Put(static_cast<Unit>(letter));
        }
    }

    bool IsWideText(bool unmarked) const
    {
        return m_directive.size == PrintfSize::None ? unmarked : m_directive.size != PrintfSize::Narrow;
    }

    void Signed()
    {
        long long value = m_directive.size == PrintfSize::Bits64 ? m_arguments.LongLong() : m_arguments.Int();
        if (m_directive.size == PrintfSize::Narrow)
            value = static_cast<short>(value);
        const auto bits = static_cast<unsigned long long>(value);
        Integer(value < 0 ? 0 - bits : bits, 10, false, SignOf(value < 0));
    }

    void Unsigned(unsigned base, bool capital)
    {
        auto value = m_directive.size == PrintfSize::Bits64 ? static_cast<unsigned long long>(m_arguments.LongLong())
                                                            : static_cast<unsigned>(m_arguments.Int());
        if (m_directive.size == PrintfSize::Narrow)
            value = static_cast<unsigned short>(value);
        const bool prefixed = m_directive.alternate && value != 0 && base == 16;
        Integer(value, base, capital, !prefixed ? "" : capital ? "0X" : "0x");
    }

    void PointerValue()
    {
        const auto value = reinterpret_cast<std::uintptr_t>(m_arguments.Pointer());
        m_directive.precision = 2 * sizeof value;
        m_directive.zero = false;
        Integer(value, 16, true, m_directive.alternate && value ? "0X" : "");
    }

    void Integer(unsigned long long value, unsigned base, bool capital, std::string_view prefix)
    {
        char buffer[24];
        char* const end = buffer + sizeof buffer;
        char* const first = base == 10 ? DecimalDigits(end, value) : BinaryDigits(end, value, base == 8 ? 3 : 4, capital);
        const std::string_view body(first, static_cast<std::size_t>(end - first));

        Number number{prefix, 0, body, 0, {}};
        const auto wanted = static_cast<std::size_t>(m_directive.precision < 0 ? 1 : m_directive.precision);
        number.leadingZeros = wanted > body.size() ? wanted - body.size() : 0;
        // The alternate form of octal has a leading zero, be it one of the precision's.
        if (base == 8 && m_directive.alternate)
            number.leadingZeros = std::max<std::size_t>(number.leadingZeros, 1);
        PutNumber(number);
    }

    /// The digits of @p value before @p end; none for 0.
    static char* DecimalDigits(char* end, unsigned long long value)
    {
        for (; value > UINT_MAX; value /= 10)
            *--end = static_cast<char>('0' + value % 10);
        for (auto rest = static_cast<unsigned>(value); rest != 0; rest /= 10)
            *--end = static_cast<char>('0' + rest % 10);
        return end;
    }

    static char* BinaryDigits(char* end, unsigned long long value, unsigned bits, bool capital)
    {
        const char* const digits = capital ? "0123456789ABCDEF" : "0123456789abcdef";
        for (; value != 0; value >>= bits)
            *--end = digits[value & ((1u << bits) - 1)];
        return end;
    }

    void Float(char conversion)
    {
        const double value = m_arguments.Double();
        FloatText text;
        FormatFloat(value, conversion, m_directive.precision, m_directive.alternate, text);
        const Number number{SignOf(std::signbit(value)), 0, text.body, text.zeros, text.exponent};
        if (std::isfinite(value))
            PutNumber(number);
        else
            PutInfinite(number, text.cut);
    }

    /// By contract, as the runtime prints it, what the precision cut off is padded as well; at the left margin, the padding precedes the
    /// exponent and zeros become blanks behind it.
    void PutInfinite(const Number& number, std::size_t cut)
    {
        const std::size_t length = number.prefix.size() + number.body.size() + number.trailingZeros + number.exponent.size();
        const std::size_t padding = Padding(length > cut ? length - cut : 0);
        m_output.Fill(' ', m_directive.left || m_directive.zero ? 0 : padding);
        m_output.Copy(number.prefix.data(), number.prefix.size());
        m_output.Fill('0', m_directive.zero && !m_directive.left ? padding : 0);
        m_output.Copy(number.body.data(), number.body.size());
        m_output.Fill(m_directive.left ? ' ' : '0', m_directive.left ? padding : number.trailingZeros);
        m_output.Copy(number.exponent.data(), number.exponent.size());
        m_output.Fill(' ', m_directive.left ? number.trailingZeros : 0);
    }

    std::string_view SignOf(bool negative) const { return negative ? "-" : m_directive.plus ? "+" : m_directive.blank ? " " : ""; }

    void PutNumber(const Number& number)
    {
        const std::size_t padding =
            Padding(number.prefix.size() + number.leadingZeros + number.body.size() + number.trailingZeros + number.exponent.size());
        std::size_t before = 0;
        std::size_t zeros = number.leadingZeros;
        std::size_t behind = 0;
        (m_directive.left ? behind : m_directive.zero ? zeros : before) += padding;

        m_output.Fill(' ', before);
        m_output.Copy(number.prefix.data(), number.prefix.size());
        m_output.Fill('0', zeros);
        m_output.Copy(number.body.data(), number.body.size());
        m_output.Fill('0', number.trailingZeros);
        m_output.Copy(number.exponent.data(), number.exponent.size());
        m_output.Fill(' ', behind);
    }

    std::size_t Padding(std::size_t length) const
    {
        const auto width = static_cast<std::size_t>(m_directive.width);
        return width > length ? width - length : 0;
    }

    void Text(bool wide)
    {
        const void* text = m_arguments.Pointer();
        if (!text)
            PutText("(null)");
        else if (wide)
            PutText(static_cast<const WCHAR*>(text));
        else
            PutText(static_cast<const char*>(text));
    }

    void Character(bool wide)
    {
        const int value = m_arguments.Int();
        if (wide) {
            const auto unit = static_cast<WCHAR>(value);
            // A wide unit without a narrow form is left out.
            PutUnits(&unit, sizeof(Unit) == 1 && unit > 0xFF ? 0 : std::min<std::size_t>(1, MostUnits()));
        } else {
            const auto unit = static_cast<char>(value);
            PutUnits(&unit, std::min<std::size_t>(1, MostUnits()));
        }
    }

    std::size_t MostUnits() const { return m_directive.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(m_directive.precision); }

    template <class Source>
    void PutText(const Source* text)
    {
        const std::size_t length = m_directive.precision < 0 ? LengthOf(text) : BoundedLengthOf(text, MostUnits());
        if constexpr (sizeof(Source) > sizeof(Unit)) {
            m_failed = std::any_of(text, text + length, [](Source unit) { return unit > 0xFF; });
            if (m_failed)
                return;
        }
        PutUnits(text, length);
    }

    static std::size_t LengthOf(const char* text) { return std::strlen(text); }
    static std::size_t LengthOf(const WCHAR* text) { return wcslen(text); }

    template <class Source>
    static std::size_t BoundedLengthOf(const Source* text, std::size_t most)
    {
        std::size_t length = 0;
        while (length < most && text[length])
            ++length;
        return length;
    }

    template <class Source>
    void PutUnits(const Source* units, std::size_t count)
    {
        const std::size_t padding = Padding(count);
        if (!m_directive.left)
            m_output.Fill(m_directive.zero ? '0' : ' ', padding);
        m_output.Copy(units, count);
        if (m_directive.left)
            m_output.Fill(' ', padding);
    }

    void StoreLength()
    {
        void* const place = m_arguments.Pointer();
        if (m_directive.size == PrintfSize::Narrow)
            *static_cast<short*>(place) = static_cast<short>(m_output.Length());
        else if (m_directive.size == PrintfSize::Bits64)
            *static_cast<long long*>(place) = static_cast<long long>(m_output.Length());
        else
            *static_cast<int*>(place) = static_cast<int>(m_output.Length());
    }

    BoundedOutput<Unit>& m_output;
    Arguments& m_arguments;
    PrintfDirective m_directive;
    bool m_failed = false;
};

}  // namespace kelgen::detail
