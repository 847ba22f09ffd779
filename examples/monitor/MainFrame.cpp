// MainFrame.cpp: the frame's windows, commands, place and language.
#include "MainFrame.h"

#include "Console.h"
#include "Resource.h"
#include "SettingsDialog.h"
#include "Texts.h"

#include <kelgen/framework/windows/CmdUI.h>
#include <kelgen/framework/windows/Menu.h>

namespace {

constexpr int kStatusHeight = 20;
constexpr UINT kStatusId = 1;

}  // namespace

BEGIN_MESSAGE_MAP(CMainFrame, CKelGenFrameWnd)
ON_COMMAND(ID_FILE_SETTINGS, &CMainFrame::OnFileSettings)
ON_COMMAND_RANGE(ID_LANGUAGE_FIRST, ID_LANGUAGE_LAST, &CMainFrame::OnLanguage)
ON_UPDATE_COMMAND_UI_RANGE(ID_LANGUAGE_FIRST, ID_LANGUAGE_LAST, &CMainFrame::OnUpdateLanguage)
END_MESSAGE_MAP()

BOOL CMainFrame::Open(int showCommand)
{
    if (!LoadFrame(IDR_MAIN))
        return FALSE;
    const int left = m_settings.GetInteger(CSettings::idLeft);
    const int top = m_settings.GetInteger(CSettings::idTop);
    const int width = m_settings.GetInteger(CSettings::idWidth);
    const int height = m_settings.GetInteger(CSettings::idHeight);
    // Of a screen that is no longer there nothing is known: only a place on this one is taken.
    const bool isOnScreen =
        left > -width && top >= 0 && left < ::GetSystemMetrics(SM_CXSCREEN) - 50 && top < ::GetSystemMetrics(SM_CYSCREEN) - 50;
    SetWindowPos(nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE | (isOnScreen ? 0 : SWP_NOMOVE));
    ShowWindow(showCommand);
    UpdateWindow();
    return TRUE;
}

void CMainFrame::ShowFolder(const CString& folder)
{
    SetTitle(texts::Text(IDR_MAIN) + " - " + folder);
    OnUpdateFrameTitle(FALSE);
}

void CMainFrame::ShowProgress(double part, int files)
{
    CString text;
    text.Format(texts::Text(IDS_SCANNING), static_cast<int>(part * 100), files);
    m_status.SetWindowText(text);
}

void CMainFrame::ShowTotals(int files, int folders)
{
    CString text;
    text.Format(texts::Text(IDS_WATCHING), files, folders);
    m_status.SetWindowText(text);
}

void CMainFrame::ShowNote(const CString& text)
{
    m_status.SetWindowText(text);
}

BOOL CMainFrame::OnCreateClient(LPCREATESTRUCTA, CCreateContext*)
{
    if (!m_list.CreateIn(this, AFX_IDW_PANE_FIRST) ||
        !m_status.Create("", WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP, CRect(0, 0, 0, 0), this, kStatusId))
        return FALSE;
    // The list has the font of the desktop, a plain control the one of old terminals.
    m_status.SendMessage(WM_SETFONT, static_cast<WPARAM>(m_list.SendMessage(WM_GETFONT)), FALSE);
    return TRUE;
}

void CMainFrame::RecalcLayout(BOOL bNotify)
{
    // The base gives the list what is left above the line.
    m_rectBorder.bottom = kStatusHeight;
    CKelGenFrameWnd::RecalcLayout(bNotify);
    if (!m_status.m_hWnd)
        return;
    CRect client;
    GetClientRect(&client);
    m_status.MoveWindow(6, client.bottom - kStatusHeight + 3, client.right - 12, kStatusHeight - 3);
}

void CMainFrame::KelGenOnClose()
{
    KeepPlace();
    if (!m_settings.Save())
        console::Complain("the registry does not take the settings");
    CKelGenFrameWnd::KelGenOnClose();
}

LRESULT CMainFrame::OnAppLanguage(UINT, LPARAM)
{
    CMenu menu;
    if (menu.LoadMenu(IDR_MAIN)) {
        const HMENU before = m_hMenuDefault;
        m_hMenuDefault = menu.Detach();
        ::SetMenu(m_hWnd, m_hMenuDefault);
        ::DestroyMenu(before);
    }
    if (::IsWindow(m_dialog)) {
        ::DestroyWindow(m_dialog);
        OnFileSettings();
    }
    return 0;
}

void CMainFrame::OnFileSettings()
{
    if (::IsWindow(m_dialog)) {
        ::SetActiveWindow(m_dialog);
        return;
    }
    const auto dialog = new CSettingsDialog(m_settings, this);
    if (dialog->Open()) {
        m_dialog = dialog->m_hWnd;
        return;
    }
    const CString text = texts::Text(IDS_NO_DIALOG);
    console::Complain(text);
    ShowNote(text);
}

void CMainFrame::OnLanguage(UINT id)
{
    m_settings.Change(CSettings::idLanguage, static_cast<int>(id - ID_LANGUAGE_FIRST));
}

void CMainFrame::OnUpdateLanguage(CCmdUI* item)
{
    item->SetRadio(static_cast<int>(item->m_nID - ID_LANGUAGE_FIRST) == m_settings.GetInteger(CSettings::idLanguage));
}

void CMainFrame::KeepPlace()
{
    if (IsIconic() || IsZoomed())
        return;
    CRect place;
    GetWindowRect(&place);
    m_settings.Change(CSettings::idLeft, static_cast<int>(place.left));
    m_settings.Change(CSettings::idTop, static_cast<int>(place.top));
    m_settings.Change(CSettings::idWidth, static_cast<int>(place.right - place.left));
    m_settings.Change(CSettings::idHeight, static_cast<int>(place.bottom - place.top));
}
