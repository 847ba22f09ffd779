// MainFrame.h: the main window: a menu, the list of files, and a line that says what is going on.
#pragma once

#include "FileListCtrl.h"
#include "Settings.h"

#include <kelgen/app/FrameWnd.h>
#include <kelgen/framework/dialogs/Controls.h>

class CMainFrame : public CKelGenFrameWnd
{
public:
    explicit CMainFrame(CSettings& settings) : m_settings(settings) {}

    /// FALSE when a resource is missing.
    BOOL Open(int showCommand);
    CFileListCtrl& GetList() { return m_list; }
    /// The folder is part of the title.
    void ShowFolder(const CString& folder);
    /// While files are scanned; @p part lies between 0 and 1.
    void ShowProgress(double part, int files);
    void ShowTotals(int files, int folders);
    void ShowNote(const CString& text);

    BOOL OnCreateClient(LPCREATESTRUCTA lpcs, CCreateContext* pContext) override;
    void RecalcLayout(BOOL bNotify = TRUE) override;
    /// Keeps the window's place and saves the settings.
    void KelGenOnClose() override;
    LRESULT OnAppLanguage(UINT wParam, LPARAM lParam) override;
    /// The application owns the frame.
    void PostNcDestroy() override {}

protected:
    void OnFileSettings();
    void OnLanguage(UINT id);
    void OnUpdateLanguage(CCmdUI* item);

    DECLARE_MESSAGE_MAP()

private:
    void KeepPlace();

    CSettings& m_settings;
    CFileListCtrl m_list;
    CStatic m_status;
    HWND m_dialog = nullptr;
};
