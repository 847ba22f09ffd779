// DeviceContext.cpp: device contexts as objects.
#include <kelgen/framework/windows/DeviceContext.h>

#include <kelgen/framework/base/Exceptions.h>
#include <kelgen/framework/windows/internal/HandleMapTypes.h>

using namespace kelgen::detail;

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CClientDC, CDC)

CDC::~CDC()
{
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
