// Exceptions.cpp: the exceptions' causes and texts, those that are kept ready, and the end of a handler by macro.
#include <kelgen/framework/base/Exceptions.h>

#include <kelgen/platform/support/MemoryHandler.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CSimpleException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CSimpleException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CSimpleException)
IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)
IMPLEMENT_DYNAMIC(CUserException, CSimpleException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CSimpleException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

namespace {

constexpr LPCSTR kMemoryText = "Out of memory.";
constexpr LPCSTR kNotSupportedText = "This operation is not supported.";
constexpr LPCSTR kResourceText = "A required resource is not available.";
constexpr LPCSTR kUserText = "The operation was cancelled.";
constexpr LPCSTR kInvalidArgText = "An argument is not valid.";

constexpr LPCSTR kUnnamedFile = "an unnamed file";

// Indexed by CFileException's causes; %1 is the file.
constexpr LPCSTR kFileTexts[] = {
    "No error occurred with %1.",
    "An unknown error occurred while accessing %1.",
    "%1 was not found.",
    "%1 contains an invalid path.",
    "%1 could not be opened because too many files are open.",
    "Access to %1 was denied.",
    "An invalid file handle was used for %1.",
    "%1 could not be removed because it is the current folder.",
    "%1 could not be created because its folder is full.",
    "The position could not be set in %1.",
    "A device error was reported while accessing %1.",
    "%1 is shared in a way that does not allow this access.",
    "A part of %1 is locked.",
    "The disk is full while accessing %1.",
    "The end of %1 was passed.",
};

// Indexed by CArchiveException's causes.
constexpr LPCSTR kArchiveTexts[] = {
    "No error occurred with %1.",
    "An unknown error occurred while accessing %1.",
    "%1 was opened for reading and cannot be written.",
    "The end of %1 was passed.",
    "%1 was opened for writing and cannot be read.",
    "%1 has an unexpected format.",
    "%1 contains an unexpected object.",
    "%1 contains an object of an incorrect version.",
};

BOOL CopyText(LPCSTR source, LPSTR text, UINT capacity, UINT* helpContext)
{
    if (helpContext)
        *helpContext = 0;
    if (!text || capacity == 0)
        return FALSE;
    text[0] = 0;
    if (!source)
        return FALSE;
    const std::size_t length = std::min<std::size_t>(std::strlen(source), capacity - 1);
    std::memcpy(text, source, length);
    text[length] = 0;
    return TRUE;
}

// The value goes before the full stop; a null label has none.
template <std::size_t Count>
BOOL CopyCauseText(const LPCSTR (&texts)[Count], int cause, const CString& file, LPCSTR label, LONG value, LPSTR text, UINT capacity,
                   UINT* helpContext)
{
    const bool known = cause >= 0 && cause < static_cast<int>(Count);
    CString filled = texts[known ? cause : 1];
    CString number;
    if (!known)
        number.Format(" (cause %d)", cause);
    else if (label)
        number.Format(" (%s %d)", label, static_cast<int>(value));
    filled.Insert(filled.GetLength() - 1, number);
    filled.Replace("%1", file.IsEmpty() ? kUnnamedFile : file.GetString());
    return CopyText(filled, text, capacity, helpContext);
}

struct OsCause
{
    LONG error;
    int cause;
};

constexpr OsCause kOsCauses[] = {
    {ERROR_SUCCESS, CFileException::none},
    {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
    {ERROR_PATH_NOT_FOUND, CFileException::badPath},
    {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
    {ERROR_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_INVALID_HANDLE, CFileException::invalidFile},
    {ERROR_INVALID_DRIVE, CFileException::badPath},
    {ERROR_CURRENT_DIRECTORY, CFileException::removeCurrentDir},
    {ERROR_NO_MORE_FILES, CFileException::fileNotFound},
    {ERROR_WRITE_PROTECT, CFileException::accessDenied},
    {ERROR_NOT_READY, CFileException::hardIO},
    {ERROR_CRC, CFileException::hardIO},
    {ERROR_SEEK, CFileException::badSeek},
    {ERROR_WRITE_FAULT, CFileException::hardIO},
    {ERROR_READ_FAULT, CFileException::hardIO},
    {ERROR_GEN_FAILURE, CFileException::hardIO},
    {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
    {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
    {ERROR_HANDLE_EOF, CFileException::endOfFile},
    {ERROR_HANDLE_DISK_FULL, CFileException::diskFull},
    {ERROR_FILE_EXISTS, CFileException::accessDenied},
    {ERROR_CANNOT_MAKE, CFileException::accessDenied},
    {ERROR_DISK_FULL, CFileException::diskFull},
    {ERROR_INVALID_NAME, CFileException::badPath},
    {ERROR_NEGATIVE_SEEK, CFileException::badSeek},
    {ERROR_DIR_NOT_EMPTY, CFileException::removeCurrentDir},
    {ERROR_BAD_PATHNAME, CFileException::badPath},
    {ERROR_BUSY, CFileException::accessDenied},
    {ERROR_ALREADY_EXISTS, CFileException::accessDenied},
    {ERROR_FILENAME_EXCED_RANGE, CFileException::badPath},
    {ERROR_DIRECTORY, CFileException::badPath},
    {ERROR_CANTOPEN, CFileException::genericException},
    {ERROR_CANTREAD, CFileException::hardIO},
    {ERROR_CANTWRITE, CFileException::hardIO},
    {ERROR_FILE_INVALID, CFileException::invalidFile},
};

constexpr OsCause kErrnoCauses[] = {
    {0, CFileException::none},
    {EPERM, CFileException::accessDenied},
    {ENOENT, CFileException::fileNotFound},
    {EIO, CFileException::hardIO},
    {EBADF, CFileException::invalidFile},
    {EACCES, CFileException::accessDenied},
    {EEXIST, CFileException::accessDenied},
    {ENOTDIR, CFileException::badPath},
    {EISDIR, CFileException::accessDenied},
    {ENFILE, CFileException::tooManyOpenFiles},
    {EMFILE, CFileException::tooManyOpenFiles},
    {ENOSPC, CFileException::diskFull},
    {ESPIPE, CFileException::badSeek},
    {EROFS, CFileException::accessDenied},
};

template <std::size_t Count>
int CauseOf(const OsCause (&causes)[Count], LONG error)
{
    for (const OsCause& row : causes) {
        if (row.error == error)
            return row.cause;
    }
    return CFileException::genericException;
}

// What the last invalid argument of this thread was, if it was an index.
struct BadIndex
{
    bool isSet;
    LONGLONG index;
    LONGLONG size;
};
thread_local BadIndex lastBadIndex{};

// Handlers run from inside out on each thread, so a list of those running is enough.
thread_local kelgen::detail::CaughtException* innermostHandler = nullptr;

}  // namespace

CException::CException() : m_bAutoDelete(TRUE) {}

CException::CException(BOOL autoDelete) : m_bAutoDelete(autoDelete) {}

CException::~CException() = default;

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    return CopyText(nullptr, text, capacity, helpContext);
}

CSimpleException::CSimpleException() = default;

CSimpleException::CSimpleException(BOOL autoDelete) : CException(autoDelete) {}

CSimpleException::CSimpleException(BOOL autoDelete, UINT resourceId) : CException(autoDelete), m_nResourceId(resourceId) {}

CSimpleException::CSimpleException(BOOL autoDelete, LPCSTR text) : CException(autoDelete), m_lpszText(text) {}

BOOL CSimpleException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    CString loaded;
    if (m_nResourceId != 0 && loaded.LoadString(m_nResourceId))
        return CopyText(loaded, text, capacity, helpContext);
    return CopyText(m_lpszText, text, capacity, helpContext);
}

CMemoryException::CMemoryException() : CSimpleException(TRUE, kMemoryText) {}

CMemoryException::CMemoryException(BOOL autoDelete) : CSimpleException(autoDelete, kMemoryText) {}

CMemoryException::CMemoryException(BOOL autoDelete, UINT resourceId) : CSimpleException(autoDelete, resourceId) {}

CNotSupportedException::CNotSupportedException() : CSimpleException(TRUE, kNotSupportedText) {}

CNotSupportedException::CNotSupportedException(BOOL autoDelete) : CSimpleException(autoDelete, kNotSupportedText) {}

CNotSupportedException::CNotSupportedException(BOOL autoDelete, UINT resourceId) : CSimpleException(autoDelete, resourceId) {}

CResourceException::CResourceException() : CSimpleException(TRUE, kResourceText) {}

CResourceException::CResourceException(BOOL autoDelete) : CSimpleException(autoDelete, kResourceText) {}

CResourceException::CResourceException(BOOL autoDelete, UINT resourceId) : CSimpleException(autoDelete, resourceId) {}

CUserException::CUserException() : CSimpleException(TRUE, kUserText) {}

CUserException::CUserException(BOOL autoDelete) : CSimpleException(autoDelete, kUserText) {}

CUserException::CUserException(BOOL autoDelete, UINT resourceId) : CSimpleException(autoDelete, resourceId) {}

CInvalidArgException::CInvalidArgException() : CSimpleException(TRUE, kInvalidArgText) {}

CInvalidArgException::CInvalidArgException(BOOL autoDelete) : CSimpleException(autoDelete, kInvalidArgText) {}

CInvalidArgException::CInvalidArgException(BOOL autoDelete, UINT resourceId) : CSimpleException(autoDelete, resourceId) {}

BOOL CInvalidArgException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    if (!lastBadIndex.isSet)
        return CSimpleException::GetErrorMessage(text, capacity, helpContext);
    char named[100];
    std::snprintf(named, sizeof named, "An argument is not valid: index %lld of size %lld.", lastBadIndex.index, lastBadIndex.size);
    return CopyText(named, text, capacity, helpContext);
}

CArchiveException::CArchiveException(int cause, LPCSTR fileName) : m_cause(cause), m_strFileName(fileName) {}

CArchiveException::~CArchiveException() = default;

BOOL CArchiveException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    return CopyCauseText(kArchiveTexts, m_cause, m_strFileName, nullptr, 0, text, capacity, helpContext);
}

void CArchiveException::Dump(CDumpContext& context) const
{
    CObject::Dump(context);
    context << "cause " << m_cause << "\n";
}

CFileException::CFileException(int cause, LONG osError, LPCSTR fileName) : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

CFileException::~CFileException() = default;

int CFileException::OsErrorToException(LONG osError)
{
    return CauseOf(kOsCauses, osError);
}

int CFileException::ErrnoToException(int errnoValue)
{
    return CauseOf(kErrnoCauses, errnoValue);
}

void CFileException::ThrowOsError(LONG osError, LPCSTR fileName)
{
    if (osError != 0)
        AfxThrowFileException(OsErrorToException(osError), osError, fileName);
}

void CFileException::ThrowErrno(int errnoValue, LPCSTR fileName)
{
    if (errnoValue != 0)
        AfxThrowFileException(ErrnoToException(errnoValue), static_cast<LONG>(GetLastError()), fileName);
}

BOOL CFileException::GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext) const
{
    // -1 stands for none, 0 for success.
    const LPCSTR label = m_lOsError > 0 ? "error" : nullptr;
    return CopyCauseText(kFileTexts, m_cause, m_strFileName, label, m_lOsError, text, capacity, helpContext);
}

