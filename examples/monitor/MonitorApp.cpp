// MonitorApp.cpp: the program's course. Read InitInstance first.
#include "MonitorApp.h"

#include "Console.h"
#include "Interrupt.h"
#include "Resource.h"
#include "Texts.h"

#include <kelgen/persistence/IniFile.h>

#include <algorithm>

namespace {

// A message to the thread itself: the folder is to be scanned anew.
constexpr UINT kRescan = WM_APP + 10;
constexpr DWORD kProgressEvery = 250;
constexpr int kExitUsage = 2;
constexpr char kUsage[] = "usage: monitor [--once] [FOLDER | FILE.ini]";

CString FolderOf(const CString& path)
{
    const CString full = FullPath(path);
    return full.Left(full.ReverseFind('\\'));
}

}  // namespace

BEGIN_MESSAGE_MAP(CMonitorApp, CKelGenApp)
ON_COMMAND(ID_FILE_RESCAN, &CMonitorApp::OnFileRescan)
END_MESSAGE_MAP()

CMonitorApp::CMonitorApp() : CKelGenApp("kelgen monitor"), m_monitor(*this) {}

CMonitorApp::~CMonitorApp()
{
    m_settings.RemoveListener(this);
}

BOOL CMonitorApp::InitInstance()
{
    interrupt::Catch();
    if (!CKelGenApp::InitInstance())
        return Fail(1, "cannot start");
    ParseCommandLine(m_arguments);
    if (!m_arguments.m_error.IsEmpty()) {
        console::Complain(m_arguments.m_error);
        return Fail(kExitUsage, kUsage);
    }
    if (!ReadSettings())
        return FALSE;
    texts::SetLanguage(m_settings.GetInteger(CSettings::idLanguage));
    ReportCompletionScriptStart();
    ReportCompletionScriptAttachSource(&m_monitor.GetScanner());
    if (m_arguments.m_isOnce)
        return RunOnce();

    m_frame = std::make_unique<CMainFrame>(m_settings);
    if (!m_frame->Open(m_nCmdShow))
        return Fail(1, "cannot open the main window");
    m_pMainWnd = m_frame.get();
    m_settings.AddListener(this);
    AddFunction(kRescan, this, &CMonitorApp::Rescan);
    CString error;
    if (!BeginScan(error))
        return Fail(1, error);
    console::Line("watching " + m_monitor.GetRoot());
    return m_monitor.Watch() ? TRUE : Fail(1, "cannot watch");
}

/// The command line before the registry, the registry before the INI file that lies beside the program or in the current folder.
bool CMonitorApp::ReadSettings()
{
    CStrArray complaints;
    const bool isIniGiven = !m_arguments.m_iniPath.IsEmpty();
    if (!isIniGiven && !ReadIni(complaints))
        return false;
    const CString folderOfIni = m_settings.GetText(CSettings::idFolder);
    const bool isRemembered = m_settings.Load(complaints);
    if (isIniGiven && !ReadIni(complaints))
        return false;
    if (!m_arguments.m_folder.IsEmpty()) {
        m_settings.Change(CSettings::idFolder, m_arguments.m_folder.GetString());
    } else if (FolderTime(m_settings.GetText(CSettings::idFolder)) == 0 && !isIniGiven && FolderTime(folderOfIni) != 0) {
        complaints.Add("the folder of the last run has gone: " + m_settings.GetText(CSettings::idFolder));
        m_settings.Change(CSettings::idFolder, folderOfIni.GetString());
    }
    // The next run may begin in another folder.
    m_settings.Change(CSettings::idFolder, FullPath(m_settings.GetText(CSettings::idFolder)).GetString());
    for (int i = 0; i < complaints.GetSize(); ++i)
        console::Complain(complaints[i]);
    if (isRemembered)
        console::Line(CString("settings remembered in HKEY_CURRENT_USER\\") + CSettings::registryKey);
    return true;
}

bool CMonitorApp::ReadIni(CStrArray& complaints)
{
    CString path;
    GetIniFilePathName(path);
    if (path.IsEmpty())
        return true;
    _kelgen::CIniFile ini;
    if (!ini.LoadFile(path) && !m_arguments.m_iniPath.IsEmpty())
        return Fail(1, "cannot read the INI file " + path) != FALSE;
    m_settings.ReadIni(ini, FolderOf(path), complaints);
    return true;
}

void CMonitorApp::CalcIniFilePathName(CString& path)
{
    path = m_arguments.m_iniPath;
    if (path.IsEmpty())
        CKelGenApp::CalcIniFilePathName(path);
}

