// GdiObjects.h: pens, brushes, fonts, bitmaps and regions as objects.
#pragma once

#include <kelgen/framework/base/Geometry.h>
#include <kelgen/framework/base/Object.h>
#include <kelgen/platform/Win32.h>

#include <cstdint>

class CDC;

/// A drawing object, which is deleted with this one. Select it out of its device contexts before.
///
///     CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
///     CPen* const before = dc.SelectObject(&pen);
///     dc.LineTo(100, 100);
///     dc.SelectObject(before);
///
/// A member with the name of a platform call makes that call; where it is another one, its comment names it.
/// Threads: an object belongs to the thread that attached its handle.
class KELGEN_FRAMEWORK_API CGdiObject : public CObject
{
    DECLARE_DYNCREATE(CGdiObject)

public:
    /// An object without a handle.
    CGdiObject() = default;
    ~CGdiObject() override;

    /// The thread's object of the handle: the permanent one, or else a temporary one of the handle's own class, which lives until the
    /// thread idles. Null for null.
    static CGdiObject* FromHandle(HGDIOBJ hObject);
    /// Deletes the thread's temporary objects. The thread does it itself when it idles.
    static void DeleteTempMap();
    /// Makes this the thread's permanent object of the handle. FALSE for null.
    BOOL Attach(HGDIOBJ hObject);
    /// Parts the object from its handle and returns it; null if there was none.
    HGDIOBJ Detach();
    /// Deletes what the handle stands for, too. FALSE without a handle.
    BOOL DeleteObject();
    /// The handle; null if there is none, even when called through a null object (hosts do so).
    HGDIOBJ GetSafeHandle() const { return reinterpret_cast<std::uintptr_t>(this) == 0 ? nullptr : m_hObject; }
    /// Fills a LOGPEN, LOGBRUSH, LOGFONT or BITMAP; how many bytes, 0 on failure.
    int GetObject(int nCount, LPVOID lpObject) const { return ::GetObjectA(m_hObject, nCount, lpObject); }
    /// An OBJ_ number; 0 on failure.
    UINT GetObjectType() const { return static_cast<UINT>(::GetObjectType(m_hObject)); }
    /// Attaches one of the system's own objects (GetStockObject), which is never deleted. FALSE when there is none of that number.
    BOOL CreateStockObject(int nIndex) { return Attach(::GetStockObject(nIndex)); }

    bool operator==(const CGdiObject& other) const { return m_hObject == other.m_hObject; }
    bool operator!=(const CGdiObject& other) const { return m_hObject != other.m_hObject; }

    /// The handle, or null.
    HGDIOBJ m_hObject = nullptr;
};

/// A pen for lines and outlines.
class KELGEN_FRAMEWORK_API CPen : public CGdiObject
{
    DECLARE_DYNAMIC(CPen)

public:
    CPen() = default;
    /// CreatePen. Throws: CResourceException on failure.
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    /// CGdiObject::FromHandle; null when that is no pen.
    static CPen* FromHandle(HPEN hPen) { return dynamic_cast<CPen*>(CGdiObject::FromHandle(hPen)); }
    /// Each: FALSE on failure.
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor) { return Attach(::CreatePen(nPenStyle, nWidth, crColor)); }
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen) { return Attach(::CreatePenIndirect(lpLogPen)); }
    /// GetObjectA for a LOGPEN: FALSE on failure.
    BOOL GetLogPen(LOGPEN* pLogPen) const { return GetObject(sizeof *pLogPen, pLogPen) != 0; }
    operator HPEN() const { return static_cast<HPEN>(GetSafeHandle()); }
};

/// A brush for areas.
class KELGEN_FRAMEWORK_API CBrush : public CGdiObject
{
    DECLARE_DYNAMIC(CBrush)

public:
    CBrush() = default;
    /// Each by CreateSolidBrush or CreateHatchBrush. Throws: CResourceException on failure.
    explicit CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor);
    /// CGdiObject::FromHandle; null when that is no brush.
    static CBrush* FromHandle(HBRUSH hBrush) { return dynamic_cast<CBrush*>(CGdiObject::FromHandle(hBrush)); }
    /// Each: FALSE on failure.
    BOOL CreateSolidBrush(COLORREF crColor) { return Attach(::CreateSolidBrush(crColor)); }
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor) { return Attach(::CreateHatchBrush(nIndex, crColor)); }
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush) { return Attach(::CreateBrushIndirect(lpLogBrush)); }
    /// A brush of a colour of the desktop, by GetSysColorBrush.
    BOOL CreateSysColorBrush(int nIndex) { return Attach(::GetSysColorBrush(nIndex)); }
    /// GetObjectA for a LOGBRUSH: FALSE on failure.
    BOOL GetLogBrush(LOGBRUSH* pLogBrush) const { return GetObject(sizeof *pLogBrush, pLogBrush) != 0; }
    operator HBRUSH() const { return static_cast<HBRUSH>(GetSafeHandle()); }
};