void CFileException::Dump(CDumpContext& context) const
{
    CObject::Dump(context);
    context << "cause " << m_cause << ", platform error " << static_cast<int>(m_lOsError) << ", file \"" << m_strFileName << "\"\n";
}

// The ready exceptions are never destroyed: other static objects may throw them on their way out.
template <class Exception>
[[noreturn]] static void ThrowReady()
{
    alignas(Exception) static char place[sizeof(Exception)];
    static Exception* const ready = new (place) Exception(FALSE);
    throw ready;
}

void AfxThrowMemoryException()
{
    ThrowReady<CMemoryException>();
}

namespace {

// As long as this library is loaded, new throws the memory exception, in hosts too.
struct MemoryThrower
{
    MemoryThrower() { kelgen::SetMemoryThrower(AfxThrowMemoryException); }
    ~MemoryThrower() { kelgen::SetMemoryThrower(nullptr); }
};

const MemoryThrower memoryThrower;

}  // namespace

void AfxThrowNotSupportedException()
{
    ThrowReady<CNotSupportedException>();
}

void AfxThrowResourceException()
{
    ThrowReady<CResourceException>();
}

void AfxThrowUserException()
{
    ThrowReady<CUserException>();
}

void AfxThrowInvalidArgException()
{
    lastBadIndex.isSet = false;
    ThrowReady<CInvalidArgException>();
}

void AfxThrowArchiveException(int cause, LPCSTR fileName)
{
    throw new CArchiveException(cause, fileName);
}

void AfxThrowFileException(int cause, LONG osError, LPCSTR fileName)
{
    throw new CFileException(cause, osError, fileName);
}

void kelgen::detail::ThrowBadIndex(LONGLONG index, LONGLONG size)
{
    lastBadIndex = {true, index, size};
    ThrowReady<CInvalidArgException>();
}

void AfxAbort()
{
    std::abort();
}

namespace kelgen::detail {

CaughtException::CaughtException(CException* exception) : m_exception(exception), m_outer(innermostHandler)
{
    innermostHandler = this;
}

CaughtException::~CaughtException()
{
    innermostHandler = m_outer;
    if (m_exception)
        m_exception->Delete();
}

void KeepCaughtException()
{
    if (innermostHandler)
        innermostHandler->m_exception = nullptr;
}

}  // namespace kelgen::detail