bool CMonitorApp::BeginScan(CString& error)
{
    // A short scan needs no progress, only its end.
    m_lastProgress = ::GetTickCount();
    if (!m_monitor.Begin(m_settings.GetText(CSettings::idFolder), m_settings.IsSet(CSettings::idSubfolders),
                         m_settings.GetInteger(CSettings::idMostFiles), error))
        return false;
    if (m_frame) {
        m_frame->GetList().Clear();
        m_frame->ShowFolder(m_monitor.GetRoot());
    }
    return true;
}

/// Without windows: every file, then the end.
BOOL CMonitorApp::RunOnce()
{
    CString error;
    if (!BeginScan(error))
        return Fail(1, error);
    while (m_monitor.Step()) {
        if (interrupt::HasCome())
            return Fail(1, "interrupted");
    }
    for (const auto& file : m_monitor.GetFiles()) {
        if (file->IsPresent())
            console::Event(*file, EFileEvent::found);
    }
    // A program without a main window ends at once.
    return TRUE;
}

BOOL CMonitorApp::OnIdle(LONG lCount)
{
    if (interrupt::HasCome() && !m_isClosing && m_pMainWnd) {
        m_isClosing = true;
        m_pMainWnd->PostMessage(WM_CLOSE);
    }
    const bool isScanning = m_monitor.Step();
    return CKelGenApp::OnIdle(lCount) || isScanning;
}

int CMonitorApp::ExitInstance()
{
    m_monitor.End();
    m_pMainWnd = nullptr;
    m_frame.reset();
    const int exitCode = CKelGenApp::ExitInstance();
    return m_exitCode ? m_exitCode : exitCode;
}

void CMonitorApp::OnFileEvent(CWatchedFile& file, EFileEvent event)
{
    if (event != EFileEvent::found)
        console::Event(file, event);
    if (!m_frame)
        return;
    m_frame->GetList().Show(file);
    if (m_monitor.GetScanner().IsDone())
        ShowTotals();
}

void CMonitorApp::OnNote(const CString& text)
{
    console::Complain(text);
    if (m_frame)
        m_frame->ShowNote(text);
}

void CMonitorApp::OnCompletionReport(UINT, double dProgress)
{
    const bool isDone = m_monitor.GetScanner().IsDone();
    const DWORD now = ::GetTickCount();
    if (!isDone && now - m_lastProgress < kProgressEvery)
        return;
    m_lastProgress = now;
    const int files = static_cast<int>(m_monitor.GetFiles().size());
    CString line;
    line.Format("scanned %3d %% of %d files, folders: %d", static_cast<int>(dProgress * 100), files, m_monitor.GetFolderCount());
    console::Line(line);
    if (!m_frame)
        return;
    if (isDone)
        ShowTotals();
    else
        m_frame->ShowProgress(dProgress, files);
}

void CMonitorApp::ShowTotals()
{
    const auto& files = m_monitor.GetFiles();
    const auto present = std::count_if(files.begin(), files.end(), [](const auto& file) { return file->IsPresent(); });
    m_frame->ShowTotals(static_cast<int>(present), m_monitor.GetFolderCount());
}

/// Settings change in the dialog, which is open then: what follows comes by messages.
void CMonitorApp::OnPropertyValueChange(gen::CPropertySet*, gen::CProperty* property)
{
    const int id = property->GetId();
    if (id == CSettings::idLanguage)
        PostThreadMessage(APPM_LANGUAGE, WPARAM_LANGUAGE_UPDATE, 0);
    if ((id == CSettings::idFolder || id == CSettings::idSubfolders || id == CSettings::idMostFiles) && !m_isRescanDue)
        m_isRescanDue = PostThreadMessage(kRescan, 0, 0) != FALSE;
}

void CMonitorApp::OnAppLanguage(UINT wParam, LPARAM lParam)
{
    if (wParam == WPARAM_LANGUAGE_UPDATE)
        texts::SetLanguage(m_settings.GetInteger(CSettings::idLanguage));
    CKelGenApp::OnAppLanguage(wParam, lParam);
    if (m_frame && m_monitor.GetScanner().IsDone())
        ShowTotals();
}

void CMonitorApp::OnFileRescan()
{
    Rescan(0, 0);
}

/// A folder that cannot be read leaves the one before in view.
void CMonitorApp::Rescan(UINT, LPARAM)
{
    m_isRescanDue = false;
    CString error;
    if (!BeginScan(error))
        OnNote(error);
    else if (!m_monitor.Watch())
        OnNote("cannot watch");
    else
        console::Line("watching " + m_monitor.GetRoot());
}

BOOL CMonitorApp::Fail(int exitCode, const CString& text)
{
    console::Complain(text);
    m_exitCode = exitCode;
    return FALSE;
}
