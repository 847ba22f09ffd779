// WinApp.h: the application object: start and end, names, message boxes, and a profile in the registry or an initialization file.
#pragma once

#include <kelgen/framework/base/String.h>
#include <kelgen/framework/collections/CollectionHelpers.h>
#include <kelgen/framework/program/CommandLine.h>
#include <kelgen/framework/program/MessageMap.h>
#include <kelgen/framework/program/WinThread.h>

class CDocManager;
class CDocTemplate;
class CDocument;

/// Prepares the framework for the program; the program's main function calls it once, before all else. Takes the instance handle
/// over into the module state and, when there is an application object, sets its handles and names. Returns TRUE.
KELGEN_FRAMEWORK_API BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand);

/// A program from start to end: AfxWinInit, then the application object's InitApplication, InitInstance and Run. When InitInstance
/// fails the main window is destroyed and ExitInstance called. The program's exit code; -1 when it could not be prepared.
/// The target kelgen::main supplies a program's main function, which calls this and sees to what ends a program before its time: it
/// tells of an exception that leaves the program, and of a start that fails, in a line on standard error, and the exit code is 1. An
/// InitInstance that returns FALSE is a failed start unless ExitInstance gives a code other than 0, or the program has handled
/// messages, as a dialog does, or called AfxPostQuitMessage.
KELGEN_FRAMEWORK_API int AfxWinMain(HINSTANCE instance, HINSTANCE previousInstance, LPSTR commandLine, int showCommand);
/// Ends what AfxWinInit began.
KELGEN_FRAMEWORK_API void AfxWinTerm();

/// The one application object of a module. Its constructor makes it the module's (AfxGetApp) and the calling thread's.
///
/// Profile values are named by section and entry. They lie in the registry once SetRegistryKey was called, below
/// HKEY_CURRENT_USER\Software\<registry key>\<profile name>\<section>, else in the initialization file m_pszProfileName. A file
/// name without a folder means the Windows folder.
class KELGEN_FRAMEWORK_API CWinApp : public CWinThread
{
    DECLARE_DYNAMIC(CWinApp)

public:
    /// Without a name, AfxWinInit takes string resource 0xE000 or, failing that, the program's file name.
    explicit CWinApp(LPCSTR appName = nullptr);
    ~CWinApp() override;

    /// Once for each program, before InitInstance; FALSE ends the program. The base gives TRUE.
    virtual BOOL InitApplication();
    /// The base gives TRUE: an application may have no windows.
    BOOL InitInstance() override;
    /// Without a main window the program quits at once, unless automation keeps it.
    int Run() override;
    /// Does what the base does, and tells the user of exceptions other than his own, except during WM_CREATE and WM_PAINT.
    LRESULT ProcessWndProcException(CException* exception, const MSG* message) override;

    /// What AfxMessageBox does.
    virtual int DoMessageBox(LPCSTR prompt, UINT type, UINT idPrompt);
    /// The same with or without an application object.
    static int ShowAppMessageBox(CWinApp* app, LPCSTR prompt, UINT type, UINT idPrompt);
    /// Changes the cursor while waiting: on (1), off (-1), or on again (0).
    virtual void DoWaitCursor(int code);
    /// Passes the program's arguments to @p info, one by one.
    void ParseCommandLine(CCommandLineInfo& info);

    /// A cursor from the module that has the resource; null if none has it.
    HCURSOR LoadCursor(LPCSTR resourceName) const;
    /// Does the same with the resource's number.
    HCURSOR LoadCursor(UINT resourceId) const;
    /// An icon from the module that has the resource; null if none has it.
    HICON LoadIcon(LPCSTR resourceName) const;
    /// Does the same with the resource's number.
    HICON LoadIcon(UINT resourceId) const;
    /// The system's own cursor of an IDC_ name; null if there is none.
    HCURSOR LoadStandardCursor(LPCSTR name) const;
    /// The system's own icon of an IDI_ name; null if there is none.
    HICON LoadStandardIcon(LPCSTR name) const;

    /// Keeps the profile in the registry from now on; the profile's name becomes the application's.
    void SetRegistryKey(LPCSTR registryKey);
    /// Does the same with the text of a string resource. Throws: CInvalidArgException when there is none.
    void SetRegistryKey(UINT registryKeyId);

