// CodePage.cpp: builds code pages from the C library's converter and the platform's own rules.
#include <kelgen/platform/posix/nls/CodePage.h>

#include <kelgen/platform/posix/nls/CodePageConverter.h>
#include <kelgen/platform/posix/nls/CodePageData.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>

namespace kelgen::posix {

namespace {

// In the tables while they are built: nothing is known of this code.
constexpr WCHAR kUndefined = 0xFFFE;

// The page whose pairs with a trail byte below 0x80 are what the C library's encoding has in three bytes, and its lead byte of kana.
constexpr UINT kPairsOfThreeBytes = 20932;
constexpr unsigned kKana = 0x8E;

constexpr WCHAR kFirstControl = 0x80;
constexpr WCHAR kLastControl = 0x9F;

const CodePageFacts* FactsOf(UINT number)
{
    const auto* end = kCodePages + kCodePageCount;
    const auto* facts = std::find_if(kCodePages, end, [=](const CodePageFacts& page) { return page.number == number; });
    return facts != end ? facts : nullptr;
}

// The C library's converter of the page; not open when it has none.
CodePageConverter OpenConverter(UINT number, const CodePageFacts* facts)
{
    if (facts)
        return CodePageConverter(facts->name);

    CodePageConverter converter("CP" + std::to_string(number));
    return converter.IsOpen() ? std::move(converter) : CodePageConverter("IBM" + std::to_string(number));
}

bool IsInRanges(const char* ranges, BYTE byte)
{
    for (; *ranges != 0; ranges += 2) {
        if (byte >= static_cast<BYTE>(ranges[0]) && byte <= static_cast<BYTE>(ranges[1]))
            return true;
    }
    return false;
}

}  // namespace

const CodePage* CodePage::Find(UINT number)
{
    // Pages are only ever put in front, so readers need no lock. They are never freed.
    static std::atomic<const CodePage*> first{nullptr};
    static std::mutex building;

    const auto find = [&] {
        const CodePage* page = first.load(std::memory_order_acquire);
        while (page && page->m_number != number)
            page = page->m_next;
        return page;
    };
    if (const CodePage* page = find())
        return page;

    const std::lock_guard lock(building);
    if (const CodePage* page = find())
        return page;

    std::unique_ptr<CodePage> page = Build(number);
    if (!page)
        return nullptr;

    page->m_next = first.load(std::memory_order_relaxed);
    first.store(page.get(), std::memory_order_release);
    return page.release();
}

std::unique_ptr<CodePage> CodePage::Build(UINT number)
{
    const CodePageFacts* facts = FactsOf(number);
    CodePageConverter converter = OpenConverter(number, facts);
    if (!converter.IsOpen())
        return nullptr;

    std::unique_ptr<CodePage> page(new CodePage);
    page->m_number = number;
    page->ReadBytes(converter, facts ? facts->leadBytes : nullptr);
    if (page->m_hasPairs)
        page->ReadPairs(converter);
    if (facts) {
        page->m_hasGlyphs = facts->hasGlyphs;
        page->m_unknown = facts->unknown;
    }
    page->ApplyChanges();
    page->ReplaceUndefined(facts ? facts->firstUndefined : WCHAR{0xF8F0});
    page->BuildCodes(converter);
    // A page without its question mark and letters is no text page: a stateful or wide encoding.
    if (page->m_codes['?'] == 0 || page->m_codes['A'] == page->m_codes['B'])
        return nullptr;

    if (facts && facts->bestFitBit >= 0)
        page->ApplyBestFits(facts->bestFitBit);
    page->ApplyPreferences();
    return page;
}

void CodePage::ReadBytes(CodePageConverter& converter, const char* leadBytes)
{
    for (unsigned code = 0; code < 0x100; ++code) {
        const BYTE byte = static_cast<BYTE>(code);
        const CodePageConverter::Result result = converter.ToUnit(std::string(1, static_cast<char>(byte)));
        const bool isLead = leadBytes ? IsInRanges(leadBytes, byte) : byte >= 0x80 && result.isIncomplete;
        m_bytes[byte] = isLead ? kLead : result.unit.value_or(kUndefined);
        m_hasPairs |= isLead;
    }
}

void CodePage::ReadPairs(CodePageConverter& converter)
{
    m_pairs.assign(0x8000, kUndefined);
    for (unsigned lead = 0x80; lead < 0x100; ++lead) {
        if (!IsLead(static_cast<BYTE>(lead)))
            continue;
        // A 0 byte is never the second of a pair.
        for (unsigned trail = 1; trail < 0x100; ++trail) {
            std::string code{static_cast<char>(lead), static_cast<char>(trail)};
            if (m_number == kPairsOfThreeBytes && lead != kKana && trail >= 0x21 && trail < 0x7F)
                code = {'\x8F', static_cast<char>(lead), static_cast<char>(trail | 0x80)};
            m_pairs[(lead & 0x7F) << 8 | trail] = converter.ToUnit(code).unit.value_or(kUndefined);
        }
    }
}

void CodePage::ApplyChanges()
{
    for (std::size_t i = 0; i < kCodePageChangeCount; ++i) {
        const CodePageChange& change = kCodePageChanges[i];
        if (change.page != m_number)
            continue;
        for (unsigned n = 0; n < change.count; ++n) {
            const unsigned code = change.code + n;
            const WCHAR unit = change.unit == 0xFFFF ? kUndefined : static_cast<WCHAR>(change.unit + n);
            (code < 0x100 ? m_bytes[code] : m_pairs[code & 0x7FFF]) = unit;
        }
    }
}

void CodePage::ReplaceUndefined(WCHAR firstUndefined)
{
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        if (m_bytes[byte] != kUndefined)
            continue;
        // Undefined control bytes are the controls of the same value, but with pairs that is only 0x80.
        if (byte >= kFirstControl && byte <= (m_hasPairs ? kFirstControl : kLastControl)) {
            m_bytes[byte] = static_cast<WCHAR>(byte);
            continue;
        }
        m_bytes[byte] = firstUndefined++;
        m_isUndefined[byte] = true;
        m_hasUndefinedBytes = true;
    }
}

