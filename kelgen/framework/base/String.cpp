// String.cpp: CString's blocks: sharing, growth, locking, and copying text in.
#include <kelgen/framework/base/String.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/internal/NarrowText.h>
#include <kelgen/framework/base/internal/StringBlocks.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

using namespace kelgen::detail;

namespace {

constexpr int kGranularity = 8;
constexpr int kFirstCapacity = 32;
constexpr int kDoublingLimit = 1 << 20;
constexpr int kMaximumCapacity = std::numeric_limits<int>::max() - 64;

int RoundedCapacity(int capacity)
{
    if (capacity < 0)
        AfxThrowInvalidArgException();
    if (capacity > kMaximumCapacity)
        AfxThrowMemoryException();
    return (capacity + kGranularity) / kGranularity * kGranularity - 1;
}

std::size_t BlockSize(int capacity)
{
    return sizeof(StringData) + static_cast<std::size_t>(capacity) + 1;
}

/// The texts may overlap. Short ones go in two pieces, which may share bytes: half the time of a call.
void CopyBytes(char* target, LPCSTR source, int length)
{
    const auto copy = [target, source, length]<class PIECE>(PIECE) {
        PIECE first, last;
        const std::ptrdiff_t atLast = length - static_cast<std::ptrdiff_t>(sizeof last);
        std::memcpy(&first, source, sizeof first);
        std::memcpy(&last, source + atLast, sizeof last);
        std::memcpy(target, &first, sizeof first);
        std::memcpy(target + atLast, &last, sizeof last);
    };
    struct Sixteen
    {
        std::uint64_t low, high;
    };
    if (length > 32)
        std::memmove(target, source, static_cast<std::size_t>(length));
    else if (length >= 16)
        copy(Sixteen());
    else if (length >= 8)
        copy(std::uint64_t());
    else if (length >= 4)
        copy(std::uint32_t());
    else if (length >= 2)
        copy(std::uint16_t());
    else if (length == 1)
        *target = *source;
}

int Sum(int left, int right)
{
    if (left > kMaximumCapacity - right)
        AfxThrowMemoryException();
    return left + right;
}

void CheckText(LPCSTR text, int length)
{
    if (length < 0 || (!text && length > 0))
        AfxThrowInvalidArgException();
}

}  // namespace

const EmptyString CString::s_empty;

char* CString::NewBlock(const char* text, int length, int capacity)
{
    const int rounded = RoundedCapacity(capacity);
    void* const block = TakeStringBlock(BlockSize(rounded));
    if (!block)
        AfxThrowMemoryException();
    const auto data = new (block) StringData{1, length, rounded};
    const auto characters = reinterpret_cast<char*>(data + 1);
    CopyBytes(characters, text, length);
    characters[length] = 0;
    return characters;
}

void CString::FreeBlock(char* text) noexcept
{
    ReturnStringBlock(DataOf(text), BlockSize(DataOf(text)->m_capacity));
}

CString CString::Join(LPCSTR left, int leftLength, LPCSTR right, int rightLength)
{
    CString joined;
    const int length = Sum(leftLength, rightLength);
    if (length == 0)
        return joined;
    joined.m_pszData = NewBlock(left, leftLength, length);
    CopyBytes(joined.m_pszData + leftLength, right, rightLength);
    joined.SetLength(length);
    return joined;
}

// Gives the string a block of its own with that capacity; text beyond it is cut off.
void CString::Resize(int capacity)
{
    const int length = std::min(GetLength(), capacity);
    if (m_pszData == EmptyText() || IsShared()) {
        char* const block = NewBlock(m_pszData, length, capacity);
        Release(m_pszData);
        m_pszData = block;
        return;
    }
    const int rounded = RoundedCapacity(capacity);
    const std::size_t before = BlockSize(GetAllocLength());
    const std::size_t size = BlockSize(rounded);
    const std::size_t blockClass = StringBlockClass(size);
    if (blockClass != StringBlockClass(before) || blockClass >= ThreadStringBlocks::kClasses)
        MoveBlock(before, size, length);
    Data()->m_capacity = rounded;
    SetLength(length);
}

