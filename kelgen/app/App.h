// App.h: CKelGenApp, from which hosts derive their application object.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/app/AppInterface.h>
#include <kelgen/app/WndArray.h>
#include <kelgen/framework/base/Synchronization.h>
#include <kelgen/framework/collections/Map.h>
#include <kelgen/framework/program/WinApp.h>
#include <kelgen/property/AppIntegerMap.h>
#include <kelgen/window/MessageHook.h>
#include <kelgen/window/MessageWindow.h>

#include <concepts>

/// An object whose member functions take thread messages; see CKelGenApp::AddFunction. Its end takes it out of the application's table.
class KELGEN_API CTrackable
{
public:
    virtual ~CTrackable();
};

/// The application: the list of its frame windows, its paths and INI file, and the way of messages to frames and threads.
///
///     class CMyApp : public CKelGenApp
///     {
///     public:
///         CMyApp() : CKelGenApp("My Program") {}
///         BOOL InitInstance() override
///         {
///             if (!CKelGenApp::InitInstance())
///                 return FALSE;
///             m_pMainWnd = frame = new CMyFrame;
///             return frame->LoadFrame(IDR_MAIN) && frame->ShowWindow(m_nCmdShow) >= 0;
///         }
///     } theApp;
///
/// It ends with its last visible frame. Threads: the main thread, but for ForwardMessageToThread.
class KELGEN_API CKelGenApp : public CWinApp,
                              public CMouseHook,
                              public virtual CMessageWindowListener,
                              public CKelGenWndArray,
                              public _kelgen::CAppInterface
{
    DECLARE_DYNAMIC(CKelGenApp)

public:
    /// A member function that a thread message calls.
    using Function = void (CTrackable::*)(UINT wParam, LPARAM lParam);

    /// A member function of an object.
    class CFunction
    {
    public:
        CTrackable* m_pObject = nullptr;  ///< not owned; null for none
        Function m_pfn = nullptr;         ///< called for the object
    };

    /// A thread, and the message that it is sent.
    class CThreadForward
    {
    public:
        DWORD m_nThreadID = 0;  ///< the thread's number; 0 for none
        UINT m_nMessage = 0;    ///< the thread message that it is posted
    };

    /// Tells all windows that the language has changed.
    static const UINT APPM_LANGUAGE = 32885;
    /// The wParam of APPM_LANGUAGE: texts are to be loaded anew.
    static const UINT WPARAM_LANGUAGE_UPDATE = 1;

    /// From the end of the constructor on, threads may forward messages.
    explicit CKelGenApp(const char* appName = nullptr);
    ~CKelGenApp() override;

    /// Parses the command line, creates the message window and finds the program's paths and name; FALSE when one of them fails.
    BOOL InitInstance() override;
    int ExitInstance() override;
    /// Updates the controls of all visible frames but the main window, which the base updates. Handlers may add, remove and destroy
    /// frames, here and in SendMessageToWindows: one that stays is told once, one that is added comes last, one that leaves is not told
    /// any more.
    BOOL OnIdle(LONG lCount) override;
    /// Routes messages without a window: first those that are forwarded to a thread, then those that have a function; both end here.
    /// By contract: a message that is forwarded never reaches its function, since it is the other thread's now.
    BOOL PreTranslateMessage(MSG* pMsg) override;

    /// Appends a frame, once.
    void AddFrame(CWnd* pFrame);
    /// Removes a frame. If it was the main window, the first remaining one takes its place. By contract: the main window's pointer still
    /// names the last frame after that has left, so that it can end the application; the library's frames take the pointer back when they
    /// are deleted.
    void RemoveFrame(CWnd* pFrame);
    /// The number of listed frames whose windows are visible.
    int GetVisibleFrameCount() const;
    /// Does the same without counting @p pExcept.
    int GetVisibleFrameCountExcept(const CWnd* pExcept) const;
    /// Sends a message to all frames and all their descendants.
    virtual void SendMessageToWindows(UINT message, WPARAM wParam, LPARAM lParam);
    /// Passes APPM_LANGUAGE on to all windows.
    virtual void OnAppLanguage(UINT wParam, LPARAM lParam);

    /// A thread message with that number calls @p fn of @p object, in place of what was set before; null for either sets none.
    void AddFunction(UINT message, CTrackable* object, Function fn);
    /// The same for a member of a derived class, which is called on that class's object.
    template <std::derived_from<CTrackable> OBJECT>
    void AddFunction(UINT message, OBJECT* object, void (OBJECT::*fn)(UINT wParam, LPARAM lParam))
    {
        AddFunction(message, static_cast<CTrackable*>(object), static_cast<Function>(fn));
    }
    /// A thread message with that number is posted to the thread @p threadId. Waits until the application object exists.
    /// Threads: any.
    void ForwardMessageToThread(DWORD threadId, UINT message);

    /// Stores the program's path; empty before InitInstance.
    void GetModuleFilePath(CString& path) const { path = m_strModuleFilePath; }
    /// Stores the program's folder with the last backslash; empty before InitInstance.
    void GetModuleFolder(CString& folder) const { folder = m_strModuleFolder; }
    /// Writes a resource to a file. False if there is no such resource. By contract: true even if the file cannot be written; hosts look
    /// for the file.
    bool CreateFileFromRawResource(UINT id, const char* type, const char* path);

    /// For hosts: what a hook on painting calls. Returns 0.
    virtual LRESULT GetPaintMsgProc(int code, UINT wParam, LPARAM lParam);
    /// Handles nothing: false.
    bool OnMessageWindowMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

    /// See gen::GetAppIntegerMap.
    gen::CAppIntegerMap& GetIntegerMap() { return m_integerMap; }

protected:
    CString m_strModuleFolder;
    CString m_strModuleFilePath;
    CString m_strForHost;  ///< Not used by the library.
    CMap<UINT, UINT, CFunction, const CFunction&> m_functions;
    CMap<UINT, UINT, CThreadForward, CThreadForward&> m_forwards;
    CCommandLineInfo m_cmdInfo;
    gen::CAppIntegerMap m_integerMap;
    CArray<int, int> m_numbersForHost;  ///< Not used by the library.

    DECLARE_MESSAGE_MAP()

private:
    friend class CKelGenFrameWndInterface;
    friend class CTrackable;
    using Frames = CBaseObjectPtrArray<CWnd*>;

    template <class VISIT>
    void ForEachFrame(VISIT visit);
    void ForgetFrame(const CWnd* pFrame);
    void ForgetFunctions(const CTrackable* object);

    CCriticalSection m_forwardsLock;
    kelgen::detail::ListWalks<Frames> m_frameWalks;
};

namespace gen {

/// The application object, or null when it is none of the library's.
KELGEN_API CKelGenApp* GetApp();
/// The application's integers. Throws: CInvalidArgException when there is no application of the library's.
KELGEN_API CAppIntegerMap& GetAppIntegerMap();

}  // namespace gen
