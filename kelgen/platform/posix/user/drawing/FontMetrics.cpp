// FontMetrics.cpp: the widths of characters, in 2048ths of an em.
#include <kelgen/platform/posix/user/drawing/FontMetrics.h>

#include <algorithm>
#include <array>

namespace kelgen::posix::user {

namespace {

constexpr int kUnits = 2048;
constexpr int kLargestEm = 10'000;

// U+0020 to U+007E, then U+00A0 to U+00FF. Source: the fonts DejaVu Sans and DejaVu Sans Bold.
using Widths = std::array<unsigned short, 95 + 96>;
constexpr Widths kRegular{
    651,  821,  942,  1716, 1303, 1946, 1597, 563,  799,  799,  1024, 1716, 651,  739,  651,  690,  1303, 1303, 1303, 1303, 1303, 1303,
    1303, 1303, 1303, 1303, 690,  690,  1716, 1716, 1716, 1087, 2048, 1401, 1405, 1430, 1577, 1294, 1178, 1587, 1540, 604,  604,  1343,
    1141, 1767, 1532, 1612, 1235, 1612, 1423, 1300, 1251, 1499, 1401, 2025, 1403, 1251, 1403, 799,  690,  799,  1716, 1024, 1024, 1255,
    1300, 1126, 1300, 1260, 721,  1300, 1298, 569,  569,  1186, 569,  1995, 1298, 1253, 1300, 1300, 842,  1067, 803,  1298, 1212, 1675,
    1212, 1212, 1075, 1303, 690,  1303, 1716, 651,  821,  1303, 1303, 1303, 1303, 690,  1024, 1024, 2048, 965,  1253, 1716, 739,  2048,
    1024, 1024, 1716, 821,  821,  1024, 1303, 1303, 651,  1024, 821,  965,  1253, 1985, 1985, 1985, 1087, 1401, 1401, 1401, 1401, 1401,
    1401, 1995, 1430, 1294, 1294, 1294, 1294, 604,  604,  604,  604,  1587, 1532, 1612, 1612, 1612, 1612, 1612, 1716, 1612, 1499, 1499,
    1499, 1499, 1251, 1239, 1290, 1255, 1255, 1255, 1255, 1255, 1255, 2011, 1126, 1260, 1260, 1260, 1260, 569,  569,  569,  569,  1253,
    1298, 1253, 1253, 1253, 1253, 1253, 1716, 1253, 1298, 1298, 1298, 1298, 1212, 1300, 1212};
constexpr Widths kBold{
    713,  934,  1067, 1716, 1425, 2052, 1786, 627,  936,  936,  1071, 1716, 778,  850,  778,  748,  1425, 1425, 1425, 1425, 1425, 1425,
    1425, 1425, 1425, 1425, 819,  819,  1716, 1716, 1716, 1188, 2048, 1585, 1561, 1503, 1700, 1399, 1399, 1681, 1714, 762,  762,  1587,
    1305, 2038, 1714, 1741, 1501, 1741, 1577, 1475, 1397, 1663, 1585, 2259, 1579, 1483, 1485, 936,  748,  936,  1716, 1024, 1024, 1382,
    1466, 1214, 1466, 1389, 891,  1466, 1458, 702,  702,  1362, 702,  2134, 1458, 1407, 1466, 1466, 1010, 1219, 979,  1458, 1335, 1892,
    1321, 1335, 1192, 1458, 748,  1458, 1716, 713,  934,  1425, 1425, 1303, 1425, 748,  1024, 1024, 2048, 1155, 1323, 1716, 850,  2048,
    1024, 1024, 1716, 897,  897,  1024, 1507, 1303, 778,  1024, 897,  1155, 1323, 2120, 2120, 2120, 1188, 1585, 1585, 1585, 1585, 1585,
    1585, 2222, 1503, 1399, 1399, 1399, 1399, 762,  762,  762,  762,  1716, 1714, 1741, 1741, 1741, 1741, 1741, 1716, 1741, 1663, 1663,
    1663, 1663, 1483, 1511, 1473, 1382, 1382, 1382, 1382, 1382, 1382, 2146, 1214, 1389, 1389, 1389, 1389, 702,  702,  702,  702,  1407,
    1458, 1407, 1407, 1407, 1407, 1407, 1716, 1407, 1458, 1458, 1458, 1458, 1335, 1466, 1335};
constexpr int kMissing = 1229;
constexpr int kOther = 1255;

int UnitsOf(char16_t unit, bool isBold)
{
    const Widths& widths = isBold ? kBold : kRegular;
    if (unit >= 0x20 && unit < 0x7F)
        return widths[unit - 0x20u];
    if (unit >= 0xA0 && unit <= 0xFF)
        return widths[unit - 0xA0u + 95u];
    if (unit < 0xA0)
        return kMissing;
    // The second half of a pair adds nothing.
    if (unit >= 0xDC00 && unit <= 0xDFFF)
        return 0;
    constexpr std::array<char16_t, 5> kWhole{0x2014, 0x2026, 0x2030, 0x2122, 0x2192};
    return unit >= 0x2E80 || std::ranges::find(kWhole, unit) != kWhole.end() ? kUnits : kOther;
}

}  // namespace

FontMetrics::FontMetrics(const LOGFONTW& font) : isBold(font.lfWeight > 550)
{
    constexpr int kLineUnits = 1901 + 483;
    constexpr int kUsualLine = 16;
    const long long height = font.lfHeight ? font.lfHeight : kUsualLine;
    const long long ems = height < 0 ? -height : (height * kUnits + kLineUnits / 2) / kLineUnits;
    em = static_cast<int>(std::clamp<long long>(ems, 1, kLargestEm));
}

int FontMetrics::WidthOf(char16_t unit) const
{
    // Rounded to 64ths of a pixel first, as the scaled outlines are.
    const auto sixtyFourths = static_cast<int>((UnitsOf(unit, isBold) * em * 64LL + kUnits / 2) / kUnits);
    return (sixtyFourths + 32) / 64;
}

int FontMetrics::WidthOf(std::u16string_view text) const
{
    int width = 0;
    for (const char16_t unit : text)
        width += WidthOf(unit);
    return width;
}

}  // namespace kelgen::posix::user