// Only blocks of the general heap can grow where they lie.
void CString::MoveBlock(std::size_t before, std::size_t size, int kept)
{
    const bool inHeap = StringBlockClass(before) >= ThreadStringBlocks::kClasses && StringBlockClass(size) >= ThreadStringBlocks::kClasses;
    void* const block = inHeap ? std::realloc(static_cast<void*>(Data()), size) : TakeStringBlock(size);
    if (!block)
        AfxThrowMemoryException();
    if (!inHeap) {
        std::memcpy(block, static_cast<const void*>(Data()), sizeof(StringData) + static_cast<std::size_t>(kept));
        ReturnStringBlock(Data(), before);
    }
    m_pszData = reinterpret_cast<char*>(static_cast<StringData*>(block) + 1);
}

char* CString::PrepareWrite(int length)
{
    if (length < 0)
        AfxThrowInvalidArgException();
    if (length > GetAllocLength() || m_pszData == EmptyText() || IsShared())
        Resize(std::max(length, GetLength()));
    return m_pszData;
}

// Texts that are appended to will be appended to again: their blocks double, large ones grow by half.
char* CString::PrepareAppend(int length)
{
    const int capacity = GetAllocLength();
    if (length > capacity) {
        const int extra = capacity < kDoublingLimit ? std::max(capacity, kFirstCapacity) : capacity / 2;
        Resize(std::max(length, capacity > kMaximumCapacity - extra ? kMaximumCapacity : capacity + extra));
    } else if (IsShared()) {
        Resize(length);
    }
    return m_pszData;
}

void CString::SetLength(int length) noexcept
{
    Data()->m_length = length;
    m_pszData[length] = 0;
}

CString::CString(const unsigned char* text) : CString(reinterpret_cast<LPCSTR>(text)) {}

CString::CString(LPCSTR text, int length) : CString()
{
    CheckText(text, length);
    if (length > 0)
        m_pszData = NewBlock(text, length, length);
}

CString::CString(char character, int count) : CString()
{
    if (count < 1)
        return;
    m_pszData = NewBlock(nullptr, 0, count);
    std::memset(m_pszData, static_cast<unsigned char>(character), static_cast<std::size_t>(count));
    SetLength(count);
}

CString& CString::operator=(const CString& other)
{
    if (m_pszData == other.m_pszData)
        return *this;
    if (IsLocked()) {
        SetString(other.m_pszData, other.GetLength());
        return *this;
    }
    char* const block = Share(other);
    Release(m_pszData);
    m_pszData = block;
    return *this;
}

// NOLINTNEXTLINE(bugprone-exception-escape): a locked buffer is copied
CString& CString::operator=(CString&& other)
{
    if (IsLocked() || other.IsLocked())
        return *this = other;
    std::swap(m_pszData, other.m_pszData);
    return *this;
}

CString& CString::operator=(LPCSTR text)
{
    SetString(text);
    return *this;
}

CString& CString::operator=(const unsigned char* text)
{
    SetString(reinterpret_cast<LPCSTR>(text));
    return *this;
}

CString& CString::operator=(char character)
{
    SetString(&character, 1);
    return *this;
}

void CString::Empty() noexcept
{
    if (IsEmpty())
        return;
    if (IsLocked()) {
        SetLength(0);
        return;
    }
    Release(m_pszData);
    m_pszData = EmptyText();
}

void CString::ThrowBadIndex(int index) const
{
    KELGEN_THROW_BAD_INDEX(index, GetLength());
}

void CString::SetAt(int index, char character)
{
    if (index < 0 || index >= GetLength())
        ThrowBadIndex(index);
    PrepareWrite(GetLength())[index] = character;
}

void CString::SetString(LPCSTR text)
{
    SetString(text, StringLength(text));
}

