// StringResource.cpp: CString's texts from the system: string resources, code pages, environment.
#include <kelgen/framework/base/String.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/program/internal/StringTable.h>

#include <cstring>

using namespace kelgen::detail;

namespace {

CString FormatOf(UINT formatId)
{
    CString format;
    if (!format.LoadString(formatId))
        AfxThrowInvalidArgException();
    return format;
}

}  // namespace

CString::CString(LPCSTR text) : CString()
{
    if (!IS_INTRESOURCE(text)) {
        if (const int length = StringLength(text); length > 0)
            m_pszData = NewBlock(text, length, length);
    } else if (text) {
        LoadString(LOWORD(reinterpret_cast<ULONG_PTR>(text)));
    }
}

void CString::SetWide(const WCHAR* text, int length)
{
    if (length < -1 || (!text && length > 0))
        AfxThrowInvalidArgException();
    if (!text || length == 0 || (length == -1 && text[0] == 0)) {
        Empty();
        return;
    }
    const int units = length == -1 ? lstrlenW(text) : length;
    const int needed = WideCharToMultiByte(CP_ACP, 0, text, units, nullptr, 0, nullptr, nullptr);
    // The source may be this string's own memory.
    CString converted;
    WideCharToMultiByte(CP_ACP, 0, text, units, converted.GetBuffer(needed), needed, nullptr, nullptr);
    converted.ReleaseBufferSetLength(needed);
    *this = std::move(converted);
}

BOOL CString::LoadString(UINT id)
{
    const HINSTANCE module = AfxFindStringResourceHandle(id);
    return module && LoadString(module, id);
}

BOOL CString::LoadString(HINSTANCE module, UINT id)
{
    const ResourceText text = FindResourceText(module, id);
    if (!text)
        return FALSE;
    SetWide(text.units, text.length);
    return TRUE;
}

BOOL CString::LoadString(HINSTANCE module, UINT id, WORD language)
{
    const ResourceText text = FindResourceText(module, id, language);
    if (!text)
        return FALSE;
    SetWide(text.units, text.length);
    return TRUE;
}

void CString::Format(UINT formatId, ...)
{
    const CString format = FormatOf(formatId);
    va_list arguments;
    va_start(arguments, formatId);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(UINT formatId, ...)
{
    const CString format = FormatOf(formatId);
    va_list arguments;
    va_start(arguments, formatId);
    AppendFormatV(format, arguments);
    va_end(arguments);
}

BOOL AfxExtractSubString(CString& part, LPCSTR full, int index, char separator)
{
    LPCSTR begin = full;
    for (int skipped = 0; begin && skipped < index; ++skipped) {
        begin = std::strchr(begin, separator);
        if (begin)
            ++begin;
    }
    if (!begin || index < 0) {
        part.Empty();
        return FALSE;
    }
    LPCSTR const end = std::strchr(begin, separator);
    part = end ? CString(begin, static_cast<int>(end - begin)) : CString(begin);
    return TRUE;
}

BOOL CString::GetEnvironmentVariable(LPCSTR name)
{
    // Another thread may change the variable between asking for its size and reading it.
    DWORD capacity = ::GetEnvironmentVariableA(name, nullptr, 0);
    while (capacity > 0) {
        const DWORD length = ::GetEnvironmentVariableA(name, GetBuffer(static_cast<int>(capacity)), capacity);
        if (length < capacity) {
            ReleaseBufferSetLength(static_cast<int>(length));
            return TRUE;
        }
        capacity = length;
    }
    Empty();
    return FALSE;
}

void CString::AnsiToOem()
{
    LPSTR const text = GetBuffer();
    ::CharToOemA(text, text);
}

void CString::OemToAnsi()
{
    LPSTR const text = GetBuffer();
    ::OemToCharA(text, text);
}
