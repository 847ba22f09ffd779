// GdiObjects.cpp: pens, brushes, fonts, bitmaps and regions as objects.
#include <kelgen/framework/windows/GdiObjects.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/program/ModuleState.h>
#include <kelgen/framework/windows/DeviceContext.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>

using namespace kelgen::detail;

IMPLEMENT_DYNCREATE(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace {

CGdiObject* NewObjectOf(HGDIOBJ handle)
{
    switch (::GetObjectType(handle)) {
    case OBJ_PEN:
        return new CPen;
    case OBJ_BRUSH:
        return new CBrush;
    case OBJ_FONT:
        return new CFont;
    case OBJ_BITMAP:
        return new CBitmap;
    case OBJ_REGION:
        return new CRgn;
    default:
        return new CGdiObject;
    }
}

}  // namespace

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ hObject)
{
    return ThreadMaps().drawing.Any(hObject, NewObjectOf);
}

void CGdiObject::DeleteTempMap()
{
    if (HandleMaps* const maps = ExistingThreadMaps())
        maps->drawing.DeleteTemporary();
}

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    if (!hObject)
        return FALSE;
    ThreadMaps().drawing.SetPermanent(hObject, this);
    m_hObject = hObject;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    const HGDIOBJ object = m_hObject;
    HandleMaps* const maps = ExistingThreadMaps();
    if (object && maps)
        maps->drawing.RemovePermanent(object, this);
    m_hObject = nullptr;
    return object;
}

BOOL CGdiObject::DeleteObject()
{
    return m_hObject ? ::DeleteObject(Detach()) : FALSE;
}

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    if (!CreatePen(nPenStyle, nWidth, crColor))
        AfxThrowResourceException();
}

CBrush::CBrush(COLORREF crColor)
{
    if (!CreateSolidBrush(crColor))
        AfxThrowResourceException();
}

CBrush::CBrush(int nIndex, COLORREF crColor)
{
    if (!CreateHatchBrush(nIndex, crColor))
        AfxThrowResourceException();
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic, BYTE bUnderline,
                       BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision, BYTE nQuality, BYTE nPitchAndFamily,
                       LPCSTR lpszFacename)
{
    return Attach(::CreateFontA(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline, cStrikeOut, nCharSet,
                                nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily, lpszFacename));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCSTR lpszFaceName, CDC* pDC)
{
    const HDC screen = pDC ? nullptr : ::GetDC(nullptr);
    const int inch = ::GetDeviceCaps(pDC ? pDC->m_hDC : screen, LOGPIXELSY);
    if (screen)
        ::ReleaseDC(nullptr, screen);
    // 720 tenths of a point are an inch.
    return CreateFont(-((nPointSize * inch + 360) / 720), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                      CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, lpszFaceName);
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return Attach(::CreateCompatibleBitmap(HandleOf(pDC), nWidth, nHeight));
}

BOOL CBitmap::LoadBitmap(LPCSTR lpszResourceName)
{
    return Attach(::LoadImageA(AfxGetResourceHandle(), lpszResourceName, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
}
