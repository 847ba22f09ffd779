// BSTR.h: copying and comparing system strings.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/platform/Win32.h>

/// Helpers for system strings; null is not the empty one. The owner of one frees it by SysFreeString.
class KELGEN_API CBSTR
{
public:
    /// Replaces @p dst, which is freed, by a copy of @p src up to its first 0 unit; null for null or without memory.
    static void Copy(BSTR& dst, BSTR src);
    /// Converts by the ANSI code page, up to the first 0 unit; empty for null.
    static void Copy(CString& dst, BSTR src);
    /// Converts by the ANSI code page, up to the first 0. By contract: what @p dst held is not freed, since it may hold nothing valid.
    /// Throws: COleException with E_OUTOFMEMORY without memory.
    static void Copy(BSTR& dst, const CString& src);

    /// Whether both are null, or neither is and lengths and units are equal, zeros included.
    [[nodiscard]] static bool IsEqual(BSTR a, BSTR b);
};
