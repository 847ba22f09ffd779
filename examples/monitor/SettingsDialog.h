// SettingsDialog.h: the modeless dialog in which the user sets what CSettings holds.
#pragma once

#include "Settings.h"

#include <kelgen/app/AppDialog.h>

/// Made with new; it deletes itself with its window, or when Open() fails.
class CSettingsDialog : public CAppDialog
{
public:
    CSettingsDialog(CSettings& settings, CWnd* owner);

    /// FALSE when the dialog's resource is missing or damaged; the object is then gone.
    BOOL Open();

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    /// Stores what is entered, unless some of it makes no sense: then the field in question has the focus.
    void OnOK() override;
    void OnCancel() override;

private:
    CSettings& m_settings;
    CWnd* m_owner;
    CString m_folder;
    int m_withSubfolders;
    int m_mostFiles;
    LONG m_language;
};
