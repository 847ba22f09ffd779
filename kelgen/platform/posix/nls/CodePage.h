// CodePage.h: the tables of one code page, built once from the C library's converter and then only read.
#pragma once

#include <kelgen/platform/posix/base/api/Types.h>

#include <array>
#include <memory>
#include <vector>

namespace kelgen::posix {

class CodePageConverter;

/// A code page of one or two bytes a character. A code is a byte, or lead byte * 256 + trail byte.
class CodePage
{
public:
    /// In m_bytes: the byte leads a pair.
    static constexpr WCHAR kLead = 0xFFFF;

    /// The page, or null when it does not exist or is none of bytes and pairs (UTF-7, UTF-8, symbols). Built at the first look-up
    /// and kept. Throws: std::bad_alloc when it cannot be built now. Threads: any.
    static const CodePage* Find(UINT number);

    UINT Number() const { return m_number; }
    bool HasPairs() const { return m_hasPairs; }
    bool IsLead(BYTE byte) const { return m_bytes[byte] == kLead; }

    /// True when bytes and units are the same from 0x00 to 0x7F.
    bool IsAsciiBased() const { return m_isAsciiBased; }
    /// True when they are the same from 0xA0 to 0xFF, too.
    bool IsLatin1Above() const { return m_isLatin1Above; }

    /// What @p byte becomes by itself; kLead for a lead byte.
    WCHAR UnitOfByte(BYTE byte) const { return m_bytes[byte]; }
    /// What the pair becomes; Unknown() when it is not in the page.
    WCHAR UnitOfPair(BYTE lead, BYTE trail) const { return m_pairs[PairIndex(lead, trail)]; }
    /// The tables behind the two, for loops.
    const WCHAR* UnitsOfBytes() const { return m_bytes.data(); }
    const WCHAR* UnitsOfPairs() const { return m_pairs.data(); }
    static std::size_t PairIndex(BYTE lead, BYTE trail) { return (lead & 0x7Fu) << 8 | trail; }
    /// What a control byte becomes as a picture, where the page has pictures.
    WCHAR GlyphOfByte(BYTE byte) const;
    /// What a pair outside the page becomes.
    WCHAR Unknown() const { return m_unknown; }
    /// True when the code of @p byte stands for nothing; it becomes a private-use unit.
    bool IsUndefinedByte(BYTE byte) const { return m_isUndefined[byte]; }
    bool HasUndefinedBytes() const { return m_hasUndefinedBytes; }

    /// The code of @p unit, its best fit, or the code of the default character.
    WORD CodeOf(WCHAR unit) const { return m_codes[unit]; }
    /// The table behind it, for loops.
    const WORD* CodesOfUnits() const { return m_codes.data(); }
    /// The code of the default character.
    WORD DefaultCode() const { return m_defaultCode; }
    /// True when @p unit is in the page or has a best fit there.
    bool Fits(WCHAR unit) const { return m_codes[unit] != m_defaultCode || unit == '?'; }
    /// True when @p unit is in the page.
    bool Has(WCHAR unit) const { return UnitOf(m_codes[unit]) == unit; }

private:
    CodePage() = default;
    static std::unique_ptr<CodePage> Build(UINT number);

    WCHAR UnitOf(WORD code) const
    {
        return code < 0x100 ? m_bytes[code] : UnitOfPair(static_cast<BYTE>(code >> 8), static_cast<BYTE>(code));
    }
    void ReadBytes(CodePageConverter& converter, const char* leadBytes);
    void ReadPairs(CodePageConverter& converter);
    void ApplyChanges();
    void ReplaceUndefined(WCHAR firstUndefined);
    void BuildCodes(CodePageConverter& converter);
    void ApplyBestFits(int bit);
    void ApplyPreferences();

    UINT m_number = 0;
    bool m_hasPairs = false;
    bool m_hasGlyphs = false;
    bool m_isAsciiBased = false;
    bool m_isLatin1Above = false;
    bool m_hasUndefinedBytes = false;
    WCHAR m_unknown = '?';
    WORD m_defaultCode = '?';
    std::array<WCHAR, 256> m_bytes{};
    std::array<bool, 256> m_isUndefined{};
    std::vector<WCHAR> m_pairs;  // 256 for each lead byte from 0x80 on
    std::vector<WORD> m_codes;   // one for each unit
    const CodePage* m_next = nullptr;
};

/// The number behind an alias such as CP_ACP; other numbers as they are.
UINT ResolveCodePage(UINT page);

}  // namespace kelgen::posix
