// DeviceContext.h: device contexts as objects, as far as handlers are given them.
#pragma once

#include <kelgen/framework/base/Object.h>

#include <cstdint>

class CWnd;

/// A device context. It does not own its handle; the classes below do.
class KELGEN_FRAMEWORK_API CDC : public CObject
{
    DECLARE_DYNAMIC(CDC)

public:
    CDC() = default;
    ~CDC() override;

    /// Makes this the thread's permanent object of the handle; FALSE for null.
    BOOL Attach(HDC hDC);
    HDC Detach();
    /// The thread's object of the handle: the permanent one, else a temporary one that lives until the thread idles. Null for null.
    static CDC* FromHandle(HDC hDC);
    static void DeleteTempMap();
    /// Null also for a null object.
    HDC GetSafeHdc() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hDC; }
    operator HDC() const { return m_hDC; }

    HDC m_hDC = nullptr;
};

/// The context of a WM_PAINT handler: BeginPaint now, EndPaint at the end.
/// Throws: CResourceException when there is none.
class KELGEN_FRAMEWORK_API CPaintDC : public CDC
{
    DECLARE_DYNAMIC(CPaintDC)

public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps;

protected:
    HWND m_hWnd;
};

/// The context of a window's client area; null means the screen.
/// Throws: CResourceException when there is none.
class KELGEN_FRAMEWORK_API CClientDC : public CDC
{
    DECLARE_DYNAMIC(CClientDC)

public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

namespace kelgen::detail {

/// The object's handle; null for a null object, without a call through it.
inline HDC HandleOf(const CDC* object)
{
    return object ? object->m_hDC : nullptr;
}

}  // namespace kelgen::detail