void CString::SetString(LPCSTR text, int length)
{
    CheckText(text, length);
    if (length == 0) {
        Empty();
        return;
    }
    // The source may lie in this very block, which moves when it is replaced.
    if (IsShared()) {
        char* const block = NewBlock(text, length, length);
        Release(m_pszData);
        m_pszData = block;
        return;
    }
    const auto offset = reinterpret_cast<ULONG_PTR>(text) - reinterpret_cast<ULONG_PTR>(m_pszData);
    const bool ours = offset <= static_cast<ULONG_PTR>(GetLength());
    char* const target = PrepareWrite(ours ? std::max(length, GetLength()) : length);
    CopyBytes(target, ours ? target + offset : text, length);
    SetLength(length);
}

void CString::Append(LPCSTR text)
{
    Append(text, StringLength(text));
}

void CString::Append(LPCSTR text, int length)
{
    CheckText(text, length);
    if (length == 0)
        return;
    const int oldLength = GetLength();
    const auto offset = reinterpret_cast<ULONG_PTR>(text) - reinterpret_cast<ULONG_PTR>(m_pszData);
    const bool ours = offset <= static_cast<ULONG_PTR>(oldLength);
    char* const target = PrepareAppend(Sum(oldLength, length));
    CopyBytes(target + oldLength, ours ? target + offset : text, length);
    SetLength(oldLength + length);
}

void CString::Append(const CString& text)
{
    if (IsEmpty() && !IsLocked())
        *this = text;
    else
        Append(text.m_pszData, text.GetLength());
}

CString& CString::operator+=(const CString& text)
{
    Append(text.m_pszData, text.GetLength());
    return *this;
}

CString& CString::operator+=(LPCSTR text)
{
    Append(text);
    return *this;
}

LPSTR CString::GetBuffer()
{
    return PrepareWrite(GetLength());
}

LPSTR CString::GetBuffer(int minimumLength)
{
    return PrepareWrite(minimumLength);
}

LPSTR CString::GetBufferSetLength(int length)
{
    PrepareWrite(length);
    SetLength(length);
    return m_pszData;
}

void CString::ReleaseBuffer(int newLength)
{
    if (newLength == -1)
        newLength = static_cast<int>(strnlen(m_pszData, static_cast<std::size_t>(GetAllocLength())));
    ReleaseBufferSetLength(newLength);
}

void CString::ReleaseBufferSetLength(int newLength)
{
    if (newLength < 0 || newLength > GetAllocLength())
        AfxThrowInvalidArgException();
    if (m_pszData == EmptyText())
        return;
    if (IsShared()) {
        Truncate(newLength);
        return;
    }
    SetLength(newLength);
}

void CString::Truncate(int length)
{
    if (length < 0)
        AfxThrowInvalidArgException();
    if (length >= GetLength())
        return;
    PrepareWrite(length);
    SetLength(length);
}

void CString::Preallocate(int length)
{
    if (length < 0)
        AfxThrowInvalidArgException();
    if (length > GetAllocLength() || (!IsLocked() && RoundedCapacity(std::max(length, GetLength())) < GetAllocLength()))
        Resize(std::max(length, GetLength()));
}

void CString::FreeExtra()
{
    if (m_pszData == EmptyText() || IsLocked())
        return;
    if (IsEmpty())
        *this = CString();
    else if (RoundedCapacity(GetLength()) < GetAllocLength())
        Resize(GetLength());
}

LPSTR CString::LockBuffer()
{
    PrepareWrite(GetLength());
    Data()->m_references.store(-1, std::memory_order_relaxed);
    return m_pszData;
}

void CString::UnlockBuffer() noexcept
{
    KELGEN_CHECK(m_pszData == EmptyText() || IsLocked(), "CString::UnlockBuffer: the block is not locked");
    if (IsLocked())
        Data()->m_references.store(1, std::memory_order_relaxed);
}

int CString::StringLength(LPCSTR text) noexcept
{
    return text ? static_cast<int>(std::strlen(text)) : 0;
}

bool operator==(const CString& left, const CString& right) noexcept
{
    if (left.m_pszData == right.m_pszData)
        return true;
    const int length = left.GetLength();
    if (length == right.GetLength() && std::memcmp(left.m_pszData, right.m_pszData, static_cast<std::size_t>(length)) == 0)
        return true;
    return std::strcmp(left, right) == 0;
}

CDumpContext& operator<<(CDumpContext& context, const CString& text)
{
    return context << text.GetString();
}
