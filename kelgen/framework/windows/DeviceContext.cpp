// DeviceContext.cpp: device contexts as objects.
#include <kelgen/framework/windows/DeviceContext.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/windows/Wnd.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>

using namespace kelgen::detail;

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)

namespace {

/// A point that a call stores.
template <class Call>
CPoint PointOf(Call call)
{
    POINT point{};
    call(&point);
    return point;
}

}  // namespace

CDC::~CDC()
{
    if (m_isMade)
        DeleteDC();
    else
        Detach();
}

BOOL CDC::Attach(HDC hDC)
{
    if (!hDC)
        return FALSE;
    ThreadMaps().contexts.SetPermanent(hDC, this);
    m_hDC = hDC;
    return TRUE;
}

HDC CDC::Detach()
{
    const HDC context = m_hDC;
    HandleMaps* const maps = ExistingThreadMaps();
    if (context && maps)
        maps->contexts.RemovePermanent(context, this);
    m_hDC = nullptr;
    m_isMade = false;
    return context;
}

CDC* CDC::FromHandle(HDC hDC)
{
    return ThreadMaps().contexts.Any(hDC);
}

void CDC::DeleteTempMap()
{
    if (HandleMaps* const maps = ExistingThreadMaps())
        maps->contexts.DeleteTemporary();
    CGdiObject::DeleteTempMap();
}

BOOL CDC::CreateCompatibleDC(CDC* pDC)
{
    m_isMade = Attach(::CreateCompatibleDC(HandleOf(pDC)));
    return m_isMade;
}

BOOL CDC::DeleteDC()
{
    return m_hDC ? ::DeleteDC(Detach()) : FALSE;
}

CWnd* CDC::GetWindow() const
{
    return CWnd::FromHandle(::WindowFromDC(m_hDC));
}

CPoint CDC::GetViewportOrg() const
{
    return PointOf([this](POINT* point) { ::GetViewportOrgEx(m_hDC, point); });
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    return PointOf([=, this](POINT* point) { ::SetViewportOrgEx(m_hDC, x, y, point); });
}

CPoint CDC::OffsetViewportOrg(int nWidth, int nHeight)
{
    return PointOf([=, this](POINT* point) { ::OffsetViewportOrgEx(m_hDC, nWidth, nHeight, point); });
}

CPoint CDC::GetWindowOrg() const
{
    return PointOf([this](POINT* point) { ::GetWindowOrgEx(m_hDC, point); });
}

CPoint CDC::SetWindowOrg(int x, int y)
{
    return PointOf([=, this](POINT* point) { ::SetWindowOrgEx(m_hDC, x, y, point); });
}

CPoint CDC::OffsetWindowOrg(int nWidth, int nHeight)
{
    return PointOf([=, this](POINT* point) { ::OffsetWindowOrgEx(m_hDC, nWidth, nHeight, point); });
}

CPoint CDC::GetCurrentPosition() const
{
    return PointOf([this](POINT* point) { ::GetCurrentPositionEx(m_hDC, point); });
}

CPoint CDC::MoveTo(int x, int y)
{
    return PointOf([=, this](POINT* point) { ::MoveToEx(m_hDC, x, y, point); });
}

BOOL CDC::Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return Arc(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}

BOOL CDC::Chord(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return Chord(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}

BOOL CDC::Pie(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return Pie(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y);
}

BOOL CDC::RoundRect(LPCRECT lpRect, POINT point)
{
    return RoundRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, point.x, point.y);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    const COLORREF before = ::SetBkColor(m_hDC, clr);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
    ::SetBkColor(m_hDC, before);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    const RECT area{x, y, x + cx, y + cy};
    FillSolidRect(&area, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, clrTopLeft, clrBottomRight);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
{
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, HandleOf(pSrcDC), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth, int nSrcHeight, DWORD dwRop)
{
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, HandleOf(pSrcDC), xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
}

CSize CDC::GetTextExtent(LPCSTR lpszString, int nCount) const
{
    SIZE size{};
    ::GetTextExtentPoint32A(m_hDC, lpszString, nCount, &size);
    return size;
}

int CDC::GetTextFace(CString& rString) const
{
    const int room = ::GetTextFaceA(m_hDC, 0, nullptr);
    const int length = ::GetTextFaceA(m_hDC, room, rString.GetBuffer(room));
    rString.ReleaseBuffer();
    return length;
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(HandleOf(pWnd))
{
    if (!Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    ::EndPaint(m_hWnd, &m_ps);
}

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(HandleOf(pWnd))
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(HandleOf(pWnd))
{
    if (!Attach(::GetWindowDC(m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}
