// WndArray.h: the application's frame windows, as a list.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparableArray.h>

class CMDIFrameWnd;
class CWnd;

/// Frame windows, which it does not own.
class KELGEN_API CKelGenWndArray
{
public:
    virtual ~CKelGenWndArray();

    /// Copies the list; nothing when @p out is this list itself.
    void GetWndArray(CBaseArray<CWnd*, CWnd*>& out) const;
    /// By contract: null, whatever frames there are, so a host finds the MDI frame by other means.
    CMDIFrameWnd* GetMDIFrame() const;

protected:
    /// The list itself, in the order in which the frames were made; the windows are not owned.
    CBaseObjectPtrArray<CWnd*>& GetWndArray() { return m_frames; }
    const CBaseObjectPtrArray<CWnd*>& GetWndArray() const { return m_frames; }

private:
    CBaseObjectPtrArray<CWnd*> m_frames;
};

/// A list of main windows.
class KELGEN_API CKelGenMainWndArray : public CBaseArray<CWnd*, CWnd*>
{};
