// KELException.h: the library's own exception, for hosts that raise errors with a number.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/Exceptions.h>

/// An error with a code of the host's. Thrown by pointer; the catcher calls Delete().
class KELGEN_API CKELException : public CException
{
    DECLARE_DYNAMIC(CKELException)

public:
    /// @p code is an error number of the system's or the host's own.
    explicit CKELException(LONG code = 0);

    /// Names the code.
    BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const override;

    LONG m_code;  ///< as given
};

/// Throws a new CKELException with @p code.
[[noreturn]] KELGEN_API void AfxThrowKELException(LONG code);
