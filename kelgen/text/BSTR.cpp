// BSTR.cpp: system strings between each other and narrow text.
#include <kelgen/text/BSTR.h>

#include <kelgen/framework/ole/OleException.h>
#include <kelgen/framework/ole/internal/NarrowToSystem.h>

#include <cstring>
#include <utility>

namespace {

[[noreturn]] void ThrowOutOfMemory()
{
    auto* const error = new COleException;
    error->m_sc = E_OUTOFMEMORY;
    throw error;
}

}  // namespace

void CBSTR::Copy(BSTR& dst, BSTR src)
{
    // The source may be the old value: that goes last.
    const BSTR copy = src ? SysAllocString(src) : nullptr;
    SysFreeString(std::exchange(dst, copy));
}

void CBSTR::Copy(CString& dst, BSTR src)
{
    const int size = src ? WideCharToMultiByte(CP_ACP, 0, src, -1, nullptr, 0, nullptr, nullptr) : 0;
    CString converted;
    if (size > 0) {
        WideCharToMultiByte(CP_ACP, 0, src, -1, converted.GetBuffer(size), size, nullptr, nullptr);
        converted.ReleaseBuffer();
    }
    dst = converted;
}

void CBSTR::Copy(BSTR& dst, const CString& src)
{
    const BSTR converted = kelgen::detail::NewSystemString(src);
    if (!converted)
        ThrowOutOfMemory();
    dst = converted;
}

bool CBSTR::IsEqual(BSTR a, BSTR b)
{
    if (!a || !b)
        return a == b;
    const UINT length = SysStringLen(a);
    return length == SysStringLen(b) && std::memcmp(a, b, length * sizeof *a) == 0;
}
