// WStr.cpp: making, assigning and appending strings, and their blocks.
#include <kelgen/text/WStr.h>

#include <kelgen/text/internal/ScanUnits.h>
#include <kelgen/text/internal/WStrBlocks.h>

#include <algorithm>
#include <climits>

using namespace kelgen::detail;

namespace kelgen::detail {

constinit EmptyWStrBlock emptyWStrBlock = {{-1, 0, 0}, 0};

}  // namespace kelgen::detail

DWORD CWStr::m_dwResourceCP = CP_ACP;

namespace {

/// Whether a text of @p length units, longer than @p block's capacity, fits into the room behind it.
bool HasRoomBehind(const CWStrData& block, long long length)
{
    return block.nAllocLength > kLongestClass && length <= INT_MAX && static_cast<std::size_t>(length) <= HeapRoom(block.nAllocLength);
}

}  // namespace

/// The units of a new block that holds a copy of @p n units.
unsigned short* CWStr::NewText(int n, const unsigned short* text)
{
    if (n <= 0)
        return EmptyText();
    unsigned short* const units = NewWStrBlock(n)->data();
    CopyUnits(units, text, n);
    return units;
}

CWStr::CWStr(const unsigned short* text) : m_text(EmptyText())
{
    const auto value = reinterpret_cast<std::uintptr_t>(text);
    if (value > 0xFFFF)
        m_text = NewText(static_cast<int>(wcslen(kelgen::AsWide(text))), text);
    else if (value)
        LoadStringA(static_cast<UINT>(value));
}

CWStr::CWStr(const unsigned short* text, int n) : m_text(NewText(n, text))
{
    KELGEN_ASSERT(n >= 0);
}

CWStr::CWStr(unsigned short ch, int nRepeat) : m_text(EmptyText())
{
    if (nRepeat < 1)
        return;
    AllocBuffer(nRepeat);
    std::memset(m_text, ch & 0xFF, static_cast<std::size_t>(nRepeat));
}

/// The copy constructor's way when the source's block is not to be shared.
void CWStr::CopyLocked(const CWStr& source)
{
    m_text = NewText(source.GetLength(), source.m_text);
}

CWStr& CWStr::operator=(const unsigned short* text)
{
    AssignCopy(SafeStrlen(text), text);
    return *this;
}

CWStr& CWStr::operator=(unsigned short ch)
{
    AssignCopy(1, &ch);
    return *this;
}

void CWStr::Empty()
{
    if (IsEmpty())
        return;
    if (IsLocked())
        AssignCopy(0, nullptr);
    else
        Release();
}

void CWStr::Release() noexcept
{
    unsigned short* const old = m_text;
    m_text = EmptyText();
    ReleaseText(old);
}

void CWStr::FreeData(CWStrData* block) noexcept
{
    FreeWStrBlock(block);
}

void CWStr::AllocBuffer(int n)
{
    KELGEN_ASSERT(n >= 0);
    m_text = n > 0 ? NewWStrBlock(n)->data() : EmptyText();
}

void CWStr::AllocBeforeWrite(int n)
{
    if (LoadCount(GetData()) <= 1 && n <= GetAllocLength())
        return;
    unsigned short* const old = m_text;
    AllocBuffer(n);
    ReleaseText(old);
}

/// Moves the text into a new block of @p n units, cut or with undefined units after it; the length becomes @p n.
void CWStr::Unshare(int n)
{
    unsigned short* const old = m_text;
    const int kept = std::min(n, GetLength());
    AllocBuffer(n);
    CopyUnits(m_text, old, kept);
    ReleaseText(old);
}

void CWStr::AllocCopy(CWStr& dest, int nCopyLen, int nCopyIndex, int nExtraLen) const
{
    KELGEN_ASSERT(nCopyLen >= 0 && nCopyIndex >= 0);
    const int index = std::clamp(nCopyIndex, 0, GetLength());
    const int available = GetLength() - index;
    const unsigned short* const text = m_text + index;
    dest.AllocBuffer(AddLengths(nCopyLen, nExtraLen));
    CopyUnits(dest.m_text, text, std::min({nCopyLen, available, dest.GetLength()}));
}

/// Sets length and terminator of a block that is this string's own. The shared empty block is never written.
void CWStr::SetLength(int n) noexcept
{
    if (m_text == EmptyText())
        return;
    GetData()->nLength = n;
    m_text[n] = 0;
}

