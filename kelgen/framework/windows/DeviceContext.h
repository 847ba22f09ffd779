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
    /// An object without a device context.
    CDC() = default;
    ~CDC() override;

    /// Makes this the thread's permanent object of the handle. FALSE for null.
    BOOL Attach(HDC hDC);
    /// Parts the object from its handle and returns it; null if there was none.
    HDC Detach();
    /// The thread's object of the handle: the permanent one, or else a temporary one that lives until the thread idles. Null for null.
    static CDC* FromHandle(HDC hDC);
    /// Deletes the thread's temporary objects. The thread does it itself when it idles.
    static void DeleteTempMap();
    /// The handle; null if there is none, even when called through a null object (hosts do so).
    HDC GetSafeHdc() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hDC; }
    /// The handle, so that an object serves where a call takes a device context.
    operator HDC() const { return m_hDC; }

    /// The handle, or null.
    HDC m_hDC = nullptr;
};

/// The context of a WM_PAINT handler: BeginPaint now, EndPaint at the end.
/// Throws: CResourceException when there is none.
class KELGEN_FRAMEWORK_API CPaintDC : public CDC
{
    DECLARE_DYNAMIC(CPaintDC)

public:
    /// Calls BeginPaint.
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

    /// What BeginPaint told: the part to paint, and whether to erase it first.
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
    /// Calls GetDC.
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
