// DeviceContext.h: device contexts as objects.
#pragma once

#include <kelgen/framework/base/Object.h>
#include <kelgen/framework/base/String.h>
#include <kelgen/framework/windows/GdiObjects.h>

#include <cstdint>

class CWnd;

/// A device context: what is drawn on. Coordinates are logical; the calls' own rules, results and failure values hold. Objects that come
/// back are temporary unless attached.
///
///     void CMyWnd::OnPaint()
///     {
///         CPaintDC dc(this);
///         dc.Rectangle(10, 10, 60, 40);
///         dc.TextOut(15, 15, "Hello");
///     }
///
/// It deletes the context that CreateCompatibleDC made for it, and no other one; the classes below release theirs.
/// A member with the name of a platform call makes that call with this context; where it is another one, its comment names it.
/// Threads: an object belongs to the thread that attached its handle.
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
    /// Deletes the thread's temporary objects, those of CGdiObject too. The thread does it itself when it idles.
    static void DeleteTempMap();
    /// The handle; null if there is none, even when called through a null object (hosts do so).
    HDC GetSafeHdc() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hDC; }
    /// The handle, so that an object serves where a call takes a device context.
    operator HDC() const { return m_hDC; }

    /// A context of a bitmap; null stands for the screen. FALSE on failure.
    BOOL CreateCompatibleDC(CDC* pDC);
    /// Deletes the context. FALSE without one.
    BOOL DeleteDC();
    /// The window of the context; null for none.
    CWnd* GetWindow() const;
    /// Each as the call of that name does.
    virtual int SaveDC() { return ::SaveDC(m_hDC); }
    virtual BOOL RestoreDC(int nSavedDC) { return ::RestoreDC(m_hDC, nSavedDC); }
    int GetDeviceCaps(int nIndex) const { return ::GetDeviceCaps(m_hDC, nIndex); }

    /// Has the context draw with an object; each returns the former one, null on failure. A region's kind, and it clips to a copy.
    CPen* SelectObject(CPen* pPen) { return CPen::FromHandle(static_cast<HPEN>(Select(pPen))); }
    CBrush* SelectObject(CBrush* pBrush) { return CBrush::FromHandle(static_cast<HBRUSH>(Select(pBrush))); }
    virtual CFont* SelectObject(CFont* pFont) { return CFont::FromHandle(static_cast<HFONT>(Select(pFont))); }
    CBitmap* SelectObject(CBitmap* pBitmap) { return CBitmap::FromHandle(static_cast<HBITMAP>(Select(pBitmap))); }
    int SelectObject(CRgn* pRgn) { return SelectClipRgn(pRgn); }
    CGdiObject* SelectObject(CGdiObject* pObject) { return CGdiObject::FromHandle(Select(pObject)); }
    virtual CGdiObject* SelectStockObject(int nIndex) { return CGdiObject::FromHandle(::SelectObject(m_hDC, ::GetStockObject(nIndex))); }
    CPen* GetCurrentPen() const { return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hDC, OBJ_PEN))); }
    CBrush* GetCurrentBrush() const { return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hDC, OBJ_BRUSH))); }
    CFont* GetCurrentFont() const { return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hDC, OBJ_FONT))); }
    CBitmap* GetCurrentBitmap() const { return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP))); }

    /// Colours and modes; each that sets one returns the former one.
    COLORREF GetTextColor() const { return ::GetTextColor(m_hDC); }
    virtual COLORREF SetTextColor(COLORREF crColor) { return ::SetTextColor(m_hDC, crColor); }
    COLORREF GetBkColor() const { return ::GetBkColor(m_hDC); }
    virtual COLORREF SetBkColor(COLORREF crColor) { return ::SetBkColor(m_hDC, crColor); }
    int GetBkMode() const { return ::GetBkMode(m_hDC); }
    int SetBkMode(int nBkMode) { return ::SetBkMode(m_hDC, nBkMode); }
    UINT GetTextAlign() const { return ::GetTextAlign(m_hDC); }
    UINT SetTextAlign(UINT nFlags) { return ::SetTextAlign(m_hDC, nFlags); }
    int GetROP2() const { return ::GetROP2(m_hDC); }
    int SetROP2(int nDrawMode) { return ::SetROP2(m_hDC, nDrawMode); }
    int GetPolyFillMode() const { return ::GetPolyFillMode(m_hDC); }
    int SetPolyFillMode(int nPolyFillMode) { return ::SetPolyFillMode(m_hDC, nPolyFillMode); }
    int GetStretchBltMode() const { return ::GetStretchBltMode(m_hDC); }
    int SetStretchBltMode(int nStretchMode) { return ::SetStretchBltMode(m_hDC, nStretchMode); }
    int GetMapMode() const { return ::GetMapMode(m_hDC); }

    /// Origins (GetViewportOrgEx and so on); each that moves one returns the former one.
    CPoint GetViewportOrg() const;
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
    virtual CPoint OffsetViewportOrg(int nWidth, int nHeight);
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point) { return SetWindowOrg(point.x, point.y); }
    CPoint OffsetWindowOrg(int nWidth, int nHeight);
    void LPtoDP(LPPOINT lpPoints, int nCount = 1) const { ::LPtoDP(m_hDC, lpPoints, nCount); }
    void LPtoDP(LPRECT lpRect) const { ::LPtoDP(m_hDC, reinterpret_cast<LPPOINT>(lpRect), 2); }
    void DPtoLP(LPPOINT lpPoints, int nCount = 1) const { ::DPtoLP(m_hDC, lpPoints, nCount); }
    void DPtoLP(LPRECT lpRect) const { ::DPtoLP(m_hDC, reinterpret_cast<LPPOINT>(lpRect), 2); }

    /// Clipping, each: the kind of what is left to draw on, or ERROR.
    virtual int GetClipBox(LPRECT lpRect) const { return ::GetClipBox(m_hDC, lpRect); }
    /// Null: no more clipping.
    int SelectClipRgn(CRgn* pRgn) { return ::SelectClipRgn(m_hDC, static_cast<HRGN>(kelgen::detail::HandleOf(pRgn))); }
    int IntersectClipRect(int x1, int y1, int x2, int y2) { return ::IntersectClipRect(m_hDC, x1, y1, x2, y2); }
    int IntersectClipRect(LPCRECT lpRect) { return IntersectClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    int ExcludeClipRect(int x1, int y1, int x2, int y2) { return ::ExcludeClipRect(m_hDC, x1, y1, x2, y2); }
    int ExcludeClipRect(LPCRECT lpRect) { return ExcludeClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL PtVisible(int x, int y) const { return ::PtVisible(m_hDC, x, y); }
    BOOL PtVisible(POINT point) const { return ::PtVisible(m_hDC, point.x, point.y); }
    BOOL RectVisible(LPCRECT lpRect) const { return ::RectVisible(m_hDC, lpRect); }

    /// Lines, each by the call of that name: FALSE on failure.
    /// Where they begin, by GetCurrentPositionEx.
    CPoint GetCurrentPosition() const;
    /// The former point, by MoveToEx.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) { return ::LineTo(m_hDC, point.x, point.y); }
    BOOL Polyline(const POINT* lpPoints, int nCount) { return ::Polyline(m_hDC, lpPoints, nCount); }
    BOOL PolylineTo(const POINT* lpPoints, int nCount) { return ::PolylineTo(m_hDC, lpPoints, static_cast<DWORD>(nCount)); }
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) { return ::Arc(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4); }
    BOOL Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd);

    /// Areas, each by the call of that name: FALSE on failure.
    void FillRect(LPCRECT lpRect, CBrush* pBrush) { ::FillRect(m_hDC, lpRect, BrushOf(pBrush)); }
    void FrameRect(LPCRECT lpRect, CBrush* pBrush) { ::FrameRect(m_hDC, lpRect, BrushOf(pBrush)); }
    void InvertRect(LPCRECT lpRect) { ::InvertRect(m_hDC, lpRect); }
    BOOL FillRgn(CRgn* pRgn, CBrush* pBrush)
    {
        return ::FillRgn(m_hDC, static_cast<HRGN>(kelgen::detail::HandleOf(pRgn)), BrushOf(pBrush));
    }
    BOOL PaintRgn(CRgn* pRgn) { return ::PaintRgn(m_hDC, static_cast<HRGN>(kelgen::detail::HandleOf(pRgn))); }
    /// Fills with a colour, without a brush: ExtTextOutA with ETO_OPAQUE and no text.
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    /// A frame of one pixel, by FillSolidRect: left and top in one colour, right and bottom in the other.
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight);
    BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags) { return ::DrawEdge(m_hDC, lpRect, nEdge, nFlags); }
    BOOL DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState) { return ::DrawFrameControl(m_hDC, lpRect, nType, nState); }
    void DrawFocusRect(LPCRECT lpRect) { ::DrawFocusRect(m_hDC, lpRect); }
    BOOL Rectangle(int x1, int y1, int x2, int y2) { return ::Rectangle(m_hDC, x1, y1, x2, y2); }
    BOOL Rectangle(LPCRECT lpRect) { return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL RoundRect(int x1, int y1, int x2, int y2, int x3, int y3) { return ::RoundRect(m_hDC, x1, y1, x2, y2, x3, y3); }
    BOOL RoundRect(LPCRECT lpRect, POINT point);
    BOOL Ellipse(int x1, int y1, int x2, int y2) { return ::Ellipse(m_hDC, x1, y1, x2, y2); }
    BOOL Ellipse(LPCRECT lpRect) { return Ellipse(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL Polygon(const POINT* lpPoints, int nCount) { return ::Polygon(m_hDC, lpPoints, nCount); }
    BOOL Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) { return ::Chord(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4); }
    BOOL Chord(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    BOOL Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4) { return ::Pie(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4); }
    BOOL Pie(LPCRECT lpRect, POINT ptStart, POINT ptEnd);

    /// Copies, pixels and icons, each by the call of that name: FALSE or CLR_INVALID on failure.
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) { return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop); }
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop);
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth, int nSrcHeight, DWORD dwRop);
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF GetPixel(POINT point) const { return ::GetPixel(m_hDC, point.x, point.y); }
    COLORREF SetPixel(int x, int y, COLORREF crColor) { return ::SetPixel(m_hDC, x, y, crColor); }
    COLORREF SetPixel(POINT point, COLORREF crColor) { return ::SetPixel(m_hDC, point.x, point.y, crColor); }
    BOOL SetPixelV(int x, int y, COLORREF crColor) { return ::SetPixelV(m_hDC, x, y, crColor); }
    BOOL DrawIcon(int x, int y, HICON hIcon) { return ::DrawIcon(m_hDC, x, y, hIcon); }
    BOOL DrawIcon(POINT point, HICON hIcon) { return ::DrawIcon(m_hDC, point.x, point.y, hIcon); }

    /// Texts, each by the call of that name: FALSE or 0 on failure.
    virtual BOOL TextOut(int x, int y, LPCSTR lpszString, int nCount) { return ::TextOutA(m_hDC, x, y, lpszString, nCount); }
    BOOL TextOut(int x, int y, const CString& str) { return TextOut(x, y, str, str.GetLength()); }
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCSTR lpszString, UINT nCount, LPINT lpDxWidths)
    {
        return ::ExtTextOutA(m_hDC, x, y, nOptions, lpRect, lpszString, nCount, lpDxWidths);
    }
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, LPINT lpDxWidths)
    {
        return ExtTextOut(x, y, nOptions, lpRect, str, static_cast<UINT>(str.GetLength()), lpDxWidths);
    }
    virtual int DrawText(LPCSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
    {
        return ::DrawTextA(m_hDC, lpszString, nCount, lpRect, nFormat);
    }
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat) { return DrawText(str, str.GetLength(), lpRect, nFormat); }
    /// The size of GetTextExtentPoint32A; zero on failure.
    CSize GetTextExtent(LPCSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const { return GetTextExtent(str, str.GetLength()); }
    BOOL GetTextMetrics(TEXTMETRICA* lpMetrics) const { return ::GetTextMetricsA(m_hDC, lpMetrics); }
    /// GetCharWidth32A: FALSE on failure.
    BOOL GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const
    {
        return ::GetCharWidth32A(m_hDC, nFirstChar, nLastChar, lpBuffer);
    }
    int GetTextFace(int nCount, LPSTR lpszFacename) const { return ::GetTextFaceA(m_hDC, nCount, lpszFacename); }
    int GetTextFace(CString& rString) const;

    /// The handle, or null.
    HDC m_hDC = nullptr;

private:
    HGDIOBJ Select(const CGdiObject* object) { return ::SelectObject(m_hDC, kelgen::detail::HandleOf(object)); }
    static HBRUSH BrushOf(const CBrush* brush) { return static_cast<HBRUSH>(kelgen::detail::HandleOf(brush)); }

    bool m_isMade = false;  // by CreateCompatibleDC
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

/// The context of a whole window, from the corner of its frame; null means the screen.
/// Throws: CResourceException when there is none.
class KELGEN_FRAMEWORK_API CWindowDC : public CDC
{
    DECLARE_DYNAMIC(CWindowDC)

public:
    /// Calls GetWindowDC.
    explicit CWindowDC(CWnd* pWnd);
    ~CWindowDC() override;

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
