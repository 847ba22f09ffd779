// DialogTemplate.cpp: dialog templates out of resources, looked over before the platform reads them.
#include <kelgen/framework/dialogs/internal/DialogTemplate.h>

#include <kelgen/framework/program/ModuleState.h>

#include <cstring>

namespace {

constexpr WORD kOrdinal = 0xFFFF;

/// Walks over a template; once it has left its bytes all numbers are 0.
class Walk
{
public:
    Walk(const void* bytes, std::size_t size) : m_bytes(static_cast<const BYTE*>(bytes)), m_size(size) {}

    bool IsInside() const { return m_isInside; }

    template <class NUMBER>
    NUMBER Read()
    {
        NUMBER number = 0;
        const std::size_t at = m_at;
        Skip(sizeof number);
        if (m_isInside)
            std::memcpy(&number, m_bytes + at, sizeof number);
        return number;
    }
    void Skip(std::size_t count)
    {
        m_isInside = m_isInside && count <= m_size - m_at;
        m_at = m_isInside ? m_at + count : m_size;
    }
    void SkipText()
    {
        while (Read<WORD>() != 0) {
        }
    }
    /// A text, or a number that stands for one.
    void SkipName()
    {
        const WORD first = Read<WORD>();
        if (first == kOrdinal)
            Skip(sizeof(WORD));
        else if (first != 0)
            SkipText();
    }
    void Align() { Skip((4 - m_at % 4) % 4); }

private:
    const BYTE* m_bytes;
    std::size_t m_size;
    std::size_t m_at = 0;
    bool m_isInside = true;
};

void SkipControl(Walk& walk, bool isExtended)
{
    constexpr std::size_t kPlain = 2 * sizeof(DWORD) + 4 * sizeof(WORD) + sizeof(WORD);
    constexpr std::size_t kExtended = 3 * sizeof(DWORD) + 4 * sizeof(WORD) + sizeof(DWORD);
    walk.Align();
    walk.Skip(isExtended ? kExtended : kPlain);
    walk.SkipName();
    walk.SkipName();
    walk.Skip(walk.Read<WORD>());
}

}  // namespace

bool kelgen::detail::IsWholeDialogTemplate(const void* bytes, std::size_t size)
{
    Walk start(bytes, size);
    const bool isExtended = start.Read<WORD>() == 1 && start.Read<WORD>() == kOrdinal;
    Walk walk(bytes, size);
    // The extended form begins with its version, its mark and a help number, and has its styles the other way round.
    walk.Skip(isExtended ? 3 * sizeof(DWORD) : 0);
    const DWORD style = walk.Read<DWORD>();
    walk.Skip(isExtended ? 0 : sizeof(DWORD));
    const WORD count = walk.Read<WORD>();
    walk.Skip(4 * sizeof(WORD));
    walk.SkipName();
    walk.SkipName();
    walk.SkipText();
    constexpr WORD kDefaultFont = 0x7FFF;
    if ((style & DS_SETFONT) && walk.Read<WORD>() != kDefaultFont) {
        walk.Skip(isExtended ? 2 * sizeof(WORD) : 0);
        walk.SkipText();
    }
    for (WORD i = 0; i < count && walk.IsInside(); ++i)
        SkipControl(walk, isExtended);
    return walk.IsInside();
}

LPCDLGTEMPLATEA kelgen::detail::FindDialogTemplate(LPCSTR name, HINSTANCE& module)
{
    const LPCSTR kind = MAKEINTRESOURCEA(5);
    module = AfxFindResourceHandle(name, kind);
    const HRSRC resource = ::FindResourceA(module, name, kind);
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    const void* const bytes = data ? ::LockResource(data) : nullptr;
    const bool isWhole = bytes && IsWholeDialogTemplate(bytes, ::SizeofResource(module, resource));
    return isWhole ? static_cast<LPCDLGTEMPLATEA>(bytes) : nullptr;
}
