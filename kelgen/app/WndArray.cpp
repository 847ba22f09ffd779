// WndArray.cpp: the application's frame windows, as a list.
#include <kelgen/app/WndArray.h>

CKelGenWndArray::~CKelGenWndArray() = default;

void CKelGenWndArray::GetWndArray(CBaseArray<CWnd*, CWnd*>& out) const
{
    if (&out != &m_frames)
        out.Copy(m_frames);
}

CMDIFrameWnd* CKelGenWndArray::GetMDIFrame() const
{
    return nullptr;
}
