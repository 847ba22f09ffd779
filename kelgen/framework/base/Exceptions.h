// Exceptions.h: the framework's exceptions, thrown by pointer, and the functions that throw them.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>

#include <typeinfo>

/// The base of all framework exceptions. A handler takes the pointer and calls Delete() when it is done with it:
///
///     try {
///         Load(archive);
///     } catch (CArchiveException* e) {
///         const int cause = e->m_cause;
///         e->Delete();
///     }
class KELGEN_FRAMEWORK_API CException : public CObject
{
    DECLARE_DYNAMIC(CException)

public:
    /// An exception on the heap, which Delete() deletes.
    CException();
    /// @p autoDelete FALSE: a static or automatic object, which Delete() leaves alone.
    explicit CException(BOOL autoDelete);
    ~CException() override;

    /// Ends the exception; harmless on those that the framework keeps ready.
    void Delete();

    /// Nonzero, and a text for people, cut to @p capacity - 1 bytes and terminated. 0 when the exception has none: the text is
    /// then empty. *@p helpContext, if given, becomes 0.
    virtual BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const;

    /// Shows the text in a message box of that type (0: MB_OK); for an exception without one, string resource @p errorId or a general
    /// text. Returns the button.
    virtual int ReportError(UINT type = 0, UINT errorId = 0);

    BOOL m_bAutoDelete;  ///< Whether Delete() deletes.
};

/// An exception with nothing but a fixed text.
class KELGEN_FRAMEWORK_API CSimpleException : public CException
{
    DECLARE_DYNAMIC(CSimpleException)

public:
    CSimpleException();
    /// With @p autoDelete Delete() frees the object, which was made by new.
    explicit CSimpleException(BOOL autoDelete);
    /// The text is string resource @p resourceId, when one is found at the time it is asked for.
    CSimpleException(BOOL autoDelete, UINT resourceId);

    BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const override;

protected:
    /// @p text is not copied: it lives as long as the exception.
    CSimpleException(BOOL autoDelete, LPCSTR text);

private:
    UINT m_nResourceId = 0;
    LPCSTR m_lpszText = nullptr;
};

/// Memory ran out.
class KELGEN_FRAMEWORK_API CMemoryException : public CSimpleException
{
    DECLARE_DYNAMIC(CMemoryException)

public:
    CMemoryException();
    /// With @p autoDelete Delete() frees the object, which was made by new.
    explicit CMemoryException(BOOL autoDelete);
    /// Its text is string resource @p resourceId, if one is found when it is asked for.
    CMemoryException(BOOL autoDelete, UINT resourceId);
};

/// The operation is not there.
class KELGEN_FRAMEWORK_API CNotSupportedException : public CSimpleException
{
    DECLARE_DYNAMIC(CNotSupportedException)

public:
    CNotSupportedException();
    /// With @p autoDelete Delete() frees the object, which was made by new.
    explicit CNotSupportedException(BOOL autoDelete);
    /// Its text is string resource @p resourceId, if one is found when it is asked for.
    CNotSupportedException(BOOL autoDelete, UINT resourceId);
};

/// A resource is missing or could not be made.
class KELGEN_FRAMEWORK_API CResourceException : public CSimpleException
{
    DECLARE_DYNAMIC(CResourceException)

public:
    CResourceException();
    /// With @p autoDelete Delete() frees the object, which was made by new.
    explicit CResourceException(BOOL autoDelete);
    /// Its text is string resource @p resourceId, if one is found when it is asked for.
    CResourceException(BOOL autoDelete, UINT resourceId);
};

/// The user has been told already: ends an operation quietly.
class KELGEN_FRAMEWORK_API CUserException : public CSimpleException
{
    DECLARE_DYNAMIC(CUserException)

public:
    CUserException();
    /// With @p autoDelete Delete() frees the object, which was made by new.
    explicit CUserException(BOOL autoDelete);
    /// Its text is string resource @p resourceId, if one is found when it is asked for.
    CUserException(BOOL autoDelete, UINT resourceId);
};

/// An argument is outside what the operation takes.
class KELGEN_FRAMEWORK_API CInvalidArgException : public CSimpleException
{
    DECLARE_DYNAMIC(CInvalidArgException)

public:
    CInvalidArgException();
    /// With @p autoDelete Delete() frees the object, which was made by new.
    explicit CInvalidArgException(BOOL autoDelete);
    /// Its text is string resource @p resourceId, if one is found when it is asked for.
    CInvalidArgException(BOOL autoDelete, UINT resourceId);

    /// The base's text. In checked builds, on the thread that the last one of these was thrown on, with the index and the size that it
    /// was thrown for.
    BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const override;
};

/// An archive is used against its direction, ends early, or holds what cannot be loaded.
class KELGEN_FRAMEWORK_API CArchiveException : public CException
{
    DECLARE_DYNAMIC(CArchiveException)

public:
    enum
    {
        none,
        genericException,
        readOnly,   ///< Stored into an archive opened for loading.
        endOfFile,  ///< The end came while loading.
        writeOnly,  ///< Loaded from an archive opened for storing.
        badIndex,   ///< The file's format is not an archive's.
        badClass,   ///< The object is of another class than asked for.
        badSchema,  ///< The object is of another version of its class.
    };

