// Utf7Conversion.cpp: UTF-7 and symbol bytes, both ways.
#include <kelgen/platform/posix/nls/Conversions.h>

#include <cstring>

namespace kelgen::posix {

namespace {

constexpr char kBase64Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The value of a base 64 digit, or -1.
int DigitOf(char byte)
{
    const char* at = byte != 0 ? std::strchr(kBase64Digits, byte) : nullptr;
    return at ? static_cast<int>(at - kBase64Digits) : -1;
}

// Characters that are never encoded.
bool IsDirect(WCHAR unit)
{
    if (unit >= 0x80)
        return false;
    const char byte = static_cast<char>(unit);
    return byte == 0 || (DigitOf(byte) >= 0 && byte != '+') || std::strchr("'(),-.:? \t\r\n", byte) != nullptr;
}

// Fills a target one by one; what finds no room is counted.
template <class Unit>
class Writer
{
public:
    explicit Writer(Target<Unit> to) : m_to(to) {}

    void Put(Unit unit)
    {
        if (m_to.text && m_size < m_to.capacity)
            m_to.text[m_size] = unit;
        ++m_size;
    }

    Converted Result() const
    {
        if (m_to.text && m_size > m_to.capacity)
            return {Outcome::kShort, m_to.capacity};
        return {Outcome::kDone, m_size};
    }

private:
    Target<Unit> m_to;
    std::size_t m_size = 0;
};

}  // namespace

Converted DecodeUtf7(Bytes from, UnitRoom to)
{
    Writer<WCHAR> writer(to);
    const char* end = from.text + from.length;
    for (const char* at = from.text; at < end;) {
        const char byte = *at++;
        if (byte != '+') {
            writer.Put(static_cast<BYTE>(byte));
            continue;
        }
        if (at < end && *at == '-') {
            writer.Put('+');
            ++at;
            continue;
        }
        // An encoded run: bits that do not fill a unit at its end are dropped, and so is a '-' that ends it.
        unsigned bits = 0;
        int bitCount = 0;
        for (int digit = 0; at < end && (digit = DigitOf(*at)) >= 0; ++at) {
            bits = bits << 6 | static_cast<unsigned>(digit);
            bitCount += 6;
            if (bitCount >= 16) {
                bitCount -= 16;
                writer.Put(static_cast<WCHAR>(bits >> bitCount));
            }
        }
        if (at < end && *at == '-')
            ++at;
    }
    return writer.Result();
}

Converted EncodeUtf7(Units from, ByteRoom to)
{
    Writer<char> writer(to);
    const WCHAR* end = from.text + from.length;
    for (const WCHAR* at = from.text; at < end;) {
        if (IsDirect(*at)) {
            writer.Put(static_cast<char>(*at++));
            continue;
        }
        writer.Put('+');
        if (*at == '+') {
            writer.Put('-');
            ++at;
            continue;
        }
        unsigned bits = 0;
        int bitCount = 0;
        for (; at < end && !IsDirect(*at) && *at != '+'; ++at) {
            bits = bits << 16 | *at;
            for (bitCount += 16; bitCount >= 6; bitCount -= 6)
                writer.Put(kBase64Digits[bits >> (bitCount - 6) & 0x3F]);
        }
        if (bitCount > 0)
            writer.Put(kBase64Digits[bits << (6 - bitCount) & 0x3F]);
        writer.Put('-');
    }
    return writer.Result();
}

Converted DecodeSymbols(Bytes from, UnitRoom to)
{
    Writer<WCHAR> writer(to);
    for (std::size_t at = 0; at < from.length; ++at) {
        const BYTE byte = static_cast<BYTE>(from.text[at]);
        writer.Put(static_cast<WCHAR>(byte < 0x20 ? byte : 0xF000 + byte));
    }
    return writer.Result();
}

Converted EncodeSymbols(Units from, ByteRoom to)
{
    Writer<char> writer(to);
    for (std::size_t at = 0; at < from.length; ++at) {
        const WCHAR unit = from.text[at];
        if (unit >= 0x20 && (unit < 0xF020 || unit > 0xF0FF))
            return {Outcome::kInvalid, 0};
        writer.Put(static_cast<char>(unit));
    }
    return writer.Result();
}

}  // namespace kelgen::posix
