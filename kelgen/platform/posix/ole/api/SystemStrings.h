// SystemStrings.h: counted 16-bit text that may hold zeros, with its byte length in front and a terminator behind.
#pragma once

#include <kelgen/platform/Export.h>
#include <kelgen/platform/posix/ole/api/OleTypes.h>

/// A copy of @p text up to its first 0; null for null text or without memory.
KELGEN_PLATFORM_API BSTR SysAllocString(const OLECHAR* text);
/// @p length units from @p text, zeros included; undefined units when @p text is null. Null without memory.
KELGEN_PLATFORM_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// @p length bytes from @p bytes, with a two-byte terminator behind. Null without memory.
KELGEN_PLATFORM_API BSTR SysAllocStringByteLen(LPCSTR bytes, UINT length);
/// Replaces @p *string by a copy of @p text, which may lie inside it. FALSE without memory or for null text: it stays then.
KELGEN_PLATFORM_API INT SysReAllocString(BSTR* string, const OLECHAR* text);
/// SysReAllocString for @p length units.
KELGEN_PLATFORM_API INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length);
/// Frees @p string; null is nothing.
KELGEN_PLATFORM_API void SysFreeString(BSTR string);
/// Length in units, zeros included; 0 for null.
KELGEN_PLATFORM_API UINT SysStringLen(BSTR string);
/// Length in bytes; 0 for null.
KELGEN_PLATFORM_API UINT SysStringByteLen(BSTR string);
