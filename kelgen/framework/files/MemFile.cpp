// MemFile.cpp: the growing block of CMemFile.
#include <kelgen/framework/files/MemFile.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT nGrowBytes) : m_nGrowBytes(nGrowBytes) {}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) : m_nGrowBytes(nGrowBytes)
{
    CMemFile::Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile()
{
    CMemFile::Close();
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes)
{
    Close();
    m_nGrowBytes = nGrowBytes;
    m_nBufferSize = nBufferSize;
    m_nFileSize = nGrowBytes == 0 ? nBufferSize : 0;
    m_lpBuffer = lpBuffer;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach()
{
    BYTE* block = m_lpBuffer;
    m_lpBuffer = nullptr;
    m_nFileSize = 0;
    m_nBufferSize = 0;
    m_nPosition = 0;
    return block;
}

BOOL CMemFile::GetStatus(CFileStatus& rStatus) const
{
    rStatus = CFileStatus();
    rStatus.m_size = m_nFileSize;
    const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(m_strFileName.GetLength()), MAX_PATH - 1);
    std::memcpy(rStatus.m_szFullName, m_strFileName.GetString(), length);
    return TRUE;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom)
{
    if (nFrom > end)
        AfxThrowFileException(CFileException::badSeek, -1, m_strFileName);
    const SIZE_T base = nFrom == begin ? 0 : nFrom == current ? m_nPosition : m_nFileSize;
    LONGLONG target;
    if (__builtin_add_overflow(static_cast<LONGLONG>(base), lOff, &target) || target < 0)
        AfxThrowFileException(CFileException::badSeek, -1, m_strFileName);
    m_nPosition = static_cast<SIZE_T>(target);
    return m_nPosition;
}

void CMemFile::SetLength(ULONGLONG dwNewLen)
{
    if (dwNewLen > m_nBufferSize)
        GrowFile(static_cast<SIZE_T>(dwNewLen));
    if (dwNewLen > m_nFileSize)
        std::memset(m_lpBuffer + m_nFileSize, 0, static_cast<SIZE_T>(dwNewLen) - m_nFileSize);
    m_nFileSize = static_cast<SIZE_T>(dwNewLen);
    m_nPosition = std::min(m_nPosition, m_nFileSize);
}

UINT CMemFile::Read(void* lpBuf, UINT nCount)
{
    if (m_nPosition >= m_nFileSize)
        return 0;
    const UINT count = static_cast<UINT>(std::min<SIZE_T>(nCount, m_nFileSize - m_nPosition));
    Memcpy(static_cast<BYTE*>(lpBuf), m_lpBuffer + m_nPosition, count);
    m_nPosition += count;
    return count;
}

void CMemFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    const SIZE_T newEnd = m_nPosition + nCount;
    if (newEnd > m_nBufferSize)
        GrowFile(newEnd);
    if (m_nPosition > m_nFileSize)
        std::memset(m_lpBuffer + m_nFileSize, 0, m_nPosition - m_nFileSize);
    Memcpy(m_lpBuffer + m_nPosition, static_cast<const BYTE*>(lpBuf), nCount);
    m_nPosition = newEnd;
    m_nFileSize = std::max(m_nFileSize, newEnd);
}

void CMemFile::Close()
{
    BYTE* block = Detach();
    if (block != nullptr && m_bAutoDelete)
        Free(block);
    m_bAutoDelete = TRUE;
}

CFile* CMemFile::Duplicate() const
{
    AfxThrowNotSupportedException();
}

void CMemFile::LockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

void CMemFile::UnlockRange(ULONGLONG, ULONGLONG)
{
    AfxThrowNotSupportedException();
}

BYTE* CMemFile::Alloc(SIZE_T nBytes)
{
    return static_cast<BYTE*>(std::malloc(nBytes));
}

BYTE* CMemFile::Realloc(BYTE* lpMem, SIZE_T nBytes)
{
    return static_cast<BYTE*>(std::realloc(lpMem, nBytes));
}

BYTE* CMemFile::Memcpy(BYTE* lpMemTarget, const BYTE* lpMemSource, SIZE_T nBytes)
{
    return static_cast<BYTE*>(std::memcpy(lpMemTarget, lpMemSource, nBytes));
}

void CMemFile::Free(BYTE* lpMem)
{
    std::free(lpMem);
}

void CMemFile::GrowFile(SIZE_T dwNewLen)
{
    if (dwNewLen <= m_nBufferSize)
        return;
    constexpr SIZE_T kMost = static_cast<SIZE_T>(std::numeric_limits<std::ptrdiff_t>::max());
    if (m_nGrowBytes == 0 || dwNewLen > kMost - m_nGrowBytes)
        AfxThrowMemoryException();
    const SIZE_T newSize = (dwNewLen + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
    BYTE* block = m_lpBuffer == nullptr ? Alloc(newSize) : Realloc(m_lpBuffer, newSize);
    if (block == nullptr)
        AfxThrowMemoryException();
    m_lpBuffer = block;
    m_nBufferSize = newSize;
}
