// SettingsDialog.cpp: exchange between the settings, the dialog's members and its controls.
#include "SettingsDialog.h"

#include "FolderMonitor.h"
#include "Resource.h"
#include "Texts.h"

#include <kelgen/app/DDX.h>

CSettingsDialog::CSettingsDialog(CSettings& settings, CWnd* owner)
    : CAppDialog(IDD_SETTINGS, owner), m_settings(settings), m_owner(owner), m_folder(settings.GetText(CSettings::idFolder)),
      m_withSubfolders(settings.GetInteger(CSettings::idSubfolders)), m_mostFiles(settings.GetInteger(CSettings::idMostFiles)),
      m_language(settings.GetInteger(CSettings::idLanguage))
{}

BOOL CSettingsDialog::Open()
{
    return Create(MAKEINTRESOURCEA(IDD_SETTINGS), m_owner);
}

void CSettingsDialog::DoDataExchange(CDataExchange* pDX)
{
    CAppDialog::DoDataExchange(pDX);
    DDX_Text(pDX, IDC_FOLDER, m_folder);
    DDX_Check(pDX, IDC_SUBFOLDERS, m_withSubfolders);
    CDDX::DDXEdit(pDX, IDC_MOST_FILES, &m_mostFiles);
    CDDX::DDVEditIntegerRange(pDX, IDC_MOST_FILES, 1, CFolderMonitor::mostFiles);
    CDDX::DDXRadio(pDX, IDC_ENGLISH, texts::languageEnglish, &m_language);
    CDDX::DDXRadio(pDX, IDC_GERMAN, texts::languageGerman, &m_language);
}

void CSettingsDialog::OnOK()
{
    if (!UpdateData(TRUE))
        return;
    m_settings.Change(CSettings::idFolder, m_folder.GetString());
    m_settings.Change(CSettings::idSubfolders, m_withSubfolders != 0);
    m_settings.Change(CSettings::idMostFiles, m_mostFiles);
    m_settings.Change(CSettings::idLanguage, static_cast<int>(m_language));
    DestroyWindow();
}

void CSettingsDialog::OnCancel()
{
    DestroyWindow();
}
