// Archive.h: CArchive, the buffered binary stream that stores and loads values and objects.
#pragma once

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

#include <bit>
#include <concepts>
#include <cstring>
#include <memory>
#include <type_traits>

class CArchive;
class CDocument;
class CFile;

namespace kelgen::detail {
struct ArchiveBytes;
}

/// Stores values to a file or loads them from it, in the order of the calls.
///
///     CFile file("C:\\state.bin", CFile::modeCreate | CFile::modeWrite);
///     CArchive archive(&file, CArchive::store);
///     archive << number << name;
///     archive.Close();
///
/// Numbers lie low byte first, in as many bytes as their type has; bool is one byte. A text is its length and bytes: up to 254
/// one length byte, up to 65533 the byte 0xFF and two, above that 0xFF, 0xFFFF and four. An object is a tag (its number among the
/// objects and classes stored so far, or a class) and what its Serialize stores; each object is stored once.
///
/// The buffer reads ahead: use the file itself again only after Flush or Close.
/// Throws: CArchiveException readOnly when a loading archive is stored to, writeOnly when a storing one is loaded from,
/// endOfFile, and badIndex, badClass, badSchema for a file that is not such an archive's; the file's own exceptions. Threads: one
/// at a time.
class KELGEN_FRAMEWORK_API CArchive
{
public:
    enum Mode
    {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2,  ///< The destructor does not close.
        bNoByteSwap = 4,
    };

    /// @p nBufSize of at least 128 bytes; @p lpBuf is used as the buffer if given, and stays the caller's.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    /// Closes; errors are ignored: call Close to see them.
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    /// Whether values are loaded from the file.
    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    /// Whether values are stored to the file.
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    /// Always FALSE: numbers lie low byte first, as they do in memory.
    BOOL IsByteSwapping() const { return FALSE; }
    /// Loading: nonzero when nothing is read ahead. Storing: nonzero when nothing waits for Flush.
    BOOL IsBufferEmpty() const { return IsLoading() ? m_nUnread == 0 : m_lpBufCur == m_lpBufStart; }
    /// The file; null after Close and Abort.
    CFile* GetFile() const { return m_pFile; }

    /// The version of the object that is being loaded, for its Serialize to ask once; then -1.
    UINT GetObjectSchema();
    /// Sets what GetObjectSchema will return.
    void SetObjectSchema(UINT nSchema) { m_nObjectSchema = nSchema; }

    /// Storing: writes the buffer to the file. Loading: drops what is read ahead and moves the file back to the next byte.
    void Flush();
    /// Flushes and lets the file go, which stays open.
    void Close();
    /// Lets the file go without writing what waits.
    void Abort();

    /// Loads up to @p nMax bytes and returns their number; fewer only at the end.
    UINT Read(void* lpBuf, UINT nMax);
    /// Stores @p nMax bytes as they are.
    void Write(const void* lpBuf, UINT nMax);

    /// Stores the characters before the terminator.
    void WriteString(LPCSTR lpsz);
    /// Loads one line into @p lpsz, which has room for |nMax| + 1 characters, and terminates it; null when nothing is left. A
    /// line feed ends the line; a carriage return ends it after one more character is loaded. By contract: @p nMax as a negative number
    /// makes the last character of the line's end part of the text, so that a caller can tell a whole line from a piece.
    LPSTR ReadString(LPSTR lpsz, UINT nMax);
    /// Loads one whole line without its line feed; FALSE when nothing is left.
    BOOL ReadString(CString& rString);

    /// A number of elements: two bytes below 0xFFFF, else 0xFFFF and four. Throws: the invalid-argument exception above 32 bits.
    void WriteCount(DWORD_PTR dwCount);
    /// Loads what WriteCount stored.
    DWORD_PTR ReadCount();

    /// Stores a number in as many bytes as it has, the lowest first; a bool in one.
    template <class T>
    requires std::integral<T> || std::floating_point<T> CArchive& operator<<(T value)
    {
        if constexpr (std::same_as<T, bool>)
            Put(static_cast<BYTE>(value ? 1 : 0));
        else
            Put(value);
        return *this;
    }