    /// The number of a profile value; @p fallback if there is none.
    UINT GetProfileInt(LPCSTR section, LPCSTR entry, int fallback);
    /// Stores a number. FALSE if it cannot be written; the other writers do the same.
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    /// The text of a profile value; @p fallback (null stands for "") if there is none.
    CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR fallback = nullptr);
    /// Stores a text. A null @p value removes the entry, a null @p entry the whole section.
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);
    /// The bytes of a profile value in a new array that the caller frees with delete[]. FALSE, null and 0 if there are none. By contract:
    /// an initialization file holds two letters a byte, 'A' plus the low and then the high four bits, as other programs wrote them.
    BOOL GetProfileBinary(LPCSTR section, LPCSTR entry, BYTE** data, UINT* size);
    /// Stores bytes.
    BOOL WriteProfileBinary(LPCSTR section, LPCSTR entry, BYTE* data, UINT size);

    /// The key of the application's profile, made when missing, for the caller to close; null when that fails.
    HKEY GetAppRegistryKey();
    /// The key of a section, as GetAppRegistryKey.
    HKEY GetSectionKey(LPCSTR section);
    /// Removes the key @p keyName with all below it. Returns an error code; 0 on success, ERROR_INVALID_PARAMETER for an empty name.
    LONG DelRegTree(HKEY parent, const CString& keyName);

    /// Fills what has no value yet: instance handle, names of program, application, help file and profile.
    void SetCurrentHandles();

    // Documents. Without templates there are none: nothing to save or close.

    /// Takes the template over, unless its m_bAutoDelete is cleared.
    void AddDocTemplate(CDocTemplate* pTemplate);
    /// Where GetNextDocTemplate begins; null when there are no templates.
    POSITION GetFirstDocTemplatePosition() const;
    /// The template at @p pos, which moves on to the next one; null after the last.
    CDocTemplate* GetNextDocTemplate(POSITION& pos) const;
    /// Opens a file, or shows the document that has it open. Null on failure, of which the user was told.
    virtual CDocument* OpenDocumentFile(LPCSTR lpszFileName);
    /// The number of open documents of all templates.
    int GetOpenDocumentCount() const;
    /// Asks about every changed document; FALSE at the first refusal.
    virtual BOOL SaveAllModified();
    /// Closes all documents without asking. With @p bEndSession those that lie in others stay.
    void CloseAllDocuments(BOOL bEndSession);
    /// Hides the main window and all that it owns, before documents close.
    void HideApplication();
    /// Asks the user for a file's name. @p fileName is a proposal, @p titleId the dialog's title (AFX_IDS_OPENFILE and so on), @p flags
    /// are the platform's OFN_ bits, @p docTemplate the kind of documents, null: all. FALSE gives up. The base knows no dialog and gives
    /// FALSE: hosts that let the user choose files override it.
    virtual BOOL DoPromptFileName(CString& fileName, UINT titleId, DWORD flags, BOOL openFile, CDocTemplate* docTemplate);
    /// A document was opened or saved under that path. The base keeps no list.
    virtual void AddToRecentFileList(LPCSTR lpszPathName);
    /// Does what the arguments ask for, and is called by InitInstance after the templates are added; FALSE ends the program. FileNew is
    /// the command ID_FILE_NEW, else OnFileNew, and fails when there is no main window then. Printing opens the file in a hidden main
    /// window, sends that ID_FILE_PRINT_DIRECT, and gives FALSE; m_pCmdInfo names the printer. Registration calls Register or Unregister
    /// and gives FALSE.
    BOOL ProcessShellCommand(CCommandLineInfo& info);
    /// Registers the application's kinds of files. The base has none; returns TRUE.
    virtual BOOL Register();
    /// Removes the application's profile from the registry. TRUE on success.
    virtual BOOL Unregister();

    // Handlers for the application's message map; the base handles ID_APP_EXIT.

    /// Makes a new document, see CDocManager::OnFileNew.
    void OnFileNew();
    /// Asks for a file and opens it, see CDocManager::OnFileOpen.
    void OnFileOpen();
    /// Closes the main window.
    void OnAppExit();

    BOOL OnIdle(LONG count) override;

    /// The program's module.
    HINSTANCE m_hInstance = nullptr;
    /// The program's arguments as one text.
    LPSTR m_lpCmdLine = nullptr;
    /// How the main window is to be shown first.
    int m_nCmdShow = -1;
    // Names may be replaced by others from _strdup; the old ones are freed with free, as these are at the end.
    LPCSTR m_pszAppName;
    LPCSTR m_pszRegistryKey = nullptr;       ///< The key below Software of the registry that holds the profile; null: it is a file.
    LPCSTR m_pszExeName = nullptr;           ///< The program's file name without folder and extension.
    LPCSTR m_pszHelpFilePath = nullptr;      ///< The program's path with ".HLP" as extension.
    LPCSTR m_pszProfileName = nullptr;       ///< The program's name with ".INI", until SetRegistryKey.
    CDocManager* m_pDocManager = nullptr;    ///< Made by the first AddDocTemplate, or before by the host; deleted at the end.
    CCommandLineInfo* m_pCmdInfo = nullptr;  ///< What ProcessShellCommand prints or serves by DDE; not owned.

    DECLARE_MESSAGE_MAP()
};

/// Shows the hourglass while it lives.
class KELGEN_FRAMEWORK_API CWaitCursor
{
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

    /// Shows it again after a message box or dialog changed the cursor.
    void Restore();
};

/// Counts an automation client that holds the application, which must not end while the count is above 0.
KELGEN_FRAMEWORK_API void AfxOleLockApp();
/// Counts a client less. At 0 an application that the user does not control ends: its loop is told to quit.
KELGEN_FRAMEWORK_API void AfxOleUnlockApp();
/// Whether no automation client holds the application.
KELGEN_FRAMEWORK_API BOOL AfxOleCanExitApp();
/// Whether the user, not an automation client, has the application in hand; TRUE at first.
KELGEN_FRAMEWORK_API BOOL AfxOleGetUserCtrl();
/// Sets what AfxOleGetUserCtrl returns.
KELGEN_FRAMEWORK_API void AfxOleSetUserCtrl(BOOL userControl);
