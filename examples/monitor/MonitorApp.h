// MonitorApp.h: the application object: reads arguments and settings, owns the frame and the monitor, and brings them together.
#pragma once

#include "Arguments.h"
#include "FolderMonitor.h"
#include "MainFrame.h"
#include "Settings.h"

#include <kelgen/app/App.h>

class CMonitorApp : public CKelGenApp,
                    public CTrackable,
                    private CMonitorEvents,
                    private CCompletionReportListener,
                    private gen::CPropertySetListener
{
public:
    CMonitorApp();
    ~CMonitorApp() override;

    BOOL InitInstance() override;
    /// Scans piece by piece while no message waits.
    BOOL OnIdle(LONG lCount) override;
    int ExitInstance() override;
    /// The INI file of the arguments, or else where the base finds one.
    void CalcIniFilePathName(CString& path) override;
    void OnAppLanguage(UINT wParam, LPARAM lParam) override;

    CSettings& GetSettings() { return m_settings; }
    CMainFrame* GetFrame() { return m_frame.get(); }
    CFolderMonitor& GetMonitor() { return m_monitor; }

protected:
    void OnFileRescan();

    DECLARE_MESSAGE_MAP()

private:
    void OnFileEvent(CWatchedFile& file, EFileEvent event) override;
    void OnNote(const CString& text) override;
    void OnCompletionReport(UINT nTaskId, double dProgress) override;
    void OnPropertyValueChange(gen::CPropertySet* set, gen::CProperty* property) override;

    BOOL Fail(int exitCode, const CString& text);
    bool ReadSettings();
    bool ReadIni(CStrArray& complaints);
    bool BeginScan(CString& error);
    BOOL RunOnce();
    void Rescan(UINT wParam, LPARAM lParam);
    void ShowTotals();

    CMonitorArguments m_arguments;
    CSettings m_settings;
    CFolderMonitor m_monitor;
    std::unique_ptr<CMainFrame> m_frame;
    int m_exitCode = 0;
    bool m_isRescanDue = false;
    bool m_isClosing = false;
    DWORD m_lastProgress = 0;
};