    /// Loads what the operator above stored.
    template <class T>
    requires std::integral<T> || std::floating_point<T> CArchive& operator>>(T& value)
    {
        if constexpr (std::same_as<T, bool>)
            value = Get<BYTE>() != 0;
        else
            value = Get<T>();
        return *this;
    }

    friend KELGEN_FRAMEWORK_API CArchive& operator<<(CArchive& ar, const CObject* pOb);
    friend KELGEN_FRAMEWORK_API CArchive& operator>>(CArchive& ar, CObject*& pOb);

    /// Stores the object, or its number when it was stored before; null is an object too.
    /// Throws: the not-supported exception when its class has no schema; badIndex for an object inside 2048 others.
    void WriteObject(const CObject* pOb);
    /// Loads the next object, which is created by its class's record unless it was loaded before. Its class must be
    /// @p pClassRefRequested, if given, or derived from it. An object whose Serialize throws is deleted. Throws: badIndex as WriteObject.
    CObject* ReadObject(const CRuntimeClass* pClassRefRequested);

    /// Gives @p pOb the next object number without storing or loading it: objects that the host makes itself, such as a document.
    void MapObject(const CObject* pOb);

    /// Stores a class: its number if it was stored before, or else its schema and name. Throws: the not-supported exception when it has
    /// no schema.
    void WriteClass(const CRuntimeClass* pClassRef);
    /// Loads a class reference and its stored schema. When an object's number comes instead it is set in @p pObTag and null
    /// returned. Throws: badIndex for an object's number when @p pObTag is null.
    CRuntimeClass* ReadClass(const CRuntimeClass* pClassRefRequested = nullptr, UINT* pSchema = nullptr, DWORD* pObTag = nullptr);
    /// WriteClass or ReadClass, by the archive's direction.
    void SerializeClass(const CRuntimeClass* pRuntimeClass);

    /// Sizes of the object maps, as hints: before the first object.
    void SetStoreParams(UINT nHashSize = 2053, UINT nBlockSize = 128);
    /// Does the same for loading.
    void SetLoadParams(UINT nGrowBy = 1024);

    CDocument* m_pDocument = nullptr;  ///< The document that is being stored or loaded, if any.
    CString m_strFileName;             ///< The file's path, for exceptions.

protected:
    UINT m_nMode;
    CFile* m_pFile;

private:
    friend struct kelgen::detail::ArchiveBytes;
    struct ObjectMaps;

    static_assert(std::endian::native == std::endian::little, "values are copied as they lie");

    template <class T>
    void Put(T value)
    {
        if (m_nRoom < sizeof value) [[unlikely]]
            MakeRoom();
        std::memcpy(m_lpBufCur, &value, sizeof value);
        m_lpBufCur += sizeof value;
        m_nRoom -= static_cast<UINT>(sizeof value);
    }

    template <class T>
    T Get()
    {
        if (m_nUnread < sizeof(T)) [[unlikely]]
            Fetch(sizeof(T));
        T value;
        std::memcpy(&value, m_lpBufCur, sizeof value);
        m_lpBufCur += sizeof value;
        m_nUnread -= static_cast<UINT>(sizeof value);
        return value;
    }

    [[noreturn]] void Throw(int cause) const;
    void CheckStoring() const;
    void CheckLoading() const;
    void MakeRoom();
    void Fetch(UINT count);
    UINT ReadFile(void* buffer, UINT count);
    UINT ReadAhead(UINT count);
    UINT ReadLine(char* line, UINT max, bool withEnd, bool& ended);
    ULONGLONG BytesLeft() const;
    ObjectMaps& Maps();
    DWORD NextNumber();

    BYTE* m_lpBufStart;
    BYTE* m_lpBufCur;
    UINT m_nBufSize;
    UINT m_nUnread = 0;  // loading: bytes from the cursor on; storing: always 0
    UINT m_nRoom = 0;    // storing: free bytes from the cursor on; loading: always 0
    UINT m_nObjectSchema;
    UINT m_nMapHint = 0;
    std::unique_ptr<BYTE[]> m_buffer;
    std::unique_ptr<ObjectMaps> m_maps;
};