void CodePage::BuildCodes(CodePageConverter& converter)
{
    // Bytes first, then pairs in order: the first code of a unit stays, except where the converter chooses another.
    m_codes.assign(0x10000, 0);
    std::vector<bool> isKnown(0x10000);
    std::vector<WCHAR> ambiguous;
    const auto add = [&](WORD code, WCHAR unit) {
        if (isKnown[unit]) {
            ambiguous.push_back(unit);
            return;
        }
        isKnown[unit] = true;
        m_codes[unit] = code;
    };
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        if (m_bytes[byte] != kLead)
            add(static_cast<WORD>(byte), m_bytes[byte]);
    }
    for (unsigned at = 0; at < m_pairs.size(); ++at) {
        if (m_pairs[at] == kUndefined)
            continue;
        add(static_cast<WORD>(0x8000 | at), m_pairs[at]);
    }
    std::replace(m_pairs.begin(), m_pairs.end(), kUndefined, m_unknown);
    for (const WCHAR unit : ambiguous) {
        const std::optional<WORD> code = converter.ToCode(unit);
        if (code && UnitOf(*code) == unit)
            m_codes[unit] = *code;
    }

    m_defaultCode = m_codes['?'];
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        if (!isKnown[unit])
            m_codes[unit] = m_defaultCode;
    }
    // A byte that becomes the question mark without being its code stands for nothing.
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        if (m_bytes[byte] == m_unknown && m_codes[m_unknown] != byte) {
            m_isUndefined[byte] = true;
            m_hasUndefinedBytes = true;
        }
    }
    const auto areEqual = [this](unsigned low, unsigned high) {
        for (unsigned value = low; value <= high; ++value) {
            if (m_bytes[value] != value || m_codes[value] != value)
                return false;
        }
        return true;
    };
    m_isAsciiBased = areEqual(0, 0x7F);
    m_isLatin1Above = m_isAsciiBased && areEqual(0xA0, 0xFF);
}

void CodePage::ApplyBestFits(int bit)
{
    for (std::size_t i = 0; i < kBestFitCount; ++i) {
        const BestFit& row = kBestFits[i];
        if ((kBestFitPages[row.pages] >> bit & 1) == 0)
            continue;
        for (unsigned n = 0; n < row.count; ++n)
            m_codes[row.unit + n] = m_codes[row.fit + n];
    }
}

void CodePage::ApplyPreferences()
{
    for (std::size_t i = 0; i < kCodePagePreferenceCount; ++i) {
        if (kCodePagePreferences[i].page == m_number)
            m_codes[kCodePagePreferences[i].unit] = kCodePagePreferences[i].code;
    }
}

WCHAR CodePage::GlyphOfByte(BYTE byte) const
{
    static constexpr WCHAR kGlyphs[] = {0x0000, 0x263A, 0x263B, 0x2665, 0x2666, 0x2663, 0x2660, 0x2022, 0x25D8, 0x25CB, 0x25D9,
                                        0x2642, 0x2640, 0x266A, 0x266B, 0x263C, 0x25BA, 0x25C4, 0x2195, 0x203C, 0x00B6, 0x00A7,
                                        0x25AC, 0x21A8, 0x2191, 0x2193, 0x2192, 0x2190, 0x221F, 0x2194, 0x25B2, 0x25BC};
    if (!m_hasGlyphs)
        return UnitOfByte(byte);

    return byte < std::size(kGlyphs) ? kGlyphs[byte] : byte == 0x7F ? WCHAR{0x2302} : UnitOfByte(byte);
}

}  // namespace kelgen::posix