void CWStr::AssignCopy(int n, const unsigned short* text)
{
    KELGEN_ASSERT(n >= 0);
    if (LoadCount(GetData()) <= 1 && n <= GetAllocLength()) {
        MoveUnits(m_text, text, n);
        SetLength(n);
        return;
    }

    // The text may lie in the old block: that goes last.
    unsigned short* const old = m_text;
    m_text = NewText(n, text);
    ReleaseText(old);
}

void CWStr::ConcatCopy(int nSrc1Len, const unsigned short* pSrc1, int nSrc2Len, const unsigned short* pSrc2)
{
    const int length = AddLengths(nSrc1Len, nSrc2Len);
    if (length <= 0)
        return;
    AllocBuffer(length);
    CopyUnits(m_text, pSrc1, nSrc1Len);
    CopyUnits(m_text + nSrc1Len, pSrc2, nSrc2Len);
}

void CWStr::ConcatInPlace(int n, const unsigned short* text)
{
    if (n <= 0)
        return;
    CWStrData* const block = GetData();
    const int length = block->nLength;
    if (n <= block->nAllocLength - length && LoadCount(block) <= 1) {
        MoveUnits(m_text + length, text, n);
        SetLength(length + n);
        return;
    }

    // The result is that of a new block. A locked one is left alone: its lock would end with it.
    if (LoadCount(block) == 1 && HasRoomBehind(*block, static_cast<long long>(length) + n)) {
        if (n == 1)
            m_text[length] = *text;
        else
            MoveUnits(m_text + length, text, n);
        block->nAllocLength = length + n;
        SetLength(length + n);
        return;
    }
    unsigned short* const old = m_text;
    ConcatCopy(length, old, n, text);
    ReleaseText(old);
}

unsigned short* CWStr::GetBuffer(int nMinLen)
{
    if (LoadCount(GetData()) > 1 || nMinLen > GetAllocLength()) {
        const int length = GetLength();
        Unshare(std::max(nMinLen, length));
        SetLength(length);
    }
    return m_text;
}

void CWStr::ReleaseBuffer(int nNewLen)
{
    CopyBeforeWrite();
    if (nNewLen == -1)
        nNewLen = LengthToZero();
    SetLength(std::clamp(nNewLen, 0, GetAllocLength()));
}

unsigned short* CWStr::GetBufferSetLength(int n)
{
    KELGEN_ASSERT(n >= 0);
    GetBuffer(n);
    SetLength(std::max(n, 0));
    return m_text;
}

void CWStr::FreeExtra()
{
    if (GetLength() != GetAllocLength())
        Unshare(GetLength());
}

unsigned short* CWStr::LockBuffer()
{
    GetBuffer(0);
    if (m_text != EmptyText())
        GetData()->nRefCount = -1;
    return m_text;
}

void CWStr::UnlockBuffer() noexcept
{
    KELGEN_CHECK(m_text == EmptyText() || GetData()->nRefCount < 0, "CWStr::UnlockBuffer: the block is not locked");
    if (m_text != EmptyText())
        GetData()->nRefCount = 1;
}

/// The length up to the first 0 unit anywhere in the block.
int CWStr::LengthToZero() const
{
    return kelgen::detail::LengthToZero(m_text, GetAllocLength());
}

int CWStr::SafeStrlen(const unsigned short* text)
{
    return text ? static_cast<int>(wcslen(kelgen::AsWide(text))) : 0;
}

const CWStr& AfxGetEmptyWStr()
{
    static const CWStr empty;
    return empty;
}

CWStr operator+(const CWStr& left, const CWStr& right)
{
    CWStr sum;
    sum.ConcatCopy(left.GetLength(), left, right.GetLength(), right);
    return sum;
}

CWStr operator+(const CWStr& left, const unsigned short* right)
{
    CWStr sum;
    sum.ConcatCopy(left.GetLength(), left, CWStr::SafeStrlen(right), right);
    return sum;
}

CWStr operator+(const unsigned short* left, const CWStr& right)
{
    CWStr sum;
    sum.ConcatCopy(CWStr::SafeStrlen(left), left, right.GetLength(), right);
    return sum;
}

CWStr operator+(const CWStr& left, unsigned short right)
{
    CWStr sum;
    sum.ConcatCopy(left.GetLength(), left, 1, &right);
    return sum;
}

CWStr operator+(unsigned short left, const CWStr& right)
{
    CWStr sum;
    sum.ConcatCopy(1, &left, right.GetLength(), right);
    return sum;
}