    /// Of that cause, for an archive over that file; null for none.
    explicit CArchiveException(int cause = none, LPCSTR fileName = nullptr);
    ~CArchiveException() override;

    /// Names the archive's file and, for a cause that is none of the class's, its number.
    BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const override;
    void Dump(CDumpContext& context) const override;

    /// Why, one of the class's causes.
    int m_cause;
    CString m_strFileName;  ///< The archive's file; empty for none.
};

/// A file operation failed.
class KELGEN_FRAMEWORK_API CFileException : public CException
{
    DECLARE_DYNAMIC(CFileException)

public:
    enum
    {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile,
    };

    /// Of that cause, the platform's code (-1 for none) and that file; null for none.
    explicit CFileException(int cause = none, LONG osError = -1, LPCSTR fileName = nullptr);
    ~CFileException() override;

    /// The cause that goes with a platform error code; genericException for those with none of their own.
    static int OsErrorToException(LONG osError);
    /// The cause that goes with an errno value.
    static int ErrnoToException(int errnoValue);

    /// Throws: the exception of a platform error code. Code 0 throws nothing.
    static void ThrowOsError(LONG osError, LPCSTR fileName = nullptr);
    /// Throws: the exception of an errno value, with the last platform error. Value 0 throws nothing.
    static void ThrowErrno(int errnoValue, LPCSTR fileName = nullptr);

    /// Names the file and the platform's code, where there is one.
    BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const override;
    void Dump(CDumpContext& context) const override;

    /// Why, one of the class's causes.
    int m_cause;
    LONG m_lOsError;        ///< The platform's code, or -1.
    CString m_strFileName;  ///< The file; empty for none.
};

/// Each throws a pointer to an exception of its name. The first five objects exist already: they need no memory.
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowMemoryException();
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowNotSupportedException();
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowResourceException();
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowUserException();
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowInvalidArgException();
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowArchiveException(int cause, LPCSTR fileName = nullptr);
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowFileException(int cause, LONG osError = -1, LPCSTR fileName = nullptr);
/// Ends the process at once.
[[noreturn]] KELGEN_FRAMEWORK_API void AfxAbort();

namespace kelgen::detail {

/// Deletes a caught exception at the end of its handler, unless KeepCaughtException was called in that handler.
class KELGEN_FRAMEWORK_API CaughtException
{
public:
    explicit CaughtException(CException* exception);
    ~CaughtException();
    CaughtException(const CaughtException&) = delete;
    CaughtException& operator=(const CaughtException&) = delete;

private:
    friend void KeepCaughtException();

    CException* m_exception;
    CaughtException* m_outer;
};

/// The innermost handler of this thread passes its exception on.
KELGEN_FRAMEWORK_API void KeepCaughtException();

/// Writes a class's name as sources have it, cut to @p capacity - 1 bytes and terminated.
KELGEN_FRAMEWORK_API void WriteClassName(const std::type_info& type, LPSTR text, UINT capacity) noexcept;
/// For a handler: writes what it caught in one line, class and message, cut to @p capacity - 1 bytes and terminated. Knows the
/// framework's exceptions, the standard library's and texts; of others it names the class.
KELGEN_FRAMEWORK_API void DescribeCaught(LPSTR text, UINT capacity) noexcept;

}  // namespace kelgen::detail

#define KELGEN_CAUGHT(exception) const ::kelgen::detail::CaughtException KELGEN_UNIQUE_NAME(caught, __LINE__)(exception);

/// Handlers by macro delete their exception themselves: no Delete() in them.
///
///     TRY {
///         Load(archive);
///     }
///     CATCH(CArchiveException, e) {
///         Report(e->m_cause);
///     }
///     AND_CATCH(CFileException, e) {
///         THROW_LAST();
///     }
///     END_CATCH
#define TRY                                                                                                                                \
    {                                                                                                                                      \
        try {
#define CATCH(className, exception)                                                                                                        \
    }                                                                                                                                      \
    catch (className * exception)                                                                                                          \
    {                                                                                                                                      \
        KELGEN_CAUGHT(exception)
#define AND_CATCH(className, exception) CATCH(className, exception)
#define CATCH_ALL(exception) CATCH(CException, exception)
#define AND_CATCH_ALL(exception) CATCH(CException, exception)
#define END_CATCH                                                                                                                          \
    }                                                                                                                                      \
    }
#define END_CATCH_ALL END_CATCH
/// Ends a TRY that ignores every framework exception.
#define END_TRY                                                                                                                            \
    CATCH(CException, ignored)                                                                                                             \
    END_CATCH
#define THROW(exception) throw exception
/// Passes the handler's exception on to the next handler outside.
#define THROW_LAST() (::kelgen::detail::KeepCaughtException(), throw)
