// AsciiRuns.cpp: the block loops, for 128-bit and 256-bit integers.
#include <kelgen/platform/posix/nls/AsciiRuns.h>

#include <immintrin.h>

namespace kelgen::posix {

namespace {

// Latin-1 text passes when no value lies from 0x80 to 0x9F: those have 0x80 in their upper three bits.
constexpr char kUpperBits = static_cast<char>(0xE0);
constexpr char kControls = static_cast<char>(0x80);
constexpr short kWideUpperBits = static_cast<short>(0xFFE0);
constexpr short kAboveLatin1 = static_cast<short>(0xFF00);
constexpr short kAboveAscii = static_cast<short>(0xFF80);

KELGEN_WIDE_VECTORS std::size_t WidenWide(const char* text, std::size_t length, WCHAR* wide, bool latin1)
{
    std::size_t done = 0;
    for (; length - done >= 32; done += 32) {
        const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + done));
        __m256i others = bytes;
        if (latin1)
            others = _mm256_cmpeq_epi8(_mm256_and_si256(bytes, _mm256_set1_epi8(kUpperBits)), _mm256_set1_epi8(kControls));
        if (_mm256_movemask_epi8(others) != 0)
            break;
        auto* to = reinterpret_cast<__m256i*>(wide + done);
        _mm256_storeu_si256(to, _mm256_cvtepu8_epi16(_mm256_castsi256_si128(bytes)));
        _mm256_storeu_si256(to + 1, _mm256_cvtepu8_epi16(_mm256_extracti128_si256(bytes, 1)));
    }
    return done;
}

KELGEN_WIDE_VECTORS std::size_t NarrowWide(const WCHAR* wide, std::size_t length, char* text, bool latin1)
{
    const __m256i above = _mm256_set1_epi16(latin1 ? kAboveLatin1 : kAboveAscii);
    const __m256i upperBits = _mm256_set1_epi16(kWideUpperBits);
    const __m256i controls = _mm256_set1_epi16(0x80);
    std::size_t done = 0;
    for (; length - done >= 32; done += 32) {
        const auto* from = reinterpret_cast<const __m256i*>(wide + done);
        const __m256i first = _mm256_loadu_si256(from);
        const __m256i second = _mm256_loadu_si256(from + 1);
        if (!_mm256_testz_si256(_mm256_or_si256(first, second), above))
            break;
        const __m256i inControls = _mm256_or_si256(_mm256_cmpeq_epi16(_mm256_and_si256(first, upperBits), controls),
                                                   _mm256_cmpeq_epi16(_mm256_and_si256(second, upperBits), controls));
        if (!_mm256_testz_si256(inControls, inControls))
            break;
        const __m256i packed = _mm256_permute4x64_epi64(_mm256_packus_epi16(first, second), 0xD8);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(text + done), packed);
    }
    return done;
}

}  // namespace

std::size_t WidenRun(const char* text, std::size_t length, WCHAR* wide, bool latin1)
{
    std::size_t done = length >= 32 && HasWideVectors() ? WidenWide(text, length, wide, latin1) : 0;
    const __m128i zero = _mm_setzero_si128();
    for (; length - done >= kAsciiBlock; done += kAsciiBlock) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + done));
        __m128i others = bytes;
        if (latin1)
            others = _mm_cmpeq_epi8(_mm_and_si128(bytes, _mm_set1_epi8(kUpperBits)), _mm_set1_epi8(kControls));
        if (_mm_movemask_epi8(others) != 0)
            break;
        StoreUnits(wide + done, _mm_unpacklo_epi8(bytes, zero));
        StoreUnits(wide + done + kBlockUnits, _mm_unpackhi_epi8(bytes, zero));
    }
    return done;
}

std::size_t NarrowRun(const WCHAR* wide, std::size_t length, char* text, bool latin1)
{
    std::size_t done = length >= 32 && HasWideVectors() ? NarrowWide(wide, length, text, latin1) : 0;
    const __m128i above = _mm_set1_epi16(latin1 ? kAboveLatin1 : kAboveAscii);
    const __m128i upperBits = _mm_set1_epi16(kWideUpperBits);
    const __m128i controls = _mm_set1_epi16(0x80);
    for (; length - done >= kAsciiBlock; done += kAsciiBlock) {
        const __m128i first = LoadUnits(wide + done);
        const __m128i second = LoadUnits(wide + done + kBlockUnits);
        const __m128i low = _mm_cmpeq_epi16(_mm_and_si128(_mm_or_si128(first, second), above), _mm_setzero_si128());
        const __m128i inControls = _mm_or_si128(_mm_cmpeq_epi16(_mm_and_si128(first, upperBits), controls),
                                                _mm_cmpeq_epi16(_mm_and_si128(second, upperBits), controls));
        if (LaneMask(_mm_andnot_si128(inControls, low)) != 0xFFFFu)
            break;
        _mm_storeu_si128(reinterpret_cast<__m128i*>(text + done), _mm_packus_epi16(first, second));
    }
    return done;
}

}  // namespace kelgen::posix
