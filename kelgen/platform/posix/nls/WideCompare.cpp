// WideCompare.cpp: comparison of 16-bit text by value, without case, and by the runtime's locale.
#include <kelgen/platform/posix/nls/api/WideRuntime.h>

#include <kelgen/platform/posix/nls/RuntimeLocale.h>
#include <kelgen/platform/posix/nls/Units.h>

#include <algorithm>
#include <limits>
#include <string>

using namespace kelgen::posix;

namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

// The units as they are.
struct AsIs
{
    static WCHAR Of(WCHAR unit) { return unit; }
    static UnitVector Of(UnitVector units) { return units; }
};

// The units with A to Z lower-cased.
struct Folded
{
    static WCHAR Of(WCHAR unit) { return LowerAscii(unit); }
    static UnitVector Of(UnitVector units) { return LowerAscii(units); }
};

int Sign(int difference)
{
    return (difference > 0) - (difference < 0);
}

// The number of units, a multiple of 32, that are known to be equal and not 0. Looks no further than one page from the start of
// each text that it has not seen the end of.
KELGEN_READS_WHOLE_BLOCKS KELGEN_WIDE_VECTORS std::size_t EqualWideRun(const WCHAR* left, const WCHAR* right, std::size_t limit)
{
    std::size_t done = 0;
    while (limit - done >= 32 && FitsInPage<64>(left + done) && FitsInPage<64>(right + done)) {
        const WideUnitVector first = LoadWideUnits(left + done);
        const WideUnitVector second = LoadWideUnits(left + done + 16);
        const WideUnitVector same =
            And(EqualUnits(first, LoadWideUnits(right + done)), EqualUnits(second, LoadWideUnits(right + done + 16)));
        const WideUnitVector ends = EqualUnits(SmallerUnits(first, second), FillWideUnits(0));
        if (LaneMask(Without(same, ends)) != 0xFFFFFFFF)
            break;
        done += 32;
    }
    return done;
}

// The difference of the first two units within @p limit that differ after Form, or 0 when the texts end first.
template <class Form>
KELGEN_READS_WHOLE_BLOCKS int Difference(const WCHAR* left, const WCHAR* right, std::size_t limit)
{
    const bool wide = std::is_same_v<Form, AsIs> && HasWideVectors();
    std::size_t at = 0;
    while (at < limit) {
        if (limit - at >= std::size_t{kBlockUnits} && FitsInPage<16>(left + at) && FitsInPage<16>(right + at)) {
            const UnitVector units = LoadUnits(left + at);
            const UnitVector same = EqualUnits(Form::Of(units), Form::Of(LoadUnits(right + at)));
            const UnitVector ends = EqualUnits(units, FillUnits(0));
            const unsigned stops = LaneMask(Without(same, ends)) ^ 0xFFFFu;
            if (stops != 0) {
                at += static_cast<std::size_t>(FirstLane(stops));
                return Form::Of(left[at]) - Form::Of(right[at]);
            }
            at += kBlockUnits;
            if (wide)
                at += EqualWideRun(left + at, right + at, limit - at);
            continue;
        }
        // Near the end of a page or of the limit: unit by unit.
        for (const std::size_t next = at + std::min(std::size_t{kBlockUnits}, limit - at); at < next; ++at) {
            const WCHAR unit = left[at];
            const int difference = Form::Of(unit) - Form::Of(right[at]);
            if (difference != 0 || unit == 0)
                return difference;
        }
    }
    return 0;
}

int DifferenceByLocale(const WCHAR* left, const WCHAR* right, std::size_t limit)
{
    for (std::size_t at = 0; at < limit; ++at) {
        const int difference = LowerByLocale(left[at]) - LowerByLocale(right[at]);
        if (difference != 0 || left[at] == 0)
            return difference;
    }
    return 0;
}

// The first @p limit units as the C library's characters, lower-cased when @p fold.
std::wstring Widen(const WCHAR* text, std::size_t limit, bool fold)
{
    std::wstring wide;
    for (; limit != 0 && *text != 0; ++text, --limit)
        wide += static_cast<wchar_t>(fold ? LowerByLocale(*text) : *text);
    return wide;
}

int OrderByLocale(const WCHAR* left, const WCHAR* right, std::size_t limit, bool fold)
{
    return Sign(std::wcscoll(Widen(left, limit, fold).c_str(), Widen(right, limit, fold).c_str()));
}

}  // namespace

int wcscmp(const WCHAR* left, const WCHAR* right)
{
    return Sign(Difference<AsIs>(left, right, kNoLimit));
}

int wcsncmp(const WCHAR* left, const WCHAR* right, std::size_t count)
{
    return Difference<AsIs>(left, right, count);
}

int _wcsicmp(const WCHAR* left, const WCHAR* right)
{
    return _wcsnicmp(left, right, kNoLimit);
}

int _wcsnicmp(const WCHAR* left, const WCHAR* right, std::size_t count)
{
    if (count != 0 && (!left || !right))
        return kNoComparison;
    return IsPlainLocale(LC_CTYPE) ? Difference<Folded>(left, right, count) : DifferenceByLocale(left, right, count);
}

int wcscoll(const WCHAR* left, const WCHAR* right)
{
    return IsPlainLocale(LC_COLLATE) ? wcscmp(left, right) : OrderByLocale(left, right, kNoLimit, false);
}

int _wcsicoll(const WCHAR* left, const WCHAR* right)
{
    return IsPlainLocale(LC_COLLATE) ? _wcsicmp(left, right) : OrderByLocale(left, right, kNoLimit, true);
}

int _wcsncoll(const WCHAR* left, const WCHAR* right, std::size_t count)
{
    return IsPlainLocale(LC_COLLATE) ? wcsncmp(left, right, count) : OrderByLocale(left, right, count, false);
}

int _wcsnicoll(const WCHAR* left, const WCHAR* right, std::size_t count)
{
    return IsPlainLocale(LC_COLLATE) ? _wcsnicmp(left, right, count) : OrderByLocale(left, right, count, true);
}
