// OleException.h: failures of automation calls as exceptions.
#pragma once

#include <kelgen/framework/base/Exceptions.h>

/// An automation call's failure, with its result code.
class KELGEN_FRAMEWORK_API COleException : public CException
{
    DECLARE_DYNAMIC(COleException)

public:
    COleException() = default;

    /// The system's text for the code, if it has one, and the code.
    BOOL GetErrorMessage(LPSTR text, UINT capacity, UINT* helpContext = nullptr) const override;

    SCODE m_sc = E_UNEXPECTED;  ///< The failure's code.
};

/// Throws a memory exception for E_OUTOFMEMORY, else a COleException with @p code.
[[noreturn]] KELGEN_FRAMEWORK_API void AfxThrowOleException(SCODE code);

namespace kelgen {

/// Throws when @p result is a failure.
inline void CheckOle(HRESULT result)
{
    if (FAILED(result))
        AfxThrowOleException(result);
}

}  // namespace kelgen