/// A font.
class KELGEN_FRAMEWORK_API CFont : public CGdiObject
{
    DECLARE_DYNAMIC(CFont)

public:
    CFont() = default;
    /// CGdiObject::FromHandle; null when that is no font.
    static CFont* FromHandle(HFONT hFont) { return dynamic_cast<CFont*>(CGdiObject::FromHandle(hFont)); }
    /// Each: FALSE on failure.
    BOOL CreateFontIndirect(const LOGFONTA* lpLogFont) { return Attach(::CreateFontIndirectA(lpLogFont)); }
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic, BYTE bUnderline, BYTE cStrikeOut,
                    BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision, BYTE nQuality, BYTE nPitchAndFamily, LPCSTR lpszFacename);
    /// A font of that many tenths of a point, by CreateFontA, as high as @p pDC has pixels for it; null stands for the screen.
    /// FALSE on failure.
    BOOL CreatePointFont(int nPointSize, LPCSTR lpszFaceName, CDC* pDC = nullptr);
    /// GetObjectA for a LOGFONTA: FALSE on failure.
    BOOL GetLogFont(LOGFONTA* pLogFont) const { return ::GetObjectA(m_hObject, sizeof *pLogFont, pLogFont) != 0; }
    operator HFONT() const { return static_cast<HFONT>(GetSafeHandle()); }
};

/// A bitmap.
class KELGEN_FRAMEWORK_API CBitmap : public CGdiObject
{
    DECLARE_DYNAMIC(CBitmap)

public:
    CBitmap() = default;
    /// CGdiObject::FromHandle; null when that is no bitmap.
    static CBitmap* FromHandle(HBITMAP hBitmap) { return dynamic_cast<CBitmap*>(CGdiObject::FromHandle(hBitmap)); }
    /// Each: FALSE on failure.
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
    {
        return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
    }
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
    /// A bitmap resource of the program, by LoadImageA. FALSE when there is none.
    BOOL LoadBitmap(LPCSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource) { return LoadBitmap(MAKEINTRESOURCEA(nIDResource)); }
    /// GetObjectA for a BITMAP: FALSE on failure.
    BOOL GetBitmap(BITMAP* pBitMap) const { return GetObject(sizeof *pBitMap, pBitMap) != 0; }
    operator HBITMAP() const { return static_cast<HBITMAP>(GetSafeHandle()); }
};

/// An area of any shape. Kinds of regions are SIMPLEREGION and so on; ERROR on failure.
class KELGEN_FRAMEWORK_API CRgn : public CGdiObject
{
    DECLARE_DYNAMIC(CRgn)

public:
    CRgn() = default;
    /// CGdiObject::FromHandle; null when that is no region.
    static CRgn* FromHandle(HRGN hRgn) { return dynamic_cast<CRgn*>(CGdiObject::FromHandle(hRgn)); }
    /// Each: FALSE on failure.
    BOOL CreateRectRgn(int x1, int y1, int x2, int y2) { return Attach(::CreateRectRgn(x1, y1, x2, y2)); }
    BOOL CreateRectRgnIndirect(LPCRECT lpRect) { return Attach(::CreateRectRgnIndirect(lpRect)); }
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2) { return Attach(::CreateEllipticRgn(x1, y1, x2, y2)); }
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect) { return Attach(::CreateEllipticRgnIndirect(lpRect)); }
    BOOL CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3) { return Attach(::CreateRoundRectRgn(x1, y1, x2, y2, x3, y3)); }
    /// Makes it the rectangle.
    void SetRectRgn(int x1, int y1, int x2, int y2) { ::SetRectRgn(*this, x1, y1, x2, y2); }
    void SetRectRgn(LPCRECT lpRect) { SetRectRgn(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    /// Makes this one, which has a handle already, what an RGN_ mode makes of the two: its kind.
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode)
    {
        return ::CombineRgn(*this, HandleOf(pRgn1), HandleOf(pRgn2), nCombineMode);
    }
    /// Makes this one, which has a handle already, a copy by CombineRgn: its kind.
    int CopyRgn(const CRgn* pRgnSrc) { return ::CombineRgn(*this, HandleOf(pRgnSrc), nullptr, RGN_COPY); }
    BOOL EqualRgn(const CRgn* pRgn) const { return ::EqualRgn(*this, HandleOf(pRgn)); }
    /// Moves it: its kind.
    int OffsetRgn(int x, int y) { return ::OffsetRgn(*this, x, y); }
    int OffsetRgn(POINT point) { return ::OffsetRgn(*this, point.x, point.y); }
    /// The smallest rectangle around it: its kind.
    int GetRgnBox(LPRECT lpRect) const { return ::GetRgnBox(*this, lpRect); }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(*this, x, y); }
    BOOL PtInRegion(POINT point) const { return ::PtInRegion(*this, point.x, point.y); }
    BOOL RectInRegion(LPCRECT lpRect) const { return ::RectInRegion(*this, lpRect); }
    operator HRGN() const { return static_cast<HRGN>(GetSafeHandle()); }

private:
    static HRGN HandleOf(const CRgn* region) { return region ? static_cast<HRGN>(region->m_hObject) : nullptr; }
};

namespace kelgen::detail {

/// The object's handle; null for a null object, without a call through it.
inline HGDIOBJ HandleOf(const CGdiObject* object)
{
    return object ? object->m_hObject : nullptr;
}

}  // namespace kelgen::detail
