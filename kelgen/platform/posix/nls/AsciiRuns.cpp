// AsciiRuns.cpp: the block loops, for 128-bit and 256-bit integers.
#include <kelgen/platform/posix/nls/AsciiRuns.h>

namespace kelgen::posix {

namespace {

// Latin-1 text passes when no value lies from 0x80 to 0x9F: those have 0x80 in their upper three bits.
constexpr BYTE kUpperBits = 0xE0;
constexpr BYTE kControls = 0x80;
constexpr WCHAR kWideUpperBits = 0xFFE0;
constexpr WCHAR kAboveLatin1 = 0xFF00;
constexpr WCHAR kAboveAscii = 0xFF80;

KELGEN_WIDE_VECTORS std::size_t WidenWide(const char* text, std::size_t length, WCHAR* wide, bool latin1)
{
    std::size_t done = 0;
    for (; length - done >= 32; done += 32) {
        const WideByteVector bytes = LoadWideBytes(text + done);
        WideByteVector others = bytes;
        if (latin1)
            others = EqualBytes(And(bytes, FillWideBytes(kUpperBits)), FillWideBytes(kControls));
        if (HighBits(others) != 0)
            break;
        StoreUnits(wide + done, WidenLow(bytes));
        StoreUnits(wide + done + 2 * kBlockUnits, WidenHigh(bytes));
    }
    return done;
}

KELGEN_WIDE_VECTORS std::size_t NarrowWide(const WCHAR* wide, std::size_t length, char* text, bool latin1)
{
    const WideUnitVector above = FillWideUnits(latin1 ? kAboveLatin1 : kAboveAscii);
    const WideUnitVector upperBits = FillWideUnits(kWideUpperBits);
    const WideUnitVector controls = FillWideUnits(kControls);
    std::size_t done = 0;
    for (; length - done >= 32; done += 32) {
        const WideUnitVector first = LoadWideUnits(wide + done);
        const WideUnitVector second = LoadWideUnits(wide + done + 2 * kBlockUnits);
        if (!IsZero(And(Or(first, second), above)))
            break;
        if (!IsZero(Or(EqualUnits(And(first, upperBits), controls), EqualUnits(And(second, upperBits), controls))))
            break;
        StoreBytes(text + done, Narrow(first, second));
    }
    return done;
}

}  // namespace

std::size_t WidenRun(const char* text, std::size_t length, WCHAR* wide, bool latin1)
{
    std::size_t done = length >= 32 && HasWideVectors() ? WidenWide(text, length, wide, latin1) : 0;
    for (; length - done >= kAsciiBlock; done += kAsciiBlock) {
        const ByteVector bytes = LoadBytes(text + done);
        ByteVector others = bytes;
        if (latin1)
            others = EqualBytes(And(bytes, FillBytes(kUpperBits)), FillBytes(kControls));
        if (HighBits(others) != 0)
            break;
        StoreUnits(wide + done, WidenLow(bytes));
        StoreUnits(wide + done + kBlockUnits, WidenHigh(bytes));
    }
    return done;
}

std::size_t NarrowRun(const WCHAR* wide, std::size_t length, char* text, bool latin1)
{
    std::size_t done = length >= 32 && HasWideVectors() ? NarrowWide(wide, length, text, latin1) : 0;
    const UnitVector above = FillUnits(latin1 ? kAboveLatin1 : kAboveAscii);
    const UnitVector upperBits = FillUnits(kWideUpperBits);
    const UnitVector controls = FillUnits(kControls);
    for (; length - done >= kAsciiBlock; done += kAsciiBlock) {
        const UnitVector first = LoadUnits(wide + done);
        const UnitVector second = LoadUnits(wide + done + kBlockUnits);
        const UnitVector low = EqualUnits(And(Or(first, second), above), FillUnits(0));
        const UnitVector inControls = Or(EqualUnits(And(first, upperBits), controls), EqualUnits(And(second, upperBits), controls));
        if (LaneMask(Without(low, inControls)) != 0xFFFFu)
            break;
        StoreBytes(text + done, Narrow(first, second));
    }
    return done;
}

}  // namespace kelgen::posix
