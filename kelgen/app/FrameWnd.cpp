// FrameWnd.cpp: the three frame classes.
#include <kelgen/app/FrameWnd.h>

#include <kelgen/framework/frames/DocTemplate.h>
#include <kelgen/framework/program/ModuleState.h>

#define KELGEN_FRAME_MESSAGES()                                                                                                            \
    ON_WM_CREATE()                                                                                                                         \
    ON_WM_DESTROY()                                                                                                                        \
    ON_WM_CLOSE()                                                                                                                          \
    ON_WM_NCDESTROY()                                                                                                                      \
    ON_MESSAGE(CKelGenApp::APPM_LANGUAGE, &ThisClass::OnAppLanguage)

IMPLEMENT_DYNCREATE(CKelGenFrameWnd, CFrameWnd)
IMPLEMENT_DYNCREATE(CKelGenMDIFrameWnd, CMDIFrameWnd)
IMPLEMENT_DYNCREATE(CKelGenMDIChildWnd, CMDIChildWnd)

BEGIN_MESSAGE_MAP(CKelGenFrameWnd, CFrameWnd)
KELGEN_FRAME_MESSAGES()
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CKelGenMDIFrameWnd, CMDIFrameWnd)
KELGEN_FRAME_MESSAGES()
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CKelGenMDIChildWnd, CMDIChildWnd)
KELGEN_FRAME_MESSAGES()
END_MESSAGE_MAP()

CKelGenFrameWnd::CKelGenFrameWnd() = default;

CKelGenFrameWnd::~CKelGenFrameWnd()
{
    LeaveWindow();
}

BOOL CKelGenFrameWnd::LoadFrame(UINT nIDResource, DWORD style, CWnd* pParent, CCreateContext* pContext)
{
    return CFrameWnd::LoadFrame(nIDResource, style, pParent, pContext) && KelGenPosLoadFrame(nIDResource, style, pParent, pContext);
}

bool CKelGenFrameWnd::_000AfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (C000WndInterface::_000AfterWindowProc(message, wParam, lParam, result))
        return true;
    if (message == WM_CLOSE)
        KelGenOnCloseAfter();
    return false;
}

int CKelGenFrameWnd::OnCreate(LPCREATESTRUCTA pCreate)
{
    return Created(CFrameWnd::OnCreate(pCreate), pCreate);
}

void CKelGenFrameWnd::OnDestroy()
{
    KelGenOnDestroy();
    CFrameWnd::OnDestroy();
}

CKelGenMDIFrameWnd::CKelGenMDIFrameWnd() = default;

CKelGenMDIFrameWnd::~CKelGenMDIFrameWnd()
{
    LeaveWindow();
}

BOOL CKelGenMDIFrameWnd::LoadFrame(UINT nIDResource, DWORD style, CWnd* pParent, CCreateContext* pContext)
{
    return CMDIFrameWnd::LoadFrame(nIDResource, style, pParent, pContext) && KelGenPosLoadFrame(nIDResource, style, pParent, pContext);
}

int CKelGenMDIFrameWnd::OnCreate(LPCREATESTRUCTA pCreate)
{
    return Created(CMDIFrameWnd::OnCreate(pCreate), pCreate);
}

void CKelGenMDIFrameWnd::OnDestroy()
{
    KelGenOnDestroy();
    CMDIFrameWnd::OnDestroy();
}

CKelGenMDIChildWnd::CKelGenMDIChildWnd() = default;

CKelGenMDIChildWnd::~CKelGenMDIChildWnd()
{
    LeaveWindow();
}

BOOL CKelGenMDIChildWnd::LoadFrame(UINT nIDResource, DWORD style, CWnd* pParent, CCreateContext* pContext)
{
    m_nIDHelp = nIDResource;
    style |= WS_CHILD;
    if (pContext && pContext->m_pNewDocTemplate) {
        if (const auto* const kind = dynamic_cast<CMultiDocTemplate*>(pContext->m_pNewDocTemplate)) {
            m_hMenuShared = kind->m_hMenuShared;
            m_hAccelTable = kind->m_hAccelTable;
        }
    }
    CString full;
    CString title;
    if (full.LoadString(nIDResource))
        AfxExtractSubString(title, full, 0);
    if (!Create(GetIconWndClass(style, nIDResource), title, style, rectDefault, dynamic_cast<CMDIFrameWnd*>(pParent), pContext))
        return FALSE;
    KelGenPosLoadFrame(nIDResource, style, pParent, pContext);
    return TRUE;
}

bool CKelGenMDIChildWnd::_000AfterWindowProc(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (C000WndInterface::_000AfterWindowProc(message, wParam, lParam, result))
        return true;
    if (message == WM_CLOSE)
        KelGenOnCloseAfter();
    return false;
}

int CKelGenMDIChildWnd::OnCreate(LPCREATESTRUCTA pCreate)
{
    return Created(GetParent() ? CMDIChildWnd::OnCreate(pCreate) : CFrameWnd::OnCreate(pCreate), pCreate);
}

void CKelGenMDIChildWnd::OnDestroy()
{
    KelGenOnDestroy();
    if (GetParent())
        CMDIChildWnd::OnDestroy();
    else
        CFrameWnd::OnDestroy();
}
